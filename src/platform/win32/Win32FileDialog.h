// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Toolkit.h"

#include <windows.h>

#include <optional>
#include <string>

namespace KestrinProductEditor {

/// Shows the system's file dialog in front of `owner`; null: in front of whatever window of this thread the
/// user works in. See IToolkit::ChooseFile.
[[nodiscard]] std::optional<std::u16string> ShowFileDialog(const FileDialog& dialog, HWND owner);

} // namespace KestrinProductEditor
