// SPDX-License-Identifier: MIT
#include "util/TextOrder.h"

#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>

namespace KestrinProductEditor::TextOrder {

namespace {

struct FoldingRun
{
    char32_t first;
    char32_t last;
    std::uint32_t step;
    std::int32_t distance;
};

constexpr FoldingRun kFoldingRuns[] = {
#include "util/CaseFoldingTable.inc"
};

constexpr std::uint64_t kEveryByte = 0x0101010101010101U;
constexpr std::uint64_t kTopBits = 0x8080808080808080U;

constexpr bool IsAsciiWord(std::uint64_t word)
{
    return (word & kTopBits) == 0;
}

// Eight ASCII bytes at once: a byte from 'A' to 'Z' gets the bit that makes it small.
constexpr std::uint64_t FoldAsciiWord(std::uint64_t word)
{
    const std::uint64_t fromA = word + kEveryByte * (0x80 - 'A');
    const std::uint64_t behindZ = word + kEveryByte * (0x80 - 'Z' - 1);
    return word | ((fromA & ~behindZ & kTopBits) >> 2);
}

constexpr std::uint64_t FirstByteHighest(std::uint64_t word)
{
    if constexpr (std::endian::native == std::endian::little)
        return __builtin_bswap64(word);
    return word;
}

std::uint64_t LoadWord(const char* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

std::uint64_t LoadWord(std::string_view text, std::size_t at)
{
    if (at + sizeof(std::uint64_t) <= text.size())
        return LoadWord(text.data() + at);
    std::uint64_t word = 0;
    if (at < text.size())
        std::memcpy(&word, text.data() + at, text.size() - at);
    return word;
}

// The folded bytes of a text, one code point after the other.
Key KeyOfAnyText(std::string_view text, std::size_t from)
{
    std::array<unsigned char, 16> bytes{};
    std::size_t filled = 0;
    std::size_t passed = 0;
    std::string folded;
    for (std::size_t at = 0; at < text.size() && filled < bytes.size();) {
        folded.clear();
        AppendCodePoint(Fold(NextCodePoint(text, at)), folded);
        for (const char byte : folded) {
            if (passed++ >= from && filled < bytes.size())
                bytes[filled++] = static_cast<unsigned char>(byte);
        }
    }
    Key key;
    std::memcpy(&key.high, bytes.data(), sizeof key.high);
    std::memcpy(&key.low, bytes.data() + sizeof key.high, sizeof key.low);
    return {FirstByteHighest(key.high), FirstByteHighest(key.low)};
}

} // namespace

char32_t Fold(char32_t codePoint) noexcept
{
    if (codePoint < 0x80)
        return codePoint >= U'A' && codePoint <= U'Z' ? codePoint + 0x20 : codePoint;
    const auto* run =
        std::lower_bound(std::begin(kFoldingRuns), std::end(kFoldingRuns), codePoint,
                         [](const FoldingRun& left, char32_t right) { return left.last < right; });
    if (run == std::end(kFoldingRuns) || codePoint < run->first || (codePoint - run->first) % run->step != 0)
        return codePoint;
    return static_cast<char32_t>(static_cast<std::int32_t>(codePoint) + run->distance);
}

int Compare(std::string_view left, std::string_view right) noexcept
{
    std::size_t at = 0;
    const std::size_t shared = std::min(left.size(), right.size());
    while (at + sizeof(std::uint64_t) <= shared) {
        const std::uint64_t leftWord = LoadWord(left.data() + at);
        const std::uint64_t rightWord = LoadWord(right.data() + at);
        if (!IsAsciiWord(leftWord | rightWord))
            break;
        const std::uint64_t leftFolded = FoldAsciiWord(leftWord);
        const std::uint64_t rightFolded = FoldAsciiWord(rightWord);
        if (leftFolded != rightFolded)
            return FirstByteHighest(leftFolded) < FirstByteHighest(rightFolded) ? -1 : 1;
        at += sizeof(std::uint64_t);
    }
    std::size_t leftAt = at;
    std::size_t rightAt = at;
    while (leftAt < left.size() && rightAt < right.size()) {
        const char32_t leftPoint = Fold(NextCodePoint(left, leftAt));
        const char32_t rightPoint = Fold(NextCodePoint(right, rightAt));
        if (leftPoint != rightPoint)
            return leftPoint < rightPoint ? -1 : 1;
    }
    return static_cast<int>(leftAt < left.size()) - static_cast<int>(rightAt < right.size());
}

bool StartsWith(std::string_view text, std::string_view prefix) noexcept
{
    std::size_t textAt = 0;
    const std::size_t shared = std::min(text.size(), prefix.size());
    while (textAt + sizeof(std::uint64_t) <= shared) {
        const std::uint64_t textWord = LoadWord(text.data() + textAt);
        const std::uint64_t prefixWord = LoadWord(prefix.data() + textAt);
        if (!IsAsciiWord(textWord | prefixWord))
            break;
        if (FoldAsciiWord(textWord) != FoldAsciiWord(prefixWord))
            return false;
        textAt += sizeof(std::uint64_t);
    }
    std::size_t prefixAt = textAt;
    while (prefixAt < prefix.size()) {
        if (textAt == text.size())
            return false;
        if (Fold(NextCodePoint(text, textAt)) != Fold(NextCodePoint(prefix, prefixAt)))
            return false;
    }
    return true;
}

Key KeyOf(std::string_view text, std::size_t from) noexcept
{
    // Folding keeps the length of ASCII only: everything up to the key's end must be ASCII to read it in
    // place.
    std::uint64_t seen = 0;
    for (std::size_t at = 0; at < from; at += sizeof(std::uint64_t))
        seen |= LoadWord(text, at);
    const std::uint64_t high = LoadWord(text, from);
    const std::uint64_t low = LoadWord(text, from + sizeof high);
    if (!IsAsciiWord(seen | high | low))
        return KeyOfAnyText(text, from);
    return {FirstByteHighest(FoldAsciiWord(high)), FirstByteHighest(FoldAsciiWord(low))};
}

} // namespace KestrinProductEditor::TextOrder
