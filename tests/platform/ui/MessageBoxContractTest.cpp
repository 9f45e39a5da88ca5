// SPDX-License-Identifier: MIT
#include "platform/ui/MessageBox.h"

#include "support/User.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;

class MessageBoxContract : public testing::Test
{
protected:
    [[nodiscard]] IUser& User() { return *m_user; }

private:
    std::unique_ptr<IUser> m_user = MakeUser();
};

TEST_F(MessageBoxContract, EveryButtonAnswersItself)
{
    struct Row
    {
        std::int32_t style;
        std::vector<MessageAnswer> answers;
    };
    const std::vector<Row> rows = {
        {kMessageYesNoCancel, {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel}},
        {kMessageYesNo, {MessageAnswer::Yes, MessageAnswer::No}},
        {kMessageExclamation, {MessageAnswer::Ok}},
        {kMessageInformation, {MessageAnswer::Ok}},
    };
    for (const Row& row : rows) {
        for (const MessageAnswer answer : row.answers) {
            User().WillAnswer(answer);
            EXPECT_EQ(MessageBoxes().Show(u"text", row.style, u"title"), answer) << row.style;
        }
    }
}

TEST_F(MessageBoxContract, EscapeIsCancelElseNoElseOk)
{
    const std::vector<std::pair<std::int32_t, MessageAnswer>> rows = {
        {kMessageYesNoCancel, MessageAnswer::Cancel},
        {kMessageYesNo, MessageAnswer::No},
        {kMessageExclamation, MessageAnswer::Ok},
        {kMessageInformation, MessageAnswer::Ok},
    };
    for (const auto& [style, answer] : rows) {
        User().WillEscape();
        EXPECT_EQ(MessageBoxes().Show(u"text", style, u"title"), answer) << style;
    }
}

TEST_F(MessageBoxContract, TextAndTitleAreShownAsTheyAre)
{
    const IUser::Message first = {u"Delete \"R&D\"?\r\n<b>50%</b>", kMessageYesNo, u"Salvo"};
    const IUser::Message second = {u"", kMessageInformation, u""};
    for (const IUser::Message& message : {first, second}) {
        User().WillEscape();
        (void)MessageBoxes().Show(message.text, message.style, message.title);
    }
    EXPECT_THAT(User().Messages(), ElementsAre(first, second));
}

TEST_F(MessageBoxContract, AMessageMayComeFromAnActOnAForm)
{
    const std::unique_ptr<IForm> form = Toolkit().CreateForm(u"frmProductExport");
    std::vector<MessageAnswer> answers;
    form->CloseBox.Connect([&] {
        answers.push_back(MessageBoxes().Show(u"Save?", kMessageYesNoCancel, u"Salvo"));
        if (answers.back() != MessageAnswer::Cancel)
            form->EndModal();
    });
    User().WillAnswer(MessageAnswer::Cancel);
    User().WillAnswer(MessageAnswer::No);
    User().AtNextForm([&] {
        User().CloseWindow();
        EXPECT_THAT(User().OpenForms(), ElementsAre(u"frmProductExport"));
        User().CloseWindow();
    });
    form->ShowModal();
    EXPECT_THAT(answers, ElementsAre(MessageAnswer::Cancel, MessageAnswer::No));
}

} // namespace
} // namespace KestrinProductEditor
