// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ProgressBar.h"

#include "platform/win32/Win32Canvas.h"
#include "platform/win32/Win32WindowClass.h"
#include "platform/win32/Win32Windows.h"

#include <commctrl.h>

#include <algorithm>

namespace KestrinProductEditor {

namespace {

constexpr int kFull = 100;

// Tells screen readers to treat the window as they do the system's own progress bars, and to ask it the same.
constexpr LRESULT kLikeProgressBars = 65536 + 13;

// What the class keeps with each window
constexpr int kValuePlace = 0;
constexpr int kFontPlace = sizeof(LONG_PTR);
constexpr int kKept = 2 * sizeof(LONG_PTR);

[[nodiscard]] int ValueOf(HWND bar)
{
    return static_cast<int>(GetWindowLongPtrW(bar, kValuePlace));
}

void Fill(HDC canvas, const RECT& place, int color)
{
    FillRect(canvas, &place, GetSysColorBrush(color));
}

void PaintPart(HDC canvas, const RECT& inside, const RECT& part, const std::u16string& caption, int ground,
               int ink)
{
    const int saved = SaveDC(canvas);
    IntersectClipRect(canvas, part.left, part.top, part.right, part.bottom);
    Fill(canvas, part, ground);
    SetTextColor(canvas, GetSysColor(ink));
    // The same place in both parts, so that the letters meet.
    RECT place = inside;
    DrawTextW(canvas, Wide(caption.data()), static_cast<int>(caption.size()), &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
    RestoreDC(canvas, saved);
}

void PaintBar(HWND bar, HDC canvas)
{
    RECT inside = {};
    GetClientRect(bar, &inside);
    const int saved = SaveDC(canvas);
    if (const auto font = reinterpret_cast<HFONT>(GetWindowLongPtrW(bar, kFontPlace)))
        SelectObject(canvas, font);
    SetBkMode(canvas, TRANSPARENT);
    Fill(canvas, inside, COLOR_GRAYTEXT);
    const int line = std::max(1, static_cast<int>(GetDpiForWindow(bar)) / USER_DEFAULT_SCREEN_DPI);
    InflateRect(&inside, -line, -line);
    const std::u16string caption = TextOfWindow(bar);
    RECT filled = inside;
    filled.right = inside.left + (inside.right - inside.left) * ValueOf(bar) / kFull;
    RECT left = inside;
    left.left = filled.right;
    PaintPart(canvas, inside, filled, caption, COLOR_HIGHLIGHT, COLOR_HIGHLIGHTTEXT);
    PaintPart(canvas, inside, left, caption, COLOR_WINDOW, COLOR_WINDOWTEXT);
    RestoreDC(canvas, saved);
}

/// In memory first: a bar that is painted often must not flicker.
void Paint(HWND bar)
{
    const Win32Painting painting(bar);
    RECT inside = {};
    GetClientRect(bar, &inside);
    const Win32Canvas canvas(painting.Target(), {inside.right, inside.bottom});
    PaintBar(bar, canvas.Handle());
}

[[nodiscard]] LRESULT RangeOf(PBRANGE* range, bool isLowerAsked)
{
    if (range != nullptr)
        *range = {.iLow = 0, .iHigh = kFull};
    return isLowerAsked ? 0 : kFull;
}

[[nodiscard]] LRESULT Handle(HWND bar, UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_ERASEBKGND:
        return 1;
    case WM_PAINT:
        Paint(bar);
        return 0;
    case WM_PRINTCLIENT:
        PaintBar(bar, reinterpret_cast<HDC>(wParam));
        return 0;
    case WM_SETTEXT: {
        const LRESULT result = DefWindowProcW(bar, message, wParam, lParam);
        InvalidateRect(bar, nullptr, FALSE);
        NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, bar, OBJID_CLIENT, CHILDID_SELF);
        return result;
    }
    case WM_SETFONT:
        SetWindowLongPtrW(bar, kFontPlace, static_cast<LONG_PTR>(wParam));
        InvalidateRect(bar, nullptr, FALSE);
        return 0;
    case WM_GETFONT:
        return GetWindowLongPtrW(bar, kFontPlace);
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
        InvalidateRect(bar, nullptr, FALSE);
        return 0;
    case PBM_SETPOS: {
        const LONG_PTR value = std::clamp(static_cast<int>(wParam), 0, kFull);
        const LONG_PTR before = SetWindowLongPtrW(bar, kValuePlace, value);
        if (before != value) {
            InvalidateRect(bar, nullptr, FALSE);
            NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, bar, OBJID_CLIENT, CHILDID_SELF);
        }
        return before;
    }
    case PBM_GETPOS:
        return ValueOf(bar);
    case PBM_GETRANGE:
        return RangeOf(reinterpret_cast<PBRANGE*>(lParam), wParam != 0);
    case WM_GETOBJECT:
        if (static_cast<LONG>(lParam) == OBJID_QUERYCLASSNAMEIDX)
            return kLikeProgressBars;
        break;
    default:
        break;
    }
    return DefWindowProcW(bar, message, wParam, lParam);
}

LRESULT CALLBACK Procedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam)
{
    try {
        return Handle(bar, message, wParam, lParam);
    } catch (...) {
        // Without memory for its caption a bar stays as it was.
        return 0;
    }
}

} // namespace

void Win32ProgressBar::Register()
{
    static const Win32WindowClass windowClass([] {
        WNDCLASSEXW bar = {};
        bar.style = CS_HREDRAW | CS_VREDRAW;
        bar.lpfnWndProc = &Procedure;
        bar.cbWndExtra = kKept;
        bar.lpszClassName = kClassName;
        return bar;
    }());
}

void Win32ProgressBar::SetValue(std::int32_t value)
{
    m_value = std::clamp(value, 0, kFull);
    SendMessageW(Window(), PBM_SETPOS, static_cast<WPARAM>(m_value), 0);
}

void Win32ProgressBar::SetCaption(std::u16string_view caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    SetWindowTextW(Window(), Wide(m_caption.c_str()));
}

} // namespace KestrinProductEditor
