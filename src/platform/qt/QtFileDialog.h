// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Toolkit.h"

#include <optional>
#include <string>

namespace KestrinProductEditor {

/// Shows the file dialog in front of the form in front. See IToolkit::ChooseFile.
[[nodiscard]] std::optional<std::u16string> ShowFileDialog(const FileDialog& dialog);

} // namespace KestrinProductEditor
