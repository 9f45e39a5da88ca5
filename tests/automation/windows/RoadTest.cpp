// SPDX-License-Identifier: MIT
// The typical road through the editor, in its window, against the same acts without one.
#include "automation/windows/Patience.h"
#include "automation/windows/WindowsFixture.h"

#include "platform/Text.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

constexpr std::u16string_view kHammer = u"Claw hammer, 16 oz";
constexpr Currency kNewPrice = Currency::FromScaled(217'500);

} // namespace

class Road : public WindowsFixture
{
protected:
    HostProgram m_host;
    const std::string m_before = Catalogue();
};

TEST_F(Road, ShowsTheWholeCatalogueInTheOrderOfNames)
{
    std::vector<std::u16string> names;
    {
        const ComPtr<_ProductLkpMgr> store = OpenStore();
        store->MoveFirst();
        VARIANT_BOOL isEnd = VARIANT_FALSE;
        while (store->EOF(&isEnd) == S_OK && isEnd == VARIANT_FALSE) {
            ComVariant name;
            ASSERT_EQ(store->get_Fields(::PF_Name, &name), S_OK);
            names.push_back(u"Product Name: " + FromCom(name).String());
            store->MoveNext();
        }
    }
    ShowEditor(m_host, [&] {
        const SeenEditor editor(m_host);
        const std::vector<std::u16string> rows = editor.List().AllRows();
        ASSERT_EQ(rows.size(), names.size());
        for (std::size_t row = 0; row < rows.size(); ++row)
            EXPECT_EQ(rows[row].substr(0, names[row].size()), names[row]);
        editor.Window().AwaitText(u"Product List (Count:" + ToUtf16(std::to_string(rows.size())) + u")");
        editor.Window().Press(u"Cancel");
    });
    EXPECT_TRUE(IsSame(Catalogue(), m_before));
}

TEST_F(Road, ShowsTheProductOfTheRowThatIsClicked)
{
    ShowEditor(m_host, [&] {
        const SeenEditor editor(m_host);
        const SeenGrid list = editor.List();
        list.Click(list.RowOf(kHammer));
        editor.Window().AwaitText(kHammer);
        EXPECT_EQ(editor.Window().Box(u"Name").Text(), kHammer);
        EXPECT_EQ(editor.Window().Box(u"Part#").Text(), u"HT-CH16");
        EXPECT_EQ(editor.Window().Box(u"Unit Price").Text(), u"$18.95");
        EXPECT_EQ(editor.Window().Box(u"Note").Text(), u"Forged head, hickory handle");
        const std::int32_t next = list.RowOf(kHammer) + 1;
        list.PressKey(VK_DOWN);
        EXPECT_TRUE(list.Row(next).find(editor.Window().Box(u"Part#").Text()) != std::u16string::npos);
        editor.Window().Press(u"Cancel");
    });
}

TEST_F(Road, KeepsWhatIsEditedAddedAndDeleted)
{
    const std::string expected = CatalogueAfter([](_ProductLkpMgr& store) {
        ComVariant packed;
        const LONG hammer = Find(store, kHammer);
        ASSERT_EQ(store.Pack(hammer, &packed), S_OK);
        Variant product = FromCom(packed);
        product.ArrayForWrite().At(1) = u"Claw hammer, 15 oz";
        product.ArrayForWrite().At(4) = kNewPrice;
        ASSERT_EQ(store.Update(ComVariant(product)), S_OK);
        LONG added = 0;
        ASSERT_EQ(store.AddNew(ComVariant(Variant::ArrayWith(0, u"Anvil", u"", u"AN-1",
                                                             Currency::FromUnits(250), u"Heavy")),
                               &added),
                  S_OK);
        ASSERT_EQ(store.Delete(Find(store, u"Sledge hammer, 8 lb")), S_OK);
    });

    ShowEditor(m_host, [&] {
        const SeenEditor editor(m_host);
        const SeenGrid list = editor.List();

        list.Click(list.RowOf(kHammer));
        list.PressKey(VK_F2);
        editor.Window().AwaitText(u"Editing Claw hammer, 16 oz");
        editor.Type(u"Name", u"Claw hammer, 15 oz");
        editor.Type(u"Unit Price", u"21.75");
        editor.Save();
        EXPECT_FALSE(list.Holds(kHammer));
        EXPECT_TRUE(list.Row(list.RowOf(u"Claw hammer, 15 oz")).find(u"$21.75") != std::u16string::npos);

        editor.Window().Press(u"New");
        editor.Window().AwaitText(u"New Product");
        editor.Type(u"Name", u"Anvil");
        editor.Type(u"Part#", u"AN-1");
        editor.Type(u"Unit Price", u"250");
        editor.Type(u"Note", u"Heavy");
        editor.Save();
        EXPECT_TRUE(list.Holds(u"Anvil"));

        constexpr std::u16string_view kAskDelete = u"Are you sure you want to delete the current product?";
        const std::int32_t rows = list.Rows();
        list.Click(list.RowOf(u"Sledge hammer, 8 lb"));
        for (const int answer : {IDCANCEL, IDNO}) {
            editor.Window().Press(u"Delete");
            m_host.Answer(kAskDelete, answer);
            EXPECT_EQ(list.Rows(), rows);
        }
        editor.Window().Press(u"Delete");
        m_host.Answer(kAskDelete, IDYES);
        Await("the row to go", [&] { return list.Rows() == rows - 1; });
        EXPECT_FALSE(list.Holds(u"Sledge hammer, 8 lb"));

        editor.Window().Press(u"Save & Close");
    });
    EXPECT_TRUE(IsSame(Catalogue(), expected));
}

TEST_F(Road, DeletesTheSelectedRowsWhenAskedByTheMenu)
{
    const std::string expected =
        CatalogueAfter([](_ProductLkpMgr& store) { ASSERT_EQ(store.Delete(Find(store, kHammer)), S_OK); });
    ShowEditor(m_host, [&] {
        constexpr std::u16string_view kAskDelete =
            u"Are you sure you want to delete the selected product(s)?";
        const SeenEditor editor(m_host);
        const SeenGrid list = editor.List();
        list.Click(list.RowOf(kHammer));
        editor.Window().ChooseInMenu(u"Delete");
        m_host.Answer(kAskDelete, IDNO);
        EXPECT_TRUE(list.Holds(kHammer));
        list.PressKey(VK_DELETE);
        m_host.Answer(kAskDelete, IDYES);
        Await("the row to go", [&] { return !list.Holds(kHammer); });
        editor.Window().Press(u"Save & Close");
    });
    EXPECT_TRUE(IsSame(Catalogue(), expected));
}

TEST_F(Road, RefusesLettersInThePrice)
{
    ShowEditor(m_host, [&] {
        const SeenEditor editor(m_host);
        editor.Edit(kHammer);
        editor.Type(u"Unit Price", u"1x2-.e5");
        EXPECT_EQ(editor.Window().Box(u"Unit Price").Text(), u"12.5");
        editor.Window().Press(u"Cancel Edit");
        m_host.Answer(u"The current product info has been modified.", IDNO);
        EXPECT_TRUE(editor.List().Row(editor.List().RowOf(kHammer)).find(u"$18.95") != std::u16string::npos);
        editor.Window().Press(u"Cancel");
    });
    EXPECT_TRUE(IsSame(Catalogue(), m_before));
}

class RoadsEnd : public Road
{
protected:
    /// Edits a price, leaves by Cancel with that answer, and then does what is left to do.
    void LeaveWith(int answer, const std::function<void(const SeenEditor&)>& afterwards = {})
    {
        ShowEditor(m_host, [&] {
            EditPrice(m_host, kHammer, u"21.75");
            const SeenEditor editor(m_host);
            editor.Window().Press(u"Cancel");
            m_host.Answer(kAskSaveList, answer);
            if (afterwards)
                afterwards(editor);
        });
    }

    const std::string m_expected =
        CatalogueAfter([](_ProductLkpMgr& store) { SetPrice(store, kHammer, kNewPrice); });
};

TEST_F(RoadsEnd, KeepsTheChangesWhenCancelIsAnsweredWithYes)
{
    LeaveWith(IDYES);
    EXPECT_TRUE(IsSame(Catalogue(), m_expected));
}

TEST_F(RoadsEnd, LeavesTheFileAloneWhenCancelIsAnsweredWithNo)
{
    LeaveWith(IDNO);
    EXPECT_TRUE(IsSame(Catalogue(), m_before));
}

TEST_F(RoadsEnd, StaysWhenCancelIsAnsweredWithCancel)
{
    LeaveWith(IDCANCEL, [this](const SeenEditor& editor) {
        m_host.Settle();
        EXPECT_TRUE(editor.Window().IsOpen());
        EXPECT_TRUE(IsSame(Catalogue(), m_before));
        editor.Window().Press(u"Save & Close");
    });
    EXPECT_TRUE(IsSame(Catalogue(), m_expected));
}

TEST_F(RoadsEnd, AsksTheSameForEscAndForTheCloseBox)
{
    ShowEditor(m_host, [&] {
        EditPrice(m_host, kHammer, u"21.75");
        const SeenEditor editor(m_host);
        editor.List().PressKey(VK_ESCAPE);
        m_host.Answer(kAskSaveList, IDCANCEL);
        PostMessageW(editor.Window().Handle(), WM_SYSCOMMAND, SC_CLOSE, 0);
        m_host.Answer(kAskSaveList, IDNO);
    });
    EXPECT_TRUE(IsSame(Catalogue(), m_before));
}

} // namespace KestrinProductEditor
