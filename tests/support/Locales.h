// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>

namespace KestrinProductEditor {

/// The names of the locales that tools/make-locales makes. Tests rely on them.
[[nodiscard]] std::span<const char* const> TestLocaleNames();

/// Whether the system has the locale `name`.
[[nodiscard]] bool LocaleExists(const std::string& name);

/// The variables that name the locale; an empty one is not set.
struct LocaleVariables
{
    std::string all = {};
    std::string ctype = {};
    std::string monetary = {};
    std::string numeric = {};
    std::string lang = {};
};

/// Sets the process's locale variables until the end of the scope. Those that are not given are unset, so
/// that nothing of the machine that runs the tests comes through.
class ScopedLocaleVariables
{
public:
    /// LC_ALL alone.
    explicit ScopedLocaleVariables(const std::string& lcAll);
    explicit ScopedLocaleVariables(const LocaleVariables& variables);
    ScopedLocaleVariables(const ScopedLocaleVariables&) = delete;
    ScopedLocaleVariables& operator=(const ScopedLocaleVariables&) = delete;
    ~ScopedLocaleVariables();

private:
    std::map<std::string, std::optional<std::string>> m_previous;
};

} // namespace KestrinProductEditor
