// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Hands.h"
#include "platform/win32/Win32Dialogs.h"

#include "platform/windows/WideText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <commdlg.h>

#include <array>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Modifier = IUser::Modifier;

/// A window with a box and a button, and a loop that keeps what it passes on.
class Win32HandsTest : public testing::Test, protected Win32Hands::Front
{
protected:
    static constexpr int kBox = 10;
    static constexpr int kButton = 11;
    static constexpr int kTool = 12;

    Win32HandsTest()
    {
        WNDCLASSW kind = {};
        kind.lpfnWndProc = &Procedure;
        kind.lpszClassName = L"KstneditHandsTest";
        RegisterClassW(&kind);
        m_window = CreateWindowW(kind.lpszClassName, L"hands", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, nullptr,
                                 nullptr, nullptr, nullptr);
        SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        m_box = Child(L"EDIT", kBox, 10, ES_MULTILINE | ES_WANTRETURN);
        m_button = Child(L"BUTTON", kButton, 100, BS_NOTIFY);
        ShowWindow(m_window, SW_SHOW);
        SetFocus(m_box);
    }
    ~Win32HandsTest() override { DestroyWindow(m_window); }

    [[nodiscard]] bool IsListening() const override { return IsWindowEnabled(m_window) != 0; }
    void PassOn(MSG& message) override
    {
        m_passed.push_back(message.message);
        m_withControl.push_back(GetKeyState(VK_CONTROL) < 0);
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    [[nodiscard]] HWND KeyWindow() const override { return GetFocus(); }

    [[nodiscard]] HWND Child(const wchar_t* kind, int id, int top, int style) const
    {
        constexpr int kWidth = 200;
        constexpr int kHeight = 60;
        return CreateWindowW(kind, L"", static_cast<DWORD>(WS_CHILD | WS_VISIBLE | style), 10, top, kWidth,
                             kHeight, m_window, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr,
                             nullptr);
    }

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
    {
        auto* const test = reinterpret_cast<Win32HandsTest*>(GetWindowLongPtrW(window, GWLP_USERDATA));
        if (test != nullptr && message == WM_COMMAND && LOWORD(wParam) != kBox)
            test->m_commands.emplace_back(LOWORD(wParam), HIWORD(wParam));
        return DefWindowProcW(window, message, wParam, lParam);
    }

    HWND m_window = nullptr;
    HWND m_box = nullptr;
    HWND m_button = nullptr;
    std::vector<UINT> m_passed;
    std::vector<bool> m_withControl;             // of each of them
    std::vector<std::pair<int, int>> m_commands; // and their notifications
    Win32Hands m_hands{*this};
};

TEST_F(Win32HandsTest, TypedTextComesKeyByKey)
{
    m_hands.Type(u"aB 1.$?\u00E9\U0001F528\ryz");
    EXPECT_EQ(TextOfWindow(m_box), u"aB 1.$?\u00E9\U0001F528\r\nyz");
    m_hands.Press(VK_BACK);
    m_hands.Press(VK_LEFT, Modifier::Shift);
    m_hands.Type(u"x");
    EXPECT_EQ(TextOfWindow(m_box), u"aB 1.$?\u00E9\U0001F528\r\nx");
}

TEST_F(Win32HandsTest, AKeyIsPassedOnBeforeItsCharacterAndIsReleasedAfterwards)
{
    m_hands.Type(u"a");
    EXPECT_THAT(m_passed, ElementsAre(WM_KEYDOWN, WM_CHAR, WM_KEYUP));
}

TEST_F(Win32HandsTest, CtrlIsHeldDownWithItsLetterOnly)
{
    m_hands.Press('N', Modifier::Control);
    EXPECT_THAT(m_passed, ElementsAre(WM_KEYDOWN, WM_CHAR, WM_KEYUP));
    EXPECT_THAT(m_withControl, ElementsAre(true, true, true));
    m_hands.Type(u"n");
    EXPECT_FALSE(m_withControl.back());
    EXPECT_EQ(TextOfWindow(m_box), u"n");
}

TEST_F(Win32HandsTest, WhatAnInputMethodComposesComesAsCharacters)
{
    m_hands.Compose(u"1\u3042\U0001F528");
    EXPECT_EQ(TextOfWindow(m_box), u"1\u3042\U0001F528");
}

TEST_F(Win32HandsTest, AClickGivesTheFocusAndPressesAButton)
{
    m_hands.Click(m_button, MiddleOf(InsideOf(m_button)));
    EXPECT_EQ(GetFocus(), m_button);
    EXPECT_THAT(m_commands, ElementsAre(std::pair(kButton, BN_SETFOCUS), std::pair(kButton, BN_CLICKED)));
}

TEST_F(Win32HandsTest, ADoubleClickIsBothOfItsClicks)
{
    SetFocus(m_button);
    m_commands.clear();
    m_hands.DoubleClick(m_button, MiddleOf(InsideOf(m_button)));
    EXPECT_THAT(m_commands, ElementsAre(std::pair(kButton, BN_CLICKED), std::pair(kButton, BN_DBLCLK)));
}

TEST_F(Win32HandsTest, ADisabledWindowFindsTheActsInItsQueue)
{
    EnableWindow(m_window, FALSE);
    m_hands.Click(m_button, MiddleOf(InsideOf(m_button)));
    EXPECT_THAT(m_passed, IsEmpty());
    EXPECT_THAT(m_commands, IsEmpty());
    MSG message;
    EXPECT_TRUE(PeekMessageW(&message, m_button, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_REMOVE));
}

// What is shown

TEST_F(Win32HandsTest, MessagesAreReadAndAnsweredFromTheirOwnLoop)
{
    IUser::Message read;
    MessageAnswer answer = MessageAnswer::Yes;
    const Win32Watch watch(
        [&](HWND box) {
            ASSERT_TRUE(IsDialogBox(box));
            EXPECT_FALSE(IsFileDialog(box));
            read = ReadMessage(box);
            const HWND button = ButtonOf(box, answer);
            ASSERT_NE(button, nullptr);
            SendMessageW(button, BM_CLICK, 0, 0);
        },
        {});
    for (const std::int32_t style :
         {kMessageYesNoCancel, kMessageYesNo, kMessageExclamation, kMessageInformation}) {
        const bool isQuestion = style < kMessageExclamation;
        answer = isQuestion ? MessageAnswer::No : MessageAnswer::Ok;
        EXPECT_EQ(MessageBoxW(m_window, L"R&D?\r\n<b>", L"Title", static_cast<UINT>(style)),
                  static_cast<int>(answer));
        EXPECT_EQ(read, (IUser::Message{u"R&D?\r\n<b>", style, u"Title"}));
    }
}

TEST_F(Win32HandsTest, AFileDialogTakesAPath)
{
    std::array<wchar_t, MAX_PATH> own = {};
    GetModuleFileNameW(nullptr, own.data(), MAX_PATH);
    const Win32Watch watch(
        [&](HWND dialog) {
            ASSERT_TRUE(IsFileDialog(dialog));
            EXPECT_TRUE(ChoosePath(dialog, FromWide(own.data())));
        },
        {});
    std::array<wchar_t, MAX_PATH> path = {};
    OPENFILENAMEW request = {};
    request.lStructSize = sizeof request;
    request.hwndOwner = m_window;
    request.lpstrFile = path.data();
    request.nMaxFile = MAX_PATH;
    request.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST;
    ASSERT_TRUE(GetOpenFileNameW(&request));
    EXPECT_EQ(std::wstring(path.data()), own.data());
}

TEST_F(Win32HandsTest, AWindowThatEndsIsHeardOf)
{
    std::vector<HWND> gone;
    const Win32Watch watch({}, [&](HWND window) { gone.push_back(window); });
    const HWND window = m_button;
    DestroyWindow(m_button);
    EXPECT_THAT(gone, testing::Contains(window));
}

TEST_F(Win32HandsTest, AMenuIsWorkedWithItsLetters)
{
    const HMENU bar = CreateMenu();
    const HMENU menu = CreatePopupMenu();
    AppendMenuW(menu, MF_STRING, kTool, L"E&xport");
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(menu), L"&File");
    SetMenu(m_window, bar);
    Win32Watch watch([](HWND) {}, {});
    watch.OnMenu([&] { PostMessageW(m_window, WM_KEYDOWN, 'X', 1); });
    m_hands.Post(m_window, WM_SYSCOMMAND, SC_KEYMENU, 'f');
    EXPECT_THAT(m_commands, ElementsAre(std::pair(kTool, 0)));
    watch.OnMenu([&] {
        PostMessageW(m_window, WM_KEYDOWN, VK_ESCAPE, 1);
        PostMessageW(m_window, WM_KEYDOWN, VK_ESCAPE, 1);
    });
    m_hands.Post(m_window, WM_SYSCOMMAND, SC_KEYMENU, 'f');
    EXPECT_EQ(m_commands.size(), 1U);
}

} // namespace
} // namespace KestrinProductEditor
