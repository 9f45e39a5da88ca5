// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/GridBase.h"
#include "platform/win32/Win32GridGeometry.h"

#include <windows.h>

#include <uxtheme.h>

#include <cstdint>
#include <string>

namespace KestrinProductEditor {

/// Paints what a grid shows, in the colours, the theme and the contrast of the system.
class Win32GridPainter
{
public:
    struct State
    {
        bool isFocused;
        bool isEnabled;
    };

    Win32GridPainter() = default;
    Win32GridPainter(const Win32GridPainter&) = delete;
    Win32GridPainter& operator=(const Win32GridPainter&) = delete;
    ~Win32GridPainter();

    /// From now on in that font, which stays the caller's.
    void SetFont(HFONT font) { m_font = font; }
    [[nodiscard]] HFONT Font() const;
    /// Themes belong to a window; again when the theme or the resolution has changed.
    void TakeTheme(HWND window);

    [[nodiscard]] int FontHeight() const;
    /// What a cell of that text needs, in pixels.
    [[nodiscard]] int CellWidth(const GridBase& grid, const Win32GridGeometry& geometry, std::int32_t row,
                                std::int32_t col) const;
    /// The width of so many characters of usual text.
    [[nodiscard]] int TextWidth(int characters) const;

    /// `dirty` is what is asked for, in client coordinates; the canvas lies over the client area.
    void Paint(HDC canvas, const RECT& dirty, const GridBase& grid, const Win32GridGeometry& geometry,
               State state) const;
    /// The frame around the client area; false when the system's own will do.
    bool PaintBorder(HDC canvas, const RECT& whole) const;

    /// A text as a cell shows it: one line.
    [[nodiscard]] static std::u16string OneLine(std::u16string text);

private:
    void PrvPaintHeader(HDC canvas, const RECT& dirty, const GridBase& grid,
                        const Win32GridGeometry& geometry) const;
    void PrvPaintRow(HDC canvas, std::int32_t row, const GridBase& grid, const Win32GridGeometry& geometry,
                     State state) const;
    void PrvPaintCurrentRow(HDC canvas, const GridBase& grid, const Win32GridGeometry& geometry,
                            State state) const;
    void PrvPaintNotice(HDC canvas, const GridBase& grid, const Win32GridGeometry& geometry) const;
    /// What signs and arrows take of a cell.
    [[nodiscard]] static int PrvExtraWidth(const GridBase& grid, const Win32GridGeometry& geometry,
                                           std::int32_t row, std::int32_t col);
    [[nodiscard]] static COLORREF PrvLineColor();
    /// Of rows that are selected: as the system has it, or paler.
    [[nodiscard]] static COLORREF PrvSelectionGround(bool isStrong);

    HFONT m_font = nullptr;
    HTHEME m_headerTheme = nullptr;
    HTHEME m_listTheme = nullptr;
};

} // namespace KestrinProductEditor
