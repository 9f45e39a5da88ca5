// SPDX-License-Identifier: MIT
#pragma once

#include "platform/CodePage.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <streambuf>
#include <string>

/// What the program asks of the system that it runs on. The answers are chosen by file: TerminalLinux.cpp.
namespace KestrinProductEditor::CommandLine {

enum class StandardStream
{
    Output,
    Error
};

/// Makes sure that no file that is opened later takes the number of a standard stream that was closed, and
/// that a reader who goes away is an error of the writing and not the end of the process.
void PrepareStandardStreams();

/// A buffer over the standard output. A failure is thrown as OutputFailure (Failure.h).
[[nodiscard]] std::unique_ptr<std::streambuf> StandardOutput();

/// The width of the terminal that the stream is; 0 when it is none.
[[nodiscard]] std::size_t TerminalColumns(StandardStream stream);

/// The form of the arguments and of what the program prints: that of the locale, whatever form files have.
[[nodiscard]] std::shared_ptr<const CodePage> TerminalCodePage();

/// The locale that the environment names for amounts of money, when the system does not have it.
[[nodiscard]] std::optional<std::string> MissingLocale();

/// The folder for the data of this user's programs; nothing when the system tells none.
[[nodiscard]] std::optional<std::u16string> UserDataFolder();

} // namespace KestrinProductEditor::CommandLine
