// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ToolButtons.h"

#include "platform/win32/Win32TextMeasure.h"
#include "platform/win32/Win32Windows.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace KestrinProductEditor {

namespace {

// Added to a command: the gap before its button.
constexpr UINT kGap = 0x4000;

// In pixels, as Scaled takes them.
constexpr int kIconOverText = 4;
constexpr int kAroundAcross = 20; // beside the icon, between it and the text, and behind that
constexpr int kIconToText = 4;
constexpr int kGapWidth = 8;

// The system's own, at every resolution: there are bars that place their icons by it.
constexpr int kAroundDown = 6;

} // namespace

Win32ToolButtons::Win32ToolButtons(HWND bar) : m_bar(bar)
{
    assert((static_cast<DWORD>(GetWindowLongW(bar, GWL_STYLE)) & kStyle) == kStyle);
    SendMessageW(m_bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    SendMessageW(m_bar, TB_SETUNICODEFORMAT, TRUE, 0);
    SendMessageW(m_bar, TB_SETEXTENDEDSTYLE, 0, TBSTYLE_EX_MIXEDBUTTONS | TBSTYLE_EX_DOUBLEBUFFER);
    SendMessageW(m_bar, TB_SETDRAWTEXTFLAGS, DT_NOPREFIX, DT_NOPREFIX);
    // Its name for those who do not see it.
    SetWindowTextW(m_bar, L"Tools");
    SetWindowSubclass(m_bar, &PrvProcedure, reinterpret_cast<UINT_PTR>(this),
                      reinterpret_cast<DWORD_PTR>(this));
}

Win32ToolButtons::~Win32ToolButtons()
{
    if (m_bar == nullptr)
        return;
    RemoveWindowSubclass(m_bar, &PrvProcedure, reinterpret_cast<UINT_PTR>(this));
    SendMessageW(m_bar, TB_SETIMAGELIST, 0, 0);
    SendMessageW(m_bar, TB_SETDISABLEDIMAGELIST, 0, 0);
}

void Win32ToolButtons::Set(std::vector<Button> buttons)
{
    m_buttons = std::move(buttons);
    PrvFill();
}

void Win32ToolButtons::SetEnabled(UINT command, bool bEnabled)
{
    const auto button = std::find_if(m_buttons.begin(), m_buttons.end(),
                                     [command](const Button& one) { return one.command == command; });
    if (button == m_buttons.end() || button->isEnabled == bEnabled)
        return;
    button->isEnabled = bEnabled;
    SendMessageW(m_bar, TB_ENABLEBUTTON, command, MAKELPARAM(bEnabled ? TRUE : FALSE, 0));
}

const std::u16string* Win32ToolButtons::ToolTipOf(UINT command) const
{
    const auto button = std::find_if(m_buttons.begin(), m_buttons.end(),
                                     [command](const Button& one) { return one.command == command; });
    return button == m_buttons.end() ? nullptr : &button->toolTip;
}

LRESULT CALLBACK Win32ToolButtons::PrvProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam,
                                                UINT_PTR id, DWORD_PTR data)
{
    auto& buttons = *reinterpret_cast<Win32ToolButtons*>(data);
    if (message == WM_NCDESTROY) {
        RemoveWindowSubclass(bar, &PrvProcedure, id);
        buttons.m_bar = nullptr;
    }
    const LRESULT result = DefSubclassProc(bar, message, wParam, lParam);
    try {
        buttons.PrvFollow(message);
    } catch (...) { // NOLINT(bugprone-empty-catch): without memory the buttons stay as they are
    }
    return result;
}

void Win32ToolButtons::PrvFollow(UINT message)
{
    switch (message) {
    case WM_SETFONT:
    case WM_DPICHANGED_AFTERPARENT:
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
        PrvFill();
        break;
    case WM_SIZE:
        PrvFit();
        break;
    default:
        break;
    }
}

void Win32ToolButtons::PrvFill()
{
    if (m_buttons.empty())
        return;
    // The bar keeps the sizes of buttons that it has.
    while (SendMessageW(m_bar, TB_DELETEBUTTON, 0, 0) != 0)
        continue;
    const int side = Win32TextMeasure(m_bar).LineHeight() + Scaled(m_bar, kIconOverText);
    PrvMakeIcons(side);
    PrvAddButtons();
    PrvSetSizes(side);
    PrvMeasure();
    PrvFit();
    InvalidateRect(m_bar, nullptr, TRUE);
}

void Win32ToolButtons::PrvMakeIcons(int side)
{
    std::vector<ToolIcon> icons;
    for (const Button& button : m_buttons) {
        if (button.icon != ToolIcon::None)
            icons.push_back(button.icon);
    }
    ImageList present = MakeToolIcons(icons, side, PresentToolIconColours());
    ImageList disabled = MakeToolIcons(icons, side, DisabledToolIconColours());
    SendMessageW(m_bar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(present.get()));
    SendMessageW(m_bar, TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(disabled.get()));
    // The bar shows the ones before no more.
    m_icons = std::move(present);
    m_disabledIcons = std::move(disabled);
}

void Win32ToolButtons::PrvAddButtons()
{
    std::vector<TBBUTTON> added;
    m_shown.clear();
    int icons = 0;
    for (const Button& button : m_buttons) {
        if (button.beginsGroup) {
            TBBUTTON gap = {};
            gap.iBitmap = Scaled(m_bar, kGapWidth);
            gap.idCommand = static_cast<int>(button.command + kGap);
            gap.fsStyle = BTNS_SEP;
            added.push_back(gap);
            m_shown.push_back({.command = button.command + kGap, .right = 0});
        }
        TBBUTTON one = {};
        one.iBitmap = button.icon == ToolIcon::None ? I_IMAGENONE : icons++;
        one.idCommand = static_cast<int>(button.command);
        one.fsState = button.isEnabled ? TBSTATE_ENABLED : 0;
        one.fsStyle = BTNS_BUTTON | BTNS_SHOWTEXT | BTNS_NOPREFIX;
        one.iString = reinterpret_cast<INT_PTR>(button.label.c_str());
        added.push_back(one);
        m_shown.push_back({.command = button.command, .right = 0});
    }
    SendMessageW(m_bar, TB_ADDBUTTONSW, added.size(), reinterpret_cast<LPARAM>(added.data()));
}

void Win32ToolButtons::PrvSetSizes(int side)
{
    // The system's own widths know nothing of the resolution.
    const Win32TextMeasure measure(m_bar);
    SendMessageW(m_bar, TB_SETLISTGAP, static_cast<WPARAM>(Scaled(m_bar, kIconToText)), 0);
    SendMessageW(m_bar, TB_SETBUTTONSIZE, 0, MAKELPARAM(side, side + kAroundDown));
    for (const Button& button : m_buttons) {
        TBBUTTONINFOW info = {};
        info.cbSize = sizeof info;
        info.dwMask = TBIF_SIZE;
        info.cx = static_cast<WORD>(side + measure.Width(button.label) + Scaled(m_bar, kAroundAcross));
        SendMessageW(m_bar, TB_SETBUTTONINFOW, button.command, reinterpret_cast<LPARAM>(&info));
    }
}

void Win32ToolButtons::PrvMeasure()
{
    for (std::size_t at = m_shown.size(); at-- > 0;) {
        RECT place = {};
        SendMessageW(m_bar, TB_GETITEMRECT, at, reinterpret_cast<LPARAM>(&place));
        const bool isGap = (m_shown[at].command & kGap) != 0;
        m_shown[at].right = isGap ? m_shown[at + 1].right : place.right;
        if (!isGap)
            m_height = place.bottom + place.top;
    }
}

void Win32ToolButtons::PrvFit()
{
    RECT inside = {};
    GetClientRect(m_bar, &inside);
    for (Shown& shown : m_shown) {
        const bool fits = shown.right <= inside.right;
        if (fits == shown.isShown)
            continue;
        shown.isShown = fits;
        SendMessageW(m_bar, TB_HIDEBUTTON, shown.command, MAKELPARAM(fits ? FALSE : TRUE, 0));
    }
}

} // namespace KestrinProductEditor
