// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/pictures/Win32Camera.h"

#include <windows.h>

#include <string_view>

namespace KestrinProductEditor {

/// The camera of this program, and what the pictures are called after: the look of the desktop (light, dark
/// or mirrored) and its scale in percent. The program's main function makes it.
[[nodiscard]] const Win32Camera& PictureCamera();

/// Takes a picture of a window, and fails for every fault of its layout.
void TakeAndAudit(HWND window, std::string_view name, std::string_view size = {});
/// The same in its own size, in that of the smallest screen and in that of a large one; the window keeps its
/// own.
void TakeAndAuditAtEverySize(HWND window, std::string_view name);

} // namespace KestrinProductEditor
