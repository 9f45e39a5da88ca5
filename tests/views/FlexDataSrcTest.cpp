// SPDX-License-Identifier: MIT
#include "views/FlexDataSrc.h"

#include "platform/Text.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

class FlexDataSrcTest : public StoreFixture
{
protected:
    FlexDataSrcTest()
    {
        WriteCatalogue({{.rowID = 2, .name = "anchor", .partNum = "A-1", .price = 125'000},
                        {.rowID = 5, .name = "Bolt", .partNum = "B-1", .price = -5'000, .note = "N"},
                        {.rowID = 3, .name = "bolt cutter", .price = 12'345'678'901},
                        {.rowID = 9, .name = "nut", .partNum = "N-1"}});
        m_store = OpenStore();
        m_source.SetDataSource(m_store);
    }

    [[nodiscard]] static std::shared_ptr<ProductLkpMgr> OpenStore()
    {
        std::shared_ptr<ProductLkpMgr> store = Open();
        store->CancelUpdate(true);
        return store;
    }

    /// Where the records 0 to `count` - 1 of the last Settle stand now.
    [[nodiscard]] static std::vector<std::int32_t> RecordsNow(FlexDataSrc& source, std::int32_t count)
    {
        std::vector<std::int32_t> records;
        for (std::int32_t record = 0; record < count; ++record)
            records.push_back(source.RecordNow(record));
        return records;
    }
    [[nodiscard]] std::vector<std::int32_t> RecordsNow(std::int32_t count)
    {
        return RecordsNow(m_source, count);
    }
    void ImportCsv(std::string_view lines, std::int32_t append)
    {
        m_folder.Write("list.csv", lines);
        static_cast<void>(
            m_store->CSVProductImport(ImportParams(m_folder.File("list.csv"), {0, -1, -1, -1}, 0, append)));
    }

    std::shared_ptr<ProductLkpMgr> m_store;
    FlexDataSrc m_source;
};

} // namespace

// Cells

TEST_F(FlexDataSrcTest, ShowsFourColumnsOfEachProduct)
{
    EXPECT_EQ(m_source.GetFieldCount(), 4);
    EXPECT_EQ(m_source.GetRecordCount(), 4);
    const std::vector<std::vector<std::u16string>> cells = {{u"anchor", u"A-1", u"12.5", u"2"},
                                                            {u"Bolt", u"B-1", u"-0.5", u"5"},
                                                            {u"bolt cutter", u"", u"1234567.8901", u"3"},
                                                            {u"nut", u"N-1", u"0", u"9"}};
    for (std::int32_t record = 0; record < 4; ++record) {
        for (std::int32_t field = 0; field < 4; ++field)
            EXPECT_EQ(m_source.GetData(field, record),
                      cells[static_cast<std::size_t>(record)][static_cast<std::size_t>(field)]);
    }
}

TEST_F(FlexDataSrcTest, HeadsThreeOfItsColumns)
{
    EXPECT_EQ(m_source.GetFieldName(0), u"Product Name");
    EXPECT_EQ(m_source.GetFieldName(1), u"Part#");
    EXPECT_EQ(m_source.GetFieldName(2), u"Unit Price");
    for (const std::int32_t field : {3, 4, -1, 2147483647})
        EXPECT_EQ(m_source.GetFieldName(field), u"");
}

TEST_F(FlexDataSrcTest, WritesPricesWithTheLocalesDecimalSign)
{
    const ScopedLocaleVariables german("de_DE.UTF-8");
    EXPECT_EQ(m_source.GetData(2, 0), u"12,5");
}

TEST_F(FlexDataSrcTest, AnEmptyStoreHasItsColumnsAndNoRecord)
{
    m_store->DeleteAll();
    EXPECT_EQ(m_source.GetRecordCount(), 0);
    EXPECT_EQ(m_source.GetFieldCount(), 4);
    EXPECT_EQ(m_source.GetFieldName(3), u"");
    EXPECT_EQ(m_source.GetData(0, 0), u"");
}

TEST_F(FlexDataSrcTest, ReadingACellMakesItsRowCurrent)
{
    for (const std::int32_t field : {0, 2, 3, 4, -1}) {
        m_store->MoveFirst();
        const std::u16string text = m_source.GetData(field, 2);
        EXPECT_EQ(CurrentName(*m_store), "bolt cutter") << field;
        EXPECT_EQ(text.empty(), field == 4 || field == -1) << field;
    }
}

TEST_F(FlexDataSrcTest, ARecordThatIsNotThereIsEmpty)
{
    EXPECT_EQ(m_source.GetData(0, 4), u"");
    EXPECT_TRUE(m_store->EOF());
    EXPECT_EQ(m_source.GetData(0, -1), u"");
    EXPECT_TRUE(m_store->BOF());
    EXPECT_EQ(m_source.GetData(4, 4), u"");
}

TEST_F(FlexDataSrcTest, WritingACellChangesNothing)
{
    m_store->FindRow(3);
    const std::vector<ProductRow> before = RowsOf(*m_store);
    m_store->FindRow(3);
    const std::uint64_t stamp = m_source.ChangeStamp();
    for (const std::u16string_view text : {u"x", u""}) {
        for (std::int32_t field = -1; field < 5; ++field)
            m_source.SetData(field, 0, text);
    }
    EXPECT_EQ(CurrentName(*m_store), "bolt cutter");
    EXPECT_EQ(m_source.ChangeStamp(), stamp);
    EXPECT_FALSE(m_store->SessionIsDirty());
    EXPECT_EQ(RowsOf(*m_store), before);
}

TEST_F(FlexDataSrcTest, WithoutAStoreEverythingIsEmpty)
{
    FlexDataSrc source;
    const auto expectEmpty = [&] {
        EXPECT_EQ(source.GetFieldCount(), 4);
        EXPECT_EQ(source.GetFieldName(0), u"Product Name");
        EXPECT_EQ(source.GetRecordCount(), 0);
        EXPECT_EQ(source.GetData(0, 0), u"");
        source.SetData(0, 0, u"x");
        source.Settle();
        EXPECT_EQ(source.RecordNow(0), -1);
        EXPECT_EQ(source.RecordNamed(u""), -1);
    };
    expectEmpty();
    source.SetDataSource(m_store);
    EXPECT_EQ(source.GetRecordCount(), 4);
    source.SetDataSource(nullptr);
    expectEmpty();
}

TEST_F(FlexDataSrcTest, AStoreThatFailsIsSkipped)
{
    m_trace->FailOn("enter KestrinProductMgr.ProductLkpMgr::Count", 5);
    EXPECT_EQ(m_source.GetRecordCount(), 0);
    m_trace->FailOn("enter KestrinProductMgr.ProductLkpMgr::Fields", 5);
    EXPECT_EQ(m_source.GetData(0, 2), u"");
    EXPECT_EQ(m_source.GetRecordCount(), 4);
    m_trace->FailOn("enter ", 5);
    m_trace->Forget();
    EXPECT_EQ(m_source.GetFieldName(1), u"Part#");
    m_source.Settle();
    EXPECT_THAT(RecordsNow(4), ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(m_source.RecordNamed(u"n"), 3);
    EXPECT_THAT(m_trace->Calls(), IsEmpty());
    m_trace->Heal();
    EXPECT_EQ(CurrentName(*m_store), "bolt cutter");
}

TEST_F(FlexDataSrcTest, TracesNothingOfItsOwn)
{
    m_trace->Forget();
    EXPECT_EQ(m_source.GetRecordCount(), 4);
    EXPECT_EQ(m_source.GetData(0, 1), u"Bolt");
    EXPECT_THAT(m_trace->Calls(), ElementsAre("enter KestrinProductMgr.ProductLkpMgr::Count",
                                              "exit KestrinProductMgr.ProductLkpMgr::Count",
                                              "enter KestrinProductMgr.ProductLkpMgr::Fields",
                                              "exit KestrinProductMgr.ProductLkpMgr::Fields"));
}

TEST_F(FlexDataSrcTest, ReleasesItsStore)
{
    const std::weak_ptr<ProductLkpMgr> store = m_store;
    m_store.reset();
    {
        FlexDataSrc other;
        other.SetDataSource(store.lock());
        m_source.SetDataSource(nullptr);
        EXPECT_FALSE(store.expired());
        other.Settle();
    }
    EXPECT_TRUE(store.expired());
}

TEST_F(FlexDataSrcTest, AStoreThatSavesItselfWhenItIsReplacedStillSaves)
{
    m_store->CancelUpdate(false);
    m_store->AddNew(Named(""));
    m_store->AddNew(Named("zip"));
    m_source.Settle();
    m_store.reset();
    m_source.SetDataSource(nullptr);
    EXPECT_EQ(SavedRows().size(), 5U) << "the row without a name is removed";
}

// Places

TEST_F(FlexDataSrcTest, BeforeSettleNoPlaceIsKnown)
{
    EXPECT_THAT(RecordsNow(4), Each(-1));
    m_source.Settle();
    EXPECT_THAT(RecordsNow(5), ElementsAre(0, 1, 2, 3, -1));
    EXPECT_EQ(m_source.RecordNow(-1), -1);
    m_source.SetDataSource(m_store);
    EXPECT_THAT(RecordsNow(4), Each(-1));
}

TEST_F(FlexDataSrcTest, PlacesFollowEveryKindOfChange)
{
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    struct Case
    {
        const char* change;
        std::function<void()> act;
        std::vector<std::int32_t> now; // of anchor 2, Bolt 5, bolt cutter 3, nut 9, and one behind
    };
    const std::vector<Case> cases = {
        {"nothing", [] {}, {0, 1, 2, 3, -1}},
        {"a look", [&] { static_cast<void>(RowsOf(*m_store)); }, {0, 1, 2, 3, -1}},
        {"a new product in front", [&] { m_store->AddNew(Named("abacus")); }, {1, 2, 3, 4, -1}},
        {"a new product at the end", [&] { m_store->AddNew(Named("zip")); }, {0, 1, 2, 3, -1}},
        {"a new price", [&] { m_store->Update(Packed(5, "Bolt", "", "B-1", 7)); }, {0, 1, 2, 3, -1}},
        {"a new name", [&] { m_store->Update(Packed(2, "zip")); }, {3, 0, 1, 2, -1}},
        {"a new name that the cursor has not left",
         [&] {
             m_store->FindRow(2);
             m_store->Fields(PF_Name, u"zip");
         },
         {3, 0, 1, 2, -1}},
        {"a deletion", [&] { m_store->Delete(5); }, {0, -1, 1, 2, -1}},
        {"several changes",
         [&] {
             m_store->Delete(2);
             m_store->AddNew(Named("abacus"));
             m_store->Update(Packed(9, "awl"));
         },
         {-1, 2, 3, 1, -1}},
        {"an added import", [&] { ImportCsv("awl\nbob\n", 1); }, {0, 3, 4, 5, -1}},
        {"no product", [&] { m_store->DeleteAll(); }, {-1, -1, -1, -1, -1}},
        {"an import in place of all", [&] { ImportCsv("anchor\nnut\n", 0); }, {-1, -1, -1, -1, -1}},
        {"the same products loaded anew",
         [&] { m_store->BinaryProductImport(m_folder.File("out.bin")); },
         {0, 1, 2, 3, -1}},
        {"another row with the identifier",
         [&] {
             m_store->FindRow(9);
             m_store->Fields(PF_RowID, 2);
         },
         {0, 1, 2, -1, -1}},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.change);
        m_store->BinaryProductImport(m_folder.File("out.bin"));
        m_source.Settle();
        test.act();
        EXPECT_EQ(RecordsNow(5), test.now);
        m_source.Settle();
        const std::int32_t count = m_source.GetRecordCount();
        for (std::int32_t record = 0; record < count; ++record)
            EXPECT_EQ(m_source.RecordNow(record), record);
        EXPECT_EQ(m_source.RecordNow(count), -1);
    }
}

TEST_F(FlexDataSrcTest, PlacesAreThoseOfTheLastSettle)
{
    m_source.Settle();
    m_store->Delete(2);
    m_source.Settle();
    m_source.Settle();
    m_store->AddNew(Named("awl"));
    m_store->AddNew(Named("zip"));
    EXPECT_THAT(RecordsNow(4), ElementsAre(1, 2, 3, -1));
    EXPECT_THAT(RecordsNow(4), ElementsAre(1, 2, 3, -1)) << "asking changes nothing";
}

TEST_F(FlexDataSrcTest, ASettleAmongChangesThatWaitSeesThemDone)
{
    m_store->AddNew(Named("zip"));
    m_store->FindRow(2);
    m_store->Fields(PF_Name, u"zap");
    m_source.Settle();
    m_store->Delete(5);
    // As the list saw them: Bolt, bolt cutter, nut, zap, zip.
    EXPECT_THAT(RecordsNow(5), ElementsAre(-1, 0, 1, 2, 3));
}

TEST_F(FlexDataSrcTest, RowsWithOneIdentifierAreFoundAtTheFirstOfThem)
{
    m_store->FindRow(9);
    m_store->Fields(PF_RowID, 5);
    m_source.Settle();
    EXPECT_THAT(RecordsNow(4), ElementsAre(0, 1, 2, 3)) << "nothing has moved";
    m_store->AddNew(Named("abacus"));
    EXPECT_THAT(RecordsNow(4), ElementsAre(1, 2, 3, 2));
    m_store->Delete(5);
    EXPECT_THAT(RecordsNow(4), ElementsAre(1, 3, 2, 3));
    m_store->Delete(5);
    EXPECT_THAT(RecordsNow(4), ElementsAre(1, -1, 2, -1));
}

TEST_F(FlexDataSrcTest, TheStampFollowsTheStore)
{
    const std::uint64_t stamp = m_source.ChangeStamp();
    m_source.Settle();
    static_cast<void>(m_source.GetData(0, 1));
    EXPECT_EQ(m_source.ChangeStamp(), stamp);
    m_store->AddNew(Named("zip"));
    EXPECT_NE(m_source.ChangeStamp(), stamp);
}

TEST_F(FlexDataSrcTest, AnotherStoreIsAChangeEvenWithAsManyChanges)
{
    const std::shared_ptr<ProductLkpMgr> other = OpenStore();
    m_store->Update(Packed(2, "zip"));
    other->Update(Packed(2, "awl"));
    std::vector<std::uint64_t> stamps = {m_source.ChangeStamp()};
    for (const std::shared_ptr<ProductLkpMgr>& store : {other, std::shared_ptr<ProductLkpMgr>(), m_store}) {
        m_source.SetDataSource(store);
        stamps.push_back(m_source.ChangeStamp());
    }
    std::sort(stamps.begin(), stamps.end());
    EXPECT_EQ(std::adjacent_find(stamps.begin(), stamps.end()), stamps.end());
}

TEST_F(FlexDataSrcTest, SeveralListsOverOneStoreKeepTheirOwnPlaces)
{
    FlexDataSrc other;
    other.SetDataSource(m_store);
    m_source.Settle();
    other.Settle();
    m_store->AddNew(Named("abacus"));
    other.Settle();
    m_store->Delete(5);
    EXPECT_THAT(RecordsNow(4), ElementsAre(1, -1, 2, 3));
    EXPECT_THAT(RecordsNow(other, 5), ElementsAre(0, 1, -1, 2, 3));
}

TEST_F(FlexDataSrcTest, AListThatIsGoneIsNotTold)
{
    {
        FlexDataSrc passing;
        passing.SetDataSource(m_store);
        passing.Settle();
        FlexDataSrc turned;
        turned.SetDataSource(m_store);
        turned.Settle();
        turned.SetDataSource(nullptr);
        m_source.Settle();
    }
    m_store->AddNew(Named("abacus"));
    EXPECT_THAT(RecordsNow(4), ElementsAre(1, 2, 3, 4));
}

TEST_F(FlexDataSrcTest, NamesAreFoundWithoutMovingTheCursor)
{
    m_store->FindRow(9);
    EXPECT_EQ(m_source.RecordNamed(u"BOLT"), 1);
    EXPECT_EQ(m_source.RecordNamed(u"bolt c"), 2);
    EXPECT_EQ(m_source.RecordNamed(u""), 0);
    EXPECT_EQ(m_source.RecordNamed(u"x"), -1);
    EXPECT_EQ(m_source.RecordNamed(u"\xDC00"), -1);
    EXPECT_EQ(CurrentName(*m_store), "nut");
}

TEST_F(FlexDataSrcTest, AListMayReadWhileAnImportRuns)
{
    m_folder.Write("list.csv", "awl\nzip\nbob\n");
    const auto receiver = std::make_shared<RecordingReceiver>();
    std::vector<std::vector<std::int32_t>> seen;
    receiver->onProgress = [&] {
        seen.push_back(RecordsNow(4));
        static_cast<void>(m_source.GetData(0, 0));
        m_source.Settle();
    };
    m_source.Settle();
    m_store->SetNotifyCallback(receiver);
    const ImportResult result = ImportResultOf(
        m_store->CSVProductImport(ImportParams(m_folder.File("list.csv"), {0, -1, -1, -1}, 0, 1)));
    m_store->ClearNotifyCallback();
    EXPECT_EQ(result.imported, 3);
    ASSERT_FALSE(seen.empty());
    EXPECT_THAT(seen.front(), ElementsAre(0, 1, 2, 3));
    EXPECT_EQ(NamesOf(*m_store),
              (std::vector<std::string>{"anchor", "awl", "bob", "Bolt", "bolt cutter", "nut", "zip"}));
}

TEST_F(FlexDataSrcTest, RandomChanges_AreFollowedByEveryList)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    constexpr std::size_t kLists = 3;
    std::vector<FlexDataSrc> lists(kLists);
    std::vector<std::vector<std::int32_t>> settled(kLists); // the identifiers as each list last saw them
    for (std::size_t list = 0; list < kLists; ++list)
        lists[list].SetDataSource(m_store);
    for (int step = 0; step < 300; ++step) {
        const auto list = static_cast<std::size_t>(random() % kLists);
        const std::vector<std::int32_t> rowIDs = RowIDsOf(*m_store);
        const std::int32_t rowID = rowIDs.empty() ? 0 : rowIDs[random() % rowIDs.size()];
        const std::string name(1 + random() % 3, static_cast<char>('a' + random() % 26));
        switch (random() % 8) {
        case 0:
        case 1:
            m_store->AddNew(Named(name));
            break;
        case 2:
            if (!rowIDs.empty())
                m_store->Delete(rowID);
            break;
        case 3:
            if (!rowIDs.empty())
                m_store->Update(Packed(rowID, name));
            break;
        case 4:
            if (!rowIDs.empty()) {
                m_store->FindRow(rowID);
                m_store->Fields(PF_Name, ToUtf16(name)); // its place is due when the cursor leaves it
            }
            break;
        case 5:
            if (random() % 20 == 0)
                m_store->DeleteAll();
            break;
        default:
            lists[list].Settle();
            settled[list] = RowIDsOf(*m_store);
            break;
        }
        for (std::size_t asked = 0; asked < kLists; ++asked) {
            std::vector<std::int32_t> now;
            for (std::size_t record = 0; record < settled[asked].size(); ++record)
                now.push_back(lists[asked].RecordNow(static_cast<std::int32_t>(record)));
            std::map<std::int32_t, std::int32_t> places;
            for (const std::int32_t there : RowIDsOf(*m_store))
                places.emplace(there, static_cast<std::int32_t>(places.size()));
            std::vector<std::int32_t> expected;
            for (const std::int32_t noted : settled[asked])
                expected.push_back(places.contains(noted) ? places[noted] : -1);
            ASSERT_EQ(now, expected) << "step " << step << ", list " << asked;
        }
    }
}

} // namespace KestrinProductEditor
