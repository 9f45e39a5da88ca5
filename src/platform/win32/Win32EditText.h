// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

// The text of a box and what the system's box shows for it. That one knows CR LF alone as a line break, and
// ends a text at its first NUL.
//
// A line break is CR LF, CR or LF. No place that is answered lies within a CR LF or within a character of two
// units, unless the place that was asked about does.

enum class BoxLines
{
    One,
    Many,
};

/// What a box shows for a text: a line break as CR LF, or in a box of one line as a blank; NUL as a visible
/// sign. Everything else is as it is.
[[nodiscard]] std::u16string ShownText(std::u16string_view text, BoxLines lines);
/// Where a place of the text is in what is shown; for one within a CR LF, or beyond the end, the one before.
[[nodiscard]] std::size_t ShownPlace(std::u16string_view text, BoxLines lines, std::size_t place);
/// The same the other way round.
[[nodiscard]] std::size_t TextPlace(std::u16string_view text, BoxLines lines, std::size_t shownPlace);

/// For a box of one line: line breaks (also U+2028 and U+2029) at the ends are left out, others become a
/// blank each.
[[nodiscard]] std::u16string InOneLine(std::u16string_view text);

/// The longest head of `text` with at most `units` units. It ends neither within a character nor within a CR
/// LF.
[[nodiscard]] std::u16string_view FittingHead(std::u16string_view text, std::size_t units);

/// What lies between the heads and the tails that two texts have in common.
struct TextDifference
{
    std::size_t start; ///< in both
    std::size_t endBefore;
    std::size_t endAfter;
};
[[nodiscard]] TextDifference DifferenceOf(std::u16string_view before, std::u16string_view after);

// What a key takes away from `place` on

/// One character, or a whole line break, to the left.
[[nodiscard]] std::size_t CharacterBefore(std::u16string_view text, std::size_t place);
/// One character with the marks that stand on it, or a whole line break, to the right.
[[nodiscard]] std::size_t CharacterAfter(std::u16string_view text, std::size_t place);
/// A word with the blanks behind it, or a line break.
[[nodiscard]] std::size_t WordBefore(std::u16string_view text, std::size_t place);
/// A word with the blanks in front of it, or a line break.
[[nodiscard]] std::size_t WordAfter(std::u16string_view text, std::size_t place);

} // namespace KestrinProductEditor
