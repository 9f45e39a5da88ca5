// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace KestrinProductEditor::CommandLine {

/// Appends one value of a CSV line of the program's own, with a comma before it unless `line` is empty. It
/// stands in quotes, those inside doubled, where it could be misread otherwise; the empty value always does.
void AppendCsvValue(std::string_view value, std::string& line);

} // namespace KestrinProductEditor::CommandLine
