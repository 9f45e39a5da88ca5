// SPDX-License-Identifier: MIT
#include "kstnedit/Catalogue.h"
#include "kstnedit/Failure.h"

#include "apps/kstnedit/ProgramFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <ostream>
#include <streambuf>
#include <string>

namespace KestrinProductEditor::CommandLine {

namespace {

using testing::HasSubstr;

using CatalogueTest = ProgramFixture;

/// Takes nothing.
class DeafBuffer final : public std::streambuf
{
protected:
    int_type overflow(int_type) override
    {
        throw OutputFailure(OutputFailure::Cause::Other, "No space left on device");
    }
};

} // namespace

TEST_F(CatalogueTest, IsNotSavedOverWhatAnotherCommandHasSaved)
{
    WriteSmallCatalogue();
    const ScopedTrace noTraceYet(nullptr);
    EmbeddedHost host({.catalogueFolder = PathFromNative(m_database.string()), .traceFile = std::nullopt});
    Catalogue catalogue(host, Catalogue::Folder::MustExist);
    catalogue.Store().DeleteAll();
    WriteCatalogue({{.rowID = 9, .name = "Another"}});
    const std::string others = CatalogueBytes();
    try {
        catalogue.Save();
        ADD_FAILURE() << "saved";
    } catch (const CommandFailure& failure) {
        EXPECT_THAT(failure.what(), HasSubstr("another command has changed the catalogue meanwhile"));
    }
    EXPECT_EQ(CatalogueBytes(), others);
}

TEST_F(CatalogueTest, ThatIsAFolderOrALinkToNothingIsNoEmptyOne)
{
    const std::filesystem::path path = m_database / "corvprd2.cpd";
    std::filesystem::create_directory(path);
    m_folder.Write("good.cpd", "a good backup");
    for (const char* const state : {"is a folder", "is a link to a file that does not exist"}) {
        for (const std::vector<std::string>& arguments : {std::vector<std::string>{"list"},
                                                          {"backup", PathOf("good.cpd")},
                                                          {"export", PathOf("good.cpd")}}) {
            const Outcome outcome = Run(arguments);
            EXPECT_EQ(outcome.status, kFailed) << arguments[0];
            EXPECT_THAT(outcome.err, HasSubstr(state));
        }
        std::filesystem::remove(path);
        std::filesystem::create_symlink("nowhere", path);
    }
    EXPECT_EQ(m_folder.Read("good.cpd"), "a good backup");
}

TEST_F(CatalogueTest, ThatIsNotThereYetIsNotWrittenOut)
{
    m_folder.Write("good.cpd", "a good backup");
    for (const char* const command : {"backup", "export"}) {
        const Outcome outcome = Run({command, PathOf("good.cpd")});
        EXPECT_EQ(outcome.status, kFailed);
        EXPECT_THAT(outcome.err, HasSubstr("there is no catalogue in '" + m_database.string() + "' yet"));
    }
    EXPECT_EQ(m_folder.Read("good.cpd"), "a good backup");
    EXPECT_THAT(Run({"check"}).err, HasSubstr("there is no catalogue in "));
}

TEST_F(CatalogueTest, RefusesTextsThatItsCodePageCannotHold)
{
    const ScopedVariable codePage("KSTNEDIT_CODEPAGE", "windows-1252");
    const Outcome refused = Run({"add", "--name", "\u65E5\u672C"});
    EXPECT_EQ(refused.status, kFailed);
    EXPECT_THAT(refused.err, HasSubstr("--name: the catalogue's 8-bit code page cannot hold"));
    EXPECT_EQ(Run({"add", "--name", "caf\u00E9 \u20AC", "--note", "\u65E5\u672C"}).status, kSucceeded);
}

TEST_F(CatalogueTest, ThatWasSavedIsToldWhenTheOutputFails)
{
    WriteSmallCatalogue();
    const ScopedTrace noTraceYet(nullptr);
    DeafBuffer buffer;
    std::ostream out(&buffer);
    std::ostringstream err;
    Program program({.out = out, .err = err, .codePage = CodePage::Named("utf-8")});
    EXPECT_EQ(program.Run({"--catalogue", m_database.string(), "add", "--name", "New"}), kFailed);
    EXPECT_THAT(err.str(), HasSubstr("the catalogue was changed, although the output could not be written"));
}

} // namespace KestrinProductEditor::CommandLine
