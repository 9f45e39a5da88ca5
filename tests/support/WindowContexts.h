// SPDX-License-Identifier: MIT
#pragma once

#include "frame/ErrorContext.h"
#include "frame/Traced.h"

#include <array>
#include <string_view>

namespace KestrinProductEditor {

/// A traced method that runs in a window: its text as hosts know it, and how it ends after an error.
struct WindowContext
{
    ErrorContext context;
    std::string_view text;
    Ending ending;
};

// Each folder's tests of forms walk their own table; together with the methods that need no window they are
// all there are.

inline constexpr std::array<WindowContext, 37> kEditorContexts = {{
    {ErrorContext::ProductEditorDlg_Show, "KestrinProductEditor.ProductEditorDlg::Show", Ending::PassOn},
    {ErrorContext::frmProductEditor_PrvSetEditState, "KestrinProductEditor.frmProductEditor::PrvSetEditState",
     Ending::PassOn},
    {ErrorContext::frmProductEditor_PrvNewProduct, "KestrinProductEditor.frmProductEditor::PrvNewProduct",
     Ending::PassOn},
    {ErrorContext::frmProductEditor_PrvAddNewProduct,
     "KestrinProductEditor.frmProductEditor::PrvAddNewProduct", Ending::PassOn},
    {ErrorContext::frmProductEditor_PrvEditProduct, "KestrinProductEditor.frmProductEditor::PrvEditProduct",
     Ending::PassOn},
    {ErrorContext::frmProductEditor_PrvShowCurrentRow,
     "KestrinProductEditor.frmProductEditor::PrvShowCurrentRow", Ending::PassOn},
    {ErrorContext::frmProductEditor_PrvLoadProductInfo,
     "KestrinProductEditor.frmProductEditor::PrvLoadProductInfo", Ending::PassOn},
    {ErrorContext::frmProductEditor_CancelSaveProduct,
     "KestrinProductEditor.frmProductEditor::CancelSaveProduct", Ending::PassOn},
    {ErrorContext::frmProductEditor_cmdNew_Click, "KestrinProductEditor.frmProductEditor::cmdNew_Click",
     Ending::Swallow},
    {ErrorContext::frmProductEditor_cmdSaveEdit_Click,
     "KestrinProductEditor.frmProductEditor::cmdSaveEdit_Click", Ending::Swallow},
    {ErrorContext::frmProductEditor_cmdCancelEdit_Click,
     "KestrinProductEditor.frmProductEditor::cmdCancelEdit_Click", Ending::Swallow},
    {ErrorContext::frmProductEditor_cmdSaveClose_Click,
     "KestrinProductEditor.frmProductEditor::cmdSaveClose_Click", Ending::Swallow},
    {ErrorContext::frmProductEditor_cmdCancel_Click, "KestrinProductEditor.frmProductEditor::cmdCancel_Click",
     Ending::Swallow},
    {ErrorContext::frmProductEditor_PrvInitView, "KestrinProductEditor.frmProductEditor::PrvInitView",
     Ending::PassOn},
    {ErrorContext::frmProductEditor_PrvReadPrefs, "KestrinProductEditor.frmProductEditor::PrvReadPrefs",
     Ending::Swallow},
    {ErrorContext::frmProductEditor_PrvSaveViewPrefs,
     "KestrinProductEditor.frmProductEditor::PrvSaveViewPrefs", Ending::Swallow},
    {ErrorContext::frmProductEditor_PrvRefreshView, "KestrinProductEditor.frmProductEditor::PrvRefreshView",
     Ending::PassOn},
    {ErrorContext::frmProductEditor_flexGrid_GotFocus,
     "KestrinProductEditor.frmProductEditor::flexGrid_GotFocus", Ending::Swallow},
    {ErrorContext::frmProductEditor_flexGrid_RowColChange,
     "KestrinProductEditor.frmProductEditor::flexGrid_RowColChange", Ending::Swallow},
    {ErrorContext::frmProductEditor_flexGrid_DblClick,
     "KestrinProductEditor.frmProductEditor::flexGrid_DblClick", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtProductName_Change,
     "KestrinProductEditor.frmProductEditor::txtProductName_Change", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtPartNum_Change,
     "KestrinProductEditor.frmProductEditor::txtPartNum_Change", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtNote_Change, "KestrinProductEditor.frmProductEditor::txtNote_Change",
     Ending::Swallow},
    {ErrorContext::frmProductEditor_txtUnitPrice_Change,
     "KestrinProductEditor.frmProductEditor::txtUnitPrice_Change", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtProductName_DblClick,
     "KestrinProductEditor.frmProductEditor::flexGrid_DblClick", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtPartNum_DblClick,
     "KestrinProductEditor.frmProductEditor::txtPartNum_DblClick", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtUnitPrice_DblClick,
     "KestrinProductEditor.frmProductEditor::txtUnitPrice_DblClick", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtNote_DblClick,
     "KestrinProductEditor.frmProductEditor::txtNote_DblClick", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtUnitPrice_GotFocus,
     "KestrinProductEditor.frmProductEditor::txtUnitPrice_GotFocus", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtUnitPrice_LostFocus,
     "KestrinProductEditor.frmProductEditor::txtUnitPrice_LostFocus", Ending::Swallow},
    {ErrorContext::frmProductEditor_txtUnitPrice_KeyPress,
     "KestrinProductEditor.frmProductEditor::txtUnitPrice_KeyPress", Ending::Swallow},
    {ErrorContext::frmProductEditor_PrvSaveUnitPriceFld,
     "KestrinProductEditor.frmProductEditor::PrvSaveUnitPriceFld", Ending::PassOn},
    {ErrorContext::frmProductEditor_SSActiveToolBars1_ToolClick,
     "KestrinProductEditor.frmProductEditor::SSActiveToolBars1_ToolClick", Ending::Swallow},
    {ErrorContext::frmProductEditor_cmdDelete_Click, "KestrinProductEditor.frmProductEditor::cmdDelete_Click",
     Ending::Swallow},
    {ErrorContext::frmProductEditor_PrvDeleteSelected,
     "KestrinProductEditor.frmProductEditor::PrvDeleteSelected", Ending::PassOn},
    {ErrorContext::frmProductEditor_PrvImportProducts,
     "KestrinProductEditor.frmProductEditor::PrvImportProducts", Ending::PassOn},
    {ErrorContext::frmProductEditor_ExportProducts, "KestrinProductEditor.frmProductEditor::ExportProducts",
     Ending::Swallow},
}};

inline constexpr std::array<WindowContext, 10> kExchangeContexts = {{
    {ErrorContext::ProductImportDlg_Show, "KestrinProductEditor.ProductImportDlg::Show", Ending::PassOn},
    {ErrorContext::ProductExportDlg_Show, "KestrinProductEditor.ProductImportDlg::Show", Ending::PassOn},
    {ErrorContext::frmProductImport_PrvShowPreviewDlg,
     "KestrinProductEditor.frmProductImport::PrvShowPreviewDlg", Ending::PassOn},
    {ErrorContext::frmProductImport_PrvImportProducts,
     "KestrinProductEditor.frmProductImport::PrvImportProducts", Ending::PassOn},
    {ErrorContext::frmProductImport_cmdImport_Click, "KestrinProductEditor.frmProductImport::cmdImport_Click",
     Ending::Swallow},
    {ErrorContext::frmProductImport_cmdPreview_Click,
     "KestrinProductEditor.frmProductImport::cmdPreview_Click", Ending::Swallow},
    {ErrorContext::frmProductExport_PrvBrowseForExportFilePath,
     "KestrinProductEditor.frmProductExport::PrvBrowseForExportFilePath", Ending::PassOn},
    {ErrorContext::frmProductExport_cmdBrowse_Click, "KestrinProductEditor.frmProductExport::cmdBrowse_Click",
     Ending::Swallow},
    {ErrorContext::frmProductExport_ExportProducts, "KestrinProductEditor.frmProductExport::ExportProducts",
     Ending::PassOn},
    {ErrorContext::frmProductExport_cmdExport_Click, "KestrinProductEditor.frmProductExport::cmdExport_Click",
     Ending::Swallow},
}};

inline constexpr std::array<WindowContext, 1> kViewContexts = {{
    {ErrorContext::ProductDetails_Init, "KestrinProductEditor.ProductDetails::Init", Ending::PassOn},
}};

} // namespace KestrinProductEditor
