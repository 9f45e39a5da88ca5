// SPDX-License-Identifier: MIT
#include "platform/CodePage.h"

#include "support/Environment.h"

#include <gtest/gtest.h>

#include <locale.h>
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

} // namespace

TEST(LinuxCodePage, ConvertsAMultiByteCodePage)
{
    for (const char* name : {"949", "cp949", "CP949", "windows-949", "euc-kr"}) {
        const auto page = CodePage::Named(name);
        ASSERT_NE(page, nullptr) << name;
        EXPECT_FALSE(page->IsUtf8());
        EXPECT_EQ(Decoded(*page, "\xB0\xA1 5"), "\xEA\xB0\x80 5") << name;
        EXPECT_EQ(Encoded(*page, "\xEA\xB0\x80 5"), "\xB0\xA1 5") << name;
    }
}

TEST(LinuxCodePage, KnowsCodePagesByTheirNumbers)
{
    const struct
    {
        const char* name;
        const char* bytes;
        const char* text;
    } cases[] = {
        {"1251", "\xC0", "\xD0\x90"},        {"28605", "\xA4", "\xE2\x82\xAC"},
        {"932", "\x82\xA0", "\xE3\x81\x82"}, {"936", "\xB0\xA1", "\xE5\x95\x8A"},
        {"20866", "\xC1", "\xD0\xB0"},       {"54936", "\x81\x30\x81\x30", "\xC2\x80"},
    };
    for (const auto& entry : cases) {
        const auto page = CodePage::Named(entry.name);
        ASSERT_NE(page, nullptr) << entry.name;
        EXPECT_EQ(Decoded(*page, entry.bytes), entry.text) << entry.name;
        EXPECT_EQ(Encoded(*page, entry.text), entry.bytes) << entry.name;
    }
}

TEST(LinuxCodePage, ReadsAnInvalidValueWhollyAsWindows1252)
{
    const auto page = CodePage::Named("949");
    EXPECT_EQ(Decoded(*page, "\xB0\xA1 \xFF\xFF"), "\xC2\xB0\xC2\xA1 \xC3\xBF\xC3\xBF");
    EXPECT_EQ(Decoded(*page, "\xB0\xA1 \xB0"), "\xC2\xB0\xC2\xA1 \xC2\xB0");
    EXPECT_EQ(Decoded(*page, "\xB0\xA1"), "\xEA\xB0\x80");
}

TEST(LinuxCodePage, WritesOneQuestionMarkForEachCharacterThatItCannotHold)
{
    const auto page = CodePage::Named("949");
    EXPECT_EQ(Encoded(*page, "\xEA\xB0\x80\xF0\x9F\x98\x80\xEA\xB0\x80"), "\xB0\xA1?\xB0\xA1");
    EXPECT_EQ(Encoded(*page, "\xED\xA0\x80!"), "?!");
    EXPECT_EQ(Encoded(*page, "\xF0\x9F\x98\x80\xF0\x9F\x98\x80"), "??");
}

TEST(LinuxCodePage, RoundTripShowsWhatAReloadShows)
{
    const auto page = CodePage::Named("949");
    std::string scratch;
    EXPECT_EQ(page->RoundTrip("\xEA\xB0\x80\xF0\x9F\x98\x80", scratch), "\xEA\xB0\x80?");
    EXPECT_EQ(page->RoundTrip("\xEA\xB0\x80", scratch), "\xEA\xB0\x80");
    EXPECT_EQ(page->RoundTrip("plain", scratch), "plain");
}

TEST(LinuxCodePage, ConvertsALongValue)
{
    const auto page = CodePage::Named("949");
    std::string bytes;
    std::string text;
    for (int i = 0; i < 20000; ++i) {
        bytes += "\xB0\xA1";
        text += "\xEA\xB0\x80";
    }
    EXPECT_EQ(Decoded(*page, bytes), text);
    EXPECT_EQ(Encoded(*page, text), bytes);
}

TEST(LinuxCodePage, FlushesACharacterThatWaitsForItsAccent)
{
    const auto page = CodePage::Named("1258");
    ASSERT_NE(page, nullptr);
    EXPECT_EQ(Decoded(*page, "\xC0"), "\xC3\x80");
    EXPECT_EQ(Decoded(*page, "\xE2"), "\xC3\xA2");
    EXPECT_EQ(Decoded(*page, "x\xE2"), "x\xC3\xA2");
}

TEST(LinuxCodePage, RefusesCharacterSetsWithStatesOrWithoutAscii)
{
    for (const char* name : {"utf-7", "utf-16", "utf-16le", "ucs-2", "utf-32", "iso-2022-jp", "iso-2022-kr",
                             "iso-2022-cn", "ebcdic-us", "ibm037", "037", "1200", "char", "wchar_t"})
        EXPECT_EQ(CodePage::Named(name), nullptr) << name;
}

TEST(LinuxCodePage, TakesNoOptionsOfTheConverter)
{
    EXPECT_NE(CodePage::Named("iso-8859-1"), nullptr);
    EXPECT_EQ(CodePage::Named("iso-8859-1//TRANSLIT"), nullptr);
    EXPECT_EQ(CodePage::Named("//IGNORE"), nullptr);
}

TEST(LinuxCodePage, TwoObjectsAreIndependent)
{
    const auto first = CodePage::Named("949");
    auto second = CodePage::Named("949");
    EXPECT_NE(first, second);
    second.reset();
    EXPECT_EQ(Decoded(*first, "\xB0\xA1"), "\xEA\xB0\x80");
}

TEST(LinuxSystemCodePage, CountsThePlainLocaleAsUtf8)
{
    const ScopedVariable setting(kSetting, std::nullopt);
    for (const char* locale : {"C", "POSIX", "C.UTF-8"}) {
        const ScopedVariable all("LC_ALL", locale);
        EXPECT_TRUE(CodePage::System()->IsUtf8()) << locale;
    }
}

TEST(LinuxSystemCodePage, IsTheLocalesOrUtf8WhereTheSystemHasNoSuchLocale)
{
    const ScopedVariable setting(kSetting, std::nullopt);
    const struct
    {
        const char* locale;
        const char* text;
        const char* bytes;
    } cases[] = {
        {"xx_XX.ISO-8859-99", "\xC3\xBC", "\xC3\xBC"},      {"de_DE.ISO-8859-1", "\xC3\xBC", "\xFC"},
        {"de_DE.ISO-8859-15@euro", "\xE2\x82\xAC", "\xA4"}, {"ru_RU.CP1251", "\xD0\x90", "\xC0"},
        {"ko_KR.EUC-KR", "\xEA\xB0\x80", "\xB0\xA1"},
    };
    for (const auto& entry : cases) {
        const ScopedVariable all("LC_ALL", entry.locale);
        const locale_t locale = newlocale(LC_CTYPE_MASK, entry.locale, locale_t{});
        const bool isThere = locale != locale_t{};
        if (isThere)
            freelocale(locale);
        const auto page = CodePage::System();
        EXPECT_EQ(page->IsUtf8(), !isThere) << entry.locale;
        EXPECT_EQ(Encoded(*page, entry.text), isThere ? entry.bytes : entry.text) << entry.locale;
    }
}

TEST(LinuxSystemCodePage, IgnoresAnEmptySetting)
{
    const ScopedVariable setting(kSetting, "");
    const ScopedVariable all("LC_ALL", "C.UTF-8");
    EXPECT_TRUE(CodePage::System()->IsUtf8());
}

TEST(LinuxSystemCodePage, TakesACodePageOfTheSystemFromTheSetting)
{
    const ScopedVariable setting(kSetting, "949");
    EXPECT_EQ(Encoded(*CodePage::System(), "\xEA\xB0\x80"), "\xB0\xA1");
}

} // namespace KestrinProductEditor
