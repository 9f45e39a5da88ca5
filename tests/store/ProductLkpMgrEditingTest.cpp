// SPDX-License-Identifier: MIT
#include "platform/Text.h"
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

constexpr std::int32_t kDoesNotFit = -2147217887;
constexpr std::int32_t kLargest = std::numeric_limits<std::int32_t>::max();

class StoreEditing : public StoreFixture
{
protected:
    StoreEditing()
    {
        WriteCatalogue({{.rowID = 2,
                         .uniqueID = 12,
                         .status = 1,
                         .name = "Anchor",
                         .key = "K",
                         .partNum = "P",
                         .price = 50000},
                        {.rowID = 3, .name = "Bolt"},
                        {.rowID = 4, .name = "Clamp"},
                        {.rowID = 5, .name = "Drill"}});
        m_store = Open();
        m_store->CancelUpdate(true);
    }

    [[nodiscard]] std::vector<ProductRow> Rows() const { return RowsOf(*m_store); }
    [[nodiscard]] std::string Here() const { return CurrentName(*m_store); }

    std::shared_ptr<ProductLkpMgr> m_store;
};

struct BadProduct
{
    const char* what;
    Variant value;
    std::int32_t number;
};

/// Packed products for the row `rowID` that cannot be taken.
[[nodiscard]] std::vector<BadProduct> BadProducts(std::int32_t rowID)
{
    const Currency price;
    return {
        {"Empty", Variant(), 13},
        {"a number", Variant(std::int32_t{5}), 13},
        {"a text", Variant(u"Anchor"), 13},
        {"no elements", Variant::ArrayOf({}), 9},
        {"five elements", Variant::ArrayOf({rowID, u"n", u"k", u"p", price}), 9},
        {"two dimensions", Variant(VariantArray(6, 6)), 9},
        {"a Null name", Variant::ArrayOf({rowID, Variant::Null(), u"k", u"p", price, u"t"}), 13},
        {"an array for a key", Variant::ArrayOf({rowID, u"n", Variant::ArrayOf({}), u"p", price, u"t"}), 13},
        {"a Null part number", Variant::ArrayOf({rowID, u"n", u"k", Variant::Null(), price, u"t"}), 13},
        {"a price that is none", Variant::ArrayOf({rowID, u"n", u"k", u"p", u"abc", u"t"}), 13},
        {"a price too large", Variant::ArrayOf({rowID, u"n", u"k", u"p", 1e30, u"t"}), 6},
        {"a Null note", Variant::ArrayOf({rowID, u"n", u"k", u"p", price, Variant::Null()}), 13},
        {"a name too long", Packed(rowID, std::string(256, 'n')), kDoesNotFit},
        {"a key too long", Packed(rowID, "n", std::string(256, 'k')), kDoesNotFit},
        {"a part number too long", Packed(rowID, "n", "k", std::string(256, 'p')), kDoesNotFit},
        {"a note too long", Packed(rowID, "n", "k", "p", 1, std::string(4096, 't')), kDoesNotFit},
    };
}

} // namespace

TEST_F(StoreEditing, AddsAnEmptyProductForNull)
{
    m_store->DeleteAll();
    EXPECT_EQ(m_store->AddNew(Variant::Null()), 6);
    EXPECT_THAT(Rows(), ElementsAre(ProductRow{.rowID = 6, .dirtySession = true, .dirtySync = true}));
}

TEST_F(StoreEditing, AddsAPackedProductDirtyAndMakesItCurrent)
{
    EXPECT_EQ(m_store->AddNew(Packed(0, "Saw", "K", "P", -12345, "N")), 6);
    EXPECT_EQ(m_store->Fields(PF_RowID), Variant(std::int32_t{6}));
    EXPECT_TRUE(m_store->SessionIsDirty());
    EXPECT_EQ(Rows().back(), (ProductRow{.rowID = 6,
                                         .name = "Saw",
                                         .key = "K",
                                         .partNum = "P",
                                         .price = -12345,
                                         .note = "N",
                                         .dirtySession = true,
                                         .dirtySync = true}));
}

TEST_F(StoreEditing, IgnoresTheIdentifierOfAPackedProductThatItAdds)
{
    EXPECT_EQ(m_store->AddNew(Packed(3, "Saw")), 6);
    EXPECT_EQ(m_store->AddNew(Packed(kLargest, "Saw")), 7);
    for (const Variant& ignored : {Variant(), Variant::Null(), Variant(u"abc"), Variant(1e30)})
        EXPECT_NO_THROW(m_store->AddNew(Variant::ArrayOf({ignored, u"Saw", u"", u"", Currency(), u""})));
    EXPECT_EQ(m_store->Count(), 10);
}

TEST_F(StoreEditing, GivesConsecutiveIdentifiersAndNoneTwice)
{
    EXPECT_THAT(AddNames(*m_store, {"Saw", "Tap"}), ElementsAre(6, 7));
    m_store->Delete(7);
    m_store->Delete(6);
    EXPECT_THAT(AddNames(*m_store, {"Vice"}), ElementsAre(8));
    m_store->DeleteAll();
    EXPECT_THAT(AddNames(*m_store, {"Wedge"}), ElementsAre(9));
}

TEST_F(StoreEditing, ChecksNoLimitOfAPriceThatItAdds)
{
    m_store->AddNew(Packed(0, "Saw", "", "", std::numeric_limits<std::int64_t>::max()));
    EXPECT_EQ(m_store->Fields(PF_UnitPrice).Currency().Scaled(), std::numeric_limits<std::int64_t>::max());
}

TEST_F(StoreEditing, KeepsTheReservedCharacterInWhatItAdds)
{
    m_store->AddNew(Named("A~B"));
    EXPECT_EQ(Here(), "A~B");
}

TEST_F(StoreEditing, ConvertsThePartsOfAPackedProduct)
{
    m_store->AddNew(Variant::ArrayOf({0, 12, Variant(), true, u"$1,234.50", 1.5}));
    EXPECT_EQ(m_store->Pack(6), Packed(6, "12", "", "True", 12345000, "1.5"));
}

TEST_F(StoreEditing, AddsNothingForABadProduct)
{
    const std::vector<ProductRow> before = Rows();
    for (const BadProduct& bad : BadProducts(0)) {
        SCOPED_TRACE(bad.what);
        EXPECT_EQ(ErrorNumberOf([&] { m_store->AddNew(bad.value); }), bad.number);
        EXPECT_EQ(Rows(), before);
        EXPECT_FALSE(m_store->SessionIsDirty());
    }
    EXPECT_EQ(m_store->AddNew(Named("Saw")), 6);
}

TEST_F(StoreEditing, TakesTextsOfFullLength)
{
    const Variant longest = Packed(6, std::string(255, 'n'), std::string(255, 'k'), std::string(255, 'p'), 0,
                                   std::string(4095, 't'));
    EXPECT_EQ(m_store->AddNew(longest), 6);
    EXPECT_EQ(m_store->Pack(6), longest);
}

TEST_F(StoreEditing, AddsNoRowBehindTheLargestIdentifier)
{
    WriteCatalogue({{.rowID = kLargest - 1, .name = "Anchor"}});
    const auto store = Open();
    store->CancelUpdate(true);
    EXPECT_EQ(store->AddNew(Named("Bolt")), kLargest);
    EXPECT_EQ(ErrorNumberOf([&] { store->AddNew(Named("Clamp")); }), 6);
    EXPECT_EQ(ErrorNumberOf([&] { store->AddNew(Variant::Null()); }), 6);
    EXPECT_THAT(NamesOf(*store), ElementsAre("Anchor", "Bolt"));
}

TEST_F(StoreEditing, UpdatesEveryFieldAndNothingElse)
{
    m_store->Update(Packed(2, "Axe", "L", "Q", 1, "M"));
    EXPECT_EQ(Here(), "Axe");
    EXPECT_TRUE(m_store->SessionIsDirty());
    EXPECT_EQ(Rows()[0], (ProductRow{.rowID = 2,
                                     .uniqueID = 12,
                                     .status = 1,
                                     .name = "Axe",
                                     .key = "L",
                                     .partNum = "Q",
                                     .price = 1,
                                     .note = "M",
                                     .dirtySession = true,
                                     .dirtySync = true}));
}

TEST_F(StoreEditing, MarksARowThatIsUpdatedWithItsOwnValues)
{
    m_store->Update(m_store->Pack(2));
    EXPECT_TRUE(m_store->Fields(PF_DirtySession).Boolean());
    EXPECT_TRUE(m_store->Fields(PF_DirtySync).Boolean());
    EXPECT_TRUE(m_store->SessionIsDirty());
}

TEST_F(StoreEditing, UpdatesNoProductThatIsNotThere)
{
    const std::vector<ProductRow> before = Rows();
    for (const std::int32_t rowID : {0, 99, -1}) {
        const auto error = ErrorOf([&] { m_store->Update(Packed(rowID, "Saw")); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Source(), u"KestrinProductEditor.ProductLkpMgr::Update");
        EXPECT_EQ(error->Description(), u"Product not found");
        EXPECT_EQ(error->Number(), -2147220503);
        EXPECT_TRUE(m_store->EOF());
    }
    EXPECT_EQ(ErrorOf([&] { m_store->Update(Packed(99, std::string(256, 'n'))); })->Description(),
              u"Product not found");
    EXPECT_EQ(Rows(), before);
    EXPECT_FALSE(m_store->SessionIsDirty());
    m_store->DeleteAll();
    EXPECT_EQ(ErrorOf([&] { m_store->Update(Packed(2, "Saw")); })->Description(), u"Product not found");
}

TEST_F(StoreEditing, ChangesNothingForABadUpdate)
{
    const std::vector<ProductRow> before = Rows();
    for (const BadProduct& bad : BadProducts(3)) {
        SCOPED_TRACE(bad.what);
        EXPECT_EQ(ErrorNumberOf([&] { m_store->Update(bad.value); }), bad.number);
        EXPECT_EQ(Rows(), before);
        EXPECT_FALSE(m_store->SessionIsDirty());
    }
    EXPECT_EQ(ErrorNumberOf([&] { m_store->Update(Variant::Null()); }), 13);
    EXPECT_EQ(ErrorNumberOf([&] {
                  m_store->Update(Variant::ArrayOf({Variant::Null(), u"n", u"k", u"p", Currency(), u"t"}));
              }),
              13);
}

TEST_F(StoreEditing, PutsAnUpdatedRowInItsPlaceAndGoesOnFromTheOldOne)
{
    m_store->Update(Packed(3, "Zip"));
    EXPECT_EQ(Here(), "Zip");
    EXPECT_EQ(m_store->CurrentRecordIdx(), 4);
    m_store->MoveNext();
    EXPECT_EQ(Here(), "Clamp");

    m_store->Update(Packed(5, "Aa"));
    EXPECT_EQ(m_store->CurrentRecordIdx(), 1);
    m_store->MovePrevious();
    EXPECT_EQ(Here(), "Clamp");
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("Aa", "Anchor", "Clamp", "Zip"));
}

TEST_F(StoreEditing, LeavesARenamedRowInItsPlaceUntilTheCursorLeavesIt)
{
    m_store->FindRow(3);
    m_store->Fields(PF_Name, u"Zip");
    EXPECT_EQ(Here(), "Zip");
    EXPECT_EQ(m_store->CurrentRecordIdx(), 2);
    m_store->MoveNext();
    EXPECT_EQ(Here(), "Clamp");
    EXPECT_EQ(m_store->CurrentRecordIdx(), 2);
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("Anchor", "Clamp", "Drill", "Zip"));
}

TEST_F(StoreEditing, VisitsEveryRowOfAWalkThatGivesBackTheNames)
{
    std::vector<std::string> visited;
    for (m_store->MoveFirst(); !m_store->EOF(); m_store->MoveNext()) {
        visited.push_back(Here());
        m_store->Fields(PF_Name, m_store->Fields(PF_Name));
    }
    EXPECT_THAT(visited, ElementsAre("Anchor", "Bolt", "Clamp", "Drill"));
}

TEST_F(StoreEditing, GoesOnBehindTheLastPlaceWhenTheLastRowWasRenamed)
{
    m_store->Update(Packed(5, "Aa"));
    m_store->MoveNext();
    EXPECT_TRUE(m_store->EOF());
}

TEST_F(StoreEditing, LeavesTheOrderAloneWhenANameIsTakenBack)
{
    m_store->FindRow(3);
    m_store->Fields(PF_Name, u"Zip");
    m_store->Fields(PF_Name, u"Bolt");
    m_store->MoveNext();
    EXPECT_EQ(Here(), "Clamp");
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("Anchor", "Bolt", "Clamp", "Drill"));
}

TEST_F(StoreEditing, GoesOnFromTheOldPlaceOfARenamedRowThatWasDeleted)
{
    m_store->FindRow(3);
    m_store->Fields(PF_Name, u"Zip");
    m_store->Delete(3);
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("Anchor", "Clamp", "Drill"));
}

TEST_F(StoreEditing, SavesARowThatWasRenamedLast)
{
    m_store->CancelUpdate(false);
    m_store->FindRow(3);
    m_store->Fields(PF_Name, u"Zip");
    m_store.reset();
    std::vector<std::string> names;
    for (const ProductRow& row : SavedRows())
        names.push_back(row.name);
    EXPECT_THAT(names, ElementsAre("Anchor", "Clamp", "Drill", "Zip"));
}

TEST_F(StoreEditing, DeletesARow)
{
    m_store->Delete(3);
    EXPECT_TRUE(m_store->SessionIsDirty());
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("Anchor", "Clamp", "Drill"));
}

TEST_F(StoreEditing, FailsToDeleteWhatIsNotThere)
{
    m_store->MoveFirst();
    EXPECT_EQ(ErrorNumberOf([&] { m_store->Delete(99); }), 3021);
    EXPECT_TRUE(m_store->EOF());
    EXPECT_FALSE(m_store->SessionIsDirty());
    EXPECT_EQ(m_store->Count(), 4);
}

TEST_F(StoreEditing, FailsToDeleteARowTwice)
{
    m_store->Delete(3);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->Delete(3); }), 3021);
    EXPECT_EQ(m_store->Count(), 3);
}

TEST_F(StoreEditing, DeletesAllAndSaysSoOnlyWhenThereWasSomething)
{
    m_store->DeleteAll();
    EXPECT_TRUE(m_store->SessionIsDirty());
    EXPECT_EQ(m_store->Count(), 0);
    std::filesystem::remove(m_database / "corvprd2.cpd");
    const auto empty = Open();
    empty->DeleteAll();
    EXPECT_FALSE(empty->SessionIsDirty());
}

TEST_F(StoreEditing, ReadsEachColumnInItsKind)
{
    m_store->FindRow(2);
    EXPECT_EQ(m_store->Fields(0), Variant(std::int32_t{2}));
    EXPECT_EQ(m_store->Fields(1), Variant(std::int32_t{12}));
    EXPECT_EQ(m_store->Fields(2), Variant(std::int32_t{1}));
    EXPECT_EQ(m_store->Fields(3), Variant(u"Anchor"));
    EXPECT_EQ(m_store->Fields(4), Variant(u"K"));
    EXPECT_EQ(m_store->Fields(5), Variant(u"P"));
    EXPECT_EQ(m_store->Fields(6), Variant(Currency::FromUnits(5)));
    EXPECT_EQ(m_store->Fields(7), Variant(u""));
    EXPECT_EQ(m_store->Fields(8), Variant(false));
    EXPECT_EQ(m_store->Fields(9), Variant(false));
}

TEST_F(StoreEditing, HasNoOtherColumns)
{
    m_store->MoveFirst();
    for (const std::int32_t column : {-1, 10, kLargest, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(m_store->Fields(column)); }), 3265) << column;
        EXPECT_EQ(ErrorNumberOf([&] { m_store->Fields(column, u"x"); }), 3265) << column;
        EXPECT_EQ(ErrorNumberOf([&] { m_store->Fields(column, Variant::Null()); }), 3265) << column;
    }
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(StoreEditing, MarksARowWhenAFieldOfTheProductChanges)
{
    const struct
    {
        std::int32_t column;
        Variant value;
    } writes[] = {{PF_Name, u"Axe"},
                  {PF_Key, u"L"},
                  {PF_PartNum, u"Q"},
                  {PF_UnitPrice, Currency::FromUnits(6)},
                  {PF_Note, u"M"}};
    for (const auto& write : writes) {
        SCOPED_TRACE(write.column);
        const auto store = Open();
        store->CancelUpdate(true);
        store->FindRow(2);
        store->Fields(write.column, write.value);
        EXPECT_EQ(store->Fields(write.column), write.value);
        EXPECT_TRUE(store->Fields(PF_DirtySession).Boolean());
        EXPECT_TRUE(store->Fields(PF_DirtySync).Boolean());
        EXPECT_TRUE(store->SessionIsDirty());
    }
}

TEST_F(StoreEditing, MarksNothingForTheSameText)
{
    m_store->FindRow(2);
    const struct
    {
        std::int32_t column;
        Variant value;
    } writes[] = {
        {PF_Name, u"Anchor"},
        {PF_Key, u"K"},
        {PF_PartNum, u"P"},
        {PF_UnitPrice, Currency::FromUnits(5)},
        {PF_UnitPrice, std::int32_t{5}},
        {PF_UnitPrice, u"5"},
        {PF_Note, u""},
        {PF_Note, Variant()},
    };
    for (const auto& write : writes)
        m_store->Fields(write.column, write.value);
    EXPECT_FALSE(m_store->Fields(PF_DirtySession).Boolean());
    EXPECT_FALSE(m_store->Fields(PF_DirtySync).Boolean());
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(StoreEditing, CountsAChangeOfCaseAsAChange)
{
    m_store->FindRow(2);
    m_store->Fields(PF_Name, u"ANCHOR");
    EXPECT_EQ(Here(), "ANCHOR");
    EXPECT_TRUE(m_store->SessionIsDirty());
}

TEST_F(StoreEditing, ComparesAPriceWithTheTextThatItIsGiven)
{
    m_store->FindRow(2);
    m_store->Fields(PF_UnitPrice, u"$5.00");
    EXPECT_EQ(m_store->Fields(PF_UnitPrice), Variant(Currency::FromUnits(5)));
    EXPECT_TRUE(m_store->SessionIsDirty());
}

TEST_F(StoreEditing, WritesNothingForNull)
{
    m_store->FindRow(2);
    const Variant before = m_store->Pack(2);
    for (std::int32_t column = PF_RowID; column <= PF_DirtySync; ++column)
        m_store->Fields(column, Variant::Null());
    EXPECT_EQ(m_store->Pack(2), before);
    EXPECT_EQ(m_store->Fields(PF_UniqueID), Variant(std::int32_t{12}));
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(StoreEditing, TakesEmptyForNothing)
{
    m_store->FindRow(2);
    for (std::int32_t column = PF_UniqueID; column <= PF_DirtySync; ++column)
        m_store->Fields(column, Variant());
    EXPECT_EQ(m_store->Fields(PF_UniqueID), Variant(std::int32_t{0}));
    EXPECT_EQ(m_store->Fields(PF_DirtySync), Variant(false));
    EXPECT_EQ(m_store->Pack(2), Packed(2, ""));
    EXPECT_TRUE(m_store->SessionIsDirty());
}

TEST_F(StoreEditing, WritesTheOtherColumnsWithoutMarkingAnything)
{
    m_store->FindRow(2);
    m_store->Fields(PF_UniqueID, std::int32_t{77});
    m_store->Fields(PF_Status, u"9");
    m_store->Fields(PF_DirtySession, true);
    EXPECT_EQ(m_store->Fields(PF_UniqueID), Variant(std::int32_t{77}));
    EXPECT_EQ(m_store->Fields(PF_Status), Variant(std::int32_t{9}));
    EXPECT_EQ(m_store->Fields(PF_DirtySession), Variant(true));
    EXPECT_EQ(m_store->Fields(PF_DirtySync), Variant(false));
    EXPECT_FALSE(m_store->SessionIsDirty());
    m_store->Fields(PF_DirtySync, std::int32_t{1});
    EXPECT_EQ(m_store->Fields(PF_DirtySync), Variant(true));
    EXPECT_FALSE(m_store->SessionIsDirty());
}

TEST_F(StoreEditing, ChangesNothingForAValueThatDoesNotConvert)
{
    m_store->FindRow(2);
    const struct
    {
        std::int32_t column;
        Variant value;
        std::int32_t number;
    } writes[] = {
        {PF_Name, std::u16string(256, u'n'), kDoesNotFit},
        {PF_Key, std::u16string(256, u'k'), kDoesNotFit},
        {PF_PartNum, std::u16string(256, u'p'), kDoesNotFit},
        {PF_Note, std::u16string(4096, u't'), kDoesNotFit},
        {PF_Name, Variant::ArrayOf({u"x"}), 13},
        {PF_UnitPrice, u"abc", 13},
        {PF_UnitPrice, u"1e3", 13},
        {PF_UnitPrice, u"1.2.3", 13},
        {PF_UnitPrice, 1e30, 6},
        {PF_UnitPrice, std::u16string(400, u'9'), 6},
        {PF_RowID, u"x", 13},
        {PF_UniqueID, u"x", 13},
        {PF_Status, 3e9, 6},
        {PF_DirtySync, u"perhaps", 13},
        {PF_DirtySync, Variant::ArrayOf({}), 13},
    };
    const Variant before = m_store->Pack(2);
    for (const auto& write : writes)
        EXPECT_EQ(ErrorNumberOf([&] { m_store->Fields(write.column, write.value); }), write.number)
            << write.column;
    EXPECT_EQ(m_store->Pack(2), before);
    EXPECT_FALSE(m_store->SessionIsDirty());
    EXPECT_FALSE(m_store->Fields(PF_DirtySession).Boolean());
}

TEST_F(StoreEditing, CountsOnFromAnIdentifierWrittenAboveTheLast)
{
    m_store->FindRow(2);
    m_store->Fields(PF_RowID, std::int32_t{50});
    EXPECT_EQ(m_store->AddNew(Named("Saw")), 51);
    m_store->FindRow(50);
    m_store->Fields(PF_RowID, std::int32_t{1});
    EXPECT_EQ(m_store->AddNew(Named("Tap")), 52);
    EXPECT_EQ(m_store->Pack(1).At(1), Variant(u"Anchor"));
}

TEST_F(StoreEditing, CanLeaveNoIdentifierOver)
{
    m_store->FindRow(2);
    m_store->Fields(PF_RowID, kLargest);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->AddNew(Named("Saw")); }), 6);
    EXPECT_EQ(m_store->Count(), 4);
}

TEST_F(StoreEditing, LetsEveryReaderSeeAWrittenValueAtOnce)
{
    m_store->FindRow(3);
    m_store->Fields(PF_Name, u"Zip");
    m_store->Fields(PF_UniqueID, std::int32_t{33});
    EXPECT_EQ(m_store->CurrentRecordIdx(), 2);
    EXPECT_THAT(MatchesOf(m_store->GetFindMatchesByName(u"zip", false)), ElementsAre("3 Zip"));
    EXPECT_THAT(MatchesOf(m_store->GetFindMatchesByName(u"bolt", false)), IsEmpty());
    m_store->FindRowBySyncID(33);
    EXPECT_EQ(Here(), "Zip");
    EXPECT_EQ(m_store->Pack(3), Packed(3, "Zip"));
}

} // namespace KestrinProductEditor
