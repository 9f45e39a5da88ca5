// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/QtViews.h>

#include "platform/qt/QtToolkit.h"
#include "support/StoreFixture.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace KestrinProductEditor {

namespace {

class QtViews : public StoreFixture
{
protected:
    QtViews()
    {
        WriteCatalogue({{.rowID = 2, .name = "Anchor", .partNum = "A-1", .price = 125'000},
                        {.rowID = 3, .name = "Bolt", .partNum = "B-1", .price = 5'000}});
    }

    /// The list in a widget of the view.
    [[nodiscard]] static QAbstractItemView& ListIn(QWidget& widget)
    {
        return *widget.findChild<QAbstractItemView*>(QStringLiteral("flexGrid"));
    }

    /// The place of `inner` in `outer`.
    [[nodiscard]] static QRect PlaceIn(const QWidget& outer, const QWidget& inner)
    {
        return {inner.mapTo(&outer, QPoint()), inner.size()};
    }

private:
    QtToolkit m_toolkit;
    ScopedToolkit m_inUse{m_toolkit};
};

} // namespace

TEST_F(QtViews, FillAWidgetOfTheHostAndGrowWithIt)
{
    QWidget host;
    ProductLkpViewWidget list(&host);
    host.resize(500, 400);
    host.show();
    for (const QSize size : {QSize(400, 300), QSize(90, 60), QSize(450, 350)}) {
        list.resize(size);
        QApplication::processEvents();
        EXPECT_EQ(PlaceIn(list, ListIn(list)), QRect(QPoint(), size));
    }
}

TEST_F(QtViews, ShowTheCatalogue)
{
    ProductLkpViewWidget list;
    EXPECT_EQ(list.GetDataSource(), nullptr);
    list.Init();
    list.show();
    const QAbstractItemModel* const model = ListIn(list).model();
    ASSERT_NE(model, nullptr);
    ASSERT_EQ(model->rowCount(), 2);
    EXPECT_EQ(model->data(model->index(1, 0)).toString(), QStringLiteral("Bolt"));
    EXPECT_EQ(model->data(model->index(0, 2)).toString(), QStringLiteral("$12.50"));
    EXPECT_EQ(list.GetDataSource()->Count(), 2);
    EXPECT_TRUE(list.ResetFlexDataSource().IsEmpty());
    list.Refresh();
    EXPECT_EQ(list.View()->GetDataSource(), list.GetDataSource());
}

TEST_F(QtViews, LayTheDetailsOutInTheHostsWidget)
{
    ProductDetailsWidget details;
    details.resize(600, 300);
    details.show();
    QApplication::processEvents();
    const auto* const name = details.findChild<QLineEdit*>(QStringLiteral("txtProductName"));
    ASSERT_NE(name, nullptr);
    const int twipsPerPixel = 1440 / details.logicalDpiX();
    EXPECT_NEAR(PlaceIn(details, *name).left(), 1440 / twipsPerPixel, 1);
    EXPECT_NEAR(name->width(), 600 - 1680 / twipsPerPixel, 1);
    details.Init(nullptr);
    details.Init(details.Details());
}

TEST_F(QtViews, GoWithTheHostsWidget)
{
    auto host = std::make_unique<QWidget>();
    auto* const list = new ProductLkpViewWidget(host.get());
    list->Init();
    const std::weak_ptr<ProductLkpView> view = list->View();
    const QPointer<QWidget> native = static_cast<QWidget*>(list->View()->NativeHandle());
    host->show();
    host.reset();
    EXPECT_TRUE(view.expired());
    EXPECT_TRUE(native.isNull());
}

TEST_F(QtViews, LeaveAViewThatSomebodyHolds)
{
    auto list = std::make_unique<ProductLkpViewWidget>();
    list->Init();
    list->show();
    const std::shared_ptr<ProductLkpView> view = list->View();
    const QPointer<QWidget> native = static_cast<QWidget*>(view->NativeHandle());
    list.reset();
    ASSERT_FALSE(native.isNull());
    EXPECT_FALSE(native->isVisible());
    view->ResetFlexDataSource();
    view->Init();
    EXPECT_EQ(ListIn(*native).model()->rowCount(), 2);
}

TEST_F(QtViews, StandWhenSomebodyDeletesWhatTheyShow)
{
    ProductLkpViewWidget list;
    list.show();
    delete static_cast<QWidget*>(list.View()->NativeHandle());
    list.resize(300, 200);
    QApplication::processEvents();
    EXPECT_EQ(list.View()->NativeHandle(), nullptr);
    list.Init();
    EXPECT_EQ(list.GetDataSource()->Count(), 2);
    list.ResetFlexDataSource();
}

TEST_F(QtViews, FollowTheWidgetToAnotherParent)
{
    auto first = std::make_unique<QWidget>();
    QWidget second;
    auto* const list = new ProductLkpViewWidget(first.get());
    list->Init();
    first->show();
    list->setParent(&second);
    first.reset();
    second.show();
    list->show();
    list->resize(320, 240);
    QApplication::processEvents();
    EXPECT_EQ(PlaceIn(*list, ListIn(*list)).size(), QSize(320, 240));
    EXPECT_EQ(ListIn(*list).model()->rowCount(), 2);
}

TEST_F(QtViews, TakeTheHostsFocusIntoTheList)
{
    QWidget host;
    QLineEdit box(&host);
    ProductLkpViewWidget list(&host);
    list.Init();
    host.show();
    QApplication::setActiveWindow(&host);
    box.setFocus();
    list.setFocus();
    EXPECT_TRUE(list.isAncestorOf(QApplication::focusWidget()));
}

TEST_F(QtViews, LiveBesideEachOther)
{
    QWidget host;
    ProductLkpViewWidget one(&host);
    ProductLkpViewWidget other(&host);
    ProductDetailsWidget details(&host);
    one.Init();
    one.GetDataSource()->CancelUpdate(true);
    other.Init();
    one.GetDataSource()->Delete(2);
    one.Init();
    host.show();
    QApplication::processEvents();
    EXPECT_EQ(ListIn(one).model()->rowCount(), 2);
    EXPECT_EQ(ListIn(other).model()->rowCount(), 2);
}

} // namespace KestrinProductEditor
