// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// The user's currency symbol and separators. Every call asks the locale again.
namespace KestrinProductEditor::modLocale {

/// The symbol, or "," when the locale has none.
[[nodiscard]] std::u16string GetLocaleCurrencySymbol();

/// The four separators; ",", ".", "," and "." stand in for those that the locale does not tell.
void GetLocaleSeparators(std::u16string& monThousandSep, std::u16string& monDecimalSep,
                         std::u16string& thousandSep, std::u16string& decimalSep);

} // namespace KestrinProductEditor::modLocale
