// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

namespace KestrinProductEditor {

/// What typing does to a text.
enum class TypedAct
{
    None,
    Insert,
    EraseBefore,
    EraseWordBefore,
    BreakLine,
    SelectAll,
    Copy,
    Cut,
    Paste,
    Undo,
    Redo,
};

/// A character that is typed, as KeyPress tells it, and what it does.
struct TypedKey
{
    std::int32_t character;
    TypedAct act;
};

/// Makes characters of the messages of the keyboard and of input methods.
///
/// What counts as a character: what the keyboard makes of a key, AltGr's too; Backspace (8); Enter (13); Ctrl
/// with a letter (1 to 26). The other keys of the clipboard (Shift+Insert, Ctrl+Insert, Shift+Delete) are the
/// letters that do the same. A character of two units comes once; half of one, never.
class Win32TypedText
{
public:
    /// Of a key that goes down: a character that no other message follows for.
    [[nodiscard]] std::optional<TypedKey> FromKeyDown(WPARAM key);
    /// Of a UTF-16 unit that is typed or composed; nothing for half a character, and for keys that are none.
    [[nodiscard]] std::optional<TypedKey> FromUnit(char16_t unit);
    /// The same of a whole character.
    [[nodiscard]] std::optional<TypedKey> FromCodePoint(WPARAM character);

    /// What a character does that a handler has put in another one's place.
    [[nodiscard]] static TypedAct ActOf(std::int32_t character);
    /// The text of one character; empty for a number that no character has.
    [[nodiscard]] static std::u16string TextOf(std::int32_t character);

private:
    WPARAM m_key = 0;    // that went down last
    char16_t m_high = 0; // the first half of a character
};

} // namespace KestrinProductEditor
