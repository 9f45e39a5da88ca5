// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LargeBlock.h"
#include "store/table/RowStore.h"

#include <cstddef>
#include <cstdint>

namespace KestrinProductEditor {

/// Finds the row that has a number in one Long column, at the cost of a cache miss or two.
///
/// A hash table with open addressing; its hash differs from process to process, so that no file can be made
/// to slow it down. A value that several rows share is only marked as such: which of them comes first is a
/// question of the row order, which the index does not know.
class LongIndex
{
public:
    enum class Answer
    {
        None,
        One,
        Several
    };
    struct Found
    {
        Answer answer = Answer::None;
        RowNumber row = kNoRow; ///< for One
    };

    /// Makes room for `rows` values ahead. Throws std::bad_alloc, as Insert does; the index is unchanged
    /// then.
    void Reserve(std::size_t rows);
    void Insert(std::int32_t value, RowNumber row);
    /// Requires: the value was inserted for the row. A value that several rows shared stays marked (it may
    /// have one row or none by now).
    void Remove(std::int32_t value, RowNumber row) noexcept;
    [[nodiscard]] Found Find(std::int32_t value) const noexcept;

private:
    struct Slot
    {
        std::int32_t value;
        std::uint32_t mark; // kFree, kSeveral, or the number of the one row plus 1
    };
    static constexpr std::uint32_t kFree = 0;         // as the system gives memory
    static constexpr std::uint32_t kSeveral = kNoRow; // RowStore gives no row the number before

    [[nodiscard]] std::size_t PrvHome(std::int32_t value) const noexcept;
    [[nodiscard]] std::size_t PrvFindSlot(std::int32_t value) const noexcept;
    [[nodiscard]] Slot* PrvSlots() const noexcept { return reinterpret_cast<Slot*>(m_block.get()); }
    void PrvResize(std::size_t slots);

    LargeBlock m_block;
    std::size_t m_slotCount = 0; // a power of two, or none
    std::size_t m_used = 0;
};

} // namespace KestrinProductEditor
