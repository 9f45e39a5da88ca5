// SPDX-License-Identifier: MIT
#include "util/modLocale.h"

#include "platform/UserLocale.h"

namespace KestrinProductEditor::modLocale {

std::u16string GetLocaleCurrencySymbol()
{
    // A comma, not a currency sign: callers know the missing symbol by it.
    return UserLocale().Item(LocaleItem::CurrencySymbol).value_or(u",");
}

void GetLocaleSeparators(std::u16string& monThousandSep, std::u16string& monDecimalSep,
                         std::u16string& thousandSep, std::u16string& decimalSep)
{
    const IUserLocale& locale = UserLocale();
    monThousandSep = locale.Item(LocaleItem::MonThousandSeparator).value_or(u",");
    monDecimalSep = locale.Item(LocaleItem::MonDecimalSeparator).value_or(u".");
    thousandSep = locale.Item(LocaleItem::ThousandSeparator).value_or(u",");
    decimalSep = locale.Item(LocaleItem::DecimalSeparator).value_or(u".");
}

} // namespace KestrinProductEditor::modLocale
