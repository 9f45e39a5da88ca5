// SPDX-License-Identifier: MIT
#include "store/table/TableGram.h"

#include "support/GramTable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

namespace KestrinProductEditor {

namespace {

using namespace Testing;
using testing::ElementsAre;
using testing::HasSubstr;

constexpr std::uint32_t kFixed = 0x14;
constexpr std::uint32_t kVariable = 0x04;
constexpr std::uint32_t kNullable = 0x20;
constexpr std::uint32_t kMayBeNull = 0x40;
constexpr std::uint32_t kUnbounded = 0xFFFFFFFF;

std::vector<Column> NumberAndText()
{
    return {{u"N", ColumnType::Long, 4}, {u"T", ColumnType::NarrowText, 255}};
}

/// A file of a column N that is never null and a column T that can be.
GramBytes NumberAndNullableText()
{
    return GramBytes(2).Column(u"N", 3, 4, kFixed).Column(u"T", 0x81, 255, kVariable | kNullable);
}

TEST(TableGramRead, KnowsEveryKindOfRow)
{
    GramBytes file = NumberAndNullableText();
    file.U8(0x07).U8(0xFF).U32(1).U8(3).Raw("one");
    file.U8(0x07).U8(0x7F).U32(2);                                                           // null
    file.U8(0x07).U8(0x80).U32(3).U8(2).Raw("no").U8(0x0C);                                  // deleted
    file.U8(0x07).U8(0xFF).U32(4).U8(3).Raw("old").U8(0x0A).U8(0x40).U8(0).U8(3).Raw("new"); // text changed
    file.U8(0x07).U8(0xFF).U32(5).U8(3).Raw("old").U8(0x0A).U8(0x80).U8(0x40).U32(50); // number changed, null
    file.U8(0x07).U8(0xFF).U32(6).U8(3).Raw("six").U8(0x0A).U8(0).U8(0);               // nothing changed
    file.U8(0x0D).U8(0xC0).U8(0).U32(7).U8(5).Raw("seven");
    file.U8(0x0D).U8(0x80).U8(0x40).U32(8);  // null on purpose
    file.U8(0x0D).U8(0x80).U8(0x00).U32(9);  // never given
    file.U8(0x0D).U8(0xC0).U8(0x40).U32(10); // null wins over a value
    file.U8(0x0F);

    const Reading reading = ReadBytes(file.Bytes(), NumberAndText());
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    EXPECT_THAT(reading.table->All(),
                ElementsAre(Cells{1, "one"}, Cells{2, ""}, Cells{4, "new"}, Cells{50, ""}, Cells{6, "six"},
                            Cells{7, "seven"}, Cells{8, ""}, Cells{9, ""}, Cells{10, ""}));
    EXPECT_EQ(reading.report.originalRows, 2U);
    EXPECT_EQ(reading.report.deletedRows, 1U);
    EXPECT_EQ(reading.report.changedRows, 3U);
    EXPECT_EQ(reading.report.insertedRows, 4U);
    EXPECT_EQ(reading.report.size, file.Size());
}

TEST(TableGramRead, EitherNullableFlagGivesAColumnABit)
{
    // Nine such columns need two bytes of bits, a column without the flags has none.
    GramBytes file(10);
    file.Column(u"N", 3, 4, kFixed);
    std::vector<Column> columns = {{u"N", ColumnType::Long, 4}};
    for (char16_t name = u'A'; name <= u'I'; ++name) {
        file.Column(std::u16string(1, name), 3, 4, kFixed | (name % 2 == 0 ? kNullable : kMayBeNull));
        columns.push_back({std::u16string(1, name), ColumnType::Long, 4});
    }
    file.U8(0x07).U8(0x81).U8(0x80).U32(1).U32(2).U32(3).U32(4);
    file.U8(0x07).U8(0x00).U8(0x7F).U32(5).U8(0x0F);

    const Reading reading = ReadBytes(file.Bytes(), columns);
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    EXPECT_THAT(reading.table->All(),
                ElementsAre(Cells{1, 2, 0, 0, 0, 0, 0, 0, 3, 4}, Cells{5, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST(TableGramRead, AbsentValuesAreEmptyZeroAndFalse)
{
    const std::vector<Column> columns = {{u"N", ColumnType::Long, 4},
                                         {u"A", ColumnType::NarrowText, 255},
                                         {u"W", ColumnType::WideText, 4095},
                                         {u"M", ColumnType::Currency, 8},
                                         {u"B", ColumnType::Boolean, 2}};
    GramBytes file(5);
    file.Column(u"N", 3, 4, kFixed | kNullable)
        .Column(u"A", 0x81, 255, kVariable | kNullable)
        .Column(u"W", 0x82, 4095, kVariable | kNullable)
        .Column(u"M", 6, 8, kFixed | kNullable)
        .Column(u"B", 11, 2, kFixed | kNullable);
    file.U8(0x07).U8(0xF8).U32(1).U8(1).Raw("a").U32(2).Wide(u"w").U64(3).U16(0xFFFF);
    file.U8(0x07).U8(0x07).U8(0x0D).U8(0).U8(0).U8(0x0F);

    const Reading reading = ReadBytes(file.Bytes(), columns);
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    EXPECT_THAT(reading.table->All(),
                ElementsAre(Cells{1, "a", "w", 3, 1}, Cells{0, "", "", 0, 0}, Cells{0, "", "", 0, 0}));
}

TEST(TableGramRead, SkipsOtherColumnsInAnyOrder)
{
    GramBytes file(22);
    file.Column(u"X1", 0x80, 3, kFixed)
        .Column(u"T", 0x81, 10, kVariable)
        .Column(u"X2", 0x82, kUnbounded, kVariable);
    file.Column(u"X3", 0x48, 16, kFixed).Column(u"X4", 5, 8, kFixed).Column(u"X5", 0x87, 16, kFixed);
    file.Column(u"X6", 0x83, 19, kFixed)
        .Column(u"X7", 14, 16, kFixed)
        .Column(u"X8", 0x80, kUnbounded, kVariable);
    file.Column(u"X9", 2, 2, kFixed).Column(u"Y1", 0x85, 6, kFixed).Column(u"Y2", 0x86, 6, kFixed);
    file.Column(u"Y3", 7, 8, kFixed).Column(u"Y4", 4, 4, kFixed).Column(u"Y5", 0x40, 8, kFixed);
    file.Column(u"Y6", 10, 4, kFixed).Column(u"N", 3, 4, kFixed).Column(u"Y7", 0x8B, 21, kFixed);
    file.Column(u"Y8", 12, 16, kFixed).Column(u"Y9", 0x81, 300, kFixed).Column(u"", 20, 8, kFixed);
    file.Column(u"Z", 0x82, 2, kFixed);
    file.U8(0x07).Raw("abc").U8(4).Raw("text").U32(4).Wide(u"ab").Raw(
        std::string(16 + 8 + 16 + 19 + 16, 'x'));
    file.U32(3)
        .Raw("abc")
        .Raw(std::string(2 + 6 + 6 + 8 + 4 + 8 + 4, 'x'))
        .U32(42)
        .Raw(std::string(21 + 16, 'x'));
    file.U32(2).Raw("ab").U64(0).Wide(u"zz").U8(0x0F);

    const Reading reading = ReadBytes(file.Bytes(), NumberAndText());
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    EXPECT_THAT(reading.table->All(), ElementsAre(Cells{42, "text"}));
    ASSERT_EQ(reading.report.columns.size(), 22U);
    EXPECT_EQ(reading.report.columns[2].name, u"X2");
    EXPECT_EQ(reading.report.columns[2].type, 0x82);
    EXPECT_EQ(reading.report.columns[2].maxLength, kUnbounded);
    EXPECT_EQ(reading.report.columns[0].flags, kFixed);
}

TEST(TableGramRead, SkippedColumnsMayBeNullAndChanged)
{
    GramBytes file(3);
    file.Column(u"X", 5, 8, kFixed | kNullable).Column(u"N", 3, 4, kFixed).Column(u"T", 0x81, 9, kVariable);
    file.U8(0x07).U8(0x7F).U32(1).U8(1).Raw("a");
    file.U8(0x07).U8(0x80).U64(0).U32(2).U8(1).Raw("b").U8(0x0A).U8(0xC0).U8(0).U64(0).U32(20);
    file.U8(0x0D).U8(0x60).U8(0x80).U32(3).U8(1).Raw("c").U8(0x0F);
    EXPECT_THAT(ReadBytes(file.Bytes(), NumberAndText()).table->All(),
                ElementsAre(Cells{1, "a"}, Cells{20, "b"}, Cells{3, "c"}));
}

TEST(TableGramRead, FindsColumnsWithoutAsciiCaseAndTakesTheFirstOfAName)
{
    GramBytes file(3);
    file.Column(u"t", 0x81, 9, kVariable).Column(u"n", 3, 4, kFixed).Column(u"N", 3, 4, kFixed);
    file.U8(0x07).U8(1).Raw("a").U32(1).U32(2).U8(0x0F);
    EXPECT_THAT(ReadBytes(file.Bytes(), NumberAndText()).table->All(), ElementsAre(Cells{1, "a"}));
}

TEST(TableGramRead, SkipsTablesAndOptionalFieldsOfAColumn)
{
    GramBytes file(2);
    file.U8(0x05).U16(4).U32(0).U8(0x05).U16(0);
    // Name, base table, base column, base column name; behind the flags a catalogue name and the visibility.
    file.U8(0x06).U16(3 + 2 + 4 + 2 + 2 + 8 + 18 + 4 + 2).Raw("\xF2").U8(1).U8(0).U16(1);
    file.U16(1).Wide(u"N").U16(1).U16(1).U16(3).Wide(u"Num").U16(3).U32(4).U32(0xFF).U32(0xFF).U32(kFixed);
    file.U16(1).Wide(u"c").U16(0xFFFF);
    file.Column(u"T", 0x81, 9, kVariable);
    file.U8(0x07).U32(1).U8(1).Raw("a").U8(0x0F);
    const Reading reading = ReadBytes(file.Bytes(), NumberAndText());
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    EXPECT_THAT(reading.table->All(), ElementsAre(Cells{1, "a"}));
    EXPECT_EQ(reading.report.columns[0].name, u"N");
}

TEST(TableGramRead, RefusesBytesBehindTheEnd)
{
    GramBytes file = NumberAndNullableText();
    file.U8(0x0F);
    const std::size_t size = file.Size();
    for (const std::size_t trailing : {std::size_t{1}, std::size_t{700'000}}) {
        const Reading reading = ReadBytes(file.Bytes() + std::string(trailing, '\x0F'), NumberAndText());
        ASSERT_TRUE(reading.fault) << "a damaged row mark would end the table and lose the rest";
        EXPECT_EQ(reading.fault->offset, size);
    }
}

TEST(TableGramRead, NeverTrustsTheAnnouncedRowCount)
{
    for (const char count : {'\0', '\x01', '\xFF'}) {
        std::string bytes =
            NumberAndNullableText().U8(0x07).U8(0x7F).U32(1).U8(0x07).U8(0x7F).U32(2).U8(0x0F).Bytes();
        bytes.replace(0x45, 4, std::string(4, count));
        EXPECT_THAT(ReadBytes(bytes, NumberAndText()).table->All(), ElementsAre(Cells{1, ""}, Cells{2, ""}));
    }
}

TEST(TableGramRead, IgnoresTheConstantsOfTheFront)
{
    std::string bytes = NumberAndNullableText().U8(0x0F).Bytes();
    for (std::size_t offset = 0; offset < 0x10E; ++offset) {
        const bool isSizeOrToken =
            offset < 12 || (offset >= 0x25 && offset < 0x28) || (offset >= 0x8F && offset < 0x92);
        const bool isColumnCount = offset == 0x3D || offset == 0x3E;
        if (!isSizeOrToken && !isColumnCount)
            bytes[offset] = static_cast<char>(~bytes[offset]);
    }
    EXPECT_FALSE(ReadBytes(bytes, NumberAndText()).fault);
}

TEST(TableGramRead, TextIsTakenFromEveryKindOfTextColumn)
{
    for (const ColumnType target : {ColumnType::NarrowText, ColumnType::WideText}) {
        const std::vector<Column> columns = {{u"T", target, 255}};
        const auto read = [&](unsigned type, std::uint32_t length, std::uint32_t flags,
                              const std::string& value) {
            const std::string bytes =
                GramBytes(1).Column(u"T", type, length, flags).U8(7).Raw(value).U8(0x0F).Bytes();
            const Reading reading = ReadBytes(bytes, columns);
            return reading.fault ? reading.fault->reason : reading.table->All().at(0).at(0).text;
        };
        const std::string wide = GramBytes().Wide(u"\u00E9t\u00E9").Bytes();
        EXPECT_EQ(read(0x81, 255, kVariable, "\x02hi"), "hi");
        EXPECT_EQ(read(0x81, 256, kVariable, GramBytes().U32(2).Raw("hi").Bytes()), "hi");
        EXPECT_EQ(read(0x81, kUnbounded, kVariable, GramBytes().U32(2).Raw("hi").Bytes()), "hi");
        EXPECT_EQ(read(0x81, 4, kFixed, "hi  "), "hi  ");
        EXPECT_EQ(read(0x81, 0, kFixed, ""), "");
        EXPECT_EQ(read(0x81, 256, kFixed, GramBytes().U32(2).Raw("hi").Bytes()), "hi");
        EXPECT_EQ(read(0x81, 255, kVariable, "\x03\xC3\xA9!"), "\xC3\xA9!");
        EXPECT_EQ(read(0x82, 127, kVariable, "\x06" + wide), "\xC3\xA9t\xC3\xA9");
        EXPECT_EQ(read(0x82, 128, kVariable, GramBytes().U32(6).Raw(wide).Bytes()), "\xC3\xA9t\xC3\xA9");
        EXPECT_EQ(read(0x82, kUnbounded, kVariable, GramBytes().U32(6).Raw(wide).Bytes()),
                  "\xC3\xA9t\xC3\xA9");
        EXPECT_EQ(read(0x82, 3, kFixed, wide), "\xC3\xA9t\xC3\xA9");
        EXPECT_EQ(read(8, kUnbounded, kVariable, GramBytes().U32(6).Raw(wide).Bytes()), "\xC3\xA9t\xC3\xA9");
    }
}

TEST(TableGramRead, ANarrowColumnShowsWideTextAsItWillBeSaved)
{
    const std::string bytes = GramBytes(1)
                                  .Column(u"T", 0x82, 9, kVariable)
                                  .U8(7)
                                  .U8(6)
                                  .Wide(u"\u00E9\u20AC\u4E00")
                                  .U8(0x0F)
                                  .Bytes();
    const auto textOf = [&](const char* codePage, ColumnType type) {
        return ReadBytes(bytes, {{u"T", type, 255}}, *CodePage::Named(codePage))
            .table->All()
            .at(0)
            .at(0)
            .text;
    };
    EXPECT_EQ(textOf("windows-1252", ColumnType::NarrowText), "\xC3\xA9\xE2\x82\xAC?");
    EXPECT_EQ(textOf("windows-1252", ColumnType::WideText), "\xC3\xA9\xE2\x82\xAC\xE4\xB8\x80");
    EXPECT_EQ(textOf("utf-8", ColumnType::NarrowText), "\xC3\xA9\xE2\x82\xAC\xE4\xB8\x80");
}

struct NumberCase
{
    ColumnType target;
    unsigned type;
    std::uint32_t size;
    std::uint64_t stored;
    std::int64_t expected;
    bool fits;
};

TEST(TableGramRead, NumbersAreTakenFromEveryTypeThatCanHoldThem)
{
    constexpr auto kLong = ColumnType::Long;
    constexpr auto kMoney = ColumnType::Currency;
    constexpr auto kYesNo = ColumnType::Boolean;
    constexpr std::int64_t kLargestUnits = 922'337'203'685'477;
    const auto u64 = [](std::int64_t value) { return static_cast<std::uint64_t>(value); };
    const NumberCase cases[] = {
        {kLong, 16, 1, 0x80, -128, true},
        {kLong, 2, 2, 0x8000, -32768, true},
        {kLong, 3, 4, 0x80000000, std::numeric_limits<std::int32_t>::min(), true},
        {kLong, 17, 1, 0xFF, 255, true},
        {kLong, 18, 2, 0xFFFF, 65535, true},
        {kLong, 19, 4, 0x7FFFFFFF, 0x7FFFFFFF, true},
        {kLong, 19, 4, 0x80000000, 0, false},
        {kLong, 20, 8, u64(-2147483648), -2147483648, true},
        {kLong, 20, 8, u64(-2147483649), 0, false},
        {kLong, 20, 8, 0x80000000, 0, false},
        {kLong, 21, 8, 0x7FFFFFFF, 0x7FFFFFFF, true},
        {kLong, 21, 8, 0xFFFFFFFFFFFFFFFF, 0, false},
        {kLong, 11, 2, 0xFFFF, -1, true},
        {kMoney, 6, 8, u64(-1), -1, true},
        {kMoney, 16, 1, 0xFF, -10000, true},
        {kMoney, 2, 2, 3, 30000, true},
        {kMoney, 3, 4, 0x7FFFFFFF, 21474836470000, true},
        {kMoney, 17, 1, 0xFF, 2550000, true},
        {kMoney, 18, 2, 0xFFFF, 655350000, true},
        {kMoney, 19, 4, 0xFFFFFFFF, 42949672950000, true},
        {kMoney, 20, 8, u64(kLargestUnits), kLargestUnits * 10000, true},
        {kMoney, 20, 8, u64(kLargestUnits + 1), 0, false},
        {kMoney, 20, 8, u64(-kLargestUnits), -kLargestUnits * 10000, true},
        {kMoney, 20, 8, u64(-kLargestUnits - 1), 0, false},
        {kMoney, 21, 8, 0xFFFFFFFFFFFFFFFF, 0, false},
        {kYesNo, 11, 2, 0xFFFF, 1, true},
        {kYesNo, 11, 2, 0x0100, 1, true},
        {kYesNo, 11, 2, 0, 0, true},
        {kYesNo, 17, 1, 1, 1, true},
        {kYesNo, 3, 4, 0, 0, true},
        {kYesNo, 21, 8, 0xFFFFFFFFFFFFFFFF, 1, true},
    };
    for (const NumberCase& each : cases) {
        SCOPED_TRACE("type " + std::to_string(each.type) + ", stored " + std::to_string(each.stored));
        GramBytes file(1);
        file.Column(u"V", each.type, each.size, kFixed).U8(7);
        const std::size_t offset = file.Size();
        const std::string stored = GramBytes().U64(each.stored).Bytes().substr(0, each.size);
        file.Raw(stored).U8(0x0F);
        const Reading reading = ReadBytes(file.Bytes(), {{u"V", each.target, 8}});
        if (each.fits) {
            ASSERT_FALSE(reading.fault) << reading.fault->reason;
            EXPECT_EQ(reading.table->All().at(0).at(0), Cell(each.expected));
        } else {
            ASSERT_TRUE(reading.fault);
            EXPECT_EQ(reading.fault->offset, offset);
            EXPECT_THAT(reading.fault->reason, HasSubstr("column 'V'"));
        }
    }
}

struct Refusal
{
    std::string bytes;
    std::uint64_t offset;
    std::string reason; // a part of it
};

void ExpectRefused(const Refusal& refusal, const std::vector<Column>& columns = NumberAndText())
{
    SCOPED_TRACE(refusal.reason);
    for (const bool isSizeKnown : {true, false}) {
        ByteReadStream stream(refusal.bytes, isSizeKnown ? refusal.bytes.size() : 0, std::string::npos);
        const Reading reading = ReadFrom(stream, columns);
        ASSERT_TRUE(reading.fault);
        EXPECT_EQ(reading.fault->offset, refusal.offset);
        EXPECT_THAT(reading.fault->reason, HasSubstr(refusal.reason));
    }
}

std::string WithByte(std::string bytes, std::size_t offset, unsigned value)
{
    bytes.at(offset) = static_cast<char>(value);
    return bytes;
}

TEST(TableGramRead, RefusesWhatIsNoCatalogue)
{
    const std::string good = NumberAndNullableText().U8(0x0F).Bytes();
    ExpectRefused({"", 0, "empty"});
    ExpectRefused({"%PDF-1.7", 0, "no catalogue"});
    ExpectRefused({"\x01\x07XYZ", 2, "no catalogue"});
    ExpectRefused({good.substr(0, 7), 7, "inside its header"});
    ExpectRefused({WithByte(good, 1, 8), 1, "no catalogue"});
    ExpectRefused({WithByte(good, 5, 1), 5, "version"});
    ExpectRefused({WithByte(good, 6, 1), 6, "version"});
    ExpectRefused({WithByte(good, 7, 1), 7, "byte order"});
    ExpectRefused({WithByte(good, 8, 1), 8, "narrow text"});
}

TEST(TableGramRead, RefusesABrokenFront)
{
    const std::string good = NumberAndNullableText().U8(0x0F).Bytes();
    ExpectRefused({good.substr(0, 9), 9, "ends before its rows"});
    ExpectRefused({good.substr(0, 11), 9, "ends before its rows"});
    ExpectRefused({WithByte(good, 9, 3), 9, "handler options"});
    ExpectRefused({WithByte(good, 0x0B, 0xFF), 0x0A, "past the end"});
    ExpectRefused({WithByte(good, 0x25, 7), 0x25, "description of the table"});
    ExpectRefused({WithByte(good, 0x26, 32), 0x26, "too short"});
    ExpectRefused({WithByte(good, 0x8F, 6), 0x8F, "context"});
    ExpectRefused({WithByte(good, 0x3D, 0), 0x3D, "no columns"});
}

TEST(TableGramRead, RefusesBrokenColumns)
{
    const GramBytes front(2);
    const std::size_t at = front.Size();
    ExpectRefused({GramBytes(front).Column(u"N", 3, 4, kFixed).U8(0x0F).Bytes(), at + 34,
                   "announces 2 columns and describes 1"});
    GramBytes three = NumberAndNullableText();
    ExpectRefused({GramBytes(three).Column(u"X", 3, 4, kFixed).U8(0x0F).Bytes(), three.Size(),
                   "more columns than the 2"});
    ExpectRefused({GramBytes(three).U8(0x05).U16(0).U8(0x0F).Bytes(), three.Size(), "token 05"});
    ExpectRefused({GramBytes(front).U8(0x06).U16(4).U32(0).U8(0x0F).Bytes(), at + 3, "too short"});
    // A name that runs past its description.
    ExpectRefused({GramBytes(front).U8(0x06).U16(9).Raw("\x80\x01").U8(0).U16(1).U16(2).U16(0).Bytes(),
                   at + 10, "too short"});
    ExpectRefused({GramBytes(front)
                       .U8(0x06)
                       .U16(20)
                       .Raw("\x80\x01")
                       .U8(0)
                       .U16(1)
                       .U16(0)
                       .Raw(std::string(13, 'x'))
                       .Bytes(),
                   at + 10, "too short"});
    ExpectRefused({GramBytes(front).U8(0x06).U16(5000).Raw("\x80\x01").Bytes(), at + 1,
                   "5000 bytes runs past the end"});
    ExpectRefused({front.Bytes(), at, "announces 2 columns and describes 0"});
}

TEST(TableGramRead, RefusesColumnsThatItCannotUseAndNamesThem)
{
    const auto file = [](unsigned type, std::uint32_t length, std::uint32_t flags) {
        return GramBytes(2)
            .Column(u"N", type, length, flags)
            .Column(u"T", 0x81, 9, kVariable)
            .U8(0x0F)
            .Bytes();
    };
    const std::uint64_t type = 0x10E + 12;
    ExpectRefused(
        {GramBytes(1).Column(u"N", 3, 4, kFixed).U8(0x0F).Bytes(), 0x10E + 34, "column 'T' is missing"});
    ExpectRefused({file(0x88, 4, kFixed), type, "column 'N' holds tables"});
    ExpectRefused({file(3, 4, kFixed | 0x2000), type + 14, "column 'N' holds tables"});
    ExpectRefused({file(77, 4, kFixed), type, "column 'N' has the unknown type 77"});
    ExpectRefused({file(3, 5, kFixed), type + 2, "column 'N'"});
    ExpectRefused({file(12, kUnbounded, kFixed), type + 2, "column 'N'"});
    ExpectRefused({file(5, 8, kFixed), type, "which cannot hold a 32-bit number"});
    ExpectRefused({file(6, 8, kFixed), type, "which cannot hold a 32-bit number"});
    ExpectRefused({file(0x81, 8, kVariable), type, "column 'N'"});
    ExpectRefused({file(0x80, 8, kVariable), type, "column 'N'"});
    const std::vector<Column> money = {{u"N", ColumnType::Currency, 8}};
    ExpectRefused({file(11, 2, kFixed), type, "which cannot hold an amount of money"}, money);
    ExpectRefused({file(14, 16, kFixed), type, "which cannot hold an amount of money"}, money);
    const std::vector<Column> text = {{u"N", ColumnType::WideText, 8}};
    ExpectRefused({file(3, 4, kFixed), type, "which cannot hold text"}, text);
    ExpectRefused({file(0x80, 4, kVariable), type, "which cannot hold text"}, text);
    const std::vector<Column> yesNo = {{u"N", ColumnType::Boolean, 2}};
    ExpectRefused({file(7, 8, kFixed), type, "which cannot hold yes or no"}, yesNo);
}

TEST(TableGramRead, RefusesBrokenRows)
{
    const GramBytes front = NumberAndNullableText();
    const std::uint64_t at = front.Size();
    ExpectRefused({front.Bytes(), at, "without its end mark"});
    ExpectRefused({GramBytes(front).U8(0x42).Bytes(), at, "token 42"});
    ExpectRefused({GramBytes(front).U8(0x06).Bytes(), at, "more columns than the 2"});
    ExpectRefused({GramBytes(front).U8(0x0A).U8(0).U8(0).U8(0x0F).Bytes(), at, "does not follow its row"});
    ExpectRefused({GramBytes(front).U8(0x0C).U8(0x0F).Bytes(), at, "does not follow its row"});
    for (const unsigned child : {0x80U, 0x87U, 0x8AU, 0x8CU, 0x8DU})
        ExpectRefused({GramBytes(front).U8(child).U8(0x0F).Bytes(), at, "child table"});
    ExpectRefused({GramBytes(front).U8(0x07).Bytes(), at + 1, "middle of a row"});
    ExpectRefused({GramBytes(front).U8(0x07).U8(0x80).U16(1).Bytes(), at + 2, "middle of a row"});
    ExpectRefused({GramBytes(front).U8(0x07).U8(0x80).U32(1).Bytes(), at + 6, "middle of a row"});
    ExpectRefused(
        {GramBytes(front).U8(0x07).U8(0x80).U32(1).U8(2).Raw("a").Bytes(), at + 6, "middle of a row"});
    ExpectRefused({GramBytes(front).U8(0x07).U8(0x00).U32(1).Bytes(), at + 6, "middle of a row"});
    ExpectRefused({GramBytes(front).U8(0x0D).U8(0x80).Bytes(), at + 1, "middle of a row"});
    // A second change, and a deletion behind a change.
    const GramBytes changed = GramBytes(front).U8(0x07).U8(0x00).U32(1).U8(0x0A).U8(0).U8(0);
    ExpectRefused(
        {GramBytes(changed).U8(0x0A).U8(0).U8(0).U8(0x0F).Bytes(), changed.Size(), "does not follow"});
    ExpectRefused({GramBytes(changed).U8(0x0C).U8(0x0F).Bytes(), changed.Size(), "does not follow"});
}

TEST(TableGramRead, RefusesTextsThatTheirColumnCannotHold)
{
    const std::vector<Column> columns = {{u"T", ColumnType::NarrowText, 255}};
    const auto refuse = [&](const std::u16string& name, unsigned type, std::uint32_t length,
                            const std::string& value, const std::string& reason) {
        GramBytes file(2);
        file.Column(name, type, length, kVariable)
            .Column(name == u"T" ? u"X" : u"T", 0x81, 9, kVariable)
            .U8(7);
        const std::size_t at = file.Size();
        ExpectRefused({file.Raw(value).Raw(std::string(30, '\0')).U8(0x0F).Bytes(), at, reason}, columns);
    };
    for (const std::u16string name : {u"T", u"X"}) {
        refuse(name, 0x81, 9, "\x0A", "10 bytes in column");
        refuse(name, 0x81, 300, GramBytes().U32(301).Bytes(), "301 bytes in column");
        refuse(name, 0x82, 9, "\x14", "20 bytes in column");
        refuse(name, 0x82, 9, "\x03", "odd number, in column");
        refuse(name, 0x82, kUnbounded, GramBytes().U32(5).Bytes(), "odd number, in column");
    }
    refuse(u"X", 0x80, 9, "\x0A", "room for 9");
}

TEST(TableGramRead, AFailureOfTheStreamPassesThrough)
{
    struct BrokenDisk final : IReadStream
    {
        [[nodiscard]] std::uint64_t Size() const override { return 1000; }
        [[nodiscard]] std::size_t Read(char*, std::size_t) override { throw std::runtime_error("broken"); }
    } disk;
    EXPECT_THROW((void)ReadFrom(disk, NumberAndText()), std::runtime_error);
}

TEST(TableGramRead, TwoRowsWithOneIdentifierAreNoFault)
{
    GramTable table(CatalogueColumns());
    table.Add({1, 1, 0, "a", "", "", 0, "", 0, 0});
    table.Add({1, 1, 0, "b", "", "", 0, "", 0, 0});
    const Reading reading = ReadBytes(BytesOf(table), CatalogueColumns());
    EXPECT_FALSE(reading.fault);
    EXPECT_EQ(reading.table->All(), table.All());
}

TEST(TableGramRead, TheReportStartsAnew)
{
    const std::string bytes = NumberAndNullableText().U8(0x07).U8(0).U32(1).U8(0x0F).Bytes();
    TableGram::Report report;
    report.columns.resize(3);
    report.originalRows = report.deletedRows = 9;
    ByteReadStream stream(bytes);
    RowStore rows(NumberAndText());
    ASSERT_FALSE(TableGram::Read(stream, Utf8(), rows, report));
    EXPECT_EQ(report.columns.size(), 2U);
    EXPECT_EQ(report.originalRows, 1U);
    EXPECT_EQ(report.deletedRows, 0U);
}

} // namespace

} // namespace KestrinProductEditor
