// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Grid.h"

#include "platform/win32/Win32AltKey.h"
#include "platform/win32/Win32Clipboard.h"
#include "platform/win32/Win32GridAccessible.h"
#include "platform/windows/WideText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <initializer_list>
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
    const std::string digits = std::to_string(number);
    return {digits.begin(), digits.end()};
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

/// A window that ends with it.
class TestWindow
{
public:
    TestWindow(const wchar_t* className, HWND parent, DWORD style, RECT place)
        : m_window(CreateWindowExW(0, className, L"", style, place.left, place.top, place.right - place.left,
                                   place.bottom - place.top, parent, nullptr, nullptr, nullptr))
    {
    }
    TestWindow(const TestWindow&) = delete;
    TestWindow& operator=(const TestWindow&) = delete;
    ~TestWindow() { End(); }

    void End()
    {
        if (IsWindow(m_window))
            DestroyWindow(m_window);
    }
    [[nodiscard]] HWND Handle() const { return m_window; }

private:
    HWND m_window;
};

/// A control that only has a window to type into.
class PlainBox final : public Win32Control<IControl>
{
public:
    PlainBox(HWND window, Win32Focus& focus) : Win32Control<IControl>(window, window, focus) {}
};

/// Holds a key down.
class Held
{
public:
    explicit Held(int key) : m_key(static_cast<std::size_t>(key)) { PrvSet(0x80); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;
    ~Held() { PrvSet(0); }

private:
    void PrvSet(BYTE state) const
    {
        std::array<BYTE, 256> keys{};
        GetKeyboardState(keys.data());
        keys.at(m_key) = state;
        SetKeyboardState(keys.data());
    }

    std::size_t m_key;
};

class Win32Grids : public ::testing::Test
{
protected:
    Win32Grids()
    {
        m_grid->SetRows(1);
        m_grid->SetCols(3);
        m_grid->SetFixedRows(1);
        m_grid->RowColChange.Connect([this] { m_events.emplace_back("RowColChange"); });
        m_grid->GotFocus.Connect([this] { m_events.emplace_back("GotFocus"); });
        m_grid->LostFocus.Connect([this] { m_events.emplace_back("LostFocus"); });
        m_grid->DblClick.Connect(
            [this] { m_events.push_back("DblClick " + std::to_string(m_grid->MouseRow())); });
    }

    void Show()
    {
        ShowWindow(m_top.Handle(), SW_SHOW);
        m_box.SetFocus();
        Frame();
        m_events.clear();
    }

    /// Paints what there is to paint.
    void Frame()
    {
        MSG message{};
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        RedrawWindow(m_window.Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    }

    std::shared_ptr<Records> Bind(std::int32_t count)
    {
        auto records = std::make_shared<Records>(count);
        m_grid->SetDataSource(records, records);
        return records;
    }
    void Rebind(const std::shared_ptr<Records>& records)
    {
        m_grid->SetDataSource(nullptr, nullptr);
        m_grid->SetDataSource(records, records);
        m_grid->Refresh();
    }

    /// The events since the last call.
    std::vector<std::string> Events() { return std::exchange(m_events, {}); }

    [[nodiscard]] static LPARAM At(POINT place) { return MAKELPARAM(place.x, place.y); }
    [[nodiscard]] POINT PlaceOf(std::int32_t row, std::int32_t col = 0) const
    {
        const RECT cell = m_view->CellRect(row, col);
        return {(cell.left + cell.right) / 2, (cell.top + cell.bottom) / 2};
    }
    void Click(std::int32_t row, WPARAM keys = 0, std::int32_t col = 0)
    {
        SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, keys | MK_LBUTTON, At(PlaceOf(row, col)));
        SendMessageW(m_window.Handle(), WM_LBUTTONUP, keys, At(PlaceOf(row, col)));
    }
    void DoubleClick(POINT place)
    {
        SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, At(place));
        SendMessageW(m_window.Handle(), WM_LBUTTONUP, 0, At(place));
        SendMessageW(m_window.Handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, At(place));
        SendMessageW(m_window.Handle(), WM_LBUTTONUP, 0, At(place));
    }
    void Press(WPARAM key) { SendMessageW(m_window.Handle(), WM_KEYDOWN, key, 0); }
    void Press(int held, WPARAM key)
    {
        const Held down(held);
        Press(key);
    }
    void PressWithAlt(WPARAM key) { SendMessageW(m_window.Handle(), WM_SYSKEYDOWN, key, 1 << 29); }
    void Type(std::u16string_view text)
    {
        for (const char16_t unit : text)
            SendMessageW(m_window.Handle(), WM_CHAR, unit, 0);
    }

    [[nodiscard]] std::vector<std::int32_t> Selected() const
    {
        std::vector<std::int32_t> rows;
        for (std::int32_t index = 0; index < std::min(m_grid->SelectedRowCount(), 100); ++index)
            rows.push_back(m_grid->SelectedRow(index));
        return rows;
    }
    [[nodiscard]] bool IsInSight(std::int32_t row) const
    {
        const RECT cell = m_view->CellRect(row, 0);
        return cell.top >= m_view->Geometry().HeaderHeight() && cell.bottom <= m_view->Geometry().Client().cy;
    }
    [[nodiscard]] bool Wants(WPARAM key) const
    {
        MSG message{};
        message.hwnd = m_window.Handle();
        message.message = WM_KEYDOWN;
        message.wParam = key;
        const LRESULT code =
            SendMessageW(message.hwnd, WM_GETDLGCODE, key, reinterpret_cast<LPARAM>(&message));
        return (code & DLGC_WANTALLKEYS) != 0;
    }

private:
    static HWND PrvRegistered(HWND window)
    {
        Win32GridView::Register();
        return window;
    }

    TestWindow m_top{L"STATIC", nullptr, WS_OVERLAPPEDWINDOW, {0, 0, 440, 380}};
    TestWindow m_edit{L"EDIT", m_top.Handle(), WS_CHILD | WS_VISIBLE | WS_TABSTOP, {0, 0, 200, 22}};

protected:
    TestWindow m_window{Win32GridView::kClassName,
                        PrvRegistered(m_top.Handle()),
                        WS_CHILD | WS_VISIBLE | WS_TABSTOP,
                        {0, 30, 420, 320}};
    const std::shared_ptr<Win32GridView> m_view = Win32GridView::Of(m_window.Handle());
    Win32Focus m_focus{m_top.Handle()};
    PlainBox m_box{m_edit.Handle(), m_focus};
    std::unique_ptr<Win32Grid> m_grid = std::make_unique<Win32Grid>(m_window.Handle(), m_focus);
    std::vector<std::string> m_events;
};

/// The drop-downs of a small table, as a form that maps columns has them.
class Win32GridDropDowns : public Win32Grids
{
protected:
    Win32GridDropDowns()
    {
        m_grid->SetCols(2);
        m_grid->SetRows(4);
        m_grid->SetSelectionMode(SelectionMode::WholeRow);
        m_grid->SetColComboList(1, u"#0; |#1;Name|#2;Part|#3;Price");
        for (std::int32_t row = 1; row < 4; ++row)
            m_grid->SetCellText(row, 1, u"0");
        m_grid->CellChange.Connect([this](std::int32_t row, std::int32_t col) {
            m_events.push_back("CellChange " + std::to_string(row) + "," + std::to_string(col));
        });
        Show();
    }

    [[nodiscard]] std::vector<std::u16string> Entries() const
    {
        std::vector<std::u16string> entries;
        HWND const list = m_view->OpenDropDown();
        const LRESULT count = list != nullptr ? SendMessageW(list, LB_GETCOUNT, 0, 0) : 0;
        for (LRESULT entry = 0; entry < count; ++entry) {
            std::array<wchar_t, 64> text{};
            SendMessageW(list, LB_GETTEXT, static_cast<WPARAM>(entry), reinterpret_cast<LPARAM>(text.data()));
            entries.push_back(FromWide(text.data()));
        }
        return entries;
    }
    void PickWithMouse(int entry)
    {
        HWND const list = m_view->OpenDropDown();
        ASSERT_NE(list, nullptr);
        RECT item{};
        SendMessageW(list, LB_GETITEMRECT, static_cast<WPARAM>(entry), reinterpret_cast<LPARAM>(&item));
        const LPARAM place = At({(item.left + item.right) / 2, (item.top + item.bottom) / 2});
        SendMessageW(list, WM_MOUSEMOVE, 0, place);
        SendMessageW(list, WM_LBUTTONDOWN, MK_LBUTTON, place);
        SendMessageW(list, WM_LBUTTONUP, 0, place);
    }
};

} // namespace

TEST_F(Win32Grids, AskForNoCellThatIsNotInSight)
{
    auto records = Bind(kMillion);
    EXPECT_EQ(records->asked, 0);
    Show();
    EXPECT_GT(records->asked, 0);
    const std::int64_t frame = std::int64_t{3} * 3 * (m_view->Geometry().Page() + 2);
    const auto askedBy = [&](const std::function<void()>& act) {
        records->asked = 0;
        act();
        Frame();
        return records->asked;
    };
    EXPECT_LE(askedBy([&] { Press(VK_END); }), frame);
    EXPECT_EQ(m_grid->CurrentRow(), kMillion);
    EXPECT_TRUE(IsInSight(kMillion));
    EXPECT_LE(askedBy([&] { Press(VK_PRIOR); }), frame);
    EXPECT_LE(askedBy([&] { Press(VK_CONTROL, 'A'); }), frame);
    EXPECT_EQ(m_grid->SelectedRowCount(), kMillion);
    EXPECT_LE(askedBy([&] { m_grid->SelectRange(1, 0, kMillion, 2); }), frame);
    EXPECT_LE(askedBy([&] { Rebind(records); }), frame);
    EXPECT_LE(askedBy([&] { Press(VK_HOME); }), frame);
    EXPECT_LE(askedBy([&] { m_grid->FitColumns(); }), 2 * frame);
}

TEST_F(Win32Grids, SelectAllAsOneRangeAndKeepTheCurrentRow)
{
    Bind(kMillion);
    m_grid->SetCurrentRow(7);
    Show();
    Press(VK_CONTROL, 'A');
    EXPECT_EQ(m_grid->SelectedRowCount(), kMillion);
    EXPECT_EQ(m_grid->Selection().Ranges().size(), 1U);
    EXPECT_EQ(m_grid->CurrentRow(), 7);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Win32Grids, TellOfARowBeforeTheFocusThatTheClickBrings)
{
    Bind(10);
    Show();
    Click(3);
    EXPECT_THAT(Events(), ElementsAre("RowColChange", "GotFocus"));
    EXPECT_EQ(m_grid->CurrentRow(), 3);
    EXPECT_THAT(Selected(), ElementsAre(3));
    Click(4);
    EXPECT_THAT(Events(), ElementsAre("RowColChange"));
    Click(4);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Win32Grids, ChooseNoRowWhenTheyGainTheFocus)
{
    Bind(10);
    Show();
    m_grid->SetFocus();
    EXPECT_THAT(Events(), ElementsAre("GotFocus"));
    EXPECT_EQ(m_grid->CurrentRow(), -1);
    Press(VK_DOWN);
    EXPECT_EQ(m_grid->CurrentRow(), 1);
}

TEST_F(Win32Grids, SelectAsAListBoxDoes)
{
    Bind(40);
    Show();
    const auto expect = [this](std::int32_t currentRow, const std::vector<std::int32_t>& selected) {
        EXPECT_EQ(m_grid->CurrentRow(), currentRow);
        EXPECT_EQ(Selected(), selected);
    };
    Click(2);
    Click(4, MK_CONTROL);
    expect(4, {2, 4});
    Click(6, MK_SHIFT);
    expect(6, {4, 5, 6});
    Press(VK_DOWN);
    expect(7, {7});
    Press(VK_SHIFT, VK_DOWN);
    expect(8, {7, 8});
    Press(VK_CONTROL, VK_UP);
    expect(7, {7, 8});
    Press(VK_CONTROL, VK_SPACE);
    expect(7, {8});
    Press(VK_SHIFT, VK_END);
    EXPECT_EQ(m_grid->CurrentRow(), 40);
    Press(VK_HOME);
    expect(1, {1});
    Press(VK_UP);
    expect(1, {1});

    // What code selects counts for the next keys as well.
    m_grid->SelectRange(5, 0, 6, 2);
    expect(1, {5, 6});
    m_grid->SetCurrentRow(3);
    expect(3, {5, 6});
    Press(VK_SHIFT, VK_DOWN);
    expect(4, {3, 4});
}

TEST_F(Win32Grids, SelectTheRowsThatADragTouches)
{
    Bind(10);
    Show();
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, At(PlaceOf(3)));
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, MK_LBUTTON, At(PlaceOf(5)));
    EXPECT_THAT(Selected(), ElementsAre(3, 4, 5));
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, MK_LBUTTON, At(PlaceOf(2)));
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
    SendMessageW(m_window.Handle(), WM_LBUTTONUP, 0, At(PlaceOf(2)));
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, 0, At(PlaceOf(7)));
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
    EXPECT_EQ(m_grid->CurrentRow(), 2);
}

TEST_F(Win32Grids, RaiseOneRowColChangeForOneAct)
{
    Bind(40);
    Show();
    m_grid->SetFocus();
    Events();
    std::vector<std::int32_t> selectedThen;
    m_grid->RowColChange.Connect([&] {
        m_events.emplace_back("RowColChange");
        selectedThen = Selected();
    });
    Press(VK_DOWN);
    EXPECT_THAT(Events(), ElementsAre("RowColChange"));
    EXPECT_THAT(selectedThen, ElementsAre(1));
    Press(VK_SHIFT, VK_DOWN);
    EXPECT_THAT(Events(), ElementsAre("RowColChange"));
    EXPECT_THAT(selectedThen, ElementsAre(1, 2));
    Type(u" ");
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Win32Grids, SelectTheCurrentRowAndNoOtherInWholeRowMode)
{
    Bind(10);
    m_grid->SetSelectionMode(SelectionMode::WholeRow);
    Show();
    const auto expect = [this](std::int32_t row) {
        EXPECT_EQ(m_grid->CurrentRow(), row);
        EXPECT_THAT(Selected(), ElementsAre(row));
    };
    Click(3);
    expect(3);
    Click(3, MK_CONTROL);
    expect(3);
    Click(5, MK_SHIFT);
    expect(5);
    Press(VK_CONTROL, VK_DOWN);
    expect(6);
}

TEST_F(Win32Grids, KeepScrollPlaceAndCurrentRowWhenBoundAgain)
{
    auto records = Bind(1000);
    m_grid->SetColWidth(0, 9000);
    Show();
    for (int page = 0; page < 5; ++page)
        SendMessageW(m_window.Handle(), WM_VSCROLL, SB_PAGEDOWN, 0);
    SendMessageW(m_window.Handle(), WM_HSCROLL, SB_LINEDOWN, 0);
    const std::int32_t top = m_grid->TopRow();
    const int across = m_view->Geometry().Across();
    EXPECT_GT(top, 30);
    EXPECT_GT(across, 0);
    Click(top + 4);
    Events();
    for (const bool isChanged : {false, true}) {
        if (isChanged)
            records->Touch();
        Rebind(records);
        Frame();
        EXPECT_EQ(m_view->Geometry().TopRow(), top);
        EXPECT_EQ(m_view->Geometry().Across(), across);
        EXPECT_EQ(m_grid->CurrentRow(), top + 4);
    }
    records->Delete(5);
    Rebind(records);
    EXPECT_EQ(m_view->Geometry().TopRow(), top - 1);
    EXPECT_EQ(m_grid->CurrentRow(), top + 3);
    EXPECT_THAT(Selected(), ElementsAre(top + 3));
    EXPECT_THAT(Events(), IsEmpty());
}

/// A row that was made current before the window was shown was scrolled back into sight by the first
/// scrolling after it.
TEST_F(Win32Grids, ScrollToARowBeforeTheFirstPainting)
{
    Bind(kMillion);
    m_grid->SetCurrentRow(1);
    ShowWindow(GetParent(m_window.Handle()), SW_SHOW);
    m_view->ScrollTo(1000);
    EXPECT_GT(m_grid->TopRow(), 1);
}

TEST_F(Win32Grids, BringTheCurrentRowIntoSight)
{
    Bind(kMillion);
    m_grid->SetCurrentRow(kMillion / 2);
    Show();
    EXPECT_TRUE(IsInSight(kMillion / 2));
    m_grid->SetCurrentRow(1);
    EXPECT_TRUE(IsInSight(1));
    // Made current before the window gets its size.
    ShowWindow(GetParent(m_window.Handle()), SW_HIDE);
    m_grid->SetCurrentRow(kMillion);
    SetWindowPos(m_window.Handle(), nullptr, 0, 0, 300, 100, SWP_NOZORDER | SWP_NOMOVE);
    Show();
    EXPECT_TRUE(IsInSight(kMillion));
}

TEST_F(Win32Grids, KeepTheirAnchorWhileTheyAreBoundAgain)
{
    auto records = Bind(10);
    Show();
    m_grid->RowColChange.Connect([&] {
        records->Touch();
        Rebind(records);
    });
    Click(2);
    Click(5, MK_SHIFT);
    Click(7, MK_SHIFT);
    EXPECT_THAT(Selected(), ElementsAre(2, 3, 4, 5, 6, 7));
}

TEST_F(Win32Grids, ReachFromNoRowThatIsGone)
{
    m_grid->SetRows(10);
    Show();
    Click(8);
    Click(2, MK_SHIFT);
    m_grid->SetRows(4);
    Click(3, MK_SHIFT);
    EXPECT_THAT(Selected(), ElementsAre(2, 3));

    // A drag that is under way forgets them, too.
    m_grid->SetRows(10);
    Click(9);
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, At(PlaceOf(2)));
    m_grid->SetRows(5);
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, MK_LBUTTON | MK_CONTROL, At(PlaceOf(3)));
    EXPECT_THAT(Selected(), ElementsAre(2, 3));
}

TEST_F(Win32Grids, TellTheRowOfADoubleClick)
{
    Bind(10);
    Show();
    DoubleClick(PlaceOf(3));
    EXPECT_THAT(Events(), ElementsAre("RowColChange", "GotFocus", "DblClick 3"));
    DoubleClick(PlaceOf(0));
    EXPECT_THAT(Events(), ElementsAre("DblClick 0"));
    EXPECT_EQ(m_grid->CurrentRow(), 3);
    DoubleClick({5, m_view->Geometry().Client().cy - 1});
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Win32Grids, ResizeAColumnByItsBorderAndFitItByADoubleClick)
{
    Bind(10);
    Show();
    const RECT header = m_view->CellRect(0, 1);
    const POINT border{header.right - 1, header.bottom / 2};
    const POINT target{border.x + 40, border.y};
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, At(border));
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, MK_LBUTTON, At(target));
    SendMessageW(m_window.Handle(), WM_LBUTTONUP, 0, At(target));
    EXPECT_EQ(m_grid->ColWidth(1), kDefaultColWidth + m_view->Geometry().TwipsFromPixels(40));
    EXPECT_EQ(m_grid->ColWidth(0), kDefaultColWidth);
    EXPECT_EQ(m_grid->ColWidth(2), kDefaultColWidth);
    Events();
    DoubleClick(target);
    EXPECT_EQ(m_grid->ColWidth(1), m_view->FittingWidth(1));
    EXPECT_THAT(Events(), IsEmpty());
    // Pressed and let go where it is.
    m_grid->SetColWidth(0, 1237);
    const RECT first = m_view->CellRect(0, 0);
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, At({first.right, 3}));
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, MK_LBUTTON, At({first.right, 3}));
    SendMessageW(m_window.Handle(), WM_LBUTTONUP, 0, At({first.right, 3}));
    EXPECT_EQ(m_grid->ColWidth(0), 1237);
}

TEST_F(Win32Grids, FollowTheResolution)
{
    Bind(10);
    Win32GridGeometry geometry(*m_grid);
    geometry.SetSize({400, 300});
    m_grid->SetColWidth(0, 1440);
    m_grid->SetColWidth(1, 1);
    geometry.SetMetrics(16, 96);
    EXPECT_EQ(geometry.ColumnWidth(0), 96);
    // A column that has a width can be seen.
    EXPECT_EQ(geometry.ColumnWidth(1), 12);
    EXPECT_EQ(geometry.RowHeight(), 23);
    geometry.SetMetrics(32, 192);
    EXPECT_EQ(geometry.ColumnWidth(0), 192);
    EXPECT_EQ(geometry.ColumnWidth(1), 24);
    EXPECT_EQ(geometry.RowHeight(), 46);
    EXPECT_EQ(geometry.TwipsFromPixels(192), 1440);
    EXPECT_EQ(geometry.BorderAt(192 + 7), 0);
    EXPECT_EQ(geometry.BorderAt(192 - 20), -1);
    EXPECT_EQ(geometry.Page(), (300 - 46) / 46);
    EXPECT_EQ(geometry.RowAt(46), 1);
    EXPECT_EQ(geometry.RowAt(45), -1);
    EXPECT_EQ(geometry.ColumnAt(193), 1);
}

TEST_F(Win32Grids, LeaveARowToItsHandlerWhileTheButtonIsDown)
{
    Bind(10);
    m_grid->SetCurrentRow(2);
    Show();
    m_grid->RowColChange.Connect([this] {
        m_events.emplace_back("RowColChange");
        if (m_grid->CurrentRow() != 2)
            m_grid->SetCurrentRow(2);
    });
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, At(PlaceOf(5)));
    EXPECT_THAT(Events(), ElementsAre("RowColChange", "RowColChange", "GotFocus"));
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, MK_LBUTTON, At(PlaceOf(5)));
    SendMessageW(m_window.Handle(), WM_TIMER, 1, 0);
    SendMessageW(m_window.Handle(), WM_LBUTTONUP, 0, At(PlaceOf(5)));
    EXPECT_THAT(Events(), IsEmpty());
    EXPECT_EQ(m_grid->CurrentRow(), 2);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(Win32Grids, ScrollWhileADragIsHeldOutside)
{
    Bind(1000);
    Show();
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, At(PlaceOf(2)));
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, MK_LBUTTON, At({10, 2000}));
    const std::int32_t reached = m_grid->CurrentRow();
    EXPECT_TRUE(IsInSight(reached));
    SendMessageW(m_window.Handle(), WM_TIMER, 1, 0);
    EXPECT_EQ(m_grid->CurrentRow(), reached + 1);
    EXPECT_EQ(m_grid->SelectedRowCount(), reached);
    // What takes the mouse away ends the drag.
    ReleaseCapture();
    SendMessageW(m_window.Handle(), WM_TIMER, 1, 0);
    EXPECT_EQ(m_grid->CurrentRow(), reached + 1);
}

TEST_F(Win32Grids, ChooseTheRowWhoseNameIsTyped)
{
    auto records = Bind(40);
    records->names = {{u"a", 4}, {u"ab", 30}, {u"a b", 7}, {u"\U0001F528", 9}};
    Show();
    m_grid->SetFocus();
    Events();
    Type(u"ab");
    EXPECT_EQ(m_grid->CurrentRow(), 31);
    EXPECT_TRUE(IsInSight(31));
    EXPECT_THAT(Selected(), ElementsAre(31));
    EXPECT_THAT(Events(), ElementsAre("RowColChange", "RowColChange"));
    Press(VK_UP);
    Type(u"a b");
    EXPECT_EQ(m_grid->CurrentRow(), 8);
    Press(VK_UP);
    Type(u"\U0001F528");
    EXPECT_EQ(m_grid->CurrentRow(), 10);
    EXPECT_THAT(records->searched, ElementsAre(u"a", u"ab", u"a", u"a ", u"a b", u"\U0001F528"));
}

TEST_F(Win32Grids, LeaveTheirKeysToTheWindow)
{
    Bind(10);
    Show();
    Click(2);
    Events();
    for (const auto key : std::initializer_list<WPARAM>{VK_RETURN, VK_TAB, VK_ESCAPE, VK_F2, VK_DELETE})
        EXPECT_FALSE(Wants(key)) << key;
    const LRESULT code = SendMessageW(m_window.Handle(), WM_GETDLGCODE, 0, 0);
    EXPECT_EQ(code, DLGC_WANTARROWS | DLGC_WANTCHARS);
    for (const auto key : std::initializer_list<WPARAM>{VK_RETURN, VK_ESCAPE, VK_F2, VK_DELETE})
        Press(key);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Win32Grids, ShowANoticeInPlaceOfTheirRows)
{
    Bind(10);
    Show();
    Click(4);
    const POINT place = PlaceOf(3);
    m_grid->SetNotice(u"The catalogue cannot be read.");
    Events();
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, At(place));
    SendMessageW(m_window.Handle(), WM_LBUTTONUP, MK_SHIFT, At(place));
    Press(VK_DOWN);
    Frame();
    EXPECT_EQ(m_grid->CurrentRow(), 4);
    EXPECT_EQ(m_grid->MouseRow(), -1);
    m_grid->SetNotice(u"");
    EXPECT_EQ(m_grid->CurrentRow(), 4);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Win32Grids, SpeakToScreenReaders)
{
    Bind(10);
    m_grid->SetColHidden(2, true);
    Show();
    m_grid->SetFocus();
    m_grid->SetCurrentRow(2);
    m_grid->SelectRange(1, 0, 3, 1);
    IAccessible* const list = MakeGridAccessible(m_view);
    ASSERT_NE(list, nullptr);
    LONG count = 0;
    EXPECT_EQ(list->get_accChildCount(&count), S_OK);
    EXPECT_EQ(count, 10);
    VARIANT item{};
    item.vt = VT_I4;
    item.lVal = 2;
    BSTR name = nullptr;
    EXPECT_EQ(list->get_accName(item, &name), S_OK);
    EXPECT_EQ(FromWide(name), u"Field 0: 1.0, Field 1: 1.1");
    SysFreeString(name);
    VARIANT answer{};
    EXPECT_EQ(list->get_accRole(item, &answer), S_OK);
    EXPECT_EQ(answer.lVal, ROLE_SYSTEM_LISTITEM);
    EXPECT_EQ(list->get_accState(item, &answer), S_OK);
    EXPECT_NE(answer.lVal & STATE_SYSTEM_SELECTED, 0);
    EXPECT_NE(answer.lVal & STATE_SYSTEM_FOCUSED, 0);
    EXPECT_EQ(list->get_accFocus(&answer), S_OK);
    EXPECT_EQ(answer.lVal, 2);
    EXPECT_EQ(list->get_accSelection(&answer), S_OK);
    EXPECT_EQ(answer.vt, VT_UNKNOWN);
    VariantClear(&answer);
    item.lVal = 5;
    EXPECT_EQ(list->accSelect(SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION, item), S_OK);
    EXPECT_EQ(m_grid->CurrentRow(), 5);
    EXPECT_THAT(Selected(), ElementsAre(5));
    item.lVal = 11;
    EXPECT_EQ(list->get_accName(item, &name), E_INVALIDARG);
    m_grid.reset();
    EXPECT_EQ(list->get_accChildCount(&count), CO_E_OBJNOTCONNECTED);
    list->Release();
}

TEST_F(Win32Grids, AreNamedByTheLabelInFrontOfThem)
{
    Show();
    const TestWindow label(L"STATIC", GetParent(m_window.Handle()), WS_CHILD | WS_VISIBLE, {0, 22, 200, 30});
    SetWindowPos(m_window.Handle(), label.Handle(), 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    IAccessible* const list = MakeGridAccessible(m_view);
    ASSERT_NE(list, nullptr);
    VARIANT self{};
    self.vt = VT_I4;
    const auto nameBehind = [&](const wchar_t* caption) {
        SetWindowTextW(label.Handle(), caption);
        BSTR name = nullptr;
        list->get_accName(self, &name);
        const std::u16string read = name != nullptr ? FromWide(name) : std::u16string();
        SysFreeString(name);
        return read;
    };
    EXPECT_EQ(nameBehind(L"&Products"), u"Products");
    EXPECT_EQ(nameBehind(L"Nuts && b&olts"), u"Nuts & bolts");
    EXPECT_EQ(nameBehind(L""), u"");
    list->Release();
}

TEST_F(Win32Grids, ChooseNoRowForAReaderThatIsGoneOnceTheyHaveTheFocus)
{
    m_grid->SetRows(6);
    Show();
    IAccessible* const list = MakeGridAccessible(m_view);
    ASSERT_NE(list, nullptr);
    VARIANT item{};
    item.vt = VT_I4;
    item.lVal = 5;
    constexpr LONG kChoose = SELFLAG_TAKEFOCUS | SELFLAG_TAKESELECTION;
    m_box.LostFocus.Connect([this] { m_grid->SetRows(3); });
    EXPECT_TRUE(FAILED(list->accSelect(kChoose, item)));
    EXPECT_EQ(m_grid->CurrentRow(), -1);
    EXPECT_THAT(Selected(), IsEmpty());
    m_box.SetFocus();
    m_box.LostFocus.Connect([this] { m_grid.reset(); });
    item.lVal = 1;
    EXPECT_TRUE(FAILED(list->accSelect(kChoose, item)));
    list->Release();
}

TEST_F(Win32Grids, CopyTheCellThatWasClickedLast)
{
    Bind(5);
    Show();
    const Held control(VK_CONTROL);
    SendMessageW(m_window.Handle(), WM_KEYDOWN, VK_DOWN, 0);
    Press('C');
    EXPECT_EQ(Win32Clipboard::Text(m_window.Handle()), u"0.0");
    Click(3, 0, 2);
    Press(VK_INSERT);
    EXPECT_EQ(Win32Clipboard::Text(m_window.Handle()), u"2.2");
}

TEST_F(Win32Grids, StopADragWhenTheirWindowIsDisabled)
{
    Bind(9);
    Show();
    m_grid->RowColChange.Connect([this] { EnableWindow(GetParent(m_window.Handle()), FALSE); });
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, At(PlaceOf(2)));
    SendMessageW(m_window.Handle(), WM_MOUSEMOVE, MK_LBUTTON, At(PlaceOf(5)));
    EXPECT_EQ(m_grid->CurrentRow(), 2);
    EXPECT_THAT(Selected(), ElementsAre(2));
    EXPECT_NE(GetCapture(), m_window.Handle());
}

TEST_F(Win32Grids, TellNoMoreOfALongTextThanAScreenHolds)
{
    Win32GridTips tips;
    tips.Begin(m_window.Handle());
    tips.Show({0, 0, 10, 10}, std::u16string(1'000'000, u'x'));
    EXPECT_GE(tips.Text().size(), 1000U);
    EXPECT_LE(tips.Text().size(), 4000U);
    tips.Show({0, 0, 10, 10}, u"short");
    EXPECT_EQ(tips.Text(), u"short");
}

TEST_F(Win32Grids, MayEndBeforeTheirWindow)
{
    Bind(5);
    Show();
    m_grid.reset();
    Frame();
    Press(VK_DOWN);
    SendMessageW(m_window.Handle(), WM_LBUTTONDOWN, MK_LBUTTON, At({5, 40}));
    EXPECT_EQ(m_view->MouseRow(), -1);
}

TEST_F(Win32Grids, MayEndAfterTheirWindow)
{
    Bind(5);
    Show();
    m_window.End();
    m_grid->SetCurrentRow(2);
    m_grid->FitColumns();
    EXPECT_EQ(m_grid->MouseRow(), -1);
    EXPECT_EQ(m_view->Window(), nullptr);
}

TEST_F(Win32Grids, MayEndInTheirOwnHandlers)
{
    Bind(5);
    Show();
    m_grid->RowColChange.Connect([this] {
        m_grid.reset();
        m_window.End();
    });
    Click(2);
    EXPECT_EQ(m_view->Window(), nullptr);
}

TEST_F(Win32Grids, PaintNothingUntilTheLastPauseEnds)
{
    auto records = Bind(10);
    Show();
    {
        const RedrawPause outer(*m_grid);
        {
            const RedrawPause inner(*m_grid);
            records->asked = 0;
            Frame();
        }
        Frame();
        EXPECT_EQ(records->asked, 0);
    }
    Frame();
    EXPECT_GT(records->asked, 0);
}

TEST_F(Win32GridDropDowns, OpenWithOneClick)
{
    Click(2, 0, 1);
    EXPECT_THAT(Entries(), ElementsAre(u" ", u"Name", u"Part", u"Price"));
    EXPECT_EQ(m_grid->CurrentRow(), 2);
    EXPECT_THAT(Events(), ElementsAre("RowColChange", "GotFocus"));
    PickWithMouse(3);
    EXPECT_EQ(m_view->OpenDropDown(), nullptr);
    EXPECT_EQ(m_grid->CellText(2, 1), u"3");
    EXPECT_THAT(Events(), ElementsAre("CellChange 2,1"));
    EXPECT_TRUE(m_grid->HasFocus());
    Click(2, 0, 0);
    EXPECT_EQ(m_view->OpenDropDown(), nullptr);
}

TEST_F(Win32GridDropDowns, StayClosedWhenTheClickHasDisabledTheirWindow)
{
    m_grid->RowColChange.Connect([this] { EnableWindow(GetParent(m_window.Handle()), FALSE); });
    Click(2, 0, 1);
    EXPECT_EQ(m_view->OpenDropDown(), nullptr);
}

TEST_F(Win32GridDropDowns, OpenWithEachOfTheirKeys)
{
    m_grid->SetFocus();
    const std::vector<std::function<void()>> keys = {
        [this] { Type(u" "); },       [this] { Press(VK_F4); },          [this] { Press(VK_F2); },
        [this] { Press(VK_RETURN); }, [this] { PressWithAlt(VK_DOWN); }, [this] { PressWithAlt(VK_UP); },
    };
    for (std::size_t each = 0; each < keys.size(); ++each) {
        m_grid->SetCurrentRow(-1);
        EXPECT_FALSE(Wants(VK_RETURN));
        keys[each]();
        EXPECT_EQ(m_view->OpenDropDown(), nullptr) << each;
        m_grid->SetCurrentRow(3);
        EXPECT_TRUE(Wants(VK_RETURN));
        EXPECT_FALSE(Wants(VK_ESCAPE));
        Events();
        keys[each]();
        ASSERT_NE(m_view->OpenDropDown(), nullptr) << each;
        EXPECT_TRUE(Wants(VK_ESCAPE));
        EXPECT_EQ(GetCapture(), m_view->OpenDropDown());
        Press(VK_ESCAPE);
        EXPECT_EQ(m_view->OpenDropDown(), nullptr) << each;
        EXPECT_EQ(m_grid->CurrentRow(), 3);
        EXPECT_TRUE(m_grid->HasFocus());
        EXPECT_EQ(GetCapture(), nullptr);
        EXPECT_THAT(Events(), IsEmpty());
    }
}

TEST_F(Win32GridDropDowns, StayOpenWhenAltIsLetGo)
{
    m_grid->SetFocus();
    m_grid->SetCurrentRow(1);
    EXPECT_EQ(MenusAfterAlt(m_window.Handle(), VK_DOWN), 0);
    EXPECT_NE(m_view->OpenDropDown(), nullptr);
    EXPECT_EQ(MenusAfterAlt(m_window.Handle(), VK_UP), 0);
    EXPECT_EQ(m_view->OpenDropDown(), nullptr);
}

TEST_F(Win32GridDropDowns, KeepTheirMarkAboveAMouseThatRests)
{
    m_grid->SetFocus();
    m_grid->SetCurrentRow(1);
    const auto entryOf = [this](WPARAM index) {
        RECT item{};
        SendMessageW(m_view->OpenDropDown(), LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(&item));
        return POINT{(item.left + item.right) / 2, (item.top + item.bottom) / 2};
    };
    const auto marked = [this] { return SendMessageW(m_view->OpenDropDown(), LB_GETCURSEL, 0, 0); };
    Press(VK_F4);
    POINT place = entryOf(2);
    POINT onScreen = place;
    ClientToScreen(m_view->OpenDropDown(), &onScreen);
    Press(VK_ESCAPE);
    SetCursorPos(onScreen.x, onScreen.y);

    Press(VK_F4);
    const LRESULT chosen = marked();
    ASSERT_NE(chosen, 2);
    SendMessageW(m_view->OpenDropDown(), WM_MOUSEMOVE, 0, At(place));
    EXPECT_EQ(marked(), chosen);
    ++place.x;
    SendMessageW(m_view->OpenDropDown(), WM_MOUSEMOVE, 0, At(place));
    EXPECT_EQ(marked(), 2);
    Press(VK_ESCAPE);
}

TEST_F(Win32GridDropDowns, ChooseWithLettersAndEnter)
{
    m_grid->SetFocus();
    m_grid->SetCurrentRow(1);
    Events();
    Type(u"pr");
    Press(VK_RETURN);
    EXPECT_EQ(m_view->OpenDropDown(), nullptr);
    EXPECT_EQ(m_grid->DisplayText(1, 1), u"Price");
    EXPECT_THAT(Events(), ElementsAre("CellChange 1,1"));
    Press(VK_F4);
    Press(VK_UP);
    Press(VK_F4);
    EXPECT_EQ(m_grid->DisplayText(1, 1), u"Part");
    EXPECT_TRUE(m_grid->HasFocus());
}

TEST_F(Win32GridDropDowns, LeadReadersBackToTheirRow)
{
    m_grid->SetFocus();
    m_grid->SetCurrentRow(3);
    static std::vector<std::pair<HWND, LONG>> told;
    HWINEVENTHOOK const hook = SetWinEventHook(
        EVENT_OBJECT_FOCUS, EVENT_OBJECT_FOCUS, nullptr,
        [](HWINEVENTHOOK, DWORD, HWND window, LONG, LONG child, DWORD, DWORD) {
            told.emplace_back(window, child);
        },
        GetCurrentProcessId(), GetCurrentThreadId(), WINEVENT_OUTOFCONTEXT);
    for (const WPARAM key : {WPARAM{VK_ESCAPE}, WPARAM{VK_RETURN}}) {
        Press(VK_F4);
        Frame();
        told.clear();
        Press(key);
        Frame();
        EXPECT_THAT(told, ElementsAre(std::pair(m_window.Handle(), LONG{3}))) << key;
    }
    UnhookWinEvent(hook);
}

TEST_F(Win32GridDropDowns, CloseWithoutAChoiceWhenThePressIsElsewhere)
{
    m_grid->SetCurrentRow(2);
    Press(VK_F4);
    Events();
    SendMessageW(m_view->OpenDropDown(), WM_LBUTTONDOWN, MK_LBUTTON, At({-50, -50}));
    EXPECT_EQ(m_view->OpenDropDown(), nullptr);
    EXPECT_THAT(Events(), IsEmpty());
}

TEST_F(Win32GridDropDowns, CloseWhenTheGridIsFilledAnewOrDisabledOrEnds)
{
    m_grid->SetCurrentRow(2);
    Press(VK_F4);
    m_grid->SetRows(2);
    EXPECT_EQ(m_view->OpenDropDown(), nullptr);
    m_grid->SetCurrentRow(1);
    Press(VK_F4);
    ASSERT_NE(m_view->OpenDropDown(), nullptr);
    m_grid->SetEnabled(false);
    EXPECT_EQ(m_view->OpenDropDown(), nullptr);
    m_grid->SetEnabled(true);
    Press(VK_F4);
    HWND const list = m_view->OpenDropDown();
    EXPECT_NE(list, nullptr);
    m_window.End();
    EXPECT_FALSE(IsWindow(list));
}

TEST_F(Win32GridDropDowns, AreMarkedAndPaintedWithTheirSigns)
{
    m_grid->SetCellMark(2, 1, u"<b> is no price");
    m_grid->SetCellText(1, 0, u"a\r\nb\tc");
    Frame();
    EXPECT_GT(m_view->FittingWidth(1), 0);
    IAccessible* const list = MakeGridAccessible(m_view);
    ASSERT_NE(list, nullptr);
    VARIANT item{};
    item.vt = VT_I4;
    item.lVal = 2;
    BSTR reason = nullptr;
    EXPECT_EQ(list->get_accDescription(item, &reason), S_OK);
    EXPECT_EQ(FromWide(reason), u"<b> is no price");
    SysFreeString(reason);
    list->Release();
}

} // namespace KestrinProductEditor
