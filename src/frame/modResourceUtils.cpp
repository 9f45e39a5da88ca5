// SPDX-License-Identifier: MIT
#include "frame/modResourceUtils.h"

#include "frame/modResourceDefs.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace KestrinProductEditor::modResourceUtils {

namespace {

struct ResourceString
{
    std::int32_t id;
    std::u16string_view text;
};

constexpr ResourceString kResourceStrings[] = {
    {modResourceDefs::kProductEditor, u"Product Editor"},
    {modResourceDefs::kProductListTitle, u"Product List"},
    {modResourceDefs::kColumnProductName, u"Product Name"},
    {modResourceDefs::kColumnPartNum, u"Part#"},
    {modResourceDefs::kColumnUnitPrice, u"Unit Price"},
    {modResourceDefs::kFieldName, u"Name"},
    {modResourceDefs::kFieldPartNum, u"Part#"},
    {modResourceDefs::kFieldUnitPrice, u"Unit Price"},
    {modResourceDefs::kFieldNote, u"Note"},
    {modResourceDefs::kAskDeleteProduct, u"Are you sure you want to delete the current product?"},
    {modResourceDefs::kApplicationTitle, u"Salvo"},
    {modResourceDefs::kProductListCount, u"Product List"},
    {modResourceDefs::kAskSaveProduct,
     u"The current product info has been modified. Would you like to save the changes?"},
    {modResourceDefs::kEditing, u"Editing"},
    {modResourceDefs::kNewProduct, u"New Product"},
    {modResourceDefs::kTip,
     u"Tip: Double-click a row above or a text field on the right pane to edit a product"},
    {modResourceDefs::kSaveAndClose, u"Save && Close"},
    {modResourceDefs::kCancel, u"Cancel"},
    {modResourceDefs::kAskSaveProductList,
     u"The product list has been modified. Would you like to save the changes?"},
};

} // namespace

std::u16string GetResString(std::int32_t lResID)
{
    const auto* const found =
        std::find_if(std::begin(kResourceStrings), std::end(kResourceStrings),
                     [lResID](const ResourceString& entry) { return entry.id == lResID; });
    if (found == std::end(kResourceStrings))
        return u"### Resource string not found ###";
    return std::u16string(found->text);
}

} // namespace KestrinProductEditor::modResourceUtils
