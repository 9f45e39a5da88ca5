// SPDX-License-Identifier: MIT
#include "platform/Guid.h"

#include <windows.h>

#include <objbase.h>

#include <algorithm>

namespace KestrinProductEditor {

std::optional<Guid> CreateGuid()
{
    GUID made;
    if (CoCreateGuid(&made) != S_OK)
        return std::nullopt;
    Guid guid{static_cast<std::uint32_t>(made.Data1), made.Data2, made.Data3, {}};
    std::copy_n(made.Data4, guid.data4.size(), guid.data4.begin());
    return guid;
}

} // namespace KestrinProductEditor
