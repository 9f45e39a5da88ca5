// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ToolIcons.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <vector>

namespace KestrinProductEditor {
namespace {

constexpr ToolIcon kIcons[] = {ToolIcon::Import,      ToolIcon::Export, ToolIcon::NewProduct,
                               ToolIcon::EditProduct, ToolIcon::Delete, ToolIcon::SelectAll};
constexpr ToolIconColours kColours = {.lines = RGB(0, 0, 255), .accent = RGB(255, 0, 0)};
constexpr COLORREF kWhite = RGB(255, 255, 255);
constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kGround = RGB(0, 255, 0);

/// How bright a colour looks, from 0 to 255.
[[nodiscard]] double Brightness(COLORREF colour)
{
    return 0.299 * GetRValue(colour) + 0.587 * GetGValue(colour) + 0.114 * GetBValue(colour);
}

/// A picture of a list as it is drawn on kGround, line by line.
[[nodiscard]] std::vector<COLORREF> Draw(HIMAGELIST list, int index, int side)
{
    const HDC context = CreateCompatibleDC(nullptr);
    BITMAPINFO info = {};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = side;
    info.bmiHeader.biHeight = -side;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(context, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    const HGDIOBJ before = SelectObject(context, bitmap);
    const HBRUSH ground = CreateSolidBrush(kGround);
    const RECT all = {0, 0, side, side};
    FillRect(context, &all, ground);
    DeleteObject(ground);
    EXPECT_NE(ImageList_Draw(list, index, context, 0, 0, ILD_TRANSPARENT), 0);
    GdiFlush();
    std::vector<COLORREF> drawn;
    const auto* const first = static_cast<const std::uint32_t*>(pixels);
    for (int at = 0; at < side * side; ++at)
        drawn.push_back(RGB((first[at] >> 16U) & 0xFFU, (first[at] >> 8U) & 0xFFU, first[at] & 0xFFU));
    SelectObject(context, before);
    DeleteObject(bitmap);
    DeleteDC(context);
    return drawn;
}

TEST(Win32ToolIcons, EachToolHasAPictureOfItsOwn)
{
    for (const int side : {16, 19, 40}) {
        const ImageList list = MakeToolIcons(kIcons, side, kColours);
        ASSERT_NE(list, nullptr);
        ASSERT_EQ(ImageList_GetImageCount(list.get()), static_cast<int>(std::size(kIcons)));
        std::set<std::vector<COLORREF>> pictures;
        for (int at = 0; at < static_cast<int>(std::size(kIcons)); ++at) {
            const std::vector<COLORREF> picture = Draw(list.get(), at, side);
            const auto empty = std::count(picture.begin(), picture.end(), kGround);
            // A drawing of lines, neither a trace nor a block.
            EXPECT_LT(empty, side * side * 9 / 10) << at;
            EXPECT_GT(empty, side * side / 4) << at;
            pictures.insert(picture);
        }
        EXPECT_EQ(pictures.size(), std::size(kIcons)) << side;
    }
}

TEST(Win32ToolIcons, PicturesAreDrawnInBothColours)
{
    constexpr int kSide = 48;
    const ImageList list = MakeToolIcons(kIcons, kSide, kColours);
    for (int at = 0; at < static_cast<int>(std::size(kIcons)); ++at) {
        const std::vector<COLORREF> picture = Draw(list.get(), at, kSide);
        EXPECT_GT(std::count(picture.begin(), picture.end(), kColours.lines), kSide) << at;
        EXPECT_GT(std::count(picture.begin(), picture.end(), kColours.accent), 0) << at;
    }
}

TEST(Win32ToolIcons, EdgesAreSmooth)
{
    constexpr int kSide = 20;
    const ToolIcon icon[] = {ToolIcon::EditProduct};
    const ImageList list = MakeToolIcons(icon, kSide, {.lines = kBlack, .accent = kBlack});
    const std::vector<COLORREF> picture = Draw(list.get(), 0, kSide);
    const std::set<COLORREF> shades(picture.begin(), picture.end());
    EXPECT_GT(shades.size(), 10U);
}

TEST(Win32ToolIcons, NoPicturesAreAnEmptyList)
{
    const ImageList list = MakeToolIcons({}, 16, kColours);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(ImageList_GetImageCount(list.get()), 0);
}

TEST(Win32ToolIcons, TheAccentIsSeenOnEveryGround)
{
    const struct
    {
        const char* name;
        COLORREF text;
        COLORREF selection;
        COLORREF ground;
    } schemes[] = {
        {"light", kBlack, RGB(0, 120, 215), RGB(240, 240, 240)},
        {"dark", kWhite, RGB(0, 60, 110), RGB(32, 32, 32)},
        {"black contrast", kWhite, RGB(26, 235, 255), kBlack},
        {"white contrast", kBlack, RGB(55, 0, 110), kWhite},
        {"selection like the ground", kBlack, RGB(230, 230, 230), RGB(240, 240, 240)},
        {"selection like a dark ground", kWhite, RGB(10, 10, 10), kBlack},
    };
    for (const auto& scheme : schemes) {
        const ToolIconColours colours = ToolIconColoursOf(scheme.text, scheme.selection, scheme.ground);
        EXPECT_EQ(colours.lines, scheme.text) << scheme.name;
        constexpr double kApart = 80;
        EXPECT_GT(std::abs(Brightness(colours.accent) - Brightness(scheme.ground)), kApart) << scheme.name;
    }
    EXPECT_EQ(ToolIconColoursOf(kBlack, RGB(0, 120, 215), RGB(240, 240, 240)).accent, RGB(0, 120, 215));
}

TEST(Win32ToolIcons, PresentColoursAreTheSystems)
{
    EXPECT_EQ(PresentToolIconColours().lines, GetSysColor(COLOR_BTNTEXT));
    EXPECT_EQ(DisabledToolIconColours().lines, GetSysColor(COLOR_GRAYTEXT));
    EXPECT_EQ(DisabledToolIconColours().accent, GetSysColor(COLOR_GRAYTEXT));
}

} // namespace
} // namespace KestrinProductEditor
