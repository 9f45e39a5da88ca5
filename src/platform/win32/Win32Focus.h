// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"

#include <windows.h>

#include <memory>
#include <vector>

namespace KestrinProductEditor {

/// Which control of a window has the focus, whether the window is active or not, and the events that go with
/// it. The system tells windows of an active window only, and tells them of activation too.
///
/// One for each form or user control; it outlives the controls' events but not their windows.
class Win32Focus
{
public:
    explicit Win32Focus(HWND window);
    Win32Focus(const Win32Focus&) = delete;
    Win32Focus& operator=(const Win32Focus&) = delete;
    ~Win32Focus();

    /// A control takes part; `keyWindow` is where its keys go (null: it never has the focus). Keys, clicks
    /// and Tab that give that window the system's focus move this one, too.
    void Add(IControl& control, HWND keyWindow);

    /// The control that a hidden one hands its focus to, and that has it first.
    void SetFirst(IControl& control);
    /// Moves the focus and raises LostFocus and GotFocus before it returns. A control that cannot take the
    /// focus (hidden, disabled) leaves everything as it is.
    void Set(IControl& control);
    [[nodiscard]] const IControl* Current() const { return m_current; }
    /// Where the keys of the current control go, also while the window is not active; null for none.
    [[nodiscard]] HWND KeyWindow() const
    {
        for (const Member& member : m_members) {
            if (member.control == m_current)
                return member.keyWindow;
        }
        return nullptr;
    }

    /// The window is shown, or about to be: the first control (without one, the first that Tab would find)
    /// hears GotFocus, unless another one has the focus already.
    void Begin();
    /// The window is about to close: what the system does to the focus then is no event.
    void End() { m_hasEnded = true; }
    /// A form in front of this one has closed: the current control hears GotFocus.
    void Return();
    /// The window takes no acts of the user: no control can take the focus, and it stays where it is.
    void Suspend() { m_isSuspended = true; }
    /// The window takes the user's acts again: the system's focus goes back to where it was, without events.
    void Regain();
    /// The window was activated: the system's focus goes where it belongs.
    void Restore() const;
    /// `control` was hidden or disabled: hands the focus on when it had it.
    void Leave(const IControl& control);

    /// A list holds back what a click would do to the focus until it has told of its new current row.
    void Hold();
    /// Delivers what came while it was held back. Focus that code sets meanwhile is not held back.
    void Release();

private:
    struct Member
    {
        IControl* control;
        HWND keyWindow;
    };

    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data);

    [[nodiscard]] const Member* PrvFind(const IControl& control) const;
    [[nodiscard]] bool PrvCanHave(const Member& member) const;
    /// Null when nothing can have it.
    [[nodiscard]] const Member* PrvFirst() const;
    [[nodiscard]] bool PrvIsActive() const;
    void PrvMove(const Member& member);
    void PrvCame(HWND keyWindow);
    void PrvWent(HWND next);
    void PrvArrive(IControl* control);

    HWND m_window;
    std::vector<Member> m_members;
    IControl* m_first = nullptr;
    IControl* m_current = nullptr;
    IControl* m_heldBack = nullptr;
    int m_holds = 0;
    bool m_isSuspended = false;
    bool m_hasEnded = false;
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace KestrinProductEditor
