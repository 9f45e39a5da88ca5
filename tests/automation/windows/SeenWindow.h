// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// A window of any thread and process, as somebody in front of the screen has it: known by what it says,
/// acted on by messages that do not wait for what they lead to. Texts are as they are read, without marks of
/// mnemonics. What is waited for in vain is a std::runtime_error.
class SeenWindow
{
public:
    explicit SeenWindow(HWND window) : m_window(window) {}

    [[nodiscard]] HWND Handle() const { return m_window; }
    [[nodiscard]] std::u16string Class() const;
    [[nodiscard]] std::u16string Text() const;
    [[nodiscard]] bool IsShown() const { return IsWindowVisible(m_window) != FALSE; }
    /// Shown, and no window in front of it keeps the user from it.
    [[nodiscard]] bool IsOpen() const { return IsShown() && IsWindowEnabled(m_window) != FALSE; }

    /// What is shown in it, front first; a label stands before the box that it names.
    [[nodiscard]] std::vector<SeenWindow> Children() const;
    /// Whether a label or a button says that now.
    [[nodiscard]] bool Says(std::u16string_view text) const;
    /// Waits until one does.
    void AwaitText(std::u16string_view text) const;
    /// Waits until nobody sees it any more.
    void AwaitEnd() const;

    /// Waits for the first control of that class.
    [[nodiscard]] SeenWindow Child(std::u16string_view className) const;
    /// Waits for the button or check box with that caption.
    [[nodiscard]] SeenWindow Button(std::u16string_view caption) const;
    /// Waits for the box behind the label with that caption.
    [[nodiscard]] SeenWindow Box(std::u16string_view label) const;

    /// Waits until a button can be clicked, and clicks it.
    void Press() const;
    void Press(std::u16string_view caption) const { Button(caption).Press(); }
    /// Chooses the menu's item with that caption.
    void ChooseInMenu(std::u16string_view caption) const;
    void PressKey(UINT key) const;
    /// Down and up at that point of its inside.
    void Click(POINT place) const;

private:
    HWND m_window;
};

/// The windows that are shown, of no other window: of one thread (0: of all), front first.
[[nodiscard]] std::vector<SeenWindow> WindowsOnTop(DWORD thread);

} // namespace KestrinProductEditor
