// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

/// Generated price lists: realistic, and the same on every machine.
namespace KestrinProductEditor::Bench {

/// One line of a price list. Texts are UTF-8.
struct ListedProduct
{
    std::string name;
    std::string partNum;
    std::int64_t cents = 0;
    std::string note;
};

/// The product of line `index`; the same for every length of list. Names share their beginnings, as those of
/// a trade catalogue do; some three in a hundred are not ASCII.
[[nodiscard]] ListedProduct ProductAt(std::uint32_t index);

/// Writes the list of the first `count` products as comma-separated text: a title line, then `Name`,
/// `PartNum`, `UnitPrice`, `Note`, quoted only where a comma demands it, prices as en_US writes them.
void WritePriceList(const std::filesystem::path& file, std::uint32_t count);

/// The bytes of all values that a catalogue of the list holds: the numbers of a row at their width (a flag is
/// one byte), and the texts. What a table in memory cannot do without.
[[nodiscard]] std::uint64_t PayloadBytes(std::uint32_t count);

/// The bytes of a row's numbers: three identifiers, a price, two flags.
inline constexpr std::size_t kNumberBytesOfRow = 3 * 4 + 8 + 2;

/// The `UniqueID` that the benchmarks give to a row: all different, in no order.
[[nodiscard]] constexpr std::int32_t UniqueIdOf(std::int32_t rowID)
{
    constexpr std::uint32_t kOdd = 0x9E3779B1U;
    return static_cast<std::int32_t>((static_cast<std::uint32_t>(rowID) * kOdd) & 0x7FFFFFFFU);
}

struct Prefix
{
    std::string text;      ///< ASCII, without "%" and "_"
    std::size_t names = 0; ///< how many names begin with it, letter case aside
};

/// Up to `wanted` beginnings of names that about `names` of the first `count` products share; the nearest
/// that there are when the list has no such group.
[[nodiscard]] std::vector<Prefix> SharedPrefixes(std::uint32_t count, std::size_t names, std::size_t wanted);

} // namespace KestrinProductEditor::Bench
