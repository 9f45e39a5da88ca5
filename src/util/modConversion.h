// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/Currency.h>
#include <KestrinProductEditor/Variant.h>

#include "platform/UserLocale.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Money and text, and the default conversions between the kinds of values.
namespace KestrinProductEditor::modConversion {

/// Why a text is no amount.
enum class ConversionError
{
    None,
    TypeMismatch,
    Overflow
};

struct CurrencyResult
{
    Currency value;
    ConversionError error = ConversionError::None;
};

/// The one conversion from text to money: the locale's symbol, a sign before or behind or parentheses, blanks
/// (no-break ones too), one decimal sign, and groups where the locale groups. Anything else is a type
/// mismatch: "1e3" is, and so is "1,50" where a comma groups by threes. More than four decimals round half
/// away from zero. `text` is UTF-8.
[[nodiscard]] CurrencyResult CurrencyFromText(std::string_view text, const MoneyLayout& layout);

/// The amount as the locale writes money, with `decimals` decimals (0 to 9; half away from zero), in UTF-8.
/// What is rounded to zero has no sign.
[[nodiscard]] std::string FormatCurrency(Currency amount, std::int32_t decimals, const MoneyLayout& layout);
/// Appends the same to `out`.
void AppendFormatCurrency(Currency amount, std::int32_t decimals, const MoneyLayout& layout,
                          std::string& out);

/// The amount for people to read. No decimals when it is whole (0 too), else `decimals` of them; without
/// `showSymbol` every occurrence of `currencySymbol` is taken out (an empty one takes nothing).
[[nodiscard]] std::u16string FormatCurrencyText(Currency amount, std::int32_t decimals,
                                                std::u16string_view currencySymbol, bool showSymbol);

/// The amount that someone typed: only the digits and `decimalSep` count, so it is never negative; 0 when
/// they form no number. Never raises.
[[nodiscard]] Currency ParseCurrencyText(std::u16string_view text, std::u16string_view decimalSep);

/// The amount with a point and as many decimals as it needs, whatever the locale: "1234.5", "-0.0001", "7".
[[nodiscard]] std::string PlainText(Currency amount);

// The default conversions. Empty counts as 0, "" or false. They raise 13 for Null, an array or a text that
// does not convert, and 6 for a number that does not fit. Text is read by the locale's rules. Halves round to
// even.

[[nodiscard]] std::int32_t ToLong(const Variant& value);
[[nodiscard]] Currency ToCurrency(const Variant& value);
[[nodiscard]] bool ToBoolean(const Variant& value);
/// Numbers with the locale's decimal sign and no groups; True and False.
[[nodiscard]] std::u16string ToText(const Variant& value);

} // namespace KestrinProductEditor::modConversion
