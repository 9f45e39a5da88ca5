// SPDX-License-Identifier: MIT
#include "util/CurrencyFormat.h"

#include "fake/ScriptedLocale.h"
#include "platform/Text.h"
#include "support/Locales.h"
#include "util/modConversion.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

/// What a list shows of an amount in the locale in use: its cell's text, formatted.
std::string ListShows(std::int64_t scaled, std::u16string_view pattern = u"$#,##0.00")
{
    const std::u16string cell = modConversion::ToText(Currency::FromScaled(scaled));
    return ToUtf8(CurrencyFormat(pattern)(cell));
}

} // namespace

TEST(CurrencyFormat, WritesAmountsAsTheLocaleDoes)
{
    struct Case
    {
        const char* locale;
        std::int64_t scaled;
        std::string shown;
    };
    const std::vector<Case> cases = {
        {"en_US.UTF-8", 0, "$0.00"},
        {"en_US.UTF-8", 125000, "$12.50"},
        {"en_US.UTF-8", 12345675000, "$1,234,567.50"},
        {"en_US.UTF-8", -12345000, "-$1,234.50"},
        {"en_US.UTF-8", 10050, "$1.01"},
        {"en_US.UTF-8", 10049, "$1.00"},
        {"en_US.UTF-8", -49, "$0.00"},
        {"en_US.UTF-8", std::numeric_limits<std::int64_t>::max(), "$922,337,203,685,477.58"},
        {"en_US.UTF-8", std::numeric_limits<std::int64_t>::min(), "-$922,337,203,685,477.58"},
        {"de_DE.UTF-8", 125000, "12,50 \u20AC"},
        {"de_DE.UTF-8", 12345675000, "1.234.567,50 \u20AC"},
        {"de_DE.UTF-8", -12345000, "-1.234,50 \u20AC"},
        {"fr_FR.UTF-8", 12345675000, "1\u202F234\u202F567,50 \u20AC"},
        {"fr_FR.UTF-8", -50000, "-5,00 \u20AC"},
        {"C", 12345675000, "1,234,567.50"},
        {"C", -125000, "-12.50"},
    };
    for (const Case& test : cases) {
        const ScopedLocaleVariables variables(test.locale);
        EXPECT_EQ(ListShows(test.scaled), test.shown) << test.locale << " " << test.scaled;
        EXPECT_EQ(ListShows(test.scaled, u"$###,##0.00"), test.shown) << test.locale << " " << test.scaled;
    }
}

TEST(CurrencyFormat, FollowsThePattern)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    EXPECT_EQ(ListShows(12345678, u"#,##0.00"), "1,234.57");
    EXPECT_EQ(ListShows(12345678, u"$0.00"), "$1234.57");
    EXPECT_EQ(ListShows(12345678, u"$#,##0"), "$1,235");
    EXPECT_EQ(ListShows(12345678, u"$#,##0.000"), "$1,234.568");
    EXPECT_EQ(ListShows(-12345678, u"0.0"), "-1234.6");
}

TEST(CurrencyFormat, LeavesOtherTextsAlone)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    for (const AmountCells cells : {AmountCells::Plain, AmountCells::Typed}) {
        const auto format = CurrencyFormat(u"$#,##0.00", cells);
        for (const std::u16string text :
             {u"", u" ", u"abc", u"1e3", u"12x", u"1.2.3", u"-", u"\u00A0", u"99999999999999999999", u"1,50"})
            EXPECT_EQ(format(text), text);
    }
}

TEST(CurrencyFormat, ReadsPlainCellsAsTheDefaultConversionWritesThem)
{
    // Amounts with signs of their own: a plain "12.345" is no twelve thousand, and "12,5" is an amount.
    {
        const ScopedLocaleVariables variables(
            LocaleVariables{.monetary = "de_DE.UTF-8", .numeric = "en_US.UTF-8"});
        EXPECT_EQ(ListShows(123450), "12,35 \u20AC");
        EXPECT_EQ(ListShows(125000), "12,50 \u20AC");
        EXPECT_EQ(ListShows(12345000), "1.234,50 \u20AC");
    }
    {
        const ScopedLocaleVariables variables(
            LocaleVariables{.monetary = "en_US.UTF-8", .numeric = "de_DE.UTF-8"});
        EXPECT_EQ(ListShows(123450), "$12.35");
        EXPECT_EQ(ListShows(125000), "$12.50");
        EXPECT_EQ(ListShows(-12345000), "-$1,234.50");
    }
}

TEST(CurrencyFormat, ReadsTypedCellsAsAnImportDoes)
{
    {
        const ScopedLocaleVariables variables("en_US.UTF-8");
        const auto format = CurrencyFormat(u"$###,##0.00", AmountCells::Typed);
        EXPECT_EQ(format(u"$1,234.5"), u"$1,234.50");
        EXPECT_EQ(format(u"(5)"), u"-$5.00");
        EXPECT_EQ(format(u" 7 "), u"$7.00");
    }
    {
        const ScopedLocaleVariables variables(
            LocaleVariables{.monetary = "de_DE.UTF-8", .numeric = "en_US.UTF-8"});
        const auto format = CurrencyFormat(u"$###,##0.00", AmountCells::Typed);
        EXPECT_EQ(format(u"12.345"), u"12.345,00 \u20AC");
        EXPECT_EQ(format(u"12.5"), u"12.5");
    }
}

TEST(CurrencyFormat, AsksTheLocaleOnceOnly)
{
    ScriptedLocale locale;
    locale.money = DollarLayout();
    const ScopedUserLocale scope(locale);
    const auto format = CurrencyFormat(u"$#,##0.00");
    locale.money.symbol = u"EUR";
    locale.items[LocaleItem::DecimalSeparator] = u",";
    locale.queries.clear();
    EXPECT_EQ(format(u"1234.5"), u"$1,234.50");
    EXPECT_TRUE(locale.queries.empty());
}

} // namespace KestrinProductEditor
