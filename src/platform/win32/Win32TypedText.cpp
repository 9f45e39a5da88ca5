// SPDX-License-Identifier: MIT
#include "platform/win32/Win32TypedText.h"

#include "platform/win32/Win32Keys.h"

#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr std::int32_t kSelectAll = 1;
constexpr std::int32_t kCopy = 3;
constexpr std::int32_t kBackspace = 8;
constexpr std::int32_t kTab = 9;
constexpr std::int32_t kControlEnter = 10;
constexpr std::int32_t kEnter = 13;
constexpr std::int32_t kPaste = 22;
constexpr std::int32_t kCut = 24;
constexpr std::int32_t kRedo = 25;
constexpr std::int32_t kUndo = 26;
constexpr std::int32_t kLetters = 26;
constexpr std::int32_t kFirstVisible = 32;
constexpr std::int32_t kControlBackspace = 127;

constexpr std::int32_t kFirstHigh = 0xD800;
constexpr std::int32_t kFirstLow = 0xDC00;
constexpr std::int32_t kLastLow = 0xDFFF;
constexpr std::int32_t kFirstAstral = 0x10000;
constexpr std::int32_t kLastCharacter = 0x10FFFF;
constexpr int kHalf = 10; // bits

} // namespace

std::optional<TypedKey> Win32TypedText::FromKeyDown(WPARAM key)
{
    m_key = key;
    const bool isShift = IsDown(VK_SHIFT);
    const bool isControl = IsDown(VK_CONTROL);
    if (isShift == isControl)
        return std::nullopt;
    if (key == VK_INSERT)
        return isShift ? TypedKey{kPaste, TypedAct::Paste} : TypedKey{kCopy, TypedAct::Copy};
    if (key == VK_DELETE && isShift)
        return TypedKey{kCut, TypedAct::Cut};
    return std::nullopt;
}

std::optional<TypedKey> Win32TypedText::FromUnit(char16_t unit)
{
    const std::int32_t high = std::exchange(m_high, char16_t{0});
    const std::int32_t character = unit;
    if (character >= kFirstHigh && character < kFirstLow) {
        m_high = unit;
        return std::nullopt;
    }
    if (character >= kFirstLow && character <= kLastLow) {
        if (high == 0)
            return std::nullopt;
        return TypedKey{kFirstAstral + ((high - kFirstHigh) << kHalf) + character - kFirstLow,
                        TypedAct::Insert};
    }
    if (character == kControlBackspace)
        return TypedKey{kBackspace, TypedAct::EraseWordBefore};
    if (character >= kFirstVisible)
        return TypedKey{character, TypedAct::Insert};
    // Some of the letters make the same characters with Ctrl as other keys do without.
    const bool isLetter = IsDown(VK_CONTROL) && m_key >= 'A' && m_key <= 'Z';
    switch (character) {
    case kTab:
    case kControlEnter:
    case kBackspace:
    case kEnter:
        if (isLetter)
            return TypedKey{character, TypedAct::None};
        if (character == kTab || character == kControlEnter)
            return std::nullopt;
        break;
    case kUndo:
        return TypedKey{kUndo, IsDown(VK_SHIFT) ? TypedAct::Redo : TypedAct::Undo};
    default:
        break;
    }
    if (character == 0 || character > kLetters)
        return std::nullopt;
    return TypedKey{character, ActOf(character)};
}

std::optional<TypedKey> Win32TypedText::FromCodePoint(WPARAM character)
{
    const std::u16string units =
        character <= kLastCharacter ? TextOf(static_cast<std::int32_t>(character)) : std::u16string();
    std::optional<TypedKey> typed;
    for (const char16_t unit : units)
        typed = FromUnit(unit);
    return typed;
}

TypedAct Win32TypedText::ActOf(std::int32_t character)
{
    switch (character) {
    case kSelectAll:
        return TypedAct::SelectAll;
    case kCopy:
        return TypedAct::Copy;
    case kBackspace:
        return TypedAct::EraseBefore;
    case kEnter:
        return TypedAct::BreakLine;
    case kPaste:
        return TypedAct::Paste;
    case kCut:
        return TypedAct::Cut;
    case kRedo:
        return TypedAct::Redo;
    case kUndo:
        return TypedAct::Undo;
    default:
        return character >= kFirstVisible ? TypedAct::Insert : TypedAct::None;
    }
}

std::u16string Win32TypedText::TextOf(std::int32_t character)
{
    if (character < 0 || character > kLastCharacter || (character >= kFirstHigh && character <= kLastLow))
        return {};
    if (character < kFirstAstral)
        return std::u16string(1, static_cast<char16_t>(character));
    const std::int32_t beyond = character - kFirstAstral;
    return {static_cast<char16_t>(kFirstHigh + (beyond >> kHalf)),
            static_cast<char16_t>(kFirstLow + (beyond & (kFirstLow - kFirstHigh - 1)))};
}

} // namespace KestrinProductEditor
