// SPDX-License-Identifier: MIT
#pragma once

#include "platform/UserLocale.h"

#include <map>
#include <vector>

namespace KestrinProductEditor {

/// A locale that answers what a test tells it to. Fresh, every query fails and amounts are written as the
/// plain locale writes them.
class ScriptedLocale : public IUserLocale
{
public:
    ScriptedLocale();

    /// Items that are not in the map fail.
    std::map<LocaleItem, std::u16string> items;
    MoneyLayout money;
    /// The items that were asked for, in that order.
    mutable std::vector<LocaleItem> queries;

    [[nodiscard]] std::optional<std::u16string> Item(LocaleItem item) const override;
    [[nodiscard]] MoneyLayout Money() const override;
};

/// "," groups by threes, "." decides, no symbol: the layout of a locale that tells nothing.
[[nodiscard]] MoneyLayout PlainMoneyLayout();

/// The same with the symbol "$", "$n" and "-$n".
[[nodiscard]] MoneyLayout DollarLayout();

} // namespace KestrinProductEditor
