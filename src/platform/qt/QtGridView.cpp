// SPDX-License-Identifier: MIT
#include "platform/qt/QtGridView.h"

#include "platform/qt/QtGridDelegate.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtTwips.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QHelpEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

#include <algorithm>
#include <cmath>

namespace KestrinProductEditor {

namespace {

constexpr int kRowPadding = 7;
constexpr int kSmallestColumn = 12;
// Up to this many rows the fitting width looks at all of them.
constexpr int kFewRows = 500;
// A page of rows, for a view that has no height yet.
constexpr int kGuessedPage = 50;
// A fitted column is never wider than the view, and this many characters where that is more.
constexpr int kWidestFit = 60;
constexpr int kNoticeMargin = 16;

} // namespace

/// While one lives, Qt's models follow the grid, and nothing scrolls by itself.
class QtGridView::Mirroring
{
public:
    explicit Mirroring(QtGridView& view) : m_view(view), m_autoScroll(view.hasAutoScroll())
    {
        ++m_view.m_mirroring;
        m_view.setAutoScroll(false);
    }
    Mirroring(const Mirroring&) = delete;
    Mirroring& operator=(const Mirroring&) = delete;
    ~Mirroring()
    {
        m_view.setAutoScroll(m_autoScroll);
        --m_view.m_mirroring;
    }

private:
    QtGridView& m_view;
    bool m_autoScroll;
};

QtGridView::QtGridView(QWidget* parent) : QTableView(parent)
{
    // Qt would give the focus before the press is seen; the press takes it itself.
    setFocusPolicy(Qt::TabFocus);
    setItemDelegate(
        new QtGridDelegate(this)); // NOLINT(cppcoreguidelines-owning-memory): the view is its parent
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    viewport()->setMouseTracking(true);

    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    PrvFitRowHeight();

    QHeaderView& header = *horizontalHeader();
    // Each would ask the selection about every row.
    header.setHighlightSections(false);
    header.setSectionsClickable(false);
    header.setMinimumSectionSize(kSmallestColumn);
    header.viewport()->setMouseTracking(true);
    header.viewport()->installEventFilter(this);
    connect(&header, &QHeaderView::sectionResized, this, [this](int col, int, int pixels) {
        // A width keeps its twips unless the user made it another one.
        if (m_mirroring == 0 && m_listener && pixels > 0 && pixels != PrvPixelsOf(col))
            m_listener->Resized(col, static_cast<std::int32_t>(std::lround(TwipsFromPixels(*this, pixels))));
    });
    connect(&header, &QHeaderView::sectionDoubleClicked, this, [this] {
        m_isMouseOnHeader = true;
        if (m_listener)
            m_listener->DoubleClicked();
    });
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int value) {
        if (m_mirroring == 0 && m_listener)
            m_listener->Scrolled(m_model->GridRow(value));
    });
}

QtGridView::~QtGridView()
{
    PrvCloseDropDown();
}

void QtGridView::Attach(const GridBase& grid, QtGridModel& model, Listener& listener)
{
    m_grid = &grid;
    m_model = &model;
    {
        const Mirroring mirroring(*this);
        setModel(&model);
        // The header would ask about every selected row before it paints a column: its own model has none.
        QHeaderView* const header = horizontalHeader();
        header->setSelectionModel(
            new QItemSelectionModel(&model, header)); // NOLINT(cppcoreguidelines-owning-memory): its parent's
    }
    const auto noteChoice = [this] {
        if (m_mirroring > 0)
            return;
        m_hasChosen = true;
        if (m_acting == 0)
            PrvTell();
    };
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this, noteChoice);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, noteChoice);
    m_listener = &listener;
    ShowAll();
}

void QtGridView::Detach()
{
    const Mirroring mirroring(*this);
    PrvCloseDropDown();
    m_listener = nullptr;
    m_grid = nullptr;
    m_model = nullptr;
    setModel(nullptr);
}

void QtGridView::ShowAll()
{
    PrvCloseDropDown();
    const Mirroring mirroring(*this);
    m_model->TakeShape();
    horizontalHeader()->setVisible(m_grid->FixedRows() > 0);
    for (int col = 0; col < m_model->columnCount(); ++col)
        ShowColumn(col);
    PrvMirrorCurrentRow();
    PrvMirrorSelection();
    PrvScrollToTopRow();
    setAccessibleDescription(ToQt(m_grid->Notice()));
    ShowCells();
}

void QtGridView::ShowCells()
{
    viewport()->update();
    horizontalHeader()->viewport()->update();
}

void QtGridView::ShowColumn(std::int32_t col)
{
    const Mirroring mirroring(*this);
    const int pixels = PrvPixelsOf(col);
    const bool isHidden = m_grid->IsColHidden(col);
    if (isColumnHidden(col) != isHidden)
        setColumnHidden(col, isHidden);
    if (!isHidden && columnWidth(col) != pixels)
        setColumnWidth(col, pixels);
    ShowCells();
}

void QtGridView::ShowCurrentRow()
{
    {
        const Mirroring mirroring(*this);
        PrvMirrorCurrentRow();
    }
    PrvMirrorSelection();
    if (!isVisible()) {
        m_owesCurrentRow = true;
        return;
    }
    executeDelayedItemsLayout();
    scrollTo(currentIndex());
    viewport()->update();
}

void QtGridView::ShowSelection()
{
    PrvMirrorSelection();
}

int QtGridView::FittingWidth(int col) const
{
    ensurePolished();
    const int rows = m_model->rowCount();
    int first = 0;
    int last = rows - 1;
    if (rows > kFewRows) {
        first = std::clamp(m_model->ModelRow(m_grid->TopRow()), 0, last);
        const int page =
            isVisible() ? viewport()->height() / verticalHeader()->defaultSectionSize() + 1 : kGuessedPage;
        last = std::min(last, first + page);
    }
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    int width = 0;
    for (int row = first; row <= last; ++row)
        width = std::max(width, itemDelegate()->sizeHint(option, m_model->index(row, col)).width());
    const int gridLine = showGrid() ? 1 : 0;
    const int widest = std::max(viewport()->width(), fontMetrics().averageCharWidth() * kWidestFit);
    return std::max(std::min(width + gridLine, widest), horizontalHeader()->sectionSizeHint(col));
}

std::int32_t QtGridView::MouseRow() const
{
    if (m_isMouseOnHeader)
        return 0;
    const int row = m_mouse && m_model ? rowAt(m_mouse->y()) : -1;
    return row < 0 ? -1 : m_model->GridRow(row);
}

QComboBox* QtGridView::OpenDropDown() const
{
    return m_dropDown;
}

QModelIndex QtGridView::indexAt(const QPoint& position) const
{
    const QModelIndex index = QTableView::indexAt(position);
    if (index.isValid() || !m_model)
        return index;
    // A row reaches beyond its last cell.
    const int row = rowAt(position.y());
    const int col = m_model->LastVisibleColumn();
    return row < 0 || col < 0 ? QModelIndex() : m_model->index(row, col);
}

void QtGridView::keyboardSearch(const QString& typed)
{
    if (!m_grid)
        return;
    if (!PrvIsTypingName())
        m_typedName.clear();
    if (m_typedName.isEmpty() && typed.trimmed().isEmpty())
        return;
    const int dropDownColumn = PrvFirstDropDownColumn();
    if (dropDownColumn >= 0) {
        PrvOpenDropDown(currentIndex().siblingAtColumn(dropDownColumn), typed);
        return;
    }
    m_typedName += typed;
    m_sinceTyped.start();
    const std::int32_t row = m_grid->RowNamed(FromQt(m_typedName));
    const QModelIndex index = m_model->index(m_model->ModelRow(row), m_model->FirstVisibleColumn());
    if (row < 0 || !index.isValid())
        return;
    PrvAct([this, &index] {
        selectionModel()->select(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
        m_leavesSelection = true;
        setCurrentIndex(index);
        m_leavesSelection = false;
    });
}

void QtGridView::scrollTo(const QModelIndex& index, ScrollHint hint)
{
    // Rows are chosen whole: only up and down matters.
    const int across = horizontalScrollBar()->value();
    QTableView::scrollTo(index, hint);
    horizontalScrollBar()->setValue(across);
}

bool QtGridView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == horizontalHeader()->viewport()) {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
            m_isMouseOnHeader = true;
            if (!PrvTakeFocus())
                return true;
            break;
        case QEvent::MouseMove:
        case QEvent::MouseButtonDblClick:
            m_isMouseOnHeader = true;
            break;
        case QEvent::Leave:
            m_isMouseOnHeader = false;
            break;
        case QEvent::ToolTip:
            PrvShowTitle(static_cast<const QHelpEvent&>(*event));
            return true;
        default:
            break;
        }
    } else if (event->type() == QEvent::Hide && watched == m_dropDownList) {
        // It is closing; the choice is still to be told.
        watched->removeEventFilter(this);
        m_dropDown->hide();
        m_dropDown->deleteLater();
        m_dropDown.clear();
        m_dropDownList.clear();
    }
    return QTableView::eventFilter(watched, event);
}

bool QtGridView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        m_mouse.reset();
    return QTableView::viewportEvent(event);
}

void QtGridView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        PrvFitRowHeight();
    if (event->type() == QEvent::EnabledChange && !isEnabled())
        PrvCloseDropDown();
}

void QtGridView::focusInEvent(QFocusEvent* event)
{
    PrvTakeName();
    // Qt would look for a row to make current.
    m_isGainingFocus = true;
    QTableView::focusInEvent(event);
    m_isGainingFocus = false;
}

void QtGridView::focusOutEvent(QFocusEvent* event)
{
    m_typedName.clear();
    QTableView::focusOutEvent(event);
}

void QtGridView::hideEvent(QHideEvent* event)
{
    PrvCloseDropDown();
    QTableView::hideEvent(event);
}

void QtGridView::keyPressEvent(QKeyEvent* event)
{
    if (!m_grid) {
        event->ignore();
        return;
    }
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isChord = (modifiers & (Qt::AltModifier | Qt::MetaModifier | Qt::ControlModifier)) != 0;
    const auto actAsQt = [this, event] {
        m_typedName.clear();
        PrvAct([this, event] { QTableView::keyPressEvent(event); });
    };
    const auto openDropDown = [this, event] {
        const int col = PrvFirstDropDownColumn();
        const bool isOpen = col >= 0 && PrvOpenDropDown(currentIndex().siblingAtColumn(col), {});
        event->setAccepted(isOpen);
        return isOpen;
    };

    switch (event->key()) {
    case Qt::Key_Down:
    case Qt::Key_Up:
        if (modifiers == Qt::AltModifier && openDropDown())
            return;
        actAsQt();
        return;
    case Qt::Key_PageDown:
    case Qt::Key_PageUp:
    case Qt::Key_Home:
    case Qt::Key_End:
        actAsQt();
        return;
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (isChord) {
            event->ignore();
            return;
        }
        horizontalScrollBar()->triggerAction((event->key() == Qt::Key_Right) != isRightToLeft()
                                                 ? QAbstractSlider::SliderSingleStepAdd
                                                 : QAbstractSlider::SliderSingleStepSub);
        return;
    case Qt::Key_F2:
    case Qt::Key_F4:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (isChord)
            event->ignore();
        else
            openDropDown();
        return;
    case Qt::Key_Space:
        if (PrvIsTypingName() && !isChord)
            keyboardSearch(QStringLiteral(" "));
        else if (isChord || !openDropDown())
            actAsQt();
        return;
    default:
        break;
    }
    if (event->matches(QKeySequence::SelectAll) || event->matches(QKeySequence::Copy)) {
        actAsQt();
        return;
    }
    // AltGr is Ctrl and Alt on some systems.
    const bool isCharacter =
        !event->text().isEmpty() && event->text().at(0).category() != QChar::Other_Control;
    if (isCharacter && (!isChord || modifiers.testFlags(Qt::ControlModifier | Qt::AltModifier)))
        keyboardSearch(event->text());
    else
        event->ignore();
}

void QtGridView::mousePressEvent(QMouseEvent* event)
{
    m_mouse = event->position().toPoint();
    m_isMouseOnHeader = false;
    m_pressedRow = rowAt(m_mouse->y());
    m_pressedColumn = columnAt(m_mouse->x());
    m_typedName.clear();
    const QPointer<QtGridView> self(this);
    if (m_listener)
        m_listener->PressBegins();
    PrvAct([this, event] { QTableView::mousePressEvent(event); });
    if (self && m_listener)
        m_listener->PressEnds();
}

void QtGridView::mouseDoubleClickEvent(QMouseEvent* event)
{
    // Qt's own way takes it for two clicks when the rows have changed in between.
    const int row = rowAt(event->position().toPoint().y());
    if (event->button() != Qt::LeftButton || row < 0 || row != m_pressedRow) {
        mousePressEvent(event);
        return;
    }
    m_mouse = event->position().toPoint();
    m_isMouseOnHeader = false;
    if (PrvTakeFocus() && m_listener)
        m_listener->DoubleClicked();
}

void QtGridView::mouseMoveEvent(QMouseEvent* event)
{
    m_mouse = event->position().toPoint();
    m_isMouseOnHeader = false;
    PrvAct([this, event] { QTableView::mouseMoveEvent(event); });
}

void QtGridView::mouseReleaseEvent(QMouseEvent* event)
{
    const QPoint position = event->position().toPoint();
    const bool isClick = event->button() == Qt::LeftButton && m_pressedColumn >= 0 &&
                         rowAt(position.y()) == m_pressedRow && columnAt(position.x()) == m_pressedColumn;
    const QPointer<QtGridView> self(this);
    PrvAct([this, event] { QTableView::mouseReleaseEvent(event); });
    if (self && m_model && isClick)
        PrvOpenDropDown(m_model->index(m_pressedRow, m_pressedColumn), {});
}

void QtGridView::paintEvent(QPaintEvent* event)
{
    PrvTakeName();
    QTableView::paintEvent(event);
    if (!m_grid)
        return;
    QPainter painter(viewport());
    if (m_grid->Notice().empty())
        PrvPaintCurrentRow(painter);
    else
        PrvPaintNotice(painter);
}

void QtGridView::showEvent(QShowEvent* event)
{
    QTableView::showEvent(event);
    PrvTakeName();
    updateGeometries();
    if (m_owesCurrentRow)
        scrollTo(currentIndex());
    m_owesCurrentRow = false;
}

void QtGridView::timerEvent(QTimerEvent* event)
{
    PrvAct([this, event] { QTableView::timerEvent(event); });
}

void QtGridView::updateGeometries()
{
    const Mirroring mirroring(*this);
    QTableView::updateGeometries();
    if (m_grid)
        PrvScrollToTopRow();
}

QModelIndex QtGridView::moveCursor(CursorAction action, Qt::KeyboardModifiers)
{
    const int rows = m_model ? m_model->rowCount() : 0;
    if (m_isGainingFocus || rows == 0)
        return {};
    const int page = std::max(1, viewport()->height() / verticalHeader()->defaultSectionSize() - 1);
    const QModelIndex current = currentIndex();
    int row = current.row();
    switch (action) {
    case MoveUp:
        row -= 1;
        break;
    case MoveDown:
        row += 1;
        break;
    case MovePageUp:
        row -= page;
        break;
    case MovePageDown:
        row += page;
        break;
    case MoveHome:
        row = 0;
        break;
    case MoveEnd:
        row = rows - 1;
        break;
    default:
        return current;
    }
    return m_model->index(std::clamp(row, 0, rows - 1),
                          current.isValid() ? current.column() : m_model->FirstVisibleColumn());
}

void QtGridView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    // QTableView would list every cell for the screen reader.
    QAbstractItemView::selectionChanged(selected, deselected); // NOLINT(bugprone-parent-virtual-call)
    if (QAccessible::isActive()) {
        QAccessibleEvent event(this, QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&event);
    }
}

QItemSelectionModel::SelectionFlags QtGridView::selectionCommand(const QModelIndex& index,
                                                                 const QEvent* event) const
{
    if (m_mirroring > 0 || m_leavesSelection)
        return QItemSelectionModel::NoUpdate;
    QItemSelectionModel::SelectionFlags command = QTableView::selectionCommand(index, event);
    // Shift selects up to there and nothing else; Qt leaves older ranges.
    if (const auto* const input = dynamic_cast<const QInputEvent*>(event)) {
        const Qt::KeyboardModifiers keys = input->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier);
        if (keys == Qt::ShiftModifier && command.testFlags(QItemSelectionModel::SelectCurrent))
            command |= QItemSelectionModel::Clear;
    }
    return command;
}

int QtGridView::sizeHintForColumn(int column) const
{
    return m_model ? FittingWidth(column) : QTableView::sizeHintForColumn(column);
}

/// Runs what Qt makes of an event and reports the outcome once, when it is complete.
template<class Act>
void QtGridView::PrvAct(Act act)
{
    PrvTakeMode();
    ++m_acting;
    act();
    --m_acting;
    if (m_acting == 0)
        PrvTell();
}

void QtGridView::PrvTell()
{
    if (!m_hasChosen || !m_listener)
        return;
    m_hasChosen = false;
    const QModelIndex current = currentIndex();
    const RowSelection selection = PrvSelectedRows();
    const QPointer<QtGridView> self(this);
    m_listener->Chose(current.isValid() ? m_model->GridRow(current.row()) : -1, selection);
    if (!self || !m_grid)
        return;
    // The grid may have decided otherwise.
    {
        const Mirroring mirroring(*this);
        PrvMirrorCurrentRow();
    }
    PrvMirrorSelection();
    viewport()->update();
}

bool QtGridView::PrvTakeFocus()
{
    const QPointer<QtGridView> self(this);
    if (m_listener) {
        m_listener->PressBegins();
        m_listener->PressEnds();
    }
    return !self.isNull();
}

void QtGridView::PrvMirrorCurrentRow()
{
    const int row = m_grid->CurrentRow() < 0 ? -1 : m_model->ModelRow(m_grid->CurrentRow());
    const QModelIndex current = currentIndex();
    if (current.isValid() ? current.row() == row : row < 0)
        return;
    setCurrentIndex(m_model->index(row, m_model->FirstVisibleColumn()));
}

void QtGridView::PrvMirrorSelection()
{
    const Mirroring mirroring(*this);
    PrvTakeMode();
    if (PrvSelectedRows() == m_grid->Selection())
        return;
    QItemSelection selection;
    const int lastRow = m_model->rowCount() - 1;
    const int lastCol = m_model->columnCount() - 1;
    for (const RowSelection::Range range : m_grid->Selection().Ranges()) {
        const int first = m_model->ModelRow(range.first);
        const int last = std::min(m_model->ModelRow(range.last), lastRow);
        if (first <= last && lastCol >= 0)
            selection.append(QItemSelectionRange(m_model->index(first, 0), m_model->index(last, lastCol)));
    }
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

/// A column that has a width can be seen, and its border be taken hold of.
int QtGridView::PrvPixelsOf(int col) const
{
    const std::int32_t twips = m_grid->ColWidth(col);
    const int pixels = PixelsFromTwips(*this, static_cast<float>(twips));
    return twips > 0 ? std::max(pixels, kSmallestColumn) : pixels;
}

bool QtGridView::PrvIsTypingName() const
{
    // Qt's interval is that of a fast typist, 400 ms.
    return !m_typedName.isEmpty() && m_sinceTyped.elapsed() < QApplication::keyboardInputInterval() * 5 / 2;
}

void QtGridView::PrvTakeMode()
{
    const bool isListBox = m_grid && m_grid->Mode() == KestrinProductEditor::SelectionMode::ListBox;
    const SelectionMode mode = isListBox ? ExtendedSelection : SingleSelection;
    if (selectionMode() != mode)
        setSelectionMode(mode);
}

void QtGridView::PrvScrollToTopRow()
{
    verticalScrollBar()->setValue(m_model->ModelRow(m_grid->TopRow()));
}

void QtGridView::PrvFitRowHeight()
{
    const int height = fontMetrics().height() + kRowPadding;
    if (verticalHeader()->defaultSectionSize() == height)
        return;
    // Qt would tell of each row that it is another height now: they step aside.
    const Mirroring mirroring(*this);
    if (m_model)
        m_model->DropRows();
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    if (m_model)
        ShowAll();
}

void QtGridView::PrvTakeName()
{
    // Qt names many widgets by their buddies, but not its tables.
    if (!m_label || m_label->buddy() != this) {
        const QList<QLabel*> labels = window()->findChildren<QLabel*>();
        const auto found = std::find_if(labels.begin(), labels.end(),
                                        [this](const QLabel* label) { return label->buddy() == this; });
        m_label = found == labels.end() ? nullptr : *found;
    }
    QAccessibleInterface* const label = m_label ? QAccessible::queryAccessibleInterface(m_label) : nullptr;
    if (label && accessibleName() != label->text(QAccessible::Name))
        setAccessibleName(label->text(QAccessible::Name));
}

/// Shows the title of a column that is too narrow for it.
void QtGridView::PrvShowTitle(const QHelpEvent& event)
{
    const QHeaderView& header = *horizontalHeader();
    const int col = header.logicalIndexAt(event.pos());
    if (col < 0 || header.sectionSizeHint(col) <= header.sectionSize(col)) {
        QToolTip::hideText();
        return;
    }
    const QString title = m_model->headerData(col, Qt::Horizontal, Qt::DisplayRole).toString();
    QToolTip::showText(event.globalPos(), title.toHtmlEscaped(), header.viewport());
}

void QtGridView::PrvPaintCurrentRow(QPainter& painter)
{
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return;
    const QRect first = visualRect(current.siblingAtColumn(m_model->FirstVisibleColumn()));
    const QRect last = visualRect(current.siblingAtColumn(m_model->LastVisibleColumn()));
    const bool isSelected = selectionModel()->isSelected(current);
    QColor color = palette().color(isSelected ? QPalette::HighlightedText : QPalette::Text);
    color.setAlphaF(hasFocus() ? 0.9F : 0.4F);
    painter.setPen(QPen(color, 1, isSelected ? Qt::DotLine : Qt::SolidLine));
    painter.drawRect(first.united(last).adjusted(0, 0, -1, -1));
}

void QtGridView::PrvPaintNotice(QPainter& painter)
{
    QTextOption option(Qt::AlignCenter);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(Qt::LayoutDirectionAuto); // of the text, whatever the window's
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(
        QRectF(viewport()->rect()).adjusted(kNoticeMargin, kNoticeMargin, -kNoticeMargin, -kNoticeMargin),
        ToQt(m_grid->Notice()), option);
}

RowSelection QtGridView::PrvSelectedRows() const
{
    RowSelection rows;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        rows.Add({m_model->GridRow(range.top()), m_model->GridRow(range.bottom())});
    return rows;
}

int QtGridView::PrvFirstDropDownColumn() const
{
    for (int col = 0; col < m_model->columnCount(); ++col)
        if (!m_grid->IsColHidden(col) && !m_grid->ComboList(col).empty())
            return col;
    return -1;
}

bool QtGridView::PrvOpenDropDown(const QModelIndex& index, const QString& typed)
{
    if (!m_model->IsDropDown(index))
        return false;
    PrvCloseDropDown();
    scrollTo(index);
    auto* const dropDown =
        new QComboBox(viewport()); // NOLINT(cppcoreguidelines-owning-memory): see eventFilter
    const std::int32_t row = m_model->GridRow(index.row());
    const std::int32_t col = index.column();
    const std::u16string chosen = m_grid->CellText(row, col);
    for (const GridBase::ComboEntry& entry : m_grid->ComboList(col)) {
        dropDown->addItem(ToQt(entry.text), entry.number);
        if (QString::number(entry.number) == ToQt(chosen))
            dropDown->setCurrentIndex(dropDown->count() - 1);
    }
    // The keys go to its list while it is open; the focus stays with the grid.
    dropDown->setFocusPolicy(Qt::NoFocus);
    dropDown->setAccessibleName(m_model->headerData(col, Qt::Horizontal, Qt::DisplayRole).toString());
    dropDown->setGeometry(visualRect(index));
    connect(dropDown, &QComboBox::activated, this, [this, dropDown, row, col](int entry) {
        if (m_listener)
            m_listener->Picked(row, col, dropDown->itemData(entry).toInt());
    });
    QAbstractItemView& list = *dropDown->view();
    list.setMinimumWidth(list.sizeHintForColumn(0) + 2 * list.frameWidth());
    m_dropDown = dropDown;
    m_dropDownList = list.parentWidget();
    m_dropDownList->installEventFilter(this);
    dropDown->show();
    dropDown->showPopup();
    if (!typed.isEmpty())
        list.keyboardSearch(typed);
    return true;
}

void QtGridView::PrvCloseDropDown()
{
    if (m_dropDown)
        m_dropDown->hidePopup();
}

} // namespace KestrinProductEditor
