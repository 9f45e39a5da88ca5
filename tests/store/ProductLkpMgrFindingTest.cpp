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
using testing::IsEmpty;

class StoreFinding : public StoreFixture
{
protected:
    StoreFinding()
    {
        WriteCatalogue({{.rowID = 2, .uniqueID = 20, .name = "Nut", .partNum = "O-1"},
                        {.rowID = 3, .uniqueID = 30, .name = "bolt cutter", .partNum = "o-2"},
                        {.rowID = 4, .uniqueID = 20, .name = "Bolt", .partNum = "X"},
                        {.rowID = 5, .uniqueID = -7, .name = "100%_*[a]?\\", .partNum = "%"}});
        m_store = Open();
        m_store->CancelUpdate(true);
        m_store->MoveFirst();
    }

    [[nodiscard]] std::vector<std::string> ByName(std::u16string_view name) const
    {
        return MatchesOf(m_store->GetFindMatchesByName(name, false));
    }
    [[nodiscard]] std::vector<std::string> ByPartNum(std::u16string_view partNum) const
    {
        return MatchesOf(m_store->GetFindMatchesByPartNum(partNum, false));
    }

    std::shared_ptr<ProductLkpMgr> m_store;
};

} // namespace

TEST_F(StoreFinding, FindsByRowIdentifier)
{
    m_store->FindRow(3);
    EXPECT_EQ(CurrentName(*m_store), "bolt cutter");
}

TEST_F(StoreFinding, StandsBehindTheLastRowAfterAMissAndRaisesNothing)
{
    for (const std::int32_t absent : {99, 0, -1, -2147483647}) {
        m_store->MoveFirst();
        m_trace->Forget();
        m_store->FindRow(absent);
        EXPECT_TRUE(m_store->EOF());
        m_store->MoveFirst();
        m_store->FindRowBySyncID(absent);
        EXPECT_TRUE(m_store->EOF());
        EXPECT_THAT(m_trace->CallsLike("error "), IsEmpty());
    }
}

TEST_F(StoreFinding, FindsTheFirstRowInOrderWithASyncIdentifier)
{
    m_store->FindRowBySyncID(20);
    EXPECT_EQ(CurrentName(*m_store), "Bolt");
    m_store->FindRowBySyncID(-7);
    EXPECT_EQ(m_store->Fields(PF_RowID), Variant(std::int32_t{5}));
    m_store->Fields(PF_UniqueID, std::int32_t{20});
    m_store->FindRow(2);
    m_store->FindRowBySyncID(20);
    EXPECT_EQ(m_store->Fields(PF_RowID), Variant(std::int32_t{5}));
    m_store->Delete(5);
    m_store->FindRowBySyncID(20);
    EXPECT_EQ(CurrentName(*m_store), "Bolt");
    m_store->Update(Packed(4, "Zip"));
    m_store->FindRowBySyncID(20);
    EXPECT_EQ(CurrentName(*m_store), "Nut");
}

TEST_F(StoreFinding, FindsTheFirstRowInOrderWithARowIdentifierGivenTwice)
{
    m_store->FindRow(2);
    m_store->Fields(PF_RowID, std::int32_t{3});
    m_store->FindRow(3);
    EXPECT_EQ(CurrentName(*m_store), "bolt cutter");
}

TEST_F(StoreFinding, ListsNamesThatBeginWithATextWhateverTheirCase)
{
    EXPECT_THAT(ByName(u"bo"), ElementsAre("4 Bolt", "3 bolt cutter"));
    EXPECT_THAT(ByName(u"BOLT C"), ElementsAre("3 bolt cutter"));
    EXPECT_THAT(ByName(u"olt"), IsEmpty());
    EXPECT_THAT(ByName(u"bolt cutters"), IsEmpty());
}

TEST_F(StoreFinding, ListsPartNumbersInTheOrderOfNames)
{
    EXPECT_THAT(ByPartNum(u"o-"), ElementsAre("3 o-2", "2 O-1"));
    EXPECT_THAT(ByPartNum(u"x"), ElementsAre("4 X"));
}

TEST_F(StoreFinding, GivesNullWhereNothingMatches)
{
    EXPECT_TRUE(m_store->GetFindMatchesByName(u"zzz", false).IsNull());
    EXPECT_TRUE(m_store->GetFindMatchesByPartNum(u"zzz", false).IsNull());
    EXPECT_TRUE(m_store->GetFindMatchesByName(u"", false).IsNull());
    EXPECT_TRUE(m_store->GetFindMatchesByPartNum(u"", false).IsNull());
}

TEST_F(StoreFinding, ListsEverythingWhenAskedForAll)
{
    for (const char16_t* const text : {u"", u"zzz", u"'", u"bo"}) {
        EXPECT_THAT(MatchesOf(m_store->GetFindMatchesByName(text, true)),
                    ElementsAre("5 100%_*[a]?\\", "4 Bolt", "3 bolt cutter", "2 Nut"));
        EXPECT_THAT(MatchesOf(m_store->GetFindMatchesByPartNum(text, true)),
                    ElementsAre("5 %", "4 X", "3 o-2", "2 O-1"));
    }
}

TEST_F(StoreFinding, GivesNullForAnEmptyTable)
{
    m_store->DeleteAll();
    EXPECT_TRUE(m_store->GetFindMatchesByName(u"", true).IsNull());
    EXPECT_TRUE(m_store->GetFindMatchesByPartNum(u"x", false).IsNull());
}

TEST_F(StoreFinding, GivesNullForAQuoteAndRaisesNothing)
{
    m_store->AddNew(Packed(0, "O'Brien", "", "O'B"));
    for (const char16_t* const text : {u"O'B", u"'", u"O''B", u"bo'"}) {
        EXPECT_TRUE(m_store->GetFindMatchesByName(text, false).IsNull());
        EXPECT_TRUE(m_store->GetFindMatchesByPartNum(text, false).IsNull());
    }
    EXPECT_THAT(ByName(u"O"), ElementsAre("6 O'Brien"));
}

TEST_F(StoreFinding, TakesEveryOtherCharacterForItself)
{
    EXPECT_THAT(ByName(u"100%_*[a]?\\"), ElementsAre("5 100%_*[a]?\\"));
    EXPECT_THAT(ByName(u"%"), IsEmpty());
    EXPECT_THAT(ByName(u"*"), IsEmpty());
    EXPECT_THAT(ByName(u"b_lt"), IsEmpty());
    EXPECT_THAT(ByName(u"[b]"), IsEmpty());
    EXPECT_THAT(ByName(u"100#"), IsEmpty());
    EXPECT_THAT(ByPartNum(u"%"), ElementsAre("5 %"));
}

TEST_F(StoreFinding, FoldsLettersOfEveryScript)
{
    AddNames(*m_store, {"\u00c4pfel", "\u00e4hre", "Stra\u00dfe", "\u0394\u03bf\u03ba\u03cc\u03c2"});
    EXPECT_THAT(ByName(u"\u00e4"), ElementsAre("7 \u00e4hre", "6 \u00c4pfel"));
    EXPECT_THAT(ByName(u"STRA\u1e9e"), ElementsAre("8 Stra\u00dfe"));
    EXPECT_THAT(ByName(u"strass"), IsEmpty());
    EXPECT_THAT(ByName(u"\u03b4\u039f\u03ba"), ElementsAre("9 \u0394\u03bf\u03ba\u03cc\u03c2"));
}

TEST_F(StoreFinding, GivesTwoDimensionsOfNumbersAndTexts)
{
    const Variant matches = m_store->GetFindMatchesByName(u"bo", false);
    const VariantArray& array = matches.Array();
    ASSERT_EQ(array.Dimensions(), 2);
    EXPECT_EQ(array.Extent(1), 2);
    EXPECT_EQ(array.Extent(2), 2);
    EXPECT_EQ(array.At(0, 1), Variant(std::int32_t{3}));
    EXPECT_EQ(array.At(1, 1), Variant(u"bolt cutter"));
}

TEST_F(StoreFinding, LeavesTheCursorWhereItIs)
{
    m_store->FindRow(2);
    static_cast<void>(ByName(u"bo"));
    static_cast<void>(ByPartNum(u"o"));
    static_cast<void>(m_store->GetFindMatchesByName(u"", true));
    EXPECT_EQ(CurrentName(*m_store), "Nut");
    m_store->MoveNext();
    static_cast<void>(ByName(u"bo"));
    EXPECT_TRUE(m_store->EOF());
}

TEST_F(StoreFinding, ListsARenamedCurrentRowByItsNewNameInItsOldPlace)
{
    AddNames(*m_store, {"Bar"});
    m_store->FindRow(4);
    m_store->Fields(PF_Name, u"Bow");
    EXPECT_THAT(ByName(u"bo"), ElementsAre("4 Bow", "3 bolt cutter"));
    EXPECT_THAT(ByName(u"bow"), ElementsAre("4 Bow"));
    EXPECT_THAT(ByName(u"bolt"), ElementsAre("3 bolt cutter"));
    EXPECT_THAT(MatchesOf(m_store->GetFindMatchesByName(u"", true)),
                ElementsAre("5 100%_*[a]?\\", "6 Bar", "4 Bow", "3 bolt cutter", "2 Nut"));
    EXPECT_THAT(MatchesOf(m_store->GetFindMatchesByPartNum(u"X", false)), ElementsAre("4 X"));
    m_store->MoveFirst();
    EXPECT_THAT(ByName(u"bo"), ElementsAre("3 bolt cutter", "4 Bow"));
}

TEST_F(StoreFinding, ListsARenamedCurrentRowAmongNamesFarFromItsPlace)
{
    m_store->FindRow(4);
    m_store->Fields(PF_Name, u"Nail");
    EXPECT_THAT(ByName(u"n"), ElementsAre("4 Nail", "2 Nut"));
    m_store->Fields(PF_Name, u"0 first");
    EXPECT_THAT(ByName(u"0"), ElementsAre("4 0 first"));
    EXPECT_THAT(ByName(u"b"), ElementsAre("3 bolt cutter"));
}

TEST_F(StoreFinding, ListsNewRowsAtOnce)
{
    AddNames(*m_store, {"Bob", "bozo"});
    EXPECT_THAT(ByName(u"bo"), ElementsAre("6 Bob", "4 Bolt", "3 bolt cutter", "7 bozo"));
    m_store->Delete(6);
    EXPECT_THAT(ByName(u"bo"), ElementsAre("4 Bolt", "3 bolt cutter", "7 bozo"));
}

TEST_F(StoreFinding, NeverFindsAnythingByPartialName)
{
    for (const char16_t* const text : {u"", u"Bolt", u"bo", u"'"}) {
        m_store->FindRow(2);
        EXPECT_FALSE(m_store->PartialFindByName(text));
        EXPECT_EQ(CurrentName(*m_store), "Nut");
    }
}

} // namespace KestrinProductEditor
