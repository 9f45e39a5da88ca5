// SPDX-License-Identifier: MIT
#include "platform/win32/Win32EditText.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

namespace {

constexpr std::u16string_view kMixed = u"a\rb\nc\r\nd\r\r\n";

} // namespace

TEST(Win32EditText, ShowsEveryKindOfLineBreakAsTheSystemWritesIt)
{
    EXPECT_EQ(ShownText(kMixed, BoxLines::Many), u"a\r\nb\r\nc\r\nd\r\n\r\n");
    EXPECT_EQ(ShownText(kMixed, BoxLines::One), u"a b c d  ");
    EXPECT_EQ(ShownText(u"", BoxLines::Many), u"");
    EXPECT_EQ(ShownText(u"\t\u00A0\u2028\U0001F600", BoxLines::Many), u"\t\u00A0\u2028\U0001F600");
    EXPECT_EQ(ShownText(std::u16string_view(u"a\0b", 3), BoxLines::One), u"a\u2400b");
}

TEST(Win32EditText, FindsPlacesOfTheTextInWhatIsShown)
{
    const std::array<std::size_t, 12> inNote = {0, 1, 3, 4, 6, 7, 7, 9, 10, 12, 12, 14};
    const std::array<std::size_t, 12> inLine = {0, 1, 2, 3, 4, 5, 5, 6, 7, 8, 8, 9};
    ASSERT_EQ(inNote.size(), kMixed.size() + 1);
    for (std::size_t place = 0; place < inNote.size(); ++place) {
        EXPECT_EQ(ShownPlace(kMixed, BoxLines::Many, place), inNote[place]) << place;
        EXPECT_EQ(ShownPlace(kMixed, BoxLines::One, place), inLine[place]) << place;
    }
    EXPECT_EQ(ShownPlace(kMixed, BoxLines::Many, 99), 14U);
    EXPECT_EQ(ShownPlace(u"", BoxLines::Many, 1), 0U);
}

TEST(Win32EditText, FindsPlacesOfWhatIsShownInTheText)
{
    const std::array<std::size_t, 15> fromNote = {0, 1, 1, 2, 3, 3, 4, 5, 5, 7, 8, 8, 9, 9, 11};
    const std::array<std::size_t, 10> fromLine = {0, 1, 2, 3, 4, 5, 7, 8, 9, 11};
    for (std::size_t place = 0; place < fromNote.size(); ++place)
        EXPECT_EQ(TextPlace(kMixed, BoxLines::Many, place), fromNote[place]) << place;
    for (std::size_t place = 0; place < fromLine.size(); ++place)
        EXPECT_EQ(TextPlace(kMixed, BoxLines::One, place), fromLine[place]) << place;
    EXPECT_EQ(TextPlace(kMixed, BoxLines::Many, 99), kMixed.size());
}

TEST(Win32EditText, MakesOneLine)
{
    EXPECT_EQ(InOneLine(u""), u"");
    EXPECT_EQ(InOneLine(u"\r\n\n\r"), u"");
    EXPECT_EQ(InOneLine(u"\n a\r\nb\n\nc\u2028d\u2029\r"), u" a b  c d");
    EXPECT_EQ(InOneLine(u"a\tb"), u"a\tb");
}

TEST(Win32EditText, CutsNothingInTwo)
{
    EXPECT_EQ(FittingHead(u"abc", 0), u"");
    EXPECT_EQ(FittingHead(u"abc", 2), u"ab");
    EXPECT_EQ(FittingHead(u"abc", 3), u"abc");
    EXPECT_EQ(FittingHead(u"abc", 9), u"abc");
    EXPECT_EQ(FittingHead(u"a\U0001F600", 2), u"a");
    EXPECT_EQ(FittingHead(u"a\r\n", 2), u"a");
    EXPECT_EQ(FittingHead(u"a\r\n", 3), u"a\r\n");
    EXPECT_EQ(FittingHead(u"a\n\r", 2), u"a\n");
}

TEST(Win32EditText, FindsWhereTwoTextsDiffer)
{
    const struct
    {
        std::u16string_view before;
        std::u16string_view after;
        std::size_t start;
        std::size_t endBefore;
        std::size_t endAfter;
    } cases[] = {
        {u"", u"", 0, 0, 0},
        {u"abc", u"abc", 3, 3, 3},
        {u"", u"abc", 0, 0, 3},
        {u"abc", u"", 0, 3, 0},
        {u"abc", u"axc", 1, 2, 2},
        {u"aa", u"aaa", 2, 2, 3},
        {u"aaa", u"aa", 2, 3, 2},
        {u"x\r\n", u"x\r\n\r\n", 3, 3, 5},
        // Not within a character: these have their first unit in common, the next ones their last.
        {u"\U0001F600", u"\U0001F601", 0, 2, 2},
        {u"\U0001F600", u"\U00010200", 0, 2, 2},
        {u"\r\n", u"\n", 0, 2, 1},
        {u"\r\n", u"\r", 0, 2, 1},
    };
    for (const auto& one : cases) {
        const TextDifference found = DifferenceOf(one.before, one.after);
        EXPECT_EQ(found.start, one.start) << one.endBefore << " " << one.endAfter;
        EXPECT_EQ(found.endBefore, one.endBefore) << one.start;
        EXPECT_EQ(found.endAfter, one.endAfter) << one.start;
    }
}

TEST(Win32EditText, StepsOverNothingAtTheEnds)
{
    for (const std::u16string_view text : {std::u16string_view(), std::u16string_view(u"a b")}) {
        EXPECT_EQ(CharacterBefore(text, 0), 0U);
        EXPECT_EQ(WordBefore(text, 0), 0U);
        EXPECT_EQ(CharacterAfter(text, text.size()), text.size());
        EXPECT_EQ(WordAfter(text, text.size()), text.size());
    }
}

} // namespace KestrinProductEditor
