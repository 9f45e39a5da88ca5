// SPDX-License-Identifier: MIT
#include "platform/CodePage.h"

#include "support/Environment.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <string>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::string Decoded(const CodePage& page, std::string_view bytes)
{
    std::string scratch;
    return std::string(page.Decode(bytes, scratch));
}

[[nodiscard]] std::string Encoded(const CodePage& page, std::string_view text)
{
    std::string scratch;
    return std::string(page.Encode(text, scratch));
}

} // namespace

TEST(CodePageWindows, ReadsAndWritesThePagesOfTheSystem)
{
    const struct
    {
        const char* name;
        const char* bytes;
        const char* text;
    } cases[] = {
        {"1251", "\xC6", "\u0416"},         {"cp850", "\x81", "\u00FC"},
        {"KOI8-R", "\xF6", "\u0416"},       {"932", "\x93\xFA", "\u65E5"},
        {"shift_jis", "\xB1", "\uFF71"},    {"936", "\xD6\xD0", "\u4E2D"},
        {"gbk", "\xD6\xD0", "\u4E2D"},      {"iso-8859-1", "\xFC", "\u00FC"},
        {"windows-1250", "\xF5", "\u0151"}, {"iso-8859-15", "\xA4", "\u20AC"},
    };
    for (const auto& entry : cases) {
        const auto page = CodePage::Named(entry.name);
        ASSERT_NE(page, nullptr) << entry.name;
        EXPECT_EQ(Decoded(*page, entry.bytes), entry.text) << entry.name;
        EXPECT_EQ(Encoded(*page, entry.text), entry.bytes) << entry.name;
    }
}

TEST(CodePageWindows, WritesNothingThatOnlyLooksAlike)
{
    const auto page = CodePage::Named("1251");
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(Encoded(*page, "\u00FC \U0001F528 \u0416"), "? ? \xC6");
}

TEST(CodePageWindows, ReadsAnInvalidValueWhollyAsWindows1252)
{
    const auto page = CodePage::Named("932");
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(Decoded(*page, "\x93\xFA \xFC\x20"), "\u201C\u00FA \u00FC ");
}

TEST(CodePageWindows, RefusesPagesWithShiftStatesAndThoseWithoutAscii)
{
    for (const char* const name : {"50220", "65000", "37", "1200", "0", "1", "3"})
        EXPECT_EQ(CodePage::Named(name), nullptr) << name;
}

TEST(CodePageWindows, IsTheSystemsAnsiPageWithoutASetting)
{
    const ScopedVariable setting("KSTNEDIT_CODEPAGE", std::nullopt);
    const auto expected = CodePage::Named(std::to_string(GetACP()));
    ASSERT_NE(expected, nullptr);
    for (const char* const text : {"\u00FC", "\u20AC", "\u0416", "\u4E2D"})
        EXPECT_EQ(Encoded(*CodePage::System(), text), Encoded(*expected, text));
}

} // namespace KestrinProductEditor
