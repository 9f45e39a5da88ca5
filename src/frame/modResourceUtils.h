// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

namespace KestrinProductEditor::modResourceUtils {

/// The resource string with that identifier (modResourceDefs); "### Resource string not found ###" when there
/// is none. Never fails.
[[nodiscard]] std::u16string GetResString(std::int32_t lResID);

} // namespace KestrinProductEditor::modResourceUtils
