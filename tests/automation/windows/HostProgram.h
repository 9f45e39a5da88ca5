// SPDX-License-Identifier: MIT
#pragma once

#include "automation/windows/SeenWindow.h"

#include <windows.h>

#include <atomic>
#include <functional>
#include <string_view>

namespace KestrinProductEditor {

/// A program that shows a window of the component: a thread, with a window of its own in front. It is made,
/// runs ShowWhile and ends on that thread; the rest is for the one that acts meanwhile.
///
/// What is waited for in vain is a std::runtime_error.
class HostProgram
{
public:
    HostProgram();
    HostProgram(const HostProgram&) = delete;
    HostProgram& operator=(const HostProgram&) = delete;
    ~HostProgram();

    /// Calls `show`, and `acts` on another thread, and returns when both have. Acts that fail, or leave a
    /// window open, are a failure of the test; the windows are closed then.
    void ShowWhile(const std::function<void()>& show, const std::function<void()>& acts);

    [[nodiscard]] SeenWindow Window() const { return SeenWindow(m_window); }
    [[nodiscard]] DWORD Thread() const { return m_thread; }

    /// Waits until the thread has worked off what was posted to its windows up to now, and what came of that.
    void Settle() const;
    /// Runs a step on the thread, between two messages, and waits for its end.
    void Call(const std::function<void()>& step) const;
    /// Runs a step on the thread when it comes to it, for one that itself waits for the user.
    void Post(std::function<void()> step) const;

    /// Waits for a form with that title that the user can act on.
    [[nodiscard]] SeenWindow Form(std::u16string_view title) const;
    /// Waits for a file dialog with that title that the user can act on.
    [[nodiscard]] SeenWindow FileDialog(std::u16string_view title) const;
    /// Waits for a message that begins so, clicks its button (IDYES...), and waits until it is gone.
    void Answer(std::u16string_view beginning, int button) const;
    /// Whether it shows a message.
    [[nodiscard]] bool IsAsking() const;
    /// The list that has dropped down at a cell; waits for it.
    [[nodiscard]] SeenWindow DropDown() const;

    /// Clicks into a box and types over what it holds.
    void Type(const SeenWindow& box, std::u16string_view text) const;

    /// How often it has painted its window and heard its timer; Repaint makes the former due.
    [[nodiscard]] int Paintings() const { return m_paintings; }
    /// Those of them while a progress bar was shown.
    [[nodiscard]] int PaintingsWhileBusy() const { return m_paintingsWhileBusy; }
    [[nodiscard]] int Ticks() const { return m_ticks; }
    void Repaint() const;

private:
    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void PrvPaint();
    static void PrvRunLoop(const std::atomic<bool>& isDone);
    void PrvCloseWindows(const std::atomic<bool>& hasReturned) const;

    DWORD m_thread = GetCurrentThreadId();
    HWND m_window = nullptr;
    mutable std::atomic<int> m_lastFence = 0;
    std::atomic<int> m_fencesReached = 0;
    std::atomic<int> m_paintings = 0;
    std::atomic<int> m_paintingsWhileBusy = 0;
    std::atomic<int> m_ticks = 0;
};

} // namespace KestrinProductEditor
