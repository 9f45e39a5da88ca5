// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace KestrinProductEditor {

/// Raises error 75 for a pipe or a device: a window would wait for its other end, or for an end that it need
/// not have.
void RequireOrdinaryFile(std::u16string_view path);

} // namespace KestrinProductEditor
