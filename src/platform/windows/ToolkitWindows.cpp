// SPDX-License-Identifier: MIT
#include "platform/ui/PlatformToolkit.h"

#include <KestrinProductEditor/AutomationError.h>

namespace KestrinProductEditor {

IToolkit& PlatformToolkit()
{
    throw AutomationError(kErrActionNotSupported, {},
                          AutomationError::TextOf(kErrActionNotSupported) +
                              u": this component was built without windows");
}

IToolkit* LoadedPlatformToolkit() noexcept
{
    return nullptr;
}

} // namespace KestrinProductEditor
