// SPDX-License-Identifier: MIT
#include "platform/ui/Controls.h"

#include "support/ContractFixture.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;
using Modifier = IUser::Modifier;

class ControlsContract : public ContractFixture
{
protected:
    using ContractFixture::ContractFixture;

    [[nodiscard]] ITextBox& NameBox() { return Form().TextBox(u"txtProductName"); }
    [[nodiscard]] ITextBox& PriceBox() { return Form().TextBox(u"txtUnitPrice"); }
    [[nodiscard]] ITextBox& NoteBox() { return Form().TextBox(u"txtNote"); }
    [[nodiscard]] IButton& NewButton() { return Form().Button(u"cmdNew"); }

    /// The keys that a box hears of, in the list that is returned.
    [[nodiscard]] std::vector<std::int32_t>& HearKeys(ITextBox& box)
    {
        box.KeyPress.Connect([this](std::int32_t& key) { m_keys.push_back(key); });
        return m_keys;
    }
    void CountChanges(ITextBox& box)
    {
        box.Change.Connect([this] { Tell("change"); });
    }

private:
    std::vector<std::int32_t> m_keys;
};

std::vector<std::int32_t> CodesOf(std::u16string_view text)
{
    return {text.begin(), text.end()};
}

// Text in is text out

class TextSurvival : public ControlsContract, public testing::WithParamInterface<const char16_t*>
{
};

TEST_P(TextSurvival, KeepsEveryCharacterOfAText)
{
    const std::u16string text = GetParam();
    for (ITextBox* const box : {&NameBox(), &NoteBox()}) {
        box->SetText(text);
        EXPECT_EQ(box->Text(), text);
    }
    Show([&] {
        EXPECT_EQ(User().TextOf(u"txtProductName"), text);
        EXPECT_EQ(User().TextOf(u"txtNote"), text);
    });
    EXPECT_EQ(NameBox().Text(), text);
    EXPECT_EQ(NoteBox().Text(), text);
}

TEST_P(TextSurvival, KeepsWhatStandsBeforeATypedCharacter)
{
    const std::u16string text = GetParam();
    NoteBox().SetText(text);
    Show([&] {
        NoteBox().SetFocus();
        NoteBox().Select(static_cast<std::int32_t>(text.size()), 0);
        User().Type(u"x");
    });
    EXPECT_EQ(NoteBox().Text(), text + u"x");
}

TEST_P(TextSurvival, KeepsAPastedText)
{
    const std::u16string text = GetParam();
    Show([&] {
        User().SetClipboard(text);
        User().Click(u"txtNote");
        User().PressControl('V');
    });
    EXPECT_EQ(NoteBox().Text(), text);
}

TEST_P(TextSurvival, CopiesTheWholeTextToTheClipboard)
{
    const std::u16string text = GetParam();
    NoteBox().SetText(text);
    Show([&] {
        User().Click(u"txtNote");
        User().PressControl('A');
        EXPECT_EQ(NoteBox().SelectedText(), text);
        User().PressControl('C');
        EXPECT_EQ(User().Clipboard(), text);
    });
}

INSTANTIATE_TEST_SUITE_P(Texts, TextSurvival,
                         testing::Values(u"plain", u"one\r\ntwo", u"one\ntwo", u"one\rtwo",
                                         u"a\r\nb\nc\rd\r\n\r\n\n\r", u"\r\n", u"\n", u"\r", u"\ttab\t",
                                         u"\u00A0no-break\u00A0blank\u00A0", u"  blanks  ", u" ",
                                         u"R&D && &Co", u"\U0001F528 hammer \U0001F529", u"\u2028\u2029",
                                         u"e\u0301 \u05D0\u05D1 \uFEFF\u200F", u"<b>bold</b> %1 \\n"));

TEST_F(ControlsContract, TypesALineBreakAsCrLf)
{
    Show([&] {
        User().Click(u"txtNote");
        User().Type(u"a");
        User().Press(NamedKey::Enter);
        User().Type(u"b");
    });
    EXPECT_EQ(NoteBox().Text(), u"a\r\nb");
}

TEST_F(ControlsContract, TakesALineBreakAwayInOnePiece)
{
    NoteBox().SetText(u"a\r\nb");
    Show([&] {
        NoteBox().SetFocus();
        NoteBox().Select(3, 0);
        User().Press(NamedKey::Backspace);
    });
    EXPECT_EQ(NoteBox().Text(), u"ab");
}

// Change

TEST_F(ControlsContract, ChangeHearsTheFormsOwnWrites)
{
    CountChanges(NameBox());
    NameBox().SetText(u"Hammer");
    EXPECT_THAT(Told(), ElementsAre("change"));
    NameBox().SetText(u"");
    EXPECT_THAT(Told(), ElementsAre("change"));
}

TEST_F(ControlsContract, ChangeHearsTheNewText)
{
    std::u16string heard;
    NoteBox().Change.Connect([&] { heard = NoteBox().Text(); });
    NoteBox().SetText(u"a\r\nb");
    EXPECT_EQ(heard, u"a\r\nb");
}

TEST_F(ControlsContract, ChangeIsSilentWhenNothingChanges)
{
    NameBox().SetText(u"Hammer");
    NoteBox().SetText(u"a\r\nb");
    CountChanges(NameBox());
    CountChanges(NoteBox());
    NameBox().SetText(u"Hammer");
    NoteBox().SetText(u"a\r\nb");
    EXPECT_THAT(Told(), IsEmpty());
    NoteBox().SetText(u"a\nb");
    EXPECT_THAT(Told(), ElementsAre("change"));
}

TEST_F(ControlsContract, ChangeComesOnceForEachKey)
{
    for (const std::u16string_view name : {u"txtProductName", u"txtNote"}) {
        CountChanges(Form().TextBox(name));
        Show([&] {
            User().Click(name);
            User().Type(u"ab");
            EXPECT_THAT(Told(), ElementsAre("change", "change"));
            User().Press(NamedKey::Backspace);
            EXPECT_THAT(Told(), ElementsAre("change"));
            User().Press(NamedKey::Left);
            User().Press(NamedKey::Home);
            EXPECT_THAT(Told(), IsEmpty());
        });
    }
}

TEST_F(ControlsContract, ChangeComesOnceForAPaste)
{
    CountChanges(NoteBox());
    Show([&] {
        User().SetClipboard(u"one\r\ntwo");
        User().Click(u"txtNote");
        User().PressControl('V');
    });
    EXPECT_THAT(Told(), ElementsAre("change"));
}

TEST_F(ControlsContract, AWriteWithinChangeIsHeardAsWell)
{
    NameBox().Change.Connect([&] {
        Tell("change");
        NameBox().SetText(u"fixed");
    });
    NameBox().SetText(u"draft");
    EXPECT_THAT(Told(), ElementsAre("change", "change"));
    EXPECT_EQ(NameBox().Text(), u"fixed");
}

// Length

TEST_F(ControlsContract, BoxesHaveNoLimitInTheBeginning)
{
    EXPECT_EQ(NameBox().MaxLength(), 0);
    // More than any system's box takes by itself.
    std::u16string longText;
    for (int words = 0; words < 8000; ++words)
        longText += u"long ";
    NameBox().SetText(longText);
    EXPECT_EQ(NameBox().Text(), longText);
    Show([&] {
        User().SetClipboard(longText);
        User().Click(u"txtNote");
        User().PressControl('V');
    });
    EXPECT_EQ(NoteBox().Text(), longText);
}

TEST_F(ControlsContract, TypingEndsAtTheMaximumLength)
{
    for (const std::u16string_view name : {u"txtProductName", u"txtNote"}) {
        ITextBox& box = Form().TextBox(name);
        box.SetMaxLength(3);
        EXPECT_EQ(box.MaxLength(), 3);
        Show([&] {
            User().Click(name);
            User().Type(u"abcd");
        });
        EXPECT_EQ(box.Text(), u"abc");
    }
}

TEST_F(ControlsContract, ATypedCharacterMayReplaceTheSelectionOfAFullBox)
{
    NameBox().SetMaxLength(3);
    NameBox().SetText(u"abc");
    Show([&] {
        NameBox().SetFocus();
        NameBox().Select(1, 2);
        User().Type(u"xyz");
    });
    EXPECT_EQ(NameBox().Text(), u"axy");
}

TEST_F(ControlsContract, PastedTextIsCutAtTheMaximumLength)
{
    for (const std::u16string_view name : {u"txtProductName", u"txtNote"}) {
        ITextBox& box = Form().TextBox(name);
        box.SetMaxLength(5);
        box.SetText(u"ab");
        Show([&] {
            User().SetClipboard(u"12345");
            box.SetFocus();
            box.Select(1, 0);
            User().PressControl('V');
        });
        EXPECT_EQ(box.Text(), u"a123b");
    }
}

TEST_F(ControlsContract, ACutKeepsAstralCharactersAndLineBreaksWhole)
{
    NoteBox().SetMaxLength(2);
    Show([&] {
        User().Click(u"txtNote");
        User().SetClipboard(u"a\U0001F528");
        User().PressControl('V');
        EXPECT_EQ(NoteBox().Text(), u"a");
        User().Type(u"\U0001F528");
        EXPECT_EQ(NoteBox().Text(), u"a");
        // A line break is two characters as well.
        User().Press(NamedKey::Enter);
        EXPECT_EQ(NoteBox().Text(), u"a");
        NoteBox().SetText(u"");
        User().SetClipboard(u"b\r\nc");
        User().PressControl('V');
        EXPECT_EQ(NoteBox().Text(), u"b");
    });
}

TEST_F(ControlsContract, WrittenTextIsNotCut)
{
    for (const std::u16string_view name : {u"txtProductName", u"txtNote"}) {
        ITextBox& box = Form().TextBox(name);
        box.SetMaxLength(2);
        box.SetText(u"abcd");
        EXPECT_EQ(box.Text(), u"abcd");
        box.SetMaxLength(1);
        EXPECT_EQ(box.Text(), u"abcd");
        Show([&] {
            box.SetFocus();
            box.Select(4, 0);
            User().Type(u"x");
            EXPECT_EQ(box.Text(), u"abcd");
            User().Press(NamedKey::Backspace);
            EXPECT_EQ(box.Text(), u"abc");
        });
    }
}

// Locked boxes

TEST_F(ControlsContract, BoxesAreNotLockedInTheBeginning)
{
    EXPECT_FALSE(NameBox().IsLocked());
    EXPECT_FALSE(NoteBox().IsLocked());
}

TEST_F(ControlsContract, ALockedBoxKeepsItsTextWhateverIsPressed)
{
    for (const std::u16string_view name : {u"txtProductName", u"txtNote"}) {
        ITextBox& box = Form().TextBox(name);
        box.SetText(u"Hammer");
        box.SetLocked(true);
        CountChanges(box);
        Show([&] {
            EXPECT_TRUE(User().IsLocked(name));
            User().SetClipboard(u"pasted");
            User().Click(name);
            EXPECT_EQ(User().Focus(), name);
            box.Select(1, 2);
            User().Type(u"x");
            User().Press(NamedKey::Backspace);
            User().Press(NamedKey::Delete);
            User().Press(NamedKey::Enter);
            User().PressControl('V');
            User().PressControl('X');
            User().PressControl('Z');
            User().Compose(u"\u00E9");
        });
        EXPECT_EQ(box.Text(), u"Hammer");
        EXPECT_THAT(Told(), IsEmpty());
    }
}

TEST_F(ControlsContract, ALockedBoxCanBeCopiedFromAndWrittenByTheForm)
{
    NameBox().SetLocked(true);
    NameBox().SetText(u"Hammer");
    Show([&] {
        User().Click(u"txtProductName");
        User().PressControl('A');
        User().PressControl('C');
        EXPECT_EQ(User().Clipboard(), u"Hammer");
    });
    NameBox().SetLocked(false);
    EXPECT_FALSE(NameBox().IsLocked());
    EXPECT_EQ(NameBox().Text(), u"Hammer");
}

TEST_F(ControlsContract, ALockedBoxRaisesKeyPressToo)
{
    PriceBox().SetLocked(true);
    const auto& keys = HearKeys(PriceBox());
    Show([&] {
        User().Click(u"txtUnitPrice");
        User().Type(u"1");
        User().PressControl('C');
    });
    EXPECT_THAT(keys, ElementsAre('1', 3));
}

TEST_F(ControlsContract, BackgroundsAreKept)
{
    NameBox().SetBackColor(kLightGrey);
    NoteBox().SetBackColor(kWhite);
    EXPECT_EQ(NameBox().BackColor(), kLightGrey);
    EXPECT_EQ(NoteBox().BackColor(), kWhite);
}

// Selection

TEST_F(ControlsContract, SelectsCharactersOfAnyText)
{
    struct Row
    {
        std::u16string text;
        std::int32_t start;
        std::int32_t length;
        std::u16string selected;
    };
    const std::vector<Row> rows = {
        {u"Hammer", 0, 6, u"Hammer"},
        {u"Hammer", 2, 3, u"mme"},
        {u"Hammer", 4, 100, u"er"},
        {u"Hammer", 100, 1, u""},
        {u"Hammer", 3, 0, u""},
        {u"Hammer", -2, 4, u"Ha"},
        {u"a\r\nb\nc\rd", 1, 2, u"\r\n"},
        {u"a\r\nb\nc\rd", 3, 5, u"b\nc\rd"},
        {u"", 0, 1, u""},
        {u"Hammer", 0, 2147483647, u"Hammer"},
    };
    for (const Row& row : rows) {
        NoteBox().SetText(row.text);
        NoteBox().Select(row.start, row.length);
        EXPECT_EQ(NoteBox().SelectedText(), row.selected) << row.start << " " << row.length;
        if (row.text.find(u'\r') != std::u16string::npos)
            continue;
        NameBox().SetText(row.text);
        NameBox().Select(row.start, row.length);
        EXPECT_EQ(NameBox().SelectedText(), row.selected) << row.start << " " << row.length;
    }
}

TEST_F(ControlsContract, KeysMoveTheCaretAndExtendTheSelection)
{
    NameBox().SetText(u"abc");
    Show([&] {
        NameBox().SetFocus();
        User().Press(NamedKey::Home);
        User().Press(NamedKey::Right);
        User().Type(u"1");
        EXPECT_EQ(NameBox().Text(), u"a1bc");
        User().Press(NamedKey::End);
        User().Press(NamedKey::Left);
        User().Press(NamedKey::Delete);
        EXPECT_EQ(NameBox().Text(), u"a1b");
        User().Press(NamedKey::Home, Modifier::Shift);
        EXPECT_EQ(NameBox().SelectedText(), u"a1b");
        User().Press(NamedKey::Backspace);
        EXPECT_EQ(NameBox().Text(), u"");
    });
}

// KeyPress

TEST_F(ControlsContract, KeyPressHearsEveryTypedCharacterBeforeItIsThere)
{
    std::u16string before;
    PriceBox().KeyPress.Connect([&](std::int32_t& /*key*/) { before = PriceBox().Text(); });
    Show([&] {
        User().Click(u"txtUnitPrice");
        User().Type(u"12");
    });
    EXPECT_EQ(before, u"1");
    EXPECT_EQ(PriceBox().Text(), u"12");
}

TEST_F(ControlsContract, KeyPressGetsTheCharactersCode)
{
    const std::u16string text = u"09.,- $aZ\u00E9\u20AC";
    const auto& keys = HearKeys(PriceBox());
    Show([&] {
        User().Click(u"txtUnitPrice");
        User().Type(text);
    });
    EXPECT_EQ(keys, CodesOf(text));
    EXPECT_EQ(PriceBox().Text(), text);
}

TEST_F(ControlsContract, KeyPressGetsBackspaceEnterAndControlLetters)
{
    const auto& keys = HearKeys(NoteBox());
    Show([&] {
        User().Click(u"txtNote");
        User().Press(NamedKey::Backspace);
        User().Press(NamedKey::Enter);
        for (const char letter : {'C', 'X', 'V', 'Z', 'A'})
            User().PressControl(letter);
    });
    EXPECT_THAT(keys, ElementsAre(8, 13, 3, 24, 22, 26, 1));
}

TEST_F(ControlsContract, KeyPressComesForTheSameKeysInABoxOfOneLine)
{
    const auto& keys = HearKeys(PriceBox());
    Show([&] {
        User().Click(u"txtUnitPrice");
        User().Press(NamedKey::Backspace);
        for (const char letter : {'C', 'X', 'V', 'Z', 'A'})
            User().PressControl(letter);
        // Without a default button.
        User().Press(NamedKey::Enter);
    });
    EXPECT_THAT(keys, ElementsAre(8, 3, 24, 22, 26, 1, 13));
    EXPECT_EQ(PriceBox().Text(), u"");
}

TEST_F(ControlsContract, KeysThatAreNoCharactersAreNoKeyPress)
{
    for (const std::u16string_view name : {u"txtUnitPrice", u"txtNote"}) {
        ITextBox& box = Form().TextBox(name);
        box.SetText(u"12");
        const auto& keys = HearKeys(box);
        Show([&] {
            for (const NamedKey key : {NamedKey::Left, NamedKey::Right, NamedKey::Up, NamedKey::Down,
                                       NamedKey::Home, NamedKey::End, NamedKey::PageUp, NamedKey::PageDown,
                                       NamedKey::Delete, NamedKey::F2, NamedKey::Escape}) {
                box.SetFocus();
                User().Press(key);
            }
            User().Press(NamedKey::Tab);
            EXPECT_NE(User().Focus(), name);
            box.SetFocus();
            User().Press(NamedKey::BackTab);
            EXPECT_NE(User().Focus(), name);
        });
        EXPECT_THAT(keys, IsEmpty());
    }
}

TEST_F(ControlsContract, ASwallowedKeyDoesNothing)
{
    for (const std::u16string_view name : {u"txtUnitPrice", u"txtNote"}) {
        ITextBox& box = Form().TextBox(name);
        box.SetText(u"12");
        CountChanges(box);
        box.KeyPress.Connect([](std::int32_t& key) { key = 0; });
        Show([&] {
            User().SetClipboard(u"clip");
            box.SetFocus();
            box.Select(0, 1);
            User().Type(u"x");
            User().Press(NamedKey::Backspace);
            User().Press(NamedKey::Enter);
            for (const char letter : {'C', 'X', 'V', 'Z', 'A'})
                User().PressControl(letter);
            EXPECT_EQ(User().Clipboard(), u"clip");
            EXPECT_EQ(box.SelectedText(), u"1");
            // No characters, so nothing swallows them.
            User().Press(NamedKey::Delete);
        });
        EXPECT_EQ(box.Text(), u"2");
        EXPECT_THAT(Told(), ElementsAre("change"));
    }
}

TEST_F(ControlsContract, TheClipboardWorksWhereItsKeysPass)
{
    for (const std::u16string_view name : {u"txtUnitPrice", u"txtNote"}) {
        ITextBox& box = Form().TextBox(name);
        box.SetText(u"12");
        Show([&] {
            User().Click(name);
            User().PressControl('A');
            User().PressControl('X');
            EXPECT_EQ(box.Text(), u"");
            EXPECT_EQ(User().Clipboard(), u"12");
            User().PressControl('V');
            User().PressControl('V');
            EXPECT_EQ(box.Text(), u"1212");
            User().PressControl('Z');
            EXPECT_NE(box.Text(), u"1212");
        });
    }
}

TEST_F(ControlsContract, PastedTextIsNoKeyPressOfItsOwn)
{
    const auto& keys = HearKeys(PriceBox());
    Show([&] {
        User().SetClipboard(u"abc");
        User().Click(u"txtUnitPrice");
        User().PressControl('V');
    });
    EXPECT_THAT(keys, ElementsAre(22));
    EXPECT_EQ(PriceBox().Text(), u"abc");
}

TEST_F(ControlsContract, ComposedTextComesCharacterByCharacter)
{
    for (const std::u16string_view name : {u"txtUnitPrice", u"txtNote"}) {
        ITextBox& box = Form().TextBox(name);
        std::vector<std::int32_t> keys;
        box.KeyPress.Connect([&](std::int32_t& key) {
            keys.push_back(key);
            if (key < '0' || key > '9')
                key = 0;
        });
        Show([&] {
            User().Click(name);
            User().Compose(u"1\u304B2");
        });
        EXPECT_THAT(keys, ElementsAre('1', 0x304B, '2'));
        EXPECT_EQ(box.Text(), u"12");
    }
}

TEST_F(ControlsContract, AnAstralCharacterIsOneKeyPress)
{
    const auto& keys = HearKeys(NameBox());
    Show([&] {
        User().Click(u"txtProductName");
        User().Compose(u"\U0001F528");
    });
    EXPECT_THAT(keys, ElementsAre(0x1F528));
    EXPECT_EQ(NameBox().Text(), u"\U0001F528");
}

TEST_F(ControlsContract, ComposedTextEndsAtTheMaximumLength)
{
    NameBox().SetMaxLength(2);
    Show([&] {
        User().Click(u"txtProductName");
        User().Compose(u"abc");
    });
    EXPECT_EQ(NameBox().Text(), u"ab");
}

// Keys that are taken before KeyPress

class ShortcutContract : public ControlsContract
{
protected:
    ShortcutContract()
    {
        Bar().SetTools(kTools);
        Bar().ToolClick.Connect([this](std::u16string_view id) {
            Tell(id == u"ID_NewProduct"    ? "new"
                 : id == u"ID_EditProduct" ? "edit"
                 : id == u"ID_Delete"      ? "delete"
                 : id == u"ID_Import"      ? "import"
                 : id == u"ID_File"        ? "file"
                 : id == u"ID_Edit"        ? "edit menu"
                                           : "unknown");
        });
        Form().Button(u"cmdSaveEdit").SetShortcut(Ctrl(Key::S));
        Form().Button(u"cmdSaveEdit").Click.Connect([this] { Tell("save"); });
        Form().Escape.Connect([this] { Tell("escape"); });
    }

    [[nodiscard]] IToolBar& Bar() { return Form().ToolBar(u"SSActiveToolBars1"); }

    const std::vector<Tool> kTools = {
        {.id = u"ID_File", .caption = u"File"},
        {.id = u"ID_Import",
         .caption = u"Import...",
         .menu = u"ID_File",
         .shortcuts = {Ctrl(Key::I)},
         .icon = ToolIcon::Import},
        {.id = u"ID_Edit", .caption = u"Edit"},
        {.id = u"ID_NewProduct",
         .caption = u"New Product",
         .menu = u"ID_Edit",
         .shortcuts = {Ctrl(Key::N)},
         .icon = ToolIcon::NewProduct},
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
         .onlyIn = u"flexGrid",
         .beginsGroup = true},
    };
};

TEST_F(ShortcutContract, KeysOfToolsAndButtonsAreNoKeyPress)
{
    const auto& keys = HearKeys(PriceBox());
    Show([&] {
        User().Click(u"txtUnitPrice");
        User().PressControl('N');
        User().PressControl('I');
        User().Press(NamedKey::Escape);
        User().PressControl('S');
    });
    EXPECT_THAT(Told(), ElementsAre("new", "import", "escape", "save"));
    EXPECT_THAT(keys, IsEmpty());
}

TEST_F(ShortcutContract, KeysOfAListActOnlyWhileItHasTheFocus)
{
    NameBox().SetText(u"ab");
    Show([&] {
        Form().Grid(u"flexGrid").SetFocus();
        User().Press(NamedKey::F2);
        User().Press(NamedKey::Enter);
        User().Press(NamedKey::Delete);
        EXPECT_THAT(Told(), ElementsAre("edit", "edit", "delete"));
        NameBox().SetFocus();
        NameBox().Select(0, 0);
        User().Press(NamedKey::F2);
        User().Press(NamedKey::Enter);
        User().Press(NamedKey::Delete);
        EXPECT_THAT(Told(), IsEmpty());
    });
    EXPECT_EQ(NameBox().Text(), u"b");
}

TEST_F(ShortcutContract, ADisabledHeaderTakesItsItemsButtonsAndKeysAlong)
{
    Bar().SetToolEnabled(u"ID_Edit", false);
    Show([&] {
        Form().Grid(u"flexGrid").SetFocus();
        EXPECT_FALSE(User().CanChooseTool(u"ID_Edit"));
        EXPECT_FALSE(User().CanChooseTool(u"ID_NewProduct"));
        EXPECT_FALSE(User().CanChooseTool(u"ID_EditProduct"));
        EXPECT_TRUE(User().CanChooseTool(u"ID_Import"));
        User().PressControl('N');
        User().Press(NamedKey::F2);
        User().Press(NamedKey::Enter);
        User().Press(NamedKey::Delete);
        EXPECT_THAT(Told(), IsEmpty());
        EXPECT_TRUE(Bar().IsToolEnabled(u"ID_NewProduct"));
        EXPECT_FALSE(Bar().IsToolEnabled(u"ID_Edit"));
        Bar().SetToolEnabled(u"ID_Edit", true);
        EXPECT_TRUE(User().CanChooseTool(u"ID_NewProduct"));
        User().PressControl('N');
        EXPECT_THAT(Told(), ElementsAre("new"));
    });
}

TEST_F(ShortcutContract, ADisabledItemStaysDisabledWhenItsHeaderComesBack)
{
    Bar().SetToolEnabled(u"ID_NewProduct", false);
    Bar().SetToolEnabled(u"ID_Edit", false);
    Bar().SetToolEnabled(u"ID_Edit", true);
    Show([&] {
        EXPECT_FALSE(User().CanChooseTool(u"ID_NewProduct"));
        EXPECT_TRUE(User().CanChooseTool(u"ID_Delete"));
        User().PressControl('N');
    });
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ShortcutContract, AnItemEnabledUnderADisabledHeaderWaitsForIt)
{
    Bar().SetToolEnabled(u"ID_Edit", false);
    Bar().SetToolEnabled(u"ID_NewProduct", false);
    Bar().SetToolEnabled(u"ID_NewProduct", true);
    Show([&] {
        EXPECT_FALSE(User().CanChooseTool(u"ID_NewProduct"));
        User().PressControl('N');
    });
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(ShortcutContract, ADisabledBarTakesItsToolsAlong)
{
    Bar().SetEnabled(false);
    Show([&] {
        EXPECT_FALSE(User().CanChooseTool(u"ID_Import"));
        User().PressControl('I');
        EXPECT_THAT(Told(), IsEmpty());
        Bar().SetEnabled(true);
        User().PressControl('I');
    });
    EXPECT_THAT(Told(), ElementsAre("import"));
}

TEST_F(ShortcutContract, AMenuTellsOfItsHeaderBeforeItsItem)
{
    Show([&] { User().ChooseTool(u"ID_Import"); });
    EXPECT_THAT(Told(), ElementsAre("file", "import"));
}

TEST_F(ShortcutContract, AnOpenedMenuTellsOfItself)
{
    Show([&] { User().ChooseTool(u"ID_Edit"); });
    EXPECT_THAT(Told(), ElementsAre("edit menu"));
}

TEST_F(ShortcutContract, AButtonOfTheBarTellsOfItsToolOnly)
{
    Show([&] {
        User().ClickTool(u"ID_NewProduct");
        User().ClickTool(u"ID_Import");
    });
    EXPECT_THAT(Told(), ElementsAre("new", "import"));
}

TEST_F(ShortcutContract, ToolsMoveNoFocus)
{
    HearFocus(NameBox(), "name");
    HearFocus(Form().Grid(u"flexGrid"), "grid");
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        User().ClickTool(u"ID_NewProduct");
        User().ChooseTool(u"ID_NewProduct");
        EXPECT_EQ(User().Focus(), u"txtProductName");
        EXPECT_THAT(Told(), ElementsAre("new", "edit menu", "new"));
        User().Type(u"x");
    });
    EXPECT_EQ(NameBox().Text(), u"x");
}

TEST_F(ShortcutContract, ToolsAreKnownLetterByLetter)
{
    EXPECT_EQ(ErrorNumberOf([&] { Bar().SetToolEnabled(u"id_file", false); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { Bar().SetToolEnabled(u"ID_Print", true); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { Bar().SetToolEnabled(u"", true); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { (void)Bar().IsToolEnabled(u"id_File"); }), kErrInvalidProcedureCall);
    EXPECT_EQ(ErrorNumberOf([&] { (void)Bar().IsToolEnabled(u"ID_Print"); }), kErrInvalidProcedureCall);
    EXPECT_TRUE(Bar().IsToolEnabled(u"ID_File"));
}

TEST_F(ShortcutContract, TheKeyOfAHiddenOrDisabledButtonDoesNothing)
{
    IButton& save = Form().Button(u"cmdSaveEdit");
    Show([&] {
        save.SetVisible(false);
        User().PressControl('S');
        save.SetVisible(true);
        save.SetEnabled(false);
        User().PressControl('S');
        EXPECT_THAT(Told(), IsEmpty());
        save.SetEnabled(true);
        User().PressControl('S');
        EXPECT_THAT(Told(), ElementsAre("save"));
    });
}

TEST_F(ShortcutContract, AButtonsKeyGivesItTheFocusAsAClickDoes)
{
    HearFocus(NameBox(), "name");
    HearFocus(Form().Button(u"cmdSaveEdit"), "button");
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        User().PressControl('S');
    });
    EXPECT_THAT(Told(), ElementsAre("name lost", "button got", "save"));
}

TEST_F(ControlsContract, EnterClicksTheDefaultButton)
{
    Form().SetDefaultButton(NewButton());
    NewButton().Click.Connect([this] { Tell("new"); });
    const auto& keys = HearKeys(NameBox());
    Show([&] {
        User().Click(u"txtProductName");
        User().Press(NamedKey::Enter);
    });
    EXPECT_THAT(Told(), ElementsAre("new"));
    EXPECT_THAT(keys, IsEmpty());
}

TEST_F(ControlsContract, EnterInTheNoteIsALineBreakAndNoDefaultButton)
{
    Form().SetDefaultButton(NewButton());
    NewButton().Click.Connect([this] { Tell("new"); });
    const auto& keys = HearKeys(NoteBox());
    Show([&] {
        User().Click(u"txtNote");
        User().Press(NamedKey::Enter);
    });
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_THAT(keys, ElementsAre(13));
    EXPECT_EQ(NoteBox().Text(), u"\r\n");
}

TEST_F(ControlsContract, EnterOnAButtonClicksThatButton)
{
    Form().SetDefaultButton(NewButton());
    NewButton().Click.Connect([this] { Tell("new"); });
    Form().Button(u"cmdCancel").Click.Connect([this] { Tell("cancel"); });
    Show([&] {
        User().TabTo(u"cmdCancel");
        User().Press(NamedKey::Enter);
    });
    EXPECT_THAT(Told(), ElementsAre("cancel"));
}

TEST_F(ControlsContract, EnterLeavesAHiddenOrDisabledDefaultButtonAlone)
{
    Form().SetDefaultButton(NewButton());
    NewButton().Click.Connect([this] { Tell("new"); });
    Show([&] {
        NameBox().SetFocus();
        NewButton().SetVisible(false);
        User().Press(NamedKey::Enter);
        NewButton().SetVisible(true);
        NewButton().SetEnabled(false);
        User().Press(NamedKey::Enter);
        EXPECT_THAT(Told(), IsEmpty());
        NewButton().SetEnabled(true);
        User().Press(NamedKey::Enter);
    });
    EXPECT_THAT(Told(), ElementsAre("new"));
}

TEST_F(ControlsContract, EscapeIsTakenFromEveryControl)
{
    Form().Escape.Connect([this] { Tell("escape"); });
    Show([&] {
        for (const std::u16string_view name : {u"flexGrid", u"txtProductName", u"txtNote", u"cmdNew"}) {
            User().TabTo(name);
            User().Press(NamedKey::Escape);
        }
    });
    EXPECT_THAT(Told(), ElementsAre("escape", "escape", "escape", "escape"));
}

// Focus

TEST_F(ControlsContract, SetFocusTellsTheOldControlThenTheNewOne)
{
    HearFocus(NameBox(), "name");
    HearFocus(NoteBox(), "note");
    Show([&] {
        NameBox().SetFocus();
        EXPECT_THAT(Told(), ElementsAre("name got"));
        NoteBox().SetFocus();
        EXPECT_THAT(Told(), ElementsAre("name lost", "note got"));
        EXPECT_TRUE(NoteBox().HasFocus());
        EXPECT_FALSE(NameBox().HasFocus());
        EXPECT_EQ(User().Focus(), u"txtNote");
    });
}

TEST_F(ControlsContract, SetFocusTellsBeforeTheFormIsShown)
{
    HearFocus(NameBox(), "name");
    HearFocus(NoteBox(), "note");
    NameBox().SetFocus();
    EXPECT_THAT(Told(), ElementsAre("name got"));
    EXPECT_TRUE(NameBox().HasFocus());
    NoteBox().SetFocus();
    EXPECT_THAT(Told(), ElementsAre("name lost", "note got"));
}

TEST_F(ControlsContract, FocusThatStaysTellsNothing)
{
    HearFocus(NameBox(), "name");
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        NameBox().SetFocus();
        User().Click(u"txtProductName");
        EXPECT_THAT(Told(), IsEmpty());
    });
}

TEST_F(ControlsContract, WhatCannotTakeTheFocusIgnoresIt)
{
    HearFocus(NameBox(), "name");
    HearFocus(NoteBox(), "note");
    HearFocus(NewButton(), "new");
    HearFocus(Form().Label(u"lblTip"), "label");
    HearFocus(Form().ToolBar(u"SSActiveToolBars1"), "bar");
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        NoteBox().SetVisible(false);
        NewButton().SetEnabled(false);
        NoteBox().SetFocus();
        NewButton().SetFocus();
        Form().Label(u"lblTip").SetFocus();
        Form().ToolBar(u"SSActiveToolBars1").SetFocus();
        EXPECT_THAT(Told(), IsEmpty());
        EXPECT_EQ(User().Focus(), u"txtProductName");
    });
}

TEST_F(ControlsContract, AHiddenControlHandsItsFocusToTheFirstOne)
{
    IGrid& grid = Form().Grid(u"flexGrid");
    Form().SetFirstFocus(grid);
    HearFocus(grid, "grid");
    HearFocus(NewButton(), "new");
    Show([&] {
        NewButton().SetFocus();
        (void)Told();
        NewButton().SetVisible(false);
        EXPECT_THAT(Told(), ElementsAre("new lost", "grid got"));
        EXPECT_TRUE(grid.HasFocus());
        NewButton().SetVisible(true);
        EXPECT_THAT(Told(), IsEmpty());
    });
}

TEST_F(ControlsContract, ADisabledControlHandsItsFocusToTheFirstOne)
{
    IGrid& grid = Form().Grid(u"flexGrid");
    Form().SetFirstFocus(grid);
    HearFocus(grid, "grid");
    HearFocus(NameBox(), "name");
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        NameBox().SetEnabled(false);
        EXPECT_THAT(Told(), ElementsAre("name lost", "grid got"));
    });
}

TEST_F(ControlsContract, HidingWhatHasNoFocusMovesNone)
{
    HearFocus(NameBox(), "name");
    HearFocus(NewButton(), "new");
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        NewButton().SetVisible(false);
        NoteBox().SetEnabled(false);
        EXPECT_THAT(Told(), IsEmpty());
        EXPECT_EQ(User().Focus(), u"txtProductName");
    });
}

TEST_F(ControlsContract, AHiddenFirstControlHandsItsFocusOn)
{
    IGrid& grid = Form().Grid(u"flexGrid");
    Form().SetFirstFocus(grid);
    HearFocus(grid, "grid");
    HearFocus(NameBox(), "name");
    Show([&] {
        (void)Told();
        grid.SetVisible(false);
        EXPECT_THAT(Told(), ElementsAre("grid lost", "name got"));
    });
}

TEST_F(ControlsContract, ALostFocusHandlerMayMoveTheFocusOn)
{
    HearFocus(NewButton(), "new");
    HearFocus(NoteBox(), "note");
    NameBox().LostFocus.Connect([&] {
        Tell("name lost");
        NoteBox().SetFocus();
    });
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        NewButton().SetFocus();
        EXPECT_EQ(User().Focus(), u"txtNote");
        EXPECT_EQ(Told().back(), "note got");
        EXPECT_FALSE(NewButton().HasFocus());
    });
}

TEST_F(ControlsContract, AClickGivesTheFocusBeforeItIsTold)
{
    HearFocus(NameBox(), "name");
    HearFocus(NewButton(), "new");
    NewButton().Click.Connect([this] { Tell("click"); });
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        User().Click(u"cmdNew");
        EXPECT_THAT(Told(), ElementsAre("name lost", "new got", "click"));
        User().Click(u"cmdNew");
        EXPECT_THAT(Told(), ElementsAre("click"));
    });
}

TEST_F(ControlsContract, TabFollowsTheEye)
{
    Form().SetFirstFocus(Form().Grid(u"flexGrid"));
    const std::vector<std::u16string> order = {
        u"txtProductName", u"txtPartNum",    u"txtUnitPrice", u"txtNote",   u"cmdNew",  u"cmdDelete",
        u"cmdSaveEdit",    u"cmdCancelEdit", u"cmdSaveClose", u"cmdCancel", u"flexGrid"};
    Show([&] {
        std::vector<std::u16string> walk;
        for (std::size_t step = 0; step < order.size(); ++step) {
            User().Press(NamedKey::Tab);
            walk.push_back(User().Focus());
        }
        EXPECT_EQ(walk, order);
        walk.clear();
        for (std::size_t step = 0; step < order.size(); ++step) {
            walk.push_back(User().Focus());
            User().Press(NamedKey::BackTab);
        }
        std::ranges::reverse(walk);
        EXPECT_EQ(walk, order);
    });
    EXPECT_EQ(NoteBox().Text(), u"");
}

TEST_F(ControlsContract, TabSkipsWhatIsHiddenOrDisabled)
{
    HearFocus(NameBox(), "name");
    HearFocus(NoteBox(), "note");
    Form().TextBox(u"txtPartNum").SetVisible(false);
    PriceBox().SetEnabled(false);
    Show([&] {
        NameBox().SetFocus();
        (void)Told();
        User().Press(NamedKey::Tab);
        EXPECT_EQ(User().Focus(), u"txtNote");
        EXPECT_THAT(Told(), ElementsAre("name lost", "note got"));
        User().Press(NamedKey::BackTab);
        EXPECT_EQ(User().Focus(), u"txtProductName");
    });
}

TEST_F(ControlsContract, ALockedBoxIsNotSkippedByTab)
{
    Form().TextBox(u"txtPartNum").SetLocked(true);
    Show([&] {
        NameBox().SetFocus();
        User().Press(NamedKey::Tab);
        EXPECT_EQ(User().Focus(), u"txtPartNum");
    });
}

// What a control shows

TEST_F(ControlsContract, VisibleAndEnabledAreWhatWasSet)
{
    for (IControl* const control :
         std::initializer_list<IControl*>{&NameBox(), &NoteBox(), &NewButton(), &Form().Grid(u"flexGrid"),
                                          &Form().Label(u"lblTip"), &Form().ToolBar(u"SSActiveToolBars1")}) {
        EXPECT_TRUE(control->IsVisible());
        EXPECT_TRUE(control->IsEnabled());
        control->SetVisible(false);
        control->SetEnabled(false);
        EXPECT_FALSE(control->IsVisible());
        EXPECT_FALSE(control->IsEnabled());
        control->SetVisible(true);
        control->SetEnabled(true);
        EXPECT_TRUE(control->IsVisible());
        EXPECT_TRUE(control->IsEnabled());
        EXPECT_NO_THROW(control->SetToolTip(u"why"));
        EXPECT_NO_THROW(control->SetToolTip(u""));
    }
}

TEST_F(ControlsContract, TheUserSeesWhatIsVisibleAndEnabled)
{
    NewButton().SetVisible(false);
    NameBox().SetEnabled(false);
    Show([&] {
        EXPECT_FALSE(User().IsShown(u"cmdNew"));
        EXPECT_TRUE(User().IsShown(u"cmdDelete"));
        EXPECT_FALSE(User().IsEnabled(u"txtProductName"));
        EXPECT_TRUE(User().IsEnabled(u"txtNote"));
        NewButton().SetVisible(true);
        NameBox().SetEnabled(true);
        EXPECT_TRUE(User().IsShown(u"cmdNew"));
        EXPECT_TRUE(User().IsEnabled(u"txtProductName"));
    });
}

TEST_F(ControlsContract, CaptionsOfButtonsReadADoubledAmpersandAsOne)
{
    NewButton().SetCaption(u"Save && Close");
    Form().Button(u"cmdDelete").SetCaption(u"Delete");
    Form().Button(u"cmdCancel").SetCaption(u"&&&&");
    EXPECT_EQ(NewButton().Caption(), u"Save && Close");
    Show([&] {
        EXPECT_EQ(User().TextOf(u"cmdNew"), u"Save & Close");
        EXPECT_EQ(User().TextOf(u"cmdDelete"), u"Delete");
        EXPECT_EQ(User().TextOf(u"cmdCancel"), u"&&");
    });
}

TEST_F(ControlsContract, LabelsAreShownLetterForLetter)
{
    for (const std::u16string caption :
         {u"R&D", u"Save && Close", u"&", u"<b>bold</b>", u"  two  ", u"Editing \U0001F528"}) {
        Form().Label(u"lblProductDetails").SetCaption(caption);
        // One in front of a box, too.
        Form().Label(u"lblProductName").SetCaption(caption);
        EXPECT_EQ(Form().Label(u"lblProductDetails").Caption(), caption);
        Show([&] {
            EXPECT_EQ(User().TextOf(u"lblProductDetails"), caption);
            EXPECT_EQ(User().TextOf(u"lblProductName"), caption);
        });
    }
}

// Buttons

TEST_F(ControlsContract, TheSpaceBarClicksAButton)
{
    NewButton().Click.Connect([this] { Tell("click"); });
    Show([&] {
        User().TabTo(u"cmdNew");
        User().Type(u" ");
    });
    EXPECT_THAT(Told(), ElementsAre("click"));
}

TEST_F(ControlsContract, ADoubleClickOnAButtonIsTwoClicks)
{
    NewButton().Click.Connect([this] { Tell("click"); });
    Show([&] { User().DoubleClick(u"cmdNew"); });
    EXPECT_THAT(Told(), ElementsAre("click", "click"));
}

TEST_F(ControlsContract, TheSecondHalfOfADoubleClickMissesWhatTheFirstHasTakenAway)
{
    NewButton().Click.Connect([this] {
        Tell("new");
        NewButton().SetVisible(false);
    });
    Form().Button(u"cmdDelete").Click.Connect([this] {
        Tell("delete");
        Form().Button(u"cmdDelete").SetEnabled(false);
    });
    Show([&] {
        User().DoubleClick(u"cmdNew");
        User().DoubleClick(u"cmdDelete");
    });
    EXPECT_THAT(Told(), ElementsAre("new", "delete"));
}

TEST_F(ControlsContract, ADoubleClickInABoxGivesItTheFocusFirst)
{
    HearFocus(NameBox(), "name");
    NameBox().DblClick.Connect([this] { Tell("double"); });
    NoteBox().DblClick.Connect([this] { Tell("note double"); });
    NameBox().SetLocked(true);
    Show([&] {
        User().DoubleClick(u"txtProductName");
        User().Click(u"txtNote");
        User().DoubleClick(u"txtNote");
    });
    EXPECT_THAT(Told(), ElementsAre("name got", "double", "name lost", "note double"));
}

// Check boxes and bars

class ImportControlsContract : public ControlsContract
{
protected:
    ImportControlsContract() : ControlsContract(u"frmProductImport") {}

    [[nodiscard]] ICheckBox& Header() { return Form().CheckBox(u"chkFirstRowIsHeader"); }
};

TEST_F(ImportControlsContract, CheckBoxesBeginUnticked)
{
    EXPECT_EQ(Header().Value(), 0);
    EXPECT_EQ(Form().CheckBox(u"chkAppend").Value(), 0);
    Show([&] {
        EXPECT_FALSE(User().IsTicked(u"chkFirstRowIsHeader"));
        EXPECT_FALSE(User().IsTicked(u"chkAppend"));
    });
}

TEST_F(ImportControlsContract, AClickTicksACheckBoxAndIsToldAfterwards)
{
    Header().Click.Connect([this] { Tell(Header().Value() == 1 ? "ticked" : "cleared"); });
    Show([&] {
        User().Click(u"chkFirstRowIsHeader");
        EXPECT_TRUE(User().IsTicked(u"chkFirstRowIsHeader"));
        EXPECT_EQ(User().Focus(), u"chkFirstRowIsHeader");
        User().Type(u" ");
        EXPECT_FALSE(User().IsTicked(u"chkFirstRowIsHeader"));
    });
    EXPECT_THAT(Told(), ElementsAre("ticked", "cleared"));
}

TEST_F(ImportControlsContract, AWrittenValueIsAClickOnlyWhenItIsAnother)
{
    Header().Click.Connect([this] { Tell("click"); });
    Header().SetValue(0);
    EXPECT_THAT(Told(), IsEmpty());
    Header().SetValue(1);
    EXPECT_THAT(Told(), ElementsAre("click"));
    Header().SetValue(1);
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Header().Value(), 1);
    Header().SetValue(0);
    EXPECT_THAT(Told(), ElementsAre("click"));
}

TEST_F(ImportControlsContract, CaptionsOfCheckBoxesReadADoubledAmpersandAsOne)
{
    Header().SetCaption(u"Names && prices");
    EXPECT_EQ(Header().Caption(), u"Names && prices");
    Show([&] { EXPECT_EQ(User().TextOf(u"chkFirstRowIsHeader"), u"Names & prices"); });
}

TEST_F(ImportControlsContract, ABarShowsItsValueAndCaption)
{
    IProgressBar& bar = Form().ProgressBar(u"prgImport");
    EXPECT_EQ(bar.Value(), 0);
    for (const std::int32_t value : {0, 50, 100}) {
        bar.SetValue(value);
        EXPECT_EQ(bar.Value(), value);
    }
    bar.SetCaption(u"Importing R&D 50%");
    EXPECT_EQ(bar.Caption(), u"Importing R&D 50%");
    Show([&] {
        EXPECT_EQ(User().TextOf(u"prgImport"), u"Importing R&D 50%");
        EXPECT_EQ(User().ValueOf(u"prgImport"), 100);
        bar.SetValue(29);
        EXPECT_EQ(User().ValueOf(u"prgImport"), 29);
    });
}

TEST_F(ImportControlsContract, TabFollowsTheEye)
{
    const std::vector<std::u16string> order = {u"txtImportFilePath", u"cmdBrowse", u"chkFirstRowIsHeader",
                                               u"chkAppend",         u"flexGrid",  u"cmdPreview",
                                               u"cmdImport",         u"cmdCancel"};
    Show([&] {
        Form().Button(u"cmdCancel").SetFocus();
        std::vector<std::u16string> walk;
        for (std::size_t step = 0; step < order.size(); ++step) {
            User().Press(NamedKey::Tab);
            walk.push_back(User().Focus());
        }
        EXPECT_EQ(walk, order);
    });
}

// Handlers that fail

TEST_F(ControlsContract, AHandlerThatThrowsLeavesItsControlUsable)
{
    const auto fail = [this](const char* what) {
        Tell(what);
        throw std::runtime_error(what);
    };
    NewButton().Click.Connect([&] { fail("click"); });
    NameBox().Change.Connect([&] { fail("change"); });
    NameBox().KeyPress.Connect([&](std::int32_t&) { fail("key"); });
    NameBox().GotFocus.Connect([&] { fail("got"); });
    NameBox().LostFocus.Connect([&] { fail("lost"); });
    NameBox().DblClick.Connect([&] { fail("double"); });
    Show([&] {
        for (int turn = 0; turn < 2; ++turn) {
            User().Click(u"txtProductName");
            // Another one each time: what a double click has selected is typed over.
            User().Type(turn == 0 ? u"x" : u"y");
            User().DoubleClick(u"txtProductName");
            User().Click(u"cmdNew");
            EXPECT_THAT(Told(), ElementsAre("got", "key", "change", "double", "lost", "click"));
        }
    });
    EXPECT_THAT(NameBox().Text(), testing::SizeIs(testing::Ge(1U)));
}

} // namespace
} // namespace KestrinProductEditor
