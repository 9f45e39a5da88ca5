// SPDX-License-Identifier: MIT
#include "platform/qt/QtMenuBar.h"

#include <QApplication>

namespace KestrinProductEditor {

QtMenuBar::QtMenuBar(QWidget* parent) : QMenuBar(parent)
{
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, QWidget* now) {
        if (now == this && old != nullptr)
            m_before = old;
    });
}

void QtMenuBar::keyPressEvent(QKeyEvent* event)
{
    QMenuBar::keyPressEvent(event);
    if (hasFocus() && activeAction() == nullptr && m_before != nullptr)
        m_before->setFocus(Qt::MenuBarFocusReason);
}

} // namespace KestrinProductEditor
