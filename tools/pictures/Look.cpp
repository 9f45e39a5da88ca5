// SPDX-License-Identifier: MIT
#include "Look.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QToolTip>

namespace KestrinProductEditor {

namespace {

/// As desktops with dark themes hand it to their programs.
[[nodiscard]] QPalette DarkPalette()
{
    const QColor text(0xEE, 0xEE, 0xEE);
    const QColor grey(0x8A, 0x8A, 0x8A);
    QPalette palette(QColor(0x3A, 0x3D, 0x41), QColor(0x2B, 0x2D, 0x30));
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::Base, QColor(0x1E, 0x1F, 0x22));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x28, 0x2B));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x6D, 0xB5));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(0x7A, 0xB4, 0xF0));
    palette.setColor(QPalette::ToolTipBase, QColor(0x3A, 0x3D, 0x41));
    palette.setColor(QPalette::ToolTipText, text);
    palette.setColor(QPalette::PlaceholderText, grey);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x45, 0x48, 0x4D));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, grey);
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(QPalette::Disabled, role, grey);
    return palette;
}

} // namespace

void UseLook(Theme theme, Direction direction)
{
    QApplication::setPalette(theme == Theme::Dark ? DarkPalette() : QApplication::style()->standardPalette());
    QApplication::setLayoutDirection(direction == Direction::RightToLeft ? Qt::RightToLeft : Qt::LeftToRight);
}

} // namespace KestrinProductEditor
