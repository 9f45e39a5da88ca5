// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductLkpView.h>

#include "support/CapturingToolkit.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"
#include "support/User.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using Cells = std::vector<std::vector<std::u16string>>;

/// Half a pixel may be lost in each direction.
constexpr float kPixel = 15;

class ProductLkpViewForm : public StoreFixture
{
protected:
    void WriteThreeProducts() const
    {
        WriteCatalogue({{.rowID = 2, .name = "Anchor", .partNum = "A-1", .price = 125'000},
                        {.rowID = 3, .name = "Bolt", .partNum = "B-1", .price = 5'000},
                        {.rowID = 4, .name = "Clamp", .partNum = "C-1", .price = 12'345'000}});
    }

    [[nodiscard]] IGrid& Grid() const { return m_toolkit.Surface().Grid(u"flexGrid"); }

    /// The grid's own texts in the columns that are seen, header first.
    [[nodiscard]] Cells CellsOfGrid() const
    {
        Cells cells;
        for (std::int32_t row = 0; row < Grid().Rows(); ++row) {
            auto& texts = cells.emplace_back();
            for (std::int32_t col = 0; col < Grid().Cols(); ++col) {
                if (!Grid().IsColHidden(col))
                    texts.push_back(Grid().CellText(row, col));
            }
        }
        return cells;
    }

    std::unique_ptr<IUser> m_user = MakeUser();
    CapturingToolkit m_toolkit{m_user->Screen()};
};

const std::vector<std::u16string> kEmptyRow = {u"", u"", u""};
const std::vector<std::u16string> kHeader = {u"Product Name", u"Part#", u"Unit Price"};

} // namespace

TEST_F(ProductLkpViewForm, BeginsWithAHeaderRowAndThreeColumns)
{
    const auto view = ProductLkpView::Create();
    EXPECT_EQ(Grid().Rows(), 1);
    EXPECT_EQ(Grid().Cols(), 3);
    EXPECT_EQ(Grid().FixedRows(), 1);
    EXPECT_EQ(Grid().FixedCols(), 0);
    EXPECT_EQ(view->GetDataSource(), nullptr);
    EXPECT_NE(view->NativeHandle(), nullptr);
    EXPECT_TRUE(m_trace->Calls().empty());
}

TEST_F(ProductLkpViewForm, FillsTheControlWithTheGridAtEverySize)
{
    const auto view = ProductLkpView::Create();
    for (const auto& [width, height] : {std::pair(6000.F, 3000.F), {900.F, 4500.F}, {300.F, 150.F}}) {
        m_user->ResizeUserControl(m_toolkit.Surface(), width, height);
        const ControlPlace place = m_toolkit.Surface().Place(u"flexGrid");
        EXPECT_EQ(place.left, 0);
        EXPECT_EQ(place.top, 0);
        EXPECT_NEAR(place.width, width, kPixel);
        EXPECT_NEAR(place.height, height, kPixel);
    }
}

TEST_F(ProductLkpViewForm, ShowsTheCatalogueAfterInit)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    view->Init();
    EXPECT_EQ(Grid().Rows(), 4);
    EXPECT_EQ(CellsOfGrid().at(0), kHeader);
    EXPECT_EQ(Grid().CellText(1, 0), u"Anchor");
    EXPECT_EQ(Grid().CellText(3, 1), u"C-1");
    EXPECT_EQ(Grid().CellText(1, 2), u"12.5");
    EXPECT_EQ(m_user->CellShown(u"flexGrid", 1, 2), u"$12.50");
    ASSERT_NE(view->GetDataSource(), nullptr);
    EXPECT_EQ(view->GetDataSource()->Count(), 3);
}

TEST_F(ProductLkpViewForm, ShowsTheHeaderAloneForAnEmptyCatalogue)
{
    const auto view = ProductLkpView::Create();
    view->Init();
    EXPECT_EQ(CellsOfGrid(), Cells{kHeader});
}

TEST_F(ProductLkpViewForm, WritesEveryProductIntoRowOneOnRefresh)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    view->Refresh();
    EXPECT_EQ(CellsOfGrid(), (Cells{kEmptyRow, {u"Clamp", u"C-1", u"1234.5"}, kEmptyRow, kEmptyRow}));
    ASSERT_NE(view->GetDataSource(), nullptr);
    EXPECT_TRUE(view->GetDataSource()->EOF());
}

TEST_F(ProductLkpViewForm, WritesNoCellOnRefreshOfAnEmptyStore)
{
    const auto view = ProductLkpView::Create();
    view->Refresh();
    EXPECT_EQ(CellsOfGrid(), Cells{kEmptyRow});
}

TEST_F(ProductLkpViewForm, RefreshesFromTheStoreThatItHas)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    view->Refresh();
    const auto store = view->GetDataSource();
    store->Delete(4);
    view->Refresh();
    EXPECT_EQ(view->GetDataSource(), store);
    EXPECT_EQ(CellsOfGrid(), (Cells{kEmptyRow, {u"Bolt", u"B-1", u"0.5"}, kEmptyRow}));
}

TEST_F(ProductLkpViewForm, RefusesToRefreshWhileItIsBound)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    view->Init();
    EXPECT_EQ(ErrorNumberOf([&] { view->Refresh(); }), kErrActionNotSupported);
    EXPECT_EQ(Grid().CellText(1, 0), u"Anchor");
    view->ResetFlexDataSource();
    view->Refresh();
    EXPECT_EQ(Grid().Rows(), 4);
    EXPECT_EQ(Grid().CellText(1, 0), u"Clamp");
}

TEST_F(ProductLkpViewForm, StandsWhenATraceBindsItWhileItRefreshes)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    m_trace->onCall = [&](const std::string& call) {
        if (call != "enter KestrinProductMgr.ProductLkpMgr::MoveNext")
            return;
        m_trace->onCall = nullptr;
        view->Init();
    };
    EXPECT_EQ(ErrorNumberOf([&] { view->Refresh(); }), kErrActionNotSupported);
    EXPECT_EQ(m_trace->onCall, nullptr);
    EXPECT_EQ(Grid().Rows(), 4);
    EXPECT_EQ(Grid().CellText(1, 0), u"Anchor");
    EXPECT_EQ(view->GetDataSource()->Count(), 3);
}

TEST_F(ProductLkpViewForm, PassesOnWhatFailsInRefresh)
{
    WriteCatalogue("no catalogue");
    const auto view = ProductLkpView::Create();
    EXPECT_EQ(ErrorNumberOf([&] { view->Refresh(); }), kErrInvalidFileFormat);
    EXPECT_EQ(view->GetDataSource(), nullptr);

    WriteThreeProducts();
    view->Refresh();
    m_trace->FailOn("enter KestrinProductMgr.ProductLkpMgr::MoveNext", 4711);
    EXPECT_EQ(ErrorNumberOf([&] { view->Refresh(); }), 4711);
    m_trace->Heal();
}

TEST_F(ProductLkpViewForm, SkipsWhatFailsInInit)
{
    WriteCatalogue("no catalogue");
    const auto view = ProductLkpView::Create();
    view->Init();
    EXPECT_EQ(view->GetDataSource(), nullptr);
    EXPECT_EQ(CellsOfGrid(), Cells{kHeader});
    EXPECT_EQ(CatalogueBytes(), "no catalogue");

    WriteThreeProducts();
    view->Init();
    EXPECT_EQ(Grid().Rows(), 4);
}

TEST_F(ProductLkpViewForm, HasNoStoreWhenTheNextOneFails)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    view->Init();
    view->GetDataSource()->CancelUpdate(true);
    WriteCatalogue("no catalogue");
    view->Init();
    EXPECT_EQ(view->GetDataSource(), nullptr);
    EXPECT_EQ(CellsOfGrid(), Cells{kHeader});
}

TEST_F(ProductLkpViewForm, KeepsStoreAndAdaptorWhenItIsUnbound)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    EXPECT_TRUE(view->ResetFlexDataSource().IsEmpty());
    view->Init();
    const auto store = view->GetDataSource();
    for (int time = 0; time < 2; ++time) {
        EXPECT_TRUE(view->ResetFlexDataSource().IsEmpty());
        EXPECT_EQ(CellsOfGrid(), Cells(4, kEmptyRow));
        EXPECT_EQ(view->GetDataSource(), store);
    }
    view->Init();
    EXPECT_EQ(Grid().CellText(1, 0), u"Anchor");
    EXPECT_NE(view->GetDataSource(), store);
}

TEST_F(ProductLkpViewForm, ReadsAtTheNextInitWhatItsStoreHasSaved)
{
    WriteThreeProducts();
    auto view = ProductLkpView::Create();
    view->Init();
    view->GetDataSource()->AddNew(Named("Drill"));
    view->Init();
    EXPECT_EQ(Grid().Rows(), 5);
    EXPECT_EQ(Grid().CellText(4, 0), u"Drill");
    view.reset();
    EXPECT_EQ(SavedRows().size(), 4U);
}

TEST_F(ProductLkpViewForm, SavesWithItsStoreWhenItGoes)
{
    auto view = ProductLkpView::Create();
    view->Init();
    view->GetDataSource()->AddNew(Named("Anchor"));
    view.reset();
    EXPECT_EQ(SavedRows().size(), 1U);

    view = ProductLkpView::Create();
    view->Init();
    view->GetDataSource()->CancelUpdate(true);
    view->GetDataSource()->DeleteAll();
    view.reset();
    EXPECT_EQ(SavedRows().size(), 1U);
}

TEST_F(ProductLkpViewForm, LeavesItsStoreToAHostThatHoldsIt)
{
    WriteThreeProducts();
    auto view = ProductLkpView::Create();
    view->Init();
    const auto store = view->GetDataSource();
    view.reset();
    EXPECT_EQ(store->Count(), 3);
}

TEST_F(ProductLkpViewForm, ChangesNothingWhenItIsNotified)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    view->Init();
    const Cells before = CellsOfGrid();
    const auto store = view->GetDataSource();
    store->FindRow(3);
    m_trace->Forget();
    const std::shared_ptr<IPNotifyCallback> notified = view;
    notified->NotifyProductAdd();
    notified->NotifyProductDelete();
    notified->NotifyProductUpdate();
    EXPECT_TRUE(m_trace->Calls().empty());
    EXPECT_EQ(CurrentName(*store), "Bolt");
    EXPECT_EQ(CellsOfGrid(), before);
    EXPECT_EQ(view->GetDataSource(), store);
}

TEST_F(ProductLkpViewForm, IsNotTraced)
{
    WriteThreeProducts();
    const auto view = ProductLkpView::Create();
    view->Init();
    view->ResetFlexDataSource();
    view->Refresh();
    EXPECT_THAT(m_trace->Calls(), testing::Not(testing::Contains(testing::HasSubstr("ProductLkpView"))));
}

TEST(ProductLkpView, IsNotThereWithoutWindows)
{
    const NoWindows toolkit;
    EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(ProductLkpView::Create()); }), kErrActionNotSupported);
}

} // namespace KestrinProductEditor
