// SPDX-License-Identifier: MIT
#include "platform/qt/QtGrid.h"

#include "platform/qt/QtTwips.h"

namespace KestrinProductEditor {

QtGrid::QtGrid(QtGridView& view, QtFocus& focus)
    : QtControl<GridBase>(view, focus), m_model(*this), m_view(&view)
{
    view.Attach(*this, m_model, *this);
}

QtGrid::~QtGrid()
{
    if (m_view)
        m_view->Detach();
}

void QtGrid::FitColumns()
{
    for (std::int32_t col = 0; col < Cols(); ++col) {
        if (IsColHidden(col))
            continue;
        const float twips = TwipsFromPixels(*m_view, m_view->FittingWidth(col));
        UserResized(col, static_cast<std::int32_t>(std::lround(twips)));
        m_view->ShowColumn(col);
    }
}

std::int32_t QtGrid::MouseRow() const
{
    return m_view->MouseRow();
}

void QtGrid::ShowAll()
{
    m_view->ShowAll();
}

void QtGrid::ShowCells()
{
    m_view->ShowCells();
}

void QtGrid::ShowColumn(std::int32_t col)
{
    m_view->ShowColumn(col);
}

void QtGrid::ShowCurrentRow()
{
    m_view->ShowCurrentRow();
}

void QtGrid::ShowSelection()
{
    m_view->ShowSelection();
}

void QtGrid::ShowNotice()
{
    m_view->ShowAll();
}

void QtGrid::ShowRedraw()
{
    m_view->setUpdatesEnabled(IsRedrawing());
}

void QtGrid::PressBegins()
{
    Focus().Hold();
    m_view->setFocus(Qt::MouseFocusReason);
}

void QtGrid::PressEnds()
{
    Focus().Release();
}

void QtGrid::Chose(std::int32_t currentRow, const RowSelection& selection)
{
    if (Mode() == SelectionMode::ListBox) {
        UserChose(currentRow, selection);
        return;
    }
    // Qt lets Ctrl take the one row out of the selection.
    RowSelection currentRowOnly;
    if (currentRow >= 0)
        currentRowOnly.Add({currentRow, currentRow});
    UserChose(currentRow, currentRowOnly);
}

void QtGrid::Scrolled(std::int32_t topRow)
{
    UserScrolled(topRow);
}

void QtGrid::Resized(std::int32_t col, std::int32_t twips)
{
    UserResized(col, twips);
}

void QtGrid::Picked(std::int32_t row, std::int32_t col, std::int32_t number)
{
    UserPicked(row, col, number);
}

void QtGrid::DoubleClicked()
{
    DblClick.Raise();
}

} // namespace KestrinProductEditor
