// SPDX-License-Identifier: MIT
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <KestrinProductEditor/IPNotifyCallback.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class StoreFlags : public StoreFixture
{
protected:
    StoreFlags()
    {
        std::vector<ProductRow> rows;
        for (std::int32_t i = 1; i <= 5; ++i)
            rows.push_back({.rowID = i, .name = "Row " + std::to_string(i), .dirtySync = true});
        WriteCatalogue(rows);
        m_store = Open();
        m_store->CancelUpdate(true);
        m_store->MoveFirst();
    }

    /// The identifiers of the rows that are marked.
    [[nodiscard]] std::vector<std::int32_t> Marked(bool ProductRow::*mark) const
    {
        std::vector<std::int32_t> rowIDs;
        for (const ProductRow& row : RowsOf(*m_store)) {
            if (row.*mark)
                rowIDs.push_back(row.rowID);
        }
        return rowIDs;
    }
    [[nodiscard]] std::vector<std::int32_t> ForSync() const { return Marked(&ProductRow::dirtySync); }
    [[nodiscard]] std::vector<std::int32_t> ForSession() const { return Marked(&ProductRow::dirtySession); }

    std::shared_ptr<ProductLkpMgr> m_store;
};

/// Hears of products; nobody is to tell it anything.
class SilentNotifications final : public IPNotifyCallback, public IProcessProgress
{
public:
    void NotifyProductAdd() override { ++calls; }
    void NotifyProductDelete() override { ++calls; }
    void NotifyProductUpdate() override { ++calls; }
    void Progress(const Variant& /*vParams*/) override {}
    int calls = 0;
};

} // namespace

TEST_F(StoreFlags, AreNotTheSessionsAfterAReopening)
{
    EXPECT_FALSE(m_store->SessionIsDirty());
    EXPECT_THAT(ForSync(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_THAT(ForSession(), IsEmpty());
}

TEST_F(StoreFlags, AreSetByANewRow)
{
    m_store->AddNew(Named("Row 6"));
    EXPECT_TRUE(m_store->Fields(PF_DirtySession).Boolean());
    EXPECT_TRUE(m_store->Fields(PF_DirtySync).Boolean());
    EXPECT_TRUE(m_store->SessionIsDirty());
}

TEST_F(StoreFlags, AreClearedFromTheFirstRowOn)
{
    m_store->SetDirtySyncFlags(false);
    EXPECT_TRUE(m_store->EOF());
    EXPECT_THAT(ForSync(), IsEmpty());
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(StoreFlags, AreClearedFromTheCurrentRowOn)
{
    m_store->GotoNthProduct(2);
    m_store->SetDirtySyncFlags(false);
    EXPECT_TRUE(m_store->EOF());
    EXPECT_THAT(ForSync(), ElementsAre(1, 2));
}

TEST_F(StoreFlags, AreWrittenEachInItsOwnColumn)
{
    m_store->GotoNthProduct(3);
    m_store->SetDirtySessionFlags(true);
    EXPECT_THAT(ForSession(), ElementsAre(4, 5));
    EXPECT_THAT(ForSync(), ElementsAre(1, 2, 3, 4, 5));
    EXPECT_FALSE(m_store->SessionIsDirty());
    m_store->MoveLast();
    m_store->SetDirtySessionFlags(false);
    EXPECT_THAT(ForSession(), ElementsAre(4));
}

TEST_F(StoreFlags, StayFromBehindTheLastRow)
{
    m_store->MoveLast();
    m_store->MoveNext();
    m_store->SetDirtySyncFlags(false);
    EXPECT_TRUE(m_store->EOF());
    EXPECT_THAT(ForSync(), ElementsAre(1, 2, 3, 4, 5));
}

TEST_F(StoreFlags, NeedACurrentRow)
{
    m_store->MovePrevious();
    EXPECT_EQ(ErrorNumberOf([&] { m_store->SetDirtySyncFlags(false); }), 3021);
    m_store->Delete(3);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->SetDirtySessionFlags(true); }), 3021);
    EXPECT_THAT(ForSync(), ElementsAre(1, 2, 4, 5));
}

TEST_F(StoreFlags, AreWrittenOnTheRoadThatMoveNextWouldTakeFromAMovedRow)
{
    m_store->Update(Packed(2, "Zip"));
    m_store->SetDirtySyncFlags(false);
    EXPECT_THAT(ForSync(), ElementsAre(1));

    m_store->MoveFirst();
    m_store->SetDirtySyncFlags(true);
    m_store->Update(Packed(4, "A first"));
    m_store->SetDirtySyncFlags(false);
    EXPECT_THAT(ForSync(), ElementsAre(1, 3));
    EXPECT_TRUE(m_store->EOF());
}

TEST_F(StoreFlags, AreWrittenFromARowWithANewName)
{
    m_store->GotoNthProduct(3);
    m_store->Fields(PF_Name, u"A first");
    m_store->SetDirtySyncFlags(false);
    EXPECT_THAT(ForSync(), ElementsAre(1, 2, 3));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("A first", "Row 1", "Row 2", "Row 3", "Row 5"));
}

TEST_F(StoreFlags, OfSyncSurviveTheFileAndThoseOfTheSessionDoNot)
{
    m_store->GotoNthProduct(2);
    m_store->SetDirtySyncFlags(false);
    m_store->MoveFirst();
    m_store->SetDirtySessionFlags(true);
    m_store->CancelUpdate(false);
    m_store.reset();
    EXPECT_TRUE(SavedRows()[0].dirtySession);
    m_store = Open();
    EXPECT_THAT(ForSync(), ElementsAre(1, 2));
    EXPECT_THAT(ForSession(), IsEmpty());
}

TEST_F(StoreFlags, LeaveNotificationsUntold)
{
    const auto receiver = std::make_shared<SilentNotifications>();
    m_store->SetNotifyCallback(receiver);
    m_store->AddNew(Named("Row 6"));
    m_store->Update(Packed(6, "Row 7"));
    m_store->Delete(6);
    m_store->DeleteAll();
    EXPECT_EQ(receiver->calls, 0);
}

} // namespace KestrinProductEditor
