// SPDX-License-Identifier: MIT
#include "exchange/frmProductImport.h"

#include "fake/FailingFileSystem.h"
#include "platform/Files.h"
#include "support/CapturingToolkit.h"
#include "support/ErrorOf.h"
#include "support/ExchangeFixture.h"
#include "support/UserPlaces.h"

#include <KestrinProductEditor/ProductImportDlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using NamedKey = IUser::NamedKey;

constexpr std::string_view kList = "Title,Number,Cost,Remark\nClamp,C-3,\"$1,234.50\",heavy\nDrill,D-4,8,\n";

/// What the destination's drop-down calls each choice by number.
enum Choice : std::int32_t
{
    kNothing,
    kName,
    kPartNum,
    kUnitPrice,
    kNote
};

class ProductImport : public ExchangeFixture
{
protected:
    void Choose(std::int32_t row, Choice choice) { m_user->PickInCell(u"flexGrid", row, 1, choice); }
    void MapAll()
    {
        Choose(1, kName);
        Choose(2, kPartNum);
        Choose(3, kUnitPrice);
        Choose(4, kNote);
    }
    void PressImport() { m_user->Click(u"cmdImport"); }
    void Close() { m_user->Click(u"cmdCancel"); }
};

} // namespace

TEST_F(ProductImport, BeginsWithTitlesAndAppendingTicked)
{
    Import([&] {
        EXPECT_EQ(m_user->WindowCaption(), u"Import Products");
        EXPECT_TRUE(m_user->IsTicked(u"chkFirstRowIsHeader"));
        EXPECT_TRUE(m_user->IsTicked(u"chkAppend"));
        EXPECT_EQ(m_user->TextOf(u"txtImportFilePath"), u"");
        EXPECT_EQ(Cell(0, 0), "Source");
        EXPECT_EQ(Cell(0, 1), "Destination");
        EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), 1);
        EXPECT_FALSE(m_user->IsShown(u"prgImport"));
        Close();
    });
}

TEST_F(ProductImport, AsksForACsvFileInTheDocuments)
{
    const ScopedDocumentsFolder documents(m_folder.Path());
    Import([&] {
        m_user->WillChooseFile(std::nullopt);
        m_user->Click(u"cmdBrowse");
        ASSERT_EQ(m_user->FileDialogs().size(), 1U);
        const FileDialog& dialog = m_user->FileDialogs().front();
        EXPECT_EQ(dialog.kind, FileDialog::Kind::Open);
        EXPECT_EQ(dialog.title, u"Import products");
        EXPECT_EQ(dialog.filter, u"Comma Separated Value (*.csv)|*.csv|All Files (*.*)|*.*");
        EXPECT_EQ(dialog.defaultExtension, u".csv");
        EXPECT_EQ(dialog.start, ToUtf16(m_folder.Path().string()));
        Close();
    });
}

TEST_F(ProductImport, ShowsARowForEachColumnOfTheChosenFile)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        EXPECT_EQ(m_user->TextOf(u"txtImportFilePath"), m_folder.File("list.csv"));
        EXPECT_THAT(Column(0), ElementsAre("Title", "Number", "Cost", "Remark"));
        EXPECT_THAT(Column(1), Each(" "));
        Choose(1, kName);
        EXPECT_EQ(Cell(1, 1), "Product Name");
        Choose(2, kPartNum);
        EXPECT_EQ(Cell(2, 1), "Product Part#");
        Choose(3, kUnitPrice);
        EXPECT_EQ(Cell(3, 1), "Product Unit Price");
        Choose(4, kNote);
        EXPECT_EQ(Cell(4, 1), "Product Note");
        Choose(4, kNothing);
        EXPECT_EQ(Cell(4, 1), " ");
        Close();
    });
}

TEST_F(ProductImport, NumbersTheColumnsOfAFileWithoutTitles)
{
    Import([&] {
        m_user->Click(u"chkFirstRowIsHeader");
        BrowseTo("list.csv", kList);
        EXPECT_THAT(Column(0), ElementsAre("Column 1", "Column 2", "Column 3", "Column 4"));
        // The state counts for the next reading; the mapping on the screen stays.
        m_user->Click(u"chkFirstRowIsHeader");
        EXPECT_EQ(Cell(1, 0), "Column 1");
        Close();
    });
}

TEST_F(ProductImport, KeepsEverythingWhenTheChoiceIsCancelled)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        m_user->WillChooseFile(std::nullopt);
        m_user->Click(u"cmdBrowse");
        EXPECT_EQ(m_user->FileDialogs().back().start, m_folder.File("list.csv"));
        EXPECT_EQ(m_user->TextOf(u"txtImportFilePath"), m_folder.File("list.csv"));
        EXPECT_EQ(Cell(1, 1), "Product Name");
        Close();
    });
}

TEST_F(ProductImport, EmptiesTheMappingForAFileThatCannotBeSampled)
{
    Import([&] {
        for (const std::string_view content : {"a,b,c\n1,2,3\n1,2,3,4\n", "\na\n", "a,b\n1,2\n\n"}) {
            BrowseTo("good.csv", kList);
            m_user->WillAnswer(MessageAnswer::Ok);
            BrowseTo("bad.csv", content);
            EXPECT_EQ(m_user->Messages().back(), kNoSample);
            EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), 1);
        }
        EXPECT_EQ(m_user->Messages().size(), 3U);
        BrowseTo("empty.csv", "");
        EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), 1);
        Close();
    });
    EXPECT_EQ(m_user->Messages().size(), 3U);
}

TEST_F(ProductImport, TakesADroppedFileAsOneThatWasBrowsedTo)
{
    m_folder.Write("list.csv", kList);
    Import([&] {
        m_user->DropFile(m_folder.File("list.csv"));
        EXPECT_EQ(m_user->TextOf(u"txtImportFilePath"), m_folder.File("list.csv"));
        EXPECT_THAT(Column(0), ElementsAre("Title", "Number", "Cost", "Remark"));
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->DropFile(m_folder.File("none.csv"));
        EXPECT_THAT(m_user->Messages(), ElementsAre(kNoSample));
        Close();
    });
}

TEST_F(ProductImport, ReadsATypedPathWhenTheBoxIsLeft)
{
    m_folder.Write("list.csv", kList);
    Import([&] {
        m_user->TabTo(u"txtImportFilePath");
        m_user->Type(m_folder.File("list.csv"));
        m_user->Press(NamedKey::Tab);
        EXPECT_THAT(Column(0), ElementsAre("Title", "Number", "Cost", "Remark"));
        Choose(1, kName);
        // The same path again keeps what was chosen for it.
        m_user->TabTo(u"txtImportFilePath");
        m_user->Press(NamedKey::Tab);
        EXPECT_EQ(Cell(1, 1), "Product Name");
        // A wrong one is no reason for a message while somebody is about to go away.
        m_user->TabTo(u"txtImportFilePath");
        m_user->Type(u"x");
        Close();
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductImport, RefusesAnEmptyPath)
{
    Import([&] {
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductImport"));
        Close();
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoFileName));
    EXPECT_THAT(Names(), ElementsAre("Anchor", "Bolt"));
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(ProductImport, RefusesToImportNothing)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductImport"));
        Close();
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoMapping));
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(ProductImport, AddsTheProductsAndSaysHowMany)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        MapAll();
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(Summary(2, 0)));
    const std::vector<ProductRow> rows = RowsOf(*m_store);
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[2].name, "Clamp");
    EXPECT_EQ(rows[2].partNum, "C-3");
    EXPECT_EQ(rows[2].price, 12'345'000);
    EXPECT_EQ(rows[2].note, "heavy");
    EXPECT_EQ(rows[3].name, "Drill");
}

TEST_F(ProductImport, CountsRejectedLines)
{
    Import([&] {
        BrowseTo("list.csv", "n,p\nClamp,1\nDrill,abc\nEyelet,2\n");
        Choose(1, kName);
        Choose(2, kUnitPrice);
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(Summary(2, 1)));
}

TEST_F(ProductImport, ReplacesTheProductsWhenNotAppending)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        m_user->Click(u"chkAppend");
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    EXPECT_THAT(Names(), ElementsAre("Clamp", "Drill"));
}

TEST_F(ProductImport, ImportsTheFirstLineWhenItHoldsNoTitles)
{
    Import([&] {
        m_user->Click(u"chkFirstRowIsHeader");
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(Summary(3, 0)));
    EXPECT_THAT(Names(), Contains("Title"));
}

TEST_F(ProductImport, TakesTheLaterOfTwoColumnsForOneField)
{
    Import([&] {
        BrowseTo("list.csv", "a,b,c\nfirst,x,last\n");
        Choose(1, kName);
        Choose(3, kName);
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    EXPECT_THAT(Names(), Contains("last"));
    EXPECT_THAT(Names(), Not(Contains("first")));
}

TEST_F(ProductImport, ClosesWithoutAWordWhenTheFileHasVanished)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        std::filesystem::remove(m_folder.Path() / "list.csv");
        PressImport();
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
    EXPECT_THAT(Names(), ElementsAre("Anchor", "Bolt"));
}

TEST_F(ProductImport, IsTheDefaultOfTheEnterKey)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        m_user->TabTo(u"txtImportFilePath");
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Press(NamedKey::Enter);
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(Summary(2, 0)));
}

TEST_F(ProductImport, ClosesByEscCancelAndTheCloseBoxWithoutImporting)
{
    const std::vector<std::function<void()>> ways = {[&] { m_user->Press(NamedKey::Escape); },
                                                     [&] { m_user->Click(u"cmdCancel"); },
                                                     [&] { m_user->CloseWindow(); }};
    for (const auto& way : ways) {
        Import([&] {
            BrowseTo("list.csv", kList);
            Choose(1, kName);
            way();
        });
    }
    EXPECT_FALSE(m_store->SessionIsDirty());
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductImport, ShowsItsProgressAndLetsNothingElseHappen)
{
    std::vector<std::string> captions;
    std::size_t closings = 0;
    // The trace is what a test hears while the store works.
    m_trace->onCall = [&](const std::string& call) {
        if (call != "exit KestrinProductMgr.ProductLkpMgr::AddNew")
            return;
        captions.push_back(ToUtf8(m_user->TextOf(u"prgImport")));
        EXPECT_TRUE(m_user->IsShown(u"prgImport"));
        EXPECT_FALSE(m_user->IsEnabled(u"cmdImport"));
        EXPECT_FALSE(m_user->IsEnabled(u"cmdCancel"));
        EXPECT_FALSE(m_user->IsEnabled(u"flexGrid"));
        m_user->CloseWindow();
        m_user->Press(NamedKey::Escape);
        m_user->Click(u"cmdImport");
        if (m_user->OpenForms().empty())
            ++closings;
    };
    Import([&] {
        BrowseTo("list.csv", "n\na\nb\nc\n");
        Choose(1, kName);
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    m_trace->onCall = nullptr;
    EXPECT_THAT(captions,
                ElementsAre("0 products imported...", "1 products imported...", "2 products imported..."));
    EXPECT_EQ(closings, 0U);
    EXPECT_THAT(m_user->Messages(), ElementsAre(Summary(3, 0)));
}

TEST_F(ProductImport, ShowsTheFractionAsAWholePercentage)
{
    const auto form = std::make_shared<frmProductImport>();
    form->Load();
    form->Init(m_store);
    m_user->AtNextForm([&] {
        form->Progress(Variant::ArrayWith(0.456, 12));
        EXPECT_EQ(m_user->ValueOf(u"prgImport"), 46);
        EXPECT_EQ(m_user->TextOf(u"prgImport"), u"12 products imported...");
        EXPECT_TRUE(m_user->IsShown(u"prgImport"));
        for (const auto& [fraction, percent] : {std::pair(-1.0, 0), {0.0, 0}, {1.0, 100}, {1e300, 100}}) {
            form->Progress(Variant::ArrayWith(fraction, 13));
            EXPECT_EQ(m_user->ValueOf(u"prgImport"), percent) << fraction;
        }
        m_user->Click(u"cmdCancel");
    });
    form->ShowModal();
}

TEST_F(ProductImport, LeavesTheStoreWithoutAReceiver)
{
    const auto receiver = std::make_shared<RecordingReceiver>();
    Import([&] {
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    // A receiver that stayed would keep form and store alive for ever.
    const std::weak_ptr<ProductLkpMgr> watched = m_store;
    m_store.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(ProductImport, RefusesWithoutAStore)
{
    const auto dialog = ProductImportDlg::Create();
    m_user->AtNextForm([&] {
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductImport"));
        Close();
    });
    dialog->Show();
    EXPECT_THAT(m_user->Messages(), ElementsAre(kNoImport));
}

TEST_F(ProductImport, NeedsAnInitForEachShow)
{
    const auto dialog = ProductImportDlg::Create();
    const std::weak_ptr<ProductLkpMgr> watched = m_store;
    dialog->Init(m_store);
    m_store.reset();
    m_user->AtNextForm([&] { Close(); });
    dialog->Show();
    EXPECT_TRUE(watched.expired());
}

TEST_F(ProductImport, HandsNoStoreToAShowInsideAShow)
{
    const auto dialog = ProductImportDlg::Create();
    dialog->Init(m_store);
    m_user->AtNextForm([&] {
        m_user->AtNextForm([&] {
            BrowseTo("list.csv", kList);
            Choose(1, kName);
            m_user->WillAnswer(MessageAnswer::Ok);
            PressImport();
            Close();
        });
        dialog->Show();
        EXPECT_THAT(m_user->Messages(), ElementsAre(kNoImport));
        Close();
    });
    dialog->Show();
}

TEST_F(ProductImport, StillHasTheStoreAfterAShowWithoutWindows)
{
    const auto dialog = ProductImportDlg::Create();
    dialog->Init(m_store);
    {
        const NoWindows toolkit;
        EXPECT_EQ(ErrorNumberOf([&] { dialog->Show(); }), kErrActionNotSupported);
    }
    m_user->AtNextForm([&] {
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    dialog->Show();
    EXPECT_THAT(m_user->Messages(), ElementsAre(Summary(2, 0)));
}

TEST_F(ProductImport, TellsTheTraceOfImportPreviewAndLauncher)
{
    Import([&] {
        BrowseTo("list.csv", kList);
        Choose(1, kName);
        m_user->AtNextForm([&] { m_user->Click(u"cmdClose"); });
        m_user->Click(u"cmdPreview");
        m_user->WillAnswer(MessageAnswer::Ok);
        PressImport();
    });
    EXPECT_THAT(m_trace->CallsLike("enter KestrinProductEditor."),
                ElementsAre("enter KestrinProductEditor.ProductImportDlg::Show",
                            "enter KestrinProductEditor.frmProductImport::cmdPreview_Click",
                            "enter KestrinProductEditor.frmProductImport::PrvShowPreviewDlg",
                            "enter KestrinProductEditor.frmProductImport::cmdImport_Click",
                            "enter KestrinProductEditor.frmProductImport::PrvImportProducts"));
    EXPECT_THAT(m_trace->CallsLike("exit KestrinProductEditor."),
                ElementsAre("exit KestrinProductEditor.frmProductImport::PrvShowPreviewDlg",
                            "exit KestrinProductEditor.frmProductImport::cmdPreview_Click",
                            "exit KestrinProductEditor.frmProductImport::PrvImportProducts",
                            "exit KestrinProductEditor.frmProductImport::cmdImport_Click",
                            "exit KestrinProductEditor.ProductImportDlg::Show"));
}

TEST_F(ProductImport, SaysThatAFailingTraceHasStoppedIt)
{
    for (const std::string member : {"PrvImportProducts", "cmdImport_Click"}) {
        m_trace->FailOn("enter KestrinProductEditor.frmProductImport::" + member, 4711);
        Import([&] {
            BrowseTo("list.csv", kList);
            Choose(1, kName);
            m_user->WillAnswer(MessageAnswer::Ok);
            PressImport();
            EXPECT_EQ(m_user->Messages().back(), kNoImport);
            m_trace->Heal();
            m_user->WillAnswer(MessageAnswer::Ok);
            PressImport();
        });
        EXPECT_EQ(m_user->Messages().back(), Summary(2, 0));
    }
}

} // namespace KestrinProductEditor
