// SPDX-License-Identifier: MIT
#include "apps/kstnedit/ProgramFixture.h"
#include "kstnedit/Failure.h"

namespace KestrinProductEditor::CommandLine {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kCsvTitles =
    "RowID,UniqueID,Status,Name,Key,PartNum,UnitPrice,Note,DirtySession,DirtySync\n";

class ListCommandTest : public ProgramFixture
{
};

TEST_F(ListCommandTest, AlignsATableInStoreOrder)
{
    WriteSmallCatalogue();
    const Outcome outcome = Run({"list"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "RowID  Name         PartNum  UnitPrice  Note\n"
                           "    7  Anvil        AN-1     $1,234.50  heavy\n"
                           "    3  Bolt         BO-1         $0.50\n"
                           "    5  bolt cutter  BC-9        $19.90\n");
    EXPECT_THAT(outcome.err, IsEmpty());
}

TEST_F(ListCommandTest, PrintsTitlesAloneForAnEmptyCatalogue)
{
    EXPECT_EQ(Run({"list"}).out, "RowID  Name  PartNum  UnitPrice  Note\n");
    EXPECT_EQ(Run({"list", "--format", "csv"}).out, kCsvTitles);
    EXPECT_EQ(Run({"list", "--format", "json"}).out, "[]\n");
    EXPECT_EQ(Run({"list", "--offset", "5"}).status, kSucceeded);
}

struct Part
{
    const char* offset;
    const char* limit;
    std::vector<std::string> rowIDs;
};

TEST_F(ListCommandTest, PrintsTheAskedPart)
{
    WriteSmallCatalogue();
    const Part parts[] = {{"0", "2147483647", {"7", "3", "5"}},
                          {"0", "0", {}},
                          {"1", "1", {"3"}},
                          {"2", "9", {"5"}},
                          {"3", "1", {}},
                          {"2147483647", "1", {}}};
    for (const Part& part : parts) {
        std::string expected = kCsvTitles;
        const Outcome outcome =
            Run({"list", "--offset", part.offset, "--limit", part.limit, "--format", "csv"});
        std::vector<std::string> rowIDs;
        std::istringstream lines(outcome.out);
        std::string line;
        std::getline(lines, line);
        while (std::getline(lines, line))
            rowIDs.push_back(line.substr(0, line.find(',')));
        EXPECT_EQ(rowIDs, part.rowIDs) << part.offset << ' ' << part.limit;
    }
}

TEST_F(ListCommandTest, QuotesCsvValuesProperly)
{
    WriteCatalogue({{.rowID = 1, .name = "3\" pipe, steel", .key = " k", .partNum = "p", .note = "a\r\nb"}});
    EXPECT_EQ(Run({"list", "--format", "csv"}).out,
              std::string(kCsvTitles) +
                  "1,0,0,\"3\"\" pipe, steel\",\" k\",p,$0.00,\"a\r\nb\",false,false\n");
}

TEST_F(ListCommandTest, WritesJsonWithTenKeysAndThePriceAsADecimalString)
{
    WriteSmallCatalogue();
    EXPECT_EQ(Run({"list", "--limit", "2", "--format", "json"}).out,
              "[\n"
              "  {\"RowID\": 7, \"UniqueID\": 70, \"Status\": 1, \"Name\": \"Anvil\", \"Key\": \"K7\", "
              "\"PartNum\": \"AN-1\", \"UnitPrice\": \"1234.5\", \"Note\": \"heavy\", "
              "\"DirtySession\": false, \"DirtySync\": true},\n"
              "  {\"RowID\": 3, \"UniqueID\": 0, \"Status\": 0, \"Name\": \"Bolt\", \"Key\": \"\", "
              "\"PartNum\": \"BO-1\", \"UnitPrice\": \"0.5\", \"Note\": \"\", "
              "\"DirtySession\": false, \"DirtySync\": false}\n"
              "]\n");
}

TEST_F(ListCommandTest, EscapesControlsAndHalfCharactersInJson)
{
    WriteCatalogue({{.rowID = 1, .name = "a\"\\\x01\x7F", .note = "\xED\xA0\x80 \xF0\x9F\x98\x80\n"}});
    const std::string out = Run({"list", "--format", "json"}).out;
    EXPECT_THAT(out, HasSubstr("\"Name\": \"a\\\"\\\\\\u0001\\u007f\""));
    EXPECT_THAT(out, HasSubstr("\"Note\": \"\\ud800 \xF0\x9F\x98\x80\\n\""));
}

TEST_F(ListCommandTest, ShowsLineBreaksAndControlsInATableAndNeverSendsThem)
{
    WriteCatalogue({{.rowID = 1, .name = "a\x1B[1m", .note = "x\r\ny\tz"}});
    EXPECT_EQ(Run({"list"}).out,
              "RowID  Name   PartNum  UnitPrice  Note\n"
              "    1  a\xE2\x90\x9B[1m               $0.00  x\xE2\x90\xA4y\xE2\x90\x89z\n");
}

TEST_F(ListCommandTest, CountsTwoColumnsForWideCharacters)
{
    WriteCatalogue({{.rowID = 1, .name = "\xE9\x87\x98"}, {.rowID = 2, .name = "e\xCC\x81tau"}});
    EXPECT_EQ(Run({"list"}).out, "RowID  Name  PartNum  UnitPrice  Note\n"
                                 "    2  e\xCC\x81tau               $0.00\n"
                                 "    1  \xE9\x87\x98                 $0.00\n");
}

TEST_F(ListCommandTest, CutsNothingWhereTheOutputIsNoTerminal)
{
    WriteCatalogue({{.rowID = 1, .name = std::string(255, 'n'), .note = std::string(4095, 'o')}});
    const std::string out = Run({"list"}).out;
    EXPECT_THAT(out, HasSubstr(std::string(255, 'n')));
    EXPECT_THAT(out, HasSubstr(std::string(4095, 'o')));
}

TEST_F(ListCommandTest, FitsATerminalThatIsNarrower)
{
    WriteCatalogue(
        {{.rowID = 1, .name = std::string(60, 'n'), .price = 19'900, .note = std::string(60, 'o')}});
    m_outColumns = 60;
    EXPECT_EQ(Run({"list"}).out,
              "RowID  Name             PartNum  UnitPrice  Note\n"
              "    1  nnnnnnnnnnnnnn\xE2\x80\xA6               $1.99  ooooooooooooooo\xE2\x80\xA6\n");
    m_outColumns = 1000;
    EXPECT_THAT(Run({"list"}).out, HasSubstr(std::string(60, 'o') + "\n"));
}

TEST_F(ListCommandTest, CutsWholeLinesOnATinyTerminal)
{
    WriteSmallCatalogue();
    m_outColumns = 12;
    EXPECT_EQ(Run({"list", "--limit", "1"}).out, "RowID  Name\xE2\x80\xA6\n    7  Anvi\xE2\x80\xA6\n");
}

TEST_F(ListCommandTest, ShowsDecimalsBeyondTheSecond)
{
    WriteCatalogue(
        {{.rowID = 1, .name = "a", .price = 123'456}, {.rowID = 2, .name = "b", .price = -50'010}});
    const std::string out = Run({"list", "--format", "csv"}).out;
    EXPECT_THAT(out, HasSubstr("$12.3456"));
    EXPECT_THAT(out, HasSubstr("-$5.001"));
    EXPECT_THAT(Run({"list", "--format", "json"}).out, HasSubstr("\"UnitPrice\": \"12.3456\""));
}

class GermanListCommandTest : public ProgramFixture
{
protected:
    GermanListCommandTest() : ProgramFixture("de_DE.UTF-8") {}
};

TEST_F(GermanListCommandTest, ShowsPricesInTheLocalesFormAndJsonWithAPoint)
{
    WriteSmallCatalogue();
    EXPECT_THAT(Run({"list", "--limit", "1"}).out, HasSubstr("1.234,50 \xE2\x82\xAC"));
    EXPECT_THAT(Run({"list", "--limit", "1", "--format", "json"}).out,
                HasSubstr("\"UnitPrice\": \"1234.5\""));
}

TEST_F(GermanListCommandTest, TakesPricesInTheLocalesForm)
{
    EXPECT_EQ(Run({"add", "--name", "a", "--price", "1.234,50"}).status, kSucceeded);
    EXPECT_EQ(SavedRows().at(0).price, 12'345'000);
    const Outcome outcome = Run({"add", "--name", "a", "--price", "1,234.50"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("1.234,50"));
}

class FindCommandTest : public ProgramFixture
{
protected:
    [[nodiscard]] std::vector<std::string> Found(const std::string& text, const char* by = "name") const
    {
        const Outcome outcome = Run({"find", "--by", by, "--format", "csv", "--", text});
        EXPECT_EQ(outcome.status, kSucceeded);
        std::vector<std::string> rowIDs;
        std::istringstream lines(outcome.out);
        std::string line;
        std::getline(lines, line);
        while (std::getline(lines, line))
            rowIDs.push_back(line.substr(0, line.find(',')));
        return rowIDs;
    }
};

TEST_F(FindCommandTest, FindsNamesByTheirBeginningLetterCaseAside)
{
    WriteSmallCatalogue();
    EXPECT_THAT(Found("bOLT"), testing::ElementsAre("3", "5"));
    EXPECT_THAT(Found("bolt "), testing::ElementsAre("5"));
    EXPECT_THAT(Found("olt"), IsEmpty());
}

TEST_F(FindCommandTest, FindsPartNumbers)
{
    WriteSmallCatalogue();
    EXPECT_THAT(Found("b", "partnum"), testing::ElementsAre("3", "5"));
    EXPECT_THAT(Found("an-1", "partnum"), testing::ElementsAre("7"));
}

TEST_F(FindCommandTest, IsNotSilencedByAQuote)
{
    WriteCatalogue({{.rowID = 1, .name = "'tis", .partNum = "'1"},
                    {.rowID = 2, .name = "Miner's lamp", .partNum = "M'2"},
                    {.rowID = 3, .name = "Minerals"},
                    {.rowID = 4, .name = "miner's pick 6' long"}});
    EXPECT_THAT(Found("MINER'S"), testing::ElementsAre("2", "4"));
    EXPECT_THAT(Found("miner's pick 6' "), testing::ElementsAre("4"));
    EXPECT_THAT(Found("'"), testing::ElementsAre("1"));
    EXPECT_THAT(Found("'x"), IsEmpty());
    EXPECT_THAT(Found("m'", "partnum"), testing::ElementsAre("2"));
    EXPECT_THAT(Found("'", "partnum"), testing::ElementsAre("1"));
}

TEST_F(FindCommandTest, TakesEveryOtherCharacterForItself)
{
    WriteCatalogue(
        {{.rowID = 1, .name = "100% wool"}, {.rowID = 2, .name = "*star"}, {.rowID = 3, .name = "-x"}});
    EXPECT_THAT(Found("*"), testing::ElementsAre("2"));
    EXPECT_THAT(Found("%"), IsEmpty());
    EXPECT_THAT(Found("100%"), testing::ElementsAre("1"));
    EXPECT_THAT(Found("-x"), testing::ElementsAre("3"));
}

TEST_F(FindCommandTest, TakesTheNameOfACommandForAText)
{
    WriteCatalogue({{.rowID = 1, .name = "list of things"}});
    EXPECT_THAT(Run({"find", "list"}).out, HasSubstr("list of things"));
}

TEST_F(FindCommandTest, SaysThatNothingBeginsSo)
{
    WriteSmallCatalogue();
    const Outcome outcome = Run({"find", "x'y", "--by", "partnum", "--format", "json"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "[]\n");
    EXPECT_THAT(outcome.err, HasSubstr("no product has a part number that begins with 'x'y'"));
}

class ShowCommandTest : public ProgramFixture
{
};

TEST_F(ShowCommandTest, PrintsEveryColumnOnALineOfItsOwn)
{
    WriteSmallCatalogue();
    EXPECT_EQ(Run({"show", "7"}).out, "RowID         7\n"
                                      "UniqueID      70\n"
                                      "Status        1\n"
                                      "Name          Anvil\n"
                                      "Key           K7\n"
                                      "PartNum       AN-1\n"
                                      "UnitPrice     $1,234.50\n"
                                      "Note          heavy\n"
                                      "DirtySession  no\n"
                                      "DirtySync     yes\n");
}

TEST_F(ShowCommandTest, PrintsOneObjectOrLine)
{
    WriteSmallCatalogue();
    const std::string json = Run({"show", "3", "--format", "json"}).out;
    EXPECT_THAT(json, testing::StartsWith("{\"RowID\": 3, "));
    EXPECT_THAT(json, testing::EndsWith("\"DirtySync\": false}\n"));
    EXPECT_EQ(Run({"show", "3", "--format", "csv"}).out,
              std::string(kCsvTitles) + "3,0,0,Bolt,\"\",BO-1,$0.50,\"\",false,false\n");
}

TEST_F(ShowCommandTest, SaysThatNoProductHasTheIdentifier)
{
    for (const bool isEmpty : {true, false}) {
        if (!isEmpty)
            WriteSmallCatalogue();
        const Outcome outcome = Run({"show", "8"});
        EXPECT_EQ(outcome.status, kFailed);
        EXPECT_THAT(outcome.err, testing::StartsWith("kstnedit: no product has the row identifier 8"));
        EXPECT_THAT(outcome.out, IsEmpty());
    }
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
