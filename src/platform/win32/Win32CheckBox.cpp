// SPDX-License-Identifier: MIT
#include "platform/win32/Win32CheckBox.h"

namespace KestrinProductEditor {

void Win32CheckBox::SetValue(std::int32_t value)
{
    const std::int32_t ticked = value == 1 ? 1 : 0;
    if (ticked == m_value)
        return;
    m_value = ticked;
    PrvShow();
    Click.Raise();
}

void Win32CheckBox::PrvClicked()
{
    // The window has ticked itself already.
    if (!IsOpenToUser(Window())) {
        PrvShow();
        return;
    }
    m_value = SendMessageW(Window(), BM_GETCHECK, 0, 0) == BST_CHECKED ? 1 : 0;
    if (PrvTakeFocus())
        Click.Raise();
}

void Win32CheckBox::PrvShow()
{
    SendMessageW(Window(), BM_SETCHECK, m_value == 1 ? BST_CHECKED : BST_UNCHECKED, 0);
}

} // namespace KestrinProductEditor
