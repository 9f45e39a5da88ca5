// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KestrinProductEditor {

/// A set of rows, kept as ranges: all of a million rows is one range. Add and Remove throw std::bad_alloc;
/// the set is unchanged then.
class RowSelection
{
public:
    /// The rows `first` to `last`, both of them. Requires: first <= last.
    struct Range
    {
        std::int32_t first;
        std::int32_t last;

        friend bool operator==(const Range&, const Range&) = default;
    };

    void Clear() noexcept;
    void Add(Range range);
    void Remove(Range range);
    [[nodiscard]] bool Contains(std::int32_t row) const noexcept;
    [[nodiscard]] std::int32_t Count() const noexcept;
    /// The i-th row, from 0, in row order; O(log ranges). Requires: index < Count().
    [[nodiscard]] std::int32_t Row(std::int32_t index) const noexcept;
    /// In row order; no two touch.
    [[nodiscard]] const std::vector<Range>& Ranges() const noexcept { return m_ranges; }

    friend bool operator==(const RowSelection& left, const RowSelection& right)
    {
        return left.m_ranges == right.m_ranges;
    }

private:
    void PrvReserve(std::size_t ranges);
    void PrvCount() noexcept;

    std::vector<Range> m_ranges;
    std::vector<std::int32_t> m_rowsBefore; // how many rows the ranges before each hold
};

} // namespace KestrinProductEditor
