// SPDX-License-Identifier: MIT
#include "kstnedit/NumberArgument.h"

#include "kstnedit/Failure.h"

#include <charconv>
#include <system_error>

namespace KestrinProductEditor::CommandLine {

std::optional<std::int32_t> WholeNumber(std::string_view text)
{
    std::int32_t number = 0;
    const char* const end = text.data() + text.size();
    const std::from_chars_result result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        return std::nullopt;
    return number;
}

std::string CheckRowIdentifier(const std::string& text)
{
    return WholeNumber(text) ? std::string() : "'" + text + "' is no row identifier: it is a whole number";
}

std::string CheckCount(const std::string& text)
{
    return WholeNumber(text).value_or(-1) >= 0 ? std::string()
                                               : "'" + text + "' is no number from 0 to 2147483647";
}

std::int32_t CheckedNumber(std::string_view text)
{
    const std::optional<std::int32_t> number = WholeNumber(text);
    if (!number)
        throw UsageFailure("'" + std::string(text) + "' is no whole number");
    return *number;
}

} // namespace KestrinProductEditor::CommandLine
