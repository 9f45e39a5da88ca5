// SPDX-License-Identifier: MIT
#include "platform/qt/QtProgressBarView.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionProgressBar>

namespace KestrinProductEditor {

QtProgressBarView::QtProgressBarView(QWidget* parent) : QProgressBar(parent)
{
    QSizePolicy policy = sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    setSizePolicy(policy);
    setRange(0, 100);
    setValue(0);
    setAlignment(Qt::AlignCenter);
    PrvKeepColours();
}

void QtProgressBarView::SetCaption(const QString& caption)
{
    m_caption = caption;
    update();
}

void QtProgressBarView::changeEvent(QEvent* event)
{
    QProgressBar::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        PrvKeepColours();
}

void QtProgressBarView::paintEvent(QPaintEvent* /*event*/)
{
    // The bar is the style's. Styles leave texts out, or place them beside the bar; this one stands on it, in
    // the one colour on the filled part and in the other beyond.
    QStyleOptionProgressBar option;
    initStyleOption(&option);
    option.textVisible = false;
    QPainter painter(this);
    style()->drawControl(QStyle::CE_ProgressBar, &option, &painter, this);

    const QRect whole = style()->subElementRect(QStyle::SE_ProgressBarContents, &option, this);
    QRect filled = whole;
    filled.setWidth(whole.width() * value() / maximum());
    filled = QStyle::visualRect(layoutDirection(), whole, filled);
    const auto draw = [&](const QRegion& part, QPalette::ColorRole role) {
        painter.setClipRegion(part);
        painter.setPen(palette().color(role));
        painter.drawText(whole, Qt::AlignCenter | Qt::TextSingleLine, m_caption);
    };
    draw(QRegion(rect()) - filled, QPalette::Text);
    draw(filled, QPalette::HighlightedText);
}

void QtProgressBarView::PrvKeepColours()
{
    QPalette colours = palette();
    const QPalette before = colours;
    for (const auto role : {QPalette::Window, QPalette::WindowText, QPalette::Base, QPalette::Text,
                            QPalette::Highlight, QPalette::HighlightedText, QPalette::ButtonText})
        colours.setColor(QPalette::Disabled, role, colours.color(QPalette::Active, role));
    if (colours != before)
        setPalette(colours);
}

} // namespace KestrinProductEditor
