// SPDX-License-Identifier: MIT
#include "store/table/LongIndex.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kFewestSlots = 16;

// Three quarters full at most.
constexpr std::size_t SlotsFor(std::size_t values)
{
    return std::bit_ceil(std::max(kFewestSlots, values + values / 3 + 1));
}

} // namespace

void LongIndex::Reserve(std::size_t rows)
{
    if (SlotsFor(rows) > m_slots.size())
        PrvResize(SlotsFor(rows));
}

void LongIndex::Insert(std::int32_t value, RowNumber row)
{
    Reserve(m_used + 1);
    Slot& slot = m_slots[PrvFindSlot(value)];
    if (slot.row == kFree) {
        slot = {value, row};
        ++m_used;
    } else {
        slot.row = kSeveral;
    }
}

void LongIndex::Remove(std::int32_t value, RowNumber row) noexcept
{
    if (m_slots.empty())
        return;
    std::size_t hole = PrvFindSlot(value);
    if (m_slots[hole].row != row)
        return;
    // Later values of the same run move up, so that no search stops at the hole too early.
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = (hole + 1) & mask; m_slots[at].row != kFree; at = (at + 1) & mask) {
        const std::size_t home = PrvHome(m_slots[at].value);
        if (((at - home) & mask) >= ((at - hole) & mask)) {
            m_slots[hole] = m_slots[at];
            hole = at;
        }
    }
    m_slots[hole].row = kFree;
    --m_used;
}

LongIndex::Found LongIndex::Find(std::int32_t value) const noexcept
{
    if (m_slots.empty())
        return {};
    const Slot& slot = m_slots[PrvFindSlot(value)];
    if (slot.row == kFree)
        return {};
    if (slot.row == kSeveral)
        return {Answer::Several, kNoRow};
    return {Answer::One, slot.row};
}

std::size_t LongIndex::PrvHome(std::int32_t value) const noexcept
{
    // Multiplication by the golden ratio spreads the runs and the regular steps that identifiers come in.
    constexpr std::uint64_t kGolden = 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>((static_cast<std::uint32_t>(value) * kGolden) >> m_shift);
}

std::size_t LongIndex::PrvFindSlot(std::int32_t value) const noexcept
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = PrvHome(value);
    while (m_slots[at].row != kFree && m_slots[at].value != value)
        at = (at + 1) & mask;
    return at;
}

void LongIndex::PrvResize(std::size_t slots)
{
    std::vector<Slot> old(slots, Slot{0, kFree});
    old.swap(m_slots);
    m_shift = 64U - static_cast<unsigned>(std::countr_zero(slots));
    for (const Slot& slot : old) {
        if (slot.row != kFree)
            m_slots[PrvFindSlot(slot.value)] = slot;
    }
}

} // namespace KestrinProductEditor
