// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/GridBase.h"

#include <QAbstractTableModel>

#include <cstdint>

namespace KestrinProductEditor {

/// What a grid holds, as Qt's views read it: the data rows are the model's rows, the grid's header row is the
/// horizontal header. Keeps the shape only; each text is asked for when it is painted or read aloud.
///
/// The cells of the first visible column speak for their row: a screen reader hears every visible cell of it,
/// each with its heading.
class QtGridModel final : public QAbstractTableModel
{
public:
    explicit QtGridModel(const GridBase& grid);

    /// Takes over the grid's present shape. Rows come and go at the end, so that scroll places and indexes
    /// stay; what stands in them is for the caller to paint. No rows while the grid shows a notice.
    void TakeShape();
    /// Has no rows until the shape is taken again.
    void DropRows();

    [[nodiscard]] std::int32_t GridRow(int row) const { return row + m_grid.FixedRows(); }
    [[nodiscard]] int ModelRow(std::int32_t gridRow) const { return gridRow - m_grid.FixedRows(); }
    /// -1 when all are hidden.
    [[nodiscard]] int FirstVisibleColumn() const;
    [[nodiscard]] int LastVisibleColumn() const;
    [[nodiscard]] bool IsDropDown(const QModelIndex& index) const;
    /// Why a cell is marked; empty when it is not.
    [[nodiscard]] QString Mark(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    /// Those that are in the grid as well, while its new shape is being taken.
    [[nodiscard]] int PrvCols() const;
    [[nodiscard]] int PrvAlignment(int col) const;
    [[nodiscard]] QString PrvRowReadAloud(int row) const;

    const GridBase& m_grid;
    int m_rows = 0;
    int m_cols = 0;
};

} // namespace KestrinProductEditor
