// SPDX-License-Identifier: MIT
#include "platform/ui/PlatformToolkit.h"
#include "platform/ui/Toolkit.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <atomic>
#include <string>
#include <thread>

namespace KestrinProductEditor {

namespace {

/// Waits for the message with that title, reads its text and clicks its button.
std::wstring AnswerMessage(const wchar_t* title, int button)
{
    for (;;) {
        const HWND box = FindWindowW(L"#32770", title);
        const HWND choice = box == nullptr ? nullptr : GetDlgItem(box, button);
        if (choice == nullptr) {
            Sleep(1);
            continue;
        }
        constexpr int kText = 0xFFFF;
        wchar_t text[256] = L"";
        GetDlgItemTextW(box, kText, text, 256);
        PostMessageW(choice, BM_CLICK, 0, 0);
        return text;
    }
}

} // namespace

TEST(Win32ToolkitTest, IsInUseOnAThreadThatAskedForIt)
{
    std::thread([] {
        EXPECT_EQ(LoadedPlatformToolkit(), nullptr);
        IToolkit& toolkit = PlatformToolkit();
        EXPECT_EQ(LoadedPlatformToolkit(), &toolkit);
        std::thread([] { EXPECT_EQ(LoadedPlatformToolkit(), nullptr); }).join();
    }).join();
}

TEST(Win32ToolkitTest, TakesAnEscapeForTheCarefulAnswer)
{
    const struct
    {
        std::int32_t style;
        MessageAnswer answer;
    } cases[] = {{kMessageExclamation, MessageAnswer::Ok},
                 {kMessageYesNo, MessageAnswer::No},
                 {kMessageYesNoCancel, MessageAnswer::Cancel}};
    for (const auto& each : cases) {
        std::atomic<MessageAnswer> answer = MessageAnswer::Yes;
        std::thread shower([&] {
            static_cast<void>(PlatformToolkit());
            answer = MessageBoxes().Show(u"Sure?", each.style, u"kstnedit test escape");
        });
        HWND box = nullptr;
        while ((box = FindWindowW(L"#32770", L"kstnedit test escape")) == nullptr)
            Sleep(1);
        PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
        shower.join();
        EXPECT_EQ(answer.load(), each.answer) << each.style;
    }
}

TEST(Win32ToolkitTest, ShowsAMessageAndTellsTheAnswer)
{
    const struct
    {
        std::int32_t style;
        int button;
        MessageAnswer answer;
    } cases[] = {
        {kMessageExclamation, IDOK, MessageAnswer::Ok},
        {kMessageYesNo, IDNO, MessageAnswer::No},
        {kMessageYesNoCancel, IDYES, MessageAnswer::Yes},
        {kMessageYesNoCancel, IDCANCEL, MessageAnswer::Cancel},
    };
    for (const auto& each : cases) {
        std::atomic<MessageAnswer> answer = MessageAnswer::Ok;
        std::thread shower([&] {
            static_cast<void>(PlatformToolkit());
            answer = MessageBoxes().Show(u"Sure?", each.style, u"kstnedit test message");
        });
        EXPECT_EQ(AnswerMessage(L"kstnedit test message", each.button), L"Sure?");
        shower.join();
        EXPECT_EQ(answer.load(), each.answer) << each.style;
    }
}

} // namespace KestrinProductEditor
