// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// The character that separates the values of a packed product. No text of a product holds it.
inline constexpr char kReservedCharacter = '~';

/// `text` (UTF-8) with every "~" taken out: `text` itself where there is none, else it lies in `scratch`,
/// which may not hold `text`.
///
/// A text that is cut to a length as well is cut first: Utf16Head(text, 255) and then this, so that the cut
/// text may become shorter still.
[[nodiscard]] std::string_view WithoutReserved(std::string_view text, std::string& scratch);

/// The same of a UTF-16 text.
[[nodiscard]] std::u16string WithoutReserved(std::u16string_view text);

} // namespace KestrinProductEditor
