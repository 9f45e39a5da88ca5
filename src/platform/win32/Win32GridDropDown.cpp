// SPDX-License-Identifier: MIT
#include "platform/win32/Win32GridDropDown.h"

#include "platform/win32/Win32TextMeasure.h"
#include "platform/win32/Win32Windows.h"
#include "platform/windows/WideText.h"

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <string>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr UINT_PTR kSubclass = 1;
constexpr std::size_t kMostInSight = 12;
constexpr int kMargin = 8; // pixels, as Scaled takes them, beside the widest entry

[[nodiscard]] int WidestEntry(HFONT font, std::span<const GridBase::ComboEntry> entries)
{
    const Win32TextMeasure measure(font);
    int widest = 0;
    for (const GridBase::ComboEntry& entry : entries)
        widest = std::max(widest, measure.Width(entry.text));
    return widest;
}

/// Where a list of that size stands: below the cell, above it where there is more room.
[[nodiscard]] RECT PlaceFor(const RECT& cell, SIZE size)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof monitor;
    RECT room{0, 0, cell.left + size.cx, cell.bottom + size.cy};
    if (GetMonitorInfoW(MonitorFromRect(&cell, MONITOR_DEFAULTTONEAREST), &monitor))
        room = monitor.rcWork;
    RECT place{cell.left, cell.bottom, cell.left + size.cx, cell.bottom + size.cy};
    if (place.bottom > room.bottom && cell.top - room.top > room.bottom - cell.bottom) {
        place.bottom = cell.top;
        place.top = std::max(room.top, cell.top - size.cy);
    }
    place.bottom = std::min(place.bottom, std::max(room.bottom, place.top + 1));
    const LONG beyond = std::min(std::max(place.right - room.right, 0L), place.left - room.left);
    OffsetRect(&place, -static_cast<int>(beyond), 0);
    return place;
}

} // namespace

Win32GridDropDown::~Win32GridDropDown()
{
    Close();
}

void Win32GridDropDown::Open(HWND window, const RECT& cell, HFONT font,
                             std::span<const GridBase::ComboEntry> entries, std::u16string_view chosen,
                             Picked picked)
{
    Close();
    const auto mirrored = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_EXSTYLE)) & WS_EX_LAYOUTRTL;
    HWND const owner = GetAncestor(window, GA_ROOT);
    // Without LBS_NOTIFY: nobody but its own procedure is to hear it.
    m_list = CreateWindowExW(WS_EX_TOOLWINDOW | WS_EX_NOACTIVATE | mirrored, L"LISTBOX", nullptr,
                             WS_POPUP | WS_BORDER | WS_VSCROLL | LBS_HASSTRINGS | LBS_NOINTEGRALHEIGHT, 0, 0,
                             0, 0, owner, nullptr, nullptr, nullptr);
    if (m_list == nullptr)
        return;
    m_picked = std::move(picked);
    SetWindowSubclass(m_list, &PrvProcedure, kSubclass, reinterpret_cast<DWORD_PTR>(this));
    SendMessageW(m_list, WM_SETFONT, reinterpret_cast<WPARAM>(font), 0);
    for (const GridBase::ComboEntry& entry : entries) {
        const LRESULT at =
            SendMessageW(m_list, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(Wide(entry.text.c_str())));
        SendMessageW(m_list, LB_SETITEMDATA, static_cast<WPARAM>(at), entry.number);
        const std::string digits = std::to_string(entry.number);
        if (std::equal(digits.begin(), digits.end(), chosen.begin(), chosen.end()))
            SendMessageW(m_list, LB_SETCURSEL, static_cast<WPARAM>(at), 0);
    }

    RECT onScreen = cell;
    // Of a mirrored window, too: the corners change sides.
    MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&onScreen), 2);
    if (onScreen.left > onScreen.right)
        std::swap(onScreen.left, onScreen.right);
    const int itemHeight = static_cast<int>(SendMessageW(m_list, LB_GETITEMHEIGHT, 0, 0));
    const bool scrolls = entries.size() > kMostInSight;
    const int inSight = static_cast<int>(std::clamp<std::size_t>(entries.size(), 1, kMostInSight));
    const int wanted = WidestEntry(font, entries) + Scaled(window, kMargin) +
                       2 * GetSystemMetrics(SM_CXBORDER) +
                       (scrolls ? GetSystemMetricsForDpi(SM_CXVSCROLL, GetDpiForWindow(window)) : 0);
    const SIZE size{std::max<LONG>(onScreen.right - onScreen.left, wanted),
                    inSight * itemHeight + 2 * GetSystemMetrics(SM_CYBORDER)};
    const RECT place = PlaceFor(onScreen, size);
    GetCursorPos(&m_mouse);
    SetWindowPos(m_list, HWND_TOP, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
    SetCapture(m_list);
    NotifyWinEvent(EVENT_OBJECT_FOCUS, m_list, OBJID_CLIENT,
                   static_cast<LONG>(SendMessageW(m_list, LB_GETCURSEL, 0, 0)) + 1);
}

void Win32GridDropDown::Close()
{
    HWND const list = std::exchange(m_list, nullptr);
    if (list == nullptr)
        return;
    m_picked = nullptr;
    RemoveWindowSubclass(list, &PrvProcedure, kSubclass);
    if (GetCapture() == list)
        ReleaseCapture();
    DestroyWindow(list);
}

void Win32GridDropDown::TakeKey(WPARAM key, bool isAlt)
{
    switch (key) {
    case VK_ESCAPE:
    case VK_TAB:
        Close();
        break;
    case VK_RETURN:
    case VK_F4:
        PrvPick();
        break;
    case VK_UP:
    case VK_DOWN:
        if (isAlt) {
            PrvPick();
            break;
        }
        [[fallthrough]];
    case VK_PRIOR:
    case VK_NEXT:
    case VK_HOME:
    case VK_END:
        SendMessageW(m_list, WM_KEYDOWN, key, 0);
        break;
    default:
        break;
    }
}

void Win32GridDropDown::Find(std::u16string_view prefix)
{
    const std::u16string text(prefix);
    const LRESULT at = SendMessageW(m_list, LB_FINDSTRING, static_cast<WPARAM>(-1),
                                    reinterpret_cast<LPARAM>(Wide(text.c_str())));
    if (at != LB_ERR)
        SendMessageW(m_list, LB_SETCURSEL, static_cast<WPARAM>(at), 0);
}

LRESULT CALLBACK Win32GridDropDown::PrvProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam,
                                                 UINT_PTR /*id*/, DWORD_PTR self)
{
    auto& dropDown = *reinterpret_cast<Win32GridDropDown*>(self);
    const POINT place{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_MOUSEACTIVATE:
        return MA_NOACTIVATE;
    case WM_MOUSEMOVE:
        dropDown.PrvMoveMouse(place);
        return 0;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_MBUTTONDOWN:
        dropDown.PrvPress(place);
        return 0;
    case WM_LBUTTONUP: {
        RECT client{};
        GetClientRect(list, &client);
        if (PtInRect(&client, place)) {
            dropDown.PrvMarkAt(place);
            dropDown.PrvPick();
        }
        return 0;
    }
    case WM_CAPTURECHANGED:
        // Its own scroll bar borrows the mouse.
        if (reinterpret_cast<HWND>(lParam) != list && reinterpret_cast<HWND>(lParam) != nullptr)
            dropDown.Close();
        return 0;
    case WM_CANCELMODE:
        dropDown.Close();
        return 0;
    case WM_NCDESTROY: {
        RemoveWindowSubclass(list, &PrvProcedure, kSubclass);
        dropDown.m_list = nullptr;
        break;
    }
    default:
        break;
    }
    return DefSubclassProc(list, message, wParam, lParam);
}

void Win32GridDropDown::PrvMoveMouse(POINT place)
{
    POINT onScreen = place;
    ClientToScreen(m_list, &onScreen);
    // The system also tells of a mouse that rests, when a window appears below it: the marked entry stays.
    if (onScreen.x == m_mouse.x && onScreen.y == m_mouse.y)
        return;
    m_mouse = onScreen;
    PrvMarkAt(place);
}

void Win32GridDropDown::PrvPress(POINT place)
{
    RECT client{};
    GetClientRect(m_list, &client);
    if (PtInRect(&client, place)) {
        PrvMarkAt(place);
        return;
    }
    POINT onScreen = place;
    ClientToScreen(m_list, &onScreen);
    const LRESULT part = SendMessageW(m_list, WM_NCHITTEST, 0, MAKELPARAM(onScreen.x, onScreen.y));
    if (part != HTVSCROLL) {
        Close();
        return;
    }
    ReleaseCapture();
    HWND const list = m_list;
    SendMessageW(list, WM_NCLBUTTONDOWN, static_cast<WPARAM>(part), MAKELPARAM(onScreen.x, onScreen.y));
    // The bar has a loop of its own, in which the grid may end, and this with it.
    if (IsWindow(list) != FALSE)
        SetCapture(list);
}

void Win32GridDropDown::PrvMarkAt(POINT place)
{
    RECT client{};
    GetClientRect(m_list, &client);
    if (!PtInRect(&client, place))
        return;
    const auto hit =
        static_cast<DWORD>(SendMessageW(m_list, LB_ITEMFROMPOINT, 0, MAKELPARAM(place.x, place.y)));
    if (HIWORD(hit) == 0 && SendMessageW(m_list, LB_GETCURSEL, 0, 0) != LOWORD(hit))
        SendMessageW(m_list, LB_SETCURSEL, LOWORD(hit), 0);
}

void Win32GridDropDown::PrvPick()
{
    const LRESULT at = SendMessageW(m_list, LB_GETCURSEL, 0, 0);
    if (at == LB_ERR) {
        Close();
        return;
    }
    const auto number =
        static_cast<std::int32_t>(SendMessageW(m_list, LB_GETITEMDATA, static_cast<WPARAM>(at), 0));
    // The handler may end the grid, and this with it.
    const Picked picked = std::move(m_picked);
    Close();
    if (picked)
        picked(number);
}

} // namespace KestrinProductEditor
