// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/GridBase.h"

#include <windows.h>

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace KestrinProductEditor {

/// The list that opens at a cell. The focus stays with the grid, which hands the keys on; the mouse is the
/// list's own while it is open, and a press anywhere else closes it.
class Win32GridDropDown
{
public:
    /// Hears the number of the entry that was chosen, after the list has closed.
    using Picked = std::function<void(std::int32_t number)>;

    Win32GridDropDown() = default;
    Win32GridDropDown(const Win32GridDropDown&) = delete;
    Win32GridDropDown& operator=(const Win32GridDropDown&) = delete;
    ~Win32GridDropDown();

    /// Opens below `cell` of the window (client coordinates), above it where there is no room. The entry
    /// `chosen` is marked.
    void Open(HWND window, const RECT& cell, HFONT font, std::span<const GridBase::ComboEntry> entries,
              std::u16string_view chosen, Picked picked);
    /// Without a choice.
    void Close();
    /// The list box; null while closed.
    [[nodiscard]] HWND Window() const { return m_list; }

    /// A key went down while it is open. All of them are its own.
    void TakeKey(WPARAM key, bool isAlt);
    /// Marks the first entry that begins with the text.
    void Find(std::u16string_view prefix);

private:
    static LRESULT CALLBACK PrvProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR self);
    void PrvMoveMouse(POINT place);
    void PrvPress(POINT place);
    void PrvMarkAt(POINT place);
    void PrvPick();

    HWND m_list = nullptr;
    POINT m_mouse{}; // on the screen
    Picked m_picked;
};

} // namespace KestrinProductEditor
