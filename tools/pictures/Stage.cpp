// SPDX-License-Identifier: MIT
#include "Stage.h"

#include "platform/qt/QtForm.h"

#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr int kLongestScene = 60'000; // milliseconds

void SendKey(QWidget& window, int key, Qt::KeyboardModifiers modifiers, const QString& text)
{
    // An open list takes the keys, as it does on a screen.
    QWidget* target = QApplication::activePopupWidget();
    if (target == nullptr)
        target = window.focusWidget() == nullptr ? &window : window.focusWidget();
    else if (target->focusWidget() != nullptr)
        target = target->focusWidget();
    const QPointer<QWidget> guard(target);
    QKeyEvent press(QEvent::KeyPress, key, modifiers, text);
    QApplication::sendEvent(target, &press);
    QKeyEvent release(QEvent::KeyRelease, key, modifiers, text);
    if (guard)
        QApplication::sendEvent(target, &release);
}

} // namespace

Stage::Stage()
{
    qApp->installEventFilter(this);
    m_watchdog.setSingleShot(true);
    connect(&m_watchdog, &QTimer::timeout, this, [] {
        std::fputs("kstnedit-pictures: a window waits for ever\n", stderr);
        std::_Exit(EXIT_FAILURE);
    });
}

Stage::~Stage() = default;

void Stage::Play(const std::function<void()>& scene)
{
    m_failure.clear();
    m_watchdog.start(kLongestScene);
    scene();
    m_watchdog.stop();
    const bool isOver = std::exchange(m_acts, {}).empty();
    if (!m_failure.empty())
        throw std::runtime_error(m_failure);
    if (!isOver)
        throw std::runtime_error("a window was not shown");
}

void Stage::Press(QWidget& window, int key, Qt::KeyboardModifiers modifiers)
{
    SendKey(window, key, modifiers, key == Qt::Key_Tab ? QStringLiteral("\t") : QString());
}

void Stage::Type(QWidget& window, const QString& text)
{
    for (const QChar character : text)
        SendKey(window, 0, Qt::NoModifier, character);
}

void Stage::Click(QWidget& window, const QString& button)
{
    auto& found = Find<QAbstractButton>(window, button);
    if (!found.isVisible() || !found.isEnabled())
        throw std::runtime_error(button.toStdString() + " cannot be clicked");
    found.setFocus(Qt::MouseFocusReason);
    found.click();
}

void Stage::ChooseTool(QWidget& window, const QString& id)
{
    auto& action = Find<QAction>(window, id);
    if (!action.isEnabled())
        throw std::runtime_error(id.toStdString() + " cannot be chosen");
    action.trigger();
}

bool Stage::eventFilter(QObject* watched, QEvent* event)
{
    auto* const dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
    if (dialog != nullptr) {
        // Once it waits in its own event loop.
        QTimer::singleShot(0, dialog, [this, dialog] { PrvRun(*dialog); });
    }
    return QObject::eventFilter(watched, event);
}

void Stage::PrvRun(QWidget& window)
{
    const QPointer<QWidget> guard(&window);
    if (m_failure.empty()) {
        try {
            if (m_acts.empty())
                throw std::runtime_error("a window was shown unasked: " + window.windowTitle().toStdString());
            const Act act = std::move(m_acts.front());
            m_acts.pop_front();
            act(window);
        } catch (const std::exception& failure) {
            if (m_failure.empty())
                m_failure = failure.what();
        }
    }
    if (guard)
        PrvClose(window);
}

void Stage::PrvClose(QWidget& window)
{
    const auto& shown = QtForm::Shown();
    const auto form = std::find_if(shown.begin(), shown.end(),
                                   [&](const QtForm* other) { return &other->Window() == &window; });
    if (form != shown.end())
        (*form)->EndModal();
    else if (auto* const message = qobject_cast<QDialog*>(&window);
             message != nullptr && message->isVisible())
        message->reject();
}

} // namespace KestrinProductEditor
