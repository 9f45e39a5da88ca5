// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace KestrinProductEditor {

/// Whether `path` names a file that can be read more than once, and comes to an end: no pipe, no socket, no
/// device. True also when that cannot be told; opening it says why.
[[nodiscard]] bool IsRereadable(std::u16string_view path);

/// Whether both paths lead to one file: in another spelling, by a link, or by a second name of the file. Two
/// paths to a file that is not there yet count as well. False when it cannot be told.
[[nodiscard]] bool AreSameFile(std::u16string_view left, std::u16string_view right);

} // namespace KestrinProductEditor
