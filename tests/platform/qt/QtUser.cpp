// SPDX-License-Identifier: MIT
#include "platform/qt/QtUser.h"

#include "platform/Text.h"
#include "platform/qt/QtForm.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtTwips.h"
#include "platform/qt/QtUserControl.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QPointer>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QToolButton>
#include <QUrl>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr int kLongestTest = 120'000; // milliseconds

void Fail(std::string_view act, std::u16string_view name, std::string_view reason)
{
    ADD_FAILURE() << act << " " << ToUtf8(name) << ": " << reason;
}

[[nodiscard]] Qt::KeyboardModifiers ModifiersOf(IUser::Modifier modifier)
{
    switch (modifier) {
    case IUser::Modifier::Control:
        return Qt::ControlModifier;
    case IUser::Modifier::Shift:
        return Qt::ShiftModifier;
    case IUser::Modifier::None:
        break;
    }
    return Qt::NoModifier;
}

[[nodiscard]] Qt::Key KeyOf(IUser::NamedKey key)
{
    using NamedKey = IUser::NamedKey;
    switch (key) {
    case NamedKey::Tab:
        return Qt::Key_Tab;
    case NamedKey::BackTab:
        return Qt::Key_Backtab;
    case NamedKey::Enter:
        return Qt::Key_Return;
    case NamedKey::Escape:
        return Qt::Key_Escape;
    case NamedKey::Backspace:
        return Qt::Key_Backspace;
    case NamedKey::Delete:
        return Qt::Key_Delete;
    case NamedKey::Left:
        return Qt::Key_Left;
    case NamedKey::Right:
        return Qt::Key_Right;
    case NamedKey::Up:
        return Qt::Key_Up;
    case NamedKey::Down:
        return Qt::Key_Down;
    case NamedKey::Home:
        return Qt::Key_Home;
    case NamedKey::End:
        return Qt::Key_End;
    case NamedKey::PageUp:
        return Qt::Key_PageUp;
    case NamedKey::PageDown:
        return Qt::Key_PageDown;
    case NamedKey::F2:
        return Qt::Key_F2;
    }
    return Qt::Key_unknown;
}

/// What a keyboard sends along with a key.
[[nodiscard]] QString TextOfKey(Qt::Key key)
{
    switch (key) {
    case Qt::Key_Tab:
        return QStringLiteral("\t");
    case Qt::Key_Return:
        return QStringLiteral("\r");
    case Qt::Key_Escape:
        return QStringLiteral("\x1b");
    case Qt::Key_Backspace:
        return QStringLiteral("\b");
    case Qt::Key_Delete:
        return QStringLiteral("\x7f");
    default:
        return {};
    }
}

/// A caption as it is read: without the mark of its letter.
[[nodiscard]] std::u16string Read(const QString& caption)
{
    QString text;
    for (qsizetype at = 0; at < caption.size(); ++at) {
        if (caption[at] == u'&' && at + 1 < caption.size())
            ++at;
        text += caption[at];
    }
    return FromQt(text);
}

[[nodiscard]] MessageAnswer CarefulAnswerOf(const QMessageBox& box)
{
    if (box.button(QMessageBox::Cancel) != nullptr)
        return MessageAnswer::Cancel;
    return box.button(QMessageBox::No) != nullptr ? MessageAnswer::No : MessageAnswer::Ok;
}

[[nodiscard]] std::int32_t StyleOf(const QMessageBox& box)
{
    std::int32_t style = 0;
    switch (box.icon()) {
    case QMessageBox::Question:
        style = 0x20;
        break;
    case QMessageBox::Warning:
        style = 0x30;
        break;
    case QMessageBox::Information:
        style = 0x40;
        break;
    default:
        break;
    }
    switch (CarefulAnswerOf(box)) {
    case MessageAnswer::Cancel:
        return style + 3;
    case MessageAnswer::No:
        return style + 4;
    default:
        return style;
    }
}

[[nodiscard]] QMessageBox::StandardButton ButtonOf(MessageAnswer answer)
{
    switch (answer) {
    case MessageAnswer::Yes:
        return QMessageBox::Yes;
    case MessageAnswer::No:
        return QMessageBox::No;
    case MessageAnswer::Cancel:
        return QMessageBox::Cancel;
    case MessageAnswer::Ok:
        break;
    }
    return QMessageBox::Ok;
}

/// Where a person would hit the widget: a check box on its box, a text behind its last character.
[[nodiscard]] QPoint TargetOf(const QWidget& widget)
{
    const int middle = widget.height() / 2;
    if (qobject_cast<const QCheckBox*>(&widget) != nullptr)
        return {std::min(8, widget.width() / 2), middle};
    if (qobject_cast<const QLineEdit*>(&widget) != nullptr)
        return {widget.width() - 4, middle};
    return {widget.width() / 2, middle};
}

/// A scroll area takes the mouse on its viewport.
[[nodiscard]] QWidget& MouseTargetOf(QWidget& widget)
{
    auto* const area = qobject_cast<QAbstractScrollArea*>(&widget);
    return area != nullptr ? *area->viewport() : widget;
}

[[nodiscard]] bool CanBeChosen(const FileDialog& dialog, const QString& path)
{
    const QFileInfo info(path);
    if (dialog.kind == FileDialog::Kind::Open)
        return info.isFile();
    return !info.isDir() && info.absoluteDir().exists();
}

/// All that a mouse sends for it. The first click may end what the second one was meant for.
void SendDoubleClick(QWidget& target, QPoint point)
{
    const QPointer<QWidget> guard(&target);
    QTest::mouseClick(guard, Qt::LeftButton, Qt::NoModifier, point);
    if (guard && guard->isVisible())
        QTest::mouseDClick(guard, Qt::LeftButton, Qt::NoModifier, point);
    if (guard)
        QTest::mouseRelease(guard, Qt::LeftButton, Qt::NoModifier, point);
}

[[nodiscard]] QtForm* FrontForm()
{
    return QtForm::Shown().empty() ? nullptr : QtForm::Shown().back();
}

} // namespace

std::unique_ptr<IUser> MakeUser()
{
    return std::make_unique<QtUser>();
}

QtUser::QtUser()
{
    qApp->installEventFilter(this);
    m_watchdog.setSingleShot(true);
    connect(&m_watchdog, &QTimer::timeout, this, [] {
        std::fputs("a window waits for ever\n", stderr);
        std::abort();
    });
    m_watchdog.start(kLongestTest);
}

QtUser::~QtUser()
{
    EXPECT_TRUE(m_acts.empty()) << m_acts.size() << " forms never came";
    EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " messages never came";
    EXPECT_TRUE(m_paths.empty()) << m_paths.size() << " file dialogs never came";
}

// What is shown

bool QtUser::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched->isWidgetType()) {
        // Once it waits for somebody, in its own event loop.
        const auto later = [this](auto* shown, auto act) {
            QTimer::singleShot(0, this, [guard = QPointer(shown), act] {
                if (guard)
                    act(*guard);
            });
        };
        if (auto* const box = qobject_cast<QMessageBox*>(watched))
            later(box, [this](QMessageBox& shown) { PrvMessageShown(shown); });
        else if (auto* const dialog = qobject_cast<QFileDialog*>(watched))
            later(dialog, [this](QFileDialog& shown) { PrvFileDialogShown(shown); });
        else if (FrontForm() != nullptr && watched == &FrontForm()->Window())
            later(static_cast<QWidget*>(watched), [this](QWidget& shown) { PrvFormShown(shown); });
    }
    return QObject::eventFilter(watched, event);
}

void QtUser::PrvFormShown(QWidget& window)
{
    if (!window.isVisible())
        return;
    const QPointer<QWidget> guard(&window);
    // A form that was shown from inside this one's showing comes first.
    if (PrvSurface() != &window) {
        constexpr int kSoon = 5; // milliseconds
        QTimer::singleShot(kSoon, this, [this, guard] {
            if (guard)
                PrvFormShown(*guard);
        });
        return;
    }
    if (m_acts.empty()) {
        Fail("ShowModal", FromQt(window.objectName()), "nobody expected this form");
    } else {
        const std::function<void()> acts = std::move(m_acts.front());
        m_acts.pop_front();
        acts();
        if (guard && guard->isVisible())
            Fail("ShowModal", FromQt(window.objectName()), "the acts have left this form open");
    }
    const auto& shown = QtForm::Shown();
    const auto form = std::find_if(shown.begin(), shown.end(),
                                   [&](const QtForm* other) { return guard == &other->Window(); });
    if (form != shown.end() && guard->isVisible())
        (*form)->EndModal();
}

void QtUser::PrvMessageShown(QMessageBox& box)
{
    // A file dialog's own question, or its refusal.
    if (qobject_cast<QFileDialog*>(box.parent()) != nullptr) {
        QAbstractButton* const yes = box.button(QMessageBox::Yes);
        if (yes != nullptr)
            QTest::mouseClick(yes, Qt::LeftButton);
        else
            box.accept();
        return;
    }
    m_messages.push_back({FromQt(box.text()), StyleOf(box), FromQt(box.windowTitle())});
    std::optional<MessageAnswer> answer = CarefulAnswerOf(box);
    if (m_answers.empty()) {
        Fail("message", FromQt(box.text()), "nobody expected it");
    } else {
        answer = m_answers.front();
        m_answers.pop_front();
    }
    if (!answer) {
        QTest::keyClick(&box, Qt::Key_Escape);
    } else if (QAbstractButton* const button = box.button(ButtonOf(*answer))) {
        QTest::mouseClick(button, Qt::LeftButton);
    } else {
        Fail("message", FromQt(box.text()), "it has no such button");
        box.reject();
    }
}

void QtUser::PrvFileDialogShown(QFileDialog& dialog)
{
    if (m_paths.empty()) {
        Fail("file dialog", FromQt(dialog.windowTitle()), "nobody expected it");
        dialog.reject();
        return;
    }
    const std::optional<std::u16string> path = std::move(m_paths.front());
    m_paths.pop_front();
    if (!path) {
        QTest::keyClick(&dialog, Qt::Key_Escape);
        return;
    }
    auto* const edit = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    // Only what is typed there takes a file back that the dialog has begun with.
    edit->setFocus();
    if (!QTest::qWaitFor([edit] { return edit->hasFocus(); }))
        Fail("file dialog", *path, "its box gets no focus");
    edit->setText(ToQt(*path));
    QMetaObject::invokeMethod(&dialog, "accept");
    if (dialog.isVisible()) {
        Fail("file dialog", *path, "the dialog refuses it");
        dialog.reject();
    }
}

std::vector<std::u16string> QtUser::OpenForms() const
{
    std::vector<std::u16string> layouts;
    for (const QtForm* const form : QtForm::Shown()) {
        if (form->Window().isVisible())
            layouts.push_back(FromQt(form->Window().objectName()));
    }
    return layouts;
}

std::unique_ptr<IForm> QtUser::CreateForm(std::u16string_view name)
{
    return m_backend.CreateForm(name);
}

std::unique_ptr<IUserControl> QtUser::CreateUserControl(std::u16string_view name)
{
    std::unique_ptr<IUserControl> control = m_backend.CreateUserControl(name);
    m_userControl = control.get();
    // It may go before this user does.
    connect(static_cast<QWidget*>(control->NativeHandle()), &QObject::destroyed, this,
            [this, made = control.get()] {
                if (m_userControl == made)
                    m_userControl = nullptr;
            });
    return control;
}

std::optional<std::u16string> QtUser::ChooseFile(const FileDialog& dialog)
{
    m_fileDialogs.push_back(dialog);
    if (!m_paths.empty() && m_paths.front() && !CanBeChosen(dialog, ToQt(*m_paths.front()))) {
        // No dialog gives such a path, but the next moment can make it one.
        const std::optional<std::u16string> path = std::move(m_paths.front());
        m_paths.pop_front();
        return path;
    }
    return m_backend.ChooseFile(dialog);
}

// Finding things

QWidget* QtUser::PrvSurface() const
{
    if (QtForm* const form = FrontForm())
        return form->Window().isVisible() ? &form->Window() : nullptr;
    if (m_userControl == nullptr)
        return nullptr;
    auto* const widget = static_cast<QWidget*>(m_userControl->NativeHandle());
    if (widget != nullptr && !widget->isVisible()) {
        widget->show();
        QApplication::processEvents();
    }
    return widget;
}

IControlSet* QtUser::PrvControls() const
{
    if (QtForm* const form = FrontForm())
        return form;
    return m_userControl;
}

QWidget* QtUser::PrvFind(std::u16string_view name) const
{
    const QWidget* const surface = PrvSurface();
    return surface != nullptr ? surface->findChild<QWidget*>(ToQt(name)) : nullptr;
}

QWidget* QtUser::PrvReach(std::string_view act, std::u16string_view name) const
{
    const QWidget* const surface = PrvSurface();
    if (surface == nullptr)
        return nullptr;
    QWidget* const widget = PrvFind(name);
    // A busy form is disabled as a whole; what is done to it is really sent.
    const bool isBusy = !surface->isEnabled();
    if (widget == nullptr)
        Fail(act, name, "there is no such control");
    else if (!widget->isVisible())
        Fail(act, name, "it is hidden");
    else if (!widget->isEnabled() && !isBusy)
        Fail(act, name, "it is disabled");
    else
        return widget;
    return nullptr;
}

QtGridView* QtUser::PrvReachGrid(std::string_view act, std::u16string_view name) const
{
    return dynamic_cast<QtGridView*>(PrvReach(act, name));
}

QAction* QtUser::PrvTool(std::u16string_view id) const
{
    const QWidget* const surface = PrvSurface();
    return surface != nullptr ? surface->findChild<QAction*>(ToQt(id)) : nullptr;
}

// Acts

void QtUser::Click(std::u16string_view control)
{
    if (QWidget* const widget = PrvReach("Click", control)) {
        QWidget& target = MouseTargetOf(*widget);
        QTest::mouseClick(&target, Qt::LeftButton, Qt::NoModifier, TargetOf(target));
    }
}

void QtUser::DoubleClick(std::u16string_view control)
{
    if (QWidget* const widget = PrvReach("DoubleClick", control)) {
        QWidget& target = MouseTargetOf(*widget);
        SendDoubleClick(target, TargetOf(target));
    }
}

namespace {

/// The viewport of a grid's row and the point to hit there; the row is scrolled into sight first.
struct RowTarget
{
    QWidget* widget = nullptr;
    QPoint point;
};

[[nodiscard]] RowTarget TargetOfRow(QtGridView& view, const IGrid& grid, std::int32_t row)
{
    constexpr int kInside = 6;
    auto& model = static_cast<QtGridModel&>(*view.model());
    const int column = model.FirstVisibleColumn();
    if (row < grid.FixedRows()) {
        QHeaderView& header = *view.horizontalHeader();
        return {
            header.viewport(),
            {header.sectionViewportPosition(column) + header.sectionSize(column) / 2, header.height() / 2}};
    }
    const QModelIndex index = model.index(model.ModelRow(row), column);
    if (!index.isValid())
        return {};
    view.scrollTo(index);
    const QRect cell = view.visualRect(index);
    return {view.viewport(), {cell.left() + std::min(kInside, cell.width() / 2), cell.center().y()}};
}

} // namespace

void QtUser::ClickRow(std::u16string_view grid, std::int32_t row, Modifier modifier)
{
    QtGridView* const view = PrvReachGrid("ClickRow", grid);
    if (view == nullptr)
        return;
    const RowTarget target = TargetOfRow(*view, Grid(grid), row);
    if (target.widget == nullptr)
        Fail("ClickRow", grid, "there is no such row");
    else
        QTest::mouseClick(target.widget, Qt::LeftButton, ModifiersOf(modifier), target.point);
}

void QtUser::DoubleClickRow(std::u16string_view grid, std::int32_t row)
{
    QtGridView* const view = PrvReachGrid("DoubleClickRow", grid);
    if (view == nullptr)
        return;
    const RowTarget target = TargetOfRow(*view, Grid(grid), row);
    if (target.widget == nullptr)
        Fail("DoubleClickRow", grid, "there is no such row");
    else
        SendDoubleClick(*target.widget, target.point);
}

void QtUser::PrvSendKey(int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    QWidget* const surface = PrvSurface();
    if (surface == nullptr)
        return;
    QWidget* const focus = surface->window()->focusWidget();
    QWidget* const target = focus != nullptr ? focus : surface->window();
    const QPointer<QWidget> guard(target);
    QTest::sendKeyEvent(QTest::Press, target, static_cast<Qt::Key>(key), text, modifiers);
    if (guard)
        QTest::sendKeyEvent(QTest::Release, guard, static_cast<Qt::Key>(key), text, modifiers);
}

void QtUser::Type(std::u16string_view text)
{
    for (const uint codePoint : ToQt(text).toUcs4()) {
        if (codePoint == u'\n' || codePoint == u'\r') {
            Press(NamedKey::Enter, Modifier::None);
            continue;
        }
        const char32_t character = codePoint;
        const QString typed = QString::fromUcs4(&character, 1);
        const bool isAscii = codePoint < 0x7F;
        const int key = isAscii ? int{typed.toUpper().at(0).unicode()} : int{Qt::Key_unknown};
        const bool isCapital = isAscii && typed.at(0).isUpper();
        PrvSendKey(key, isCapital ? Qt::ShiftModifier : Qt::NoModifier, typed);
    }
}

void QtUser::Press(NamedKey key, Modifier modifier)
{
    const Qt::Key code = KeyOf(key);
    const auto shift = code == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier;
    PrvSendKey(code, ModifiersOf(modifier) | shift, TextOfKey(code));
}

void QtUser::PressControl(char letter)
{
    const QChar text(static_cast<char16_t>(letter - 'A' + 1));
    PrvSendKey(Qt::Key_A + (letter - 'A'), Qt::ControlModifier, QString(text));
}

void QtUser::Compose(std::u16string_view text)
{
    const QWidget* const surface = PrvSurface();
    QWidget* const focus = surface != nullptr ? surface->window()->focusWidget() : nullptr;
    if (focus == nullptr)
        return;
    QInputMethodEvent event;
    event.setCommitString(ToQt(text));
    QApplication::sendEvent(focus, &event);
}

void QtUser::ChooseTool(std::u16string_view id)
{
    if (PrvSurface() == nullptr)
        return;
    QAction* const action = PrvTool(id);
    if (action == nullptr) {
        Fail("ChooseTool", id, "there is no such tool");
        return;
    }
    QMenu* menu = action->menu();
    if (menu == nullptr) {
        for (QObject* const object : action->associatedObjects()) {
            if (auto* const holder = qobject_cast<QMenu*>(object))
                menu = holder;
        }
    }
    if (menu == nullptr || !menu->menuAction()->isEnabled() || !PrvSurface()->isEnabled()) {
        if (PrvSurface()->isEnabled())
            Fail("ChooseTool", id, "its menu is disabled");
        return;
    }
    menu->popup(PrvSurface()->mapToGlobal(QPoint(0, 0)));
    if (action == menu->menuAction()) {
        menu->close();
    } else if (!action->isEnabled()) {
        menu->close();
        Fail("ChooseTool", id, "it is disabled");
    } else {
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(action).center());
    }
}

void QtUser::ClickTool(std::u16string_view id)
{
    const QWidget* const surface = PrvSurface();
    if (surface == nullptr)
        return;
    for (QToolButton* const button : surface->findChildren<QToolButton*>()) {
        if (button->defaultAction() == nullptr || button->defaultAction()->objectName() != ToQt(id))
            continue;
        if (!button->isEnabled() && surface->isEnabled())
            Fail("ClickTool", id, "it is disabled");
        else
            QTest::mouseClick(button, Qt::LeftButton);
        return;
    }
    Fail("ClickTool", id, "there is no such button");
}

void QtUser::PickInCell(std::u16string_view grid, std::int32_t row, std::int32_t col, std::int32_t number)
{
    QtGridView* const view = PrvReachGrid("PickInCell", grid);
    if (view == nullptr || !PrvSurface()->isEnabled())
        return;
    const auto& base = dynamic_cast<const GridBase&>(Grid(grid));
    auto& model = static_cast<QtGridModel&>(*view->model());
    const QModelIndex cell = model.index(model.ModelRow(row), col);
    const auto& entries = base.ComboList(col);
    const auto entry =
        std::find_if(entries.begin(), entries.end(),
                     [number](const GridBase::ComboEntry& other) { return other.number == number; });
    if (!cell.isValid() || entry == entries.end()) {
        Fail("PickInCell", grid, "there is no such cell or entry");
        return;
    }
    view->scrollTo(cell);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, view->visualRect(cell).center());
    if (!QTest::qWaitFor([view] { return view->OpenDropDown() != nullptr; })) {
        Fail("PickInCell", grid, "no list opens");
        return;
    }
    QAbstractItemView& list = *view->OpenDropDown()->view();
    const QModelIndex item = list.model()->index(static_cast<int>(entry - entries.begin()), 0);
    list.scrollTo(item);
    QTest::mouseMove(list.viewport(), list.visualRect(item).center());
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.visualRect(item).center());
    if (!QTest::qWaitFor([view] { return view->OpenDropDown() == nullptr; }))
        Fail("PickInCell", grid, "the list stays open");
}

void QtUser::DragColumn(std::u16string_view grid, std::int32_t col, std::int32_t twips)
{
    QtGridView* const view = PrvReachGrid("DragColumn", grid);
    if (view == nullptr)
        return;
    QHeaderView& header = *view->horizontalHeader();
    const int width = header.sectionSize(col);
    const QPoint border(header.sectionViewportPosition(col) + width - 1, header.height() / 2);
    const QPoint target = border + QPoint(PixelsFromTwips(*view, static_cast<float>(twips)) - width, 0);
    QTest::mousePress(header.viewport(), Qt::LeftButton, Qt::NoModifier, border);
    QTest::mouseMove(header.viewport(), target);
    QTest::mouseRelease(header.viewport(), Qt::LeftButton, Qt::NoModifier, target);
}

void QtUser::CloseWindow()
{
    if (QWidget* const surface = PrvSurface())
        surface->window()->close();
}

void QtUser::DropFile(std::u16string_view path)
{
    QWidget* const surface = PrvSurface();
    if (surface == nullptr)
        return;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(ToQt(path))});
    const QPoint middle = surface->rect().center();
    QDragEnterEvent enter(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(surface, &enter);
    QDropEvent drop(middle, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(surface, &drop);
}

void QtUser::TabTo(std::u16string_view control)
{
    if (QWidget* const widget = PrvReach("TabTo", control)) {
        if (!PrvSurface()->isEnabled())
            return;
        widget->setFocus(Qt::TabFocusReason);
        // Also where the focus was there already: as once round with the key.
        if (auto* const line = qobject_cast<QLineEdit*>(widget);
            line != nullptr && line == line->window()->focusWidget())
            line->selectAll();
    }
}

void QtUser::ResizeUserControl(IUserControl& control, float widthTwips, float heightTwips)
{
    auto* const widget = static_cast<QWidget*>(control.NativeHandle());
    widget->resize(PixelsFromTwips(*widget, widthTwips), PixelsFromTwips(*widget, heightTwips));
    widget->show();
    QApplication::processEvents();
}

void QtUser::SetClipboard(std::u16string_view text)
{
    QApplication::clipboard()->setText(ToQt(text));
}

std::u16string QtUser::Clipboard() const
{
    return FromQt(QApplication::clipboard()->text());
}

// What there is to read

std::u16string QtUser::TextOf(std::u16string_view control) const
{
    const QWidget* const widget = PrvFind(control);
    if (widget == nullptr) {
        if (PrvSurface() != nullptr)
            Fail("TextOf", control, "there is no such control");
        return {};
    }
    if (qobject_cast<const QLineEdit*>(widget) != nullptr ||
        qobject_cast<const QPlainTextEdit*>(widget) != nullptr)
        return PrvControls()->TextBox(control).Text();
    if (const auto* const button = qobject_cast<const QAbstractButton*>(widget))
        return Read(button->text());
    if (dynamic_cast<const QtGridView*>(widget) != nullptr)
        return PrvControls()->Grid(control).Notice();
    if (qobject_cast<const QProgressBar*>(widget) != nullptr)
        return PrvControls()->ProgressBar(control).Caption();
    return PrvControls()->Label(control).Caption();
}

std::int32_t QtUser::ValueOf(std::u16string_view bar) const
{
    const auto* const widget = qobject_cast<const QProgressBar*>(PrvFind(bar));
    if (widget == nullptr) {
        Fail("ValueOf", bar, "there is no such bar");
        return 0;
    }
    return widget->value();
}

bool QtUser::IsShown(std::u16string_view control) const
{
    const QWidget* const widget = PrvFind(control);
    return widget != nullptr && widget->isVisible();
}

bool QtUser::IsEnabled(std::u16string_view control) const
{
    const QWidget* const widget = PrvFind(control);
    return widget != nullptr && widget->isEnabled();
}

bool QtUser::IsLocked(std::u16string_view box) const
{
    const QWidget* const widget = PrvFind(box);
    if (const auto* const note = qobject_cast<const QPlainTextEdit*>(widget))
        return note->isReadOnly();
    const auto* const line = qobject_cast<const QLineEdit*>(widget);
    return line != nullptr && line->isReadOnly();
}

bool QtUser::IsTicked(std::u16string_view box) const
{
    const auto* const check = qobject_cast<const QCheckBox*>(PrvFind(box));
    return check != nullptr && check->isChecked();
}

bool QtUser::CanChooseTool(std::u16string_view id) const
{
    const QAction* const action = PrvTool(id);
    if (action == nullptr || !action->isEnabled())
        return false;
    const auto holders = action->associatedObjects();
    return std::any_of(holders.begin(), holders.end(), [](const QObject* holder) {
        const auto* const widget = qobject_cast<const QWidget*>(holder);
        return widget != nullptr && widget->isEnabled();
    });
}

std::u16string QtUser::Focus() const
{
    const QWidget* const surface = PrvSurface();
    const QWidget* widget = surface != nullptr ? surface->window()->focusWidget() : nullptr;
    while (widget != nullptr && (widget->objectName().isEmpty() || widget->objectName().startsWith(u"qt_")))
        widget = widget->parentWidget();
    return widget != nullptr ? FromQt(widget->objectName()) : std::u16string();
}

std::u16string QtUser::WindowCaption() const
{
    const QWidget* const surface = PrvSurface();
    return surface != nullptr ? FromQt(surface->window()->windowTitle()) : std::u16string();
}

std::u16string QtUser::CellShown(std::u16string_view grid, std::int32_t row, std::int32_t col) const
{
    const auto* const view = dynamic_cast<const QtGridView*>(PrvFind(grid));
    if (view == nullptr)
        return {};
    const auto& model = static_cast<const QtGridModel&>(*view->model());
    const int modelRow = model.ModelRow(row);
    if (modelRow < 0)
        return FromQt(model.headerData(col, Qt::Horizontal, Qt::DisplayRole).toString());
    return FromQt(model.data(model.index(modelRow, col), Qt::DisplayRole).toString());
}

IGrid& QtUser::Grid(std::u16string_view name)
{
    return PrvControls()->Grid(name);
}

} // namespace KestrinProductEditor
