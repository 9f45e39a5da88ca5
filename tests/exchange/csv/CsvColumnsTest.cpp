// SPDX-License-Identifier: MIT
#include "exchange/csv/CsvColumns.h"

#include "platform/Text.h"
#include "util/modUtil.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {
namespace {

std::vector<std::string> ColumnsOf(std::string_view line)
{
    CsvColumns columns;
    columns.Split(line);
    std::vector<std::string> texts;
    std::string scratch;
    for (std::size_t index = 0; index < columns.Count(); ++index) {
        texts.emplace_back(columns.Column(index, scratch));
    }
    return texts;
}

std::vector<std::string> PlainColumnsOf(std::string_view line)
{
    bool isError = true;
    const Variant split = modUtil::SplitQuoted(ToUtf16(line), u",", isError);
    EXPECT_FALSE(isError);
    std::vector<std::string> texts;
    if (!split.IsNull()) {
        for (std::int32_t index = 0; index < split.Array().Extent(1); ++index) {
            texts.push_back(ToUtf8(split.At(index).String()));
        }
    }
    return texts;
}

TEST(CsvColumns, SplitsAtCommasOutsideQuotesAndTakesQuotesOut)
{
    struct Case
    {
        std::string_view line;
        std::vector<std::string> columns;
    };
    const Case kCases[] = {
        {"", {}},
        {"a", {"a"}},
        {",", {"", ""}},
        {"a,", {"a", ""}},
        {",a", {"", "a"}},
        {",,,", {"", "", "", ""}},
        {"a,b,c", {"a", "b", "c"}},
        {" a , b ", {" a ", " b "}},
        {R"("a")", {"a"}},
        {R"("a","b")", {"a", "b"}},
        {R"("a,b",c)", {"a,b", "c"}},
        {R"(ab"c,d"e)", {"abc,de"}},
        {R"("")", {""}},
        {R"("","")", {"", ""}},
        {R"(")", {""}},
        {R"(""")", {""}},
        {R"("""")", {""}},
        {R"("say ""hi""")", {"say hi"}},
        {R"("a"b"c")", {"abc"}},
        {R"(a""b)", {"ab"}},
        {R"("open,to the,end)", {"open,to the,end"}},
        {R"(a,"open,b)", {"a", "open,b"}},
        {R"(a,b")", {"a", "b"}},
        {R"(a,b",c)", {"a", "b,c"}},
        {R"(a,")", {"a", ""}},
        {R"(",")", {","}},
        {R"(",",)", {",", ""}},
        {R"(",","")", {",", ""}},
        {R"(" a" ,b)", {" a ", "b"}},
        {R"( "a",b)", {" a", "b"}},
        {R"("a,"b",c")", {"a,b,c"}},
        {R"("Widget","W-100","$1,234.50","Blue; large")", {"Widget", "W-100", "$1,234.50", "Blue; large"}},
        {"a\r\nb,c\nd", {"a\r\nb", "c\nd"}},
        {"\xC3\xA9,\"\xF0\x9F\x94\xA9\"", {"\xC3\xA9", "\xF0\x9F\x94\xA9"}},
        {"\xFF,\"\x80\"", {"\xFF", "\x80"}},
    };
    for (const Case& one : kCases) {
        EXPECT_EQ(ColumnsOf(one.line), one.columns) << one.line;
    }
}

TEST(CsvColumns, KeepsNulCharacters)
{
    using namespace std::string_view_literals;
    using namespace std::string_literals;
    EXPECT_EQ(ColumnsOf("\0,a\0b,\"\0\""sv), (std::vector{"\0"s, "a\0b"s, "\0"s}));
}

TEST(CsvColumns, GivesViewsOfTheLineWhereNoQuoteStandsInside)
{
    const std::string line = R"("quoted",plain,"with, comma","")";
    CsvColumns columns;
    columns.Split(line);
    ASSERT_EQ(columns.Count(), 4U);
    std::string scratch = "untouched";
    const std::size_t places[] = {1, 9, 16, 30};
    for (std::size_t index = 0; index < 4; ++index) {
        EXPECT_EQ(columns.Column(index, scratch).data(), line.data() + places[index]);
    }
    EXPECT_EQ(scratch, "untouched");
}

TEST(CsvColumns, AreViewsWhereverTheyStandInALongLine)
{
    for (std::size_t before = 0; before < 140; ++before) {
        const std::string line = std::string(before, 'a') + R"(,"b","",c)";
        CsvColumns columns;
        columns.Split(line);
        ASSERT_EQ(columns.Count(), 4U);
        std::string scratch;
        const std::size_t places[] = {0, before + 2, before + 6, before + 8};
        for (std::size_t index = 0; index < 4; ++index) {
            ASSERT_EQ(columns.Column(index, scratch).data(), line.data() + places[index]) << before;
        }
    }
}

TEST(CsvColumns, AQuoteInsideOneColumnLeavesTheOthersViews)
{
    const std::string line = R"(in"si"de,plain)";
    CsvColumns columns;
    columns.Split(line);
    std::string scratch;
    EXPECT_EQ(columns.Column(1, scratch).data(), line.data() + 9);
    EXPECT_EQ(columns.Column(0, scratch), "inside");
}

TEST(CsvColumns, TellWhichOfThemBeginWithAQuote)
{
    CsvColumns columns;
    columns.Split(R"("a", "b",c"d",,"",""e"",",f"))");
    std::vector<bool> quoted;
    for (std::size_t index = 0; index < columns.Count(); ++index) {
        quoted.push_back(columns.BeginsWithQuote(index));
    }
    EXPECT_EQ(quoted, (std::vector<bool>{true, false, false, false, true, true, true}));
}

TEST(CsvColumns, ForgetTheLineBefore)
{
    CsvColumns columns;
    std::string scratch;
    columns.Split("\"unclosed, x\"y\"");
    columns.Split("a,b");
    ASSERT_EQ(columns.Count(), 2U);
    EXPECT_EQ(columns.Column(1, scratch), "b");
    columns.Split("");
    EXPECT_EQ(columns.Count(), 0U);
}

TEST(CsvColumns, AreTheSameWhereverTheyStandInALongLine)
{
    const std::string_view patterns[] = {",",        "\"",    "\",",         ",\"",
                                         "\",\"",    "\"\"",  "\"\"\"",      "\",\",\"",
                                         "x\"y\"z,", "\"x\"", "\"a\",\"b\"", ",,\",,\",,"};
    for (const std::string_view pattern : patterns) {
        for (std::size_t before = 0; before < 140; ++before) {
            for (const std::size_t after : {0U, 1U, 5U, 64U}) {
                const std::string line =
                    std::string(before, 'a') + std::string(pattern) + std::string(after, 'z');
                ASSERT_EQ(ColumnsOf(line), PlainColumnsOf(line)) << line;
                const std::string quoted = "\"" + line;
                ASSERT_EQ(ColumnsOf(quoted), PlainColumnsOf(quoted)) << quoted;
            }
        }
    }
}

TEST(CsvColumns, AreThoseOfThePlainSplitterForEveryShortLine)
{
    constexpr std::string_view kCharacters = "a,\"";
    for (std::size_t length = 0; length <= 8; ++length) {
        std::size_t lines = 1;
        for (std::size_t place = 0; place < length; ++place) {
            lines *= kCharacters.size();
        }
        for (std::size_t number = 0; number < lines; ++number) {
            std::string line;
            for (std::size_t rest = number; line.size() < length; rest /= kCharacters.size()) {
                line += kCharacters[rest % kCharacters.size()];
            }
            ASSERT_EQ(ColumnsOf(line), PlainColumnsOf(line)) << line;
        }
    }
}

TEST(CsvColumns, AreThoseOfThePlainSplitterForRandomLines)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    const std::string_view pieces[] = {"a",
                                       "bc",
                                       " ",
                                       ",",
                                       "\"",
                                       "\",\"",
                                       "\"\"",
                                       "\xC3\xA9",
                                       "\t",
                                       ";",
                                       "\r",
                                       "\xE2\x82\xAC",
                                       "\xF0\x9F\x94\xA9",
                                       "wide text "};
    for (int round = 0; round < 20000; ++round) {
        // Some lines get few special characters, some many.
        const std::size_t first = std::uniform_int_distribution<std::size_t>(0, 5)(random);
        std::uniform_int_distribution<std::size_t> piece(first, std::size(pieces) - 1);
        std::string line;
        for (auto left = std::uniform_int_distribution<int>(0, 120)(random); left > 0; --left) {
            line += pieces[piece(random)];
        }
        ASSERT_EQ(ColumnsOf(line), PlainColumnsOf(line)) << line;
    }
}

TEST(CsvColumns, FindAMillionColumns)
{
    CsvColumns columns;
    const std::string line(1'000'000, ',');
    columns.Split(line);
    ASSERT_EQ(columns.Count(), 1'000'001U);
    std::string scratch;
    EXPECT_EQ(columns.Column(1'000'000, scratch), "");
}

} // namespace
} // namespace KestrinProductEditor
