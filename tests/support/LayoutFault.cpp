// SPDX-License-Identifier: MIT
#include "support/LayoutFault.h"

#include <algorithm>
#include <cmath>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] double Luminance(std::uint32_t color)
{
    const auto linear = [color](unsigned int place) {
        const double part = ((color >> place) & 0xFFU) / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(16) + 0.7152 * linear(8) + 0.0722 * linear(0);
}

[[nodiscard]] const char* TextOf(LayoutFaultKind kind)
{
    switch (kind) {
    case LayoutFaultKind::ClippedText:
        return "clipped text";
    case LayoutFaultKind::ColumnTitle:
        return "column title";
    case LayoutFaultKind::Overlap:
        return "overlap";
    case LayoutFaultKind::Outside:
        return "outside";
    case LayoutFaultKind::Contrast:
        return "contrast";
    case LayoutFaultKind::TabOrder:
        return "tab order";
    }
    return "";
}

} // namespace

std::ostream& operator<<(std::ostream& out, const LayoutFault& fault)
{
    return out << TextOf(fault.kind) << ", " << fault.control << ": " << fault.reason;
}

double ContrastOf(std::uint32_t one, std::uint32_t other)
{
    const double first = Luminance(one);
    const double second = Luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

} // namespace KestrinProductEditor
