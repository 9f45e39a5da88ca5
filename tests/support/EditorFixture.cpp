// SPDX-License-Identifier: MIT
#include "support/EditorFixture.h"

#include "platform/Text.h"

#include <KestrinProductEditor/ProductEditorDlg.h>

#include <gtest/gtest.h>

namespace KestrinProductEditor {

std::unique_ptr<IForm> FormSpy::CreateForm(std::u16string_view name)
{
    std::unique_ptr<IForm> form = m_below.CreateForm(name);
    if (name == u"frmProductEditor")
        m_editor = form.get();
    return form;
}

std::unique_ptr<IUserControl> FormSpy::CreateUserControl(std::u16string_view name)
{
    return m_below.CreateUserControl(name);
}

std::optional<std::u16string> FormSpy::ChooseFile(const FileDialog& dialog)
{
    return m_below.ChooseFile(dialog);
}

const IUser::Message EditorFixture::kAskSaveProduct = {
    u"The current product info has been modified. Would you like to save the changes?", 36, u"Salvo"};
const IUser::Message EditorFixture::kAskSaveList = {
    u"The product list has been modified. Would you like to save the changes?", 35, u"Salvo"};
const IUser::Message EditorFixture::kAskDelete = {u"Are you sure you want to delete the current product?", 35,
                                                  u"Salvo"};
const IUser::Message EditorFixture::kAskDeleteSelected = {
    u"Are you sure you want to delete the selected product(s)?", 36, u"Salvo"};
const IUser::Message EditorFixture::kSelectFirst = {u"Please select a product first.", 64, u"Salvo"};
const IUser::Message EditorFixture::kExportFailed = {u"An error occured while trying to export products.", 48,
                                                     u"Salvo"};

EditorFixture::EditorFixture(const std::string& locale) : StoreFixture(locale) {}

EditorFixture::~EditorFixture() = default;

std::vector<ProductRow> EditorFixture::ThreeProducts()
{
    return {{.rowID = 2, .name = "Anchor", .partNum = "A-1", .price = 125'000, .note = "Rust-proof"},
            {.rowID = 3, .name = "Bolt", .partNum = "B-2", .price = 70'000},
            {.rowID = 4, .name = "Clamp", .partNum = "C-3", .price = 12'345'000}};
}

void EditorFixture::Edit(const std::function<void()>& acts)
{
    m_user->AtNextForm(acts);
    ProductEditorDlg::Create()->Show(Variant());
}

void EditorFixture::Fill(std::u16string_view box, std::u16string_view text)
{
    m_user->TabTo(box);
    m_user->PressControl('A');
    m_user->Type(text);
}

void EditorFixture::FillPrice(std::u16string_view text)
{
    // The box selects all of its text when it gains the focus.
    m_user->TabTo(u"txtUnitPrice");
    m_user->Type(text);
}

std::string EditorFixture::Shown(std::u16string_view control) const
{
    return ToUtf8(m_user->TextOf(control));
}

std::vector<std::string> EditorFixture::NamesShown() const
{
    std::vector<std::string> names;
    for (std::int32_t row = 1; row < m_user->Grid(u"flexGrid").Rows(); ++row)
        names.push_back(ToUtf8(m_user->CellShown(u"flexGrid", row, 0)));
    return names;
}

std::vector<std::string> EditorFixture::SavedNames() const
{
    std::vector<std::string> names;
    for (const ProductRow& row : SavedRows())
        names.push_back(row.name);
    return names;
}

std::int32_t EditorFixture::CurrentRow() const
{
    return m_user->Grid(u"flexGrid").CurrentRow();
}

bool EditorFixture::IsInEditState() const
{
    return !m_user->IsLocked(u"txtProductName");
}

void EditorFixture::ExpectViewState() const
{
    PrvExpectState(false);
}

void EditorFixture::ExpectEditState() const
{
    PrvExpectState(true);
}

void EditorFixture::PrvExpectState(bool bEditing) const
{
    for (const char16_t* const name : {u"txtProductName", u"txtPartNum", u"txtUnitPrice", u"txtNote"}) {
        EXPECT_EQ(m_user->IsLocked(name), !bEditing) << ToUtf8(name);
        EXPECT_EQ(Box(name).BackColor(), bEditing ? 0xFFFFFFU : 0xC0C0C0U) << ToUtf8(name);
    }
    for (const char16_t* const name : {u"cmdNew", u"cmdDelete"})
        EXPECT_EQ(m_user->IsShown(name), !bEditing) << ToUtf8(name);
    for (const char16_t* const name : {u"cmdSaveEdit", u"cmdCancelEdit"})
        EXPECT_EQ(m_user->IsShown(name), bEditing) << ToUtf8(name);
    for (const char16_t* const name : {u"cmdSaveClose", u"cmdCancel", u"flexGrid"})
        EXPECT_TRUE(m_user->IsShown(name)) << ToUtf8(name);
    for (const char16_t* const id :
         {u"ID_Import", u"ID_Export", u"ID_NewProduct", u"ID_EditProduct", u"ID_Delete", u"ID_SelectAll"})
        EXPECT_EQ(m_user->CanChooseTool(id), !bEditing) << ToUtf8(id);
}

} // namespace KestrinProductEditor
