// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtGridModel.h"

#include <QElapsedTimer>
#include <QPoint>
#include <QPointer>
#include <QTableView>

#include <cstdint>
#include <optional>

class QComboBox;
class QHelpEvent;
class QLabel;

namespace KestrinProductEditor {

/// The widget of a grid; layouts place it as a promoted QTableView. It shows what a GridBase holds and
/// reports what the user does. Qt's selection model mirrors the grid's current row and selection; the grid is
/// right.
///
/// Keys beyond Qt's own: Home and End go to the first and the last row; Left and Right scroll; letters go to
/// the first row with that name, within a short while of each other as one name. Where a column has
/// drop-downs, Space, F2, F4, Enter and Alt+Down open that of the current row, letters open it and look
/// there, a click opens the one under the pointer. F2, Enter, Delete and Esc are left to the window
/// otherwise; Tab always is.
///
/// Its accessible name is that of the label whose buddy it is.
class QtGridView final : public QTableView
{
public:
    /// Who is told. Each call may end the view.
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

    explicit QtGridView(QWidget* parent = nullptr);
    ~QtGridView() override;

    /// Shows that grid. The model, the grid and the listener must stay until Detach, or until the view ends.
    void Attach(const GridBase& grid, QtGridModel& model, Listener& listener);
    void Detach();

    // What a grid asks for; nothing here is reported.

    void ShowAll();
    void ShowCells();
    void ShowColumn(std::int32_t col);
    void ShowCurrentRow();
    void ShowSelection();
    /// The width of what a column shows, in pixels: of the header and the rows in sight, of every row where
    /// there are few.
    [[nodiscard]] int FittingWidth(int col) const;

    /// The row under the pointer where the mouse last was: 0 on the header, -1 off the rows.
    [[nodiscard]] std::int32_t MouseRow() const;
    /// The list that is open at a cell; null for none.
    [[nodiscard]] QComboBox* OpenDropDown() const;

    [[nodiscard]] QModelIndex indexAt(const QPoint& position) const override;
    void keyboardSearch(const QString& typed) override;
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void updateGeometries() override;

    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                                       const QEvent* event) const override;
    [[nodiscard]] int sizeHintForColumn(int column) const override;

private:
    class Mirroring;

    template<class Act>
    void PrvAct(Act act);
    void PrvTell();
    /// False when that ended the view.
    bool PrvTakeFocus();
    void PrvMirrorCurrentRow();
    void PrvMirrorSelection();
    void PrvTakeMode();
    [[nodiscard]] int PrvPixelsOf(int col) const;
    [[nodiscard]] bool PrvIsTypingName() const;
    void PrvScrollToTopRow();
    void PrvFitRowHeight();
    void PrvTakeName();
    void PrvShowTitle(const QHelpEvent& event);
    void PrvPaintCurrentRow(QPainter& painter);
    void PrvPaintNotice(QPainter& painter);
    [[nodiscard]] RowSelection PrvSelectedRows() const;
    [[nodiscard]] int PrvFirstDropDownColumn() const;
    bool PrvOpenDropDown(const QModelIndex& index, const QString& typed);
    void PrvCloseDropDown();

    const GridBase* m_grid = nullptr;
    QtGridModel* m_model = nullptr;
    Listener* m_listener = nullptr;

    int m_mirroring = 0;            // Qt's models follow the grid: nothing to report
    int m_acting = 0;               // an act of the user is not over
    bool m_hasChosen = false;       // it touched the current row or the selection
    bool m_leavesSelection = false; // a new current row selects nothing
    bool m_isGainingFocus = false;
    bool m_owesCurrentRow = false; // to be scrolled into sight when the view is shown

    QString m_typedName;
    QElapsedTimer m_sinceTyped;

    std::optional<QPoint> m_mouse; // on the viewport
    bool m_isMouseOnHeader = false;
    int m_pressedRow = -1;
    int m_pressedColumn = -1;
    QPointer<QComboBox> m_dropDown; // while it is open
    QPointer<QWidget> m_dropDownList;
    QPointer<QLabel> m_label;
};

} // namespace KestrinProductEditor
