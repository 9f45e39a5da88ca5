// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ClickTarget.h"

#include "platform/win32/Win32Reflection.h"

#include <commctrl.h>

#include <utility>

namespace KestrinProductEditor {

bool IsOpenToUser(HWND window) noexcept
{
    if (IsWindowVisible(window) == 0)
        return false;
    for (; window != nullptr; window = GetAncestor(window, GA_PARENT)) {
        if (IsWindowEnabled(window) == 0)
            return false;
    }
    return true;
}

Win32ClickListener::Win32ClickListener(HWND button, std::function<void()> clicked)
    : m_button(button), m_clicked(std::move(clicked))
{
    SetWindowSubclass(button, &PrvProcedure, reinterpret_cast<UINT_PTR>(this),
                      reinterpret_cast<DWORD_PTR>(this));
}

Win32ClickListener::~Win32ClickListener()
{
    RemoveWindowSubclass(m_button, &PrvProcedure, reinterpret_cast<UINT_PTR>(this));
}

LRESULT CALLBACK Win32ClickListener::PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                                  UINT_PTR id, DWORD_PTR data)
{
    switch (message) {
    case WM_NCDESTROY:
        RemoveWindowSubclass(window, &PrvProcedure, id);
        break;
    case OCM_COMMAND:
        if (HIWORD(wParam) == BN_CLICKED) {
            try {
                // A copy: what it does may end the listener.
                const std::function<void()> clicked = reinterpret_cast<Win32ClickListener*>(data)->m_clicked;
                clicked();
            } catch (...) {
                // Without memory for the events nobody hears of the click.
                return 0;
            }
        }
        return 0;
    default:
        break;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace KestrinProductEditor
