// SPDX-License-Identifier: MIT
#include "platform/linux/MoneyConventions.h"

#include <array>
#include <cstddef>

namespace KestrinProductEditor {

namespace {

enum class Part
{
    Symbol,
    Sign,
    Number
};

using PartOrder = std::array<Part, 3>;

PartOrder OrderOf(bool symbolFirst, int signPosn)
{
    constexpr Part kSymbol = Part::Symbol;
    constexpr Part kSign = Part::Sign;
    constexpr Part kNumber = Part::Number;
    switch (signPosn) {
    case 2:
        return symbolFirst ? PartOrder{kSymbol, kNumber, kSign} : PartOrder{kNumber, kSymbol, kSign};
    case 3:
        return symbolFirst ? PartOrder{kSign, kSymbol, kNumber} : PartOrder{kNumber, kSign, kSymbol};
    case 4:
        return symbolFirst ? PartOrder{kSymbol, kSign, kNumber} : PartOrder{kNumber, kSymbol, kSign};
    default:
        return symbolFirst ? PartOrder{kSign, kSymbol, kNumber} : PartOrder{kSign, kNumber, kSymbol};
    }
}

bool AreBeside(const PartOrder& order, Part one, Part other)
{
    return order[1] == one || order[1] == other;
}

bool HasSpaceBetween(const PartOrder& order, Part left, Part right, int sepBySpace)
{
    const auto joins = [&](Part one, Part other) {
        return (left == one && right == other) || (left == other && right == one);
    };
    const bool isSignBesideSymbol = AreBeside(order, Part::Symbol, Part::Sign);
    if (sepBySpace == 1) {
        return joins(Part::Symbol, Part::Number) || (isSignBesideSymbol && joins(Part::Sign, Part::Number));
    }
    // The C library leaves this space out where the sign stands beside the number.
    return sepBySpace == 2 && isSignBesideSymbol && joins(Part::Symbol, Part::Sign);
}

} // namespace

std::u16string PositivePattern(const SignConventions& conventions)
{
    // An empty sign keeps the space that stands between it and the symbol, but none at the ends.
    std::u16string pattern = NegativePattern(conventions, u"");
    std::erase_if(pattern, [](char16_t unit) { return unit == u'(' || unit == u')'; });
    pattern.erase(pattern.find_last_not_of(u' ') + 1);
    pattern.erase(0, pattern.find_first_not_of(u' '));
    return pattern;
}

std::u16string NegativePattern(const SignConventions& conventions, std::u16string_view sign)
{
    const bool symbolFirst = conventions.csPrecedes != 0;
    if (conventions.signPosn == 0) {
        const std::u16string space = conventions.sepBySpace == 1 ? u" " : u"";
        return symbolFirst ? u"($" + space + u"n)" : u"(n" + space + u"$)";
    }

    const PartOrder order = OrderOf(symbolFirst, conventions.signPosn);
    std::u16string pattern;
    for (std::size_t place = 0; place < order.size(); ++place) {
        if (place > 0 && HasSpaceBetween(order, order[place - 1], order[place], conventions.sepBySpace)) {
            pattern += u' ';
        }
        switch (order[place]) {
        case Part::Symbol:
            pattern += u'$';
            break;
        case Part::Sign:
            pattern += sign;
            break;
        case Part::Number:
            pattern += u'n';
            break;
        }
    }
    return pattern;
}

MoneyGrouping GroupingFromBytes(std::string_view bytes)
{
    MoneyGrouping grouping;
    for (const char byte : bytes) {
        const int size = static_cast<unsigned char>(byte);
        if (size == 0) {
            break;
        }
        if (size == 127 || size == 255) {
            grouping.lastGroupEnds = true;
            break;
        }
        grouping.sizes.push_back(size);
    }
    return grouping;
}

} // namespace KestrinProductEditor
