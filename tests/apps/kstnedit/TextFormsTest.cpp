// SPDX-License-Identifier: MIT
#include "kstnedit/CsvText.h"
#include "kstnedit/DisplayText.h"
#include "kstnedit/JsonText.h"
#include "kstnedit/NumberArgument.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace KestrinProductEditor::CommandLine {
namespace {

TEST(Visible, ShowsWhatWouldActOnATerminal)
{
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"plain \xC3\xA9", "plain \xC3\xA9"},
        {"a\r\nb", "a\xE2\x90\xA4"
                   "b"},
        {"a\nb\rc", "a\xE2\x90\xA4"
                    "b\xE2\x90\x8D"
                    "c"},
        {std::string("\0\t\x1B\x7F", 4), "\xE2\x90\x80\xE2\x90\x89\xE2\x90\x9B\xE2\x90\xA1"},
        {"\xC2\x9B"
         "1m",
         "\xEF\xBF\xBD"
         "1m"},
        {"\xE2\x80\xAE"
         "abc",
         "\xEF\xBF\xBD"
         "abc"},
        {"\xE2\x80\xA8", "\xEF\xBF\xBD"},
        {"\xED\xA0\x80", "\xEF\xBF\xBD"},
        {"\xFF", "\xEF\xBF\xBD"},
    };
    for (const auto& [text, visible] : cases)
        EXPECT_EQ(Visible(text), visible);
}

TEST(DisplayWidth, CountsColumnsOfATerminal)
{
    const std::pair<std::string, std::size_t> cases[] = {
        {"", 0},
        {"abc", 3},
        {"\xC3\xA9", 1},
        {"e\xCC\x81", 1},
        {"\xE9\x87\x98", 2},
        {"\xEA\xB0\x80", 2},
        {"\xEF\xBC\xA1", 2},
        {"\xEF\xBD\xB1", 1},
        {"\xF0\x9F\x98\x80", 2},
        {"\xE2\x90\xA4", 1},
    };
    for (const auto& [text, width] : cases)
        EXPECT_EQ(DisplayWidth(text), width) << text;
}

TEST(CutToWidth, KeepsWhatFitsAndNeverHalfACharacter)
{
    EXPECT_EQ(CutToWidth("abcdef", 6, "..."), "abcdef");
    EXPECT_EQ(CutToWidth("abcdefg", 6, "..."), "abc...");
    EXPECT_EQ(CutToWidth("abcdefg", 3, "..."), "...");
    EXPECT_EQ(CutToWidth("abcdefg", 2, "..."), "..");
    EXPECT_EQ(CutToWidth("abcdefg", 0, "..."), "");
    EXPECT_EQ(CutToWidth("", 0, "..."), "");
    EXPECT_EQ(CutToWidth("\xE9\x87\x98\xE9\x87\x98\xE9\x87\x98", 4, "\xE2\x80\xA6"),
              "\xE9\x87\x98\xE2\x80\xA6");
    EXPECT_EQ(CutToWidth("e\xCC\x81"
                         "e\xCC\x81"
                         "e\xCC\x81",
                         2, "\xE2\x80\xA6"),
              "e\xCC\x81\xE2\x80\xA6");
}

TEST(Counted, TellsOneFromMany)
{
    EXPECT_EQ(Counted(0, "line"), "0 lines");
    EXPECT_EQ(Counted(1, "line"), "1 line");
    EXPECT_EQ(Counted(2, "line"), "2 lines");
}

TEST(JsonString, EscapesWhatJsonDemands)
{
    EXPECT_EQ(JsonString("", JsonEscapes::Least), "\"\"");
    for (int control = 0; control < 0x20; ++control) {
        const std::string json = JsonString(std::string(1, static_cast<char>(control)), JsonEscapes::Least);
        EXPECT_EQ(json.substr(0, 2), "\"\\") << control;
    }
    EXPECT_EQ(JsonString("\b\f\n\r\t\"\\/", JsonEscapes::Least), "\"\\u0008\\u000c\\n\\r\\t\\\"\\\\/\"");
}

TEST(JsonString, KeepsCharactersAndEscapesHalfOnes)
{
    EXPECT_EQ(JsonString("\xC3\xA9\xF0\x9F\x98\x80", JsonEscapes::Least), "\"\xC3\xA9\xF0\x9F\x98\x80\"");
    EXPECT_EQ(JsonString("\xED\xB0\x80", JsonEscapes::Least), "\"\\udc00\"");
    EXPECT_EQ(JsonString("\xC3\xA9\xF0\x9F\x98\x80", JsonEscapes::AllButAscii), "\"\\u00e9\\ud83d\\ude00\"");
}

TEST(AppendCsvValue, QuotesWhereAReaderCouldErr)
{
    const std::pair<std::string, std::string> cases[] = {
        {"a", "1,a"},           {"", "1,\"\""},     {"a,b", "1,\"a,b\""}, {"a\"b", "1,\"a\"\"b\""},
        {"a\nb", "1,\"a\nb\""}, {" a", "1,\" a\""}, {"a ", "1,\"a \""},   {"a b", "1,a b"},
        {"\ta", "1,\"\ta\""},
    };
    for (const auto& [value, expected] : cases) {
        std::string line = "1";
        AppendCsvValue(value, line);
        EXPECT_EQ(line, expected);
    }
}

TEST(AppendCsvValue, TellsAnEmptyFirstValueFromNone)
{
    std::string line;
    AppendCsvValue("", line);
    AppendCsvValue("b", line);
    EXPECT_EQ(line, "\"\",b");
}

TEST(WholeNumber, ReadsDecimalDigitsOnly)
{
    EXPECT_EQ(WholeNumber("0"), 0);
    EXPECT_EQ(WholeNumber("010"), 10);
    EXPECT_EQ(WholeNumber("-2147483648"), -2147483647 - 1);
    EXPECT_EQ(WholeNumber("2147483647"), 2147483647);
    for (const char* const text : {"", "-", "+1", " 1", "1 ", "0x1", "1.0", "2147483648", "one"})
        EXPECT_EQ(WholeNumber(text), std::nullopt) << text;
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
