// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ModalHost.h"

#include <utility>

namespace KestrinProductEditor {

Win32ModalHost::Win32ModalHost(HWND modal, HWND below) : m_modal(modal), m_owner(GetActiveWindow())
{
    if (m_owner == nullptr || m_owner == modal)
        m_owner = below;
    SetWindowLongPtrW(modal, GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(m_owner));
    EnumThreadWindows(GetCurrentThreadId(), &PrvDisable, reinterpret_cast<LPARAM>(this));
}

Win32ModalHost::~Win32ModalHost()
{
    Release();
    // An owner that ends would take the hidden window along.
    SetWindowLongPtrW(m_modal, GWLP_HWNDPARENT, 0);
}

void Win32ModalHost::Show() const
{
    // Not by ShowWindow: the first one follows whoever started the program, who may want no window at all.
    // A window that was owned only later does not follow its owner in front of all others.
    const bool isTopmost = m_owner != nullptr && (GetWindowLongW(m_owner, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    SetWindowPos(m_modal, isTopmost ? HWND_TOPMOST : HWND_TOP, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_SHOWWINDOW);
    SetActiveWindow(m_modal);
    SetForegroundWindow(m_modal);
}

void Win32ModalHost::Release()
{
    for (const HWND window : std::exchange(m_disabled, {}))
        EnableWindow(window, TRUE);
    const HWND active = GetActiveWindow();
    const bool wasFront = active == m_modal || active == nullptr;
    if (m_owner != nullptr && wasFront && IsWindow(m_owner) != 0)
        SetActiveWindow(m_owner);
    m_owner = nullptr;
}

BOOL CALLBACK Win32ModalHost::PrvDisable(HWND window, LPARAM self)
{
    auto& host = *reinterpret_cast<Win32ModalHost*>(self);
    if (window != host.m_modal && IsWindowVisible(window) != 0 && IsWindowEnabled(window) != 0) {
        host.m_disabled.push_back(window);
        EnableWindow(window, FALSE);
    }
    return TRUE;
}

} // namespace KestrinProductEditor
