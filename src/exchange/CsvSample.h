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
    /// One for each column of the first line: its title, or "Column 1" and so on when that line is a product.
    std::vector<std::u16string> columnNames;
    /// The cells of the lines behind the first, five at most; each has as many as there are column names.
    std::vector<std::vector<std::u16string>> lines;
};

/// Reads the sample as an import would read the file, but takes the blanks from the ends of a name or cell
/// that does not begin with a quote. The first line counts the columns and gives the names when it holds
/// titles; it is never a sample line. An empty file gives an empty sample. Of very many columns the first
/// 10,000 are shown.
///
/// Errors: those of the file services, 75 for a pipe or a device, and 321 when the first line has no columns,
/// another line has another number of them, or the first lines go on for megabytes.
[[nodiscard]] CsvSample ReadCsvSample(std::u16string_view path, FirstLine firstLine);

} // namespace KestrinProductEditor
