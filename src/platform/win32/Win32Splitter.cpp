// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Splitter.h"

#include "platform/win32/Win32WindowClass.h"

#include <windowsx.h>

namespace KestrinProductEditor::Win32Splitter {

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    // Where the mouse took hold of it.
    constexpr int kHold = 0;
    switch (message) {
    case WM_GETDLGCODE:
        // Arrow keys pass it by.
        return DLGC_STATIC;
    case WM_LBUTTONDOWN:
        SetWindowLongPtrW(window, kHold, GET_X_LPARAM(lParam));
        SetCapture(window);
        return 0;
    case WM_MOUSEMOVE:
        // The end of the drag may have been lost with what else the user did to a busy form.
        if ((wParam & MK_LBUTTON) == 0) {
            ReleaseCapture();
        } else if (GetCapture() == window) {
            const LONG_PTR by = GET_X_LPARAM(lParam) - GetWindowLongPtrW(window, kHold);
            SendMessageW(GetParent(window), kMoved, static_cast<WPARAM>(by), 0);
        }
        return 0;
    case WM_LBUTTONUP:
        ReleaseCapture();
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

} // namespace

void Register()
{
    static const Win32WindowClass windowClass([] {
        WNDCLASSEXW splitter = {};
        splitter.lpfnWndProc = &Procedure;
        splitter.cbWndExtra = sizeof(LONG_PTR);
        splitter.hCursor = LoadCursorW(nullptr, IDC_SIZEWE);
        splitter.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        splitter.lpszClassName = kClassName;
        return splitter;
    }());
}

} // namespace KestrinProductEditor::Win32Splitter
