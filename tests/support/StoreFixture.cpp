// SPDX-License-Identifier: MIT
#include "support/StoreFixture.h"

#include "platform/Text.h"
#include "store/Product.h"
#include "support/GramTable.h"

#include <algorithm>
#include <ostream>

namespace KestrinProductEditor {

void PrintTo(const ProductRow& row, std::ostream* out)
{
    *out << '{' << row.rowID << ' ' << row.uniqueID << ' ' << row.status << " '" << row.name << "' '"
         << row.key << "' '" << row.partNum << "' " << row.price << " '" << row.note << "'"
         << (row.dirtySession ? " session" : "") << (row.dirtySync ? " sync" : "") << '}';
}

Variant Packed(std::int32_t rowID, std::string_view name, std::string_view key, std::string_view partNum,
               std::int64_t price, std::string_view note)
{
    return Variant::ArrayOf(
        {rowID, ToUtf16(name), ToUtf16(key), ToUtf16(partNum), Currency::FromScaled(price), ToUtf16(note)});
}

Variant Named(std::string_view name)
{
    return Packed(0, name);
}

std::vector<std::int32_t> AddNames(ProductLkpMgr& store, const std::vector<std::string>& names)
{
    std::vector<std::int32_t> rowIDs;
    for (const std::string& name : names)
        rowIDs.push_back(store.AddNew(Named(name)));
    return rowIDs;
}

std::vector<ProductRow> RowsOf(ProductLkpMgr& store)
{
    std::vector<ProductRow> rows;
    if (store.Count() == 0)
        return rows;
    for (store.MoveFirst(); !store.EOF(); store.MoveNext()) {
        rows.push_back({store.Fields(PF_RowID).Long(), store.Fields(PF_UniqueID).Long(),
                        store.Fields(PF_Status).Long(), ToUtf8(store.Fields(PF_Name).String()),
                        ToUtf8(store.Fields(PF_Key).String()), ToUtf8(store.Fields(PF_PartNum).String()),
                        store.Fields(PF_UnitPrice).Currency().Scaled(),
                        ToUtf8(store.Fields(PF_Note).String()), store.Fields(PF_DirtySession).Boolean(),
                        store.Fields(PF_DirtySync).Boolean()});
    }
    return rows;
}

std::vector<std::string> NamesOf(ProductLkpMgr& store)
{
    std::vector<std::string> names;
    for (const ProductRow& row : RowsOf(store))
        names.push_back(row.name);
    return names;
}

std::vector<std::int32_t> RowIDsOf(ProductLkpMgr& store)
{
    std::vector<std::int32_t> rowIDs;
    for (const ProductRow& row : RowsOf(store))
        rowIDs.push_back(row.rowID);
    return rowIDs;
}

std::string CurrentName(ProductLkpMgr& store)
{
    return ToUtf8(store.Fields(PF_Name).String());
}

std::string CatalogueFileOf(const std::vector<ProductRow>& rows)
{
    Testing::GramTable table(Testing::CatalogueColumns());
    for (const ProductRow& row : rows)
        table.Add({row.rowID, row.uniqueID, row.status, row.name, row.key, row.partNum, row.price, row.note,
                   row.dirtySession ? 1 : 0, row.dirtySync ? 1 : 0});
    return Testing::BytesOf(table);
}

std::vector<std::string> MatchesOf(const Variant& vMatches)
{
    std::vector<std::string> matches;
    if (vMatches.IsNull())
        return matches;
    const VariantArray& array = vMatches.Array();
    EXPECT_EQ(array.Dimensions(), 2);
    EXPECT_EQ(array.Extent(1), 2);
    for (std::int32_t i = 0; i < array.Extent(2); ++i)
        matches.push_back(std::to_string(array.At(0, i).Long()) + " " + ToUtf8(array.At(1, i).String()));
    return matches;
}

Variant ImportParams(std::u16string_view path, const std::vector<std::int32_t>& map, std::int32_t titles,
                     std::int32_t append)
{
    return Variant::ArrayOf(
        {path, Variant::ArrayOf(std::vector<Variant>(map.begin(), map.end())), titles, append});
}

Variant ExportParams(std::u16string_view path)
{
    return Variant::ArrayOf({path});
}

void PrintTo(const ImportResult& result, std::ostream* out)
{
    *out << "{status " << result.status << " '" << result.description << "' imported " << result.imported
         << " rejected " << result.rejected << '}';
}

ImportResult ImportResultOf(const Variant& vResult)
{
    EXPECT_EQ(vResult.Array().Dimensions(), 1);
    EXPECT_EQ(vResult.Array().Extent(1), 4);
    return {vResult.At(0).Long(), ToUtf8(vResult.At(1).String()), vResult.At(2).Long(), vResult.At(3).Long()};
}

void RecordingReceiver::Progress(const Variant& vParams)
{
    calls.push_back(vParams);
    if (onProgress)
        onProgress();
}

std::vector<double> RecordingReceiver::Fractions() const
{
    std::vector<double> fractions;
    for (const Variant& call : calls)
        fractions.push_back(call.At(0).Double());
    return fractions;
}

std::vector<std::int32_t> RecordingReceiver::Counts() const
{
    std::vector<std::int32_t> counts;
    for (const Variant& call : calls)
        counts.push_back(call.At(1).Long());
    return counts;
}

StoreFixture::StoreFixture(const std::string& locale)
    : m_database(m_folder.Path() / "db"), m_locale(locale), m_scopedTrace(m_trace.get())
{
    std::filesystem::create_directory(m_database);
    m_config->values[u"InstallPath"] = m_folder.Path().u16string();
    m_config->values[u"DBSubdirName"] = u"db";
    RegisterHostComponent("CorvoTWrp.Trace", [trace = m_trace] { return trace; });
    RegisterHostComponent("CorvoConf.Config",
                          [script = m_config] { return std::make_shared<ScriptedConfig>(script); });
}

StoreFixture::~StoreFixture()
{
    RegisterHostComponent("CorvoTWrp.Trace", nullptr);
    RegisterHostComponent("CorvoConf.Config", nullptr);
}

std::shared_ptr<ProductLkpMgr> StoreFixture::Open()
{
    return ProductLkpMgr::Create();
}

std::u16string StoreFixture::CataloguePath() const
{
    return (m_database / "corvprd2.cpd").u16string();
}

std::string StoreFixture::CatalogueBytes() const
{
    return m_folder.Read("db/corvprd2.cpd");
}

bool StoreFixture::CatalogueExists() const
{
    return std::filesystem::exists(m_database / "corvprd2.cpd");
}

std::vector<std::string> StoreFixture::DatabaseNames() const
{
    std::vector<std::string> names;
    for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(m_database))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

void StoreFixture::WriteCatalogue(std::string_view bytes) const
{
    m_folder.Write("db/corvprd2.cpd", bytes);
}

void StoreFixture::WriteCatalogue(const std::vector<ProductRow>& rows) const
{
    WriteCatalogue(CatalogueFileOf(rows));
}

std::vector<ProductRow> StoreFixture::SavedRows() const
{
    const Testing::Reading reading = Testing::ReadBytes(CatalogueBytes(), Testing::CatalogueColumns());
    std::vector<ProductRow> rows;
    if (reading.fault) {
        ADD_FAILURE() << "the catalogue is broken at byte " << reading.fault->offset << ": "
                      << reading.fault->reason;
        return rows;
    }
    const auto number = [](const Testing::Cell& cell) { return static_cast<std::int32_t>(cell.number); };
    for (const Testing::Cells& cells : reading.table->All())
        rows.push_back({number(cells[0]), number(cells[1]), number(cells[2]), cells[3].text, cells[4].text,
                        cells[5].text, cells[6].number, cells[7].text, cells[8].number != 0,
                        cells[9].number != 0});
    return rows;
}

} // namespace KestrinProductEditor
