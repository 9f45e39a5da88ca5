// SPDX-License-Identifier: MIT
#pragma once

#include "exchange/csv/CsvBlock.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The columns of one line, as modUtil::SplitQuoted gives them, without a copy where none is needed.
///
/// A comma outside double quotes separates; double quotes are taken out wherever they stand; one that is not
/// closed reaches to the end of the line; blanks are kept. An empty line has no columns. Line ends have no
/// meaning here.
class CsvColumns
{
public:
    /// Splits `line`, whose bytes must stay in place while columns are read.
    void Split(std::string_view line);

    /// From the next line on, only the first `most` columns can be read; the others are counted and cost no
    /// memory.
    void Keep(std::size_t most) noexcept { m_most = most; }

    [[nodiscard]] std::size_t Count() const noexcept { return m_count; }

    /// Column `index`, from 0: a view of the line, or text in `scratch` where quotes inside had to go. A
    /// column that is not asked for costs nothing. Requires: index < Count(), and it is kept.
    [[nodiscard]] std::string_view Column(std::size_t index, std::string& scratch) const;
    /// Whether a quote that is taken out stands at the very beginning of that column. Requires: as Column.
    [[nodiscard]] bool BeginsWithQuote(std::size_t index) const { return PrvPiece(index).starts_with('"'); }

private:
    friend class CsvLineReader; // takes the blocks of a line while it looks for the line's end

    void PrvBegin() noexcept;
    /// Takes the next block of the line, which begins at `offset` in it. `inLine` has the bits of the line's
    /// bytes: all, or in the last block the lowest.
    void PrvTake(const CsvBlock& block, std::uint64_t inLine, std::size_t offset);
    /// Requires: all blocks of `line` were taken.
    void PrvEnd(std::string_view line) noexcept;
    /// The column as it stands in the line.
    [[nodiscard]] std::string_view PrvPiece(std::size_t index) const;

    std::string_view m_line;
    std::vector<std::size_t> m_ends; // of the first m_count columns, as far as they are kept
    std::size_t m_count = 0;
    std::size_t m_most = std::numeric_limits<std::size_t>::max();
    // Whether a quote stands elsewhere than at the first or the last place of its column.
    bool m_hasInnerQuotes = false;

    // What one block hands to the next.
    std::uint64_t m_insideQuotes = 0; // all bits or none
    std::uint64_t m_afterSeparator = 0;
    std::uint64_t m_afterLooseQuote = 0;
};

} // namespace KestrinProductEditor
