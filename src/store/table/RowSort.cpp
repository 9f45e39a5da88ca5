// SPDX-License-Identifier: MIT
#include "store/table/RowSort.h"

#include "util/TextOrder.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <vector>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kKeyBytes = sizeof(TextOrder::Key);
constexpr std::size_t kSmallRange = 40;
// Every key is read from the text's beginning on; texts that are equal so far are compared as a whole.
constexpr std::size_t kDeepest = 1024;
constexpr std::size_t kAhead = 12;

struct Entry
{
    TextOrder::Key key;
    RowNumber row;
};

unsigned ByteOf(const TextOrder::Key& key, std::size_t index)
{
    const std::uint64_t half = index < sizeof key.high ? key.high : key.low;
    return static_cast<unsigned>(half >> (56 - 8 * (index % sizeof key.high))) & 0xFFU;
}

/// Sorts by sixteen bytes of the folded text at a time: a radix sort from the first byte on, in stable passes
/// between two buffers. Ranges that are still equal behind the sixteenth byte get the next sixteen.
class Sorter
{
public:
    Sorter(const RowStore& store, std::size_t column, std::span<const RowNumber> rows)
        : m_store(store), m_column(column), m_entries(rows.size()), m_other(rows.size())
    {
        for (std::size_t i = 0; i < rows.size(); ++i)
            m_entries[i].row = rows[i];
    }

    void Sort()
    {
        // A list of ranges and no recursion: how deep the texts are equal must not decide about the stack.
        m_ranges.push_back({0, m_entries.size(), 0, kKeyBytes});
        while (!m_ranges.empty()) {
            const Range range = m_ranges.back();
            m_ranges.pop_back();
            PrvSortRange(range);
        }
    }

    void Store(std::span<RowNumber> rows) const
    {
        for (std::size_t i = 0; i < rows.size(); ++i)
            rows[i] = m_entries[i].row;
    }

private:
    /// Rows that are equal in all folded bytes before the byte `byte` of their keys. Those are used up when
    /// `byte` is kKeyBytes; the next ones begin at `nextKeys` in the texts.
    struct Range
    {
        std::size_t begin;
        std::size_t end;
        std::size_t nextKeys;
        std::size_t byte;
    };

    void PrvSortRange(Range range)
    {
        if (range.byte == kKeyBytes) {
            const bool anyLeft = PrvTakeKeys(range.begin, range.end, range.nextKeys);
            // Texts that are equal so deep, or to their ends but for zero characters, are compared whole.
            if (!anyLeft || range.nextKeys >= kDeepest) {
                PrvSortWhole(range.begin, range.end);
                return;
            }
            range.nextKeys += kKeyBytes;
            range.byte = 0;
        }
        if (range.end - range.begin <= kSmallRange) {
            PrvSortWhole(range.begin, range.end);
            return;
        }
        std::array<std::size_t, 256> counts{};
        for (std::size_t i = range.begin; i < range.end; ++i)
            ++counts[ByteOf(m_entries[i].key, range.byte)];
        if (counts[ByteOf(m_entries[range.begin].key, range.byte)] == range.end - range.begin) {
            ++range.byte; // nothing to tell apart here
            m_ranges.push_back(range);
            return;
        }
        std::array<std::size_t, 256> next{};
        for (std::size_t value = 0, at = range.begin; value < counts.size(); ++value) {
            next[value] = at;
            if (counts[value] > 1)
                m_ranges.push_back({at, at + counts[value], range.nextKeys, range.byte + 1});
            at += counts[value];
        }
        for (std::size_t i = range.begin; i < range.end; ++i)
            m_other[next[ByteOf(m_entries[i].key, range.byte)]++] = m_entries[i];
        std::copy(m_other.begin() + static_cast<std::ptrdiff_t>(range.begin),
                  m_other.begin() + static_cast<std::ptrdiff_t>(range.end),
                  m_entries.begin() + static_cast<std::ptrdiff_t>(range.begin));
    }

    // Whether any of the texts has something left there.
    [[nodiscard]] bool PrvTakeKeys(std::size_t begin, std::size_t end, std::size_t depth)
    {
        bool anyLeft = false;
        for (std::size_t i = begin; i < end; ++i) {
            if (i + 2 * kAhead < end)
                m_store.PrefetchRecord(m_entries[i + 2 * kAhead].row);
            if (i + kAhead < end)
                m_store.PrefetchTexts(m_entries[i + kAhead].row);
            m_entries[i].key = TextOrder::KeyOf(m_store.Text(m_entries[i].row, m_column), depth);
            anyLeft = anyLeft || m_entries[i].key != TextOrder::Key{};
        }
        return anyLeft;
    }

    void PrvSortWhole(std::size_t begin, std::size_t end)
    {
        const auto before = [this](const Entry& left, const Entry& right) {
            if (left.key != right.key)
                return left.key < right.key;
            return StandsBefore(m_store, m_column, left.row, right.row);
        };
        const auto first = m_entries.begin() + static_cast<std::ptrdiff_t>(begin);
        const auto last = m_entries.begin() + static_cast<std::ptrdiff_t>(end);
        if (!std::is_sorted(first, last, before))
            std::sort(first, last, before);
    }

    const RowStore& m_store;
    std::size_t m_column;
    std::vector<Entry> m_entries;
    std::vector<Entry> m_other;
    std::vector<Range> m_ranges;
};

} // namespace

bool StandsBefore(const RowStore& store, std::size_t column, RowNumber left, RowNumber right) noexcept
{
    const int order = TextOrder::Compare(store.Text(left, column), store.Text(right, column));
    return order < 0 || (order == 0 && left < right);
}

bool AreSorted(const RowStore& store, std::size_t column, std::span<const RowNumber> rows) noexcept
{
    if (rows.empty())
        return true;
    std::string_view previous = store.Text(rows[0], column);
    for (std::size_t i = 1; i < rows.size(); ++i) {
        if (i + 2 * kAhead < rows.size())
            store.PrefetchRecord(rows[i + 2 * kAhead]);
        if (i + kAhead < rows.size())
            store.PrefetchTexts(rows[i + kAhead]);
        const std::string_view text = store.Text(rows[i], column);
        const int order = TextOrder::Compare(previous, text);
        if (order > 0 || (order == 0 && rows[i - 1] > rows[i]))
            return false;
        previous = text;
    }
    return true;
}

void SortRows(const RowStore& store, std::size_t column, std::span<RowNumber> rows)
{
    if (AreSorted(store, column, rows))
        return;
    Sorter sorter(store, column, rows);
    sorter.Sort();
    sorter.Store(rows);
}

} // namespace KestrinProductEditor
