// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace KestrinProductEditor::modShell {

/// The path of the special folder `folder` (kCsidlPersonal is the user's documents), for a dialog whose
/// window is `hwndOwner`; empty when there is none.
[[nodiscard]] std::u16string GetSpecialFolderPath(std::int32_t hwndOwner, std::int32_t folder);

} // namespace KestrinProductEditor::modShell
