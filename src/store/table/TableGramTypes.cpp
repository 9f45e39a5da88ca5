// SPDX-License-Identifier: MIT
#include "store/table/TableGramTypes.h"

#include <algorithm>
#include <iterator>
#include <limits>

namespace KestrinProductEditor::TableGram {

using namespace Format;

namespace {

constexpr TypeFacts kTypes[] = {
    {kInt16, "16-bit number", 2},
    {kInt32, "32-bit number", 4},
    {kFloat32, "4-byte fraction", 4},
    {kFloat64, "8-byte fraction", 8},
    {kCurrency, "amount of money", 8},
    {kDate, "date and time", 8},
    {kBasicText, "text", 0},
    {kError, "error number", 4},
    {kBoolean, "yes or no", 2},
    {kVariant, "value of any kind", 0},
    {kDecimal, "decimal number", 0},
    {kInt8, "8-bit number", 1},
    {kUInt8, "unsigned 8-bit number", 1},
    {kUInt16, "unsigned 16-bit number", 2},
    {kUInt32, "unsigned 32-bit number", 4},
    {kInt64, "64-bit number", 8},
    {kUInt64, "unsigned 64-bit number", 8},
    {kFileTime, "file time", 8},
    {kGuid, "unique identifier", 16},
    {kBytes, "bytes", 0},
    {kNarrowText, "narrow text", 0},
    {kWideText, "wide text", 0},
    {kNumeric, "decimal number", 0},
    {kDayDate, "date", 6},
    {kDayTime, "time", 6},
    {kTimestamp, "time stamp", 16},
    {kVarNumeric, "decimal number", 0},
};

} // namespace

const TypeFacts* FactsOf(std::uint16_t type) noexcept
{
    const auto* const found = std::find_if(std::begin(kTypes), std::end(kTypes),
                                           [&](const TypeFacts& facts) { return facts.type == type; });
    return found == std::end(kTypes) ? nullptr : found;
}

bool IsWhole(std::uint16_t type) noexcept
{
    switch (type) {
    case kInt8:
    case kInt16:
    case kInt32:
    case kInt64:
    case kUInt8:
    case kUInt16:
    case kUInt32:
    case kUInt64:
        return true;
    default:
        return false;
    }
}

bool IsWide(std::uint16_t type) noexcept
{
    return type == kWideText || type == kBasicText;
}

bool CanHold(ColumnType column, std::uint16_t type) noexcept
{
    switch (column) {
    case ColumnType::Long:
        return IsWhole(type) || type == kBoolean;
    case ColumnType::Currency:
        return IsWhole(type) || type == kCurrency;
    case ColumnType::Boolean:
        return IsWhole(type) || type == kBoolean;
    case ColumnType::NarrowText:
    case ColumnType::WideText:
        return type == kNarrowText || IsWide(type);
    }
    return false;
}

const char* KindOf(ColumnType column) noexcept
{
    switch (column) {
    case ColumnType::Long:
        return "a 32-bit number";
    case ColumnType::Currency:
        return "an amount of money";
    case ColumnType::Boolean:
        return "yes or no";
    case ColumnType::NarrowText:
    case ColumnType::WideText:
        break;
    }
    return "text";
}

std::optional<std::int64_t> LoadWhole(std::uint16_t type, const char* bytes) noexcept
{
    switch (type) {
    case kInt8:
        return Load<std::int8_t>(bytes);
    case kInt16:
    case kBoolean:
        return Load<std::int16_t>(bytes);
    case kInt32:
        return Load<std::int32_t>(bytes);
    case kUInt8:
        return Load<std::uint8_t>(bytes);
    case kUInt16:
        return Load<std::uint16_t>(bytes);
    case kUInt32:
        return Load<std::uint32_t>(bytes);
    case kUInt64:
        if (Load<std::uint64_t>(bytes) > std::uint64_t{std::numeric_limits<std::int64_t>::max()})
            return std::nullopt;
        break;
    default:
        break;
    }
    return Load<std::int64_t>(bytes);
}

} // namespace KestrinProductEditor::TableGram
