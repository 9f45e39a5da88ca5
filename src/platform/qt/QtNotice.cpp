// SPDX-License-Identifier: MIT
#include "platform/qt/QtNotice.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QTextOption>
#include <QToolTip>

namespace KestrinProductEditor {

QtNotice::QtNotice(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize QtNotice::sizeHint() const
{
    return minimumSizeHint();
}

QSize QtNotice::minimumSizeHint() const
{
    return {0, 2 * fontMetrics().lineSpacing()};
}

bool QtNotice::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && !text().isEmpty()) {
        QToolTip::showText(static_cast<const QHelpEvent*>(event)->globalPos(), text().toHtmlEscaped(), this);
        return true;
    }
    return QLabel::event(event);
}

void QtNotice::paintEvent(QPaintEvent* /*event*/)
{
    QTextOption option(Qt::AlignLeading | Qt::AlignTop);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    option.setTextDirection(layoutDirection());
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(QRectF(contentsRect()), text(), option);
}

} // namespace KestrinProductEditor
