// SPDX-License-Identifier: MIT
#include "platform/ui/GridBase.h"

#include <KestrinProductEditor/AutomationError.h>

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace KestrinProductEditor {

namespace {

void Require(bool holds)
{
    if (!holds)
        throw AutomationError(kErrInvalidProcedureCall);
}

/// The number that a decimal text is; 0 for a text that is none.
[[nodiscard]] std::int32_t NumberOf(std::u16string_view text)
{
    constexpr std::int32_t kLimit = std::numeric_limits<std::int32_t>::max() / 10 - 1;
    std::int32_t number = 0;
    for (const char16_t digit : text) {
        if (digit < u'0' || digit > u'9' || number > kLimit)
            return 0;
        number = number * 10 + (digit - u'0');
    }
    return number;
}

/// The one row, or nothing for -1.
[[nodiscard]] RowSelection Only(std::int32_t row)
{
    RowSelection selection;
    if (row >= 0)
        selection.Add({row, row});
    return selection;
}

[[nodiscard]] std::u16string TextOf(std::int32_t number)
{
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

/// "#0; |#1;Yes": entries between "|", each a number behind "#" and a text behind ";".
[[nodiscard]] std::vector<GridBase::ComboEntry> ComboEntries(std::u16string_view list)
{
    std::vector<GridBase::ComboEntry> entries;
    while (!list.empty()) {
        const std::u16string_view entry = list.substr(0, list.find(u'|'));
        list.remove_prefix(std::min(entry.size() + 1, list.size()));
        const std::size_t end = entry.find(u';');
        Require(entry.starts_with(u'#') && end != std::u16string_view::npos);
        entries.push_back({NumberOf(entry.substr(1, end - 1)), std::u16string(entry.substr(end + 1))});
    }
    return entries;
}

} // namespace

// Shape

void GridBase::SetRows(std::int32_t rows)
{
    PrvRefuseWhenBound();
    Require(rows >= m_fixedRows);
    const bool hasLostCurrentRow = rows < m_rows && PrvLoseRows({rows, m_rows - 1});
    if (m_cells.size() > static_cast<std::size_t>(rows))
        m_cells.resize(static_cast<std::size_t>(rows));
    m_rows = rows;
    m_topRow = std::clamp(m_topRow, m_fixedRows, std::max(rows - 1, m_fixedRows));
    ShowAll();
    if (hasLostCurrentRow)
        RowColChange.Raise();
}

void GridBase::SetCols(std::int32_t cols)
{
    PrvRefuseWhenBound();
    Require(cols >= 0);
    m_columns.resize(static_cast<std::size_t>(cols));
    for (std::vector<Cell>& row : m_cells) {
        if (row.size() > m_columns.size())
            row.resize(m_columns.size());
    }
    ShowAll();
}

std::int32_t GridBase::Cols() const
{
    return static_cast<std::int32_t>(m_columns.size());
}

void GridBase::SetFixedRows(std::int32_t rows)
{
    PrvRefuseWhenBound();
    Require(rows >= 0 && rows <= 1 && rows <= m_rows);
    const bool hasLostCurrentRow = rows > 0 && PrvLoseRows({0, rows - 1});
    m_fixedRows = rows;
    m_topRow = std::max(m_topRow, rows);
    ShowAll();
    if (hasLostCurrentRow)
        RowColChange.Raise();
}

void GridBase::SetFixedCols(std::int32_t cols)
{
    Require(cols == 0);
}

// Cells

void GridBase::SetCellText(std::int32_t row, std::int32_t col, std::u16string_view text)
{
    PrvOwnCell(row, col).text = text;
    ShowCells();
}

std::u16string GridBase::CellText(std::int32_t row, std::int32_t col) const
{
    static_cast<void>(PrvColumn(col));
    Require(row >= 0);
    if (row >= m_rows)
        return {};
    if (m_source == nullptr) {
        const Cell* const cell = PrvFindCell(row, col);
        return cell != nullptr ? cell->text : std::u16string();
    }
    return row < m_fixedRows ? m_source->GetFieldName(col) : m_source->GetData(col, row - m_fixedRows);
}

void GridBase::SetCellMark(std::int32_t row, std::int32_t col, std::u16string_view reason)
{
    PrvOwnCell(row, col).mark = reason;
    ShowCells();
}

std::u16string GridBase::CellMark(std::int32_t row, std::int32_t col) const
{
    static_cast<void>(PrvColumn(col));
    const Cell* const cell = PrvFindCell(row, col);
    return cell != nullptr ? cell->mark : std::u16string();
}

std::u16string GridBase::DisplayText(std::int32_t row, std::int32_t col) const
{
    std::u16string text = CellText(row, col);
    if (row < m_fixedRows || row >= m_rows)
        return text;
    const Column& column = PrvColumn(col);
    if (!column.combo.empty()) {
        const std::int32_t number = NumberOf(text);
        const auto entry = std::find_if(column.combo.begin(), column.combo.end(),
                                        [number](const ComboEntry& other) { return other.number == number; });
        return entry != column.combo.end() ? entry->text : std::u16string();
    }
    return column.format ? column.format(text) : text;
}

// Columns

void GridBase::SetColWidth(std::int32_t col, std::int32_t twips)
{
    Column& column = PrvColumn(col);
    Require(twips >= 0);
    column.width = twips;
    ShowColumn(col);
}

std::int32_t GridBase::ColWidth(std::int32_t col) const
{
    return PrvColumn(col).width;
}

void GridBase::SetColHidden(std::int32_t col, bool bHidden)
{
    PrvColumn(col).hidden = bHidden;
    ShowColumn(col);
}

bool GridBase::IsColHidden(std::int32_t col) const
{
    return PrvColumn(col).hidden;
}

void GridBase::SetColType(std::int32_t col, CellType type)
{
    PrvColumn(col).type = type;
    ShowColumn(col);
}

CellType GridBase::ColType(std::int32_t col) const
{
    return PrvColumn(col).type;
}

void GridBase::SetColFormat(std::int32_t col, CellFormat format)
{
    PrvColumn(col).format = std::move(format);
    ShowColumn(col);
}

void GridBase::SetColComboList(std::int32_t col, std::u16string_view list)
{
    PrvColumn(col).combo = ComboEntries(list);
    ShowColumn(col);
}

const std::vector<GridBase::ComboEntry>& GridBase::ComboList(std::int32_t col) const
{
    return PrvColumn(col).combo;
}

// The current row and the selection

void GridBase::SetSelectionMode(SelectionMode mode)
{
    if (mode == SelectionMode::WholeRow)
        m_selection = Only(m_currentRow);
    m_mode = mode;
    ShowSelection();
}

void GridBase::SetCurrentRow(std::int32_t row)
{
    Require(row == -1 || (row >= m_fixedRows && row < m_rows));
    const bool isAnother = row != m_currentRow;
    if (m_mode == SelectionMode::WholeRow)
        m_selection = Only(row);
    m_currentRow = row;
    if (m_mode == SelectionMode::WholeRow)
        ShowSelection();
    ShowCurrentRow();
    if (isAnother)
        RowColChange.Raise();
}

void GridBase::SelectRange(std::int32_t row, std::int32_t col, std::int32_t endRow, std::int32_t endCol)
{
    static_cast<void>(PrvColumn(col));
    static_cast<void>(PrvColumn(endCol));
    const auto [first, last] = std::minmax(row, endRow);
    Require(first >= m_fixedRows && last < m_rows);
    if (m_mode == SelectionMode::WholeRow)
        return;
    RowSelection selection;
    selection.Add({first, last});
    m_selection = std::move(selection);
    ShowSelection();
}

std::int32_t GridBase::SelectedRow(std::int32_t index) const
{
    Require(index >= 0 && index < m_selection.Count());
    return m_selection.Row(index);
}

std::int32_t GridBase::RowNamed(std::u16string_view prefix) const
{
    const std::int32_t record = m_places != nullptr ? m_places->RecordNamed(prefix) : -1;
    return record < 0 ? -1 : record + m_fixedRows;
}

void GridBase::UserChose(std::int32_t currentRow, const RowSelection& selection)
{
    const bool isAnother = currentRow != m_currentRow;
    RowSelection chosen = m_mode == SelectionMode::WholeRow ? Only(currentRow) : selection;
    m_selection = std::move(chosen);
    m_currentRow = currentRow;
    if (isAnother)
        RowColChange.Raise();
}

void GridBase::UserResized(std::int32_t col, std::int32_t twips)
{
    PrvColumn(col).width = twips;
}

void GridBase::UserPicked(std::int32_t row, std::int32_t col, std::int32_t number)
{
    SetCellText(row, col, TextOf(number));
    CellChange.Raise(row, col);
}

// Binding and painting

void GridBase::SetDataSource(std::shared_ptr<IVSFlexDataSource> source, std::shared_ptr<IRowPlaces> places)
{
    if (source == nullptr) {
        m_source.reset();
        m_places.reset();
        ShowCells();
        return;
    }
    const std::int32_t records = std::max(source->GetRecordCount(), 0);
    const std::int32_t rows =
        std::min(records, std::numeric_limits<std::int32_t>::max() - m_fixedRows) + m_fixedRows;
    const auto cols = static_cast<std::size_t>(std::max(source->GetFieldCount(), 0));
    const bool isSameSource = source == m_lastSource.lock();
    const bool isSameShape = rows == m_rows && cols == m_columns.size();
    if (isSameSource && isSameShape && places != nullptr && m_lastStamp == places->ChangeStamp()) {
        m_source = std::move(source);
        m_places = std::move(places);
        m_cells.clear();
        ShowCells();
        return;
    }

    Standing standing;
    if (isSameSource)
        standing = PrvFindRowsAgain(places.get(), rows);
    else
        standing.isAnotherCurrentRow = m_currentRow != -1;
    m_columns.resize(cols);
    m_lastSource = source;
    m_source = std::move(source);
    m_places = std::move(places);
    m_cells.clear();
    m_rows = rows;
    m_currentRow = standing.currentRow;
    m_topRow = std::max(standing.topRow, m_fixedRows);
    m_selection = std::move(standing.selection);
    m_lastStamp.reset();
    if (m_places != nullptr) {
        m_places->Settle();
        m_lastStamp = m_places->ChangeStamp();
    }
    ShowAll();
    if (standing.isAnotherCurrentRow)
        RowColChange.Raise();
}

void GridBase::SetRedraw(bool bRedraw)
{
    const bool wasRedrawing = IsRedrawing();
    m_redrawPauses = std::max(0, m_redrawPauses + (bRedraw ? -1 : 1));
    if (IsRedrawing() != wasRedrawing)
        ShowRedraw();
}

void GridBase::SetNotice(std::u16string_view text)
{
    m_notice = text;
    ShowNotice();
}

GridBase::Column& GridBase::PrvColumn(std::int32_t col)
{
    Require(col >= 0 && col < Cols());
    return m_columns[static_cast<std::size_t>(col)];
}

const GridBase::Column& GridBase::PrvColumn(std::int32_t col) const
{
    Require(col >= 0 && col < Cols());
    return m_columns[static_cast<std::size_t>(col)];
}

const GridBase::Cell* GridBase::PrvFindCell(std::int32_t row, std::int32_t col) const
{
    const auto rowIndex = static_cast<std::size_t>(row);
    const auto colIndex = static_cast<std::size_t>(col);
    if (rowIndex >= m_cells.size() || colIndex >= m_cells[rowIndex].size())
        return nullptr;
    return &m_cells[rowIndex][colIndex];
}

GridBase::Cell& GridBase::PrvOwnCell(std::int32_t row, std::int32_t col)
{
    PrvRefuseWhenBound();
    static_cast<void>(PrvColumn(col));
    Require(row >= 0 && row < m_rows);
    const auto rowIndex = static_cast<std::size_t>(row);
    if (m_cells.size() <= rowIndex)
        m_cells.resize(rowIndex + 1);
    std::vector<Cell>& cells = m_cells[rowIndex];
    if (cells.size() < m_columns.size())
        cells.resize(m_columns.size());
    return cells[static_cast<std::size_t>(col)];
}

void GridBase::PrvRefuseWhenBound() const
{
    if (IsBound())
        throw AutomationError(kErrActionNotSupported);
}

bool GridBase::PrvLoseRows(RowSelection::Range rows)
{
    m_selection.Remove(rows);
    const bool isCurrentRowLost = m_currentRow >= rows.first && m_currentRow <= rows.last;
    if (isCurrentRowLost)
        m_currentRow = -1;
    return isCurrentRowLost;
}

GridBase::Standing GridBase::PrvFindRowsAgain(IRowPlaces* places, std::int32_t rows) const
{
    const auto rowNow = [&](std::int32_t row) -> std::int32_t {
        if (places == nullptr)
            return row < rows ? row : -1;
        const std::int32_t record = places->RecordNow(row - m_fixedRows);
        return record < 0 || record >= rows - m_fixedRows ? -1 : record + m_fixedRows;
    };
    // The row itself, else the next one behind it that is still there, else the last one before it.
    const auto nearestNow = [&](std::int32_t row) {
        std::int32_t now = -1;
        if (rows > m_fixedRows) {
            for (std::int32_t then = row; now < 0 && then < m_rows; ++then)
                now = rowNow(then);
            for (std::int32_t then = row - 1; now < 0 && then >= m_fixedRows; --then)
                now = rowNow(then);
        }
        return now;
    };

    Standing standing;
    if (m_currentRow >= m_fixedRows) {
        standing.currentRow = rowNow(m_currentRow);
        standing.isAnotherCurrentRow = standing.currentRow < 0;
        if (standing.currentRow < 0)
            standing.currentRow = nearestNow(m_currentRow);
    }
    if (m_topRow > m_fixedRows)
        standing.topRow = std::max(nearestNow(m_topRow), m_fixedRows);

    if (m_mode == SelectionMode::WholeRow) {
        standing.selection = Only(standing.currentRow);
        return standing;
    }
    std::vector<std::int32_t> selected;
    if (rows > m_fixedRows) {
        for (const RowSelection::Range& range : m_selection.Ranges()) {
            for (std::int32_t row = range.first; row <= range.last; ++row) {
                if (const std::int32_t now = rowNow(row); now >= 0)
                    selected.push_back(now);
            }
        }
    }
    std::sort(selected.begin(), selected.end());
    for (const std::int32_t row : selected)
        standing.selection.Add({row, row});
    return standing;
}

} // namespace KestrinProductEditor
