// SPDX-License-Identifier: MIT
#include "platform/win32/Win32EditText.h"

#include "platform/windows/WideText.h"

#include <windows.h>

#include <algorithm>

namespace KestrinProductEditor {

namespace {

constexpr char16_t kSignOfNul = u'\u2400';

[[nodiscard]] bool IsHigh(char16_t unit)
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

[[nodiscard]] bool IsLow(char16_t unit)
{
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

[[nodiscard]] bool IsBreak(char16_t unit)
{
    return unit == u'\r' || unit == u'\n';
}

[[nodiscard]] bool IsAnyBreak(char16_t unit)
{
    return IsBreak(unit) || unit == u'\u2028' || unit == u'\u2029';
}

/// Whether a place lies within CR LF, or within a character of two units.
[[nodiscard]] bool IsWithin(std::u16string_view text, std::size_t place)
{
    if (place == 0 || place >= text.size())
        return false;
    const char16_t before = text[place - 1];
    const char16_t after = text[place];
    return (before == u'\r' && after == u'\n') || (IsHigh(before) && IsLow(after));
}

/// A piece of the text that is shown as one: a line break, or any other unit.
struct Piece
{
    std::size_t units;
    std::size_t shownUnits;
};

[[nodiscard]] Piece PieceAt(std::u16string_view text, BoxLines lines, std::size_t place)
{
    if (!IsBreak(text[place]))
        return {.units = 1, .shownUnits = 1};
    const bool isLong = text.substr(place, 2) == u"\r\n";
    return {.units = isLong ? std::size_t{2} : std::size_t{1},
            .shownUnits = lines == BoxLines::Many ? std::size_t{2} : std::size_t{1}};
}

/// How far `asked` goes when the pieces are counted by the one measure, counted by the other.
[[nodiscard]] std::size_t Measured(std::u16string_view text, BoxLines lines, std::size_t asked,
                                   std::size_t Piece::*by, std::size_t Piece::*other)
{
    std::size_t place = 0;
    std::size_t passed = 0;
    std::size_t answer = 0;
    while (place < text.size()) {
        const Piece piece = PieceAt(text, lines, place);
        if (passed + piece.*by > asked)
            break;
        passed += piece.*by;
        answer += piece.*other;
        place += piece.units;
    }
    return answer;
}

enum class Kind
{
    Blank,
    Break,
    Sign,
    Word,
};

[[nodiscard]] WORD TypeOf(char16_t unit, DWORD which)
{
    WORD type = 0;
    const auto character = static_cast<wchar_t>(unit);
    return GetStringTypeW(which, &character, 1, &type) != 0 ? type : WORD{0};
}

[[nodiscard]] Kind KindOf(char16_t unit)
{
    if (IsBreak(unit))
        return Kind::Break;
    const WORD type = TypeOf(unit, CT_CTYPE1);
    if ((type & (C1_SPACE | C1_BLANK)) != 0)
        return Kind::Blank;
    return (type & C1_PUNCT) != 0 ? Kind::Sign : Kind::Word;
}

[[nodiscard]] bool IsMark(char16_t unit)
{
    return (TypeOf(unit, CT_CTYPE3) & C3_NONSPACING) != 0;
}

} // namespace

std::u16string ShownText(std::u16string_view text, BoxLines lines)
{
    const std::u16string_view shownBreak = lines == BoxLines::Many ? u"\r\n" : u" ";
    std::u16string shown;
    shown.reserve(text.size());
    for (std::size_t place = 0; place < text.size(); place += PieceAt(text, lines, place).units) {
        if (IsBreak(text[place]))
            shown += shownBreak;
        else
            shown += text[place] == u'\0' ? kSignOfNul : text[place];
    }
    return shown;
}

std::size_t ShownPlace(std::u16string_view text, BoxLines lines, std::size_t place)
{
    return Measured(text, lines, place, &Piece::units, &Piece::shownUnits);
}

std::size_t TextPlace(std::u16string_view text, BoxLines lines, std::size_t shownPlace)
{
    return Measured(text, lines, shownPlace, &Piece::shownUnits, &Piece::units);
}

std::u16string InOneLine(std::u16string_view text)
{
    const auto begin = std::find_if_not(text.begin(), text.end(), IsAnyBreak);
    const auto end = std::find_if_not(text.rbegin(), std::make_reverse_iterator(begin), IsAnyBreak).base();
    std::u16string line;
    for (auto unit = begin; unit != end; ++unit) {
        const bool isSecondHalf = *unit == u'\n' && unit != begin && *(unit - 1) == u'\r';
        if (!isSecondHalf)
            line += IsAnyBreak(*unit) ? u' ' : *unit;
    }
    return line;
}

std::u16string_view FittingHead(std::u16string_view text, std::size_t units)
{
    return text.substr(0, IsWithin(text, units) ? units - 1 : units);
}

TextDifference DifferenceOf(std::u16string_view before, std::u16string_view after)
{
    const auto [headBefore, headAfter] =
        std::mismatch(before.begin(), before.end(), after.begin(), after.end());
    auto start = static_cast<std::size_t>(headBefore - before.begin());
    if (IsWithin(before, start) || IsWithin(after, start))
        --start;
    const std::size_t longest = std::min(before.size(), after.size()) - start;
    std::size_t tail = 0;
    while (tail < longest && before[before.size() - 1 - tail] == after[after.size() - 1 - tail])
        ++tail;
    if (IsWithin(before, before.size() - tail) || IsWithin(after, after.size() - tail))
        --tail;
    return {.start = start, .endBefore = before.size() - tail, .endAfter = after.size() - tail};
}

std::size_t CharacterBefore(std::u16string_view text, std::size_t place)
{
    if (place == 0)
        return 0;
    return place - (IsWithin(text, place - 1) ? 2 : 1);
}

std::size_t CharacterAfter(std::u16string_view text, std::size_t place)
{
    if (place == text.size())
        return place;
    const bool isBreak = IsBreak(text[place]);
    ++place;
    if (IsWithin(text, place))
        ++place;
    while (!isBreak && place < text.size() && IsMark(text[place]))
        ++place;
    return place;
}

std::size_t WordBefore(std::u16string_view text, std::size_t place)
{
    const std::size_t from = place;
    while (place > 0 && KindOf(text[place - 1]) == Kind::Blank)
        --place;
    const Kind kind = place > 0 ? KindOf(text[place - 1]) : Kind::Break;
    if (kind == Kind::Break)
        return place < from ? place : CharacterBefore(text, place);
    while (place > 0 && KindOf(text[place - 1]) == kind)
        --place;
    return place;
}

std::size_t WordAfter(std::u16string_view text, std::size_t place)
{
    const std::size_t from = place;
    while (place < text.size() && KindOf(text[place]) == Kind::Blank)
        ++place;
    const Kind kind = place < text.size() ? KindOf(text[place]) : Kind::Break;
    if (kind == Kind::Break)
        return place > from ? place : CharacterAfter(text, place);
    while (place < text.size() && KindOf(text[place]) == kind)
        ++place;
    return place;
}

} // namespace KestrinProductEditor
