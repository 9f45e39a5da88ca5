// SPDX-License-Identifier: MIT
#include "store/ProductRows.h"

#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ProductRowsTest : public StoreFixture
{
protected:
    ProductRowsTest()
    {
        WriteCatalogue({{.rowID = 7, .name = "nut"},
                        {.rowID = 3, .name = "Bolt"},
                        {.rowID = 9, .name = "anchor"},
                        {.rowID = 4, .name = "bolt cutter"}});
        m_store = Open();
        m_store->CancelUpdate(true);
        m_store->MoveFirst();
        m_trace->Forget();
    }

    [[nodiscard]] ProductRows Rows() const { return ProductRows(*m_store); }
    [[nodiscard]] std::vector<std::int32_t> Places(const std::vector<std::int32_t>& rowIDs) const
    {
        std::vector<std::int32_t> places;
        for (const std::int32_t rowID : rowIDs)
            places.push_back(Rows().PlaceOf(rowID));
        return places;
    }

    std::shared_ptr<ProductLkpMgr> m_store;
};

} // namespace

TEST_F(ProductRowsTest, NotesTheIdentifiersInRowOrder)
{
    EXPECT_EQ(Rows().Count(), 4);
    EXPECT_THAT(Rows().RowIDs(), ElementsAre(9, 3, 4, 7));
    m_store->AddNew(Named("awl"));
    EXPECT_THAT(Rows().RowIDs(), ElementsAre(9, 10, 3, 4, 7));
    m_store->DeleteAll();
    EXPECT_THAT(Rows().RowIDs(), IsEmpty());
    EXPECT_EQ(Rows().Count(), 0);
}

TEST_F(ProductRowsTest, NotesMoreRowsThanOneBlockHolds)
{
    for (int number = 0; number < 3000; ++number)
        m_store->AddNew(Named(std::to_string(number * 7919 % 3000)));
    EXPECT_EQ(Rows().RowIDs(), RowIDsOf(*m_store));
}

TEST_F(ProductRowsTest, FindsThePlaceOfARow)
{
    EXPECT_THAT(Places({9, 3, 4, 7, 5, 0, -1}), ElementsAre(0, 1, 2, 3, -1, -1, -1));
    m_store->Delete(3);
    EXPECT_THAT(Places({9, 3, 4, 7}), ElementsAre(0, -1, 1, 2));
}

TEST_F(ProductRowsTest, ARenamedRowStandsInItsNewPlaceForEveryQuestion)
{
    m_store->Fields(PF_Name, u"zip");
    EXPECT_THAT(Places({9, 3, 4, 7}), ElementsAre(3, 0, 1, 2));
    EXPECT_EQ(m_store->Fields(PF_RowID).Long(), 9);
    m_store->MoveFirst();
    m_store->Fields(PF_Name, u"zero");
    EXPECT_EQ(Rows().FirstNamed(u"ze"), 2);
    EXPECT_THAT(Rows().RowIDs(), ElementsAre(4, 7, 3, 9));
}

TEST_F(ProductRowsTest, OfRowsWithOneIdentifierTheFirstIsMeant)
{
    m_store->FindRow(7);
    m_store->Fields(PF_RowID, 4);
    EXPECT_THAT(Places({9, 3, 4, 7}), ElementsAre(0, 1, 2, -1));
    m_store->Delete(4);
    EXPECT_THAT(Places({4}), ElementsAre(2));
    m_store->Delete(4);
    EXPECT_THAT(Places({4}), ElementsAre(-1));
}

TEST_F(ProductRowsTest, FindsTheFirstNameThatBeginsWithAText)
{
    struct Case
    {
        std::u16string_view prefix;
        std::int32_t place;
    };
    const std::vector<Case> cases = {{u"", 0},      {u"a", 0},      {u"B", 1},   {u"bolt", 1},
                                     {u"BOLT ", 2}, {u"bolts", -1}, {u"nut", 3}, {u"z", -1},
                                     {u" ", -1},    {u"'", -1},     {u"%", -1},  {u"\xD800", -1}};
    for (const Case& test : cases)
        EXPECT_EQ(Rows().FirstNamed(test.prefix), test.place) << testing::PrintToString(test.prefix);
    m_store->DeleteAll();
    EXPECT_EQ(Rows().FirstNamed(u""), -1);
}

TEST_F(ProductRowsTest, FindsNamesByFoldedCase)
{
    m_store->AddNew(Named("\u00C4PFEL"));
    EXPECT_EQ(Rows().FirstNamed(u"\u00E4p"), 4);
}

TEST_F(ProductRowsTest, LeavesTheCursorAndTheTraceAlone)
{
    m_store->FindRow(3);
    m_trace->Forget();
    static_cast<void>(Rows().RowIDs());
    static_cast<void>(Rows().PlaceOf(7));
    static_cast<void>(Rows().FirstNamed(u"n"));
    static_cast<void>(Rows().Count());
    static_cast<void>(Rows().ChangeStamp());
    Rows().BeforeNextChange([] {});
    EXPECT_THAT(m_trace->Calls(), IsEmpty());
    EXPECT_EQ(CurrentName(*m_store), "Bolt");
}

TEST_F(ProductRowsTest, TheStampFollowsChangesOnly)
{
    const std::uint64_t stamp = Rows().ChangeStamp();
    m_store->GotoNthProduct(2);
    static_cast<void>(m_store->Fields(PF_Name));
    EXPECT_EQ(Rows().ChangeStamp(), stamp);
    m_store->Fields(PF_UnitPrice, Currency::FromUnits(5));
    EXPECT_NE(Rows().ChangeStamp(), stamp);
}

TEST_F(ProductRowsTest, ANoticeComesOnceBeforeTheRowsChange)
{
    std::vector<std::vector<std::int32_t>> seen;
    const auto notice = [&] { seen.push_back(Rows().RowIDs()); };
    Rows().BeforeNextChange(notice);
    m_store->AddNew(Named("awl"));
    m_store->Delete(9);
    EXPECT_THAT(seen, ElementsAre(ElementsAre(9, 3, 4, 7)));
    Rows().BeforeNextChange(notice);
    m_store->Update(Packed(3, "zip"));
    Rows().BeforeNextChange(notice);
    m_store->DeleteAll();
    EXPECT_THAT(seen,
                ElementsAre(ElementsAre(9, 3, 4, 7), ElementsAre(10, 3, 4, 7), ElementsAre(10, 4, 7, 3)));
}

TEST_F(ProductRowsTest, ANoticeComesBeforeImportsToo)
{
    std::vector<std::vector<std::int32_t>> seen;
    const auto notice = [&] { seen.push_back(Rows().RowIDs()); };
    m_folder.Write("list.csv", "x\ny\n");
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    for (const std::int32_t append : {1, 0}) {
        Rows().BeforeNextChange(notice);
        const ImportResult result = ImportResultOf(
            m_store->CSVProductImport(ImportParams(m_folder.File("list.csv"), {0, -1, -1, -1}, 0, append)));
        EXPECT_EQ(result.imported, 2);
    }
    Rows().BeforeNextChange(notice);
    m_store->BinaryProductImport(m_folder.File("out.bin"));
    EXPECT_THAT(seen,
                ElementsAre(ElementsAre(9, 3, 4, 7), ElementsAre(9, 3, 4, 7, 10, 11), testing::SizeIs(2)));
    EXPECT_THAT(Rows().RowIDs(), ElementsAre(9, 3, 4, 7));
}

TEST_F(ProductRowsTest, ARefusedAddingMovesNothingThatWasNoted)
{
    m_store->FindRow(7);
    m_store->Fields(PF_RowID, 2147483647);
    Rows().BeforeNextChange([] {});
    EXPECT_THROW(m_store->AddNew(Named("x")), AutomationError);
    EXPECT_THAT(Rows().RowIDs(), ElementsAre(9, 3, 4, 2147483647));
}

TEST_F(ProductRowsTest, NamesAreFoundInAStoreThatCouldNotBeSorted)
{
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    m_trace->FailOn("enter KestrinProductMgr.ProductLkpMgr::SortProductRS", 5);
    EXPECT_THROW(m_store->BinaryProductImport(m_folder.File("out.bin")), AutomationError);
    m_trace->Heal();
    EXPECT_EQ(Rows().Count(), 4);
    EXPECT_EQ(Rows().RowIDs()[static_cast<std::size_t>(Rows().FirstNamed(u"nut"))], 7);
    EXPECT_EQ(Rows().FirstNamed(u"x"), -1);
}

} // namespace KestrinProductEditor
