// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QAction>
#include <QObject>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>

namespace KestrinProductEditor {

/// Plays scenes in front of modal windows: each window that is shown, a form or a message, gets the next act
/// and is closed after it.
class Stage final : public QObject
{
public:
    using Act = std::function<void(QWidget& window)>;

    Stage();
    ~Stage() override;

    /// Acts run inside the window's own event loop. What one throws ends the scene: the windows close, and
    /// Play throws it.
    void AtNextWindow(Act act) { m_acts.push_back(std::move(act)); }
    /// Runs something that shows windows. Throws std::runtime_error for what an act threw, and when an act is
    /// left over because its window never came.
    void Play(const std::function<void()>& scene);

    // What a person does

    /// A key, or a character, to whatever has the focus in that window.
    static void Press(QWidget& window, int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    static void Type(QWidget& window, const QString& text);
    static void Click(QWidget& window, const QString& button);
    static void ChooseTool(QWidget& window, const QString& id);

    template<class Widget>
    [[nodiscard]] static Widget& Find(QWidget& window, const QString& name)
    {
        auto* const found = window.findChild<Widget*>(name);
        if (found == nullptr)
            throw std::runtime_error("no " + name.toStdString() + " in " + window.objectName().toStdString());
        return *found;
    }

protected:
    /// Waits for what is shown.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void PrvRun(QWidget& window);
    static void PrvClose(QWidget& window);

    std::deque<Act> m_acts;
    std::string m_failure; // of the first act that failed
    QTimer m_watchdog;
};

} // namespace KestrinProductEditor
