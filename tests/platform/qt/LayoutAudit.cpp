// SPDX-License-Identifier: MIT
#include "platform/qt/LayoutAudit.h"

#include "platform/qt/QtHeading.h"
#include "platform/qt/QtNotice.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QColor>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QStyleOptionGroupBox>
#include <QStyleOptionHeader>
#include <QTableView>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::string NameOf(const QWidget& widget)
{
    const QString name = widget.objectName();
    return (name.isEmpty() ? QString::fromLatin1(widget.metaObject()->className()) : name).toStdString();
}

[[nodiscard]] std::string Sizes(const QSize& needed, const QSize& room)
{
    return QStringLiteral("needs %1 x %2, has %3 x %4")
        .arg(needed.width())
        .arg(needed.height())
        .arg(room.width())
        .arg(room.height())
        .toStdString();
}

/// A control with its own inside.
[[nodiscard]] bool IsControl(const QWidget& widget)
{
    return qobject_cast<const QLabel*>(&widget) != nullptr ||
           qobject_cast<const QAbstractButton*>(&widget) != nullptr ||
           qobject_cast<const QLineEdit*>(&widget) != nullptr ||
           qobject_cast<const QAbstractScrollArea*>(&widget) != nullptr ||
           qobject_cast<const QProgressBar*>(&widget) != nullptr ||
           qobject_cast<const QMenuBar*>(&widget) != nullptr;
}

/// The visible controls under that widget, from outside inwards, without what is inside of one of them.
void CollectControls(QWidget& from, std::vector<QWidget*>& controls)
{
    for (QObject* const child : from.children()) {
        auto* const widget = qobject_cast<QWidget*>(child);
        if (widget == nullptr || widget->isWindow() || !widget->isVisible())
            continue;
        if (IsControl(*widget))
            controls.push_back(widget);
        else
            CollectControls(*widget, controls);
    }
}

[[nodiscard]] QRect PlaceIn(const QWidget& window, const QWidget& widget)
{
    return {widget.mapTo(&window, QPoint()), widget.size()};
}

// Clipped texts

[[nodiscard]] QSize SizeOfCaption(const QWidget& widget, const QString& caption)
{
    return widget.fontMetrics().size(Qt::TextShowMnemonic, caption);
}

void FindClipped(const QWidget& widget, const QSize& needed, const QSize& room, LayoutFaults& faults,
                 LayoutFaultKind kind = LayoutFaultKind::ClippedText)
{
    if (needed.width() > room.width() || needed.height() > room.height())
        faults.push_back({kind, NameOf(widget), Sizes(needed, room)});
}

void FindClippedLabel(const QLabel& label, LayoutFaults& faults)
{
    const QSize room = label.contentsRect().size();
    if (dynamic_cast<const QtHeading*>(&label) != nullptr) {
        FindClipped(label, {0, label.fontMetrics().height()}, room, faults);
    } else if (dynamic_cast<const QtNotice*>(&label) != nullptr) {
        FindClipped(label, {0, label.text().isEmpty() ? 0 : label.fontMetrics().height()}, room, faults);
    } else if (label.wordWrap()) {
        const QRect needed = label.fontMetrics().boundingRect(QRect(QPoint(), QSize(room.width(), 0)),
                                                              Qt::TextWordWrap, label.text());
        FindClipped(label, needed.size(), room, faults);
    } else {
        FindClipped(label, SizeOfCaption(label, label.text()), room, faults);
    }
}

void FindClippedButton(const QAbstractButton& button, LayoutFaults& faults)
{
    QStyleOptionButton option;
    option.initFrom(&button);
    const bool isBox = qobject_cast<const QCheckBox*>(&button) != nullptr;
    const QRect room = button.style()->subElementRect(
        isBox ? QStyle::SE_CheckBoxContents : QStyle::SE_PushButtonContents, &option, &button);
    FindClipped(button, SizeOfCaption(button, button.text()), room.size(), faults);
}

void FindClippedTitle(const QGroupBox& box, LayoutFaults& faults)
{
    QStyleOptionGroupBox option;
    option.initFrom(&box);
    option.text = box.title();
    option.subControls = QStyle::SC_GroupBoxLabel | QStyle::SC_GroupBoxFrame;
    option.lineWidth = 1;
    const QRect room =
        box.style()->subControlRect(QStyle::CC_GroupBox, &option, QStyle::SC_GroupBoxLabel, &box);
    const QSize needed = SizeOfCaption(box, box.title());
    FindClipped(box, {needed.width(), 0}, {std::min(room.width(), box.width()), 0}, faults);
}

void FindClippedHeader(const QTableView& view, LayoutFaults& faults)
{
    const QHeaderView& header = *view.horizontalHeader();
    if (!header.isVisible() || header.model() == nullptr)
        return;
    const int margins = 2 * (header.style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, &header));
    for (int col = 0; col < header.count(); ++col) {
        if (header.isSectionHidden(col))
            continue;
        const QString title = header.model()->headerData(col, Qt::Horizontal).toString();
        FindClipped(view,
                    {header.fontMetrics().horizontalAdvance(title) + margins, header.fontMetrics().height()},
                    {header.sectionSize(col), header.height()}, faults, LayoutFaultKind::ColumnTitle);
    }
}

void FindClippedTexts(const std::vector<QWidget*>& controls, const QWidget& window, LayoutFaults& faults)
{
    for (const QWidget* const widget : controls) {
        if (const auto* const label = qobject_cast<const QLabel*>(widget)) {
            FindClippedLabel(*label, faults);
        } else if (const auto* const tool = qobject_cast<const QToolButton*>(widget)) {
            FindClipped(*tool, tool->sizeHint(), tool->size(), faults);
        } else if (const auto* const button = qobject_cast<const QAbstractButton*>(widget)) {
            FindClippedButton(*button, faults);
        } else if (const auto* const bar = qobject_cast<const QProgressBar*>(widget)) {
            if (bar->isTextVisible())
                FindClipped(*bar, SizeOfCaption(*bar, bar->text()), bar->size(), faults);
        } else {
            // Boxes, lists and bars: one line, or what they ask for themselves.
            FindClipped(*widget, {0, widget->fontMetrics().height()}, widget->contentsRect().size(), faults);
            if (const auto* const view = qobject_cast<const QTableView*>(widget))
                FindClippedHeader(*view, faults);
        }
    }
    for (const QGroupBox* const box : window.findChildren<QGroupBox*>()) {
        if (box->isVisible())
            FindClippedTitle(*box, faults);
    }
}

// Places

void FindOverlaps(const std::vector<QWidget*>& controls, const QWidget& window, LayoutFaults& faults)
{
    for (std::size_t first = 0; first < controls.size(); ++first) {
        for (std::size_t second = first + 1; second < controls.size(); ++second) {
            if (PlaceIn(window, *controls[first]).intersects(PlaceIn(window, *controls[second]))) {
                faults.push_back({LayoutFaultKind::Overlap, NameOf(*controls[first]),
                                  "covers " + NameOf(*controls[second])});
            }
        }
    }
}

void FindOutside(const std::vector<QWidget*>& controls, const QWidget& window, LayoutFaults& faults)
{
    for (const QWidget* const widget : controls) {
        const QRect place = PlaceIn(window, *widget);
        for (const QWidget* around = widget->parentWidget(); around != nullptr;
             around = around == &window ? nullptr : around->parentWidget()) {
            if (!PlaceIn(window, *around).contains(place)) {
                faults.push_back(
                    {LayoutFaultKind::Outside, NameOf(*widget), "reaches beyond " + NameOf(*around)});
                break;
            }
        }
    }
}

// Contrast

/// The colour behind a widget that paints no ground of its own.
[[nodiscard]] QColor GroundOf(const QWidget& widget)
{
    const QWidget* at = &widget;
    while (!at->isWindow() && !at->autoFillBackground())
        at = at->parentWidget();
    return at->palette().color(QPalette::Active, at->backgroundRole());
}

[[nodiscard]] bool HasThemesSelection(const QWidget& widget)
{
    const QPalette theme = QApplication::palette(&widget);
    const auto isThemes = [&](QPalette::ColorRole role) {
        return widget.palette().color(QPalette::Active, role) == theme.color(QPalette::Active, role);
    };
    return isThemes(QPalette::Highlight) && isThemes(QPalette::HighlightedText);
}

void FindPale(const QWidget& widget, const QColor& text, const QColor& ground, const char* what,
              LayoutFaults& faults)
{
    const double contrast = ContrastOf(text.rgb() & RGB_MASK, ground.rgb() & RGB_MASK);
    if (contrast >= kLegible)
        return;
    faults.push_back({LayoutFaultKind::Contrast, NameOf(widget),
                      QStringLiteral("%1: %2 on %3 is %4")
                          .arg(QString::fromLatin1(what), text.name(), ground.name())
                          .arg(contrast, 0, 'f', 2)
                          .toStdString()});
}

void FindPaleTexts(const std::vector<QWidget*>& controls, const QWidget& window, LayoutFaults& faults)
{
    const auto look = [&](const QWidget& widget, QPalette::ColorRole text, QPalette::ColorRole ground,
                          const char* what) {
        FindPale(widget, widget.palette().color(QPalette::Active, text),
                 widget.palette().color(QPalette::Active, ground), what, faults);
    };
    for (const QWidget* const widget : controls) {
        if (!widget->isEnabled())
            continue;
        const bool isEdit = qobject_cast<const QLineEdit*>(widget) != nullptr ||
                            qobject_cast<const QAbstractScrollArea*>(widget) != nullptr;
        if (isEdit) {
            look(*widget, QPalette::Text, QPalette::Base, "text");
            if (!HasThemesSelection(*widget))
                look(*widget, QPalette::HighlightedText, QPalette::Highlight, "selected text");
            if (const auto* const view = qobject_cast<const QTableView*>(widget))
                look(*view->horizontalHeader(), QPalette::ButtonText, QPalette::Button, "column titles");
        } else if (qobject_cast<const QPushButton*>(widget) != nullptr) {
            look(*widget, QPalette::ButtonText, QPalette::Button, "caption");
        } else {
            FindPale(*widget, widget->palette().color(QPalette::Active, widget->foregroundRole()),
                     GroundOf(*widget), "text", faults);
        }
    }
    for (const QGroupBox* const box : window.findChildren<QGroupBox*>()) {
        if (box->isVisible() && box->isEnabled())
            FindPale(*box, box->palette().color(QPalette::Active, QPalette::WindowText), GroundOf(*box),
                     "title", faults);
    }
}

// The Tab key

[[nodiscard]] bool TakesTab(const QWidget& widget)
{
    return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0;
}

[[nodiscard]] bool SharesRow(const QRect& one, const QRect& other)
{
    const int shared = std::min(one.bottom(), other.bottom()) - std::max(one.top(), other.top()) + 1;
    return 2 * shared > std::min(one.height(), other.height());
}

/// The controls under that widget in the order in which they are read.
void CollectInOrder(const QWidget& from, std::vector<const QWidget*>& order)
{
    std::vector<const QWidget*> left;
    for (const QObject* const child : from.children()) {
        const auto* const widget = qobject_cast<const QWidget*>(child);
        if (widget != nullptr && !widget->isWindow() && widget->isVisible())
            left.push_back(widget);
    }
    std::sort(left.begin(), left.end(),
              [](const QWidget* one, const QWidget* other) { return one->y() < other->y(); });
    while (!left.empty()) {
        // The row of the topmost one.
        const QRect top = left.front()->geometry();
        const auto rest = std::stable_partition(left.begin(), left.end(), [&top](const QWidget* other) {
            return SharesRow(top, other->geometry());
        });
        std::sort(left.begin(), rest, [&from](const QWidget* one, const QWidget* other) {
            return from.isRightToLeft() ? one->geometry().right() > other->geometry().right()
                                        : one->x() < other->x();
        });
        for (auto at = left.begin(); at != rest; ++at) {
            if (TakesTab(**at))
                order.push_back(*at);
            if (!IsControl(**at))
                CollectInOrder(**at, order);
        }
        left.erase(left.begin(), rest);
    }
}

void FindTabFaults(const QWidget& window, LayoutFaults& faults)
{
    std::vector<const QWidget*> order;
    CollectInOrder(window, order);
    std::vector<const QWidget*> chain;
    for (const QWidget* at = window.nextInFocusChain(); at != &window; at = at->nextInFocusChain()) {
        if (std::find(order.begin(), order.end(), at) != order.end())
            chain.push_back(at);
    }
    const auto differs = std::mismatch(order.begin(), order.end(), chain.begin(), chain.end());
    if (differs.first != order.end() && differs.second != chain.end()) {
        faults.push_back({LayoutFaultKind::TabOrder, NameOf(**differs.second),
                          "comes where " + NameOf(**differs.first) + " is expected"});
    }
}

} // namespace

LayoutFaults AuditLayout(QWidget& window)
{
    std::vector<QWidget*> controls;
    CollectControls(window, controls);
    LayoutFaults faults;
    FindClippedTexts(controls, window, faults);
    FindOverlaps(controls, window, faults);
    FindOutside(controls, window, faults);
    FindPaleTexts(controls, window, faults);
    FindTabFaults(window, faults);
    return faults;
}

} // namespace KestrinProductEditor
