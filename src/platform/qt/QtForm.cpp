// SPDX-License-Identifier: MIT
#include "platform/qt/QtForm.h"

#include "platform/qt/QtButton.h"
#include "platform/qt/QtLayouts.h"
#include "platform/qt/QtLineEdit.h"
#include "platform/qt/QtText.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDialog>
#include <QDir>
#include <QKeyEvent>
#include <QLayout>
#include <QMimeData>
#include <QScreen>
#include <QStyle>
#include <QUrl>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

// Milliseconds; a screen shows 60 frames a second.
constexpr qint64 kFrame = 16;

[[nodiscard]] std::vector<QtForm*>& ShownForms()
{
    // Of the one thread that has windows.
    static std::vector<QtForm*> shown;
    return shown;
}

[[nodiscard]] QString FirstFileOf(const QMimeData* data)
{
    if (data != nullptr) {
        for (const QUrl& url : data->urls()) {
            if (url.isLocalFile())
                return QDir::toNativeSeparators(url.toLocalFile());
        }
    }
    return {};
}

[[nodiscard]] bool IsActOfTheUser(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::TabletPress:
    case QEvent::TabletRelease:
    case QEvent::TabletMove:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::NativeGesture:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
    case QEvent::Close:
        return true;
    default:
        return false;
    }
}

/// Qt notes only in a window that is shown what became hidden behind a splitter; until then it takes room.
void MeasureAnew(QWidget& window)
{
    const QList<QWidget*> children = window.findChildren<QWidget*>();
    // From the inside outwards.
    std::for_each(children.rbegin(), children.rend(), [](QWidget* child) {
        if (QLayout* const layout = child->layout()) {
            layout->invalidate();
            layout->activate();
        }
        child->updateGeometry();
    });
    window.layout()->activate();
}

/// Where the inside of a window can lie. Nobody knows the frame of a window that is not shown yet; the style
/// draws windows, too.
[[nodiscard]] QRect RoomOn(const QScreen& screen, const QWidget& window)
{
    const QStyle& style = *window.style();
    const int border = style.pixelMetric(QStyle::PM_MdiSubWindowFrameWidth, nullptr, &window);
    const int title = style.pixelMetric(QStyle::PM_TitleBarHeight, nullptr, &window);
    return screen.availableGeometry().adjusted(border, title, -border, -border);
}

} // namespace

class QtForm::FormWindow final : public QDialog
{
public:
    explicit FormWindow(QtForm& form) : m_form(form)
    {
        // A program whose last window this is does not end with it.
        setAttribute(Qt::WA_QuitOnClose, false);
        setAcceptDrops(true);
    }

    /// Qt's own way to close a dialog; forms close by EndModal only.
    void reject() override { PrvAskToClose(); }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore();
        PrvAskToClose();
    }

    // What no control wanted.
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (isEnter && m_form.PrvCanClickDefault() && !event->isAutoRepeat())
            ClickButton(*m_form.m_defaultButton);
        else if (!m_form.m_controls->Keys().Take(*event, *this))
            event->ignore();
    }

    void dragEnterEvent(QDragEnterEvent* event) override
    {
        if (!FirstFileOf(event->mimeData()).isEmpty())
            event->acceptProposedAction();
    }

    void dropEvent(QDropEvent* event) override
    {
        const QString path = FirstFileOf(event->mimeData());
        if (path.isEmpty())
            return;
        event->acceptProposedAction();
        const std::u16string text = FromQt(path);
        m_form.FileDrop.Raise(text);
    }

private:
    void PrvAskToClose()
    {
        if (m_form.m_busyFilter == nullptr && m_form.m_loop != nullptr && !m_form.m_isEnded)
            m_form.CloseBox.Raise();
    }

    QtForm& m_form;
};

/// Swallows what the user does to a busy form. What he does to a window in front of it passes.
class QtForm::BusyFilter final : public QObject
{
public:
    explicit BusyFilter(const QWidget& window) : m_window(window) { qApp->installEventFilter(this); }

protected:
    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        if (!IsActOfTheUser(event->type()) || QApplication::activeModalWidget() != &m_window)
            return false;
        event->ignore();
        return true;
    }

private:
    const QWidget& m_window;
};

QtForm::QtForm(std::u16string_view name) : m_window(std::make_unique<FormWindow>(*this))
{
    if (!SetUpForm(name, *m_window))
        throw AutomationError(kErrInvalidProcedureCall);
    m_controls = std::make_unique<QtControlSet>(*m_window);
    m_controls->Keys().BindEscape([this](const QWidget&) { return m_busyFilter == nullptr; },
                                  [this] { Escape.Raise(); });
    // In a box of one line Enter means nothing else.
    m_controls->Keys().Bind(
        {.key = Key::Enter, .control = false},
        [this](const QWidget& focus) {
            return dynamic_cast<const QtLineEdit*>(&focus) != nullptr && PrvCanClickDefault();
        },
        [this] { ClickButton(*m_defaultButton); });
}

QtForm::~QtForm()
{
    std::erase(ShownForms(), this);
}

const std::vector<QtForm*>& QtForm::Shown()
{
    return ShownForms();
}

QWidget* QtForm::FrontWindow()
{
    return ShownForms().empty() ? nullptr : ShownForms().back()->m_window.get();
}

void QtForm::SetCaption(std::u16string_view caption)
{
    m_caption = caption;
    m_window->setWindowTitle(ToQt(caption));
}

void QtForm::SetFirstFocus(IControl& control)
{
    m_controls->Focus().SetFirst(control);
}

void QtForm::SetDefaultButton(IButton& button)
{
    m_defaultButton = &dynamic_cast<QtButton&>(button).Widget();
    m_defaultButton->setDefault(true);
}

void QtForm::ShowModal()
{
    if (m_loop != nullptr)
        throw AutomationError(kErrInvalidProcedureCall);
    if (std::exchange(m_isEnded, false))
        return;

    QEventLoop loop;
    m_loop = &loop;
    QtForm* const below = ShownForms().empty() ? nullptr : ShownForms().back();
    ShownForms().push_back(this);
    PrvPlace(below);
    // Before Qt chooses a control by itself; told when the window is there.
    m_controls->Focus().Hold();
    m_controls->Focus().Begin();
    m_window->show();
    m_window->raise();
    m_window->activateWindow();
    m_controls->Focus().Release();
    if (!m_isEnded)
        loop.exec();
    m_controls->Focus().End();
    m_window->hide();
    std::erase(ShownForms(), this);
    m_loop = nullptr;
    m_isEnded = false;
    if (below != nullptr)
        below->m_controls->Focus().Return();
}

void QtForm::EndModal()
{
    m_isEnded = true;
    m_controls->Focus().End();
    m_window->hide();
    if (m_loop != nullptr)
        m_loop->quit();
}

void QtForm::SetBusy(bool bBusy)
{
    if (bBusy == (m_busyFilter != nullptr))
        return;
    if (bBusy) {
        m_busyFilter = std::make_unique<BusyFilter>(*m_window);
        m_window->setEnabled(false);
        m_sinceFrame.invalidate();
    } else {
        // What was done up to now is swallowed, too.
        PrvProcessEvents();
        m_busyFilter.reset();
        m_window->setEnabled(true);
        m_controls->Focus().Regain();
    }
}

void QtForm::KeepPainting()
{
    if (m_busyFilter == nullptr || (m_sinceFrame.isValid() && m_sinceFrame.elapsed() < kFrame))
        return;
    PrvProcessEvents();
    m_sinceFrame.start();
}

QWidget& QtForm::Window() const
{
    return *m_window;
}

void QtForm::PrvPlace(const QtForm* below)
{
    m_window->setWindowFlags(below == nullptr ? Qt::Window
                                              : Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                                    Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    m_window->setWindowModality(Qt::ApplicationModal);
    // The layout's size, more where fonts are large, and never more than the screen.
    MeasureAnew(*m_window);
    const QRect room = RoomOn(*m_window->screen(), *m_window);
    m_window->resize(m_window->size().expandedTo(m_window->sizeHint()).boundedTo(room.size()));
    if (below == nullptr)
        return;
    m_window->winId();
    m_window->windowHandle()->setTransientParent(below->m_window->windowHandle());
    QRect place = m_window->geometry();
    place.moveCenter(below->m_window->geometry().center());
    place.moveRight(std::min(place.right(), room.right()));
    place.moveBottom(std::min(place.bottom(), room.bottom()));
    place.moveTopLeft({std::max(place.left(), room.left()), std::max(place.top(), room.top())});
    m_window->setGeometry(place);
}

bool QtForm::PrvCanClickDefault() const
{
    return m_defaultButton != nullptr && m_defaultButton->isVisible() && m_defaultButton->isEnabled();
}

void QtForm::PrvProcessEvents()
{
    if (std::exchange(m_isProcessing, true))
        return;
    QCoreApplication::processEvents();
    m_isProcessing = false;
}

} // namespace KestrinProductEditor
