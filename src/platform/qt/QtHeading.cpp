// SPDX-License-Identifier: MIT
#include "platform/qt/QtHeading.h"

#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace KestrinProductEditor {

QtHeading::QtHeading(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
}

QSize QtHeading::sizeHint() const
{
    return minimumSizeHint();
}

QSize QtHeading::minimumSizeHint() const
{
    return {0, fontMetrics().height() + 2 * margin()};
}

bool QtHeading::event(QEvent* event)
{
    const bool isElided = fontMetrics().horizontalAdvance(PrvLine()) > contentsRect().width();
    if (event->type() == QEvent::ToolTip && isElided) {
        QToolTip::showText(static_cast<const QHelpEvent*>(event)->globalPos(), text().toHtmlEscaped(), this);
        return true;
    }
    return QLabel::event(event);
}

void QtHeading::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    const QString line = fontMetrics().elidedText(PrvLine(), Qt::ElideRight, contentsRect().width());
    const auto flags = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(&painter, contentsRect(), flags, palette(), isEnabled(), line, foregroundRole());
}

QString QtHeading::PrvLine() const
{
    QString line = text();
    for (QChar& character : line) {
        if (character == u'\r' || character == u'\n' || character == u'\t')
            character = u' ';
    }
    return line;
}

} // namespace KestrinProductEditor
