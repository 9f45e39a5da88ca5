// SPDX-License-Identifier: MIT
#include "kstnedit/Program.h"

#include "apps/kstnedit/ProgramFixture.h"
#include "kstnedit/CommandTable.h"
#include "kstnedit/Failure.h"

#include <filesystem>
#include <streambuf>

namespace KestrinProductEditor::CommandLine {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class ProgramTest : public ProgramFixture
{
};

TEST_F(ProgramTest, HasTheCommandsInTheirOrder)
{
    std::vector<std::string> names;
    for (const std::unique_ptr<Command>& command : MakeCommands())
        names.emplace_back(command->Name());
    EXPECT_THAT(names, testing::ElementsAre("edit", "list", "find", "show", "add", "set", "delete", "import",
                                            "export", "backup", "restore", "check"));
}

TEST_F(ProgramTest, TellsAnExampleInTheHelpOfEachCommand)
{
    for (const std::unique_ptr<Command>& command : MakeCommands()) {
        const std::string name(command->Name());
        const Outcome outcome = RunBare({name, "--help"});
        EXPECT_EQ(outcome.status, kSucceeded);
        EXPECT_THAT(outcome.out, HasSubstr("Example:\n  kstnedit " + name)) << name;
        EXPECT_THAT(outcome.out, HasSubstr(std::string(command->Description())));
        EXPECT_THAT(outcome.err, IsEmpty());
    }
}

TEST_F(ProgramTest, NamesEachCommandInItsOwnHelp)
{
    const Outcome outcome = RunBare({"--help"});
    EXPECT_EQ(outcome.status, kSucceeded);
    for (const std::unique_ptr<Command>& command : MakeCommands())
        EXPECT_THAT(outcome.out, HasSubstr("\n  " + std::string(command->Name()) + " "));
}

TEST_F(ProgramTest, TellsItsVersion)
{
    const Outcome outcome = RunBare({"--version"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "kstnedit " KSTNEDIT_VERSION "\n");
}

struct Misuse
{
    std::vector<std::string> arguments;
    std::string message;
};

TEST_F(ProgramTest, EndsWithTwoWhereItIsMisusedAndTouchesNothing)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    const Misuse misuses[] = {
        {{}, "kstnedit: no command is given\nRun 'kstnedit --help'"},
        {{"bogus"}, "kstnedit: there is no command 'bogus'"},
        {{"list", "--bogus"}, "--bogus\nRun 'kstnedit list --help'"},
        {{"list", "extra"}, "extra"},
        {{"list", "--offset", "-1"}, "'-1' is no number from 0"},
        {{"list", "--limit", "1x"}, "'1x' is no number from 0"},
        {{"list", "--limit", "2147483648"}, "'2147483648' is no number"},
        {{"list", "--format", "xml"}, "xml"},
        {{"find"}, "TEXT is required"},
        {{"find", ""}, "TEXT is empty"},
        {{"find", "x", "--by", "price"}, "price"},
        {{"show"}, "ROWID is required"},
        {{"show", "seven"}, "'seven' is no row identifier"},
        {{"show", "0x7"}, "'0x7' is no row identifier"},
        {{"add"}, "--name is required"},
        {{"set", "7"}, "nothing to change"},
        {{"delete"}, "ROWID"},
        {{"delete", "7", "x"}, "'x' is no row identifier"},
        {{"import"}, "FILE is required"},
        {{"import", "x.csv", "--no-titles"}, "--no-titles needs --map"},
        {{"import", "x.csv", "--map", "price=1"}, "no column for the name"},
        {{"import", "x.csv", "--map", "name=1,prize=2"}, "no field 'prize'"},
        {{"import", "x.csv", "--map", "name=1,name=2"}, "'name' is given twice"},
        {{"import", "x.csv", "--map", "1,2"}, "'1' is no mapping"},
        {{"export"}, "FILE is required"},
        {{"edit", "--import", ""}, "--import names no file"},
        {{"edit", "price-list.csv"}, "price-list.csv"},
        {{"backup"}, "FILE is required"},
        {{"restore"}, "FILE is required"},
        {{"restore", "a", "b"}, "b"},
    };
    for (const Misuse& misuse : misuses) {
        const Outcome outcome = Run(misuse.arguments);
        EXPECT_EQ(outcome.status, kMisused) << testing::PrintToString(misuse.arguments);
        EXPECT_THAT(outcome.err, HasSubstr(misuse.message));
        EXPECT_THAT(outcome.err, testing::StartsWith("kstnedit: "));
        EXPECT_THAT(outcome.out, IsEmpty());
    }
    EXPECT_EQ(CatalogueBytes(), before);
    EXPECT_THAT(DatabaseNames(), testing::ElementsAre("corvprd2.cpd"));
}

TEST_F(ProgramTest, RefusesAnEmptyCatalogueFolder)
{
    const Outcome outcome = RunBare({"--catalogue", "", "list"});
    EXPECT_EQ(outcome.status, kMisused);
    EXPECT_THAT(outcome.err, HasSubstr("--catalogue names no folder"));
}

TEST_F(ProgramTest, TakesTheCatalogueFolderFromTheEnvironment)
{
    WriteSmallCatalogue();
    const ScopedVariable variable("KSTNEDIT_CATALOGUE", m_database.string());
    EXPECT_THAT(RunBare({"list"}).out, HasSubstr("Anvil"));
}

TEST_F(ProgramTest, PrefersTheOptionToTheEnvironment)
{
    WriteSmallCatalogue();
    const ScopedVariable variable("KSTNEDIT_CATALOGUE", PathOf("elsewhere"));
    EXPECT_THAT(Run({"list"}).out, HasSubstr("Anvil"));
}

TEST_F(ProgramTest, TakesTheOptionBehindTheCommandToo)
{
    WriteSmallCatalogue();
    EXPECT_THAT(RunBare({"list", "--catalogue", m_database.string()}).out, HasSubstr("Anvil"));
}

TEST_F(ProgramTest, KeepsItsOwnCatalogueInTheUsersDataFolder)
{
    const ScopedVariable data("XDG_DATA_HOME", PathOf("data"));
    EXPECT_EQ(RunBare({"add", "--name", "Anvil"}).status, kSucceeded);
    EXPECT_TRUE(std::filesystem::exists(m_folder.Path() / "data/Salvo/Database/corvprd2.cpd"));
    EXPECT_THAT(RunBare({"list"}).out, HasSubstr("Anvil"));
}

TEST_F(ProgramTest, BeginsWithAnEmptyCatalogueOfItsOwn)
{
    const ScopedVariable data("XDG_DATA_HOME", std::nullopt);
    const ScopedVariable home("HOME", PathOf("home"));
    const Outcome outcome = RunBare({"list", "--format", "json"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "[]\n");
    EXPECT_TRUE(std::filesystem::is_directory(m_folder.Path() / "home/.local/share/Salvo/Database"));
}

TEST_F(ProgramTest, SaysThatNoFolderIsKnown)
{
    const ScopedVariable data("XDG_DATA_HOME", std::nullopt);
    const ScopedVariable home("HOME", std::nullopt);
    const Outcome outcome = RunBare({"list"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("Name one with --catalogue DIR"));
}

TEST_F(ProgramTest, MissesTheFolderWhereNothingBeginsACatalogue)
{
    const std::vector<std::vector<std::string>> commands = {
        {"list"},        {"find", "x"},   {"show", "1"},          {"set", "1", "--name", "x"},
        {"delete", "1"}, {"export", "x"}, {"backup", PathOf("x")}};
    for (std::vector<std::string> arguments : commands) {
        arguments.insert(arguments.begin(), {"--catalogue", PathOf("nowhere")});
        const Outcome outcome = RunBare(arguments);
        EXPECT_EQ(outcome.status, kFailed) << testing::PrintToString(arguments);
        EXPECT_THAT(outcome.err, HasSubstr("nowhere' does not exist"));
        EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "nowhere"));
    }
}

TEST_F(ProgramTest, MakesTheFolderWhereACatalogueBegins)
{
    const Outcome outcome = RunBare({"--catalogue", PathOf("new/folder"), "add", "--name", "Anvil"});
    EXPECT_EQ(outcome.status, kSucceeded) << testing::PrintToString(outcome);
    EXPECT_TRUE(std::filesystem::exists(m_folder.Path() / "new/folder/corvprd2.cpd"));
}

TEST_F(ProgramTest, RefusesAFileWhereAFolderIsWanted)
{
    m_folder.Write("file", "x");
    for (const char* const command : {"list", "add"}) {
        const Outcome outcome = RunBare({"--catalogue", PathOf("file"), command, "--name", "x"});
        EXPECT_NE(outcome.status, kSucceeded);
    }
    const Outcome outcome = RunBare({"--catalogue", PathOf("file"), "list"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("is no folder"));
}

TEST_F(ProgramTest, RefusesABrokenCatalogueWithPlaceAndAdviceAndLeavesIt)
{
    WriteSmallCatalogue();
    const std::string broken = CatalogueBytes().substr(0, 200);
    m_folder.Write("list.csv", "Name\nAnvil\n");
    const std::vector<std::vector<std::string>> commands = {{"list"},
                                                            {"find", "x"},
                                                            {"show", "1"},
                                                            {"add", "--name", "x"},
                                                            {"set", "7", "--name", "x"},
                                                            {"delete", "7"},
                                                            {"import", PathOf("list.csv")},
                                                            {"export", PathOf("out.csv")},
                                                            {"backup", PathOf("out.cpd")},
                                                            {"check"}};
    for (const std::string& bytes : {std::string(), broken, std::string("no catalogue at all")}) {
        WriteCatalogue(bytes);
        for (const std::vector<std::string>& arguments : commands) {
            const Outcome outcome = Run(arguments);
            EXPECT_EQ(outcome.status, kFailed) << arguments[0];
            EXPECT_THAT(outcome.err, HasSubstr("at byte "));
            EXPECT_THAT(outcome.err, HasSubstr("kstnedit restore FILE"));
            EXPECT_EQ(CatalogueBytes(), bytes);
        }
    }
    EXPECT_THAT(DatabaseNames(), testing::ElementsAre("corvprd2.cpd"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "out.csv"));
}

TEST_F(ProgramTest, LeavesTheCatalogueByteForByteWhereItOnlyReads)
{
    // Rows without a name would go when the catalogue is saved, and a sorted file is not what this one is.
    WriteCatalogue({{.rowID = 9, .name = "Zinc"}, {.rowID = 2, .name = " "}, {.rowID = 4, .name = "Anvil"}});
    const std::string before = CatalogueBytes();
    m_folder.Write("list.csv", "Name,Price\nBolt,1\nNut,x\n");
    const std::vector<std::vector<std::string>> commands = {
        {"list"},
        {"find", "a"},
        {"find", "a'"},
        {"show", "9"},
        {"show", "77"},
        {"set", "77", "--name", "x"},
        {"set", "9", "--name", "  "},
        {"add", "--name", "x", "--price", "1e3"},
        {"delete", "9", "77"},
        {"import", PathOf("list.csv"), "--dry-run"},
        {"import", PathOf("list.csv"), "--dry-run", "--replace"},
        {"import", PathOf("none.csv")},
        {"restore", PathOf("list.csv")},
        {"restore", PathOf("none.csv")},
        {"export", PathOf("out.csv")},
        {"export", m_folder.Path().string()},
        {"backup", PathOf("out.cpd")},
        {"check"}};
    for (const std::vector<std::string>& arguments : commands) {
        static_cast<void>(Run(arguments));
        EXPECT_EQ(CatalogueBytes(), before) << testing::PrintToString(arguments);
    }
}

TEST_F(ProgramTest, MakesNoFileWhereItOnlyReads)
{
    EXPECT_EQ(Run({"list"}).status, kSucceeded);
    EXPECT_EQ(Run({"find", "x"}).status, kSucceeded);
    EXPECT_EQ(Run({"show", "1"}).status, kFailed);
    EXPECT_THAT(DatabaseNames(), IsEmpty());
}

TEST_F(ProgramTest, SaysThatTheCodePageIsNotKnown)
{
    const ScopedVariable codePage("KSTNEDIT_CODEPAGE", "klingon");
    const Outcome outcome = Run({"list"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("klingon"));
}

TEST_F(ProgramTest, SpeaksTheTerminalsCodePageWhateverFilesHave)
{
    m_terminal = "windows-1252";
    ASSERT_EQ(Run({"add", "--name", "Caf\xE9", "--note", "\x80"}).status, kSucceeded);
    EXPECT_EQ(SavedRows().at(0).name, "Caf\xC3\xA9");
    EXPECT_EQ(SavedRows().at(0).note, "\xE2\x82\xAC");
    EXPECT_THAT(Run({"list"}).out, HasSubstr("Caf\xE9"));
    EXPECT_THAT(Run({"list", "--format", "json"}).out, HasSubstr("Caf\\u00e9"));
    m_terminal = "utf-8";
    EXPECT_THAT(Run({"list"}).out, HasSubstr("Caf\xC3\xA9"));
}

class FailingBuffer final : public std::streambuf
{
public:
    explicit FailingBuffer(std::optional<OutputFailure::Cause> cause) : m_cause(cause) {}

protected:
    int_type overflow(int_type /*character*/) override
    {
        if (m_cause)
            throw OutputFailure(*m_cause, "No space left on device");
        return traits_type::eof();
    }

private:
    std::optional<OutputFailure::Cause> m_cause;
};

struct OutputCase
{
    std::optional<OutputFailure::Cause> cause;
    std::string message;
};

TEST_F(ProgramTest, EndsWithOneWhenItsOutputIsNotTaken)
{
    WriteSmallCatalogue();
    const OutputCase cases[] = {
        {OutputFailure::Cause::ReaderIsGone, ""},
        {OutputFailure::Cause::Other, "kstnedit: cannot write the output: No space left on device\n"},
        {std::nullopt, "kstnedit: cannot write the output\n"}};
    for (const OutputCase& each : cases) {
        for (const char* const format : {"table", "csv", "json"}) {
            const ScopedTrace noTraceYet(nullptr);
            FailingBuffer buffer(each.cause);
            std::ostream out(&buffer);
            std::ostringstream err;
            Program program({.out = out, .err = err, .codePage = CodePage::Named("utf-8")});
            EXPECT_EQ(program.Run({"--catalogue", m_database.string(), "list", "--format", format}), kFailed);
            EXPECT_EQ(err.str(), each.message);
        }
    }
}

TEST_F(ProgramTest, ShowsNoControlCharacterOfAnArgument)
{
    const Outcome outcome = Run({"find", "a\x1B[31m\nb"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.err.find('\x1B'), std::string::npos);
    EXPECT_THAT(outcome.err, HasSubstr("a\xE2\x90\x9B[31m\xE2\x90\xA4"
                                       "b"));
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
