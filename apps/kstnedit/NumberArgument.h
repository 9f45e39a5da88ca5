// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace KestrinProductEditor::CommandLine {

/// The whole number that `text` writes with decimal digits and nothing else but a minus sign before them;
/// nothing for any other text and for one that does not fit.
[[nodiscard]] std::optional<std::int32_t> WholeNumber(std::string_view text);

// Checks for arguments (CLI::Option::check): the empty text when `text` is right, else what is wrong with it.

[[nodiscard]] std::string CheckRowIdentifier(const std::string& text);
[[nodiscard]] std::string CheckCount(const std::string& text);

/// The number of an argument that was checked so.
[[nodiscard]] std::int32_t CheckedNumber(std::string_view text);

} // namespace KestrinProductEditor::CommandLine
