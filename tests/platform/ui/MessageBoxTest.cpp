// SPDX-License-Identifier: MIT
#include "platform/ui/MessageBox.h"

#include "platform/ui/Toolkit.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace KestrinProductEditor {

namespace {

class RecordingMessageBox final : public IMessageBox
{
public:
    MessageAnswer Show(std::u16string_view text, std::int32_t, std::u16string_view) override
    {
        m_text = text;
        return MessageAnswer::Yes;
    }
    [[nodiscard]] const std::u16string& Text() const { return m_text; }

private:
    std::u16string m_text;
};

[[nodiscard]] std::string Shown(std::u16string_view text, std::u16string_view title)
{
    testing::internal::CaptureStderr();
    MessageBoxes().Show(text, kMessageExclamation, title);
    return testing::internal::GetCapturedStderr();
}

/// A toolkit with message boxes and nothing else.
class MessagesOnly final : public IToolkit
{
public:
    explicit MessagesOnly(IMessageBox& messages) : m_messages(messages) {}
    std::unique_ptr<IForm> CreateForm(std::u16string_view) override { return nullptr; }
    std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view) override { return nullptr; }
    IMessageBox& Messages() override { return m_messages; }
    std::optional<std::u16string> ChooseFile(const FileDialog&) override { return std::nullopt; }

private:
    IMessageBox& m_messages;
};

} // namespace

TEST(MessageBox, IsOneLineOnStandardErrorWithoutAToolkit)
{
    EXPECT_EQ(Shown(u"Cannot start", u"Salvo"), "Salvo: Cannot start\n");
    EXPECT_EQ(Shown(u"T\u00FCr", u"Salvo"), "Salvo: T\xC3\xBCr\n");
    EXPECT_EQ(Shown(u"No title", u""), "No title\n");
    EXPECT_EQ(Shown(u"One.\r\nTwo.\nThree.", u"Salvo"), "Salvo: One. Two. Three.\n");
}

TEST(MessageBox, IsReplacedInAScopeAndOnItsThreadOnly)
{
    RecordingMessageBox outer;
    RecordingMessageBox inner;
    {
        const ScopedMessageBox outerScope(outer);
        {
            const ScopedMessageBox innerScope(inner);
            EXPECT_EQ(Shown(u"first", u"Salvo"), "");
        }
        EXPECT_EQ(Shown(u"second", u"Salvo"), "");
        testing::internal::CaptureStderr();
        std::thread([] { MessageBoxes().Show(u"third", kMessageExclamation, u"Salvo"); }).join();
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "Salvo: third\n");
    }
    EXPECT_EQ(Shown(u"fourth", u"Salvo"), "Salvo: fourth\n");
    EXPECT_EQ(inner.Text(), u"first");
    EXPECT_EQ(outer.Text(), u"second");
}

TEST(MessageBox, GivesTheCarefulAnswerOnStandardError)
{
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageBoxes().Show(u"a", kMessageYesNoCancel, u""), MessageAnswer::Cancel);
    EXPECT_EQ(MessageBoxes().Show(u"b", kMessageYesNo, u""), MessageAnswer::No);
    EXPECT_EQ(MessageBoxes().Show(u"c", kMessageYesNo | kMessageSecondDefault, u""), MessageAnswer::No);
    EXPECT_EQ(MessageBoxes().Show(u"d", kMessageExclamation, u""), MessageAnswer::Ok);
    EXPECT_EQ(MessageBoxes().Show(u"e", kMessageInformation, u""), MessageAnswer::Ok);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "a\nb\nc\nd\ne\n");
}

TEST(MessageBox, IsThatOfTheToolkitInUse)
{
    RecordingMessageBox ofToolkit;
    RecordingMessageBox ofScope;
    MessagesOnly toolkit(ofToolkit);
    const ScopedToolkit toolkitScope(toolkit);
    EXPECT_EQ(&Toolkit(), &toolkit);
    EXPECT_EQ(MessageBoxes().Show(u"first", kMessageYesNo, u"Salvo"), MessageAnswer::Yes);
    EXPECT_EQ(ofToolkit.Text(), u"first");
    {
        const ScopedMessageBox scope(ofScope);
        MessageBoxes().Show(u"second", kMessageYesNo, u"Salvo");
    }
    EXPECT_EQ(ofScope.Text(), u"second");
    EXPECT_EQ(ofToolkit.Text(), u"first");
    std::thread([] { EXPECT_EQ(Shown(u"third", u"Salvo"), "Salvo: third\n"); }).join();
}

} // namespace KestrinProductEditor
