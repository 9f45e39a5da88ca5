// SPDX-License-Identifier: MIT
#include "support/Environment.h"

#include <cstdlib>
#include <utility>

namespace KestrinProductEditor {

namespace {

void Put(const std::string& name, const std::optional<std::string>& value)
{
    if (value)
        setenv(name.c_str(), value->c_str(), 1);
    else
        unsetenv(name.c_str());
}

} // namespace

ScopedVariable::ScopedVariable(std::string name, const std::optional<std::string>& value)
    : m_name(std::move(name))
{
    if (const char* const previous = std::getenv(m_name.c_str()))
        m_previous = previous;
    Put(m_name, value);
}

ScopedVariable::~ScopedVariable()
{
    Put(m_name, m_previous);
}

} // namespace KestrinProductEditor
