// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// Texts on a terminal. All texts are UTF-8 (platform/Text.h).
namespace KestrinProductEditor::CommandLine {

/// `text` on one line and without a character that could act on the terminal: a line break or another control
/// character becomes its picture, anything else that is invisible and changes the line U+FFFD.
[[nodiscard]] std::string Visible(std::string_view text);

/// The columns that `text` takes on a terminal.
[[nodiscard]] std::size_t DisplayWidth(std::string_view text);

/// `text` itself when it takes no more than `columns`, else a head of it and `ellipsis` that together do. The
/// ellipsis itself is cut in fewer columns than it has.
[[nodiscard]] std::string CutToWidth(std::string_view text, std::size_t columns, std::string_view ellipsis);

/// "1 product", "2 products".
[[nodiscard]] std::string Counted(std::uint64_t count, std::string_view noun);

} // namespace KestrinProductEditor::CommandLine
