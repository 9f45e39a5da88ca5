// SPDX-License-Identifier: MIT
#pragma once

#include "support/User.h"

#include <windows.h>

#include <cstdint>
#include <functional>
#include <string>

namespace KestrinProductEditor {

/// Runs a part of a test from inside a window procedure: an exception, which cannot pass through the system's
/// frames, becomes a failure.
void RunActs(const std::function<void()>& acts) noexcept;

/// Tells of every window of its own (no child) that is shown on this thread, once somebody takes messages for
/// it: in a loop that was running before, or one that the window runs itself.
class Win32Watch
{
public:
    using Heard = std::function<void(HWND)>;

    /// `shown` may throw (RunActs). `gone` hears of every window that ends, also of
    /// a child, while it ends.
    Win32Watch(Heard shown, Heard gone);
    Win32Watch(const Win32Watch&) = delete;
    Win32Watch& operator=(const Win32Watch&) = delete;
    ~Win32Watch();

    /// Tells of the window once more, a little later.
    void TellAgain(HWND window);
    /// A window of the watch, for what needs one.
    [[nodiscard]] HWND Window() const { return m_window; }
    /// Called at once when a menu drops down, before it takes its first message; null for nobody.
    void OnMenu(std::function<void()> act) { m_onMenu = std::move(act); }

private:
    static LRESULT CALLBACK PrvHook(int code, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    void PrvHear(const CWPSTRUCT& message);
    void PrvTell(HWND window) noexcept;

    Heard m_shown;
    Heard m_gone;
    std::function<void()> m_onMenu;
    HWND m_window = nullptr;
    HHOOK m_hook = nullptr;
    Win32Watch* m_previous = nullptr;
};

/// The text of a window's title or of a control.
[[nodiscard]] std::u16string TextOfWindow(HWND window);
[[nodiscard]] std::u16string ClassOfWindow(HWND window);

/// Message boxes and file dialogs, told apart by what is in them.
[[nodiscard]] bool IsDialogBox(HWND window);
[[nodiscard]] bool IsFileDialog(HWND window);

/// A message box as it is read from the screen.
[[nodiscard]] IUser::Message ReadMessage(HWND box);
/// The box's button; null when it has none for that answer.
[[nodiscard]] HWND ButtonOf(HWND box, MessageAnswer answer);

/// Types a path into a file dialog and presses its button. Answers whether the dialog took it.
[[nodiscard]] bool ChoosePath(HWND dialog, const std::u16string& path);

} // namespace KestrinProductEditor
