// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ToolIcons.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <vector>

namespace KestrinProductEditor {

namespace {

// The pictures are drawn on a sheet of 24 by 24.
constexpr double kSheet = 24;
constexpr double kStroke = 1.7;
constexpr double kAccentStroke = 2.0;
// Each pixel is the mean of so many by so many.
constexpr int kFineness = 8;

struct Point
{
    double x;
    double y;
};
using Points = std::vector<Point>;

struct Drawing
{
    std::vector<Points> lines; ///< in the colour of texts
    std::vector<Points> accentLines;
    std::vector<Points> accentAreas;
};

[[nodiscard]] Points Square(double left, double top, double side)
{
    return {{left, top}, {left + side, top}, {left + side, top + side}, {left, top + side}};
}

[[nodiscard]] Points Tray()
{
    return {{4, 14}, {4, 20}, {20, 20}, {20, 14}};
}

[[nodiscard]] Drawing DrawingOf(ToolIcon icon)
{
    Drawing drawing;
    switch (icon) {
    case ToolIcon::None:
        break;
    case ToolIcon::Import:
        drawing.lines = {Tray()};
        drawing.accentLines = {{{12, 3.5}, {12, 15}}, {{7.5, 10.5}, {12, 15}, {16.5, 10.5}}};
        break;
    case ToolIcon::Export:
        drawing.lines = {Tray()};
        drawing.accentLines = {{{12, 15}, {12, 3.5}}, {{7.5, 8}, {12, 3.5}, {16.5, 8}}};
        break;
    case ToolIcon::NewProduct:
        drawing.lines = {{{18.5, 10.5}, {18.5, 8}, {14, 3.5}, {5.5, 3.5}, {5.5, 20.5}, {11, 20.5}},
                         {{14, 3.5}, {14, 8}, {18.5, 8}}};
        drawing.accentLines = {{{17.5, 13.8}, {17.5, 21.2}}, {{13.8, 17.5}, {21.2, 17.5}}};
        break;
    case ToolIcon::EditProduct:
        drawing.lines = {{{4, 20}, {5, 15.6}, {15.8, 4.8}, {19.2, 8.2}, {8.4, 19}, {4, 20}},
                         {{13.3, 7.3}, {16.7, 10.7}}};
        drawing.accentAreas = {{{4, 20}, {5, 15.6}, {8.4, 19}}};
        break;
    case ToolIcon::Delete:
        drawing.lines = {{{4, 6.5}, {20, 6.5}},
                         {{9, 6.5}, {9, 3.8}, {15, 3.8}, {15, 6.5}},
                         {{6, 6.5}, {6.9, 20.3}, {17.1, 20.3}, {18, 6.5}}};
        drawing.accentLines = {{{10.2, 10}, {10.4, 16.8}}, {{13.8, 10}, {13.6, 16.8}}};
        break;
    case ToolIcon::SelectAll:
        for (const double top : {3.5, 10.0, 16.5}) {
            drawing.accentAreas.push_back(Square(3.5, top, 4.2));
            drawing.lines.push_back({{11, top + 2.1}, {20.5, top + 2.1}});
        }
        break;
    }
    return drawing;
}

/// A picture in memory, four bytes for each pixel from the top: blue, green, red, opacity.
class Sheet
{
public:
    Sheet(int width, int height)
        : m_context(CreateCompatibleDC(nullptr)),
          m_size(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
    {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* pixels = nullptr;
        m_bitmap = CreateDIBSection(m_context, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
        m_pixels = static_cast<std::uint32_t*>(pixels);
        m_before = SelectObject(m_context, m_bitmap);
    }
    Sheet(const Sheet&) = delete;
    Sheet& operator=(const Sheet&) = delete;
    ~Sheet()
    {
        SelectObject(m_context, m_before);
        DeleteObject(m_bitmap);
        DeleteDC(m_context);
    }

    [[nodiscard]] bool IsThere() const { return m_pixels != nullptr; }
    [[nodiscard]] HDC Context() const { return m_context; }
    [[nodiscard]] std::uint32_t* Pixels() const { return m_pixels; }

    void Clear() { std::memset(m_pixels, 0, m_size * sizeof *m_pixels); }

    /// The picture as others read it: not while it lies in the context.
    [[nodiscard]] HBITMAP Finish()
    {
        SelectObject(m_context, m_before);
        return m_bitmap;
    }

private:
    HDC m_context;
    HBITMAP m_bitmap = nullptr;
    std::uint32_t* m_pixels = nullptr;
    HGDIOBJ m_before = nullptr;
    std::size_t m_size;
};

/// Draws shapes, and tells how much of each pixel they cover.
class Stencil
{
public:
    explicit Stencil(int side) : m_side(side), m_sheet(side * kFineness, side * kFineness) {}

    [[nodiscard]] bool IsThere() const { return m_sheet.IsThere(); }

    void Lines(const std::vector<Points>& lines, double width)
    {
        const LOGBRUSH white = {BS_SOLID, RGB(255, 255, 255), 0};
        const auto breadth = static_cast<DWORD>(std::lround(width * PrvScale()));
        // Solid, with round ends and corners: each of these is 0.
        const HPEN pen = ExtCreatePen(PS_GEOMETRIC, breadth, &white, 0, nullptr);
        PrvDraw(pen, GetStockObject(NULL_BRUSH), lines, [this](const std::vector<POINT>& points) {
            Polyline(m_sheet.Context(), points.data(), static_cast<int>(points.size()));
        });
        DeleteObject(pen);
    }

    void Areas(const std::vector<Points>& areas)
    {
        PrvDraw(GetStockObject(WHITE_PEN), GetStockObject(WHITE_BRUSH), areas,
                [this](const std::vector<POINT>& points) {
                    Polygon(m_sheet.Context(), points.data(), static_cast<int>(points.size()));
                });
    }

    /// From 0 to 1, for each pixel from the top.
    [[nodiscard]] std::vector<double> Take()
    {
        GdiFlush();
        const auto side = static_cast<std::size_t>(m_side);
        constexpr std::size_t kParts = kFineness;
        std::vector<double> shares(side * side);
        for (std::size_t row = 0; row < side * kParts; ++row) {
            for (std::size_t col = 0; col < side * kParts; ++col) {
                if (m_sheet.Pixels()[row * side * kParts + col] != 0)
                    shares[row / kParts * side + col / kParts] += 1.0 / (kParts * kParts);
            }
        }
        m_sheet.Clear();
        return shares;
    }

private:
    template<class Draw>
    void PrvDraw(HGDIOBJ pen, HGDIOBJ brush, const std::vector<Points>& shapes, const Draw& draw)
    {
        const HGDIOBJ oldPen = SelectObject(m_sheet.Context(), pen);
        const HGDIOBJ oldBrush = SelectObject(m_sheet.Context(), brush);
        for (const Points& shape : shapes) {
            std::vector<POINT> points;
            for (const Point& point : shape)
                points.push_back({std::lround(point.x * PrvScale()), std::lround(point.y * PrvScale())});
            draw(points);
        }
        SelectObject(m_sheet.Context(), oldBrush);
        SelectObject(m_sheet.Context(), oldPen);
    }

    [[nodiscard]] double PrvScale() const { return m_side * kFineness / kSheet; }

    int m_side;
    Sheet m_sheet;
};

using Channels = std::array<double, 3>; // blue, green, red, from 0 to 1

[[nodiscard]] Channels ChannelsOf(COLORREF colour)
{
    constexpr double kFull = 255;
    return {GetBValue(colour) / kFull, GetGValue(colour) / kFull, GetRValue(colour) / kFull};
}

[[nodiscard]] std::uint32_t ByteOf(double share)
{
    return static_cast<std::uint32_t>(std::lround(std::min(share, 1.0) * 255));
}

/// Lays a colour over what is there, both with the opacity multiplied into the colour.
class Pixel
{
public:
    void Cover(const Channels& colour, double share)
    {
        for (std::size_t at = 0; at < colour.size(); ++at)
            m_colour[at] = m_colour[at] * (1 - share) + colour[at] * share;
        m_opacity = m_opacity * (1 - share) + share;
    }

    /// As lists of pictures have it: the colour by itself, and its opacity.
    [[nodiscard]] std::uint32_t Packed() const
    {
        if (m_opacity <= 0)
            return 0;
        return ByteOf(m_colour[0] / m_opacity) | ByteOf(m_colour[1] / m_opacity) << 8U |
               ByteOf(m_colour[2] / m_opacity) << 16U | ByteOf(m_opacity) << 24U;
    }

private:
    Channels m_colour = {};
    double m_opacity = 0;
};

[[nodiscard]] double Brightness(COLORREF colour)
{
    const Channels channels = ChannelsOf(colour);
    return 0.114 * channels[0] + 0.587 * channels[1] + 0.299 * channels[2];
}

[[nodiscard]] COLORREF Mix(COLORREF from, COLORREF to, double share)
{
    const auto mix = [share](BYTE first, BYTE second) {
        return static_cast<BYTE>(std::lround(first + (second - first) * share));
    };
    return RGB(mix(GetRValue(from), GetRValue(to)), mix(GetGValue(from), GetGValue(to)),
               mix(GetBValue(from), GetBValue(to)));
}

[[nodiscard]] COLORREF Accent(COLORREF selection, COLORREF text, COLORREF ground)
{
    constexpr int kSteps = 4;
    constexpr double kLegible = 0.33;
    for (int step = 0; step < kSteps; ++step) {
        const COLORREF mixed = Mix(selection, text, static_cast<double>(step) / kSteps);
        if (std::abs(Brightness(mixed) - Brightness(ground)) > kLegible)
            return mixed;
    }
    return text;
}

} // namespace

ToolIconColours ToolIconColoursOf(COLORREF text, COLORREF selection, COLORREF ground)
{
    return {.lines = text, .accent = Accent(selection, text, ground)};
}

ToolIconColours PresentToolIconColours()
{
    return ToolIconColoursOf(GetSysColor(COLOR_BTNTEXT), GetSysColor(COLOR_HIGHLIGHT),
                             GetSysColor(COLOR_BTNFACE));
}

ToolIconColours DisabledToolIconColours()
{
    const COLORREF grey = GetSysColor(COLOR_GRAYTEXT);
    return {.lines = grey, .accent = grey};
}

ImageList MakeToolIcons(std::span<const ToolIcon> icons, int side, ToolIconColours colours)
{
    Stencil stencil(side);
    ImageList list(ImageList_Create(side, side, ILC_COLOR32, static_cast<int>(icons.size()), 0));
    if (!stencil.IsThere() || list == nullptr)
        return nullptr;
    const Channels lines = ChannelsOf(colours.lines);
    const Channels accent = ChannelsOf(colours.accent);
    for (const ToolIcon icon : icons) {
        const Drawing drawing = DrawingOf(icon);
        std::vector<Pixel> pixels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
        const auto cover = [&](const Channels& colour) {
            const std::vector<double> shares = stencil.Take();
            for (std::size_t at = 0; at < pixels.size(); ++at)
                pixels[at].Cover(colour, shares[at]);
        };
        stencil.Areas(drawing.accentAreas);
        cover(accent);
        stencil.Lines(drawing.lines, kStroke);
        cover(lines);
        stencil.Lines(drawing.accentLines, kAccentStroke);
        cover(accent);

        Sheet picture(side, side);
        if (!picture.IsThere())
            return nullptr;
        for (std::size_t at = 0; at < pixels.size(); ++at)
            picture.Pixels()[at] = pixels[at].Packed();
        if (ImageList_Add(list.get(), picture.Finish(), nullptr) < 0)
            return nullptr;
    }
    return list;
}

} // namespace KestrinProductEditor
