// SPDX-License-Identifier: MIT
#include "platform/linux/MoneyConventions.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

namespace KestrinProductEditor {
namespace {

TEST(PositivePattern, PlacesSymbolAndNumber)
{
    EXPECT_EQ(PositivePattern({1, 0, 1}), u"$n");
    EXPECT_EQ(PositivePattern({1, 1, 1}), u"$ n");
    EXPECT_EQ(PositivePattern({1, 1, 4}), u"$ n");
    EXPECT_EQ(PositivePattern({0, 0, 1}), u"n$");
    EXPECT_EQ(PositivePattern({0, 1, 1}), u"n $");
    EXPECT_EQ(PositivePattern({0, 1, 0}), u"n $");
    EXPECT_EQ(PositivePattern({1, 0, 0}), u"$n");
}

TEST(PositivePattern, KeepsTheSpaceBetweenSymbolAndSignOnlyInside)
{
    EXPECT_EQ(PositivePattern({1, 2, 4}), u"$ n");
    EXPECT_EQ(PositivePattern({0, 2, 3}), u"n $");
    EXPECT_EQ(PositivePattern({1, 2, 1}), u"$n");
    EXPECT_EQ(PositivePattern({0, 2, 2}), u"n$");
}

TEST(NegativePattern, PlacesTheSignAsTheConventionsSay)
{
    struct Case
    {
        SignConventions conventions;
        std::u16string_view pattern;
    };
    constexpr Case kCases[] = {
        {{1, 0, 0}, u"($n)"},  {{1, 1, 0}, u"($ n)"}, {{1, 2, 0}, u"($n)"}, {{0, 0, 0}, u"(n$)"},
        {{0, 1, 0}, u"(n $)"}, {{0, 2, 0}, u"(n$)"},  {{1, 0, 1}, u"-$n"},  {{1, 1, 1}, u"-$ n"},
        {{1, 2, 1}, u"- $n"},  {{0, 0, 1}, u"-n$"},   {{0, 1, 1}, u"-n $"}, {{0, 2, 1}, u"-n$"},
        {{1, 0, 2}, u"$n-"},   {{1, 1, 2}, u"$ n-"},  {{0, 0, 2}, u"n$-"},  {{0, 1, 2}, u"n $-"},
        {{0, 2, 2}, u"n$ -"},  {{1, 0, 3}, u"-$n"},   {{1, 1, 3}, u"-$ n"}, {{1, 2, 3}, u"- $n"},
        {{0, 0, 3}, u"n-$"},   {{0, 1, 3}, u"n -$"},  {{0, 2, 3}, u"n- $"}, {{1, 0, 4}, u"$-n"},
        {{1, 1, 4}, u"$- n"},  {{1, 2, 4}, u"$ -n"},  {{0, 0, 4}, u"n$-"},  {{0, 1, 4}, u"n $-"},
        {{0, 2, 4}, u"n$ -"},
    };
    for (const Case& testCase : kCases) {
        const auto [csPrecedes, sepBySpace, signPosn] = testCase.conventions;
        EXPECT_EQ(NegativePattern(testCase.conventions, u"-"), testCase.pattern)
            << csPrecedes << ' ' << sepBySpace << ' ' << signPosn;
    }
}

TEST(NegativePattern, TakesAnySignLetterForLetter)
{
    EXPECT_EQ(NegativePattern({0, 1, 1}, u"\u200E\u2212"), u"\u200E\u2212n $");
}

TEST(GroupingFromBytes, ReadsTheSizesInOrder)
{
    const MoneyGrouping grouping = GroupingFromBytes("\x03\x02");
    EXPECT_EQ(grouping.sizes, (std::vector<int>{3, 2}));
    EXPECT_FALSE(grouping.lastGroupEnds);
}

TEST(GroupingFromBytes, EndsTheGroupingWhereTheLocaleLeavesTheNextSizeOpen)
{
    for (const char* const bytes : {"\x03\x7F", "\x03\xFF", "\x03\x7F\x02"}) {
        const MoneyGrouping grouping = GroupingFromBytes(bytes);
        EXPECT_EQ(grouping.sizes, std::vector<int>{3});
        EXPECT_TRUE(grouping.lastGroupEnds);
    }
}

TEST(GroupingFromBytes, KnowsLocalesWithoutGroups)
{
    EXPECT_TRUE(GroupingFromBytes("").sizes.empty());
    EXPECT_TRUE(GroupingFromBytes("\x7F").sizes.empty());
}

} // namespace
} // namespace KestrinProductEditor
