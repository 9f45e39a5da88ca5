// SPDX-License-Identifier: MIT
#include "support/EditorFixture.h"

#include "platform/Text.h"

#include <KestrinProductEditor/ProductEditorDlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using NamedKey = IUser::NamedKey;
using Modifier = IUser::Modifier;

class ProductEditorForm : public EditorFixture
{
protected:
    ProductEditorForm() { WriteCatalogue(ThreeProducts()); }

    [[nodiscard]] std::vector<std::string> BoxTexts() const
    {
        return {Shown(u"txtProductName"), Shown(u"txtPartNum"), Shown(u"txtUnitPrice"), Shown(u"txtNote")};
    }

    void LeaveThroughCancel(MessageAnswer answer)
    {
        m_user->WillAnswer(answer);
        m_user->Click(u"cmdCancel");
    }
};

} // namespace

TEST_F(ProductEditorForm, OpensWithTheFirstProductInViewState)
{
    Edit([&] {
        EXPECT_EQ(m_user->OpenForms(), std::vector<std::u16string>{u"frmProductEditor"});
        EXPECT_EQ(ToUtf8(m_user->WindowCaption()), "Product Editor");
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:3)");
        EXPECT_EQ(Shown(u"lblTip"),
                  "Tip: Double-click a row above or a text field on the right pane to edit a "
                  "product");
        EXPECT_EQ(Shown(u"lblProductName"), "Name");
        EXPECT_EQ(Shown(u"lblPartNum"), "Part#");
        EXPECT_EQ(Shown(u"lblUnitPrice"), "Unit Price");
        EXPECT_EQ(Shown(u"lblNote"), "Note");
        EXPECT_EQ(Shown(u"cmdNew"), "New");
        EXPECT_EQ(Shown(u"cmdDelete"), "Delete");
        EXPECT_EQ(Shown(u"cmdSaveClose"), "Save & Close");
        EXPECT_EQ(Shown(u"cmdCancel"), "Cancel");
        EXPECT_EQ(Shown(u"lblProductDetails"), "Anchor");
        EXPECT_THAT(BoxTexts(), ElementsAre("Anchor", "A-1", "$12.50", "Rust-proof"));
        EXPECT_EQ(ToUtf8(m_user->Focus()), "flexGrid");
        EXPECT_EQ(CurrentRow(), 1);
        ExpectViewState();
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorForm, OpensOverAnEmptyCatalogue)
{
    WriteCatalogue(std::vector<ProductRow>{});
    Edit([&] {
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:0)");
        EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), 1);
        EXPECT_EQ(CurrentRow(), -1);
        EXPECT_EQ(Shown(u"lblProductDetails"), "");
        EXPECT_THAT(BoxTexts(), ElementsAre("", "", "", ""));
        ExpectViewState();
        m_user->Click(u"cmdNew");
        m_user->Type(u"Hammer");
        m_user->Click(u"cmdSaveEdit");
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:1)");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedNames(), ElementsAre("Hammer"));
}

TEST_F(ProductEditorForm, MakesACatalogueWhereNoneIs)
{
    std::filesystem::remove(m_database / "corvprd2.cpd");
    Edit([&] { m_user->Click(u"cmdCancel"); });
    EXPECT_THAT(SavedRows(), IsEmpty());
}

// The two states

TEST_F(ProductEditorForm, EditsTheRowThatIsDoubleClicked)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Editing Bolt");
        EXPECT_EQ(Shown(u"cmdSaveEdit"), "Save");
        EXPECT_EQ(Shown(u"cmdCancelEdit"), "Cancel Edit");
        EXPECT_THAT(BoxTexts(), ElementsAre("Bolt", "B-2", "$7", ""));
        EXPECT_EQ(ToUtf8(m_user->Focus()), "txtProductName");
        EXPECT_EQ(CurrentRow(), 2);
        ExpectEditState();
        m_user->Click(u"cmdCancelEdit");
        EXPECT_EQ(Shown(u"lblProductDetails"), "Bolt");
        ExpectViewState();
        m_user->Click(u"cmdCancel");
    });
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorForm, DoesNothingWhenTheHeaderIsDoubleClicked)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 0);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Anchor");
        ExpectViewState();
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorForm, ShowsTheRowThatTheUserGoesTo)
{
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 3);
        EXPECT_THAT(BoxTexts(), ElementsAre("Clamp", "C-3", "$1,234.50", ""));
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        m_user->Press(NamedKey::Up);
        EXPECT_THAT(BoxTexts(), ElementsAre("Bolt", "B-2", "$7", ""));
        ExpectViewState();
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorForm, GoesFromStateToState)
{
    const auto type = [&] { m_user->Type(u"x"); };
    const std::function<void()> view = [] {};
    const std::function<void()> edit = [&] { m_user->DoubleClickRow(u"flexGrid", 2); };
    const std::function<void()> typed = [&] {
        edit();
        type();
    };
    struct Transition
    {
        std::string what;
        std::function<void()> from;
        std::function<void()> event;
        bool endsInEditState;
        std::size_t prompts;
    };
    const auto no = [&] { m_user->WillAnswer(MessageAnswer::No); };
    const std::vector<Transition> transitions = {
        {"New", view, [&] { m_user->Click(u"cmdNew"); }, true, 0},
        {"Ctrl+N", view, [&] { m_user->PressControl('N'); }, true, 0},
        {"the tool New Product", view, [&] { m_user->ClickTool(u"ID_NewProduct"); }, true, 0},
        {"the menu New Product", view, [&] { m_user->ChooseTool(u"ID_NewProduct"); }, true, 0},
        {"a double click on a row", view, [&] { m_user->DoubleClickRow(u"flexGrid", 3); }, true, 0},
        {"Edit Product", view, [&] { m_user->ChooseTool(u"ID_EditProduct"); }, true, 0},
        {"F2", view, [&] { m_user->Press(NamedKey::F2); }, true, 0},
        {"Enter", view, [&] { m_user->Press(NamedKey::Enter); }, true, 0},
        {"a double click on a box", view, [&] { m_user->DoubleClick(u"txtPartNum"); }, true, 0},
        {"another row", view, [&] { m_user->ClickRow(u"flexGrid", 3); }, false, 0},
        {"Save", edit, [&] { m_user->Click(u"cmdSaveEdit"); }, false, 0},
        {"Save of edits", typed, [&] { m_user->Click(u"cmdSaveEdit"); }, false, 0},
        {"Ctrl+S", typed, [&] { m_user->PressControl('S'); }, false, 0},
        {"Cancel Edit", edit, [&] { m_user->Click(u"cmdCancelEdit"); }, false, 0},
        {"Esc", edit, [&] { m_user->Press(NamedKey::Escape); }, false, 0},
        {"Cancel Edit of edits", typed,
         [&] {
             no();
             m_user->Click(u"cmdCancelEdit");
         },
         false, 1},
        {"Esc with edits", typed,
         [&] {
             no();
             m_user->Press(NamedKey::Escape);
         },
         false, 1},
        {"another row while editing", edit, [&] { m_user->ClickRow(u"flexGrid", 3); }, false, 0},
        {"another row with edits", typed,
         [&] {
             no();
             m_user->ClickRow(u"flexGrid", 3);
         },
         false, 1},
        {"the list with edits", typed,
         [&] {
             no();
             m_user->TabTo(u"flexGrid");
         },
         false, 1},
    };
    for (const Transition& transition : transitions) {
        SCOPED_TRACE(transition.what);
        WriteCatalogue(ThreeProducts());
        const std::size_t before = m_user->Messages().size();
        Edit([&] {
            transition.from();
            transition.event();
            EXPECT_EQ(m_user->Messages().size() - before, transition.prompts);
            if (transition.endsInEditState)
                ExpectEditState();
            else
                ExpectViewState();
            m_user->Click(u"cmdSaveClose");
        });
    }
    for (const IUser::Message& message : m_user->Messages())
        EXPECT_EQ(message, kAskSaveProduct);
}

// Save

TEST_F(ProductEditorForm, SavesWhatWasTyped)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        Fill(u"txtProductName", u"Bolt M8");
        Fill(u"txtPartNum", u"B-8");
        FillPrice(u"8.25");
        Fill(u"txtNote", u"zinc");
        m_user->Click(u"cmdSaveEdit");
        EXPECT_THAT(NamesShown(), ElementsAre("Anchor", "Bolt M8", "Clamp"));
        EXPECT_THAT(BoxTexts(), ElementsAre("Bolt M8", "B-8", "$8.25", "zinc"));
        EXPECT_EQ(Shown(u"lblProductDetails"), "Bolt M8");
        m_user->Click(u"cmdSaveClose");
    });
    std::vector<ProductRow> expected = ThreeProducts();
    expected[1] = {.rowID = 3,
                   .name = "Bolt M8",
                   .partNum = "B-8",
                   .price = 82'500,
                   .note = "zinc",
                   .dirtySession = true,
                   .dirtySync = true};
    EXPECT_EQ(SavedRows(), expected);
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorForm, StaysOnAProductThatItsNewNameMoves)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        Fill(u"txtProductName", u"Zinc plate");
        m_user->Click(u"cmdSaveEdit");
        EXPECT_THAT(NamesShown(), ElementsAre("Bolt", "Clamp", "Zinc plate"));
        EXPECT_EQ(CurrentRow(), 3);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Zinc plate");
        m_user->Press(NamedKey::Up);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        m_user->Click(u"cmdSaveClose");
    });
}

TEST_F(ProductEditorForm, WritesNothingWhenNothingWasTyped)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        m_user->Click(u"cmdSaveEdit");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorForm, LeavesTheFocusInTheListWhenAnEditEnds)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        m_user->Click(u"cmdSaveEdit");
        EXPECT_EQ(ToUtf8(m_user->Focus()), "flexGrid");
        m_user->Press(NamedKey::Down);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        m_user->Press(NamedKey::Enter);
        m_user->Press(NamedKey::Escape);
        EXPECT_EQ(ToUtf8(m_user->Focus()), "flexGrid");
        m_user->Click(u"cmdCancel");
    });
}

// New

TEST_F(ProductEditorForm, AddsANewProductAndShowsNoneAfterwards)
{
    Edit([&] {
        m_user->Click(u"cmdNew");
        EXPECT_EQ(Shown(u"lblProductDetails"), "New Product");
        EXPECT_EQ(CurrentRow(), -1);
        EXPECT_THAT(BoxTexts(), ElementsAre("", "", "$0", ""));
        m_user->Type(u"Bracket");
        FillPrice(u"3");
        m_user->Click(u"cmdSaveEdit");
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:4)");
        EXPECT_THAT(NamesShown(), ElementsAre("Anchor", "Bolt", "Bracket", "Clamp"));
        EXPECT_EQ(CurrentRow(), -1);
        EXPECT_THAT(BoxTexts(), ElementsAre("", "", "", ""));
        EXPECT_EQ(Shown(u"lblProductDetails"), "");
        ExpectViewState();
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(2),
              (ProductRow{
                  .rowID = 5, .name = "Bracket", .price = 30'000, .dirtySession = true, .dirtySync = true}));
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorForm, KeepsTheListsModeOfSeveralRowsAfterNew)
{
    Edit([&] {
        // What was selected must not wait for a deletion behind the new product.
        m_user->ClickRow(u"flexGrid", 2);
        m_user->Click(u"cmdNew");
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 0);
        m_user->Click(u"cmdCancelEdit");
        EXPECT_EQ(m_user->Grid(u"flexGrid").Mode(), SelectionMode::ListBox);
        EXPECT_EQ(m_user->Grid(u"flexGrid").SelectedRowCount(), 0);
        m_user->Click(u"cmdCancel");
    });
}

TEST_F(ProductEditorForm, DropsANewProductInWhichNothingWasTyped)
{
    Edit([&] {
        m_user->Click(u"cmdNew");
        m_user->Click(u"cmdSaveEdit");
        EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:3)");
        m_user->Click(u"cmdCancel");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorForm, AsksBeforeATypedNewProductIsLeft)
{
    struct Way
    {
        std::string what;
        std::function<void()> leave;
    };
    const std::vector<Way> ways = {
        {"a row", [&] { m_user->ClickRow(u"flexGrid", 2); }},
        {"the list", [&] { m_user->TabTo(u"flexGrid"); }},
        {"Cancel Edit", [&] { m_user->Click(u"cmdCancelEdit"); }},
        {"Esc", [&] { m_user->Press(NamedKey::Escape); }},
    };
    for (const Way& way : ways) {
        for (const MessageAnswer answer : {MessageAnswer::Yes, MessageAnswer::No}) {
            SCOPED_TRACE(way.what + (answer == MessageAnswer::Yes ? ", Yes" : ", No"));
            WriteCatalogue(ThreeProducts());
            const std::size_t before = m_user->Messages().size();
            Edit([&] {
                m_user->Click(u"cmdNew");
                m_user->Type(u"Zip");
                m_user->WillAnswer(answer);
                way.leave();
                EXPECT_EQ(m_user->Messages().size() - before, 1U);
                EXPECT_EQ(m_user->Messages().back(), kAskSaveProduct);
                ExpectViewState();
                m_user->Click(u"cmdSaveClose");
            });
            EXPECT_EQ(SavedRows().size(), answer == MessageAnswer::Yes ? 4U : 3U);
        }
    }
}

// Prompt 113

TEST_F(ProductEditorForm, AsksWhetherEditsShallBeSavedWhenTheyAreLeft)
{
    struct Case
    {
        std::string what;
        std::function<void()> answer;
        bool isSaved;
    };
    const std::vector<Case> cases = {
        {"Yes", [&] { m_user->WillAnswer(MessageAnswer::Yes); }, true},
        {"No", [&] { m_user->WillAnswer(MessageAnswer::No); }, false},
        {"Esc", [&] { m_user->WillEscape(); }, false},
    };
    for (const Case& step : cases) {
        SCOPED_TRACE(step.what);
        WriteCatalogue(ThreeProducts());
        Edit([&] {
            m_user->DoubleClickRow(u"flexGrid", 2);
            Fill(u"txtPartNum", u"new");
            step.answer();
            m_user->Click(u"cmdCancelEdit");
            EXPECT_EQ(m_user->Messages().back(), kAskSaveProduct);
            EXPECT_EQ(Shown(u"txtPartNum"), step.isSaved ? "new" : "B-2");
            EXPECT_EQ(Shown(u"lblProductDetails"), "Bolt");
            ExpectViewState();
            m_user->Click(u"cmdSaveClose");
        });
        EXPECT_EQ(SavedRows().at(1).partNum, step.isSaved ? "new" : "B-2");
    }
}

TEST_F(ProductEditorForm, ShowsTheChosenRowThoughTheSaveMovesIt)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        Fill(u"txtProductName", u"Zinc plate");
        m_user->WillAnswer(MessageAnswer::Yes);
        m_user->ClickRow(u"flexGrid", 3);
        EXPECT_THAT(NamesShown(), ElementsAre("Bolt", "Clamp", "Zinc plate"));
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        EXPECT_EQ(CurrentRow(), 2);
        m_user->Press(NamedKey::F2);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Editing Clamp");
        m_user->Click(u"cmdCancelEdit");
        m_user->Click(u"cmdSaveClose");
    });
}

TEST_F(ProductEditorForm, StaysWithTheRenamedProductWhenTheListGainsTheFocus)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        Fill(u"txtProductName", u"Zinc plate");
        m_user->WillAnswer(MessageAnswer::Yes);
        m_user->TabTo(u"flexGrid");
        EXPECT_EQ(CurrentRow(), 3);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Zinc plate");
        m_user->Click(u"cmdSaveClose");
    });
}

// Leaving

TEST_F(ProductEditorForm, AsksOnCancelWhetherTheListShallBeSaved)
{
    struct Case
    {
        std::string what;
        std::function<void()> answer;
        bool isSaved;
        bool isClosed;
    };
    const std::vector<Case> answers = {
        {"Yes", [&] { m_user->WillAnswer(MessageAnswer::Yes); }, true, true},
        {"No", [&] { m_user->WillAnswer(MessageAnswer::No); }, false, true},
        {"Cancel", [&] { m_user->WillAnswer(MessageAnswer::Cancel); }, true, false},
        {"Esc", [&] { m_user->WillEscape(); }, true, false},
    };
    struct Way
    {
        std::string what;
        std::function<void()> leave;
    };
    const std::vector<Way> ways = {
        {"Cancel", [&] { m_user->Click(u"cmdCancel"); }},
        {"the close box", [&] { m_user->CloseWindow(); }},
        {"the Esc key", [&] { m_user->Press(NamedKey::Escape); }},
    };
    for (const Way& way : ways) {
        for (const Case& step : answers) {
            SCOPED_TRACE(way.what + ", answer " + step.what);
            WriteCatalogue(ThreeProducts());
            const std::string bytes = CatalogueBytes();
            Edit([&] {
                m_user->DoubleClickRow(u"flexGrid", 2);
                Fill(u"txtPartNum", u"new");
                m_user->Click(u"cmdSaveEdit");
                step.answer();
                way.leave();
                EXPECT_EQ(m_user->Messages().back(), kAskSaveList);
                if (step.isClosed)
                    return;
                ExpectViewState();
                EXPECT_EQ(Shown(u"txtPartNum"), "new");
                m_user->Click(u"cmdSaveClose");
            });
            if (step.isSaved)
                EXPECT_EQ(SavedRows().at(1).partNum, "new");
            else
                EXPECT_EQ(CatalogueBytes(), bytes);
        }
    }
}

TEST_F(ProductEditorForm, SavesPendingEditsSilentlyOnCancelBeforeItAsksAboutTheList)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        Fill(u"txtPartNum", u"new");
        LeaveThroughCancel(MessageAnswer::Cancel);
        EXPECT_THAT(m_user->Messages(), ElementsAre(kAskSaveList));
        ExpectViewState();
        EXPECT_EQ(ToUtf8(m_user->CellShown(u"flexGrid", 2, 1)), "new");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(1).partNum, "new");
}

TEST_F(ProductEditorForm, WritesTheListAfterANoThatWasFollowedByMoreWork)
{
    // Cancel, then Save & Close: the last word counts.
    Edit([&] {
        m_user->Click(u"cmdNew");
        m_user->Type(u"Drill");
        LeaveThroughCancel(MessageAnswer::Cancel);
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_THAT(SavedNames(), ElementsAre("Anchor", "Bolt", "Clamp", "Drill"));
}

TEST_F(ProductEditorForm, KeepsPendingEditsOnSaveAndClose)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 3);
        Fill(u"txtNote", u"sold out");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(2).note, "sold out");
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorForm, KeepsWhatWasTypedWhenTheProgramEnds)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 3);
        Fill(u"txtNote", u"sold out");
        m_spy.Editor().EndModal();
    });
    EXPECT_EQ(SavedRows().at(2).note, "sold out");
    EXPECT_THAT(m_user->Messages(), IsEmpty());
    EXPECT_EQ(m_settings.saves, 1U);
}

// Failures

TEST_F(ProductEditorForm, SaysInThePlaceOfTheListThatTheCatalogueCannotBeOpened)
{
    const std::string bytes = "no catalogue at all";
    const std::vector<std::function<void()>> ways = {
        [&] { m_user->Click(u"cmdCancel"); },
        [&] { m_user->Press(NamedKey::Escape); },
        [&] { m_user->CloseWindow(); },
        [&] { m_spy.Editor().EndModal(); },
    };
    for (const auto& leave : ways) {
        WriteCatalogue(bytes);
        Edit([&] {
            EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), 1);
            const std::string notice = ToUtf8(m_user->Grid(u"flexGrid").Notice());
            EXPECT_THAT(notice, StartsWith("The product list could not be opened: cannot read '"));
            EXPECT_THAT(notice, HasSubstr("corvprd2.cpd"));
            EXPECT_EQ(Shown(u"lblProductView"), "Product List");
            for (const char16_t* const name : {u"cmdNew", u"cmdDelete", u"cmdSaveClose"})
                EXPECT_FALSE(m_user->IsEnabled(name)) << ToUtf8(name);
            for (const char16_t* const id : {u"ID_Import", u"ID_Export", u"ID_NewProduct", u"ID_EditProduct",
                                             u"ID_Delete", u"ID_SelectAll"})
                EXPECT_FALSE(m_user->CanChooseTool(id)) << ToUtf8(id);
            m_user->DoubleClick(u"txtNote");
            EXPECT_FALSE(IsInEditState());
            leave();
        });
        EXPECT_EQ(CatalogueBytes(), bytes);
    }
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorForm, StaysInEditStateWithTheTextWhenASaveFails)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        Fill(u"txtPartNum", u"new");
        m_trace->FailOn("enter KestrinProductEditor.ProductLkpMgr::Update", 7);
        m_user->Click(u"cmdSaveEdit");
        ExpectEditState();
        EXPECT_EQ(Shown(u"txtPartNum"), "new");
        m_trace->Heal();
        m_user->WillAnswer(MessageAnswer::Yes);
        m_user->ClickRow(u"flexGrid", 1);
        ExpectViewState();
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(1).partNum, "new");
    EXPECT_THAT(m_user->Messages(), ElementsAre(kAskSaveProduct));
}

TEST_F(ProductEditorForm, AsksAgainUntilASaveSucceeds)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        Fill(u"txtPartNum", u"new");
        m_trace->FailOn("enter KestrinProductEditor.ProductLkpMgr::Update", 7);
        // For the row, and for the focus.
        m_user->WillAnswer(MessageAnswer::Yes);
        m_user->WillAnswer(MessageAnswer::Yes);
        m_user->ClickRow(u"flexGrid", 3);
        ExpectEditState();
        EXPECT_EQ(Shown(u"lblProductDetails"), "Editing Bolt");
        EXPECT_EQ(Shown(u"txtPartNum"), "new");
        m_trace->Heal();
        m_user->PressControl('S');
        EXPECT_EQ(Shown(u"lblProductDetails"), "Clamp");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(1).partNum, "new");
    EXPECT_THAT(m_user->Messages(), ElementsAre(kAskSaveProduct, kAskSaveProduct));
}

TEST_F(ProductEditorForm, AddsANewProductOnceThoughALaterStepFails)
{
    for (const std::string step : {"enter KestrinProductEditor.frmProductEditor::PrvRefreshView",
                                   "exit KestrinProductEditor.frmProductEditor::PrvRefreshView",
                                   "enter KestrinProductEditor.frmProductEditor::PrvShowCurrentRow"}) {
        SCOPED_TRACE(step);
        WriteCatalogue(ThreeProducts());
        Edit([&] {
            m_user->Click(u"cmdNew");
            m_user->Type(u"Drill");
            m_trace->FailOn(step, 7);
            m_user->Click(u"cmdSaveEdit");
            m_trace->Heal();
            ExpectEditState();
            Fill(u"txtNote", u"steel");
            m_user->Click(u"cmdSaveEdit");
            m_user->Click(u"cmdSaveClose");
        });
        EXPECT_THAT(SavedNames(), ElementsAre("Anchor", "Bolt", "Clamp", "Drill"));
        EXPECT_EQ(SavedRows().at(3).note, "steel");
    }
}

TEST_F(ProductEditorForm, SavesANewProductThoughTheTraceOpensAnotherEditorMeanwhile)
{
    for (const std::string step :
         {"enter KestrinProductEditor.Product::Pack", "enter KestrinProductMgr.ProductLkpMgr::AddNew",
          "exit KestrinProductMgr.ProductLkpMgr::AddNew"}) {
        SCOPED_TRACE(step);
        WriteCatalogue(ThreeProducts());
        Edit([&] {
            m_user->Click(u"cmdNew");
            m_user->Type(u"Drill");
            bool hasOpened = false;
            m_trace->onCall = [&](const std::string& call) {
                if (call != step || std::exchange(hasOpened, true))
                    return;
                m_user->AtNextForm([&] { m_user->Click(u"cmdCancel"); });
                ProductEditorDlg::Create()->Show(Variant());
            };
            // The list has the focus then, and gains it anew.
            m_user->WillAnswer(MessageAnswer::Yes);
            m_user->TabTo(u"flexGrid");
            m_trace->onCall = nullptr;
            EXPECT_FALSE(IsInEditState());
            m_user->Click(u"cmdSaveClose");
        });
        EXPECT_THAT(SavedNames(), ElementsAre("Anchor", "Bolt", "Clamp", "Drill"));
    }
}

TEST_F(ProductEditorForm, DropsWhatANoHasDroppedThoughTheNextStepFails)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        Fill(u"txtPartNum", u"new");
        m_user->WillAnswer(MessageAnswer::No);
        m_trace->FailOn("enter KestrinProductEditor.frmProductEditor::PrvRefreshView", 7);
        m_user->Click(u"cmdCancelEdit");
        m_trace->Heal();
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorForm, LetsNobodyBeLockedInByAFailingHandler)
{
    Edit([&] {
        m_trace->FailOn("enter KestrinProductEditor.frmProductEditor::cmdCancel_Click", 7);
        m_user->Click(u"cmdCancel");
        m_user->Press(NamedKey::Escape);
        EXPECT_EQ(m_user->OpenForms().size(), 1U);
        m_user->CloseWindow();
    });
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorForm, TakesNoTextForAnotherProductsWhenShowingOneFails)
{
    std::vector<ProductRow> rows = ThreeProducts();
    rows[1].note = std::string(4096, 'n');
    WriteCatalogue(rows);
    Edit([&] {
        m_user->ClickRow(u"flexGrid", 2);
        EXPECT_THAT(BoxTexts(), ElementsAre("", "", "", ""));
        EXPECT_EQ(Shown(u"lblProductDetails"), "");
        ExpectViewState();

        // Not even out of edit state, where what is typed goes into the working product.
        m_user->DoubleClickRow(u"flexGrid", 1);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Editing Anchor");
        m_user->ClickRow(u"flexGrid", 2);
        EXPECT_THAT(BoxTexts(), ElementsAre("", "", "", ""));
        ExpectViewState();

        m_user->ChooseTool(u"ID_EditProduct");
        ExpectViewState();
        m_user->ClickRow(u"flexGrid", 3);
        EXPECT_EQ(Shown(u"txtProductName"), "Clamp");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows(), rows);
}

TEST_F(ProductEditorForm, AsksOnCancelOverAProductThatCannotBeShown)
{
    std::vector<ProductRow> rows = ThreeProducts();
    rows[1].note = std::string(4096, 'n');
    for (const bool isCloseBox : {false, true}) {
        WriteCatalogue(rows);
        Edit([&] {
            m_user->WillAnswer(MessageAnswer::Yes);
            m_user->Click(u"cmdDelete");
            EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:2)");
            EXPECT_THAT(BoxTexts(), ElementsAre("", "", "", ""));
            m_user->WillAnswer(MessageAnswer::No);
            if (isCloseBox)
                m_user->CloseWindow();
            else
                m_user->Click(u"cmdCancel");
        });
        EXPECT_EQ(m_user->Messages().back(), kAskSaveList);
        EXPECT_EQ(SavedRows(), rows);
    }
}

TEST_F(ProductEditorForm, StaysOpenOnCancelWhileASaveFails)
{
    Edit([&] {
        m_user->DoubleClickRow(u"flexGrid", 2);
        Fill(u"txtPartNum", u"new");
        m_trace->FailOn("enter KestrinProductEditor.ProductLkpMgr::Update", 7);
        m_user->Click(u"cmdCancel");
        ExpectEditState();
        EXPECT_EQ(Shown(u"txtPartNum"), "new");
        m_user->Click(u"cmdSaveClose");
        ExpectEditState();
        m_trace->Heal();
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(SavedRows().at(1).partNum, "new");
    EXPECT_THAT(m_user->Messages(), IsEmpty());
}

TEST_F(ProductEditorForm, ShowsNoOldPriceInAnEmptyPane)
{
    WriteCatalogue({{.rowID = 2, .name = "Anchor", .price = 125'000}});
    Edit([&] {
        m_user->WillAnswer(MessageAnswer::Yes);
        m_user->Click(u"cmdDelete");
        m_user->TabTo(u"txtUnitPrice");
        EXPECT_EQ(Shown(u"txtUnitPrice"), "0");
        m_user->Click(u"cmdSaveClose");
    });
}

} // namespace KestrinProductEditor
