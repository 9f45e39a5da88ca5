// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string_view>

namespace KestrinProductEditor::Win32ToolTips {

/// The tool tip of a window; empty takes it away. It ends with the window.
void Set(HWND window, std::u16string_view text);

/// A window for tips (TTM_ADDTOOL) over parts of `window`, which shows them letter for letter and stays as
/// long as the system lets it. It ends with the window around them all. Null when the system has no room.
[[nodiscard]] HWND Make(HWND window);
/// Breaks texts into lines that suit the screen that `window` is on.
void FollowResolution(HWND tip, HWND window);

} // namespace KestrinProductEditor::Win32ToolTips
