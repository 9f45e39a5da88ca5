// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Reflection.h"

#include <commctrl.h>

namespace KestrinProductEditor {

namespace {

constexpr UINT_PTR kSubclass = 0x4EF1;

/// The control that the message is about; null for none.
[[nodiscard]] HWND SourceOf(UINT message, LPARAM lParam)
{
    switch (message) {
    case WM_COMMAND:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLORSTATIC:
        return reinterpret_cast<HWND>(lParam);
    case WM_NOTIFY:
        return reinterpret_cast<const NMHDR*>(lParam)->hwndFrom;
    case WM_DRAWITEM: {
        const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
        return item.CtlType == ODT_MENU ? nullptr : item.hwndItem;
    }
    default:
        return nullptr;
    }
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                           DWORD_PTR /*data*/)
{
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &Procedure, id);
    const HWND source = SourceOf(message, lParam);
    if (source != nullptr && GetParent(source) == window) {
        const LRESULT answer = SendMessageW(source, OCM__BASE + message, wParam, lParam);
        if (answer != 0)
            return answer;
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

} // namespace

void ReflectToControls(HWND window)
{
    SetWindowSubclass(window, &Procedure, kSubclass, 0);
}

} // namespace KestrinProductEditor
