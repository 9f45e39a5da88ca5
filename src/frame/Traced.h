// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationError.h>

#include "frame/ErrorContext.h"

#include <string_view>
#include <type_traits>
#include <utility>

namespace KestrinProductEditor {

/// What a traced method does with a failure, after the trace has heard of it.
enum class Ending
{
    PassOn,  ///< raise it again: same source and description, the number that the trace answers
    Swallow, ///< end normally, with a default result
};

/// Makes ahead what is needed to tell that memory has run out. Called once before anything else of the
/// component.
void PrepareErrors();

/// The exception that is being handled, as the one error type. Requires: an exception is being handled.
[[nodiscard]] AutomationError ErrorInFlight() noexcept;

void TraceEnter(ErrorContext context);
void TraceExit(ErrorContext context);

/// The handlers of Traced. Require: an exception is being handled.
[[noreturn]] void PassOnError();
void SwallowError() noexcept;

/// Raises a text of the component's own, with the method's context as source and the number that the trace
/// answers.
[[noreturn]] void RaiseOwn(ErrorContext context, std::u16string_view description);

/// The one error convention. Reports entry, runs `body`, reports exit. A failure of any of the three is
/// reported (no exit then), and ends as `ending` says.
template<Ending ending = Ending::PassOn, class Body>
std::invoke_result_t<Body> Traced(ErrorContext context, Body&& body)
{
    using Result = std::invoke_result_t<Body>;
    try {
        TraceEnter(context);
        if constexpr (std::is_void_v<Result>) {
            std::forward<Body>(body)();
            TraceExit(context);
            return;
        } else {
            Result result = std::forward<Body>(body)();
            TraceExit(context);
            return result;
        }
    } catch (...) {
        if constexpr (ending == Ending::PassOn) {
            PassOnError();
        } else {
            SwallowError();
            return Result();
        }
    }
}

} // namespace KestrinProductEditor
