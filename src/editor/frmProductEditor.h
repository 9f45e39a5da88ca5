// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/ProductLkpMgr.h>
#include <KestrinProductEditor/Variant.h>

#include "platform/ui/Toolkit.h"
#include "store/Product.h"
#include "views/FlexDataSrc.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The product editor: the catalogue in a list, and one product at a time in the boxes beside it.
///
/// It has two states. In view state the boxes are locked and show the list's current row; in edit state they
/// are open, and the list's commands wait. Whether the boxes are locked is the only mark of the state.
///
/// 1. The working product is the one that the boxes show, or an empty one. What is typed is in it at once.
/// 2. Edits that were not saved (Product::Dirty) leave it only by a save or by an answer of the user.
/// 3. The form owns its store; the store's release, with the form, writes the catalogue or does not.
///
/// Made, loaded and initialised in this order, then shown once.
class frmProductEditor final
{
public:
    /// The window, not shown yet. Raises what the toolkit raises.
    frmProductEditor();
    frmProductEditor(const frmProductEditor&) = delete;
    frmProductEditor& operator=(const frmProductEditor&) = delete;
    ~frmProductEditor();

    /// Opens the catalogue and fills the list. A catalogue that cannot be opened leaves a form that says why
    /// in the place of the list and changes nothing.
    void Load() noexcept;
    /// Reads the locale. The argument is not used.
    void Init(const Variant& vParams);
    /// Opens the import dialog with that file chosen as soon as the form is shown.
    void ImportWhenShown(std::u16string_view path) { m_sImportFile = path; }
    /// Returns when the form is closed. What was typed is saved when the program ends meanwhile.
    void ShowModal();
    /// The store that it writes the catalogue with when it goes; null when the catalogue could not be opened.
    [[nodiscard]] ProductLkpMgr* Store() const noexcept { return m_objProdLkpMgr.get(); }

private:
    // States and workflow

    void Form_Unload() noexcept;
    void CloseBox();
    void Escape();

    void PrvInitLocale();
    void PrvSetCaptions();
    void PrvSayThatThereIsNoList(const AutomationError& error);
    [[nodiscard]] ProductLkpMgr& PrvStore() const;
    void PrvSaveProductInfo(bool bPrompt);
    void PrvAddProduct(const Product& product);
    void PrvSetDirty(bool bDirty);
    void PrvSetEditState(bool bEditing);
    void PrvShowEditState(bool bEditing);
    void PrvNewProduct();
    void PrvAddNewProduct();
    void PrvEditProduct(bool bUseCurrentRow);
    void PrvShowCurrentRow();
    void PrvShowNoProduct();
    void PrvClearProductInfo();
    void PrvTakeProduct(std::optional<std::int32_t> lRowID);
    void PrvEmptyPane() noexcept;
    void CancelSaveProduct();

    void cmdNew_Click();
    void cmdSaveEdit_Click();
    void cmdCancelEdit_Click();
    void cmdSaveClose_Click();
    /// Whether it ended without an error.
    bool cmdCancel_Click();

    // The list and its preferences

    void PrvInitView();
    void PrvShapeList();
    void PrvReadPrefs(std::u16string_view sViewName);
    void PrvSaveViewPrefs(std::u16string_view sViewName);
    void PrvRefreshView(bool bRefresh);
    void PrvRefreshViewAfter(const std::function<void()>& step);
    [[nodiscard]] std::int32_t PrvGetRowID(std::int32_t row) const;
    [[nodiscard]] std::int32_t PrvGetSelectedRowID() const;

    void flexGrid_GotFocus();
    void flexGrid_RowColChange();
    void flexGrid_DblClick();

    // The boxes

    void PrvConnectFields();
    void PrvLoadProductInfo();
    void PrvSaveUnitPriceFld();
    void PrvWriteUnitPrice(std::u16string_view text);
    [[nodiscard]] bool PrvIsValidPriceKey(std::int32_t keyAscii) const;
    void PrvEditFromBox(ITextBox& box);

    void txtProductName_Change();
    void txtPartNum_Change();
    void txtNote_Change();
    void txtUnitPrice_Change();
    void txtProductName_DblClick();
    void txtPartNum_DblClick();
    void txtUnitPrice_DblClick();
    void txtNote_DblClick();
    void txtUnitPrice_GotFocus();
    void txtUnitPrice_LostFocus();
    void txtUnitPrice_KeyPress(std::int32_t& keyAscii);

    // Tools and deletion

    void PrvSetTools();
    void PrvSelectAll();
    [[nodiscard]] std::vector<std::int32_t> PrvGetSelectedRowIDs() const;
    void PrvDeleteSelected();
    void PrvImportProducts();
    void ExportProducts();

    void SSActiveToolBars1_ToolClick(std::u16string_view sToolID);
    void cmdDelete_Click();

    std::shared_ptr<ProductLkpMgr> m_objProdLkpMgr;
    std::shared_ptr<FlexDataSrc> m_objFlexDataSrc;
    Product m_objProduct;
    std::int32_t m_lCurRowID = -1;
    std::u16string m_sMonDecimalSep;
    std::u16string m_sMonThousandSep;
    std::u16string m_sDecimalSep;
    std::u16string m_sThousandSep;
    std::u16string m_sCurrencySymbol;
    bool m_bLoading = false;
    bool m_bInGridGotFocus = false;
    bool m_bInExchange = false;
    bool m_bNoList = false;
    bool m_bUnloaded = false;
    std::u16string m_sImportFile;
    /// What the form wrote into the price box, until the user changes it.
    std::optional<std::u16string> m_sPriceWritten;

    std::unique_ptr<IForm> m_form;
    IToolBar& m_SSActiveToolBars1;
    IGrid& m_flexGrid;
    ILabel& m_lblProductView;
    ILabel& m_lblProductDetails;
    ITextBox& m_txtProductName;
    ITextBox& m_txtPartNum;
    ITextBox& m_txtUnitPrice;
    ITextBox& m_txtNote;
    IButton& m_cmdNew;
    IButton& m_cmdDelete;
    IButton& m_cmdSaveEdit;
    IButton& m_cmdCancelEdit;
    IButton& m_cmdSaveClose;
    IButton& m_cmdCancel;
};

} // namespace KestrinProductEditor
