// SPDX-License-Identifier: MIT
#include "exchange/CsvSample.h"

#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class CsvSampleTest : public testing::Test
{
protected:
    [[nodiscard]] CsvSample Read(std::string_view content, FirstLine firstLine = FirstLine::Titles)
    {
        m_folder.Write("list.csv", content);
        return ReadCsvSample(m_folder.File("list.csv"), firstLine);
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(CsvSampleTest, NamesColumnsByTheirTitles)
{
    const CsvSample sample = Read("Name, \"Part, new\" ,Price\nBolt,B-2,7\n");
    EXPECT_THAT(sample.columnNames, ElementsAre(u"Name", u"Part, new", u"Price"));
    EXPECT_THAT(sample.lines, ElementsAre(ElementsAre(u"Bolt", u"B-2", u"7")));
}

TEST_F(CsvSampleTest, NumbersColumnsWithoutTitlesAndStillLeavesTheFirstLineOut)
{
    const CsvSample sample = Read("Anchor,A-1\nBolt,B-2\n", FirstLine::Product);
    EXPECT_THAT(sample.columnNames, ElementsAre(u"Column 1", u"Column 2"));
    EXPECT_THAT(sample.lines, ElementsAre(ElementsAre(u"Bolt", u"B-2")));
}

TEST_F(CsvSampleTest, HasTheFiveLinesBehindTheFirst)
{
    const CsvSample sample = Read("n\n1\n2\n3\n4\n5\n6\n", FirstLine::Product);
    EXPECT_THAT(sample.lines, ElementsAre(ElementsAre(u"1"), ElementsAre(u"2"), ElementsAre(u"3"),
                                          ElementsAre(u"4"), ElementsAre(u"5")));
    EXPECT_THAT(Read("n\n").lines, IsEmpty());
}

TEST_F(CsvSampleTest, TakesBlanksFromTheEndsOfCells)
{
    EXPECT_THAT(Read("a,b,c\n  x y  ,   ,\t\n").lines, ElementsAre(ElementsAre(u"x y", u"", u"\t")));
}

TEST_F(CsvSampleTest, KeepsTheBlanksOfCellsThatBeginWithAQuote)
{
    EXPECT_THAT(Read("a,b\n\"  x  \", \" y\" \n").lines, ElementsAre(ElementsAre(u"  x  ", u"y")));
    EXPECT_THAT(Read("a,b,c\n\" x\"\" \" ,\"  ,  \", \" \"\n").lines,
                ElementsAre(ElementsAre(u" x  ", u"  ,  ", u"")));
    EXPECT_THAT(Read("\" a \", b\n").columnNames, ElementsAre(u" a ", u"b"));
}

TEST_F(CsvSampleTest, IsEmptyForAnEmptyFile)
{
    const CsvSample sample = Read("");
    EXPECT_THAT(sample.columnNames, IsEmpty());
    EXPECT_THAT(sample.lines, IsEmpty());
}

TEST_F(CsvSampleTest, RefusesAFirstLineWithoutColumns)
{
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(Read("\na,b\n")); }), 321);
}

TEST_F(CsvSampleTest, RefusesALineWithAnotherNumberOfColumns)
{
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(Read("a,b,c\n1,2,3\n1,2,3,4\n")); }), 321);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(Read("a,b,c\n1,2\n")); }), 321);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(Read("a,b\n\n1,2\n")); }), 321);
    // Beyond the sample nobody has looked yet.
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(Read("a\n1\n2\n3\n4\n5\n6,7\n")); }), 0);
}

TEST_F(CsvSampleTest, RaisesWhatTheFileServicesSay)
{
    EXPECT_EQ(ErrorNumberOf(
                  [&] { static_cast<void>(ReadCsvSample(m_folder.File("none.csv"), FirstLine::Titles)); }),
              53);
}

TEST_F(CsvSampleTest, ShowsNoMoreColumnsThanAListCanBear)
{
    const std::string line = std::string(20'000, ',') + "\n";
    const CsvSample sample = Read(line + line);
    EXPECT_THAT(sample.columnNames, SizeIs(10'000));
    EXPECT_THAT(sample.lines, ElementsAre(SizeIs(10'000)));
}

TEST_F(CsvSampleTest, RefusesAFileWithoutLineEndsBeforeItFillsTheMemory)
{
    m_folder.Write("image.csv", "");
    std::filesystem::resize_file(m_folder.Path() / "image.csv", std::uintmax_t{1} << 26);
    const auto error =
        ErrorOf([&] { static_cast<void>(ReadCsvSample(m_folder.File("image.csv"), FirstLine::Titles)); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), kErrInvalidFileFormat);
    EXPECT_THAT(ToUtf8(error->Description()), testing::HasSubstr("too long"));
}

TEST_F(CsvSampleTest, TakesLongLines)
{
    const std::string note(500'000, 'n');
    EXPECT_THAT(Read("Name,Note\nBolt," + note + "\nNut," + note + "\n").lines, SizeIs(2));
    EXPECT_EQ(Read("Name,,Price\n").columnNames[1], u"");
}

} // namespace KestrinProductEditor
