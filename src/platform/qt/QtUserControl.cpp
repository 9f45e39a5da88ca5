// SPDX-License-Identifier: MIT
#include "platform/qt/QtUserControl.h"

#include "platform/qt/QtLayouts.h"
#include "platform/qt/QtText.h"
#include "platform/qt/QtTwips.h"

#include <QFontMetricsF>
#include <QResizeEvent>
#include <QStyle>

#include <cmath>

namespace KestrinProductEditor {

namespace {

// The layouts are drawn for a font of this height, in pixels.
constexpr double kDrawnLineHeight = 14;

} // namespace

class QtUserControl::Surface final : public QWidget
{
public:
    explicit Surface(QtUserControl& control) : m_control(control) {}

protected:
    void resizeEvent(QResizeEvent* /*event*/) override { m_control.Resize.Raise(); }

private:
    QtUserControl& m_control;
};

class QtUserControl::Shell final : public QWidget
{
public:
    explicit Shell(QWidget& surface) : m_surface(surface)
    {
        resize(surface.size());
        surface.setParent(this);
        setFocusProxy(&surface);
    }

    ~Shell() override
    {
        m_surface.hide();
        m_surface.setParent(nullptr);
    }

    [[nodiscard]] QSize sizeHint() const override { return m_sizeHint; }

protected:
    void resizeEvent(QResizeEvent* event) override { m_surface.resize(event->size()); }

private:
    QWidget& m_surface;
    QSize m_sizeHint = m_surface.size();
};

QtUserControl::QtUserControl(std::u16string_view name) : m_surface(std::make_unique<Surface>(*this))
{
    if (!SetUpUserControl(name, *m_surface))
        throw AutomationError(kErrInvalidProcedureCall);
    PrvFollowFont();
    m_controls = std::make_unique<QtControlSet>(*m_surface);
    m_shell = new Shell(*m_surface);
    m_shell->setObjectName(ToQt(name));
}

QtUserControl::~QtUserControl()
{
    delete m_shell;
}

float QtUserControl::InnerWidth() const
{
    return m_shell ? TwipsFromPixels(*m_surface, m_surface->width()) : 0;
}

float QtUserControl::InnerHeight() const
{
    return m_shell ? TwipsFromPixels(*m_surface, m_surface->height()) : 0;
}

ControlPlace QtUserControl::Place(std::u16string_view control) const
{
    const QWidget& widget = PrvFind(control);
    const QRect geometry = widget.geometry();
    const auto moved = m_moved.find(widget.objectName());
    if (moved != m_moved.end() && moved->second.geometry == geometry)
        return moved->second.place;
    const QRect logical = QStyle::visualRect(m_surface->layoutDirection(), m_surface->rect(), geometry);
    return {.left = TwipsFromPixels(*m_surface, logical.left()),
            .top = TwipsFromPixels(*m_surface, logical.top()),
            .width = TwipsFromPixels(*m_surface, logical.width()),
            .height = TwipsFromPixels(*m_surface, logical.height())};
}

void QtUserControl::Move(std::u16string_view control, const ControlPlace& place)
{
    QWidget& widget = PrvFind(control);
    if (!(place.width >= 0) || !(place.height >= 0))
        throw AutomationError(kErrInvalidProcedureCall);
    const QRect logical(PixelsFromTwips(*m_surface, place.left), PixelsFromTwips(*m_surface, place.top),
                        PixelsFromTwips(*m_surface, place.width), PixelsFromTwips(*m_surface, place.height));
    widget.setGeometry(QStyle::visualRect(m_surface->layoutDirection(), m_surface->rect(), logical));
    m_moved[widget.objectName()] = {.geometry = widget.geometry(), .place = place};
}

float QtUserControl::TextWidth(std::u16string_view text) const
{
    if (!m_shell)
        return 0;
    const double pixels = QFontMetricsF(m_surface->font()).horizontalAdvance(ToQt(text));
    return static_cast<float>(pixels) * kTwipsPerInch / static_cast<float>(m_surface->logicalDpiX());
}

void* QtUserControl::NativeHandle() const
{
    return static_cast<QWidget*>(m_shell);
}

QtControlSet& QtUserControl::Controls()
{
    if (!m_shell)
        throw AutomationError(kErrInvalidProcedureCall);
    return *m_controls;
}

QWidget& QtUserControl::PrvFind(std::u16string_view control) const
{
    auto* const widget = m_shell ? m_surface->findChild<QWidget*>(ToQt(control)) : nullptr;
    if (widget == nullptr)
        throw AutomationError(kErrInvalidProcedureCall);
    return *widget;
}

void QtUserControl::PrvFollowFont()
{
    const double scale = QFontMetricsF(m_surface->font()).height() / kDrawnLineHeight;
    const auto scaled = [scale](int pixels) { return static_cast<int>(std::lround(pixels * scale)); };
    for (QWidget* const widget : m_surface->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        const QRect drawn = widget->geometry();
        widget->setGeometry(scaled(drawn.x()), scaled(drawn.y()), scaled(drawn.width()),
                            scaled(drawn.height()));
    }
    m_surface->resize(scaled(m_surface->width()), scaled(m_surface->height()));
}

} // namespace KestrinProductEditor
