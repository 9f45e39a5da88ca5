// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Button.h"

namespace KestrinProductEditor {

void Win32Button::SetShortcut(Shortcut shortcut)
{
    m_keys.Bind(
        shortcut, [this] { return IsOpenToUser(Window()); }, [this] { Press(); });
}

void Win32Button::Press()
{
    // Whoever loses the focus may take the button away.
    if (IsOpenToUser(Window()) && PrvTakeFocus() && IsOpenToUser(Window()))
        Click.Raise();
}

} // namespace KestrinProductEditor
