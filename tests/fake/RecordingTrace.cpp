// SPDX-License-Identifier: MIT
#include "fake/RecordingTrace.h"

#include "frame/modInit.h"
#include "platform/Text.h"

#include <KestrinProductEditor/AutomationError.h>

#include <gtest/gtest.h>

#include <utility>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::string PendingNumber()
{
    const AutomationError* const error = PendingError();
    return error != nullptr ? std::to_string(error->Number()) : "none";
}

} // namespace

std::vector<std::string> RecordingTrace::CallsLike(std::string_view head) const
{
    std::vector<std::string> calls;
    for (const std::string& call : m_calls) {
        if (call.starts_with(head))
            calls.push_back(call);
    }
    return calls;
}

void RecordingTrace::Forget()
{
    m_calls.clear();
    m_failures.clear();
}

void RecordingTrace::FailAtCall(std::size_t call, std::int32_t number)
{
    m_callsToFailure = call;
    m_failureNumber = number;
}

void RecordingTrace::FailOn(std::string call, std::int32_t number)
{
    m_failingCall = std::move(call);
    m_failingCallNumber = number;
}

void RecordingTrace::Heal()
{
    m_callsToFailure = 0;
    m_failingCall.clear();
}

std::int32_t RecordingTrace::TraceErrNumber()
{
    PrvTake("number " + PendingNumber());
    if (!m_answers.empty()) {
        const std::int32_t answer = m_answers.front();
        m_answers.pop_front();
        return answer;
    }
    if (m_answer)
        return *m_answer;
    const AutomationError* const error = PendingError();
    return error != nullptr ? error->Number() : static_cast<std::int32_t>(kErrComponent);
}

void RecordingTrace::TraceError(std::u16string_view sText)
{
    EXPECT_EQ(ToUtf8(sText), "");
    if (const AutomationError* const error = PendingError())
        m_failures.push_back({ToUtf8(error->Source()), ToUtf8(error->Description())});
    else
        ADD_FAILURE() << "an error is reported, but none is pending";
    PrvTake("error " + PendingNumber());
}

void RecordingTrace::TraceEnter(std::u16string_view sContext)
{
    PrvTake("enter " + ToUtf8(sContext));
}

void RecordingTrace::TraceExit(std::u16string_view sContext)
{
    PrvTake("exit " + ToUtf8(sContext));
}

void RecordingTrace::PrvTake(std::string call)
{
    m_calls.push_back(call);
    if (onCall)
        onCall(call);
    if (m_callsToFailure > 0 && --m_callsToFailure == 0)
        throw AutomationError(m_failureNumber);
    const bool isKind = m_failingCall.ends_with(' ') && call.starts_with(m_failingCall);
    if (!m_failingCall.empty() && (call == m_failingCall || isKind))
        throw AutomationError(m_failingCallNumber);
}

ScopedTrace::ScopedTrace(ITrace* trace) : m_previous(std::exchange(gobjTrace, trace)) {}

ScopedTrace::~ScopedTrace()
{
    gobjTrace = m_previous;
}

} // namespace KestrinProductEditor
