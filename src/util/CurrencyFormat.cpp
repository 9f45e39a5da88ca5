// SPDX-License-Identifier: MIT
#include "util/CurrencyFormat.h"

#include "platform/Text.h"
#include "platform/UserLocale.h"
#include "util/modConversion.h"

#include <algorithm>
#include <cstdint>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::int32_t Decimals(std::u16string_view pattern)
{
    const std::size_t point = pattern.find(u'.');
    if (point == std::u16string_view::npos)
        return 0;
    const std::u16string_view behind = pattern.substr(point + 1);
    return static_cast<std::int32_t>(std::count(behind.begin(), behind.end(), u'0'));
}

/// What the default conversion writes: digits and the decimal sign of numbers, nothing else.
[[nodiscard]] MoneyLayout PlainLayout()
{
    MoneyLayout layout;
    layout.decimalSeparator = UserLocale().Item(LocaleItem::DecimalSeparator).value_or(u".");
    layout.numberDecimalSeparator = layout.decimalSeparator;
    return layout;
}

} // namespace

std::function<std::u16string(std::u16string_view)> CurrencyFormat(std::u16string_view pattern,
                                                                  AmountCells cells)
{
    MoneyLayout layout = UserLocale().Money();
    const MoneyLayout written = cells == AmountCells::Plain ? PlainLayout() : layout;
    if (pattern.find(u'$') == std::u16string_view::npos)
        layout.symbol.clear();
    if (pattern.find(u',') == std::u16string_view::npos)
        layout.thousandSeparator.clear();
    const std::int32_t decimals = Decimals(pattern);

    return [layout, written, decimals](std::u16string_view text) {
        const modConversion::CurrencyResult amount = modConversion::CurrencyFromText(ToUtf8(text), written);
        if (amount.error != modConversion::ConversionError::None)
            return std::u16string(text);
        return ToUtf16(modConversion::FormatCurrency(amount.value, decimals, layout));
    };
}

} // namespace KestrinProductEditor
