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

    frmProductEditor_PrvSetEditState,
    frmProductEditor_PrvNewProduct,
    frmProductEditor_PrvAddNewProduct,
    frmProductEditor_PrvEditProduct,
    frmProductEditor_PrvShowCurrentRow,
    frmProductEditor_PrvLoadProductInfo,
    frmProductEditor_CancelSaveProduct,
    frmProductEditor_cmdNew_Click,
    frmProductEditor_cmdSaveEdit_Click,
    frmProductEditor_cmdCancelEdit_Click,
    frmProductEditor_cmdSaveClose_Click,
    frmProductEditor_cmdCancel_Click,
    frmProductEditor_PrvInitView,
    frmProductEditor_PrvReadPrefs,
    frmProductEditor_PrvSaveViewPrefs,
    frmProductEditor_PrvRefreshView,
    frmProductEditor_flexGrid_GotFocus,
    frmProductEditor_flexGrid_RowColChange,
    frmProductEditor_flexGrid_DblClick,
    frmProductEditor_txtProductName_Change,
    frmProductEditor_txtPartNum_Change,
    frmProductEditor_txtNote_Change,
    frmProductEditor_txtUnitPrice_Change,
    frmProductEditor_txtProductName_DblClick,
    frmProductEditor_txtPartNum_DblClick,
    frmProductEditor_txtUnitPrice_DblClick,
    frmProductEditor_txtNote_DblClick,
    frmProductEditor_txtUnitPrice_GotFocus,
    frmProductEditor_txtUnitPrice_LostFocus,
    frmProductEditor_txtUnitPrice_KeyPress,
    frmProductEditor_PrvSaveUnitPriceFld,
    frmProductEditor_SSActiveToolBars1_ToolClick,
    frmProductEditor_cmdDelete_Click,
    frmProductEditor_PrvDeleteSelected,
    frmProductEditor_PrvImportProducts,
    frmProductEditor_ExportProducts,

    frmProductImport_PrvShowPreviewDlg,
    frmProductImport_PrvImportProducts,
    frmProductImport_cmdImport_Click,
    frmProductImport_cmdPreview_Click,

    frmProductExport_PrvBrowseForExportFilePath,
    frmProductExport_cmdBrowse_Click,
    frmProductExport_ExportProducts,
    frmProductExport_cmdExport_Click,

    ProductDetails_Init,

    Count
};

/// What the trace hears of each, in the same order. Hosts filter their traces by these texts, so the odd ones
/// stay: the store speaks as "KestrinProductMgr." but for three methods, the export launcher as the
/// import launcher, and the name box's double click as the list's.
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

        u"KestrinProductEditor.frmProductEditor::PrvSetEditState",
        u"KestrinProductEditor.frmProductEditor::PrvNewProduct",
        u"KestrinProductEditor.frmProductEditor::PrvAddNewProduct",
        u"KestrinProductEditor.frmProductEditor::PrvEditProduct",
        u"KestrinProductEditor.frmProductEditor::PrvShowCurrentRow",
        u"KestrinProductEditor.frmProductEditor::PrvLoadProductInfo",
        u"KestrinProductEditor.frmProductEditor::CancelSaveProduct",
        u"KestrinProductEditor.frmProductEditor::cmdNew_Click",
        u"KestrinProductEditor.frmProductEditor::cmdSaveEdit_Click",
        u"KestrinProductEditor.frmProductEditor::cmdCancelEdit_Click",
        u"KestrinProductEditor.frmProductEditor::cmdSaveClose_Click",
        u"KestrinProductEditor.frmProductEditor::cmdCancel_Click",
        u"KestrinProductEditor.frmProductEditor::PrvInitView",
        u"KestrinProductEditor.frmProductEditor::PrvReadPrefs",
        u"KestrinProductEditor.frmProductEditor::PrvSaveViewPrefs",
        u"KestrinProductEditor.frmProductEditor::PrvRefreshView",
        u"KestrinProductEditor.frmProductEditor::flexGrid_GotFocus",
        u"KestrinProductEditor.frmProductEditor::flexGrid_RowColChange",
        u"KestrinProductEditor.frmProductEditor::flexGrid_DblClick",
        u"KestrinProductEditor.frmProductEditor::txtProductName_Change",
        u"KestrinProductEditor.frmProductEditor::txtPartNum_Change",
        u"KestrinProductEditor.frmProductEditor::txtNote_Change",
        u"KestrinProductEditor.frmProductEditor::txtUnitPrice_Change",
        u"KestrinProductEditor.frmProductEditor::flexGrid_DblClick",
        u"KestrinProductEditor.frmProductEditor::txtPartNum_DblClick",
        u"KestrinProductEditor.frmProductEditor::txtUnitPrice_DblClick",
        u"KestrinProductEditor.frmProductEditor::txtNote_DblClick",
        u"KestrinProductEditor.frmProductEditor::txtUnitPrice_GotFocus",
        u"KestrinProductEditor.frmProductEditor::txtUnitPrice_LostFocus",
        u"KestrinProductEditor.frmProductEditor::txtUnitPrice_KeyPress",
        u"KestrinProductEditor.frmProductEditor::PrvSaveUnitPriceFld",
        u"KestrinProductEditor.frmProductEditor::SSActiveToolBars1_ToolClick",
        u"KestrinProductEditor.frmProductEditor::cmdDelete_Click",
        u"KestrinProductEditor.frmProductEditor::PrvDeleteSelected",
        u"KestrinProductEditor.frmProductEditor::PrvImportProducts",
        u"KestrinProductEditor.frmProductEditor::ExportProducts",

        u"KestrinProductEditor.frmProductImport::PrvShowPreviewDlg",
        u"KestrinProductEditor.frmProductImport::PrvImportProducts",
        u"KestrinProductEditor.frmProductImport::cmdImport_Click",
        u"KestrinProductEditor.frmProductImport::cmdPreview_Click",

        u"KestrinProductEditor.frmProductExport::PrvBrowseForExportFilePath",
        u"KestrinProductEditor.frmProductExport::cmdBrowse_Click",
        u"KestrinProductEditor.frmProductExport::ExportProducts",
        u"KestrinProductEditor.frmProductExport::cmdExport_Click",

        u"KestrinProductEditor.ProductDetails::Init",
};

[[nodiscard]] constexpr std::u16string_view TextOf(ErrorContext context)
{
    return kErrorContextTexts[static_cast<std::size_t>(context)];
}

} // namespace KestrinProductEditor
