// SPDX-License-Identifier: MIT
#include "util/modConversion.h"

#include <KestrinProductEditor/AutomationError.h>

#include "fake/ScriptedLocale.h"
#include "platform/Text.h"
#include "support/Locales.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace KestrinProductEditor {
namespace {

using modConversion::ConversionError;
using modConversion::CurrencyFromText;
using modConversion::FormatCurrency;
using modConversion::FormatCurrencyText;
using modConversion::ParseCurrencyText;

constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();

constexpr std::array kLocales = {
    "en_US.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8", "en_IN.UTF-8",      "ja_JP.UTF-8",
    "C",           "de_CH.UTF-8", "de_AT.UTF-8", "en_US.ISO-8859-1", "en_GB.ISO-8859-1"};

MoneyLayout LayoutOf(const char* locale)
{
    const ScopedLocaleVariables variables(locale);
    return UserLocale().Money();
}

struct Amount
{
    std::string_view text;
    std::int64_t scaled;
};

template<std::size_t kCount>
void ExpectAmounts(const MoneyLayout& layout, const Amount (&amounts)[kCount])
{
    for (const Amount& amount : amounts) {
        const modConversion::CurrencyResult result = CurrencyFromText(amount.text, layout);
        EXPECT_EQ(result.error, ConversionError::None) << amount.text;
        EXPECT_EQ(result.value.Scaled(), amount.scaled) << amount.text;
    }
}

template<std::size_t kCount>
void ExpectError(ConversionError error, const MoneyLayout& layout, const std::string_view (&texts)[kCount])
{
    for (const std::string_view text : texts) {
        const modConversion::CurrencyResult result = CurrencyFromText(text, layout);
        EXPECT_EQ(result.error, error) << "\"" << text << "\"";
        EXPECT_EQ(result.value, Currency()) << "\"" << text << "\"";
    }
}

TEST(CurrencyFromText, ReadsPlainAndGroupedAmounts)
{
    ExpectAmounts(DollarLayout(), {{"0", 0},
                                   {"-0", 0},
                                   {"5", 50000},
                                   {"1234.5", 12345000},
                                   {"$1,234.50", 12345000},
                                   {"1,234.5", 12345000},
                                   {"1,234,567.8901", 12345678901},
                                   {"0,001,234", 12340000},
                                   {"000000000000000000000000123", 1230000},
                                   {"12345678", 123456780000},
                                   {"4294967295.99", 42949672959900},
                                   {".5", 5000},
                                   {"5.", 50000},
                                   {"1,234.", 12340000},
                                   {"-.5", -5000},
                                   {"$.25", 2500},
                                   {"0.0001", 1}});
}

TEST(CurrencyFromText, TakesSymbolAndSignOnEitherSide)
{
    ExpectAmounts(DollarLayout(), {{"$5", 50000},   {"5$", 50000},   {"$ 5", 50000},      {"5 $", 50000},
                                   {"-5", -50000},  {"- 5", -50000}, {"5-", -50000},      {"5 -", -50000},
                                   {"+5", 50000},   {"5+", 50000},   {"\u22125", -50000}, {"5\u2212", -50000},
                                   {"-$5", -50000}, {"$-5", -50000}, {"- $ 5", -50000},   {"$ - 5", -50000},
                                   {"5-$", -50000}, {"5$-", -50000}, {"5 - $", -50000},   {"5 $ -", -50000},
                                   {"-5$", -50000}, {"$5-", -50000}, {"+$5", 50000},      {"5.-", -50000},
                                   {"-5.$", -50000}});
}

TEST(CurrencyFromText, ReadsParenthesesAsANegativeAmount)
{
    ExpectAmounts(DollarLayout(), {{"(5)", -50000},
                                   {"($5)", -50000},
                                   {"(5$)", -50000},
                                   {"( $ 1,234.50 )", -12345000},
                                   {" (5) ", -50000},
                                   {"(0)", 0}});
}

TEST(CurrencyFromText, IgnoresOuterBlanksOfEveryKind)
{
    ExpectAmounts(DollarLayout(), {{" 5", 50000},
                                   {"5 ", 50000},
                                   {"\t5\t", 50000},
                                   {"\u00A05\u00A0", 50000},
                                   {"\u202F5\u2007", 50000},
                                   {"\u2009 $\u00A05 \u2009", 50000}});
}

TEST(CurrencyFromText, RefusesWhatIsNoNumber)
{
    using namespace std::string_view_literals;
    ExpectError(ConversionError::TypeMismatch, DollarLayout(),
                {"",
                 " ",
                 "\t\u00A0",
                 "-",
                 "+",
                 "$",
                 "$.",
                 ".",
                 "()",
                 "( )",
                 "($)",
                 "abc",
                 "1e3",
                 "1E3",
                 "1.5e+2",
                 "0x10",
                 "&HFF",
                 "1_000",
                 "inf",
                 "nan",
                 "5%",
                 "5 5",
                 "1 234",
                 "1'000",
                 "1.2.3",
                 "1..2",
                 "..5",
                 "5 .5",
                 "5. 5",
                 "$$5",
                 "$5$",
                 "--5",
                 "-5-",
                 "+-5",
                 "-$5-",
                 "(5",
                 "5)",
                 ")5(",
                 "((5))",
                 "(-5)",
                 "-(5)",
                 "(5)-",
                 "(5-)",
                 "$(5)",
                 "(5)$",
                 "EUR5",
                 "\u20AC"
                 "5",
                 "\uFF11\uFF12",
                 "\u0661",
                 "5\r",
                 "5\n",
                 "\n5",
                 "5\0"sv,
                 "\0"sv,
                 "5\0"
                 "5"sv,
                 "\x80",
                 "5\xFF",
                 "\xE2\x80",
                 "5\xC2",
                 "five"});
}

TEST(CurrencyFromText, RefusesGroupsThatTheLocaleDoesNotMake)
{
    ExpectError(ConversionError::TypeMismatch, DollarLayout(),
                {"1,50",        "12,34",   "1,2345",   ",5",          ",500",     "1,,000",  "1,000,",
                 "1,000,.5",    "1,234,5", "1234,567", "12,3456,789", "1,23,456", "1.5,000", "1.000,5",
                 "1,000.000,5", "$,5",     "-,500",    "1,$000",      "1, 000",   "1 ,000",  "1.234,50"});
}

TEST(CurrencyFromText, RoundsHalfAwayFromZeroBehindTheFourthDecimal)
{
    ExpectAmounts(DollarLayout(), {{"1.00005", 10001},
                                   {"1.00004999999", 10000},
                                   {"-1.00005", -10001},
                                   {"-1.00004999", -10000},
                                   {"(1.00005)", -10001},
                                   {"0.99995", 10000},
                                   {"0.00005", 1},
                                   {"0.00004", 0},
                                   {"-0.00004", 0},
                                   {"1.00015", 10002}});
}

TEST(CurrencyFromText, ReachesExactlyTheEndsOfTheRange)
{
    ExpectAmounts(DollarLayout(), {{"922337203685477.5807", kMost},
                                   {"$922,337,203,685,477.5807", kMost},
                                   {"922337203685477.58074", kMost},
                                   {"-922337203685477.5808", kLeast},
                                   {"(922337203685477.5808)", kLeast},
                                   {"-922337203685477.58084", kLeast},
                                   {"-922337203685477.5807", -kMost}});
}

TEST(CurrencyFromText, TellsOverflowFromMismatch)
{
    const std::string manyDigits(400, '9');
    const std::string manyZeros = "1" + std::string(400, '0');
    std::string manyGroups = "1";
    for (int group = 0; group < 100; ++group) {
        manyGroups += ",000";
    }
    ExpectError(ConversionError::Overflow, DollarLayout(),
                {"922337203685477.5808", "922337203685477.58075", "-922337203685477.5809",
                 "-922337203685477.58085", "922337203685478", "1000000000000000", "9999999999999999",
                 "18446744073709551616", "1844674407370955.1616", manyDigits, manyZeros, manyGroups,
                 "-" + manyDigits + "." + manyDigits, "($" + manyDigits + ")"});
    ExpectError(
        ConversionError::TypeMismatch, DollarLayout(),
        {manyDigits + "x", manyGroups + ",00", manyDigits + ",000", manyDigits + "." + manyDigits + "."});
}

TEST(CurrencyFromText, TakesAnyNumberOfDecimals)
{
    const std::string decimals = "0.1234" + std::string(100'000, '4');
    EXPECT_EQ(CurrencyFromText(decimals, DollarLayout()).value.Scaled(), 1234);
    const std::string zeros(100'000, '0');
    EXPECT_EQ(CurrencyFromText(zeros + "7", DollarLayout()).value.Scaled(), 70000);
}

TEST(CurrencyFromText, FollowsTheUnitedStates)
{
    const MoneyLayout layout = LayoutOf("en_US.UTF-8");
    ExpectAmounts(layout, {{"$1,234.50", 12345000}, {"-$1,234.50", -12345000}, {"($1,234.50)", -12345000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1,50", "12,34", "1,2345", ",5", "1,,000", "1e3"});
}

TEST(CurrencyFromText, FollowsGermany)
{
    const MoneyLayout layout = LayoutOf("de_DE.UTF-8");
    ExpectAmounts(layout, {{"1.234,50", 12345000},
                           {"1.234,50 \u20AC", 12345000},
                           {"\u20AC 1.234,50", 12345000},
                           {"-1.234,50 \u20AC", -12345000},
                           {"1234,5", 12345000},
                           {"1.234", 12340000},
                           {"0,5", 5000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1,234.50", "1.50", "1.5", "$5", "1.234.5", "1,2,3"});
}

TEST(CurrencyFromText, FollowsFranceWithEveryBlankBetweenGroups)
{
    const MoneyLayout layout = LayoutOf("fr_FR.UTF-8");
    ExpectAmounts(layout, {{"1\u202F234,50 \u20AC", 12345000},
                           {"1\u00A0234,50\u00A0\u20AC", 12345000},
                           {"1 234,50 \u20AC", 12345000},
                           {"1\u2009234,50", 12345000},
                           {"1 234\u00A0567", 12345670000},
                           {"5 \u20AC", 50000},
                           {"-1 234,50", -12345000},
                           {"5 -", -50000}});
    ExpectError(ConversionError::TypeMismatch, layout,
                {"1.5", "1,234.50", "12 34", "1  234", "1 2345", "1\t234", "5,0 000", "1 234 5"});
}

TEST(CurrencyFromText, FollowsIndiasGroups)
{
    const MoneyLayout layout = LayoutOf("en_IN.UTF-8");
    ExpectAmounts(layout, {{"12,34,567.00", 12345670000},
                           {"\u20B9"
                            "12,34,567.00",
                            12345670000},
                           {"1,23,45,678", 123456780000},
                           {"1,234", 12340000},
                           {"1234567", 12345670000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1,234,567.00", "123,456", "12,345,67", "1,2"});
}

TEST(CurrencyFromText, FollowsJapan)
{
    const MoneyLayout layout = LayoutOf("ja_JP.UTF-8");
    ExpectAmounts(layout, {{"\uFFE5"
                            "1,234",
                            12340000},
                           {"\uFFE5-1,234.50", -12345000},
                           {"-\uFFE5"
                            "1,234",
                            -12340000},
                           {"1234\uFFE5", 12340000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"\uFFE5\uFF11", "$5"});
}

TEST(CurrencyFromText, FollowsThePlainLocale)
{
    const MoneyLayout layout = LayoutOf("C");
    ExpectAmounts(layout, {{"1,234.50", 12345000}, {"-1,234.50", -12345000}, {"1234.5", 12345000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"$5", "1,50", ",5"});
}

TEST(CurrencyFromText, TakesEitherApostropheBetweenGroups)
{
    const MoneyLayout layout = LayoutOf("de_CH.UTF-8");
    ExpectAmounts(layout, {{"CHF 1\u2019234.50", 12345000},
                           {"1'234.50", 12345000},
                           {"1'234\u2019567", 12345670000},
                           {"CHF- 1\u2019234.50", -12345000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1`234", "1'23"});
}

TEST(CurrencyFromText, TakesNumericSeparatorsBesideMonetaryOnesButNotMixed)
{
    const MoneyLayout layout = LayoutOf("de_AT.UTF-8");
    ExpectAmounts(
        layout,
        {{"\u20AC 1\u202F234,50", 12345000}, {"1 234 567,50", 12345675000}, {"1.234.567,50", 12345675000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1.234 567,50", "1 234.567,50"});
}

TEST(CurrencyFromText, FollowsANarrowCharacterSet)
{
    ExpectAmounts(LayoutOf("en_US.ISO-8859-1"), {{"$1,234.50", 12345000}});
    ExpectAmounts(LayoutOf("en_GB.ISO-8859-1"), {{"\u00A3"
                                                  "1,234.50",
                                                  12345000}});
}

TEST(CurrencyFromText, LetsMonetarySeparatorsWinWhereTheyClash)
{
    MoneyLayout layout = DollarLayout();
    layout.decimalSeparator = u",";
    layout.thousandSeparator = u".";
    ExpectAmounts(layout, {{"1.234,50", 12345000}, {"1.234", 12340000}, {"1,234", 12340}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1,234.50", "1.50"});
}

TEST(CurrencyFromText, TakesTheSeparatorsThatDoNotClash)
{
    MoneyLayout layout = DollarLayout();
    layout.thousandSeparator = u"'";
    layout.numberDecimalSeparator = u",";
    layout.numberThousandSeparator = u"\u00A0";
    ExpectAmounts(layout, {{"1'234.50", 12345000},
                           {"1'234,50", 12345000},
                           {"1 234.50", 12345000},
                           {"1\u202F234,50", 12345000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1 234'567", "1'234 567", "1.5,5", "1,5.5"});

    layout.numberThousandSeparator = u".";
    ExpectAmounts(layout, {{"1.234", 12340}, {"1,5", 15000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1.234,5", "1.234.567"});
}

TEST(CurrencyFromText, ReadsOneSignForBothAsTheDecimalSign)
{
    MoneyLayout layout = DollarLayout();
    layout.thousandSeparator = u".";
    layout.numberThousandSeparator = u"";
    ExpectAmounts(layout, {{"1.234", 12340}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1.234.5", "1.234.567"});
}

TEST(CurrencyFromText, GroupsNothingWhereTheLocaleDoesNot)
{
    MoneyLayout noSizes = DollarLayout();
    noSizes.grouping = {};
    ExpectAmounts(noSizes, {{"1234567", 12345670000}});
    ExpectError(ConversionError::TypeMismatch, noSizes, {"1,234", "1,2"});

    MoneyLayout noSeparator = DollarLayout();
    noSeparator.thousandSeparator = u"";
    noSeparator.numberThousandSeparator = u"";
    ExpectAmounts(noSeparator, {{"1234567.5", 12345675000}});
    ExpectError(ConversionError::TypeMismatch, noSeparator, {"1,234"});
}

TEST(CurrencyFromText, EndsTheGroupsWhereTheLocaleDoes)
{
    MoneyLayout layout = DollarLayout();
    layout.lastGroupEnds = true;
    ExpectAmounts(layout, {{"1234,567", 12345670000}, {"1,234", 12340000}, {"1234567", 12345670000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"1,234,567", "1234,56", ",567"});
}

TEST(CurrencyFromText, TakesSymbolsOfAnyLength)
{
    MoneyLayout layout = DollarLayout();
    layout.symbol = u"kr.";
    ExpectAmounts(
        layout, {{"kr.5", 50000}, {"kr. 5.5", 55000}, {"5 kr.", 50000}, {"5.kr.", 50000}, {"kr.-5", -50000}});
    ExpectError(ConversionError::TypeMismatch, layout, {"kr5", "k5", "kr..", "KR.5"});

    layout.symbol = u" Kc ";
    ExpectAmounts(layout, {{"Kc5", 50000}, {"5 Kc", 50000}});

    layout.symbol = u"\U0001F4B0";
    ExpectAmounts(layout, {{"\U0001F4B0"
                            "5",
                            50000},
                           {"5\U0001F4B0", 50000}});
    ExpectError(ConversionError::TypeMismatch, layout,
                {"\xF0\x9F\x92"
                 "5",
                 "\U0001F4B1"
                 "5"});
}

TEST(CurrencyFromText, TakesTheLocalesOwnNegativeSign)
{
    MoneyLayout layout = DollarLayout();
    layout.negative = u"\u200E-$ n";
    ExpectAmounts(layout,
                  {{"\u200E-5", -50000}, {"\u200E-$ 5", -50000}, {"5\u200E-", -50000}, {"-5", -50000}});
    ExpectError(ConversionError::TypeMismatch, layout,
                {"\u200E"
                 "5",
                 "\u200E-5-"});
}

// The same rules, said in another way: a core from the first to the last digit or decimal sign, and around it
// blanks and at most one symbol and one sign, or parentheses.
bool IsCore(std::string_view core)
{
    const std::string_view whole = core.substr(0, core.find('.'));
    const std::string_view decimals = whole.size() == core.size() ? "" : core.substr(whole.size() + 1);
    if (decimals.find_first_not_of("0123456789") != std::string_view::npos ||
        whole.size() + decimals.size() == 0) {
        return false;
    }
    std::vector<std::size_t> groups = {0};
    for (const char character : whole) {
        if (character == ',') {
            groups.push_back(0);
        } else if (character >= '0' && character <= '9') {
            ++groups.back();
        } else {
            return false;
        }
    }
    const bool isHeadRight = groups.size() == 1 || (groups.front() >= 1 && groups.front() <= 3);
    return isHeadRight &&
           std::all_of(groups.begin() + 1, groups.end(), [](std::size_t size) { return size == 3; });
}

std::optional<bool> IsNegativeAmount(const std::string& text)
{
    const std::size_t first = text.find_first_of("0123456789.,");
    const std::size_t last = text.find_last_of("0123456789.,");
    if (first == std::string::npos || !IsCore(std::string_view(text).substr(first, last - first + 1))) {
        return std::nullopt;
    }
    std::string around = text.substr(0, first) + "#" + text.substr(last + 1);
    std::erase(around, ' ');
    if (around == "(#)" || around == "($#)" || around == "(#$)") {
        return true;
    }
    const auto signs =
        std::count_if(around.begin(), around.end(), [](char c) { return c == '-' || c == '+'; });
    if (around.find_first_of("()") != std::string::npos || signs > 1 ||
        std::count(around.begin(), around.end(), '$') > 1) {
        return std::nullopt;
    }
    return around.find('-') != std::string::npos;
}

std::int64_t MagnitudeOf(const std::string& text)
{
    std::string digits = text;
    std::erase_if(digits, [](char c) { return (c < '0' || c > '9') && c != '.'; });
    const std::size_t point = std::min(digits.find('.'), digits.size());
    const std::string decimals = (digits.substr(std::min(point + 1, digits.size())) + "00000").substr(0, 5);
    return (std::stoll("0" + digits.substr(0, point) + decimals) + 5) / 10;
}

TEST(CurrencyFromText, AgreesWithTheRulesSaidOtherwiseOnRandomTexts)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    constexpr std::string_view kAlphabet = "01234567890123456789,,..$-+() ";
    const MoneyLayout layout = DollarLayout();
    int accepted = 0;
    for (int round = 0; round < 30'000; ++round) {
        std::string text;
        for (std::size_t length = random() % 9; length > 0; --length) {
            text += kAlphabet[random() % kAlphabet.size()];
        }
        const modConversion::CurrencyResult result = CurrencyFromText(text, layout);
        const std::optional<bool> expected = IsNegativeAmount(text);
        ASSERT_EQ(result.error == ConversionError::None, expected.has_value()) << "\"" << text << "\"";
        if (expected) {
            ++accepted;
            const std::int64_t magnitude = MagnitudeOf(text);
            ASSERT_EQ(result.value.Scaled(), *expected ? -magnitude : magnitude) << "\"" << text << "\"";
        }
    }
    EXPECT_GT(accepted, 1000);
}

TEST(CurrencyFromText, AnswersZeroForRandomBytesThatItRefuses)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    constexpr std::string_view kBytes = "0159.,-+()$' \t\xE2\x80\xAF\x99\x82\xAC\xC2\xA0\xF0\xFF";
    for (const char* const name : kLocales) {
        SCOPED_TRACE(name);
        const MoneyLayout layout = LayoutOf(name);
        for (int round = 0; round < 5000; ++round) {
            std::string text;
            for (std::size_t length = random() % 12; length > 0; --length) {
                text += kBytes[random() % kBytes.size()];
            }
            const modConversion::CurrencyResult result = CurrencyFromText(text, layout);
            if (result.error != ConversionError::None) {
                ASSERT_EQ(result.value, Currency());
            } else {
                ASSERT_NE(text.find_first_of("0123456789"), std::string::npos);
            }
        }
    }
}

struct Formatted
{
    std::int64_t scaled;
    std::int32_t decimals;
    std::string_view text;
};

template<std::size_t kCount>
void ExpectTexts(const MoneyLayout& layout, const Formatted (&amounts)[kCount])
{
    for (const Formatted& amount : amounts) {
        EXPECT_EQ(FormatCurrency(Currency::FromScaled(amount.scaled), amount.decimals, layout), amount.text);
    }
}

TEST(FormatCurrency, WritesAsManyDecimalsAsAskedFor)
{
    ExpectTexts(DollarLayout(), {{12345678, 0, "$1,235"},
                                 {12345678, 1, "$1,234.6"},
                                 {12345678, 2, "$1,234.57"},
                                 {12345678, 3, "$1,234.568"},
                                 {12345678, 4, "$1,234.5678"},
                                 {12345678, 6, "$1,234.567800"},
                                 {12345678, 9, "$1,234.567800000"},
                                 {0, 2, "$0.00"},
                                 {0, 0, "$0"},
                                 {500, 2, "$0.05"},
                                 {5, 4, "$0.0005"}});
}

TEST(FormatCurrency, HoldsTheDecimalsToZeroToNine)
{
    ExpectTexts(DollarLayout(), {{15000, -1, "$2"}, {15000, 10, "$1.500000000"}});
}

TEST(FormatCurrency, RoundsHalfAwayFromZero)
{
    ExpectTexts(DollarLayout(), {{5000, 0, "$1"},
                                 {4999, 0, "$0"},
                                 {25000, 0, "$3"},
                                 {-5000, 0, "-$1"},
                                 {-25000, 0, "-$3"},
                                 {50, 2, "$0.01"},
                                 {49, 2, "$0.00"},
                                 {9999, 2, "$1.00"},
                                 {9999999, 0, "$1,000"},
                                 {-12345, 3, "-$1.235"}});
}

TEST(FormatCurrency, GivesNoSignToWhatRoundsToZero)
{
    ExpectTexts(DollarLayout(), {{-49, 2, "$0.00"}, {-4999, 0, "$0"}, {-50, 2, "-$0.01"}});
}

TEST(FormatCurrency, WritesTheEndsOfTheRange)
{
    ExpectTexts(DollarLayout(), {{kMost, 4, "$922,337,203,685,477.5807"},
                                 {kLeast, 4, "-$922,337,203,685,477.5808"},
                                 {kLeast, 2, "-$922,337,203,685,477.58"},
                                 {kMost, 0, "$922,337,203,685,478"},
                                 {kLeast, 0, "-$922,337,203,685,478"}});
}

TEST(FormatCurrency, FollowsTheLocale)
{
    struct Case
    {
        const char* locale;
        std::string_view positive;
        std::string_view negative;
        std::string_view zero;
    };
    constexpr Case kCases[] = {
        {"en_US.UTF-8", "$1,234,567.50", "-$1,234,567.50", "$0.00"},
        {"de_DE.UTF-8", "1.234.567,50 \u20AC", "-1.234.567,50 \u20AC", "0,00 \u20AC"},
        {"fr_FR.UTF-8", "1\u202F234\u202F567,50 \u20AC", "-1\u202F234\u202F567,50 \u20AC", "0,00 \u20AC"},
        {"en_IN.UTF-8",
         "\u20B9"
         "12,34,567.50",
         "-\u20B9"
         "12,34,567.50",
         "\u20B9"
         "0.00"},
        {"ja_JP.UTF-8",
         "\uFFE5"
         "1,234,567.50",
         "\uFFE5-1,234,567.50",
         "\uFFE5"
         "0.00"},
        {"C", "1,234,567.50", "-1,234,567.50", "0.00"},
        {"de_CH.UTF-8", "CHF 1\u2019234\u2019567.50", "CHF- 1\u2019234\u2019567.50", "CHF 0.00"},
        {"de_AT.UTF-8", "\u20AC 1\u202F234\u202F567,50", "-\u20AC 1\u202F234\u202F567,50", "\u20AC 0,00"},
        {"en_US.ISO-8859-1", "$1,234,567.50", "-$1,234,567.50", "$0.00"},
        {"en_GB.ISO-8859-1",
         "\u00A3"
         "1,234,567.50",
         "-\u00A3"
         "1,234,567.50",
         "\u00A3"
         "0.00"},
    };
    for (const Case& testCase : kCases) {
        SCOPED_TRACE(testCase.locale);
        const MoneyLayout layout = LayoutOf(testCase.locale);
        EXPECT_EQ(FormatCurrency(Currency::FromScaled(12345675000), 2, layout), testCase.positive);
        EXPECT_EQ(FormatCurrency(Currency::FromScaled(-12345675000), 2, layout), testCase.negative);
        EXPECT_EQ(FormatCurrency(Currency(), 2, layout), testCase.zero);
    }
}

TEST(FormatCurrency, ReadsBackFromEveryPattern)
{
    MoneyLayout layout = DollarLayout();
    for (const char16_t* const pattern :
         {u"($n)",  u"-$n",   u"$-n",  u"$n-",  u"(n$)", u"-n$",  u"n-$",
          u"n$-",   u"-n $",  u"-$ n", u"n $-", u"$ n-", u"$ -n", u"n- $",
          u"($ n)", u"(n $)", u"- $n", u"n$ -", u"n -$", u"$- n", u"\u2212n\u00A0$"}) {
        layout.negative = pattern;
        const std::string text = FormatCurrency(Currency::FromScaled(-12345000), 2, layout);
        std::string expected = ToUtf8(pattern);
        expected.replace(expected.find('n'), 1, "1,234.50");
        EXPECT_EQ(text, expected);
        EXPECT_EQ(CurrencyFromText(text, layout).value.Scaled(), -12345000) << text;
    }
}

TEST(FormatCurrency, DropsTheBlanksBesideAMissingSymbol)
{
    MoneyLayout layout = DollarLayout();
    layout.symbol = u"";
    layout.positive = u"n\u00A0$";
    layout.negative = u"-$ n";
    ExpectTexts(layout, {{50000, 0, "5"}, {-50000, 0, "-5"}});
    layout.negative = u"(n $)";
    ExpectTexts(layout, {{-50000, 0, "(5)"}});
    layout.negative = u"- n$";
    ExpectTexts(layout, {{-50000, 0, "- 5"}});
}

TEST(FormatCurrency, GroupsAsTheLocaleSays)
{
    MoneyLayout layout = DollarLayout();
    layout.grouping = {3, 2};
    ExpectTexts(layout, {{12345678900000, 0, "$1,23,45,67,890"}});
    layout.lastGroupEnds = true;
    ExpectTexts(layout, {{12345678900000, 0, "$12345,67,890"}});
    layout.grouping = {4};
    layout.lastGroupEnds = false;
    ExpectTexts(layout, {{12345678900000, 0, "$12,3456,7890"}, {99990000, 0, "$9999"}});
    layout.grouping = {1};
    ExpectTexts(layout, {{kMost, 4, "$9,2,2,3,3,7,2,0,3,6,8,5,4,7,7.5807"}});
    layout.grouping = {};
    ExpectTexts(layout, {{12345678900000, 0, "$1234567890"}});
    layout.grouping = {3};
    layout.thousandSeparator = u"";
    ExpectTexts(layout, {{12345678900000, 0, "$1234567890"}});
    layout.thousandSeparator = u"::";
    ExpectTexts(layout, {{12345678900000, 0, "$1::234::567::890"}});
}

TEST(FormatCurrency, ToleratesGroupSizesThatMakeNoSense)
{
    MoneyLayout layout = DollarLayout();
    layout.grouping = {3, 0};
    ExpectTexts(layout, {{12345678900000, 0, "$1234567,890"}});
    layout.grouping = {-1};
    ExpectTexts(layout, {{12345678900000, 0, "$1234567890"}});
}

TEST(FormatCurrency, WritesSymbolAndSignBeyondTheBasicPlane)
{
    MoneyLayout layout = DollarLayout();
    layout.symbol = u"\U0001F4B0";
    layout.negative = u"\U0001F53B$n";
    const std::string text = FormatCurrency(Currency::FromUnits(-5), 0, layout);
    EXPECT_EQ(text, "\U0001F53B\U0001F4B0"
                    "5");
    EXPECT_EQ(CurrencyFromText(text, layout).value, Currency::FromUnits(-5));
}

TEST(AppendFormatCurrency, KeepsWhatIsThere)
{
    std::string text = "price: ";
    modConversion::AppendFormatCurrency(Currency::FromUnits(7), 2, DollarLayout(), text);
    EXPECT_EQ(text, "price: $7.00");
}

TEST(FormatCurrency, ReadsBackUnderEveryLocale)
{
    const auto seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937_64 random(seed);
    for (const char* const name : kLocales) {
        SCOPED_TRACE(name);
        const MoneyLayout layout = LayoutOf(name);
        for (int round = 0; round < 5000; ++round) {
            // Shifting makes small amounts as likely as large ones.
            const auto bits = static_cast<std::int64_t>(random());
            const std::int64_t scaled = bits >> (random() % 64);
            const std::string exact = FormatCurrency(Currency::FromScaled(scaled), 4, layout);
            ASSERT_EQ(CurrencyFromText(exact, layout).error, ConversionError::None) << exact;
            ASSERT_EQ(CurrencyFromText(exact, layout).value.Scaled(), scaled) << exact;

            const std::int64_t cents = scaled / 100 * 100;
            const std::string shown = FormatCurrency(Currency::FromScaled(cents), 2, layout);
            ASSERT_EQ(CurrencyFromText(shown, layout).value.Scaled(), cents) << shown;
        }
    }
}

TEST(FormatCurrencyText, HasNoDecimalsWhereTheAmountIsWhole)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    EXPECT_EQ(FormatCurrencyText(Currency(), 2, u"$", true), u"$0");
    EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(7), 2, u"$", true), u"$7");
    EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(12), 2, u"$", true), u"$12");
    EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(125000), 2, u"$", true), u"$12.50");
    EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(12345000), 2, u"$", true), u"$1,234.50");
    EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(-7), 2, u"$", true), u"-$7");
    EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(1), 2, u"$", true), u"$0.00");
    EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(123456), 2, u"$", true), u"$12.35");
}

TEST(FormatCurrencyText, TakesOutEveryOccurrenceOfTheSymbolOnly)
{
    {
        const ScopedLocaleVariables variables("en_US.UTF-8");
        EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(12345000), 2, u"$", false), u"1,234.50");
        EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(-12345000), 2, u"$", false), u"-1,234.50");
        EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(7), 2, u"$", false), u"7");
        EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(7), 2, u"\u20AC", false), u"$7");
        EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(7), 2, u"", false), u"$7");
        EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(1234567), 2, u",", false), u"$1234567");
    }
    {
        const ScopedLocaleVariables variables("de_DE.UTF-8");
        EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(12345000), 2, u"\u20AC", false), u"1.234,50 ");
    }
    ScriptedLocale locale;
    locale.money = DollarLayout();
    locale.money.symbol = u"aab";
    locale.money.positive = u"$$n";
    const ScopedUserLocale scope(locale);
    EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(7), 0, u"ab", false), u"aa7");
    EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(7), 0, u"AAB", false), u"aabaab7");
    locale.money.negative = u"($n)";
    EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(-7), 0, u"aab", false), u"(7)");
}

TEST(FormatCurrencyText, WritesNoSymbolWhereTheLocaleTellsNone)
{
    const ScopedLocaleVariables variables("C");
    EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(12345000), 2, u",", true), u"1,234.50");
    EXPECT_EQ(FormatCurrencyText(Currency::FromScaled(12345000), 2, u",", false), u"1234.50");
    EXPECT_EQ(FormatCurrencyText(Currency::FromUnits(-7), 2, u",", true), u"-7");
}

TEST(ParseCurrencyText, KeepsDigitsAndTheDecimalSign)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    EXPECT_EQ(ParseCurrencyText(u"$1,234.56", u".").Scaled(), 12345600);
    EXPECT_EQ(ParseCurrencyText(u"1,234.56", u".").Scaled(), 12345600);
    EXPECT_EQ(ParseCurrencyText(u"(12.00)", u".").Scaled(), 120000);
    EXPECT_EQ(ParseCurrencyText(u"-3", u".").Scaled(), 30000);
    EXPECT_EQ(ParseCurrencyText(u"-5", u".").Scaled(), 50000);
    EXPECT_EQ(ParseCurrencyText(u"1e3", u".").Scaled(), 130000);
    EXPECT_EQ(ParseCurrencyText(u"a1b2c.d5", u".").Scaled(), 125000);
    EXPECT_EQ(ParseCurrencyText(u".5", u".").Scaled(), 5000);
    EXPECT_EQ(ParseCurrencyText(u"5.", u".").Scaled(), 50000);
    EXPECT_EQ(ParseCurrencyText(u"\uFF11"
                                u"2",
                                u".")
                  .Scaled(),
              20000);
    EXPECT_EQ(ParseCurrencyText(u"1.00005", u".").Scaled(), 10001);
}

TEST(ParseCurrencyText, IsZeroWhereNothingConverts)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    for (const std::u16string_view text : {u"", u" ", u"abc", u"1.2.3", u".", u"..", u"-", u"$",
                                           u"99999999999999999999", u"922337203685477.5808"}) {
        EXPECT_EQ(ParseCurrencyText(text, u"."), Currency()) << ToUtf8(text);
    }
    EXPECT_EQ(ParseCurrencyText(std::u16string(100'000, u'9'), u"."), Currency());
}

TEST(ParseCurrencyText, ConvertsByTheLocaleWhateverTheDecimalSignGiven)
{
    {
        const ScopedLocaleVariables variables("de_DE.UTF-8");
        EXPECT_EQ(ParseCurrencyText(u"1.234,56", u",").Scaled(), 12345600);
        EXPECT_EQ(ParseCurrencyText(u"1.234,56 \u20AC", u",").Scaled(), 12345600);
        EXPECT_EQ(ParseCurrencyText(u"1.50", u"."), Currency());
    }
    {
        const ScopedLocaleVariables variables("en_US.UTF-8");
        EXPECT_EQ(ParseCurrencyText(u"1,50", u","), Currency());
        EXPECT_EQ(ParseCurrencyText(u"12.5", u"").Scaled(), 1250000);
        EXPECT_EQ(ParseCurrencyText(u"12.5", u".5").Scaled(), 1250000);
    }
    {
        const ScopedLocaleVariables variables("C");
        EXPECT_EQ(ParseCurrencyText(u"1,234.56", u".").Scaled(), 12345600);
    }
}

TEST(ParseCurrencyText, ReadsWhatFormatCurrencyTextShows)
{
    for (const char* const name : kLocales) {
        SCOPED_TRACE(name);
        const ScopedLocaleVariables variables(name);
        const MoneyLayout layout = UserLocale().Money();
        for (const std::int64_t scaled : {0LL, 70000LL, 125000LL, 12345000LL, 42949672959900LL}) {
            const Currency amount = Currency::FromScaled(scaled);
            for (const bool showSymbol : {false, true}) {
                const std::u16string text = FormatCurrencyText(amount, 2, layout.symbol, showSymbol);
                EXPECT_EQ(ParseCurrencyText(text, layout.decimalSeparator), amount) << ToUtf8(text);
            }
        }
    }
}

TEST(PlainText, HasAsManyDecimalsAsTheAmountNeeds)
{
    struct Case
    {
        std::int64_t scaled;
        std::string_view text;
    };
    constexpr Case kCases[] = {{0, "0"},
                               {70000, "7"},
                               {12345000, "1234.5"},
                               {12345678, "1234.5678"},
                               {100, "0.01"},
                               {-1, "-0.0001"},
                               {-15000, "-1.5"},
                               {1000000, "100"},
                               {10010, "1.001"},
                               {kMost, "922337203685477.5807"},
                               {kLeast, "-922337203685477.5808"}};
    const ScopedLocaleVariables variables("de_DE.UTF-8");
    for (const Case& testCase : kCases) {
        EXPECT_EQ(modConversion::PlainText(Currency::FromScaled(testCase.scaled)), testCase.text);
    }
}

template<class Call>
std::int32_t ErrorOf(Call call)
{
    try {
        static_cast<void>(call());
    } catch (const AutomationError& error) {
        EXPECT_EQ(error.Description(), AutomationError::TextOf(error.Number()));
        return error.Number();
    }
    return 0;
}

std::int32_t ToLongError(const Variant& value)
{
    return ErrorOf([&] { return modConversion::ToLong(value); });
}

std::int32_t ToCurrencyError(const Variant& value)
{
    return ErrorOf([&] { return modConversion::ToCurrency(value); });
}

std::int32_t ToBooleanError(const Variant& value)
{
    return ErrorOf([&] { return modConversion::ToBoolean(value); });
}

TEST(Conversions, RaiseATypeMismatchForNullAndArrays)
{
    for (const Variant& value : {Variant::Null(), Variant::ArrayOf({Variant(1)}), Variant::ArrayOf({})}) {
        EXPECT_EQ(ToLongError(value), 13);
        EXPECT_EQ(ToCurrencyError(value), 13);
        EXPECT_EQ(ToBooleanError(value), 13);
        EXPECT_EQ(ErrorOf([&] { return modConversion::ToText(value); }), 13);
    }
}

TEST(Conversions, TakeEmptyAsNothing)
{
    EXPECT_EQ(modConversion::ToLong(Variant()), 0);
    EXPECT_EQ(modConversion::ToCurrency(Variant()), Currency());
    EXPECT_FALSE(modConversion::ToBoolean(Variant()));
    EXPECT_EQ(modConversion::ToText(Variant()), u"");
}

TEST(Conversions, RaiseATypeMismatchForTextThatIsNoNumber)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    for (const char16_t* const text : {u"", u" ", u"abc", u"1e3", u"1,50", u"Truely", u"Tru", u"0x1"}) {
        EXPECT_EQ(ToLongError(text), 13) << ToUtf8(text);
        EXPECT_EQ(ToCurrencyError(text), 13) << ToUtf8(text);
        EXPECT_EQ(ToBooleanError(text), 13) << ToUtf8(text);
    }
    EXPECT_EQ(ToLongError(u"True"), 13);
    EXPECT_EQ(ToCurrencyError(u"True"), 13);
}

TEST(ToLong, RoundsHalvesToEven)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    struct Case
    {
        Variant value;
        std::int32_t number;
    };
    const Case kCases[] = {
        {true, -1},
        {false, 0},
        {42, 42},
        {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::min()},
        {0.5, 0},
        {1.5, 2},
        {2.5, 2},
        {-0.5, 0},
        {-1.5, -2},
        {-2.5, -2},
        {2.5000001, 3},
        {2.4999, 2},
        {2147483647.4, 2147483647},
        {-2147483648.5, -2147483647 - 1},
        {Currency::FromScaled(25000), 2},
        {Currency::FromScaled(35000), 4},
        {Currency::FromScaled(25001), 3},
        {Currency::FromScaled(-25000), -2},
        {Currency::FromScaled(-35000), -4},
        {u"42", 42},
        {u" -42 ", -42},
        {u"$1,234", 1234},
        {u"(7)", -7},
        {u"2.5", 2},
        {u"3.5", 4},
        {u"-3.5", -4},
        {u"2.49999999", 2},
        {u"3.49999", 3},
        {u"2.50000000001", 3},
        {u"2.50001", 3},
        {u"2147483647", 2147483647},
        {u"2147483647.4", 2147483647},
        {u"-2147483648.5", -2147483647 - 1},
        {u"-2147483648", -2147483647 - 1},
    };
    for (const Case& testCase : kCases) {
        EXPECT_EQ(modConversion::ToLong(testCase.value), testCase.number);
    }
}

TEST(ToLong, RaisesOverflowOutsideThirtyTwoBits)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    const double infinity = std::numeric_limits<double>::infinity();
    const Variant kValues[] = {2147483647.5,
                               -2147483649.0,
                               1e300,
                               infinity,
                               -infinity,
                               std::nan(""),
                               Currency::FromScaled(21474836475000),
                               Currency::FromScaled(kLeast),
                               u"2147483648",
                               u"2147483647.5",
                               u"-2147483648.6",
                               u"99999999999999999999",
                               std::u16string(400, u'9')};
    for (const Variant& value : kValues) {
        EXPECT_EQ(ToLongError(value), 6);
    }
}

TEST(ToLong, ReadsTextByTheLocale)
{
    const ScopedLocaleVariables variables("de_DE.UTF-8");
    EXPECT_EQ(modConversion::ToLong(u"1.234,5"), 1234);
    EXPECT_EQ(modConversion::ToLong(u"1.235,5"), 1236);
    EXPECT_EQ(ToLongError(u"1,234.5"), 13);
}

TEST(ToCurrency, ConvertsEveryKind)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    struct Case
    {
        Variant value;
        std::int64_t scaled;
    };
    const Case kCases[] = {
        {true, -10000},
        {false, 0},
        {-7, -70000},
        {std::numeric_limits<std::int32_t>::max(), 21474836470000},
        {12.5, 125000},
        {0.1, 1000},
        {-19.99, -199900},
        {0.03125, 312},
        {0.09375, 938},
        {-0.03125, -312},
        {-0.09375, -938},
        {922337203685477.5, 9223372036854774784},
        {Currency::FromScaled(kLeast), kLeast},
        {u"$1,234.50", 12345000},
        {u"-0.00005", -1},
        {u"922337203685477.5807", kMost},
    };
    for (const Case& testCase : kCases) {
        EXPECT_EQ(modConversion::ToCurrency(testCase.value).Scaled(), testCase.scaled);
    }
}

TEST(ToCurrency, RaisesOverflowOutsideTheRange)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    const double infinity = std::numeric_limits<double>::infinity();
    const Variant kValues[] = {
        922337203685478.0,       -922337203685478.0,       1e300, infinity, -infinity, std::nan(""),
        u"922337203685477.5808", std::u16string(400, u'9')};
    for (const Variant& value : kValues) {
        EXPECT_EQ(ToCurrencyError(value), 6);
    }
}

TEST(ToBoolean, IsTrueForEveryNumberButZero)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    const Variant kTrue[] = {true,    1,        -1,         0.5,         Currency::FromScaled(1),
                             u"True", u"true",  u"TRUE",    u"tRuE",     u"1",
                             u"-1",   u"$0.01", u"0.00001", u"0.000001", std::u16string(400, u'9')};
    for (const Variant& value : kTrue) {
        EXPECT_TRUE(modConversion::ToBoolean(value));
    }
    const Variant kFalse[] = {false,    0,        0.0,  Currency(),  u"False",
                              u"false", u"FALSE", u"0", u"0.000000", u"-0"};
    for (const Variant& value : kFalse) {
        EXPECT_FALSE(modConversion::ToBoolean(value));
    }
}

TEST(ToText, WritesEveryKind)
{
    const ScopedLocaleVariables variables("en_US.UTF-8");
    struct Case
    {
        Variant value;
        std::u16string_view text;
    };
    const Case kCases[] = {
        {true, u"True"},
        {false, u"False"},
        {0, u"0"},
        {-1234567, u"-1234567"},
        {std::numeric_limits<std::int32_t>::min(), u"-2147483648"},
        {0.0, u"0"},
        {-0.0, u"0"},
        {0.1, u"0.1"},
        {-2.5, u"-2.5"},
        {1.0 / 3.0, u"0.333333333333333"},
        {123456789012345.0, u"123456789012345"},
        {1e15, u"1E+15"},
        {1e20, u"1E+20"},
        {1.5e-7, u"1.5E-07"},
        {Currency(), u"0"},
        {Currency::FromScaled(12345000), u"1234.5"},
        {Currency::FromScaled(-1), u"-0.0001"},
        {u"as it is\r\n", u"as it is\r\n"},
    };
    for (const Case& testCase : kCases) {
        EXPECT_EQ(modConversion::ToText(testCase.value), testCase.text);
    }
}

TEST(ToText, UsesTheDecimalSignOfNumbers)
{
    {
        const ScopedLocaleVariables variables("de_DE.UTF-8");
        EXPECT_EQ(modConversion::ToText(Currency::FromScaled(12345000)), u"1234,5");
        EXPECT_EQ(modConversion::ToText(-0.25), u"-0,25");
        EXPECT_EQ(modConversion::ToText(1234567), u"1234567");
        EXPECT_EQ(modConversion::ToText(u"1.5"), u"1.5");
    }
    {
        const ScopedLocaleVariables variables(
            LocaleVariables{.monetary = "de_DE.UTF-8", .numeric = "en_US.UTF-8"});
        EXPECT_EQ(modConversion::ToText(0.5), u"0.5");
    }
    const ScriptedLocale failing;
    const ScopedUserLocale scope(failing);
    EXPECT_EQ(modConversion::ToText(0.5), u"0.5");
}

} // namespace
} // namespace KestrinProductEditor
