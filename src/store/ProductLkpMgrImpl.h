// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/ProductLkpMgr.h>

#include "frame/ErrorContext.h"
#include "store/Product.h"
#include "store/table/Recordset.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// What stands behind ProductLkpMgr: the table, the store's state, and its members, public and private, under
/// their own names and error contexts.
class ProductLkpMgr::Impl
{
public:
    /// An empty store, not yet initialised: Class_Initialize does that.
    Impl();

    void Class_Initialize();
    void Class_Terminate() noexcept;

    // Catalogue file

    [[nodiscard]] std::u16string GetProductFilePath() const;
    [[nodiscard]] Variant Pack(std::int32_t lRowID);

    // Cursor and editing

    bool bCancelUpdate = false;
    void GotoNthProduct(std::int32_t lIdx);
    void Update(const Variant& vProductInfo);
    [[nodiscard]] std::int32_t Count();
    [[nodiscard]] Variant GetFields(std::int32_t lIdx);
    void LetFields(std::int32_t lIdx, const Variant& vValue);
    std::int32_t AddNew(const Variant& vProdInfo);
    void Delete(std::int32_t lRowID);
    void DeleteAll();
    [[nodiscard]] bool IsBOF();
    [[nodiscard]] bool IsEOF();
    void MoveLast();
    void MoveFirst();
    void MoveNext();
    void MovePrevious();
    [[nodiscard]] std::int32_t CurrentRecordIdx();

    // Finding and sorting

    void FindRow(std::int32_t lRowID);
    void FindRowBySyncID(std::int32_t lRowSyncID);
    [[nodiscard]] Variant GetFindMatches(std::size_t column, std::u16string_view text, bool bAll);

    // Dirty flags and progress receiver

    [[nodiscard]] bool SessionIsDirty() const noexcept { return m_bSessionDirty; }
    void SetDirtySyncFlags(bool bDirty);
    void SetDirtySessionFlags(bool bDirty);
    void SetNotifyCallback(std::shared_ptr<IProcessProgress> objIProgress) noexcept;

    // Import and export

    void CSVProductExport(const Variant& vParams);
    [[nodiscard]] Variant CSVProductImport(const Variant& vParams);
    void PrvCSVSetRowFields(const Variant& vColumns, const Variant& vRevMap, bool& bError);
    void BinaryProductExport(std::u16string_view sTargetPath);
    void BinaryProductImport(std::u16string_view sPath);

private:
    friend class ProductRows;

    /// The text columns, in their order (RowStore::Texts).
    enum TextOrdinal : std::size_t
    {
        kNameText,
        kKeyText,
        kPartNumText,
        kNoteText,
        kTextColumns
    };
    using RowTexts = std::array<std::string_view, kTextColumns>;

    /// The five fields of a product on their way into a row, in UTF-8 and within their limits.
    struct ProductTexts
    {
        std::string_view name;
        std::string_view key;
        std::string_view partNum;
        std::string_view note;
        Currency unitPrice;
    };
    /// A packed product after its conversions; `texts` points into the strings beside it.
    struct UnpackedProduct;

    /// A CSV import under way (ProductLkpMgrExchange.cpp).
    class Import;

    [[nodiscard]] RowStore InitProductRS() const;
    /// Whether there was a file to load.
    bool LoadProductRS(std::u16string_view path, bool bCreate);
    void SaveProductRS(std::u16string_view path);
    [[nodiscard]] std::int32_t GetLastRowID();
    void SortProductRS();
    void ProductRemoveEmptyRows();
    void BinaryImportResetRstState();

    void PrvCheckFits(const ProductTexts& product) const;
    std::int32_t PrvAddRow(const ProductTexts& product);
    void PrvMarkRowDirty(RowNumber row);
    [[nodiscard]] Variant PrvPackRow(RowNumber row) const;
    void PrvSetFlags(ErrorContext context, std::size_t column, bool bDirty);
    void PrvFind(ErrorContext context, std::size_t column, std::int32_t lValue);

    template<class Call>
    void PrvCallReceiver(const Call& call);

    Recordset m_table;
    std::u16string m_sFilePath;
    std::int32_t m_lLastRowID = 0;
    Currency m_curPriceCeiling = kPriceCeiling;
    bool m_bSessionDirty = false;
    std::shared_ptr<IProcessProgress> m_objIProgress;
    bool m_bInProgress = false;
};

} // namespace KestrinProductEditor
