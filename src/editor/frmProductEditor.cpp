// SPDX-License-Identifier: MIT
#include "editor/frmProductEditor.h"

#include "editor/ScopedFlag.h"
#include "frame/SkipFailure.h"
#include "frame/Traced.h"
#include "frame/modResourceDefs.h"
#include "frame/modResourceUtils.h"
#include "util/modLocale.h"

#include <utility>

namespace KestrinProductEditor {

using namespace modResourceDefs;
using modResourceUtils::GetResString;

namespace {

constexpr std::u16string_view kViewName = u"ProductEditorDlg";

} // namespace

frmProductEditor::frmProductEditor()
    : m_form(Toolkit().CreateForm(u"frmProductEditor")),
      m_SSActiveToolBars1(m_form->ToolBar(u"SSActiveToolBars1")), m_flexGrid(m_form->Grid(u"flexGrid")),
      m_lblProductView(m_form->Label(u"lblProductView")),
      m_lblProductDetails(m_form->Label(u"lblProductDetails")),
      m_txtProductName(m_form->TextBox(u"txtProductName")), m_txtPartNum(m_form->TextBox(u"txtPartNum")),
      m_txtUnitPrice(m_form->TextBox(u"txtUnitPrice")), m_txtNote(m_form->TextBox(u"txtNote")),
      m_cmdNew(m_form->Button(u"cmdNew")), m_cmdDelete(m_form->Button(u"cmdDelete")),
      m_cmdSaveEdit(m_form->Button(u"cmdSaveEdit")), m_cmdCancelEdit(m_form->Button(u"cmdCancelEdit")),
      m_cmdSaveClose(m_form->Button(u"cmdSaveClose")), m_cmdCancel(m_form->Button(u"cmdCancel"))
{
    PrvSetTools();
    m_cmdSaveEdit.SetShortcut(Ctrl(Key::S));
    m_form->SetFirstFocus(m_flexGrid);
    PrvShowEditState(false);

    m_form->CloseBox.Connect([this] { CloseBox(); });
    m_form->Escape.Connect([this] { Escape(); });
    m_cmdNew.Click.Connect([this] { cmdNew_Click(); });
    m_cmdDelete.Click.Connect([this] { cmdDelete_Click(); });
    m_cmdSaveEdit.Click.Connect([this] { cmdSaveEdit_Click(); });
    m_cmdCancelEdit.Click.Connect([this] { cmdCancelEdit_Click(); });
    m_cmdSaveClose.Click.Connect([this] { cmdSaveClose_Click(); });
    m_cmdCancel.Click.Connect([this] { cmdCancel_Click(); });
    m_flexGrid.GotFocus.Connect([this] { flexGrid_GotFocus(); });
    m_flexGrid.RowColChange.Connect([this] { flexGrid_RowColChange(); });
    m_flexGrid.DblClick.Connect([this] { flexGrid_DblClick(); });
    PrvConnectFields();
}

frmProductEditor::~frmProductEditor() = default;

void frmProductEditor::Load() noexcept
{
    SkipFailure([&] {
        try {
            PrvInitView();
        } catch (...) {
            // Everything below counts on the header row and on the column of row identifiers.
            PrvShapeList();
        }
    });
    m_lCurRowID = -1;
    SkipFailure([&] {
        try {
            m_objProdLkpMgr = ProductLkpMgr::Create();
        } catch (...) {
            PrvSayThatThereIsNoList(ErrorInFlight());
        }
    });
    SkipFailure([&] { m_objFlexDataSrc = std::make_shared<FlexDataSrc>(); });
    SkipFailure([&] { m_objFlexDataSrc->SetDataSource(m_objProdLkpMgr); });
    SkipFailure([&] { m_flexGrid.SetDataSource(m_objFlexDataSrc, m_objFlexDataSrc); });
    SkipFailure([&] { m_flexGrid.SetCurrentRow(1); });
    SkipFailure([&] { m_flexGrid.Refresh(); });
    SkipFailure([&] { PrvSetCaptions(); });
}

void frmProductEditor::Init(const Variant& /*vParams*/)
{
    PrvInitLocale();
}

void frmProductEditor::ShowModal()
{
    m_form->ShowModal();
    if (m_bUnloaded)
        return;
    // The program ends and asks no more: what was typed is kept rather than lost.
    SkipFailure([&] { PrvSaveProductInfo(false); });
    Form_Unload();
}

void frmProductEditor::Form_Unload() noexcept
{
    if (std::exchange(m_bUnloaded, true))
        return;
    SkipFailure([&] { PrvSaveViewPrefs(kViewName); });
    SkipFailure([&] { m_form->EndModal(); });
}

void frmProductEditor::CloseBox()
{
    // A handler that fails must not lock the user in. The answer Cancel is no failure.
    if (!cmdCancel_Click())
        Form_Unload();
}

void frmProductEditor::Escape()
{
    if (m_txtProductName.IsLocked())
        cmdCancel_Click();
    else
        cmdCancelEdit_Click();
}

void frmProductEditor::PrvInitLocale()
{
    modLocale::GetLocaleSeparators(m_sMonThousandSep, m_sMonDecimalSep, m_sThousandSep, m_sDecimalSep);
    m_sCurrencySymbol = modLocale::GetLocaleCurrencySymbol();
}

void frmProductEditor::PrvSetCaptions()
{
    const auto label = [&](std::u16string_view name, std::int32_t lResID) {
        m_form->Label(name).SetCaption(GetResString(lResID));
    };
    label(u"lblTip", kTip);
    m_form->SetCaption(GetResString(kProductEditor));
    label(u"lblProductView", kProductListTitle);
    m_cmdSaveClose.SetCaption(GetResString(kSaveAndClose));
    m_cmdCancel.SetCaption(GetResString(kCancel));
    label(u"lblProductName", kFieldName);
    label(u"lblPartNum", kFieldPartNum);
    label(u"lblUnitPrice", kFieldUnitPrice);
    label(u"lblNote", kFieldNote);
    m_cmdNew.SetCaption(u"New");
    m_cmdDelete.SetCaption(u"Delete");
    m_cmdSaveEdit.SetCaption(u"Save");
    m_cmdCancelEdit.SetCaption(u"Cancel Edit");

    m_cmdSaveEdit.SetToolTip(u"Keep the changes to this product (Ctrl+S)");
    m_cmdCancelEdit.SetToolTip(u"Stop editing this product (Esc)");
    m_cmdSaveClose.SetToolTip(u"Write all changes into the catalogue and close");
    m_cmdCancel.SetToolTip(u"Close; asks whether the changes shall be kept");
}

void frmProductEditor::PrvSayThatThereIsNoList(const AutomationError& error)
{
    m_bNoList = true;
    m_cmdNew.SetEnabled(false);
    m_cmdDelete.SetEnabled(false);
    m_cmdSaveClose.SetEnabled(false);
    PrvShowEditState(false);
    m_flexGrid.SetNotice(u"The product list could not be opened: " + error.Description());
}

ProductLkpMgr& frmProductEditor::PrvStore() const
{
    if (m_objProdLkpMgr == nullptr)
        throw AutomationError(kErrObjectNotSet);
    return *m_objProdLkpMgr;
}

void frmProductEditor::PrvSaveProductInfo(bool bPrompt)
{
    if (!m_objProduct.Dirty())
        return;
    if (bPrompt && MessageBoxes().Show(GetResString(kAskSaveProduct), kMessageYesNo,
                                       GetResString(kApplicationTitle)) != MessageAnswer::Yes) {
        PrvSetDirty(false);
        return;
    }
    try {
        PrvSetDirty(false);
        // A host's trace may open an editor of its own, and the working product be another one behind it.
        const Product product = m_objProduct;
        if (product.IsNew())
            PrvAddProduct(product);
        else
            PrvStore().Update(product.Pack());
    } catch (...) {
        // It still waits for its save, and whoever leaves it is asked.
        m_objProduct.Dirty(true);
        throw;
    }
}

/// Adds it to the list. The working product is that row's from then on: when a later step fails and it is
/// edited further, the next save must not add it again.
void frmProductEditor::PrvAddProduct(const Product& product)
{
    m_lCurRowID = PrvStore().AddNew(product.Pack());
    if (!m_objProduct.IsNew())
        return;
    SkipFailure([&] {
        Product added;
        added.Unpack(PrvStore().Pack(m_lCurRowID));
        m_objProduct = std::move(added);
    });
}

void frmProductEditor::PrvSetDirty(bool bDirty)
{
    if (bDirty && m_bLoading)
        return;
    m_objProduct.Dirty(bDirty);
}

void frmProductEditor::PrvSetEditState(bool bEditing)
{
    Traced(ErrorContext::frmProductEditor_PrvSetEditState, [&] { PrvShowEditState(bEditing); });
}

void frmProductEditor::PrvShowEditState(bool bEditing)
{
    const bool bCommands = !bEditing && !m_bNoList;
    m_SSActiveToolBars1.SetToolEnabled(u"ID_File", bCommands);
    m_SSActiveToolBars1.SetToolEnabled(u"ID_Edit", bCommands);
    for (ITextBox* const box : {&m_txtProductName, &m_txtPartNum, &m_txtUnitPrice, &m_txtNote}) {
        box->SetBackColor(bEditing ? kWhite : kLightGrey);
        box->SetLocked(!bEditing);
    }
    std::u16string caption = m_objProduct.Name();
    if (bEditing)
        caption = m_objProduct.IsNew() ? GetResString(kNewProduct) : GetResString(kEditing) + u" " + caption;
    m_lblProductDetails.SetCaption(caption);
    // A button that is hidden while it has the focus hands it to the list, and the list then shows its own
    // current row. So the focus leaves first where editing begins, and buttons go last where it ends.
    if (bEditing)
        m_txtProductName.SetFocus();
    IButton* const viewing[] = {&m_cmdNew, &m_cmdDelete};
    IButton* const editing[] = {&m_cmdSaveEdit, &m_cmdCancelEdit};
    for (IButton* const button : bEditing ? editing : viewing)
        button->SetVisible(true);
    for (IButton* const button : bEditing ? viewing : editing)
        button->SetVisible(false);
}

void frmProductEditor::PrvNewProduct()
{
    Traced(ErrorContext::frmProductEditor_PrvNewProduct, [&] {
        PrvTakeProduct(std::nullopt);
        PrvSetEditState(true);
    });
}

void frmProductEditor::PrvAddNewProduct()
{
    Traced(ErrorContext::frmProductEditor_PrvAddNewProduct, [&] {
        m_cmdNew.SetFocus();
        {
            const RedrawPause pause(m_flexGrid);
            m_flexGrid.SetSelectionMode(SelectionMode::WholeRow);
            m_flexGrid.SetCurrentRow(-1);
            m_flexGrid.Refresh();
            m_flexGrid.SetSelectionMode(SelectionMode::ListBox);
        }
        PrvNewProduct();
    });
}

void frmProductEditor::PrvEditProduct(bool bUseCurrentRow)
{
    Traced(ErrorContext::frmProductEditor_PrvEditProduct, [&] {
        const std::int32_t row = bUseCurrentRow ? m_flexGrid.CurrentRow() : m_flexGrid.MouseRow();
        if (row < 1)
            return;
        // The save may move rows; the one that was chosen counts.
        const std::int32_t rowID = PrvGetRowID(row);
        PrvSaveProductInfo(true);
        m_lCurRowID = rowID;
        PrvTakeProduct(m_lCurRowID);
        PrvSetEditState(true);
    });
}

void frmProductEditor::PrvShowCurrentRow()
{
    Traced(ErrorContext::frmProductEditor_PrvShowCurrentRow, [&] {
        const std::int32_t row = m_flexGrid.CurrentRow();
        if (row < 1) {
            PrvSaveProductInfo(true);
            PrvShowNoProduct();
            return;
        }
        const std::int32_t rowID = PrvGetRowID(row);
        PrvSaveProductInfo(true);
        if (rowID < 0)
            return;
        PrvTakeProduct(rowID);
        PrvSetEditState(false);
    });
}

/// Open boxes without a product would take what nobody can save.
void frmProductEditor::PrvShowNoProduct()
{
    try {
        PrvClearProductInfo();
        PrvSetEditState(false);
    } catch (...) {
        PrvEmptyPane();
        throw;
    }
}

void frmProductEditor::PrvClearProductInfo()
{
    const ScopedFlag loading(m_bLoading);
    m_txtProductName.SetText(u"");
    m_txtPartNum.SetText(u"");
    PrvWriteUnitPrice(u"");
    m_txtNote.SetText(u"");
    m_objProduct = Product();
    m_objProduct.Name(u"");
}

/// Makes a row's product (nothing: a new one) the working product, and shows it. When that fails the pane is
/// emptied and locked: what still stands in the boxes must never be taken for that product's.
void frmProductEditor::PrvTakeProduct(std::optional<std::int32_t> lRowID)
{
    try {
        Product product;
        product.Unpack(lRowID ? PrvStore().Pack(*lRowID) : Variant::Null());
        m_objProduct = std::move(product);
        PrvLoadProductInfo();
    } catch (...) {
        PrvEmptyPane();
        throw;
    }
}

void frmProductEditor::PrvEmptyPane() noexcept
{
    SkipFailure([&] { PrvClearProductInfo(); });
    m_objProduct = Product();
    SkipFailure([&] { PrvShowEditState(false); });
}

void frmProductEditor::CancelSaveProduct()
{
    Traced(ErrorContext::frmProductEditor_CancelSaveProduct, [&] {
        PrvSaveProductInfo(false);
        PrvRefreshView(true);
        PrvShowCurrentRow();
        PrvSetEditState(false);
    });
}

void frmProductEditor::cmdNew_Click()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_cmdNew_Click, [&] { PrvAddNewProduct(); });
}

void frmProductEditor::cmdSaveEdit_Click()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_cmdSaveEdit_Click, [&] {
        m_cmdSaveEdit.SetFocus();
        PrvSaveProductInfo(false);
        PrvRefreshView(true);
        PrvShowCurrentRow();
        PrvSetEditState(false);
    });
}

void frmProductEditor::cmdCancelEdit_Click()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_cmdCancelEdit_Click, [&] {
        m_cmdCancelEdit.SetFocus();
        PrvSaveProductInfo(true);
        PrvRefreshView(true);
        PrvShowCurrentRow();
    });
}

void frmProductEditor::cmdSaveClose_Click()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_cmdSaveClose_Click, [&] {
        PrvSaveProductInfo(false);
        PrvStore().CancelUpdate(false);
        Form_Unload();
    });
}

bool frmProductEditor::cmdCancel_Click()
{
    return Traced<Ending::Swallow>(ErrorContext::frmProductEditor_cmdCancel_Click, [&] {
        try {
            CancelSaveProduct();
        } catch (...) {
            // Once nothing is left to save, a row that cannot be shown must not keep the user from leaving.
            if (m_objProduct.Dirty())
                throw;
        }
        if (m_objProdLkpMgr != nullptr && m_objProdLkpMgr->SessionIsDirty()) {
            switch (MessageBoxes().Show(GetResString(kAskSaveProductList), kMessageYesNoCancel,
                                        GetResString(kApplicationTitle))) {
            case MessageAnswer::Yes:
                m_objProdLkpMgr->CancelUpdate(false);
                break;
            case MessageAnswer::No:
                m_objProdLkpMgr->CancelUpdate(true);
                break;
            default:
                return true;
            }
        }
        Form_Unload();
        return true;
    });
}

} // namespace KestrinProductEditor
