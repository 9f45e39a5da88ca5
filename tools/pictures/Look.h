// SPDX-License-Identifier: MIT
#pragma once

namespace KestrinProductEditor {

enum class Theme
{
    Light,
    Dark
};
enum class Direction
{
    LeftToRight,
    RightToLeft
};

/// Every window from now on looks like that.
void UseLook(Theme theme, Direction direction);

} // namespace KestrinProductEditor
