// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// What a bound grid reads its cells from. Fields and records count from 0; no member raises.
class IVSFlexDataSource
{
public:
    virtual ~IVSFlexDataSource() = default;
    [[nodiscard]] virtual std::int32_t GetFieldCount() = 0;
    [[nodiscard]] virtual std::int32_t GetRecordCount() = 0;
    [[nodiscard]] virtual std::u16string GetFieldName(std::int32_t Field) = 0;
    [[nodiscard]] virtual std::u16string GetData(std::int32_t Field, std::int32_t Record) = 0;
    virtual void SetData(std::int32_t Field, std::int32_t Record, std::u16string_view newData) = 0;
};

/// What lets a grid find its rows again after its data source has changed. No member raises.
class IRowPlaces
{
public:
    virtual ~IRowPlaces() = default;
    /// Another number whenever a record, its place or their count was changed.
    [[nodiscard]] virtual std::uint64_t ChangeStamp() = 0;
    /// From now on RecordNow speaks of the records as they stand at this moment.
    virtual void Settle() = 0;
    /// Where the record stands that stood at `record` when Settle was called; -1 when it is gone.
    [[nodiscard]] virtual std::int32_t RecordNow(std::int32_t record) = 0;
    /// The first record whose leading text begins with `prefix`, letter case aside; -1 for none.
    [[nodiscard]] virtual std::int32_t RecordNamed(std::u16string_view prefix) = 0;
};

enum class SelectionMode
{
    WholeRow, ///< one row: the current one
    ListBox,  ///< several rows, next to each other or not; the current row is apart from them
};

enum class CellType
{
    Text,     ///< aligned to where reading begins
    Currency, ///< aligned to where it ends
};

/// Makes the text that is shown from the text of a cell. Must not raise.
using CellFormat = std::function<std::u16string(std::u16string_view)>;

/// The width of a column before anything was set, in twips.
inline constexpr std::int32_t kDefaultColWidth = 1200;

/// A table of whole rows for reading. Row 0 is the header, data rows are 1 to Rows - 1. Widths are in twips
/// (1/1440 inch). It may hold cells of its own, or be bound to a data source, from which it asks only what it
/// shows.
///
/// **Binding.** Binding makes the row count that of the data source plus 1. Unbinding keeps row count,
/// current row, selection and scroll place; every cell is "" then. When the same source is bound again, these
/// belong to its records: they are found again through IRowPlaces (one call for each range end and selected
/// record), and not at all when the change stamp is the old one: the grid is only painted anew then. A record
/// that is gone leaves the selection; when it was the current one, the one that followed it becomes current,
/// at the end the one before it, and -1 when none is left. Another source begins without a current row or
/// selection.
///
/// **The current row** is -1 in the beginning. RowColChange comes when it really changed, once, after a
/// binding is complete; a record that only stands elsewhere after a binding is the same current row.
///
/// Errors: 5 for a row, column or width that cannot be; 445 for writing a cell, or the row or column count,
/// of a bound grid.
class IGrid : public IControl
{
public:
    // Shape. One header row and no fixed column, or none of both.

    virtual void SetRows(std::int32_t rows) = 0;
    [[nodiscard]] virtual std::int32_t Rows() const = 0;
    virtual void SetCols(std::int32_t cols) = 0;
    [[nodiscard]] virtual std::int32_t Cols() const = 0;
    virtual void SetFixedRows(std::int32_t rows) = 0;
    [[nodiscard]] virtual std::int32_t FixedRows() const = 0;
    virtual void SetFixedCols(std::int32_t cols) = 0;
    [[nodiscard]] virtual std::int32_t FixedCols() const = 0;

    // Cells

    virtual void SetCellText(std::int32_t row, std::int32_t col, std::u16string_view text) = 0;
    /// The cell's own text; "" beyond the rows that are there.
    [[nodiscard]] virtual std::u16string CellText(std::int32_t row, std::int32_t col) const = 0;
    /// Marks a cell of an unbound grid and says why in its tool tip; empty takes the mark away.
    virtual void SetCellMark(std::int32_t row, std::int32_t col, std::u16string_view reason) = 0;
    [[nodiscard]] virtual std::u16string CellMark(std::int32_t row, std::int32_t col) const = 0;

    // Columns

    virtual void SetColWidth(std::int32_t col, std::int32_t twips) = 0;
    /// What was set or dragged, never what the screen made of it.
    [[nodiscard]] virtual std::int32_t ColWidth(std::int32_t col) const = 0;
    /// Makes every visible column as wide as what it shows.
    virtual void FitColumns() = 0;
    virtual void SetColHidden(std::int32_t col, bool bHidden) = 0;
    [[nodiscard]] virtual bool IsColHidden(std::int32_t col) const = 0;
    virtual void SetColType(std::int32_t col, CellType type) = 0;
    [[nodiscard]] virtual CellType ColType(std::int32_t col) const = 0;
    virtual void SetColFormat(std::int32_t col, CellFormat format) = 0;
    /// Makes the cells drop-downs. Entries stand between "|", each "#", its number, ";" and its text, for
    /// example "#0; |#1;Yes". A cell's own text is the number; a click or a key opens the list, and choosing
    /// an entry raises CellChange.
    virtual void SetColComboList(std::int32_t col, std::u16string_view list) = 0;

    // The current row and the selection

    virtual void SetSelectionMode(SelectionMode mode) = 0;
    [[nodiscard]] virtual SelectionMode Mode() const = 0;
    /// -1 for none. Scrolls it into sight. Leaves the selection of a list box alone.
    virtual void SetCurrentRow(std::int32_t row) = 0;
    [[nodiscard]] virtual std::int32_t CurrentRow() const = 0;
    /// The row under the mouse pointer, 0 for the header; -1 for none.
    [[nodiscard]] virtual std::int32_t MouseRow() const = 0;
    /// The rows of a rectangle, and they alone, are selected. The current row stays. Nothing happens in
    /// WholeRow mode.
    virtual void SelectRange(std::int32_t row, std::int32_t col, std::int32_t endRow,
                             std::int32_t endCol) = 0;
    [[nodiscard]] virtual std::int32_t SelectedRowCount() const = 0;
    /// The i-th selected row (from 0, in row order); costs no walk.
    [[nodiscard]] virtual std::int32_t SelectedRow(std::int32_t index) const = 0;

    // Binding and painting

    /// Null unbinds. `places` may be null.
    virtual void SetDataSource(std::shared_ptr<IVSFlexDataSource> source,
                               std::shared_ptr<IRowPlaces> places) = 0;
    virtual void Refresh() = 0;
    /// While false nothing is painted; calls nest (RedrawPause).
    virtual void SetRedraw(bool bRedraw) = 0;
    /// Says something in plain text where the rows would be; empty shows the rows again.
    virtual void SetNotice(std::u16string_view text) = 0;
    [[nodiscard]] virtual std::u16string Notice() const = 0;

    Event<> RowColChange;
    /// Also for the header (MouseRow tells).
    Event<> DblClick;
    /// The user chose an entry of a drop-down: row and column.
    Event<std::int32_t, std::int32_t> CellChange;
};

/// Suspends a grid's painting until the end of the scope.
class RedrawPause
{
public:
    explicit RedrawPause(IGrid& grid) : m_grid(grid) { m_grid.SetRedraw(false); }
    RedrawPause(const RedrawPause&) = delete;
    RedrawPause& operator=(const RedrawPause&) = delete;
    ~RedrawPause() { m_grid.SetRedraw(true); }

private:
    IGrid& m_grid;
};

} // namespace KestrinProductEditor
