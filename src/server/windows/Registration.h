// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string>

namespace KestrinProductEditor {

/// Makes the component known to clients: its type library, its interfaces and its creatable classes, from the
/// type library inside the file `modulePath`. Known for the whole machine, or, where the system denies that,
/// for the user alone. Registering again repairs and moves. After a failure the registry is as it was.
///
/// What the user alone knows comes before what the machine knows. Registering for the machine therefore
/// removes the user's registration when that says anything else, such as the path of a component that was
/// moved.
[[nodiscard]] HRESULT RegisterServer(const std::wstring& modulePath) noexcept;

/// Removes what registering writes, the machine's and the user's, wherever it leads; without a registration
/// nothing happens. A class name that leads to another component's class stays. E_ACCESSDENIED when the
/// machine's may not be removed, unless there was one of the user's, which is the one then meant.
[[nodiscard]] HRESULT UnregisterServer(const std::wstring& modulePath) noexcept;

} // namespace KestrinProductEditor
