// SPDX-License-Identifier: MIT
#include "automation/windows/HostProgram.h"

#include "automation/windows/Patience.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr UINT kFence = WM_APP;
constexpr UINT kCall = WM_APP + 1;
constexpr UINT kPost = WM_APP + 2;

constexpr const wchar_t* kClassName = L"KstneditTestsHost";
constexpr UINT kTickPause = 10; // milliseconds
constexpr int kMessageText = 0xFFFF;
constexpr int kFileNameBox = 0x47C;

using Step = std::function<void()>;

/// No exception leaves a window procedure.
void Run(const Step& step)
{
    try {
        step();
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
    }
}

[[nodiscard]] std::optional<SeenWindow> FindOpen(DWORD thread,
                                                 const std::function<bool(const SeenWindow&)>& isIt)
{
    for (const SeenWindow& window : WindowsOnTop(thread)) {
        if (window.IsOpen() && isIt(window))
            return window;
    }
    return std::nullopt;
}

[[nodiscard]] bool IsDialogBox(const SeenWindow& window)
{
    return window.Class() == u"#32770";
}

[[nodiscard]] bool IsMessage(const SeenWindow& window)
{
    return IsDialogBox(window) && GetDlgItem(window.Handle(), kMessageText) != nullptr;
}

[[nodiscard]] std::u16string TextOfMessage(const SeenWindow& box)
{
    return SeenWindow(GetDlgItem(box.Handle(), kMessageText)).Text();
}

[[nodiscard]] bool ShowsProgress(const SeenWindow& window)
{
    for (const SeenWindow& child : window.Children()) {
        if (child.Class() == u"KstneditProgress")
            return true;
    }
    return false;
}

} // namespace

HostProgram::HostProgram()
{
    WNDCLASSW kind = {};
    kind.lpfnWndProc = &PrvProcedure;
    kind.hInstance = GetModuleHandleW(nullptr);
    kind.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
    kind.lpszClassName = kClassName;
    // Once more is an error that nobody minds.
    RegisterClassW(&kind);
    m_window = CreateWindowW(kClassName, L"Host", WS_OVERLAPPEDWINDOW, 0, 0, 400, 300, nullptr, nullptr,
                             kind.hInstance, this);
    if (m_window == nullptr)
        throw std::runtime_error("no window of a host");
    ShowWindow(m_window, SW_SHOW);
    SetForegroundWindow(m_window);
    SetActiveWindow(m_window);
    SetTimer(m_window, 1, kTickPause, nullptr);
}

HostProgram::~HostProgram()
{
    DestroyWindow(m_window);
}

void HostProgram::ShowWhile(const std::function<void()>& show, const std::function<void()>& acts)
{
    std::atomic<bool> hasReturned = false;
    std::atomic<bool> isDone = false;
    std::thread user([&] {
        try {
            acts();
            Await("the end of Show", [&] { return hasReturned.load(); });
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
            PrvCloseWindows(hasReturned);
        }
        isDone = true;
        PostMessageW(m_window, WM_NULL, 0, 0);
    });
    show();
    hasReturned = true;
    PrvRunLoop(isDone);
    user.join();
}

/// As a host does when nothing is shown. What ends the program stays in the queue.
void HostProgram::PrvRunLoop(const std::atomic<bool>& isDone)
{
    std::optional<WPARAM> exitCode;
    while (!isDone) {
        MSG message = {};
        if (GetMessageW(&message, nullptr, 0, 0) == 0)
            exitCode = message.wParam;
        else
            DispatchMessageW(&message);
    }
    if (exitCode)
        PostQuitMessage(static_cast<int>(*exitCode));
}

/// The last resort: every window is refused or closed until Show returns.
void HostProgram::PrvCloseWindows(const std::atomic<bool>& hasReturned) const
{
    try {
        Await("the end of windows that were left", [&] {
            const auto isOthers = [this](const SeenWindow& window) { return window.Handle() != m_window; };
            if (const std::optional<SeenWindow> left = FindOpen(m_thread, isOthers)) {
                const HWND no = GetDlgItem(left->Handle(), IDNO);
                PostMessageW(no != nullptr ? no : left->Handle(), no != nullptr ? BM_CLICK : WM_CLOSE, 0, 0);
                Settle();
            }
            return hasReturned.load();
        });
    } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
        std::abort();
    }
}

void HostProgram::Settle() const
{
    // A key may have put a character behind the first fence.
    for (int round = 0; round < 2; ++round) {
        const int fence = ++m_lastFence;
        PostMessageW(m_window, kFence, static_cast<WPARAM>(fence), 0);
        Await("the host's thread", [&] { return m_fencesReached >= fence; });
    }
}

void HostProgram::Call(const std::function<void()>& step) const
{
    SendMessageW(m_window, kCall, 0, reinterpret_cast<LPARAM>(&step));
}

void HostProgram::Post(std::function<void()> step) const
{
    auto held = std::make_unique<Step>(std::move(step));
    if (PostMessageW(m_window, kPost, 0, reinterpret_cast<LPARAM>(held.get())))
        static_cast<void>(held.release()); // the window procedure takes it
}

SeenWindow HostProgram::Form(std::u16string_view title) const
{
    return *Await("the form " + ToUtf8(title), [&] {
        return FindOpen(m_thread, [&](const SeenWindow& window) {
            return window.Class() == u"KstneditForm" && window.Text() == title;
        });
    });
}

SeenWindow HostProgram::FileDialog(std::u16string_view title) const
{
    return *Await("the file dialog " + ToUtf8(title), [&] {
        return FindOpen(m_thread, [&](const SeenWindow& window) {
            return IsDialogBox(window) && window.Text() == title &&
                   GetDlgItem(window.Handle(), kFileNameBox) != nullptr;
        });
    });
}

void HostProgram::Answer(std::u16string_view beginning, int button) const
{
    const SeenWindow box = *Await("the message " + ToUtf8(beginning), [&] {
        return FindOpen(m_thread, [&](const SeenWindow& window) {
            return IsMessage(window) && TextOfMessage(window).starts_with(beginning);
        });
    });
    const HWND pressed = GetDlgItem(box.Handle(), button);
    if (pressed == nullptr)
        throw std::runtime_error("the message " + ToUtf8(beginning) + " has no such button");
    SeenWindow(pressed).Press();
    box.AwaitEnd();
}

bool HostProgram::IsAsking() const
{
    return FindOpen(m_thread, &IsMessage).has_value();
}

SeenWindow HostProgram::DropDown() const
{
    return *Await("a list that drops down", [&] {
        return FindOpen(m_thread, [](const SeenWindow& window) { return window.Class() == u"ListBox"; });
    });
}

void HostProgram::Type(const SeenWindow& box, std::u16string_view text) const
{
    box.Click({2, 2});
    Settle();
    SendMessageW(box.Handle(), EM_SETSEL, 0, -1);
    for (const char16_t character : text)
        PostMessageW(box.Handle(), WM_CHAR, character, 1);
    Settle();
}

void HostProgram::Repaint() const
{
    RedrawWindow(m_window, nullptr, nullptr, RDW_INVALIDATE);
}

void HostProgram::PrvPaint()
{
    PAINTSTRUCT paint = {};
    BeginPaint(m_window, &paint);
    EndPaint(m_window, &paint);
    ++m_paintings;
    for (const SeenWindow& window : WindowsOnTop(m_thread)) {
        if (ShowsProgress(window))
            ++m_paintingsWhileBusy;
    }
}

LRESULT CALLBACK HostProgram::PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_NCCREATE) {
        void* const host = reinterpret_cast<const CREATESTRUCTW*>(lParam)->lpCreateParams;
        SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(host));
    }
    auto* const host = reinterpret_cast<HostProgram*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (host == nullptr)
        return DefWindowProcW(window, message, wParam, lParam);
    switch (message) {
    case WM_PAINT:
        host->PrvPaint();
        return 0;
    case WM_TIMER:
        ++host->m_ticks;
        return 0;
    case kFence:
        host->m_fencesReached = static_cast<int>(wParam);
        return 0;
    case kCall:
        Run(*reinterpret_cast<const Step*>(lParam));
        return 0;
    case kPost:
        Run(*std::unique_ptr<Step>(reinterpret_cast<Step*>(lParam)));
        return 0;
    default:
        return DefWindowProcW(window, message, wParam, lParam);
    }
}

} // namespace KestrinProductEditor
