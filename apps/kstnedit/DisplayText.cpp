// SPDX-License-Identifier: MIT
#include "kstnedit/DisplayText.h"

#include "platform/Text.h"

#include <algorithm>
#include <iterator>

namespace KestrinProductEditor::CommandLine {

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

/// Two columns each: the East Asian scripts, their full-width forms, and the pictographs.
constexpr Range kWide[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},
    {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},   {0xA960, 0xA97F},   {0xAC00, 0xD7A3},
    {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},
    {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

/// No column: marks that stand over the character before, and joiners.
constexpr Range kCombining[] = {
    {0x0300, 0x036F}, {0x200B, 0x200D}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
};

/// Controls beyond ASCII: C1, line and paragraph ends, marks that turn the writing direction around.
constexpr Range kActing[] = {
    {0x0080, 0x009F}, {0x200E, 0x200F}, {0x2028, 0x202E},
    {0x2066, 0x2069}, {0xD800, 0xDFFF}, {0xFEFF, 0xFEFF},
};

template<std::size_t size>
bool IsIn(const Range (&ranges)[size], char32_t codePoint)
{
    const auto* const range =
        std::lower_bound(std::begin(ranges), std::end(ranges), codePoint,
                         [](const Range& left, char32_t right) { return left.last < right; });
    return range != std::end(ranges) && codePoint >= range->first;
}

std::size_t WidthOf(char32_t codePoint)
{
    if (codePoint < 0x300)
        return 1;
    if (IsIn(kCombining, codePoint))
        return 0;
    return IsIn(kWide, codePoint) ? 2 : 1;
}

} // namespace

std::string Visible(std::string_view text)
{
    constexpr char32_t kPictures = 0x2400;
    constexpr char32_t kDeletePicture = 0x2421;
    constexpr char32_t kNewLinePicture = 0x2424;
    constexpr char32_t kReplacement = 0xFFFD;
    std::string visible;
    visible.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        if (text.substr(at).starts_with("\r\n")) {
            AppendCodePoint(kNewLinePicture, visible);
            at += 2;
            continue;
        }
        const char32_t codePoint = NextCodePoint(text, at);
        if (codePoint == U'\n')
            AppendCodePoint(kNewLinePicture, visible);
        else if (codePoint < U' ')
            AppendCodePoint(kPictures + codePoint, visible);
        else if (codePoint == 0x7F)
            AppendCodePoint(kDeletePicture, visible);
        else
            AppendCodePoint(IsIn(kActing, codePoint) ? kReplacement : codePoint, visible);
    }
    return visible;
}

std::size_t DisplayWidth(std::string_view text)
{
    std::size_t width = 0;
    for (std::size_t at = 0; at < text.size();)
        width += WidthOf(NextCodePoint(text, at));
    return width;
}

std::string CutToWidth(std::string_view text, std::size_t columns, std::string_view ellipsis)
{
    const std::size_t ellipsisWidth = DisplayWidth(ellipsis);
    std::size_t width = 0;
    std::size_t kept = 0; // the bytes that leave room for the ellipsis
    for (std::size_t at = 0; at < text.size();) {
        width += WidthOf(NextCodePoint(text, at));
        if (width + ellipsisWidth <= columns)
            kept = at;
        if (width > columns) {
            if (ellipsisWidth > columns)
                return std::string(ellipsis.substr(0, columns));
            return std::string(text.substr(0, kept)).append(ellipsis);
        }
    }
    return std::string(text);
}

std::string Counted(std::uint64_t count, std::string_view noun)
{
    std::string text = std::to_string(count);
    text += ' ';
    text += noun;
    if (count != 1)
        text += 's';
    return text;
}

} // namespace KestrinProductEditor::CommandLine
