// SPDX-License-Identifier: MIT
#include "platform/win32/Win32GridView.h"

#include "platform/win32/Win32Canvas.h"
#include "platform/win32/Win32ClickTarget.h"
#include "platform/win32/Win32Clipboard.h"
#include "platform/win32/Win32GridAccessible.h"
#include "platform/win32/Win32Keys.h"
#include "platform/win32/Win32WindowClass.h"

#include <oleacc.h>
#include <windowsx.h>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

// Up to this many rows the fitting width looks at all of them.
constexpr std::int32_t kFewRows = 500;
// A fitted column is never wider than the view, and this many characters where that is more.
constexpr int kWidestFit = 60;
// Letters that follow each other so soon are one name; milliseconds.
constexpr ULONGLONG kTypingPause = 1000;
constexpr UINT_PTR kDragTimer = 1;
constexpr UINT kDragPause = 50; // milliseconds between the rows that a drag out of the list scrolls by
constexpr int kSidewaysStep = 40;

[[nodiscard]] HeldKeys HeldWithKey()
{
    return {.shift = IsDown(VK_SHIFT), .control = IsDown(VK_CONTROL)};
}

[[nodiscard]] HeldKeys HeldWithMouse(WPARAM keys)
{
    return {.shift = (keys & MK_SHIFT) != 0, .control = (keys & MK_CONTROL) != 0};
}

[[nodiscard]] POINT PointOf(LPARAM lParam)
{
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

} // namespace

/// Tells of a press, and of its end whatever comes between.
class Win32GridView::Press
{
public:
    explicit Press(const Win32GridView& view) : m_view(view) { m_view.m_listener->PressBegins(); }
    Press(const Press&) = delete;
    Press& operator=(const Press&) = delete;
    ~Press()
    {
        if (m_view.m_listener != nullptr)
            m_view.m_listener->PressEnds();
    }

private:
    const Win32GridView& m_view;
};

void Win32GridView::Register()
{
    static const Win32WindowClass windowClass([] {
        WNDCLASSEXW grid = {};
        grid.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
        grid.lpfnWndProc = &PrvProcedure;
        grid.lpszClassName = kClassName;
        return grid;
    }());
}

std::shared_ptr<Win32GridView> Win32GridView::Of(HWND window)
{
    if (reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC)) != &PrvProcedure)
        return nullptr;
    const auto* const view = reinterpret_cast<const Win32GridView*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    return view != nullptr ? view->m_self : nullptr;
}

Win32GridView::Win32GridView(HWND window) : m_window(window) {}

Win32GridView::~Win32GridView() = default;

void Win32GridView::Attach(const GridBase& grid, Listener& listener)
{
    m_grid = &grid;
    m_geometry.emplace(grid);
    m_listener = &listener;
    PrvMeasureFont();
    ShowAll();
}

void Win32GridView::Detach()
{
    PrvEndCapture();
    PrvCloseDropDown();
    m_listener = nullptr;
    m_grid = nullptr;
    m_geometry.reset();
    PrvInvalidate();
}

void Win32GridView::ShowAll()
{
    PrvCloseDropDown();
    PrvFollowGrid();
    PrvLayOut();
    PrvInvalidate();
    PrvNotify(EVENT_OBJECT_REORDER, -1);
}

void Win32GridView::ShowCells()
{
    PrvInvalidate();
}

void Win32GridView::ShowColumn()
{
    PrvLayOut();
    PrvInvalidate();
}

void Win32GridView::ShowCurrentRow()
{
    PrvFollowGrid();
    m_owesCurrentRow = true;
    PrvPayCurrentRow();
    PrvInvalidate();
}

void Win32GridView::ShowSelection()
{
    PrvInvalidate();
    PrvNotify(EVENT_OBJECT_SELECTIONWITHIN, -1);
}

void Win32GridView::ShowRedraw()
{
    if (m_grid->IsRedrawing() && std::exchange(m_owesPaint, false))
        PrvInvalidate();
}

std::int32_t Win32GridView::FittingWidth(std::int32_t col) const
{
    const Win32GridGeometry& geometry = *m_geometry;
    std::int64_t row = geometry.FirstRow();
    std::int64_t end = row + geometry.DataRows();
    if (geometry.DataRows() > kFewRows) {
        row = geometry.TopRow();
        end = std::min(end, row + geometry.Page() + 1);
    }
    int width = geometry.SmallestColumn();
    if (m_grid->FixedRows() > 0)
        width = std::max(width, m_painter.CellWidth(*m_grid, geometry, 0, col));
    for (; row < end; ++row)
        width = std::max(width, m_painter.CellWidth(*m_grid, geometry, static_cast<std::int32_t>(row), col));
    const int widest = std::max<int>(m_painter.TextWidth(kWidestFit), static_cast<int>(geometry.Client().cx));
    return geometry.TwipsFromPixels(std::min(width, widest));
}

std::int32_t Win32GridView::MouseRow() const
{
    if (!m_grid || !m_mouse)
        return -1;
    return m_geometry->IsHeader(m_mouse->y) ? 0 : m_geometry->RowAt(m_mouse->y);
}

void Win32GridView::ScrollTo(std::int32_t row)
{
    // What is owed would undo it.
    PrvPayCurrentRow();
    PrvShowRow(row);
}

void Win32GridView::PrvShowRow(std::int32_t row)
{
    if (m_grid && row >= m_geometry->FirstRow())
        PrvScrollToTop(m_geometry->TopRowShowing(row));
}

RECT Win32GridView::CellRect(std::int32_t row, std::int32_t col) const
{
    return m_grid ? m_geometry->CellRect(row, col) : RECT{};
}

bool Win32GridView::Choose(std::int32_t row, HeldKeys held)
{
    if (!PrvIsDataRow(row))
        return false;
    const std::shared_ptr<Win32GridView> self = shared_from_this();
    ScrollTo(row);
    PrvTell(row, m_choice.Click(row, held, m_grid->Selection()));
    return true;
}

LRESULT CALLBACK Win32GridView::PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    try {
        if (message == WM_NCCREATE) {
            const auto made = std::make_shared<Win32GridView>(window);
            made->m_self = made;
            SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(made.get()));
            return DefWindowProcW(window, message, wParam, lParam);
        }
        // What it tells may end the window.
        const std::shared_ptr<Win32GridView> self = Of(window);
        if (self == nullptr)
            return DefWindowProcW(window, message, wParam, lParam);
        if (message == WM_NCDESTROY) {
            SetWindowLongPtrW(window, GWLP_USERDATA, 0);
            self->m_self.reset();
            self->PrvCloseDropDown();
            self->m_tips.End();
            self->m_window = nullptr;
            return DefWindowProcW(window, message, wParam, lParam);
        }
        return self->PrvHandle(message, wParam, lParam);
    } catch (...) {
        return message == WM_NCCREATE ? FALSE : 0;
    }
}

LRESULT Win32GridView::PrvHandle(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (PrvHandleLooks(message, wParam, lParam) || PrvHandleMouse(message, wParam, lParam))
        return 0;
    switch (message) {
    case WM_CREATE:
        m_tips.Begin(m_window);
        m_painter.TakeTheme(m_window);
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_GETFONT:
        return reinterpret_cast<LRESULT>(m_painter.Font());
    case WM_GETOBJECT:
        return PrvGiveAccessible(wParam, lParam);
    case WM_SETCURSOR:
        return LOWORD(lParam) == HTCLIENT && PrvShowCursor() ? 1 : PrvDefault(message, wParam, lParam);
    case WM_GETDLGCODE: {
        const auto* const key = reinterpret_cast<const MSG*>(lParam);
        const bool wants = m_dropDown.Window() != nullptr || (key != nullptr && PrvWantsKey(*key));
        return DLGC_WANTARROWS | DLGC_WANTCHARS | (wants ? DLGC_WANTALLKEYS | DLGC_WANTTAB : 0);
    }
    case WM_KEYDOWN:
    case WM_SYSKEYDOWN: {
        constexpr LPARAM kAltIsHeld = 1 << 29;
        const bool isAlt = message == WM_SYSKEYDOWN && (lParam & kAltIsHeld) != 0;
        if (m_grid && PrvTakeKey(wParam, isAlt)) {
            // Unless the system hears of it, it takes Alt for pressed alone, and turns to the menu when Alt
            // is let go.
            if (isAlt && wParam != VK_MENU)
                static_cast<void>(PrvDefault(message, wParam, lParam));
            return 0;
        }
        break;
    }
    case WM_CHAR:
        if (m_grid)
            PrvTakeCharacter(static_cast<char16_t>(wParam));
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        m_typedName.clear();
        PrvCloseDropDown();
        PrvInvalidate();
        if (message == WM_SETFOCUS && m_grid)
            PrvNotify(EVENT_OBJECT_FOCUS, m_grid->CurrentRow());
        return 0;
    case WM_VSCROLL:
        PrvTurnBar(SB_VERT, LOWORD(wParam));
        return 0;
    case WM_HSCROLL:
        PrvTurnBar(SB_HORZ, LOWORD(wParam));
        return 0;
    default:
        break;
    }
    return PrvDefault(message, wParam, lParam);
}

LRESULT Win32GridView::PrvDefault(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return DefWindowProcW(m_window, message, wParam, lParam);
}

bool Win32GridView::PrvHandleLooks(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_PAINT: {
        PrvPayCurrentRow();
        const Win32Painting painting(m_window);
        if (!m_grid || m_grid->IsRedrawing())
            PrvPaint(painting.Target());
        else
            m_owesPaint = true;
        return true;
    }
    case WM_PRINTCLIENT:
        PrvPaint(reinterpret_cast<HDC>(wParam));
        return true;
    case WM_NCPAINT:
        static_cast<void>(PrvDefault(message, wParam, lParam));
        PrvPaintBorder();
        return true;
    case WM_SETFONT:
        m_painter.SetFont(reinterpret_cast<HFONT>(wParam));
        PrvMeasureFont();
        return true;
    case WM_THEMECHANGED:
    case WM_SETTINGCHANGE:
    case WM_SYSCOLORCHANGE:
    case WM_DPICHANGED_AFTERPARENT:
        m_painter.TakeTheme(m_window);
        PrvMeasureFont();
        return true;
    case WM_SIZE:
        PrvLayOut();
        return true;
    case WM_ENABLE:
        PrvEndCapture();
        PrvCloseDropDown();
        PrvInvalidate();
        return true;
    case WM_SHOWWINDOW:
        if (wParam == FALSE)
            PrvCloseDropDown();
        return false;
    default:
        return false;
    }
}

// The mouse

bool Win32GridView::PrvHandleMouse(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (!m_grid)
        return false;
    // A handler of the press may have shown another window.
    if (m_capture != Capture::None && !IsOpenToUser(m_window))
        PrvEndCapture();
    switch (message) {
    case WM_LBUTTONDOWN:
        PrvPress(PointOf(lParam), HeldWithMouse(wParam), true);
        return true;
    case WM_LBUTTONDBLCLK:
        PrvPressAgain(PointOf(lParam), HeldWithMouse(wParam));
        return true;
    case WM_RBUTTONDOWN:
        PrvPress(PointOf(lParam), HeldWithMouse(wParam), false);
        return true;
    case WM_LBUTTONUP:
        PrvRelease(PointOf(lParam));
        return true;
    case WM_MOUSEMOVE:
        PrvMouseMoved(PointOf(lParam), wParam);
        return true;
    case WM_MOUSELEAVE:
        m_isTrackingMouse = false;
        if (m_capture == Capture::None)
            m_mouse.reset();
        return true;
    case WM_CAPTURECHANGED:
        if (reinterpret_cast<HWND>(lParam) != m_window) {
            m_capture = Capture::None;
            m_pressedColumn = -1;
            KillTimer(m_window, kDragTimer);
        }
        return true;
    case WM_TIMER:
        if (wParam != kDragTimer)
            return false;
        if (m_capture == Capture::Rows && m_mouse && !m_geometry->IsHeader(m_mouse->y))
            PrvDragTo(static_cast<int>(m_mouse->y));
        return true;
    case WM_MOUSEWHEEL:
        PrvTurnWheel(GET_WHEEL_DELTA_WPARAM(wParam));
        return true;
    case WM_MOUSEHWHEEL:
        PrvTurnWheelAcross(GET_WHEEL_DELTA_WPARAM(wParam));
        return true;
    default:
        return false;
    }
}

void Win32GridView::PrvPress(POINT place, HeldKeys held, bool isLeft)
{
    m_mouse = place;
    m_typedName.clear();
    PrvCloseDropDown();
    if (m_geometry->IsHeader(place.y)) {
        PrvPressHeader(place, isLeft);
        return;
    }
    // A row reaches beyond its last cell.
    const std::int32_t row = m_geometry->RowAt(place.y);
    const std::int32_t col = m_geometry->ColumnAt(place.x);
    m_pressedRow = row;
    m_draggedRow = row;
    m_pressedColumn = isLeft ? col : -1;
    if (row >= 0 && col >= 0)
        m_lastColumn = col;
    const Press press(*this);
    if (m_grid && row >= 0) {
        if (isLeft) {
            m_capture = Capture::Rows;
            PrvBeginCapture();
        }
        const RowSelection& before = m_grid->Selection();
        const bool isOfSelection = !isLeft && before.Contains(row);
        PrvTell(row, isOfSelection ? RowSelection(before) : m_choice.Click(row, held, before));
    } else if (m_grid && isLeft && !held.shift && !held.control) {
        PrvTell(m_grid->CurrentRow(), {});
    }
}

void Win32GridView::PrvPressHeader(POINT place, bool isLeft)
{
    m_pressedRow = -1;
    m_pressedColumn = -1;
    if (!PrvTakeFocus() || !isLeft)
        return;
    const std::int32_t col = m_geometry->BorderAt(place.x);
    if (col < 0)
        return;
    m_resizedColumn = col;
    m_borderOffset = static_cast<int>(place.x) - m_geometry->ColumnLeft(col) - m_geometry->ColumnWidth(col);
    m_capture = Capture::Border;
    PrvBeginCapture();
}

void Win32GridView::PrvPressAgain(POINT place, HeldKeys held)
{
    const bool isHeader = m_geometry->IsHeader(place.y);
    const std::int32_t row = m_geometry->RowAt(place.y);
    // The first click may have changed the rows.
    if (!isHeader && (row < 0 || row != m_pressedRow)) {
        PrvPress(place, held, true);
        return;
    }
    m_mouse = place;
    m_pressedColumn = -1;
    if (!PrvTakeFocus())
        return;
    const std::int32_t border = isHeader ? m_geometry->BorderAt(place.x) : -1;
    if (border >= 0)
        PrvResize(border, FittingWidth(border));
    else
        m_listener->DoubleClicked();
}

void Win32GridView::PrvRelease(POINT place)
{
    m_mouse = place;
    const std::int32_t col = std::exchange(m_pressedColumn, -1);
    PrvEndCapture();
    if (col >= 0 && m_geometry->RowAt(place.y) == m_pressedRow && m_geometry->ColumnAt(place.x) == col)
        PrvOpenDropDown(m_pressedRow, col);
}

void Win32GridView::PrvMouseMoved(POINT place, WPARAM keys)
{
    m_mouse = place;
    if (!m_isTrackingMouse) {
        TRACKMOUSEEVENT track{sizeof(TRACKMOUSEEVENT), TME_LEAVE, m_window, 0};
        m_isTrackingMouse = TrackMouseEvent(&track) != FALSE;
    }
    if (m_capture != Capture::None && (keys & MK_LBUTTON) == 0)
        PrvEndCapture();
    if (m_capture == Capture::Rows)
        PrvDragTo(static_cast<int>(place.y));
    else if (m_capture == Capture::Border)
        PrvResizeTo(static_cast<int>(place.x));
    else
        PrvShowTip(place);
}

void Win32GridView::PrvBeginCapture()
{
    SetCapture(m_window);
    if (m_capture == Capture::Rows)
        SetTimer(m_window, kDragTimer, kDragPause, nullptr);
}

void Win32GridView::PrvEndCapture()
{
    if (std::exchange(m_capture, Capture::None) == Capture::None || m_window == nullptr)
        return;
    KillTimer(m_window, kDragTimer);
    if (GetCapture() == m_window)
        ReleaseCapture();
}

/// Takes the row there along; above and below the list the next one that is out of sight.
void Win32GridView::PrvDragTo(int y)
{
    if (m_geometry->DataRows() == 0)
        return;
    const std::int64_t first = m_geometry->FirstRow();
    std::int64_t reached = m_geometry->RowAt(y);
    if (reached < 0 && y < m_geometry->HeaderHeight())
        reached = std::int64_t{m_geometry->TopRow()} - 1;
    else if (reached < 0)
        reached = std::int64_t{m_geometry->TopRow()} + m_geometry->Page();
    const auto row =
        static_cast<std::int32_t>(std::clamp(reached, first, first + m_geometry->DataRows() - 1));
    // A handler may have made another row current than the one under the pointer.
    if (std::exchange(m_draggedRow, row) == row)
        return;
    m_pressedColumn = -1;
    ScrollTo(row);
    PrvTell(row, m_choice.Drag(row));
}

void Win32GridView::PrvResizeTo(int x)
{
    if (m_resizedColumn >= m_grid->Cols())
        return;
    const int width =
        std::max(m_geometry->SmallestColumn(), x - m_borderOffset - m_geometry->ColumnLeft(m_resizedColumn));
    // A width keeps its twips unless the user made it another one.
    if (width != m_geometry->ColumnWidth(m_resizedColumn))
        PrvResize(m_resizedColumn, m_geometry->TwipsFromPixels(width));
}

void Win32GridView::PrvResize(std::int32_t col, std::int32_t twips)
{
    m_listener->Resized(col, twips);
    if (m_grid)
        ShowColumn();
}

void Win32GridView::PrvTurnWheel(int delta)
{
    if (m_dropDown.Window() != nullptr) {
        SendMessageW(m_dropDown.Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
        return;
    }
    UINT lines = 3;
    SystemParametersInfoW(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
    if (lines == WHEEL_PAGESCROLL || lines > static_cast<UINT>(m_geometry->Page()))
        lines = static_cast<UINT>(m_geometry->Page());
    m_wheel += delta * static_cast<int>(lines);
    const int rows = m_wheel / WHEEL_DELTA;
    m_wheel -= rows * WHEEL_DELTA;
    PrvScrollToTop(std::int64_t{m_geometry->TopRow()} - rows);
}

void Win32GridView::PrvTurnWheelAcross(int delta)
{
    m_wheelAcross += delta * m_geometry->Scaled(kSidewaysStep);
    const int pixels = m_wheelAcross / WHEEL_DELTA;
    m_wheelAcross -= pixels * WHEEL_DELTA;
    PrvScrollAcross(m_geometry->Across() + pixels);
}

/// False when that ended the grid.
bool Win32GridView::PrvTakeFocus()
{
    {
        const Press press(*this);
    }
    return m_listener != nullptr;
}

bool Win32GridView::PrvShowCursor() const
{
    POINT place{};
    if (!m_grid || !GetCursorPos(&place) || !ScreenToClient(m_window, &place))
        return false;
    if (!m_geometry->IsHeader(place.y) || m_geometry->BorderAt(place.x) < 0)
        return false;
    SetCursor(LoadCursorW(nullptr, IDC_SIZEWE));
    return true;
}

/// Says why a cell is marked, or what its column cuts off.
void Win32GridView::PrvShowTip(POINT place)
{
    const bool isHeader = m_geometry->IsHeader(place.y);
    const std::int32_t row = isHeader ? 0 : m_geometry->RowAt(place.y);
    const std::int32_t col = row < 0 ? -1 : m_geometry->ColumnAt(place.x);
    if (col < 0) {
        m_tips.Show({}, {});
        return;
    }
    const RECT cell = m_geometry->CellRect(row, col);
    std::u16string text = isHeader ? std::u16string() : m_grid->CellMark(row, col);
    if (text.empty() && m_painter.CellWidth(*m_grid, *m_geometry, row, col) > cell.right - cell.left)
        text = m_grid->DisplayText(row, col);
    m_tips.Show(cell, std::move(text));
}

// Keys

bool Win32GridView::PrvTakeKey(WPARAM key, bool isAlt)
{
    const bool isMove = key >= VK_PRIOR && key <= VK_DOWN;
    if (isMove)
        m_typedName.clear();
    if (m_dropDown.Window() != nullptr) {
        // Alt+F4 is the window's.
        if (isAlt && key == VK_F4)
            return false;
        m_dropDown.TakeKey(key, isAlt);
        if (m_grid && m_dropDown.Window() == nullptr)
            PrvNotify(EVENT_OBJECT_FOCUS, m_grid->CurrentRow());
        return true;
    }
    // AltGr is Ctrl and Alt: what comes of it is a character.
    if (!isAlt && IsDown(VK_MENU))
        return false;
    const HeldKeys held = HeldWithKey();
    const std::int64_t current = m_grid->CurrentRow() < 0 ? std::int64_t{m_geometry->FirstRow()} - 1
                                                          : std::int64_t{m_grid->CurrentRow()};
    const auto openDropDown = [this] {
        const std::int32_t col = PrvFirstDropDownColumn();
        return col >= 0 && PrvOpenDropDown(m_grid->CurrentRow(), col);
    };
    if (isAlt)
        return (key == VK_DOWN || key == VK_UP) && !held.control && openDropDown();

    const std::int64_t page = std::max(1, m_geometry->Page() - 1);
    switch (key) {
    case VK_DOWN:
        PrvMoveTo(current + 1, held);
        return true;
    case VK_UP:
        PrvMoveTo(current - 1, held);
        return true;
    case VK_NEXT:
        PrvMoveTo(current + page, held);
        return true;
    case VK_PRIOR:
        PrvMoveTo(current - page, held);
        return true;
    case VK_HOME:
        PrvMoveTo(m_geometry->FirstRow(), held);
        return true;
    case VK_END:
        PrvMoveTo(std::int64_t{m_geometry->FirstRow()} + m_geometry->DataRows() - 1, held);
        return true;
    case VK_LEFT:
    case VK_RIGHT:
        if (!held.control)
            PrvScrollSideways(key);
        return !held.control;
    case VK_F2:
    case VK_F4:
    case VK_RETURN:
        return !held.control && openDropDown();
    case VK_SPACE:
        if (held.control && m_grid->CurrentRow() >= 0)
            PrvTell(m_grid->CurrentRow(), m_choice.Mark(m_grid->CurrentRow(), held, m_grid->Selection()));
        return held.control;
    case 'A':
        if (held.control)
            PrvSelectAll();
        return held.control;
    case 'C':
    case VK_INSERT:
        if (held.control)
            PrvCopy();
        return held.control;
    default:
        return false;
    }
}

void Win32GridView::PrvTakeCharacter(char16_t character)
{
    // AltGr is Ctrl and Alt.
    const bool isChord = IsDown(VK_CONTROL) && !IsDown(VK_MENU);
    if (isChord || character < u' ' || character == u'\x7F')
        return;
    if (character != u' ' || PrvIsTypingName()) {
        PrvTypeName(character);
        return;
    }
    const std::int32_t current = m_grid->CurrentRow();
    const std::int32_t col = PrvFirstDropDownColumn();
    if (m_dropDown.Window() != nullptr || current < 0 || (col >= 0 && PrvOpenDropDown(current, col)))
        return;
    PrvTell(current, m_choice.Mark(current, {}, m_grid->Selection()));
}

void Win32GridView::PrvScrollSideways(WPARAM key)
{
    const bool isMirrored = (GetWindowLongPtrW(m_window, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0;
    const int step = m_geometry->Scaled(kSidewaysStep);
    PrvScrollAcross(m_geometry->Across() + ((key == VK_RIGHT) != isMirrored ? step : -step));
}

void Win32GridView::PrvMoveTo(std::int64_t row, HeldKeys held)
{
    const std::int32_t rows = m_geometry->DataRows();
    if (rows == 0)
        return;
    const std::int64_t first = m_geometry->FirstRow();
    const auto target = static_cast<std::int32_t>(std::clamp(row, first, first + rows - 1));
    ScrollTo(target);
    PrvTell(target, m_choice.Move(target, held, m_grid->Selection()));
}

void Win32GridView::PrvTypeName(char16_t character)
{
    if (!PrvIsTypingName())
        m_typedName.clear();
    const std::int32_t dropDownColumn = PrvFirstDropDownColumn();
    const bool isInList = dropDownColumn >= 0;
    if (isInList && m_dropDown.Window() == nullptr && !PrvOpenDropDown(m_grid->CurrentRow(), dropDownColumn))
        return;
    m_typedName += character;
    m_lastTyped = GetTickCount64();
    // The other half of the character follows.
    if (IS_HIGH_SURROGATE(character))
        return;
    if (isInList) {
        m_dropDown.Find(m_typedName);
        return;
    }
    const std::int32_t row = m_grid->RowNamed(m_typedName);
    if (PrvIsDataRow(row))
        PrvMoveTo(row, {});
}

bool Win32GridView::PrvIsTypingName() const
{
    return !m_typedName.empty() && GetTickCount64() - m_lastTyped < kTypingPause;
}

void Win32GridView::PrvSelectAll()
{
    const std::int32_t rows = m_geometry->DataRows();
    if (rows == 0 || m_grid->Mode() != SelectionMode::ListBox)
        return;
    RowSelection all;
    all.Add({m_geometry->FirstRow(), m_geometry->FirstRow() + rows - 1});
    PrvTell(m_grid->CurrentRow(), all);
}

void Win32GridView::PrvCopy() const
{
    const bool isThere =
        m_lastColumn >= 0 && m_lastColumn < m_grid->Cols() && !m_grid->IsColHidden(m_lastColumn);
    const std::int32_t col = isThere ? m_lastColumn : m_geometry->FirstVisibleColumn();
    // Where another program keeps the clipboard, what it holds stays.
    if (m_grid->CurrentRow() >= 0 && col >= 0)
        (void)Win32Clipboard::PutText(m_window, m_grid->DisplayText(m_grid->CurrentRow(), col));
}

bool Win32GridView::PrvWantsKey(const MSG& message) const
{
    const HeldKeys held = HeldWithKey();
    return m_grid && message.message == WM_KEYDOWN && message.wParam == VK_RETURN && !held.control &&
           m_geometry->DataRows() > 0 && m_grid->CurrentRow() >= 0 && PrvFirstDropDownColumn() >= 0;
}

// Acts

bool Win32GridView::PrvIsDataRow(std::int32_t row) const
{
    return m_grid && row >= m_geometry->FirstRow() && row - m_geometry->FirstRow() < m_geometry->DataRows();
}

void Win32GridView::PrvTell(std::int32_t currentRow, const RowSelection& selection)
{
    m_listener->Chose(currentRow, selection);
    if (!m_grid)
        return;
    // The grid may have decided otherwise.
    PrvFollowGrid();
    PrvInvalidate();
    PrvNotify(EVENT_OBJECT_SELECTIONWITHIN, -1);
}

void Win32GridView::PrvFollowGrid()
{
    const std::int32_t current = m_grid->CurrentRow();
    m_choice.Follow(current, m_grid->FixedRows(), m_grid->Rows());
    if (std::exchange(m_shownRow, current) != current && GetFocus() == m_window)
        PrvNotify(EVENT_OBJECT_FOCUS, current);
}

// Scrolling

void Win32GridView::PrvLayOut()
{
    if (m_isLayingOut || m_window == nullptr || !m_grid)
        return;
    m_isLayingOut = true;
    // A bar that comes takes room from the other direction.
    for (int pass = 0; pass < 2; ++pass) {
        RECT client{};
        GetClientRect(m_window, &client);
        m_geometry->SetSize({client.right, client.bottom});
        const int width = m_geometry->WholeWidth();
        m_geometry->SetAcross(
            std::clamp(m_geometry->Across(), 0, std::max(0, width - static_cast<int>(client.right))));
        SCROLLINFO bar{};
        bar.cbSize = sizeof bar;
        bar.fMask = SIF_PAGE | SIF_POS | SIF_RANGE;
        bar.nMax = std::max(0, m_geometry->DataRows() - 1);
        bar.nPage = static_cast<UINT>(m_geometry->Page());
        bar.nPos = m_geometry->TopRow() - m_geometry->FirstRow();
        SetScrollInfo(m_window, SB_VERT, &bar, TRUE);
        bar.nMax = std::max(0, width - 1);
        bar.nPage = static_cast<UINT>(std::max<LONG>(1, client.right));
        bar.nPos = m_geometry->Across();
        SetScrollInfo(m_window, SB_HORZ, &bar, TRUE);
    }
    RECT client{};
    GetClientRect(m_window, &client);
    m_geometry->SetSize({client.right, client.bottom});
    m_isLayingOut = false;
    PrvPayCurrentRow();
}

void Win32GridView::PrvScrollToTop(std::int64_t topRow)
{
    const std::int64_t top =
        std::clamp<std::int64_t>(topRow, m_geometry->FirstRow(), m_geometry->HighestTopRow());
    if (top == m_geometry->TopRow())
        return;
    PrvCloseDropDown();
    m_listener->Scrolled(static_cast<std::int32_t>(top));
    PrvLayOut();
    PrvInvalidate();
}

void Win32GridView::PrvScrollAcross(int pixels)
{
    if (pixels == m_geometry->Across())
        return;
    PrvCloseDropDown();
    m_geometry->SetAcross(pixels);
    PrvLayOut();
    PrvInvalidate();
}

void Win32GridView::PrvTurnBar(int bar, WORD request)
{
    if (!m_grid)
        return;
    SCROLLINFO now{};
    now.cbSize = sizeof now;
    now.fMask = SIF_ALL;
    GetScrollInfo(m_window, bar, &now);
    const std::int64_t step = bar == SB_VERT ? 1 : m_geometry->Scaled(kSidewaysStep);
    std::int64_t place = now.nPos;
    switch (request) {
    case SB_LINEUP:
        place -= step;
        break;
    case SB_LINEDOWN:
        place += step;
        break;
    case SB_PAGEUP:
        place -= now.nPage;
        break;
    case SB_PAGEDOWN:
        place += now.nPage;
        break;
    case SB_THUMBTRACK:
    case SB_THUMBPOSITION:
        place = now.nTrackPos;
        break;
    case SB_TOP:
        place = now.nMin;
        break;
    case SB_BOTTOM:
        place = now.nMax;
        break;
    default:
        return;
    }
    if (bar == SB_VERT)
        PrvScrollToTop(place + m_geometry->FirstRow());
    else
        PrvScrollAcross(static_cast<int>(std::clamp<std::int64_t>(place, 0, now.nMax)));
}

void Win32GridView::PrvPayCurrentRow()
{
    if (!m_owesCurrentRow || !m_grid || m_geometry->Client().cy <= 0)
        return;
    // Until it is shown the window may still get another size.
    m_owesCurrentRow = !IsWindowVisible(m_window);
    PrvShowRow(m_grid->CurrentRow());
}

void Win32GridView::PrvMeasureFont()
{
    if (!m_grid || m_window == nullptr)
        return;
    PrvCloseDropDown();
    m_geometry->SetMetrics(m_painter.FontHeight(), GetDpiForWindow(m_window));
    PrvLayOut();
    PrvInvalidate();
}

// Painting and drop-downs

void Win32GridView::PrvPaint(HDC target) const
{
    RECT client{};
    GetClientRect(m_window, &client);
    RECT dirty{};
    if (GetClipBox(target, &dirty) == NULLREGION || !IntersectRect(&dirty, &dirty, &client))
        return;
    if (!m_grid) {
        FillRect(target, &dirty, GetSysColorBrush(COLOR_WINDOW));
        return;
    }
    const bool isFocused = GetFocus() == m_window;
    const Win32Canvas canvas(target, {client.right, client.bottom});
    m_painter.Paint(canvas.Handle(), dirty, *m_grid, *m_geometry,
                    {.isFocused = isFocused, .isEnabled = IsWindowEnabled(m_window) != FALSE});
}

void Win32GridView::PrvPaintBorder() const
{
    if ((GetWindowLongPtrW(m_window, GWL_EXSTYLE) & WS_EX_CLIENTEDGE) == 0)
        return;
    RECT whole{};
    GetWindowRect(m_window, &whole);
    OffsetRect(&whole, -whole.left, -whole.top);
    HDC const canvas = GetWindowDC(m_window);
    const int across = GetSystemMetrics(SM_CXEDGE);
    const int down = GetSystemMetrics(SM_CYEDGE);
    ExcludeClipRect(canvas, across, down, whole.right - across, whole.bottom - down);
    m_painter.PaintBorder(canvas, whole);
    ReleaseDC(m_window, canvas);
}

void Win32GridView::PrvInvalidate() const
{
    if (m_window != nullptr)
        InvalidateRect(m_window, nullptr, FALSE);
}

std::int32_t Win32GridView::PrvFirstDropDownColumn() const
{
    for (std::int32_t col = 0; col < m_grid->Cols(); ++col) {
        if (!m_grid->IsColHidden(col) && !m_grid->ComboList(col).empty())
            return col;
    }
    return -1;
}

bool Win32GridView::PrvOpenDropDown(std::int32_t row, std::int32_t col)
{
    if (!PrvIsDataRow(row) || m_grid->ComboList(col).empty() || !IsOpenToUser(m_window))
        return false;
    ScrollTo(row);
    const auto picked = [weak = weak_from_this(), row, col](std::int32_t number) {
        try {
            const std::shared_ptr<Win32GridView> view = weak.lock();
            if (view && view->m_listener)
                view->m_listener->Picked(row, col, number);
        } catch (...) { // NOLINT(bugprone-empty-catch): a cell that is no longer there takes no choice
        }
    };
    m_dropDown.Open(m_window, m_geometry->CellRect(row, col), m_painter.Font(), m_grid->ComboList(col),
                    m_grid->CellText(row, col), picked);
    return m_dropDown.Window() != nullptr;
}

void Win32GridView::PrvCloseDropDown()
{
    m_dropDown.Close();
}

// Screen readers

LRESULT Win32GridView::PrvGiveAccessible(WPARAM wParam, LPARAM lParam)
{
    if (static_cast<LONG>(lParam) != static_cast<LONG>(OBJID_CLIENT) || !m_grid)
        return PrvDefault(WM_GETOBJECT, wParam, lParam);
    IAccessible* const accessible = MakeGridAccessible(shared_from_this());
    if (accessible == nullptr)
        return PrvDefault(WM_GETOBJECT, wParam, lParam);
    const LRESULT reference = LresultFromObject(__uuidof(IAccessible), wParam, accessible);
    accessible->Release();
    return reference;
}

void Win32GridView::PrvNotify(DWORD event, std::int32_t row) const
{
    if (m_window != nullptr && m_grid)
        NotifyWinEvent(event, m_window, OBJID_CLIENT,
                       row < 0 ? CHILDID_SELF : row - m_geometry->FirstRow() + 1);
}

} // namespace KestrinProductEditor
