// SPDX-License-Identifier: MIT
#include "store/ProductLkpMgrImpl.h"

#include "exchange/csv/CsvLineReader.h"
#include "exchange/csv/CsvWriter.h"
#include "exchange/csv/IRejectedLines.h"
#include "frame/Traced.h"
#include "platform/FileKind.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/UserLocale.h"
#include "util/NumberText.h"
#include "util/Reserved.h"
#include "util/modConversion.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

// The fields that a CSV file holds, in the order of its columns and of the reverse map.
enum CsvField : std::size_t
{
    kCsvName,
    kCsvPartNum,
    kCsvUnitPrice,
    kCsvNote,
    kCsvFields
};

constexpr std::array<std::string_view, kCsvFields> kCsvTitles = {"Name", "PartNum", "UnitPrice", "Note"};
constexpr std::int32_t kExportedDecimals = 2;

/// The file column of each field, negative for none.
using ReverseMap = std::array<std::int32_t, kCsvFields>;

/// A whole number, whatever kind of number holds it. Error 13 for anything else.
std::int32_t WholeNumber(const Variant& value)
{
    switch (value.GetKind()) {
    case Variant::Kind::Long:
        return value.Long();
    case Variant::Kind::Double:
    case Variant::Kind::Currency: {
        const std::int32_t number = modConversion::ToLong(value);
        if (modConversion::ToCurrency(value) == Currency::FromUnits(number))
            return number;
        break;
    }
    default:
        break;
    }
    throw AutomationError(kErrTypeMismatch);
}

ReverseMap ReverseMapFrom(const Variant& vRevMap)
{
    ReverseMap map{};
    for (std::size_t field = 0; field < map.size(); ++field)
        map[field] = WholeNumber(vRevMap.At(static_cast<std::int32_t>(field)));
    return map;
}

// A flag is set by the value of a ticked check box; True is not that value.
bool IsTicked(const Variant& flag)
{
    switch (flag.GetKind()) {
    case Variant::Kind::Long:
        return flag.Long() == 1;
    case Variant::Kind::Double:
        return flag.Double() == 1;
    case Variant::Kind::Currency:
        return flag.Currency() == Currency::FromUnits(1);
    default:
        return false;
    }
}

double FractionDone(double done, double whole)
{
    return whole < 1 ? 1.0 : std::min(done / whole, 1.0);
}

/// The layout as far as the code page can hold it: a price that came out with "?" in it could not be read
/// back.
MoneyLayout LayoutIn(const CodePage& codePage, MoneyLayout layout)
{
    const auto isHeld = [&](std::u16string_view text) {
        std::string scratch;
        const std::string utf8 = ToUtf8(text);
        return codePage.RoundTrip(utf8, scratch) == utf8;
    };
    if (!isHeld(layout.symbol))
        layout.symbol.clear();
    if (!isHeld(layout.thousandSeparator)) {
        const bool isBlank =
            layout.thousandSeparator.size() == 1 && NumberText::IsBlank(layout.thousandSeparator[0]);
        layout.thousandSeparator = isBlank ? u" " : u"";
    }
    return layout;
}

Currency PriceOrZero(Currency price, Currency ceiling)
{
    return price < Currency() || price > ceiling ? Currency() : price;
}

} // namespace

template<class Call>
void ProductLkpMgr::Impl::PrvCallReceiver(const Call& call)
{
    // A receiver that imports or exports in its turn is not called again for that: it could not end.
    if (m_bInProgress || !m_objIProgress)
        return;
    const std::shared_ptr<IProcessProgress> receiver = m_objIProgress;
    struct Mark
    {
        bool& isSet;
        explicit Mark(bool& mark) : isSet(mark) { isSet = true; }
        Mark(const Mark&) = delete;
        Mark& operator=(const Mark&) = delete;
        ~Mark() { isSet = false; }
    } const mark(m_bInProgress);
    call(*receiver);
}

void ProductLkpMgr::Impl::CSVProductExport(const Variant& vParams)
{
    Traced(ErrorContext::ProductLkpMgr_CSVProductExport, [&] {
        const std::u16string path = modConversion::ToText(vParams.At(0));
        if (AreSameFile(path, m_sFilePath))
            throw AutomationError(kErrPathFileAccess,
                                  std::u16string(TextOf(ErrorContext::ProductLkpMgr_CSVProductExport)),
                                  u"The export would take the place of the catalogue itself.");
        const MoneyLayout money = LayoutIn(m_table.TextCodePage(), UserLocale().Money());
        const std::unique_ptr<IWriteStream> stream = FileSystem().CreateInPlace(path);
        CsvWriter writer(*stream, m_table.TextCodePage());
        writer.WriteLine(kCsvTitles);
        if (!m_table.IsEmpty()) {
            const auto rowCount = static_cast<double>(m_table.Count());
            double written = 0;
            Variant progress = Variant::ArrayWith(0.0);
            std::string price;
            for (Recordset::Walk walk(m_table); !walk.IsAtEnd(); walk.Next()) {
                const RowNumber row = walk.Row();
                price.clear();
                modConversion::AppendFormatCurrency(m_table.Rows().Money(row, PF_UnitPrice),
                                                    kExportedDecimals, money, price);
                RowTexts texts;
                m_table.Rows().Texts(row, texts.data());
                writer.WriteLine(std::array<std::string_view, kCsvFields>{
                    texts[kNameText], texts[kPartNumText], price, texts[kNoteText]});
                ++written;
                if (m_objIProgress) {
                    progress.ArrayForWrite().At(0) = FractionDone(written, rowCount);
                    PrvCallReceiver([&](IProcessProgress& receiver) { receiver.Progress(progress); });
                }
            }
            m_table.MoveBehindLast();
        }
        writer.Close();
    });
}

/// One run of CSVProductImport: what is kept from line to line, so that nothing is made anew for each.
class ProductLkpMgr::Impl::Import
{
public:
    explicit Import(Impl& store) : m_store(store) {}

    /// Raises what ends the import early; the counts tell how far it came.
    void Run(const Variant& vParams);

    [[nodiscard]] std::int32_t Imported() const noexcept { return m_imported; }
    [[nodiscard]] std::int32_t Rejected() const noexcept { return m_rejected; }

private:
    void PrvReportLine(double fraction);
    void PrvTakeLine(const CsvLineReader& reader);
    // Why the line is rejected; empty when its product was added.
    [[nodiscard]] std::string PrvAddProduct(const CsvLineReader& reader);
    void PrvReject(const CsvLineReader& reader, std::string_view reason);
    [[nodiscard]] std::string_view PrvText(const CsvLineReader& reader, CsvField field, std::size_t limit);

    Impl& m_store;
    ReverseMap m_map{};
    MoneyLayout m_money;
    std::int32_t m_imported = 0;
    std::int32_t m_rejected = 0;
    Variant m_progress = Variant::ArrayWith(0.0, 0);
    struct FieldScratch
    {
        std::string column;
        std::string decoded;
        std::string cleaned;
    };
    std::array<FieldScratch, kCsvFields> m_scratch;
};

void ProductLkpMgr::Impl::Import::Run(const Variant& vParams)
{
    const std::u16string path = modConversion::ToText(vParams.At(0));
    m_map = ReverseMapFrom(vParams.At(1));
    const bool firstLineHasTitles = IsTicked(vParams.At(2));
    const bool appends = IsTicked(vParams.At(3));
    m_money = UserLocale().Money();

    const std::unique_ptr<IReadStream> stream = FileSystem().OpenForReading(path);
    const auto size = static_cast<double>(stream->Size());
    CsvLineReader reader(*stream, m_store.m_table.TextCodePage());
    // Columns behind the last one that is mapped are only counted.
    const std::int32_t last = *std::max_element(m_map.begin(), m_map.end());
    reader.KeepColumns(last < 0 ? 0 : static_cast<std::size_t>(last) + 1);
    // The title line does not count for progress.
    const bool isAtEnd = firstLineHasTitles && !reader.Next();
    if (!appends)
        m_store.DeleteAll();
    double charactersRead = 0;
    constexpr std::size_t kLineEnd = 2; // whatever the file really uses
    while (!isAtEnd && reader.Next()) {
        charactersRead += static_cast<double>(reader.LineLength() + kLineEnd);
        if (m_store.m_objIProgress)
            PrvReportLine(FractionDone(charactersRead, size));
        PrvTakeLine(reader);
    }
}

void ProductLkpMgr::Impl::Import::PrvReportLine(double fraction)
{
    try {
        VariantArray& values = m_progress.ArrayForWrite();
        values.At(0) = fraction;
        values.At(1) = m_imported;
        m_store.PrvCallReceiver([&](IProcessProgress& receiver) { receiver.Progress(m_progress); });
    } catch (...) { // NOLINT(bugprone-empty-catch): a receiver that fails does not stop an import
    }
}

void ProductLkpMgr::Impl::Import::PrvTakeLine(const CsvLineReader& reader)
{
    std::string reason;
    try {
        reason = PrvAddProduct(reader);
    } catch (...) {
        reason = ErrorInFlight().what();
    }
    if (reason.empty()) {
        ++m_imported;
    } else {
        ++m_rejected;
        PrvReject(reader, reason);
    }
}

std::string ProductLkpMgr::Impl::Import::PrvAddProduct(const CsvLineReader& reader)
{
    const std::size_t columnCount = reader.Columns().Count();
    for (std::size_t field = 0; field < m_map.size(); ++field) {
        if (m_map[field] < 0 || static_cast<std::size_t>(m_map[field]) < columnCount)
            continue;
        if (columnCount == 0)
            return "the line is empty";
        const std::string_view line = reader.Line();
        const bool hasOpenQuote = std::count(line.begin(), line.end(), '"') % 2 != 0;
        return "the line has " + std::to_string(columnCount) + (columnCount == 1 ? " column" : " columns") +
               ", but " + std::string(kCsvTitles[field]) + " is to come from column " +
               std::to_string(std::int64_t{m_map[field]} + 1) +
               (hasOpenQuote ? " (a quotation mark is not closed)" : "");
    }
    ProductTexts product;
    product.name = PrvText(reader, kCsvName, PFS_Name);
    product.partNum = PrvText(reader, kCsvPartNum, PFS_PartNum);
    if (m_map[kCsvUnitPrice] >= 0) {
        FieldScratch& scratch = m_scratch[kCsvUnitPrice];
        const std::string_view text = reader.Decode(
            reader.Columns().Column(static_cast<std::size_t>(m_map[kCsvUnitPrice]), scratch.column),
            scratch.decoded);
        const modConversion::CurrencyResult price = modConversion::CurrencyFromText(text, m_money);
        if (price.error == modConversion::ConversionError::Overflow)
            return "the price '" + std::string(text) + "' is too large a number";
        if (price.error != modConversion::ConversionError::None)
            return "the price '" + std::string(text) + "' is not an amount of money";
        product.unitPrice = PriceOrZero(price.value, m_store.m_curPriceCeiling);
    }
    product.note = PrvText(reader, kCsvNote, PFS_Note);
    Traced(ErrorContext::ProductLkpMgr_AddNew, [&] { m_store.PrvAddRow(product); });
    return {};
}

void ProductLkpMgr::Impl::Import::PrvReject(const CsvLineReader& reader, std::string_view reason)
{
    try {
        m_store.PrvCallReceiver([&](IProcessProgress& receiver) {
            if (auto* const listener = dynamic_cast<IRejectedLines*>(&receiver))
                listener->LineRejected(reader.LineNumber(), reason, reader.Line());
        });
    } catch (...) { // NOLINT(bugprone-empty-catch): a receiver that fails does not stop an import
    }
}

std::string_view ProductLkpMgr::Impl::Import::PrvText(const CsvLineReader& reader, CsvField field,
                                                      std::size_t limit)
{
    if (m_map[field] < 0)
        return {};
    FieldScratch& scratch = m_scratch[field];
    const std::string_view column =
        reader.Columns().Column(static_cast<std::size_t>(m_map[field]), scratch.column);
    return WithoutReserved(Utf16Head(reader.Decode(column, scratch.decoded), limit), scratch.cleaned);
}

Variant ProductLkpMgr::Impl::CSVProductImport(const Variant& vParams)
{
    std::optional<Import> import;
    try {
        import.emplace(*this);
        import->Run(vParams);
        m_bSessionDirty = true;
        SortProductRS();
        BinaryImportResetRstState();
        m_lLastRowID = GetLastRowID();
        return Variant::ArrayWith(0, u"", import->Imported(), import->Rejected());
    } catch (...) {
        const AutomationError error = ErrorInFlight();
        return Variant::ArrayWith(error.Number() > 0 ? error.Number() : 1, error.Description(),
                                  import ? import->Imported() : 0, import ? import->Rejected() : 0);
    }
}

void ProductLkpMgr::Impl::PrvCSVSetRowFields(const Variant& vColumns, const Variant& vRevMap, bool& bError)
{
    bError = false;
    try {
        const ReverseMap map = ReverseMapFrom(vRevMap);
        const auto text = [&](CsvField field, std::size_t limit) -> std::u16string {
            if (map[field] < 0)
                return {};
            return WithoutReserved(Utf16Head(modConversion::ToText(vColumns.At(map[field])), limit));
        };
        const std::u16string name = text(kCsvName, PFS_Name);
        const std::u16string partNum = text(kCsvPartNum, PFS_PartNum);
        Currency unitPrice;
        if (map[kCsvUnitPrice] >= 0)
            unitPrice =
                PriceOrZero(modConversion::ToCurrency(vColumns.At(map[kCsvUnitPrice])), m_curPriceCeiling);
        const std::u16string note = text(kCsvNote, PFS_Note);
        AddNew(Variant::ArrayWith(0, name, u"", partNum, unitPrice, note));
    } catch (...) {
        bError = true;
    }
}

void ProductLkpMgr::Impl::BinaryProductExport(std::u16string_view sTargetPath)
{
    Traced(ErrorContext::ProductLkpMgr_BinaryProductExport, [&] { SaveProductRS(sTargetPath); });
}

void ProductLkpMgr::Impl::BinaryProductImport(std::u16string_view sPath)
{
    Traced(ErrorContext::ProductLkpMgr_BinaryProductImport, [&] {
        if (!FileSystem().FileExists(sPath))
            RaiseOwn(ErrorContext::ProductLkpMgr_BinaryProductImport, u"The path specified does not exist.");
        bCancelUpdate = false;
        m_bSessionDirty = true;
        // It may have vanished since; the rows that are here must not be taken for imported ones.
        if (!LoadProductRS(sPath, false))
            RaiseOwn(ErrorContext::ProductLkpMgr_BinaryProductImport, u"The path specified does not exist.");
        SortProductRS();
        BinaryImportResetRstState();
        m_lLastRowID = GetLastRowID();
    });
}

void ProductLkpMgr::Impl::BinaryImportResetRstState()
{
    Traced(ErrorContext::ProductLkpMgr_BinaryImportResetRstState, [&] {
        if (m_table.IsEmpty())
            return;
        m_table.VisitFromCursor([&](RowNumber row) {
            m_table.SetBoolean(row, PF_DirtySync, true);
            m_table.SetBoolean(row, PF_DirtySession, true);
            m_table.SetLong(row, PF_Status, 0);
            m_table.SetLong(row, PF_UniqueID, 0);
        });
    });
}

} // namespace KestrinProductEditor
