// SPDX-License-Identifier: MIT
#pragma once

#include <QMenuBar>
#include <QToolBar>
#include <QWidget>

namespace KestrinProductEditor {

/// The place of a menu bar with a row of tool buttons under it.
class QtToolBarView final : public QWidget
{
public:
    explicit QtToolBarView(QWidget* parent = nullptr);

    [[nodiscard]] QMenuBar& Menus() const { return *m_menus; }
    [[nodiscard]] QToolBar& Buttons() const { return *m_buttons; }

private:
    QMenuBar* m_menus;
    QToolBar* m_buttons;
};

} // namespace KestrinProductEditor
