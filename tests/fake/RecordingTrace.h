// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/HostComponents.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

/// A trace that writes down every call, and fails or answers as a test tells it to.
///
/// The calls read "enter CONTEXT", "exit CONTEXT", "error NUMBER" and "number NUMBER"; the last two name the
/// pending error, "none" when there is none. A failing call is written down too.
class RecordingTrace final : public ITrace
{
public:
    struct Failure
    {
        std::string source;
        std::string description;
    };

    [[nodiscard]] const std::vector<std::string>& Calls() const noexcept { return m_calls; }
    /// Source and description of the pending error at each TraceError, in UTF-8.
    [[nodiscard]] const std::vector<Failure>& Failures() const noexcept { return m_failures; }
    /// The calls that begin with `head`.
    [[nodiscard]] std::vector<std::string> CallsLike(std::string_view head) const;
    /// Forgets the calls, nothing else.
    void Forget();

    /// The `call`-th call from now on (1 is the next) fails with `number`; the calls after it do not.
    void FailAtCall(std::size_t call, std::int32_t number);
    /// Every call that reads `call`, or begins with it where it ends in a blank, fails with `number`.
    void FailOn(std::string call, std::int32_t number);
    void Heal();

    /// What TraceErrNumber answers from now on. Nothing: the pending error's number, or -2147220503.
    void AnswerWith(std::optional<std::int32_t> number) { m_answer = number; }
    /// What the next calls of TraceErrNumber answer, in turn; after them the answer is as before.
    void AnswerInTurn(std::deque<std::int32_t> numbers) { m_answers = std::move(numbers); }

    /// Called after a call was written down, and before it fails.
    std::function<void(const std::string& call)> onCall;

    std::int32_t TraceErrNumber() override;
    void TraceError(std::u16string_view sText) override;
    void TraceEnter(std::u16string_view sContext) override;
    void TraceExit(std::u16string_view sContext) override;

private:
    void PrvTake(std::string call);

    std::vector<std::string> m_calls;
    std::vector<Failure> m_failures;
    std::size_t m_callsToFailure = 0;
    std::int32_t m_failureNumber = 0;
    std::string m_failingCall;
    std::int32_t m_failingCallNumber = 0;
    std::optional<std::int32_t> m_answer;
    std::deque<std::int32_t> m_answers;
};

/// Makes `trace` the trace of this thread until the end of the scope.
class ScopedTrace
{
public:
    explicit ScopedTrace(ITrace* trace);
    ScopedTrace(const ScopedTrace&) = delete;
    ScopedTrace& operator=(const ScopedTrace&) = delete;
    ~ScopedTrace();

private:
    ITrace* m_previous;
};

} // namespace KestrinProductEditor
