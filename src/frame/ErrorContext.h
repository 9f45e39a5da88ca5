// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KestrinProductEditor {

/// Every traced method, by class and name.
enum class ErrorContext : std::uint8_t
{
    Product_Name,
    Product_Key,
    Product_PartNum,
    Product_UnitPrice,
    Product_Note,
    Product_Unpack,
    Product_Pack,

    ProductLkpMgr_Class_Initialize,
    ProductLkpMgr_Class_Terminate,
    ProductLkpMgr_GetProductFilePath,
    ProductLkpMgr_InitProductRS,
    ProductLkpMgr_LoadProductRS,
    ProductLkpMgr_SaveProductRS,
    ProductLkpMgr_GetLastRowID,
    ProductLkpMgr_SortProductRS,
    ProductLkpMgr_ProductRemoveEmptyRows,
    ProductLkpMgr_Pack,
    ProductLkpMgr_Update,
    ProductLkpMgr_Count,
    ProductLkpMgr_Fields,
    ProductLkpMgr_AddNew,
    ProductLkpMgr_Delete,
    ProductLkpMgr_DeleteAll,
    ProductLkpMgr_BOF,
    ProductLkpMgr_EOF,
    ProductLkpMgr_MoveLast,
    ProductLkpMgr_MoveFirst,
    ProductLkpMgr_MoveNext,
    ProductLkpMgr_MovePrevious,
    ProductLkpMgr_FindRow,
    ProductLkpMgr_FindRowBySyncID,
    ProductLkpMgr_SetDirtySyncFlags,
    ProductLkpMgr_SetDirtySessionFlags,
    ProductLkpMgr_CSVProductExport,
    ProductLkpMgr_BinaryProductExport,
    ProductLkpMgr_BinaryProductImport,
    ProductLkpMgr_BinaryImportResetRstState,

    ProductEditorDlg_Show,
    ProductImportDlg_Show,
    ProductExportDlg_Show,

    Count
};

/// What the trace hears of each, in the same order. Hosts filter their traces by these texts, so the odd ones
/// stay: the store speaks as "KestrinProductMgr." but for three methods, and the export launcher as the
/// import launcher.
inline constexpr std::array<std::u16string_view, static_cast<std::size_t>(ErrorContext::Count)>
    kErrorContextTexts = {
        u"KestrinProductEditor.Product::Name",
        u"KestrinProductEditor.Product::Key",
        u"KestrinProductEditor.Product::PartNum",
        u"KestrinProductEditor.Product::UnitPrice",
        u"KestrinProductEditor.Product::Note",
        u"KestrinProductEditor.Product::Unpack",
        u"KestrinProductEditor.Product::Pack",

        u"KestrinProductMgr.ProductLkpMgr::Class_Initialize",
        u"KestrinProductMgr.ProductLkpMgr::Class_Terminate",
        u"KestrinProductMgr.ProductLkpMgr::GetProductFilePath",
        u"KestrinProductMgr.ProductLkpMgr::InitProductRS",
        u"KestrinProductMgr.ProductLkpMgr::LoadProductRS",
        u"KestrinProductMgr.ProductLkpMgr::SaveProductRS",
        u"KestrinProductMgr.ProductLkpMgr::GetLastRowID",
        u"KestrinProductMgr.ProductLkpMgr::SortProductRS",
        u"KestrinProductMgr.ProductLkpMgr::ProductRemoveEmptyRows",
        u"KestrinProductEditor.ProductLkpMgr::Pack",
        u"KestrinProductEditor.ProductLkpMgr::Update",
        u"KestrinProductMgr.ProductLkpMgr::Count",
        u"KestrinProductMgr.ProductLkpMgr::Fields",
        u"KestrinProductMgr.ProductLkpMgr::AddNew",
        u"KestrinProductMgr.ProductLkpMgr::Delete",
        u"KestrinProductMgr.ProductLkpMgr::DeleteAll",
        u"KestrinProductMgr.ProductLkpMgr::BOF",
        u"KestrinProductMgr.ProductLkpMgr::EOF",
        u"KestrinProductMgr.ProductLkpMgr::MoveLast",
        u"KestrinProductMgr.ProductLkpMgr::MoveFirst",
        u"KestrinProductMgr.ProductLkpMgr::MoveNext",
        u"KestrinProductMgr.ProductLkpMgr::MovePrevious",
        u"KestrinProductMgr.ProductLkpMgr::FindRow",
        u"KestrinProductMgr.ProductLkpMgr::FindRowBySyncID",
        u"KestrinProductMgr.ProductLkpMgr::SetDirtySyncFlags",
        u"KestrinProductMgr.ProductLkpMgr::SetDirtySessionFlags",
        u"KestrinProductEditor.ProductLkpMgr::CSVProductExport",
        u"KestrinProductMgr.ProductLkpMgr::BinaryProductExport",
        u"KestrinProductMgr.ProductLkpMgr::BinaryProductImport",
        u"KestrinProductMgr.ProductLkpMgr::BinaryImportResetRstState",

        u"KestrinProductEditor.ProductEditorDlg::Show",
        u"KestrinProductEditor.ProductImportDlg::Show",
        u"KestrinProductEditor.ProductImportDlg::Show",
};

[[nodiscard]] constexpr std::u16string_view TextOf(ErrorContext context)
{
    return kErrorContextTexts[static_cast<std::size_t>(context)];
}

} // namespace KestrinProductEditor
