// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
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

/// What a person would find wrong with a window.
struct LayoutFault
{
    LayoutFaultKind kind;
    std::string control; ///< its name
    std::string reason;
};

using LayoutFaults = std::vector<LayoutFault>;

std::ostream& operator<<(std::ostream& out, const LayoutFault& fault);

/// The smallest contrast that a text may have.
inline constexpr double kLegible = 4.5;

/// The contrast of two colours (0xRRGGBB), from 1 (the same) to 21 (black and white): (L1 + 0.05) / (L2 +
/// 0.05), where L is the relative luminance of sRGB.
[[nodiscard]] double ContrastOf(std::uint32_t one, std::uint32_t other);

} // namespace KestrinProductEditor
