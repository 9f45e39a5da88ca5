// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

namespace KestrinProductEditor {

/// The tool tips of the cells of one window: one tip, which stands over one rectangle at a time.
class Win32GridTips
{
public:
    Win32GridTips() = default;
    Win32GridTips(const Win32GridTips&) = delete;
    Win32GridTips& operator=(const Win32GridTips&) = delete;
    ~Win32GridTips();

    /// Before the other members.
    void Begin(HWND window);
    /// Before the window ends.
    void End();
    /// From now on the tip over `place` says `text`; empty for none.
    void Show(const RECT& place, std::u16string text);
    [[nodiscard]] const std::u16string& Text() const { return m_text; }

private:
    HWND m_window = nullptr;
    HWND m_tip = nullptr;
    RECT m_place{};
    std::u16string m_text;
};

} // namespace KestrinProductEditor
