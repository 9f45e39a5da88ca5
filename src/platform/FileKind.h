// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace KestrinProductEditor {

/// Whether `path` names a file that can be read more than once, and comes to an end: no pipe, no socket, no
/// device. True also when that cannot be told; opening it says why.
[[nodiscard]] bool IsRereadable(std::u16string_view path);

} // namespace KestrinProductEditor
