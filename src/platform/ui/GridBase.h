// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Grid.h"
#include "platform/ui/RowSelection.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// Everything of a grid that is not painting: cells, columns, current row, selection, and what a binding does
/// to them. A toolkit's grid derives from it, shows what it holds, and tells it what the user does.
class GridBase : public IGrid
{
public:
    // IGrid but for MouseRow and FitColumns, and but for IControl

    void SetRows(std::int32_t rows) final;
    [[nodiscard]] std::int32_t Rows() const final { return m_rows; }
    void SetCols(std::int32_t cols) final;
    [[nodiscard]] std::int32_t Cols() const final;
    void SetFixedRows(std::int32_t rows) final;
    [[nodiscard]] std::int32_t FixedRows() const final { return m_fixedRows; }
    void SetFixedCols(std::int32_t cols) final;
    [[nodiscard]] std::int32_t FixedCols() const final { return 0; }

    void SetCellText(std::int32_t row, std::int32_t col, std::u16string_view text) final;
    [[nodiscard]] std::u16string CellText(std::int32_t row, std::int32_t col) const final;
    void SetCellMark(std::int32_t row, std::int32_t col, std::u16string_view reason) final;
    [[nodiscard]] std::u16string CellMark(std::int32_t row, std::int32_t col) const final;

    void SetColWidth(std::int32_t col, std::int32_t twips) final;
    [[nodiscard]] std::int32_t ColWidth(std::int32_t col) const final;
    void SetColHidden(std::int32_t col, bool bHidden) final;
    [[nodiscard]] bool IsColHidden(std::int32_t col) const final;
    void SetColType(std::int32_t col, CellType type) final;
    [[nodiscard]] CellType ColType(std::int32_t col) const final;
    void SetColFormat(std::int32_t col, CellFormat format) final;
    void SetColComboList(std::int32_t col, std::u16string_view list) final;

    void SetSelectionMode(SelectionMode mode) final;
    [[nodiscard]] SelectionMode Mode() const final { return m_mode; }
    void SetCurrentRow(std::int32_t row) final;
    [[nodiscard]] std::int32_t CurrentRow() const final { return m_currentRow; }
    void SelectRange(std::int32_t row, std::int32_t col, std::int32_t endRow, std::int32_t endCol) final;
    [[nodiscard]] std::int32_t SelectedRowCount() const final { return m_selection.Count(); }
    [[nodiscard]] std::int32_t SelectedRow(std::int32_t index) const final;

    void SetDataSource(std::shared_ptr<IVSFlexDataSource> source, std::shared_ptr<IRowPlaces> places) final;
    void Refresh() final { ShowCells(); }
    void SetRedraw(bool bRedraw) final;
    void SetNotice(std::u16string_view text) final;
    [[nodiscard]] std::u16string Notice() const final { return m_notice; }

    /// An entry of a drop-down.
    struct ComboEntry
    {
        std::int32_t number;
        std::u16string text;
    };

    // What there is to show; for the backend, and for tests that read the screen

    /// The text that a cell shows: its own, through the column's drop-down list or format.
    [[nodiscard]] std::u16string DisplayText(std::int32_t row, std::int32_t col) const;
    [[nodiscard]] const std::vector<ComboEntry>& ComboList(std::int32_t col) const;
    [[nodiscard]] const RowSelection& Selection() const { return m_selection; }
    [[nodiscard]] bool IsBound() const { return m_source != nullptr; }
    /// The first data row in sight.
    [[nodiscard]] std::int32_t TopRow() const { return m_topRow; }
    [[nodiscard]] bool IsRedrawing() const { return m_redrawPauses == 0; }
    /// The first row whose name begins with the text; -1 for none, and for a grid without IRowPlaces.
    [[nodiscard]] std::int32_t RowNamed(std::u16string_view prefix) const;

protected:
    // What a backend does when something has changed. None may raise an event.

    /// Rows, columns and everything in them: shape, cells, current row, selection and top row.
    virtual void ShowAll() = 0;
    /// The same rows and columns are to be painted anew.
    virtual void ShowCells() = 0;
    virtual void ShowColumn(std::int32_t col) = 0;
    /// The current row, scrolled into sight.
    virtual void ShowCurrentRow() = 0;
    virtual void ShowSelection() = 0;
    virtual void ShowNotice() = 0;
    /// Painting was suspended or is allowed again.
    virtual void ShowRedraw() = 0;

    // What the user does

    /// Made a row current and rows selected, in one act; in WholeRow mode the current row alone is selected.
    /// Raises RowColChange when the current row is another. What holds then may differ: a handler may have
    /// chosen otherwise.
    void UserChose(std::int32_t currentRow, const RowSelection& selection);
    void UserScrolled(std::int32_t topRow) { m_topRow = topRow; }
    void UserResized(std::int32_t col, std::int32_t twips);
    /// Chose an entry of a drop-down. Raises CellChange.
    void UserPicked(std::int32_t row, std::int32_t col, std::int32_t number);

private:
    struct Column
    {
        std::int32_t width = kDefaultColWidth;
        bool hidden = false;
        CellType type = CellType::Text;
        CellFormat format;
        std::vector<ComboEntry> combo;
    };
    /// Where the user stands in the rows.
    struct Standing
    {
        std::int32_t currentRow = -1;
        std::int32_t topRow = 0;
        RowSelection selection;
        bool isAnotherCurrentRow = false;
    };
    struct Cell
    {
        std::u16string text;
        std::u16string mark;
    };

    [[nodiscard]] Column& PrvColumn(std::int32_t col);
    [[nodiscard]] const Column& PrvColumn(std::int32_t col) const;
    [[nodiscard]] const Cell* PrvFindCell(std::int32_t row, std::int32_t col) const;
    [[nodiscard]] Cell& PrvOwnCell(std::int32_t row, std::int32_t col);
    void PrvRefuseWhenBound() const;
    /// Takes rows out of the selection and, when it was one of them, makes none current. Returns whether it
    /// was.
    bool PrvLoseRows(RowSelection::Range rows);
    /// What becomes of the last binding's rows, now that there are `rows` rows.
    [[nodiscard]] Standing PrvFindRowsAgain(IRowPlaces* places, std::int32_t rows) const;

    std::int32_t m_rows = 0;
    std::int32_t m_fixedRows = 0;
    std::vector<Column> m_columns;
    std::vector<std::vector<Cell>> m_cells; // of an unbound grid, by row; made when written
    SelectionMode m_mode = SelectionMode::ListBox;
    std::int32_t m_currentRow = -1;
    std::int32_t m_topRow = 1;
    RowSelection m_selection;
    int m_redrawPauses = 0;
    std::u16string m_notice;

    std::shared_ptr<IVSFlexDataSource> m_source;
    std::shared_ptr<IRowPlaces> m_places;
    // The last binding, which outlives an unbinding.
    std::weak_ptr<IVSFlexDataSource> m_lastSource;
    std::optional<std::uint64_t> m_lastStamp;
};

} // namespace KestrinProductEditor
