// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <cmath>

namespace KestrinProductEditor {

inline constexpr float kTwipsPerInch = 1440;

/// Lengths follow the logical resolution, as texts do.
[[nodiscard]] inline int PixelsFromTwips(const QWidget& widget, float twips)
{
    return static_cast<int>(std::lround(twips * static_cast<float>(widget.logicalDpiX()) / kTwipsPerInch));
}

[[nodiscard]] inline float TwipsFromPixels(const QWidget& widget, int pixels)
{
    return static_cast<float>(pixels) * kTwipsPerInch / static_cast<float>(widget.logicalDpiX());
}

} // namespace KestrinProductEditor
