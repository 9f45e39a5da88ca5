// SPDX-License-Identifier: MIT
#include "platform/ui/Grid.h"

#include "support/ContractFixture.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

namespace KestrinProductEditor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;
using Modifier = IUser::Modifier;

std::u16string TextOf(std::int64_t number)
{
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
}

/// Records with a name each, which are told apart by a number.
class Records final : public IVSFlexDataSource, public IRowPlaces
{
public:
    explicit Records(const std::vector<std::u16string>& names)
    {
        for (const std::u16string& name : names)
            m_records.push_back({m_nextNumber++, name});
    }

    void Insert(std::size_t place, const std::u16string& name)
    {
        m_records.insert(m_records.begin() + static_cast<std::ptrdiff_t>(place), {m_nextNumber++, name});
        ++m_stamp;
    }
    void Erase(std::size_t place)
    {
        m_records.erase(m_records.begin() + static_cast<std::ptrdiff_t>(place));
        ++m_stamp;
    }
    void Clear()
    {
        m_records.clear();
        ++m_stamp;
    }
    void Reverse()
    {
        std::ranges::reverse(m_records);
        ++m_stamp;
    }
    /// As if it were a change that the stamp does not tell of.
    void RenameInPlace(std::size_t place, const std::u16string& name) { m_records[place].name = name; }
    [[nodiscard]] std::size_t CellsAsked() const { return m_cellsAsked; }

    [[nodiscard]] std::int32_t GetFieldCount() override { return 2; }
    [[nodiscard]] std::int32_t GetRecordCount() override
    {
        return static_cast<std::int32_t>(m_records.size());
    }
    [[nodiscard]] std::u16string GetFieldName(std::int32_t Field) override
    {
        return Field == 0 ? u"Name" : u"Number";
    }
    [[nodiscard]] std::u16string GetData(std::int32_t Field, std::int32_t Record) override
    {
        ++m_cellsAsked;
        const auto place = static_cast<std::size_t>(Record);
        if (Record < 0 || place >= m_records.size())
            return {};
        return Field == 0 ? m_records[place].name : TextOf(m_records[place].number);
    }
    void SetData(std::int32_t /*Field*/, std::int32_t /*Record*/, std::u16string_view /*newData*/) override {}

    [[nodiscard]] std::uint64_t ChangeStamp() override { return m_stamp; }
    void Settle() override { m_settled = m_records; }
    [[nodiscard]] std::int32_t RecordNow(std::int32_t record) override
    {
        const auto place = static_cast<std::size_t>(record);
        if (record < 0 || place >= m_settled.size())
            return -1;
        const auto now = std::ranges::find(m_records, m_settled[place].number, &Entry::number);
        return now == m_records.end() ? -1 : static_cast<std::int32_t>(now - m_records.begin());
    }
    [[nodiscard]] std::int32_t RecordNamed(std::u16string_view prefix) override
    {
        const auto found = std::ranges::find_if(
            m_records, [prefix](const Entry& entry) { return entry.name.starts_with(prefix); });
        return found == m_records.end() ? -1 : static_cast<std::int32_t>(found - m_records.begin());
    }

private:
    struct Entry
    {
        std::int32_t number;
        std::u16string name;
    };

    std::vector<Entry> m_records;
    std::vector<Entry> m_settled;
    std::int32_t m_nextNumber = 1;
    std::uint64_t m_stamp = 1;
    std::size_t m_cellsAsked = 0;
};

class GridContract : public ContractFixture
{
protected:
    explicit GridContract(std::u16string_view layout = u"frmProductEditor") : ContractFixture(layout)
    {
        List().SetRows(1);
        List().SetCols(2);
        List().SetFixedRows(1);
        List().SetFixedCols(0);
    }

    [[nodiscard]] IGrid& List() { return Form().Grid(u"flexGrid"); }

    void Bind() { List().SetDataSource(m_records, m_records); }
    /// Unbinds and binds again, as after a change of the data.
    void BindAgain()
    {
        List().SetDataSource(nullptr, nullptr);
        Bind();
    }
    void HearRows()
    {
        List().RowColChange.Connect([this] { Tell("row " + std::to_string(List().CurrentRow())); });
    }
    [[nodiscard]] std::vector<std::int32_t> Selected()
    {
        std::vector<std::int32_t> rows;
        for (std::int32_t index = 0; index < List().SelectedRowCount(); ++index)
            rows.push_back(List().SelectedRow(index));
        return rows;
    }
    [[nodiscard]] std::u16string CurrentName() { return List().CellText(List().CurrentRow(), 0); }

    const std::shared_ptr<Records> m_records = std::make_shared<Records>(std::vector<std::u16string>{
        u"anvil", u"bolt", u"chisel", u"drill", u"eyelet", u"file", u"gauge", u"hammer"});
};

// Cells and columns

TEST_F(GridContract, CellsKeepTheirTextWhenUnbound)
{
    List().SetRows(3);
    List().SetCellText(0, 0, u"Name");
    List().SetCellText(2, 1, u" \u00A0R&D\tx ");
    EXPECT_EQ(List().CellText(0, 0), u"Name");
    EXPECT_EQ(List().CellText(2, 1), u" \u00A0R&D\tx ");
    EXPECT_EQ(List().CellText(1, 1), u"");
    Show([&] {
        EXPECT_EQ(User().CellShown(u"flexGrid", 0, 0), u"Name");
        EXPECT_EQ(User().CellShown(u"flexGrid", 2, 1), u" \u00A0R&D\tx ");
    });
}

TEST_F(GridContract, ACellBeyondTheRowsIsEmpty)
{
    EXPECT_EQ(List().CellText(1, 0), u"");
    EXPECT_EQ(List().CellText(std::numeric_limits<std::int32_t>::max(), 1), u"");
    Bind();
    EXPECT_EQ(List().CellText(9, 0), u"");
    // The source may shrink before it is bound again.
    m_records->Clear();
    EXPECT_EQ(List().CellText(5, 0), u"");
}

TEST_F(GridContract, RowsColumnsAndWidthsThatCannotBeAreErrors)
{
    List().SetRows(3);
    const std::vector<std::function<void()>> acts = {
        [&] { List().SetRows(-1); },
        [&] { List().SetCols(-1); },
        [&] { List().SetFixedRows(2); },
        [&] { List().SetFixedCols(1); },
        [&] { List().SetColWidth(0, -1); },
        [&] { List().SetColWidth(2, 10); },
        [&] { List().SetColWidth(-1, 10); },
        [&] { (void)List().ColWidth(2); },
        [&] { List().SetCellText(3, 0, u"x"); },
        [&] { List().SetCellText(-1, 0, u"x"); },
        [&] { List().SetCellText(1, 2, u"x"); },
        [&] { (void)List().CellText(1, 2); },
        [&] { List().SetColHidden(2, true); },
        [&] { List().SetCurrentRow(3); },
        [&] { List().SetCurrentRow(-2); },
        [&] { List().SetCurrentRow(0); },
        [&] { List().SelectRange(1, 0, 3, 1); },
        [&] { List().SelectRange(0, 0, 2, 1); },
        [&] { List().SelectRange(1, 0, 2, 2); },
        [&] { (void)List().SelectedRow(0); },
        [&] { (void)List().SelectedRow(-1); },
    };
    for (std::size_t index = 0; index < acts.size(); ++index)
        EXPECT_EQ(ErrorNumberOf(acts[index]), kErrInvalidProcedureCall) << index;
    EXPECT_EQ(List().ColWidth(0), kDefaultColWidth);
    EXPECT_EQ(List().Rows(), 3);
    EXPECT_EQ(List().CurrentRow(), -1);
}

TEST_F(GridContract, WidthsAreWhatWasSetWhateverTheScreenMakesOfThem)
{
    EXPECT_EQ(List().ColWidth(1), kDefaultColWidth);
    for (const std::int32_t twips : {0, 1, 7, 1199, 2000, 2001, 32767}) {
        List().SetColWidth(0, twips);
        EXPECT_EQ(List().ColWidth(0), twips);
    }
    List().SetColWidth(0, 1237);
    List().SetColHidden(1, true);
    List().SetColWidth(1, 777);
    Bind();
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        BindAgain();
        EXPECT_EQ(List().ColWidth(0), 1237);
        List().SetColHidden(1, false);
        List().SetColHidden(1, true);
    });
    EXPECT_EQ(List().ColWidth(0), 1237);
    EXPECT_EQ(List().ColWidth(1), 777);
    EXPECT_TRUE(List().IsColHidden(1));
}

TEST_F(GridContract, ADraggedBorderChangesThatWidthOnly)
{
    Bind();
    List().SetColWidth(0, 2003);
    List().SetColWidth(1, 1007);
    Show([&] { User().DragColumn(u"flexGrid", 0, 3000); });
    EXPECT_NEAR(List().ColWidth(0), 3000, 30);
    EXPECT_EQ(List().ColWidth(1), 1007);
}

TEST_F(GridContract, FittedColumnsFollowWhatTheyShowAndLeaveHiddenOnes)
{
    List().SetRows(2);
    List().SetCols(3);
    List().SetCellText(1, 0, u"x");
    List().SetCellText(1, 1, u"a text that is a good deal longer");
    List().SetColWidth(2, 123);
    List().SetColHidden(2, true);
    Show([&] { List().FitColumns(); });
    EXPECT_GT(List().ColWidth(0), 0);
    EXPECT_GT(List().ColWidth(1), List().ColWidth(0));
    EXPECT_EQ(List().ColWidth(2), 123);
}

TEST_F(GridContract, AFormatMakesWhatIsShownOfDataCells)
{
    List().SetRows(2);
    List().SetCellText(0, 1, u"Price");
    List().SetCellText(1, 1, u"5");
    List().SetColType(1, CellType::Currency);
    List().SetColFormat(1, [](std::u16string_view text) { return u"$" + std::u16string(text); });
    EXPECT_EQ(List().ColType(0), CellType::Text);
    EXPECT_EQ(List().ColType(1), CellType::Currency);
    EXPECT_EQ(List().CellText(1, 1), u"5");
    Show([&] {
        EXPECT_EQ(User().CellShown(u"flexGrid", 1, 1), u"$5");
        EXPECT_EQ(User().CellShown(u"flexGrid", 0, 1), u"Price");
    });
}

TEST_F(GridContract, MarksAndNoticesAreKept)
{
    List().SetRows(2);
    List().SetCellMark(1, 0, u"the price is too high");
    EXPECT_EQ(List().CellMark(1, 0), u"the price is too high");
    EXPECT_EQ(List().CellMark(1, 1), u"");
    List().SetCellMark(1, 0, u"");
    EXPECT_EQ(List().CellMark(1, 0), u"");
    List().SetNotice(u"The catalogue cannot be read.");
    EXPECT_EQ(List().Notice(), u"The catalogue cannot be read.");
    Show([&] { EXPECT_EQ(User().TextOf(u"flexGrid"), u"The catalogue cannot be read."); });
    List().SetNotice(u"");
    EXPECT_EQ(List().Notice(), u"");
}

TEST_F(GridContract, PausesOfPaintingNestAndHideNoChange)
{
    List().SetRows(3);
    HearRows();
    Show([&] {
        {
            const RedrawPause outer(List());
            {
                const RedrawPause inner(List());
                List().SetCellText(1, 0, u"written");
            }
            List().SetCurrentRow(2);
            List().Refresh();
        }
        EXPECT_EQ(User().CellShown(u"flexGrid", 1, 0), u"written");
    });
    EXPECT_THAT(Told(), ElementsAre("row 2"));
}

// Binding

TEST_F(GridContract, ABindingTakesRowsColumnsHeadingsAndCellsFromItsSource)
{
    Bind();
    EXPECT_EQ(List().Rows(), 9);
    EXPECT_EQ(List().Cols(), 2);
    Show([&] {
        EXPECT_EQ(User().CellShown(u"flexGrid", 0, 0), u"Name");
        EXPECT_EQ(User().CellShown(u"flexGrid", 1, 0), u"anvil");
        EXPECT_EQ(User().CellShown(u"flexGrid", 8, 0), u"hammer");
        EXPECT_EQ(User().CellShown(u"flexGrid", 8, 1), u"8");
    });
}

TEST_F(GridContract, WritesToABoundGridAreRefused)
{
    Bind();
    const std::vector<std::function<void()>> writes = {
        [&] { List().SetCellText(1, 0, u"x"); },
        [&] { List().SetCellText(0, 0, u"x"); },
        [&] { List().SetRows(2); },
        [&] { List().SetCols(1); },
    };
    for (std::size_t index = 0; index < writes.size(); ++index)
        EXPECT_EQ(ErrorNumberOf(writes[index]), kErrActionNotSupported) << index;
    EXPECT_EQ(List().Rows(), 9);
    EXPECT_EQ(List().CellText(1, 0), u"anvil");
    List().SetDataSource(nullptr, nullptr);
    EXPECT_EQ(ErrorNumberOf([&] { List().SetCellText(1, 0, u"x"); }), 0);
    EXPECT_EQ(List().CellText(1, 0), u"x");
}

TEST_F(GridContract, UnbindingKeepsEverythingButTheCells)
{
    Bind();
    List().SetCurrentRow(3);
    List().SelectRange(2, 0, 4, 1);
    HearRows();
    List().SetDataSource(nullptr, nullptr);
    EXPECT_EQ(List().Rows(), 9);
    EXPECT_EQ(List().CurrentRow(), 3);
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
    EXPECT_EQ(List().CellText(1, 0), u"");
    EXPECT_EQ(List().CellText(0, 0), u"");
    EXPECT_THAT(Told(), IsEmpty());
    List().SetDataSource(nullptr, nullptr);
    EXPECT_EQ(List().Rows(), 9);
}

TEST_F(GridContract, ARebindWithNothingChangedTellsNothing)
{
    Bind();
    List().SetCurrentRow(3);
    List().SelectRange(2, 0, 4, 1);
    HearRows();
    BindAgain();
    Bind();
    EXPECT_EQ(List().CurrentRow(), 3);
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4));
    EXPECT_THAT(Told(), IsEmpty());
    m_records->RenameInPlace(2, u"cutter");
    BindAgain();
    Show([&] { EXPECT_EQ(User().CellShown(u"flexGrid", 3, 0), u"cutter"); });
}

TEST_F(GridContract, CurrentRowAndSelectionFollowTheirRecords)
{
    Bind();
    List().SetCurrentRow(3);
    List().SelectRange(2, 0, 4, 1);
    HearRows();
    m_records->Insert(0, u"adze");
    BindAgain();
    EXPECT_EQ(List().Rows(), 10);
    EXPECT_EQ(List().CurrentRow(), 4);
    EXPECT_EQ(CurrentName(), u"chisel");
    EXPECT_THAT(Selected(), ElementsAre(3, 4, 5));
    m_records->Reverse();
    BindAgain();
    EXPECT_EQ(CurrentName(), u"chisel");
    EXPECT_THAT(Selected(), ElementsAre(5, 6, 7));
    // The record is the same one: no other row has become current.
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(GridContract, AGoneRecordLeavesTheSelectionAndItsSuccessorBecomesCurrent)
{
    Bind();
    List().SetCurrentRow(3);
    List().SelectRange(2, 0, 4, 1);
    HearRows();
    m_records->Erase(2);
    BindAgain();
    EXPECT_EQ(CurrentName(), u"drill");
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
    EXPECT_THAT(Told(), ElementsAre("row 3"));
}

TEST_F(GridContract, TheSuccessorOfSeveralGoneRecordsIsTheNextThatIsThere)
{
    Bind();
    List().SetCurrentRow(3);
    HearRows();
    for (int times = 0; times < 3; ++times)
        m_records->Erase(2);
    m_records->Insert(0, u"adze");
    BindAgain();
    EXPECT_EQ(CurrentName(), u"file");
    EXPECT_THAT(Told(), ElementsAre("row 4"));
}

TEST_F(GridContract, AtTheEndThePredecessorBecomesCurrent)
{
    Bind();
    List().SetCurrentRow(8);
    HearRows();
    m_records->Erase(7);
    m_records->Erase(6);
    BindAgain();
    EXPECT_EQ(CurrentName(), u"file");
    EXPECT_THAT(Told(), ElementsAre("row 6"));
}

TEST_F(GridContract, NoRowIsCurrentWhenNoRecordIsLeft)
{
    Bind();
    List().SetCurrentRow(2);
    List().SelectRange(1, 0, 8, 1);
    HearRows();
    m_records->Clear();
    BindAgain();
    EXPECT_EQ(List().Rows(), 1);
    EXPECT_EQ(List().CurrentRow(), -1);
    EXPECT_EQ(List().SelectedRowCount(), 0);
    EXPECT_THAT(Told(), ElementsAre("row -1"));
    m_records->Insert(0, u"adze");
    BindAgain();
    EXPECT_EQ(List().CurrentRow(), -1);
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(GridContract, NoCurrentRowStaysNoCurrentRow)
{
    Bind();
    HearRows();
    EXPECT_EQ(List().CurrentRow(), -1);
    m_records->Erase(0);
    BindAgain();
    EXPECT_EQ(List().CurrentRow(), -1);
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(GridContract, AnotherSourceBeginsWithoutCurrentRowAndSelection)
{
    Bind();
    List().SetCurrentRow(2);
    List().SelectRange(1, 0, 3, 1);
    HearRows();
    const auto others = std::make_shared<Records>(std::vector<std::u16string>{u"x", u"y", u"z"});
    List().SetDataSource(others, others);
    EXPECT_EQ(List().Rows(), 4);
    EXPECT_EQ(List().CurrentRow(), -1);
    EXPECT_EQ(List().SelectedRowCount(), 0);
    EXPECT_THAT(Told(), ElementsAre("row -1"));
}

TEST_F(GridContract, RowColChangeOfABindingComesWhenItIsComplete)
{
    Bind();
    List().SetCurrentRow(8);
    std::vector<std::u16string> seen;
    List().RowColChange.Connect([&] { seen = {CurrentName(), TextOf(List().Rows())}; });
    m_records->Erase(7);
    Bind();
    EXPECT_THAT(seen, ElementsAre(u"gauge", u"8"));
}

TEST_F(GridContract, ASourceWithoutPlacesCanBeBound)
{
    List().SetDataSource(m_records, nullptr);
    EXPECT_EQ(List().Rows(), 9);
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        User().Type(u"h");
        EXPECT_EQ(List().CurrentRow(), 2);
    });
}

TEST_F(GridContract, OfAMillionRecordsOnlyWhatIsShownIsAsked)
{
    const auto many = std::make_shared<Records>(std::vector<std::u16string>(1000000, u"name"));
    List().SetDataSource(many, many);
    Show([&] {
        List().SetCurrentRow(1);
        List().SelectRange(1, 0, 1000000, 1);
        User().TabTo(u"flexGrid");
        User().Press(NamedKey::End);
        List().SelectRange(1, 0, 1000000, 1);
        List().Refresh();
        List().SetDataSource(nullptr, nullptr);
        List().SetDataSource(many, many);
        EXPECT_EQ(List().CurrentRow(), 1000000);
        EXPECT_EQ(List().SelectedRowCount(), 1000000);
        EXPECT_EQ(List().SelectedRow(999999), 1000000);
    });
    EXPECT_LT(many->CellsAsked(), 10000U);
}

// The current row and the selection

TEST_F(GridContract, RowColChangeComesOnceAndOnlyForAnotherRow)
{
    Bind();
    HearRows();
    List().SetCurrentRow(2);
    List().SetCurrentRow(2);
    List().SetCurrentRow(-1);
    List().SetCurrentRow(-1);
    EXPECT_THAT(Told(), ElementsAre("row 2", "row -1"));
    Show([&] {
        User().ClickRow(u"flexGrid", 3);
        User().ClickRow(u"flexGrid", 3);
        EXPECT_THAT(Told(), ElementsAre("row 3"));
    });
}

TEST_F(GridContract, TheFormsOwnChoiceLeavesAListsSelectionAlone)
{
    Bind();
    EXPECT_EQ(List().Mode(), SelectionMode::ListBox);
    List().SelectRange(2, 0, 3, 1);
    List().SetCurrentRow(5);
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
}

TEST_F(GridContract, SelectingAllDoesNotMoveTheCurrentRow)
{
    Bind();
    HearRows();
    List().SelectRange(1, 0, 8, 1);
    EXPECT_EQ(List().CurrentRow(), -1);
    EXPECT_EQ(List().SelectedRowCount(), 8);
    List().SetCurrentRow(4);
    (void)Told();
    List().SelectRange(8, 1, 1, 0);
    EXPECT_EQ(List().CurrentRow(), 4);
    EXPECT_THAT(Selected(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8));
    EXPECT_THAT(Told(), IsEmpty());
    List().SelectRange(2, 0, 2, 1);
    EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(GridContract, WholeRowModeSelectsTheCurrentRow)
{
    Bind();
    List().SetSelectionMode(SelectionMode::WholeRow);
    EXPECT_EQ(List().Mode(), SelectionMode::WholeRow);
    List().SetCurrentRow(4);
    EXPECT_THAT(Selected(), ElementsAre(4));
    List().SetCurrentRow(-1);
    EXPECT_THAT(Selected(), IsEmpty());
    List().SetSelectionMode(SelectionMode::ListBox);
    EXPECT_THAT(Selected(), IsEmpty());
    EXPECT_EQ(List().CurrentRow(), -1);
}

TEST_F(GridContract, WholeRowModeTakesOneRowWhateverIsHeld)
{
    Bind();
    List().SetSelectionMode(SelectionMode::WholeRow);
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        User().ClickRow(u"flexGrid", 5, Modifier::Shift);
        EXPECT_THAT(Selected(), ElementsAre(5));
        EXPECT_EQ(List().CurrentRow(), 5);
        User().ClickRow(u"flexGrid", 3);
        EXPECT_THAT(Selected(), ElementsAre(3));
    });
}

TEST_F(GridContract, ClicksSelectAsInAListBox)
{
    Bind();
    HearRows();
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        EXPECT_THAT(Selected(), ElementsAre(2));
        User().ClickRow(u"flexGrid", 5, Modifier::Shift);
        EXPECT_THAT(Selected(), ElementsAre(2, 3, 4, 5));
        User().ClickRow(u"flexGrid", 7, Modifier::Control);
        EXPECT_THAT(Selected(), ElementsAre(2, 3, 4, 5, 7));
        User().ClickRow(u"flexGrid", 3, Modifier::Control);
        EXPECT_THAT(Selected(), ElementsAre(2, 4, 5, 7));
        EXPECT_EQ(List().CurrentRow(), 3);
        User().ClickRow(u"flexGrid", 4);
        EXPECT_THAT(Selected(), ElementsAre(4));
    });
    EXPECT_THAT(Told(), ElementsAre("row 2", "row 5", "row 7", "row 3", "row 4"));
}

TEST_F(GridContract, KeysMoveTheCurrentRowAndSelectIt)
{
    Bind();
    HearRows();
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        (void)Told();
        User().Press(NamedKey::Down);
        EXPECT_THAT(Selected(), ElementsAre(3));
        User().Press(NamedKey::Up);
        User().Press(NamedKey::End);
        EXPECT_THAT(Selected(), ElementsAre(8));
        User().Press(NamedKey::Down);
        User().Press(NamedKey::PageDown);
        User().Press(NamedKey::Home);
        User().Press(NamedKey::Up);
        User().Press(NamedKey::PageUp);
        EXPECT_THAT(Selected(), ElementsAre(1));
        User().Press(NamedKey::Left);
        User().Press(NamedKey::Right);
        EXPECT_THAT(Told(), ElementsAre("row 3", "row 2", "row 8", "row 1"));
    });
}

TEST_F(GridContract, ShiftWithKeysExtendsTheSelection)
{
    Bind();
    Show([&] {
        User().ClickRow(u"flexGrid", 3);
        User().Press(NamedKey::Down, Modifier::Shift);
        User().Press(NamedKey::Down, Modifier::Shift);
        EXPECT_THAT(Selected(), ElementsAre(3, 4, 5));
        EXPECT_EQ(List().CurrentRow(), 5);
        User().Press(NamedKey::Home, Modifier::Shift);
        EXPECT_THAT(Selected(), ElementsAre(1, 2, 3));
        User().Press(NamedKey::Down);
        EXPECT_THAT(Selected(), ElementsAre(2));
    });
}

TEST_F(GridContract, GainingTheFocusChoosesNoRow)
{
    Bind();
    HearRows();
    Show([&] {
        Form().TextBox(u"txtProductName").SetFocus();
        List().SetFocus();
        Form().TextBox(u"txtProductName").SetFocus();
        User().TabTo(u"flexGrid");
        EXPECT_EQ(User().Focus(), u"flexGrid");
        EXPECT_EQ(List().CurrentRow(), -1);
        EXPECT_EQ(List().SelectedRowCount(), 0);
        User().Press(NamedKey::Down);
        EXPECT_EQ(List().CurrentRow(), 1);
    });
    EXPECT_THAT(Told(), ElementsAre("row 1"));
}

TEST_F(GridContract, AClickTellsOfItsRowBeforeTheFocus)
{
    Bind();
    HearRows();
    HearFocus(List(), "list");
    HearFocus(Form().TextBox(u"txtUnitPrice"), "price");
    Show([&] {
        Form().TextBox(u"txtUnitPrice").SetFocus();
        (void)Told();
        User().ClickRow(u"flexGrid", 2);
        EXPECT_THAT(Told(), ElementsAre("row 2", "price lost", "list got"));
        User().ClickRow(u"flexGrid", 3);
        EXPECT_THAT(Told(), ElementsAre("row 3"));
        Form().TextBox(u"txtUnitPrice").SetFocus();
        (void)Told();
        // The current row already.
        User().ClickRow(u"flexGrid", 3);
        EXPECT_THAT(Told(), ElementsAre("price lost", "list got"));
    });
}

TEST_F(GridContract, AHandlerOfRowColChangeMaySetTheFocus)
{
    Bind();
    ITextBox& name = Form().TextBox(u"txtProductName");
    Form().SetFirstFocus(Form().Button(u"cmdCancel"));
    HearFocus(List(), "list");
    HearFocus(name, "name");
    List().RowColChange.Connect([&] { name.SetFocus(); });
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        EXPECT_EQ(User().Focus(), u"txtProductName");
    });
    EXPECT_THAT(Told(), ElementsAre("name got"));
}

TEST_F(GridContract, AHandlerOfRowColChangeMayBindAgain)
{
    Bind();
    List().RowColChange.Connect([&] {
        Tell("row " + std::to_string(List().CurrentRow()));
        m_records->Insert(0, u"adze");
        BindAgain();
    });
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        EXPECT_EQ(CurrentName(), u"bolt");
        EXPECT_THAT(Selected(), ElementsAre(3));
    });
    EXPECT_THAT(Told(), ElementsAre("row 2"));
}

// Double clicks

TEST_F(GridContract, ADoubleClickOnTheHeaderTellsRowZeroAndChoosesNothing)
{
    Bind();
    HearRows();
    List().DblClick.Connect([&] { Tell("double " + std::to_string(List().MouseRow())); });
    Show([&] {
        User().DoubleClickRow(u"flexGrid", 0);
        EXPECT_EQ(List().CurrentRow(), -1);
        EXPECT_EQ(List().SelectedRowCount(), 0);
    });
    EXPECT_THAT(Told(), ElementsAre("double 0"));
}

TEST_F(GridContract, ADoubleClickChoosesItsRowFirst)
{
    Bind();
    HearRows();
    HearFocus(List(), "list");
    Form().SetFirstFocus(Form().TextBox(u"txtProductName"));
    List().DblClick.Connect([&] { Tell("double " + std::to_string(List().MouseRow())); });
    Show([&] {
        User().DoubleClickRow(u"flexGrid", 3);
        EXPECT_THAT(Told(), ElementsAre("row 3", "list got", "double 3"));
        EXPECT_THAT(Selected(), ElementsAre(3));
        User().DoubleClickRow(u"flexGrid", 8);
        EXPECT_THAT(Told(), ElementsAre("row 8", "double 8"));
        User().Click(u"cmdNew");
    });
}

TEST_F(GridContract, ADoubleClickSurvivesRebindsInItsOwnHandlers)
{
    Bind();
    Form().SetFirstFocus(Form().TextBox(u"txtProductName"));
    List().RowColChange.Connect([&] {
        Tell("row");
        BindAgain();
    });
    List().GotFocus.Connect([&] {
        Tell("got");
        const RedrawPause pause(List());
        BindAgain();
    });
    List().DblClick.Connect([&] { Tell("double " + std::to_string(List().MouseRow())); });
    Show([&] { User().DoubleClickRow(u"flexGrid", 4); });
    EXPECT_THAT(Told(), ElementsAre("row", "got", "double 4"));
    EXPECT_EQ(List().CurrentRow(), 4);
}

TEST_F(GridContract, NoRowIsUnderAMouseThatWasNeverThere)
{
    Bind();
    EXPECT_EQ(List().MouseRow(), -1);
}

// Typing a name

TEST_F(GridContract, TypedLettersChooseTheFirstRowWithThatName)
{
    m_records->Insert(8, u"handle");
    Bind();
    HearRows();
    Show([&] {
        User().TabTo(u"flexGrid");
        User().Type(u"ha");
        EXPECT_EQ(CurrentName(), u"hammer");
        User().Type(u"n");
        EXPECT_EQ(CurrentName(), u"handle");
        EXPECT_THAT(Selected(), ElementsAre(9));
        EXPECT_THAT(Told(), ElementsAre("row 8", "row 9"));
        // Another act ends the name.
        User().Press(NamedKey::Up);
        User().Type(u"d");
        EXPECT_EQ(CurrentName(), u"drill");
    });
}

TEST_F(GridContract, ANameThatNoRowHasMovesNothing)
{
    Bind();
    HearRows();
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        (void)Told();
        User().Type(u"x");
        EXPECT_EQ(List().CurrentRow(), 2);
    });
    EXPECT_THAT(Told(), IsEmpty());
}

// Keys and focus like every control

TEST_F(GridContract, EnterInAListIsTheDefaultButtonWhereNoToolTakesIt)
{
    Bind();
    Form().SetDefaultButton(Form().Button(u"cmdSaveClose"));
    Form().Button(u"cmdSaveClose").Click.Connect([this] { Tell("default"); });
    Show([&] {
        User().ClickRow(u"flexGrid", 2);
        User().Press(NamedKey::Enter);
    });
    EXPECT_THAT(Told(), ElementsAre("default"));
}

TEST_F(GridContract, ABusyFormsListHearsNoClick)
{
    Bind();
    HearRows();
    Show([&] {
        Form().SetBusy(true);
        User().ClickRow(u"flexGrid", 2);
        User().DoubleClickRow(u"flexGrid", 3);
        User().DragColumn(u"flexGrid", 0, 3000);
        Form().SetBusy(false);
    });
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(List().ColWidth(0), kDefaultColWidth);
}

// Drop-downs

class MappingGridContract : public GridContract
{
protected:
    MappingGridContract() : GridContract(u"frmProductImport")
    {
        List().SetRows(4);
        List().SetCellText(0, 0, u"Column");
        List().SetColComboList(1, u"#0; |#1;Name|#2;Part#|#10;Note");
        List().CellChange.Connect([this](std::int32_t row, std::int32_t col) {
            Tell("cell " + std::to_string(row) + "," + std::to_string(col));
        });
    }
};

TEST_F(MappingGridContract, APickedEntryIsToldAndItsNumberIsTheCellsText)
{
    Show([&] {
        User().PickInCell(u"flexGrid", 2, 1, 10);
        EXPECT_EQ(User().CellShown(u"flexGrid", 2, 1), u"Note");
        EXPECT_EQ(List().CellText(2, 1), u"10");
        EXPECT_THAT(Told(), ElementsAre("cell 2,1"));
        User().PickInCell(u"flexGrid", 2, 1, 0);
        EXPECT_EQ(List().CellText(2, 1), u"0");
        EXPECT_THAT(Told(), ElementsAre("cell 2,1"));
    });
}

TEST_F(MappingGridContract, APickIsAClickIntoItsRow)
{
    HearRows();
    Show([&] {
        User().PickInCell(u"flexGrid", 3, 1, 1);
        EXPECT_EQ(User().Focus(), u"flexGrid");
        EXPECT_EQ(List().CurrentRow(), 3);
    });
    EXPECT_THAT(Told(), ElementsAre("row 3", "cell 3,1"));
}

TEST_F(MappingGridContract, ACellShowsTheEntryOfTheNumberThatTheFormWrites)
{
    List().SetCellText(1, 1, u"2");
    List().SetCellText(2, 1, u"0");
    List().SetCellText(3, 1, u"7");
    EXPECT_EQ(List().CellText(1, 1), u"2");
    Show([&] {
        EXPECT_EQ(User().CellShown(u"flexGrid", 1, 1), u"Part#");
        EXPECT_EQ(User().CellShown(u"flexGrid", 2, 1), u" ");
        EXPECT_EQ(User().CellShown(u"flexGrid", 3, 1), u"");
    });
    EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(MappingGridContract, AHandlerOfCellChangeMayWriteOtherCells)
{
    List().CellChange.Connect([&](std::int32_t row, std::int32_t col) {
        Tell("cell");
        for (std::int32_t other = 1; other < List().Rows(); ++other) {
            if (other != row)
                List().SetCellText(other, col, u"0");
        }
    });
    Show([&] {
        User().PickInCell(u"flexGrid", 1, 1, 2);
        User().PickInCell(u"flexGrid", 2, 1, 2);
    });
    EXPECT_EQ(List().CellText(1, 1), u"0");
    EXPECT_EQ(List().CellText(2, 1), u"2");
    EXPECT_THAT(Told(), ElementsAre("cell", "cell"));
}

TEST_F(MappingGridContract, RowsThatAreTakenAwayTakeTheCurrentRowAlong)
{
    List().SetCurrentRow(3);
    List().SelectRange(2, 0, 3, 1);
    HearRows();
    List().SetRows(3);
    EXPECT_EQ(List().CurrentRow(), -1);
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_THAT(Told(), ElementsAre("row -1"));
}

TEST_F(GridContract, AHandlerThatThrowsLeavesTheListUsable)
{
    Bind();
    const auto fail = [this](const char* what) {
        Tell(what);
        throw std::runtime_error(what);
    };
    Form().SetFirstFocus(Form().TextBox(u"txtProductName"));
    List().RowColChange.Connect([&] { fail("row"); });
    List().GotFocus.Connect([&] { fail("got"); });
    List().DblClick.Connect([&] { fail("double"); });
    Show([&] {
        User().DoubleClickRow(u"flexGrid", 2);
        EXPECT_THAT(Told(), ElementsAre("row", "got", "double"));
        User().Press(NamedKey::Down);
        User().DoubleClickRow(u"flexGrid", 5);
        EXPECT_THAT(Told(), ElementsAre("row", "row", "double"));
        EXPECT_EQ(List().CurrentRow(), 5);
    });
}

// Without a header row

class PreviewGridContract : public ContractFixture
{
protected:
    PreviewGridContract() : ContractFixture(u"frmProdImportPreview") {}
};

TEST_F(PreviewGridContract, WithoutAFixedRowTheFirstRowIsData)
{
    IGrid& grid = Form().Grid(u"flexGrid");
    grid.SetRows(2);
    grid.SetCols(1);
    EXPECT_EQ(grid.FixedRows(), 0);
    EXPECT_EQ(grid.FixedCols(), 0);
    grid.SetCellText(0, 0, u"first");
    Show([&] {
        User().ClickRow(u"flexGrid", 0);
        EXPECT_EQ(grid.CurrentRow(), 0);
        EXPECT_EQ(grid.SelectedRow(0), 0);
        EXPECT_EQ(User().CellShown(u"flexGrid", 0, 0), u"first");
    });
}

} // namespace
} // namespace KestrinProductEditor
