// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/ComVariant.h"

#include <windows.h>

#include <dispex.h>
#include <wrl/client.h>

#include <optional>
#include <span>
#include <string_view>

namespace KestrinProductEditor {

/// An object of the host's or of a script's, called by the names of its members.
///
/// Objects of scripts answer the extended interface only, others the plain one only.
class ForeignObject
{
public:
    explicit ForeignObject(IDispatch* object);

    /// The identifier of a member, letter case aside; nothing when there is none.
    [[nodiscard]] std::optional<DISPID> Find(std::u16string_view name) const;

    /// Calls a method, or reads a property, with the arguments in their order. Raises the member's own error.
    ComVariant Call(DISPID member, std::span<VARIANT> arguments = {}) const;
    /// Reads a property without arguments.
    [[nodiscard]] ComVariant Get(DISPID member) const;

    /// The status of the call itself instead of an error when the object has no such member (or not with so
    /// many arguments); else as Call.
    [[nodiscard]] HRESULT TryCall(DISPID member, WORD flags, std::span<VARIANT> arguments,
                                  ComVariant& result) const;

private:
    Microsoft::WRL::ComPtr<IDispatch> m_object;
    Microsoft::WRL::ComPtr<IDispatchEx> m_extended; // null where there is none
};

} // namespace KestrinProductEditor
