// SPDX-License-Identifier: MIT
#pragma once

#include "store/table/RowStore.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KestrinProductEditor {

/// Finds the row that has a number in one Long column, at the cost of a cache miss or two.
///
/// A hash table with open addressing. A value that several rows share is only marked as such: which of them
/// comes first is a question of the row order, which the index does not know.
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
        RowNumber row;
    };
    static constexpr RowNumber kFree = kNoRow;
    static constexpr RowNumber kSeveral = kNoRow - 1; // RowStore gives no row this number

    [[nodiscard]] std::size_t PrvHome(std::int32_t value) const noexcept;
    [[nodiscard]] std::size_t PrvFindSlot(std::int32_t value) const noexcept;
    void PrvResize(std::size_t slots);

    std::vector<Slot> m_slots; // a power of two, or none
    std::size_t m_used = 0;
    unsigned m_shift = 0;
};

} // namespace KestrinProductEditor
