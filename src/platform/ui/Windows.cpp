// SPDX-License-Identifier: MIT
#include "platform/ui/Windows.h"

#include <KestrinProductEditor/AutomationError.h>

namespace KestrinProductEditor {

void RequireWindows()
{
    throw AutomationError(
        kErrActionNotSupported, {},
        AutomationError::TextOf(kErrActionNotSupported) +
            u": this component was built without windows; use ProductLkpMgr, or the program kstnedit");
}

} // namespace KestrinProductEditor
