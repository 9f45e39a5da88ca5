// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Shortcut.h"

#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

/// How the shortcut is written in a menu: "Ctrl+N".
[[nodiscard]] std::u16string TextOf(Shortcut shortcut);

/// Whether the key is held down, as of the message that is handled now.
[[nodiscard]] bool IsDown(int key) noexcept;

/// Whether a key message comes from a key that is held down.
[[nodiscard]] bool RepeatsItself(const MSG& message) noexcept;

/// Whether the message tells of that key, pressed without Ctrl, Shift and Alt.
[[nodiscard]] bool IsAlone(const MSG& message, UINT key) noexcept;

/// The keys of a window that are taken before its controls see them: its message loop asks Take for each
/// message. Bindings are asked in the order in which they were made; the first that is ready takes the key,
/// and acts unless the key repeats by itself.
class Win32Keys
{
public:
    using IsReady = std::function<bool()>;
    using Act = std::function<void()>;

    void Bind(Shortcut shortcut, IsReady isReady, Act act);
    void BindEscape(IsReady isReady, Act act);

    /// Whether a binding took the key of this message.
    [[nodiscard]] bool Take(const MSG& message) const;

private:
    struct Binding
    {
        UINT key;
        bool control;
        IsReady isReady;
        Act act;
    };

    std::vector<Binding> m_bindings;
};

} // namespace KestrinProductEditor
