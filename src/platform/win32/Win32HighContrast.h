// SPDX-License-Identifier: MIT
#pragma once

namespace KestrinProductEditor {

/// Whether the user has asked for high contrast: then every colour is one of the system's.
[[nodiscard]] bool IsHighContrast() noexcept;

} // namespace KestrinProductEditor
