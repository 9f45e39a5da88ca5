// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace KestrinProductEditor::Win32Clipboard {

/// `owner` is a window of this thread. False when another program keeps the clipboard for itself, or there is
/// no memory for the text.
[[nodiscard]] bool PutText(HWND owner, std::u16string_view text);
/// Empty when there is none, or another program keeps it.
[[nodiscard]] std::u16string Text(HWND owner);

} // namespace KestrinProductEditor::Win32Clipboard
