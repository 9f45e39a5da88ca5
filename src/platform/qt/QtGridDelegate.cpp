// SPDX-License-Identifier: MIT
#include "platform/qt/QtGridDelegate.h"

#include "platform/qt/QtGridModel.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

#include <cmath>

namespace KestrinProductEditor {

namespace {

// Legible on light and dark grounds alike: amber with a dark sign on it.
constexpr QRgb kWarning = 0xFFF2A900;
constexpr QRgb kWarningSign = 0xFF202020;
constexpr float kTint = 0.25F;

const QtGridModel& ModelOf(const QModelIndex& index)
{
    return static_cast<const QtGridModel&>(*index.model());
}

QColor TextColor(const QStyleOptionViewItem& option)
{
    const QPalette::ColorGroup group = !option.state.testFlag(QStyle::State_Enabled) ? QPalette::Disabled
                                       : option.state.testFlag(QStyle::State_Active) ? QPalette::Active
                                                                                     : QPalette::Inactive;
    return option.palette.color(
        group, option.state.testFlag(QStyle::State_Selected) ? QPalette::HighlightedText : QPalette::Text);
}

QColor Mixed(const QColor& ground, const QColor& color, float share)
{
    const auto mix = [share](int from, int to) {
        return static_cast<int>(
            std::lround(static_cast<float>(from) + static_cast<float>(to - from) * share));
    };
    return {mix(ground.red(), color.red()), mix(ground.green(), color.green()),
            mix(ground.blue(), color.blue())};
}

int ExtraWidth(const QStyleOptionViewItem& option)
{
    return option.fontMetrics.height();
}

void PaintWarning(QPainter& painter, const QRectF& place)
{
    const qreal side = place.height() * 0.8;
    QRectF box(0, 0, side, side * 0.9);
    box.moveCenter(place.center());
    QPainterPath triangle;
    triangle.moveTo(box.center().x(), box.top());
    triangle.lineTo(box.bottomRight());
    triangle.lineTo(box.bottomLeft());
    triangle.closeSubpath();
    painter.setPen(QPen(QColor(kWarningSign), 1));
    painter.setBrush(QColor(kWarning));
    painter.drawPath(triangle);
    const qreal middle = box.center().x();
    painter.setPen(QPen(QColor(kWarningSign), side * 0.13, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(middle, box.top() + side * 0.32), QPointF(middle, box.top() + side * 0.60));
    painter.drawLine(QPointF(middle, box.top() + side * 0.68), QPointF(middle, box.top() + side * 0.80));
}

void PaintArrow(QPainter& painter, const QRectF& place, const QColor& color)
{
    const qreal half = place.width() * 0.22;
    const QPointF center = place.center();
    painter.setPen(QPen(color, place.width() * 0.1, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolyline(QPolygonF({center + QPointF(-half, -half / 2), center + QPointF(0, half / 2),
                                    center + QPointF(half, -half / 2)}));
}

} // namespace

void QtGridDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const
{
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    // The whole row is framed, not one of its cells.
    cell.state &= ~QStyle::State_HasFocus;
    const bool isMarked = !ModelOf(index).Mark(index).isEmpty();
    const bool isDropDown = ModelOf(index).IsDropDown(index);
    if (isMarked)
        cell.backgroundBrush = Mixed(cell.palette.color(QPalette::Base), QColor(kWarning), kTint);

    const QStyle& style = *cell.widget->style();
    const QRect whole = cell.rect;
    style.drawPrimitive(QStyle::PE_PanelItemViewItem, &cell, painter, cell.widget);
    const int extra = ExtraWidth(cell);
    QRect text = whole;
    if (isMarked)
        text.setLeft(text.left() + extra);
    if (isDropDown)
        text.setRight(text.right() - extra);
    cell.rect = QStyle::visualRect(cell.direction, whole, text);
    style.drawControl(QStyle::CE_ItemViewItem, &cell, painter, cell.widget);

    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    QRect place(0, whole.center().y() - extra / 2, extra, extra);
    if (isMarked) {
        place.moveLeft(whole.left() + 2);
        PaintWarning(*painter, QStyle::visualRect(cell.direction, whole, place));
    }
    if (isDropDown) {
        place.moveRight(whole.right() - 2);
        PaintArrow(*painter, QStyle::visualRect(cell.direction, whole, place), TextColor(cell));
    }
    painter->restore();
}

QSize QtGridDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QSize size = QStyledItemDelegate::sizeHint(option, index);
    if (!ModelOf(index).Mark(index).isEmpty())
        size.rwidth() += ExtraWidth(option);
    if (ModelOf(index).IsDropDown(index))
        size.rwidth() += ExtraWidth(option);
    return size;
}

QString QtGridDelegate::displayText(const QVariant& value, const QLocale&) const
{
    QString text = value.toString();
    text.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    for (QChar& unit : text)
        if (unit == u'\r' || unit == u'\n' || unit == u'\t' || unit == QChar::LineSeparator ||
            unit == QChar::ParagraphSeparator)
            unit = u' ';
    return text;
}

bool QtGridDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                               const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    QString text = ModelOf(index).Mark(index);
    if (text.isEmpty() && sizeHint(option, index).width() > option.rect.width())
        text = index.data().toString();
    if (text.isEmpty())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    // A tool tip would take some texts for markup.
    const QString plain = QStringLiteral("<span>") + text.toHtmlEscaped() + QStringLiteral("</span>");
    QToolTip::showText(event->globalPos(), plain, view->viewport(), option.rect);
    return true;
}

} // namespace KestrinProductEditor
