// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/ComVariant.h"

#include <windows.h>

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

namespace KestrinProductEditor {

/// What the doubles answer and what they have recorded, for the process as a whole.
struct HostState
{
    /// The next call after `callsBefore` more ones fails with `number`, and no other.
    struct OrderedFailure
    {
        std::int32_t callsBefore;
        std::int32_t number;
    };

    HostState();

    /// By key; an unknown one reads as Empty.
    std::map<std::u16string, std::u16string> settings;
    /// 0: a setting can be read.
    std::int32_t settingsFailure = 0;
    /// By which name a configuration object created from now on is asked; "default" for none.
    std::u16string configMember = u"default";
    std::int32_t configObjects = 0;

    bool isRecording = false;
    /// Lines with their ends, by thread.
    std::map<DWORD, std::u16string> traces;
    /// By member of the trace.
    std::map<std::u16string, OrderedFailure> traceFailures;
    /// What TraceErrNumber answers; nothing: the number of the pending error.
    std::shared_ptr<const ComVariant> errNumber;
    std::int32_t traceObjects = 0;

    /// By program identifier: the number with which a creation fails.
    std::map<std::u16string, std::int32_t> creationFailures;
};

namespace detail {

extern std::mutex g_stateMutex;
[[nodiscard]] HostState& State();

} // namespace detail

/// Calls `body` with the state, which no other thread touches meanwhile.
template<class Body>
decltype(auto) WithState(Body&& body)
{
    const std::lock_guard lock(detail::g_stateMutex);
    return std::forward<Body>(body)(detail::State());
}

} // namespace KestrinProductEditor
