// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// The one order of texts: Unicode simple case folding, then by code point; no locale.
///
/// The table's sort, the file's order, searches and match lists all use it. Folded UTF-8 compares byte by
/// byte as its code points do, which is what the keys below rest on. Texts are UTF-8 (platform/Text.h).
namespace KestrinProductEditor::TextOrder {

/// The folded form of one code point.
[[nodiscard]] char32_t Fold(char32_t codePoint) noexcept;

/// Below 0, 0 or above 0.
[[nodiscard]] int Compare(std::string_view left, std::string_view right) noexcept;

/// Whether `text` begins with `prefix`, letter case aside. Every text begins with an empty prefix.
[[nodiscard]] bool StartsWith(std::string_view text, std::string_view prefix) noexcept;

/// Sixteen bytes of a folded text as two numbers that compare as the bytes do; zeros stand behind its end.
struct Key
{
    std::uint64_t high = 0;
    std::uint64_t low = 0;

    friend bool operator==(Key, Key) = default;
    friend auto operator<=>(Key, Key) = default;
};

/// The bytes `from` to `from` + 15 of the folded text.
[[nodiscard]] Key KeyOf(std::string_view text, std::size_t from) noexcept;

} // namespace KestrinProductEditor::TextOrder
