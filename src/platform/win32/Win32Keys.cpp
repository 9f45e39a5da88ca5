// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Keys.h"

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] UINT KeyOf(Key key)
{
    switch (key) {
    case Key::None:
        return 0;
    case Key::A:
        return 'A';
    case Key::E:
        return 'E';
    case Key::I:
        return 'I';
    case Key::N:
        return 'N';
    case Key::S:
        return 'S';
    case Key::F2:
        return VK_F2;
    case Key::Enter:
        return VK_RETURN;
    case Key::Delete:
        return VK_DELETE;
    }
    return 0;
}

[[nodiscard]] std::u16string NameOf(Key key)
{
    switch (key) {
    case Key::None:
        return {};
    case Key::F2:
        return u"F2";
    case Key::Enter:
        return u"Enter";
    case Key::Delete:
        return u"Del";
    case Key::A:
    case Key::E:
    case Key::I:
    case Key::N:
    case Key::S:
        break;
    }
    return std::u16string(1, static_cast<char16_t>(KeyOf(key)));
}

} // namespace

std::u16string TextOf(Shortcut shortcut)
{
    if (shortcut.key == Key::None)
        return {};
    return (shortcut.control ? u"Ctrl+" : u"") + NameOf(shortcut.key);
}

bool IsDown(int key) noexcept
{
    return GetKeyState(key) < 0;
}

bool RepeatsItself(const MSG& message) noexcept
{
    constexpr LPARAM kWasDown = 0x40000000;
    return (message.lParam & kWasDown) != 0;
}

bool IsAlone(const MSG& message, UINT key) noexcept
{
    return message.message == WM_KEYDOWN && message.wParam == key && !IsDown(VK_CONTROL) &&
           !IsDown(VK_SHIFT) && !IsDown(VK_MENU);
}

void Win32Keys::Bind(Shortcut shortcut, IsReady isReady, Act act)
{
    m_bindings.push_back({.key = KeyOf(shortcut.key),
                          .control = shortcut.control,
                          .isReady = std::move(isReady),
                          .act = std::move(act)});
}

void Win32Keys::BindEscape(IsReady isReady, Act act)
{
    m_bindings.push_back(
        {.key = VK_ESCAPE, .control = false, .isReady = std::move(isReady), .act = std::move(act)});
}

bool Win32Keys::Take(const MSG& message) const
{
    if (message.message != WM_KEYDOWN || IsDown(VK_SHIFT) || IsDown(VK_MENU))
        return false;
    const bool isControlDown = IsDown(VK_CONTROL);
    const auto found = std::find_if(m_bindings.begin(), m_bindings.end(), [&](const Binding& binding) {
        return binding.key == message.wParam && binding.control == isControlDown && binding.isReady();
    });
    if (found == m_bindings.end())
        return false;
    // A copy: what it does may bind more.
    const Act act = found->act;
    if (!RepeatsItself(message))
        act();
    return true;
}

} // namespace KestrinProductEditor
