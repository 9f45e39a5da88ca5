// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace KestrinProductEditor::CommandLine {

enum class JsonEscapes
{
    Least,      ///< what JSON demands, and surrogates without a partner
    AllButAscii ///< for an output that is not UTF-8
};

/// `text` (UTF-8, platform/Text.h) as a JSON string, quotes included.
[[nodiscard]] std::string JsonString(std::string_view text, JsonEscapes escapes);

} // namespace KestrinProductEditor::CommandLine
