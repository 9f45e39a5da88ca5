// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

// Text is UTF-16 from the interfaces inward. The table and the CSV roads keep it as UTF-8, where a lone
// surrogate (a UTF-16 unit without its partner) is the three bytes that its code point would take: every
// UTF-16 text comes back as it went in.

/// UTF-8 of a UTF-16 text; lone surrogates as said above.
[[nodiscard]] std::string ToUtf8(std::u16string_view text);
/// Appends the UTF-8 of `text` to `out`.
void AppendUtf8(std::u16string_view text, std::string& out);

/// UTF-16 of a UTF-8 text. A byte that begins no valid sequence becomes U+FFFD; surrogates' three bytes
/// become the surrogate.
[[nodiscard]] std::u16string ToUtf16(std::string_view text);

/// The number of UTF-16 units of a UTF-8 text that ToUtf16 would make.
[[nodiscard]] std::size_t Utf16Length(std::string_view text) noexcept;

/// The longest head of `text` with at most `units` UTF-16 units that does not end in half a character.
[[nodiscard]] std::string_view Utf16Head(std::string_view text, std::size_t units) noexcept;

/// The same of a UTF-16 text.
[[nodiscard]] std::u16string_view Utf16Head(std::u16string_view text, std::size_t units) noexcept;

/// `text` with A to Z made small; nothing else changes.
[[nodiscard]] std::string AsciiLower(std::string_view text);

/// Whether the two are equal but for the case of A to Z.
[[nodiscard]] bool EqualsWithoutAsciiCase(std::string_view left, std::string_view right) noexcept;
[[nodiscard]] bool EqualsWithoutAsciiCase(std::u16string_view left, std::u16string_view right) noexcept;

/// Whether `text` is UTF-8 to the letter: no surrogates, no overlong forms, nothing above U+10FFFF.
[[nodiscard]] bool IsValidUtf8(std::string_view text) noexcept;

/// Whether every byte is below 0x80.
[[nodiscard]] bool IsAscii(std::string_view text) noexcept;

/// The code point at `text[at]` of a UTF-8 text (surrogates as above), and `at` moved behind it. A byte that
/// begins no sequence is U+FFFD and one byte long. Requires: at < text.size().
[[nodiscard]] char32_t NextCodePoint(std::string_view text, std::size_t& at) noexcept;

/// Appends one code point (a surrogate too).
void AppendCodePoint(char32_t codePoint, std::string& out);

} // namespace KestrinProductEditor
