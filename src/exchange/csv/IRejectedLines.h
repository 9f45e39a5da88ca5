// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace KestrinProductEditor {

/// Hears of every line that an import rejects. A progress receiver that implements it, too, is asked.
class IRejectedLines
{
public:
    virtual ~IRejectedLines() = default;

    /// `lineNumber` counts the lines of the file from 1. `reason` is a clause in UTF-8, `line` the line as it
    /// stands in the file, without its end. What it throws is ignored. Not
    /// called for an import that a receiver begins inside a call.
    virtual void LineRejected(std::uint64_t lineNumber, std::string_view reason, std::string_view line) = 0;
};

} // namespace KestrinProductEditor
