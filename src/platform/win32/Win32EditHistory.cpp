// SPDX-License-Identifier: MIT
#include "platform/win32/Win32EditHistory.h"

#include <utility>

namespace KestrinProductEditor {

void Win32EditHistory::Add(Step step, Kind kind)
{
    m_steps.resize(m_done);
    if (kind != Kind::Typed || !PrvJoin(step)) {
        m_steps.push_back(std::move(step));
        ++m_done;
    }
    m_isLastOpen = kind == Kind::Typed;
}

bool Win32EditHistory::PrvJoin(const Step& step)
{
    if (!m_isLastOpen || m_steps.empty())
        return false;
    Step& last = m_steps.back();
    const bool goesOn =
        step.removed.empty() && !last.inserted.empty() && step.at == last.at + last.inserted.size();
    const bool goesBack =
        step.inserted.empty() && last.inserted.empty() && step.at + step.removed.size() == last.at;
    if (goesOn) {
        last.inserted += step.inserted;
    } else if (goesBack) {
        last.at = step.at;
        last.removed.insert(0, step.removed);
    }
    return goesOn || goesBack;
}

void Win32EditHistory::Clear()
{
    m_steps.clear();
    m_done = 0;
}

std::optional<Win32EditHistory::Step> Win32EditHistory::Undo()
{
    if (m_done == 0)
        return std::nullopt;
    m_isLastOpen = false;
    Step back = m_steps[--m_done];
    std::swap(back.removed, back.inserted);
    return back;
}

std::optional<Win32EditHistory::Step> Win32EditHistory::Redo()
{
    if (m_done == m_steps.size())
        return std::nullopt;
    m_isLastOpen = false;
    return m_steps[m_done++];
}

} // namespace KestrinProductEditor
