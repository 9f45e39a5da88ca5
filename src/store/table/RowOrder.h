// SPDX-License-Identifier: MIT
#pragma once

#include "store/table/RowStore.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

namespace KestrinProductEditor {

/// A sequence of rows: the n-th row, the place of a row, an insert and a removal each cost one block.
///
/// The sequence is a list of blocks of up to kBlockRows row numbers each. The row's tag (RowStore::Tag) names
/// the block that holds it, so the place of a row is found without comparing anything. The order itself is
/// the caller's: RowOrder only keeps what it is told.
///
/// Invariants: (1) no block is empty; (2) a row of the sequence has the tag 1 + its block's slot, any other
/// row 0; (3) m_sequence lists the blocks in order with their counts, and each block knows its place there.
class RowOrder
{
public:
    static constexpr std::size_t kBlockRows = 1024;

    explicit RowOrder(RowStore& store) : m_store(store) {}

    [[nodiscard]] std::size_t Size() const noexcept { return m_size; }
    [[nodiscard]] bool IsEmpty() const noexcept { return m_size == 0; }
    [[nodiscard]] bool Contains(RowNumber row) const noexcept { return m_store.Tag(row) != 0; }

    /// kNoRow on an empty sequence.
    [[nodiscard]] RowNumber First() const noexcept;
    [[nodiscard]] RowNumber Last() const noexcept;
    /// The row at `place`, from 0. Requires: place < Size().
    [[nodiscard]] RowNumber At(std::size_t place) const noexcept;
    /// Requires, as the next two: Contains(row).
    [[nodiscard]] std::size_t PlaceOf(RowNumber row) const noexcept;
    /// The row behind (before) `row`; kNoRow at the end.
    [[nodiscard]] RowNumber Next(RowNumber row) const noexcept;
    [[nodiscard]] RowNumber Previous(RowNumber row) const noexcept;

    /// The first row for which `isBehind(row)` holds, or kNoRow. Requires: it holds for all rows from some
    /// place on and for none before.
    template<class Predicate>
    [[nodiscard]] RowNumber FirstBehind(Predicate&& isBehind) const;

    /// Puts `row` before `next`; at the end when that is kNoRow. Requires: !Contains(row).
    void InsertBefore(RowNumber row, RowNumber next);
    void Append(RowNumber row) { InsertBefore(row, kNoRow); }
    /// Requires: Contains(row).
    void Remove(RowNumber row) noexcept;

    /// The whole sequence anew. Requires: `rows` holds every row of the sequence, each once. Throws
    /// std::bad_alloc; the sequence is unchanged then.
    void Assign(std::span<const RowNumber> rows);
    /// An empty sequence. Requires: the store drops its rows, too (their tags are not cleared).
    void Clear() noexcept;

    [[nodiscard]] std::size_t BlockCount() const noexcept { return m_sequence.size(); }
    [[nodiscard]] std::span<const RowNumber> BlockAt(std::size_t ordinal) const noexcept
    {
        const Entry& entry = m_sequence[ordinal];
        return {m_blocks[entry.slot]->rows, entry.count};
    }

    /// Calls `visit(row)` for each row in order, its record and texts asked for ahead.
    template<class Visitor>
    void ForEach(Visitor&& visit) const;

private:
    // How far ahead of a walk its memory is asked for: first the record, then the texts that it points at.
    static constexpr std::size_t kRecordsAhead = 16;
    static constexpr std::size_t kTextsAhead = 8;

    struct Block
    {
        std::uint32_t ordinal = 0; // its place in m_sequence
        RowNumber rows[kBlockRows];
    };
    struct Entry
    {
        std::uint32_t slot;  // of the block in m_blocks
        std::uint32_t count; // here and not in the block: the n-th row is found without touching the blocks
    };
    struct Location
    {
        std::size_t ordinal;
        std::size_t index;
    };

    [[nodiscard]] Location PrvLocate(RowNumber row) const noexcept;
    [[nodiscard]] Block& PrvBlock(std::size_t ordinal) const noexcept
    {
        return *m_blocks[m_sequence[ordinal].slot];
    }
    void PrvAddBlock(std::size_t ordinal);
    void PrvRemoveBlock(std::size_t ordinal) noexcept;
    void PrvRenumber(std::size_t from) noexcept;
    void PrvSplit(std::size_t ordinal);

    RowStore& m_store;
    std::vector<std::unique_ptr<Block>> m_blocks; // by slot; null where free
    std::vector<std::uint32_t> m_freeSlots;
    std::vector<Entry> m_sequence;
    std::size_t m_size = 0;

    // Where the last search ended: walks and nearby jumps begin there. The index is only a guess.
    mutable std::size_t m_hintIndex = 0;
    mutable std::size_t m_hintOrdinal = 0;
    mutable std::size_t m_hintPlace = 0; // the place of the first row of that block
};

template<class Predicate>
RowNumber RowOrder::FirstBehind(Predicate&& isBehind) const
{
    std::size_t low = 0;
    std::size_t high = m_sequence.size();
    while (low < high) { // the first block whose last row is behind
        const std::size_t middle = (low + high) / 2;
        if (isBehind(BlockAt(middle).back()))
            high = middle;
        else
            low = middle + 1;
    }
    if (low == m_sequence.size())
        return kNoRow;
    const std::span<const RowNumber> rows = BlockAt(low);
    std::size_t from = 0;
    std::size_t to = rows.size() - 1; // its last row is known to be behind
    while (from < to) {
        const std::size_t middle = (from + to) / 2;
        if (isBehind(rows[middle]))
            to = middle;
        else
            from = middle + 1;
    }
    return rows[from];
}

template<class Visitor>
void RowOrder::ForEach(Visitor&& visit) const
{
    for (std::size_t ordinal = 0; ordinal < m_sequence.size(); ++ordinal) {
        const std::span<const RowNumber> rows = BlockAt(ordinal);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (i + kRecordsAhead < rows.size())
                m_store.PrefetchRecord(rows[i + kRecordsAhead]);
            if (i + kTextsAhead < rows.size())
                m_store.PrefetchTexts(rows[i + kTextsAhead]);
            visit(rows[i]);
        }
    }
}

} // namespace KestrinProductEditor
