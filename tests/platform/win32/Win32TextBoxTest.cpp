// SPDX-License-Identifier: MIT
#include "platform/win32/Win32TextBox.h"

#include "platform/win32/Win32AltKey.h"
#include "platform/win32/Win32Clipboard.h"
#include "platform/win32/Win32Hands.h"
#include "platform/win32/Win32Reflection.h"
#include "platform/windows/WideText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Modifier = IUser::Modifier;

/// A window that ends with it.
class TestWindow
{
public:
    TestWindow(const wchar_t* className, HWND parent, DWORD style, RECT place)
        : m_window(CreateWindowExW(0, className, L"", style, place.left, place.top, place.right - place.left,
                                   place.bottom - place.top, parent, nullptr, nullptr, nullptr))
    {
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow() { DestroyWindow(m_window); }

    [[nodiscard]] HWND Handle() const { return m_window; }

private:
    HWND m_window;
};

constexpr DWORD kChild = WS_CHILD | WS_VISIBLE | WS_TABSTOP;
constexpr DWORD kLine = kChild | ES_AUTOHSCROLL;
constexpr DWORD kNote = kChild | ES_MULTILINE | ES_AUTOVSCROLL | ES_WANTRETURN;

/// A window with a box of one line and a note, and a loop that knows what dialogs know. `boxes` lets a test
/// do the same to both.
class Win32TextBoxes : public ::testing::Test, protected Win32Hands::Front
{
protected:
    struct Box
    {
        ITextBox& box;
        HWND window;
    };

    Win32TextBoxes()
    {
        ReflectToControls(m_window.Handle());
        ShowWindow(m_window.Handle(), SW_SHOW);
        SetActiveWindow(m_window.Handle());
    }

    [[nodiscard]] bool IsListening() const override { return true; }
    void PassOn(MSG& message) override
    {
        if (IsDialogMessageW(m_window.Handle(), &message) != 0)
            return;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    [[nodiscard]] HWND KeyWindow() const override { return GetFocus(); }

    void Press(const Box& each, UINT key, Modifier modifier = Modifier::None)
    {
        each.box.SetFocus();
        m_hands.Press(key, modifier);
    }
    void TypeInto(const Box& each, std::u16string_view text)
    {
        each.box.SetFocus();
        m_hands.Type(text);
    }
    void Compose(const Box& each, std::u16string_view text)
    {
        each.box.SetFocus();
        m_hands.Compose(text);
    }
    void Paste(const Box& each, std::u16string_view text)
    {
        Copy(text);
        Press(each, 'V', Modifier::Control);
    }
    void Copy(std::u16string_view text) const
    {
        ASSERT_TRUE(Win32Clipboard::PutText(m_window.Handle(), text));
    }
    [[nodiscard]] std::u16string Copied() const { return Win32Clipboard::Text(m_window.Handle()); }

    [[nodiscard]] std::vector<std::int32_t> HeardFrom(const Box& each, const std::function<void()>& act)
    {
        std::vector<std::int32_t> heard;
        each.box.KeyPress.Connect([&heard](std::int32_t& character) { heard.push_back(character); });
        act();
        each.box.KeyPress.Connect(nullptr);
        return heard;
    }

    const TestWindow m_window{L"STATIC", nullptr, WS_OVERLAPPEDWINDOW, {0, 0, 400, 300}};
    const TestWindow m_line{L"EDIT", m_window.Handle(), kLine, {0, 0, 300, 24}};
    const TestWindow m_edit{L"EDIT", m_window.Handle(), kNote, {0, 30, 300, 200}};
    Win32Focus m_focus{m_window.Handle()};
    Win32TextBox m_text{m_line.Handle(), m_focus};
    Win32TextBox m_note{m_edit.Handle(), m_focus};
    const Box line{m_text, m_line.Handle()};
    const Box note{m_note, m_edit.Handle()};
    const std::vector<Box> boxes{line, note};
    Win32Hands m_hands{*this};
};

/// What the system's box shows.
std::u16string ShownBy(HWND window)
{
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window, Wide(text.data()), static_cast<int>(text.size()))));
    return text;
}

BoxLines LinesOf(HWND window)
{
    return (GetWindowLongW(window, GWL_STYLE) & ES_MULTILINE) != 0 ? BoxLines::Many : BoxLines::One;
}

double Luminance(COLORREF color)
{
    const auto linear = [](BYTE value) {
        const double part = value / 255.0;
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(GetRValue(color)) + 0.7152 * linear(GetGValue(color)) +
           0.0722 * linear(GetBValue(color));
}

double Contrast(COLORREF one, COLORREF other)
{
    const double first = Luminance(one) + 0.05;
    const double second = Luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

/// The colours that a box answers when it is about to be painted.
struct Colors
{
    COLORREF ink;
    COLORREF behindInk;
    COLORREF ground;
};

Colors ColorsOf(HWND window, UINT message)
{
    const HDC canvas = CreateCompatibleDC(nullptr);
    const auto brush = reinterpret_cast<HBRUSH>(SendMessageW(
        GetParent(window), message, reinterpret_cast<WPARAM>(canvas), reinterpret_cast<LPARAM>(window)));
    const HBITMAP picture = CreateBitmap(1, 1, 1, 32, nullptr);
    const HGDIOBJ before = SelectObject(canvas, picture);
    const RECT place = {0, 0, 1, 1};
    FillRect(canvas, &place, brush);
    const Colors colors = {GetTextColor(canvas), GetBkColor(canvas), GetPixel(canvas, 0, 0)};
    SelectObject(canvas, before);
    DeleteObject(picture);
    DeleteDC(canvas);
    return colors;
}

} // namespace

// The text

TEST_F(Win32TextBoxes, GiveBackEveryTextAsItWasWritten)
{
    std::u16string lines = std::u16string(2999, u'x') + u"\U0001F600" + std::u16string(996, u'y');
    for (int count = 0; count < 500; ++count)
        lines += u"a line\nanother\r\n" + std::u16string(count == 250 ? 2500 : 0, u'z');
    const std::u16string texts[] = {
        u"",
        u"one\r\ntwo",
        u"one\ntwo",
        u"one\rtwo",
        u"\r\n",
        u"\n\r",
        u"\r\r\n",
        u"\r\n\n\r\r\n",
        u"mixed\r\nkinds\nof\rbreaks\r\n",
        u"a\tb\u00A0c",
        u"  blanks  ",
        u"\u2028line\u2029paragraph",
        u"\u00ADsoft\u200Bjoined\u200D",
        u"\U0001F600",
        std::u16string{u'a', char16_t{0xD83D}, u'b'},
        std::u16string{char16_t{0xDE00}, u'b', char16_t{0xD83D}},
        std::u16string{u'a', u'\0', u'b', char16_t{0xFFFC}, char16_t{0xFFFF}},
        std::u16string(40000, u'x'),
        lines,
    };
    for (const Box& each : boxes) {
        for (const std::u16string& text : texts) {
            each.box.SetText(text);
            EXPECT_EQ(each.box.Text(), text);
            EXPECT_EQ(ShownBy(each.window), ShownText(text, LinesOf(each.window)));
            each.box.Select(0, static_cast<std::int32_t>(text.size()));
            EXPECT_EQ(each.box.SelectedText(), text);
        }
    }
}

TEST_F(Win32TextBoxes, ShowEveryLineBreakAsOne)
{
    const std::u16string text = u"one\rtwo\nthree\r\nfour\r\r\nsix";
    m_note.SetText(text);
    EXPECT_EQ(SendMessageW(m_edit.Handle(), EM_GETLINECOUNT, 0, 0), 6);
    m_text.SetText(text);
    EXPECT_EQ(ShownBy(m_line.Handle()), u"one two three four  six");
}

TEST_F(Win32TextBoxes, KeepEveryOtherLineBreakWhenALineIsTypedInto)
{
    m_note.SetText(u"one\rtwo\nthree\r\nfour");
    m_note.Select(7, 0);
    TypeInto(note, u"!");
    EXPECT_EQ(m_note.Text(), u"one\rtwo!\nthree\r\nfour");
    Press(note, VK_RETURN);
    EXPECT_EQ(m_note.Text(), u"one\rtwo!\r\n\nthree\r\nfour");
    Press(note, 'Z', Modifier::Control);
    EXPECT_EQ(m_note.Text(), u"one\rtwo!\nthree\r\nfour");
}

TEST_F(Win32TextBoxes, BringLineBreaksBackWhenTheirRemovalIsUndone)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"one\rtwo\nthree");
        each.box.Select(1, 8);
        Press(each, VK_DELETE);
        EXPECT_EQ(each.box.Text(), u"ohree");
        Press(each, 'Z', Modifier::Control);
        EXPECT_EQ(each.box.Text(), u"one\rtwo\nthree");
        EXPECT_EQ(ShownBy(each.window), ShownText(each.box.Text(), LinesOf(each.window)));
    }
}

TEST_F(Win32TextBoxes, ShowWhatBecomesOneLineBreakAsOne)
{
    m_note.SetText(u"a\rb");
    m_note.Select(2, 0);
    Paste(note, u"\n");
    EXPECT_EQ(m_note.Text(), u"a\r\nb");
    EXPECT_EQ(ShownBy(m_edit.Handle()), u"a\r\nb");
    EXPECT_EQ(SendMessageW(m_edit.Handle(), EM_GETLINECOUNT, 0, 0), 2);
}

TEST_F(Win32TextBoxes, TakeWholeCharactersAndLineBreaksAway)
{
    const struct
    {
        std::u16string text;
        std::int32_t caret;
        UINT key;
        Modifier modifier;
        std::u16string left;
    } cases[] = {
        {u"a\U0001F600b", 3, VK_BACK, Modifier::None, u"ab"},
        {u"a\U0001F600b", 1, VK_DELETE, Modifier::None, u"ab"},
        {u"e\u0301x", 2, VK_BACK, Modifier::None, u"ex"},
        {u"e\u0301x", 0, VK_DELETE, Modifier::None, u"x"},
        {u"a\r\nb", 3, VK_BACK, Modifier::None, u"ab"},
        {u"a\r\nb", 1, VK_DELETE, Modifier::None, u"ab"},
        {u"a\n\rb", 2, VK_BACK, Modifier::None, u"a\rb"},
        {u"abc", 0, VK_BACK, Modifier::None, u"abc"},
        {u"abc", 3, VK_DELETE, Modifier::None, u"abc"},
        {u"one two, three", 14, VK_BACK, Modifier::Control, u"one two, "},
        {u"one two, ", 9, VK_BACK, Modifier::Control, u"one two"},
        {u"one two, three", 3, VK_DELETE, Modifier::Control, u"one, three"},
        {u"one\r\ntwo", 5, VK_BACK, Modifier::Control, u"onetwo"},
        {u"one \r\ntwo", 3, VK_DELETE, Modifier::Control, u"one\r\ntwo"},
        {u"one\ntwo", 3, VK_DELETE, Modifier::Control, u"onetwo"},
    };
    for (const Box& each : boxes) {
        for (const auto& one : cases) {
            each.box.SetText(one.text);
            each.box.Select(one.caret, 0);
            Press(each, one.key, one.modifier);
            EXPECT_EQ(each.box.Text(), one.left) << one.key << " at " << one.caret;
            EXPECT_EQ(ShownBy(each.window), ShownText(one.left, LinesOf(each.window)));
        }
    }
}

TEST_F(Win32TextBoxes, NeverShowAnythingElseThanTheirText)
{
    const std::array<std::u16string_view, 12> pieces = {
        u"a",      u" b ", u"\r\n", u"\n", u"\r", u"\t", u"\U0001F600", u"\u00A0", u"long words and more",
        u"\r\r\n", u"",    u"z"};
    std::mt19937 random(20); // NOLINT(cert-msc51-cpp): the same walk every time
    const auto below = [&random](std::size_t end) {
        return static_cast<std::int32_t>(std::uniform_int_distribution<std::size_t>(0, end - 1)(random));
    };
    for (const Box& each : boxes) {
        std::vector<std::u16string> before = {each.box.Text()};
        each.box.Change.Connect([&] { before.push_back(each.box.Text()); });
        for (int step = 0; step < 400; ++step) {
            const auto size = each.box.Text().size();
            each.box.Select(below(size + 1), below(4));
            switch (below(5)) {
            case 0:
                Press(each, VK_BACK);
                break;
            case 1:
                Press(each, VK_DELETE);
                break;
            case 2:
                TypeInto(each, u"x");
                break;
            default:
                Paste(each, pieces[static_cast<std::size_t>(below(pieces.size()))]);
                break;
            }
            ASSERT_EQ(ShownBy(each.window), ShownText(each.box.Text(), LinesOf(each.window))) << step;
        }
        each.box.Change.Connect(nullptr);
        // All of it can be undone, back to the beginning, and done again.
        const std::u16string last = each.box.Text();
        for (int step = 0; step < 400; ++step)
            Press(each, 'Z', Modifier::Control);
        EXPECT_EQ(each.box.Text(), before.front());
        for (int step = 0; step < 400; ++step)
            Press(each, 'Y', Modifier::Control);
        EXPECT_EQ(each.box.Text(), last);
        EXPECT_EQ(ShownBy(each.window), ShownText(last, LinesOf(each.window)));
    }
}

TEST_F(Win32TextBoxes, SelectWhatLiesInTheText)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"ab\r\ncd");
        const struct
        {
            std::int32_t start;
            std::int32_t length;
            const char16_t* selected;
        } cases[] = {
            {0, 6, u"ab\r\ncd"},
            {0, 2, u"ab"},
            {4, 2, u"cd"},
            {4, 99, u"cd"},
            {99, 1, u""},
            {-2, 3, u"a"},
            {1, 0, u""},
            {1, -1, u""},
            {1, 4, u"b\r\nc"},
            {3, 2, u"\r\nc"},
            {0, 0x7FFFFFFF, u"ab\r\ncd"},
        };
        for (const auto& one : cases) {
            each.box.Select(one.start, one.length);
            EXPECT_EQ(each.box.SelectedText(), one.selected) << one.start;
        }
    }
}

TEST_F(Win32TextBoxes, BeginAtTheBeginningOfAWrittenText)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"written");
        TypeInto(each, u"1");
        EXPECT_EQ(each.box.Text(), u"1written");
        each.box.Select(4, 2);
        each.box.SetText(u"1written");
        TypeInto(each, u"2");
        EXPECT_EQ(each.box.Text(), u"21written") << "also where it is the same";
    }
}

// The clipboard

TEST_F(Win32TextBoxes, PasteAText)
{
    const struct
    {
        const char16_t* pasted;
        const char16_t* inLine;
        const char16_t* inNote;
    } cases[] = {
        {u"plain", u"plain", u"plain"},
        {u"one\r\ntwo\nthree\rfour", u"one two three four", u"one\r\ntwo\nthree\rfour"},
        {u"Hammer\r\n", u"Hammer", u"Hammer\r\n"},
        {u"\n\nHammer\n", u"Hammer", u"\n\nHammer\n"},
        {u"a\u2028b\u2029", u"a b", u"a\u2028b\u2029"},
        {u" a\t\u00A0b ", u" a\t\u00A0b ", u" a\t\u00A0b "},
        {u"\r\n", u"", u"\r\n"},
    };
    for (const auto& each : cases) {
        for (const Box& box : boxes) {
            box.box.SetText(u"");
            Paste(box, each.pasted);
        }
        EXPECT_EQ(m_text.Text(), each.inLine);
        EXPECT_EQ(m_note.Text(), each.inNote);
    }
}

TEST_F(Win32TextBoxes, DoWhatTheSystemsMenuAsksFor)
{
    for (const Box& each : boxes) {
        const auto send = [&each](UINT message) { return SendMessageW(each.window, message, 0, 0); };
        const std::vector<std::int32_t> heard = HeardFrom(each, [&] {
            each.box.SetText(u"one\rtwo");
            each.box.Select(3, 1);
            EXPECT_EQ(send(EM_CANUNDO), FALSE);
            send(WM_COPY);
            EXPECT_EQ(Copied(), u"\r");
            send(WM_CUT);
            EXPECT_EQ(each.box.Text(), u"onetwo");
            Copy(u"!\n?");
            send(WM_PASTE);
            EXPECT_EQ(each.box.Text(), &each.box == &m_text ? u"one! ?two" : u"one!\n?two");
            EXPECT_EQ(send(EM_CANUNDO), TRUE);
            EXPECT_EQ(send(WM_UNDO), TRUE);
            EXPECT_EQ(each.box.Text(), u"onetwo");
            EXPECT_EQ(send(EM_UNDO), TRUE);
            EXPECT_EQ(each.box.Text(), u"one\rtwo");
            EXPECT_EQ(send(EM_UNDO), FALSE);
            each.box.Select(0, 4);
            send(WM_CLEAR);
            EXPECT_EQ(each.box.Text(), u"two");
        });
        EXPECT_THAT(heard, IsEmpty());
    }
}

TEST_F(Win32TextBoxes, KeepWhatTheyCannotCopy)
{
    m_text.SetText(u"text");
    m_text.Select(0, 4);
    // As another program would.
    const TestWindow other(L"STATIC", nullptr, WS_POPUP, {0, 0, 1, 1});
    ASSERT_NE(OpenClipboard(other.Handle()), 0);
    Press(line, 'X', Modifier::Control);
    CloseClipboard();
    EXPECT_EQ(m_text.Text(), u"text");
}

TEST_F(Win32TextBoxes, CopyANoteAsItIs)
{
    m_note.SetText(u"a\u00A0\nb\r\nc");
    Press(note, 'A', Modifier::Control);
    Press(note, 'C', Modifier::Control);
    EXPECT_EQ(Copied(), u"a\u00A0\nb\r\nc");
    Press(note, 'X', Modifier::Control);
    EXPECT_EQ(m_note.Text(), u"");
    Press(note, 'V', Modifier::Control);
    EXPECT_EQ(m_note.Text(), u"a\u00A0\nb\r\nc");
}

// Length

TEST_F(Win32TextBoxes, TakeNoMoreThanTheirMaxLength)
{
    for (const Box& each : boxes) {
        each.box.SetMaxLength(4);
        each.box.SetText(u"");
        TypeInto(each, u"abcdef");
        EXPECT_EQ(each.box.Text(), u"abcd");

        each.box.Select(1, 2);
        TypeInto(each, u"xyz");
        EXPECT_EQ(each.box.Text(), u"axyd");

        each.box.SetText(u"abc");
        each.box.Select(3, 0);
        Paste(each, u"\U0001F600");
        EXPECT_EQ(each.box.Text(), u"abc") << "a pair is not cut in two";
        TypeInto(each, u"\U0001F600");
        EXPECT_EQ(each.box.Text(), u"abc");
        each.box.Select(1, 2);
        TypeInto(each, u"\U0001F600");
        EXPECT_EQ(each.box.Text(), u"a\U0001F600");

        each.box.SetText(u"ab");
        each.box.Select(2, 0);
        Compose(each, u"\u00E9\u00E8\u00EA");
        EXPECT_EQ(each.box.Text(), u"ab\u00E9\u00E8");
        each.box.SetMaxLength(-1);
        EXPECT_EQ(each.box.MaxLength(), 0);
    }
}

TEST_F(Win32TextBoxes, CountALineBreakAsItsCharacters)
{
    m_note.SetMaxLength(4);
    m_note.SetText(u"ab");
    m_note.Select(2, 0);
    Press(note, VK_RETURN);
    Press(note, VK_RETURN);
    EXPECT_EQ(m_note.Text(), u"ab\r\n");
    m_note.SetText(u"abc");
    m_note.Select(3, 0);
    Press(note, VK_RETURN);
    EXPECT_EQ(m_note.Text(), u"abc") << "a line break is not cut in two";
    Paste(note, u"\r\n");
    EXPECT_EQ(m_note.Text(), u"abc");
    // One unit, although the system's box shows two.
    Paste(note, u"\nx");
    EXPECT_EQ(m_note.Text(), u"abc\n");
}

TEST_F(Win32TextBoxes, OnlyGetShorterWhileTheirTextIsTooLong)
{
    for (const Box& each : boxes) {
        each.box.SetMaxLength(3);
        // Others may not cut what the program writes either.
        SendMessageW(each.window, EM_SETLIMITTEXT, 2, 0);
        each.box.SetText(u"abcdef");
        EXPECT_EQ(ShownBy(each.window), u"abcdef");
        each.box.Select(2, 2);
        TypeInto(each, u"x");
        EXPECT_EQ(each.box.Text(), u"abcdef");
        Press(each, VK_BACK);
        Press(each, VK_BACK);
        Press(each, VK_BACK);
        TypeInto(each, u"xy");
        EXPECT_EQ(each.box.Text(), u"xef");
    }
}

// Change

TEST_F(Win32TextBoxes, RaiseChangeOnceForEachChange)
{
    for (const Box& each : boxes) {
        int changes = 0;
        each.box.Change.Connect([&changes] { ++changes; });
        const auto changesOf = [&changes](const std::function<void()>& act) {
            changes = 0;
            act();
            return changes;
        };
        EXPECT_EQ(changesOf([&] { each.box.SetText(u"abc"); }), 1);
        EXPECT_EQ(changesOf([&] { each.box.SetText(u"abc"); }), 0);
        each.box.Select(0, 3);
        EXPECT_EQ(changesOf([&] { Paste(each, u"xyz"); }), 1);
        each.box.Select(0, 3);
        EXPECT_EQ(changesOf([&] { Paste(each, u"xyz"); }), 0);
        EXPECT_EQ(changesOf([&] { TypeInto(each, u"q"); }), 1);
        EXPECT_EQ(changesOf([&] { Press(each, VK_BACK); }), 1);
        EXPECT_EQ(changesOf([&] { Press(each, 'Z', Modifier::Control); }), 1);
        EXPECT_EQ(changesOf([&] { Press(each, VK_LEFT); }), 0);
        each.box.Select(0, 2);
        EXPECT_EQ(changesOf([&] { Press(each, 'X', Modifier::Control); }), 1);
        EXPECT_EQ(changesOf([&] { SendMessageW(each.window, WM_UNDO, 0, 0); }), 1);
        EXPECT_EQ(changesOf([&] { SendMessageW(each.window, WM_PASTE, 0, 0); }), 1);
        each.box.Select(0, 1);
        EXPECT_EQ(changesOf([&] { SendMessageW(each.window, WM_CLEAR, 0, 0); }), 1);
        EXPECT_EQ(changesOf([&] { SetWindowTextW(each.window, L"from afar"); }), 1);
        EXPECT_EQ(changesOf([&] { SetWindowTextW(each.window, L"from afar"); }), 0);
        each.box.Change.Connect(nullptr);
    }
}

TEST_F(Win32TextBoxes, RaiseChangeOfAWriteBeforeTheWriteReturns)
{
    for (const Box& each : boxes) {
        std::u16string heard;
        each.box.Change.Connect([&] { heard = each.box.Text(); });
        each.box.KeyPress.Connect([&](std::int32_t& character) {
            character = 0;
            each.box.SetText(u"from the handler");
            EXPECT_EQ(heard, u"from the handler");
        });
        TypeInto(each, u"a");
        EXPECT_EQ(each.box.Text(), u"from the handler");
        each.box.Change.Connect(nullptr);
        each.box.KeyPress.Connect(nullptr);
    }
}

TEST_F(Win32TextBoxes, TakeWhatOtherProgramsWrite)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"one\rtwo");
        each.box.SetMaxLength(8);
        each.box.Select(3, 1);
        SendMessageW(each.window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"-and-"));
        EXPECT_EQ(each.box.Text(), u"one-atwo");
        each.box.SetMaxLength(0);
        SetWindowTextW(each.window, L"far\nside");
        EXPECT_EQ(each.box.Text(), u"far\nside");
        each.box.SetLocked(true);
        SendMessageW(each.window, EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"never"));
        EXPECT_EQ(each.box.Text(), u"far\nside");
    }
}

TEST_F(Win32TextBoxes, TakeNoTextForAnEmptyOne)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"abcd");
        each.box.Select(1, 2);
        SendMessageW(each.window, EM_REPLACESEL, TRUE, 0);
        EXPECT_EQ(each.box.Text(), u"ad");
        SendMessageW(each.window, WM_SETTEXT, 0, 0);
        EXPECT_EQ(each.box.Text(), u"");
    }
}

TEST_F(Win32TextBoxes, TakeOverWhatTheirWindowDoesByItself)
{
    for (const Box& each : boxes) {
        WNDCLASSW kind = {};
        ASSERT_NE(GetClassInfoW(nullptr, L"EDIT", &kind), 0);
        each.box.SetText(u"a\rb\nc");
        each.box.Select(3, 0);
        int changes = 0;
        each.box.Change.Connect([&changes] { ++changes; });
        // Past the box, as parts of the system may.
        CallWindowProcW(kind.lpfnWndProc, each.window, WM_CHAR, u'x', 1);
        EXPECT_EQ(each.box.Text(), u"a\rbx\nc");
        EXPECT_EQ(ShownBy(each.window), ShownText(each.box.Text(), LinesOf(each.window)));
        EXPECT_EQ(changes, 1);
        SendMessageW(each.window, WM_UNDO, 0, 0);
        EXPECT_EQ(each.box.Text(), u"a\rb\nc");
        each.box.Change.Connect(nullptr);
    }
}

// KeyPress

TEST_F(Win32TextBoxes, RaiseKeyPressForCharactersOnly)
{
    const struct
    {
        UINT key;
        Modifier modifier;
        std::int32_t character; // 0: no KeyPress
    } cases[] = {
        {'A', Modifier::None, u'a'},       {'5', Modifier::None, u'5'},
        {VK_SPACE, Modifier::None, u' '},  {VK_BACK, Modifier::None, 8},
        {VK_BACK, Modifier::Shift, 8},     {VK_BACK, Modifier::Control, 8},
        {'C', Modifier::Control, 3},       {'V', Modifier::Control, 22},
        {'X', Modifier::Control, 24},      {'Z', Modifier::Control, 26},
        {'A', Modifier::Control, 1},       {'K', Modifier::Control, 11},
        {'H', Modifier::Control, 8},       {'I', Modifier::Control, 9},
        {'M', Modifier::Control, 13},      {VK_INSERT, Modifier::Control, 3},
        {VK_INSERT, Modifier::Shift, 22},  {VK_DELETE, Modifier::Shift, 24},
        {VK_DELETE, Modifier::None, 0},    {VK_LEFT, Modifier::None, 0},
        {VK_RIGHT, Modifier::Shift, 0},    {VK_UP, Modifier::None, 0},
        {VK_HOME, Modifier::None, 0},      {VK_END, Modifier::Control, 0},
        {VK_NEXT, Modifier::None, 0},      {VK_INSERT, Modifier::None, 0},
        {VK_F2, Modifier::None, 0},        {VK_SHIFT, Modifier::Shift, 0},
        {VK_RETURN, Modifier::Control, 0},
    };
    for (const Box& each : boxes) {
        for (const auto& one : cases) {
            each.box.SetText(u"text");
            const std::vector<std::int32_t> heard =
                HeardFrom(each, [&] { Press(each, one.key, one.modifier); });
            if (one.character == 0)
                EXPECT_THAT(heard, IsEmpty()) << one.key;
            else
                EXPECT_THAT(heard, ElementsAre(one.character)) << one.key;
        }
        // Letters that have no meaning in a box, though another key with that character has one.
        each.box.SetText(u"text");
        each.box.Select(2, 0);
        for (const char16_t letter : std::u16string_view(u"HIJKM"))
            Press(each, letter, Modifier::Control);
        EXPECT_EQ(each.box.Text(), u"text");
    }
}

TEST_F(Win32TextBoxes, UndoByAltAndBackspaceAndTurnToNoMenu)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"");
        each.box.SetFocus();
        TypeInto(each, u"x");
        EXPECT_EQ(MenusAfterAlt(each.window, VK_BACK), 0);
        EXPECT_EQ(each.box.Text(), u"");
    }
}

TEST_F(Win32TextBoxes, TypeNoMnemonic)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"");
        each.box.SetFocus();
        const std::vector<std::int32_t> heard = HeardFrom(each, [&] {
            constexpr LPARAM kWithAlt = 0x20000001;
            SendMessageW(each.window, WM_SYSKEYDOWN, 'E', kWithAlt);
            SendMessageW(each.window, WM_SYSCHAR, u'e', kWithAlt);
        });
        EXPECT_THAT(heard, IsEmpty());
        EXPECT_EQ(each.box.Text(), u"");
    }
}

TEST_F(Win32TextBoxes, TellACharacterOfTwoUnitsOnce)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"");
        const std::vector<std::int32_t> heard = HeardFrom(each, [&] {
            TypeInto(each, u"\U0001F600");
            Compose(each, u"\U0001F601");
            SendMessageW(each.window, WM_UNICHAR, 0x1F602, 1);
            // Halves without the other one.
            SendMessageW(each.window, WM_CHAR, 0xD83D, 1);
            SendMessageW(each.window, WM_CHAR, u'x', 1);
            SendMessageW(each.window, WM_CHAR, 0xDE00, 1);
            SendMessageW(each.window, WM_UNICHAR, 0xD83D, 1);
            SendMessageW(each.window, WM_UNICHAR, 0x110000, 1);
        });
        EXPECT_THAT(heard, ElementsAre(0x1F600, 0x1F601, 0x1F602, u'x'));
        EXPECT_EQ(each.box.Text(), u"\U0001F600\U0001F601\U0001F602x");
    }
}

TEST_F(Win32TextBoxes, DoNothingForASwallowedCharacter)
{
    for (const Box& each : boxes) {
        each.box.KeyPress.Connect([](std::int32_t& character) { character = 0; });
        each.box.SetText(u"text");
        each.box.Select(1, 2);
        Copy(u"pasted");
        TypeInto(each, u"x ");
        Press(each, VK_BACK);
        Press(each, VK_RETURN);
        for (const char16_t key : std::u16string_view(u"CXVAZY"))
            Press(each, key, Modifier::Control);
        Press(each, VK_INSERT, Modifier::Shift);
        Press(each, VK_INSERT, Modifier::Control);
        Press(each, VK_DELETE, Modifier::Shift);
        EXPECT_EQ(each.box.Text(), u"text");
        EXPECT_EQ(each.box.SelectedText(), u"ex");
        EXPECT_EQ(Copied(), u"pasted");
        Press(each, VK_DELETE);
        EXPECT_EQ(each.box.Text(), u"tt") << "Delete is no character";
        each.box.KeyPress.Connect(nullptr);
    }
}

TEST_F(Win32TextBoxes, TypeTheCharacterThatAHandlerPutsInItsPlace)
{
    const struct
    {
        std::int32_t character;
        const char16_t* typed;
    } cases[] = {
        {u'B', u"xBy"},    {0x1F600, u"x\U0001F600y"},
        {8, u"y"},         {0xD83D, u"xy"},
        {0x110000, u"xy"}, {-1, u"xy"},
        {22, u"xpasty"},   {2, u"xy"},
    };
    for (const Box& each : boxes) {
        for (const auto& one : cases) {
            each.box.SetText(u"");
            Copy(u"past");
            each.box.KeyPress.Connect([&one](std::int32_t& character) {
                if (character == u'a')
                    character = one.character;
            });
            TypeInto(each, u"xay");
            EXPECT_EQ(each.box.Text(), one.typed) << one.character;
            each.box.KeyPress.Connect(nullptr);
        }
    }
}

TEST_F(Win32TextBoxes, CanBeReadAndCopiedFromWhileLocked)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"text");
        TypeInto(each, u"1");
        each.box.SetLocked(true);
        EXPECT_THAT(HeardFrom(each, [&] { TypeInto(each, u"x"); }), ElementsAre(u'x'));
        Press(each, 'A', Modifier::Control);
        Press(each, 'C', Modifier::Control);
        EXPECT_EQ(Copied(), u"1text");
        Copy(u"pasted");
        for (const char16_t key : std::u16string_view(u"XVZY"))
            Press(each, key, Modifier::Control);
        for (const UINT key : std::initializer_list<UINT>{VK_DELETE, VK_BACK, VK_RETURN})
            Press(each, key);
        for (const UINT message : std::initializer_list<UINT>{WM_CUT, WM_PASTE, WM_CLEAR, WM_UNDO})
            SendMessageW(each.window, message, 0, 0);
        EXPECT_EQ(SendMessageW(each.window, EM_CANUNDO, 0, 0), FALSE);
        Compose(each, u"composed");
        EXPECT_EQ(each.box.Text(), u"1text");
        EXPECT_EQ(Copied(), u"pasted");
        each.box.SetLocked(false);
        TypeInto(each, u"x");
        EXPECT_EQ(each.box.Text(), u"x");
    }
}

// Undo

TEST_F(Win32TextBoxes, UndoWhatWasTypedInOneGoTogether)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"end");
        TypeInto(each, u"one");
        each.box.Select(0, 0);
        TypeInto(each, u"two");
        Press(each, VK_BACK);
        Press(each, VK_BACK);
        EXPECT_EQ(each.box.Text(), u"toneend");
        const auto undo = [&] {
            Press(each, 'Z', Modifier::Control);
            return each.box.Text();
        };
        EXPECT_EQ(undo(), u"twooneend");
        EXPECT_EQ(undo(), u"oneend");
        EXPECT_EQ(undo(), u"end");
        EXPECT_EQ(undo(), u"end");
        Press(each, 'Y', Modifier::Control);
        EXPECT_EQ(each.box.Text(), u"oneend");
        TypeInto(each, u"!");
        Press(each, 'Y', Modifier::Control);
        EXPECT_EQ(each.box.Text(), u"one!end") << "what was undone before is forgotten";
    }
}

TEST_F(Win32TextBoxes, ForgetWhatCouldBeUndoneWhenTheProgramWrites)
{
    for (const Box& each : boxes) {
        TypeInto(each, u"typed");
        each.box.SetText(u"written");
        Press(each, 'Z', Modifier::Control);
        EXPECT_EQ(each.box.Text(), u"written");
        TypeInto(each, u"typed");
        each.box.SetText(each.box.Text());
        Press(each, 'Z', Modifier::Control);
        EXPECT_EQ(each.box.Text(), u"typedwritten");
    }
}

// The window around them

TEST_F(Win32TextBoxes, AreLeftByTab)
{
    m_note.SetText(u"text");
    m_text.SetText(u"line");
    m_note.SetFocus();
    m_hands.Press(VK_TAB);
    EXPECT_TRUE(m_text.HasFocus());
    EXPECT_EQ(m_text.SelectedText(), u"line");
    m_hands.Press(VK_TAB);
    EXPECT_TRUE(m_note.HasFocus());
    EXPECT_EQ(m_note.SelectedText(), u"") << "a note keeps its caret";
    EXPECT_EQ(m_note.Text(), u"text");
}

TEST_F(Win32TextBoxes, WantEnterOnlyWhereItBreaksALine)
{
    const auto wants = [](HWND window, UINT key) {
        MSG message = {};
        message.hwnd = window;
        message.message = WM_KEYDOWN;
        message.wParam = key;
        return (SendMessageW(window, WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message)) &
                DLGC_WANTMESSAGE) != 0;
    };
    EXPECT_TRUE(wants(m_edit.Handle(), VK_RETURN));
    EXPECT_FALSE(wants(m_edit.Handle(), VK_ESCAPE));
    EXPECT_FALSE(wants(m_edit.Handle(), VK_TAB));
    EXPECT_FALSE(wants(m_line.Handle(), VK_RETURN));
    EXPECT_EQ(SendMessageW(m_edit.Handle(), WM_GETDLGCODE, 0, 0), DLGC_WANTCHARS | DLGC_WANTARROWS);
}

TEST_F(Win32TextBoxes, RaiseDblClickAfterTheWordIsSelected)
{
    for (const bool isLocked : {false, true}) {
        for (const Box& each : boxes) {
            each.box.SetText(u"word");
            each.box.SetLocked(isLocked);
            std::vector<std::u16string> heard;
            each.box.DblClick.Connect([&] {
                heard.push_back(each.box.SelectedText());
                EXPECT_TRUE(each.box.HasFocus());
                EXPECT_EQ(GetCapture(), nullptr) << "another window could not be clicked";
            });
            m_hands.DoubleClick(each.window, {5, 5});
            EXPECT_THAT(heard, ElementsAre(std::u16string(u"word")));
            each.box.DblClick.Connect(nullptr);
        }
    }
}

TEST_F(Win32TextBoxes, MayBeEndedByTheirHandlers)
{
    const auto end = [this](const std::function<void(ITextBox&, std::function<void()>)>& connect,
                            const std::function<void(HWND)>& act) {
        const TestWindow window(L"EDIT", m_window.Handle(), kNote, {0, 210, 100, 250});
        Win32Focus focus(m_window.Handle());
        auto box = std::make_unique<Win32TextBox>(window.Handle(), focus);
        connect(*box, [&box] { box.reset(); });
        SetFocus(window.Handle());
        act(window.Handle());
        EXPECT_EQ(box, nullptr);
        // The window is the system's alone now.
        SetWindowTextW(window.Handle(), L"left");
        EXPECT_EQ(ShownBy(window.Handle()), u"left");
    };
    const auto type = [](HWND window) { SendMessageW(window, WM_CHAR, u'x', 1); };
    end([](ITextBox& box, const auto& ends) { box.KeyPress.Connect([ends](std::int32_t&) { ends(); }); },
        type);
    end([](ITextBox& box, const auto& ends) { box.Change.Connect(ends); }, type);
    end([](ITextBox& box, const auto& ends) { box.DblClick.Connect(ends); },
        [](HWND window) { SendMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5)); });
}

TEST_F(Win32TextBoxes, KeepTheirTextWhenTheirWindowEnds)
{
    auto window = std::make_unique<TestWindow>(L"EDIT", m_window.Handle(), kNote, RECT{0, 210, 100, 250});
    Win32Focus focus(m_window.Handle());
    const Win32TextBox box(window->Handle(), focus);
    SetWindowTextW(window->Handle(), L"a\nb");
    window.reset();
    EXPECT_EQ(box.Text(), u"a\nb");
}

// Colours

TEST_F(Win32TextBoxes, ShowDarkTextOnTheGivenColour)
{
    for (const Box& each : boxes) {
        for (const std::uint32_t color : {std::uint32_t{0x80F0FF}, kWhite, kLightGrey}) {
            each.box.SetBackColor(color);
            EXPECT_EQ(each.box.BackColor(), color);
            const COLORREF ground = RGB((color >> 16U) & 0xFF, (color >> 8U) & 0xFF, color & 0xFF);
            for (const bool isEnabled : {true, false}) {
                each.box.SetEnabled(isEnabled);
                for (const UINT message : std::initializer_list<UINT>{WM_CTLCOLOREDIT, WM_CTLCOLORSTATIC}) {
                    const Colors colors = ColorsOf(each.window, message);
                    EXPECT_EQ(colors.ground, ground);
                    EXPECT_EQ(colors.behindInk, ground);
                    EXPECT_GT(Contrast(colors.ink, ground), 4.5);
                }
            }
            each.box.SetEnabled(true);
        }
    }
}

TEST_F(Win32TextBoxes, AreLegibleWhileDisabled)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"HHHH");
        each.box.SetBackColor(kLightGrey);
        each.box.SetEnabled(false);
        const HDC canvas = CreateCompatibleDC(nullptr);
        const HBITMAP picture = CreateBitmap(100, 20, 1, 32, nullptr);
        const HGDIOBJ before = SelectObject(canvas, picture);
        SendMessageW(each.window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(canvas), PRF_CLIENT);
        const COLORREF ground = RGB(0xC0, 0xC0, 0xC0);
        double strongest = 1;
        for (int place = 0; place < 100 * 20; ++place)
            strongest = std::max(strongest, Contrast(GetPixel(canvas, place % 100, place / 100), ground));
        EXPECT_GT(strongest, 4.5);
        EXPECT_EQ(GetPixel(canvas, 99, 10), ground);
        SelectObject(canvas, before);
        DeleteObject(picture);
        DeleteDC(canvas);
    }
}

TEST_F(Win32TextBoxes, UseUpNoHandlesForTheirColours)
{
    // More than the system gives one program.
    constexpr int kBoxes = 300;
    constexpr std::uint32_t kColors = 250;
    for (int count = 0; count < kBoxes; ++count) {
        const TestWindow window(L"EDIT", m_window.Handle(), kLine, {0, 210, 100, 230});
        Win32Focus focus(m_window.Handle());
        Win32TextBox box(window.Handle(), focus);
        for (std::uint32_t color = 0; color < kColors; ++color) {
            box.SetBackColor(color);
            ASSERT_NE(SendMessageW(window.Handle(), OCM_CTLCOLOREDIT,
                                   reinterpret_cast<WPARAM>(static_cast<HDC>(nullptr)),
                                   reinterpret_cast<LPARAM>(window.Handle())),
                      0);
        }
    }
    const HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_NE(brush, nullptr);
    DeleteObject(brush);
}

} // namespace KestrinProductEditor
