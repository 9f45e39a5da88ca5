// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string_view>

namespace KestrinProductEditor::Win32ToolTips {

/// The tool tip of a window; empty takes it away. It ends with the window.
void Set(HWND window, std::u16string_view text);

} // namespace KestrinProductEditor::Win32ToolTips
