// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32Looks.h"

#include <windows.h>

namespace KestrinProductEditor {

/// A window class of this program or library, for as long as it lives: the system keeps the classes of a
/// library that is unloaded, and their procedures would lead nowhere.
///
/// One for each class in the whole program (a local static object): two would not be registered both.
class Win32WindowClass
{
public:
    /// Takes the class as it is filled in, for windows with the usual pointer.
    explicit Win32WindowClass(WNDCLASSEXW windowClass) : m_name(windowClass.lpszClassName)
    {
        windowClass.cbSize = sizeof windowClass;
        windowClass.hInstance = OwnModule();
        if (windowClass.hCursor == nullptr)
            windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        RegisterClassExW(&windowClass);
    }
    Win32WindowClass(const Win32WindowClass&) = delete;
    Win32WindowClass& operator=(const Win32WindowClass&) = delete;
    ~Win32WindowClass() { UnregisterClassW(m_name, OwnModule()); }

private:
    const wchar_t* m_name;
};

} // namespace KestrinProductEditor
