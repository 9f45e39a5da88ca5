// SPDX-License-Identifier: MIT
#include "platform/win32/Win32GridChoice.h"

#include <algorithm>
#include <limits>

namespace KestrinProductEditor {

void Win32GridChoice::Follow(std::int32_t currentRow, std::int32_t firstRow, std::int32_t endRow)
{
    if (currentRow != m_currentRow || m_anchor < firstRow || m_anchor >= endRow)
        m_anchor = currentRow;
    m_currentRow = currentRow;
    constexpr std::int32_t kLast = std::numeric_limits<std::int32_t>::max() - 1;
    m_dragBase.Remove({-1, firstRow - 1});
    m_dragBase.Remove({std::min(endRow, kLast), kLast});
}

RowSelection Win32GridChoice::Click(std::int32_t row, HeldKeys held, const RowSelection& before)
{
    m_dragBase = held.control ? before : RowSelection();
    m_dragTakesOut = held.control && !held.shift && before.Contains(row);
    if (!held.shift || m_anchor < 0)
        m_anchor = row;
    m_currentRow = row;
    return PrvReach(row, m_dragBase);
}

RowSelection Win32GridChoice::Drag(std::int32_t row)
{
    m_currentRow = row;
    if (m_anchor < 0)
        m_anchor = row;
    return PrvReach(row, m_dragBase);
}

RowSelection Win32GridChoice::Move(std::int32_t row, HeldKeys held, const RowSelection& before)
{
    if (!held.shift || m_anchor < 0)
        m_anchor = row;
    m_currentRow = row;
    m_dragTakesOut = false;
    if (held.control && !held.shift)
        return before;
    return PrvReach(row, held.control ? before : RowSelection());
}

RowSelection Win32GridChoice::Mark(std::int32_t row, HeldKeys held, const RowSelection& before)
{
    m_anchor = row;
    m_currentRow = row;
    m_dragTakesOut = held.control && before.Contains(row);
    return PrvReach(row, before);
}

RowSelection Win32GridChoice::PrvReach(std::int32_t row, RowSelection base) const
{
    const auto [first, last] = std::minmax(m_anchor, row);
    if (m_dragTakesOut)
        base.Remove({first, last});
    else
        base.Add({first, last});
    return base;
}

} // namespace KestrinProductEditor
