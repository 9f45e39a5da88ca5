// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace KestrinProductEditor {

/// The number of the user's documents folder.
inline constexpr std::int32_t kCsidlPersonal = 5;

/// The absolute path of the special folder with that platform number; empty for an unknown number and for a
/// folder without a path.
[[nodiscard]] std::u16string SpecialFolderPath(std::int32_t folder);

} // namespace KestrinProductEditor
