// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace KestrinProductEditor {

/// Sets one variable of the process's environment, or takes it away, until the end of the scope.
class ScopedVariable
{
public:
    ScopedVariable(std::string name, const std::optional<std::string>& value);
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;
    ~ScopedVariable();

private:
    std::string m_name;
    std::optional<std::string> m_previous;
};

} // namespace KestrinProductEditor
