// SPDX-License-Identifier: MIT
#include "kstnedit/Failure.h"

namespace KestrinProductEditor::CommandLine {

OutputFailure::OutputFailure(Cause cause, const char* reason)
    : std::runtime_error(std::string("cannot write the output: ") +
                         (reason != nullptr ? reason : "unknown error")),
      m_cause(cause)
{
}

std::string_view AdviceFor(std::int32_t number)
{
    switch (number) {
    case kErrOutOfMemory:
        return "Close other programs, or work on a smaller file.";
    case kErrBadFileName:
    case kErrFileNotFound:
        return "Check the name for a typing error.";
    case kErrDeviceIO:
        return "Check the disk, and that it is still connected.";
    case kErrDiskFull:
        return "Free some space on that disk, then try again.";
    case kErrPermissionDenied:
        return "Check the permissions of the file and of its folder, or choose another place.";
    case kErrPathFileAccess:
        return "Name another file.";
    case kErrPathNotFound:
        return "Check the name for a typing error, or create the folder first.";
    case kErrInvalidFileFormat:
        return "Look at it with 'kstnedit check'. If it is your catalogue: move it away, then bring a "
               "backup back with 'kstnedit restore FILE'.";
    case kErrActionNotSupported:
        return "The other commands of kstnedit need no window.";
    default:
        return {};
    }
}

std::string TextOfFailure(std::string_view what, std::int32_t number, std::string_view description)
{
    std::string text(what);
    if (!text.empty())
        text += ": ";
    text += description;
    if (const std::string_view advice = AdviceFor(number); !advice.empty()) {
        if (!text.ends_with('.'))
            text += '.';
        text += ' ';
        text += advice;
    }
    return text;
}

CommandFailure FailureOf(std::string_view what, const AutomationError& error)
{
    return CommandFailure(TextOfFailure(what, error.Number(), error.what()));
}

} // namespace KestrinProductEditor::CommandLine
