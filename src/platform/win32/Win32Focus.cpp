// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Focus.h"

#include <commctrl.h>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

Win32Focus::Win32Focus(HWND window) : m_window(window) {}

Win32Focus::~Win32Focus()
{
    for (const Member& member : m_members) {
        if (member.keyWindow != nullptr)
            RemoveWindowSubclass(member.keyWindow, &PrvProcedure, reinterpret_cast<UINT_PTR>(this));
    }
}

void Win32Focus::Add(IControl& control, HWND keyWindow)
{
    m_members.push_back({.control = &control, .keyWindow = keyWindow});
    if (keyWindow != nullptr) {
        SetWindowSubclass(keyWindow, &PrvProcedure, reinterpret_cast<UINT_PTR>(this),
                          reinterpret_cast<DWORD_PTR>(this));
    }
}

void Win32Focus::SetFirst(IControl& control)
{
    m_first = &control;
}

void Win32Focus::Set(IControl& control)
{
    const Member* const member = PrvFind(control);
    if (member == nullptr || !PrvCanHave(*member))
        return;
    // What code asks for goes before a click that is held back.
    m_heldBack = nullptr;
    const int holds = std::exchange(m_holds, 0);
    const std::weak_ptr<const bool> isAlive = m_isAlive;
    PrvMove(*member);
    if (!isAlive.expired())
        m_holds += holds;
}

void Win32Focus::Begin()
{
    m_hasEnded = false;
    if (m_current != nullptr)
        return;
    if (const Member* const first = PrvFirst())
        PrvMove(*first);
}

void Win32Focus::Return()
{
    if (m_current != nullptr)
        m_current->GotFocus.Raise();
}

void Win32Focus::Regain()
{
    m_isSuspended = false;
    const Member* const current = m_current == nullptr ? nullptr : PrvFind(*m_current);
    const Member* const target = current != nullptr && PrvCanHave(*current) ? current : PrvFirst();
    if (target != nullptr)
        PrvMove(*target);
}

void Win32Focus::Restore() const
{
    // A click that is held back goes on where a message has interrupted it.
    const IControl* const owed = m_heldBack != nullptr ? m_heldBack : m_current;
    const Member* const member = owed == nullptr ? nullptr : PrvFind(*owed);
    if (member != nullptr && PrvCanHave(*member))
        ::SetFocus(member->keyWindow);
}

void Win32Focus::Leave(const IControl& control)
{
    if (m_current != &control)
        return;
    const Member* const member = PrvFind(control);
    const Member* const first = PrvFirst();
    if (member != nullptr && !PrvCanHave(*member) && first != nullptr)
        PrvMove(*first);
}

void Win32Focus::Hold()
{
    ++m_holds;
}

void Win32Focus::Release()
{
    if (--m_holds == 0) {
        if (IControl* const control = std::exchange(m_heldBack, nullptr))
            PrvArrive(control);
    }
}

LRESULT CALLBACK Win32Focus::PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR id, DWORD_PTR data)
{
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(window, &PrvProcedure, id);
    if (message != WM_SETFOCUS && message != WM_KILLFOCUS)
        return DefSubclassProc(window, message, wParam, lParam);
    auto& focus = *reinterpret_cast<Win32Focus*>(data);
    const std::weak_ptr<const bool> isAlive = focus.m_isAlive;
    const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
    if (isAlive.expired())
        return result;
    if (message == WM_SETFOCUS)
        focus.PrvCame(window);
    else
        focus.PrvWent(reinterpret_cast<HWND>(wParam));
    return result;
}

const Win32Focus::Member* Win32Focus::PrvFind(const IControl& control) const
{
    const auto found = std::find_if(m_members.begin(), m_members.end(),
                                    [&control](const Member& member) { return member.control == &control; });
    return found == m_members.end() ? nullptr : &*found;
}

bool Win32Focus::PrvCanHave(const Member& member) const
{
    return member.keyWindow != nullptr && !m_isSuspended && member.control->IsVisible() &&
           member.control->IsEnabled();
}

const Win32Focus::Member* Win32Focus::PrvFirst() const
{
    const Member* const first = m_first == nullptr ? nullptr : PrvFind(*m_first);
    if (first != nullptr && PrvCanHave(*first))
        return first;
    // As Tab would find it, also on a window that is not shown.
    for (HWND window = GetWindow(m_window, GW_CHILD); window != nullptr;
         window = GetWindow(window, GW_HWNDNEXT)) {
        if ((GetWindowLongW(window, GWL_STYLE) & WS_TABSTOP) == 0)
            continue;
        const auto found = std::find_if(m_members.begin(), m_members.end(), [window](const Member& member) {
            return member.keyWindow == window;
        });
        if (found != m_members.end() && PrvCanHave(*found))
            return &*found;
    }
    return nullptr;
}

bool Win32Focus::PrvIsActive() const
{
    const HWND root = GetAncestor(m_window, GA_ROOT);
    return GetActiveWindow() == root && IsWindowVisible(m_window) != 0;
}

void Win32Focus::PrvMove(const Member& member)
{
    // The system would activate another window than the user's for a control that is given its focus.
    if (PrvIsActive() && GetFocus() != member.keyWindow)
        ::SetFocus(member.keyWindow);
    else
        PrvArrive(member.control);
}

void Win32Focus::PrvCame(HWND keyWindow)
{
    const auto found = std::find_if(m_members.begin(), m_members.end(), [keyWindow](const Member& member) {
        return member.keyWindow == keyWindow;
    });
    if (found == m_members.end())
        return;
    if (m_holds > 0)
        m_heldBack = found->control;
    else
        PrvArrive(found->control);
}

void Win32Focus::PrvWent(HWND next)
{
    // To another control of the host. What goes to another window comes back with this one, and what goes to
    // a control of this surface is told by that one.
    const bool isInHost = next != nullptr && GetAncestor(next, GA_ROOT) == GetAncestor(m_window, GA_ROOT);
    if (isInHost && next != m_window && IsChild(m_window, next) == 0)
        PrvArrive(nullptr);
}

void Win32Focus::PrvArrive(IControl* control)
{
    if (m_hasEnded || control == m_current)
        return;
    IControl* const left = std::exchange(m_current, control);
    const std::weak_ptr<const bool> isAlive = m_isAlive;
    if (left != nullptr)
        left->LostFocus.Raise();
    // The handler may have moved the focus on.
    if (!isAlive.expired() && control != nullptr && m_current == control)
        control->GotFocus.Raise();
}

} // namespace KestrinProductEditor
