// SPDX-License-Identifier: MIT
#include "exchange/csv/CsvColumns.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

namespace KestrinProductEditor {

namespace {

/// Bit i of the answer is the parity of the bits 0 to i: set from each opening quote up to its closing quote.
std::uint64_t ParityUpTo(std::uint64_t bits) noexcept
{
    for (unsigned int step = 1; step < 64; step *= 2) {
        bits ^= bits << step;
    }
    return bits;
}

} // namespace

void CsvColumns::Split(std::string_view line)
{
    PrvBegin();
    std::size_t offset = 0;
    for (; line.size() - offset >= kCsvBlockSize; offset += kCsvBlockSize) {
        PrvTake(FindInBlock(line.data() + offset), ~std::uint64_t{0}, offset);
    }
    if (const std::size_t left = line.size() - offset; left > 0) {
        char padded[kCsvBlockSize] = {};
        std::memcpy(padded, line.data() + offset, left);
        PrvTake(FindInBlock(padded), (std::uint64_t{1} << left) - 1, offset);
    }
    PrvEnd(line);
}

void CsvColumns::PrvBegin() noexcept
{
    m_line = {};
    m_count = 0;
    m_hasInnerQuotes = false;
    m_insideQuotes = 0;
    m_afterSeparator = 1;
    m_afterLooseQuote = 0;
}

void CsvColumns::PrvTake(const CsvBlock& block, std::uint64_t inLine, std::size_t offset)
{
    // Room for every byte of the block and for the end of the line.
    if (m_count < m_most && m_ends.size() - m_count <= kCsvBlockSize) {
        m_ends.resize(std::max(2 * m_ends.size(), 2 * kCsvBlockSize));
    }

    std::uint64_t separators = block.separators & inLine;
    if (const std::uint64_t quotes = block.quotes & inLine;
        (quotes | m_insideQuotes | m_afterLooseQuote) != 0) {
        const std::uint64_t inside = ParityUpTo(quotes) ^ m_insideQuotes;
        m_insideQuotes = std::uint64_t{0} - (inside >> 63);
        separators &= ~inside;

        // A quote that does not begin its column is loose; when the column does not end behind it either, it
        // is an inner one.
        const std::uint64_t ends = separators | ~inLine;
        const std::uint64_t loose = quotes & ~((separators << 1) | m_afterSeparator);
        m_hasInnerQuotes |= (((loose << 1) | m_afterLooseQuote) & ~ends) != 0;
        m_afterLooseQuote = loose >> 63;
    }
    m_afterSeparator = separators >> 63;

    if (m_count >= m_most) {
        m_count += static_cast<std::size_t>(std::popcount(separators));
        return;
    }
    for (; separators != 0; separators &= separators - 1) {
        m_ends[m_count] = offset + static_cast<std::size_t>(std::countr_zero(separators));
        ++m_count;
    }
}

void CsvColumns::PrvEnd(std::string_view line) noexcept
{
    m_line = line;
    if (!line.empty()) {
        if (m_count < m_most) {
            m_ends[m_count] = line.size();
        }
        ++m_count;
    }
}

std::string_view CsvColumns::PrvPiece(std::size_t index) const
{
    assert(index < m_count);
    const std::size_t begin = index == 0 ? 0 : m_ends[index - 1] + 1;
    return m_line.substr(begin, m_ends[index] - begin);
}

std::string_view CsvColumns::Column(std::size_t index, std::string& scratch) const
{
    constexpr char kQuote = '"';
    std::string_view column = PrvPiece(index);
    if (!m_hasInnerQuotes) {
        if (column.starts_with(kQuote)) {
            column.remove_prefix(1);
        }
        if (column.ends_with(kQuote)) {
            column.remove_suffix(1);
        }
        return column;
    }

    std::size_t quote = column.find(kQuote);
    if (quote == std::string_view::npos) {
        return column;
    }
    scratch.clear();
    while (quote != std::string_view::npos) {
        scratch.append(column.substr(0, quote));
        column.remove_prefix(quote + 1);
        quote = column.find(kQuote);
    }
    scratch.append(column);
    return scratch;
}

} // namespace KestrinProductEditor
