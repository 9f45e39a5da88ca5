// SPDX-License-Identifier: MIT
#include "kstnedit/ProgressBar.h"

#include <algorithm>
#include <cstddef>

namespace KestrinProductEditor::CommandLine {

namespace {

constexpr std::size_t kAroundBar = 7; // "[" and "] 100%"

} // namespace

void ProgressBar::Show(double fraction)
{
    constexpr std::size_t kWidest = 40;
    const std::size_t columns = m_console.MessageColumns();
    const int percent = static_cast<int>(std::clamp(fraction, 0.0, 1.0) * 100.0);
    if (columns <= kAroundBar + 1 || percent == m_shownPercent)
        return;
    m_shownPercent = percent;
    // The last column stays free: a full line would scroll some terminals.
    const std::size_t width = std::min(kWidest, columns - kAroundBar - 1);
    const std::size_t done = width * static_cast<std::size_t>(percent) / 100;
    std::string bar = "\r[" + std::string(done, '#') + std::string(width - done, ' ') + "] ";
    bar += std::to_string(percent) + "%";
    m_console.WriteMessageBytes(bar);
}

void ProgressBar::Clear()
{
    if (m_shownPercent < 0)
        return;
    m_shownPercent = -1;
    m_console.WriteMessageBytes("\r" + std::string(m_console.MessageColumns() - 1, ' ') + "\r");
}

} // namespace KestrinProductEditor::CommandLine
