// SPDX-License-Identifier: MIT
#include "platform/ui/Mnemonics.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using Captions = std::vector<std::u16string>;

/// The chosen letters as they stand in the captions; "-" for none.
[[nodiscard]] std::u16string LettersOf(const Captions& captions)
{
    std::u16string letters;
    const std::vector<std::size_t> places = ChooseMnemonics(captions);
    for (std::size_t at = 0; at < captions.size(); ++at)
        letters += places[at] == kNoMnemonic ? u'-' : captions[at][places[at]];
    return letters;
}

} // namespace

TEST(Mnemonics, ReadCaptionsAsTheyAreShown)
{
    EXPECT_EQ(ShownCaption(u"Save && Close"), u"Save & Close");
    EXPECT_EQ(ShownCaption(u"&File"), u"File");
    EXPECT_EQ(ShownCaption(u"Ready&"), u"Ready");
    EXPECT_EQ(ShownCaption(u"&&&&"), u"&&");
    EXPECT_EQ(ShownCaption(u"&&&A"), u"&A");
    EXPECT_EQ(ShownCaption(u""), u"");
}

TEST(Mnemonics, MarkOneLetterAndKeepEveryAmpersand)
{
    EXPECT_EQ(MarkMnemonic(u"Save & Close", 7), u"Save && &Close");
    EXPECT_EQ(MarkMnemonic(u"File", 0), u"&File");
    EXPECT_EQ(MarkMnemonic(u"a&b", kNoMnemonic), u"a&&b");
}

TEST(Mnemonics, PreferInitialsThenWordsThenLettersThenDigits)
{
    EXPECT_EQ(LettersOf({u"Name", u"Part#"}), u"NP");
    EXPECT_EQ(LettersOf({u"Unit Price", u"Unit Price"}), u"UP");
    EXPECT_EQ(LettersOf({u"(old)"}), u"o");
    EXPECT_EQ(LettersOf({u"7a", u"a"}), u"7a");
}

TEST(Mnemonics, GiveTheEarlierCaptionTheBetterLetter)
{
    EXPECT_EQ(LettersOf({u"New", u"Note"}), u"No");
    EXPECT_EQ(LettersOf({u"Note", u"New"}), u"Ne");
    EXPECT_EQ(LettersOf({u"Name", u"Note"}), u"No");
}

TEST(Mnemonics, FindAChoiceWhereverThereIsOne)
{
    // One after the other, the first two would leave nothing for the third.
    EXPECT_EQ(LettersOf({u"ab", u"ac", u"a"}), u"bca");
    EXPECT_EQ(LettersOf({u"abc", u"ab", u"a"}), u"cba");
}

TEST(Mnemonics, LeaveOutWhatCannotBeServed)
{
    EXPECT_EQ(LettersOf({u"a", u"A", u"..."}), u"a--");
    EXPECT_EQ(LettersOf({u"", u"b"}), u"-b");
    EXPECT_TRUE(ChooseMnemonics({}).empty());
    // More captions than letters and digits.
    const std::vector<std::size_t> places =
        ChooseMnemonics(Captions(40, u"abcdefghijklmnopqrstuvwxyz0123456789"));
    EXPECT_EQ(std::count(places.begin(), places.end(), kNoMnemonic), 4);
}

TEST(Mnemonics, ReachEverythingInAWindowOfRealSize)
{
    const Captions captions = {u"File",         u"Edit",   u"New",
                               u"Delete",       u"Save",   u"Cancel Edit",
                               u"Save & Close", u"Cancel", u"Product List (Count:12)",
                               u"Name",         u"Part#",  u"Unit Price",
                               u"Note"};
    const std::u16string letters = LettersOf(captions);
    std::set<char16_t> distinct;
    for (const char16_t letter : letters)
        distinct.insert(MnemonicLetter(letter));
    EXPECT_EQ(distinct.size(), captions.size());
    EXPECT_EQ(letters.find(u'-'), std::u16string::npos);
}

} // namespace KestrinProductEditor
