// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/Variant.h>

#include "platform/CodePage.h"
#include "store/table/LongIndex.h"
#include "store/table/RowOrder.h"
#include "store/table/RowStore.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// An in-memory table with one shared cursor: the platform recordset's behaviour over a RowStore.
///
/// **Cursor.** It stands on a row, before the first, after the last, or where a deleted row stood. A cursor
/// on a row that was moved by a new name stays on it but goes on from the row's old place. Moving past an end
/// it already stands at, and reading without a row, is error 3021.
///
/// **Order.** Order of arrival until SortBy; from then on the table stays sorted by that text column. A new
/// row takes its place at once (the work is put off until someone looks at the order, so that rows in bulk
/// are sorted once). A row whose sort text was written takes its new place at Commit or when the cursor
/// leaves it.
///
/// **Walks** (the class Walk) have a place of their own. Whatever happens to the table meanwhile, a walk
/// visits only rows that were there when it began, none twice and no deleted one, and so it ends.
///
/// Texts are UTF-8 on this side; the Variant methods speak UTF-16. Narrow texts are kept as the code page can
/// hold them.
class Recordset
{
public:
    class Walk;

    explicit Recordset(std::vector<Column> columns, std::shared_ptr<const CodePage> codePage);
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    ~Recordset();

    // The whole table

    [[nodiscard]] const std::vector<Column>& Columns() const noexcept { return m_rows.Columns(); }
    [[nodiscard]] const CodePage& TextCodePage() const noexcept { return *m_codePage; }
    [[nodiscard]] const RowStore& Rows() const noexcept { return m_rows; }
    /// The rows in their order, ready to be walked.
    [[nodiscard]] const RowOrder& Order();
    [[nodiscard]] std::size_t Count() const noexcept { return m_order.Size() + m_unplaced.size(); }
    [[nodiscard]] bool IsEmpty() const noexcept { return Count() == 0; }
    /// Another number whenever anything in the table was changed.
    [[nodiscard]] std::uint64_t ChangeStamp() const noexcept { return m_changeStamp; }

    /// Calls `notice` once, right before the next change of which rows there are, of their order, their texts
    /// or Long values. It may read the rows and Order(), which is then what it is now, and may ask anew; it
    /// must not change or throw anything. Throws std::bad_alloc; nothing is asked for then.
    void BeforeNextChange(std::function<void()> notice);

    /// Takes the rows of `rows` (of the same columns) in place of its own, in order of arrival and unsorted.
    /// The first becomes current; running walks end. Throws std::bad_alloc; the table is unchanged then.
    void Adopt(RowStore&& rows);
    /// Removes every row. The cursor stands after the last row; running walks end.
    void Clear() noexcept;

    // Order

    /// Sorts by a text column and makes the first row current (an empty table has none).
    void SortBy(std::size_t column);

    // The cursor

    [[nodiscard]] bool BOF() const noexcept;
    [[nodiscard]] bool IsAtEnd() const noexcept;
    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    /// To the row `count` rows behind the first; beyond the end or before the beginning to that end.
    void MoveFromFirst(std::int64_t count);
    void MoveTo(RowNumber row);
    void MoveBehindLast();
    /// From 1; -1 unknown (an empty table, a deleted row), -2 before the first row, -3 after the last.
    [[nodiscard]] std::int32_t AbsolutePosition();
    /// The current row; error 3021 without one.
    [[nodiscard]] RowNumber CurrentRow() const;

    // Finding

    /// The first row, in order, with `value` in a Long column; kNoRow when there is none. The cursor stays.
    [[nodiscard]] RowNumber Find(std::size_t column, std::int32_t value);
    /// Makes that row current, or stands after the last one. Returns whether there was one.
    bool MoveToFound(std::size_t column, std::int32_t value);
    /// The rows, in order, whose text begins with `prefix`, letter case aside. The cursor stays.
    [[nodiscard]] std::vector<RowNumber> FindPrefix(std::size_t column, std::string_view prefix);
    /// The first of them, or kNoRow. A search by halves where the table is sorted by `column`.
    [[nodiscard]] RowNumber FindFirstWithPrefix(std::size_t column, std::string_view prefix);

    // Reading and writing

    /// A value of the current row. Errors 3021, 3265.
    [[nodiscard]] Variant Get(std::int32_t column) const;
    [[nodiscard]] Variant Get(RowNumber row, std::size_t column) const;
    /// Writes a value of the current row after the default conversion. Errors 3021, 3265, 13, 6 and
    /// -2147217887 for a text longer than its column; nothing is changed then.
    void Put(std::int32_t column, const Variant& value);
    /// Error 3265 for a column that does not exist.
    [[nodiscard]] std::size_t CheckedColumn(std::int32_t column) const;
    /// Error -2147217887 when the text (UTF-8) is longer than the column is defined.
    void CheckTextFits(std::size_t column, std::string_view text) const;

    /// Appends a row and makes it current. The texts are checked already; narrow ones are brought into the
    /// code page here, in `values`. Throws std::bad_alloc; nothing is added then.
    RowNumber AddNew(std::span<RowStore::Value> values);
    /// Deletes the current row. Error 3021 without one.
    void Delete();
    /// Deletes a row that the cursor need not stand on.
    void DeleteRow(RowNumber row);
    /// Gives the current row its place, when a new name has moved it.
    void Commit();

    // By row, without a look at the cursor. Requires: the row is in the table.

    [[nodiscard]] std::int32_t Long(RowNumber row, std::size_t column) const noexcept
    {
        return m_rows.Long(row, column);
    }
    [[nodiscard]] std::string_view Text(RowNumber row, std::size_t column) const noexcept
    {
        return m_rows.Text(row, column);
    }
    void SetLong(RowNumber row, std::size_t column, std::int32_t value);
    void SetMoney(RowNumber row, std::size_t column, Currency value);
    void SetBoolean(RowNumber row, std::size_t column, bool value);
    /// All texts of the current row, in the order of the text columns, already checked; narrow ones are
    /// brought into the code page here, in `texts`. Requires: `row` is the current row.
    void SetTexts(RowNumber row, std::span<std::string_view> texts);

    /// Calls `visit(row)` for the current row and every row behind it, in whatever order costs least, and
    /// stands after the last row then. Nothing is visited from behind the last row; error 3021 before the
    /// first row and on a deleted one. `visit` may write numbers, and nothing else.
    template<class Visitor>
    void VisitFromCursor(Visitor&& visit);
    /// The same for every row; the cursor stays.
    template<class Visitor>
    void VisitAll(Visitor&& visit) const;

private:
    enum class Stand
    {
        BeforeFirst,
        OnRow,   // row
        Moved,   // on row, which stands elsewhere now: goes on at next
        Deleted, // the row is gone: goes on at next
        AfterLast,
    };
    struct Place
    {
        Stand stand = Stand::AfterLast;
        RowNumber row = kNoRow;
        RowNumber next = kNoRow; // kNoRow: the end
    };
    struct Index
    {
        std::size_t column;
        LongIndex rows;
    };

    void PrvSetCursor(Place place);
    /// The order with every row in its place, the current one, too.
    const RowOrder& PrvSettledOrder();
    void PrvPlaceRows();
    void PrvMergeUnplaced();
    [[nodiscard]] RowNumber PrvPlaceFor(RowNumber row) const;
    void PrvReplaceMovedRow();
    void PrvLeaveOrder(RowNumber row, Stand standOfPlaces);
    [[nodiscard]] RowNumber PrvNext(const Place& place);
    [[nodiscard]] RowNumber PrvPrevious(const Place& place);
    [[nodiscard]] std::string_view PrvOrderText(RowNumber row) const noexcept;
    [[nodiscard]] bool PrvHasIndexOf(std::size_t column) const noexcept;
    [[nodiscard]] LongIndex& PrvIndexOf(std::size_t column);
    [[nodiscard]] RowNumber PrvFirstOfSeveral(std::size_t column, std::int32_t value);
    void PrvKeepOrderText(RowNumber row);
    [[nodiscard]] bool PrvStandsBefore(RowNumber left, RowNumber right) const noexcept;
    void PrvChanged() noexcept { ++m_changeStamp; }
    /// Called before a change, when every row has its place.
    void PrvBeforeChange() noexcept
    {
        if (!m_notices.empty())
            PrvGiveNotice();
    }
    void PrvGiveNotice() noexcept;

    RowStore m_rows;
    RowOrder m_order{m_rows};
    std::vector<RowNumber> m_unplaced; // in the table, not yet in m_order; in order of arrival
    std::shared_ptr<const CodePage> m_codePage;

    std::optional<std::size_t> m_sortColumn;
    // The row whose sort text was written since it became current, and the text that its place still follows.
    RowNumber m_movedRow = kNoRow;
    std::string m_movedRowText;

    Place m_cursor;
    std::vector<Place*> m_walks;

    std::vector<Index> m_indexes; // made at the first search by their column
    // The last answer of PrvFirstOfSeveral, and the stamp under which it was given.
    struct
    {
        std::uint64_t stamp = 0;
        std::size_t column = 0;
        std::int32_t value = 0;
        RowNumber row = kNoRow;
    } m_firstOfSeveral;
    std::uint64_t m_orderStamp = 1;

    std::uint64_t m_changeStamp = 1;
    std::vector<std::function<void()>> m_notices;
    std::vector<std::string> m_scratch; // one for each column
};

template<class Visitor>
void Recordset::VisitFromCursor(Visitor&& visit)
{
    if (IsAtEnd())
        return;
    const RowNumber first = CurrentRow();
    PrvPlaceRows();
    if (m_cursor.stand == Stand::OnRow && first == m_order.First()) {
        VisitAll(visit);
    } else {
        visit(first);
        for (RowNumber row = PrvNext(m_cursor); row != kNoRow; row = m_order.Next(row))
            visit(row);
    }
    MoveBehindLast();
}

template<class Visitor>
void Recordset::VisitAll(Visitor&& visit) const
{
    // Rows lie in memory in order of arrival.
    for (RowNumber row = 0; row < m_rows.RowCount(); ++row) {
        if (m_order.Contains(row))
            visit(row);
    }
    for (const RowNumber row : m_unplaced)
        visit(row);
}

/// A walk through the rows, from the first on, with a place of its own. Throws std::bad_alloc, as Next does.
class Recordset::Walk
{
public:
    explicit Walk(Recordset& recordset);
    Walk(const Walk&) = delete;
    Walk& operator=(const Walk&) = delete;
    ~Walk();

    [[nodiscard]] bool IsAtEnd() const noexcept { return m_place.stand == Stand::AfterLast; }
    /// The row that the walk stands on, or kNoRow when it was deleted meanwhile. Requires: !IsAtEnd().
    [[nodiscard]] RowNumber Row() const noexcept { return m_place.row; }
    void Next();

private:
    Recordset& m_recordset;
    std::vector<bool> m_visited; // by row; as many as there were at the beginning
    Place m_place;
};

} // namespace KestrinProductEditor
