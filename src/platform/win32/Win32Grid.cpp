// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Grid.h"

namespace KestrinProductEditor {

Win32Grid::Win32Grid(HWND window, Win32Focus& focus)
    : Win32Control<GridBase>(window, window, focus), m_view(Win32GridView::Of(window))
{
    m_view->Attach(*this, *this);
}

Win32Grid::~Win32Grid()
{
    m_view->Detach();
}

void Win32Grid::FitColumns()
{
    for (std::int32_t col = 0; col < Cols(); ++col) {
        if (IsColHidden(col))
            continue;
        UserResized(col, m_view->FittingWidth(col));
        m_view->ShowColumn();
    }
}

std::int32_t Win32Grid::MouseRow() const
{
    return m_view->MouseRow();
}

void Win32Grid::ShowAll()
{
    m_view->ShowAll();
}

void Win32Grid::ShowCells()
{
    m_view->ShowCells();
}

void Win32Grid::ShowColumn(std::int32_t /*col*/)
{
    m_view->ShowColumn();
}

void Win32Grid::ShowCurrentRow()
{
    m_view->ShowCurrentRow();
}

void Win32Grid::ShowSelection()
{
    m_view->ShowSelection();
}

void Win32Grid::ShowNotice()
{
    m_view->ShowAll();
}

void Win32Grid::ShowRedraw()
{
    m_view->ShowRedraw();
}

void Win32Grid::PressBegins()
{
    Focus().Hold();
    ::SetFocus(Window());
}

void Win32Grid::PressEnds()
{
    Focus().Release();
}

void Win32Grid::Chose(std::int32_t currentRow, const RowSelection& selection)
{
    UserChose(currentRow, selection);
}

void Win32Grid::Scrolled(std::int32_t topRow)
{
    UserScrolled(topRow);
}

void Win32Grid::Resized(std::int32_t col, std::int32_t twips)
{
    UserResized(col, twips);
}

void Win32Grid::Picked(std::int32_t row, std::int32_t col, std::int32_t number)
{
    UserPicked(row, col, number);
}

void Win32Grid::DoubleClicked()
{
    DblClick.Raise();
}

} // namespace KestrinProductEditor
