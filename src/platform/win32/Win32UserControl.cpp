// SPDX-License-Identifier: MIT
#include "platform/win32/Win32UserControl.h"

#include "platform/win32/Win32Grid.h"
#include "platform/win32/Win32ProgressBar.h"
#include "platform/win32/Win32Twips.h"
#include "platform/win32/Win32WindowClass.h"

#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr const wchar_t* kShellClass = L"KstneditUserControl";
constexpr const wchar_t* kSurfaceClass = L"KstneditSurface";

[[nodiscard]] WNDCLASSEXW WindowClass(const wchar_t* name, WNDPROC procedure, int offsetOfOwner)
{
    WNDCLASSEXW windowClass = {};
    windowClass.lpfnWndProc = procedure;
    windowClass.cbWndExtra = offsetOfOwner + static_cast<int>(sizeof(LONG_PTR));
    windowClass.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
    windowClass.lpszClassName = name;
    return windowClass;
}

[[nodiscard]] bool IsSame(const RECT& left, const RECT& right)
{
    return EqualRect(&left, &right) != 0;
}

} // namespace

void Win32UserControl::PrvRegister()
{
    Win32GridView::Register();
    Win32ProgressBar::Register();
    static const Win32WindowClass shell(WindowClass(kShellClass, &PrvShellProcedure, 0));
    static const Win32WindowClass surface(WindowClass(kSurfaceClass, &PrvSurfaceProcedure, DLGWINDOWEXTRA));
}

Win32UserControl::Win32UserControl(std::u16string_view name) : m_layout(name, Win32Layout::Kind::UserControl)
{
    PrvRegister();
    m_shell =
        CreateWindowExW(WS_EX_CONTROLPARENT, kShellClass, nullptr, WS_CHILD | WS_CLIPCHILDREN | WS_VISIBLE, 0,
                        0, 0, 0, HWND_MESSAGE, nullptr, OwnModule(), nullptr);
    if (m_shell == nullptr)
        throw AutomationError(kErrOutOfMemory);
    m_surface = m_layout.Create(m_shell);
    SetWindowLongPtrW(m_surface, DLGWINDOWEXTRA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(m_shell, 0, reinterpret_cast<LONG_PTR>(this));
    m_dpi = GetDpiForWindow(m_surface);
    m_controls = std::make_unique<Win32ControlSet>(m_surface, m_layout);
    const SIZE drawn = m_layout.DrawnSize();
    SetWindowPos(m_shell, nullptr, 0, 0, drawn.cx, drawn.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    ShowWindow(m_surface, SW_SHOWNA);
}

Win32UserControl::~Win32UserControl()
{
    m_controls->Focus().End();
    m_controls.reset();
    SetWindowLongPtrW(m_surface, DLGWINDOWEXTRA, 0);
    if (m_shell != nullptr) {
        SetWindowLongPtrW(m_shell, 0, 0);
        DestroyWindow(m_shell);
    } else {
        DestroyWindow(m_surface);
    }
}

float Win32UserControl::InnerWidth() const
{
    return TwipsFromPixels(m_surface, PrvInside().cx);
}

float Win32UserControl::InnerHeight() const
{
    return TwipsFromPixels(m_surface, PrvInside().cy);
}

ControlPlace Win32UserControl::Place(std::u16string_view control) const
{
    const HWND window = PrvFind(control);
    const RECT pixels = PrvPixels(window);
    const auto moved = m_moved.find(window);
    if (moved != m_moved.end() && IsSame(moved->second.pixels, pixels))
        return moved->second.place;
    return {.left = TwipsFromPixels(m_surface, pixels.left),
            .top = TwipsFromPixels(m_surface, pixels.top),
            .width = TwipsFromPixels(m_surface, pixels.right - pixels.left),
            .height = TwipsFromPixels(m_surface, pixels.bottom - pixels.top)};
}

void Win32UserControl::Move(std::u16string_view control, const ControlPlace& place)
{
    const HWND window = PrvFind(control);
    if (!(place.width >= 0) || !(place.height >= 0))
        throw AutomationError(kErrInvalidProcedureCall);
    SetWindowPos(window, nullptr, PixelsFromTwips(m_surface, place.left),
                 PixelsFromTwips(m_surface, place.top), PixelsFromTwips(m_surface, place.width),
                 PixelsFromTwips(m_surface, place.height), SWP_NOZORDER | SWP_NOACTIVATE);
    m_moved[window] = {.pixels = PrvPixels(window), .place = place};
}

float Win32UserControl::TextWidth(std::u16string_view text) const
{
    return m_shell == nullptr ? 0 : TwipsFromPixels(m_surface, m_layout.TextWidth(text));
}

Win32ControlSet& Win32UserControl::Controls()
{
    if (m_shell == nullptr)
        throw AutomationError(kErrInvalidProcedureCall);
    return *m_controls;
}

LRESULT CALLBACK Win32UserControl::PrvShellProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (auto* const control = reinterpret_cast<Win32UserControl*>(GetWindowLongPtrW(window, 0))) {
        if (message == WM_DESTROY)
            control->PrvLeaveShell();
        else if (message == WM_SIZE || message == WM_DPICHANGED_AFTERPARENT)
            control->PrvFollowShell();
        else if (message == WM_SETFOCUS)
            SetFocus(control->m_surface);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK Win32UserControl::PrvSurfaceProcedure(HWND window, UINT message, WPARAM wParam,
                                                       LPARAM lParam)
{
    auto* const control = reinterpret_cast<Win32UserControl*>(GetWindowLongPtrW(window, DLGWINDOWEXTRA));
    return control != nullptr ? control->PrvHandle(message, wParam, lParam)
                              : DefDlgProcW(window, message, wParam, lParam);
}

LRESULT Win32UserControl::PrvHandle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_SETFOCUS:
        m_controls->Focus().Regain();
        return 0;
    case WM_CLOSE:
        // A box of many lines asks for it at Esc; the window is the host's.
        return 0;
    default:
        return DefDlgProcW(m_surface, message, wParam, lParam);
    }
}

void Win32UserControl::PrvLeaveShell()
{
    ShowWindow(m_surface, SW_HIDE);
    SetParent(m_surface, HWND_MESSAGE);
    m_shell = nullptr;
}

void Win32UserControl::PrvFollowShell()
{
    RECT inside = {};
    GetClientRect(m_shell, &inside);
    SetWindowPos(m_surface, nullptr, 0, 0, inside.right, inside.bottom, SWP_NOZORDER | SWP_NOACTIVATE);
    const UINT before = std::exchange(m_dpi, GetDpiForWindow(m_surface));
    if (m_dpi != before)
        m_layout.TakeFont();
    const HWND surface = m_surface;
    Resize.Raise();
    // A frame leaves its inside to what is behind it, and its old picture as well.
    RedrawWindow(surface, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

HWND Win32UserControl::PrvFind(std::u16string_view control) const
{
    const HWND window = m_shell == nullptr ? nullptr : m_layout.WindowOf(control);
    if (window == nullptr)
        throw AutomationError(kErrInvalidProcedureCall);
    return window;
}

RECT Win32UserControl::PrvPixels(HWND control) const
{
    RECT place = {};
    GetWindowRect(control, &place);
    // Mirrors the places where the surface does.
    MapWindowPoints(nullptr, m_surface, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

SIZE Win32UserControl::PrvInside() const
{
    RECT inside = {};
    if (m_shell != nullptr)
        GetClientRect(m_surface, &inside);
    return {inside.right, inside.bottom};
}

} // namespace KestrinProductEditor
