// SPDX-License-Identifier: MIT
#include "fake/ScriptedLocale.h"

namespace KestrinProductEditor {

ScriptedLocale::ScriptedLocale() : money(PlainMoneyLayout()) {}

std::optional<std::u16string> ScriptedLocale::Item(LocaleItem item) const
{
    queries.push_back(item);
    const auto found = items.find(item);
    return found != items.end() ? std::optional(found->second) : std::nullopt;
}

MoneyLayout ScriptedLocale::Money() const
{
    return money;
}

MoneyLayout PlainMoneyLayout()
{
    MoneyLayout layout;
    layout.decimalSeparator = u".";
    layout.thousandSeparator = u",";
    layout.grouping = {3};
    layout.positive = u"n";
    layout.negative = u"-n";
    layout.numberDecimalSeparator = u".";
    layout.numberThousandSeparator = u",";
    return layout;
}

MoneyLayout DollarLayout()
{
    MoneyLayout layout = PlainMoneyLayout();
    layout.symbol = u"$";
    layout.positive = u"$n";
    layout.negative = u"-$n";
    return layout;
}

} // namespace KestrinProductEditor
