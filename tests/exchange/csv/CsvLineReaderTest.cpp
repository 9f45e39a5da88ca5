// SPDX-License-Identifier: MIT
#include "exchange/csv/CsvLineReader.h"

#include "fake/FailingFileSystem.h"
#include "fake/MemoryFiles.h"
#include "platform/Text.h"

#include <KestrinProductEditor/AutomationError.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KestrinProductEditor {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

constexpr std::size_t kWindowSizes[] = {1, 2, 3, 7, 64, 200, CsvLineReader::kDefaultWindowSize};
constexpr std::size_t kAllAtOnce = std::string::npos;

const CodePage& Utf8()
{
    static const std::shared_ptr<const CodePage> codePage = CodePage::Named("utf-8");
    return *codePage;
}

const CodePage& Windows1252()
{
    static const std::shared_ptr<const CodePage> codePage = CodePage::Named("windows-1252");
    return *codePage;
}

std::vector<std::string> LinesOf(std::string_view bytes,
                                 std::size_t windowSize = CsvLineReader::kDefaultWindowSize,
                                 std::size_t step = kAllAtOnce)
{
    MemoryReadStream stream(std::string(bytes), step);
    CsvLineReader reader(stream, Utf8(), windowSize);
    std::vector<std::string> lines;
    while (reader.Next()) {
        lines.emplace_back(reader.Line());
    }
    return lines;
}

std::vector<std::string> PlainLinesOf(std::string_view bytes)
{
    std::vector<std::string> lines;
    while (!bytes.empty()) {
        const std::size_t length = std::min(bytes.find_first_of("\r\n"), bytes.size());
        lines.emplace_back(bytes.substr(0, length));
        bytes.remove_prefix(length);
        if (bytes.starts_with("\r\n")) {
            bytes.remove_prefix(2);
        } else if (!bytes.empty()) {
            bytes.remove_prefix(1);
        }
    }
    return lines;
}

std::vector<std::string> ColumnsOf(const CsvColumns& columns)
{
    std::vector<std::string> texts;
    std::string scratch;
    for (std::size_t index = 0; index < columns.Count(); ++index) {
        texts.emplace_back(columns.Column(index, scratch));
    }
    return texts;
}

enum class ByteOrder
{
    Little,
    Big
};

std::string Utf16Bytes(std::u16string_view text, ByteOrder byteOrder)
{
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += byteOrder == ByteOrder::Little ? low : high;
        bytes += byteOrder == ByteOrder::Little ? high : low;
    }
    return bytes;
}

std::string Utf16File(std::u16string_view text, ByteOrder byteOrder)
{
    return Utf16Bytes(u"\xFEFF", byteOrder) + Utf16Bytes(text, byteOrder);
}

TEST(CsvLineReader, EndsALineAtEachFormOfLineEnd)
{
    struct Case
    {
        std::string_view bytes;
        std::vector<std::string> lines;
    };
    const Case kCases[] = {
        {"", {}},
        {"a", {"a"}},
        {"a\n", {"a"}},
        {"a\r", {"a"}},
        {"a\r\n", {"a"}},
        {"a\nb", {"a", "b"}},
        {"a\rb", {"a", "b"}},
        {"a\r\nb", {"a", "b"}},
        {"\n", {""}},
        {"\r", {""}},
        {"\r\n", {""}},
        {"\n\n", {"", ""}},
        {"\r\r", {"", ""}},
        {"\r\n\r\n", {"", ""}},
        {"\n\r", {"", ""}},
        {"\r\r\n", {"", ""}},
        {"a\n\r\nb\r\rc", {"a", "", "b", "", "c"}},
        {"\"a\nb\"\r\nc", {"\"a", "b\"", "c"}},
    };
    for (const Case& one : kCases) {
        for (const std::size_t windowSize : kWindowSizes) {
            EXPECT_EQ(LinesOf(one.bytes, windowSize), one.lines) << one.bytes << " window " << windowSize;
        }
    }
}

TEST(CsvLineReader, FindsTheLinesOfEveryShortFileInTheSmallestWindows)
{
    constexpr std::string_view kCharacters = "a,\r\n";
    for (std::size_t length = 0; length <= 6; ++length) {
        std::size_t files = 1;
        for (std::size_t place = 0; place < length; ++place) {
            files *= kCharacters.size();
        }
        for (std::size_t number = 0; number < files; ++number) {
            std::string bytes;
            for (std::size_t rest = number; bytes.size() < length; rest /= kCharacters.size()) {
                bytes += kCharacters[rest % kCharacters.size()];
            }
            const std::vector<std::string> expected = PlainLinesOf(bytes);
            for (const std::size_t windowSize : {1U, 2U, 3U, 7U}) {
                ASSERT_EQ(LinesOf(bytes, windowSize), expected)
                    << testing::PrintToString(bytes) << " window " << windowSize;
            }
            ASSERT_EQ(LinesOf(bytes, CsvLineReader::kDefaultWindowSize, 1), expected)
                << testing::PrintToString(bytes);
        }
    }
}

TEST(CsvLineReader, FindsALineEndAtEveryDistance)
{
    for (std::size_t length = 0; length < 200; ++length) {
        for (const std::string_view lineEnd : {"\n"sv, "\r"sv, "\r\n"sv}) {
            std::string bytes = std::string(length, 'a');
            bytes += lineEnd;
            bytes += lineEnd;
            bytes += "b,c";
            const std::vector<std::string> expected = {std::string(length, 'a'), "", "b,c"};
            for (const std::size_t windowSize : kWindowSizes) {
                ASSERT_EQ(LinesOf(bytes, windowSize), expected) << length << " window " << windowSize;
            }
            ASSERT_EQ(LinesOf(bytes, CsvLineReader::kDefaultWindowSize, 1), expected) << length;
        }
    }
}

TEST(CsvLineReader, GivesTheSameLinesAndColumnsInEveryWindow)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    const std::string_view pieces[] = {"\r",
                                       "\n",
                                       "\r\n",
                                       ",",
                                       "\"",
                                       "\",\"",
                                       "a",
                                       "\0"sv,
                                       "\xFF",
                                       "\xC3\xA9",
                                       "some more text",
                                       "a text that is longer than a block has room for, by far"};
    for (int round = 0; round < 3000; ++round) {
        const std::size_t first = std::uniform_int_distribution<std::size_t>(0, 6)(random);
        std::uniform_int_distribution<std::size_t> piece(first, std::size(pieces) - 1);
        std::string bytes = "x";
        for (auto left = std::uniform_int_distribution<int>(0, 100)(random); left > 0; --left) {
            bytes += pieces[piece(random)];
        }
        const std::size_t windowSize = std::uniform_int_distribution<std::size_t>(1, 300)(random);
        const std::size_t step = std::uniform_int_distribution<std::size_t>(1, 300)(random);
        SCOPED_TRACE(testing::Message()
                     << testing::PrintToString(bytes) << " window " << windowSize << " step " << step);
        MemoryReadStream stream(bytes, step);
        CsvLineReader reader(stream, Utf8(), windowSize);
        CsvColumns columns;
        for (const std::string& expected : PlainLinesOf(bytes)) {
            ASSERT_TRUE(reader.Next());
            ASSERT_EQ(reader.Line(), expected);
            columns.Split(expected);
            ASSERT_EQ(ColumnsOf(reader.Columns()), ColumnsOf(columns));
        }
        ASSERT_FALSE(reader.Next());
    }
}

TEST(CsvLineReader, TakesNulForACharacter)
{
    EXPECT_EQ(LinesOf("a\0b\n\0\n\0"sv), (std::vector{"a\0b"s, "\0"s, "\0"s}));
}

TEST(CsvLineReader, NumbersTheLinesFromOne)
{
    MemoryReadStream stream("a\n\nb");
    CsvLineReader reader(stream, Utf8());
    EXPECT_EQ(reader.LineNumber(), 0U);
    EXPECT_EQ(reader.Line(), "");
    for (std::uint64_t number = 1; number <= 3; ++number) {
        ASSERT_TRUE(reader.Next());
        EXPECT_EQ(reader.LineNumber(), number);
    }
}

TEST(CsvLineReader, StaysAtTheEnd)
{
    MemoryReadStream stream("a,b\r");
    CsvLineReader reader(stream, Utf8());
    ASSERT_TRUE(reader.Next());
    for (int time = 0; time < 3; ++time) {
        EXPECT_FALSE(reader.Next());
        EXPECT_EQ(reader.Line(), "");
        EXPECT_EQ(reader.Columns().Count(), 0U);
        EXPECT_EQ(reader.LineNumber(), 1U);
    }
}

TEST(CsvLineReader, ReadsNothingBeforeTheFirstLine)
{
    MemoryFileSystem files;
    files.files[u"list.csv"] = "a";
    FailingFileSystem failing(files);
    const std::unique_ptr<IReadStream> stream = failing.OpenForReading(u"list.csv");
    CsvLineReader reader(*stream, Utf8());
    EXPECT_EQ(failing.BytesRead(), 0U);
    EXPECT_TRUE(reader.Next());
}

TEST(CsvLineReader, SkipsAUtf8MarkAtTheHeadOnly)
{
    for (const std::size_t windowSize : kWindowSizes) {
        for (const std::size_t step : {std::size_t{1}, std::size_t{2}, kAllAtOnce}) {
            EXPECT_EQ(LinesOf("\xEF\xBB\xBF"
                              "a\n\xEF\xBB\xBF"
                              "b",
                              windowSize, step),
                      (std::vector{"a"s, "\xEF\xBB\xBF"
                                         "b"s}));
            EXPECT_EQ(LinesOf("\xEF\xBB\xBF\xEF\xBB\xBF", windowSize, step), (std::vector{"\xEF\xBB\xBF"s}));
            EXPECT_EQ(LinesOf("\xEF\xBB\xBF", windowSize, step), (std::vector<std::string>{}));
            EXPECT_EQ(LinesOf("\xEF\xBB\xBF\n", windowSize, step), (std::vector{""s}));
            EXPECT_EQ(LinesOf("\xEF\xBB", windowSize, step), (std::vector{"\xEF\xBB"s}));
            EXPECT_EQ(LinesOf("\xEF\nb", windowSize, step), (std::vector{"\xEF"s, "b"s}));
        }
    }
}

TEST(CsvLineReader, ReadsAFileWithAUtf8MarkAsUtf8WhateverTheCodePage)
{
    MemoryReadStream stream("\xEF\xBB\xBF\xC3\xA9,\xE9");
    CsvLineReader reader(stream, Windows1252());
    ASSERT_TRUE(reader.Next());
    std::string scratch;
    std::string decoded;
    EXPECT_EQ(reader.Decode(reader.Columns().Column(0, scratch), decoded), "\xC3\xA9");
    EXPECT_EQ(reader.Decode(reader.Columns().Column(1, scratch), decoded), "\xC3\xA9");
}

TEST(CsvLineReader, ReadsUtf16OfBothByteOrders)
{
    // U+0A0D and U+2C22 have the bytes of line ends, separators and quotes, and are none.
    const std::u16string text = u"caf\u00E9,\"\U0001F529, \u20AC\"\r\n\u0A0D\u0D0A\u2C22\n\n\0,x\rlast"s;
    const std::vector<std::string> expected = {"caf\u00E9,\"\U0001F529, \u20AC\"", "\u0A0D\u0D0A\u2C22", "",
                                               "\0,x"s, "last"};
    for (const ByteOrder byteOrder : {ByteOrder::Little, ByteOrder::Big}) {
        for (const std::size_t windowSize : kWindowSizes) {
            for (const std::size_t step : {std::size_t{1}, std::size_t{2}, std::size_t{3}, kAllAtOnce}) {
                EXPECT_EQ(LinesOf(Utf16File(text, byteOrder), windowSize, step), expected)
                    << "window " << windowSize << " step " << step;
            }
        }
    }
}

TEST(CsvLineReader, SplitsTheColumnsOfUtf16)
{
    MemoryReadStream stream(Utf16File(u"\"caf\u00E9, noir\",\U0001F529", ByteOrder::Little));
    CsvLineReader reader(stream, Windows1252());
    EXPECT_FALSE(reader.LineIsUtf8());
    ASSERT_TRUE(reader.Next());
    EXPECT_TRUE(reader.LineIsUtf8());
    ASSERT_EQ(reader.Columns().Count(), 2U);
    std::string scratch;
    std::string decoded;
    EXPECT_EQ(reader.Decode(reader.Columns().Column(0, scratch), decoded), "caf\u00E9, noir");
    EXPECT_EQ(reader.Decode(reader.Columns().Column(1, scratch), decoded), "\U0001F529");
    EXPECT_EQ(reader.LineLength(), 15U);
}

TEST(CsvLineReader, JoinsUtf16PairsAndLineEndsAcrossBlocks)
{
    // Two units and three at a time, so that pairs and CR LF fall onto every place of a block.
    std::u16string text;
    std::vector<std::string> expected;
    for (int line = 0; line < 60000; ++line) {
        text += u"\U0001F529,x\r\n";
        expected.emplace_back("\U0001F529,x");
    }
    for (const std::size_t step : {std::size_t{5}, std::size_t{4099}, kAllAtOnce}) {
        EXPECT_TRUE(LinesOf(Utf16File(text, ByteOrder::Big), CsvLineReader::kDefaultWindowSize, step) ==
                    expected);
        EXPECT_TRUE(LinesOf(Utf16File(u"a" + text, ByteOrder::Little), 1000, step)[59999] == "\U0001F529,x");
    }
}

TEST(CsvLineReader, KeepsLoneSurrogatesOfUtf16)
{
    const std::u16string texts[] = {std::u16string{u'a', 0xD83D}, std::u16string{0xDD29, u'a'},
                                    std::u16string{0xDD29, 0xD83D}, std::u16string{0xD83D, 0xD83D, 0xDD29},
                                    std::u16string{0xD83D}};
    for (const std::u16string& text : texts) {
        for (const std::size_t step : {std::size_t{1}, std::size_t{2}, kAllAtOnce}) {
            const std::vector<std::string> lines = LinesOf(Utf16File(text, ByteOrder::Little), 7, step);
            ASSERT_EQ(lines.size(), 1U);
            EXPECT_EQ(ToUtf16(lines.front()), text);
        }
    }
}

TEST(CsvLineReader, ReadsAnOddLastByteOfUtf16AsTheReplacementCharacter)
{
    for (const std::size_t step : {std::size_t{1}, std::size_t{2}, kAllAtOnce}) {
        EXPECT_EQ(LinesOf("\xFF\xFE"
                          "a\0b"sv,
                          7, step),
                  (std::vector{"a\uFFFD"s}));
        EXPECT_EQ(LinesOf("\xFE\xFF\0a\0\n\0"sv, 7, step), (std::vector{"a"s, "\uFFFD"s}));
        EXPECT_EQ(LinesOf("\xFE\xFF\0"sv, 7, step), (std::vector{"\uFFFD"s}));
        EXPECT_EQ(LinesOf("\xFE\xFF\xD8\x3D\xDD"sv, 7, step), (std::vector{"\xED\xA0\xBD\uFFFD"s}));
    }
}

TEST(CsvLineReader, FindsNoLineInAFileOfAUtf16MarkAlone)
{
    for (const std::size_t step : {std::size_t{1}, kAllAtOnce}) {
        EXPECT_EQ(LinesOf("\xFF\xFE", 1, step), (std::vector<std::string>{}));
        EXPECT_EQ(LinesOf("\xFE\xFF", 1, step), (std::vector<std::string>{}));
    }
}

TEST(CsvLineReader, ReadsHalfAMarkAsText)
{
    EXPECT_EQ(LinesOf("\xFF"), (std::vector{"\xFF"s}));
    EXPECT_EQ(LinesOf("\xFE\n\xFF"), (std::vector{"\xFE"s, "\xFF"s}));
}

TEST(CsvLineReader, ReadsALineOfFiftyMegabytes)
{
    constexpr std::size_t kLength = 50'000'000;
    struct LongLine final : IReadStream
    {
        [[nodiscard]] std::uint64_t Size() const override { return bytes.size(); }
        [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
        {
            largestRequest = std::max(largestRequest, size);
            const std::size_t count = bytes.copy(buffer, size, at);
            at += count;
            return count;
        }
        std::string bytes = "head\n\"" + std::string(kLength, 'x') + "\",b\r\nafter,the\nlong,line";
        std::size_t at = 0;
        std::size_t largestRequest = 0;
    };
    LongLine stream;
    CsvLineReader reader(stream, Utf8());
    std::string scratch;
    ASSERT_TRUE(reader.Next());
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.LineLength(), kLength + 4);
    ASSERT_EQ(reader.Columns().Count(), 2U);
    EXPECT_EQ(reader.Columns().Column(0, scratch).size(), kLength);
    EXPECT_EQ(reader.Columns().Column(1, scratch), "b");
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Line(), "after,the");
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Line(), "long,line");
    EXPECT_FALSE(reader.Next());
    EXPECT_EQ(stream.largestRequest, CsvLineReader::kDefaultWindowSize);
}

TEST(CsvLineReader, DecodesValueByValue)
{
    MemoryReadStream stream("caf\xC3\xA9,caf\xE9,\"\xE2\x82\xAC\",plain\nplain,\x80");
    CsvLineReader reader(stream, Utf8());
    std::string scratch;
    std::string decoded;
    ASSERT_TRUE(reader.Next());
    const std::string_view expected[] = {"caf\u00E9", "caf\u00E9", "\u20AC", "plain"};
    ASSERT_EQ(reader.Columns().Count(), 4U);
    for (std::size_t index = 0; index < 4; ++index) {
        EXPECT_EQ(reader.Decode(reader.Columns().Column(index, scratch), decoded), expected[index]);
    }
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Decode(reader.Columns().Column(1, scratch), decoded), "\u20AC");
}

TEST(CsvLineReader, DecodesTheCodePage)
{
    MemoryReadStream stream("\x80,\xC3\xA9,plain");
    CsvLineReader reader(stream, Windows1252());
    std::string scratch;
    std::string decoded;
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Decode(reader.Columns().Column(0, scratch), decoded), "\u20AC");
    EXPECT_EQ(reader.Decode(reader.Columns().Column(1, scratch), decoded), "\u00C3\u00A9");
    EXPECT_EQ(reader.Decode(reader.Columns().Column(2, scratch), decoded), "plain");
    EXPECT_EQ(reader.LineLength(), 10U);
}

TEST(CsvLineReader, AsksTheCodePageOnlyForLinesThatAreNotAscii)
{
    struct CountingPage final : CodePage
    {
        [[nodiscard]] bool IsUtf8() const noexcept override { return false; }
        [[nodiscard]] std::string_view Decode(std::string_view bytes, std::string&) const override
        {
            ++decoded;
            return bytes;
        }
        [[nodiscard]] std::string_view Encode(std::string_view text, std::string&) const override
        {
            return text;
        }
        mutable int decoded = 0;
    };
    const CountingPage codePage;
    MemoryReadStream stream("\xE9\n" + std::string(100, 'a') + "\n");
    CsvLineReader reader(stream, codePage);
    std::string scratch;
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Decode(reader.Line(), scratch), "\xE9");
    EXPECT_EQ(codePage.decoded, 1);
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Decode(reader.Line(), scratch).size(), 100U);
    EXPECT_EQ(reader.LineLength(), 100U);
    EXPECT_EQ(codePage.decoded, 1);
}

TEST(CsvLineReader, CountsTheCharactersOfALine)
{
    struct Case
    {
        std::string_view line;
        std::size_t length;
    };
    constexpr Case kCases[] = {{"", 0},           {"abc,\"d\"", 7},  {"caf\u00E9", 4},
                               {"\U0001F529", 2}, {"\u20AC\0"sv, 2}, {"caf\xE9", 4}};
    for (const Case& one : kCases) {
        for (const std::size_t windowSize : kWindowSizes) {
            // What stands behind the line does not count.
            MemoryReadStream stream(std::string(one.line) + "\n\u00E9\u20AC");
            CsvLineReader reader(stream, Utf8(), windowSize);
            ASSERT_TRUE(reader.Next());
            EXPECT_EQ(reader.LineLength(), one.length) << one.line;
        }
    }
}

TEST(CsvLineReader, PassesAFailureOfTheStreamAfterTheLinesBeforeIt)
{
    const std::string bytes = "first,line\nsecond,line\r\nthird";
    for (std::size_t readable = 0; readable < bytes.size(); ++readable) {
        MemoryFileSystem files;
        files.files[u"list.csv"] = bytes;
        FailingFileSystem failing(files);
        failing.FailAfterReading(readable, kErrDeviceIO);
        const std::unique_ptr<IReadStream> stream = failing.OpenForReading(u"list.csv");
        CsvLineReader reader(*stream, Utf8());

        std::vector<std::string> lines;
        std::int32_t number = 0;
        try {
            while (reader.Next()) {
                lines.emplace_back(reader.Line());
            }
        } catch (const AutomationError& error) {
            number = error.Number();
        }
        EXPECT_EQ(number, kErrDeviceIO);
        EXPECT_EQ(reader.Line(), "");
        EXPECT_EQ(reader.Columns().Count(), 0U);
        const std::size_t expected = readable > 22 ? 2 : readable > 10 ? 1 : 0;
        EXPECT_EQ(lines.size(), expected) << readable;

        // A stream that recovers is read on from where it failed.
        failing.Heal();
        while (reader.Next()) {
            lines.emplace_back(reader.Line());
        }
        EXPECT_EQ(lines, PlainLinesOf(bytes)) << readable;
    }
}

TEST(CsvLineReader, PassesAFailureInsideUtf16)
{
    const std::string bytes = Utf16File(u"ab\ncd", ByteOrder::Little);
    for (std::size_t readable = 0; readable < bytes.size(); ++readable) {
        MemoryFileSystem files;
        files.files[u"list.csv"] = bytes;
        FailingFileSystem failing(files);
        failing.FailAfterReading(readable);
        const std::unique_ptr<IReadStream> stream = failing.OpenForReading(u"list.csv");
        CsvLineReader reader(*stream, Utf8());
        std::vector<std::string> lines;
        const auto readAll = [&] {
            while (reader.Next()) {
                lines.emplace_back(reader.Line());
            }
        };
        EXPECT_THROW(readAll(), AutomationError);
        failing.Heal();
        readAll();
        EXPECT_EQ(lines, (std::vector{"ab"s, "cd"s})) << readable;
    }
}

TEST(CsvLineReader, ReadsAFileThatIsNoTextAtAll)
{
    std::string bytes = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n";
    std::mt19937 random(1);
    for (int count = 0; count < 100000; ++count) {
        bytes += static_cast<char>(random() & 0xFF);
    }
    EXPECT_TRUE(LinesOf(bytes) == PlainLinesOf(bytes));

    MemoryReadStream stream(bytes);
    CsvLineReader reader(stream, Utf8());
    std::string scratch;
    std::string decoded;
    while (reader.Next()) {
        for (std::size_t index = 0; index < reader.Columns().Count(); ++index) {
            ASSERT_TRUE(IsValidUtf8(reader.Decode(reader.Columns().Column(index, scratch), decoded)));
        }
    }
}

} // namespace
} // namespace KestrinProductEditor
