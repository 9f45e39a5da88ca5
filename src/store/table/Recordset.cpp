// SPDX-License-Identifier: MIT
#include "store/table/Recordset.h"

#include "platform/Text.h"
#include "store/table/RowSort.h"
#include "util/TextOrder.h"
#include "util/modConversion.h"

#include <KestrinProductEditor/AutomationError.h>

#include <algorithm>
#include <cassert>
#include <new>
#include <numeric>
#include <utility>

namespace KestrinProductEditor {

namespace {

// So that the next push_back cannot fail.
void ReserveOneMore(std::vector<RowNumber>& rows)
{
    if (rows.size() == rows.capacity())
        rows.reserve(2 * rows.size() + 16);
}

} // namespace

Recordset::Recordset(std::vector<Column> columns, std::shared_ptr<const CodePage> codePage)
    : m_rows(std::move(columns)), m_codePage(std::move(codePage)), m_scratch(m_rows.Columns().size())
{
}

Recordset::~Recordset() = default;

const RowOrder& Recordset::Order()
{
    PrvPlaceRows();
    return m_order;
}

void Recordset::BeforeNextChange(std::function<void()> notice)
{
    // Rows without a place get theirs now: a look at the order is no change then.
    static_cast<void>(PrvSettledOrder());
    m_notices.push_back(std::move(notice));
}

void Recordset::PrvGiveNotice() noexcept
{
    const std::vector<std::function<void()>> notices = std::exchange(m_notices, {});
    for (const std::function<void()>& notice : notices)
        notice();
}

void Recordset::Adopt(RowStore&& rows)
{
    std::vector<RowNumber> all(rows.RowCount());
    std::iota(all.begin(), all.end(), RowNumber{0});
    Clear();
    m_rows = std::move(rows);
    m_unplaced = std::move(all);
    m_sortColumn.reset();
    if (!m_unplaced.empty())
        m_cursor = {Stand::OnRow, 0, kNoRow};
}

void Recordset::Clear() noexcept
{
    PrvBeforeChange();
    m_order.Clear();
    m_unplaced.clear();
    m_rows.Clear();
    m_indexes.clear();
    m_movedRow = kNoRow;
    ++m_orderStamp;
    m_cursor = {};
    for (Place* const walk : m_walks)
        *walk = {};
    PrvChanged();
}

void Recordset::SortBy(std::size_t column)
{
    assert(IsText(Columns()[column].type));
    PrvSetCursor({});
    PrvPlaceRows();
    PrvBeforeChange();
    if (m_sortColumn != column) {
        std::vector<RowNumber> rows;
        rows.reserve(Count());
        m_order.ForEach([&](RowNumber row) { rows.push_back(row); });
        if (!AreSorted(m_rows, column, rows)) {
            SortRows(m_rows, column, rows);
            m_order.Assign(rows);
        }
        m_sortColumn = column;
        ++m_orderStamp;
    }
    if (!IsEmpty())
        m_cursor = {Stand::OnRow, m_order.First(), kNoRow};
    PrvChanged();
}

bool Recordset::BOF() const noexcept
{
    return m_cursor.stand == Stand::BeforeFirst || (IsEmpty() && m_cursor.stand != Stand::Deleted);
}

bool Recordset::IsAtEnd() const noexcept
{
    return m_cursor.stand == Stand::AfterLast || (IsEmpty() && m_cursor.stand != Stand::Deleted);
}

void Recordset::MoveFirst()
{
    MoveFromFirst(0);
}

void Recordset::MoveLast()
{
    if (IsEmpty())
        throw AutomationError(kErrNoCurrentRecord);
    MoveTo(PrvSettledOrder().Last());
}

void Recordset::MoveNext()
{
    if (IsAtEnd())
        throw AutomationError(kErrNoCurrentRecord);
    const RowNumber row = PrvNext(m_cursor);
    PrvSetCursor(row == kNoRow ? Place{} : Place{Stand::OnRow, row, kNoRow});
}

void Recordset::MovePrevious()
{
    if (BOF())
        throw AutomationError(kErrNoCurrentRecord);
    const RowNumber row = PrvPrevious(m_cursor);
    PrvSetCursor(row == kNoRow ? Place{Stand::BeforeFirst, kNoRow, kNoRow}
                               : Place{Stand::OnRow, row, kNoRow});
}

void Recordset::MoveFromFirst(std::int64_t count)
{
    if (IsEmpty())
        throw AutomationError(kErrNoCurrentRecord);
    const RowOrder& order = PrvSettledOrder();
    if (count < 0)
        PrvSetCursor({Stand::BeforeFirst, kNoRow, kNoRow});
    else if (static_cast<std::uint64_t>(count) >= order.Size())
        PrvSetCursor({});
    else
        MoveTo(order.At(static_cast<std::size_t>(count)));
}

void Recordset::MoveTo(RowNumber row)
{
    PrvSetCursor({Stand::OnRow, row, kNoRow});
}

void Recordset::MoveBehindLast()
{
    PrvSetCursor({});
}

std::int32_t Recordset::AbsolutePosition()
{
    if (IsEmpty() || m_cursor.stand == Stand::Deleted)
        return -1;
    if (m_cursor.stand == Stand::BeforeFirst)
        return -2;
    if (m_cursor.stand == Stand::AfterLast)
        return -3;
    PrvPlaceRows();
    return static_cast<std::int32_t>(m_order.PlaceOf(m_cursor.row) + 1);
}

RowNumber Recordset::CurrentRow() const
{
    if (m_cursor.row == kNoRow)
        throw AutomationError(kErrNoCurrentRecord);
    return m_cursor.row;
}

RowNumber Recordset::Find(std::size_t column, std::int32_t value)
{
    if (!PrvHasIndexOf(column)) {
        // Whoever opens a list asks for the row at its top, and should not wait for an index of all rows.
        constexpr std::size_t kLookedAt = 64;
        PrvPlaceRows();
        RowNumber row = m_order.First();
        for (std::size_t place = 0; row != kNoRow && place < kLookedAt; ++place, row = m_order.Next(row)) {
            if (m_rows.Long(row, column) == value)
                return row;
        }
    }
    const LongIndex::Found found = PrvIndexOf(column).Find(value);
    if (found.answer == LongIndex::Answer::Several)
        return PrvFirstOfSeveral(column, value);
    return found.row;
}

bool Recordset::MoveToFound(std::size_t column, std::int32_t value)
{
    static_cast<void>(
        PrvSettledOrder()); // which of several comes first is asked after the cursor has left its row
    const RowNumber row = Find(column, value);
    PrvSetCursor(row == kNoRow ? Place{} : Place{Stand::OnRow, row, kNoRow});
    return row != kNoRow;
}

std::vector<RowNumber> Recordset::FindPrefix(std::size_t column, std::string_view prefix)
{
    PrvPlaceRows();
    std::vector<RowNumber> rows;
    if (prefix.empty()) {
        rows.reserve(Count());
        m_order.ForEach([&](RowNumber row) { rows.push_back(row); });
        return rows;
    }
    if (m_sortColumn != column) {
        VisitAll([&](RowNumber row) {
            if (TextOrder::StartsWith(Text(row, column), prefix))
                rows.push_back(row);
        });
        if (m_sortColumn)
            std::sort(rows.begin(), rows.end(),
                      [this](RowNumber left, RowNumber right) { return PrvStandsBefore(left, right); });
        return rows;
    }
    RowNumber row = m_order.FirstBehind(
        [&](RowNumber other) { return TextOrder::Compare(PrvOrderText(other), prefix) >= 0; });
    for (; row != kNoRow && TextOrder::StartsWith(PrvOrderText(row), prefix); row = m_order.Next(row)) {
        if (row != m_movedRow)
            rows.push_back(row);
    }
    // A row that was renamed and has not moved yet counts by its new name, at its old place.
    if (m_movedRow != kNoRow && TextOrder::StartsWith(Text(m_movedRow, column), prefix)) {
        const auto behind = std::partition_point(
            rows.begin(), rows.end(), [this](RowNumber other) { return PrvStandsBefore(other, m_movedRow); });
        rows.insert(behind, m_movedRow);
    }
    return rows;
}

RowNumber Recordset::FindFirstWithPrefix(std::size_t column, std::string_view prefix)
{
    const RowOrder& order = PrvSettledOrder();
    const auto begins = [&](RowNumber row) { return TextOrder::StartsWith(Text(row, column), prefix); };
    if (m_sortColumn != column) {
        RowNumber row = order.First();
        while (row != kNoRow && !begins(row))
            row = order.Next(row);
        return row;
    }
    const RowNumber row = order.FirstBehind(
        [&](RowNumber other) { return TextOrder::Compare(Text(other, column), prefix) >= 0; });
    return row != kNoRow && begins(row) ? row : kNoRow;
}

Variant Recordset::Get(std::int32_t column) const
{
    const RowNumber row = CurrentRow();
    return Get(row, CheckedColumn(column));
}

Variant Recordset::Get(RowNumber row, std::size_t column) const
{
    switch (Columns()[column].type) {
    case ColumnType::Long:
        return m_rows.Long(row, column);
    case ColumnType::Currency:
        return m_rows.Money(row, column);
    case ColumnType::Boolean:
        return m_rows.Boolean(row, column);
    case ColumnType::NarrowText:
    case ColumnType::WideText:
        break;
    }
    return ToUtf16(m_rows.Text(row, column));
}

void Recordset::Put(std::int32_t column, const Variant& value)
{
    const RowNumber row = CurrentRow();
    const std::size_t checked = CheckedColumn(column);
    switch (Columns()[checked].type) {
    case ColumnType::Long:
        SetLong(row, checked, modConversion::ToLong(value));
        break;
    case ColumnType::Currency:
        SetMoney(row, checked, modConversion::ToCurrency(value));
        break;
    case ColumnType::Boolean:
        SetBoolean(row, checked, modConversion::ToBoolean(value));
        break;
    case ColumnType::NarrowText:
    case ColumnType::WideText: {
        const std::string text = ToUtf8(modConversion::ToText(value));
        CheckTextFits(checked, text);
        std::vector<std::string_view> texts(m_rows.TextColumnCount());
        m_rows.Texts(row, texts.data());
        texts[m_rows.TextOrdinal(checked)] = text;
        SetTexts(row, texts);
        break;
    }
    }
}

std::size_t Recordset::CheckedColumn(std::int32_t column) const
{
    if (column < 0 || static_cast<std::size_t>(column) >= Columns().size())
        throw AutomationError(kErrItemNotFound);
    return static_cast<std::size_t>(column);
}

void Recordset::CheckTextFits(std::size_t column, std::string_view text) const
{
    const auto limit = static_cast<std::size_t>(Columns()[column].definedSize);
    if (text.size() > limit && Utf16Length(text) > limit)
        throw AutomationError(kErrMultipleStep);
}

RowNumber Recordset::AddNew(std::span<RowStore::Value> values)
{
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (Columns()[i].type == ColumnType::NarrowText)
            values[i].text = m_codePage->RoundTrip(values[i].text, m_scratch[i]);
    }
    ReserveOneMore(m_unplaced);
    for (Index& index : m_indexes)
        index.rows.Reserve(Count() + 1);
    PrvBeforeChange();
    PrvSetCursor({}); // the row that it leaves takes its place before the new one is there
    const RowNumber row = m_rows.Append(values);
    ++m_orderStamp;
    m_unplaced.push_back(row);
    for (Index& index : m_indexes)
        index.rows.Insert(m_rows.Long(row, index.column), row);
    m_cursor = {Stand::OnRow, row, kNoRow};
    PrvChanged();
    return row;
}

void Recordset::Delete()
{
    DeleteRow(CurrentRow());
}

void Recordset::DeleteRow(RowNumber row)
{
    PrvPlaceRows();
    PrvBeforeChange();
    if (m_movedRow == row)
        m_movedRow = kNoRow;
    PrvLeaveOrder(row, Stand::Deleted);
    for (Index& index : m_indexes)
        index.rows.Remove(m_rows.Long(row, index.column), row);
    if (row == m_firstOfSeveral.row)
        ++m_orderStamp;
    m_rows.Forget(row);
    PrvChanged();
}

void Recordset::Commit()
{
    PrvReplaceMovedRow();
}

void Recordset::SetLong(RowNumber row, std::size_t column, std::int32_t value)
{
    const std::int32_t old = m_rows.Long(row, column);
    if (old == value)
        return;
    PrvBeforeChange();
    for (Index& index : m_indexes) {
        if (index.column != column)
            continue;
        index.rows.Reserve(Count() + 1);
        index.rows.Remove(old, row);
        index.rows.Insert(value, row);
    }
    m_rows.SetLong(row, column, value);
    if (m_firstOfSeveral.column == column && m_firstOfSeveral.value == value)
        ++m_orderStamp;
    PrvChanged();
}

void Recordset::SetMoney(RowNumber row, std::size_t column, Currency value)
{
    m_rows.SetMoney(row, column, value);
    PrvChanged();
}

void Recordset::SetBoolean(RowNumber row, std::size_t column, bool value)
{
    m_rows.SetBoolean(row, column, value);
    PrvChanged();
}

void Recordset::SetTexts(RowNumber row, std::span<std::string_view> texts)
{
    assert(row == m_cursor.row);
    PrvBeforeChange();
    for (std::size_t i = 0; i < Columns().size(); ++i) {
        if (Columns()[i].type != ColumnType::NarrowText)
            continue;
        std::string_view& text = texts[m_rows.TextOrdinal(i)];
        text = m_codePage->RoundTrip(text, m_scratch[i]);
    }
    if (m_sortColumn && texts[m_rows.TextOrdinal(*m_sortColumn)] != m_rows.Text(row, *m_sortColumn))
        PrvKeepOrderText(row);
    m_rows.SetTexts(row, texts);
    PrvChanged();
}

void Recordset::PrvSetCursor(Place place)
{
    // The row that the cursor leaves takes the place that its new name asks for.
    PrvReplaceMovedRow();
    m_cursor = place;
}

const RowOrder& Recordset::PrvSettledOrder()
{
    PrvReplaceMovedRow();
    PrvPlaceRows();
    return m_order;
}

void Recordset::PrvPlaceRows()
{
    if (m_unplaced.empty())
        return;
    // A few rows find their places one by one; many are sorted and merged in one pass.
    constexpr std::size_t kFew = 16;
    constexpr std::size_t kRowsPassedForOnePlaced = 64;
    const bool areFew =
        m_unplaced.size() <= kFew || m_unplaced.size() * kRowsPassedForOnePlaced < m_order.Size();
    if (!areFew || (m_order.IsEmpty() && m_unplaced.size() > 1)) {
        PrvMergeUnplaced();
        return;
    }
    std::size_t placed = 0;
    try {
        for (; placed < m_unplaced.size(); ++placed)
            m_order.InsertBefore(m_unplaced[placed], PrvPlaceFor(m_unplaced[placed]));
    } catch (...) {
        m_unplaced.erase(m_unplaced.begin(), m_unplaced.begin() + static_cast<std::ptrdiff_t>(placed));
        throw;
    }
    m_unplaced.clear();
}

void Recordset::PrvMergeUnplaced()
{
    std::vector<RowNumber> added = m_unplaced;
    if (m_sortColumn)
        SortRows(m_rows, *m_sortColumn, added);
    std::vector<RowNumber> merged;
    merged.reserve(Count());
    auto nextAdded = added.cbegin();
    m_order.ForEach([&](RowNumber row) {
        while (m_sortColumn && nextAdded != added.cend() && PrvStandsBefore(*nextAdded, row))
            merged.push_back(*nextAdded++);
        merged.push_back(row);
    });
    merged.insert(merged.end(), nextAdded, added.cend());
    m_order.Assign(merged);
    m_unplaced.clear();
}

RowNumber Recordset::PrvPlaceFor(RowNumber row) const
{
    if (!m_sortColumn)
        return kNoRow;
    return m_order.FirstBehind([&](RowNumber other) { return PrvStandsBefore(row, other); });
}

void Recordset::PrvReplaceMovedRow()
{
    if (m_movedRow == kNoRow)
        return;
    ReserveOneMore(m_unplaced);
    const RowNumber row = std::exchange(m_movedRow, kNoRow);
    ++m_orderStamp;
    PrvLeaveOrder(row, Stand::Moved);
    PrvChanged();
    try {
        m_order.InsertBefore(row, PrvPlaceFor(row));
    } catch (const std::bad_alloc&) {
        m_unplaced.push_back(row); // it finds its place at the next look at the order
        return;
    }
    const RowNumber next = m_order.Next(row);
    const auto settle = [&](Place& place) {
        if (place.stand == Stand::Moved && place.row == row && place.next == next)
            place = {Stand::OnRow, row, kNoRow};
    };
    settle(m_cursor);
    for (Place* const walk : m_walks)
        settle(*walk);
}

void Recordset::PrvLeaveOrder(RowNumber row, Stand standOfPlaces)
{
    const RowNumber next = m_order.Next(row);
    const auto leave = [&](Place& place) {
        const bool goesOnAtNext = place.stand == Stand::Moved || place.stand == Stand::Deleted;
        if (goesOnAtNext && place.next == row)
            place.next = next;
        if (place.row != row)
            return;
        if (place.stand == Stand::OnRow)
            place.next = next;
        place.stand = standOfPlaces;
        if (standOfPlaces == Stand::Deleted)
            place.row = kNoRow;
    };
    leave(m_cursor);
    for (Place* const walk : m_walks)
        leave(*walk);
    m_order.Remove(row);
}

RowNumber Recordset::PrvNext(const Place& place)
{
    PrvPlaceRows();
    switch (place.stand) {
    case Stand::BeforeFirst:
        return m_order.First();
    case Stand::OnRow:
        return m_order.Next(place.row);
    case Stand::Moved:
    case Stand::Deleted:
        return place.next;
    case Stand::AfterLast:
        break;
    }
    return kNoRow;
}

RowNumber Recordset::PrvPrevious(const Place& place)
{
    PrvPlaceRows();
    switch (place.stand) {
    case Stand::BeforeFirst:
        break;
    case Stand::OnRow:
        return m_order.Previous(place.row);
    case Stand::Moved:
    case Stand::Deleted:
        return place.next == kNoRow ? m_order.Last() : m_order.Previous(place.next);
    case Stand::AfterLast:
        return m_order.Last();
    }
    return kNoRow;
}

std::string_view Recordset::PrvOrderText(RowNumber row) const noexcept
{
    return row == m_movedRow ? std::string_view(m_movedRowText) : m_rows.Text(row, *m_sortColumn);
}

bool Recordset::PrvStandsBefore(RowNumber left, RowNumber right) const noexcept
{
    const int order = TextOrder::Compare(PrvOrderText(left), PrvOrderText(right));
    return order < 0 || (order == 0 && left < right);
}

bool Recordset::PrvHasIndexOf(std::size_t column) const noexcept
{
    return std::any_of(m_indexes.begin(), m_indexes.end(),
                       [column](const Index& index) { return index.column == column; });
}

LongIndex& Recordset::PrvIndexOf(std::size_t column)
{
    assert(Columns()[column].type == ColumnType::Long);
    for (Index& index : m_indexes) {
        if (index.column == column)
            return index.rows;
    }
    Index index{column, {}};
    index.rows.Reserve(Count());
    VisitAll([&](RowNumber row) { index.rows.Insert(m_rows.Long(row, column), row); });
    m_indexes.push_back(std::move(index));
    return m_indexes.back().rows;
}

RowNumber Recordset::PrvFirstOfSeveral(std::size_t column, std::int32_t value)
{
    PrvPlaceRows();
    auto& first = m_firstOfSeveral;
    // While no row came, moved or got the value, the rows before the last answer can only have lost it:
    // whoever gives each row with a value another one, one after the other, walks through the rows once.
    if (first.stamp != m_orderStamp || first.column != column || first.value != value)
        first = {m_orderStamp, column, value, m_order.First()};
    while (first.row != kNoRow && m_rows.Long(first.row, column) != value)
        first.row = m_order.Next(first.row);
    return first.row;
}

void Recordset::PrvKeepOrderText(RowNumber row)
{
    if (m_movedRow == row)
        return;
    // The place that the row goes on from is the one that its text of until now gives it.
    PrvPlaceRows();
    m_movedRowText = m_rows.Text(row, *m_sortColumn);
    m_movedRow = row;
}

Recordset::Walk::Walk(Recordset& recordset)
    : m_recordset(recordset),
      m_visited(recordset.m_rows.RowCount()), m_place{Stand::OnRow, recordset.PrvSettledOrder().First(),
                                                      kNoRow}
{
    if (m_place.row == kNoRow)
        m_place = {};
    else
        m_visited[m_place.row] = true;
    recordset.m_walks.push_back(&m_place);
}

Recordset::Walk::~Walk()
{
    std::erase(m_recordset.m_walks, &m_place);
}

void Recordset::Walk::Next()
{
    do {
        const RowNumber row = m_recordset.PrvNext(m_place);
        m_place = row == kNoRow ? Place{} : Place{Stand::OnRow, row, kNoRow};
    } while (!IsAtEnd() && (m_place.row >= m_visited.size() || m_visited[m_place.row]));
    if (!IsAtEnd())
        m_visited[m_place.row] = true;
}

} // namespace KestrinProductEditor
