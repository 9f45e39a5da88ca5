// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

/// The line between two panes, a window of the class kClassName, which the mouse drags. It tells its parent
/// by kMoved how far, in pixels to where reading ends, as wParam.
namespace KestrinProductEditor::Win32Splitter {

inline constexpr const wchar_t* kClassName = L"KstneditSplitter";
inline constexpr UINT kMoved = WM_APP + 1;

/// Makes the window class known, before the first window of it. Any number of times, from any thread.
void Register();

} // namespace KestrinProductEditor::Win32Splitter
