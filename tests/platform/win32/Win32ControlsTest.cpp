// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Button.h"
#include "platform/win32/Win32CheckBox.h"
#include "platform/win32/Win32Label.h"
#include "platform/win32/Win32ProgressBar.h"

#include "platform/win32/Win32Reflection.h"
#include "platform/windows/WideText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <commctrl.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A window, shown, and children that are made for each test.
class Win32ControlsTest : public ::testing::Test
{
protected:
    Win32ControlsTest()
    {
        const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
        InitCommonControlsEx(&classes);
        Win32ProgressBar::Register();
        ReflectToControls(m_window);
        ShowWindow(m_window, SW_SHOW);
        SetActiveWindow(m_window);
    }
    ~Win32ControlsTest() override { DestroyWindow(m_window); }

    [[nodiscard]] HWND Child(const wchar_t* kind, DWORD style, int width = 200, int height = 30) const
    {
        return CreateWindowW(kind, L"", WS_CHILD | WS_VISIBLE | style, 0, 0, width, height, m_window, nullptr,
                             nullptr, nullptr);
    }
    void HearFocus(IControl& control, const std::string& name)
    {
        control.GotFocus.Connect([this, name] { told.push_back(name + " got"); });
        control.LostFocus.Connect([this, name] { told.push_back(name + " lost"); });
    }
    [[nodiscard]] std::vector<std::string> Told() { return std::exchange(told, {}); }

    static void DoubleClick(HWND window)
    {
        constexpr LPARAM kPlace = MAKELPARAM(5, 5);
        for (const UINT down : std::initializer_list<UINT>{WM_LBUTTONDOWN, WM_LBUTTONDBLCLK}) {
            SendMessageW(window, down, MK_LBUTTON, kPlace);
            SendMessageW(window, WM_LBUTTONUP, 0, kPlace);
        }
    }

    const HWND m_window = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, nullptr, nullptr,
                                        nullptr, nullptr);
    Win32Focus focus{m_window};
    Win32Mnemonics mnemonics;
    Win32Keys keys;
    std::vector<std::string> told;
};

std::u16string TextOf(HWND window)
{
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window, Wide(text.data()), static_cast<int>(text.size()))));
    return text;
}

/// What the tool tip of a window says; empty without one.
std::u16string ToolTipOf(HWND window)
{
    struct Search
    {
        HWND window;
        std::u16string found;
    } search = {window, {}};
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND tip, LPARAM data) -> BOOL {
            auto& asked = *reinterpret_cast<Search*>(data);
            std::array<wchar_t, 32> kind = {};
            GetClassNameW(tip, kind.data(), static_cast<int>(kind.size()));
            std::array<wchar_t, 1000> text = {};
            TTTOOLINFOW tool = {};
            tool.cbSize = sizeof tool;
            tool.hwnd = GetParent(asked.window);
            tool.uId = reinterpret_cast<UINT_PTR>(asked.window);
            tool.lpszText = text.data();
            if (lstrcmpW(kind.data(), TOOLTIPS_CLASSW) == 0)
                SendMessageW(tip, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
            asked.found += FromWide(text.data());
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&search));
    return search.found;
}

/// A window as it paints itself.
class Picture
{
public:
    explicit Picture(HWND window) : m_canvas(CreateCompatibleDC(nullptr))
    {
        RECT inside = {};
        GetClientRect(window, &inside);
        m_width = static_cast<int>(inside.right);
        m_height = static_cast<int>(inside.bottom);
        m_picture = CreateBitmap(m_width, m_height, 1, 32, nullptr);
        m_before = SelectObject(m_canvas, m_picture);
        SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(m_canvas), PRF_CLIENT);
    }
    Picture(const Picture&) = delete;
    Picture& operator=(const Picture&) = delete;
    ~Picture()
    {
        SelectObject(m_canvas, m_before);
        DeleteObject(m_picture);
        DeleteDC(m_canvas);
    }

    [[nodiscard]] int Width() const { return m_width; }
    [[nodiscard]] COLORREF At(int x, int y) const { return GetPixel(m_canvas, x, y); }
    [[nodiscard]] COLORREF Near(int x) const { return At(x, 3); }
    [[nodiscard]] bool Has(COLORREF color, int from, int to) const
    {
        for (int x = from; x < to; ++x) {
            for (int y = 0; y < m_height; ++y) {
                if (At(x, y) == color)
                    return true;
            }
        }
        return false;
    }

private:
    HDC m_canvas;
    int m_width = 0;
    int m_height = 0;
    HBITMAP m_picture = nullptr;
    HGDIOBJ m_before = nullptr;
};

} // namespace

// Buttons

TEST_F(Win32ControlsTest, AButtonHasTheFocusBeforeItsClickHoweverItIsClicked)
{
    Win32Button first(Child(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP), focus, mnemonics, keys);
    Win32Button button(Child(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP), focus, mnemonics, keys);
    HearFocus(button, "button");
    button.Click.Connect([this] { told.emplace_back("click"); });
    button.SetShortcut(Ctrl(Key::S));
    const auto begin = [&] {
        first.SetFocus();
        (void)Told();
    };

    begin();
    button.Press();
    EXPECT_THAT(Told(), ElementsAre("button got", "click"));
    begin();
    SendMessageW(button.Window(), BM_CLICK, 0, 0);
    EXPECT_THAT(Told(), ElementsAre("button got", "click"));
    begin();
    // As another program would tell of a choice.
    SendMessageW(m_window, WM_COMMAND, MAKEWPARAM(0, BN_CLICKED), reinterpret_cast<LPARAM>(button.Window()));
    EXPECT_THAT(Told(), ElementsAre("button got", "click"));
    begin();
    DoubleClick(button.Window());
    EXPECT_THAT(Told(), ElementsAre("button got", "click", "click"));
}

TEST_F(Win32ControlsTest, AButtonThatNobodyCanReachIsNotClicked)
{
    Win32Button button(Child(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP), focus, mnemonics, keys);
    button.Click.Connect([this] { told.emplace_back("click"); });
    const auto clickEveryWay = [&] {
        button.Press();
        SendMessageW(button.Window(), BM_CLICK, 0, 0);
    };
    button.SetVisible(false);
    clickEveryWay();
    button.SetVisible(true);
    button.SetEnabled(false);
    clickEveryWay();
    button.SetEnabled(true);
    EnableWindow(m_window, FALSE);
    clickEveryWay();
    EnableWindow(m_window, TRUE);
    ShowWindow(m_window, SW_HIDE);
    clickEveryWay();
    EXPECT_THAT(told, IsEmpty());
    ShowWindow(m_window, SW_SHOW);
    button.Press();
    EXPECT_THAT(told, ElementsAre("click"));
}

TEST_F(Win32ControlsTest, AButtonThatTheFocusTakesAwayIsNotClicked)
{
    Win32Button first(Child(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP), focus, mnemonics, keys);
    Win32Button button(Child(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP), focus, mnemonics, keys);
    button.Click.Connect([this] { told.emplace_back("click"); });
    first.SetFocus();
    first.LostFocus.Connect([&button] { button.SetEnabled(false); });
    button.Press();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(Win32ControlsTest, AButtonMayBeEndedByItsHandlers)
{
    auto button =
        std::make_unique<Win32Button>(Child(L"BUTTON", BS_PUSHBUTTON | WS_TABSTOP), focus, mnemonics, keys);
    const HWND window = button->Window();
    button->Click.Connect([&button] { button.reset(); });
    SendMessageW(window, BM_CLICK, 0, 0);
    EXPECT_EQ(button, nullptr);
}

TEST_F(Win32ControlsTest, CaptionsAreMarkedForAlt)
{
    Win32Button button(Child(L"BUTTON", BS_PUSHBUTTON), focus, mnemonics, keys);
    button.SetCaption(u"Save && Close");
    EXPECT_EQ(button.Caption(), u"Save && Close");
    EXPECT_EQ(TextOf(button.Window()), u"&Save && Close");
    Win32CheckBox box(Child(L"BUTTON", BS_AUTOCHECKBOX), focus, mnemonics);
    box.SetCaption(u"Names && prices");
    EXPECT_EQ(TextOf(box.Window()), u"&Names && prices");
}

// Check boxes

TEST_F(Win32ControlsTest, ACheckBoxTellsOfEachClickOnce)
{
    Win32CheckBox box(Child(L"BUTTON", BS_AUTOCHECKBOX | WS_TABSTOP), focus, mnemonics);
    HearFocus(box, "box");
    box.Click.Connect([&] { told.emplace_back(box.Value() == 1 ? "ticked" : "cleared"); });
    SendMessageW(box.Window(), BM_CLICK, 0, 0);
    EXPECT_THAT(Told(), ElementsAre("box got", "ticked"));
    DoubleClick(box.Window());
    EXPECT_THAT(Told(), ElementsAre("cleared", "ticked"));
    box.SetValue(0);
    EXPECT_THAT(Told(), ElementsAre("cleared"));
    EXPECT_EQ(SendMessageW(box.Window(), BM_GETCHECK, 0, 0), BST_UNCHECKED);
    box.SetValue(2);
    EXPECT_EQ(box.Value(), 0);
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(Win32ControlsTest, ACheckBoxThatNobodyCanReachStaysAsItIs)
{
    Win32CheckBox box(Child(L"BUTTON", BS_AUTOCHECKBOX | WS_TABSTOP), focus, mnemonics);
    box.Click.Connect([this] { told.emplace_back("click"); });
    EnableWindow(m_window, FALSE);
    SendMessageW(box.Window(), BM_CLICK, 0, 0);
    EnableWindow(m_window, TRUE);
    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(box.Value(), 0);
    EXPECT_EQ(SendMessageW(box.Window(), BM_GETCHECK, 0, 0), BST_UNCHECKED);
}

// Labels

TEST_F(Win32ControlsTest, ALabelBearsAMnemonicOnlyForABuddy)
{
    const HWND box = Child(L"EDIT", WS_TABSTOP);
    Win32Label of(Child(L"STATIC", SS_LEFT), box, focus, mnemonics);
    Win32Label plain(Child(L"STATIC", SS_LEFT), nullptr, focus, mnemonics);
    of.SetCaption(u"R&D");
    plain.SetCaption(u"R&D");
    EXPECT_EQ(TextOf(of.Window()), u"&R&&D");
    EXPECT_EQ(TextOf(plain.Window()), u"R&D");
    EXPECT_EQ(GetWindowLongW(of.Window(), GWL_STYLE) & SS_NOPREFIX, 0);
    EXPECT_NE(GetWindowLongW(plain.Window(), GWL_STYLE) & SS_NOPREFIX, 0);
    EXPECT_EQ(of.Caption(), plain.Caption());
}

TEST_F(Win32ControlsTest, AHeadingIsOneLine)
{
    Win32Label heading(Child(L"STATIC", SS_LEFT | SS_ENDELLIPSIS), nullptr, focus, mnemonics);
    heading.SetCaption(u"a\r\nb\tc");
    EXPECT_EQ(TextOf(heading.Window()), u"a  b c");
    EXPECT_EQ(heading.Caption(), u"a\r\nb\tc");
}

TEST_F(Win32ControlsTest, ALabelShowsWhatHasNoRoomInItsToolTip)
{
    const std::u16string longText(200, u'w');
    for (const DWORD style :
         std::initializer_list<DWORD>{SS_LEFT | SS_ENDELLIPSIS, SS_LEFT, SS_EDITCONTROL}) {
        Win32Label label(Child(L"STATIC", style), nullptr, focus, mnemonics);
        label.SetCaption(u"short");
        EXPECT_EQ(ToolTipOf(label.Window()), u"");
        label.SetCaption(longText);
        EXPECT_EQ(ToolTipOf(label.Window()), longText);
        label.SetToolTip(u"why");
        EXPECT_EQ(ToolTipOf(label.Window()), longText) << "what cannot be read comes first";
        SetWindowPos(label.Window(), nullptr, 0, 0, 20000, 30, SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_EQ(ToolTipOf(label.Window()), u"why");
        label.SetToolTip(u"");
        EXPECT_EQ(ToolTipOf(label.Window()), u"");
        SetWindowPos(label.Window(), nullptr, 0, 0, 20, 30, SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_EQ(ToolTipOf(label.Window()), longText);
    }
}

TEST_F(Win32ControlsTest, ALabelThatBreaksIntoItsRoomNeedsNoToolTip)
{
    Win32Label label(Child(L"STATIC", SS_LEFT, 100, 100), nullptr, focus, mnemonics);
    label.SetCaption(u"some words on several lines");
    EXPECT_EQ(ToolTipOf(label.Window()), u"");
    SetWindowPos(label.Window(), nullptr, 0, 0, 100, 20, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(ToolTipOf(label.Window()), label.Caption());
}

// Bars

TEST_F(Win32ControlsTest, ABarAnswersWhatReadersAskABarOfTheSystem)
{
    Win32ProgressBar bar(Child(Win32ProgressBar::kClassName, 0), focus);
    const struct
    {
        std::int32_t written;
        std::int32_t value;
    } cases[] = {{0, 0}, {29, 29}, {100, 100}, {101, 100}, {-1, 0}};
    for (const auto& one : cases) {
        bar.SetValue(one.written);
        EXPECT_EQ(bar.Value(), one.value);
        EXPECT_EQ(SendMessageW(bar.Window(), PBM_GETPOS, 0, 0), one.value);
    }
    // The number of the system's progress bars.
    EXPECT_EQ(SendMessageW(bar.Window(), WM_GETOBJECT, 0, static_cast<LPARAM>(OBJID_QUERYCLASSNAMEIDX)),
              65549);
    PBRANGE range = {-1, -1};
    SendMessageW(bar.Window(), PBM_GETRANGE, FALSE, reinterpret_cast<LPARAM>(&range));
    EXPECT_EQ(range.iLow, 0);
    EXPECT_EQ(range.iHigh, 100);
    bar.SetCaption(u"Importing R&D 50%");
    EXPECT_EQ(TextOf(bar.Window()), u"Importing R&D 50%");
    EXPECT_EQ(bar.Caption(), u"Importing R&D 50%");
}

TEST_F(Win32ControlsTest, ABarIsFilledAsFarAsItsValue)
{
    Win32ProgressBar bar(Child(Win32ProgressBar::kClassName, 0), focus);
    for (const std::int32_t value : {0, 1, 50, 99, 100}) {
        bar.SetValue(value);
        const Picture picture(bar.Window());
        const int inside = picture.Width() - 2;
        const int end = 1 + inside * value / 100;
        if (value > 0) {
            EXPECT_EQ(picture.Near(1), GetSysColor(COLOR_HIGHLIGHT));
            EXPECT_EQ(picture.Near(end - 1), GetSysColor(COLOR_HIGHLIGHT));
        }
        if (value < 100) {
            EXPECT_EQ(picture.Near(end), GetSysColor(COLOR_WINDOW));
            EXPECT_EQ(picture.Near(picture.Width() - 2), GetSysColor(COLOR_WINDOW));
        }
        EXPECT_EQ(picture.Near(0), GetSysColor(COLOR_GRAYTEXT));
        EXPECT_EQ(picture.Near(picture.Width() - 1), GetSysColor(COLOR_GRAYTEXT));
    }
}

TEST_F(Win32ControlsTest, ABarsCaptionIsLegibleOnBothParts)
{
    Win32ProgressBar bar(Child(Win32ProgressBar::kClassName, 0), focus);
    bar.SetValue(50);
    bar.SetCaption(u"HHHHHHHHHH");
    for (const bool isEnabled : {true, false}) {
        bar.SetEnabled(isEnabled);
        const Picture picture(bar.Window());
        const int middle = picture.Width() / 2;
        EXPECT_TRUE(picture.Has(GetSysColor(COLOR_HIGHLIGHTTEXT), middle - 20, middle));
        EXPECT_TRUE(picture.Has(GetSysColor(COLOR_WINDOWTEXT), middle, middle + 20));
    }
}

TEST_F(Win32ControlsTest, ABarIsPaintedAnewWhenItChangesOnly)
{
    Win32ProgressBar bar(Child(Win32ProgressBar::kClassName, 0), focus);
    const auto isStale = [&] {
        const bool answer = GetUpdateRect(bar.Window(), nullptr, FALSE) != 0;
        UpdateWindow(bar.Window());
        return answer;
    };
    (void)isStale();
    bar.SetValue(10);
    EXPECT_TRUE(isStale());
    bar.SetValue(10);
    EXPECT_FALSE(isStale());
    bar.SetCaption(u"10 rows");
    EXPECT_TRUE(isStale());
    bar.SetCaption(u"10 rows");
    EXPECT_FALSE(isStale());
}

TEST_F(Win32ControlsTest, ABarKeepsTheFontThatItIsGiven)
{
    const HWND bar = Child(Win32ProgressBar::kClassName, 0);
    const auto font = reinterpret_cast<HFONT>(GetStockObject(SYSTEM_FONT));
    SendMessageW(bar, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
    EXPECT_EQ(reinterpret_cast<HFONT>(SendMessageW(bar, WM_GETFONT, 0, 0)), font);
}

} // namespace KestrinProductEditor
