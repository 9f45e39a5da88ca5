// SPDX-License-Identifier: MIT
#include "kstnedit/CsvText.h"

namespace KestrinProductEditor::CommandLine {

void AppendCsvValue(std::string_view value, std::string& line)
{
    if (!line.empty())
        line += ',';
    const bool needsQuotes = value.empty() || value.find_first_of(",\"\r\n\t") != std::string_view::npos ||
                             value.front() == ' ' || value.back() == ' ';
    if (!needsQuotes) {
        line += value;
        return;
    }
    line += '"';
    for (const char character : value) {
        if (character == '"')
            line += '"';
        line += character;
    }
    line += '"';
}

} // namespace KestrinProductEditor::CommandLine
