// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// Calls `attempt` until what it answers is true, or no null, and answers that. Raises std::runtime_error,
/// which says what was waited for, when that takes longer than any machine needs.
template<class Attempt>
auto Await(std::string_view what, const Attempt& attempt)
{
    constexpr ULONGLONG kLongest = 60'000; // milliseconds
    const ULONGLONG begin = GetTickCount64();
    for (;;) {
        if (auto found = attempt())
            return found;
        if (GetTickCount64() - begin > kLongest)
            throw std::runtime_error("waited in vain for " + std::string(what));
        Sleep(1);
    }
}

} // namespace KestrinProductEditor
