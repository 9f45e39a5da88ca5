// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/WindowMnemonics.h"

#include <windows.h>

namespace KestrinProductEditor {

class Win32Mnemonics final : public WindowMnemonics
{
public:
    /// Shows a caption as the text of a window.
    [[nodiscard]] static Show In(HWND window);
};

} // namespace KestrinProductEditor
