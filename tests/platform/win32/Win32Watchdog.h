// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <thread>

namespace KestrinProductEditor {

/// Ends the program when it lives longer than any test can take: a window waits for somebody who never comes.
class Win32Watchdog
{
public:
    Win32Watchdog() = default;
    Win32Watchdog(const Win32Watchdog&) = delete;
    Win32Watchdog& operator=(const Win32Watchdog&) = delete;
    ~Win32Watchdog()
    {
        SetEvent(m_ended);
        m_thread.join();
        CloseHandle(m_ended);
    }

private:
    void PrvWatch() const
    {
        constexpr DWORD kLongestTest = 600'000; // milliseconds
        if (WaitForSingleObject(m_ended, kLongestTest) != WAIT_TIMEOUT)
            return;
        std::fputs("a window waits for ever\n", stderr);
        std::abort();
    }

    HANDLE m_ended = CreateEventW(nullptr, TRUE, FALSE, nullptr);
    std::thread m_thread{[this] { PrvWatch(); }};
};

} // namespace KestrinProductEditor
