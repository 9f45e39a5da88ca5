// SPDX-License-Identifier: MIT
#include "platform/win32/Win32MessageBox.h"

#include "platform/win32/Win32Looks.h"
#include "platform/windows/WideText.h"

#include <commctrl.h>

#include <string>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr UINT_PTR kSubclass = 1;

/// Esc and the close button are No: the system gives a box of Yes and No neither.
LRESULT CALLBACK YesNoProcedure(HWND box, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                DWORD_PTR /*data*/)
{
    const bool isCancel = message == WM_COMMAND && LOWORD(wParam) == IDCANCEL;
    const bool isClose = message == WM_SYSCOMMAND && (wParam & 0xFFF0) == SC_CLOSE;
    if (isCancel || isClose || message == WM_CLOSE) {
        SendMessageW(box, WM_COMMAND, MAKEWPARAM(IDNO, BN_CLICKED),
                     reinterpret_cast<LPARAM>(GetDlgItem(box, IDNO)));
        return 0;
    }
    if (message == WM_NCDESTROY)
        RemoveWindowSubclass(box, &YesNoProcedure, id);
    return DefSubclassProc(box, message, wParam, lParam);
}

/// Gives the next message box of this thread a way out that means No.
class NoOnEscape
{
public:
    NoOnEscape()
        : m_before(std::exchange(t_current, this)),
          m_hook(SetWindowsHookExW(WH_CALLWNDPROCRET, &PrvHook, nullptr, GetCurrentThreadId()))
    {
    }
    NoOnEscape(const NoOnEscape&) = delete;
    NoOnEscape& operator=(const NoOnEscape&) = delete;
    ~NoOnEscape()
    {
        PrvUnhook();
        t_current = m_before;
    }

private:
    static LRESULT CALLBACK PrvHook(int code, WPARAM wParam, LPARAM lParam)
    {
        const auto& message = *reinterpret_cast<const CWPRETSTRUCT*>(lParam);
        if (code == HC_ACTION && message.message == WM_INITDIALOG && t_current != nullptr) {
            t_current->PrvUnhook();
            SetWindowSubclass(message.hwnd, &YesNoProcedure, kSubclass, 0);
            // From its beginning, in which Close is there.
            GetSystemMenu(message.hwnd, TRUE);
            EnableMenuItem(GetSystemMenu(message.hwnd, FALSE), SC_CLOSE, MF_BYCOMMAND | MF_ENABLED);
        }
        return CallNextHookEx(nullptr, code, wParam, lParam);
    }

    void PrvUnhook()
    {
        if (m_hook != nullptr)
            UnhookWindowsHookEx(std::exchange(m_hook, nullptr));
    }

    static thread_local NoOnEscape* t_current;

    NoOnEscape* m_before;
    HHOOK m_hook;
};

thread_local NoOnEscape* NoOnEscape::t_current = nullptr;

[[nodiscard]] MessageAnswer AnswerOf(int button, std::int32_t style)
{
    switch (button) {
    case IDYES:
        return MessageAnswer::Yes;
    case IDNO:
        return MessageAnswer::No;
    default:
        // Also where the box could not be shown.
        return CarefulAnswer(style);
    }
}

[[nodiscard]] int ShowBox(HWND owner, const std::u16string& text, const std::u16string& title, UINT style)
{
    return MessageBoxW(owner, Wide(text.c_str()), Wide(title.c_str()), style);
}

} // namespace

Win32MessageBox::Win32MessageBox(Front front) : m_front(std::move(front)) {}

MessageAnswer Win32MessageBox::Show(std::u16string_view text, std::int32_t style, std::u16string_view title)
{
    HWND owner = m_front ? m_front() : nullptr;
    UINT flags = static_cast<UINT>(style);
    if (owner == nullptr) {
        owner = GetActiveWindow();
        flags |= MB_SETFOREGROUND;
    }
    // Without an owner the user could go on in the host's windows.
    if (owner == nullptr)
        flags |= MB_TASKMODAL;
    if ((GetWindowLongW(owner, GWL_EXSTYLE) & WS_EX_LAYOUTRTL) != 0)
        flags |= MB_RTLREADING | MB_RIGHT;
    const Win32Looks looks;
    const std::u16string shown(text);
    const std::u16string heading(title);
    if (CarefulAnswer(style) != MessageAnswer::No)
        return AnswerOf(ShowBox(owner, shown, heading, flags), style);
    const NoOnEscape noOnEscape;
    return AnswerOf(ShowBox(owner, shown, heading, flags), style);
}

} // namespace KestrinProductEditor
