// SPDX-License-Identifier: MIT
#include "platform/Text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

struct Pair
{
    const char* name;
    std::u16string utf16;
    std::string utf8;
};

[[nodiscard]] std::vector<Pair> Pairs()
{
    return {
        {"empty", u"", ""},
        {"ascii", u"Bolt M8", "Bolt M8"},
        {"nul inside", std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
        {"last of one byte", u"\u007F", "\x7F"},
        {"first of two bytes", u"\u0080", "\xC2\x80"},
        {"last of two bytes", u"\u07FF", "\xDF\xBF"},
        {"first of three bytes", u"\u0800", "\xE0\xA0\x80"},
        {"before the surrogates", u"\uD7FF", "\xED\x9F\xBF"},
        {"behind the surrogates", u"\uE000", "\xEE\x80\x80"},
        {"last of three bytes", u"\uFFFF", "\xEF\xBF\xBF"},
        {"first of four bytes", u"\U00010000", "\xF0\x90\x80\x80"},
        {"last of all", u"\U0010FFFF", "\xF4\x8F\xBF\xBF"},
        {"high surrogate alone", {0xD800}, "\xED\xA0\x80"},
        {"high surrogate before a letter",
         {0xDBFF, u'a'},
         "\xED\xAF\xBF"
         "a"},
        {"low surrogate alone", {0xDC00}, "\xED\xB0\x80"},
        {"surrogates in the wrong order", {0xDFFF, 0xD83D}, "\xED\xBF\xBF\xED\xA0\xBD"},
        {"two high surrogates and a low one", {0xD83D, 0xD83D, 0xDE00}, "\xED\xA0\xBD\xF0\x9F\x98\x80"},
        {"byte-order mark", u"\uFEFF", "\xEF\xBB\xBF"},
    };
}

/// One unit at a time, by the definition of the forms.
[[nodiscard]] std::string PlainUtf8(std::u16string_view text)
{
    std::string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        char32_t codePoint = text[at];
        if (codePoint >= 0xD800 && codePoint < 0xDC00 && at + 1 < text.size() && text[at + 1] >= 0xDC00 &&
            text[at + 1] < 0xE000) {
            codePoint = 0x10000 + ((codePoint & 0x3FF) << 10 | (text[at + 1] & 0x3FFu));
            ++at;
        }
        AppendCodePoint(codePoint, out);
    }
    return out;
}

[[nodiscard]] std::vector<char32_t> CodePointsOf(std::string_view text)
{
    std::vector<char32_t> codePoints;
    for (std::size_t at = 0; at < text.size();)
        codePoints.push_back(NextCodePoint(text, at));
    return codePoints;
}

} // namespace

TEST(ToUtf8, GivesTheExactBytes)
{
    for (const Pair& pair : Pairs())
        EXPECT_EQ(ToUtf8(pair.utf16), pair.utf8) << pair.name;
}

TEST(ToUtf16, GivesTheExactUnits)
{
    for (const Pair& pair : Pairs())
        EXPECT_EQ(ToUtf16(pair.utf8), pair.utf16) << pair.name;
}

TEST(ToUtf16, GivesTheSameWhereverTheCharacterStandsInTheText)
{
    for (const Pair& pair : Pairs()) {
        for (std::size_t before = 0; before < 40; ++before) {
            const std::size_t behind = 40 - before;
            const std::string utf8 = std::string(before, 'x') + pair.utf8 + std::string(behind, 'y');
            const std::u16string utf16 =
                std::u16string(before, u'x') + pair.utf16 + std::u16string(behind, u'y');
            EXPECT_EQ(ToUtf16(utf8), utf16) << pair.name << ' ' << before;
            EXPECT_EQ(ToUtf8(utf16), utf8) << pair.name << ' ' << before;
            EXPECT_EQ(Utf16Length(utf8), utf16.size()) << pair.name << ' ' << before;
        }
    }
}

TEST(ToUtf16, MakesAReplacementOfEachByteThatBeginsNothing)
{
    const struct
    {
        std::string_view utf8;
        std::u16string_view utf16;
    } cases[] = {
        {"\x80", u"\uFFFD"},
        {"a\xFF"
         "b",
         u"a\uFFFDb"},
        {"\xC0\xAF", u"\uFFFD\uFFFD"},
        {"\xC1\xBF", u"\uFFFD\uFFFD"},
        {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},
        {"\xF0\x8F\xBF\xBF", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xF5\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xC3", u"\uFFFD"},
        {"\xC3(", u"\uFFFD("},
        {"\xE2\x82", u"\uFFFD\uFFFD"},
        {"\xE2\x82\xC3\xA9", u"\uFFFD\uFFFD\u00E9"},
        {"\xF0\x9F\x98", u"\uFFFD\uFFFD\uFFFD"},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(ToUtf16(entry.utf8), entry.utf16);
        EXPECT_EQ(Utf16Length(entry.utf8), entry.utf16.size());
        EXPECT_FALSE(IsValidUtf8(entry.utf8));
    }
}

TEST(ToUtf8, BringsEveryRandomTextBack)
{
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const char16_t kinds[][2] = {{0, 0x7F},     {0, 0x7F},       {0, 0x7F},
                                 {0x80, 0x7FF}, {0x800, 0xFFFF}, {0xD800, 0xDFFF}};
    for (int round = 0; round < 3000; ++round) {
        std::u16string text(random() % 700, u'\0');
        std::size_t at = 0;
        while (at < text.size()) {
            const auto& kind = kinds[random() % std::size(kinds)];
            for (std::size_t run = random() % 30; run > 0 && at < text.size(); --run)
                text[at++] = static_cast<char16_t>(kind[0] + random() % (kind[1] - kind[0] + 1u));
        }
        const std::string utf8 = ToUtf8(text);
        ASSERT_EQ(utf8, PlainUtf8(text));
        ASSERT_EQ(ToUtf16(utf8), text);
        ASSERT_EQ(Utf16Length(utf8), text.size());
    }
}

TEST(AppendUtf8, KeepsWhatIsThere)
{
    std::string out = "Price: ";
    AppendUtf8(u"5 \u20AC", out);
    EXPECT_EQ(out, "Price: 5 \xE2\x82\xAC");
    AppendUtf8(u"", out);
    EXPECT_EQ(out, "Price: 5 \xE2\x82\xAC");
}

TEST(AppendUtf8, JoinedHalvesStillReadAsTheOneText)
{
    std::string out;
    AppendUtf8(std::u16string{0xD83D}, out);
    AppendUtf8(std::u16string{0xDE00}, out);
    EXPECT_EQ(ToUtf16(out), u"\U0001F600");
}

TEST(Utf16Head, NeverEndsInHalfACharacter)
{
    const struct
    {
        std::string_view text;
        std::size_t units;
        std::string_view head;
    } cases[] = {
        {"", 0, ""},
        {"", 5, ""},
        {"abc", 0, ""},
        {"abc", 2, "ab"},
        {"abc", 3, "abc"},
        {"abc", 4, "abc"},
        {"a\xC3\xA9"
         "b",
         1, "a"},
        {"a\xC3\xA9"
         "b",
         2, "a\xC3\xA9"},
        {"a\xC3\xA9"
         "b",
         3,
         "a\xC3\xA9"
         "b"},
        {"\xE2\x82\xAC\xE2\x82\xAC", 1, "\xE2\x82\xAC"},
        {"\xF0\x9F\x98\x80", 0, ""},
        {"\xF0\x9F\x98\x80", 1, ""},
        {"\xF0\x9F\x98\x80", 2, "\xF0\x9F\x98\x80"},
        {"a\xF0\x9F\x98\x80z", 2, "a"},
        {"a\xF0\x9F\x98\x80z", 3, "a\xF0\x9F\x98\x80"},
        {"\xED\xA0\xBDz", 1, "\xED\xA0\xBD"},
        {"\xED\xA0\xBD\xED\xB8\x80", 1, ""},
        {"a\xED\xA0\xBD\xED\xB8\x80z", 2, "a"},
        {"a\xED\xA0\xBD\xED\xB8\x80z", 3, "a\xED\xA0\xBD\xED\xB8\x80"},
        {"\xED\xB8\x80\xED\xB8\x80", 1, "\xED\xB8\x80"},
        {"\xFF\xFF\xFF", 2, "\xFF\xFF"},
    };
    for (const auto& entry : cases)
        EXPECT_EQ(Utf16Head(entry.text, entry.units), entry.head) << entry.text << ' ' << entry.units;
}

TEST(Utf16Head, IsTheLongestHeadThatFits)
{
    const std::string text =
        "Schraube f\xC3\xBCr T\xC3\xBCren \xF0\x9F\x94\xA9 und mehr als ein paar lange W\xC3\xB6rter";
    for (std::size_t units = 0; units <= Utf16Length(text) + 1; ++units) {
        const std::string_view head = Utf16Head(text, units);
        EXPECT_TRUE(IsValidUtf8(head));
        EXPECT_LE(Utf16Length(head), units);
        if (head.size() == text.size())
            continue;
        std::size_t next = head.size();
        static_cast<void>(NextCodePoint(text, next));
        EXPECT_GT(Utf16Length(std::string_view(text).substr(0, next)), units);
    }
}

TEST(IsValidUtf8, AcceptsEveryCharacterAndNoSurrogate)
{
    for (char32_t codePoint = 0; codePoint <= 0x10FFFF; ++codePoint) {
        std::string text;
        AppendCodePoint(codePoint, text);
        const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
        ASSERT_EQ(IsValidUtf8(text), !isSurrogate) << static_cast<std::uint32_t>(codePoint);
        std::size_t at = 0;
        ASSERT_EQ(NextCodePoint(text, at), codePoint);
        ASSERT_EQ(at, text.size());
    }
}

TEST(IsValidUtf8, RefusesEveryTruncation)
{
    const std::string text = "0123456789 0123456789 0123456789 \xF0\x9F\x98\x80";
    EXPECT_TRUE(IsValidUtf8(text));
    EXPECT_TRUE(IsValidUtf8(text.substr(0, text.size() - 4)));
    for (std::size_t cut = 1; cut <= 3; ++cut)
        EXPECT_FALSE(IsValidUtf8(text.substr(0, text.size() - cut))) << cut;
}

TEST(IsAscii, FindsTheOneByteWhereverItStands)
{
    EXPECT_TRUE(IsAscii(""));
    for (std::size_t size = 1; size <= 70; ++size) {
        std::string text(size, '\x7F');
        EXPECT_TRUE(IsAscii(text));
        for (std::size_t at = 0; at < size; ++at) {
            text[at] = '\x80';
            EXPECT_FALSE(IsAscii(text)) << size << ' ' << at;
            text[at] = '\x7F';
        }
    }
}

TEST(NextCodePoint, GoesThroughSurrogatesAndBadBytes)
{
    EXPECT_EQ(CodePointsOf("a\xC3\xA9\xED\xA0\x80\xFF\xF0\x9F\x98\x80"),
              (std::vector<char32_t>{U'a', 0xE9, 0xD800, 0xFFFD, 0x1F600}));
}

TEST(AppendCodePoint, MakesAReplacementOfWhatIsNoCodePoint)
{
    std::string out = "x";
    AppendCodePoint(0x110000, out);
    EXPECT_EQ(out, "x\xEF\xBF\xBD");
}

} // namespace KestrinProductEditor
