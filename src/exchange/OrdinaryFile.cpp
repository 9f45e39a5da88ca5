// SPDX-License-Identifier: MIT
#include "exchange/OrdinaryFile.h"

#include "platform/FileKind.h"

#include <KestrinProductEditor/AutomationError.h>

#include <string>

namespace KestrinProductEditor {

void RequireOrdinaryFile(std::u16string_view path)
{
    if (IsRereadable(path))
        return;
    throw AutomationError(kErrPathFileAccess, {},
                          AutomationError::TextOf(kErrPathFileAccess) + u": '" + std::u16string(path) +
                              u"' is no ordinary file");
}

} // namespace KestrinProductEditor
