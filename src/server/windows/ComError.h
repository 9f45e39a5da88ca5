// SPDX-License-Identifier: MIT
#pragma once

#include "frame/Traced.h"
#include "platform/LivingObjects.h"

#include <KestrinProductEditor/AutomationError.h>

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <utility>

namespace KestrinProductEditor {

/// The status under which the error `number` crosses to automation clients: 1 to 65535 are those of the
/// control facility (13 is 800A000D), a negative number is a status already, and the component has no others.
[[nodiscard]] HRESULT StatusOf(std::int32_t number) noexcept;

/// The number that a status of another component's means here: that of the control facility, the usual number
/// for a status that the platform has one for, else the status itself.
[[nodiscard]] std::int32_t NumberOf(HRESULT status) noexcept;

/// Leaves source and description to the caller of a method of `interfaceID`; returns the status.
HRESULT Report(const AutomationError& error, REFIID interfaceID) noexcept;

/// Raises what a call of another component has left, when it failed: number, and source and description where
/// it told them.
void ThrowIfFailed(HRESULT status);

/// The same for a call of the system's own services, which tell a status and nothing else.
void ThrowIfSystemFailed(HRESULT status);

/// The same, of what a late-bound call has told of its failure; takes hold of the texts.
[[noreturn]] void ThrowException(EXCEPINFO& exception);

/// Runs the body of a method of `interfaceID`: nothing but a status gets out.
template<class Body>
HRESULT Answer(REFIID interfaceID, Body&& body) noexcept
{
    // What the body calls may let go of the last object, and ask then whether the component may leave.
    const LivingObject running;
    // What an earlier failure has left is not this one's.
    SetErrorInfo(0, nullptr);
    try {
        std::forward<Body>(body)();
        return S_OK;
    } catch (...) {
        return Report(ErrorInFlight(), interfaceID);
    }
}

} // namespace KestrinProductEditor
