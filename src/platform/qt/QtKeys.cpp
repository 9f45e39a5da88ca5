// SPDX-License-Identifier: MIT
#include "platform/qt/QtKeys.h"

#include <QEvent>
#include <QKeySequence>
#include <QPushButton>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::vector<int> KeysOf(Key key)
{
    switch (key) {
    case Key::None:
        return {};
    case Key::A:
        return {Qt::Key_A};
    case Key::E:
        return {Qt::Key_E};
    case Key::I:
        return {Qt::Key_I};
    case Key::N:
        return {Qt::Key_N};
    case Key::S:
        return {Qt::Key_S};
    case Key::F2:
        return {Qt::Key_F2};
    case Key::Enter:
        return {Qt::Key_Return, Qt::Key_Enter};
    case Key::Delete:
        return {Qt::Key_Delete};
    }
    return {};
}

[[nodiscard]] bool IsEnter(const QKeyEvent& event)
{
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

} // namespace

QString TextOf(Shortcut shortcut)
{
    const std::vector<int> keys = KeysOf(shortcut.key);
    if (keys.empty())
        return {};
    const auto modifiers = shortcut.control ? Qt::ControlModifier : Qt::NoModifier;
    const QKeyCombination combination(modifiers, static_cast<Qt::Key>(keys.front()));
    return QKeySequence(combination).toString(QKeySequence::NativeText);
}

void ClickButton(QAbstractButton& button)
{
    if (!button.isVisible() || !button.isEnabled())
        return;
    button.setFocus(Qt::ShortcutFocusReason);
    button.click();
}

void QtKeys::Watch(QWidget& widget)
{
    widget.installEventFilter(this);
}

void QtKeys::OnlyShow(QAction& action)
{
    action.installEventFilter(this);
}

void QtKeys::Bind(Shortcut shortcut, IsReady isReady, Act act)
{
    const auto modifiers = shortcut.control ? Qt::ControlModifier : Qt::NoModifier;
    m_bindings.push_back({.keys = KeysOf(shortcut.key),
                          .modifiers = modifiers,
                          .isReady = std::move(isReady),
                          .act = std::move(act)});
}

void QtKeys::BindEscape(IsReady isReady, Act act)
{
    m_bindings.push_back({.keys = {Qt::Key_Escape},
                          .modifiers = Qt::NoModifier,
                          .isReady = std::move(isReady),
                          .act = std::move(act)});
}

bool QtKeys::Take(const QKeyEvent& event, const QWidget& focus) const
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const auto found = std::find_if(m_bindings.begin(), m_bindings.end(), [&](const Binding& binding) {
        return binding.modifiers == modifiers &&
               std::find(binding.keys.begin(), binding.keys.end(), event.key()) != binding.keys.end() &&
               binding.isReady(focus);
    });
    if (found == m_bindings.end())
        return false;
    // A copy: what it does may bind more.
    const Act act = found->act;
    if (!event.isAutoRepeat())
        act();
    return true;
}

bool QtKeys::eventFilter(QObject* watched, QEvent* event)
{
    auto* const widget = qobject_cast<QWidget*>(watched);
    auto* const button = qobject_cast<QAbstractButton*>(watched);
    if (event->type() == QEvent::KeyPress && widget != nullptr) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (Take(key, *widget))
            return true;
        // Enter belongs to the button that has the focus, not to the default one.
        if (qobject_cast<QPushButton*>(watched) != nullptr && IsEnter(key)) {
            if (!key.isAutoRepeat())
                ClickButton(*button);
            return true;
        }
    }
    if (event->type() == QEvent::Shortcut && qobject_cast<QAction*>(watched) != nullptr)
        return true;
    // Qt would click a tenth of a second later, behind keys that were pressed after this one.
    if (event->type() == QEvent::Shortcut && button != nullptr) {
        ClickButton(*button);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace KestrinProductEditor
