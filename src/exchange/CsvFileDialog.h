// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Toolkit.h"

#include <optional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// Asks for a CSV file, beginning at `start` or, when that is empty, in the user's documents folder.
/// Nothing when the dialog was cancelled.
[[nodiscard]] std::optional<std::u16string> ChooseCsvFile(FileDialog::Kind kind, std::u16string_view title,
                                                          std::u16string_view start);

} // namespace KestrinProductEditor
