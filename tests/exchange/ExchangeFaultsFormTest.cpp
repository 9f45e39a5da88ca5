// SPDX-License-Identifier: MIT
#include "fake/FailingFileSystem.h"
#include "platform/Files.h"
#include "support/ExchangeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace KestrinProductEditor {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;

constexpr std::int32_t kTraceFailure = 4711;
constexpr std::string_view kList = "Title,Cost\nClamp,3\nDrill,8\n";

class ExchangeFaults : public ExchangeFixture
{
protected:
    void TypePath(std::string_view name)
    {
        m_user->TabTo(u"txtImportFilePath");
        m_user->PressControl('A');
        m_user->Type(m_folder.File(name));
    }
    void FailAtExitOf(const std::string& member)
    {
        m_trace->FailOn("exit KestrinProductEditor." + member, kTraceFailure);
    }
    [[nodiscard]] std::string Status() const { return ToUtf8(m_user->TextOf(u"lblStatus")); }
    [[nodiscard]] std::int32_t MappedColumns() { return m_user->Grid(u"flexGrid").Rows() - 1; }
};

} // namespace

TEST_F(ExchangeFaults, OfATypedPathAreToldWhenItIsUsed)
{
    Import([&] {
        for (const std::string_view name : {"none.csv", "no/such/folder.csv", "."}) {
            TypePath(name);
            m_user->WillAnswer(MessageAnswer::Ok);
            m_user->Press(NamedKey::Enter);
            EXPECT_EQ(m_user->Messages().back(), kNoSample) << name;
        }
        m_folder.Write("ragged.csv", "a,b\n1\n");
        TypePath("ragged.csv");
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdImport");
        EXPECT_EQ(m_user->Messages().back(), kNoSample);
        TypePath("none.csv");
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdPreview");
        EXPECT_EQ(m_user->Messages().back(), kNoPreview);
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(m_user->Messages().size(), 5U);
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(ExchangeFaults, OfATypedPathAreForgottenWhenTheFileHasCome)
{
    Import([&] {
        TypePath("late.csv");
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Press(NamedKey::Enter);
        EXPECT_EQ(MappedColumns(), 0);
        m_folder.Write("late.csv", kList);
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Press(NamedKey::Enter);
        EXPECT_THAT(Column(0), ElementsAre("Title", "Cost"));
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoSample, kNoMapping));
}

TEST_F(ExchangeFaults, OfAChosenFileAreNotToldTwice)
{
    Import([&] {
        m_user->WillAnswer(MessageAnswer::Ok);
        BrowseTo(m_folder.File("none.csv"));
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdImport");
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoSample, kNoMapping));
}

TEST_F(ExchangeFaults, OfReadingEndAnImportWithoutAWord)
{
    FailingFileSystem files(FileSystem());
    const ScopedFileSystem scope(files);
    Import([&] {
        BrowseTo("list.csv", kList);
        m_user->PickInCell(u"flexGrid", 1, 1, 1);
        files.FailAfterReading(5);
        m_user->Click(u"cmdImport");
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
    EXPECT_THAT(Names(), ElementsAre("Anchor", "Bolt"));
}

TEST_F(ExchangeFaults, OfAReadFailureEmptyTheMapping)
{
    FailingFileSystem files(FileSystem());
    const ScopedFileSystem scope(files);
    Import([&] {
        BrowseTo("list.csv", kList);
        EXPECT_EQ(MappedColumns(), 2);
        files.FailAfterReading(5);
        m_user->WillAnswer(MessageAnswer::Ok);
        BrowseTo("list.csv", kList);
        EXPECT_EQ(MappedColumns(), 0);
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoSample));
}

TEST_F(ExchangeFaults, OfAPreviewWhoseFileHasLostColumnsAreTold)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        m_user->PickInCell(u"flexGrid", 2, 1, 1);
        m_folder.Write("list.csv", "Title\nClamp\n");
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdPreview");
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoPreview));
}

TEST_F(ExchangeFaults, OfTheTargetAreSaidInPlaceUntilItWorks)
{
    Export([&] {
        BrowseTo(ToUtf16(m_folder.Path().string()));
        m_user->Click(u"cmdExport");
        EXPECT_THAT(Status(), HasSubstr("Path/File access error"));
        FailingFileSystem files(FileSystem());
        const ScopedFileSystem scope(files);
        BrowseTo(m_folder.File("list.csv"));
        files.FailAtOpening();
        m_user->Click(u"cmdExport");
        EXPECT_THAT(Status(), HasSubstr("Permission denied"));
        files.Heal();
        files.FailAfterWriting(10);
        m_user->Click(u"cmdExport");
        EXPECT_THAT(Status(), HasSubstr("Disk full"));
        files.Heal();
        files.FailAtClosing();
        m_user->Click(u"cmdExport");
        EXPECT_THAT(Status(), HasSubstr("could not be exported"));
        EXPECT_FALSE(m_user->IsShown(u"prgExport"));
        files.Heal();
        m_user->Click(u"cmdExport");
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
    EXPECT_THAT(m_folder.Read("list.csv"), HasSubstr("\"Bolt\""));
}

TEST_F(ExchangeFaults, OfATraceLeaveALineWithoutAReason)
{
    m_trace->FailOn("enter KestrinProductEditor.frmProductExport::cmdExport_Click", kTraceFailure);
    Export([&] {
        BrowseTo(m_folder.File("list.csv"));
        m_user->Click(u"cmdExport");
        EXPECT_EQ(Status(), "The products could not be exported.");
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ExchangeFaults, AtTheExitOfThePreviewAreToldAfterIt)
{
    for (const std::string member : {"PrvShowPreviewDlg", "cmdPreview_Click"}) {
        FailAtExitOf("frmProductImport::" + member);
        Import([&] {
            BrowseTo("list.csv", kList);
            m_user->AtNextForm([&] { m_user->Click(u"cmdClose"); });
            m_user->WillAnswer(MessageAnswer::Ok);
            m_user->Click(u"cmdPreview");
            EXPECT_EQ(m_user->Messages().back(), kNoPreview) << member;
            m_user->Click(u"cmdCancel");
        });
    }
    EXPECT_EQ(m_user->Messages().size(), 2U);
}

TEST_F(ExchangeFaults, AtTheExitOfTheImportItselfLeaveTheFormOpen)
{
    FailAtExitOf("frmProductImport::PrvImportProducts");
    Import([&] {
        BrowseTo("list.csv", kList);
        m_user->PickInCell(u"flexGrid", 1, 1, 1);
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdImport");
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductImport"));
        EXPECT_FALSE(m_user->IsShown(u"prgImport"));
        EXPECT_TRUE(m_user->IsEnabled(u"cmdImport"));
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoImport));
    EXPECT_THAT(Names(), Contains("Clamp"));
}

TEST_F(ExchangeFaults, AtTheExitOfTheImportButtonFindTheFormClosed)
{
    FailAtExitOf("frmProductImport::cmdImport_Click");
    Import([&] {
        BrowseTo("list.csv", kList);
        m_user->PickInCell(u"flexGrid", 1, 1, 1);
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdImport");
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(Summary(2, 0), kNoImport));
}

TEST_F(ExchangeFaults, AtTheExitOfTheExportFindTheFileWritten)
{
    for (const std::string member : {"ExportProducts", "cmdExport_Click"}) {
        m_folder.Write("list.csv", "");
        FailAtExitOf("frmProductExport::" + member);
        Export([&] {
            BrowseTo(m_folder.File("list.csv"));
            m_user->Click(u"cmdExport");
        });
        EXPECT_THAT(m_folder.Read("list.csv"), HasSubstr("\"Bolt\"")) << member;
    }
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ExchangeFaults, AtTheExitOfBrowsingLeaveTheFormUsable)
{
    for (const std::string member : {"PrvBrowseForExportFilePath", "cmdBrowse_Click"}) {
        FailAtExitOf("frmProductExport::" + member);
        Export([&] {
            BrowseTo(m_folder.File("lost.csv"));
            m_trace->Heal();
            BrowseTo(m_folder.File(member + ".csv"));
            m_user->Click(u"cmdExport");
        });
        EXPECT_THAT(m_folder.Read(member + ".csv"), HasSubstr("\"Bolt\""));
    }
}

TEST_F(ExchangeFaults, DoNotComeOfADoubleClick)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        m_user->PickInCell(u"flexGrid", 1, 1, 1);
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->DoubleClick(u"cmdImport");
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(Summary(2, 0)));
    EXPECT_EQ(m_store->Count(), 4);
}

TEST_F(ExchangeFaults, DoNotComeOfWhatIsTriedWhileAnExportRuns)
{
    std::size_t tries = 0;
    const auto receiverIsBusy = [&] {
        ++tries;
        EXPECT_FALSE(m_user->IsEnabled(u"cmdExport"));
        m_user->Click(u"cmdExport");
        m_user->Press(NamedKey::Escape);
        m_user->CloseWindow();
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductExport"));
    };
    m_trace->onCall = [&](const std::string& call) {
        if (call.ends_with("::CSVProductExport"))
            receiverIsBusy();
    };
    Export([&] {
        BrowseTo(m_folder.File("list.csv"));
        m_user->Click(u"cmdExport");
    });
    m_trace->onCall = nullptr;
    EXPECT_EQ(tries, 2U);
    EXPECT_THAT(m_folder.Read("list.csv"), HasSubstr("\"Bolt\""));
}

} // namespace KestrinProductEditor
