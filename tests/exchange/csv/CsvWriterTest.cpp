// SPDX-License-Identifier: MIT
#include "exchange/csv/CsvWriter.h"

#include "exchange/csv/CsvLineReader.h"
#include "fake/MemoryFiles.h"

#include <KestrinProductEditor/AutomationError.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;

const CodePage& Utf8()
{
    static const std::shared_ptr<const CodePage> codePage = CodePage::Named("utf-8");
    return *codePage;
}

using Line = std::vector<std::string_view>;

std::string Written(const std::vector<Line>& lines, const CodePage& codePage = Utf8(),
                    std::size_t bufferSize = CsvWriter::kDefaultBufferSize)
{
    std::string bytes;
    MemoryWriteStream stream(bytes);
    CsvWriter writer(stream, codePage, bufferSize);
    for (const Line& line : lines) {
        writer.WriteLine(line);
    }
    writer.Close();
    EXPECT_TRUE(stream.IsClosed());
    return bytes;
}

/// The cleaning in the four steps that define it.
std::string PlainlyCleaned(std::string_view value)
{
    std::string cleaned(value);
    for (std::size_t at = cleaned.find("\r\n"); at != std::string::npos; at = cleaned.find("\r\n")) {
        cleaned.replace(at, 2, ";");
    }
    std::replace(cleaned.begin(), cleaned.end(), '\n', ';');
    std::replace(cleaned.begin(), cleaned.end(), '\r', ';');
    std::replace(cleaned.begin(), cleaned.end(), '"', '\'');
    return cleaned;
}

/// Takes so many bytes, then fails once; what comes later is taken again, as on a disk where room was made.
class OnceFailingStream final : public IWriteStream
{
public:
    explicit OnceFailingStream(std::size_t room) : m_room(room) {}

    void Write(std::string_view bytes) override
    {
        if (!m_hasFailed && m_bytes.size() + bytes.size() > m_room) {
            m_hasFailed = true;
            m_bytes += bytes.substr(0, m_room - m_bytes.size());
            throw AutomationError(kErrDiskFull);
        }
        m_callsAfterFailure += m_hasFailed ? 1 : 0;
        m_bytes += bytes;
    }
    void Close() override { m_callsAfterFailure += m_hasFailed ? 1 : 0; }

    [[nodiscard]] const std::string& Bytes() const noexcept { return m_bytes; }
    [[nodiscard]] bool HasFailed() const noexcept { return m_hasFailed; }
    [[nodiscard]] int CallsAfterFailure() const noexcept { return m_callsAfterFailure; }

private:
    std::size_t m_room;
    std::string m_bytes;
    bool m_hasFailed = false;
    int m_callsAfterFailure = 0;
};

TEST(CsvWriter, QuotesEveryValueAndEndsEveryLineWithCrLf)
{
    EXPECT_EQ(
        Written({{"Name", "PartNum", "UnitPrice", "Note"}, {"Widget", "W-100", "$1,234.50", "Blue; large"}}),
        "\"Name\",\"PartNum\",\"UnitPrice\",\"Note\"\r\n"
        "\"Widget\",\"W-100\",\"$1,234.50\",\"Blue; large\"\r\n");
    EXPECT_EQ(Written({{"", "", "", ""}}), "\"\",\"\",\"\",\"\"\r\n");
    EXPECT_EQ(Written({{"Bolt, M6"}}), "\"Bolt, M6\"\r\n");
    EXPECT_EQ(Written({{}}), "\r\n");
    EXPECT_EQ(Written({}), "");
}

TEST(CsvWriter, CleansEachValue)
{
    struct Case
    {
        std::string_view value;
        std::string_view cleaned;
    };
    constexpr Case kCases[] = {
        {"He said \"hi\"", "He said 'hi'"},
        {"a\r\nb", "a;b"},
        {"a\nb", "a;b"},
        {"a\rb", "a;b"},
        {"\r\n", ";"},
        {"\n\r", ";;"},
        {"\r\r\n", ";;"},
        {"\r\n\n", ";;"},
        {"\r\n\r\n", ";;"},
        {"\r\n\r", ";;"},
        {"\"", "'"},
        {"\"\"", "''"},
        {"\"\r\n\"", "';'"},
        {"tab\tstays", "tab\tstays"},
        {"nul\0stays"sv, "nul\0stays"sv},
        {"~ stays", "~ stays"},
        {"a; b", "a; b"},
        {"caf\u00E9 \"\u20AC\"\n", "caf\u00E9 '\u20AC';"},
    };
    for (const Case& one : kCases) {
        EXPECT_EQ(Written({{one.value}}), "\"" + std::string(one.cleaned) + "\"\r\n") << one.value;
        EXPECT_EQ(PlainlyCleaned(one.value), one.cleaned) << one.value;
    }
}

TEST(CsvWriter, CleansAtEveryPlaceOfAValue)
{
    for (std::size_t before = 0; before < 20; ++before) {
        for (std::size_t after = 0; after < 20; ++after) {
            for (const std::string_view special : {"\r"sv, "\n"sv, "\r\n"sv, "\""sv, "\u00E9\""sv}) {
                const std::string value =
                    std::string(before, 'a') + std::string(special) + std::string(after, 'z');
                ASSERT_EQ(Written({{value}}), "\"" + PlainlyCleaned(value) + "\"\r\n");
            }
        }
    }
}

TEST(CsvWriter, WritesTheSameBytesWithEveryBufferSize)
{
    const std::string longValue(1000, 'x');
    const std::vector<Line> lines = {{"Name", "a\r\nb"}, {longValue, "\"", ""}, {}, {"caf\u00E9"}};
    const std::string expected = Written(lines);
    for (const std::size_t bufferSize : {1U, 2U, 3U, 7U, 64U, 999U, 1000U, 1001U}) {
        EXPECT_EQ(Written(lines, Utf8(), bufferSize), expected) << bufferSize;
    }
}

TEST(CsvWriter, CollectsLines)
{
    struct CountingStream final : IWriteStream
    {
        void Write(std::string_view bytes) override
        {
            ++writes;
            total += bytes.size();
        }
        void Close() override {}
        std::size_t writes = 0;
        std::size_t total = 0;
    };
    CountingStream stream;
    CsvWriter writer(stream, Utf8());
    const std::array<std::string_view, 2> values = {"0123456789", "0123456789"};
    for (int line = 0; line < 100000; ++line) {
        writer.WriteLine(values);
    }
    writer.Close();
    EXPECT_EQ(stream.total, 100000U * 27);
    EXPECT_LE(stream.writes, stream.total / CsvWriter::kDefaultBufferSize + 2);
}

TEST(CsvWriter, WritesTheCodePage)
{
    const std::shared_ptr<const CodePage> windows1252 = CodePage::Named("windows-1252");
    EXPECT_EQ(Written({{"caf\u00E9", "\u20AC 5", "\u0416", "\"\u00E9\"\n"}}, *windows1252),
              "\"caf\xE9\",\"\x80 5\",\"?\",\"'\xE9';\"\r\n");
}

TEST(CsvWriter, WritesALoneSurrogateAsTheReplacementCharacter)
{
    EXPECT_EQ(Written({{"a\xED\xA0\xBD", "b"}}), "\"a\uFFFD\",\"b\"\r\n");
}

TEST(CsvWriter, WritesWhatItCollectedWhenItIsDestroyed)
{
    std::string bytes;
    MemoryWriteStream stream(bytes);
    {
        CsvWriter writer(stream, Utf8());
        writer.WriteLine(Line{"a"});
        EXPECT_EQ(bytes, "");
    }
    EXPECT_EQ(bytes, "\"a\"\r\n");
    EXPECT_FALSE(stream.IsClosed());
}

TEST(CsvWriter, LeavesABeginningAndWritesNoMoreAfterAFailure)
{
    const std::string longValue(20, 'x');
    const std::vector<Line> lines = {{"Name", "Note"}, {longValue, "a\nb"}, {"", "caf\u00E9"}};
    const std::string expected = Written(lines);
    for (std::size_t room = 0; room < expected.size(); ++room) {
        for (const std::size_t bufferSize :
             {std::size_t{1}, std::size_t{16}, CsvWriter::kDefaultBufferSize}) {
            OnceFailingStream stream(room);
            {
                CsvWriter writer(stream, Utf8(), bufferSize);
                int failures = 0;
                const auto attempt = [&](auto step) {
                    try {
                        step();
                    } catch (const AutomationError& error) {
                        EXPECT_EQ(error.Number(), kErrDiskFull);
                        ++failures;
                    }
                };
                for (const Line& line : lines) {
                    attempt([&] { writer.WriteLine(line); });
                }
                attempt([&] { writer.Close(); });
                EXPECT_EQ(failures, 1);
            }
            ASSERT_TRUE(stream.HasFailed());
            EXPECT_EQ(stream.Bytes(), expected.substr(0, room)) << bufferSize;
            EXPECT_EQ(stream.CallsAfterFailure(), 0) << room << " buffer " << bufferSize;
        }
    }
}

TEST(CsvWriter, FailsInSilenceWhenItIsDestroyed)
{
    OnceFailingStream stream(2);
    {
        CsvWriter writer(stream, Utf8());
        writer.WriteLine(Line{"abc"});
    }
    EXPECT_TRUE(stream.HasFailed());
    EXPECT_EQ(stream.Bytes(), "\"a");
}

TEST(CsvWriter, PassesAFailureOfTheClosing)
{
    struct UnclosableStream final : IWriteStream
    {
        void Write(std::string_view bytes) override { written += bytes; }
        void Close() override { throw AutomationError(kErrDeviceIO); }
        std::string written;
    };
    UnclosableStream stream;
    {
        CsvWriter writer(stream, Utf8());
        writer.WriteLine(Line{"a"});
        EXPECT_THROW(writer.Close(), AutomationError);
    }
    EXPECT_EQ(stream.written, "\"a\"\r\n");
}

TEST(CsvWriter, WritesWhatTheReaderGivesBackCleaned)
{
    const auto seed = std::random_device{}();
    SCOPED_TRACE(testing::Message() << "seed " << seed);
    std::mt19937 random(seed);
    const std::string_view pieces[] = {"a",      ",",          "\"", "\r",   "\n", "\r\n", ";",
                                       "\u00E9", "\U0001F529", " ",  "word", "'",  "~",    "\0"sv};
    std::uniform_int_distribution<std::size_t> piece(0, std::size(pieces) - 1);
    std::uniform_int_distribution<int> length(0, 40);

    std::vector<std::array<std::string, 4>> rows(500);
    std::string bytes;
    {
        MemoryWriteStream stream(bytes);
        CsvWriter writer(stream, Utf8(), 100);
        for (std::array<std::string, 4>& row : rows) {
            std::array<std::string_view, 4> views;
            for (std::size_t column = 0; column < row.size(); ++column) {
                for (int left = length(random); left > 0; --left) {
                    row[column] += pieces[piece(random)];
                }
                views[column] = row[column];
            }
            writer.WriteLine(views);
        }
        writer.Close();
    }

    MemoryReadStream stream(bytes);
    CsvLineReader reader(stream, Utf8());
    std::string scratch;
    std::string decoded;
    for (const std::array<std::string, 4>& row : rows) {
        ASSERT_TRUE(reader.Next());
        ASSERT_EQ(reader.Columns().Count(), row.size());
        for (std::size_t column = 0; column < row.size(); ++column) {
            EXPECT_EQ(reader.Decode(reader.Columns().Column(column, scratch), decoded),
                      PlainlyCleaned(row[column]));
        }
    }
    EXPECT_FALSE(reader.Next());
}

} // namespace
} // namespace KestrinProductEditor
