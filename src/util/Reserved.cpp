// SPDX-License-Identifier: MIT
#include "util/Reserved.h"

#include <algorithm>
#include <iterator>

namespace KestrinProductEditor {

std::string_view WithoutReserved(std::string_view text, std::string& scratch)
{
    const std::size_t first = text.find(kReservedCharacter);
    if (first == std::string_view::npos) {
        return text;
    }
    scratch.assign(text.substr(0, first));
    std::remove_copy(text.begin() + static_cast<std::ptrdiff_t>(first), text.end(),
                     std::back_inserter(scratch), kReservedCharacter);
    return scratch;
}

std::u16string WithoutReserved(std::u16string_view text)
{
    std::u16string result(text);
    std::erase(result, static_cast<char16_t>(kReservedCharacter));
    return result;
}

} // namespace KestrinProductEditor
