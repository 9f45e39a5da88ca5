// SPDX-License-Identifier: MIT
#pragma once

namespace KestrinProductEditor {

/// Requires a toolkit for windows: error 445, with a text that says so, in a component built without one.
void RequireWindows();

} // namespace KestrinProductEditor
