// SPDX-License-Identifier: MIT
#include "platform/ui/GridBase.h"

#include "support/ErrorOf.h"

#include <KestrinProductEditor/AutomationError.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A grid without a screen: keeps what it was told to show.
class BareGrid final : public GridBase
{
public:
    void SetFocus() override {}
    [[nodiscard]] bool HasFocus() const override { return false; }
    void SetVisible(bool /*bVisible*/) override {}
    [[nodiscard]] bool IsVisible() const override { return true; }
    void SetEnabled(bool /*bEnabled*/) override {}
    [[nodiscard]] bool IsEnabled() const override { return true; }
    void SetToolTip(std::u16string_view /*text*/) override {}
    [[nodiscard]] std::int32_t MouseRow() const override { return -1; }
    void FitColumns() override {}

    using GridBase::UserChose;
    using GridBase::UserPicked;
    using GridBase::UserResized;
    using GridBase::UserScrolled;

    /// What was shown since the last call.
    [[nodiscard]] std::vector<std::string> Shown() { return std::exchange(m_shown, {}); }
    void Tell(std::string what) { m_shown.push_back(std::move(what)); }

    /// Called at each ShowAll.
    std::function<void()> onShowAll;

protected:
    void ShowAll() override
    {
        Tell("all");
        if (onShowAll)
            onShowAll();
    }
    void ShowCells() override { Tell("cells"); }
    void ShowColumn(std::int32_t col) override { Tell("column " + std::to_string(col)); }
    void ShowCurrentRow() override { Tell("current row"); }
    void ShowSelection() override { Tell("selection"); }
    void ShowNotice() override { Tell("notice"); }
    void ShowRedraw() override { Tell("redraw"); }

private:
    std::vector<std::string> m_shown;
};

/// Records that are told apart by a number; field 0 is the number's text.
class Records final : public IVSFlexDataSource, public IRowPlaces
{
public:
    explicit Records(std::vector<int> numbers) : m_numbers(std::move(numbers)) {}

    void Set(std::vector<int> numbers)
    {
        m_numbers = std::move(numbers);
        ++m_stamp;
    }
    [[nodiscard]] const std::vector<int>& Numbers() const { return m_numbers; }

    std::int32_t fields = 2;
    /// What GetRecordCount answers instead, when it is not negative.
    std::int32_t toldCount = -1;
    std::size_t placesAsked = 0;
    std::size_t settled = 0;
    /// Settling gives a record its due place, which counts as a change.
    bool isSettlingAChange = false;

    [[nodiscard]] std::int32_t GetFieldCount() override { return fields; }
    [[nodiscard]] std::int32_t GetRecordCount() override
    {
        return toldCount >= 0 ? toldCount : static_cast<std::int32_t>(m_numbers.size());
    }
    [[nodiscard]] std::u16string GetFieldName(std::int32_t Field) override
    {
        return Field == 0 ? u"Number" : u"";
    }
    [[nodiscard]] std::u16string GetData(std::int32_t Field, std::int32_t Record) override
    {
        const auto place = static_cast<std::size_t>(Record);
        if (Field != 0 || place >= m_numbers.size())
            return {};
        const std::string digits = std::to_string(m_numbers[place]);
        return {digits.begin(), digits.end()};
    }
    void SetData(std::int32_t /*Field*/, std::int32_t /*Record*/, std::u16string_view /*newData*/) override {}

    [[nodiscard]] std::uint64_t ChangeStamp() override { return m_stamp; }
    void Settle() override
    {
        ++settled;
        if (isSettlingAChange)
            ++m_stamp;
        m_settled = m_numbers;
    }
    [[nodiscard]] std::int32_t RecordNow(std::int32_t record) override
    {
        ++placesAsked;
        const auto place = static_cast<std::size_t>(record);
        if (place >= m_settled.size())
            return -1;
        const auto now = std::ranges::find(m_numbers, m_settled[place]);
        return now == m_numbers.end() ? -1 : static_cast<std::int32_t>(now - m_numbers.begin());
    }
    [[nodiscard]] std::int32_t RecordNamed(std::u16string_view prefix) override
    {
        for (std::int32_t record = 0; record < GetRecordCount(); ++record) {
            if (GetData(0, record).starts_with(prefix))
                return record;
        }
        return -1;
    }

private:
    std::vector<int> m_numbers;
    std::vector<int> m_settled;
    std::uint64_t m_stamp = 7;
};

RowSelection Rows(const std::vector<std::int32_t>& rows)
{
    RowSelection selection;
    for (const std::int32_t row : rows)
        selection.Add({row, row});
    return selection;
}

class GridBaseTest : public testing::Test
{
protected:
    GridBaseTest()
    {
        grid.SetRows(1);
        grid.SetCols(2);
        grid.SetFixedRows(1);
        grid.RowColChange.Connect([this] { grid.Tell("told " + std::to_string(grid.CurrentRow())); });
        static_cast<void>(grid.Shown());
    }

    void Bind() { grid.SetDataSource(records, records); }
    void BindAgain()
    {
        grid.SetDataSource(nullptr, nullptr);
        Bind();
    }
    /// Binds with a current row, selected rows and a top row.
    void BindAt(std::int32_t currentRow, const std::vector<std::int32_t>& selected, std::int32_t topRow)
    {
        Bind();
        grid.UserChose(currentRow, Rows(selected));
        grid.UserScrolled(topRow);
        static_cast<void>(grid.Shown());
    }
    /// Unbinds, changes the records and binds again. What was shown by that.
    [[nodiscard]] std::vector<std::string> BindAfter(std::vector<int> numbers)
    {
        grid.SetDataSource(nullptr, nullptr);
        records->Set(std::move(numbers));
        static_cast<void>(grid.Shown());
        Bind();
        return grid.Shown();
    }
    [[nodiscard]] std::vector<std::int32_t> Selected() const
    {
        std::vector<std::int32_t> rows;
        for (std::int32_t index = 0; index < grid.SelectedRowCount(); ++index)
            rows.push_back(grid.SelectedRow(index));
        return rows;
    }
    [[nodiscard]] std::u16string Current() const { return grid.CellText(grid.CurrentRow(), 0); }

    BareGrid grid;
    const std::shared_ptr<Records> records =
        std::make_shared<Records>(std::vector<int>{10, 20, 30, 40, 50, 60});
};

constexpr std::int32_t kRefused = kErrInvalidProcedureCall;
constexpr std::int32_t kBound = kErrActionNotSupported;

} // namespace

// Shape

TEST_F(GridBaseTest, BeginsWithoutRowsCurrentRowAndSelection)
{
    const BareGrid fresh;
    EXPECT_EQ(fresh.Rows(), 0);
    EXPECT_EQ(fresh.Cols(), 0);
    EXPECT_EQ(fresh.FixedRows(), 0);
    EXPECT_EQ(fresh.FixedCols(), 0);
    EXPECT_EQ(fresh.CurrentRow(), -1);
    EXPECT_EQ(fresh.SelectedRowCount(), 0);
    EXPECT_EQ(fresh.Mode(), SelectionMode::ListBox);
    EXPECT_FALSE(fresh.IsBound());
    EXPECT_TRUE(fresh.IsRedrawing());
}

TEST_F(GridBaseTest, ShrinkingTakesCellsSelectionAndCurrentRowAlong)
{
    grid.SetRows(6);
    grid.SetCellText(2, 0, u"kept");
    grid.SetCellText(5, 0, u"lost");
    grid.UserChose(5, Rows({2, 4, 5}));
    grid.UserScrolled(5);
    static_cast<void>(grid.Shown());
    grid.SetRows(4);
    EXPECT_THAT(grid.Shown(), ElementsAre("all", "told -1"));
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_EQ(grid.TopRow(), 3);
    grid.SetRows(6);
    EXPECT_EQ(grid.CellText(2, 0), u"kept");
    EXPECT_EQ(grid.CellText(5, 0), u"");
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_EQ(grid.CurrentRow(), -1);
}

TEST_F(GridBaseTest, ShrinkingBehindTheCurrentRowTellsNothing)
{
    grid.SetRows(6);
    grid.UserChose(3, Rows({3}));
    static_cast<void>(grid.Shown());
    grid.SetRows(4);
    EXPECT_THAT(grid.Shown(), ElementsAre("all"));
    EXPECT_EQ(grid.CurrentRow(), 3);
    EXPECT_THAT(Selected(), ElementsAre(3));
}

TEST_F(GridBaseTest, AColumnThatIsTakenAwayTakesItsCellsAlong)
{
    grid.SetRows(2);
    grid.SetCellText(1, 0, u"a");
    grid.SetCellText(1, 1, u"b");
    grid.SetColWidth(1, 77);
    grid.SetCols(1);
    grid.SetCols(2);
    EXPECT_EQ(grid.CellText(1, 0), u"a");
    EXPECT_EQ(grid.CellText(1, 1), u"");
    EXPECT_EQ(grid.ColWidth(1), kDefaultColWidth);
}

TEST_F(GridBaseTest, TheHeaderIsNeitherCurrentNorSelected)
{
    BareGrid plain;
    plain.SetRows(3);
    plain.SetCols(1);
    plain.UserChose(0, Rows({0, 1}));
    int told = 0;
    plain.RowColChange.Connect([&] { ++told; });
    plain.SetFixedRows(1);
    EXPECT_EQ(plain.CurrentRow(), -1);
    EXPECT_EQ(plain.Selection(), Rows({1}));
    EXPECT_EQ(told, 1);
}

TEST_F(GridBaseTest, RefusesWhatCannotBeAndChangesNothing)
{
    grid.SetRows(3);
    grid.UserChose(2, Rows({1, 2}));
    static_cast<void>(grid.Shown());
    const std::vector<std::function<void()>> acts = {
        [&] { grid.SetRows(0); },
        [&] { grid.SetRows(-1); },
        [&] { grid.SetCols(-1); },
        [&] { grid.SetFixedRows(-1); },
        [&] { grid.SetFixedRows(2); },
        [&] { grid.SetFixedCols(1); },
        [&] { grid.SetCellText(3, 0, u"x"); },
        [&] { grid.SetCellText(-1, 0, u"x"); },
        [&] { grid.SetCellText(0, 2, u"x"); },
        [&] { grid.SetCellText(0, -1, u"x"); },
        [&] { grid.SetCellMark(3, 0, u"x"); },
        [&] { static_cast<void>(grid.CellText(-1, 0)); },
        [&] { static_cast<void>(grid.CellText(0, 2)); },
        [&] { grid.SetColWidth(0, -1); },
        [&] { grid.SetColWidth(2, 1); },
        [&] { grid.SetColHidden(-1, true); },
        [&] { grid.SetColType(2, CellType::Currency); },
        [&] { grid.SetColFormat(2, {}); },
        [&] { grid.SetColComboList(2, u""); },
        [&] { grid.SetCurrentRow(0); },
        [&] { grid.SetCurrentRow(-2); },
        [&] { grid.SetCurrentRow(3); },
        [&] { grid.SelectRange(0, 0, 2, 1); },
        [&] { grid.SelectRange(2, 0, 0, 1); },
        [&] { grid.SelectRange(1, 0, 3, 1); },
        [&] { grid.SelectRange(1, 0, 2, 2); },
        [&] { grid.SelectRange(1, -1, 2, 1); },
        [&] { static_cast<void>(grid.SelectedRow(2)); },
        [&] { static_cast<void>(grid.SelectedRow(-1)); },
    };
    for (std::size_t index = 0; index < acts.size(); ++index)
        EXPECT_EQ(ErrorNumberOf(acts[index]), kRefused) << index;
    EXPECT_THAT(grid.Shown(), IsEmpty());
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.Cols(), 2);
    EXPECT_EQ(grid.FixedRows(), 1);
    EXPECT_EQ(grid.CurrentRow(), 2);
    EXPECT_THAT(Selected(), ElementsAre(1, 2));
}

TEST_F(GridBaseTest, ABoundGridRefusesWrites)
{
    Bind();
    static_cast<void>(grid.Shown());
    EXPECT_EQ(ErrorNumberOf([&] { grid.SetRows(3); }), kBound);
    EXPECT_EQ(ErrorNumberOf([&] { grid.SetCols(3); }), kBound);
    EXPECT_EQ(ErrorNumberOf([&] { grid.SetFixedRows(0); }), kBound);
    EXPECT_EQ(ErrorNumberOf([&] { grid.SetCellText(1, 0, u"x"); }), kBound);
    EXPECT_EQ(ErrorNumberOf([&] { grid.SetCellMark(1, 0, u"x"); }), kBound);
    EXPECT_THAT(grid.Shown(), IsEmpty());
    EXPECT_EQ(grid.Rows(), 7);
    EXPECT_EQ(grid.CellText(1, 0), u"10");
}

// Cells and columns

TEST_F(GridBaseTest, CellsAndMarksStandApart)
{
    grid.SetRows(3);
    grid.SetCellMark(2, 1, u"too high");
    EXPECT_EQ(grid.CellText(2, 1), u"");
    grid.SetCellText(2, 1, u"9");
    EXPECT_EQ(grid.CellMark(2, 1), u"too high");
    EXPECT_EQ(grid.CellMark(2, 0), u"");
    EXPECT_EQ(grid.CellMark(99, 0), u"");
    EXPECT_EQ(grid.CellText(99, 1), u"");
    EXPECT_EQ(grid.CellText(std::numeric_limits<std::int32_t>::max(), 0), u"");
}

TEST_F(GridBaseTest, AUsersWidthIsKeptWithoutShowingTheColumnAgain)
{
    grid.UserResized(1, 1234);
    EXPECT_EQ(grid.ColWidth(1), 1234);
    EXPECT_THAT(grid.Shown(), IsEmpty());
    grid.SetColWidth(1, 0);
    EXPECT_EQ(grid.ColWidth(1), 0);
    EXPECT_THAT(grid.Shown(), ElementsAre("column 1"));
}

TEST_F(GridBaseTest, WhatIsSetForAColumnIsShownAtOnce)
{
    EXPECT_EQ(grid.ColWidth(1), kDefaultColWidth);
    EXPECT_EQ(grid.ColType(1), CellType::Text);
    EXPECT_FALSE(grid.IsColHidden(1));
    grid.SetColHidden(1, true);
    grid.SetColType(1, CellType::Currency);
    grid.SetColFormat(1, {});
    grid.SetColComboList(1, u"#1;Yes");
    EXPECT_THAT(grid.Shown(), ElementsAre("column 1", "column 1", "column 1", "column 1"));
    EXPECT_TRUE(grid.IsColHidden(1));
    EXPECT_EQ(grid.ColType(1), CellType::Currency);
    EXPECT_FALSE(grid.IsColHidden(0));
    EXPECT_EQ(grid.ColType(0), CellType::Text);
}

TEST_F(GridBaseTest, WrittenCellsAndMarksAreShownAtOnce)
{
    grid.SetRows(2);
    static_cast<void>(grid.Shown());
    grid.SetCellText(1, 0, u"x");
    grid.SetCellMark(1, 0, u"why");
    EXPECT_THAT(grid.Shown(), ElementsAre("cells", "cells"));
    grid.SetCellMark(1, 0, u"");
    EXPECT_EQ(grid.CellMark(1, 0), u"");
    EXPECT_EQ(grid.CellText(1, 0), u"x");
}

TEST_F(GridBaseTest, AFormatIsForDataCellsOnly)
{
    Bind();
    grid.SetColFormat(0, [](std::u16string_view text) { return u"<" + std::u16string(text) + u">"; });
    EXPECT_EQ(grid.DisplayText(0, 0), u"Number");
    EXPECT_EQ(grid.DisplayText(1, 0), u"<10>");
    EXPECT_EQ(grid.DisplayText(99, 0), u"");
    EXPECT_EQ(grid.CellText(1, 0), u"10");
    grid.SetColFormat(0, {});
    EXPECT_EQ(grid.DisplayText(1, 0), u"10");
}

TEST_F(GridBaseTest, ADropDownShowsTheTextOfItsNumber)
{
    grid.SetRows(8);
    grid.SetColComboList(1, u"#0; |#1;Product Name|#10;a;b");
    ASSERT_EQ(grid.ComboList(1).size(), 3U);
    EXPECT_EQ(grid.ComboList(1)[0].number, 0);
    EXPECT_EQ(grid.ComboList(1)[0].text, u" ");
    EXPECT_EQ(grid.ComboList(1)[1].number, 1);
    EXPECT_EQ(grid.ComboList(1)[1].text, u"Product Name");
    EXPECT_EQ(grid.ComboList(1)[2].number, 10);
    EXPECT_EQ(grid.ComboList(1)[2].text, u"a;b");
    const std::vector<std::pair<std::u16string, std::u16string>> cells = {
        {u"0", u" "}, {u"1", u"Product Name"}, {u"10", u"a;b"},      {u"2", u""},
        {u"", u" "},  {u"x1", u" "},           {u"4294967297", u" "}};
    for (std::size_t index = 0; index < cells.size(); ++index) {
        const auto row = static_cast<std::int32_t>(index) + 1;
        grid.SetCellText(row, 1, cells[index].first);
        EXPECT_EQ(grid.DisplayText(row, 1), cells[index].second) << index;
    }
    grid.SetCellText(0, 1, u"Destination");
    EXPECT_EQ(grid.DisplayText(0, 1), u"Destination");
    EXPECT_THAT(grid.ComboList(0), IsEmpty());
    grid.SetColComboList(1, u"");
    EXPECT_EQ(grid.DisplayText(3, 1), u"10");
}

TEST_F(GridBaseTest, ADropDownListThatIsNoneIsRefusedAndTheOldOneStays)
{
    grid.SetColComboList(1, u"#1;Yes");
    for (const std::u16string_view list : {u"Yes", u"#1", u"1;Yes", u"#1;Yes||#2;No", u"#1;Yes|No"})
        EXPECT_EQ(ErrorNumberOf([&] { grid.SetColComboList(1, list); }), kRefused);
    ASSERT_EQ(grid.ComboList(1).size(), 1U);
    EXPECT_EQ(grid.ComboList(1)[0].text, u"Yes");
}

TEST_F(GridBaseTest, APickedEntryIsWrittenBeforeItIsTold)
{
    grid.SetRows(3);
    grid.SetColComboList(1, u"#0; |#12;Note");
    std::vector<std::u16string> seen;
    grid.CellChange.Connect([&](std::int32_t row, std::int32_t col) { seen = {grid.CellText(row, col)}; });
    grid.UserPicked(2, 1, 12);
    EXPECT_THAT(seen, ElementsAre(u"12"));
}

// The current row and the selection

TEST_F(GridBaseTest, ARowIsMadeCurrentBeforeItIsTold)
{
    grid.SetRows(4);
    static_cast<void>(grid.Shown());
    for (const std::int32_t row : {1, 3, -1}) {
        grid.SetCurrentRow(row);
        EXPECT_THAT(grid.Shown(), ElementsAre("current row", "told " + std::to_string(row)));
        EXPECT_EQ(grid.CurrentRow(), row);
        grid.SetCurrentRow(row);
        EXPECT_THAT(grid.Shown(), ElementsAre("current row")) << "into sight again, and nothing else";
    }
}

TEST_F(GridBaseTest, ACurrentRowThatIsSetLeavesTheListBoxesSelection)
{
    Bind();
    grid.SelectRange(2, 0, 3, 1);
    grid.SetCurrentRow(5);
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
    grid.SetCurrentRow(-1);
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
}

TEST_F(GridBaseTest, TheRowsOfARectangleAloneAreSelectedWhicheverCornerComesFirst)
{
    Bind();
    grid.UserChose(6, Rows({1, 6}));
    static_cast<void>(grid.Shown());
    grid.SelectRange(4, 1, 2, 0);
    EXPECT_THAT(grid.Shown(), ElementsAre("selection"));
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
    EXPECT_EQ(grid.CurrentRow(), 6);
    grid.SelectRange(5, 0, 5, 0);
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(GridBaseTest, AHandlerMayChooseAnotherRow)
{
    Bind();
    std::vector<std::int32_t> told;
    grid.RowColChange.Connect([&] {
        told.push_back(grid.CurrentRow());
        if (grid.CurrentRow() != 1)
            grid.SetCurrentRow(1);
    });
    grid.UserChose(4, Rows({4}));
    EXPECT_EQ(grid.CurrentRow(), 1);
    EXPECT_THAT(told, ElementsAre(4, 1));
}

TEST_F(GridBaseTest, AUsersChoiceIsCompleteWhenItIsTold)
{
    Bind();
    std::vector<std::int32_t> seen;
    grid.RowColChange.Connect([&] {
        seen = Selected();
        seen.push_back(grid.CurrentRow());
    });
    grid.UserChose(3, Rows({2, 3}));
    EXPECT_THAT(seen, ElementsAre(2, 3, 3));
    seen.clear();
    grid.UserChose(3, Rows({5}));
    EXPECT_THAT(seen, IsEmpty());
    EXPECT_THAT(Selected(), ElementsAre(5));
}

TEST_F(GridBaseTest, InWholeRowModeTheCurrentRowAloneIsSelected)
{
    Bind();
    grid.UserChose(3, Rows({1, 2}));
    static_cast<void>(grid.Shown());
    grid.SetSelectionMode(SelectionMode::WholeRow);
    EXPECT_THAT(grid.Shown(), ElementsAre("selection"));
    EXPECT_THAT(Selected(), ElementsAre(3));
    grid.SetCurrentRow(5);
    EXPECT_THAT(grid.Shown(), ElementsAre("selection", "current row", "told 5"));
    EXPECT_THAT(Selected(), ElementsAre(5));
    grid.UserChose(2, Rows({1, 4}));
    EXPECT_THAT(Selected(), ElementsAre(2));
    grid.SelectRange(1, 0, 6, 1);
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_THAT(BindAfter({5, 10, 20, 30}), ElementsAre("all"));
    EXPECT_THAT(Selected(), ElementsAre(3));
    EXPECT_EQ(Current(), u"20");
    EXPECT_THAT(BindAfter({5, 10, 30}), ElementsAre("all", "told 3"));
    EXPECT_THAT(Selected(), ElementsAre(3));
    grid.SetCurrentRow(-1);
    EXPECT_THAT(Selected(), IsEmpty());
}

TEST_F(GridBaseTest, SwitchingToWholeRowWithoutACurrentRowSelectsNothing)
{
    Bind();
    grid.SelectRange(1, 0, 4, 1);
    grid.SetSelectionMode(SelectionMode::WholeRow);
    EXPECT_THAT(Selected(), IsEmpty());
}

TEST_F(GridBaseTest, SwitchingToAListBoxLeavesTheSelection)
{
    Bind();
    grid.SetSelectionMode(SelectionMode::WholeRow);
    grid.SetCurrentRow(4);
    grid.SetSelectionMode(SelectionMode::ListBox);
    EXPECT_THAT(Selected(), ElementsAre(4));
    grid.SetCurrentRow(2);
    EXPECT_THAT(Selected(), ElementsAre(4));
}

TEST_F(GridBaseTest, ARowIsFoundByItsName)
{
    EXPECT_EQ(grid.RowNamed(u"3"), -1);
    Bind();
    EXPECT_EQ(grid.RowNamed(u"3"), 3);
    EXPECT_EQ(grid.RowNamed(u"7"), -1);
    grid.SetDataSource(records, nullptr);
    EXPECT_EQ(grid.RowNamed(u"3"), -1);
}

TEST_F(GridBaseTest, AMillionRowsAreSelectedWithoutAWalk)
{
    records->toldCount = 1000000;
    BindAt(77, {}, 500000);
    grid.SelectRange(1, 0, 1000000, 1);
    BindAgain();
    EXPECT_EQ(grid.SelectedRowCount(), 1000000);
    EXPECT_EQ(grid.SelectedRow(999999), 1000000);
    EXPECT_EQ(grid.TopRow(), 500000);
    EXPECT_EQ(records->placesAsked, 0U);
}

// Binding

TEST_F(GridBaseTest, ABindingTakesItsShapeFromTheSource)
{
    records->fields = 4;
    Bind();
    EXPECT_THAT(grid.Shown(), ElementsAre("all"));
    EXPECT_TRUE(grid.IsBound());
    EXPECT_EQ(grid.Rows(), 7);
    EXPECT_EQ(grid.Cols(), 4);
    EXPECT_EQ(grid.CellText(0, 0), u"Number");
    EXPECT_EQ(grid.CellText(6, 0), u"60");
    EXPECT_EQ(records->settled, 1U);
}

TEST_F(GridBaseTest, ABindingKeepsTheColumnsThatAreThere)
{
    grid.SetColWidth(1, 321);
    grid.SetColHidden(1, true);
    records->fields = 3;
    Bind();
    EXPECT_EQ(grid.ColWidth(1), 321);
    EXPECT_TRUE(grid.IsColHidden(1));
    EXPECT_EQ(grid.ColWidth(2), kDefaultColWidth);
}

TEST_F(GridBaseTest, ARebindWithTheOldStampPaintsAnewAndNothingElse)
{
    BindAt(3, {2, 3, 5}, 4);
    grid.SetDataSource(nullptr, nullptr);
    EXPECT_THAT(grid.Shown(), ElementsAre("cells"));
    EXPECT_EQ(grid.CellText(3, 0), u"");
    Bind();
    EXPECT_THAT(grid.Shown(), ElementsAre("cells"));
    Bind();
    EXPECT_THAT(grid.Shown(), ElementsAre("cells"));
    EXPECT_EQ(grid.CurrentRow(), 3);
    EXPECT_EQ(Current(), u"30");
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 5));
    EXPECT_EQ(grid.TopRow(), 4);
    EXPECT_EQ(records->settled, 1U);
    EXPECT_EQ(records->placesAsked, 0U);
}

TEST_F(GridBaseTest, ARebindWithTheOldStampKnowsItsPlacesAgain)
{
    Bind();
    grid.SetDataSource(nullptr, nullptr);
    EXPECT_EQ(grid.RowNamed(u"3"), -1);
    Bind();
    EXPECT_EQ(grid.RowNamed(u"3"), 3);
}

TEST_F(GridBaseTest, WhatSettlingChangesIsNoChangeForTheNextBinding)
{
    records->isSettlingAChange = true;
    BindAt(3, {}, 1);
    BindAgain();
    EXPECT_THAT(grid.Shown(), ElementsAre("cells", "cells"));
}

TEST_F(GridBaseTest, AnotherFieldCountIsShownWholeAndLosesNoRow)
{
    BindAt(3, {2, 3}, 2);
    records->fields = 3;
    BindAgain();
    EXPECT_THAT(grid.Shown(), ElementsAre("cells", "all"));
    EXPECT_EQ(grid.Cols(), 3);
    EXPECT_EQ(grid.CurrentRow(), 3);
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
    EXPECT_EQ(grid.TopRow(), 2);
}

TEST_F(GridBaseTest, WithoutAHeaderRowsAreRecords)
{
    grid.SetFixedRows(0);
    Bind();
    EXPECT_EQ(grid.Rows(), 6);
    EXPECT_EQ(grid.CellText(0, 0), u"10");
    EXPECT_EQ(grid.DisplayText(0, 0), u"10");
    EXPECT_EQ(grid.RowNamed(u"1"), 0);
    grid.SelectRange(0, 0, 1, 1);
    grid.SetCurrentRow(0);
    EXPECT_THAT(BindAfter({5, 10, 20}), testing::Contains("all"));
    EXPECT_EQ(Current(), u"10");
    EXPECT_THAT(Selected(), ElementsAre(1, 2));
}

TEST_F(GridBaseTest, CellsWrittenBetweenTwoBindingsAreGone)
{
    Bind();
    grid.SetDataSource(nullptr, nullptr);
    grid.SetCellText(1, 0, u"own");
    grid.SetCellMark(1, 0, u"mark");
    Bind();
    EXPECT_EQ(grid.CellText(1, 0), u"10");
    EXPECT_EQ(grid.CellMark(1, 0), u"");
    grid.SetDataSource(nullptr, nullptr);
    EXPECT_EQ(grid.CellText(1, 0), u"");
}

TEST_F(GridBaseTest, WhatMovedIsTheSameCurrentRowSelectionAndTopRow)
{
    BindAt(3, {2, 3, 5}, 4);
    EXPECT_THAT(BindAfter({5, 60, 50, 40, 30, 20, 10}), ElementsAre("all"));
    EXPECT_EQ(Current(), u"30");
    EXPECT_EQ(grid.CurrentRow(), 5);
    EXPECT_THAT(Selected(), ElementsAre(3, 5, 6));
    EXPECT_EQ(grid.TopRow(), 4);
    EXPECT_EQ(records->settled, 2U);
    // They belong to the records as they stand now.
    EXPECT_THAT(BindAfter({20, 30, 40}), ElementsAre("all"));
    EXPECT_EQ(grid.CurrentRow(), 2);
    EXPECT_THAT(Selected(), ElementsAre(1, 2));
    EXPECT_EQ(grid.TopRow(), 3);
}

TEST_F(GridBaseTest, AGoneCurrentRowHandsOverToItsNeighbour)
{
    struct Case
    {
        std::int32_t currentRow;
        std::vector<int> left;
        std::u16string current;
    };
    const std::vector<Case> cases = {
        {2, {10, 30, 40, 50, 60}, u"30"}, // as many rows stand before it as before
        {2, {10, 50, 60}, u"50"},         // several are gone
        {2, {5, 10, 60}, u"60"},          // a new one came
        {6, {10, 20, 30}, u"30"},         // at the end
        {3, {10}, u"10"},                 // nothing behind
        {1, {60, 50}, u"50"},             // the next of old, wherever it stands now
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.currentRow);
        records->Set({10, 20, 30, 40, 50, 60});
        grid.SetDataSource(nullptr, nullptr);
        BindAt(test.currentRow, {}, 1);
        const std::vector<std::string> shown = BindAfter(test.left);
        EXPECT_EQ(Current(), test.current);
        EXPECT_THAT(shown, ElementsAre("all", "told " + std::to_string(grid.CurrentRow())));
    }
}

TEST_F(GridBaseTest, ANewRecordInTheCurrentPlaceCountsAsAnother)
{
    BindAt(6, {}, 1);
    EXPECT_THAT(BindAfter({10, 20, 30, 40, 50, 70}), ElementsAre("all", "told 5"));
}

TEST_F(GridBaseTest, WithoutRecordsNoRowIsCurrentOrSelected)
{
    BindAt(3, {1, 2, 3}, 2);
    EXPECT_THAT(BindAfter({}), ElementsAre("all", "told -1"));
    EXPECT_EQ(grid.Rows(), 1);
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(grid.TopRow(), 1);
    EXPECT_THAT(BindAfter({10, 20}), ElementsAre("all"));
    EXPECT_EQ(grid.CurrentRow(), -1);
}

TEST_F(GridBaseTest, NoCurrentRowStaysNone)
{
    Bind();
    static_cast<void>(grid.Shown());
    EXPECT_THAT(BindAfter({20, 30}), ElementsAre("all"));
    EXPECT_EQ(grid.CurrentRow(), -1);
}

TEST_F(GridBaseTest, AListAtItsTopStaysThere)
{
    BindAt(3, {}, 1);
    EXPECT_THAT(BindAfter({1, 2, 3, 10, 20, 30}), ElementsAre("all"));
    EXPECT_EQ(grid.TopRow(), 1);
}

TEST_F(GridBaseTest, AGoneTopRowHandsOverToItsNeighbour)
{
    BindAt(-1, {}, 4);
    static_cast<void>(BindAfter({10, 20, 50, 60}));
    EXPECT_EQ(grid.TopRow(), 3);
    static_cast<void>(BindAfter({10, 20}));
    EXPECT_EQ(grid.TopRow(), 2);
}

TEST_F(GridBaseTest, ABindingIsCompleteWhenItIsTold)
{
    BindAt(6, {5, 6}, 1);
    std::vector<std::int32_t> seen;
    const std::size_t settledBefore = records->settled;
    grid.RowColChange.Connect([&] {
        seen = Selected();
        seen.push_back(grid.CurrentRow());
        seen.push_back(grid.Rows());
        EXPECT_THAT(grid.Shown(), ElementsAre("all"));
        EXPECT_EQ(records->settled, settledBefore + 1);
        // Another binding finds nothing to do.
        BindAgain();
        EXPECT_THAT(grid.Shown(), ElementsAre("cells", "cells"));
    });
    static_cast<void>(BindAfter({5, 10, 20, 30, 50}));
    EXPECT_THAT(seen, ElementsAre(5, 5, 6));
}

TEST_F(GridBaseTest, ASuspendedGridTellsOfItsRowAllTheSame)
{
    BindAt(3, {}, 1);
    const RedrawPause pause(grid);
    static_cast<void>(grid.Shown());
    EXPECT_THAT(BindAfter({10, 20}), ElementsAre("all", "told 2"));
}

TEST_F(GridBaseTest, AnotherSourceBeginsAnew)
{
    BindAt(3, {1, 2}, 4);
    const auto others = std::make_shared<Records>(std::vector<int>{10, 20, 30, 40, 50, 60});
    grid.SetDataSource(others, others);
    EXPECT_THAT(grid.Shown(), ElementsAre("all", "told -1"));
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(grid.TopRow(), 1);
    EXPECT_EQ(others->placesAsked, 0U);
    // And so does the first one, when it comes back.
    static_cast<void>(grid.Shown());
    Bind();
    EXPECT_THAT(grid.Shown(), ElementsAre("all"));
}

TEST_F(GridBaseTest, ASourceThatIsGoneIsNotTakenForANewOne)
{
    auto passing = std::make_shared<Records>(std::vector<int>{1, 2, 3});
    grid.SetDataSource(passing, passing);
    grid.UserChose(2, Rows({2}));
    grid.SetDataSource(nullptr, nullptr);
    passing.reset();
    static_cast<void>(grid.Shown());
    Bind();
    EXPECT_THAT(grid.Shown(), ElementsAre("all", "told -1"));
    EXPECT_THAT(Selected(), IsEmpty());
}

TEST_F(GridBaseTest, WithoutPlacesRowsKeepTheirNumbers)
{
    grid.SetDataSource(records, nullptr);
    grid.UserChose(5, Rows({2, 5, 6}));
    records->Set({1, 2, 3, 4, 5});
    static_cast<void>(grid.Shown());
    grid.SetDataSource(records, nullptr);
    EXPECT_THAT(grid.Shown(), ElementsAre("all"));
    EXPECT_EQ(grid.CurrentRow(), 5);
    EXPECT_THAT(Selected(), ElementsAre(2, 5));
    records->Set({1, 2});
    grid.SetDataSource(records, nullptr);
    EXPECT_THAT(grid.Shown(), ElementsAre("all", "told 2"));
}

TEST_F(GridBaseTest, PlacesThatComeLaterKnowNothingOfTheRowsBefore)
{
    Bind();
    grid.SetDataSource(records, nullptr);
    static_cast<void>(grid.Shown());
    Bind();
    EXPECT_THAT(grid.Shown(), ElementsAre("all"));
    EXPECT_EQ(records->settled, 2U);
}

TEST_F(GridBaseTest, ASourceThatAnswersNonsenseLeavesTheGridWhole)
{
    BindAt(6, {5, 6}, 5);
    // Fewer than RecordNow speaks of, as when a count fails.
    grid.SetDataSource(nullptr, nullptr);
    records->toldCount = 2;
    Bind();
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.CurrentRow(), 2);
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(grid.TopRow(), 2);
    records->toldCount = std::numeric_limits<std::int32_t>::max();
    BindAgain();
    EXPECT_EQ(grid.Rows(), std::numeric_limits<std::int32_t>::max());
    const auto broken = std::make_shared<Records>(std::vector<int>{});
    broken->fields = -1;
    grid.SetDataSource(broken, broken);
    EXPECT_EQ(grid.Cols(), 0);
    EXPECT_EQ(grid.Rows(), 1);
}

TEST_F(GridBaseTest, AllRowsStaySelectedThroughAChange)
{
    BindAt(1, {}, 1);
    grid.SelectRange(1, 0, 6, 1);
    static_cast<void>(BindAfter({60, 50, 40, 30, 20, 10}));
    EXPECT_EQ(grid.Selection().Ranges().size(), 1U);
    EXPECT_EQ(grid.SelectedRowCount(), 6);
    static_cast<void>(BindAfter({60, 55, 50}));
    EXPECT_THAT(Selected(), ElementsAre(1, 3));
}

TEST_F(GridBaseTest, RandomChanges_LeaveEveryRowOnItsRecord)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&](std::size_t count) { return static_cast<std::size_t>(random() % count); };
    Bind();
    int nextNumber = 100;
    std::set<int> selected; // the numbers of the selected records
    int told = 0;
    grid.RowColChange.Connect([&] { ++told; });
    for (int step = 0; step < 3000; ++step) {
        const std::vector<int> before = records->Numbers();
        const auto rows = static_cast<std::int32_t>(before.size());
        if (rows > 0 && below(2) == 0) {
            const auto first = static_cast<std::int32_t>(below(before.size())) + 1;
            const auto last = std::min(rows, first + static_cast<std::int32_t>(below(4)));
            RowSelection selection;
            selection.Add({first, last});
            grid.UserChose(first, selection);
            grid.UserScrolled(last);
            selected = {before.begin() + (first - 1), before.begin() + last};
        }
        std::vector<int> after = before;
        for (std::size_t changes = below(4); changes > 0; --changes) {
            if (after.empty() || below(3) == 0)
                after.insert(after.begin() + static_cast<std::ptrdiff_t>(below(after.size() + 1)),
                             nextNumber++);
            else if (below(8) == 0)
                std::shuffle(after.begin(), after.end(), random);
            else
                after.erase(after.begin() + static_cast<std::ptrdiff_t>(below(after.size())));
        }
        const std::int32_t current = grid.CurrentRow();
        int expected = -1; // the number of the record that should be current
        for (auto place = static_cast<std::size_t>(std::max(current, 1)) - 1;
             current >= 1 && expected < 0 && place < before.size(); ++place)
            expected = std::ranges::find(after, before[place]) != after.end() ? before[place] : -1;
        for (std::int32_t place = current - 2; current >= 1 && expected < 0 && place >= 0; --place) {
            const int number = before[static_cast<std::size_t>(place)];
            expected = std::ranges::find(after, number) != after.end() ? number : -1;
        }
        const int was = current >= 1 ? before[static_cast<std::size_t>(current - 1)] : -1;
        told = 0;
        static_cast<void>(BindAfter(after));

        const int now = grid.CurrentRow() >= 1 ? after[static_cast<std::size_t>(grid.CurrentRow() - 1)] : -1;
        ASSERT_EQ(now, expected) << step;
        ASSERT_EQ(told, expected == was ? 0 : 1) << step;
        std::erase_if(selected, [&](int number) { return std::ranges::find(after, number) == after.end(); });
        std::set<int> selectedNow;
        for (const std::int32_t row : Selected())
            selectedNow.insert(after[static_cast<std::size_t>(row - 1)]);
        ASSERT_EQ(selectedNow, selected) << step;
        ASSERT_LE(grid.TopRow(), std::max(grid.Rows() - 1, 1)) << step;
    }
}

// Painting

TEST_F(GridBaseTest, PausesNestAndOnlyTheOuterOneShows)
{
    {
        const RedrawPause outer(grid);
        const RedrawPause inner(grid);
        EXPECT_FALSE(grid.IsRedrawing());
        EXPECT_THAT(grid.Shown(), ElementsAre("redraw"));
    }
    EXPECT_TRUE(grid.IsRedrawing());
    EXPECT_THAT(grid.Shown(), ElementsAre("redraw"));
    grid.SetRedraw(true);
    EXPECT_THAT(grid.Shown(), IsEmpty());
    grid.SetRedraw(false);
    EXPECT_FALSE(grid.IsRedrawing());
}

TEST_F(GridBaseTest, ANoticeIsKeptAndShown)
{
    grid.SetNotice(u"No catalogue.");
    EXPECT_EQ(grid.Notice(), u"No catalogue.");
    grid.Refresh();
    EXPECT_THAT(grid.Shown(), ElementsAre("notice", "cells"));
}

TEST_F(GridBaseTest, AHandlerMayEndItsGrid)
{
    auto passing = std::make_unique<BareGrid>();
    passing->SetRows(3);
    passing->SetCols(1);
    passing->RowColChange.Connect([&] { passing.reset(); });
    passing->SetCurrentRow(1);
    EXPECT_EQ(passing, nullptr);
}

} // namespace KestrinProductEditor
