// SPDX-License-Identifier: MIT
#include "store/table/RowOrder.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace KestrinProductEditor {

namespace {

// Blocks of a whole new sequence leave room for a few inserts each before they split.
constexpr std::size_t kRowsOfNewBlock = RowOrder::kBlockRows / 8 * 7;

} // namespace

RowNumber RowOrder::First() const noexcept
{
    return IsEmpty() ? kNoRow : BlockAt(0).front();
}

RowNumber RowOrder::Last() const noexcept
{
    return IsEmpty() ? kNoRow : BlockAt(m_sequence.size() - 1).back();
}

RowNumber RowOrder::At(std::size_t place) const noexcept
{
    assert(place < m_size);
    std::size_t ordinal = m_hintOrdinal;
    std::size_t first = m_hintPlace;
    if (place < first && place < first - place) {
        ordinal = 0;
        first = 0;
    }
    while (place < first)
        first -= m_sequence[--ordinal].count;
    while (place - first >= m_sequence[ordinal].count)
        first += m_sequence[ordinal++].count;
    m_hintOrdinal = ordinal;
    m_hintPlace = first;
    m_hintIndex = place - first;
    return BlockAt(ordinal)[m_hintIndex];
}

std::size_t RowOrder::PlaceOf(RowNumber row) const noexcept
{
    const Location location = PrvLocate(row);
    std::size_t ordinal = m_hintOrdinal;
    std::size_t first = m_hintPlace;
    while (ordinal > location.ordinal)
        first -= m_sequence[--ordinal].count;
    while (ordinal < location.ordinal)
        first += m_sequence[ordinal++].count;
    m_hintOrdinal = ordinal;
    m_hintPlace = first;
    return first + location.index;
}

RowNumber RowOrder::Next(RowNumber row) const noexcept
{
    const Location location = PrvLocate(row);
    const std::span<const RowNumber> rows = BlockAt(location.ordinal);
    // Whoever walks will want the rows behind, too.
    if (location.index + kRecordsAhead < rows.size()) {
        m_store.PrefetchRecord(rows[location.index + kRecordsAhead]);
        m_store.PrefetchTexts(rows[location.index + kTextsAhead]);
    }
    if (location.index + 1 < rows.size())
        return rows[location.index + 1];
    return location.ordinal + 1 < m_sequence.size() ? BlockAt(location.ordinal + 1).front() : kNoRow;
}

RowNumber RowOrder::Previous(RowNumber row) const noexcept
{
    const Location location = PrvLocate(row);
    if (location.index > 0)
        return BlockAt(location.ordinal)[location.index - 1];
    return location.ordinal > 0 ? BlockAt(location.ordinal - 1).back() : kNoRow;
}

void RowOrder::InsertBefore(RowNumber row, RowNumber next)
{
    assert(!Contains(row));
    if (IsEmpty())
        PrvAddBlock(0);
    Location location{m_sequence.size() - 1, m_sequence.back().count};
    if (next != kNoRow)
        location = PrvLocate(next);
    if (m_sequence[location.ordinal].count == kBlockRows) {
        if (next == kNoRow) {
            // Rows that arrive in order fill block after block.
            PrvAddBlock(location.ordinal + 1);
            location = {location.ordinal + 1, 0};
        } else {
            PrvSplit(location.ordinal);
            location = PrvLocate(next);
        }
    }
    Entry& entry = m_sequence[location.ordinal];
    RowNumber* const rows = PrvBlock(location.ordinal).rows;
    std::copy_backward(rows + location.index, rows + entry.count, rows + entry.count + 1);
    rows[location.index] = row;
    ++entry.count;
    ++m_size;
    m_store.SetTag(row, entry.slot + 1);
    if (location.ordinal < m_hintOrdinal)
        ++m_hintPlace;
}

void RowOrder::Remove(RowNumber row) noexcept
{
    assert(Contains(row));
    const Location location = PrvLocate(row);
    Entry& entry = m_sequence[location.ordinal];
    RowNumber* const rows = PrvBlock(location.ordinal).rows;
    std::copy(rows + location.index + 1, rows + entry.count, rows + location.index);
    --entry.count;
    --m_size;
    m_store.SetTag(row, 0);
    if (location.ordinal < m_hintOrdinal)
        --m_hintPlace;
    if (entry.count == 0)
        PrvRemoveBlock(location.ordinal);
}

void RowOrder::Assign(std::span<const RowNumber> rows)
{
    const std::size_t blockCount = (rows.size() + kRowsOfNewBlock - 1) / kRowsOfNewBlock;
    std::vector<std::unique_ptr<Block>> blocks;
    std::vector<Entry> sequence;
    std::vector<std::uint32_t> freeSlots;
    blocks.reserve(blockCount);
    sequence.reserve(blockCount);
    freeSlots.reserve(blockCount);
    for (std::size_t begin = 0; begin < rows.size(); begin += kRowsOfNewBlock) {
        const std::span<const RowNumber> part =
            rows.subspan(begin, std::min(kRowsOfNewBlock, rows.size() - begin));
        const auto ordinal = static_cast<std::uint32_t>(blocks.size());
        blocks.push_back(std::make_unique_for_overwrite<Block>());
        blocks.back()->ordinal = ordinal;
        std::copy(part.begin(), part.end(), blocks.back()->rows);
        sequence.push_back({ordinal, static_cast<std::uint32_t>(part.size())});
    }
    m_blocks = std::move(blocks);
    m_sequence = std::move(sequence);
    m_freeSlots = std::move(freeSlots);
    m_size = rows.size();
    m_hintIndex = m_hintOrdinal = m_hintPlace = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (i + kRecordsAhead < rows.size())
            m_store.PrefetchRecord(rows[i + kRecordsAhead]);
        m_store.SetTag(rows[i], static_cast<std::uint32_t>(i / kRowsOfNewBlock) + 1);
    }
}

void RowOrder::Clear() noexcept
{
    m_blocks.clear();
    m_freeSlots.clear();
    m_sequence.clear();
    m_size = 0;
    m_hintIndex = m_hintOrdinal = m_hintPlace = 0;
}

RowOrder::Location RowOrder::PrvLocate(RowNumber row) const noexcept
{
    assert(Contains(row));
    const Block& block = *m_blocks[m_store.Tag(row) - 1];
    const std::size_t count = m_sequence[block.ordinal].count;
    // A walk asks for the row of the last time or for its neighbour.
    std::size_t index = m_hintIndex;
    if (index >= count || block.rows[index] != row) {
        ++index;
        if (index >= count || block.rows[index] != row)
            index = static_cast<std::size_t>(std::find(block.rows, block.rows + count, row) - block.rows);
    }
    m_hintIndex = index;
    return {block.ordinal, index};
}

void RowOrder::PrvAddBlock(std::size_t ordinal)
{
    // Everything that can fail comes first.
    m_sequence.reserve(m_sequence.size() + 1);
    auto block = std::make_unique_for_overwrite<Block>();
    if (m_freeSlots.empty()) {
        m_freeSlots.reserve(m_blocks.size() + 1); // so that a removal cannot fail
        m_blocks.emplace_back();
        m_freeSlots.push_back(static_cast<std::uint32_t>(m_blocks.size() - 1));
    }
    const std::uint32_t slot = m_freeSlots.back();
    m_freeSlots.pop_back();
    m_blocks[slot] = std::move(block);
    m_sequence.insert(m_sequence.begin() + static_cast<std::ptrdiff_t>(ordinal), Entry{slot, 0});
    PrvRenumber(ordinal);
    m_hintOrdinal = m_hintPlace = 0;
}

void RowOrder::PrvRemoveBlock(std::size_t ordinal) noexcept
{
    const std::uint32_t slot = m_sequence[ordinal].slot;
    m_blocks[slot].reset();
    m_freeSlots.push_back(slot); // there is room for every slot
    m_sequence.erase(m_sequence.begin() + static_cast<std::ptrdiff_t>(ordinal));
    PrvRenumber(ordinal);
    m_hintOrdinal = m_hintPlace = 0;
}

void RowOrder::PrvRenumber(std::size_t from) noexcept
{
    for (std::size_t ordinal = from; ordinal < m_sequence.size(); ++ordinal)
        PrvBlock(ordinal).ordinal = static_cast<std::uint32_t>(ordinal);
}

void RowOrder::PrvSplit(std::size_t ordinal)
{
    constexpr std::size_t kHalf = kBlockRows / 2;
    PrvAddBlock(ordinal + 1);
    const RowNumber* const from = PrvBlock(ordinal).rows;
    RowNumber* const to = PrvBlock(ordinal + 1).rows;
    std::copy(from + kHalf, from + kBlockRows, to);
    m_sequence[ordinal].count = kHalf;
    m_sequence[ordinal + 1].count = kBlockRows - kHalf;
    for (std::size_t i = 0; i < kBlockRows - kHalf; ++i)
        m_store.SetTag(to[i], m_sequence[ordinal + 1].slot + 1);
}

} // namespace KestrinProductEditor
