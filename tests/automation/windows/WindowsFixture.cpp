// SPDX-License-Identifier: MIT
#include "automation/windows/WindowsFixture.h"

#include "platform/Text.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>

namespace KestrinProductEditor {

namespace {

// Its place in a packed product.
constexpr std::int32_t kPrice = 4;

} // namespace

testing::AssertionResult IsSame(const std::string& file, const std::string& expected)
{
    if (file == expected)
        return testing::AssertionSuccess();
    const auto [one, other] = std::mismatch(file.begin(), file.end(), expected.begin(), expected.end());
    return testing::AssertionFailure() << file.size() << " bytes, not " << expected.size() << ", from byte "
                                       << one - file.begin() << " on others than expected";
}

void ShowEditor(HostProgram& host, const std::function<void()>& acts)
{
    const auto dialog = Make<_ProductEditorDlg>(kEditorClass);
    host.ShowWhile([&] { EXPECT_EQ(dialog->Show(ComVariant()), S_OK); }, acts);
}

void SeenEditor::Edit(std::u16string_view name) const
{
    const SeenGrid list = List();
    list.DoubleClick(list.RowOf(name));
    static_cast<void>(m_window.Button(u"Save"));
}

void SeenEditor::Type(std::u16string_view label, std::u16string_view text) const
{
    m_host.Type(m_window.Box(label), text);
}

void SeenEditor::Save() const
{
    m_window.Press(u"Save");
    static_cast<void>(m_window.Button(u"New"));
}

void EditPrice(const HostProgram& host, std::u16string_view name, std::u16string_view price)
{
    const SeenEditor editor(host);
    editor.Edit(name);
    editor.Type(u"Unit Price", price);
    editor.Save();
}

WindowsFixture::WindowsFixture()
{
    ImportSample(*Make<_ProductLkpMgr>(kStore).Get());
    // What was changed in the session before is no longer marked as such from the next one on.
    static_cast<void>(Make<_ProductLkpMgr>(kStore));
}

std::string WindowsFixture::CatalogueAfter(const std::function<void(_ProductLkpMgr&)>& acts)
{
    constexpr std::u16string_view kFolder = u"Expected";
    const std::filesystem::path folder = Folder().Path() / kFolder;
    std::filesystem::remove_all(folder);
    std::filesystem::copy(Folder().Path() / "Data", folder);
    Host().Put(u"DBSubdirName", kFolder);
    {
        const ComPtr<_ProductLkpMgr> store = Make<_ProductLkpMgr>(kStore);
        acts(*store.Get());
    }
    Host().Put(u"DBSubdirName", u"Data");
    return Folder().Read("Expected/corvprd2.cpd");
}

LONG WindowsFixture::Find(_ProductLkpMgr& store, std::u16string_view name)
{
    const auto field = [&](::CorvoProductFields column) {
        ComVariant value;
        EXPECT_EQ(store.get_Fields(column, &value), S_OK);
        return FromCom(value);
    };
    store.MoveFirst();
    VARIANT_BOOL isEnd = VARIANT_FALSE;
    while (store.EOF(&isEnd) == S_OK && isEnd == VARIANT_FALSE) {
        if (field(::PF_Name).String() == name)
            return field(::PF_RowID).Long();
        store.MoveNext();
    }
    throw std::runtime_error("the catalogue has no " + ToUtf8(name));
}

void WindowsFixture::SetPrice(_ProductLkpMgr& store, std::u16string_view name, Currency price)
{
    ComVariant packed;
    ASSERT_EQ(store.Pack(Find(store, name), &packed), S_OK);
    Variant product = FromCom(packed);
    product.ArrayForWrite().At(kPrice) = price;
    EXPECT_EQ(store.Update(ComVariant(product)), S_OK);
}

Variant WindowsFixture::ImportSample(_ProductLkpMgr& store)
{
    ComVariant result;
    const ComVariant parameters(Variant::ArrayWith(SamplePath(), Variant::ArrayWith(0, 1, 2, 3), 1, 0));
    EXPECT_EQ(store.CSVProductImport(parameters, &result), S_OK);
    return FromCom(result);
}

std::u16string WindowsFixture::SamplePath()
{
    return std::filesystem::absolute(KSTNEDIT_SOURCE_DIR "/samples/price-list.csv").u16string();
}

} // namespace KestrinProductEditor
