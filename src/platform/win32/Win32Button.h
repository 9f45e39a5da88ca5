// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32ClickTarget.h"
#include "platform/win32/Win32Keys.h"

namespace KestrinProductEditor {

class Win32Button final : public Win32ClickTarget<IButton>
{
public:
    Win32Button(HWND button, Win32Focus& focus, Win32Mnemonics& mnemonics, Win32Keys& keys)
        : Win32ClickTarget(button, focus, mnemonics), m_keys(keys)
    {
    }

    void SetShortcut(Shortcut shortcut) override;

    /// Clicks it as the user would: first it has the focus, then Click is raised. Nothing while it is hidden
    /// or disabled. May end the button.
    void Press();

private:
    void PrvClicked() override { Press(); }

    Win32Keys& m_keys;
};

} // namespace KestrinProductEditor
