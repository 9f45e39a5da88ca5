// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ToolTips.h"

#include "platform/win32/Win32Dialogs.h"
#include "platform/windows/WideText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <commctrl.h>

#include <array>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A window with a button and a label in it.
class Win32ToolTipsTest : public testing::Test
{
protected:
    Win32ToolTipsTest()
    {
        const INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
        InitCommonControlsEx(&classes);
        m_window = CreateWindowW(L"STATIC", L"", WS_OVERLAPPEDWINDOW, 0, 0, kSide, kSide, nullptr, nullptr,
                                 nullptr, nullptr);
        m_button =
            CreateWindowW(L"BUTTON", L"", WS_CHILD, 0, 0, kSide, kSide, m_window, nullptr, nullptr, nullptr);
        m_label =
            CreateWindowW(L"STATIC", L"", WS_CHILD, 0, 0, kSide, kSide, m_window, nullptr, nullptr, nullptr);
    }
    ~Win32ToolTipsTest() override { DestroyWindow(m_window); }

    /// The tips of this thread's windows.
    [[nodiscard]] static std::vector<HWND> Tips()
    {
        std::vector<HWND> tips;
        EnumThreadWindows(
            GetCurrentThreadId(),
            [](HWND window, LPARAM found) -> BOOL {
                if (ClassOfWindow(window) == u"tooltips_class32")
                    reinterpret_cast<std::vector<HWND>*>(found)->push_back(window);
                return TRUE;
            },
            reinterpret_cast<LPARAM>(&tips));
        return tips;
    }
    /// What is said about a window.
    [[nodiscard]] static std::vector<std::u16string> TextsOf(HWND window)
    {
        std::vector<std::u16string> texts;
        for (const HWND tip : Tips()) {
            std::array<wchar_t, 1000> text = {};
            TTTOOLINFOW tool = {};
            tool.cbSize = sizeof tool;
            tool.lpszText = text.data();
            for (WPARAM at = 0; SendMessageW(tip, TTM_ENUMTOOLSW, at, reinterpret_cast<LPARAM>(&tool)) != 0;
                 ++at) {
                if (tool.uId != reinterpret_cast<UINT_PTR>(window))
                    continue;
                SendMessageW(tip, TTM_GETTEXTW, text.size(), reinterpret_cast<LPARAM>(&tool));
                texts.push_back(FromWide(text.data()));
            }
        }
        return texts;
    }

    static constexpr int kSide = 100; // pixels
    HWND m_window = nullptr;
    HWND m_button = nullptr;
    HWND m_label = nullptr;
};

TEST_F(Win32ToolTipsTest, AWindowHasTheTipThatWasSetLast)
{
    Win32ToolTips::Set(m_button, u"first");
    EXPECT_THAT(TextsOf(m_button), ElementsAre(u"first"));
    Win32ToolTips::Set(m_button, u"Rock & roll,\r\nwith a second line");
    EXPECT_THAT(TextsOf(m_button), ElementsAre(u"Rock & roll,\r\nwith a second line"));
    EXPECT_THAT(TextsOf(m_label), IsEmpty());
}

TEST_F(Win32ToolTipsTest, NothingToSayIsNoTip)
{
    Win32ToolTips::Set(m_button, u"");
    EXPECT_THAT(Tips(), IsEmpty());
    Win32ToolTips::Set(m_button, u"why");
    Win32ToolTips::Set(m_button, u"");
    EXPECT_THAT(TextsOf(m_button), IsEmpty());
    Win32ToolTips::Set(m_button, u"again");
    EXPECT_THAT(TextsOf(m_button), ElementsAre(u"again"));
}

TEST_F(Win32ToolTipsTest, ALabelFeelsTheMouseOnceItHasATip)
{
    Win32ToolTips::Set(m_label, u"why");
    EXPECT_NE(GetWindowLongW(m_label, GWL_STYLE) & SS_NOTIFY, 0);
    EXPECT_THAT(TextsOf(m_label), ElementsAre(u"why"));
}

TEST_F(Win32ToolTipsTest, ATipEndsWithItsWindow)
{
    Win32ToolTips::Set(m_button, u"button");
    Win32ToolTips::Set(m_label, u"label");
    EXPECT_EQ(Tips().size(), 2U);
    DestroyWindow(m_button);
    EXPECT_EQ(Tips().size(), 1U);
    DestroyWindow(m_window);
    EXPECT_THAT(Tips(), IsEmpty());
}

} // namespace
} // namespace KestrinProductEditor
