// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/GridBase.h"

#include <windows.h>

#include <cstdint>

namespace KestrinProductEditor {

/// Where a grid's rows and columns stand in a window's client area, in pixels; from the side where reading
/// begins. It keeps nothing of the grid: each answer is of this moment.
///
/// Rows are grid rows. A grid that shows a notice has no data rows here.
class Win32GridGeometry
{
public:
    explicit Win32GridGeometry(const GridBase& grid) : m_grid(grid) {}

    // What the window knows

    void SetSize(SIZE client) { m_client = client; }
    void SetMetrics(int fontHeight, UINT dpi);
    void SetAcross(int pixels) { m_across = pixels; }

    // Rows

    [[nodiscard]] std::int32_t FirstRow() const { return m_grid.FixedRows(); }
    [[nodiscard]] std::int32_t DataRows() const;
    [[nodiscard]] int RowHeight() const { return m_rowHeight; }
    [[nodiscard]] int HeaderHeight() const;
    /// The rows that are in sight as a whole, at least 1; a guess for a window that has no height yet.
    [[nodiscard]] std::int32_t Page() const;
    /// The first row in sight: the grid's, as far as there are rows to fill the window.
    [[nodiscard]] std::int32_t TopRow() const;
    [[nodiscard]] std::int32_t HighestTopRow() const;
    /// The top row that brings a row into sight.
    [[nodiscard]] std::int32_t TopRowShowing(std::int32_t row) const;
    /// The row there, -1 for none; the header is none.
    [[nodiscard]] std::int32_t RowAt(int y) const;
    [[nodiscard]] bool IsHeader(int y) const { return y >= 0 && y < HeaderHeight(); }

    // Columns

    [[nodiscard]] int Across() const { return m_across; }
    [[nodiscard]] int ColumnWidth(std::int32_t col) const;
    [[nodiscard]] int ColumnLeft(std::int32_t col) const;
    [[nodiscard]] int WholeWidth() const;
    [[nodiscard]] int SmallestColumn() const { return Scaled(12); }
    /// -1 for none.
    [[nodiscard]] std::int32_t ColumnAt(int x) const;
    /// The column whose far border is there to be dragged; -1 for none.
    [[nodiscard]] std::int32_t BorderAt(int x) const;
    [[nodiscard]] std::int32_t FirstVisibleColumn() const;
    [[nodiscard]] std::int32_t LastVisibleColumn() const;

    /// Of a header cell for row 0 under a header. May lie out of sight.
    [[nodiscard]] RECT CellRect(std::int32_t row, std::int32_t col) const;
    /// The whole row, as far as there are columns.
    [[nodiscard]] RECT RowRect(std::int32_t row) const;
    /// All below the header.
    [[nodiscard]] RECT BodyRect() const;
    [[nodiscard]] SIZE Client() const { return m_client; }

    /// A length at 96 dots per inch.
    [[nodiscard]] int Scaled(int pixels) const;
    [[nodiscard]] int PixelsFromTwips(std::int32_t twips) const;
    [[nodiscard]] std::int32_t TwipsFromPixels(int pixels) const;

private:
    const GridBase& m_grid;
    SIZE m_client{};
    UINT m_dpi = 96;
    int m_rowHeight = 20;
    int m_across = 0;
};

} // namespace KestrinProductEditor
