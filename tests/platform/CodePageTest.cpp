// SPDX-License-Identifier: MIT
#include "platform/CodePage.h"

#include "platform/Text.h"
#include "support/Environment.h"
#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace KestrinProductEditor {

namespace {

constexpr const char* kSetting = "KSTNEDIT_CODEPAGE";

[[nodiscard]] std::string Decoded(const CodePage& page, std::string_view bytes)
{
    std::string scratch = "left over";
    return std::string(page.Decode(bytes, scratch));
}

[[nodiscard]] std::string Encoded(const CodePage& page, std::string_view text)
{
    std::string scratch = "left over";
    return std::string(page.Encode(text, scratch));
}

[[nodiscard]] std::string RoundTripped(const CodePage& page, std::string_view text)
{
    std::string scratch = "left over";
    return std::string(page.RoundTrip(text, scratch));
}

/// Whether the answer is the very text that was given.
[[nodiscard]] bool IsSame(std::string_view given, std::string_view answer)
{
    return given.data() == answer.data() && given.size() == answer.size();
}

} // namespace

TEST(CodePageNamed, KnowsUtf8ByAllItsNames)
{
    for (const char* name : {"utf-8", "UTF-8", "utf8", "Utf8", "65001", "cp65001", "CP65001"}) {
        const auto page = CodePage::Named(name);
        ASSERT_NE(page, nullptr) << name;
        EXPECT_TRUE(page->IsUtf8()) << name;
    }
}

TEST(CodePageNamed, KnowsWindows1252ByAllItsNames)
{
    for (const char* name : {"windows-1252", "Windows-1252", "cp1252", "CP1252", "1252"}) {
        const auto page = CodePage::Named(name);
        ASSERT_NE(page, nullptr) << name;
        EXPECT_FALSE(page->IsUtf8()) << name;
        EXPECT_EQ(Decoded(*page, "\x80"), "\xE2\x82\xAC") << name;
    }
}

TEST(CodePageNamed, AnswersNullForAnyOtherName)
{
    for (const char* name : {"", "no-such-page", "99999", "cp", "windows-", "12 52"})
        EXPECT_EQ(CodePage::Named(name), nullptr) << name;
    EXPECT_EQ(CodePage::Named(std::string_view("cp1252\0x", 8)), nullptr);
}

TEST(Utf8CodePage, GivesValidTextItself)
{
    const auto page = CodePage::Named("utf-8");
    std::string scratch;
    for (const std::string_view text :
         {std::string_view(""), std::string_view("Bolt"), std::string_view("T\xC3\xBCr \xF0\x9F\x94\xA9")}) {
        EXPECT_TRUE(IsSame(text, page->Decode(text, scratch)));
        EXPECT_TRUE(IsSame(text, page->Encode(text, scratch)));
        EXPECT_TRUE(IsSame(text, page->RoundTrip(text, scratch)));
    }
}

TEST(Utf8CodePage, ReadsAnInvalidValueWhollyAsWindows1252)
{
    const auto page = CodePage::Named("utf-8");
    EXPECT_EQ(Decoded(*page, "T\xFCr"), "T\xC3\xBCr");
    EXPECT_EQ(Decoded(*page, "\xC3\xBC and \xFC"), "\xC3\x83\xC2\xBC and \xC3\xBC");
    EXPECT_EQ(Decoded(*page, "\xC3"), "\xC3\x83");
    // Surrogates are no UTF-8 outside the component.
    EXPECT_EQ(Decoded(*page, "\xED\xA0\x80"), "\xC3\xAD\xC2\xA0\xE2\x82\xAC");
}

TEST(Utf8CodePage, WritesALoneSurrogateAsAReplacement)
{
    const auto page = CodePage::Named("utf-8");
    EXPECT_EQ(Encoded(*page, "a\xED\xA0\x80"
                             "b"),
              "a\xEF\xBF\xBD"
              "b");
    EXPECT_EQ(Encoded(*page, "\xED\xB0\x80\xED\xA0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(Encoded(*page, "\xED\xA0\xBD\xED\xB8\x80"), "\xF0\x9F\x98\x80");
    EXPECT_EQ(RoundTripped(*page, "a\xED\xA0\x80"), "a\xEF\xBF\xBD");
}

TEST(Windows1252CodePage, BringsAll256BytesBack)
{
    const auto page = CodePage::Named("windows-1252");
    std::set<std::string> texts;
    for (int byte = 0; byte < 256; ++byte) {
        const std::string bytes(1, static_cast<char>(byte));
        const std::string text = Decoded(*page, bytes);
        EXPECT_EQ(Utf16Length(text), 1u) << byte;
        EXPECT_EQ(Encoded(*page, text), bytes) << byte;
        EXPECT_EQ(RoundTripped(*page, text), text) << byte;
        texts.insert(text);
    }
    EXPECT_EQ(texts.size(), 256u);
}

TEST(Windows1252CodePage, DecodesItsUpperBytes)
{
    const auto page = CodePage::Named("windows-1252");
    EXPECT_EQ(ToUtf16(Decoded(*page, "\x80\x82\x83\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8E")),
              u"\u20AC\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u017D");
    EXPECT_EQ(ToUtf16(Decoded(*page, "\x91\x92\x93\x94\x95\x96\x97\x98\x99\x9A\x9B\x9C\x9E\x9F")),
              u"\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u017E\u0178");
    EXPECT_EQ(ToUtf16(Decoded(*page, "\x81\x8D\x8F\x90\x9D")),
              (std::u16string{0x81, 0x8D, 0x8F, 0x90, 0x9D}));
    EXPECT_EQ(ToUtf16(Decoded(*page, "\xA0\xE4\xFF")), u"\u00A0\u00E4\u00FF");
}

TEST(Windows1252CodePage, WritesAQuestionMarkForWhatItCannotHold)
{
    const auto page = CodePage::Named("windows-1252");
    EXPECT_EQ(Encoded(*page, "\xEA\xB0\x80 5 \xE2\x82\xAC"), "? 5 \x80");
    EXPECT_EQ(Encoded(*page, "\xF0\x9F\x98\x80"), "?");
    EXPECT_EQ(Encoded(*page, "\xED\xA0\x80"), "?");
    EXPECT_EQ(Encoded(*page, "\xC2\x80\xC4\x80"), "??");
    EXPECT_EQ(RoundTripped(*page, "a\xEA\xB0\x80"), "a?");
}

TEST(Windows1252CodePage, GivesAsciiItself)
{
    const auto page = CodePage::Named("windows-1252");
    const std::string_view text = "Hex bolt, 40 mm";
    std::string scratch;
    EXPECT_TRUE(IsSame(text, page->Decode(text, scratch)));
    EXPECT_TRUE(IsSame(text, page->Encode(text, scratch)));
    EXPECT_TRUE(IsSame(text, page->RoundTrip(text, scratch)));
}

TEST(AppendWindows1252AsUtf8, KeepsWhatIsThere)
{
    std::string out = "x";
    AppendWindows1252AsUtf8("a\x99"
                            "b",
                            out);
    AppendWindows1252AsUtf8("", out);
    EXPECT_EQ(out, "xa\xE2\x84\xA2"
                   "b");
}

TEST(CodePageSystem, FollowsTheSettingAtEachCall)
{
    {
        const ScopedVariable setting(kSetting, "1252");
        EXPECT_EQ(Encoded(*CodePage::System(), "\xE2\x82\xAC"), "\x80");
    }
    const ScopedVariable setting(kSetting, "UTF-8");
    EXPECT_TRUE(CodePage::System()->IsUtf8());
}

TEST(CodePageSystem, RefusesAnUnknownSettingByItsName)
{
    const ScopedVariable setting(kSetting, "windoze-1252");
    const auto error = ErrorOf([] { static_cast<void>(CodePage::System()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), kErrInvalidProcedureCall);
    EXPECT_NE(error->Description().find(u"'windoze-1252'"), std::u16string::npos);
    EXPECT_NE(error->Description().find(u"KSTNEDIT_CODEPAGE"), std::u16string::npos);
}

} // namespace KestrinProductEditor
