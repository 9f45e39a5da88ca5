// SPDX-License-Identifier: MIT
#include "platform/qt/QtGridModel.h"

#include "platform/qt/QtText.h"

#include <algorithm>

namespace KestrinProductEditor {

QtGridModel::QtGridModel(const GridBase& grid) : m_grid(grid) {}

void QtGridModel::TakeShape()
{
    const int cols = m_grid.Cols();
    const int rows = m_grid.Notice().empty() ? std::max(0, m_grid.Rows() - m_grid.FixedRows()) : 0;
    if (cols < m_cols) {
        beginRemoveColumns({}, cols, m_cols - 1);
        m_cols = cols;
        endRemoveColumns();
    } else if (cols > m_cols) {
        beginInsertColumns({}, m_cols, cols - 1);
        m_cols = cols;
        endInsertColumns();
    }
    if (rows < m_rows) {
        beginRemoveRows({}, rows, m_rows - 1);
        m_rows = rows;
        endRemoveRows();
    } else if (rows > m_rows) {
        beginInsertRows({}, m_rows, rows - 1);
        m_rows = rows;
        endInsertRows();
    }
}

void QtGridModel::DropRows()
{
    if (m_rows == 0)
        return;
    beginRemoveRows({}, 0, m_rows - 1);
    m_rows = 0;
    endRemoveRows();
}

int QtGridModel::FirstVisibleColumn() const
{
    for (int col = 0; col < PrvCols(); ++col)
        if (!m_grid.IsColHidden(col))
            return col;
    return -1;
}

int QtGridModel::LastVisibleColumn() const
{
    for (int col = PrvCols() - 1; col >= 0; --col)
        if (!m_grid.IsColHidden(col))
            return col;
    return -1;
}

bool QtGridModel::IsDropDown(const QModelIndex& index) const
{
    return index.isValid() && !m_grid.ComboList(index.column()).empty();
}

QString QtGridModel::Mark(const QModelIndex& index) const
{
    return ToQt(m_grid.CellMark(GridRow(index.row()), index.column()));
}

int QtGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int QtGridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_cols;
}

QVariant QtGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows || index.column() >= PrvCols())
        return {};
    switch (role) {
    case Qt::DisplayRole:
        return ToQt(m_grid.DisplayText(GridRow(index.row()), index.column()));
    case Qt::TextAlignmentRole:
        return PrvAlignment(index.column());
    case Qt::AccessibleTextRole:
        return index.column() == FirstVisibleColumn() ? QVariant(PrvRowReadAloud(index.row())) : QVariant();
    case Qt::AccessibleDescriptionRole:
        return Mark(index);
    default:
        return {};
    }
}

QVariant QtGridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (section < 0 || section >= PrvCols())
        return {};
    if (role == Qt::DisplayRole)
        return m_grid.FixedRows() > 0 ? ToQt(m_grid.DisplayText(0, section)) : QString();
    if (role == Qt::TextAlignmentRole)
        return PrvAlignment(section);
    return {};
}

int QtGridModel::PrvCols() const
{
    return std::min(m_cols, m_grid.Cols());
}

int QtGridModel::PrvAlignment(int col) const
{
    // "Right" is where reading ends: Qt mirrors it.
    const Qt::Alignment across = m_grid.ColType(col) == CellType::Currency ? Qt::AlignRight : Qt::AlignLeft;
    return static_cast<int>(across | Qt::AlignVCenter);
}

QString QtGridModel::PrvRowReadAloud(int row) const
{
    QStringList parts;
    for (int col = 0; col < PrvCols(); ++col) {
        if (m_grid.IsColHidden(col))
            continue;
        const QString text = ToQt(m_grid.DisplayText(GridRow(row), col));
        if (text.isEmpty())
            continue;
        const QString heading = headerData(col, Qt::Horizontal, Qt::DisplayRole).toString();
        parts += heading.isEmpty() ? text : heading + QStringLiteral(": ") + text;
    }
    return parts.join(QStringLiteral(", "));
}

} // namespace KestrinProductEditor
