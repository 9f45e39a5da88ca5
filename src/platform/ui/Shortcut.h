// SPDX-License-Identifier: MIT
#pragma once

namespace KestrinProductEditor {

enum class Key
{
    None,
    A,
    E,
    I,
    N,
    S,
    F2,
    Enter, ///< of the main block and of the number block
    Delete,
};

/// A key, alone or with Ctrl.
struct Shortcut
{
    Key key = Key::None;
    bool control = false;

    friend bool operator==(const Shortcut&, const Shortcut&) = default;
};

[[nodiscard]] constexpr Shortcut Ctrl(Key key)
{
    return {.key = key, .control = true};
}

} // namespace KestrinProductEditor
