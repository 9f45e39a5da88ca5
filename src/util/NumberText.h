// SPDX-License-Identifier: MIT
#pragma once

#include "platform/UserLocale.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

/// Texts read as numbers by the rules of a locale, before anything is rounded.
namespace KestrinProductEditor::NumberText {

/// What a text says as a number, exact as far as any rounding needs it.
struct ParsedNumber
{
    bool isNegative = false;
    bool isTooLarge = false; ///< the whole part has more digits than any amount; `whole` says nothing
    std::uint64_t whole = 0;
    std::uint64_t fraction = 0; ///< ten-thousandths
    unsigned fifthDecimal = 0;
    bool hasMoreDecimals = false; ///< a digit other than 0 behind the fifth decimal
};

/// The number that `text` (UTF-8) writes; nothing when it writes none. The rules are those of
/// modConversion::CurrencyFromText.
[[nodiscard]] std::optional<ParsedNumber> Read(std::string_view text, const MoneyLayout& layout);

/// Whether `character` is a blank that amounts are written with: a space, a tab, or one that does not break.
[[nodiscard]] bool IsBlank(char32_t character);

/// The size of the group number `index`, counted from the decimal sign; 0 where the digits go on ungrouped.
[[nodiscard]] std::size_t GroupSize(const MoneyLayout& layout, std::size_t index);

} // namespace KestrinProductEditor::NumberText
