// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleacc.h>

#include <memory>

namespace KestrinProductEditor {

class Win32GridView;

/// What a screen reader hears of a grid: a list whose items are the data rows, counted from 1. An item reads
/// every visible cell of its row, each with its heading, and says why its cells are marked. The list is named
/// as the label in front of it; it tells its notice as its description.
///
/// One reference is the caller's. The object may outlive the view and answers CO_E_OBJNOTCONNECTED then. Null
/// when the system has no accessibility.
[[nodiscard]] IAccessible* MakeGridAccessible(const std::shared_ptr<Win32GridView>& view);

} // namespace KestrinProductEditor
