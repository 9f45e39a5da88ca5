// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// Takes pictures of windows of this thread as they are on the screen: with their frame, and together with
/// the lists and menus that are open over them.
class Win32Camera
{
public:
    /// `look` is a part of the name of every picture.
    Win32Camera(std::filesystem::path folder, std::string_view look);

    /// Writes NAME-LOOK.png, or NAME-LOOK-SIZE.png. A failure of the test when there is nothing to see or
    /// nothing can be written.
    void Take(HWND window, std::string_view name, std::string_view size = {}) const;

private:
    std::filesystem::path m_folder;
    std::string m_look;
};

} // namespace KestrinProductEditor
