// SPDX-License-Identifier: MIT
#include "apps/kstnedit/ProgramFixture.h"
#include "fake/FailingFileSystem.h"
#include "kstnedit/Failure.h"

#include <filesystem>

namespace KestrinProductEditor::CommandLine {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class ImportCommandTest : public ProgramFixture
{
protected:
    /// Imports a file of that content.
    [[nodiscard]] Outcome Import(std::string_view content, std::vector<std::string> options = {}) const
    {
        m_folder.Write("list.csv", content);
        options.insert(options.begin(), {"import", PathOf("list.csv")});
        return Run(std::move(options));
    }

    [[nodiscard]] std::vector<std::string> SavedNames() const
    {
        std::vector<std::string> names;
        for (const ProductRow& row : SavedRows())
            names.push_back(row.name);
        return names;
    }
};

TEST_F(ImportCommandTest, GuessesTheColumnsAndTellsThem)
{
    const Outcome outcome = Import("Part No,Product,Remarks,Price\nA-1,Anvil,heavy,\"$1,234.50\"\n");
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "1 read, 1 imported, 0 rejected\n");
    EXPECT_EQ(outcome.err, "name:     column 2 'Product' (guessed)\n"
                           "part-num: column 1 'Part No' (guessed)\n"
                           "price:    column 4 'Price' (guessed)\n"
                           "note:     column 3 'Remarks' (guessed)\n");
    const ProductRow row = SavedRows().at(0);
    EXPECT_EQ(row.name, "Anvil");
    EXPECT_EQ(row.partNum, "A-1");
    EXPECT_EQ(row.price, 12'345'000);
    EXPECT_EQ(row.note, "heavy");
}

TEST_F(ImportCommandTest, TakesNumbersAndTitlesForColumns)
{
    const Outcome outcome =
        Import("x,\"Price, net\",y\n1,2.50,Bolt\n", {"--map", "name=3,price=Price, net,part-num= X "});
    EXPECT_EQ(outcome.status, kSucceeded) << testing::PrintToString(outcome);
    EXPECT_THAT(outcome.err, HasSubstr("name:     column 3 'y' (chosen)\n"));
    EXPECT_THAT(outcome.err, HasSubstr("note:     no column\n"));
    EXPECT_EQ(SavedRows().at(0).price, 25'000);
    EXPECT_EQ(SavedRows().at(0).partNum, "1");
}

TEST_F(ImportCommandTest, ReadsAFileWithoutTitles)
{
    const Outcome outcome = Import("Bolt,1\nNut,2\n", {"--no-titles", "--map", "name=1,price=2"});
    EXPECT_EQ(outcome.out, "2 read, 2 imported, 0 rejected\n");
    EXPECT_THAT(outcome.err, HasSubstr("name:     column 1 (chosen)\n"));
}

TEST_F(ImportCommandTest, NamesTheTitlesItFoundWhenNoneTellsTheName)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    const Outcome outcome = Import("Colour,Weight\nred,3\n");
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("It has 'Colour', 'Weight'. Choose the columns with --map"));
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(ImportCommandTest, RefusesATitleThatIsNotThere)
{
    const Outcome outcome = Import("Colour,Weight\nred,3\n", {"--map", "name=Color"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err,
                HasSubstr("no column has the title 'Color'. The first line has 'Colour', 'Weight'"));
    EXPECT_EQ(Import("a\n", {"--no-titles", "--map", "name=a"}).status, kMisused);
    EXPECT_EQ(Import("a\n", {"--map", "name=0"}).status, kMisused);
    EXPECT_EQ(Import("a\n", {"--map", "name=99999999999"}).status, kMisused);
}

TEST_F(ImportCommandTest, CountsRejectedLinesAndShowsTheFirst)
{
    std::string content = "Name,Price\n";
    for (int i = 0; i < 7; ++i)
        content += "Bolt,x" + std::to_string(i) + "\n";
    const Outcome outcome = Import(content + "Nut,1\n\n");
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "9 read, 1 imported, 8 rejected\n");
    EXPECT_THAT(outcome.err, HasSubstr("kstnedit: 8 lines rejected:\n"
                                       "  line 2: the price 'x0' is not an amount of money\n"));
    EXPECT_THAT(outcome.err, HasSubstr("  line 6: "));
    EXPECT_EQ(outcome.err.find("line 7"), std::string::npos);
    EXPECT_THAT(outcome.err, HasSubstr("  and 3 lines more\n"));
}

TEST_F(ImportCommandTest, WritesRejectedLinesAsTheyStand)
{
    const Outcome outcome =
        Import("Name,Price\n\"a \"\"b\",x\n\nok,1\nCaf\xE9,,,\r\n", {"--rejects", PathOf("rejects.csv")});
    EXPECT_EQ(outcome.out, "4 read, 1 imported, 3 rejected\n");
    EXPECT_EQ(m_folder.Read("rejects.csv"),
              "Line,Reason,Text\n"
              "2,the price 'x' is not an amount of money,\"\"\"a \"\"\"\"b\"\",x\"\n"
              "3,the line is empty,\"\"\n"
              "5,the price '' is not an amount of money,\"Caf\xE9,,,\"\n");
}

TEST_F(ImportCommandTest, ImportsNothingWhenTheRejectsCannotBeWritten)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    const Outcome nowhere = Import("Name\nx\n", {"--rejects", PathOf("no/such/file")});
    EXPECT_EQ(nowhere.status, kFailed);
    EXPECT_EQ(CatalogueBytes(), before);

    std::string content = "Name,Price\nok,1\n";
    for (int i = 0; i < 3000; ++i)
        content += "a name that fills the buffer,no price at all\n";
    FailingFileSystem disk(PlatformFileSystem());
    const ScopedFileSystem scope(disk);
    disk.FailAfterWriting(1000);
    const Outcome full = Import(content, {"--rejects", PathOf("rejects.csv")});
    EXPECT_EQ(full.status, kFailed);
    EXPECT_THAT(full.err, HasSubstr("the rejected lines could not be written, and nothing was imported"));
    EXPECT_THAT(full.err, HasSubstr("Free some space"));
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(ImportCommandTest, DoesNotWriteRejectsOverAFileThatIsNeeded)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    EXPECT_EQ(Import("Name\nx\n", {"--rejects", PathOf("list.csv")}).status, kFailed);
    EXPECT_EQ(m_folder.Read("list.csv"), "Name\nx\n");
    EXPECT_EQ(Import("Name\nx\n", {"--rejects", (m_database / "corvprd2.cpd").string()}).status, kFailed);
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(ImportCommandTest, SaysHowManyHaveNoName)
{
    // The two that were there before go as well, but they are not of this import.
    WriteCatalogue({{.rowID = 1, .name = ""}, {.rowID = 2, .name = " "}, {.rowID = 3, .name = " led"}});
    const Outcome outcome = Import("Name,Price\n  ,1\nBolt,2\n~,3\nNut,x\n \xC2\xA0,4\n");
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "5 read, 2 imported, 1 rejected, 2 without a name: not kept\n");
    EXPECT_THAT(SavedNames(), testing::ElementsAre(" led", " \xC2\xA0", "Bolt"));
}

TEST_F(ImportCommandTest, SaysWhichPricesBecameZero)
{
    const Outcome outcome = Import("Name,Price\na,1\nb,-5\nc,4294967296\nd,(1)\ne,x\n");
    EXPECT_EQ(outcome.out, "5 read, 4 imported, 1 rejected\n");
    EXPECT_THAT(outcome.err, HasSubstr("3 lines (the first is line 3): the price is below zero or above "
                                       "$4,294,967,295.99; the product has the price $0.00"));
    EXPECT_EQ(SavedRows().at(1).price, 0);
}

TEST_F(ImportCommandTest, WarnsOfLinesWithMoreColumnsThanTitles)
{
    const Outcome outcome = Import("Name,Price\na,$1,234.00\nb,2\n");
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_THAT(outcome.err, HasSubstr("1 line (the first is line 2): more columns than titles"));
    EXPECT_EQ(Import("Name,Price\na,1\n").err.find("more columns"), std::string::npos);
}

TEST_F(ImportCommandTest, WarnsOfThemWhenThePriceColumnWasChosenByItsTitleToo)
{
    m_folder.Write("in.csv", "description,charge\nA,$5.00\nB,$1,973.00\n");
    const Outcome chosen = Run({"import", PathOf("in.csv"), "--map", "name=description,price=charge"});
    EXPECT_THAT(chosen.err, HasSubstr("more columns than titles"));
    m_folder.Write("preamble.csv", "Our prices\nA,5.00\n");
    const Outcome preamble = Run({"import", PathOf("preamble.csv"), "--map", "name=1,price=2"});
    EXPECT_THAT(preamble.err, Not(HasSubstr("more columns than titles")));
}

TEST_F(ImportCommandTest, TellsWhichTextsWereCut)
{
    const std::string full(255, 'n');
    m_folder.Write("in.csv",
                   "name,note\n" + full + ",a\n" + full + "n,b\nBolt," + std::string(4096, 'x') + "\n");
    const Outcome outcome = Run({"import", PathOf("in.csv")});
    EXPECT_EQ(outcome.out, "3 read, 3 imported, 0 rejected\n");
    EXPECT_THAT(outcome.err, HasSubstr("2 lines (the first is line 3): a text is longer than its field"));
}

TEST_F(ImportCommandTest, TellsOfAQuotationMarkThatIsNotClosed)
{
    m_folder.Write("in.csv", "name,part,price\nTape 3\",T-3,4.00\nBolt,B-1,1.00\n");
    const Outcome outcome = Run({"import", PathOf("in.csv")});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_THAT(outcome.err, HasSubstr("(a quotation mark is not closed)"));
}

TEST_F(ImportCommandTest, RefusesOptionsThatAreEmpty)
{
    m_folder.Write("in.csv", "name\nBolt\n");
    for (const char* const option : {"--map", "--rejects"}) {
        const Outcome outcome = Run({"import", PathOf("in.csv"), option, ""});
        EXPECT_EQ(outcome.status, kMisused) << option;
        EXPECT_THAT(outcome.err, HasSubstr(std::string(option) + " names no"));
    }
}

TEST_F(ImportCommandTest, SaysThatColumnsAreToBeSeparatedByCommas)
{
    for (const char* const text : {"name;price\nBolt;1\n", "name\tprice\nBolt\t1\n"}) {
        m_folder.Write("in.csv", text);
        const Outcome outcome = Run({"import", PathOf("in.csv")});
        EXPECT_EQ(outcome.status, kFailed);
        EXPECT_THAT(outcome.err, HasSubstr("does not separate its columns by commas"));
    }
}

TEST_F(ImportCommandTest, AddsToWhatIsThereOrReplacesIt)
{
    WriteSmallCatalogue();
    ASSERT_EQ(Import("Name\nNut\n").status, kSucceeded);
    EXPECT_THAT(SavedNames(), testing::ElementsAre("Anvil", "Bolt", "bolt cutter", "Nut"));
    ASSERT_EQ(Import("Name\nNail\n", {"--replace"}).status, kSucceeded);
    EXPECT_THAT(SavedNames(), testing::ElementsAre("Nail"));
}

TEST_F(ImportCommandTest, KeepsTheCatalogueWhenThereIsNothingToImport)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    for (const char* const content : {"Name,Price\n", "Name,Price\na,x\n", "Name,Price\n  ,1\n"}) {
        for (const bool replaces : {true, false}) {
            const Outcome outcome = Import(content, replaces ? std::vector<std::string>{"--replace"}
                                                             : std::vector<std::string>());
            EXPECT_EQ(outcome.status, kFailed) << content;
            EXPECT_THAT(outcome.err, HasSubstr("the catalogue stays as it is"));
            EXPECT_EQ(CatalogueBytes(), before);
        }
    }
}

TEST_F(ImportCommandTest, ReportsTheSameInADryRun)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    const char* const content = "Name,Price\na,1\nb,x\n ,2\nc,-1\nd,1,5\n";
    for (std::vector<std::string> options : std::vector<std::vector<std::string>>{{}, {"--replace"}}) {
        WriteSmallCatalogue();
        options.push_back("--dry-run");
        const Outcome dry = Import(content, options);
        EXPECT_EQ(CatalogueBytes(), before);
        options.pop_back();
        const Outcome real = Import(content, options);
        EXPECT_EQ(real.out, "5 read, 3 imported, 1 rejected, 1 without a name: not kept\n");
        EXPECT_EQ(dry.out, real.out.substr(0, real.out.size() - 1) + " (dry run: nothing was changed)\n");
        EXPECT_EQ(dry.err, real.err);
        EXPECT_EQ(dry.status, real.status);
        EXPECT_NE(CatalogueBytes(), before);
    }
}

TEST_F(ImportCommandTest, MakesNoCatalogueInADryRun)
{
    EXPECT_EQ(Import("Name\na\n", {"--dry-run"}).status, kSucceeded);
    EXPECT_THAT(DatabaseNames(), IsEmpty());
    m_folder.Write("list.csv", "Name\na\n");
    EXPECT_EQ(RunBare({"--catalogue", PathOf("new"), "import", PathOf("list.csv"), "--dry-run"}).status,
              kSucceeded);
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "new"));
}

TEST_F(ImportCommandTest, SaysWhyAFileCannotBeRead)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    EXPECT_THAT(Run({"import", PathOf("none.csv")}).err, HasSubstr("Check the name for a typing error"));
    EXPECT_THAT(Run({"import", m_folder.Path().string()}).err, HasSubstr("it is a folder"));
    EXPECT_THAT(Run({"import", "/dev/null"}).err, HasSubstr("it can be read only once"));
    m_folder.Write("list.csv", "Name,Price\na,1\n");
    FailingFileSystem disk(PlatformFileSystem());
    const ScopedFileSystem scope(disk);
    disk.FailAfterReading(before.size() + 20); // the titles and the catalogue, but not the import
    const Outcome outcome = Run({"import", PathOf("list.csv")});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("nothing was imported"));
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(ImportCommandTest, NeitherCrashesNorLosesAProductOverHostileFiles)
{
    WriteSmallCatalogue();
    std::string binary = "%PDF-1.7\n";
    for (int i = 0; i < 100'000; ++i)
        binary.push_back(static_cast<char>(i * 7919 % 251));
    std::string utf16 = "\xFF\xFE";
    for (const char character : std::string("Name,Price\r\nBolt,1\r\n")) {
        utf16.push_back(character);
        utf16.push_back('\0');
    }
    const std::pair<std::string, std::string> readable[] = {
        {utf16, "1 read, 1 imported, 0 rejected\n"},
        {"\xEF\xBB\xBFName,Price\nBolt,1", "1 read, 1 imported, 0 rejected\n"},
        {"Name,Price\rBolt,1\rNut,2", "2 read, 2 imported, 0 rejected\n"},
        {"Name,Price\n\"Bolt,1", "1 read, 0 imported, 1 rejected\n"},
        {std::string("Name,Price\nBo\0lt,1\n", 18), "1 read, 1 imported, 0 rejected\n"},
        {"Name,Price\n" + std::string(1'000'000, 'x') + ",1\n", "1 read, 1 imported, 0 rejected\n"},
        {"Name,Price\nBolt," + std::string(1'000'000, '9') + "\n", "1 read, 0 imported, 1 rejected\n"},
    };
    for (const auto& [content, counts] : readable) {
        const Outcome outcome = Import(content, {"--dry-run"});
        EXPECT_THAT(outcome.out, testing::StartsWith(counts.substr(0, counts.size() - 1)));
        EXPECT_LT(outcome.err.size(), 4000U);
    }
    const std::string before = CatalogueBytes();
    for (const std::string& content : {std::string(), binary, std::string("\n\n\n"), std::string(1000, '\0'),
                                       std::string(1'000'000, ',')}) {
        EXPECT_EQ(Import(content).status, kFailed);
        EXPECT_EQ(CatalogueBytes(), before);
    }
}

TEST_F(ImportCommandTest, ReadsBytesOfTheSetCodePage)
{
    const ScopedVariable codePage("KSTNEDIT_CODEPAGE", "windows-1252");
    const Outcome outcome = Import("Name,Price\nCaf\xE9,1\nCaf\xC3\xA9,x\n", {"--rejects", PathOf("r.csv")});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_THAT(Run({"list"}).out, HasSubstr("Caf\xC3\xA9 "));
    EXPECT_THAT(m_folder.Read("r.csv"), HasSubstr("\"Caf\xC3\xA9,x\""));
}

TEST_F(ImportCommandTest, ShowsAndWipesABarOnATerminal)
{
    m_errColumns = 30;
    const std::string err = Import("Name\na\nb\n").err;
    EXPECT_THAT(err, HasSubstr("\r["));
    EXPECT_THAT(err, testing::EndsWith("\r" + std::string(29, ' ') + "\r"));
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
