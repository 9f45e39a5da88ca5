// SPDX-License-Identifier: MIT
#pragma once

#include "platform/windows/WideText.h"

#include <windows.h>

#include <iterator>
#include <string>

namespace KestrinProductEditor {

// What every window can be asked.

[[nodiscard]] inline bool IsOfClass(HWND window, const wchar_t* name)
{
    wchar_t own[32] = L"";
    GetClassNameW(window, own, static_cast<int>(std::size(own)));
    return lstrcmpiW(own, name) == 0;
}

[[nodiscard]] inline std::u16string TextOfWindow(HWND window)
{
    std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
    text.resize(
        static_cast<std::size_t>(GetWindowTextW(window, Wide(text.data()), static_cast<int>(text.size()))));
    return text;
}

/// A length at the usual resolution, on the screen that the window is on; in pixels.
[[nodiscard]] inline int Scaled(HWND window, int usualPixels)
{
    return MulDiv(usualPixels, static_cast<int>(GetDpiForWindow(window)), USER_DEFAULT_SCREEN_DPI);
}

} // namespace KestrinProductEditor
