// SPDX-License-Identifier: MIT
#include "fake/ScriptedUser.h"

#include "support/ErrorOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using NamedKey = IUser::NamedKey;

/// What acts do that nobody could do. A fake that let them pass would let forms pass that nobody can use.
class ScriptedUserFailures : public testing::Test
{
protected:
    ScriptedUserFailures()
    {
        for (const std::u16string_view name : {u"cmdNew", u"cmdDelete"})
            m_form->Button(name).Click.Connect([this] { ++m_heard; });
        m_form->TextBox(u"txtNote").Change.Connect([this] { ++m_heard; });
        IGrid& grid = m_form->Grid(u"flexGrid");
        grid.SetRows(3);
        grid.SetCols(2);
        grid.SetFixedRows(1);
        grid.SetColHidden(1, true);
        grid.RowColChange.Connect([this] { ++m_heard; });
        grid.CellChange.Connect([this](std::int32_t, std::int32_t) { ++m_heard; });
        IToolBar& bar = m_form->ToolBar(u"SSActiveToolBars1");
        bar.SetTools(m_tools);
        bar.SetToolEnabled(u"ID_Edit", false);
        bar.ToolClick.Connect([this](std::u16string_view) { ++m_heard; });
    }

    void Show(const std::function<void()>& acts)
    {
        m_user.AtNextForm([&] {
            acts();
            m_form->EndModal();
        });
        m_form->ShowModal();
    }

    const std::vector<Tool> m_tools = {
        {.id = u"ID_File", .caption = u"File"},
        {.id = u"ID_Edit", .caption = u"Edit"},
        {.id = u"ID_Delete", .caption = u"Delete", .menu = u"ID_Edit", .icon = ToolIcon::Delete},
    };
    ScriptedUser m_scripted;
    IUser& m_user = m_scripted;
    std::unique_ptr<IForm> m_form = Toolkit().CreateForm(u"frmProductEditor");
    int m_heard = 0;
};

TEST_F(ScriptedUserFailures, WhatCannotBeReachedFailsAndHearsNothing)
{
    m_form->Button(u"cmdNew").SetVisible(false);
    m_form->Button(u"cmdDelete").SetEnabled(false);
    m_form->TextBox(u"txtNote").SetVisible(false);
    Show([&] {
        EXPECT_NONFATAL_FAILURE(m_user.Click(u"cmdNew"), "Click cmdNew: it is hidden");
        EXPECT_NONFATAL_FAILURE(m_user.Click(u"cmdDelete"), "Click cmdDelete: it is disabled");
        EXPECT_NONFATAL_FAILURE(m_user.DoubleClick(u"txtNote"), "it is hidden");
        EXPECT_NONFATAL_FAILURE(m_user.TabTo(u"cmdNew"), "it is hidden");
        EXPECT_NONFATAL_FAILURE(m_user.TabTo(u"lblTip"), "it never has the focus");
        EXPECT_NONFATAL_FAILURE(m_user.Click(u"lblTip"), "no button");
        EXPECT_NONFATAL_FAILURE(m_user.Click(u"cmdUnknown"), "no such control");
        EXPECT_NONFATAL_FAILURE(m_user.ClickRow(u"txtNote", 1), "no such control");
        EXPECT_NONFATAL_FAILURE((void)m_user.ValueOf(u"cmdNew"), "no such control");
        EXPECT_NONFATAL_FAILURE(m_user.ClickRow(u"flexGrid", 3), "no row 3");
        EXPECT_NONFATAL_FAILURE(m_user.DoubleClickRow(u"flexGrid", -1), "no row -1");
        EXPECT_NONFATAL_FAILURE(m_user.PickInCell(u"flexGrid", 1, 0, 1), "no entry 1");
        EXPECT_NONFATAL_FAILURE(m_user.PickInCell(u"flexGrid", 0, 0, 1), "no such cell");
        EXPECT_NONFATAL_FAILURE(m_user.PickInCell(u"flexGrid", 1, 1, 1), "no such cell");
        EXPECT_NONFATAL_FAILURE(m_user.DragColumn(u"flexGrid", 1, 100), "no such column");
        m_form->Grid(u"flexGrid").SetEnabled(false);
        EXPECT_NONFATAL_FAILURE(m_user.ClickRow(u"flexGrid", 1), "it is disabled");
    });
    EXPECT_EQ(m_heard, 0);
}

TEST_F(ScriptedUserFailures, ToolsUnderADisabledMenuFailAndHearNothing)
{
    Show([&] {
        EXPECT_NONFATAL_FAILURE(m_user.ChooseTool(u"ID_Delete"), "disabled");
        EXPECT_NONFATAL_FAILURE(m_user.ClickTool(u"ID_Delete"), "disabled");
        EXPECT_NONFATAL_FAILURE(m_user.ChooseTool(u"ID_Edit"), "disabled");
        EXPECT_NONFATAL_FAILURE(m_user.ClickTool(u"ID_File"), "no such button");
        EXPECT_NONFATAL_FAILURE(m_user.ChooseTool(u"ID_Unknown"), "no such tool");
        EXPECT_NONFATAL_FAILURE((void)m_user.CanChooseTool(u"ID_Unknown"), "no such tool");
    });
    EXPECT_EQ(m_heard, 0);
}

TEST_F(ScriptedUserFailures, AnItemThatItsOpeningMenuDisablesFails)
{
    IToolBar& bar = m_form->ToolBar(u"SSActiveToolBars1");
    bar.SetToolEnabled(u"ID_Edit", true);
    bar.ToolClick.Connect([&](std::u16string_view id) {
        if (id == u"ID_Edit")
            bar.SetToolEnabled(u"ID_Delete", false);
        else
            ++m_heard;
    });
    Show([&] { EXPECT_NONFATAL_FAILURE(m_user.ChooseTool(u"ID_Delete"), "while its menu opened"); });
    EXPECT_EQ(m_heard, 0);
}

TEST_F(ScriptedUserFailures, ActsWithoutAFormFail)
{
    EXPECT_NONFATAL_FAILURE(m_user.Click(u"cmdNew"), "no form is shown");
    EXPECT_NONFATAL_FAILURE(m_user.Type(u"x"), "no form is shown");
    EXPECT_NONFATAL_FAILURE(m_user.Press(NamedKey::Escape), "no form is shown");
    EXPECT_NONFATAL_FAILURE(m_user.PressControl('N'), "no form is shown");
    EXPECT_NONFATAL_FAILURE(m_user.CloseWindow(), "no form is shown");
    EXPECT_NONFATAL_FAILURE((void)m_user.TextOf(u"cmdNew"), "no form is shown");
    EXPECT_EQ(m_heard, 0);
}

TEST_F(ScriptedUserFailures, AFormThatIsLeftOpenFailsAndIsClosed)
{
    m_user.AtNextForm([] {});
    EXPECT_NONFATAL_FAILURE(m_form->ShowModal(), "frmProductEditor: the acts left the form open");
    EXPECT_THAT(m_user.OpenForms(), testing::IsEmpty());
}

TEST_F(ScriptedUserFailures, AFormThatNobodyExpectsFailsAndReturns)
{
    EXPECT_NONFATAL_FAILURE(m_form->ShowModal(), "nobody expected this form");
    EXPECT_THAT(m_user.OpenForms(), testing::IsEmpty());
}

TEST_F(ScriptedUserFailures, ActsThatThrowFail)
{
    m_user.AtNextForm([&] {
        m_form->EndModal();
        throw std::runtime_error("lost");
    });
    EXPECT_NONFATAL_FAILURE(m_form->ShowModal(), "lost");
}

TEST_F(ScriptedUserFailures, AMessageThatNobodyExpectsFailsAndGetsTheCarefulAnswer)
{
    MessageAnswer answer = MessageAnswer::Yes;
    EXPECT_NONFATAL_FAILURE(answer = MessageBoxes().Show(u"Delete?", kMessageYesNo, u""), "Delete?");
    EXPECT_EQ(answer, MessageAnswer::No);
    EXPECT_EQ(m_user.Messages().size(), 1U);
}

TEST_F(ScriptedUserFailures, AnAnswerThatTheMessageDoesNotOfferFails)
{
    m_user.WillAnswer(MessageAnswer::Cancel);
    MessageAnswer answer = MessageAnswer::Yes;
    EXPECT_NONFATAL_FAILURE(answer = MessageBoxes().Show(u"Delete?", kMessageYesNo, u""), "no button");
    EXPECT_EQ(answer, MessageAnswer::No);
}

TEST_F(ScriptedUserFailures, AFileDialogThatNobodyExpectsFailsAndIsCancelled)
{
    std::optional<std::u16string> path = u"kept";
    EXPECT_NONFATAL_FAILURE(path = Toolkit().ChooseFile({}), "nobody expected");
    EXPECT_EQ(path, std::nullopt);
}

TEST(ScriptedUser, FailsForEntriesThatNothingCameFor)
{
    const auto leave = [](const std::function<void(IUser&)>& write) {
        const std::unique_ptr<IUser> user = MakeUser();
        write(*user);
    };
    EXPECT_NONFATAL_FAILURE(leave([](IUser& user) { user.AtNextForm([] {}); }), "1 forms never came");
    EXPECT_NONFATAL_FAILURE(leave([](IUser& user) { user.WillEscape(); }), "1 messages never came");
    EXPECT_NONFATAL_FAILURE(leave([](IUser& user) { user.WillChooseFile(std::nullopt); }),
                            "1 file dialogs never came");
}

TEST(ScriptedUser, PutsItsToolkitInUseWhileItLives)
{
    const auto user = std::make_unique<ScriptedUser>();
    {
        const ScriptedUser inner;
        EXPECT_NE(&Toolkit(), &user->Screen());
    }
    EXPECT_EQ(&Toolkit(), &user->Screen());
}

TEST(ScriptedUser, ActsOnTheNewestUserControlWhereNoFormIsShown)
{
    ScriptedUser user;
    const std::unique_ptr<IUserControl> older = Toolkit().CreateUserControl(u"ProductDetails");
    const std::unique_ptr<IUserControl> newer = Toolkit().CreateUserControl(u"ProductDetails");
    int clicks = 0;
    newer->Button(u"cmdNew").Click.Connect([&clicks] { ++clicks; });
    user.Click(u"cmdNew");
    user.Click(u"txtProductName");
    user.Type(u"Hammer");
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(newer->TextBox(u"txtProductName").Text(), u"Hammer");
    EXPECT_EQ(older->TextBox(u"txtProductName").Text(), u"");
}

TEST(ScriptedUser, GivesAFormTheNextScriptInTheOrderOfTheirOpening)
{
    ScriptedUser user;
    const std::unique_ptr<IForm> form = Toolkit().CreateForm(u"frmProductEditor");
    const std::unique_ptr<IForm> other = Toolkit().CreateForm(u"frmProductExport");
    std::vector<std::string> order;
    form->CloseBox.Connect([&] {
        other->ShowModal();
        form->EndModal();
    });
    user.AtNextForm([&] {
        order.emplace_back("outer begins");
        user.CloseWindow();
        order.emplace_back("outer ends");
    });
    user.AtNextForm([&] {
        order.emplace_back("inner");
        other->EndModal();
    });
    form->ShowModal();
    EXPECT_THAT(order, ElementsAre("outer begins", "inner", "outer ends"));
}

TEST(ScriptedUserControl, RaisesResizeWhenItsHostChangesItsSize)
{
    ScriptedUser user;
    const std::unique_ptr<IUserControl> details = Toolkit().CreateUserControl(u"ProductDetails");
    auto& scripted = dynamic_cast<ScriptedUserControl&>(*details);
    int calls = 0;
    details->Resize.Connect([&calls] { ++calls; });
    scripted.SetInnerSize(6000, 3000);
    scripted.SetInnerSize(6000, 3000);
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(details->InnerWidth(), 6000);
    EXPECT_EQ(details->InnerHeight(), 3000);
    EXPECT_EQ(details->TextWidth(u"Unit Price"), 1200);
}

} // namespace
} // namespace KestrinProductEditor
