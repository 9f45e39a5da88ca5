// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <vector>

namespace KestrinProductEditor {

/// The windows of this thread that stand behind a modal one: they are disabled until Release, and the one
/// that the user worked in owns the modal window and is active again afterwards.
class Win32ModalHost
{
public:
    /// `below` owns it when the user works in no window of this thread; null for none.
    Win32ModalHost(HWND modal, HWND below);
    Win32ModalHost(const Win32ModalHost&) = delete;
    Win32ModalHost& operator=(const Win32ModalHost&) = delete;
    ~Win32ModalHost();

    /// The owner; null for none.
    [[nodiscard]] HWND Owner() const { return m_owner; }
    /// Shows the modal window, in front of its owner and active.
    void Show() const;
    /// Gives the windows back, before the modal one is hidden: the system would activate another program's.
    void Release();

private:
    static BOOL CALLBACK PrvDisable(HWND window, LPARAM self);

    HWND m_modal;
    HWND m_owner;
    std::vector<HWND> m_disabled;
};

} // namespace KestrinProductEditor
