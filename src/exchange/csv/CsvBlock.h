// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace KestrinProductEditor {

/// The number of bytes that are looked at in one step.
inline constexpr std::size_t kCsvBlockSize = 64;

/// Where the characters that matter to CSV stand in kCsvBlockSize bytes: bit i speaks of byte i.
struct CsvBlock
{
    std::uint64_t quotes = 0;
    std::uint64_t separators = 0;
    std::uint64_t lineEnds = 0; ///< each LF and each CR
    bool isAscii = true;        ///< all bytes are below 0x80
};

namespace CsvBlockDetail {

inline constexpr std::size_t kLanes = 16;
using Bytes [[gnu::vector_size(kLanes)]] = unsigned char;
using Halves [[gnu::vector_size(kLanes)]] = std::uint64_t;

// Each matching byte is reduced to a bit of its own. The bytes of a half then hold different bits, so their
// sum, which the multiplication leaves in the highest byte, is their union, on machines of either byte order.
inline constexpr Bytes kBitOfLane = {1, 2, 4, 8, 16, 32, 64, 128, 1, 2, 4, 8, 16, 32, 64, 128};

[[nodiscard]] inline std::uint64_t BitsOf(Bytes matches) noexcept
{
    constexpr std::uint64_t kSumIntoHighest = 0x0101010101010101U;
    const Halves halves = reinterpret_cast<Halves>(matches & kBitOfLane);
    return ((halves[0] * kSumIntoHighest) >> 56) | (((halves[1] * kSumIntoHighest) >> 56) << 8);
}

} // namespace CsvBlockDetail

/// Looks at the kCsvBlockSize bytes from `bytes` on, which need no alignment.
[[nodiscard]] inline CsvBlock FindInBlock(const char* bytes) noexcept
{
    using CsvBlockDetail::BitsOf;
    using CsvBlockDetail::Bytes;

    CsvBlock block;
    Bytes all = {};
    for (std::size_t at = 0; at < kCsvBlockSize; at += CsvBlockDetail::kLanes) {
        Bytes part;
        std::memcpy(&part, bytes + at, sizeof(part));
        all |= part;
        block.quotes |= BitsOf(reinterpret_cast<Bytes>(part == '"')) << at;
        block.separators |= BitsOf(reinterpret_cast<Bytes>(part == ',')) << at;
        block.lineEnds |= BitsOf(reinterpret_cast<Bytes>((part == '\n') | (part == '\r'))) << at;
    }
    const CsvBlockDetail::Halves halves = reinterpret_cast<CsvBlockDetail::Halves>(all);
    block.isAscii = ((halves[0] | halves[1]) & 0x8080808080808080U) == 0;
    return block;
}

} // namespace KestrinProductEditor
