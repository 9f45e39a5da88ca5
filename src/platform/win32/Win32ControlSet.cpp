// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ControlSet.h"

#include "platform/win32/Win32Button.h"
#include "platform/win32/Win32CheckBox.h"
#include "platform/win32/Win32Grid.h"
#include "platform/win32/Win32Label.h"
#include "platform/win32/Win32ProgressBar.h"
#include "platform/win32/Win32Reflection.h"
#include "platform/win32/Win32TextBox.h"
#include "platform/win32/Win32ToolBar.h"
#include "platform/win32/Win32Windows.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

/// Arrow keys go around among buttons of one kind that stand next to each other, and nowhere else: a label or
/// a bar would take the focus.
void GroupButtons(HWND surface)
{
    constexpr LONG kNoButton = -1;
    LONG before = kNoButton;
    for (HWND child = GetWindow(surface, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
        const LONG style = GetWindowLongW(child, GWL_STYLE);
        const LONG kind = IsOfClass(child, WC_BUTTONW) ? style & BS_TYPEMASK : kNoButton;
        if (kind == kNoButton || kind != before)
            SetWindowLongW(child, GWL_STYLE, style | WS_GROUP);
        before = kind;
    }
}

/// What a label in front of it names; null for a label that names nothing.
[[nodiscard]] HWND BuddyOf(HWND label)
{
    const bool isPlain = (GetWindowLongW(label, GWL_STYLE) & SS_NOPREFIX) != 0;
    return isPlain ? nullptr : GetWindow(label, GW_HWNDNEXT);
}

} // namespace

Win32ControlSet::Win32ControlSet(HWND surface, const Win32Layout& layout) : m_layout(layout), m_focus(surface)
{
    ReflectToControls(surface);
    GroupButtons(surface);
    for (Win32Layout::Named& named : layout.Controls()) {
        if (std::unique_ptr<IControl> control = PrvMake(named.window)) {
            m_controls.push_back(
                {.name = std::move(named.name), .window = named.window, .control = std::move(control)});
        }
    }
}

Win32ControlSet::~Win32ControlSet() = default;

HWND Win32ControlSet::WindowOf(std::u16string_view name) const
{
    return m_layout.WindowOf(name);
}

std::u16string Win32ControlSet::NameOf(HWND window) const
{
    const auto found = std::find_if(m_controls.begin(), m_controls.end(), [window](const Named& named) {
        return named.window == window || IsChild(named.window, window) != 0;
    });
    return found == m_controls.end() ? std::u16string() : found->name;
}

const Win32ToolBar* Win32ControlSet::FindToolBar() const
{
    for (const Named& named : m_controls) {
        if (const auto* const bar = dynamic_cast<const Win32ToolBar*>(named.control.get()))
            return bar;
    }
    return nullptr;
}

Win32Button* Win32ControlSet::FindButton(HWND window) const
{
    for (const Named& named : m_controls) {
        if (named.window == window)
            return dynamic_cast<Win32Button*>(named.control.get());
    }
    return nullptr;
}

std::unique_ptr<IControl> Win32ControlSet::PrvMake(HWND window)
{
    if (IsOfClass(window, Win32GridView::kClassName))
        return std::make_unique<Win32Grid>(window, m_focus);
    if (IsOfClass(window, WC_EDITW))
        return std::make_unique<Win32TextBox>(window, m_focus);
    if (IsOfClass(window, Win32ProgressBar::kClassName))
        return std::make_unique<Win32ProgressBar>(window, m_focus);
    const LONG style = GetWindowLongW(window, GWL_STYLE);
    if (IsOfClass(window, WC_BUTTONW)) {
        if ((style & BS_TYPEMASK) == BS_AUTOCHECKBOX)
            return std::make_unique<Win32CheckBox>(window, m_focus, m_mnemonics);
        return std::make_unique<Win32Button>(window, m_focus, m_mnemonics, m_keys);
    }
    if (IsOfClass(window, WC_STATICW) && (style & SS_TYPEMASK) == SS_LEFT)
        return std::make_unique<Win32Label>(window, BuddyOf(window), m_focus, m_mnemonics);
    if (IsOfClass(window, TOOLBARCLASSNAMEW)) {
        return std::make_unique<Win32ToolBar>(window, m_focus, m_mnemonics, m_keys,
                                              [this](std::u16string_view name) {
                                                  const IControl* const control = PrvFind(name);
                                                  return control != nullptr && m_focus.Current() == control;
                                              });
    }
    return nullptr;
}

IControl* Win32ControlSet::PrvFind(std::u16string_view name) const
{
    const auto found = std::find_if(m_controls.begin(), m_controls.end(),
                                    [name](const Named& named) { return named.name == name; });
    return found == m_controls.end() ? nullptr : found->control.get();
}

} // namespace KestrinProductEditor
