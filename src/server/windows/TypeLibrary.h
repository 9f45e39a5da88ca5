// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <string>

namespace KestrinProductEditor {

/// Where the component's own file lies.
[[nodiscard]] std::wstring ModulePath();

/// The description of a class or an interface in the component's own type library, which is kept in memory
/// once it was asked for. Raises what the system says when it cannot be read.
[[nodiscard]] Microsoft::WRL::ComPtr<ITypeInfo> TypeInfoOf(REFGUID identifier);

/// Lets go of the library, before the component leaves the process.
void ForgetTypeLibrary() noexcept;

} // namespace KestrinProductEditor
