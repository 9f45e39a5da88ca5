// SPDX-License-Identifier: MIT
#include "util/modLocale.h"

#include "fake/ScriptedLocale.h"
#include "support/Locales.h"

#include <gtest/gtest.h>

namespace KestrinProductEditor {
namespace {

using Separators = std::vector<std::u16string>;

Separators SeparatorsNow()
{
    Separators separators(4);
    modLocale::GetLocaleSeparators(separators[0], separators[1], separators[2], separators[3]);
    return separators;
}

TEST(GetLocaleCurrencySymbol, IsTheLocalesSymbol)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    EXPECT_EQ(modLocale::GetLocaleCurrencySymbol(), u"$");
}

TEST(GetLocaleCurrencySymbol, IsACommaWhereTheQueryFails)
{
    const ScriptedLocale failing;
    const ScopedUserLocale scope(failing);
    EXPECT_EQ(modLocale::GetLocaleCurrencySymbol(), u",");
}

TEST(GetLocaleCurrencySymbol, IsACommaInThePlainLocale)
{
    const ScopedLocaleVariables variables("C");
    EXPECT_EQ(modLocale::GetLocaleCurrencySymbol(), u",");
}

TEST(GetLocaleCurrencySymbol, KeepsAnEmptyAnswer)
{
    ScriptedLocale locale;
    locale.items[LocaleItem::CurrencySymbol] = u"";
    const ScopedUserLocale scope(locale);
    EXPECT_EQ(modLocale::GetLocaleCurrencySymbol(), u"");
}

TEST(GetLocaleSeparators, StandInWhereEveryQueryFails)
{
    const ScriptedLocale failing;
    const ScopedUserLocale scope(failing);
    EXPECT_EQ(SeparatorsNow(), (Separators{u",", u".", u",", u"."}));
}

TEST(GetLocaleSeparators, StandInEachByItself)
{
    ScriptedLocale locale;
    locale.items[LocaleItem::MonDecimalSeparator] = u";";
    locale.items[LocaleItem::ThousandSeparator] = u"";
    const ScopedUserLocale scope(locale);
    EXPECT_EQ(SeparatorsNow(), (Separators{u",", u";", u"", u"."}));
}

TEST(GetLocaleSeparators, AskOnceForEachMonetaryOnesFirst)
{
    const ScriptedLocale locale;
    const ScopedUserLocale scope(locale);
    SeparatorsNow();
    EXPECT_EQ(locale.queries,
              (std::vector<LocaleItem>{LocaleItem::MonThousandSeparator, LocaleItem::MonDecimalSeparator,
                                       LocaleItem::ThousandSeparator, LocaleItem::DecimalSeparator}));
}

TEST(GetLocaleSeparators, AreTheLocalesMonetaryBeforeNumeric)
{
    const ScopedLocaleVariables variables("de_AT.UTF-8");
    EXPECT_EQ(SeparatorsNow(), (Separators{u"\u202F", u",", u".", u","}));
}

TEST(GetLocaleSeparators, OverwriteWhatTheArgumentsHeld)
{
    const ScopedLocaleVariables variables("C");
    Separators separators{u"old", u"old", u"old", u"old"};
    modLocale::GetLocaleSeparators(separators[0], separators[1], separators[2], separators[3]);
    EXPECT_EQ(separators, (Separators{u",", u".", u",", u"."}));
}

} // namespace
} // namespace KestrinProductEditor
