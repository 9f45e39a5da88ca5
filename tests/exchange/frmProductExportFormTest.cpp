// SPDX-License-Identifier: MIT
#include "exchange/frmProductExport.h"

#include "support/CapturingToolkit.h"
#include "support/ErrorOf.h"
#include "support/ExchangeFixture.h"
#include "support/UserPlaces.h"
#include "support/WatchedForms.h"

#include <KestrinProductEditor/ProductExportDlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;

constexpr std::string_view kExported = "\"Name\",\"PartNum\",\"UnitPrice\",\"Note\"\r\n"
                                       "\"Anchor\",\"A-1\",\"$12.50\",\"\"\r\n"
                                       "\"Bolt\",\"B-2\",\"$7.00\",\"\"\r\n";

class ProductExport : public ExchangeFixture
{
protected:
    void PressExport() { m_user->Click(u"cmdExport"); }
    void Close() { m_user->Click(u"cmdCancel"); }
};

} // namespace

TEST_F(ProductExport, RefusesAnEmptyPath)
{
    Export([&] {
        EXPECT_EQ(m_user->WindowCaption(), u"Export Products");
        EXPECT_FALSE(m_user->IsShown(u"prgExport"));
        m_user->WillAnswer(MessageAnswer::Ok);
        PressExport();
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductExport"));
        Close();
    });
    EXPECT_THAT(m_user->Messages(), ElementsAre(Exclamation(u"Please enter export file path.")));
}

TEST_F(ProductExport, AsksWhereToWithAWarningBeforeAFileIsReplaced)
{
    const ScopedDocumentsFolder documents(m_folder.Path());
    Export([&] {
        m_user->WillChooseFile(std::nullopt);
        m_user->Click(u"cmdBrowse");
        const FileDialog& dialog = m_user->FileDialogs().back();
        EXPECT_EQ(dialog.kind, FileDialog::Kind::Save);
        EXPECT_EQ(dialog.title, u"Export products");
        EXPECT_EQ(dialog.filter, u"Comma Separated Value (*.csv)|*.csv|All Files (*.*)|*.*");
        EXPECT_EQ(dialog.defaultExtension, u".csv");
        EXPECT_EQ(dialog.start, ToUtf16(m_folder.Path().string()));
        // A cancelled choice keeps the path.
        m_user->TabTo(u"txtExportFilePath");
        m_user->Type(u"kept");
        m_user->WillChooseFile(std::nullopt);
        m_user->Click(u"cmdBrowse");
        EXPECT_EQ(m_user->TextOf(u"txtExportFilePath"), u"kept");
        EXPECT_EQ(m_user->FileDialogs().back().start, ToUtf16(m_folder.Path().string()));
        Close();
    });
}

TEST_F(ProductExport, WritesTheChosenFileAndCloses)
{
    m_folder.Write("list.csv", "old");
    Export([&] {
        BrowseTo(m_folder.File("list.csv"));
        EXPECT_EQ(m_user->TextOf(u"txtExportFilePath"), m_folder.File("list.csv"));
        PressExport();
    });
    EXPECT_EQ(m_folder.Read("list.csv"), kExported);
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductExport, TakesATypedPathAndTheEnterKey)
{
    Export([&] {
        m_user->Type(m_folder.File("typed.csv"));
        m_user->Press(NamedKey::Enter);
    });
    EXPECT_EQ(m_folder.Read("typed.csv"), kExported);
}

TEST_F(ProductExport, ShowsItsProgressInPercent)
{
    const auto form = std::make_shared<frmProductExport>();
    form->Load();
    form->Init(m_store);
    m_user->AtNextForm([&] {
        for (const auto& [fraction, percent] :
             {std::pair(0.0, 0), {0.004, 0}, {0.29, 29}, {0.456, 46}, {1.0, 100}, {1.5, 100}}) {
            form->Progress(Variant::ArrayWith(fraction));
            EXPECT_TRUE(m_user->IsShown(u"prgExport"));
            EXPECT_EQ(m_user->ValueOf(u"prgExport"), percent);
            EXPECT_EQ(ToUtf8(m_user->TextOf(u"prgExport")), std::to_string(percent) + "%");
        }
        Close();
    });
    form->ShowModal();
}

TEST_F(ProductExport, ShowsThePercentReachedWithEachProduct)
{
    for (const int count : {1, 4, 100}) {
        m_store->DeleteAll();
        AddNames(*m_store, std::vector<std::string>(static_cast<std::size_t>(count), "Nut"));
        std::vector<std::string> shown;
        std::vector<std::string> expected;
        for (int product = 1; product <= count; ++product) {
            const std::string percent = std::to_string(100 * product / count);
            expected.push_back(percent + " " + percent + "%");
        }
        const WatchedForms forms(m_user->Screen(), [&] {
            shown.push_back(std::to_string(m_user->ValueOf(u"prgExport")) + " " +
                            ToUtf8(m_user->TextOf(u"prgExport")));
        });
        Export([&] {
            BrowseTo(m_folder.File("list.csv"));
            PressExport();
        });
        EXPECT_EQ(shown, expected);
    }
}

TEST_F(ProductExport, SaysAFailureInPlaceAndStaysOpen)
{
    Export([&] {
        m_user->Type(m_folder.File("no/such/folder.csv"));
        PressExport();
        EXPECT_THAT(m_user->OpenForms(), ElementsAre(u"frmProductExport"));
        EXPECT_THAT(ToUtf8(m_user->TextOf(u"lblStatus")), HasSubstr("could not be exported"));
        EXPECT_THAT(ToUtf8(m_user->TextOf(u"lblStatus")), HasSubstr("folder.csv"));
        EXPECT_FALSE(m_user->IsShown(u"prgExport"));
        BrowseTo(m_folder.File("list.csv"));
        PressExport();
    });
    EXPECT_EQ(m_folder.Read("list.csv"), kExported);
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductExport, DoesNotTakeThePlaceOfTheCatalogueAndSaysSo)
{
    const std::string before = CatalogueBytes();
    Export([&] {
        m_user->Type(CataloguePath());
        PressExport();
        EXPECT_EQ(m_user->TextOf(u"lblStatus"), u"The products could not be exported. "
                                                u"The export would take the place of the catalogue itself.");
        Close();
    });
    EXPECT_EQ(CatalogueBytes(), before);
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductExport, RefusesWithoutAStore)
{
    const auto dialog = ProductExportDlg::Create();
    m_user->AtNextForm([&] {
        BrowseTo(m_folder.File("list.csv"));
        PressExport();
        EXPECT_THAT(ToUtf8(m_user->TextOf(u"lblStatus")), HasSubstr("could not be exported"));
        m_user->CloseWindow();
    });
    dialog->Show();
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductExport, ReportsAsTheImportLauncher)
{
    Export([&] {
        BrowseTo(m_folder.File("list.csv"));
        PressExport();
    });
    EXPECT_THAT(m_trace->CallsLike("enter KestrinProductEditor."),
                ElementsAre("enter KestrinProductEditor.ProductImportDlg::Show",
                            "enter KestrinProductEditor.frmProductExport::cmdBrowse_Click",
                            "enter KestrinProductEditor.frmProductExport::PrvBrowseForExportFilePath",
                            "enter KestrinProductEditor.frmProductExport::cmdExport_Click",
                            "enter KestrinProductEditor.frmProductExport::ExportProducts",
                            "enter KestrinProductEditor.ProductLkpMgr::CSVProductExport"));
    EXPECT_THAT(m_trace->CallsLike("exit KestrinProductEditor."),
                ElementsAre("exit KestrinProductEditor.frmProductExport::PrvBrowseForExportFilePath",
                            "exit KestrinProductEditor.frmProductExport::cmdBrowse_Click",
                            "exit KestrinProductEditor.ProductLkpMgr::CSVProductExport",
                            "exit KestrinProductEditor.frmProductExport::ExportProducts",
                            "exit KestrinProductEditor.frmProductExport::cmdExport_Click",
                            "exit KestrinProductEditor.ProductImportDlg::Show"));
}

TEST_F(ProductExport, StaysUsableAfterATraceThatFails)
{
    for (const std::string member :
         {"cmdBrowse_Click", "PrvBrowseForExportFilePath", "cmdExport_Click", "ExportProducts"}) {
        SCOPED_TRACE(member);
        m_folder.Write("list.csv", "");
        m_trace->FailOn("enter KestrinProductEditor.frmProductExport::" + member, 4711);
        Export([&] {
            const bool isBrowsing = member.find("rowse") != std::string::npos;
            if (isBrowsing)
                m_user->Click(u"cmdBrowse");
            else
                BrowseTo(m_folder.File("list.csv"));
            if (!isBrowsing)
                PressExport();
            EXPECT_EQ(m_folder.Read("list.csv"), "");
            m_trace->Heal();
            if (isBrowsing)
                BrowseTo(m_folder.File("list.csv"));
            PressExport();
        });
        EXPECT_EQ(m_folder.Read("list.csv"), kExported);
    }
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductExport, NeedsAnInitForEachShow)
{
    const auto dialog = ProductExportDlg::Create();
    dialog->Init(m_store);
    const auto refuse = [&] {
        BrowseTo(m_folder.File("list.csv"));
        PressExport();
        EXPECT_THAT(ToUtf8(m_user->TextOf(u"lblStatus")), HasSubstr("could not be exported"));
        Close();
    };
    m_user->AtNextForm([&] {
        m_user->AtNextForm(refuse);
        dialog->Show();
        Close();
    });
    dialog->Show();
    m_user->AtNextForm(refuse);
    dialog->Show();
    const std::weak_ptr<ProductLkpMgr> watched = m_store;
    m_store.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(ProductExport, StillHasTheStoreAfterAShowWithoutWindows)
{
    const auto dialog = ProductExportDlg::Create();
    dialog->Init(m_store);
    {
        const NoWindows toolkit;
        EXPECT_EQ(ErrorNumberOf([&] { dialog->Show(); }), kErrActionNotSupported);
    }
    m_user->AtNextForm([&] {
        BrowseTo(m_folder.File("list.csv"));
        PressExport();
    });
    dialog->Show();
    EXPECT_EQ(m_folder.Read("list.csv"), kExported);
}

TEST_F(ProductExport, LeavesTheStoreWithoutAReceiver)
{
    Export([&] {
        BrowseTo(m_folder.File("list.csv"));
        PressExport();
    });
    const std::weak_ptr<ProductLkpMgr> watched = m_store;
    m_store.reset();
    EXPECT_TRUE(watched.expired());
}

} // namespace KestrinProductEditor
