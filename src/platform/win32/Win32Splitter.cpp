// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Splitter.h"

#include "platform/win32/Win32Looks.h"

#include <windowsx.h>

namespace KestrinProductEditor::Win32Splitter {

namespace {

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    // Where the mouse took hold of it.
    constexpr int kHold = 0;
    switch (message) {
    case WM_LBUTTONDOWN:
        SetWindowLongPtrW(window, kHold, GET_X_LPARAM(lParam));
        SetCapture(window);
        return 0;
    case WM_MOUSEMOVE:
        if (GetCapture() == window) {
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
    WNDCLASSEXW windowClass = {};
    windowClass.cbSize = sizeof windowClass;
    windowClass.lpfnWndProc = &Procedure;
    windowClass.cbWndExtra = sizeof(LONG_PTR);
    windowClass.hInstance = OwnModule();
    windowClass.hCursor = LoadCursorW(nullptr, IDC_SIZEWE);
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = kClassName;
    // A second registration is refused, and the first one holds.
    RegisterClassExW(&windowClass);
}

} // namespace KestrinProductEditor::Win32Splitter
