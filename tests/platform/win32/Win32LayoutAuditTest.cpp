// SPDX-License-Identifier: MIT
#include "platform/win32/Win32LayoutAudit.h"

#include "platform/win32/Win32Focus.h"
#include "platform/win32/Win32Font.h"
#include "platform/win32/Win32Grid.h"
#include "platform/win32/Win32Splitter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <commctrl.h>

#include <map>
#include <string>

namespace KestrinProductEditor {

namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;

/// Only that fault, of that control.
[[nodiscard]] auto OnlyFault(LayoutFaultKind kind, const std::string& control)
{
    return ElementsAre(AllOf(Field(&LayoutFault::kind, kind), Field(&LayoutFault::control, control)));
}

struct Place
{
    int left;
    int top;
    int width;
    int height;
};

/// A window without a layout: every control stands where it was put. The Tab key follows the order in which
/// they were put there.
class Win32LayoutAudit : public testing::Test
{
protected:
    Win32LayoutAudit()
    {
        Win32GridView::Register();
        Win32Splitter::Register();
        m_window = PrvMake(L"STATIC", nullptr, L"", WS_POPUP, {0, 0, 400, 300});
    }
    ~Win32LayoutAudit() override { DestroyWindow(m_window); }

    HWND Put(const char* name, const wchar_t* kind, Place place, const wchar_t* text = L"", DWORD style = 0)
    {
        return PutIn(m_window, name, kind, place, text, style);
    }
    HWND PutIn(HWND parent, const char* name, const wchar_t* kind, Place place, const wchar_t* text = L"",
               DWORD style = 0)
    {
        const HWND control = PrvMake(kind, parent, text, WS_CHILD | WS_VISIBLE | style, place);
        SetWindowPos(control, HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(m_font.Handle()), FALSE);
        m_names[control] = name;
        return control;
    }
    HWND PutBox(const char* name, Place place) { return Put(name, L"EDIT", place, L"", WS_TABSTOP); }
    /// A part of the window, which is no control itself.
    HWND PutPane(Place place)
    {
        const HWND pane = PrvMake(L"ScrollBar", m_window, L"", WS_CHILD | WS_VISIBLE | SBS_SIZEBOX, place);
        SetWindowLongW(pane, GWL_EXSTYLE, WS_EX_CONTROLPARENT);
        return pane;
    }

    [[nodiscard]] LayoutFaults Faults() const
    {
        ShowWindow(m_window, SW_SHOWNA);
        return AuditLayout(m_window, [this](HWND control) {
            const auto named = m_names.find(control);
            return named == m_names.end() ? std::string() : named->second;
        });
    }

    HWND m_window = nullptr;
    Win32Font m_font{USER_DEFAULT_SCREEN_DPI};

private:
    static HWND PrvMake(const wchar_t* kind, HWND parent, const wchar_t* text, DWORD style, Place place)
    {
        return CreateWindowW(kind, text, style, place.left, place.top, place.width, place.height, parent,
                             nullptr, nullptr, nullptr);
    }

    std::map<HWND, std::string> m_names;
};

/// Answers for a window what colours its labels have.
class ScopedInk
{
public:
    ScopedInk(HWND window, COLORREF ink) : m_window(window)
    {
        SetWindowSubclass(window, &PrvProcedure, 1, ink);
    }
    ScopedInk(const ScopedInk&) = delete;
    ScopedInk& operator=(const ScopedInk&) = delete;
    ~ScopedInk() { RemoveWindowSubclass(m_window, &PrvProcedure, 1); }

private:
    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR /*id*/, DWORD_PTR ink)
    {
        if (message != WM_CTLCOLORSTATIC && message != WM_CTLCOLOREDIT)
            return DefSubclassProc(window, message, wParam, lParam);
        SetTextColor(reinterpret_cast<HDC>(wParam), static_cast<COLORREF>(ink));
        SetBkColor(reinterpret_cast<HDC>(wParam), RGB(0xF0, 0xF0, 0xF0));
        return reinterpret_cast<LRESULT>(GetStockObject(WHITE_BRUSH));
    }

    HWND m_window;
};

} // namespace

TEST_F(Win32LayoutAudit, PassesAWindowWithoutFaults)
{
    Put("lblName", L"STATIC", {10, 10, 100, 20}, L"&Name");
    PutBox("txtName", {120, 10, 100, 24});
    Put("cmdOk", L"BUTTON", {120, 50, 100, 24}, L"OK", WS_TABSTOP);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(Win32LayoutAudit, FindsALabelThatIsTooNarrow)
{
    Put("lblName", L"STATIC", {10, 10, 30, 20}, L"Name of the product");
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::ClippedText, "lblName"));
}

TEST_F(Win32LayoutAudit, FindsALabelThatIsTooLow)
{
    Put("lblName", L"STATIC", {10, 10, 100, 5}, L"Name");
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::ClippedText, "lblName"));
}

TEST_F(Win32LayoutAudit, FindsAWrappedLabelThatIsTooLow)
{
    const HWND label = Put("lblTip", L"STATIC", {10, 10, 100, 25},
                           L"A tip that takes some lines where there is room for one");
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::ClippedText, "lblTip"));
    MoveWindow(label, 10, 10, 100, 200, FALSE);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(Win32LayoutAudit, LetsAHeadingEndInAnEllipsis)
{
    Put("lblProductView", L"STATIC", {10, 10, 30, 20}, L"Name of the product", SS_ENDELLIPSIS);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(Win32LayoutAudit, FindsAButtonThatIsTooNarrow)
{
    Put("cmdClose", L"BUTTON", {10, 10, 40, 24}, L"Save && Close");
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::ClippedText, "cmdClose"));
}

TEST_F(Win32LayoutAudit, FindsACheckBoxThatIsTooNarrow)
{
    Put("chkAppend", L"BUTTON", {10, 10, 40, 24}, L"Add to the list", BS_AUTOCHECKBOX);
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::ClippedText, "chkAppend"));
}

TEST_F(Win32LayoutAudit, FindsABoxThatIsTooLow)
{
    PutBox("txtName", {10, 10, 100, 8});
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::ClippedText, "txtName"));
}

TEST_F(Win32LayoutAudit, FindsAToolThatIsHalfOnItsBar)
{
    const HWND bar = Put("tools", TOOLBARCLASSNAMEW, {10, 10, 300, 40}, L"",
                         TBSTYLE_LIST | CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER);
    SendMessageW(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    TBBUTTON button = {};
    button.iBitmap = I_IMAGENONE;
    button.idCommand = 1;
    button.fsState = TBSTATE_ENABLED;
    button.fsStyle = BTNS_AUTOSIZE;
    button.iString = reinterpret_cast<INT_PTR>(L"Import Products");
    SendMessageW(bar, TB_ADDBUTTONSW, 1, reinterpret_cast<LPARAM>(&button));
    EXPECT_THAT(Faults(), IsEmpty());
    MoveWindow(bar, 10, 10, 30, 40, FALSE);
    EXPECT_THAT(Faults(), Contains(Field(&LayoutFault::control, "tools")));
    SendMessageW(bar, TB_HIDEBUTTON, 1, TRUE);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(Win32LayoutAudit, FindsAColumnTitleThatIsTooWide)
{
    Win32Focus focus(m_window);
    Win32Grid grid(Put("flexGrid", Win32GridView::kClassName, {10, 10, 300, 200}), focus);
    grid.SetRows(2);
    grid.SetCols(1);
    grid.SetFixedRows(1);
    grid.SetCellText(0, 0, u"Unit Price");
    grid.SetColWidth(0, 2000);
    EXPECT_THAT(Faults(), IsEmpty());
    grid.SetColWidth(0, 300);
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::ColumnTitle, "flexGrid"));
}

TEST_F(Win32LayoutAudit, FindsControlsThatCoverEachOther)
{
    PutBox("txtName", {10, 10, 100, 30});
    PutBox("txtPartNum", {10, 39, 100, 30});
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::Overlap, "txtName"));
}

TEST_F(Win32LayoutAudit, LetsControlsStandOnAFrame)
{
    PutBox("txtName", {10, 10, 100, 30});
    Put("fraBorder", L"STATIC", {0, 0, 200, 200}, L"", SS_ETCHEDFRAME);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(Win32LayoutAudit, DoesNotSeeWhatIsHidden)
{
    PutBox("txtName", {10, 10, 100, 30});
    ShowWindow(PutBox("txtPartNum", {10, 39, 100, 8}), SW_HIDE);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(Win32LayoutAudit, FindsAControlOutsideTheWindow)
{
    PutBox("txtName", {350, 10, 100, 30});
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::Outside, "txtName"));
}

TEST_F(Win32LayoutAudit, FindsAControlThatItsPaneCutsOff)
{
    const HWND pane = PutPane({10, 10, 100, 100});
    PutIn(pane, "txtName", L"EDIT", {50, 10, 100, 30});
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::Outside, "txtName"));
}

TEST_F(Win32LayoutAudit, FindsAPaleLabel)
{
    const ScopedInk pale(m_window, RGB(0xB0, 0xB0, 0xB0));
    const HWND label = Put("lblName", L"STATIC", {10, 10, 100, 20}, L"Name");
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::Contrast, "lblName"));
    // What cannot be used may be pale.
    EnableWindow(label, FALSE);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(Win32LayoutAudit, FindsABoxWithPaleText)
{
    const ScopedInk pale(m_window, RGB(0xB0, 0xB0, 0xB0));
    PutBox("txtName", {10, 10, 100, 30});
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::Contrast, "txtName"));
}

TEST_F(Win32LayoutAudit, FindsATabOrderThatGoesUp)
{
    PutBox("txtPartNum", {10, 50, 100, 30});
    PutBox("txtName", {10, 10, 100, 30});
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::TabOrder, "txtPartNum"));
}

TEST_F(Win32LayoutAudit, FindsATabOrderAgainstTheDirectionOfReading)
{
    PutBox("txtName", {10, 10, 100, 30});
    const HWND other = PutBox("txtPartNum", {120, 10, 100, 30});
    EXPECT_THAT(Faults(), IsEmpty());
    SetWindowPos(other, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::TabOrder, "txtPartNum"));
    // Seen in a mirror it is right.
    SetWindowLongW(m_window, GWL_EXSTYLE, GetWindowLongW(m_window, GWL_EXSTYLE) | WS_EX_LAYOUTRTL);
    MoveWindow(other, 10, 10, 100, 30, FALSE);
    MoveWindow(GetWindow(other, GW_HWNDNEXT), 120, 10, 100, 30, FALSE);
    EXPECT_THAT(Faults(), IsEmpty());
}

TEST_F(Win32LayoutAudit, FindsATabOrderThatJumpsBetweenPanes)
{
    PutBox("txtList", {10, 10, 100, 30});
    const HWND upperRight = PutBox("txtName", {200, 10, 100, 30});
    const HWND lowerLeft = PutBox("txtFilter", {10, 60, 100, 30});
    EXPECT_THAT(Faults(), IsEmpty());
    Put("splitter", Win32Splitter::kClassName, {150, 10, 8, 200});
    EXPECT_THAT(Faults(), OnlyFault(LayoutFaultKind::TabOrder, "txtName"));
    SetWindowPos(upperRight, lowerLeft, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    EXPECT_THAT(Faults(), IsEmpty());
}

} // namespace KestrinProductEditor
