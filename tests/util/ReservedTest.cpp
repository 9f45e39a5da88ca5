// SPDX-License-Identifier: MIT
#include "util/Reserved.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace KestrinProductEditor {
namespace {

TEST(WithoutReserved, TakesEveryTildeOut)
{
    struct Case
    {
        std::string_view text;
        std::string_view expected;
    };
    constexpr Case kCases[] = {
        {"", ""},
        {"AB", "AB"},
        {"A~B", "AB"},
        {"~", ""},
        {"~~~~", ""},
        {"~A", "A"},
        {"A~", "A"},
        {"~a~~b~c~", "abc"},
        {"\xC3\xA9~\xC3\xA8", "\xC3\xA9\xC3\xA8"},
        {"\xCB\x9C", "\xCB\x9C"}, // the small tilde is another character
    };
    for (const Case& one : kCases) {
        std::string scratch = "left over";
        EXPECT_EQ(WithoutReserved(one.text, scratch), one.expected) << one.text;
        EXPECT_EQ(WithoutReserved(ToUtf16(one.text)), ToUtf16(one.expected)) << one.text;
    }
}

TEST(WithoutReserved, GivesTheTextItselfWhereThereIsNone)
{
    const std::string text = "Blue; large";
    std::string scratch;
    EXPECT_EQ(WithoutReserved(text, scratch).data(), text.data());
}

TEST(WithoutReserved, KeepsNulCharacters)
{
    using namespace std::string_view_literals;
    std::string scratch;
    EXPECT_EQ(WithoutReserved("a\0~b"sv, scratch), "a\0b"sv);
    EXPECT_EQ(WithoutReserved(u"a\0~b"sv), u"a\0b"sv);
}

TEST(WithoutReserved, AfterTheCutMakesTheTextShorterThanTheCut)
{
    const std::string text = std::string(100, '~') + std::string(300, 'x');
    std::string scratch;
    EXPECT_EQ(WithoutReserved(Utf16Head(text, 255), scratch), std::string(155, 'x'));
}

} // namespace
} // namespace KestrinProductEditor
