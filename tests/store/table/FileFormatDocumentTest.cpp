// SPDX-License-Identifier: MIT
#include "support/GramTable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace KestrinProductEditor {

namespace {

using namespace Testing;

/// The bytes of the page's dump: lines of an offset of four digits, two blanks, and bytes up to the next two
/// blanks.
std::string ExampleOf(const std::string& path)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::ifstream page(path);
    std::string bytes;
    for (std::string line; std::getline(page, line);) {
        if (line.size() < 8 || line.find_first_not_of(kDigits) != 4 || line.compare(4, 2, "  ") != 0)
            continue;
        EXPECT_EQ(std::stoul(line.substr(0, 4), nullptr, 16), bytes.size()) << line;
        bytes += FromHex(line.substr(6, line.find("  ", 6) - 6));
    }
    return bytes;
}

TEST(FileFormatDocument, ItsExampleIsWhatIsWritten)
{
    GramTable table(CatalogueColumns());
    table.Add({1, 0, 0, "Gr\xC3\xBCner Tee", "K-1", "T-100", 48900, "\xE2\x82\xAC 4.89", 1, 0});
    EXPECT_EQ(ExampleOf(KSTNEDIT_SOURCE_DIR "/docs/FILE-FORMAT.md"), BytesOf(table));
}

TEST(FileFormatDocument, ItsRowsReadAsItSays)
{
    const std::vector<Column> columns = {{u"N", ColumnType::Long, 4}, {u"T", ColumnType::NarrowText, 9}};
    const std::string rows = FromHex("07 FF 01 00 00 00 02 61 62"
                                     "07 7F 02 00 00 00"
                                     "07 7F 03 00 00 00 0C"
                                     "07 7F 04 00 00 00 0A 40 00 01 78"
                                     "07 FF 05 00 00 00 02 61 62 0A 80 40 06 00 00 00"
                                     "0D C0 00 07 00 00 00 01 79"
                                     "0D 80 40 08 00 00 00"
                                     "0F");
    GramBytes file(2);
    file.Column(u"N", 3, 4, 0x14).Column(u"T", 0x81, 9, 0x24).Raw(rows);
    const Reading reading = ReadBytes(file.Bytes(), columns);
    ASSERT_FALSE(reading.fault) << reading.fault->reason;
    const std::vector<Cells> expected = {{1, "ab"}, {2, ""}, {4, "x"}, {6, ""}, {7, "y"}, {8, ""}};
    EXPECT_EQ(reading.table->All(), expected);
}

} // namespace

} // namespace KestrinProductEditor
