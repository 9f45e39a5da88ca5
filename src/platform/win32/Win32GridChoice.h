// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/RowSelection.h"

#include <cstdint>

namespace KestrinProductEditor {

/// What is held down while a row is chosen.
struct HeldKeys
{
    bool shift = false;
    bool control = false;
};

/// How acts on rows become a selection, as in a list box: an act alone selects its row, Ctrl adds or takes
/// away, Shift reaches from the row where the last act without Shift was, the anchor.
class Win32GridChoice
{
public:
    /// The current row that the next act begins at, of the rows `firstRow` to `endRow` - 1. When it is
    /// another than before, or the anchor is gone, it is the anchor.
    void Follow(std::int32_t currentRow, std::int32_t firstRow, std::int32_t endRow);

    [[nodiscard]] RowSelection Click(std::int32_t row, HeldKeys held, const RowSelection& before);
    /// A click that is drawn on over other rows. Requires: Click was before.
    [[nodiscard]] RowSelection Drag(std::int32_t row);
    /// With Ctrl alone a key moves the current row only.
    [[nodiscard]] RowSelection Move(std::int32_t row, HeldKeys held, const RowSelection& before);
    /// The space bar: adds the row, with Ctrl takes it in or out.
    [[nodiscard]] RowSelection Mark(std::int32_t row, HeldKeys held, const RowSelection& before);

private:
    [[nodiscard]] RowSelection PrvReach(std::int32_t row, RowSelection base) const;

    std::int32_t m_anchor = -1;
    std::int32_t m_currentRow = -1;
    RowSelection m_dragBase; // what a drag leaves as it is
    bool m_dragTakesOut = false;
};

} // namespace KestrinProductEditor
