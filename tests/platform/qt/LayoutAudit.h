// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QWidget>

#include <ostream>
#include <string>
#include <vector>

namespace KestrinProductEditor {

enum class LayoutFaultKind
{
    ClippedText, ///< a text is wider or higher than its place
    ColumnTitle, ///< the same, of a list's column, which the user can widen
    Overlap,     ///< two controls cover each other
    Outside,     ///< a control reaches beyond its window, or beyond a pane in it
    Contrast,    ///< a text hardly differs from its ground
    TabOrder,    ///< the Tab key jumps to and fro
};

struct LayoutFault
{
    LayoutFaultKind kind;
    std::string control; ///< its objectName
    std::string reason;
};

std::ostream& operator<<(std::ostream& out, const LayoutFault& fault);

/// The smallest contrast that a text may have.
inline constexpr double kLegible = 4.5;

/// The contrast of two colours, from 1 (the same) to 21 (black and white): (L1 + 0.05) / (L2 + 0.05), where L
/// is the relative luminance of sRGB.
[[nodiscard]] double ContrastOf(const QColor& one, const QColor& other);

/// What a person would find wrong with the window as it stands. Requires: it is shown and laid out.
///
/// Controls are the labels, buttons, boxes, lists and bars that are visible; what belongs to the inside of
/// one of them is its own affair. A text that is made to be elided or scrolled (QtHeading, QtNotice, a list's
/// cells, the text of a box) is not looked for in whole, the titles of a list's columns are. Disabled
/// controls may be pale, and the theme's own selection is its own affair. The Tab key goes from top to
/// bottom, and in a row in the direction of reading; panes side by side are one after the other.
[[nodiscard]] std::vector<LayoutFault> AuditLayout(QWidget& window);

} // namespace KestrinProductEditor
