// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/ImportMapping.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// What an import tells about its file beyond the store's counts.
namespace KestrinProductEditor::CommandLine {

enum class FirstLine
{
    Titles,
    Product
};

/// The columns of the first line (UTF-8); none of an empty file. Errors of the file services.
[[nodiscard]] std::vector<std::string> ReadTitles(std::u16string_view path);

/// Lines that were imported, but perhaps not as they were meant.
struct ImportDoubts
{
    struct Lines
    {
        std::uint64_t count = 0;
        std::uint64_t firstLine = 0; ///< in the file, from 1

        void Add(std::uint64_t line);
    };

    /// Their price is below zero or above the highest: the product has the price 0.
    Lines zeroedPrices;
    /// A text of theirs is longer than its field: the product has the beginning of it.
    Lines cutTexts;
    /// They have more columns than the titles: perhaps a comma in a value without quotes.
    Lines widerThanTitles;
};

[[nodiscard]] ImportDoubts FindDoubts(std::u16string_view path, const ImportMapping& mapping,
                                      FirstLine firstLine);

} // namespace KestrinProductEditor::CommandLine
