// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// A column's display format for amounts, such as "$#,##0.00" and "$###,##0.00": "$" is the locale's symbol,
/// where the locale puts it (none without a "$"), "," its grouping, and the "0"s behind "." the decimals. The
/// answer turns the plain text of an amount into the one shown; any other text it leaves alone. The locale is
/// asked once, here.
[[nodiscard]] std::function<std::u16string(std::u16string_view)> CurrencyFormat(std::u16string_view pattern);

} // namespace KestrinProductEditor
