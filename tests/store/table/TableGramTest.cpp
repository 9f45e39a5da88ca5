// SPDX-License-Identifier: MIT
#include "store/table/TableGram.h"

#include "platform/Text.h"
#include "support/GramTable.h"
#include "support/PlainTableGramReader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace KestrinProductEditor {

namespace {

using namespace Testing;
using testing::ElementsAre;

/// What the ten column descriptions of a catalogue look like.
constexpr std::string_view kColumnDigits =
    "06 2700 800100 0100 0500 52006F00770049004400                    0300 04000000 00000000 00000000 "
    "14010000 0000 FFFF"
    "06 2D00 800100 0200 0800 55006E0069007100750065004900 4400       0300 04000000 00000000 00000000 "
    "14000000 0000 FFFF"
    "06 2900 800100 0300 0600 530074006100740075007300                0300 04000000 00000000 00000000 "
    "14000000 0000 FFFF"
    "06 2500 800100 0400 0400 4E0061006D006500                        8100 FF000000 00000000 00000000 "
    "04000000 0000 FFFF"
    "06 2300 800100 0500 0300 4B0065007900                            8100 FF000000 00000000 00000000 "
    "04000000 0000 FFFF"
    "06 2B00 800100 0600 0700 50006100720074004E0075006D00            8100 FF000000 00000000 00000000 "
    "04000000 0000 FFFF"
    "06 2F00 800100 0700 0900 55006E006900740050007200690063006500    0600 08000000 00000000 00000000 "
    "14000000 0000 FFFF"
    "06 2500 800100 0800 0400 4E006F0074006500                        8200 FF0F0000 00000000 00000000 "
    "04000000 0000 FFFF"
    "06 3500 800100 0900 0C00 44006900720074007900530065007300730069006F006E00 0B00 02000000 00000000 "
    "00000000 14000000 0000 FFFF"
    "06 2F00 800100 0A00 0900 440069007200740079005300790 06E006300   0B00 02000000 00000000 00000000 "
    "14000000 0000 FFFF";

Cells Product(int id, const std::string& name, std::int64_t price = 0, const std::string& note = "")
{
    return {id, 1000 + id, 0, name, "K-" + std::to_string(id), "T-" + std::to_string(id), price, note, 0, 1};
}

std::string Repeated(std::string_view text, std::size_t count)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

std::string Plain(const PlainTable& table, std::size_t row, std::size_t column)
{
    return table.rows.at(row).values.at(column).value();
}

TEST(TableGramWrite, AnEmptyCatalogueHasExactlyTheseBytes)
{
    const std::string expected = GramBytes(10).Raw(FromHex(kColumnDigits)).U8(0x0F).Bytes();

    EXPECT_EQ(BytesOf(GramTable(CatalogueColumns())), expected);
    EXPECT_EQ(expected.size(), 270U + 10 * 32 + 2 * 67 + 1);
}

TEST(TableGramWrite, AProductHasExactlyTheseBytes)
{
    GramTable table(CatalogueColumns());
    table.Add({1, 0, 0, "Gr\xC3\xBCner Tee", "K-1", "T-100", 48900, "\xE2\x82\xAC 4.89", 1, 0});

    std::string expected = GramBytes(10).Raw(FromHex(kColumnDigits)).Bytes();
    expected[0x45] = 1; // rows
    expected += FromHex("07  01000000 00000000 00000000"
                        "0B 4772C3BC6E657220546565"
                        "03 4B2D31"
                        "05 542D313030"
                        "04BF000000000000"
                        "0C000000 AC20 2000 3400 2E00 3800 3900"
                        "FFFF 0000"
                        "0F");
    EXPECT_EQ(BytesOf(table), expected);
    EXPECT_EQ(expected.size(), 788U);
}

TEST(TableGramWrite, WritesAboutAMegabyteAtATimeAndLeavesTheStreamOpen)
{
    GramTable table(CatalogueColumns());
    for (int i = 0; i < 30000; ++i)
        table.Add(Product(i, "A name of some length", i, "A note of some length"));
    ByteWriteStream stream;
    TableGram::Write(table.rows, table.order, Utf8(), stream);

    EXPECT_GT(stream.Bytes().size(), std::size_t{3} << 20);
    EXPECT_LE(stream.Writes(), (stream.Bytes().size() >> 20) + 2);
    EXPECT_LE(stream.LargestWrite(), std::size_t{1} << 20);
    EXPECT_FALSE(stream.IsClosed());
}

TEST(TableGramWrite, ATextBeyondAMegabyteIsWrittenWhole)
{
    GramTable table(CatalogueColumns());
    const std::string name(3'000'000, 'n');
    table.Add(Product(1, name, 0, Repeated("\xC3\xA9", 1'500'000)));

    const Reading reading = ReadBytes(BytesOf(table), CatalogueColumns());
    ASSERT_FALSE(reading.fault);
    EXPECT_EQ(reading.table->All(), table.All());
    EXPECT_EQ(reading.report.columns.at(3).maxLength, 3'000'000U);
    EXPECT_EQ(reading.report.columns.at(7).maxLength, 1'500'000U);
}

TEST(TableGramWrite, AFailureOfTheStreamPassesThrough)
{
    struct FullDisk final : IWriteStream
    {
        void Write(std::string_view) override { throw std::runtime_error("full"); }
        void Close() override {}
    } disk;
    const GramTable table(CatalogueColumns());
    EXPECT_THROW(TableGram::Write(table.rows, table.order, Utf8(), disk), std::runtime_error);
}

TEST(TableGramWrite, LeavesRemovedRowsOut)
{
    GramTable table(CatalogueColumns());
    for (int i = 0; i < 5; ++i)
        table.Add(Product(i, "n"));
    table.order.Remove(2);
    table.rows.Forget(2);

    const PlainTable plain = ReadPlainTableGram(BytesOf(table));
    EXPECT_EQ(plain.announcedRows, 4U);
    ASSERT_EQ(plain.rows.size(), 4U);
    EXPECT_EQ(PlainNumber(Plain(plain, 2, 0)), 3);
}

TEST(TableGram, KeepsTheOrderOfTheRows)
{
    GramTable table(CatalogueColumns());
    std::vector<RowNumber> rows;
    for (int i = 0; i < 3000; ++i) {
        table.Add(Product(i, "n"));
        rows.push_back(static_cast<RowNumber>(i));
    }
    std::shuffle(rows.begin(), rows.end(), std::mt19937(7));
    table.order.Assign(rows);

    const Reading reading = ReadBytes(BytesOf(table), CatalogueColumns());
    ASSERT_FALSE(reading.fault);
    EXPECT_EQ(reading.table->All(), table.All());
    EXPECT_EQ(reading.table->rows.Long(0, 0), static_cast<std::int32_t>(rows[0]));
}

TEST(TableGram, KeepsNumbersAtTheirLimits)
{
    GramTable table(CatalogueColumns());
    constexpr int kLeast = std::numeric_limits<int>::min();
    constexpr int kMost = std::numeric_limits<int>::max();
    table.Add({kLeast, kMost, -1, "", "", "", std::numeric_limits<std::int64_t>::min(), "", 1, 1});
    table.Add({kMost, kLeast, 0, "", "", "", std::numeric_limits<std::int64_t>::max(), "", 0, 0});

    const std::string bytes = BytesOf(table);
    EXPECT_EQ(ReadBytes(bytes, CatalogueColumns()).table->All(), table.All());
    const PlainTable plain = ReadPlainTableGram(bytes);
    EXPECT_EQ(PlainNumber(Plain(plain, 0, 0)), kLeast);
    EXPECT_EQ(PlainNumber(Plain(plain, 1, 6)), std::numeric_limits<std::int64_t>::max());
    EXPECT_EQ(Plain(plain, 0, 8), "\xFF\xFF");
    EXPECT_EQ(Plain(plain, 1, 8), std::string(2, '\0'));
}

TEST(TableGram, RandomTablesReadTheSameHereAndInThePlainReader)
{
    std::mt19937 random(20'240'607);
    constexpr std::string_view kPieces[] = {
        "a", "Tea ", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x8D\xB5", "12345678", "ABCDEFGHIJKLM"};
    const auto text = [&](unsigned mostPieces) {
        std::string all;
        for (auto i = random() % (mostPieces + 1); i > 0; --i)
            all += kPieces[random() % std::size(kPieces)];
        return all;
    };
    GramTable table(CatalogueColumns());
    for (int i = 0; i < 4000; ++i)
        table.Add({static_cast<int>(random()), static_cast<int>(random()), i, text(9), text(3), text(5),
                   static_cast<std::int64_t>((std::uint64_t{random()} << 32) | random()), text(60),
                   static_cast<int>(random() % 2), static_cast<int>(random() % 2)});
    const std::string bytes = BytesOf(table);
    const std::vector<Cells> expected = table.All();

    for (const std::size_t mostAtOnce : {std::size_t{1}, std::size_t{4093}, std::string::npos}) {
        for (const std::uint64_t size : {std::uint64_t{0}, std::uint64_t{bytes.size()}}) {
            ByteReadStream stream(bytes, size, mostAtOnce);
            const Reading reading = ReadFrom(stream, CatalogueColumns());
            ASSERT_FALSE(reading.fault) << reading.fault->reason;
            EXPECT_TRUE(reading.table->All() == expected) << mostAtOnce;
            EXPECT_EQ(reading.report.originalRows, expected.size());
            EXPECT_EQ(reading.report.size, bytes.size());
        }
    }
    const PlainTable plain = ReadPlainTableGram(bytes);
    EXPECT_EQ(plain.announcedRows, expected.size());
    EXPECT_EQ(plain.end, bytes.size());
    ASSERT_EQ(plain.rows.size(), expected.size());
    for (std::size_t row = 0; row < expected.size(); ++row) {
        for (const std::size_t column : {0U, 1U, 2U, 6U})
            ASSERT_EQ(PlainNumber(Plain(plain, row, column)), expected[row][column].number);
        for (const std::size_t column : {3U, 4U, 5U})
            ASSERT_EQ(Plain(plain, row, column), expected[row][column].text);
        ASSERT_EQ(PlainWideText(Plain(plain, row, 7)), ToUtf16(expected[row][7].text));
        ASSERT_EQ(PlainNumber(Plain(plain, row, 9)) != 0, expected[row][9].number != 0);
    }
}

class TableGramCapacity : public testing::TestWithParam<std::uint32_t>
{
};

TEST_P(TableGramCapacity, OfANarrowColumnDecidesTheCount)
{
    const std::uint32_t capacity = GetParam();
    const std::vector<Column> columns = {{u"T", ColumnType::NarrowText, static_cast<std::int32_t>(capacity)}};
    GramTable table(columns);
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{capacity}})
        table.Add({std::string(length, 'x')});
    const std::string bytes = BytesOf(table);

    const std::size_t countSize = capacity <= 255 ? 1 : 4;
    EXPECT_EQ(bytes.size(), 270 + 34 + 3 * (1 + countSize) + 1 + capacity + 1);
    const Reading reading = ReadBytes(bytes, columns);
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    EXPECT_EQ(reading.table->All(), table.All());
    EXPECT_EQ(reading.report.columns.at(0).maxLength, capacity);
    EXPECT_EQ(Plain(ReadPlainTableGram(bytes), 2, 0), std::string(capacity, 'x'));
}

TEST_P(TableGramCapacity, OfAWideColumnIsCountedInBytes)
{
    const std::uint32_t units = GetParam() / 2;
    const std::vector<Column> columns = {{u"T", ColumnType::WideText, static_cast<std::int32_t>(units)}};
    GramTable table(columns);
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{units}})
        table.Add({Repeated("\xE2\x82\xAC", length)});
    const std::string bytes = BytesOf(table);

    const std::size_t countSize = 2 * units <= 255 ? 1 : 4;
    EXPECT_EQ(bytes.size(), 270 + 34 + 3 * (1 + countSize) + 2 * (1 + units) + 1);
    const Reading reading = ReadBytes(bytes, columns);
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    EXPECT_EQ(reading.table->All(), table.All());
    EXPECT_EQ(reading.report.columns.at(0).maxLength, units);
    EXPECT_EQ(PlainWideText(Plain(ReadPlainTableGram(bytes), 2, 0)), std::u16string(units, u'\u20AC'));
}

INSTANTIATE_TEST_SUITE_P(AroundTheLimit, TableGramCapacity,
                         testing::Values(2, 120, 240, 241, 254, 255, 256, 257, 258, 300, 4095, 5000, 8190));

TEST(TableGramCapacity, GrowsOnlyWithATextThatNeedsMoreBytes)
{
    struct Case
    {
        const char* codePage;
        std::string name;
        std::uint32_t maxLength;
        std::size_t nameBytes;
    };
    const Case cases[] = {
        {"utf-8", std::string(255, 'x'), 255, 255},
        {"utf-8", Repeated("\xC3\xA9", 127), 255, 254},
        {"utf-8", Repeated("\xC3\xA9", 255), 510, 510},
        {"utf-8", Repeated("\xE2\x82\xAC", 255), 765, 765},
        {"windows-1252", Repeated("\xC3\xA9", 255), 255, 255},
        {"windows-1252", Repeated("\xE2\x82\xAC", 255), 255, 255},
        {"cp949", Repeated("\xED\x95\x9C", 127), 255, 254},
        {"cp949", Repeated("\xED\x95\x9C", 255), 510, 510},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.codePage);
        const std::shared_ptr<const CodePage> codePage = CodePage::Named(each.codePage);
        GramTable table(CatalogueColumns());
        table.Add(Product(1, each.name, 48900, "note"));
        table.Add(Product(2, "short"));
        const std::string bytes = BytesOf(table, *codePage);

        const Reading reading = ReadBytes(bytes, CatalogueColumns(), *codePage);
        ASSERT_FALSE(reading.fault) << reading.fault->reason;
        EXPECT_EQ(reading.report.columns.at(3).maxLength, each.maxLength);
        EXPECT_EQ(reading.report.columns.at(4).maxLength, 255U);
        EXPECT_EQ(reading.table->All(), table.All());
        EXPECT_EQ(Plain(ReadPlainTableGram(bytes), 0, 3).size(), each.nameBytes);
    }
}

TEST(TableGramCapacity, ShrinksAgainWhenTheLongTextIsGone)
{
    GramTable table(CatalogueColumns());
    table.Add(Product(1, std::string(300, 'x'), 0, std::string(5000, 'y')));
    EXPECT_EQ(ReadPlainTableGram(BytesOf(table)).columns.at(3).maxLength, 300U);
    EXPECT_EQ(ReadPlainTableGram(BytesOf(table)).columns.at(7).maxLength, 5000U);

    table.rows.SetText(0, 3, "short");
    table.rows.SetText(0, 7, "short");
    EXPECT_EQ(ReadPlainTableGram(BytesOf(table)).columns.at(3).maxLength, 255U);
    EXPECT_EQ(ReadPlainTableGram(BytesOf(table)).columns.at(7).maxLength, 4095U);
}

TEST(TableGramCapacity, OfANoteCountsUtf16Units)
{
    GramTable table(CatalogueColumns());
    table.Add(Product(1, "n", 0, Repeated("\xE2\x82\xAC", 4095)));
    EXPECT_EQ(ReadPlainTableGram(BytesOf(table)).columns.at(7).maxLength, 4095U);
    table.Add(Product(2, "n", 0, Repeated("\xF0\x9F\x8D\xB5", 2048)));
    EXPECT_EQ(ReadPlainTableGram(BytesOf(table)).columns.at(7).maxLength, 4096U);
    EXPECT_EQ(ReadBytes(BytesOf(table), CatalogueColumns()).table->All(), table.All());
}

TEST(TableGramText, NarrowTextIsInTheCodePage)
{
    struct Case
    {
        const char* codePage;
        std::string text;
        std::string bytes;
        std::string readBack;
    };
    const Case cases[] = {
        {"utf-8", "Gr\xC3\xBCn", "Gr\xC3\xBCn", "Gr\xC3\xBCn"},
        {"windows-1252", "Gr\xC3\xBCn \xE2\x82\xAC", "Gr\xFCn \x80", "Gr\xC3\xBCn \xE2\x82\xAC"},
        {"windows-1252", "\xED\x95\x9C", "?", "?"},
        {"cp949", "\xED\x95\x9C\xEA\xB8\x80 a", "\xC7\xD1\xB1\xDB a", "\xED\x95\x9C\xEA\xB8\x80 a"},
        {"utf-8", "a\xED\xA0\x80", "a\xEF\xBF\xBD", "a\xEF\xBF\xBD"},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(each.codePage + (" " + each.text));
        const std::shared_ptr<const CodePage> codePage = CodePage::Named(each.codePage);
        GramTable table(CatalogueColumns());
        table.Add(Product(1, each.text));
        const std::string bytes = BytesOf(table, *codePage);
        EXPECT_EQ(Plain(ReadPlainTableGram(bytes), 0, 3), each.bytes);
        EXPECT_EQ(ReadBytes(bytes, CatalogueColumns(), *codePage).table->All().at(0).at(3).text,
                  each.readBack);
    }
}

TEST(TableGramText, NarrowBytesThatAreNotUtf8ReadAsWindows1252ValueByValue)
{
    const std::vector<Column> columns = {{u"T", ColumnType::NarrowText, 255}};
    const std::string bytes = GramBytes(1)
                                  .Column(u"T", 0x81, 255, 4)
                                  .U8(7)
                                  .U8(4)
                                  .Raw("Gr\xFCn")
                                  .U8(7)
                                  .U8(5)
                                  .Raw("Gr\xC3\xBCn")
                                  .U8(0x0F)
                                  .Bytes();
    const Reading reading = ReadBytes(bytes, columns);
    ASSERT_FALSE(reading.fault);
    EXPECT_THAT(reading.table->All(), ElementsAre(Cells{"Gr\xC3\xBCn"}, Cells{"Gr\xC3\xBCn"}));
}

TEST(TableGramText, LoneSurrogatesSurviveInWideText)
{
    const std::u16string texts[] = {
        {u'a', 0xD83C, u'b'},     {0xDF75, u'a'},           {u'a', 0xD83C},          {0xDF75, 0xD83C},
        {0xD83C, 0xD83C, 0xDF75}, {0xD83C, 0xDF75, 0xDF75}, {0xD7FF, 0xE000, 0xFFFF}};
    GramTable table(CatalogueColumns());
    for (const std::u16string& text : texts)
        table.Add(Product(1, "n", 0, ToUtf8(text)));
    const std::string bytes = BytesOf(table);

    const PlainTable plain = ReadPlainTableGram(bytes);
    const Reading reading = ReadBytes(bytes, CatalogueColumns());
    ASSERT_FALSE(reading.fault);
    for (std::size_t i = 0; i < std::size(texts); ++i) {
        EXPECT_EQ(PlainWideText(Plain(plain, i, 7)), texts[i]) << i;
        EXPECT_EQ(ToUtf16(reading.table->All().at(i).at(7).text), texts[i]) << i;
    }
}

TEST(TableGramText, EveryUnitAndEveryLengthOfWideTextSurvives)
{
    std::u16string all;
    for (unsigned unit = 0; unit < 0x10000; ++unit)
        all += static_cast<char16_t>(unit);
    GramTable table(CatalogueColumns());
    table.Add(Product(0, "n", 0, ToUtf8(all)));
    for (std::size_t length = 0; length <= 40; ++length) { // a euro sign at each place among ASCII
        for (std::size_t place = 0; place <= length; ++place) {
            std::u16string text(length, u'a');
            if (place < length)
                text[place] = u'\u20AC';
            table.Add(Product(1, "n", 0, ToUtf8(text)));
        }
    }
    const std::string bytes = BytesOf(table);
    const Reading reading = ReadBytes(bytes, CatalogueColumns());
    ASSERT_FALSE(reading.fault);
    EXPECT_TRUE(reading.table->All() == table.All());
    const PlainTable plain = ReadPlainTableGram(bytes);
    EXPECT_TRUE(PlainWideText(Plain(plain, 0, 7)) == all);
    for (std::size_t row = 1; row < plain.rows.size(); ++row)
        ASSERT_EQ(PlainWideText(Plain(plain, row, 7)),
                  ToUtf16(table.rows.Text(static_cast<RowNumber>(row), 7)));
}

TEST(TableGramText, NulAndLineBreaksSurvive)
{
    GramTable table(CatalogueColumns());
    const std::string text("a\0b\r\nc\td\n", 9);
    table.Add(Product(1, text, 0, text));
    EXPECT_EQ(ReadBytes(BytesOf(table), CatalogueColumns()).table->All(), table.All());
}

} // namespace

} // namespace KestrinProductEditor
