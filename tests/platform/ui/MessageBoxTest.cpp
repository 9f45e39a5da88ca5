// SPDX-License-Identifier: MIT
#include "platform/ui/MessageBox.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace KestrinProductEditor {

namespace {

class RecordingMessageBox final : public IMessageBox
{
public:
    void Show(std::u16string_view text, std::int32_t, std::u16string_view) override { m_text = text; }
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

} // namespace KestrinProductEditor
