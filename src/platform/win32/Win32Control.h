// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32Focus.h"
#include "platform/win32/Win32ToolTips.h"

#include <windows.h>

#include <string_view>

namespace KestrinProductEditor {

/// What every control does the same way, over a window of the layout. The window belongs to its form.
template<class Interface>
class Win32Control : public Interface
{
public:
    /// `keyWindow` is where its keys go; null for a control that never has the focus.
    Win32Control(HWND window, HWND keyWindow, Win32Focus& focus) : m_window(window), m_focus(focus)
    {
        m_focus.Add(*this, keyWindow);
    }

    void SetFocus() override { m_focus.Set(*this); }
    [[nodiscard]] bool HasFocus() const override { return m_focus.Current() == this; }

    void SetVisible(bool bVisible) override
    {
        m_isVisible = bVisible;
        ShowWindow(m_window, bVisible ? SW_SHOWNA : SW_HIDE);
        if (!bVisible)
            m_focus.Leave(*this);
    }
    [[nodiscard]] bool IsVisible() const override { return m_isVisible; }

    void SetEnabled(bool bEnabled) override
    {
        m_isEnabled = bEnabled;
        EnableWindow(m_window, bEnabled);
        if (!bEnabled)
            m_focus.Leave(*this);
    }
    [[nodiscard]] bool IsEnabled() const override { return m_isEnabled; }

    void SetToolTip(std::u16string_view text) override { Win32ToolTips::Set(m_window, text); }

    [[nodiscard]] HWND Window() const { return m_window; }

protected:
    [[nodiscard]] Win32Focus& Focus() const { return m_focus; }

private:
    HWND m_window;
    Win32Focus& m_focus;
    bool m_isVisible = true;
    bool m_isEnabled = true;
};

} // namespace KestrinProductEditor
