// SPDX-License-Identifier: MIT
#pragma once

#include <QMenuBar>
#include <QPointer>

namespace KestrinProductEditor {

/// A menu bar that gives the focus back to whatever had it, also when a second menu was opened by its letter
/// while the bar itself had the focus: Qt forgets then where it came from.
class QtMenuBar final : public QMenuBar
{
public:
    explicit QtMenuBar(QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QPointer<QWidget> m_before;
};

} // namespace KestrinProductEditor
