// SPDX-License-Identifier: MIT
#include "apps/kstnedit/ProgramFixture.h"
#include "fake/FailingFileSystem.h"
#include "kstnedit/Failure.h"
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
        failing.FailAfterWriting(10);
        m_user->Click(u"cmdSaveClose");
    });
    const Outcome outcome = Run({"edit"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("the catalogue was not saved; it is as it was before"));
    EXPECT_EQ(CatalogueBytes(), before);
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
