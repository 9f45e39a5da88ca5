// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace KestrinProductEditor {

/// While it lives, windows that this thread creates follow the resolution of the screen that they are on, and
/// the places and sizes that the thread asks for are pixels of that screen, whatever the host does with its
/// own.
class Win32Resolution
{
public:
    Win32Resolution() noexcept
        : m_before(SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2))
    {
    }
    Win32Resolution(const Win32Resolution&) = delete;
    Win32Resolution& operator=(const Win32Resolution&) = delete;
    ~Win32Resolution()
    {
        if (m_before != nullptr)
            SetThreadDpiAwarenessContext(m_before);
    }

private:
    DPI_AWARENESS_CONTEXT m_before;
};

} // namespace KestrinProductEditor
