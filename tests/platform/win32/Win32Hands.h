// SPDX-License-Identifier: MIT
#pragma once

#include "support/User.h"

#include <windows.h>

#include <functional>
#include <string_view>

namespace KestrinProductEditor {

/// Mouse and keyboard of somebody in front of this thread's windows: messages as the system puts them into
/// the thread's queue, taken out again the way the loop of the window in front does. Acts return when the
/// window has worked them off.
///
/// In front of a window that does not listen (one that is disabled) the messages stay in the queue: it works
/// them off, or loses them, in its own time.
class Win32Hands
{
public:
    /// The loop of the window in front.
    class Front
    {
    public:
        virtual ~Front() = default;
        [[nodiscard]] virtual bool IsListening() const = 0;
        /// What the loop does with a message that it has taken from the queue.
        virtual void PassOn(MSG& message) = 0;
        /// The window that keys go to; null for none.
        [[nodiscard]] virtual HWND KeyWindow() const = 0;
    };

    explicit Win32Hands(Front& front) : m_front(front) {}

    // The mouse; points are those of the window's inside.

    void Click(HWND window, POINT point, IUser::Modifier modifier = IUser::Modifier::None);
    /// Down, up, double, up. The second click is left out when the first one has ended, hidden or disabled
    /// the window.
    void DoubleClick(HWND window, POINT point);
    void Drag(HWND window, POINT from, POINT to);

    // The keyboard

    void Press(UINT key, IUser::Modifier modifier = IUser::Modifier::None);
    /// A key for each character, where the keyboard has one; a line break is Enter.
    void Type(std::u16string_view text);
    /// What an input method ends with.
    void Compose(std::u16string_view text);

    /// Any other message that is posted to a window.
    void Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    /// Works off what waits in the queue.
    void RunAll();

private:
    void PrvRun(UINT first, UINT last);
    void PrvKey(UINT key, LPARAM scanCode);
    void PrvMouse(HWND window, UINT message, WPARAM buttons, POINT point);

    Front& m_front;
};

/// The middle of a rectangle.
[[nodiscard]] POINT MiddleOf(const RECT& rectangle) noexcept;
/// The rectangle of a window's inside.
[[nodiscard]] RECT InsideOf(HWND window) noexcept;

} // namespace KestrinProductEditor
