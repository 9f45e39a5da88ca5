// SPDX-License-Identifier: MIT
#include "store/table/LongIndex.h"

#include <algorithm>
#include <bit>
#include <random>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kFewestSlots = 16;

// Three quarters full at most.
constexpr std::size_t SlotsFor(std::size_t values)
{
    return std::bit_ceil(std::max(kFewestSlots, values + values / 3 + 1));
}

// Two rounds of multiply and shift; neither neighbours nor regular steps nor chosen values end up together.
std::uint32_t Scatter(std::uint32_t bits)
{
    bits ^= bits >> 16;
    bits *= 0x7FEB352DU;
    bits ^= bits >> 15;
    bits *= 0x846CA68BU;
    return bits ^ (bits >> 16);
}

} // namespace

void LongIndex::Reserve(std::size_t rows)
{
    const std::size_t slots = SlotsFor(std::max(rows, m_used + 1));
    if (slots > m_slotCount)
        PrvResize(slots);
}

void LongIndex::Insert(std::int32_t value, RowNumber row)
{
    Reserve(0);
    Slot& slot = PrvSlots()[PrvFindSlot(value)];
    if (slot.mark == kFree) {
        slot = {value, row + 1};
        ++m_used;
    } else {
        slot.mark = kSeveral;
    }
}

void LongIndex::Remove(std::int32_t value, RowNumber row) noexcept
{
    if (m_slotCount == 0)
        return;
    Slot* const slots = PrvSlots();
    std::size_t hole = PrvFindSlot(value);
    if (slots[hole].mark != row + 1)
        return;
    // Later values of the same run move up, so that no search stops at the hole too early.
    const std::size_t mask = m_slotCount - 1;
    for (std::size_t at = (hole + 1) & mask; slots[at].mark != kFree; at = (at + 1) & mask) {
        const std::size_t home = PrvHome(slots[at].value);
        if (((at - home) & mask) >= ((at - hole) & mask)) {
            slots[hole] = slots[at];
            hole = at;
        }
    }
    slots[hole].mark = kFree;
    --m_used;
}

LongIndex::Found LongIndex::Find(std::int32_t value) const noexcept
{
    if (m_slotCount == 0)
        return {};
    const Slot& slot = PrvSlots()[PrvFindSlot(value)];
    if (slot.mark == kFree)
        return {};
    if (slot.mark == kSeveral)
        return {Answer::Several, kNoRow};
    return {Answer::One, slot.mark - 1};
}

std::size_t LongIndex::PrvHome(std::int32_t value) const noexcept
{
    static const std::uint32_t seed = std::random_device{}();
    return Scatter(static_cast<std::uint32_t>(value) ^ seed) & (m_slotCount - 1);
}

std::size_t LongIndex::PrvFindSlot(std::int32_t value) const noexcept
{
    const Slot* const slots = PrvSlots();
    const std::size_t mask = m_slotCount - 1;
    std::size_t at = PrvHome(value);
    while (slots[at].mark != kFree && slots[at].value != value)
        at = (at + 1) & mask;
    return at;
}

void LongIndex::PrvResize(std::size_t slots)
{
    LargeBlock block = AllocateLargeBlock(slots * sizeof(Slot));
    block.swap(m_block);
    const auto* const old = reinterpret_cast<const Slot*>(block.get());
    const std::size_t oldCount = std::exchange(m_slotCount, slots);
    for (std::size_t i = 0; i < oldCount; ++i) {
        if (old[i].mark != kFree)
            PrvSlots()[PrvFindSlot(old[i].value)] = old[i];
    }
}

} // namespace KestrinProductEditor
