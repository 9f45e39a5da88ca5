// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ToolTips.h"

#include "platform/win32/Win32Looks.h"
#include "platform/win32/Win32Windows.h"

#include <commctrl.h>

#include <string>

namespace KestrinProductEditor::Win32ToolTips {

namespace {

constexpr UINT_PTR kSubclass = 0x7195;
constexpr wchar_t kTipOf[] = L"KstneditToolTip"; // a property of the window
constexpr int kLongestShowing = 32000;           // milliseconds, the most that the system knows
constexpr int kWidest = 400; // pixels, as Scaled takes them; longer texts are broken into lines

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                           DWORD_PTR /*data*/)
{
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(window, &Procedure, id);
        DestroyWindow(static_cast<HWND>(RemovePropW(window, kTipOf)));
    }
    return DefSubclassProc(window, message, wParam, lParam);
}

[[nodiscard]] TTTOOLINFOW ToolOf(HWND window)
{
    TTTOOLINFOW tool = {};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = GetParent(window);
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    return tool;
}

/// Labels let the mouse through unless they are told otherwise.
void LetFeelMouse(HWND window)
{
    if (IsOfClass(window, WC_STATICW))
        SetWindowLongW(window, GWL_STYLE, GetWindowLongW(window, GWL_STYLE) | SS_NOTIFY);
}

/// With a tip that nothing is said by yet; null when the system has no room.
[[nodiscard]] HWND GiveTip(HWND window)
{
    const HWND tip = Make(window);
    if (tip == nullptr)
        return nullptr;
    if (SetPropW(window, kTipOf, tip) == 0 || SetWindowSubclass(window, &Procedure, kSubclass, 0) == 0) {
        RemovePropW(window, kTipOf);
        DestroyWindow(tip);
        return nullptr;
    }
    LetFeelMouse(window);
    return tip;
}

} // namespace

HWND Make(HWND window)
{
    const Win32Looks looks;
    // In front of its window also where that one stays in front of others.
    const HWND tip =
        CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                        GetAncestor(window, GA_ROOT), nullptr, OwnModule(), nullptr);
    SendMessageW(tip, TTM_SETDELAYTIME, TTDT_AUTOPOP, MAKELPARAM(kLongestShowing, 0));
    return tip;
}

void FollowResolution(HWND tip, HWND window)
{
    SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, Scaled(window, kWidest));
}

void Set(HWND window, std::u16string_view text)
{
    auto* tip = static_cast<HWND>(GetPropW(window, kTipOf));
    if (tip == nullptr && !text.empty())
        tip = GiveTip(window);
    if (tip == nullptr)
        return;
    TTTOOLINFOW tool = ToolOf(window);
    // With nothing to say it goes, so that the mouse finds none.
    SendMessageW(tip, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (text.empty())
        return;
    std::u16string shown(text);
    tool.lpszText = Wide(shown.data());
    FollowResolution(tip, window);
    SendMessageW(tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

} // namespace KestrinProductEditor::Win32ToolTips
