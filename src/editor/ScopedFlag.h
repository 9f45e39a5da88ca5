// SPDX-License-Identifier: MIT
#pragma once

#include <utility>

namespace KestrinProductEditor {

/// A flag that is true until the end of the scope, and then what it was before.
class ScopedFlag
{
public:
    explicit ScopedFlag(bool& flag) : m_flag(flag), m_previous(std::exchange(flag, true)) {}
    ScopedFlag(const ScopedFlag&) = delete;
    ScopedFlag& operator=(const ScopedFlag&) = delete;
    ~ScopedFlag() { m_flag = m_previous; }

private:
    bool& m_flag;
    bool m_previous;
};

} // namespace KestrinProductEditor
