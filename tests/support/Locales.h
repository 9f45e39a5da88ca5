// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <span>
#include <string>

namespace KestrinProductEditor {

/// The names of the locales that tests rely on. On Linux tools/make-locales makes them.
[[nodiscard]] std::span<const char* const> TestLocaleNames();

/// Whether there is the locale `name`.
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

/// Puts the process into a locale until the end of the scope, of which nothing depends on the machine that
/// runs the tests. On Linux these are the process's variables. On Windows no process can change its locale:
/// there the user's locale of this thread is one of fixed conventions, and the locale's character set is the
/// code page unless a test has set another.
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
    class Scope;

    std::unique_ptr<Scope> m_scope;
};

} // namespace KestrinProductEditor
