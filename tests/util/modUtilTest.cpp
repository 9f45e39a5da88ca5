// SPDX-License-Identifier: MIT
#include "util/modUtil.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

namespace KestrinProductEditor {
namespace {

using Columns = std::vector<std::u16string>;

Columns Split(std::u16string_view text, std::u16string_view separator = u",")
{
    bool bError = true;
    const Variant split = modUtil::SplitQuoted(text, separator, bError);
    EXPECT_FALSE(bError);
    Columns columns;
    for (std::int32_t index = 0; index < split.Array().Extent(1); ++index) {
        columns.push_back(split.At(index).String());
    }
    return columns;
}

TEST(GuidText, IsThirtyTwoUpperCaseHexadecimalDigits)
{
    for (int round = 0; round < 100; ++round) {
        const std::u16string text = modUtil::GuidText();
        EXPECT_EQ(text.size(), 32U);
        EXPECT_EQ(text.find_first_not_of(u"0123456789ABCDEF"), std::u16string::npos) << ToUtf8(text);
    }
}

TEST(GuidText, DiffersFromOneCallToTheNext)
{
    EXPECT_NE(modUtil::GuidText(), modUtil::GuidText());
}

TEST(SplitQuoted, GivesNullForAnEmptyText)
{
    bool bError = true;
    EXPECT_TRUE(modUtil::SplitQuoted(u"", u",", bError).IsNull());
    EXPECT_FALSE(bError);
}

TEST(SplitQuoted, SplitsAtTheSeparatorOutsideQuotesOnly)
{
    struct Case
    {
        std::u16string_view text;
        Columns columns;
    };
    const Case kCases[] = {
        {u"a", {u"a"}},
        {u"a,b,c", {u"a", u"b", u"c"}},
        {u",", {u"", u""}},
        {u"a,", {u"a", u""}},
        {u",a", {u"", u"a"}},
        {u",,", {u"", u"", u""}},
        {u"\"a,b\",c", {u"a,b", u"c"}},
        {u"ab\"c,d\"e", {u"abc,de"}},
        {u"\"He said \"\"hi\"\"\",x", {u"He said hi", u"x"}},
        {u"\"\"", {u""}},
        {u"\"", {u""}},
        {u"\"\",\"\"", {u"", u""}},
        {u" a , b ", {u" a ", u" b "}},
        {u"a,\"b,c,d", {u"a", u"b,c,d"}},
        {u"a\"b,c", {u"ab,c"}},
        {u"'a,b'", {u"'a", u"b'"}},
        {u"\u20AC,\U0001F4B0", {u"\u20AC", u"\U0001F4B0"}},
        {u"\"Widget\",\"W-100\",\"$1,234.50\",\"Blue; large\"",
         {u"Widget", u"W-100", u"$1,234.50", u"Blue; large"}},
    };
    for (const Case& testCase : kCases) {
        EXPECT_EQ(Split(testCase.text), testCase.columns) << ToUtf8(testCase.text);
    }
}

TEST(SplitQuoted, KeepsNulAndLineBreaksInAColumn)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(Split(u"a\0b\r\n,c"sv), (Columns{std::u16string(u"a\0b\r\n"sv), u"c"}));
}

TEST(SplitQuoted, TakesAnyOneCharacterAsSeparator)
{
    EXPECT_EQ(Split(u"a;b,c", u";"), (Columns{u"a", u"b,c"}));
    EXPECT_EQ(Split(u"a\tb", u"\t"), (Columns{u"a", u"b"}));
}

TEST(SplitQuoted, PrefersAQuoteAsSeparatorWhenAskedTo)
{
    EXPECT_EQ(Split(u"a\"b", u"\""), (Columns{u"a", u"b"}));
}

TEST(SplitQuoted, NeverSplitsAtWhatIsNotOneCharacter)
{
    EXPECT_EQ(Split(u"a,b", u""), (Columns{u"a,b"}));
    EXPECT_EQ(Split(u"a,;b", u",;"), (Columns{u"a,;b"}));
}

} // namespace
} // namespace KestrinProductEditor
