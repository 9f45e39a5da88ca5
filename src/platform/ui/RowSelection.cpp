// SPDX-License-Identifier: MIT
#include "platform/ui/RowSelection.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <iterator>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::int32_t Size(const RowSelection::Range& range)
{
    return range.last - range.first + 1;
}

} // namespace

void RowSelection::Clear() noexcept
{
    m_ranges.clear();
    m_rowsBefore.clear();
}

void RowSelection::Add(Range range)
{
    assert(range.first <= range.last);
    PrvReserve(m_ranges.size() + 1);
    if (m_ranges.empty() || m_ranges.back().last + 1 < range.first) {
        // Rows that come in their order cost nothing but their place.
        const std::int32_t before = Count();
        m_ranges.push_back(range);
        m_rowsBefore.push_back(before);
        return;
    }
    if (m_ranges.back().first <= range.first) {
        m_ranges.back().last = std::max(m_ranges.back().last, range.last);
        return;
    }
    // Ranges that touch the new one become a part of it.
    const auto begin = std::partition_point(m_ranges.begin(), m_ranges.end(),
                                            [&](const Range& other) { return other.last + 1 < range.first; });
    const auto end = std::partition_point(begin, m_ranges.end(),
                                          [&](const Range& other) { return other.first <= range.last + 1; });
    if (begin != end) {
        range.first = std::min(range.first, begin->first);
        range.last = std::max(range.last, std::prev(end)->last);
    }
    m_ranges.insert(m_ranges.erase(begin, end), range);
    PrvCount();
}

void RowSelection::Remove(Range range)
{
    assert(range.first <= range.last);
    PrvReserve(m_ranges.size() + 1); // a range may fall into two
    const auto begin = std::partition_point(m_ranges.begin(), m_ranges.end(),
                                            [&](const Range& other) { return other.last < range.first; });
    const auto end = std::partition_point(begin, m_ranges.end(),
                                          [&](const Range& other) { return other.first <= range.last; });
    if (begin == end)
        return;
    std::array<Range, 2> rest{};
    auto restEnd = rest.begin();
    if (begin->first < range.first)
        *restEnd++ = {begin->first, range.first - 1};
    if (std::prev(end)->last > range.last)
        *restEnd++ = {range.last + 1, std::prev(end)->last};
    m_ranges.insert(m_ranges.erase(begin, end), rest.begin(), restEnd);
    PrvCount();
}

bool RowSelection::Contains(std::int32_t row) const noexcept
{
    const auto found = std::partition_point(m_ranges.begin(), m_ranges.end(),
                                            [row](const Range& range) { return range.last < row; });
    return found != m_ranges.end() && found->first <= row;
}

std::int32_t RowSelection::Count() const noexcept
{
    return m_ranges.empty() ? 0 : m_rowsBefore.back() + Size(m_ranges.back());
}

std::int32_t RowSelection::Row(std::int32_t index) const noexcept
{
    assert(index >= 0 && index < Count());
    const auto behind = std::upper_bound(m_rowsBefore.begin(), m_rowsBefore.end(), index);
    const auto at = static_cast<std::size_t>(std::distance(m_rowsBefore.begin(), behind)) - 1;
    return m_ranges[at].first + (index - m_rowsBefore[at]);
}

void RowSelection::PrvReserve(std::size_t ranges)
{
    if (ranges > m_ranges.capacity())
        m_ranges.reserve(2 * ranges);
    if (ranges > m_rowsBefore.capacity())
        m_rowsBefore.reserve(2 * ranges);
}

void RowSelection::PrvCount() noexcept
{
    m_rowsBefore.clear();
    std::int32_t rows = 0;
    for (const Range& range : m_ranges) {
        m_rowsBefore.push_back(rows);
        rows += Size(range);
    }
}

} // namespace KestrinProductEditor
