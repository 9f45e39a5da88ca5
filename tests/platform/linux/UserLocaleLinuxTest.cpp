// SPDX-License-Identifier: MIT
#include "platform/UserLocale.h"

#include "platform/Text.h"
#include "support/Locales.h"
#include "util/modConversion.h"

#include <gtest/gtest.h>

#include <clocale>
#include <locale.h>
#include <monetary.h>

namespace KestrinProductEditor {
namespace {

using Text = std::optional<std::u16string>;

Text SymbolNow()
{
    return PlatformUserLocale().Item(LocaleItem::CurrencySymbol);
}

TEST(TestLocales, AreInstalled)
{
    for (const char* const name : TestLocaleNames()) {
        EXPECT_TRUE(LocaleExists(name)) << name << " is missing: run tools/make-locales";
    }
    EXPECT_FALSE(LocaleExists("xx_XX.UTF-8"));
}

TEST(UserLocaleLinux, TellsTheItemsOfALocale)
{
    struct Case
    {
        const char* locale;
        std::u16string_view symbol;
        std::u16string_view monThousand;
        std::u16string_view monDecimal;
        std::u16string_view thousand;
        std::u16string_view decimal;
    };
    constexpr Case kCases[] = {
        {"en_US.UTF-8", u"$", u",", u".", u",", u"."},
        {"de_DE.UTF-8", u"\u20AC", u".", u",", u".", u","},
        {"fr_FR.UTF-8", u"\u20AC", u"\u202F", u",", u"\u202F", u","},
        {"en_IN.UTF-8", u"\u20B9", u",", u".", u",", u"."},
        {"ja_JP.UTF-8", u"\uFFE5", u",", u".", u",", u"."},
        {"de_CH.UTF-8", u"CHF", u"\u2019", u".", u"\u2019", u"."},
        {"de_AT.UTF-8", u"\u20AC", u"\u202F", u",", u".", u","},
        {"en_US.ISO-8859-1", u"$", u",", u".", u",", u"."},
        {"en_GB.ISO-8859-1", u"\u00A3", u",", u".", u",", u"."},
    };
    for (const Case& testCase : kCases) {
        SCOPED_TRACE(testCase.locale);
        const ScopedLocaleVariables variables(testCase.locale);
        const IUserLocale& locale = PlatformUserLocale();
        EXPECT_EQ(locale.Item(LocaleItem::CurrencySymbol), Text(testCase.symbol));
        EXPECT_EQ(locale.Item(LocaleItem::MonThousandSeparator), Text(testCase.monThousand));
        EXPECT_EQ(locale.Item(LocaleItem::MonDecimalSeparator), Text(testCase.monDecimal));
        EXPECT_EQ(locale.Item(LocaleItem::ThousandSeparator), Text(testCase.thousand));
        EXPECT_EQ(locale.Item(LocaleItem::DecimalSeparator), Text(testCase.decimal));
    }
}

TEST(UserLocaleLinux, HasNoMoneyAndNoGroupsInThePlainLocale)
{
    for (const char* const name : {"C", "POSIX", "C.UTF-8", "xx_XX.UTF-8"}) {
        SCOPED_TRACE(name);
        const ScopedLocaleVariables variables(name);
        const IUserLocale& locale = PlatformUserLocale();
        EXPECT_EQ(locale.Item(LocaleItem::CurrencySymbol), std::nullopt);
        EXPECT_EQ(locale.Item(LocaleItem::MonThousandSeparator), std::nullopt);
        EXPECT_EQ(locale.Item(LocaleItem::MonDecimalSeparator), std::nullopt);
        EXPECT_EQ(locale.Item(LocaleItem::ThousandSeparator), std::nullopt);
        EXPECT_EQ(locale.Item(LocaleItem::DecimalSeparator), Text(u"."));

        const MoneyLayout money = locale.Money();
        EXPECT_EQ(money.symbol, u"");
        EXPECT_EQ(money.decimalSeparator, u".");
        EXPECT_EQ(money.thousandSeparator, u",");
        EXPECT_EQ(money.grouping, std::vector<int>{3});
        EXPECT_FALSE(money.lastGroupEnds);
        EXPECT_EQ(money.positive, u"n");
        EXPECT_EQ(money.negative, u"-n");
    }
}

TEST(UserLocaleLinux, KnowsNoOtherItems)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    EXPECT_EQ(PlatformUserLocale().Item(static_cast<LocaleItem>(9999)), std::nullopt);
}

TEST(UserLocaleLinux, ReadsTheGroupSizes)
{
    const ScopedLocaleVariables variables("en_IN.UTF-8");
    EXPECT_EQ(PlatformUserLocale().Money().grouping, (std::vector<int>{3, 2}));
}

TEST(UserLocaleLinux, AsksTheEnvironmentAnewAtEachCall)
{
    const ScopedLocaleVariables american("en_US.UTF-8");
    EXPECT_EQ(SymbolNow(), Text(u"$"));
    {
        const ScopedLocaleVariables german("de_DE.UTF-8");
        EXPECT_EQ(SymbolNow(), Text(u"\u20AC"));
    }
    EXPECT_EQ(SymbolNow(), Text(u"$"));
}

TEST(UserLocaleLinux, ResolvesTheVariablesInTheUsualOrder)
{
    {
        const ScopedLocaleVariables variables(LocaleVariables{.lang = "de_DE.UTF-8"});
        EXPECT_EQ(SymbolNow(), Text(u"\u20AC"));
        EXPECT_EQ(PlatformUserLocale().Item(LocaleItem::DecimalSeparator), Text(u","));
    }
    {
        const ScopedLocaleVariables variables(
            LocaleVariables{.monetary = "en_US.UTF-8", .lang = "de_DE.UTF-8"});
        EXPECT_EQ(SymbolNow(), Text(u"$"));
        EXPECT_EQ(PlatformUserLocale().Item(LocaleItem::DecimalSeparator), Text(u","));
    }
    {
        const ScopedLocaleVariables variables(LocaleVariables{.all = "ja_JP.UTF-8",
                                                              .monetary = "en_US.UTF-8",
                                                              .numeric = "fr_FR.UTF-8",
                                                              .lang = "de_DE.UTF-8"});
        EXPECT_EQ(SymbolNow(), Text(u"\uFFE5"));
        EXPECT_EQ(PlatformUserLocale().Item(LocaleItem::DecimalSeparator), Text(u"."));
    }
}

TEST(UserLocaleLinux, DoesNotLoseOneCategoryWithAnother)
{
    {
        const ScopedLocaleVariables variables(
            LocaleVariables{.monetary = "xx_XX.UTF-8", .numeric = "de_DE.UTF-8"});
        EXPECT_EQ(SymbolNow(), std::nullopt);
        EXPECT_EQ(PlatformUserLocale().Item(LocaleItem::ThousandSeparator), Text(u"."));
        EXPECT_EQ(PlatformUserLocale().Money().numberDecimalSeparator, u",");
    }
    {
        const ScopedLocaleVariables variables(
            LocaleVariables{.ctype = "xx_XX.UTF-8", .monetary = "de_DE.UTF-8", .numeric = "xx_XX.UTF-8"});
        EXPECT_EQ(SymbolNow(), Text(u"\u20AC"));
        EXPECT_EQ(PlatformUserLocale().Item(LocaleItem::ThousandSeparator), std::nullopt);
    }
}

TEST(UserLocaleLinux, DoesNotDependOnWhatTheHostSet)
{
    const ScopedLocaleVariables variables("de_DE.UTF-8");
    const std::string previous = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "en_US.UTF-8"), nullptr);
    EXPECT_EQ(SymbolNow(), Text(u"\u20AC"));
    EXPECT_STREQ(std::setlocale(LC_MONETARY, nullptr), "en_US.UTF-8");
    std::setlocale(LC_ALL, previous.c_str());
}

TEST(UserLocaleLinux, ReadsACategorysTextInItsOwnCharacterSet)
{
    const ScopedLocaleVariables variables(
        LocaleVariables{.ctype = "de_DE.UTF-8", .monetary = "en_GB.ISO-8859-1", .numeric = "fr_FR.UTF-8"});
    const MoneyLayout money = PlatformUserLocale().Money();
    EXPECT_EQ(money.symbol, u"\u00A3");
    EXPECT_EQ(money.numberThousandSeparator, u"\u202F");
}

TEST(UserLocaleLinux, WritesMoneyAsTheSystemDoes)
{
    for (const char* const name : TestLocaleNames()) {
        if (std::string_view(name).ends_with("ISO-8859-1")) {
            continue;
        }
        SCOPED_TRACE(name);
        const ScopedLocaleVariables variables(name);
        const MoneyLayout money = PlatformUserLocale().Money();
        const locale_t locale = newlocale(LC_ALL_MASK, name, nullptr);
        ASSERT_NE(locale, nullptr);
        for (const double amount : {0.0, 0.5, -0.5, 7.0, -7.0, 999.25, -1000.0, 1234.5, -1234.5, 1234567.75,
                                    -1234567.75, 123456789.25, -123456789.25}) {
            char expected[100];
            ASSERT_GT(strfmon_l(expected, sizeof expected, locale, "%.2n", amount), 0);
            EXPECT_EQ(modConversion::FormatCurrency(modConversion::ToCurrency(amount), 2, money), expected);
        }
        freelocale(locale);
    }
}

} // namespace
} // namespace KestrinProductEditor
