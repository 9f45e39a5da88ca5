// SPDX-License-Identifier: MIT
#pragma once

#include <QStyledItemDelegate>

namespace KestrinProductEditor {

/// Paints the cells of a QtGridModel: an arrow at the end of a drop-down, a warning sign and a tint for a
/// marked cell. Line breaks and tabs of a text are painted as blanks. The tool tip of a cell says why it is
/// marked, else the text that was cut off.
class QtGridDelegate final : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    [[nodiscard]] QString displayText(const QVariant& value, const QLocale& locale) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;
};

} // namespace KestrinProductEditor
