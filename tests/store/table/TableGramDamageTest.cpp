// SPDX-License-Identifier: MIT
#include "store/table/TableGram.h"

#include "support/GramTable.h"

#include <gtest/gtest.h>

namespace KestrinProductEditor {

namespace {

using namespace Testing;

constexpr std::size_t kWindow = 256 * 1024;

std::string SmallCatalogue()
{
    GramTable table(CatalogueColumns());
    table.Add({1, 7, 0, "Gr\xC3\xBCner Tee", "K-1", "T-100", 48900, "\xE2\x82\xAC 4.89", 1, 0});
    table.Add({2, 8, 0, "Kaffee", "K-2", "T-200", -10001, "", 0, 1});
    return BytesOf(table);
}

std::vector<Column> SmallColumns()
{
    return {
        {u"N", ColumnType::Long, 4}, {u"T", ColumnType::NarrowText, 9}, {u"W", ColumnType::WideText, 200}};
}

/// Every kind of row, nullable columns and both sizes of count.
std::string SmallFileOfAllRows()
{
    GramBytes file(3);
    file.Column(u"N", 3, 4, 0x14).Column(u"T", 0x81, 9, 0x24).Column(u"W", 0x82, 200, 0x24);
    file.U8(0x07).U8(0xFF).U32(1).U8(2).Raw("ab").U32(4).Wide(u"cd");
    file.U8(0x07).U8(0x3F).U32(2).U8(0x0A).U8(0x60).U8(0x00).U8(1).Raw("x").U32(2).Wide(u"\u20AC");
    file.U8(0x07).U8(0x3F).U32(3).U8(0x0C);
    file.U8(0x0D).U8(0xA0).U8(0x40).U32(4).U32(2).Wide(u"y");
    return file.U8(0x0F).Bytes();
}

/// A damaged file is refused at a place inside it, or is a table that comes back when it is saved.
void ExpectSound(const std::string& bytes, const std::vector<Column>& columns, const std::string& what)
{
    ByteReadStream stream(bytes);
    const Reading first = ReadFrom(stream, columns);
    ASSERT_EQ(stream.LargestRequest(), kWindow) << what;
    if (first.fault) {
        ASSERT_LE(first.fault->offset, bytes.size()) << what;
        ASSERT_FALSE(first.fault->reason.empty()) << what;
        return;
    }
    const Reading second = ReadBytes(BytesOf(*first.table), columns);
    ASSERT_FALSE(second.fault) << what << ": " << second.fault->reason;
    ASSERT_TRUE(first.table->All() == second.table->All()) << what;
}

TEST(TableGramDamage, ACatalogueIsRefusedWhereverItIsCutOff)
{
    const std::string bytes = SmallCatalogue();
    ASSERT_FALSE(ReadBytes(bytes, CatalogueColumns()).fault);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        for (const bool isSizeKnown : {true, false}) {
            ByteReadStream stream(bytes.substr(0, length), isSizeKnown ? length : 0, std::string::npos);
            const Reading reading = ReadFrom(stream, CatalogueColumns());
            ASSERT_TRUE(reading.fault) << length;
            ASSERT_LE(reading.fault->offset, length);
        }
    }
}

TEST(TableGramDamage, AFileOfAllKindsOfRowsIsRefusedWhereverItIsCutOff)
{
    const std::string bytes = SmallFileOfAllRows();
    ASSERT_EQ(ReadBytes(bytes, SmallColumns()).table->All().size(), 3U);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
        const Reading reading = ReadBytes(std::string_view(bytes).substr(0, length), SmallColumns());
        ASSERT_TRUE(reading.fault) << length;
        ASSERT_LE(reading.fault->offset, length);
    }
}

TEST(TableGramDamage, EveryFlippedBitOfACatalogueIsRefusedOrHarmless)
{
    const std::string good = SmallCatalogue();
    for (std::size_t offset = 0; offset < good.size(); ++offset) {
        for (unsigned bit = 0; bit < 8; ++bit) {
            std::string bytes = good;
            bytes[offset] = static_cast<char>(static_cast<unsigned char>(bytes[offset]) ^ (1U << bit));
            ExpectSound(bytes, CatalogueColumns(),
                        "bit " + std::to_string(bit) + " of " + std::to_string(offset));
            if (HasFatalFailure())
                return;
        }
    }
}

TEST(TableGramDamage, EveryOtherValueOfEveryByteIsRefusedOrHarmless)
{
    const std::string good = SmallFileOfAllRows();
    // The properties and identifiers in front are skipped alike; what decides lies before and behind them.
    const auto isSkipped = [](std::size_t offset) {
        return (offset > 12 && offset < 0x25) || (offset > 0x49 && offset < 0x8F) ||
               (offset > 0x93 && offset < 0x10E);
    };
    for (std::size_t offset = 0; offset < good.size(); ++offset) {
        for (unsigned change = 1; change < 256; change += isSkipped(offset) ? 51U : 1U) {
            std::string bytes = good;
            bytes[offset] = static_cast<char>(static_cast<unsigned char>(bytes[offset]) ^ change);
            ExpectSound(bytes, SmallColumns(),
                        "byte " + std::to_string(offset) + " changed by " + std::to_string(change));
            if (HasFatalFailure())
                return;
        }
    }
}

TEST(TableGramDamage, AClaimedLengthCostsNoMemory)
{
    struct Case
    {
        const char* what;
        std::uint64_t claimedSize;
    };
    const Case cases[] = {{"the size is known", 1000},
                          {"the size is not known", 0},
                          {"the size is a lie of ten gigabytes", 10'000'000'000}};
    for (const Case& each : cases) {
        SCOPED_TRACE(each.what);
        GramBytes file(1);
        file.Column(u"W", 0x82, 0xFFFFFFFF, 0x04).U8(0x07);
        const std::size_t at = file.Size();
        file.U32(0xFFFFFFFE).Raw(std::string(100, 'x'));
        ByteReadStream stream(file.Bytes(), each.claimedSize, std::string::npos);
        const Reading reading = ReadFrom(stream, {{u"W", ColumnType::WideText, 4095}});
        ASSERT_TRUE(reading.fault);
        EXPECT_EQ(reading.fault->offset, at);
        EXPECT_LE(stream.LargestRequest(), kWindow);
    }
}

TEST(TableGramDamage, ALengthBeyondTheFileIsRefusedBeforeTheRestIsRead)
{
    GramBytes file(1);
    file.Column(u"T", 0x81, 0xFFFFFFFF, 0x04).U8(0x07).U32(5'000'000).Raw(std::string(4'000'000, 'x'));
    ByteReadStream known(file.Bytes());
    EXPECT_TRUE(ReadFrom(known, {{u"T", ColumnType::NarrowText, 255}}).fault);
    EXPECT_EQ(known.LargestRequest(), kWindow);

    // Where the size is not known, memory follows what has arrived.
    ByteReadStream unknown(file.Bytes(), 0, std::string::npos);
    EXPECT_TRUE(ReadFrom(unknown, {{u"T", ColumnType::NarrowText, 255}}).fault);
    EXPECT_LE(unknown.LargestRequest(), file.Size());
}

TEST(TableGramDamage, ALongTextThatIsThereIsReadFromAnyStream)
{
    const std::vector<Column> columns = {{u"T", ColumnType::NarrowText, 255}, {u"N", ColumnType::Long, 4}};
    GramTable table(columns);
    table.Add({"before", 1});
    table.Add({std::string(2'000'000, 'x') + "end", 2});
    table.Add({"behind", 3});
    const std::string bytes = BytesOf(table);
    for (const std::uint64_t size : {std::uint64_t{0}, std::uint64_t{bytes.size()}}) {
        for (const std::size_t mostAtOnce : {std::size_t{1}, std::size_t{65'536}, std::string::npos}) {
            ByteReadStream stream(bytes, size, mostAtOnce);
            const Reading reading = ReadFrom(stream, columns);
            ASSERT_FALSE(reading.fault) << reading.fault->reason;
            EXPECT_TRUE(reading.table->All() == table.All());
        }
    }
}

TEST(TableGramDamage, ManyColumnsInSmallPiecesAreNoTrouble)
{
    constexpr unsigned kColumns = 65'535;
    GramBytes file(kColumns);
    for (unsigned i = 0; i < kColumns; ++i)
        file.Column(i == 40'000 ? u"N" : u"X", i == 40'000 ? 3 : 17, i == 40'000 ? 4 : 1, 0x14);
    for (std::uint32_t row = 0; row < 20; ++row)
        file.U8(7).Raw(std::string(40'000, 'x')).U32(row).Raw(std::string(kColumns - 40'001, 'x'));
    file.U8(0x0F);
    ByteReadStream stream(file.Bytes(), 0, 1);
    const Reading reading = ReadFrom(stream, {{u"N", ColumnType::Long, 4}});
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    ASSERT_EQ(reading.table->All().size(), 20U);
    EXPECT_EQ(reading.table->All().back(), Cells{19});
}

} // namespace

} // namespace KestrinProductEditor
