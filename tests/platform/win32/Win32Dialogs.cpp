// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Dialogs.h"

#include "platform/windows/WideText.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr UINT kShown = WM_APP;
constexpr UINT kSoon = 5; // milliseconds

constexpr int kMessageText = 0xFFFF;
constexpr int kFileNameBox = 0x47C;
constexpr int kFileNameEdit = 0x480;

// The listener on this thread.
thread_local Win32Watch* t_watch = nullptr;

[[nodiscard]] LPARAM ToParameter(HWND window)
{
    return reinterpret_cast<LPARAM>(window);
}

[[nodiscard]] HWND FromParameter(LPARAM parameter)
{
    return reinterpret_cast<HWND>(parameter);
}

[[nodiscard]] HWND FileNameOf(HWND dialog)
{
    const HWND box = GetDlgItem(dialog, kFileNameBox);
    return box != nullptr ? box : GetDlgItem(dialog, kFileNameEdit);
}

[[nodiscard]] bool IsIcon(HWND control)
{
    return ClassOfWindow(control) == u"Static" &&
           (GetWindowLongW(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
}

[[nodiscard]] std::int32_t IconOf(HWND box)
{
    HWND control = GetWindow(box, GW_CHILD);
    while (control != nullptr && !IsIcon(control))
        control = GetWindow(control, GW_HWNDNEXT);
    if (control == nullptr)
        return 0;
    const LRESULT icon = SendMessageW(control, STM_GETICON, 0, 0);
    const struct
    {
        LPCWSTR name;
        std::int32_t style;
    } icons[] = {{IDI_QUESTION, MB_ICONQUESTION},
                 {IDI_EXCLAMATION, MB_ICONEXCLAMATION},
                 {IDI_ASTERISK, MB_ICONASTERISK},
                 {IDI_HAND, MB_ICONHAND}};
    for (const auto& each : icons) {
        if (icon == reinterpret_cast<LRESULT>(LoadIconW(nullptr, each.name)))
            return each.style;
    }
    return 0;
}

[[nodiscard]] std::int32_t ButtonsOf(HWND box)
{
    if (ButtonOf(box, MessageAnswer::Yes) == nullptr)
        return MB_OK;
    return ButtonOf(box, MessageAnswer::Cancel) != nullptr ? MB_YESNOCANCEL : MB_YESNO;
}

} // namespace

void RunActs(const std::function<void()>& acts) noexcept
{
    try {
        acts();
    } catch (const std::exception& error) {
        ADD_FAILURE() << "an act ended with an exception: " << error.what();
    } catch (...) {
        ADD_FAILURE() << "an act ended with an exception";
    }
}

Win32Watch::Win32Watch(Heard shown, Heard gone)
    : m_shown(std::move(shown)), m_gone(std::move(gone)), m_previous(std::exchange(t_watch, this))
{
    WNDCLASSW kind = {};
    kind.lpfnWndProc = &Win32Watch::PrvProcedure;
    kind.lpszClassName = L"KstneditTestWatch";
    // Once more is an error that nobody minds.
    RegisterClassW(&kind);
    m_window = CreateWindowW(kind.lpszClassName, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    m_hook = SetWindowsHookExW(WH_CALLWNDPROC, &Win32Watch::PrvHook, nullptr, GetCurrentThreadId());
    if (m_window == nullptr || m_hook == nullptr)
        throw std::runtime_error("nobody can watch this thread's windows");
}

Win32Watch::~Win32Watch()
{
    UnhookWindowsHookEx(m_hook);
    DestroyWindow(m_window);
    t_watch = m_previous;
}

void Win32Watch::TellAgain(HWND window)
{
    SetTimer(m_window, static_cast<UINT_PTR>(ToParameter(window)), kSoon, nullptr);
}

LRESULT CALLBACK Win32Watch::PrvHook(int code, WPARAM wParam, LPARAM lParam)
{
    if (code == HC_ACTION && t_watch != nullptr)
        t_watch->PrvHear(*reinterpret_cast<const CWPSTRUCT*>(lParam));
    return CallNextHookEx(nullptr, code, wParam, lParam);
}

void Win32Watch::PrvHear(const CWPSTRUCT& message)
{
    if (message.message == WM_NCDESTROY && m_gone)
        m_gone(message.hwnd);
    if (message.message != WM_WINDOWPOSCHANGED ||
        (reinterpret_cast<const WINDOWPOS*>(message.lParam)->flags & SWP_SHOWWINDOW) == 0 ||
        GetAncestor(message.hwnd, GA_ROOT) != message.hwnd)
        return;
    constexpr std::u16string_view kMenuClass = u"#32768";
    if (ClassOfWindow(message.hwnd) != kMenuClass)
        PostMessageW(m_window, kShown, 0, ToParameter(message.hwnd));
    else if (m_onMenu)
        m_onMenu();
}

LRESULT CALLBACK Win32Watch::PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const watch = reinterpret_cast<Win32Watch*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (watch != nullptr && message == kShown) {
        watch->PrvTell(FromParameter(lParam));
        return 0;
    }
    if (watch != nullptr && message == WM_TIMER) {
        KillTimer(window, wParam);
        watch->PrvTell(FromParameter(static_cast<LPARAM>(wParam)));
        return 0;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void Win32Watch::PrvTell(HWND window) noexcept
{
    if (IsWindowVisible(window))
        RunActs([&] { m_shown(window); });
}

std::u16string TextOfWindow(HWND window)
{
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
    const int length = GetWindowTextW(window, Wide(text.data()), static_cast<int>(text.size()));
    text.resize(static_cast<std::size_t>(length));
    return text;
}

std::u16string ClassOfWindow(HWND window)
{
    constexpr int kLongest = 256;
    std::array<wchar_t, kLongest> name = {};
    const int length = GetClassNameW(window, name.data(), kLongest);
    return FromWide({name.data(), static_cast<std::size_t>(length)});
}

bool IsDialogBox(HWND window)
{
    return ClassOfWindow(window) == u"#32770";
}

bool IsFileDialog(HWND window)
{
    return window != nullptr && IsDialogBox(window) && FileNameOf(window) != nullptr;
}

IUser::Message ReadMessage(HWND box)
{
    return {.text = TextOfWindow(GetDlgItem(box, kMessageText)),
            .style = IconOf(box) | ButtonsOf(box),
            .title = TextOfWindow(box)};
}

HWND ButtonOf(HWND box, MessageAnswer answer)
{
    const HWND button = GetDlgItem(box, static_cast<int>(answer));
    // A box that has only OK gives it the number of Cancel, for Esc.
    if (button == nullptr && answer == MessageAnswer::Ok && GetDlgItem(box, IDYES) == nullptr)
        return GetDlgItem(box, IDCANCEL);
    return button;
}

bool ChoosePath(HWND dialog, const std::u16string& path)
{
    // As the system writes it: the dialog takes no "/".
    std::u16string whole(GetFullPathNameW(Wide(path.c_str()), 0, nullptr, nullptr), u'\0');
    whole.resize(
        GetFullPathNameW(Wide(path.c_str()), static_cast<DWORD>(whole.size()), Wide(whole.data()), nullptr));
    SendMessageW(FileNameOf(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(whole.c_str()));
    SendMessageW(GetDlgItem(dialog, IDOK), BM_CLICK, 0, 0);
    return !IsWindow(dialog) || !IsWindowVisible(dialog);
}

} // namespace KestrinProductEditor
