// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <cmath>

namespace KestrinProductEditor {

inline constexpr float kTwipsPerInch = 1440;

/// Lengths follow the resolution of the screen that the window is on, as texts do.
[[nodiscard]] inline int PixelsFromTwips(HWND window, float twips)
{
    return static_cast<int>(std::lround(twips * static_cast<float>(GetDpiForWindow(window)) / kTwipsPerInch));
}

[[nodiscard]] inline float TwipsFromPixels(HWND window, int pixels)
{
    return static_cast<float>(pixels) * kTwipsPerInch / static_cast<float>(GetDpiForWindow(window));
}

} // namespace KestrinProductEditor
