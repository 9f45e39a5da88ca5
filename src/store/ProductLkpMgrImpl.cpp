// SPDX-License-Identifier: MIT
#include "store/ProductLkpMgrImpl.h"

#include "frame/Traced.h"
#include "frame/modInit.h"
#include "platform/Files.h"
#include "platform/HostServices.h"
#include "platform/Text.h"
#include "store/table/TableGram.h"
#include "util/modConversion.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

constexpr std::u16string_view kCatalogueFileName = u"corvprd2.cpd";

// On disk: never renumber. The order is that of CorvoProductFields.
std::vector<Column> CatalogueColumns()
{
    return {
        {u"RowID", ColumnType::Long, 4, true},     {u"UniqueID", ColumnType::Long, 4},
        {u"Status", ColumnType::Long, 4},          {u"Name", ColumnType::NarrowText, PFS_Name},
        {u"Key", ColumnType::NarrowText, PFS_Key}, {u"PartNum", ColumnType::NarrowText, PFS_PartNum},
        {u"UnitPrice", ColumnType::Currency, 8},   {u"Note", ColumnType::WideText, PFS_Note},
        {u"DirtySession", ColumnType::Boolean, 2}, {u"DirtySync", ColumnType::Boolean, 2},
    };
}

bool IsEditedField(std::int32_t lIdx)
{
    return lIdx >= PF_Name && lIdx <= PF_Note;
}

bool IsBlank(std::string_view name)
{
    return name.find_first_not_of(' ') == std::string_view::npos;
}

} // namespace

struct ProductLkpMgr::Impl::UnpackedProduct
{
    // Error 13 for no array or a wrong kind, 9 for one that is too short.
    explicit UnpackedProduct(const Variant& packed)
        : name(ToUtf8(modConversion::ToText(packed.At(kPackedName)))),
          key(ToUtf8(modConversion::ToText(packed.At(kPackedKey)))),
          partNum(ToUtf8(modConversion::ToText(packed.At(kPackedPartNum)))),
          unitPrice(modConversion::ToCurrency(packed.At(kPackedUnitPrice))),
          note(ToUtf8(modConversion::ToText(packed.At(kPackedNote))))
    {
    }

    [[nodiscard]] ProductTexts Texts() const { return {name, key, partNum, note, unitPrice}; }

    std::string name;
    std::string key;
    std::string partNum;
    Currency unitPrice;
    std::string note;
};

ProductLkpMgr::Impl::Impl() : m_table(CatalogueColumns(), CodePage::System()) {}

void ProductLkpMgr::Impl::Class_Initialize()
{
    m_sFilePath = GetProductFilePath();
    LoadProductRS(m_sFilePath, true);
    SetDirtySessionFlags(false);
    SortProductRS();
    m_lLastRowID = GetLastRowID();
}

void ProductLkpMgr::Impl::Class_Terminate() noexcept
{
    try {
        // The last reference may go on a thread that has used nothing of the component yet.
        modInit::EnsureMain();
    } catch (...) { // NOLINT(bugprone-empty-catch): Main has said it; without a trace nothing below can run
    }
    Traced<Ending::Swallow>(ErrorContext::ProductLkpMgr_Class_Terminate, [&] {
        m_bSessionDirty = false;
        ProductRemoveEmptyRows();
        if (!bCancelUpdate)
            SaveProductRS(m_sFilePath);
        bCancelUpdate = false;
    });
}

std::u16string ProductLkpMgr::Impl::GetProductFilePath() const
{
    return Traced(ErrorContext::ProductLkpMgr_GetProductFilePath, [&] {
        const std::shared_ptr<IConfig> config = CreateConfig();
        const std::u16string installPath = modConversion::ToText(config->Value(u"InstallPath"));
        const std::u16string subdirectory = modConversion::ToText(config->Value(u"DBSubdirName"));
        const IFileSystem& files = FileSystem();
        return files.BuildPath(files.BuildPath(installPath, subdirectory), kCatalogueFileName);
    });
}

RowStore ProductLkpMgr::Impl::InitProductRS() const
{
    return Traced(ErrorContext::ProductLkpMgr_InitProductRS, [&] { return RowStore(m_table.Columns()); });
}

bool ProductLkpMgr::Impl::LoadProductRS(std::u16string_view path, bool bCreate)
{
    return Traced(ErrorContext::ProductLkpMgr_LoadProductRS, [&] {
        if (FileSystem().FileExists(path)) {
            // The whole file is read before a row of the present table goes.
            RowStore rows = InitProductRS();
            const std::unique_ptr<IReadStream> stream = FileSystem().OpenForReading(path);
            TableGram::Report report;
            if (const auto fault = TableGram::Read(*stream, m_table.TextCodePage(), rows, report)) {
                throw AutomationError(
                    kErrInvalidFileFormat, std::u16string(TextOf(ErrorContext::ProductLkpMgr_LoadProductRS)),
                    u"cannot read '" + std::u16string(path) + u"' as a product catalogue: at byte " +
                        ToUtf16(std::to_string(fault->offset)) + u": " + ToUtf16(fault->reason) +
                        u". The file was left as it is.");
            }
            m_table.Adopt(std::move(rows));
            return true;
        }
        if (bCreate) {
            m_table.Adopt(InitProductRS());
            SaveProductRS(path);
        }
        return false;
    });
}

void ProductLkpMgr::Impl::SaveProductRS(std::u16string_view path)
{
    Traced(ErrorContext::ProductLkpMgr_SaveProductRS, [&] {
        const RowOrder& order = m_table.Order();
        const std::unique_ptr<IWriteStream> stream = FileSystem().ReplaceFile(path);
        TableGram::Write(m_table.Rows(), order, m_table.TextCodePage(), *stream);
        stream->Close();
    });
}

std::int32_t ProductLkpMgr::Impl::GetLastRowID()
{
    return Traced(ErrorContext::ProductLkpMgr_GetLastRowID, [&] {
        if (m_table.IsEmpty())
            return 1;
        std::int32_t highest = 0;
        m_table.VisitAll([&](RowNumber row) { highest = std::max(highest, m_table.Long(row, PF_RowID)); });
        m_table.MoveBehindLast();
        return highest;
    });
}

Variant ProductLkpMgr::Impl::Pack(std::int32_t lRowID)
{
    return Traced(ErrorContext::ProductLkpMgr_Pack, [&] {
        if (!m_table.MoveToFound(PF_RowID, lRowID))
            RaiseOwn(ErrorContext::ProductLkpMgr_Pack, u"Product not found");
        return PrvPackRow(m_table.CurrentRow());
    });
}

void ProductLkpMgr::Impl::GotoNthProduct(std::int32_t lIdx)
{
    try {
        m_table.MoveFromFirst(lIdx);
    } catch (...) {
        throw ErrorInFlight();
    }
}

void ProductLkpMgr::Impl::Update(const Variant& vProductInfo)
{
    Traced(ErrorContext::ProductLkpMgr_Update, [&] {
        const std::int32_t rowID = modConversion::ToLong(vProductInfo.At(kPackedRowID));
        const RowNumber row = m_table.Find(PF_RowID, rowID);
        if (row == kNoRow) {
            m_table.MoveBehindLast();
            RaiseOwn(ErrorContext::ProductLkpMgr_Update, u"Product not found");
        }
        const UnpackedProduct product(vProductInfo);
        PrvCheckFits(product.Texts());
        m_table.MoveTo(row);
        RowTexts texts = {product.name, product.key, product.partNum, product.note};
        m_table.SetTexts(row, texts);
        m_table.SetMoney(row, PF_UnitPrice, product.unitPrice);
        PrvMarkRowDirty(row);
        m_table.Commit();
    });
}

std::int32_t ProductLkpMgr::Impl::Count()
{
    return Traced(ErrorContext::ProductLkpMgr_Count,
                  [&] { return static_cast<std::int32_t>(m_table.Count()); });
}

Variant ProductLkpMgr::Impl::GetFields(std::int32_t lIdx)
{
    return Traced(ErrorContext::ProductLkpMgr_Fields, [&] { return m_table.Get(lIdx); });
}

void ProductLkpMgr::Impl::LetFields(std::int32_t lIdx, const Variant& vValue)
{
    Traced(ErrorContext::ProductLkpMgr_Fields, [&] {
        const RowNumber row = m_table.CurrentRow();
        const std::size_t column = m_table.CheckedColumn(lIdx);
        if (vValue.IsNull())
            return;
        if (!IsEditedField(lIdx)) {
            m_table.Put(lIdx, vValue);
            if (lIdx == PF_RowID)
                m_lLastRowID = std::max(m_lLastRowID, m_table.Long(row, PF_RowID));
            return;
        }
        if (modConversion::ToText(vValue) == modConversion::ToText(m_table.Get(row, column)))
            return;
        m_table.Put(lIdx, vValue);
        PrvMarkRowDirty(row);
    });
}

std::int32_t ProductLkpMgr::Impl::AddNew(const Variant& vProdInfo)
{
    return Traced(ErrorContext::ProductLkpMgr_AddNew, [&] {
        if (vProdInfo.IsNull())
            return PrvAddRow({});
        const UnpackedProduct product(vProdInfo);
        return PrvAddRow(product.Texts());
    });
}

void ProductLkpMgr::Impl::Delete(std::int32_t lRowID)
{
    Traced(ErrorContext::ProductLkpMgr_Delete, [&] {
        m_table.MoveToFound(PF_RowID, lRowID);
        m_table.Delete();
        m_bSessionDirty = true;
    });
}

void ProductLkpMgr::Impl::DeleteAll()
{
    Traced(ErrorContext::ProductLkpMgr_DeleteAll, [&] {
        if (m_table.IsEmpty())
            return;
        m_bSessionDirty = true;
        m_table.Clear();
    });
}

bool ProductLkpMgr::Impl::IsBOF()
{
    return Traced(ErrorContext::ProductLkpMgr_BOF, [&] { return m_table.BOF(); });
}

bool ProductLkpMgr::Impl::IsEOF()
{
    return Traced(ErrorContext::ProductLkpMgr_EOF, [&] { return m_table.IsAtEnd(); });
}

void ProductLkpMgr::Impl::MoveLast()
{
    Traced(ErrorContext::ProductLkpMgr_MoveLast, [&] { m_table.MoveLast(); });
}

void ProductLkpMgr::Impl::MoveFirst()
{
    Traced(ErrorContext::ProductLkpMgr_MoveFirst, [&] { m_table.MoveFirst(); });
}

void ProductLkpMgr::Impl::MoveNext()
{
    Traced(ErrorContext::ProductLkpMgr_MoveNext, [&] { m_table.MoveNext(); });
}

void ProductLkpMgr::Impl::MovePrevious()
{
    Traced(ErrorContext::ProductLkpMgr_MovePrevious, [&] { m_table.MovePrevious(); });
}

std::int32_t ProductLkpMgr::Impl::CurrentRecordIdx()
{
    try {
        return m_table.AbsolutePosition();
    } catch (...) {
        return 0;
    }
}

void ProductLkpMgr::Impl::FindRow(std::int32_t lRowID)
{
    PrvFind(ErrorContext::ProductLkpMgr_FindRow, PF_RowID, lRowID);
}

void ProductLkpMgr::Impl::FindRowBySyncID(std::int32_t lRowSyncID)
{
    PrvFind(ErrorContext::ProductLkpMgr_FindRowBySyncID, PF_UniqueID, lRowSyncID);
}

Variant ProductLkpMgr::Impl::GetFindMatches(std::size_t column, std::u16string_view text, bool bAll)
{
    try {
        // The typed text stands between quotes in the filter that a match list is; a quote of its own breaks
        // it.
        if (!bAll && (text.empty() || text.find(u'\'') != std::u16string_view::npos))
            return Variant::Null();
        const std::vector<RowNumber> rows = m_table.FindPrefix(column, bAll ? std::string() : ToUtf8(text));
        if (rows.empty())
            return Variant::Null();
        VariantArray matches(2, static_cast<std::int32_t>(rows.size()));
        for (std::size_t i = 0; i < rows.size(); ++i) {
            matches.At(0, static_cast<std::int32_t>(i)) = m_table.Get(rows[i], PF_RowID);
            matches.At(1, static_cast<std::int32_t>(i)) = m_table.Get(rows[i], column);
        }
        return matches;
    } catch (...) {
        return Variant::Null();
    }
}

void ProductLkpMgr::Impl::SortProductRS()
{
    Traced(ErrorContext::ProductLkpMgr_SortProductRS, [&] { m_table.SortBy(PF_Name); });
}

void ProductLkpMgr::Impl::ProductRemoveEmptyRows()
{
    Traced(ErrorContext::ProductLkpMgr_ProductRemoveEmptyRows, [&] {
        if (m_table.IsEmpty())
            return;
        std::vector<RowNumber> emptyRows;
        m_table.VisitAll([&](RowNumber row) {
            if (IsBlank(m_table.Text(row, PF_Name)))
                emptyRows.push_back(row);
        });
        for (const RowNumber row : emptyRows)
            m_table.DeleteRow(row);
        m_table.MoveBehindLast();
    });
}

void ProductLkpMgr::Impl::SetDirtySyncFlags(bool bDirty)
{
    PrvSetFlags(ErrorContext::ProductLkpMgr_SetDirtySyncFlags, PF_DirtySync, bDirty);
}

void ProductLkpMgr::Impl::SetDirtySessionFlags(bool bDirty)
{
    PrvSetFlags(ErrorContext::ProductLkpMgr_SetDirtySessionFlags, PF_DirtySession, bDirty);
}

void ProductLkpMgr::Impl::SetNotifyCallback(std::shared_ptr<IProcessProgress> objIProgress) noexcept
{
    // The old receiver goes after the new one is in place: its end may call back.
    m_objIProgress.swap(objIProgress);
}

void ProductLkpMgr::Impl::PrvCheckFits(const ProductTexts& product) const
{
    m_table.CheckTextFits(PF_Name, product.name);
    m_table.CheckTextFits(PF_Key, product.key);
    m_table.CheckTextFits(PF_PartNum, product.partNum);
    m_table.CheckTextFits(PF_Note, product.note);
}

std::int32_t ProductLkpMgr::Impl::PrvAddRow(const ProductTexts& product)
{
    PrvCheckFits(product);
    if (m_lLastRowID == std::numeric_limits<std::int32_t>::max())
        throw AutomationError(kErrOverflow);
    const std::int32_t rowID = m_lLastRowID + 1;
    std::array<RowStore::Value, PF_DirtySync + 1> values = {{
        {rowID, {}},
        {0, {}},
        {0, {}},
        {0, product.name},
        {0, product.key},
        {0, product.partNum},
        {product.unitPrice.Scaled(), {}},
        {0, product.note},
        {1, {}},
        {1, {}},
    }};
    m_table.AddNew(values);
    m_lLastRowID = rowID;
    m_bSessionDirty = true;
    return rowID;
}

void ProductLkpMgr::Impl::PrvMarkRowDirty(RowNumber row)
{
    m_table.SetBoolean(row, PF_DirtySession, true);
    m_table.SetBoolean(row, PF_DirtySync, true);
    m_bSessionDirty = true;
}

Variant ProductLkpMgr::Impl::PrvPackRow(RowNumber row) const
{
    return Variant::ArrayWith(m_table.Get(row, PF_RowID), m_table.Get(row, PF_Name), m_table.Get(row, PF_Key),
                              m_table.Get(row, PF_PartNum), m_table.Get(row, PF_UnitPrice),
                              m_table.Get(row, PF_Note));
}

void ProductLkpMgr::Impl::PrvSetFlags(ErrorContext context, std::size_t column, bool bDirty)
{
    Traced(context, [&] {
        if (m_table.IsEmpty())
            return;
        m_table.VisitFromCursor([&](RowNumber row) { m_table.SetBoolean(row, column, bDirty); });
    });
}

void ProductLkpMgr::Impl::PrvFind(ErrorContext context, std::size_t column, std::int32_t lValue)
{
    Traced(context, [&] {
        if (!m_table.IsEmpty())
            m_table.MoveToFound(column, lValue);
    });
}

} // namespace KestrinProductEditor
