// SPDX-License-Identifier: MIT
#pragma once

#include <commctrl.h>
#include <windows.h>

namespace KestrinProductEditor {

/// Presses the key in `window` while Alt is held, and lets go of Alt; how often the window above turned to
/// its menu.
inline int MenusAfterAlt(HWND window, WPARAM key)
{
    const auto count = [](HWND above, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                          DWORD_PTR menus) -> LRESULT {
        if (message != WM_SYSCOMMAND || (wParam & 0xFFF0) != SC_KEYMENU)
            return DefSubclassProc(above, message, wParam, lParam);
        ++*reinterpret_cast<int*>(menus);
        return 0;
    };
    constexpr UINT_PTR kSubclass = 0x416C74;
    constexpr LPARAM kAltIsHeld = 0x20000001;
    const SUBCLASSPROC procedure = count;
    int menus = 0;
    HWND const above = GetAncestor(window, GA_ROOT);
    SetWindowSubclass(above, procedure, kSubclass, reinterpret_cast<DWORD_PTR>(&menus));
    SendMessageW(window, WM_SYSKEYDOWN, VK_MENU, kAltIsHeld);
    SendMessageW(window, WM_SYSKEYDOWN, key, kAltIsHeld);
    SendMessageW(window, WM_KEYUP, VK_MENU, 1);
    SendMessageW(window, WM_KEYUP, key, 1);
    RemoveWindowSubclass(above, procedure, kSubclass);
    return menus;
}

} // namespace KestrinProductEditor
