// SPDX-License-Identifier: MIT
#include "platform/ui/WindowMnemonics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using Rank = WindowMnemonics::Rank;

/// Bearers of letters, and what each of them was told to show.
class WindowMnemonicsTest : public testing::Test
{
protected:
    std::size_t Add(Rank rank, std::u16string_view caption)
    {
        std::vector<std::u16string>& told = m_told.emplace_back();
        const std::size_t bearer =
            m_mnemonics.Add(rank, [&told](const std::u16string& marked) { told.push_back(marked); });
        m_mnemonics.SetCaption(bearer, caption);
        return bearer;
    }

    [[nodiscard]] std::vector<std::u16string> Shown() const
    {
        std::vector<std::u16string> shown;
        for (const auto& told : m_told)
            shown.push_back(told.empty() ? u"(nothing)" : told.back());
        return shown;
    }

    std::deque<std::vector<std::u16string>> m_told;
    WindowMnemonics m_mnemonics;
};

TEST_F(WindowMnemonicsTest, NoTwoBearersHaveOneLetter)
{
    Add(Rank::Button, u"Cancel");
    Add(Rank::Button, u"Close");
    Add(Rank::Button, u"Clear");
    EXPECT_THAT(Shown(), ElementsAre(u"&Cancel", u"C&lose", u"Cl&ear"));
}

TEST_F(WindowMnemonicsTest, TheBetterRankHasTheBetterLetterWhoeverCameFirst)
{
    Add(Rank::Label, u"Name");
    Add(Rank::Button, u"New");
    Add(Rank::Menu, u"Navigate");
    EXPECT_THAT(Shown(), ElementsAre(u"N&ame", u"N&ew", u"&Navigate"));
}

TEST_F(WindowMnemonicsTest, ALetterStaysWhileItsCaptionHasIt)
{
    const std::size_t save = Add(Rank::Button, u"Save");
    Add(Rank::Button, u"Close");
    m_mnemonics.SetCaption(save, u"Close and save");
    EXPECT_THAT(Shown(), ElementsAre(u"Clo&se and save", u"&Close"));
    EXPECT_THAT(m_told[1], ElementsAre(u"&Close"));
}

TEST_F(WindowMnemonicsTest, WithoutItsLetterACaptionGetsAnother)
{
    const std::size_t save = Add(Rank::Button, u"Save");
    Add(Rank::Button, u"Close");
    m_mnemonics.SetCaption(save, u"Clone");
    EXPECT_THAT(Shown(), ElementsAre(u"&Clone", u"C&lose"));
}

TEST_F(WindowMnemonicsTest, WhatIsShownAlreadyIsNotShownAnew)
{
    const std::size_t save = Add(Rank::Button, u"Save");
    m_mnemonics.SetCaption(save, u"Save");
    Add(Rank::Button, u"Close");
    Add(Rank::Label, u"Name");
    EXPECT_THAT(m_told[0], ElementsAre(u"&Save"));
    EXPECT_THAT(m_told[1], ElementsAre(u"&Close"));
}

TEST_F(WindowMnemonicsTest, ACaptionWithoutALetterIsShownLetterForLetter)
{
    const std::size_t first = Add(Rank::Label, u"");
    Add(Rank::Label, u"& \u00C4");
    EXPECT_THAT(Shown(), ElementsAre(u"", u"&& \u00C4"));
    m_mnemonics.SetCaption(first, u"R & D");
    EXPECT_THAT(Shown(), ElementsAre(u"&R && D", u"&& \u00C4"));
    m_mnemonics.SetCaption(first, u"");
    EXPECT_THAT(Shown(), ElementsAre(u"", u"&& \u00C4"));
}

} // namespace
} // namespace KestrinProductEditor
