// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Shortcut.h"

#include <QAbstractButton>
#include <QAction>
#include <QKeyEvent>
#include <QObject>
#include <QString>
#include <QWidget>

#include <functional>
#include <vector>

namespace KestrinProductEditor {

/// How the shortcut is written in a menu, in the user's language: "Ctrl+N".
[[nodiscard]] QString TextOf(Shortcut shortcut);

/// Clicks a button as the mouse would: it gets the focus first. One that is hidden or disabled is left alone.
void ClickButton(QAbstractButton& button);

/// The keys of a window that are taken before its controls see them. Bindings are asked in the order in
/// which they were made; the first that is ready takes the key, and acts unless the key repeats by itself.
class QtKeys final : public QObject
{
public:
    using IsReady = std::function<bool(const QWidget& focus)>;
    using Act = std::function<void()>;

    /// Keys that arrive at the widget go through the bindings first.
    void Watch(QWidget& widget);
    /// The action's own keys are only shown with it: they would act in an open menu, whatever the bindings
    /// say.
    void OnlyShow(QAction& action);

    void Bind(Shortcut shortcut, IsReady isReady, Act act);
    void BindEscape(IsReady isReady, Act act);

    /// Whether a binding took the key.
    [[nodiscard]] bool Take(const QKeyEvent& event, const QWidget& focus) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Binding
    {
        std::vector<int> keys;
        Qt::KeyboardModifiers modifiers;
        IsReady isReady;
        Act act;
    };

    std::vector<Binding> m_bindings;
};

} // namespace KestrinProductEditor
