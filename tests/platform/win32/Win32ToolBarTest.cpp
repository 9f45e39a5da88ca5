// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ToolBar.h"

#include "platform/win32/Win32Dialogs.h"
#include "platform/win32/Win32Font.h"
#include "platform/win32/Win32Hands.h"
#include "platform/win32/Win32Looks.h"
#include "platform/windows/WideText.h"

#include "support/ErrorOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr UINT kUsualDpi = 96;

/// The text of a menu's entry, with the "&" of its letter.
[[nodiscard]] std::u16string TextAt(HMENU menu, UINT position)
{
    std::u16string text(static_cast<std::size_t>(GetMenuStringW(menu, position, nullptr, 0, MF_BYPOSITION)),
                        u'\0');
    GetMenuStringW(menu, position, Wide(text.data()), static_cast<int>(text.size()) + 1, MF_BYPOSITION);
    return text;
}

/// The texts of a menu; "-" for a line.
[[nodiscard]] std::vector<std::u16string> TextsOf(HMENU menu)
{
    std::vector<std::u16string> texts;
    for (int at = 0; at < GetMenuItemCount(menu); ++at) {
        const auto position = static_cast<UINT>(at);
        const bool isLine = (GetMenuState(menu, position, MF_BYPOSITION) & MF_SEPARATOR) != 0;
        texts.push_back(isLine ? u"-" : TextAt(menu, position));
    }
    return texts;
}

/// Pens, brushes, bitmaps and the like that the program has.
[[nodiscard]] DWORD CountDrawingObjects()
{
    DWORD count = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (count != 0)
        return count;
    // Where the system does not count them, each place of its table is asked.
    constexpr ULONG_PTR kPlaces = 0x10000;
    for (ULONG_PTR place = 1; place < kPlaces; ++place)
        count += GetObjectType(reinterpret_cast<HGDIOBJ>(place)) != 0 ? 1U : 0U;
    return count;
}

/// A window with a bar and a box to type into.
class Win32ToolBarTest : public testing::Test, protected Win32Hands::Front
{
protected:
    static constexpr int kWidth = 1200; // pixels
    static constexpr int kHeight = 300;
    static constexpr int kBarHeight = 60;

    Win32ToolBarTest() { Begin(0); }
    ~Win32ToolBarTest() override { End(); }

    void Begin(DWORD extendedStyle)
    {
        const Win32Looks looks;
        WNDCLASSW kind = {};
        kind.lpfnWndProc = &DefWindowProcW;
        kind.lpszClassName = L"KstneditToolBarTest";
        RegisterClassW(&kind);
        const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
        InitCommonControlsEx(&classes);
        m_window = CreateWindowExW(extendedStyle, kind.lpszClassName, L"bar", WS_OVERLAPPEDWINDOW, 0, 0,
                                   kWidth, kHeight, nullptr, nullptr, nullptr, nullptr);
        m_barWindow = CreateWindowW(TOOLBARCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | Win32ToolButtons::kStyle,
                                    0, 0, kWidth, kBarHeight, m_window, nullptr, nullptr, nullptr);
        m_box = CreateWindowW(L"EDIT", L"", WS_CHILD | WS_VISIBLE, 0, kBarHeight, kWidth, kBarHeight,
                              m_window, nullptr, nullptr, nullptr);
        SendMessageW(m_barWindow, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.Handle()), TRUE);
        m_focus = std::make_unique<Win32Focus>(m_window);
        m_mnemonics = std::make_unique<Win32Mnemonics>();
        m_keys = std::make_unique<Win32Keys>();
        m_bar =
            std::make_unique<Win32ToolBar>(m_barWindow, *m_focus, *m_mnemonics, *m_keys,
                                           [this](std::u16string_view name) { return name == m_withFocus; });
        m_bar->ToolClick.Connect([this](std::u16string_view id) { m_clicks.emplace_back(id); });
    }

    void End()
    {
        m_bar.reset();
        m_focus.reset();
        DestroyWindow(m_window);
    }

    void BeginAnew(DWORD extendedStyle)
    {
        End();
        Begin(extendedStyle);
        Bar().SetTools(kTools);
        ShowWindow(m_window, SW_SHOW);
    }

    [[nodiscard]] bool IsListening() const override { return IsWindowEnabled(m_window) != 0; }
    void PassOn(MSG& message) override
    {
        if (m_keys->Take(message))
            return;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    [[nodiscard]] HWND KeyWindow() const override { return GetFocus(); }

    /// With its tools, shown.
    void Show()
    {
        Bar().SetTools(kTools);
        ShowWindow(m_window, SW_SHOW);
        SetFocus(m_box);
    }

    [[nodiscard]] Win32ToolBar& Bar() { return *m_bar; }
    [[nodiscard]] HMENU Menu(int position) const { return GetSubMenu(GetMenu(m_window), position); }
    [[nodiscard]] UINT CommandOf(std::u16string_view id) { return Bar().PlaceOf(id).value().command; }
    /// Ids of the tools that were chosen since the last call.
    [[nodiscard]] std::vector<std::u16string> Clicks() { return std::exchange(m_clicks, {}); }

    void Click(std::u16string_view id)
    {
        RECT place = {};
        ASSERT_NE(SendMessageW(m_barWindow, TB_GETRECT, CommandOf(id), reinterpret_cast<LPARAM>(&place)), 0);
        m_hands.Click(m_barWindow, MiddleOf(place));
    }
    [[nodiscard]] bool IsButtonEnabled(std::u16string_view id)
    {
        return SendMessageW(m_barWindow, TB_ISBUTTONENABLED, CommandOf(id), 0) != 0;
    }
    [[nodiscard]] bool IsButtonHidden(std::u16string_view id)
    {
        return SendMessageW(m_barWindow, TB_ISBUTTONHIDDEN, CommandOf(id), 0) != 0;
    }
    [[nodiscard]] bool IsItemEnabled(std::u16string_view id)
    {
        return (GetMenuState(GetMenu(m_window), CommandOf(id), MF_BYCOMMAND) & MF_GRAYED) == 0;
    }
    [[nodiscard]] std::u16string LabelOf(std::u16string_view id)
    {
        std::array<wchar_t, 100> label = {};
        SendMessageW(m_barWindow, TB_GETBUTTONTEXTW, CommandOf(id), reinterpret_cast<LPARAM>(label.data()));
        return FromWide(label.data());
    }
    [[nodiscard]] std::u16string ToolTipOf(std::u16string_view id)
    {
        std::array<wchar_t, 100> text = {};
        TTTOOLINFOW tool = {};
        tool.cbSize = sizeof tool;
        tool.hwnd = m_barWindow;
        tool.uId = CommandOf(id);
        tool.lpszText = text.data();
        const auto tip = reinterpret_cast<HWND>(SendMessageW(m_barWindow, TB_GETTOOLTIPS, 0, 0));
        SendMessageW(tip, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
        return FromWide(text.data());
    }
    [[nodiscard]] HIMAGELIST Icons() const
    {
        return reinterpret_cast<HIMAGELIST>(SendMessageW(m_barWindow, TB_GETIMAGELIST, 0, 0));
    }
    /// The length of an icon's side.
    [[nodiscard]] int SideOfIcons() const
    {
        int width = 0;
        int height = 0;
        ImageList_GetIconSize(Icons(), &width, &height);
        EXPECT_EQ(width, height);
        return height;
    }
    void SetBarWidth(int width) const
    {
        SetWindowPos(m_barWindow, nullptr, 0, 0, width, kBarHeight,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    [[nodiscard]] std::vector<std::u16string> ShownButtons()
    {
        std::vector<std::u16string> shown;
        for (const std::u16string_view id : {u"Import", u"Export", u"New", u"Edit", u"All"}) {
            if (!IsButtonHidden(id))
                shown.emplace_back(id);
        }
        return shown;
    }

    const std::vector<Tool> kTools = {
        {.id = u"FileMenu", .caption = u"File"},
        {.id = u"Import",
         .caption = u"Import...",
         .menu = u"FileMenu",
         .shortcuts = {Ctrl(Key::I)},
         .icon = ToolIcon::Import},
        {.id = u"Export", .caption = u"Save && Export", .menu = u"FileMenu", .icon = ToolIcon::Export},
        {.id = u"EditMenu", .caption = u"Edit"},
        {.id = u"New",
         .caption = u"New Product",
         .menu = u"EditMenu",
         .shortcuts = {Ctrl(Key::N)},
         .icon = ToolIcon::NewProduct},
        {.id = u"Edit",
         .caption = u"Edit Product",
         .menu = u"EditMenu",
         .shortcuts = {{.key = Key::F2}, {.key = Key::Enter}},
         .icon = ToolIcon::EditProduct,
         .onlyIn = u"list"},
        {.id = u"All", .caption = u"Select All", .menu = u"EditMenu", .beginsGroup = true},
    };

    Win32Font m_font{kUsualDpi};
    Win32Font m_largeFont{2 * kUsualDpi};
    HWND m_window = nullptr;
    HWND m_barWindow = nullptr;
    HWND m_box = nullptr;
    std::u16string m_withFocus;
    std::unique_ptr<Win32Focus> m_focus;
    std::unique_ptr<Win32Mnemonics> m_mnemonics;
    std::unique_ptr<Win32Keys> m_keys;
    std::unique_ptr<Win32ToolBar> m_bar;
    std::vector<std::u16string> m_clicks;
    Win32Hands m_hands{*this};
};

TEST_F(Win32ToolBarTest, MenusHaveTheirToolsWithLettersKeysAndLines)
{
    Show();
    EXPECT_THAT(TextsOf(GetMenu(m_window)), ElementsAre(u"&File", u"&Edit"));
    EXPECT_THAT(TextsOf(Menu(0)), ElementsAre(u"&Import...\tCtrl+I", u"&Save && Export"));
    EXPECT_THAT(TextsOf(Menu(1)),
                ElementsAre(u"&New Product\tCtrl+N", u"&Edit Product\tF2", u"-", u"&Select All"));
}

TEST_F(Win32ToolBarTest, ABarWithoutToolsTakesNoLineOfTheWindow)
{
    EXPECT_EQ(GetMenu(m_window), nullptr);
    EXPECT_EQ(Bar().Height(), 0);
    Bar().SetTools({});
    EXPECT_EQ(GetMenu(m_window), nullptr);
    EXPECT_EQ(Bar().Height(), 0);
}

TEST_F(Win32ToolBarTest, ALetterOfAHeaderGivesWayToTheWindow)
{
    Show();
    const std::size_t bearer = m_mnemonics->Add(Win32Mnemonics::Rank::Menu, [](const std::u16string&) {});
    m_mnemonics->SetCaption(bearer, u"E");
    EXPECT_THAT(TextsOf(GetMenu(m_window)), ElementsAre(u"&File", u"E&dit"));
}

TEST_F(Win32ToolBarTest, ButtonsReadAsTheirToolsWithoutPointsAtTheEnd)
{
    Show();
    EXPECT_EQ(LabelOf(u"Import"), u"Import");
    EXPECT_EQ(LabelOf(u"Export"), u"Save & Export");
    EXPECT_EQ(LabelOf(u"New"), u"New Product");
    EXPECT_EQ(TextOfWindow(m_barWindow), u"Tools");
}

TEST_F(Win32ToolBarTest, ToolTipsTellTheKey)
{
    Show();
    EXPECT_EQ(ToolTipOf(u"Import"), u"Import (Ctrl+I)");
    EXPECT_EQ(ToolTipOf(u"Edit"), u"Edit Product (F2)");
    EXPECT_EQ(ToolTipOf(u"Export"), u"Save & Export");
}

TEST_F(Win32ToolBarTest, AGapPartsTheGroupsAndMenusOfTheBar)
{
    Show();
    std::vector<bool> gaps;
    const LRESULT count = SendMessageW(m_barWindow, TB_BUTTONCOUNT, 0, 0);
    for (LRESULT at = 0; at < count; ++at) {
        TBBUTTON button = {};
        SendMessageW(m_barWindow, TB_GETBUTTON, static_cast<WPARAM>(at), reinterpret_cast<LPARAM>(&button));
        gaps.push_back((button.fsStyle & BTNS_SEP) != 0);
    }
    EXPECT_THAT(gaps, ElementsAre(false, false, true, false, false, true, false));
}

TEST_F(Win32ToolBarTest, CommandsAreNumbersOfNoControlAndNoCommandOfTheSystem)
{
    Show();
    for (const Tool& tool : kTools) {
        const auto place = Bar().PlaceOf(tool.id);
        ASSERT_TRUE(place);
        if (tool.menu.empty()) {
            EXPECT_EQ(place->command, 0U);
        } else {
            EXPECT_GE(place->command, 0x8000U);
            EXPECT_LT(place->command, 0xF000U);
        }
        EXPECT_EQ(place->header, tool.menu == u"FileMenu" || tool.id == u"FileMenu" ? 0U : 1U);
    }
    EXPECT_FALSE(Bar().PlaceOf(u"import"));
}

TEST_F(Win32ToolBarTest, AnItemThatIsChosenByItsLettersTellsOfHeaderAndTool)
{
    Show();
    Win32Watch watch([](HWND) {}, nullptr);
    watch.OnMenu([&] { PostMessageW(m_window, WM_KEYDOWN, 'N', 1); });
    m_hands.Post(m_window, WM_SYSCOMMAND, SC_KEYMENU, 'e');
    EXPECT_THAT(Clicks(), ElementsAre(u"EditMenu", u"New"));
    EXPECT_EQ(GetFocus(), m_box);
}

TEST_F(Win32ToolBarTest, AClickedButtonLeavesTheFocusWhereItIs)
{
    Show();
    Click(u"New");
    Click(u"Export");
    EXPECT_THAT(Clicks(), ElementsAre(u"New", u"Export"));
    EXPECT_EQ(GetFocus(), m_box);
}

TEST_F(Win32ToolBarTest, ADisabledHeaderGreysItsItemsAndButtons)
{
    Show();
    Bar().SetToolEnabled(u"Export", false);
    Bar().SetToolEnabled(u"EditMenu", false);
    EXPECT_EQ(GetMenuState(GetMenu(m_window), 0, MF_BYPOSITION) & MF_GRAYED, 0U);
    EXPECT_NE(GetMenuState(GetMenu(m_window), 1, MF_BYPOSITION) & MF_GRAYED, 0U);
    for (const std::u16string_view id : {u"Export", u"New", u"Edit", u"All"}) {
        EXPECT_FALSE(IsItemEnabled(id));
        EXPECT_FALSE(IsButtonEnabled(id));
    }
    EXPECT_TRUE(IsItemEnabled(u"Import"));
    EXPECT_TRUE(IsButtonEnabled(u"Import"));
    Click(u"New");
    EXPECT_THAT(Clicks(), IsEmpty());
    Bar().SetToolEnabled(u"EditMenu", true);
    EXPECT_EQ(GetMenuState(GetMenu(m_window), 1, MF_BYPOSITION) & MF_GRAYED, 0U);
    EXPECT_TRUE(IsItemEnabled(u"New"));
    EXPECT_TRUE(IsButtonEnabled(u"New"));
    EXPECT_FALSE(IsButtonEnabled(u"Export"));
}

TEST_F(Win32ToolBarTest, WhatWasDisabledStaysSoWhenTheButtonsAreMadeAnew)
{
    Show();
    Bar().SetToolEnabled(u"New", false);
    SendMessageW(m_barWindow, WM_THEMECHANGED, 0, 0);
    EXPECT_FALSE(IsButtonEnabled(u"New"));
    EXPECT_TRUE(IsButtonEnabled(u"Edit"));
}

TEST_F(Win32ToolBarTest, ToolsOfABarThatIsDisabledFromTheBeginningAreGrey)
{
    Bar().SetEnabled(false);
    Show();
    EXPECT_FALSE(IsItemEnabled(u"New"));
    EXPECT_FALSE(IsButtonEnabled(u"New"));
    Bar().SetEnabled(true);
    EXPECT_TRUE(IsItemEnabled(u"New"));
    EXPECT_TRUE(IsButtonEnabled(u"New"));
}

TEST_F(Win32ToolBarTest, AHiddenBarTakesItsMenusAndKeysAlong)
{
    Show();
    Bar().SetVisible(false);
    EXPECT_EQ(GetMenu(m_window), nullptr);
    m_hands.Press('N', IUser::Modifier::Control);
    EXPECT_THAT(Clicks(), IsEmpty());
    Bar().SetToolEnabled(u"FileMenu", false);
    SendMessageW(m_barWindow, WM_THEMECHANGED, 0, 0);
    EXPECT_FALSE(IsWindowVisible(m_barWindow));
    Bar().SetVisible(true);
    EXPECT_THAT(TextsOf(GetMenu(m_window)), ElementsAre(u"&File", u"&Edit"));
    EXPECT_FALSE(IsItemEnabled(u"Import"));
    m_hands.Press('N', IUser::Modifier::Control);
    EXPECT_THAT(Clicks(), ElementsAre(u"New"));
}

TEST_F(Win32ToolBarTest, KeysOfOneControlActWhileItHasTheFocus)
{
    Show();
    m_hands.Press(VK_F2);
    EXPECT_THAT(Clicks(), IsEmpty());
    m_withFocus = u"list";
    m_hands.Press(VK_F2);
    m_hands.Press(VK_RETURN);
    EXPECT_THAT(Clicks(), ElementsAre(u"Edit", u"Edit"));
}

TEST_F(Win32ToolBarTest, ACommandThatComesTooLateIsDropped)
{
    Show();
    const UINT command = CommandOf(u"New");
    Bar().SetToolEnabled(u"New", false);
    SendMessageW(m_window, WM_COMMAND, command, 0);
    Bar().SetToolEnabled(u"New", true);
    EnableWindow(m_window, FALSE);
    SendMessageW(m_window, WM_COMMAND, command, 0);
    EXPECT_THAT(Clicks(), IsEmpty());
    EnableWindow(m_window, TRUE);
    SendMessageW(m_window, WM_COMMAND, command, 0);
    EXPECT_THAT(Clicks(), ElementsAre(u"New"));
}

TEST_F(Win32ToolBarTest, ACommandOfAnotherControlIsNoTool)
{
    Show();
    SendMessageW(m_window, WM_COMMAND, CommandOf(u"New"), reinterpret_cast<LPARAM>(m_box));
    // An accelerator's.
    SendMessageW(m_window, WM_COMMAND, MAKEWPARAM(CommandOf(u"New"), 1), 0);
    SendMessageW(m_window, WM_COMMAND, IDOK, 0);
    EXPECT_THAT(Clicks(), IsEmpty());
}

TEST_F(Win32ToolBarTest, PicturesAndButtonsFollowTheFont)
{
    Show();
    const int side = SideOfIcons();
    const int height = Bar().Height();
    EXPECT_GE(side, m_font.LineHeight());
    EXPECT_GE(height, side);
    SendMessageW(m_barWindow, WM_SETFONT, reinterpret_cast<WPARAM>(m_largeFont.Handle()), TRUE);
    EXPECT_EQ(SideOfIcons() - side, m_largeFont.LineHeight() - m_font.LineHeight());
    EXPECT_EQ(Bar().Height() - height, m_largeFont.LineHeight() - m_font.LineHeight());
    EXPECT_EQ(ImageList_GetImageCount(Icons()), 4);
    SendMessageW(m_barWindow, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.Handle()), TRUE);
    EXPECT_EQ(SideOfIcons(), side);
    EXPECT_EQ(Bar().Height(), height);
}

TEST_F(Win32ToolBarTest, EachButtonHasThePictureOfItsTool)
{
    Show();
    std::vector<int> pictures;
    for (const std::u16string_view id : {u"Import", u"Export", u"New", u"Edit", u"All"}) {
        TBBUTTONINFOW info = {};
        info.cbSize = sizeof info;
        info.dwMask = TBIF_IMAGE;
        SendMessageW(m_barWindow, TB_GETBUTTONINFOW, CommandOf(id), reinterpret_cast<LPARAM>(&info));
        pictures.push_back(info.iImage);
    }
    EXPECT_THAT(pictures, ElementsAre(0, 1, 2, 3, I_IMAGENONE));
}

TEST_F(Win32ToolBarTest, PicturesAreMadeAnewWithTheSystemsColours)
{
    Show();
    for (const UINT message :
         std::initializer_list<UINT>{WM_SYSCOLORCHANGE, WM_THEMECHANGED, WM_DPICHANGED_AFTERPARENT}) {
        const HIMAGELIST before = Icons();
        SendMessageW(m_barWindow, message, 0, 0);
        EXPECT_NE(Icons(), before) << message;
        EXPECT_NE(Icons(), nullptr) << message;
    }
    Click(u"New");
    EXPECT_THAT(Clicks(), ElementsAre(u"New"));
}

TEST_F(Win32ToolBarTest, ANarrowBarShowsWholeButtonsOnlyAndItsMenusHaveTheRest)
{
    for (const DWORD layout : {DWORD{0}, DWORD{WS_EX_LAYOUTRTL}}) {
        BeginAnew(layout);
        EXPECT_THAT(ShownButtons(), ElementsAre(u"Import", u"Export", u"New", u"Edit", u"All"));
        RECT place = {};
        SendMessageW(m_barWindow, TB_GETRECT, CommandOf(u"New"), reinterpret_cast<LPARAM>(&place));
        const int height = Bar().Height();
        SetBarWidth(place.right);
        EXPECT_THAT(ShownButtons(), ElementsAre(u"Import", u"Export", u"New"));
        SetBarWidth(place.right - 1);
        EXPECT_THAT(ShownButtons(), ElementsAre(u"Import", u"Export"));
        SetBarWidth(0);
        EXPECT_THAT(ShownButtons(), IsEmpty());
        SendMessageW(m_barWindow, WM_THEMECHANGED, 0, 0);
        EXPECT_THAT(ShownButtons(), IsEmpty());
        EXPECT_EQ(Bar().Height(), height);
        EXPECT_TRUE(IsItemEnabled(u"New"));
        SetBarWidth(kWidth);
        EXPECT_THAT(ShownButtons(), ElementsAre(u"Import", u"Export", u"New", u"Edit", u"All"));
    }
}

TEST_F(Win32ToolBarTest, AHandlerMayEndTheBar)
{
    Show();
    Bar().ToolClick.Connect([this](std::u16string_view id) {
        m_clicks.emplace_back(id);
        m_bar.reset();
    });
    SendMessageW(m_window, WM_COMMAND, CommandOf(u"New"), 0);
    EXPECT_THAT(Clicks(), ElementsAre(u"New"));
    EXPECT_EQ(GetMenu(m_window), nullptr);
    EXPECT_EQ(Icons(), nullptr);
    SendMessageW(m_barWindow, WM_THEMECHANGED, 0, 0);
    SendMessageW(m_window, WM_COMMAND, 0x8000, 0);
    EXPECT_THAT(Clicks(), IsEmpty());
}

TEST_F(Win32ToolBarTest, ABarOutlivesItsWindow)
{
    Show();
    DestroyWindow(m_window);
    EXPECT_NO_THROW(Bar().SetToolEnabled(u"New", false));
    EXPECT_FALSE(Bar().IsToolEnabled(u"New"));
    EXPECT_NO_THROW(Bar().SetEnabled(false));
    EXPECT_NO_THROW(Bar().SetVisible(false));
    EXPECT_EQ(ErrorNumberOf([&] { Bar().SetToolEnabled(u"", true); }), kErrInvalidProcedureCall);
}

TEST_F(Win32ToolBarTest, EveryPictureAndMenuEndsWithItsBar)
{
    BeginAnew(0);
    const DWORD before = CountDrawingObjects();
    std::vector<HMENU> menus;
    constexpr int kTimes = 200;
    for (int time = 0; time < kTimes; ++time) {
        menus.push_back(GetMenu(m_window));
        menus.push_back(Menu(0));
        ASSERT_TRUE(IsMenu(menus.back()));
        // Attached to its window, and not.
        Bar().SetVisible(time % 2 == 0);
        SendMessageW(m_barWindow, WM_SETFONT, reinterpret_cast<WPARAM>(m_largeFont.Handle()), TRUE);
        // The one goes first, or the other.
        if (time % 3 == 0)
            DestroyWindow(m_window);
        BeginAnew(0);
    }
    EXPECT_LE(CountDrawingObjects(), before + 4);
    EXPECT_GT(before, 0U);
    for (const HMENU menu : menus)
        EXPECT_FALSE(IsMenu(menu));
}

} // namespace
} // namespace KestrinProductEditor
