// SPDX-License-Identifier: MIT
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// An installation whose 8-bit code page is windows-1252.
class StoreCodePage : public StoreFixture
{
protected:
    ScopedVariable m_windows1252{"KSTNEDIT_CODEPAGE", "windows-1252"};
};

constexpr const char* kOutside = "\u6f22 caf\u00e9 \u20ac \U0001F529";
constexpr const char* kKept = "? caf\u00e9 \u20ac ?";

} // namespace

TEST_F(StoreCodePage, ConvertsNarrowColumnsWhenTheyAreWritten)
{
    auto store = Open();
    EXPECT_EQ(store->AddNew(Packed(0, kOutside, kOutside, kOutside, 0, kOutside)), 2);
    EXPECT_EQ(store->Pack(2), Packed(2, kKept, kKept, kKept, 0, kOutside));
    store->AddNew(Named("Zip"));
    store->Update(Packed(3, kOutside, "", kOutside, 0, kOutside));
    EXPECT_EQ(store->Pack(3), Packed(3, kKept, "", kKept, 0, kOutside));
    store->Fields(PF_Key, ToUtf16(kOutside));
    EXPECT_EQ(store->Fields(PF_Key), Variant(ToUtf16(kKept)));
    store.reset();
    store = Open();
    EXPECT_EQ(store->Pack(2), Packed(2, kKept, kKept, kKept, 0, kOutside));
    EXPECT_EQ(store->Pack(3), Packed(3, kKept, kKept, kKept, 0, kOutside));
}

TEST_F(StoreCodePage, ConvertsWhatItImports)
{
    const auto store = Open();
    m_folder.Write("in.csv", "caf\xE9,\x80,1,\xC3\xA9\r\n");
    EXPECT_EQ(
        ImportResultOf(store->CSVProductImport(ImportParams(m_folder.File("in.csv"), {0, 1, 2, 3}, 0, 0))),
        (ImportResult{0, "", 1, 0}));
    EXPECT_EQ(store->Pack(2), Packed(2, "caf\u00e9", "", "\u20ac", 10000, "\u00c3\u00a9"));
}

TEST_F(StoreCodePage, ConvertsWhatAUtf16FileHolds)
{
    const auto store = Open();
    std::string bytes = "\xFF\xFE";
    for (const char16_t unit : std::u16string(u"\u6f22\u00e9,,1,\u6f22"))
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    m_folder.Write("in.csv", bytes);
    EXPECT_EQ(
        ImportResultOf(store->CSVProductImport(ImportParams(m_folder.File("in.csv"), {0, 1, 2, 3}, 0, 0))),
        (ImportResult{0, "", 1, 0}));
    EXPECT_EQ(store->Pack(2), Packed(2, "?\u00e9", "", "", 10000, "\u6f22"));
}

TEST_F(StoreCodePage, ConvertsWhatItExports)
{
    const auto store = Open();
    store->AddNew(Packed(0, "caf\u00e9", "", "\u20ac", 0, kOutside));
    store->CSVProductExport(ExportParams(m_folder.File("out.csv")));
    EXPECT_EQ(m_folder.Read("out.csv"), "\"Name\",\"PartNum\",\"UnitPrice\",\"Note\"\r\n"
                                        "\"caf\xE9\",\"\x80\",\"$0.00\",\"? caf\xE9 \x80 ?\"\r\n");
}

TEST_F(StoreCodePage, KeepsTextsOfFullLength)
{
    std::string text;
    for (int i = 0; i < 255; ++i)
        text += "\u00e9";
    auto store = Open();
    store->AddNew(Packed(0, text, text, text));
    store.reset();
    EXPECT_EQ(Open()->Pack(2), Packed(2, text, text, text));
}

TEST_F(StoreCodePage, FindsATextAsItIsKept)
{
    const auto store = Open();
    store->AddNew(Named(kOutside));
    EXPECT_THAT(MatchesOf(store->GetFindMatchesByName(u"? CAF\u00c9", false)),
                ElementsAre("2 " + std::string(kKept)));
}

TEST_F(StoreCodePage, ReadsACatalogueOfThatCodePage)
{
    auto store = Open();
    store->AddNew(Named("caf\u00e9"));
    store.reset();
    EXPECT_THAT(CatalogueBytes(), HasSubstr("caf\xE9"));
    const ScopedVariable utf8("KSTNEDIT_CODEPAGE", "utf-8");
    store = Open();
    EXPECT_EQ(CurrentName(*(store->MoveFirst(), store)), "caf\u00e9");
    store.reset();
    EXPECT_THAT(CatalogueBytes(), HasSubstr("caf\xC3\xA9"));
}

TEST_F(StoreCodePage, MustBeKnown)
{
    const ScopedVariable unknown("KSTNEDIT_CODEPAGE", "no-such-page");
    const auto error = ErrorOf([] { static_cast<void>(Open()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 5);
    EXPECT_THAT(ToUtf8(error->Description()), HasSubstr("no-such-page"));
    EXPECT_FALSE(CatalogueExists());
}

} // namespace KestrinProductEditor
