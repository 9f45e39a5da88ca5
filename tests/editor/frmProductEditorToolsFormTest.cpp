// SPDX-License-Identifier: MIT
#include "support/EditorFixture.h"

#include "editor/EditorStart.h"
#include "platform/Text.h"

#include <KestrinProductEditor/AutomationError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;
using Modifier = IUser::Modifier;

const std::string kRebound = "exit KestrinProductEditor.frmProductEditor::PrvRefreshView";
const std::string kDeletion = "enter KestrinProductMgr.ProductLkpMgr::Delete";

class ProductEditorTools : public EditorFixture
{
protected:
    ProductEditorTools() { WriteCatalogue(ThreeProducts()); }

    void WriteFive()
    {
        WriteCatalogue({{.rowID = 12, .name = "Anchor"},
                        {.rowID = 7, .name = "Bolt"},
                        {.rowID = 3, .name = "Clamp"},
                        {.rowID = 9, .name = "Drill"},
                        {.rowID = 5, .name = "Eyelet"}});
    }
    [[nodiscard]] IToolBar& Tools() const { return m_spy.Editor().ToolBar(u"SSActiveToolBars1"); }
    void Answer(MessageAnswer answer, const std::function<void()>& act)
    {
        m_user->WillAnswer(answer);
        act();
    }
    void DeleteSelected() { m_user->ChooseTool(u"ID_Delete"); }
};

} // namespace

// The current product

TEST_F(ProductEditorTools, AskForAProductWhereNoneIsCurrent)
{
    WriteCatalogue(std::vector<ProductRow>{});
    Edit([&] {
        Answer(MessageAnswer::Ok, [&] { m_user->Click(u"cmdDelete"); });
        EXPECT_THAT(m_user->Messages(), ElementsAre(kSelectFirst));
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorTools, DeleteTheCurrentProductAfterAYes)
{
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 2);
        Answer(MessageAnswer::Yes, [&] { m_user->Click(u"cmdDelete"); });
        EXPECT_THAT(m_user->Messages(), ElementsAre(kAskDelete));
        EXPECT_THAT(NamesShown(), ElementsAre("Anchor", "Clamp"));
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:2)");
        // The one that followed is current now; at the end, the one before.
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        Answer(MessageAnswer::Yes, [&] { m_user->Click(u"cmdDelete"); });
        EXPECT_EQ(Shown(u"lblProductDetails"), "Anchor");
        Answer(MessageAnswer::Yes, [&] { m_user->Click(u"cmdDelete"); });
        EXPECT_EQ(CurrentRow(), -1);
        EXPECT_EQ(Shown(u"lblProductDetails"), "");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "");
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:0)");
        ExpectViewState();
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedRows(), IsEmpty());
}

TEST_F(ProductEditorTools, KeepTheCurrentProductAfterAnyOtherAnswer)
{
    Edit([&] {
        Answer(MessageAnswer::No, [&] { m_user->Click(u"cmdDelete"); });
        Answer(MessageAnswer::Cancel, [&] { m_user->Click(u"cmdDelete"); });
        m_user->WillEscape();
        m_user->Click(u"cmdDelete");
        EXPECT_THAT(m_user->Messages(), ElementsAre(kAskDelete, kAskDelete, kAskDelete));
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:3)");
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorTools, ShowWhatIsLeftThoughTheDeletionEndedInAnError)
{
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 3);
        m_trace->FailOn("exit KestrinProductMgr.ProductLkpMgr::Delete", 7);
        Answer(MessageAnswer::Yes, [&] { m_user->Click(u"cmdDelete"); });
        m_trace->Heal();
        EXPECT_THAT(NamesShown(), ElementsAre("Anchor", "Bolt"));
        EXPECT_EQ(Shown(u"lblProductDetails"), "Bolt");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedNames(), ElementsAre("Anchor", "Bolt"));
}

TEST_F(ProductEditorTools, DeleteNothingWithTheButtonWhereOnlyNewWasPressed)
{
    Edit([&] {
        m_user->Click(u"cmdNew");
        m_user->Click(u"cmdCancelEdit");
        Answer(MessageAnswer::Ok, [&] { m_user->Click(u"cmdDelete"); });
        EXPECT_THAT(m_user->Messages(), ElementsAre(kSelectFirst));
        m_user->Click(u"cmdCancel");
    });
}

// The selected products

TEST_F(ProductEditorTools, DeleteAllThatIsSelectedInTheOrderOfTheList)
{
    WriteFive();
    Edit([&] {
        m_user->ChooseTool(u"ID_SelectAll");
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 5);
        m_trace->Forget();
        Answer(MessageAnswer::Yes, [&] { DeleteSelected(); });
        EXPECT_THAT(m_user->Messages(), ElementsAre(kAskDeleteSelected));
        EXPECT_EQ(m_trace->CallsLike(kDeletion).size(), 5U);
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:0)");
        EXPECT_EQ(CurrentRow(), -1);
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedRows(), IsEmpty());
}

TEST_F(ProductEditorTools, DeleteRowsThatAreNotNextToEachOther)
{
    WriteFive();
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 1);
        m_user->ClickRow(u"flexGrid", 3, Modifier::Control);
        m_user->ClickRow(u"flexGrid", 4, Modifier::Control);
        Answer(MessageAnswer::Yes, [&] { m_user->Press(NamedKey::Delete); });
        EXPECT_THAT(NamesShown(), ElementsAre("Bolt", "Eyelet"));
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 0);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Eyelet");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedNames(), ElementsAre("Bolt", "Eyelet"));
}

TEST_F(ProductEditorTools, BindTheListAgainWhateverBecomesOfADeletion)
{
    Edit([&] {
        // Opening selects nothing.
        m_trace->Forget();
        DeleteSelected();
        EXPECT_THAT(m_user->Messages(), IsEmpty());
        EXPECT_THAT(m_trace->Calls(), Contains(kRebound));

        m_user->ChooseTool(u"ID_SelectAll");
        for (int i = 0; i < 2; ++i) {
            m_trace->Forget();
            if (i == 0)
                m_user->WillAnswer(MessageAnswer::No);
            else
                m_user->WillEscape();
            DeleteSelected();
            EXPECT_THAT(m_trace->Calls(), Contains(kRebound));
        }
        EXPECT_THAT(m_user->Messages(), ElementsAre(kAskDeleteSelected, kAskDeleteSelected));
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 3);
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorTools, StopAtADeletionThatFailsAndKeepTheOnesBefore)
{
    WriteFive();
    Edit([&] {
        m_user->ChooseTool(u"ID_SelectAll");
        int deletions = 0;
        m_trace->onCall = [&](const std::string& call) {
            if (call == kDeletion && ++deletions == 3)
                throw AutomationError(7);
        };
        Answer(MessageAnswer::Yes, [&] { DeleteSelected(); });
        m_trace->onCall = nullptr;
        EXPECT_THAT(m_user->Messages(), ElementsAre(kAskDeleteSelected));
        // Nobody must meet rows that are no more: the next deletion would hit another product.
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:3)");
        EXPECT_THAT(NamesShown(), ElementsAre("Clamp", "Drill", "Eyelet"));
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedNames(), ElementsAre("Clamp", "Drill", "Eyelet"));
}

TEST_F(ProductEditorTools, SelectNothingInAnEmptyList)
{
    WriteCatalogue(std::vector<ProductRow>{});
    Edit([&] {
        m_user->ChooseTool(u"ID_SelectAll");
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 0);
        DeleteSelected();
        m_user->ChooseTool(u"ID_EditProduct");
        ExpectViewState();
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

// The tools themselves

TEST_F(ProductEditorTools, KnowTheirIdsLetterForLetter)
{
    Edit([&] {
        m_user->ChooseTool(u"ID_SelectAll");
        m_trace->Forget();
        for (const char16_t* const id :
             {u"id_delete", u"ID_DELETE", u"ID_Delete ", u"", u"ID_File", u"ID_Edit", u"ID_Print"})
            Tools().ToolClick.Raise(id);
        EXPECT_EQ(m_trace->CallsLike("enter ").size(), 7U);
        EXPECT_THAT(m_trace->CallsLike("error "), IsEmpty());
        ExpectViewState();
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorTools, LetTheirKeysActInTheListAlone)
{
    Edit([&] {
        m_user->PressControl('A');
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 3);
        m_user->TabTo(u"txtNote");
        m_user->Press(NamedKey::Delete);
        m_user->Press(NamedKey::F2);
        m_user->Press(NamedKey::Enter);
        EXPECT_THAT(m_user->Messages(), IsEmpty());
        ExpectViewState();
        m_user->ClickRow(u"flexGrid", 1);
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 1);
        m_user->TabTo(u"txtProductName");
        m_user->PressControl('A');
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 1);
        EXPECT_EQ(ToUtf8(Box(u"txtProductName").SelectedText()), "Anchor");
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorTools, RestInEditState)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        for (const char letter : {'N', 'I', 'E'})
            m_user->PressControl(letter);
        m_user->TabTo(u"txtPartNum");
        for (const NamedKey key : {NamedKey::F2, NamedKey::Enter})
            m_user->Press(key);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Editing Bolt");
        ExpectEditState();
        m_user->Click(u"cmdCancelEdit");
        ExpectViewState();
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorTools, LetTheSaveKeyRestInViewState)
{
    Edit([&] {
        m_trace->Forget();
        m_user->PressControl('S');
        EXPECT_THAT(m_trace->Calls(), IsEmpty());
        m_user->Click(u"cmdCancel");
    });
}

// Import and export

TEST_F(ProductEditorTools, ImportIntoTheEditorsOwnList)
{
    m_folder.Write("new.csv", "Name,Price\r\nAbrasive,1\r\nZip,2\r\n");
    struct Way
    {
        std::string what;
        std::function<void()> open;
    };
    const std::vector<Way> ways = {
        {"from the list", [&] { m_user->ChooseTool(u"ID_Import"); }},
        {"with the keys, from a button",
         [&] {
             m_user->TabTo(u"cmdNew");
             m_user->PressControl('I');
         }},
        {"from the price box",
         [&] {
             m_user->TabTo(u"txtUnitPrice");
             m_user->ClickTool(u"ID_Import");
         }},
    };
    for (const Way& way : ways) {
        SCOPED_TRACE(way.what);
        WriteCatalogue(ThreeProducts());
        Edit([&] {
            m_user->ClickRow(u"flexGrid", 2);
            m_user->AtNextForm([&] {
                EXPECT_EQ(ToUtf8(m_user->OpenForms().back()), "frmProductImport");
                m_user->WillChooseFile(m_folder.File("new.csv"));
                m_user->Click(u"cmdBrowse");
                m_user->PickInCell(u"flexGrid", 1, 1, 1);
                m_user->PickInCell(u"flexGrid", 2, 1, 3);
                m_user->WillAnswer(MessageAnswer::Ok);
                m_user->Click(u"cmdImport");
            });
            way.open();
            EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:5)");
            EXPECT_THAT(NamesShown(), ElementsAre("Abrasive", "Anchor", "Bolt", "Clamp", "Zip"));
            // The current product is where it was moved to, and it is the one that is shown.
            EXPECT_EQ(CurrentRow(), 3);
            EXPECT_EQ(Shown(u"lblProductDetails"), "Bolt");
            EXPECT_EQ(ToUtf8(m_user->Focus()), "flexGrid");
            m_user->Click(u"cmdSaveClose");
        });
        EXPECT_THAT(SavedNames(), ElementsAre("Abrasive", "Anchor", "Bolt", "Clamp", "Zip"));
    }
}

TEST_F(ProductEditorTools, ShowWhatAnImportHasPutInPlaceOfTheList)
{
    m_folder.Write("new.csv", "Name\r\nWasher\r\nZip\r\n");
    const std::string rowChange = " KestrinProductEditor.frmProductEditor::flexGrid_RowColChange";
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 2);
        m_user->AtNextForm([&] {
            m_user->WillChooseFile(m_folder.File("new.csv"));
            m_user->Click(u"cmdBrowse");
            m_user->Click(u"chkAppend");
            m_user->PickInCell(u"flexGrid", 1, 1, 1);
            m_user->WillAnswer(MessageAnswer::Ok);
            m_trace->Forget();
            m_user->Click(u"cmdImport");
        });
        m_user->ChooseTool(u"ID_Import");
        EXPECT_THAT(NamesShown(), ElementsAre("Washer", "Zip"));
        // None of the products from before is left.
        EXPECT_EQ(CurrentRow(), -1);
        EXPECT_EQ(Shown(u"lblProductDetails"), "");
        // The list answers for its new current row when it has the focus, not while it is bound again.
        const auto& calls = m_trace->Calls();
        const auto at = std::find(calls.begin(), calls.end(), "enter" + rowChange);
        ASSERT_NE(at, calls.end());
        EXPECT_EQ(at[1], "exit" + rowChange);
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedNames(), ElementsAre("Washer", "Zip"));
}

TEST_F(ProductEditorTools, ExportTheEditorsOwnList)
{
    Edit([&] {
        m_user->Click(u"cmdNew");
        m_user->Type(u"Drill");
        m_user->Click(u"cmdSaveEdit");
        m_user->AtNextForm([&] {
            EXPECT_EQ(ToUtf8(m_user->OpenForms().back()), "frmProductExport");
            m_user->WillChooseFile(m_folder.File("all.csv"));
            m_user->Click(u"cmdBrowse");
            m_user->Click(u"cmdExport");
        });
        m_user->ChooseTool(u"ID_Export");
        Answer(MessageAnswer::No, [&] { m_user->Click(u"cmdCancel"); });
    });
    EXPECT_THAT(m_folder.Read("all.csv"), testing::HasSubstr("\"Drill\""));
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorTools, SayThatAnExportFailedAndNothingAboutAnImport)
{
    Edit([&] {
        m_trace->FailOn("enter KestrinProductEditor.ProductImportDlg::Show", 7);
        m_user->ChooseTool(u"ID_Import");
        EXPECT_THAT(m_user->Messages(), IsEmpty());
        Answer(MessageAnswer::Ok, [&] { m_user->ChooseTool(u"ID_Export"); });
        EXPECT_THAT(m_user->Messages(), ElementsAre(kExportFailed));
        m_trace->Heal();
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorTools, OpenNoSecondImportWhileOneRuns)
{
    Edit([&] {
        IToolBar& tools = Tools();
        m_user->AtNextForm([&] {
            tools.ToolClick.Raise(u"ID_Import");
            tools.ToolClick.Raise(u"ID_Export");
            EXPECT_EQ(m_user->OpenForms().size(), 2U);
            m_user->Click(u"cmdCancel");
        });
        m_user->ChooseTool(u"ID_Import");
        m_user->AtNextForm([&] { m_user->Click(u"cmdCancel"); });
        m_user->ChooseTool(u"ID_Import");
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorTools, StartWithTheImportOfAFile)
{
    m_folder.Write("new.csv", "Name,Price\r\nZip,2\r\n");
    // The import dialog opens while the editor is being shown; either may be served first.
    const auto acts = [&] {
        if (m_user->OpenForms().back() == u"frmProductEditor") {
            EXPECT_THAT(NamesShown(), ElementsAre("Anchor", "Bolt", "Clamp", "Zip"));
            m_user->Click(u"cmdSaveClose");
            return;
        }
        EXPECT_EQ(m_user->TextOf(u"txtImportFilePath"), m_folder.File("new.csv"));
        m_user->PickInCell(u"flexGrid", 1, 1, 1);
        m_user->WillAnswer(MessageAnswer::Ok);
        m_user->Click(u"cmdImport");
    };
    m_user->AtNextForm(acts);
    m_user->AtNextForm(acts);
    ShowProductEditor(m_folder.File("new.csv"));
    EXPECT_THAT(SavedNames(), ElementsAre("Anchor", "Bolt", "Clamp", "Zip"));
}

TEST_F(ProductEditorTools, StartWithoutAnImportWhereNoListIs)
{
    WriteCatalogue(std::string("no catalogue at all"));
    m_folder.Write("new.csv", "Name\r\nZip\r\n");
    m_user->AtNextForm([&] {
        EXPECT_EQ(ToUtf8(m_user->OpenForms().back()), "frmProductEditor");
        m_user->Click(u"cmdCancel");
    });
    ShowProductEditor(m_folder.File("new.csv"));
}

TEST_F(ProductEditorTools, StartWithAnImportOnceThoughItFails)
{
    m_folder.Write("new.csv", "Name\r\nZip\r\n");
    m_trace->FailOn("enter KestrinProductEditor.frmProductEditor::PrvImportProducts", 7);
    m_user->AtNextForm([&] {
        m_trace->Heal();
        // The list gains the focus again: nobody expects a dialog now.
        m_user->TabTo(u"txtNote");
        m_user->TabTo(u"flexGrid");
        EXPECT_EQ(m_user->OpenForms().size(), 1U);
        m_user->Click(u"cmdCancel");
    });
    ShowProductEditor(m_folder.File("new.csv"));
}

TEST_F(ProductEditorTools, StartWithoutAnImportWhereNoFileIsGiven)
{
    m_user->AtNextForm([&] { m_user->Click(u"cmdCancel"); });
    ShowProductEditor({});
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

} // namespace KestrinProductEditor
