// SPDX-License-Identifier: MIT
#include "platform/qt/ToolIcons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>
#include <QPixmap>
#include <QPointer>

#include <cmath>

namespace KestrinProductEditor {

namespace {

// The pictures are drawn on a sheet of 24 by 24.
constexpr double kSheet = 24;
constexpr double kStroke = 1.7;

struct Drawing
{
    QPainterPath lines;       ///< in the colour of texts
    QPainterPath accentLines; ///< in the colour of selections
    QPainterPath accentArea;
};

void Line(QPainterPath& path, std::initializer_list<QPointF> points)
{
    const QPointF* point = points.begin();
    path.moveTo(*point);
    while (++point != points.end())
        path.lineTo(*point);
}

void Tray(Drawing& drawing)
{
    Line(drawing.lines, {{4, 14}, {4, 20}, {20, 20}, {20, 14}});
}

[[nodiscard]] Drawing DrawingOf(ToolIcon icon)
{
    Drawing drawing;
    switch (icon) {
    case ToolIcon::None:
        break;
    case ToolIcon::Import:
        Tray(drawing);
        Line(drawing.accentLines, {{12, 3.5}, {12, 15}});
        Line(drawing.accentLines, {{7.5, 10.5}, {12, 15}, {16.5, 10.5}});
        break;
    case ToolIcon::Export:
        Tray(drawing);
        Line(drawing.accentLines, {{12, 15}, {12, 3.5}});
        Line(drawing.accentLines, {{7.5, 8}, {12, 3.5}, {16.5, 8}});
        break;
    case ToolIcon::NewProduct:
        Line(drawing.lines, {{18.5, 10.5}, {18.5, 8}, {14, 3.5}, {5.5, 3.5}, {5.5, 20.5}, {11, 20.5}});
        Line(drawing.lines, {{14, 3.5}, {14, 8}, {18.5, 8}});
        Line(drawing.accentLines, {{17.5, 13.8}, {17.5, 21.2}});
        Line(drawing.accentLines, {{13.8, 17.5}, {21.2, 17.5}});
        break;
    case ToolIcon::EditProduct:
        Line(drawing.lines, {{4, 20}, {5, 15.6}, {15.8, 4.8}, {19.2, 8.2}, {8.4, 19}, {4, 20}});
        drawing.lines.closeSubpath();
        Line(drawing.lines, {{13.3, 7.3}, {16.7, 10.7}});
        Line(drawing.accentArea, {{4, 20}, {5, 15.6}, {8.4, 19}, {4, 20}});
        break;
    case ToolIcon::Delete:
        Line(drawing.lines, {{4, 6.5}, {20, 6.5}});
        Line(drawing.lines, {{9, 6.5}, {9, 3.8}, {15, 3.8}, {15, 6.5}});
        Line(drawing.lines, {{6, 6.5}, {6.9, 20.3}, {17.1, 20.3}, {18, 6.5}});
        Line(drawing.accentLines, {{10.2, 10}, {10.4, 16.8}});
        Line(drawing.accentLines, {{13.8, 10}, {13.6, 16.8}});
        break;
    case ToolIcon::SelectAll:
        for (const double top : {3.5, 10.0, 16.5}) {
            drawing.accentArea.addRoundedRect(QRectF(3.5, top, 4.2, 4.2), 1, 1);
            Line(drawing.lines, {{11, top + 2.1}, {20.5, top + 2.1}});
        }
        break;
    }
    return drawing;
}

[[nodiscard]] double Brightness(const QColor& colour)
{
    return 0.299 * colour.redF() + 0.587 * colour.greenF() + 0.114 * colour.blueF();
}

/// The colour of selections, with as much of the text's as it takes where the bar itself nearly has it.
[[nodiscard]] QColor Accent(const QColor& selection, const QColor& text, const QColor& ground)
{
    constexpr int kSteps = 4;
    constexpr double kLegible = 0.33;
    for (int step = 0; step < kSteps; ++step) {
        const float share = static_cast<float>(step) / kSteps;
        const auto mix = [share](float from, float to) { return from + (to - from) * share; };
        const QColor mixed =
            QColor::fromRgbF(mix(selection.redF(), text.redF()), mix(selection.greenF(), text.greenF()),
                             mix(selection.blueF(), text.blueF()));
        if (std::abs(Brightness(mixed) - Brightness(ground)) > kLegible)
            return mixed;
    }
    return text;
}

class ToolIconEngine final : public QIconEngine
{
public:
    ToolIconEngine(ToolIcon icon, const QWidget& widget) : m_icon(icon), m_widget(&widget) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const QPalette palette = m_widget ? m_widget->palette() : QGuiApplication::palette();
        const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor text = palette.color(group, QPalette::ButtonText);
        const QColor accent = mode == QIcon::Disabled ? text
                                                      : Accent(palette.color(group, QPalette::Highlight),
                                                               text, palette.color(group, QPalette::Window));

        const Drawing drawing = DrawingOf(m_icon);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / kSheet, rect.height() / kSheet);
        painter->fillPath(drawing.accentArea, accent);
        painter->strokePath(drawing.lines, QPen(text, kStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->strokePath(drawing.accentLines,
                            QPen(accent, kStroke + 0.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    [[nodiscard]] QIconEngine* clone() const override { return new ToolIconEngine(*this); }

private:
    ToolIcon m_icon;
    QPointer<const QWidget> m_widget;
};

} // namespace

QIcon MakeToolIcon(ToolIcon icon, const QWidget& widget)
{
    return icon == ToolIcon::None ? QIcon() : QIcon(new ToolIconEngine(icon, widget));
}

} // namespace KestrinProductEditor
