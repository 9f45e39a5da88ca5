// SPDX-License-Identifier: MIT
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kNoCurrentRecord = 3021;

class StoreCursor : public StoreFixture
{
protected:
    StoreCursor()
    {
        WriteCatalogue({{.rowID = 2, .name = "Anchor"},
                        {.rowID = 3, .name = "Bolt"},
                        {.rowID = 4, .name = "Clamp"},
                        {.rowID = 5, .name = "Drill"}});
        m_store = Open();
        m_store->CancelUpdate(true);
        m_store->MoveFirst();
    }

    [[nodiscard]] std::string Here() const { return CurrentName(*m_store); }
    [[nodiscard]] std::int32_t HereError() const
    {
        return ErrorNumberOf([&] { static_cast<void>(m_store->Fields(PF_Name)); });
    }

    std::shared_ptr<ProductLkpMgr> m_store;
};

class EmptyStore : public StoreFixture
{
protected:
    std::shared_ptr<ProductLkpMgr> m_store = Open();
};

} // namespace

TEST_F(StoreCursor, WalksForwardAndBackward)
{
    EXPECT_EQ(Here(), "Anchor");
    m_store->MoveNext();
    EXPECT_EQ(Here(), "Bolt");
    m_store->MoveLast();
    EXPECT_EQ(Here(), "Drill");
    m_store->MovePrevious();
    EXPECT_EQ(Here(), "Clamp");
    m_store->MoveFirst();
    EXPECT_EQ(Here(), "Anchor");
}

TEST_F(StoreCursor, TellsPositionsFromOneAndTheEndsByTheirOwnNumbers)
{
    for (std::int32_t position = 1; position <= 4; ++position) {
        EXPECT_EQ(m_store->CurrentRecordIdx(), position);
        m_store->MoveNext();
    }
    EXPECT_EQ(m_store->CurrentRecordIdx(), -3);
    m_store->MoveFirst();
    m_store->MovePrevious();
    EXPECT_EQ(m_store->CurrentRecordIdx(), -2);
}

TEST_F(StoreCursor, FailsBeyondTheEnds)
{
    m_store->MoveLast();
    m_store->MoveNext();
    EXPECT_TRUE(m_store->EOF());
    EXPECT_FALSE(m_store->BOF());
    EXPECT_EQ(ErrorNumberOf([&] { m_store->MoveNext(); }), kNoCurrentRecord);
    EXPECT_TRUE(m_store->EOF());
    EXPECT_EQ(HereError(), kNoCurrentRecord);
    m_store->MovePrevious();
    EXPECT_EQ(Here(), "Drill");

    m_store->MoveFirst();
    m_store->MovePrevious();
    EXPECT_TRUE(m_store->BOF());
    EXPECT_FALSE(m_store->EOF());
    EXPECT_EQ(ErrorNumberOf([&] { m_store->MovePrevious(); }), kNoCurrentRecord);
    EXPECT_EQ(HereError(), kNoCurrentRecord);
    m_store->MoveNext();
    EXPECT_EQ(Here(), "Anchor");
}

TEST_F(StoreCursor, GoesToTheNthProductFromZero)
{
    m_store->GotoNthProduct(0);
    EXPECT_EQ(Here(), "Anchor");
    EXPECT_EQ(m_store->CurrentRecordIdx(), 1);
    m_store->GotoNthProduct(3);
    EXPECT_EQ(Here(), "Drill");
    m_store->GotoNthProduct(1);
    EXPECT_EQ(Here(), "Bolt");
}

TEST_F(StoreCursor, GoesToAnEndWhereThereIsNoNthProduct)
{
    for (const std::int32_t beyond : {4, 5, std::numeric_limits<std::int32_t>::max()}) {
        m_store->GotoNthProduct(beyond);
        EXPECT_TRUE(m_store->EOF()) << beyond;
    }
    for (const std::int32_t before : {-1, std::numeric_limits<std::int32_t>::min()}) {
        m_store->GotoNthProduct(before);
        EXPECT_TRUE(m_store->BOF()) << before;
    }
}

TEST_F(StoreCursor, TracesNeitherGotoNorPositionNorCancelUpdate)
{
    m_trace->Forget();
    m_store->GotoNthProduct(1);
    static_cast<void>(m_store->CurrentRecordIdx());
    static_cast<void>(m_store->CancelUpdate());
    m_store->CancelUpdate(true);
    static_cast<void>(m_store->SessionIsDirty());
    static_cast<void>(m_store->GetFindMatchesByName(u"b", false));
    static_cast<void>(m_store->GetFindMatchesByPartNum(u"b", false));
    static_cast<void>(m_store->PartialFindByName(u"b"));
    m_store->SetNotifyCallback(nullptr);
    m_store->ClearNotifyCallback();
    EXPECT_THAT(m_trace->Calls(), IsEmpty());
}

TEST_F(StoreCursor, KeepsADeletedRowCurrentUntilItMoves)
{
    m_store->Delete(3);
    EXPECT_EQ(m_store->Count(), 3);
    EXPECT_EQ(m_store->CurrentRecordIdx(), -1);
    EXPECT_FALSE(m_store->EOF());
    EXPECT_FALSE(m_store->BOF());
    EXPECT_EQ(HereError(), kNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->Fields(PF_Name, u"x"); }), kNoCurrentRecord);
    m_store->MoveNext();
    EXPECT_EQ(Here(), "Clamp");
}

TEST_F(StoreCursor, GoesBackFromADeletedRowToTheOneBefore)
{
    m_store->Delete(3);
    m_store->MovePrevious();
    EXPECT_EQ(Here(), "Anchor");
}

TEST_F(StoreCursor, GoesOnFromADeletedEnd)
{
    m_store->Delete(5);
    m_store->MoveNext();
    EXPECT_TRUE(m_store->EOF());
    m_store->Delete(2);
    m_store->MovePrevious();
    EXPECT_TRUE(m_store->BOF());
}

TEST_F(StoreCursor, CountsNoRowsWhileTheLastOneThatWasDeletedIsCurrent)
{
    for (const std::int32_t rowID : {2, 3, 4, 5})
        m_store->Delete(rowID);
    EXPECT_EQ(m_store->Count(), 0);
    EXPECT_EQ(m_store->CurrentRecordIdx(), -1);
    EXPECT_EQ(HereError(), kNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->MoveFirst(); }), kNoCurrentRecord);
    EXPECT_NO_THROW(m_store->FindRow(2));
    EXPECT_NO_THROW(m_store->SetDirtySyncFlags(false));
    m_store->MoveNext();
    EXPECT_TRUE(m_store->EOF());
    EXPECT_TRUE(m_store->BOF());
}

TEST_F(StoreCursor, MovesToARowThatItFinds)
{
    m_store->FindRow(4);
    EXPECT_EQ(Here(), "Clamp");
    EXPECT_EQ(m_store->CurrentRecordIdx(), 3);
}

TEST_F(StoreCursor, MakesANewRowCurrentInItsPlace)
{
    m_store->AddNew(Named("Bracket"));
    EXPECT_EQ(Here(), "Bracket");
    EXPECT_EQ(m_store->CurrentRecordIdx(), 3);
    m_store->MoveNext();
    EXPECT_EQ(Here(), "Clamp");
    m_store->MovePrevious();
    EXPECT_EQ(Here(), "Bracket");
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("Anchor", "Bolt", "Bracket", "Clamp", "Drill"));
}

TEST_F(EmptyStore, StandsAtBothEnds)
{
    EXPECT_TRUE(m_store->BOF());
    EXPECT_TRUE(m_store->EOF());
    EXPECT_EQ(m_store->CurrentRecordIdx(), -1);
    EXPECT_EQ(m_store->Count(), 0);
}

TEST_F(EmptyStore, HasNowhereToMove)
{
    EXPECT_EQ(ErrorNumberOf([&] { m_store->MoveFirst(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->MoveLast(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->MoveNext(); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->MovePrevious(); }), kNoCurrentRecord);
    for (const std::int32_t place : {0, 1, -1})
        EXPECT_EQ(ErrorNumberOf([&] { m_store->GotoNthProduct(place); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(m_store->Fields(PF_Name)); }), kNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->Delete(2); }), kNoCurrentRecord);
}

TEST_F(EmptyStore, HasNothingToFindDeleteOrMark)
{
    EXPECT_NO_THROW(m_store->FindRow(2));
    EXPECT_NO_THROW(m_store->FindRowBySyncID(0));
    EXPECT_NO_THROW(m_store->DeleteAll());
    EXPECT_NO_THROW(m_store->SetDirtySyncFlags(true));
    EXPECT_NO_THROW(m_store->SetDirtySessionFlags(true));
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(EmptyStore, IsWhatDeleteAllLeaves)
{
    AddNames(*m_store, {"Anchor", "Bolt"});
    m_store->DeleteAll();
    EXPECT_EQ(m_store->Count(), 0);
    EXPECT_TRUE(m_store->BOF());
    EXPECT_TRUE(m_store->EOF());
    EXPECT_EQ(m_store->CurrentRecordIdx(), -1);
    EXPECT_TRUE(m_store->SessionIsDirty());
    EXPECT_EQ(m_store->AddNew(Named("Clamp")), 4);
}

} // namespace KestrinProductEditor
