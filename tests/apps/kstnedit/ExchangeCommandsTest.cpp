// SPDX-License-Identifier: MIT
#include "apps/kstnedit/ProgramFixture.h"
#include "fake/FailingFileSystem.h"
#include "kstnedit/Failure.h"

#include <filesystem>

namespace KestrinProductEditor::CommandLine {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class ExportCommandTest : public ProgramFixture
{
};

TEST_F(ExportCommandTest, WritesTheCsvOfAllProducts)
{
    WriteSmallCatalogue();
    const Outcome outcome = Run({"export", PathOf("out.csv")});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "3 products exported\n");
    EXPECT_THAT(outcome.err, IsEmpty());
    EXPECT_EQ(m_folder.Read("out.csv"), "\"Name\",\"PartNum\",\"UnitPrice\",\"Note\"\r\n"
                                        "\"Anvil\",\"AN-1\",\"$1,234.50\",\"heavy\"\r\n"
                                        "\"Bolt\",\"BO-1\",\"$0.50\",\"\"\r\n"
                                        "\"bolt cutter\",\"BC-9\",\"$19.90\",\"\"\r\n");
}

TEST_F(ExportCommandTest, IsReadBackByAnImportWithoutAMap)
{
    WriteSmallCatalogue();
    ASSERT_EQ(Run({"export", PathOf("out.csv")}).status, kSucceeded);
    EXPECT_EQ(Run({"import", PathOf("out.csv"), "--replace"}).out, "3 read, 3 imported, 0 rejected\n");
    EXPECT_EQ(SavedRows().at(0).partNum, "AN-1");
    EXPECT_EQ(SavedRows().at(0).price, 12'345'000);
    EXPECT_EQ(SavedRows().at(0).note, "heavy");
}

TEST_F(ExportCommandTest, SaysWhatWhereAndWhatToDoWhenItFails)
{
    WriteSmallCatalogue();
    const Outcome ontoFolder = Run({"export", m_folder.Path().string()});
    EXPECT_EQ(ontoFolder.status, kFailed);
    EXPECT_THAT(ontoFolder.err, HasSubstr("the export to '" + m_folder.Path().string() + "' failed: "));
    EXPECT_THAT(ontoFolder.err, HasSubstr("Name another file."));
    const Outcome nowhere = Run({"export", PathOf("no/such/out.csv")});
    EXPECT_EQ(nowhere.status, kFailed);
    EXPECT_THAT(nowhere.err, HasSubstr("create the folder first"));
}

TEST_F(ExportCommandTest, IsToldWhenTheDiskIsFullOrReadOnly)
{
    WriteSmallCatalogue();
    FailingFileSystem disk(PlatformFileSystem());
    const ScopedFileSystem scope(disk);
    disk.FailAfterWriting(10);
    const Outcome full = Run({"export", PathOf("out.csv")});
    EXPECT_EQ(full.status, kFailed);
    EXPECT_THAT(full.err, HasSubstr("Free some space"));
    EXPECT_THAT(full.out, IsEmpty());
    disk.Heal();
    const std::string before = CatalogueBytes();
    disk.FailAtClosing(kErrPermissionDenied);
    const Outcome readOnly = Run({"backup", PathOf("out.cpd")});
    EXPECT_EQ(readOnly.status, kFailed);
    EXPECT_THAT(readOnly.err, HasSubstr("Check the permissions"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "out.cpd"));
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(ExportCommandTest, DoesNotTakeThePlaceOfTheCatalogue)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    std::filesystem::create_symlink(m_database / "corvprd2.cpd", m_folder.Path() / "link");
    const std::string paths[] = {(m_database / "corvprd2.cpd").string(),
                                 (m_database / "../db/./corvprd2.cpd").string(), PathOf("link")};
    for (const std::string& path : paths) {
        for (const char* const command : {"export", "backup"}) {
            const Outcome outcome = Run({command, path});
            EXPECT_EQ(outcome.status, kFailed) << path;
            EXPECT_THAT(outcome.err, HasSubstr("would take the place of the catalogue"));
            EXPECT_EQ(CatalogueBytes(), before);
        }
    }
}

TEST_F(ExportCommandTest, ShowsAndWipesABarOnATerminal)
{
    WriteSmallCatalogue();
    m_errColumns = 40;
    const std::string err = Run({"export", PathOf("out.csv")}).err;
    EXPECT_THAT(err, HasSubstr("\r[##########                      ] 33%"));
    EXPECT_THAT(err, HasSubstr("] 100%"));
    EXPECT_THAT(err, testing::EndsWith("\r" + std::string(39, ' ') + "\r"));
}

class BackupTest : public ProgramFixture
{
};

TEST_F(BackupTest, ComesBackByRestore)
{
    WriteSmallCatalogue();
    EXPECT_EQ(Run({"backup", PathOf("monday.cpd")}).out, "3 products written\n");
    ASSERT_EQ(Run({"delete", "3", "5", "7"}).status, kSucceeded);
    const Outcome outcome = Run({"restore", PathOf("monday.cpd")});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "3 products restored\n");
    EXPECT_EQ(SavedRows().at(0), (ProductRow{.rowID = 7,
                                             .name = "Anvil",
                                             .key = "K7",
                                             .partNum = "AN-1",
                                             .price = 12'345'000,
                                             .note = "heavy",
                                             .dirtySession = true,
                                             .dirtySync = true}));
}

TEST_F(BackupTest, BeginsACatalogueInANewFolder)
{
    WriteSmallCatalogue();
    ASSERT_EQ(Run({"backup", PathOf("monday.cpd")}).status, kSucceeded);
    EXPECT_EQ(RunBare({"--catalogue", PathOf("new"), "restore", PathOf("monday.cpd")}).status, kSucceeded);
    EXPECT_TRUE(std::filesystem::exists(m_folder.Path() / "new/corvprd2.cpd"));
}

TEST_F(BackupTest, LeavesTheCatalogueWhenTheBackupIsNone)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    m_folder.Write("text.cpd", "no catalogue");
    m_folder.Write("short.cpd", before.substr(0, before.size() - 1));
    const std::pair<std::string, std::string> cases[] = {
        {"text.cpd", "the catalogue was not replaced: "},
        {"short.cpd", "at byte "},
        {"missing.cpd", "there is no such file"},
        {".", "it is a folder"},
    };
    for (const auto& [name, message] : cases) {
        const Outcome outcome = Run({"restore", PathOf(name)});
        EXPECT_EQ(outcome.status, kFailed) << name;
        EXPECT_THAT(outcome.err, HasSubstr(message));
        EXPECT_THAT(outcome.err, HasSubstr(name));
        EXPECT_EQ(CatalogueBytes(), before);
    }
}

TEST_F(BackupTest, KeepsPathsThatAreNoValidText)
{
    WriteSmallCatalogue();
    const std::string odd = "m\xFFnday.cpd";
    ASSERT_EQ(Run({"backup", PathOf(odd)}).status, kSucceeded);
    EXPECT_TRUE(std::filesystem::exists(m_folder.Path() / odd));
    EXPECT_EQ(Run({"restore", PathOf(odd)}).status, kSucceeded);
}

class CheckCommandTest : public ProgramFixture
{
};

TEST_F(CheckCommandTest, SaysWhatACatalogueHolds)
{
    WriteSmallCatalogue();
    const Outcome outcome = Run({"check"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, (m_database / "corvprd2.cpd").string() + ": a product catalogue of " +
                               std::to_string(CatalogueBytes().size()) +
                               " bytes\n"
                               "rows: 3 (3 original, 0 changed, 0 new), and 0 deleted\n"
                               "columns: 10\n"
                               "  RowID         32-bit number, 4 bytes\n"
                               "  UniqueID      32-bit number, 4 bytes\n"
                               "  Status        32-bit number, 4 bytes\n"
                               "  Name          narrow text, 255 bytes\n"
                               "  Key           narrow text, 255 bytes\n"
                               "  PartNum       narrow text, 255 bytes\n"
                               "  UnitPrice     amount of money, 8 bytes\n"
                               "  Note          wide text, 4095 characters\n"
                               "  DirtySession  yes or no, 2 bytes\n"
                               "  DirtySync     yes or no, 2 bytes\n"
                               "row identifiers used more than once: none\n"
                               "rows without a name: none\n"
                               "texts longer than a product takes: none\n");
}

TEST_F(CheckCommandTest, NamesWhatIsOddInAFile)
{
    std::vector<ProductRow> rows = {{.rowID = 4, .name = "a"},
                                    {.rowID = 4, .name = "b"},
                                    {.rowID = 6, .name = "  "},
                                    {.rowID = 7, .name = "c", .note = std::string(4096, 'x')}};
    for (std::int32_t extra = 0; extra < 12; ++extra)
        rows.push_back({.rowID = 100 + extra});
    m_folder.Write("odd.cpd", CatalogueFileOf(rows));
    const Outcome outcome = Run({"check", PathOf("odd.cpd")});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_THAT(outcome.out, HasSubstr("row identifiers used more than once: 1\n  RowID 4: 2 rows\n"));
    EXPECT_THAT(outcome.out, HasSubstr("rows without a name: 13\n  RowID 6 (row 3)\n"));
    EXPECT_THAT(outcome.out, HasSubstr("  and 3 more\n"));
    EXPECT_THAT(outcome.out, HasSubstr("texts longer than a product takes: 1\n"
                                       "  RowID 7 (row 4): Note has 4096 characters, at most 4095 fit\n"));
}

TEST_F(CheckCommandTest, SaysWhereAndWhyAFileIsBroken)
{
    WriteSmallCatalogue();
    m_folder.Write("cut.cpd", CatalogueBytes().substr(0, 1));
    const Outcome outcome = Run({"check", PathOf("cut.cpd")});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("cut.cpd' is no catalogue, or is broken, at byte "));
    EXPECT_THAT(outcome.out, IsEmpty());
}

TEST_F(CheckCommandTest, MissesTheFile)
{
    EXPECT_EQ(Run({"check"}).status, kFailed);
    EXPECT_THAT(Run({"check", PathOf("none")}).err, HasSubstr("Check the name for a typing error"));
    EXPECT_THAT(Run({"check", m_folder.Path().string()}).err, HasSubstr("Name another file."));
    EXPECT_THAT(DatabaseNames(), IsEmpty());
}

class TraceTest : public ProgramFixture
{
};

TEST_F(TraceTest, AppendsNestedLinesToItsFile)
{
    WriteSmallCatalogue();
    ASSERT_EQ(Run({"--trace", PathOf("trace.log"), "show", "7"}).status, kSucceeded);
    const std::string first = m_folder.Read("trace.log");
    EXPECT_THAT(first, testing::StartsWith("\nkstnedit\n"
                                           "> KestrinProductMgr.ProductLkpMgr::Class_Initialize\n"
                                           "  > KestrinProductMgr.ProductLkpMgr::GetProductFilePath\n"
                                           "  < KestrinProductMgr.ProductLkpMgr::GetProductFilePath\n"));
    EXPECT_THAT(first, testing::EndsWith("< KestrinProductMgr.ProductLkpMgr::Class_Terminate\n"));
    ASSERT_EQ(Run({"--trace", PathOf("trace.log"), "show", "7"}).status, kSucceeded);
    EXPECT_EQ(m_folder.Read("trace.log"), first + first);
}

TEST_F(TraceTest, TellsNumberAndTextOfAnError)
{
    WriteCatalogue("broken");
    ASSERT_EQ(Run({"--trace", PathOf("trace.log"), "list"}).status, kFailed);
    const std::string trace = m_folder.Read("trace.log");
    EXPECT_THAT(trace, HasSubstr("  ! KestrinProductMgr.ProductLkpMgr::LoadProductRS 321 cannot read '"));
    EXPECT_THAT(trace, HasSubstr("\n! KestrinProductMgr.ProductLkpMgr::Class_Initialize 321 "));
}

TEST_F(TraceTest, ShowsAFailedSave)
{
    WriteSmallCatalogue();
    FailingFileSystem disk(PlatformFileSystem());
    const ScopedFileSystem scope(disk);
    disk.FailAtClosing();
    ASSERT_EQ(Run({"--trace", PathOf("trace.log"), "delete", "7"}).status, kFailed);
    EXPECT_THAT(m_folder.Read("trace.log"),
                HasSubstr("  ! KestrinProductMgr.ProductLkpMgr::SaveProductRS 57 "));
}

TEST_F(TraceTest, RefusesAFileThatCannotBeOpenedAndTheCatalogue)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    const Outcome nowhere = Run({"--trace", PathOf("no/such/trace"), "list"});
    EXPECT_EQ(nowhere.status, kFailed);
    EXPECT_THAT(nowhere.err, HasSubstr("cannot open '"));
    const Outcome catalogue = Run({"--trace", (m_database / "corvprd2.cpd").string(), "list"});
    EXPECT_EQ(catalogue.status, kFailed);
    EXPECT_THAT(catalogue.err, HasSubstr("into the catalogue"));
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(TraceTest, SaysThatItIsNotComplete)
{
    WriteSmallCatalogue();
    if (!std::filesystem::exists("/dev/full"))
        return;
    const Outcome outcome = Run({"--trace", "/dev/full", "list"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_THAT(outcome.err, HasSubstr("the trace is not complete"));
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
