// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// Where the C library's locales put the symbol and the sign of an amount, in its own numbers.
struct SignConventions
{
    int csPrecedes; ///< 0: the symbol follows the number
    int sepBySpace; ///< 0: no space; 1: the number stands apart; 2: the sign does
    int signPosn;   ///< 0: parentheses; 1, 2: before, behind everything; 3, 4: right before, right behind the
                    ///< symbol
};

/// What a locale says where it leaves a number open.
inline constexpr int kUnspecifiedConvention = 127;

/// The patterns of an amount ("$" and "n" as in MoneyLayout), without a sign and with the given one. A
/// convention of parentheses has no sign.
[[nodiscard]] std::u16string PositivePattern(const SignConventions& conventions);
[[nodiscard]] std::u16string NegativePattern(const SignConventions& conventions, std::u16string_view sign);

struct MoneyGrouping
{
    std::vector<int> sizes;
    bool lastGroupEnds = false;
};

/// The grouping that the C library's text of sizes means: one byte a group from the decimal sign outward; 127
/// or 255 ends the grouping.
[[nodiscard]] MoneyGrouping GroupingFromBytes(std::string_view bytes);

} // namespace KestrinProductEditor
