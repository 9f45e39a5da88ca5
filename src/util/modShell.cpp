// SPDX-License-Identifier: MIT
#include "util/modShell.h"

#include "platform/Shell.h"

namespace KestrinProductEditor::modShell {

std::u16string GetSpecialFolderPath(std::int32_t /*hwndOwner*/, std::int32_t folder)
{
    return SpecialFolderPath(folder);
}

} // namespace KestrinProductEditor::modShell
