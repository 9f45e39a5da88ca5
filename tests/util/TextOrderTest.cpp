// SPDX-License-Identifier: MIT
#include "util/TextOrder.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

using namespace KestrinProductEditor;

namespace {

// The order as it is defined, without any short cut.
std::vector<char32_t> Folded(const std::string& text)
{
    std::vector<char32_t> points;
    for (std::size_t at = 0; at < text.size();)
        points.push_back(TextOrder::Fold(NextCodePoint(text, at)));
    return points;
}

int Sign(int value)
{
    return (value > 0) - (value < 0);
}

int PlainCompare(const std::string& left, const std::string& right)
{
    const auto a = Folded(left);
    const auto b = Folded(right);
    return a < b ? -1 : static_cast<int>(b < a);
}

std::string RandomText(std::mt19937& random)
{
    static const std::vector<std::string> pieces = {
        "a",          "A",          "b",          "B",          "z",         "Z",
        "[",          "@",          "_",          " ",          "\x7F",      std::string(1, '\0'),
        "\u00E4",     "\u00C4",     "\u00DF",     "\u0130",     "\u0131",    "\u017F",
        "\u1E9E",     "\u03C3",     "\u03A3",     "\u03C2",     "\u212A",    "\uFF21",
        "\U00010400", "\U00010428", "\U0001F600", "stainless ", "STAINLESS "};
    std::string text;
    const auto count = random() % 12;
    for (unsigned i = 0; i < count; ++i)
        text += pieces[random() % pieces.size()];
    return text;
}

} // namespace

TEST(TextOrderFold, MapsCapitalsAndLeavesTheRest)
{
    EXPECT_EQ(TextOrder::Fold(U'A'), U'a');
    EXPECT_EQ(TextOrder::Fold(U'z'), U'z');
    EXPECT_EQ(TextOrder::Fold(U'@'), U'@');
    EXPECT_EQ(TextOrder::Fold(U'['), U'[');
    EXPECT_EQ(TextOrder::Fold(U'\u00C4'), U'\u00E4');
    EXPECT_EQ(TextOrder::Fold(U'\u00D7'), U'\u00D7'); // the multiplication sign among the capitals
    EXPECT_EQ(TextOrder::Fold(U'\u0100'), U'\u0101');
    EXPECT_EQ(TextOrder::Fold(U'\u0101'), U'\u0101');
    EXPECT_EQ(TextOrder::Fold(U'\u0178'), U'\u00FF');
    EXPECT_EQ(TextOrder::Fold(U'\u03A3'), U'\u03C3');
    EXPECT_EQ(TextOrder::Fold(U'\u03C2'), U'\u03C3'); // the final sigma
    EXPECT_EQ(TextOrder::Fold(U'\u212A'), U'k');      // the Kelvin sign
    EXPECT_EQ(TextOrder::Fold(U'\u0416'), U'\u0436');
    EXPECT_EQ(TextOrder::Fold(U'\uFF21'), U'\uFF41');
    EXPECT_EQ(TextOrder::Fold(U'\U00010400'), U'\U00010428');
    EXPECT_EQ(TextOrder::Fold(U'\U0010FFFF'), U'\U0010FFFF');
}

TEST(TextOrderFold, IsOneCharacterToOne)
{
    EXPECT_EQ(TextOrder::Fold(U'\u00DF'), U'\u00DF'); // no "ss"
    EXPECT_EQ(TextOrder::Fold(U'\u1E9E'), U'\u00DF');
    EXPECT_EQ(TextOrder::Fold(U'\u0130'), U'\u0130');
    EXPECT_EQ(TextOrder::Fold(U'\u1F88'), U'\u1F80');
}

TEST(TextOrderFold, FoldsNothingTwice)
{
    for (char32_t point = 0; point < 0x20000; ++point) {
        const char32_t folded = TextOrder::Fold(point);
        ASSERT_EQ(TextOrder::Fold(folded), folded) << std::hex << static_cast<unsigned>(point);
    }
}

TEST(TextOrderCompare, OrdersByFoldedCodePoint)
{
    EXPECT_EQ(TextOrder::Compare("", ""), 0);
    EXPECT_LT(TextOrder::Compare("", "a"), 0);
    EXPECT_EQ(TextOrder::Compare("Bolt", "bOLT"), 0);
    EXPECT_LT(TextOrder::Compare("Bolt", "bolt cutter"), 0);
    EXPECT_LT(TextOrder::Compare("item 10", "item 9"), 0);    // no numbers, only characters
    EXPECT_LT(TextOrder::Compare("Zebra", "\u00C4pfel"), 0);  // no locale
    EXPECT_LT(TextOrder::Compare("\uFF41", "\U00010400"), 0); // by code point, not by UTF-16 unit
    EXPECT_GT(TextOrder::Compare("Z", "_"), 0) << "capitals fold to small letters, behind the underscore";
}

TEST(TextOrderCompare, AgreesWithThePlainDefinitionOnRandomTexts)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int i = 0; i < 20000; ++i) {
        const std::string left = RandomText(random);
        const std::string right = random() % 4 == 0 ? left + RandomText(random) : RandomText(random);
        ASSERT_EQ(Sign(TextOrder::Compare(left, right)), PlainCompare(left, right)) << left << " / " << right;
    }
}

TEST(TextOrderKeyOf, AgreesWithTheOrderAtEveryDepth)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (int i = 0; i < 20000; ++i) {
        const std::string left = RandomText(random);
        const std::string right = random() % 4 == 0 ? left + RandomText(random) : RandomText(random);
        for (std::size_t depth = 0; depth <= 48; depth += 16) {
            const TextOrder::Key a = TextOrder::KeyOf(left, depth);
            const TextOrder::Key b = TextOrder::KeyOf(right, depth);
            if (a == b)
                continue;
            ASSERT_EQ(a < b ? -1 : 1, PlainCompare(left, right)) << left << " / " << right << " at " << depth;
            break;
        }
    }
}

TEST(TextOrderStartsWith, IgnoresCaseAndNothingElse)
{
    EXPECT_TRUE(TextOrder::StartsWith("Bolt", "bo"));
    EXPECT_TRUE(TextOrder::StartsWith("bolt", "BOLT"));
    EXPECT_TRUE(TextOrder::StartsWith("bolt", ""));
    EXPECT_FALSE(TextOrder::StartsWith("bol", "bolt"));
    EXPECT_FALSE(TextOrder::StartsWith("a bolt", "bolt"));
    EXPECT_TRUE(TextOrder::StartsWith("\u00C4pfel", "\u00E4P"));
    EXPECT_FALSE(TextOrder::StartsWith("Apfel", "\u00E4"));
    EXPECT_FALSE(TextOrder::StartsWith("bolt", "bo%"));
    EXPECT_TRUE(TextOrder::StartsWith("50% off", "50%"));
}
