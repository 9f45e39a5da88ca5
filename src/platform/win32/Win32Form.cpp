// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Form.h"

#include "platform/win32/Win32Button.h"
#include "platform/win32/Win32Grid.h"
#include "platform/win32/Win32Looks.h"
#include "platform/win32/Win32ModalHost.h"
#include "platform/win32/Win32ProgressBar.h"
#include "platform/win32/Win32Resolution.h"
#include "platform/win32/Win32Splitter.h"
#include "platform/win32/Win32WindowClass.h"
#include "platform/windows/WideText.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace KestrinProductEditor {

namespace {

// Milliseconds; a screen shows 60 frames a second.
constexpr ULONGLONG kFrame = 16;

// Plain data: it needs no end when its thread, or the library, ends.
thread_local Win32Form* t_front = nullptr;

/// The part of the screen that windows may cover, where most of `window` lies.
[[nodiscard]] RECT RoomAround(HWND window)
{
    MONITORINFO screen = {};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
    return screen.rcWork;
}

[[nodiscard]] SIZE SizeOf(const RECT& place)
{
    return {place.right - place.left, place.bottom - place.top};
}

/// The size of the whole window around an inside of that size.
[[nodiscard]] SIZE SizeAround(HWND window, SIZE inside)
{
    RECT place = {0, 0, inside.cx, inside.cy};
    AdjustWindowRectExForDpi(
        &place, static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)), GetMenu(window) != nullptr,
        static_cast<DWORD>(GetWindowLongW(window, GWL_EXSTYLE)), GetDpiForWindow(window));
    return SizeOf(place);
}

/// What the user does, as the system puts it into the queue.
struct Acts
{
    UINT first;
    UINT last;
};

constexpr Acts kActs[] = {
    {WM_KEYFIRST, WM_KEYLAST},
    {WM_IME_STARTCOMPOSITION, WM_IME_KEYLAST},
    {WM_IME_SETCONTEXT, WM_IME_KEYUP},
    {WM_MOUSEFIRST, WM_MOUSELAST},
    {WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK},
    {WM_CONTEXTMENU, WM_CONTEXTMENU},
    {WM_COMMAND, WM_SYSCOMMAND},
    {WM_DROPFILES, WM_DROPFILES},
    {WM_CLOSE, WM_CLOSE},
};

/// The system hands out WM_QUIT whatever was asked for; it belongs to the loop that runs, and goes back at
/// the end of the scope: the system would hand it out again and again.
class KeptQuit
{
public:
    KeptQuit() = default;
    KeptQuit(const KeptQuit&) = delete;
    KeptQuit& operator=(const KeptQuit&) = delete;
    ~KeptQuit()
    {
        if (m_code)
            PostQuitMessage(*m_code);
    }

    /// Whether the message is one, and kept.
    [[nodiscard]] bool Takes(const MSG& message)
    {
        if (message.message == WM_QUIT)
            m_code = static_cast<int>(message.wParam);
        return message.message == WM_QUIT;
    }

private:
    std::optional<int> m_code;
};

} // namespace

/// While a form is shown, however that ends.
class Win32Form::Showing
{
public:
    Showing(Win32Form& form, Win32ModalHost& host) : m_form(form)
    {
        m_form.m_isShown = true;
        m_form.m_below = std::exchange(t_front, &form);
        m_form.m_host = &host;
    }
    Showing(const Showing&) = delete;
    Showing& operator=(const Showing&) = delete;
    ~Showing()
    {
        m_form.PrvHide();
        t_front = std::exchange(m_form.m_below, nullptr);
        m_form.m_host = nullptr;
        m_form.m_isShown = false;
        m_form.m_isEnded = false;
    }

private:
    Win32Form& m_form;
};

void Win32Form::PrvRegister()
{
    Win32GridView::Register();
    Win32ProgressBar::Register();
    Win32Splitter::Register();

    static const Win32WindowClass windowClass([] {
        WNDCLASSEXW form = {};
        form.style = CS_DBLCLKS;
        form.lpfnWndProc = &PrvProcedure;
        form.cbWndExtra = DLGWINDOWEXTRA + static_cast<int>(sizeof(LONG_PTR));
        form.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
        form.lpszClassName = kClassName;
        return form;
    }());
}

Win32Form::Win32Form(std::u16string_view name) : m_layout(name, Win32Layout::Kind::Form)
{
    PrvRegister();
    const Win32Resolution resolution;
    m_window = m_layout.Create(nullptr);
    SetWindowLongPtrW(m_window, DLGWINDOWEXTRA, reinterpret_cast<LONG_PTR>(this));
    m_controls = std::make_unique<Win32ControlSet>(m_window, m_layout);
    m_controls->Keys().BindEscape([] { return true; }, [this] { Escape.Raise(); });
    DragAcceptFiles(m_window, TRUE);
}

Win32Form::~Win32Form()
{
    m_controls->Focus().End();
    m_controls.reset();
    SetWindowLongPtrW(m_window, DLGWINDOWEXTRA, 0);
    DestroyWindow(m_window);
}

std::vector<Win32Form*> Win32Form::Shown()
{
    std::vector<Win32Form*> shown;
    for (Win32Form* form = t_front; form != nullptr; form = form->m_below)
        shown.push_back(form);
    std::reverse(shown.begin(), shown.end());
    return shown;
}

HWND Win32Form::FrontWindow()
{
    // What has ended is hidden, and may have lost its window.
    const Win32Form* form = t_front;
    while (form != nullptr && form->m_isEnded)
        form = form->m_below;
    return form == nullptr ? nullptr : form->m_window;
}

void Win32Form::SetCaption(std::u16string_view caption)
{
    m_caption = caption;
    SetWindowTextW(m_window, Wide(m_caption.c_str()));
}

void Win32Form::SetFirstFocus(IControl& control)
{
    m_controls->Focus().SetFirst(control);
}

void Win32Form::SetDefaultButton(IButton& button)
{
    m_defaultButton = &dynamic_cast<Win32Button&>(button);
    SendMessageW(m_window, DM_SETDEFID, static_cast<WPARAM>(GetDlgCtrlID(m_defaultButton->Window())), 0);
}

void Win32Form::ShowModal()
{
    if (m_isShown)
        throw AutomationError(kErrInvalidProcedureCall);
    // A window that its owner took along never comes back.
    if (std::exchange(m_isEnded, false) || IsWindow(m_window) == 0)
        return;

    Win32Form* const below = t_front;
    PrvShow(below);
    if (below != nullptr)
        below->m_controls->Focus().Return();
}

void Win32Form::PrvShow(Win32Form* below)
{
    const Win32Resolution resolution;
    Win32ModalHost host(m_window, below == nullptr ? nullptr : below->m_window);
    const Showing showing(*this, host);
    PrvPlace(host.Owner());
    m_controls->Focus().Begin();
    if (!m_isEnded) {
        host.Show();
        PrvRunLoop();
    }
}

void Win32Form::EndModal()
{
    m_isEnded = true;
    PrvHide();
    // The loop may be waiting, when a call from elsewhere ends the form.
    PostMessageW(m_window, WM_NULL, 0, 0);
}

void Win32Form::SetBusy(bool bBusy)
{
    if (bBusy == m_isBusy)
        return;
    if (bBusy) {
        m_isBusy = true;
        m_controls->Focus().Suspend();
        EnableWindow(m_window, FALSE);
        SetCursor(LoadCursorW(nullptr, IDC_WAIT));
        m_lastFrame = 0;
    } else {
        PrvPaint();
        // What was done up to now is swallowed, too.
        PrvDropActs();
        m_isBusy = false;
        EnableWindow(m_window, TRUE);
        SetCursor(LoadCursorW(nullptr, IDC_ARROW));
        if (GetActiveWindow() == nullptr && t_front == this && IsWindowVisible(m_window) != 0)
            SetActiveWindow(m_window);
        m_controls->Focus().Regain();
    }
}

void Win32Form::KeepPainting()
{
    const ULONGLONG now = GetTickCount64();
    if (!m_isBusy || now - m_lastFrame < kFrame)
        return;
    PrvPaint();
    m_lastFrame = GetTickCount64();
}

void Win32Form::PassOn(MSG& message)
{
    // An Enter that clicks no button is the control's; the system would look for a button once more.
    const bool isTaken =
        PrvTakesKey(message) || (!IsAlone(message, VK_RETURN) && IsDialogMessageW(m_window, &message) != 0);
    if (!isTaken) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    PrvShowDefault();
}

LRESULT CALLBACK Win32Form::PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto* const form = reinterpret_cast<Win32Form*>(GetWindowLongPtrW(window, DLGWINDOWEXTRA));
    try {
        if (form != nullptr)
            return form->PrvHandle(message, wParam, lParam);
    } catch (...) {
        // Without memory the message is lost; no exception may pass through the system.
        return 0;
    }
    return DefDlgProcW(window, message, wParam, lParam);
}

LRESULT Win32Form::PrvHandle(UINT message, WPARAM wParam, LPARAM lParam)
{
    switch (message) {
    case WM_CLOSE:
        PrvAskToClose();
        return 0;
    case WM_QUERYENDSESSION:
        PrvAskToClose();
        return m_isShown && !m_isEnded ? FALSE : TRUE;
    case WM_ACTIVATE:
        if (LOWORD(wParam) != WA_INACTIVE) {
            m_controls->Focus().Restore();
            return 0;
        }
        break;
    case WM_DESTROY:
        // With the window that owned it.
        m_isEnded = true;
        m_controls->Focus().End();
        break;
    case WM_SETCURSOR:
        if (m_isBusy) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        break;
    case WM_DROPFILES:
        PrvTakeFiles(reinterpret_cast<HDROP>(wParam));
        return 0;
    case WM_SIZE:
        m_layout.Arrange();
        return 0;
    case Win32Splitter::kMoved:
        m_layout.MoveSplitter(static_cast<int>(wParam));
        return 0;
    case WM_GETMINMAXINFO:
        PrvLimitSize(*reinterpret_cast<MINMAXINFO*>(lParam));
        return 0;
    case WM_DPICHANGED:
        PrvChangeResolution(*reinterpret_cast<const RECT*>(lParam));
        return 0;
    case WM_SETTINGCHANGE:
        m_layout.TakeFont();
        PrvKeepLeastSize();
        break;
    case WM_SYSCOLORCHANGE:
    case WM_THEMECHANGED:
        for (HWND child = GetWindow(m_window, GW_CHILD); child != nullptr;
             child = GetWindow(child, GW_HWNDNEXT))
            SendMessageW(child, message, wParam, lParam);
        break;
    default:
        break;
    }
    return DefDlgProcW(m_window, message, wParam, lParam);
}

void Win32Form::PrvLimitSize(MINMAXINFO& limits) const
{
    const SIZE least = SizeAround(m_window, m_layout.LeastSize());
    const SIZE room = SizeOf(RoomAround(m_window));
    limits.ptMinTrackSize = {std::min(least.cx, room.cx), std::min(least.cy, room.cy)};
}

void Win32Form::PrvChangeResolution(const RECT& place)
{
    // First: the least size of the resolution before could be more than this one's.
    m_layout.TakeFont();
    const SIZE size = SizeOf(place);
    SetWindowPos(m_window, nullptr, place.left, place.top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    for (HWND child = GetWindow(m_window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT))
        SendMessageW(child, WM_DPICHANGED_AFTERPARENT, 0, 0);
}

void Win32Form::PrvKeepLeastSize() const
{
    RECT place = {};
    GetWindowRect(m_window, &place);
    const SIZE size = SizeOf(place);
    // The system asks for the limits.
    if (IsIconic(m_window) == 0 && IsZoomed(m_window) == 0)
        SetWindowPos(m_window, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32Form::PrvAskToClose()
{
    if (m_isShown && !m_isEnded && !m_isBusy && IsWindowEnabled(m_window) != 0)
        CloseBox.Raise();
}

void Win32Form::PrvTakeFiles(HDROP files)
{
    std::u16string path(DragQueryFileW(files, 0, nullptr, 0), u'\0');
    DragQueryFileW(files, 0, Wide(path.data()), static_cast<UINT>(path.size() + 1));
    DragFinish(files);
    if (!path.empty() && !m_isBusy && !m_isEnded && IsWindowEnabled(m_window) != 0)
        FileDrop.Raise(path);
}

bool Win32Form::PrvTakesKey(const MSG& message)
{
    if (message.message != WM_KEYDOWN || m_isEnded || IsWindowEnabled(m_window) == 0)
        return false;
    if (message.hwnd != m_window && IsChild(m_window, message.hwnd) == 0)
        return false;
    const std::shared_ptr<Win32GridView> grid = Win32GridView::Of(message.hwnd);
    if (grid != nullptr && grid->OpenDropDown() != nullptr)
        return false;
    return m_controls->Keys().Take(message) || (IsAlone(message, VK_RETURN) && PrvTakesEnter(message));
}

bool Win32Form::PrvTakesEnter(const MSG& message)
{
    Win32Button* button = m_controls->FindButton(message.hwnd);
    if (button == nullptr) {
        const auto asked = reinterpret_cast<LPARAM>(&message);
        if ((SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam, asked) & DLGC_WANTALLKEYS) != 0)
            return false;
        button = m_defaultButton;
    }
    if (button == nullptr || !button->IsVisible() || !button->IsEnabled())
        return false;
    if (!RepeatsItself(message))
        button->Press();
    return true;
}

void Win32Form::PrvShowDefault()
{
    const HWND focus = GetFocus();
    if (focus == m_focusShown || IsChild(m_window, focus) == 0)
        return;
    m_focusShown = focus;
    const Win32Button* const focused = m_controls->FindButton(focus);
    const Win32Button* const clicked = focused != nullptr ? focused : m_defaultButton;
    for (HWND child = GetWindow(m_window, GW_CHILD); child != nullptr;
         child = GetWindow(child, GW_HWNDNEXT)) {
        const Win32Button* const button = m_controls->FindButton(child);
        const LONG kind = button != nullptr && button == clicked ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        if (button != nullptr && (GetWindowLongW(child, GWL_STYLE) & BS_TYPEMASK) != kind)
            SendMessageW(child, BM_SETSTYLE, static_cast<WPARAM>(kind), TRUE);
    }
}

void Win32Form::PrvHide()
{
    m_controls->Focus().End();
    // First: when the active window hides while all others are disabled, the system turns to another program.
    if (m_host != nullptr)
        m_host->Release();
    ShowWindow(m_window, SW_HIDE);
}

void Win32Form::PrvPlace(HWND owner) const
{
    const RECT room = RoomAround(owner != nullptr ? owner : m_window);
    // The layout's size, and never more than the screen.
    SIZE size = SizeAround(m_window, m_layout.DrawnSize());
    size = {std::min(size.cx, room.right - room.left), std::min(size.cy, room.bottom - room.top)};
    RECT around = room;
    if (owner != nullptr && IsIconic(owner) == 0 && IsWindowVisible(owner) != 0)
        GetWindowRect(owner, &around);
    const LONG left = (around.left + around.right - size.cx) / 2;
    const LONG top = (around.top + around.bottom - size.cy) / 2;
    SetWindowPos(m_window, nullptr, std::clamp(left, room.left, std::max(room.left, room.right - size.cx)),
                 std::clamp(top, room.top, std::max(room.top, room.bottom - size.cy)), size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void Win32Form::PrvRunLoop()
{
    MSG message;
    while (!m_isEnded) {
        if (GetMessageW(&message, nullptr, 0, 0) > 0) {
            PassOn(message);
            continue;
        }
        // The program ends. Its own loop, and those of the forms below, must hear it as well.
        PrvAskToClose();
        PostQuitMessage(static_cast<int>(message.wParam));
        return;
    }
}

void Win32Form::PrvDropActs() const
{
    MSG message;
    KeptQuit quit;
    for (const Acts& acts : kActs) {
        while (PeekMessageW(&message, m_window, acts.first, acts.last, PM_REMOVE) != 0) {
            if (!quit.Takes(message) && message.message == WM_DROPFILES)
                DragFinish(reinterpret_cast<HDROP>(message.wParam));
        }
    }
}

void Win32Form::PrvPaint()
{
    RedrawWindow(m_window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    // The host's windows, too; one that never says that it is painted must not keep us.
    constexpr int kMostPaintings = 32;
    MSG message;
    KeptQuit quit;
    for (int paintings = 0; paintings < kMostPaintings; ++paintings) {
        if (PeekMessageW(&message, nullptr, WM_PAINT, WM_PAINT, PM_REMOVE | PM_NOYIELD) == 0)
            break;
        if (!quit.Takes(message))
            DispatchMessageW(&message);
    }
}

} // namespace KestrinProductEditor
