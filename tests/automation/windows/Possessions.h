// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <iosfwd>

namespace KestrinProductEditor {

/// What this process holds of the system's.
struct Possessions
{
    /// Windows, menus, icons and the like.
    DWORD userObjects = 0;
    /// Fonts, brushes, pictures and the like.
    DWORD graphicsObjects = 0;
    /// Files, events, registry keys and the like.
    DWORD handles = 0;

    [[nodiscard]] static Possessions Now();
};

std::ostream& operator<<(std::ostream& stream, const Possessions& possessions);

} // namespace KestrinProductEditor
