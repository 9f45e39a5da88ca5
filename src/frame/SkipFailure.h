// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace KestrinProductEditor {

/// Does one step of a member that goes on after an error: a step that fails is skipped, and nobody hears.
template<class Step>
void SkipFailure(Step&& step) noexcept
{
    try {
        std::forward<Step>(step)();
    } catch (...) { // NOLINT(bugprone-empty-catch): see above
    }
}

} // namespace KestrinProductEditor
