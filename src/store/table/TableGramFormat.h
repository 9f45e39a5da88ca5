// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

/// The numbers of the file form that reader and writer share (docs/FILE-FORMAT.md).
namespace KestrinProductEditor::TableGram::Format {

// On disk: never renumber.

enum Token : std::uint8_t
{
    kHeader = 0x01,
    kHandlerOptions = 0x02,
    kResultDescription = 0x03,
    kTableDescription = 0x05,
    kColumnDescription = 0x06,
    kOriginalRow = 0x07,
    kChange = 0x0A,
    kDelete = 0x0C,
    kInsertedRow = 0x0D,
    kEnd = 0x0F,
    kContext = 0x10,
    kChildRow80 = 0x80,
    kChildRow87 = 0x87,
    kChildRow8A = 0x8A,
    kChildRow8C = 0x8C,
    kChildRow8D = 0x8D,
};

enum Type : std::uint16_t
{
    kInt16 = 2,
    kInt32 = 3,
    kFloat32 = 4,
    kFloat64 = 5,
    kCurrency = 6,
    kDate = 7,
    kBasicText = 8,
    kError = 10,
    kBoolean = 11,
    kVariant = 12,
    kDecimal = 14,
    kInt8 = 16,
    kUInt8 = 17,
    kUInt16 = 18,
    kUInt32 = 19,
    kInt64 = 20,
    kUInt64 = 21,
    kFileTime = 0x40,
    kGuid = 0x48,
    kBytes = 0x80,
    kNarrowText = 0x81,
    kWideText = 0x82,
    kNumeric = 0x83,
    kDayDate = 0x85,
    kDayTime = 0x86,
    kTimestamp = 0x87,
    kChapter = 0x88,
    kVarNumeric = 0x8B,
};

enum Flag : std::uint32_t
{
    kFlagWritable = 0x4,
    kFlagFixedLength = 0x10,
    kFlagNullable = 0x20,
    kFlagMayBeNull = 0x40,
    kFlagRowIdentifier = 0x100,
    kFlagChapter = 0x2000,
};

/// Bits of a column description's presence map: which of the optional fields before the type are there.
enum Presence : std::uint32_t
{
    kHasName = 0x800000,
    kHasBaseTableOrdinal = 0x400000,
    kHasBaseColumnOrdinal = 0x200000,
    kHasBaseColumnName = 0x100000,
    kHasAutoIncrement = 0x000100,
};

inline constexpr std::uint32_t kUnboundedLength = 0xFFFFFFFF;
/// A text or bytes column with more room than this has a count of four bytes before each value.
inline constexpr std::uint64_t kLargestShortCapacity = 255;

/// What stands before the column descriptions. Only the two column counts and the row count differ between
/// files.
inline constexpr std::array<std::uint8_t, 270> kFront = {
    // header
    kHeader,
    0x07,
    'T',
    'G',
    '!',
    0x00,
    0x00,
    0x00,
    0x00,
    // handler options: class, update type, three empty names, no asynchronous options
    kHandlerOptions,
    0x19,
    0x00, //
    0xB6,
    0x92,
    0xF2,
    0x3F,
    0x04,
    0xB2,
    0xCF,
    0x11,
    0x8D,
    0x23,
    0x00,
    0xAA,
    0x00,
    0x5F,
    0xFE,
    0x58, //
    0x01,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00,
    // result description: class, kind of cursor, column counts, no tables, row count
    kResultDescription,
    0x67,
    0x00, //
    0xD2,
    0xAD,
    0x63,
    0xF6,
    0x02,
    0xEB,
    0xCF,
    0x11,
    0xB0,
    0xE3,
    0x00,
    0xAA,
    0x00,
    0x3F,
    0x00,
    0x0F, //
    0x00,
    0x00,
    0x00, //
    0x00,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00, //
    0x00,
    0x00,
    0x00,
    0x00, //
    0x00,
    0x00,
    0x00,
    0x00,
    // ... with one set of seven properties
    0x01,
    0x00, //
    0xC1,
    0x3C,
    0x8E,
    0xB6,
    0xEB,
    0x6D,
    0xD0,
    0x11,
    0x8D,
    0xF6,
    0x00,
    0xAA,
    0x00,
    0x5F,
    0xFE,
    0x58, //
    0x07,
    0x00, //
    0x0B,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x01,
    0x00,
    0x00,
    0x00, //
    0x13,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x01,
    0x00,
    0x00,
    0x00, //
    0x0D,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00, //
    0x0E,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00, //
    0x0F,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00, //
    0x10,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00, //
    0x12,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00,
    // context: two sets of properties, of four and of five
    kContext,
    0x7C,
    0x00,
    0x02,
    0x00, //
    0xBE,
    0x22,
    0xB5,
    0xC8,
    0xF3,
    0x5C,
    0xCE,
    0x11,
    0xAD,
    0xE5,
    0x00,
    0xAA,
    0x00,
    0x44,
    0x77,
    0x3D, //
    0x04,
    0x00, //
    0x7F,
    0x00,
    0x00,
    0x00,
    0x02,
    0x00,
    0xFF,
    0xFF, //
    0x86,
    0x00,
    0x00,
    0x00,
    0x02,
    0x00,
    0xFF,
    0xFF, //
    0x22,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00, //
    0x49,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x00,
    0x00,
    0x00,
    0x00, //
    0xC1,
    0x3C,
    0x8E,
    0xB6,
    0xEB,
    0x6D,
    0xD0,
    0x11,
    0x8D,
    0xF6,
    0x00,
    0xAA,
    0x00,
    0x5F,
    0xFE,
    0x58, //
    0x05,
    0x00, //
    0x04,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x0F,
    0x00,
    0x00,
    0x00, //
    0x05,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x02,
    0x00,
    0x00,
    0x00, //
    0x03,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x0F,
    0x00,
    0x00,
    0x00, //
    0x07,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x32,
    0x00,
    0x00,
    0x00, //
    0x08,
    0x00,
    0x00,
    0x00,
    0x04,
    0x00,
    0x03,
    0x00,
    0x00,
    0x00,
};

inline constexpr std::size_t kMagicSize = 5;
inline constexpr std::size_t kHeaderSize = 9;
inline constexpr std::size_t kHandlerOptionsOffset = 0x09;
inline constexpr std::size_t kResultOffset = 0x25;
inline constexpr std::size_t kVisibleColumnsOffset = 0x3B;
inline constexpr std::size_t kTotalColumnsOffset = 0x3D;
inline constexpr std::size_t kRowCountOffset = 0x45;
inline constexpr std::size_t kContextOffset = 0x8F;
static_assert(kFront[kHandlerOptionsOffset] == kHandlerOptions &&
              kFront[kResultOffset] == kResultDescription && kFront[kContextOffset] == kContext &&
              kFront[kContextOffset + 1] == 0x7C && kFront.size() == 0x10E);

/// The result description up to its properties, and where the total of the columns stands in it.
inline constexpr std::size_t kResultFixedSize = 33;
inline constexpr std::size_t kResultTotalColumns = kTotalColumnsOffset - kResultOffset - 3;

/// The size that a column description without optional fields but its name claims, the name not counted.
inline constexpr std::uint16_t kColumnDescriptionSize = 29;
inline constexpr std::array<std::uint8_t, 3> kColumnPresence = {0x80, 0x01, 0x00};

inline constexpr std::uint16_t kTrueValue = 0xFFFF;

// End of what is on disk.

/// What stands before a value: nothing, or the number of its bytes.
enum class Count : std::uint8_t
{
    None,
    OneByte,
    FourBytes
};

/// Requires: a column of text or bytes. `capacity` is its room in bytes.
[[nodiscard]] constexpr Count CountBefore(std::uint64_t capacity, std::uint32_t flags) noexcept
{
    if (capacity > kLargestShortCapacity)
        return Count::FourBytes;
    return (flags & kFlagFixedLength) != 0 ? Count::None : Count::OneByte;
}

static_assert(std::endian::native == std::endian::little,
              "Load and Store copy numbers as they lie in memory");

template<class Number>
[[nodiscard]] Number Load(const char* bytes) noexcept
{
    Number number;
    std::memcpy(&number, bytes, sizeof number);
    return number;
}

template<class Number>
void Store(char* bytes, Number number) noexcept
{
    std::memcpy(bytes, &number, sizeof number);
}

} // namespace KestrinProductEditor::TableGram::Format
