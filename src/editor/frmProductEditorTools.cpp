// SPDX-License-Identifier: MIT
#include "editor/frmProductEditor.h"

#include "editor/ScopedFlag.h"
#include "exchange/frmProductImport.h"
#include "frame/Traced.h"
#include "frame/modResourceDefs.h"
#include "frame/modResourceUtils.h"

#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>

#include <memory>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr std::u16string_view kTitle = u"Salvo";

[[nodiscard]] std::vector<Tool> Tools()
{
    return {
        {.id = u"ID_File", .caption = u"File", .menu = {}, .shortcuts = {}, .onlyIn = {}},
        {.id = u"ID_Import",
         .caption = u"Import...",
         .menu = u"ID_File",
         .shortcuts = {Ctrl(Key::I)},
         .icon = ToolIcon::Import,
         .onlyIn = {}},
        {.id = u"ID_Export",
         .caption = u"Export...",
         .menu = u"ID_File",
         .shortcuts = {Ctrl(Key::E)},
         .icon = ToolIcon::Export,
         .onlyIn = {}},
        {.id = u"ID_Edit", .caption = u"Edit", .menu = {}, .shortcuts = {}, .onlyIn = {}},
        {.id = u"ID_NewProduct",
         .caption = u"New Product",
         .menu = u"ID_Edit",
         .shortcuts = {Ctrl(Key::N)},
         .icon = ToolIcon::NewProduct,
         .onlyIn = {}},
        {.id = u"ID_EditProduct",
         .caption = u"Edit Product",
         .menu = u"ID_Edit",
         .shortcuts = {{.key = Key::F2}, {.key = Key::Enter}},
         .icon = ToolIcon::EditProduct,
         .onlyIn = u"flexGrid"},
        {.id = u"ID_Delete",
         .caption = u"Delete",
         .menu = u"ID_Edit",
         .shortcuts = {{.key = Key::Delete}},
         .icon = ToolIcon::Delete,
         .onlyIn = u"flexGrid"},
        {.id = u"ID_SelectAll",
         .caption = u"Select All",
         .menu = u"ID_Edit",
         .shortcuts = {Ctrl(Key::A)},
         .icon = ToolIcon::SelectAll,
         .onlyIn = u"flexGrid",
         .beginsGroup = true},
    };
}

} // namespace

void frmProductEditor::PrvSetTools()
{
    m_SSActiveToolBars1.SetTools(Tools());
    m_SSActiveToolBars1.ToolClick.Connect(
        [this](std::u16string_view sToolID) { SSActiveToolBars1_ToolClick(sToolID); });
}

void frmProductEditor::SSActiveToolBars1_ToolClick(std::u16string_view sToolID)
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_SSActiveToolBars1_ToolClick, [&] {
        if (sToolID == u"ID_SelectAll") {
            PrvSelectAll();
        } else if (sToolID == u"ID_Delete") {
            PrvRefreshViewAfter([&] { PrvDeleteSelected(); });
        } else if (sToolID == u"ID_NewProduct") {
            PrvAddNewProduct();
        } else if (sToolID == u"ID_EditProduct") {
            PrvEditProduct(true);
        } else if (sToolID == u"ID_Import") {
            PrvImportProducts();
        } else if (sToolID == u"ID_Export") {
            ExportProducts();
        }
    });
}

void frmProductEditor::cmdDelete_Click()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_cmdDelete_Click, [&] {
        const std::int32_t rowID = PrvGetSelectedRowID();
        if (rowID == -1) {
            MessageBoxes().Show(u"Please select a product first.", kMessageInformation, kTitle);
            return;
        }
        using modResourceUtils::GetResString;
        if (MessageBoxes().Show(GetResString(modResourceDefs::kAskDeleteProduct), kMessageYesNoCancel,
                                GetResString(modResourceDefs::kApplicationTitle)) != MessageAnswer::Yes)
            return;
        PrvRefreshViewAfter([&] { PrvStore().Delete(rowID); });
        PrvShowCurrentRow();
        m_lCurRowID = PrvGetSelectedRowID();
    });
}

void frmProductEditor::PrvSelectAll()
{
    const std::int32_t rows = m_flexGrid.Rows();
    if (rows >= 2)
        m_flexGrid.SelectRange(1, 0, rows - 1, m_flexGrid.Cols() - 1);
}

/// The row identifiers of the selected rows, in row order; none when nothing is selected.
std::vector<std::int32_t> frmProductEditor::PrvGetSelectedRowIDs() const
{
    std::vector<std::int32_t> rowIDs;
    const std::int32_t count = m_flexGrid.SelectedRowCount();
    for (std::int32_t i = 0; i < count; ++i) {
        const std::int32_t rowID = PrvGetRowID(m_flexGrid.SelectedRow(i));
        if (rowID >= 0)
            rowIDs.push_back(rowID);
    }
    return rowIDs;
}

void frmProductEditor::PrvDeleteSelected()
{
    Traced(ErrorContext::frmProductEditor_PrvDeleteSelected, [&] {
        const std::vector<std::int32_t> rowIDs = PrvGetSelectedRowIDs();
        if (rowIDs.empty())
            return;
        if (MessageBoxes().Show(u"Are you sure you want to delete the selected product(s)?", kMessageYesNo,
                                kTitle) != MessageAnswer::Yes)
            return;
        for (const std::int32_t rowID : rowIDs)
            PrvStore().Delete(rowID);
    });
}

void frmProductEditor::PrvImportProducts()
{
    // Whatever becomes of it: it is asked for once.
    const std::u16string file = std::exchange(m_sImportFile, {});
    Traced(ErrorContext::frmProductEditor_PrvImportProducts, [&] {
        if (m_bInExchange)
            return;
        const ScopedFlag inExchange(m_bInExchange);
        // The list shows what has changed when it has the focus again.
        m_flexGrid.SetFocus();
        if (!file.empty()) {
            const auto frmImport = std::make_shared<frmProductImport>();
            frmImport->Load();
            frmImport->Init(m_objProdLkpMgr);
            frmImport->ChooseWhenShown(file);
            frmImport->ShowModal();
            return;
        }
        const std::shared_ptr<ProductImportDlg> dialog = ProductImportDlg::Create();
        dialog->Init(m_objProdLkpMgr);
        dialog->Show();
    });
}

void frmProductEditor::ExportProducts()
{
    const bool bShown = Traced<Ending::Swallow>(ErrorContext::frmProductEditor_ExportProducts, [&] {
        if (m_bInExchange)
            return true;
        const ScopedFlag inExchange(m_bInExchange);
        const std::shared_ptr<ProductExportDlg> dialog = ProductExportDlg::Create();
        dialog->Init(m_objProdLkpMgr);
        dialog->Show();
        return true;
    });
    if (!bShown)
        MessageBoxes().Show(u"An error occured while trying to export products.", kMessageExclamation,
                            kTitle);
}

} // namespace KestrinProductEditor
