// SPDX-License-Identifier: MIT
#include "platform/qt/QtGrid.h"
#include "platform/qt/QtLineEdit.h"
#include "platform/qt/QtTextBox.h"
#include "platform/qt/QtTwips.h"

#include <QAbstractItemModelTester>
#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QScrollBar>
#include <QStyleHints>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::int32_t kMillion = 1'000'000;

std::u16string TextOfNumber(std::int32_t number)
{
    return QString::number(number).toStdU16String();
}

/// Records that are made up as they are asked for, each with an identifier of its own; counts the questions.
class Records final : public IVSFlexDataSource, public IRowPlaces
{
public:
    explicit Records(std::int32_t count) : m_count(count) {}

    [[nodiscard]] std::int32_t GetFieldCount() override { return 3; }
    [[nodiscard]] std::int32_t GetRecordCount() override { return m_count; }
    [[nodiscard]] std::u16string GetFieldName(std::int32_t Field) override
    {
        return u"Field " + TextOfNumber(Field);
    }
    [[nodiscard]] std::u16string GetData(std::int32_t Field, std::int32_t Record) override
    {
        ++asked;
        return TextOfNumber(IdentifierAt(Record)) + u"." + TextOfNumber(Field);
    }
    void SetData(std::int32_t, std::int32_t, std::u16string_view) override {}

    [[nodiscard]] std::uint64_t ChangeStamp() override { return m_stamp; }
    void Settle() override { m_missingThen = m_missing; }
    [[nodiscard]] std::int32_t RecordNow(std::int32_t record) override
    {
        ++found;
        const std::int32_t identifier = record + (record >= m_missingThen ? 1 : 0);
        if (identifier == m_missing)
            return -1;
        return identifier - (identifier > m_missing ? 1 : 0);
    }
    [[nodiscard]] std::int32_t RecordNamed(std::u16string_view prefix) override
    {
        searched.emplace_back(prefix);
        const auto record = names.find(std::u16string(prefix));
        return record == names.end() ? -1 : record->second;
    }

    /// One record at most can go.
    void Delete(std::int32_t record)
    {
        m_missing = record;
        --m_count;
        ++m_stamp;
    }
    void Touch() { ++m_stamp; }

    std::int64_t asked = 0;
    std::int64_t found = 0;
    std::map<std::u16string, std::int32_t> names;
    std::vector<std::u16string> searched;

private:
    static constexpr std::int32_t kNone = 0x7FFFFFFF;

    [[nodiscard]] std::int32_t IdentifierAt(std::int32_t record) const
    {
        return record + (record >= m_missing ? 1 : 0);
    }

    std::int32_t m_count;
    std::int32_t m_missing = kNone;
    std::int32_t m_missingThen = kNone;
    std::uint64_t m_stamp = 1;
};

class QtGrids : public ::testing::Test
{
protected:
    QtGrids()
    {
        m_layout.addWidget(&m_line);
        m_layout.addWidget(&m_view);
        m_window.resize(420, 320);
        m_grid.SetRows(1);
        m_grid.SetCols(3);
        m_grid.SetFixedRows(1);
        m_grid.RowColChange.Connect([this] { m_events.emplace_back("RowColChange"); });
        m_grid.GotFocus.Connect([this] { m_events.emplace_back("GotFocus"); });
        m_grid.LostFocus.Connect([this] { m_events.emplace_back("LostFocus"); });
        m_grid.DblClick.Connect(
            [this] { m_events.push_back("DblClick " + std::to_string(m_grid.MouseRow())); });
    }

    void Show()
    {
        m_window.show();
        m_window.activateWindow();
        QApplication::processEvents();
        m_line.setFocus();
        m_events.clear();
    }

    std::shared_ptr<Records> Bind(std::int32_t count)
    {
        auto records = std::make_shared<Records>(count);
        m_grid.SetDataSource(records, records);
        return records;
    }

    void Rebind(const std::shared_ptr<Records>& records)
    {
        m_grid.SetDataSource(nullptr, nullptr);
        m_grid.SetDataSource(records, records);
        m_grid.Refresh();
    }

    /// The events since the last call.
    std::vector<std::string> Events() { return std::exchange(m_events, {}); }

    [[nodiscard]] QPoint PlaceOf(std::int32_t row, std::int32_t col = 0) const
    {
        return m_view.visualRect(m_view.model()->index(row - 1, col)).center();
    }

    void Click(std::int32_t row, Qt::KeyboardModifiers modifiers = Qt::NoModifier, std::int32_t col = 0)
    {
        QTest::mouseClick(m_view.viewport(), Qt::LeftButton, modifiers, PlaceOf(row, col));
    }

    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&m_view, key, modifiers);
    }

    void Type(const QString& text)
    {
        for (const QChar letter : text)
            QTest::sendKeyEvent(QTest::Click, &m_view, letter == u' ' ? Qt::Key_Space : Qt::Key_unknown,
                                QString(letter), Qt::NoModifier, -1);
    }

    [[nodiscard]] std::vector<std::int32_t> Selected() const
    {
        std::vector<std::int32_t> rows;
        for (std::int32_t index = 0; index < std::min(m_grid.SelectedRowCount(), 100); ++index)
            rows.push_back(m_grid.SelectedRow(index));
        return rows;
    }

    /// What Qt believes to be selected.
    [[nodiscard]] std::vector<std::int32_t> SelectedInView() const
    {
        std::vector<std::int32_t> rows;
        for (const QItemSelectionRange& range : m_view.selectionModel()->selection())
            for (int row = range.top(); row <= range.bottom(); ++row)
                rows.push_back(row + 1);
        std::sort(rows.begin(), rows.end());
        return rows;
    }

    void ExpectMirrored() const
    {
        EXPECT_EQ(Selected(), SelectedInView());
        EXPECT_EQ(m_grid.CurrentRow(),
                  m_view.currentIndex().isValid() ? m_view.currentIndex().row() + 1 : -1);
    }

    [[nodiscard]] int RowsInSight() const
    {
        return m_view.viewport()->height() / m_view.verticalHeader()->defaultSectionSize() + 2;
    }

    QWidget m_window;
    QVBoxLayout m_layout{&m_window};
    QtLineEdit m_line;
    QtGridView m_view;
    QtFocus m_focus{m_window};
    QtTextBox m_text{m_line, m_focus};
    QtGrid m_grid{m_view, m_focus};
    std::vector<std::string> m_events;
};

/// The drop-downs of a small table, as a form that maps columns has them.
class QtGridDropDowns : public QtGrids
{
protected:
    QtGridDropDowns()
    {
        m_grid.SetCols(2);
        m_grid.SetRows(4);
        m_grid.SetSelectionMode(SelectionMode::WholeRow);
        m_grid.SetColComboList(1, u"#0; |#1;Name|#2;Part|#3;Price");
        for (std::int32_t row = 1; row < 4; ++row)
            m_grid.SetCellText(row, 1, u"0");
        m_grid.CellChange.Connect([this](std::int32_t row, std::int32_t col) {
            m_events.push_back("CellChange " + std::to_string(row) + "," + std::to_string(col));
        });
        Show();
    }

    /// Runs what closing a drop-down leaves to the event loop.
    static void Settle()
    {
        QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QApplication::processEvents();
    }

    [[nodiscard]] QStringList Entries() const
    {
        QStringList entries;
        if (const QComboBox* const open = m_view.OpenDropDown())
            for (int entry = 0; entry < open->count(); ++entry)
                entries += open->itemText(entry);
        return entries;
    }

    void PickWithMouse(int entry)
    {
        QAbstractItemView& list = *m_view.OpenDropDown()->view();
        QTest::mouseMove(list.viewport(), list.visualRect(list.model()->index(entry, 0)).center());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualRect(list.model()->index(entry, 0)).center());
        Settle();
    }
};

} // namespace

TEST_F(QtGrids, KeepQtsRulesOfModelsAtEveryShape)
{
    QAbstractItemModelTester tester(m_view.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    Show();
    EXPECT_EQ(m_view.model()->rowCount(), 0);
    for (const std::int32_t rows : {2, 1, 5, 3, 100, 1}) {
        m_grid.SetRows(rows);
        EXPECT_EQ(m_view.model()->rowCount(), rows - 1);
    }
    for (const std::int32_t cols : {1, 4, 0, 3}) {
        m_grid.SetCols(cols);
        EXPECT_EQ(m_view.model()->columnCount(), cols);
    }
    m_grid.SetColHidden(1, true);
    auto records = Bind(50);
    m_grid.SetCurrentRow(50);
    m_grid.SelectRange(20, 0, 50, 2);
    records->Delete(49);
    Rebind(records);
    EXPECT_EQ(m_view.model()->rowCount(), 49);
    m_grid.SetNotice(u"Nothing here");
    EXPECT_EQ(m_view.model()->rowCount(), 0);
    m_grid.SetNotice(u"");
    EXPECT_EQ(m_view.model()->rowCount(), 49);
    Bind(0);
    EXPECT_EQ(m_view.model()->rowCount(), 0);
    Bind(3);
    EXPECT_EQ(m_view.model()->rowCount(), 3);
}

TEST_F(QtGrids, AskForNoCellThatIsNotInSight)
{
    auto records = Bind(kMillion);
    EXPECT_EQ(records->asked, 0);
    Show();
    m_window.grab();
    EXPECT_GT(records->asked, 0);
    // A frame, and a second one where the window system sends its own.
    const std::int64_t frame = std::int64_t{3} * 3 * RowsInSight();
    EXPECT_LE(records->asked, frame);

    const auto askedBy = [&](const std::function<void()>& act) {
        records->asked = 0;
        act();
        QApplication::processEvents();
        m_window.grab();
        return records->asked;
    };
    EXPECT_LE(askedBy([&] { Press(Qt::Key_End); }), frame);
    EXPECT_EQ(m_grid.CurrentRow(), kMillion);
    EXPECT_LE(askedBy([&] { Press(Qt::Key_PageUp); }), frame);
    EXPECT_LE(askedBy([&] { Press(Qt::Key_A, Qt::ControlModifier); }), frame);
    EXPECT_EQ(m_grid.SelectedRowCount(), kMillion);
    EXPECT_LE(askedBy([&] { m_grid.SelectRange(1, 0, kMillion, 2); }), frame);
    EXPECT_LE(askedBy([&] { Rebind(records); }), frame);
    EXPECT_LE(askedBy([&] { m_view.verticalScrollBar()->setValue(kMillion / 2); }), frame);
    EXPECT_LE(askedBy([&] { QTest::keyClick(&m_view, Qt::Key_Home); }), frame);
    // Fitting looks at the rows in sight.
    EXPECT_LE(askedBy([&] { m_grid.FitColumns(); }), 2 * frame);
}

TEST_F(QtGrids, SelectAllAsOneRangeAndKeepTheCurrentRow)
{
    Bind(kMillion);
    m_grid.SetCurrentRow(7);
    Show();
    Press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(m_grid.SelectedRowCount(), kMillion);
    EXPECT_EQ(m_grid.Selection().Ranges().size(), 1U);
    EXPECT_EQ(m_view.selectionModel()->selection().size(), 1);
    EXPECT_EQ(m_grid.CurrentRow(), 7);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(QtGrids, TellOfARowBeforeTheFocusThatTheClickBrings)
{
    Bind(10);
    Show();
    Click(3);
    EXPECT_THAT(Events(), ElementsAre("RowColChange", "GotFocus"));
    EXPECT_EQ(m_grid.CurrentRow(), 3);
    EXPECT_THAT(Selected(), ElementsAre(3));
    Click(4);
    EXPECT_THAT(Events(), ElementsAre("RowColChange"));
    Click(4);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(QtGrids, ChooseNoRowWhenTheyGainTheFocus)
{
    Bind(10);
    Show();
    m_grid.SetFocus();
    EXPECT_THAT(Events(), ElementsAre("GotFocus"));
    EXPECT_EQ(m_grid.CurrentRow(), -1);
    ExpectMirrored();
    m_line.setFocus();
    Events();
    QTest::keyClick(&m_line, Qt::Key_Tab);
    EXPECT_THAT(Events(), ElementsAre("GotFocus"));
    EXPECT_EQ(m_grid.CurrentRow(), -1);
    Press(Qt::Key_Down);
    EXPECT_EQ(m_grid.CurrentRow(), 1);
}

TEST_F(QtGrids, SelectAsAListBoxDoes)
{
    Bind(40);
    Show();
    const auto expect = [this](std::int32_t currentRow, const std::vector<std::int32_t>& selected) {
        EXPECT_EQ(m_grid.CurrentRow(), currentRow);
        EXPECT_EQ(Selected(), selected);
        ExpectMirrored();
    };
    Click(2);
    Click(4, Qt::ControlModifier);
    expect(4, {2, 4});
    Click(6, Qt::ShiftModifier);
    expect(6, {4, 5, 6});
    Press(Qt::Key_Down);
    expect(7, {7});
    Press(Qt::Key_Down, Qt::ShiftModifier);
    expect(8, {7, 8});
    Press(Qt::Key_Up, Qt::ControlModifier);
    expect(7, {7, 8});
    Press(Qt::Key_Space, Qt::ControlModifier);
    expect(7, {8});
    Press(Qt::Key_End, Qt::ShiftModifier);
    EXPECT_EQ(m_grid.CurrentRow(), 40);
    ExpectMirrored();
    Press(Qt::Key_Home);
    expect(1, {1});
    Press(Qt::Key_Up);
    expect(1, {1});

    // What code selects counts for the next keys as well.
    m_grid.SelectRange(5, 0, 6, 2);
    expect(1, {5, 6});
    m_grid.SetCurrentRow(3);
    expect(3, {5, 6});
    Press(Qt::Key_Down, Qt::ShiftModifier);
    expect(4, {3, 4});
}

TEST_F(QtGrids, RaiseOneRowColChangeForOneAct)
{
    Bind(40);
    Show();
    m_grid.SetFocus();
    Events();
    std::vector<std::int32_t> selectedThen;
    m_grid.RowColChange.Connect([&] {
        m_events.emplace_back("RowColChange");
        selectedThen = Selected();
    });
    Press(Qt::Key_Down);
    EXPECT_THAT(Events(), ElementsAre("RowColChange"));
    EXPECT_THAT(selectedThen, ElementsAre(1));
    Press(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_THAT(Events(), ElementsAre("RowColChange"));
    EXPECT_THAT(selectedThen, ElementsAre(1, 2));
    Press(Qt::Key_Space);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(QtGrids, SelectTheCurrentRowAndNoOtherInWholeRowMode)
{
    Bind(10);
    m_grid.SetSelectionMode(SelectionMode::WholeRow);
    Show();
    const auto expect = [this](std::int32_t row) {
        EXPECT_EQ(m_grid.CurrentRow(), row);
        EXPECT_THAT(Selected(), ElementsAre(row));
        ExpectMirrored();
    };
    Click(3);
    expect(3);
    Click(3, Qt::ControlModifier);
    expect(3);
    Click(5, Qt::ShiftModifier);
    expect(5);
    Press(Qt::Key_Down, Qt::ControlModifier);
    expect(6);
}

TEST_F(QtGrids, KeepScrollPlaceAndCurrentRowWhenBoundAgain)
{
    auto records = Bind(1000);
    m_grid.SetColWidth(0, 9000);
    Show();
    m_view.verticalScrollBar()->setValue(500);
    m_view.horizontalScrollBar()->setValue(60);
    EXPECT_EQ(m_grid.TopRow(), 501);
    Click(505);
    Events();
    for (const bool isChanged : {false, true}) {
        if (isChanged)
            records->Touch();
        Rebind(records);
        QApplication::processEvents();
        EXPECT_EQ(m_view.verticalScrollBar()->value(), 500);
        EXPECT_EQ(m_view.horizontalScrollBar()->value(), 60);
        EXPECT_EQ(m_grid.CurrentRow(), 505);
        ExpectMirrored();
    }
    EXPECT_THAT(Events(), IsEmpty());

    records->Delete(100);
    Rebind(records);
    QApplication::processEvents();
    EXPECT_EQ(m_view.verticalScrollBar()->value(), 499);
    EXPECT_EQ(m_grid.CurrentRow(), 504);
    EXPECT_THAT(Selected(), ElementsAre(504));
    ExpectMirrored();
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(QtGrids, BringTheCurrentRowIntoSight)
{
    Bind(kMillion);
    m_grid.SetCurrentRow(kMillion / 2);
    Show();
    EXPECT_TRUE(m_view.viewport()->rect().contains(PlaceOf(kMillion / 2)));
    m_grid.SetCurrentRow(kMillion);
    EXPECT_TRUE(m_view.viewport()->rect().contains(PlaceOf(kMillion)));
    EXPECT_EQ(m_grid.TopRow(), m_view.verticalScrollBar()->value() + 1);
    Press(Qt::Key_Home);
    EXPECT_EQ(m_grid.TopRow(), 1);
}

TEST_F(QtGrids, KeepTheirPlacesWhenTheFontGrows)
{
    Bind(kMillion);
    Show();
    m_grid.SetCurrentRow(kMillion / 2);
    m_grid.SelectRange(5, 0, 7, 2);
    const int height = m_view.rowHeight(0);
    Events();
    QFont font = m_view.font();
    font.setPointSizeF(font.pointSizeF() * 2);
    m_view.setFont(font);
    EXPECT_GT(m_view.rowHeight(0), height);
    EXPECT_EQ(m_grid.CurrentRow(), kMillion / 2);
    EXPECT_THAT(Selected(), ElementsAre(5, 6, 7));
    EXPECT_EQ(m_grid.TopRow(), m_view.verticalScrollBar()->value() + 1);
    ExpectMirrored();
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(QtGrids, LetADoubleClickSurviveABindingInItsMiddle)
{
    auto records = Bind(20);
    Show();
    m_grid.RowColChange.Connect([&] {
        records->Touch();
        Rebind(records);
    });
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, {}, PlaceOf(4));
    QTest::mouseDClick(m_view.viewport(), Qt::LeftButton, {}, PlaceOf(4));
    EXPECT_THAT(Events(), ElementsAre("GotFocus", "DblClick 4"));
}

TEST_F(QtGrids, TakeClicksBehindTheLastColumnForTheRow)
{
    Bind(20);
    m_grid.SetColWidth(2, 300);
    Show();
    const QPoint behind(m_view.viewport()->width() - 5, PlaceOf(3).y());
    ASSERT_EQ(m_view.columnAt(behind.x()), -1);
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, {}, behind);
    EXPECT_EQ(m_grid.CurrentRow(), 3);
    EXPECT_EQ(m_grid.MouseRow(), 3);
    QTest::mouseClick(m_view.viewport(), Qt::LeftButton, {}, QPoint(5, PlaceOf(1).y()));
    EXPECT_EQ(m_grid.MouseRow(), 1);
}

TEST_F(QtGrids, RaiseDblClickForTheHeaderAsRowZero)
{
    Bind(20);
    Show();
    QHeaderView& header = *m_view.horizontalHeader();
    const QPoint heading(20, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, heading);
    QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, heading);
    EXPECT_THAT(Events(), ElementsAre("GotFocus", "DblClick 0"));
    EXPECT_EQ(m_grid.CurrentRow(), -1);
    EXPECT_EQ(m_grid.SelectedRowCount(), 0);
}

TEST_F(QtGrids, ReportOnlyTheWidthsThatAUserChanges)
{
    Bind(20);
    m_grid.SetColWidth(0, 2003);
    m_grid.SetColWidth(1, 1);
    Show();
    m_window.resize(600, 300);
    QApplication::processEvents();
    EXPECT_EQ(m_grid.ColWidth(0), 2003);
    EXPECT_EQ(m_grid.ColWidth(1), 1);

    QHeaderView& header = *m_view.horizontalHeader();
    const QPoint border(header.sectionViewportPosition(0) + header.sectionSize(0) - 1, header.height() / 2);
    const int before = header.sectionSize(0);
    QTest::mousePress(header.viewport(), Qt::LeftButton, {}, border);
    QTest::mouseMove(header.viewport(), border + QPoint(20, 0));
    QTest::mouseMove(header.viewport(), border + QPoint(40, 0));
    QTest::mouseRelease(header.viewport(), Qt::LeftButton, {}, border + QPoint(40, 0));
    EXPECT_EQ(header.sectionSize(0), before + 40);
    EXPECT_EQ(m_grid.ColWidth(0), std::lround(TwipsFromPixels(m_view, before + 40)));
    EXPECT_EQ(m_grid.ColWidth(1), 1);
    EXPECT_EQ(m_grid.ColWidth(2), kDefaultColWidth);
}

TEST_F(QtGrids, ShowEveryColumnThatHasAWidth)
{
    Bind(20);
    for (const std::int32_t twips : {1, 7, 100}) {
        m_grid.SetColWidth(0, twips);
        Show();
        EXPECT_EQ(m_view.columnWidth(0), m_view.horizontalHeader()->minimumSectionSize()) << twips;
        EXPECT_EQ(m_grid.ColWidth(0), twips);
    }
    m_grid.SetColWidth(0, 0);
    EXPECT_EQ(m_view.columnWidth(0), 0);
}

TEST_F(QtGrids, FitAColumnWhenItsBorderIsDoubleClicked)
{
    m_grid.SetRows(3);
    m_grid.SetCellText(0, 0, u"Name");
    m_grid.SetCellText(2, 0, u"A name that is a good deal longer");
    m_grid.SetColWidth(0, 600);
    Show();
    QHeaderView& header = *m_view.horizontalHeader();
    const QPoint border(header.sectionViewportPosition(0) + header.sectionSize(0) - 1, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, border);
    QTest::mouseDClick(header.viewport(), Qt::LeftButton, {}, border);
    const int needed =
        m_view.fontMetrics().horizontalAdvance(QStringLiteral("A name that is a good deal longer"));
    EXPECT_GT(header.sectionSize(0), needed);
    EXPECT_LT(header.sectionSize(0), needed + 40);
    EXPECT_EQ(m_grid.ColWidth(0), std::lround(TwipsFromPixels(m_view, header.sectionSize(0))));
    EXPECT_THAT(Events(), ElementsAre("GotFocus")) << "that was no double click on the header";

    m_grid.SetColWidth(0, 600);
    m_grid.FitColumns();
    EXPECT_GT(header.sectionSize(0), needed);
    EXPECT_GT(header.sectionSize(1), 0);
}

TEST_F(QtGrids, GoToTheRowWhoseNameIsTyped)
{
    auto records = Bind(kMillion);
    records->names = {{u"b", 700'000}, {u"bl", 700'100}, {u"bl ", 700'200}, {u"q", 3}};
    Show();
    m_grid.SetFocus();
    Events();
    Type(QStringLiteral("bl x"));
    EXPECT_THAT(records->searched, ElementsAre(u"b", u"bl", u"bl ", u"bl x"));
    EXPECT_EQ(m_grid.CurrentRow(), 700'201);
    EXPECT_THAT(Selected(), ElementsAre(700'201));
    EXPECT_THAT(Events(), ElementsAre("RowColChange", "RowColChange", "RowColChange"));
    EXPECT_TRUE(m_view.viewport()->rect().contains(PlaceOf(700'201)));

    // Another key ends the name, and so does a pause.
    Press(Qt::Key_Down);
    records->searched.clear();
    Type(QStringLiteral("q"));
    const int interval = QGuiApplication::styleHints()->keyboardInputInterval();
    QApplication::setKeyboardInputInterval(0);
    Type(QStringLiteral("b"));
    QApplication::setKeyboardInputInterval(interval);
    EXPECT_THAT(records->searched, ElementsAre(u"q", u"b"));

    // A capital letter does not select up to there.
    QTest::sendKeyEvent(QTest::Click, &m_view, Qt::Key_Q, QStringLiteral("q"), Qt::ShiftModifier, -1);
    Press(Qt::Key_Down);
    QTest::sendKeyEvent(QTest::Click, &m_view, Qt::Key_Q, QStringLiteral("q"), Qt::ShiftModifier, -1);
    EXPECT_THAT(Selected(), ElementsAre(4));
}

TEST_F(QtGrids, LeaveTheKeysOfTheWindowToIt)
{
    Bind(10);
    Show();
    m_grid.SetCurrentRow(2);
    for (const int key : {int{Qt::Key_Return}, int{Qt::Key_Enter}, int{Qt::Key_F2}, int{Qt::Key_Delete},
                          int{Qt::Key_Escape}, int{Qt::Key_F10}, int{Qt::Key_Tab}}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier,
                        key == Qt::Key_Delete ? u"\x7F"_qs : QString());
        event.ignore();
        m_view.setFocus();
        QCoreApplication::sendEvent(&m_view, &event);
        EXPECT_TRUE(!event.isAccepted() || !m_view.hasFocus()) << key;
        QKeyEvent claimed(QEvent::ShortcutOverride, key, Qt::NoModifier);
        claimed.ignore();
        QCoreApplication::sendEvent(&m_view, &claimed);
        EXPECT_FALSE(claimed.isAccepted()) << key;
    }
    QKeyEvent selectAll(QEvent::ShortcutOverride, Qt::Key_A, Qt::ControlModifier);
    selectAll.ignore();
    QCoreApplication::sendEvent(&m_view, &selectAll);
    EXPECT_FALSE(selectAll.isAccepted());
    EXPECT_EQ(m_grid.CurrentRow(), 2);
}

TEST_F(QtGrids, ShowANoticeInPlaceOfTheRows)
{
    Bind(10);
    Show();
    Click(4);
    Events();
    m_grid.SetNotice(u"The catalogue cannot be read.");
    EXPECT_EQ(m_view.model()->rowCount(), 0);
    EXPECT_EQ(m_view.accessibleDescription(), QStringLiteral("The catalogue cannot be read."));
    EXPECT_EQ(m_grid.CurrentRow(), 4);
    m_window.grab();
    m_grid.SetNotice(u"");
    EXPECT_EQ(m_view.accessibleDescription(), QString());
    ExpectMirrored();
    EXPECT_EQ(m_grid.CurrentRow(), 4);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(QtGrids, PaintNothingUntilTheLastPauseEnds)
{
    Bind(10);
    Show();
    {
        const RedrawPause outer(m_grid);
        {
            const RedrawPause inner(m_grid);
            EXPECT_FALSE(m_view.updatesEnabled());
        }
        EXPECT_FALSE(m_view.updatesEnabled());
    }
    EXPECT_TRUE(m_view.updatesEnabled());
}

TEST_F(QtGrids, ShowColumnsAsTheyAreSet)
{
    Bind(10);
    m_grid.SetColHidden(1, true);
    m_grid.SetColType(2, CellType::Currency);
    m_grid.SetColFormat(2, [](std::u16string_view text) { return u"$" + std::u16string(text); });
    Show();
    EXPECT_TRUE(m_view.isColumnHidden(1));
    EXPECT_FALSE(m_view.isColumnHidden(2));
    const QAbstractItemModel& model = *m_view.model();
    EXPECT_EQ(model.index(0, 2).data().toString(), QStringLiteral("$0.2"));
    EXPECT_EQ(model.index(0, 2).data(Qt::TextAlignmentRole).toInt(), int{Qt::AlignRight | Qt::AlignVCenter});
    EXPECT_EQ(model.index(0, 0).data(Qt::TextAlignmentRole).toInt(), int{Qt::AlignLeft | Qt::AlignVCenter});
    EXPECT_EQ(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("Field 0"));
    EXPECT_EQ(model.headerData(2, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
              int{Qt::AlignRight | Qt::AlignVCenter});
    m_grid.SetColHidden(1, false);
    EXPECT_FALSE(m_view.isColumnHidden(1));
}

TEST_F(QtGrids, SpeakToScreenReaders)
{
    QLabel label(QStringLiteral("&Products (Count:10)"), &m_window);
    label.setBuddy(&m_view);
    Bind(10);
    m_grid.SetColHidden(2, true);
    Show();
    EXPECT_EQ(m_view.accessibleName(), QStringLiteral("Products (Count:10)"));
    label.setText(QStringLiteral("&Products (Count:11)"));
    m_window.grab();
    EXPECT_EQ(m_view.accessibleName(), QStringLiteral("Products (Count:11)"));

    QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(&m_view);
    ASSERT_NE(list->tableInterface(), nullptr);
    EXPECT_EQ(list->tableInterface()->cellAt(1, 0)->text(QAccessible::Name),
              QStringLiteral("Field 0: 1.0, Field 1: 1.1"));
    EXPECT_EQ(list->tableInterface()->cellAt(1, 1)->text(QAccessible::Name), QStringLiteral("1.1"));
    EXPECT_EQ(list->tableInterface()->columnDescription(1), QStringLiteral("Field 1"));
}

TEST_F(QtGrids, SayWhyACellIsMarked)
{
    m_grid.SetRows(3);
    m_grid.SetCellText(2, 1, u"abc");
    m_grid.SetCellMark(2, 1, u"<b> is no price");
    Show();
    EXPECT_EQ(m_view.model()->index(1, 1).data(Qt::AccessibleDescriptionRole).toString(),
              QStringLiteral("<b> is no price"));
    EXPECT_EQ(m_view.model()->index(1, 0).data(Qt::AccessibleDescriptionRole).toString(), QString());
    const QImage marked = m_window.grab().toImage();
    m_grid.SetCellMark(2, 1, u"");
    EXPECT_NE(m_window.grab().toImage(), marked);
}

TEST_F(QtGrids, MayEndBeforeTheirWidget)
{
    QtGridView view;
    {
        QtGrid grid(view, m_focus);
        grid.SetRows(5);
        grid.SetCols(1);
        EXPECT_EQ(view.model()->rowCount(), 5);
    }
    view.show();
    view.grab();
    QTest::keyClick(&view, Qt::Key_Down);
    QTest::mouseClick(view.viewport(), Qt::LeftButton);
    EXPECT_EQ(view.MouseRow(), -1);
}

TEST_F(QtGridDropDowns, OpenWithOneClick)
{
    Click(2, Qt::NoModifier, 1);
    EXPECT_EQ(Entries(), QStringList({QStringLiteral(" "), QStringLiteral("Name"), QStringLiteral("Part"),
                                      QStringLiteral("Price")}));
    EXPECT_EQ(m_grid.CurrentRow(), 2);
    EXPECT_THAT(Events(), ElementsAre("RowColChange", "GotFocus"));
    PickWithMouse(3);
    EXPECT_EQ(m_view.OpenDropDown(), nullptr);
    EXPECT_EQ(m_grid.CellText(2, 1), u"3");
    EXPECT_THAT(Events(), ElementsAre("CellChange 2,1"));
    EXPECT_TRUE(m_grid.HasFocus());
    Click(2, Qt::NoModifier, 0);
    EXPECT_EQ(m_view.OpenDropDown(), nullptr);
}

TEST_F(QtGridDropDowns, OpenWithEachOfTheirKeys)
{
    m_grid.SetFocus();
    const struct
    {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    } keys[] = {{Qt::Key_Space, Qt::NoModifier},  {Qt::Key_F4, Qt::NoModifier},
                {Qt::Key_F2, Qt::NoModifier},     {Qt::Key_Down, Qt::AltModifier},
                {Qt::Key_Return, Qt::NoModifier}, {Qt::Key_Enter, Qt::NoModifier}};
    for (const auto& each : keys) {
        m_grid.SetCurrentRow(-1);
        Press(each.key, each.modifiers);
        EXPECT_EQ(m_view.OpenDropDown(), nullptr) << each.key;
        m_grid.SetCurrentRow(3);
        Events();
        Press(each.key, each.modifiers);
        ASSERT_NE(m_view.OpenDropDown(), nullptr) << each.key;
        QTest::keyClick(m_view.OpenDropDown()->view(), Qt::Key_Escape);
        Settle();
        EXPECT_EQ(m_view.OpenDropDown(), nullptr) << each.key;
        EXPECT_EQ(m_grid.CurrentRow(), 3);
        EXPECT_TRUE(m_grid.HasFocus());
        EXPECT_THAT(Events(), IsEmpty());
    }
}

TEST_F(QtGridDropDowns, ChooseWithLettersAndEnter)
{
    m_grid.SetFocus();
    m_grid.SetCurrentRow(1);
    Events();
    Type(QStringLiteral("p"));
    ASSERT_NE(m_view.OpenDropDown(), nullptr);
    QAbstractItemView* const list = m_view.OpenDropDown()->view();
    QTest::keyClick(list, Qt::Key_R);
    QTest::keyClick(list, Qt::Key_Return);
    Settle();
    EXPECT_EQ(m_grid.DisplayText(1, 1), u"Price");
    EXPECT_THAT(Events(), ElementsAre("CellChange 1,1"));
    EXPECT_TRUE(m_grid.HasFocus());
}

TEST_F(QtGridDropDowns, BeginAtWhatTheCellHolds)
{
    m_grid.SetCellText(2, 1, u"2");
    m_grid.SetCurrentRow(2);
    Press(Qt::Key_F4);
    EXPECT_EQ(m_view.OpenDropDown()->currentText(), QStringLiteral("Part"));
}

TEST_F(QtGridDropDowns, CloseWhenTheGridIsFilledAnewOrDisabled)
{
    m_grid.SetCurrentRow(2);
    Press(Qt::Key_F4);
    m_grid.SetRows(2);
    EXPECT_EQ(m_view.OpenDropDown(), nullptr);
    Settle();
    m_grid.SetCurrentRow(1);
    Press(Qt::Key_F4);
    ASSERT_NE(m_view.OpenDropDown(), nullptr);
    m_grid.SetEnabled(false);
    EXPECT_EQ(m_view.OpenDropDown(), nullptr);
    Settle();
}

TEST_F(QtGrids, TellsATitleThatItsColumnCutsOff)
{
    m_grid.SetCellText(0, 0, u"Price < cost");
    m_grid.SetCellText(0, 1, u"Name");
    Show();
    m_view.setColumnWidth(0, 30);
    m_view.setColumnWidth(1, 200);
    QHeaderView& header = *m_view.horizontalHeader();
    const auto hover = [&header](int col) {
        const QPoint place(header.sectionViewportPosition(col) + 5, 5);
        QHelpEvent event(QEvent::ToolTip, place, header.viewport()->mapToGlobal(place));
        QApplication::sendEvent(header.viewport(), &event);
        return QToolTip::isVisible() ? QToolTip::text() : QString();
    };
    EXPECT_EQ(hover(0), QStringLiteral("Price &lt; cost"));
    m_view.setColumnWidth(0, 200);
    QToolTip::hideText();
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }));
    EXPECT_EQ(hover(0), QString());
    EXPECT_EQ(hover(1), QString());
}

} // namespace KestrinProductEditor
