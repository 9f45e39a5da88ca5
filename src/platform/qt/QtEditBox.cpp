// SPDX-License-Identifier: MIT
#include "platform/qt/QtEditBox.h"

#include <QPalette>

namespace KestrinProductEditor {

void PaintOnBackColor(QWidget& widget, std::uint32_t rgb)
{
    QPalette palette = widget.palette();
    palette.setColor(QPalette::Base, QColor::fromRgb(rgb));
    palette.setColor(QPalette::Text, QColor(0x10, 0x10, 0x10));
    palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0x40, 0x40, 0x40));
    palette.setColor(QPalette::PlaceholderText, QColor(0x50, 0x50, 0x50));
    palette.setColor(QPalette::Highlight, QColor(0x1F, 0x5F, 0xA8));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    widget.setPalette(palette);
}

} // namespace KestrinProductEditor
