// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Mnemonics.h"

#include "platform/windows/WideText.h"

#include <string>

namespace KestrinProductEditor {

Win32Mnemonics::Show Win32Mnemonics::In(HWND window)
{
    return [window](const std::u16string& marked) { SetWindowTextW(window, Wide(marked.c_str())); };
}

} // namespace KestrinProductEditor
