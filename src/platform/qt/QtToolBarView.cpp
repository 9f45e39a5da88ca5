// SPDX-License-Identifier: MIT
#include "platform/qt/QtToolBarView.h"

#include "platform/qt/QtMenuBar.h"

#include <QVBoxLayout>

namespace KestrinProductEditor {

QtToolBarView::QtToolBarView(QWidget* parent)
    : QWidget(parent), m_menus(new QtMenuBar(this)), m_buttons(new QToolBar(this))
{
    // A desktop's own menu bar would belong to the host's window.
    m_menus->setNativeMenuBar(false);
    // Mirrored, it asks for the width that it has and would never let the window shrink.
    m_menus->setMinimumWidth(1);
    m_menus->setAccessibleName(QStringLiteral("Menus"));
    m_buttons->setAccessibleName(QStringLiteral("Tools"));
    m_buttons->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_buttons->setMovable(false);
    const int side = fontMetrics().height() + 4;
    m_buttons->setIconSize({side, side});

    auto* const rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_menus);
    rows->addWidget(m_buttons);
}

} // namespace KestrinProductEditor
