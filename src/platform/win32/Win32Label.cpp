// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Label.h"

#include "platform/win32/Win32TextMeasure.h"
#include "platform/windows/WideText.h"

#include <commctrl.h>

#include <algorithm>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] LONG StyleOf(HWND label)
{
    return GetWindowLongW(label, GWL_STYLE);
}

[[nodiscard]] bool IsOneLine(HWND label)
{
    return (StyleOf(label) & SS_ELLIPSISMASK) != 0;
}

[[nodiscard]] std::u16string InOneLine(std::u16string_view text)
{
    std::u16string line(text);
    std::replace_if(
        line.begin(), line.end(),
        [](char16_t unit) { return unit == u'\r' || unit == u'\n' || unit == u'\t'; }, u' ');
    return line;
}

} // namespace

Win32Label::Win32Label(HWND label, HWND buddy, Win32Focus& focus, Win32Mnemonics& mnemonics)
    : Win32Control(label, nullptr, focus), m_mnemonics(mnemonics)
{
    SetWindowSubclass(label, &PrvProcedure, reinterpret_cast<UINT_PTR>(this),
                      reinterpret_cast<DWORD_PTR>(this));
    if (buddy == nullptr) {
        SetWindowLongW(label, GWL_STYLE, StyleOf(label) | SS_NOPREFIX);
        return;
    }
    SetWindowLongW(label, GWL_STYLE, StyleOf(label) & ~LONG{SS_NOPREFIX});
    m_bearer = mnemonics.Add(Win32Mnemonics::Rank::Label, Win32Mnemonics::In(label));
}

Win32Label::~Win32Label()
{
    RemoveWindowSubclass(Window(), &PrvProcedure, reinterpret_cast<UINT_PTR>(this));
}

void Win32Label::SetCaption(std::u16string_view caption)
{
    m_caption = caption;
    const std::u16string shown = IsOneLine(Window()) ? InOneLine(caption) : m_caption;
    if (m_bearer)
        m_mnemonics.SetCaption(*m_bearer, shown);
    else
        SetWindowTextW(Window(), Wide(shown.c_str()));
    PrvShowToolTip();
}

void Win32Label::SetToolTip(std::u16string_view text)
{
    m_toolTip = text;
    PrvShowToolTip();
}

LRESULT CALLBACK Win32Label::PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR data)
{
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &PrvProcedure, id);
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (message == WM_SIZE || message == WM_SETFONT) {
        try {
            reinterpret_cast<Win32Label*>(data)->PrvShowToolTip();
        } catch (...) { // NOLINT(bugprone-empty-catch): a label without a tip is legible yet
        }
    }
    return result;
}

bool Win32Label::PrvIsCut() const
{
    RECT inside = {};
    GetClientRect(Window(), &inside);
    const Win32TextMeasure measure(Window());
    if (IsOneLine(Window()))
        return measure.Place(InOneLine(m_caption), 0, DT_SINGLELINE | DT_NOPREFIX).right > inside.right;
    const bool breaksWords = (StyleOf(Window()) & SS_EDITCONTROL) == SS_EDITCONTROL;
    const RECT place =
        measure.Place(m_caption, inside.right,
                      DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX | (breaksWords ? DT_EDITCONTROL : 0U));
    return place.right > inside.right || place.bottom > inside.bottom;
}

void Win32Label::PrvShowToolTip()
{
    const std::u16string& text = PrvIsCut() ? m_caption : m_toolTip;
    if (text == m_shownToolTip)
        return;
    m_shownToolTip = text;
    Win32Control::SetToolTip(text);
}

} // namespace KestrinProductEditor
