// SPDX-License-Identifier: MIT
#pragma once

#include "kstnedit/Console.h"

namespace KestrinProductEditor::CommandLine {

/// A bar among the messages that shows how far long work has come, where they go to a terminal; nothing
/// elsewhere. It is wiped out when it ends.
class ProgressBar
{
public:
    explicit ProgressBar(Console& console) : m_console(console) {}
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;
    ~ProgressBar() { Clear(); }

    /// `fraction` of the work, from 0 to 1, is done. Cheap when no more can be seen than before.
    void Show(double fraction);
    void Clear();

private:
    Console& m_console;
    int m_shownPercent = -1;
};

} // namespace KestrinProductEditor::CommandLine
