// SPDX-License-Identifier: MIT
#pragma once

#include "support/LayoutFault.h"

#include <QWidget>

namespace KestrinProductEditor {

/// What a person would find wrong with the window as it stands. Requires: it is shown and laid out.
///
/// Controls are the labels, buttons, boxes, lists and bars that are visible; what belongs to the inside of
/// one of them is its own affair. A text that is made to be elided or scrolled (QtHeading, QtNotice, a list's
/// cells, the text of a box) is not looked for in whole, the titles of a list's columns are. Disabled
/// controls may be pale, and the theme's own selection is its own affair. The Tab key goes from top to
/// bottom, and in a row in the direction of reading; panes side by side are one after the other.
[[nodiscard]] LayoutFaults AuditLayout(QWidget& window);

} // namespace KestrinProductEditor
