// SPDX-License-Identifier: MIT
#include "platform/qt/QtLayouts.h"

#include "ui_ProductDetails.h"
#include "ui_ProductLkpView.h"
#include "ui_frmProdImportPreview.h"
#include "ui_frmProductEditor.h"
#include "ui_frmProductExport.h"
#include "ui_frmProductImport.h"

#include <algorithm>
#include <iterator>

namespace KestrinProductEditor {

namespace {

template<class Widget>
struct Layout
{
    std::u16string_view name;
    void (*setUp)(Widget& widget);
};

template<class Ui, class Widget>
void SetUp(Widget& widget)
{
    Ui().setupUi(&widget);
}

constexpr Layout<QDialog> kForms[] = {
    {u"frmProductEditor", SetUp<Ui::frmProductEditor, QDialog>},
    {u"frmProductImport", SetUp<Ui::frmProductImport, QDialog>},
    {u"frmProdImportPreview", SetUp<Ui::frmProdImportPreview, QDialog>},
    {u"frmProductExport", SetUp<Ui::frmProductExport, QDialog>},
};

constexpr Layout<QWidget> kUserControls[] = {
    {u"ProductLkpView", SetUp<Ui::ProductLkpView, QWidget>},
    {u"ProductDetails", SetUp<Ui::ProductDetails, QWidget>},
};

template<class Layouts, class Widget>
[[nodiscard]] bool SetUpFrom(const Layouts& layouts, std::u16string_view name, Widget& widget)
{
    const auto* const found = std::find_if(std::begin(layouts), std::end(layouts),
                                           [name](const auto& layout) { return layout.name == name; });
    if (found == std::end(layouts))
        return false;
    found->setUp(widget);
    return true;
}

} // namespace

bool SetUpForm(std::u16string_view name, QDialog& window)
{
    return SetUpFrom(kForms, name, window);
}

bool SetUpUserControl(std::u16string_view name, QWidget& surface)
{
    return SetUpFrom(kUserControls, name, surface);
}

} // namespace KestrinProductEditor
