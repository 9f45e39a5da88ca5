// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

namespace KestrinProductEditor {

/// The program or library that this code lies in.
[[nodiscard]] HINSTANCE OwnModule() noexcept;

/// While it lives, windows that this thread creates have the looks of the system's present controls, whatever
/// the host has. In a program or library without the manifest that asks for them nothing changes.
class Win32Looks
{
public:
    Win32Looks() noexcept;
    Win32Looks(const Win32Looks&) = delete;
    Win32Looks& operator=(const Win32Looks&) = delete;
    ~Win32Looks();

private:
    ULONG_PTR m_cookie = 0;
    bool m_isActive = false;
};

} // namespace KestrinProductEditor
