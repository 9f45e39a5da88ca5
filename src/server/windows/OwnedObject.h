// SPDX-License-Identifier: MIT
#pragma once

#include <wrl/client.h>

namespace KestrinProductEditor {

/// Takes over the one reference of a new object. ComPtr::Attach counts another one in the headers of some
/// versions of the compiler.
template<class Type>
[[nodiscard]] Microsoft::WRL::ComPtr<Type> Owned(Type* object) noexcept
{
    Microsoft::WRL::ComPtr<Type> owner;
    *owner.GetAddressOf() = object;
    return owner;
}

} // namespace KestrinProductEditor
