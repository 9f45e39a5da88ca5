// SPDX-License-Identifier: MIT
#include "support/Environment.h"

#include <windows.h>

#include <utility>

namespace KestrinProductEditor {

namespace {

// The names and values of the tests are ASCII.

[[nodiscard]] std::optional<std::string> Get(const std::string& name)
{
    std::string value(1000, '\0');
    SetLastError(ERROR_SUCCESS);
    const DWORD length =
        GetEnvironmentVariableA(name.c_str(), value.data(), static_cast<DWORD>(value.size()));
    if (length == 0 && GetLastError() != ERROR_SUCCESS)
        return std::nullopt;
    value.resize(length);
    return value;
}

void Put(const std::string& name, const std::optional<std::string>& value)
{
    SetEnvironmentVariableA(name.c_str(), value ? value->c_str() : nullptr);
}

} // namespace

ScopedVariable::ScopedVariable(std::string name, const std::optional<std::string>& value)
    : m_name(std::move(name)), m_previous(Get(m_name))
{
    Put(m_name, value);
}

ScopedVariable::~ScopedVariable()
{
    Put(m_name, m_previous);
}

} // namespace KestrinProductEditor
