// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/GridBase.h"
#include "platform/win32/Win32GridChoice.h"
#include "platform/win32/Win32GridDropDown.h"
#include "platform/win32/Win32GridGeometry.h"
#include "platform/win32/Win32GridPainter.h"
#include "platform/win32/Win32GridTips.h"

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// What stands behind a window of a grid. It shows what a GridBase holds and reports what the user does.
///
/// Up, Down, Page Up, Page Down, Home and End move the current row, with Shift and Ctrl as in every list;
/// Left and Right scroll; Ctrl+A selects every row, Ctrl+C copies the cell that was clicked last. Letters go
/// to the first row with that name, within a short while of each other as one name. Where a column has
/// drop-downs, Space, F2, F4, Enter, Alt+Down and Alt+Up open that of the current row, letters open it and
/// look there, a click opens the one under the pointer. F2, Enter, Delete and Esc are left to the window
/// otherwise; Tab always is. While a list is open, every key is its own (WM_GETDLGCODE says so) and it holds
/// the mouse.
class Win32GridView final : public std::enable_shared_from_this<Win32GridView>
{
public:
    static constexpr const wchar_t* kClassName = L"KstneditGrid";

    /// Who is told. Each call may end the view's window, the listener, or both.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        /// A mouse button went down on the list: it should get the focus. PressEnds follows, after Chose.
        virtual void PressBegins() = 0;
        virtual void PressEnds() = 0;
        /// One act of the user, with its whole outcome.
        virtual void Chose(std::int32_t currentRow, const RowSelection& selection) = 0;
        virtual void Scrolled(std::int32_t topRow) = 0;
        virtual void Resized(std::int32_t col, std::int32_t twips) = 0;
        virtual void Picked(std::int32_t row, std::int32_t col, std::int32_t number) = 0;
        virtual void DoubleClicked() = 0;
    };

    /// Makes the window class known, before the first window of it. Any number of times, from any thread.
    static void Register();
    /// The view behind a window; null when the window is of another class.
    [[nodiscard]] static std::shared_ptr<Win32GridView> Of(HWND window);

    explicit Win32GridView(HWND window);
    Win32GridView(const Win32GridView&) = delete;
    Win32GridView& operator=(const Win32GridView&) = delete;
    ~Win32GridView();

    /// Shows that grid. Grid and listener must stay until Detach.
    void Attach(const GridBase& grid, Listener& listener);
    void Detach();

    // What a grid asks for; nothing here is reported.

    void ShowAll();
    void ShowCells();
    void ShowColumn();
    void ShowCurrentRow();
    void ShowSelection();
    void ShowRedraw();
    /// The width of what a column shows, in twips: of the header and the rows in sight, of every row where
    /// there are few.
    [[nodiscard]] std::int32_t FittingWidth(std::int32_t col) const;
    /// The row under the pointer where the mouse last was: 0 on the header, -1 off the rows.
    [[nodiscard]] std::int32_t MouseRow() const;

    // For who reads the screen or acts on it

    /// Null for a view without a window or a grid.
    [[nodiscard]] const GridBase* Grid() const { return m_grid; }
    /// Null after the window has ended.
    [[nodiscard]] HWND Window() const { return m_window; }
    /// Requires: Grid().
    [[nodiscard]] const Win32GridGeometry& Geometry() const { return *m_geometry; }
    /// Scrolls until the whole row is in sight.
    void ScrollTo(std::int32_t row);
    /// The list box that is open at a cell; null for none.
    [[nodiscard]] HWND OpenDropDown() const { return m_dropDown.Window(); }
    /// The place of a cell on the client area, header cells too; it may be out of sight.
    [[nodiscard]] RECT CellRect(std::int32_t row, std::int32_t col) const;
    /// Chooses the row as a click would, without a mouse. False when there is no such row.
    bool Choose(std::int32_t row, HeldKeys held);

private:
    class Press;

    /// What the mouse that is held down does.
    enum class Capture
    {
        None,
        Rows,
        Border,
    };

    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] LRESULT PrvHandle(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] LRESULT PrvDefault(UINT message, WPARAM wParam, LPARAM lParam) const;
    [[nodiscard]] bool PrvHandleMouse(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] bool PrvHandleLooks(UINT message, WPARAM wParam, LPARAM lParam);

    // Mouse
    void PrvPress(POINT place, HeldKeys held, bool isLeft);
    void PrvPressAgain(POINT place, HeldKeys held);
    void PrvRelease(POINT place);
    void PrvMouseMoved(POINT place, WPARAM keys);
    void PrvPressHeader(POINT place, bool isLeft);
    void PrvBeginCapture();
    void PrvEndCapture();
    void PrvShowTip(POINT place);
    void PrvDragTo(int y);
    void PrvResizeTo(int x);
    void PrvResize(std::int32_t col, std::int32_t twips);
    void PrvTurnWheel(int delta);
    void PrvTurnWheelAcross(int delta);
    [[nodiscard]] bool PrvTakeFocus();
    [[nodiscard]] bool PrvShowCursor() const;

    // Keys
    /// False when the key is not the grid's.
    [[nodiscard]] bool PrvTakeKey(WPARAM key, bool isAlt);
    void PrvTakeCharacter(char16_t character);
    void PrvScrollSideways(WPARAM key);
    void PrvMoveTo(std::int64_t row, HeldKeys held);
    void PrvTypeName(char16_t character);
    [[nodiscard]] bool PrvIsTypingName() const;
    void PrvSelectAll();
    void PrvCopy() const;
    [[nodiscard]] bool PrvWantsKey(const MSG& message) const;

    // Acts
    [[nodiscard]] bool PrvIsDataRow(std::int32_t row) const;
    void PrvTell(std::int32_t currentRow, const RowSelection& selection);
    void PrvFollowGrid();

    // Scrolling
    void PrvLayOut();
    void PrvShowRow(std::int32_t row);
    void PrvScrollToTop(std::int64_t topRow);
    void PrvScrollAcross(int pixels);
    void PrvTurnBar(int bar, WORD request);
    void PrvPayCurrentRow();
    void PrvMeasureFont();

    // Painting and drop-downs
    void PrvPaint(HDC target) const;
    void PrvPaintBorder() const;
    void PrvInvalidate() const;
    [[nodiscard]] std::int32_t PrvFirstDropDownColumn() const;
    bool PrvOpenDropDown(std::int32_t row, std::int32_t col);
    void PrvCloseDropDown();

    // Screen readers
    [[nodiscard]] LRESULT PrvGiveAccessible(WPARAM wParam, LPARAM lParam);
    void PrvNotify(DWORD event, std::int32_t row) const;

    std::shared_ptr<Win32GridView> m_self; // while the window lives
    HWND m_window;
    const GridBase* m_grid = nullptr;
    Listener* m_listener = nullptr;
    std::optional<Win32GridGeometry> m_geometry; // of m_grid
    Win32GridPainter m_painter;
    Win32GridChoice m_choice;
    Win32GridDropDown m_dropDown;
    Win32GridTips m_tips;

    bool m_isLayingOut = false;
    bool m_owesCurrentRow = false; // to be scrolled into sight when the window is shown
    bool m_owesPaint = false;      // while painting is suspended
    std::int32_t m_shownRow = -1;  // the current row that was told to screen readers
    int m_wheel = 0;               // what is left of turns that were too small to act on
    int m_wheelAcross = 0;

    std::u16string m_typedName;
    ULONGLONG m_lastTyped = 0;

    std::optional<POINT> m_mouse;
    bool m_isTrackingMouse = false;
    std::int32_t m_pressedRow = -1;
    std::int32_t m_pressedColumn = -1;
    std::int32_t m_draggedRow = -1;
    std::int32_t m_lastColumn = -1; // that was clicked
    Capture m_capture = Capture::None;
    std::int32_t m_resizedColumn = -1;
    int m_borderOffset = 0; // from the border to where it was taken hold of
};

} // namespace KestrinProductEditor
