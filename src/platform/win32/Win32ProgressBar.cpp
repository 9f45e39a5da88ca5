// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ProgressBar.h"

#include "platform/win32/Win32Looks.h"
#include "platform/windows/WideText.h"

#include <commctrl.h>
#include <oleacc.h>

#include <algorithm>
#include <vector>

namespace KestrinProductEditor {

namespace {

constexpr int kFull = 100;

// What the class keeps with each window
constexpr int kValuePlace = 0;
constexpr int kFontPlace = sizeof(LONG_PTR);
constexpr int kKept = 2 * sizeof(LONG_PTR);

[[nodiscard]] int ValueOf(HWND bar)
{
    return static_cast<int>(GetWindowLongPtrW(bar, kValuePlace));
}

[[nodiscard]] std::vector<wchar_t> CaptionOf(HWND bar)
{
    std::vector<wchar_t> caption(static_cast<std::size_t>(GetWindowTextLengthW(bar)) + 1);
    caption.resize(
        static_cast<std::size_t>(GetWindowTextW(bar, caption.data(), static_cast<int>(caption.size()))));
    return caption;
}

void Fill(HDC canvas, const RECT& place, int color)
{
    FillRect(canvas, &place, GetSysColorBrush(color));
}

void PaintPart(HDC canvas, const RECT& inside, const RECT& part, const std::vector<wchar_t>& caption,
               int ground, int ink)
{
    const int saved = SaveDC(canvas);
    IntersectClipRect(canvas, part.left, part.top, part.right, part.bottom);
    Fill(canvas, part, ground);
    SetTextColor(canvas, GetSysColor(ink));
    // The same place in both parts, so that the letters meet.
    RECT place = inside;
    DrawTextW(canvas, caption.data(), static_cast<int>(caption.size()), &place,
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
    Fill(canvas, inside, COLOR_WINDOWTEXT);
    const int line = std::max(1, static_cast<int>(GetDpiForWindow(bar)) / USER_DEFAULT_SCREEN_DPI);
    InflateRect(&inside, -line, -line);
    const std::vector<wchar_t> caption = CaptionOf(bar);
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
    PAINTSTRUCT painting = {};
    const HDC screen = BeginPaint(bar, &painting);
    RECT whole = {};
    GetClientRect(bar, &whole);
    const HDC canvas = CreateCompatibleDC(screen);
    const HBITMAP picture =
        CreateCompatibleBitmap(screen, std::max<int>(1, whole.right), std::max<int>(1, whole.bottom));
    const HGDIOBJ before = SelectObject(canvas, picture);
    SetLayout(canvas, GetLayout(screen));
    PaintBar(bar, canvas);
    BitBlt(screen, 0, 0, whole.right, whole.bottom, canvas, 0, 0, SRCCOPY);
    SelectObject(canvas, before);
    DeleteObject(picture);
    DeleteDC(canvas);
    EndPaint(bar, &painting);
}

/// The system knows how to tell of its own bars, and asks this one for the same things; null where it cannot.
[[nodiscard]] LRESULT GiveAccessible(HWND bar, WPARAM wParam)
{
    IAccessible* accessible = nullptr;
    if (FAILED(CreateStdAccessibleProxyW(bar, PROGRESS_CLASSW, OBJID_CLIENT, __uuidof(IAccessible),
                                         reinterpret_cast<void**>(&accessible))))
        return 0;
    const LRESULT answer = LresultFromObject(__uuidof(IAccessible), wParam, accessible);
    accessible->Release();
    return answer;
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
        if (static_cast<LONG>(lParam) == OBJID_CLIENT) {
            if (const LRESULT answer = GiveAccessible(bar, wParam))
                return answer;
        }
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

class WindowClass
{
public:
    WindowClass()
    {
        WNDCLASSEXW windowClass = {};
        windowClass.cbSize = sizeof windowClass;
        windowClass.style = CS_HREDRAW | CS_VREDRAW;
        windowClass.lpfnWndProc = &Procedure;
        windowClass.cbWndExtra = kKept;
        windowClass.hInstance = OwnModule();
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.lpszClassName = Win32ProgressBar::kClassName;
        RegisterClassExW(&windowClass);
    }
    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;
    // A library that is unloaded must not leave its class behind.
    ~WindowClass() { UnregisterClassW(Win32ProgressBar::kClassName, OwnModule()); }
};

} // namespace

void Win32ProgressBar::Register()
{
    static const WindowClass windowClass;
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
