// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <olectl.h>

namespace KestrinProductEditor {

/// What the controls of a window tell it (WM_COMMAND, WM_NOTIFY, WM_CTLCOLOR..., WM_DRAWITEM) comes back to
/// the control itself as that message + OCM__BASE: OCM_COMMAND, OCM_NOTIFY, OCM_CTLCOLOREDIT. A control that
/// answers nothing leaves the message to the system.
///
/// From now on, until `window` ends.
void ReflectToControls(HWND window);

} // namespace KestrinProductEditor
