// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationError.h>

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace KestrinProductEditor::CommandLine {

// On the command line: never renumber.
enum ExitStatus : int
{
    kSucceeded = 0,
    kFailed = 1,
    kMisused = 2,
};

/// Ends a command with kFailed. The text (UTF-8) says what failed, where, and what to do.
class CommandFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Ends a command with kMisused: its arguments contradict each other, or one of them says nothing.
class UsageFailure : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// What was to be printed could not be written.
class OutputFailure : public std::runtime_error
{
public:
    enum class Cause
    {
        ReaderIsGone, ///< it wanted no more: there is nothing to complain about
        Other
    };

    OutputFailure(Cause cause, const char* reason);

    [[nodiscard]] Cause WhatCaused() const noexcept { return m_cause; }

private:
    Cause m_cause;
};

/// What a user can do about an error with that number: a sentence, or nothing.
[[nodiscard]] std::string_view AdviceFor(std::int32_t number);

/// "WHAT: DESCRIPTION. ADVICE"; without WHAT when that is empty.
[[nodiscard]] std::string TextOfFailure(std::string_view what, std::int32_t number,
                                        std::string_view description);
[[nodiscard]] CommandFailure FailureOf(std::string_view what, const AutomationError& error);

} // namespace KestrinProductEditor::CommandLine
