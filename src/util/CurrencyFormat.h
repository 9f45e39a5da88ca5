// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// What the cells of a column hold. The two differ where the locale has one decimal sign for money and
/// another for numbers.
enum class AmountCells
{
    Plain, ///< amounts as the default conversion writes them (modConversion::ToText): "1234.5"
    Typed, ///< amounts as people write them (modConversion::CurrencyFromText): "$1,234.5"
};

/// A column's display format for amounts, such as "$#,##0.00" and "$###,##0.00": "$" is the locale's symbol,
/// where the locale puts it (none without a "$"), "," its grouping, and the "0"s behind "." the decimals. The
/// answer turns the text of an amount into the one shown; any other text it leaves alone. The locale is asked
/// once, here.
[[nodiscard]] std::function<std::u16string(std::u16string_view)>
CurrencyFormat(std::u16string_view pattern, AmountCells cells = AmountCells::Plain);

} // namespace KestrinProductEditor
