// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationError.h>

#include <cstdint>
#include <optional>
#include <utility>

namespace KestrinProductEditor {

/// The automation error that `action` ends with; nothing when it ends well.
template<typename Action>
[[nodiscard]] std::optional<AutomationError> ErrorOf(Action&& action)
{
    try {
        std::forward<Action>(action)();
    } catch (const AutomationError& error) {
        return error;
    }
    return std::nullopt;
}

/// Its number; 0 when `action` ends well.
template<typename Action>
[[nodiscard]] std::int32_t ErrorNumberOf(Action&& action)
{
    const std::optional<AutomationError> error = ErrorOf(std::forward<Action>(action));
    return error ? error->Number() : 0;
}

} // namespace KestrinProductEditor
