// SPDX-License-Identifier: MIT
#include "platform/win32/Win32HighContrast.h"

#include <windows.h>

namespace KestrinProductEditor {

bool IsHighContrast() noexcept
{
    HIGHCONTRASTW contrast = {};
    contrast.cbSize = sizeof contrast;
    return SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof contrast, &contrast, 0) != 0 &&
           (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
}

} // namespace KestrinProductEditor
