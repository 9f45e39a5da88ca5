// SPDX-License-Identifier: MIT
#include "apps/kstnedit/ProgramFixture.h"
#include "fake/FailingFileSystem.h"
#include "kstnedit/Failure.h"
#include "kstnedit/Paths.h"
#include "platform/Text.h"
#include "support/CapturingToolkit.h"
#include "support/User.h"

#include <filesystem>

namespace KestrinProductEditor::CommandLine {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

class EditCommandTest : public ProgramFixture
{
protected:
    /// Gives the first product the note "!".
    void EditAnvil()
    {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->Click(u"txtNote");
        m_user->Type(u"!");
        m_user->Click(u"cmdSaveEdit");
    }

    std::unique_ptr<IUser> m_user = MakeUser();

private:
    ScopedVariable m_configuration{"XDG_CONFIG_HOME", PathOf("config")};
};

TEST_F(EditCommandTest, EditsTheCatalogueInAWindow)
{
    WriteSmallCatalogue();
    m_user->AtNextForm([this] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        m_user->Click(u"txtNote");
        m_user->Type(u"zinc");
        m_user->Click(u"cmdSaveEdit");
        m_user->Click(u"cmdSaveClose");
    });
    const Outcome outcome = Run({"edit"});
    EXPECT_EQ(outcome.status, kSucceeded) << testing::PrintToString(outcome);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_THAT(outcome.err, IsEmpty());
    const std::vector<ProductRow> rows = SavedRows();
    ASSERT_EQ(rows.size(), 3U);
    EXPECT_EQ(rows[1].name, "Bolt");
    EXPECT_EQ(rows[1].note, "zinc");
}

TEST_F(EditCommandTest, LeavesTheCatalogueByteForByteWhenTheChangesAreGivenUp)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    m_user->AtNextForm([this] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->Click(u"txtNote");
        m_user->Type(u"!");
        m_user->Click(u"cmdSaveEdit");
        m_user->WillAnswer(MessageAnswer::No);
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(Run({"edit"}).status, kSucceeded);
    EXPECT_EQ(CatalogueBytes(), before);
    EXPECT_THAT(DatabaseNames(), testing::ElementsAre("corvprd2.cpd"));
}

TEST_F(EditCommandTest, BeginsACatalogueInAFolderThatHasNone)
{
    m_user->AtNextForm([this] {
        EXPECT_EQ(m_user->TextOf(u"lblProductView"), u"Product List (Count:0)");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(Run({"edit"}).status, kSucceeded);
    EXPECT_THAT(SavedRows(), IsEmpty());
}

TEST_F(EditCommandTest, RefusesABrokenCatalogueWithTheReasonBeforeAnyWindow)
{
    WriteSmallCatalogue();
    for (const std::string& bytes : {std::string(), CatalogueBytes().substr(0, 200), std::string("none")}) {
        WriteCatalogue(bytes);
        const Outcome outcome = Run({"edit"});
        EXPECT_EQ(outcome.status, kFailed);
        EXPECT_THAT(outcome.err, HasSubstr("at byte "));
        EXPECT_THAT(outcome.err, HasSubstr("kstnedit restore FILE"));
        EXPECT_EQ(CatalogueBytes(), bytes);
    }
    EXPECT_THAT(m_user->OpenForms(), IsEmpty());
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(EditCommandTest, MissesAFolderThatIsNotThere)
{
    const Outcome outcome = RunBare({"--catalogue", PathOf("nowhere"), "edit"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("nowhere' does not exist"));
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "nowhere"));
}

TEST_F(EditCommandTest, BeginsWithTheImportOfAFile)
{
    WriteSmallCatalogue();
    m_folder.Write("list.csv", "Name,Price\nChisel,5\n");
    std::vector<std::u16string> chosen;
    const auto close = [&] {
        if (m_user->OpenForms().back() == u"frmProductImport")
            chosen.push_back(m_user->TextOf(u"txtImportFilePath"));
        m_user->Click(u"cmdCancel");
    };
    m_user->AtNextForm(close);
    m_user->AtNextForm(close);
    EXPECT_EQ(Run({"edit", "--import", PathOf("list.csv")}).status, kSucceeded);
    EXPECT_THAT(chosen, testing::ElementsAre(m_folder.File("list.csv")));
}

struct MissingImport
{
    std::string file;
    std::string message;
};

TEST_F(EditCommandTest, SaysBeforeAnyWindowThatThereIsNothingToImport)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    std::filesystem::create_directory(m_folder.Path() / "folder");
    const MissingImport cases[] = {
        {PathOf("none.csv"), "none.csv'"},
        {PathOf("no/list.csv"), "no/list.csv'"},
        {PathOf("folder"), "folder'"},
        {"/dev/null", "can be read only once"},
    };
    for (const MissingImport& each : cases) {
        const Outcome outcome = Run({"edit", "--import", each.file});
        EXPECT_EQ(outcome.status, kFailed);
        EXPECT_THAT(outcome.err, HasSubstr("import"));
        EXPECT_THAT(outcome.err, HasSubstr(each.message));
    }
    EXPECT_EQ(Run({"edit", "--import", ""}).status, kMisused);
    EXPECT_THAT(m_user->OpenForms(), IsEmpty());
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(EditCommandTest, SaysThatItNeedsAWindow)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    const NoWindows toolkit;
    const Outcome outcome = Run({"edit"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, testing::StartsWith("kstnedit: "));
    EXPECT_THAT(outcome.err, HasSubstr("The other commands of kstnedit need no window."));
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(EditCommandTest, SaysThatTheCatalogueWasNotSaved)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    FailingFileSystem failing(PlatformFileSystem());
    const ScopedFileSystem scope(failing);
    m_user->AtNextForm([&] {
        EditAnvil();
        failing.FailAfterWriting(10);
        m_user->Click(u"cmdSaveClose");
    });
    m_user->WillAnswer(MessageAnswer::Ok);
    const Outcome outcome = Run({"edit"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("the catalogue was not saved; it is as it was before"));
    EXPECT_EQ(CatalogueBytes(), before);
    ASSERT_EQ(m_user->Messages().size(), 1U);
    EXPECT_EQ(m_user->Messages()[0].style, kMessageExclamation);
    EXPECT_THAT(ToUtf8(m_user->Messages()[0].text), HasSubstr("The catalogue was not saved"));
    EXPECT_THAT(ToUtf8(m_user->Messages()[0].text), HasSubstr("Free some space"));
}

TEST_F(EditCommandTest, WritesNothingWhenNothingWasChanged)
{
    WriteSmallCatalogue();
    const FileStamp before = StampOf(CataloguePath());
    for (const char16_t* const button : {u"cmdSaveClose", u"cmdCancel"}) {
        m_user->AtNextForm([&] { m_user->Click(button); });
        EXPECT_EQ(Run({"edit"}).status, kSucceeded);
    }
    EXPECT_EQ(StampOf(CataloguePath()), before);
}

TEST_F(EditCommandTest, LeavesWhatAnotherProgramHasSavedWhenNothingWasChanged)
{
    WriteSmallCatalogue();
    m_user->AtNextForm([&] {
        WriteCatalogue({{.rowID = 1, .name = "Chisel"}});
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(Run({"edit"}).status, kSucceeded);
    EXPECT_THAT(SavedRows(), testing::ElementsAre(ProductRow{.rowID = 1, .name = "Chisel"}));
    EXPECT_THAT(DatabaseNames(), testing::ElementsAre("corvprd2.cpd"));
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(EditCommandTest, ReplacesWhatAnotherProgramHasSavedWhenTheUserSaysSo)
{
    WriteSmallCatalogue();
    m_user->AtNextForm([&] {
        EditAnvil();
        WriteCatalogue({{.rowID = 1, .name = "Chisel"}});
        m_user->Click(u"cmdSaveClose");
    });
    m_user->WillAnswer(MessageAnswer::Yes);
    EXPECT_EQ(Run({"edit"}).status, kSucceeded);
    EXPECT_EQ(SavedRows().at(0).name, "Anvil");
    EXPECT_THAT(DatabaseNames(), testing::ElementsAre("corvprd2.cpd"));
    ASSERT_EQ(m_user->Messages().size(), 1U);
    EXPECT_EQ(m_user->Messages()[0].style, kMessageYesNo | kMessageSecondDefault);
    EXPECT_THAT(ToUtf8(m_user->Messages()[0].text), HasSubstr("Another program has changed the catalogue"));
}

TEST_F(EditCommandTest, KeepsBothCataloguesWhenTheUserDoesNotSaySo)
{
    WriteSmallCatalogue();
    m_folder.Write("db/corvprd2 (2).cpd", "somebody's");
    m_user->AtNextForm([&] {
        EditAnvil();
        WriteCatalogue({{.rowID = 1, .name = "Chisel"}});
        m_user->Click(u"cmdSaveClose");
    });
    m_user->WillEscape();
    m_user->WillAnswer(MessageAnswer::Ok);
    EXPECT_EQ(Run({"edit"}).status, kSucceeded);
    EXPECT_THAT(SavedRows(), testing::ElementsAre(ProductRow{.rowID = 1, .name = "Chisel"}));
    EXPECT_THAT(DatabaseNames(),
                testing::ElementsAre("corvprd2 (2).cpd", "corvprd2 (3).cpd", "corvprd2.cpd"));
    EXPECT_EQ(m_folder.Read("db/corvprd2 (2).cpd"), "somebody's");
    ASSERT_EQ(m_user->Messages().size(), 2U);
    EXPECT_EQ(m_user->Messages()[1].style, kMessageInformation);
    EXPECT_THAT(ToUtf8(m_user->Messages()[1].text), HasSubstr((m_database / "corvprd2 (3).cpd").string()));
    WriteCatalogue(m_folder.Read("db/corvprd2 (3).cpd"));
    ASSERT_EQ(SavedRows().size(), 3U);
    EXPECT_THAT(SavedRows()[0].note, testing::EndsWith("!"));
}

TEST_F(EditCommandTest, SaysWhenItCannotKeepBothCatalogues)
{
    WriteSmallCatalogue();
    FailingFileSystem failing(PlatformFileSystem());
    const ScopedFileSystem scope(failing);
    m_user->AtNextForm([&] {
        EditAnvil();
        WriteCatalogue({{.rowID = 1, .name = "Chisel"}});
        failing.FailAfterWriting(10);
        m_user->Click(u"cmdSaveClose");
    });
    m_user->WillAnswer(MessageAnswer::No);
    m_user->WillAnswer(MessageAnswer::Ok);
    const Outcome outcome = Run({"edit"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("the catalogue of this window was not saved in '"));
    EXPECT_THAT(SavedRows(), testing::ElementsAre(ProductRow{.rowID = 1, .name = "Chisel"}));
    EXPECT_EQ(m_user->Messages().back().style, kMessageExclamation);
}

TEST_F(EditCommandTest, SavesWithoutAQuestionWhereTheCatalogueHasVanished)
{
    WriteSmallCatalogue();
    m_user->AtNextForm([&] {
        EditAnvil();
        std::filesystem::remove(m_database / "corvprd2.cpd");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(Run({"edit"}).status, kSucceeded);
    EXPECT_EQ(SavedRows().size(), 3U);
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(EditCommandTest, AsksNothingWhenTheChangesAreGivenUpAnyway)
{
    WriteSmallCatalogue();
    m_user->AtNextForm([&] {
        EditAnvil();
        WriteCatalogue({{.rowID = 1, .name = "Chisel"}});
        m_user->WillAnswer(MessageAnswer::No);
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(Run({"edit"}).status, kSucceeded);
    EXPECT_EQ(m_user->Messages().size(), 1U);
    EXPECT_THAT(SavedRows(), testing::ElementsAre(ProductRow{.rowID = 1, .name = "Chisel"}));
    EXPECT_THAT(DatabaseNames(), testing::ElementsAre("corvprd2.cpd"));
}

/// A disk on which nothing is replaced.
class ReadOnlyFiles final : public IFileSystem
{
public:
    std::u16string BuildPath(std::u16string_view folder, std::u16string_view name) const override
    {
        return m_below.BuildPath(folder, name);
    }
    bool FileExists(std::u16string_view path) const override { return m_below.FileExists(path); }
    std::unique_ptr<IReadStream> OpenForReading(std::u16string_view path) override
    {
        return m_below.OpenForReading(path);
    }
    std::unique_ptr<IWriteStream> CreateInPlace(std::u16string_view path) override
    {
        return m_below.CreateInPlace(path);
    }
    std::unique_ptr<IWriteStream> ReplaceFile(std::u16string_view /*path*/) override
    {
        throw AutomationError(kErrPermissionDenied, u"", u"Permission denied: the disk is read-only");
    }

private:
    IFileSystem& m_below = PlatformFileSystem();
};

TEST_F(EditCommandTest, SaysFirstThatNothingCanBeSaved)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    ReadOnlyFiles files;
    const ScopedFileSystem scope(files);
    m_user->WillAnswer(MessageAnswer::Ok);
    m_user->AtNextForm([&] {
        ASSERT_EQ(m_user->Messages().size(), 1U);
        m_user->Click(u"cmdSaveClose");
    });
    const Outcome outcome = Run({"edit"});
    EXPECT_EQ(outcome.status, kSucceeded) << testing::PrintToString(outcome);
    ASSERT_EQ(m_user->Messages().size(), 1U);
    EXPECT_EQ(m_user->Messages()[0].style, kMessageExclamation);
    EXPECT_EQ(m_user->Messages()[0].title, u"Salvo");
    const std::string text = ToUtf8(m_user->Messages()[0].text);
    EXPECT_THAT(text, testing::StartsWith("The catalogue cannot be saved here: "));
    EXPECT_THAT(text, HasSubstr("the disk is read-only"));
    EXPECT_THAT(text, testing::EndsWith("changes will be lost."));
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(EditCommandTest, FailsToSaveWhatWasChangedAgainstThatWarning)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    ReadOnlyFiles files;
    const ScopedFileSystem scope(files);
    m_user->WillAnswer(MessageAnswer::Ok);
    m_user->WillAnswer(MessageAnswer::Ok);
    m_user->AtNextForm([&] {
        EditAnvil();
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(Run({"edit"}).status, kFailed);
    EXPECT_EQ(m_user->Messages().size(), 2U);
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(EditCommandTest, BeginsNoCatalogueWhereNoneCanBeSaved)
{
    ReadOnlyFiles files;
    const ScopedFileSystem scope(files);
    const Outcome outcome = Run({"edit"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("the disk is read-only"));
    EXPECT_THAT(m_user->OpenForms(), IsEmpty());
}

TEST_F(EditCommandTest, RemembersTheWidthsOfColumnsInTheUsersSettings)
{
    WriteSmallCatalogue();
    m_user->AtNextForm([this] {
        m_user->Grid(u"flexGrid").SetColWidth(0, 3333);
        m_user->Click(u"cmdSaveClose");
    });
    ASSERT_EQ(Run({"edit"}).status, kSucceeded);
    EXPECT_THAT(m_folder.Read("config/Salvo/KestrinProductEditor_Prefs.conf"),
                testing::StartsWith("ViewSettings_ProductEditorDlg=3333~"));
    m_user->AtNextForm([this] {
        EXPECT_EQ(m_user->Grid(u"flexGrid").ColWidth(0), 3333);
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(Run({"edit"}).status, kSucceeded);
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
