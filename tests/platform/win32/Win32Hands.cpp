// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Hands.h"

#include <array>

namespace KestrinProductEditor {

namespace {

constexpr BYTE kHeldDown = 0x80;
constexpr WORD kShiftState = 1;

/// The keys that are held down, as whoever asks for the state of a key sees them.
class KeysDown
{
public:
    explicit KeysDown(bool shift, bool control)
    {
        GetKeyboardState(m_before.data());
        std::array<BYTE, 256> state = {};
        if (shift)
            state[VK_SHIFT] = state[VK_LSHIFT] = kHeldDown;
        if (control)
            state[VK_CONTROL] = state[VK_LCONTROL] = kHeldDown;
        SetKeyboardState(state.data());
    }
    KeysDown(const KeysDown&) = delete;
    KeysDown& operator=(const KeysDown&) = delete;
    ~KeysDown() { SetKeyboardState(m_before.data()); }

private:
    std::array<BYTE, 256> m_before = {};
};

[[nodiscard]] KeysDown Hold(IUser::Modifier modifier)
{
    return KeysDown(modifier == IUser::Modifier::Shift, modifier == IUser::Modifier::Control);
}

[[nodiscard]] WPARAM ButtonsWith(IUser::Modifier modifier)
{
    switch (modifier) {
    case IUser::Modifier::Shift:
        return MK_SHIFT;
    case IUser::Modifier::Control:
        return MK_CONTROL;
    case IUser::Modifier::None:
        break;
    }
    return 0;
}

[[nodiscard]] LPARAM ScanCodeOf(UINT key)
{
    constexpr LPARAM kExtended = 0x100;
    const LPARAM code = static_cast<LPARAM>(MapVirtualKeyW(key, MAPVK_VK_TO_VSC));
    switch (key) {
    case VK_DELETE:
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
    case VK_HOME:
    case VK_END:
    case VK_PRIOR:
    case VK_NEXT:
        return code | kExtended;
    default:
        return code;
    }
}

[[nodiscard]] bool TakesTheMouse(HWND window)
{
    return IsWindow(window) && IsWindowVisible(window) && IsWindowEnabled(window);
}

} // namespace

POINT MiddleOf(const RECT& rectangle) noexcept
{
    return {(rectangle.left + rectangle.right) / 2, (rectangle.top + rectangle.bottom) / 2};
}

RECT InsideOf(HWND window) noexcept
{
    RECT rectangle = {};
    GetClientRect(window, &rectangle);
    return rectangle;
}

// The mouse

void Win32Hands::Click(HWND window, POINT point, IUser::Modifier modifier)
{
    const KeysDown held = Hold(modifier);
    const WPARAM buttons = ButtonsWith(modifier);
    PrvMouse(window, WM_MOUSEMOVE, buttons, point);
    PrvMouse(window, WM_LBUTTONDOWN, buttons | MK_LBUTTON, point);
    PrvMouse(window, WM_LBUTTONUP, buttons, point);
}

void Win32Hands::DoubleClick(HWND window, POINT point)
{
    Click(window, point);
    if (!TakesTheMouse(window))
        return;
    PrvMouse(window, WM_LBUTTONDBLCLK, MK_LBUTTON, point);
    PrvMouse(window, WM_LBUTTONUP, 0, point);
}

void Win32Hands::Drag(HWND window, POINT from, POINT to)
{
    PrvMouse(window, WM_MOUSEMOVE, 0, from);
    PrvMouse(window, WM_LBUTTONDOWN, MK_LBUTTON, from);
    PrvMouse(window, WM_MOUSEMOVE, MK_LBUTTON, to);
    PrvMouse(window, WM_LBUTTONUP, 0, to);
}

void Win32Hands::PrvMouse(HWND window, UINT message, WPARAM buttons, POINT point)
{
    // Coordinates are signed and 16 bits each.
    const LPARAM place = MAKELPARAM(static_cast<WORD>(point.x), static_cast<WORD>(point.y));
    PostMessageW(window, message, buttons, place);
    // Only up to this one, which comes before what the real mouse does: it moves when windows are shown, and
    // its button is not down.
    MSG taken = {};
    bool isDone = false;
    while (!isDone && m_front.IsListening() &&
           PeekMessageW(&taken, nullptr, WM_MOUSEFIRST, WM_MOUSELAST, PM_REMOVE)) {
        isDone = taken.hwnd == window && taken.message == message;
        m_front.PassOn(taken);
    }
    // A click may have put commands into the queue.
    PrvRun(WM_COMMAND, WM_COMMAND);
}

// The keyboard

void Win32Hands::PrvKey(UINT key, LPARAM scanCode)
{
    constexpr int kScanCodePlace = 16;
    constexpr LPARAM kOnce = 1;
    constexpr LPARAM kReleased = 0xC0000000;
    const LPARAM description = kOnce | (scanCode << kScanCodePlace);
    const HWND pressed = m_front.KeyWindow();
    if (pressed == nullptr)
        return;
    PostMessageW(pressed, WM_KEYDOWN, key, description);
    PrvRun(WM_KEYFIRST, WM_KEYLAST);
    // What the key did may have moved the focus, or closed the window.
    const HWND released = m_front.KeyWindow();
    if (released == nullptr)
        return;
    PostMessageW(released, WM_KEYUP, key, description | kReleased);
    PrvRun(WM_KEYFIRST, WM_KEYLAST);
    PrvRun(WM_COMMAND, WM_COMMAND);
}

void Win32Hands::Press(UINT key, IUser::Modifier modifier)
{
    const KeysDown held = Hold(modifier);
    PrvKey(key, ScanCodeOf(key));
}

void Win32Hands::Type(std::u16string_view text)
{
    for (const char16_t unit : text) {
        if (unit == u'\n' || unit == u'\r') {
            Press(VK_RETURN);
            continue;
        }
        constexpr char16_t kLastAscii = 0x7E;
        const SHORT key = unit <= kLastAscii ? VkKeyScanW(static_cast<WCHAR>(unit)) : SHORT{-1};
        const WORD state = HIBYTE(key);
        if (state <= kShiftState) {
            const KeysDown held(state == kShiftState, false);
            PrvKey(LOBYTE(key), ScanCodeOf(LOBYTE(key)));
        } else {
            const KeysDown held(false, false);
            PrvKey(VK_PACKET, unit);
        }
    }
}

void Win32Hands::Compose(std::u16string_view text)
{
    const HWND target = m_front.KeyWindow();
    if (target == nullptr)
        return;
    const KeysDown held(false, false);
    for (const char16_t unit : text)
        PostMessageW(target, WM_IME_CHAR, unit, 1);
    PrvRun(WM_IME_CHAR, WM_IME_CHAR);
    PrvRun(WM_KEYFIRST, WM_KEYLAST);
}

// The queue

void Win32Hands::Post(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    PostMessageW(window, message, wParam, lParam);
    PrvRun(message, message);
    PrvRun(WM_COMMAND, WM_COMMAND);
}

void Win32Hands::RunAll()
{
    PrvRun(0, 0);
}

void Win32Hands::PrvRun(UINT first, UINT last)
{
    MSG message;
    while (m_front.IsListening() && PeekMessageW(&message, nullptr, first, last, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            // It is the loops' own matter.
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        m_front.PassOn(message);
    }
}

} // namespace KestrinProductEditor
