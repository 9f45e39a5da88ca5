// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

enum class FirstLine
{
    Titles,
    Product
};

/// What a person needs to see of a CSV file to say which column is what.
struct CsvSample
{
    /// One for each column of the first line: its title, or "Column 1" and so on where it has none.
    std::vector<std::u16string> columnNames;
    /// The cells of the lines behind the first, five at most; each has as many as there are column names.
    std::vector<std::vector<std::u16string>> lines;
};

/// Reads the sample as an import would read the file. Names and cells are without the blanks around them. The
/// first line counts the columns and gives the names when it holds titles; it is never a sample line. An
/// empty file gives an empty sample. Of very many columns the first 10,000 are shown.
///
/// Errors: those of the file services, 75 for a pipe or a device, and 321 when the first line has no columns
/// or another line has another number of them.
[[nodiscard]] CsvSample ReadCsvSample(std::u16string_view path, FirstLine firstLine);

} // namespace KestrinProductEditor
