// SPDX-License-Identifier: MIT
#pragma once

#include "support/LayoutFault.h"

#include <windows.h>

#include <functional>
#include <string>

namespace KestrinProductEditor {

/// What a person would find wrong with the window as it stands. Requires: it is shown and laid out. `nameOf`
/// tells what a control is called; one that it has no name for is called by its class and its
/// identifier.
///
/// Controls are the labels, buttons, boxes, lists and bars that are visible, in whatever window within the
/// window; what belongs to the inside of one of them is its own affair. A text that is made to be cut short
/// or scrolled (a label with an ellipsis, a list's cells, the text of a box) is not looked for in whole, the
/// titles of a list's columns and its notice are. A frame may have controls on it. Contrast is that of labels
/// and boxes that are enabled; buttons and lists have the system's colours. The Tab key goes from top to
/// bottom, and in a row in the direction of reading; the panes beside a splitter are one after the other.
[[nodiscard]] LayoutFaults AuditLayout(HWND window, const std::function<std::string(HWND)>& nameOf);

} // namespace KestrinProductEditor
