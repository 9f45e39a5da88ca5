// SPDX-License-Identifier: MIT
#include "frame/Traced.h"

#include "frame/modInit.h"
#include "platform/Text.h"

#include <exception>
#include <new>
#include <stdexcept>
#include <string>

namespace KestrinProductEditor {

namespace {

thread_local const AutomationError* t_pendingError = nullptr;

/// The error that a handler is about, for as long as the handler runs. Handlers nest: a trace may use the
/// component.
class PendingErrorScope
{
public:
    explicit PendingErrorScope(const AutomationError& error) : m_outer(std::exchange(t_pendingError, &error))
    {
    }
    PendingErrorScope(const PendingErrorScope&) = delete;
    PendingErrorScope& operator=(const PendingErrorScope&) = delete;
    ~PendingErrorScope() { t_pendingError = m_outer; }

private:
    const AutomationError* m_outer;
};

// Made while there is memory: Main asks for it before the first object of a thread.
const AutomationError& OutOfMemory()
{
    static const auto& error = *new AutomationError(kErrOutOfMemory);
    return error;
}

AutomationError InternalError(std::string_view what) noexcept
{
    try {
        const std::u16string text = AutomationError::TextOf(kErrInternal);
        return AutomationError(kErrInternal, {}, what.empty() ? text : text + u": " + ToUtf16(what));
    } catch (...) {
        return OutOfMemory();
    }
}

ITrace& Trace()
{
    if (gobjTrace == nullptr)
        throw AutomationError(kErrObjectNotSet);
    return *gobjTrace;
}

} // namespace

void PrepareErrors()
{
    static_cast<void>(OutOfMemory());
}

const AutomationError* PendingError() noexcept
{
    return t_pendingError;
}

AutomationError ErrorInFlight() noexcept
{
    try {
        throw;
    } catch (const AutomationError& error) {
        return error;
    } catch (const std::bad_alloc&) {
        return OutOfMemory();
    } catch (const std::length_error&) {
        return OutOfMemory();
    } catch (const std::exception& error) {
        return InternalError(error.what());
    } catch (...) {
        return InternalError({});
    }
}

void TraceEnter(ErrorContext context)
{
    Trace().TraceEnter(TextOf(context));
}

void TraceExit(ErrorContext context)
{
    Trace().TraceExit(TextOf(context));
}

void PassOnError()
{
    const AutomationError error = ErrorInFlight();
    const PendingErrorScope scope(error);
    std::int32_t number = 0;
    try {
        Trace().TraceError(u"");
        number = Trace().TraceErrNumber();
    } catch (...) {
        throw ErrorInFlight();
    }
    throw number == 0 ? error : error.WithNumber(number);
}

void SwallowError() noexcept
{
    const AutomationError error = ErrorInFlight();
    const PendingErrorScope scope(error);
    try {
        Trace().TraceError(u"");
    } catch (...) { // NOLINT(bugprone-empty-catch): a trace that fails here has nobody left to tell
    }
}

void RaiseOwn(ErrorContext context, std::u16string_view description)
{
    const std::int32_t number = Trace().TraceErrNumber();
    throw AutomationError(number == 0 ? static_cast<std::int32_t>(kErrComponent) : number,
                          std::u16string(TextOf(context)), std::u16string(description));
}

} // namespace KestrinProductEditor
