// SPDX-License-Identifier: MIT
#pragma once

#include "store/table/RowStore.h"

#include <cstddef>
#include <span>

namespace KestrinProductEditor {

/// Whether `left` stands before `right` when rows are ordered by a text column: TextOrder, ties by arrival.
[[nodiscard]] bool StandsBefore(const RowStore& store, std::size_t column, RowNumber left,
                                RowNumber right) noexcept;

/// Whether the rows are in that order already.
[[nodiscard]] bool AreSorted(const RowStore& store, std::size_t column,
                             std::span<const RowNumber> rows) noexcept;

/// Sorts the rows by that order. Throws std::bad_alloc; the rows are unchanged then.
void SortRows(const RowStore& store, std::size_t column, std::span<RowNumber> rows);

} // namespace KestrinProductEditor
