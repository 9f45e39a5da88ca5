// SPDX-License-Identifier: MIT
#include "platform/win32/Win32GridGeometry.h"

#include <algorithm>
#include <limits>

namespace KestrinProductEditor {

namespace {

constexpr int kUsualDpi = 96;
constexpr int kTwipsPerInch = 1440;
constexpr int kRowPadding = 7;
// A page of rows, for a window that has no height yet.
constexpr std::int32_t kGuessedPage = 50;

/// Rows that are far out of sight have no place that a window could tell.
[[nodiscard]] int Clamped(std::int64_t pixels)
{
    constexpr std::int64_t kFar = std::numeric_limits<int>::max() / 4;
    return static_cast<int>(std::clamp(pixels, -kFar, kFar));
}

} // namespace

void Win32GridGeometry::SetMetrics(int fontHeight, UINT dpi)
{
    m_dpi = dpi;
    m_rowHeight = fontHeight + Scaled(kRowPadding);
}

std::int32_t Win32GridGeometry::DataRows() const
{
    return m_grid.Notice().empty() ? std::max(0, m_grid.Rows() - m_grid.FixedRows()) : 0;
}

int Win32GridGeometry::HeaderHeight() const
{
    return m_grid.FixedRows() > 0 ? m_rowHeight : 0;
}

std::int32_t Win32GridGeometry::Page() const
{
    if (m_client.cy <= 0)
        return kGuessedPage;
    return std::max(1, (static_cast<int>(m_client.cy) - HeaderHeight()) / m_rowHeight);
}

std::int32_t Win32GridGeometry::TopRow() const
{
    return std::clamp(m_grid.TopRow(), FirstRow(), HighestTopRow());
}

std::int32_t Win32GridGeometry::HighestTopRow() const
{
    return FirstRow() + std::max(0, DataRows() - Page());
}

std::int32_t Win32GridGeometry::TopRowShowing(std::int32_t row) const
{
    const std::int32_t top = TopRow();
    if (row < top)
        return std::max(row, FirstRow());
    return std::max(top, std::min(row - Page() + 1, HighestTopRow()));
}

std::int32_t Win32GridGeometry::RowAt(int y) const
{
    if (y < HeaderHeight() || y >= m_client.cy)
        return -1;
    const std::int64_t row = std::int64_t{TopRow()} + (y - HeaderHeight()) / m_rowHeight;
    return row - FirstRow() < DataRows() ? static_cast<std::int32_t>(row) : -1;
}

int Win32GridGeometry::ColumnWidth(std::int32_t col) const
{
    if (m_grid.IsColHidden(col))
        return 0;
    const std::int32_t twips = m_grid.ColWidth(col);
    const int pixels = PixelsFromTwips(twips);
    // A column that has a width can be seen, and its border be taken hold of.
    return twips > 0 ? std::max(pixels, SmallestColumn()) : pixels;
}

int Win32GridGeometry::ColumnLeft(std::int32_t col) const
{
    std::int64_t left = -m_across;
    for (std::int32_t before = 0; before < col; ++before)
        left += ColumnWidth(before);
    return Clamped(left);
}

int Win32GridGeometry::WholeWidth() const
{
    return Clamped(std::int64_t{ColumnLeft(m_grid.Cols())} + m_across);
}

std::int32_t Win32GridGeometry::ColumnAt(int x) const
{
    int left = -m_across;
    for (std::int32_t col = 0; col < m_grid.Cols(); ++col) {
        const int right = Clamped(std::int64_t{left} + ColumnWidth(col));
        if (x >= left && x < right)
            return col;
        left = right;
    }
    return -1;
}

std::int32_t Win32GridGeometry::BorderAt(int x) const
{
    const int reach = Scaled(4);
    int left = -m_across;
    std::int32_t nearest = -1;
    int nearestDistance = reach + 1;
    for (std::int32_t col = 0; col < m_grid.Cols(); ++col) {
        const int width = ColumnWidth(col);
        left = Clamped(std::int64_t{left} + width);
        const int distance = std::abs(x - left);
        if (width > 0 && distance < nearestDistance) {
            nearest = col;
            nearestDistance = distance;
        }
    }
    return nearest;
}

std::int32_t Win32GridGeometry::FirstVisibleColumn() const
{
    for (std::int32_t col = 0; col < m_grid.Cols(); ++col) {
        if (!m_grid.IsColHidden(col))
            return col;
    }
    return -1;
}

std::int32_t Win32GridGeometry::LastVisibleColumn() const
{
    for (std::int32_t col = m_grid.Cols() - 1; col >= 0; --col) {
        if (!m_grid.IsColHidden(col))
            return col;
    }
    return -1;
}

RECT Win32GridGeometry::CellRect(std::int32_t row, std::int32_t col) const
{
    RECT rect = RowRect(row);
    rect.left = ColumnLeft(col);
    rect.right = rect.left + ColumnWidth(col);
    return rect;
}

RECT Win32GridGeometry::RowRect(std::int32_t row) const
{
    RECT rect{-m_across, 0, WholeWidth() - m_across, HeaderHeight()};
    if (row >= FirstRow()) {
        rect.top = Clamped(HeaderHeight() + (std::int64_t{row} - TopRow()) * m_rowHeight);
        rect.bottom = rect.top + m_rowHeight;
    }
    return rect;
}

RECT Win32GridGeometry::BodyRect() const
{
    return {0, std::min<LONG>(HeaderHeight(), m_client.cy), m_client.cx, m_client.cy};
}

int Win32GridGeometry::Scaled(int pixels) const
{
    return MulDiv(pixels, static_cast<int>(m_dpi), kUsualDpi);
}

int Win32GridGeometry::PixelsFromTwips(std::int32_t twips) const
{
    return Clamped((std::int64_t{twips} * m_dpi + kTwipsPerInch / 2) / kTwipsPerInch);
}

std::int32_t Win32GridGeometry::TwipsFromPixels(int pixels) const
{
    return MulDiv(pixels, kTwipsPerInch, static_cast<int>(m_dpi));
}

} // namespace KestrinProductEditor
