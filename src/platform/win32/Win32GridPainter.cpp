// SPDX-License-Identifier: MIT
#include "platform/win32/Win32GridPainter.h"

#include "platform/Text.h"
#include "platform/win32/Win32HighContrast.h"
#include "platform/win32/Win32TextMeasure.h"
#include "platform/windows/WideText.h"

#include <vssym32.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace KestrinProductEditor {

namespace {

// Legible on light and dark grounds alike: amber with a dark sign on it.
constexpr COLORREF kWarning = RGB(0xF2, 0xA9, 0x00);
constexpr COLORREF kWarningSign = RGB(0x20, 0x20, 0x20);
constexpr int kWarningTint = 25;   // percent
constexpr int kLineTint = 14;      // percent
constexpr int kUnfocusedTint = 40; // percent
constexpr int kSelectionTint = 25; // percent
constexpr int kCellMargin = 4;
constexpr int kAroundSign = 4; // above and below a sign or an arrow
constexpr int kBesideSign = 2; // between it and the border of its cell
constexpr int kNoticeMargin = 16;
// More of a text than any screen shows in one line.
constexpr std::size_t kLongestLine = 2000;

[[nodiscard]] COLORREF Mixed(COLORREF ground, COLORREF color, int percent)
{
    const auto mix = [percent](int from, int to) { return from + (to - from) * percent / 100; };
    return RGB(mix(GetRValue(ground), GetRValue(color)), mix(GetGValue(ground), GetGValue(color)),
               mix(GetBValue(ground), GetBValue(color)));
}

void Fill(HDC canvas, const RECT& rect, COLORREF color)
{
    SetDCBrushColor(canvas, color);
    FillRect(canvas, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

/// A pen that is put back and deleted.
class PenScope
{
public:
    PenScope(HDC canvas, int style, int width, COLORREF color)
        : m_canvas(canvas), m_pen(CreatePen(style, width, color)), m_before(SelectObject(canvas, m_pen))
    {
    }
    PenScope(const PenScope&) = delete;
    PenScope& operator=(const PenScope&) = delete;
    ~PenScope()
    {
        SelectObject(m_canvas, m_before);
        DeleteObject(m_pen);
    }

private:
    HDC m_canvas;
    HPEN m_pen;
    HGDIOBJ m_before;
};

/// Whether the first letter that has a direction is read from the right.
[[nodiscard]] bool IsReadFromTheRight(std::u16string_view text)
{
    for (const char16_t unit : text) {
        WORD kind = 0;
        const auto character = static_cast<wchar_t>(unit);
        if (!GetStringTypeW(CT_CTYPE2, &character, 1, &kind))
            return false;
        if (kind == C2_LEFTTORIGHT || kind == C2_RIGHTTOLEFT)
            return kind == C2_RIGHTTOLEFT;
    }
    return false;
}

void PaintWarning(HDC canvas, const RECT& place, COLORREF ground, COLORREF sign)
{
    const int side = std::max<int>(8, (place.bottom - place.top) * 8 / 10);
    const int left = (place.left + place.right - side) / 2;
    const int top = (place.top + place.bottom - side * 9 / 10) / 2;
    const int bottom = top + side * 9 / 10;
    const int middle = left + side / 2;
    const std::array<POINT, 3> triangle{{{middle, top}, {left + side, bottom}, {left, bottom}}};
    {
        const PenScope pen(canvas, PS_SOLID, 1, sign);
        SetDCBrushColor(canvas, ground);
        HGDIOBJ const before = SelectObject(canvas, GetStockObject(DC_BRUSH));
        Polygon(canvas, triangle.data(), static_cast<int>(triangle.size()));
        SelectObject(canvas, before);
    }
    const int thick = std::max(1, side / 8);
    Fill(canvas,
         {middle - thick / 2, top + side * 30 / 100, middle - thick / 2 + thick, top + side * 58 / 100},
         sign);
    Fill(canvas,
         {middle - thick / 2, top + side * 66 / 100, middle - thick / 2 + thick,
          top + side * 66 / 100 + thick},
         sign);
}

void PaintArrow(HDC canvas, const RECT& place, COLORREF color)
{
    const int size = place.bottom - place.top;
    const int half = std::max(3, size * 22 / 100);
    const int middle = (place.left + place.right) / 2;
    const int center = (place.top + place.bottom) / 2;
    const PenScope pen(canvas, PS_SOLID, std::max(1, size / 10), color);
    // The last point of a line is not drawn.
    const std::array<POINT, 3> arrow{{{middle - half, center - half / 2},
                                      {middle, center + half - half / 2},
                                      {middle + half + 1, center - half / 2 - 1}}};
    Polyline(canvas, arrow.data(), static_cast<int>(arrow.size()));
}

void PaintText(HDC canvas, RECT rect, const std::u16string& text, CellType type, COLORREF color)
{
    SetTextColor(canvas, color);
    // Left is where reading begins: a canvas of a mirrored window turns it over.
    const UINT across = type == CellType::Currency ? DT_RIGHT : DT_LEFT;
    DrawTextW(canvas, Wide(text.c_str()), static_cast<int>(text.size()), &rect,
              across | DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | DT_END_ELLIPSIS);
}

void CloseTheme(HTHEME& theme)
{
    if (theme != nullptr)
        CloseThemeData(theme);
    theme = nullptr;
}

} // namespace

Win32GridPainter::~Win32GridPainter()
{
    CloseTheme(m_headerTheme);
    CloseTheme(m_listTheme);
}

HFONT Win32GridPainter::Font() const
{
    return m_font != nullptr ? m_font : static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

void Win32GridPainter::TakeTheme(HWND window)
{
    CloseTheme(m_headerTheme);
    CloseTheme(m_listTheme);
    if (IsHighContrast())
        return;
    m_headerTheme = OpenThemeData(window, L"HEADER");
    m_listTheme = OpenThemeData(window, L"LISTVIEW");
}

int Win32GridPainter::FontHeight() const
{
    return Win32TextMeasure(Font()).LineHeight();
}

int Win32GridPainter::CellWidth(const GridBase& grid, const Win32GridGeometry& geometry, std::int32_t row,
                                std::int32_t col) const
{
    return Win32TextMeasure(Font()).Width(OneLine(grid.DisplayText(row, col))) +
           2 * geometry.Scaled(kCellMargin) + PrvExtraWidth(grid, geometry, row, col) + 1;
}

int Win32GridPainter::TextWidth(int characters) const
{
    return static_cast<int>(Win32TextMeasure(Font()).Metrics().tmAveCharWidth) * characters;
}

std::u16string Win32GridPainter::OneLine(std::u16string text)
{
    text.resize(Utf16Head(std::u16string_view(text), kLongestLine).size());
    std::size_t end = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n')
            ++at;
        const char16_t unit = text[at];
        const bool breaks =
            unit == u'\r' || unit == u'\n' || unit == u'\t' || unit == u'\u2028' || unit == u'\u2029';
        text[end++] = breaks ? u' ' : unit;
    }
    text.resize(end);
    return text;
}

void Win32GridPainter::Paint(HDC canvas, const RECT& dirty, const GridBase& grid,
                             const Win32GridGeometry& geometry, State state) const
{
    HGDIOBJ const fontBefore = SelectObject(canvas, Font());
    SetBkMode(canvas, TRANSPARENT);
    Fill(canvas, dirty, GetSysColor(COLOR_WINDOW));
    if (!grid.Notice().empty()) {
        PrvPaintNotice(canvas, grid, geometry);
    } else if (geometry.DataRows() > 0 && geometry.FirstVisibleColumn() >= 0) {
        const std::int64_t end = std::int64_t{geometry.FirstRow()} + geometry.DataRows();
        for (std::int64_t row = geometry.TopRow(); row < end; ++row) {
            const RECT place = geometry.RowRect(static_cast<std::int32_t>(row));
            if (place.top >= dirty.bottom)
                break;
            if (place.bottom > dirty.top)
                PrvPaintRow(canvas, static_cast<std::int32_t>(row), grid, geometry, state);
        }
        PrvPaintCurrentRow(canvas, grid, geometry, state);
    }
    if (dirty.top < geometry.HeaderHeight())
        PrvPaintHeader(canvas, dirty, grid, geometry);
    SelectObject(canvas, fontBefore);
}

bool Win32GridPainter::PaintBorder(HDC canvas, const RECT& whole) const
{
    return m_listTheme != nullptr &&
           SUCCEEDED(DrawThemeBackground(m_listTheme, canvas, 0, 0, &whole, nullptr));
}

COLORREF Win32GridPainter::PrvLineColor()
{
    return IsHighContrast() ? GetSysColor(COLOR_GRAYTEXT)
                            : Mixed(GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_WINDOWTEXT), kLineTint);
}

COLORREF Win32GridPainter::PrvSelectionGround(bool isStrong)
{
    return Mixed(GetSysColor(COLOR_WINDOW), GetSysColor(COLOR_HIGHLIGHT), isStrong ? 100 : kSelectionTint);
}

void Win32GridPainter::PrvPaintHeader(HDC canvas, const RECT& dirty, const GridBase& grid,
                                      const Win32GridGeometry& geometry) const
{
    const auto paintGround = [&](RECT place) {
        if (m_headerTheme != nullptr &&
            SUCCEEDED(DrawThemeBackground(m_headerTheme, canvas, HP_HEADERITEM, HIS_NORMAL, &place, nullptr)))
            return;
        Fill(canvas, place, GetSysColor(COLOR_BTNFACE));
        DrawEdge(canvas, &place, BDR_RAISEDINNER, BF_RIGHT | BF_BOTTOM);
    };
    const LONG bottom = geometry.HeaderHeight();
    // Beyond the last column, with its own border out of sight.
    const LONG end = geometry.WholeWidth() - geometry.Across();
    paintGround({end, 0, std::max(end, geometry.Client().cx) + geometry.RowHeight(), bottom});
    const COLORREF color = GetSysColor(COLOR_BTNTEXT);
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        RECT place = geometry.CellRect(0, col);
        if (place.left >= place.right || place.right <= dirty.left || place.left >= dirty.right)
            continue;
        paintGround(place);
        InflateRect(&place, -geometry.Scaled(kCellMargin), 0);
        PaintText(canvas, place, OneLine(grid.DisplayText(0, col)), grid.ColType(col), color);
    }
    // There are themes whose titles look like rows.
    if (m_headerTheme != nullptr)
        Fill(canvas, {dirty.left, bottom - 1, dirty.right, bottom}, PrvLineColor());
}

void Win32GridPainter::PrvPaintRow(HDC canvas, std::int32_t row, const GridBase& grid,
                                   const Win32GridGeometry& geometry, State state) const
{
    const bool isHighContrast = IsHighContrast();
    const bool isSelected = grid.Selection().Contains(row);
    // A list that is not used at the moment steps back, but not where every contrast counts.
    const bool isStrong = isSelected && (state.isFocused || isHighContrast);
    COLORREF ground = GetSysColor(COLOR_WINDOW);
    COLORREF ink = GetSysColor(state.isEnabled ? COLOR_WINDOWTEXT : COLOR_GRAYTEXT);
    if (isSelected)
        ground = PrvSelectionGround(isStrong);
    if (isStrong && state.isEnabled)
        ink = GetSysColor(COLOR_HIGHLIGHTTEXT);
    const COLORREF line = PrvLineColor();
    const int extra = geometry.RowHeight() - geometry.Scaled(kAroundSign);
    for (std::int32_t col = 0; col < grid.Cols(); ++col) {
        const RECT cell = geometry.CellRect(row, col);
        if (cell.left >= cell.right || cell.right <= 0 || cell.left >= geometry.Client().cx)
            continue;
        const bool isMarked = !grid.CellMark(row, col).empty();
        const bool isTinted = isMarked && !isSelected && !isHighContrast;
        Fill(canvas, cell, isTinted ? Mixed(ground, kWarning, kWarningTint) : ground);
        Fill(canvas, {cell.left, cell.bottom - 1, cell.right, cell.bottom}, line);
        Fill(canvas, {cell.right - 1, cell.top, cell.right, cell.bottom}, line);

        RECT text = cell;
        text.right -= 1;
        text.bottom -= 1;
        if (isMarked) {
            const RECT place{text.left + kBesideSign, text.top + 1, text.left + kBesideSign + extra,
                             text.bottom - 1};
            PaintWarning(canvas, place, isHighContrast ? ground : kWarning,
                         isHighContrast ? ink : kWarningSign);
            text.left = place.right;
        }
        if (!grid.ComboList(col).empty()) {
            const RECT place{text.right - kBesideSign - extra, text.top + 1, text.right - kBesideSign,
                             text.bottom - 1};
            PaintArrow(canvas, place, ink);
            text.right = place.left;
        }
        InflateRect(&text, -geometry.Scaled(kCellMargin), 0);
        if (text.left < text.right)
            PaintText(canvas, text, OneLine(grid.DisplayText(row, col)), grid.ColType(col), ink);
    }
}

void Win32GridPainter::PrvPaintCurrentRow(HDC canvas, const GridBase& grid, const Win32GridGeometry& geometry,
                                          State state) const
{
    const std::int32_t row = grid.CurrentRow();
    if (row < geometry.TopRow())
        return;
    const RECT place = geometry.RowRect(row);
    if (place.top >= geometry.Client().cy || place.left >= place.right)
        return;
    const bool isSelected = grid.Selection().Contains(row);
    const bool isStrong = isSelected && (state.isFocused || IsHighContrast());
    const COLORREF ground = isSelected ? PrvSelectionGround(isStrong) : GetSysColor(COLOR_WINDOW);
    COLORREF color = GetSysColor(isStrong ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
    if (!state.isFocused)
        color = Mixed(ground, color, kUnfocusedTint);
    const PenScope pen(canvas, isSelected ? PS_DOT : PS_SOLID, 1, color);
    HGDIOBJ const before = SelectObject(canvas, GetStockObject(NULL_BRUSH));
    Rectangle(canvas, place.left, place.top, place.right, place.bottom);
    SelectObject(canvas, before);
}

void Win32GridPainter::PrvPaintNotice(HDC canvas, const GridBase& grid,
                                      const Win32GridGeometry& geometry) const
{
    const std::u16string text = grid.Notice();
    const bool isMirrored = (GetLayout(canvas) & LAYOUT_RTL) != 0;
    // In the direction of the text, whatever the window's.
    const UINT reading = IsReadFromTheRight(text) != isMirrored ? DT_RTLREADING : 0;
    const UINT format = DT_CENTER | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | reading;
    RECT room = geometry.BodyRect();
    InflateRect(&room, -geometry.Scaled(kNoticeMargin), -geometry.Scaled(kNoticeMargin));
    RECT lines = room;
    const auto size = static_cast<int>(text.size());
    DrawTextW(canvas, Wide(text.c_str()), size, &lines, format | DT_CALCRECT);
    const LONG spare = (room.bottom - room.top) - (lines.bottom - lines.top);
    room.top += std::max(0L, spare / 2);
    SetTextColor(canvas, GetSysColor(COLOR_WINDOWTEXT));
    DrawTextW(canvas, Wide(text.c_str()), size, &room, format);
}

int Win32GridPainter::PrvExtraWidth(const GridBase& grid, const Win32GridGeometry& geometry, std::int32_t row,
                                    std::int32_t col)
{
    const int sign = geometry.RowHeight() - geometry.Scaled(kAroundSign) + kBesideSign;
    const bool isData = row >= grid.FixedRows();
    return (isData && !grid.CellMark(row, col).empty() ? sign : 0) +
           (isData && !grid.ComboList(col).empty() ? sign : 0);
}

} // namespace KestrinProductEditor
