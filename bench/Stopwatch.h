// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace KestrinProductEditor::Bench {

/// Runs from its beginning.
class Stopwatch
{
public:
    [[nodiscard]] double Microseconds() const
    {
        return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - m_begin).count();
    }

private:
    std::chrono::steady_clock::time_point m_begin = std::chrono::steady_clock::now();
};

} // namespace KestrinProductEditor::Bench
