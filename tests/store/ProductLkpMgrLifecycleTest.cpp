// SPDX-License-Identifier: MIT
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/GramTable.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

class StoreLifecycle : public StoreFixture
{
protected:
    [[nodiscard]] static std::vector<ProductRow> ThreeRows()
    {
        return {{.rowID = 1,
                 .uniqueID = 11,
                 .status = 5,
                 .name = "Bolt",
                 .dirtySession = true,
                 .dirtySync = true},
                {.rowID = 7, .uniqueID = 17, .name = "anchor", .partNum = "P", .price = 12345, .note = "N"},
                {.rowID = 3, .uniqueID = 13, .name = "Clamp", .key = "K", .dirtySession = true}};
    }
};

} // namespace

TEST_F(StoreLifecycle, CreatesAMissingCatalogueEmptyAtOnce)
{
    const auto store = Open();
    EXPECT_TRUE(CatalogueExists());
    EXPECT_THAT(SavedRows(), IsEmpty());
    EXPECT_EQ(store->Count(), 0);
    EXPECT_FALSE(store->SessionIsDirty());
    EXPECT_FALSE(store->CancelUpdate());
    EXPECT_TRUE(store->BOF());
    EXPECT_TRUE(store->EOF());
}

TEST_F(StoreLifecycle, CountsOnFromOneInAnEmptyCatalogue)
{
    EXPECT_EQ(Open()->AddNew(Named("Anchor")), 2);
}

TEST_F(StoreLifecycle, CountsOnFromTheLargestIdentifier)
{
    WriteCatalogue(ThreeRows());
    EXPECT_EQ(Open()->AddNew(Named("Zip")), 8);
}

TEST_F(StoreLifecycle, CountsOnFromZeroWhereEveryIdentifierIsNegative)
{
    WriteCatalogue({{.rowID = -5, .name = "Anchor"}, {.rowID = -9, .name = "Bolt"}});
    EXPECT_EQ(Open()->AddNew(Named("Zip")), 1);
}

TEST_F(StoreLifecycle, StandsBehindTheLastRowAfterConstruction)
{
    WriteCatalogue(ThreeRows());
    const auto store = Open();
    EXPECT_TRUE(store->EOF());
    EXPECT_FALSE(store->BOF());
    EXPECT_EQ(store->CurrentRecordIdx(), -3);
}

TEST_F(StoreLifecycle, OrdersTheRowsByNameWithoutCase)
{
    WriteCatalogue(ThreeRows());
    EXPECT_THAT(NamesOf(*Open()), ElementsAre("anchor", "Bolt", "Clamp"));
}

TEST_F(StoreLifecycle, ClearsEverySessionFlagAndKeepsTheSyncFlags)
{
    WriteCatalogue(ThreeRows());
    const auto store = Open();
    const std::vector<ProductRow> rows = RowsOf(*store);
    EXPECT_THAT(rows, Each(Field(&ProductRow::dirtySession, false)));
    EXPECT_FALSE(rows[0].dirtySync);
    EXPECT_TRUE(rows[1].dirtySync);
    EXPECT_FALSE(store->SessionIsDirty());
}

TEST_F(StoreLifecycle, WritesTheFileAtReleaseWithoutAnyEdit)
{
    WriteCatalogue(ThreeRows());
    Open().reset();
    std::vector<ProductRow> expected = ThreeRows();
    for (ProductRow& row : expected)
        row.dirtySession = false;
    EXPECT_THAT(SavedRows(), ElementsAre(expected[1], expected[0], expected[2]));
}

TEST_F(StoreLifecycle, RemovesRowsWithoutANameAtRelease)
{
    WriteCatalogue({{.rowID = 1, .name = "   ", .key = "K", .partNum = "P", .price = 5},
                    {.rowID = 2, .name = "Bolt"},
                    {.rowID = 3, .note = "N"},
                    {.rowID = 4, .name = " x "},
                    {.rowID = 5, .name = "\t"},
                    {.rowID = 6, .name = "\u00a0"}});
    auto store = Open();
    EXPECT_EQ(store->Count(), 6);
    store.reset();
    std::vector<std::int32_t> kept;
    for (const ProductRow& row : SavedRows())
        kept.push_back(row.rowID);
    EXPECT_THAT(kept, testing::UnorderedElementsAre(2, 4, 5, 6));
}

TEST_F(StoreLifecycle, DoesNotTouchTheFileWhenTheUpdateIsCancelled)
{
    WriteCatalogue(ThreeRows());
    const std::string before = CatalogueBytes();
    auto store = Open();
    store->Delete(7);
    AddNames(*store, {"Zip", ""});
    store->CancelUpdate(true);
    EXPECT_TRUE(store->CancelUpdate());
    store.reset();
    EXPECT_EQ(CatalogueBytes(), before);
    EXPECT_THAT(m_trace->Calls(), Contains("exit KestrinProductMgr.ProductLkpMgr::ProductRemoveEmptyRows"));
    EXPECT_THAT(DatabaseNames(), ElementsAre("corvprd2.cpd"));
}

TEST_F(StoreLifecycle, WritesWhenTheCancellationIsTakenBack)
{
    auto store = Open();
    AddNames(*store, {"Zip"});
    store->CancelUpdate(true);
    store->CancelUpdate(false);
    store.reset();
    EXPECT_THAT(SavedRows(), SizeIs(1));
}

TEST_F(StoreLifecycle, WritesNothingBeforeItsRelease)
{
    WriteCatalogue(ThreeRows());
    const std::string before = CatalogueBytes();
    const auto store = Open();
    AddNames(*store, {"Zip"});
    store->MoveFirst();
    store->Fields(PF_Name, u"Yarn");
    store->Delete(3);
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(StoreLifecycle, KeepsEveryColumnThroughSaveAndReload)
{
    auto store = Open();
    store->AddNew(Packed(0, "Anchor", "KEY", "P-1", -12345, "a\r\nb\tc"));
    store->AddNew(Packed(0, "Bolt", "", "", 42'949'672'959'900, ""));
    store->FindRow(2);
    store->Fields(PF_UniqueID, std::int32_t{-7});
    store->Fields(PF_Status, std::int32_t{2147483647});
    store->Fields(PF_DirtySync, false);
    const std::vector<ProductRow> before = RowsOf(*store);
    store.reset();
    std::vector<ProductRow> after = RowsOf(*Open());
    for (ProductRow& row : after)
        row.dirtySession = true;
    EXPECT_EQ(after, before);
}

TEST_F(StoreLifecycle, LetsTheStoreReleasedLastWinTheFile)
{
    auto first = Open();
    auto second = Open();
    AddNames(*first, {"Anchor"});
    AddNames(*second, {"Bolt"});
    EXPECT_THAT(NamesOf(*first), ElementsAre("Anchor"));
    second.reset();
    first.reset();
    EXPECT_THAT(NamesOf(*Open()), ElementsAre("Anchor"));
}

TEST_F(StoreLifecycle, AsksTheConfigurationForBothPartsOfThePath)
{
    Open().reset();
    EXPECT_THAT(m_config->queries, ElementsAre(u"InstallPath", u"DBSubdirName"));
    EXPECT_EQ(m_config->created, 1);
}

TEST_F(StoreLifecycle, JoinsThePathWithOneSeparatorWhereOneIsNeeded)
{
    const std::u16string install = m_folder.Path().u16string();
    m_config->values[u"InstallPath"] = install + u"/";
    Open().reset();
    EXPECT_TRUE(CatalogueExists());
    std::filesystem::remove(m_database / "corvprd2.cpd");
    m_config->values[u"DBSubdirName"] = u"db/";
    Open().reset();
    EXPECT_TRUE(CatalogueExists());
    m_config->values[u"DBSubdirName"] = Variant();
    Open().reset();
    EXPECT_TRUE(std::filesystem::exists(m_folder.Path() / "corvprd2.cpd"));
}

TEST_F(StoreLifecycle, ConvertsConfigurationValuesToText)
{
    std::filesystem::create_directory(m_folder.Path() / "2024");
    m_config->values[u"DBSubdirName"] = std::int32_t{2024};
    Open().reset();
    EXPECT_TRUE(std::filesystem::exists(m_folder.Path() / "2024" / "corvprd2.cpd"));
}

TEST_F(StoreLifecycle, KeepsThePathThatItHadAtConstruction)
{
    auto store = Open();
    AddNames(*store, {"Anchor"});
    std::filesystem::create_directory(m_folder.Path() / "other");
    m_config->values[u"DBSubdirName"] = u"other";
    store.reset();
    EXPECT_THAT(SavedRows(), SizeIs(1));
    EXPECT_THAT(std::filesystem::is_empty(m_folder.Path() / "other"), true);
}

TEST_F(StoreLifecycle, FailsWithoutAConfiguration)
{
    RegisterHostComponent("CorvoConf.Config", nullptr);
    EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 429);
    EXPECT_FALSE(CatalogueExists());
    EXPECT_THAT(m_trace->Calls(), ElementsAre("enter KestrinProductMgr.ProductLkpMgr::Class_Initialize",
                                              "enter KestrinProductMgr.ProductLkpMgr::GetProductFilePath",
                                              "error 429", "number 429", "error 429", "number 429"));
}

TEST_F(StoreLifecycle, PassesOnWhatTheConfigurationFailsWith)
{
    m_config->failure = AutomationError(1234, u"host", u"no such key");
    const auto error = ErrorOf([] { static_cast<void>(Open()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 1234);
    EXPECT_EQ(error->Source(), u"host");
    EXPECT_EQ(error->Description(), u"no such key");
}

TEST_F(StoreLifecycle, RefusesAConfigurationWithoutAPath)
{
    m_config->values[u"InstallPath"] = Variant::Null();
    EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 13);
    m_config->values[u"InstallPath"] = Variant::ArrayOf({u"x"});
    EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 13);
}

TEST_F(StoreLifecycle, RunsNoDestructionStepsAfterAFailedConstruction)
{
    WriteCatalogue({{.rowID = 1, .name = ""}, {.rowID = 2, .name = "Bolt", .dirtySession = true}});
    const std::string before = CatalogueBytes();
    const auto probe = Open();
    probe->CancelUpdate(true);
    const std::size_t callCount = m_trace->Calls().size();
    for (std::size_t call = 1; call <= callCount; ++call) {
        SCOPED_TRACE(call);
        m_trace->Forget();
        m_trace->FailAtCall(call, 4711);
        EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 4711);
        EXPECT_THAT(m_trace->CallsLike("enter KestrinProductMgr.ProductLkpMgr::Class_Terminate"), IsEmpty());
        EXPECT_EQ(CatalogueBytes(), before);
    }
}

TEST_F(StoreLifecycle, ReportsAFailureToItsTraceAndNoOneElseAtRelease)
{
    auto store = Open();
    AddNames(*store, {"Anchor"});
    std::filesystem::remove_all(m_database);
    m_trace->Forget();
    store.reset();
    EXPECT_THAT(m_trace->Calls(), ElementsAre("enter KestrinProductMgr.ProductLkpMgr::Class_Terminate",
                                              "enter KestrinProductMgr.ProductLkpMgr::ProductRemoveEmptyRows",
                                              "exit KestrinProductMgr.ProductLkpMgr::ProductRemoveEmptyRows",
                                              "enter KestrinProductMgr.ProductLkpMgr::SaveProductRS",
                                              "error 76", "number 76", "error 76"));
    std::filesystem::create_directory(m_database);
}

TEST_F(StoreLifecycle, TakesItsNameOrderFromTheFileAmongEqualNames)
{
    WriteCatalogue(
        {{.rowID = 5, .name = "bolt"}, {.rowID = 2, .name = "BOLT"}, {.rowID = 9, .name = "Bolt"}});
    EXPECT_THAT(RowIDsOf(*Open()), ElementsAre(5, 2, 9));
}

TEST_F(StoreLifecycle, PacksARowAndMakesItCurrent)
{
    WriteCatalogue(ThreeRows());
    const auto store = Open();
    EXPECT_EQ(store->Pack(7), Packed(7, "anchor", "", "P", 12345, "N"));
    EXPECT_EQ(CurrentName(*store), "anchor");
    EXPECT_EQ(store->CurrentRecordIdx(), 1);
}

TEST_F(StoreLifecycle, SaysThatAProductWasNotFound)
{
    WriteCatalogue(ThreeRows());
    const auto store = Open();
    store->MoveFirst();
    m_trace->Forget();
    m_trace->AnswerInTurn({1001, 1002});
    const auto error = ErrorOf([&] { static_cast<void>(store->Pack(2)); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 1002);
    EXPECT_EQ(error->Source(), u"KestrinProductEditor.ProductLkpMgr::Pack");
    EXPECT_EQ(error->Description(), u"Product not found");
    EXPECT_THAT(m_trace->Calls(), ElementsAre("enter KestrinProductEditor.ProductLkpMgr::Pack", "number none",
                                              "error 1001", "number 1001"));
    EXPECT_TRUE(store->EOF());
}

TEST_F(StoreLifecycle, FindsNoProductInAnEmptyStore)
{
    const auto store = Open();
    const auto error = ErrorOf([&] { static_cast<void>(store->Pack(2)); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), -2147220503);
    EXPECT_EQ(error->Description(), u"Product not found");
}

} // namespace KestrinProductEditor
