// SPDX-License-Identifier: MIT
#include "platform/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace KestrinProductEditor {

namespace {

constexpr char32_t kReplacement = 0xFFFD;
constexpr std::size_t kStep = 8;

[[nodiscard]] std::uint64_t LoadWord(const void* bytes) noexcept
{
    std::uint64_t word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

[[nodiscard]] bool IsAsciiStep(const char* text) noexcept
{
    return (LoadWord(text) & 0x8080808080808080u) == 0;
}

[[nodiscard]] bool IsAsciiStep(const char16_t* text) noexcept
{
    return ((LoadWord(text) | LoadWord(text + kStep / 2)) & 0xFF80FF80FF80FF80u) == 0;
}

[[nodiscard]] unsigned ByteAt(std::string_view text, std::size_t at) noexcept
{
    return static_cast<unsigned char>(text[at]);
}

[[nodiscard]] std::size_t AsciiHead(std::string_view text) noexcept
{
    const char* const data = text.data();
    const std::size_t size = text.size();
    std::size_t at = 0;
    while (size - at >= 4 * kStep) {
        const std::uint64_t bits = LoadWord(data + at) | LoadWord(data + at + kStep) |
                                   LoadWord(data + at + 2 * kStep) | LoadWord(data + at + 3 * kStep);
        if ((bits & 0x8080808080808080u) != 0)
            break;
        at += 4 * kStep;
    }
    while (size - at >= kStep && IsAsciiStep(data + at))
        at += kStep;
    // The last word overlaps what was looked at; bytes are told apart only where it is no ASCII.
    if (size >= kStep && size - at < kStep && IsAsciiStep(data + size - kStep))
        return size;
    while (at < size && ByteAt(text, at) < 0x80)
        ++at;
    return at;
}

[[nodiscard]] constexpr bool IsTrail(unsigned byte) noexcept
{
    return (byte & 0xC0) == 0x80;
}

[[nodiscard]] constexpr bool IsHighSurrogate(char32_t codePoint) noexcept
{
    return (codePoint & 0xFFFFFC00) == 0xD800;
}

[[nodiscard]] constexpr bool IsLowSurrogate(char32_t codePoint) noexcept
{
    return (codePoint & 0xFFFFFC00) == 0xDC00;
}

struct Sequence
{
    char32_t codePoint;
    std::size_t length; // 1: no valid sequence begins here
};

/// The sequence at `text[at]`, which is not ASCII. Three-byte surrogates are sequences.
[[nodiscard]] Sequence SequenceAt(std::string_view text, std::size_t at) noexcept
{
    constexpr Sequence kInvalid{kReplacement, 1};
    const std::size_t size = text.size() - at;
    const unsigned lead = ByteAt(text, at);
    if (lead < 0xC2)
        return kInvalid;
    if (lead < 0xE0) {
        if (size < 2 || !IsTrail(ByteAt(text, at + 1)))
            return kInvalid;
        return {((lead & 0x1F) << 6) | (ByteAt(text, at + 1) & 0x3F), 2};
    }
    if (lead < 0xF0) {
        if (size < 3 || !IsTrail(ByteAt(text, at + 1)) || !IsTrail(ByteAt(text, at + 2)))
            return kInvalid;
        const char32_t codePoint =
            ((lead & 0x0F) << 12) | ((ByteAt(text, at + 1) & 0x3F) << 6) | (ByteAt(text, at + 2) & 0x3F);
        return codePoint < 0x800 ? kInvalid : Sequence{codePoint, 3};
    }
    if (lead < 0xF5) {
        if (size < 4 || !IsTrail(ByteAt(text, at + 1)) || !IsTrail(ByteAt(text, at + 2)) ||
            !IsTrail(ByteAt(text, at + 3)))
            return kInvalid;
        const char32_t codePoint = ((lead & 0x07) << 18) | ((ByteAt(text, at + 1) & 0x3F) << 12) |
                                   ((ByteAt(text, at + 2) & 0x3F) << 6) | (ByteAt(text, at + 3) & 0x3F);
        return codePoint < 0x10000 || codePoint > 0x10FFFF ? kInvalid : Sequence{codePoint, 4};
    }
    return kInvalid;
}

/// Writes one code point, at most four bytes, and returns the end of what was written.
[[nodiscard]] char* WriteCodePoint(char32_t codePoint, char* out) noexcept
{
    if (codePoint < 0x80) {
        *out++ = static_cast<char>(codePoint);
    } else if (codePoint < 0x800) {
        *out++ = static_cast<char>(0xC0 | (codePoint >> 6));
        *out++ = static_cast<char>(0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        *out++ = static_cast<char>(0xE0 | (codePoint >> 12));
        *out++ = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        *out++ = static_cast<char>(0x80 | (codePoint & 0x3F));
    } else {
        *out++ = static_cast<char>(0xF0 | (codePoint >> 18));
        *out++ = static_cast<char>(0x80 | ((codePoint >> 12) & 0x3F));
        *out++ = static_cast<char>(0x80 | ((codePoint >> 6) & 0x3F));
        *out++ = static_cast<char>(0x80 | (codePoint & 0x3F));
    }
    return out;
}

template<class Unit>
[[nodiscard]] constexpr Unit SmallLetter(Unit unit) noexcept
{
    return unit >= 'A' && unit <= 'Z' ? static_cast<Unit>(unit + ('a' - 'A')) : unit;
}

template<class View>
[[nodiscard]] bool AreEqualSmall(View left, View right) noexcept
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](auto a, auto b) { return SmallLetter(a) == SmallLetter(b); });
}

} // namespace

std::string ToUtf8(std::u16string_view text)
{
    std::string out;
    out.reserve(text.size());
    AppendUtf8(text, out);
    return out;
}

void AppendUtf8(std::u16string_view text, std::string& out)
{
    // By way of a small buffer: growing `out` first would write every byte twice.
    std::array<char, 512> buffer;
    const char* const lastStart = buffer.data() + buffer.size() - kStep;
    std::size_t at = 0;
    while (at < text.size()) {
        char* end = buffer.data();
        while (at < text.size() && end <= lastStart) {
            if (text.size() - at >= kStep && IsAsciiStep(text.data() + at)) {
                for (std::size_t i = 0; i < kStep; ++i)
                    end[i] = static_cast<char>(text[at + i]);
                end += kStep;
                at += kStep;
                continue;
            }
            char32_t codePoint = text[at++];
            if (IsHighSurrogate(codePoint) && at < text.size() && IsLowSurrogate(text[at]))
                codePoint = 0x10000 + ((codePoint - 0xD800) << 10) + (text[at++] - 0xDC00u);
            end = WriteCodePoint(codePoint, end);
        }
        out.append(buffer.data(), end);
    }
}

std::u16string ToUtf16(std::string_view text)
{
    std::u16string out(Utf16Length(text), u'\0');
    char16_t* end = out.data();
    std::size_t at = 0;
    while (at < text.size()) {
        if (text.size() - at >= kStep && IsAsciiStep(text.data() + at)) {
            for (std::size_t i = 0; i < kStep; ++i)
                end[i] = static_cast<unsigned char>(text[at + i]);
            end += kStep;
            at += kStep;
            continue;
        }
        const char32_t codePoint = NextCodePoint(text, at);
        if (codePoint < 0x10000) {
            *end++ = static_cast<char16_t>(codePoint);
        } else {
            *end++ = static_cast<char16_t>(0xD7C0 + (codePoint >> 10));
            *end++ = static_cast<char16_t>(0xDC00 + (codePoint & 0x3FF));
        }
    }
    return out;
}

std::size_t Utf16Length(std::string_view text) noexcept
{
    std::size_t units = 0;
    std::size_t at = 0;
    while (at < text.size()) {
        if (ByteAt(text, at) < 0x80) {
            const std::size_t ascii = AsciiHead(text.substr(at));
            units += ascii;
            at += ascii;
            continue;
        }
        const std::size_t length = SequenceAt(text, at).length;
        units += length == 4 ? 2 : 1;
        at += length;
    }
    return units;
}

std::string_view Utf16Head(std::string_view text, std::size_t units) noexcept
{
    // No byte makes more than one unit.
    if (text.size() <= units)
        return text;
    std::size_t at = 0;
    std::size_t previous = 0;
    char32_t last = 0;
    while (at < text.size()) {
        if (units > 0 && ByteAt(text, at) < 0x80) {
            const std::size_t ascii = AsciiHead(text.substr(at, units));
            units -= ascii;
            at += ascii;
            last = 0;
            continue;
        }
        std::size_t next = at;
        const char32_t codePoint = NextCodePoint(text, next);
        const std::size_t needed = codePoint >= 0x10000 ? 2 : 1;
        if (needed > units) {
            // Two surrogates in three bytes each are one character in UTF-16.
            const bool isHalf = IsHighSurrogate(last) && IsLowSurrogate(codePoint);
            return text.substr(0, isHalf ? previous : at);
        }
        units -= needed;
        previous = at;
        last = codePoint;
        at = next;
    }
    return text;
}

bool IsValidUtf8(std::string_view text) noexcept
{
    std::size_t at = 0;
    while (at < text.size()) {
        if (ByteAt(text, at) < 0x80) {
            at += AsciiHead(text.substr(at));
            continue;
        }
        const Sequence sequence = SequenceAt(text, at);
        if (sequence.length == 1 || IsHighSurrogate(sequence.codePoint) || IsLowSurrogate(sequence.codePoint))
            return false;
        at += sequence.length;
    }
    return true;
}

bool IsAscii(std::string_view text) noexcept
{
    return AsciiHead(text) == text.size();
}

char32_t NextCodePoint(std::string_view text, std::size_t& at) noexcept
{
    const unsigned first = ByteAt(text, at);
    if (first < 0x80) {
        ++at;
        return first;
    }
    const Sequence sequence = SequenceAt(text, at);
    at += sequence.length;
    return sequence.codePoint;
}

void AppendCodePoint(char32_t codePoint, std::string& out)
{
    std::array<char, 4> buffer;
    out.append(buffer.data(), WriteCodePoint(codePoint > 0x10FFFF ? kReplacement : codePoint, buffer.data()));
}

std::u16string_view Utf16Head(std::u16string_view text, std::size_t units) noexcept
{
    if (text.size() <= units)
        return text;
    constexpr char16_t kSurrogateBits = 0xFC00;
    const bool cutsPair =
        units > 0 && (text[units - 1] & kSurrogateBits) == 0xD800 && (text[units] & kSurrogateBits) == 0xDC00;
    return text.substr(0, cutsPair ? units - 1 : units);
}

std::string AsciiLower(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), SmallLetter<char>);
    return lower;
}

bool EqualsWithoutAsciiCase(std::string_view left, std::string_view right) noexcept
{
    return AreEqualSmall(left, right);
}

bool EqualsWithoutAsciiCase(std::u16string_view left, std::u16string_view right) noexcept
{
    return AreEqualSmall(left, right);
}

} // namespace KestrinProductEditor
