// SPDX-License-Identifier: MIT
#include "support/Locales.h"

#include <locale.h>

#include <cstdlib>

namespace KestrinProductEditor {

namespace {

constexpr const char* kTestLocaleNames[] = {
    "en_US.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8",      "en_IN.UTF-8",      "ja_JP.UTF-8",
    "de_CH.UTF-8", "de_AT.UTF-8", "en_US.ISO-8859-1", "en_GB.ISO-8859-1",
};

void SetVariable(const std::string& name, const std::optional<std::string>& value)
{
    if (value) {
        setenv(name.c_str(), value->c_str(), 1);
    } else {
        unsetenv(name.c_str());
    }
}

} // namespace

std::span<const char* const> TestLocaleNames()
{
    return kTestLocaleNames;
}

bool LocaleExists(const std::string& name)
{
    const locale_t locale = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
    if (locale == nullptr) {
        return false;
    }
    freelocale(locale);
    return true;
}

ScopedLocaleVariables::ScopedLocaleVariables(const std::string& lcAll)
    : ScopedLocaleVariables(LocaleVariables{.all = lcAll})
{
}

ScopedLocaleVariables::ScopedLocaleVariables(const LocaleVariables& variables)
{
    const std::map<std::string, std::string> values = {{"LC_ALL", variables.all},
                                                       {"LC_CTYPE", variables.ctype},
                                                       {"LC_MONETARY", variables.monetary},
                                                       {"LC_NUMERIC", variables.numeric},
                                                       {"LANG", variables.lang}};
    for (const auto& [name, value] : values) {
        const char* const previous = std::getenv(name.c_str());
        m_previous[name] = previous != nullptr ? std::optional<std::string>(previous) : std::nullopt;
        SetVariable(name, value.empty() ? std::nullopt : std::optional(value));
    }
}

ScopedLocaleVariables::~ScopedLocaleVariables()
{
    for (const auto& [name, value] : m_previous) {
        SetVariable(name, value);
    }
}

} // namespace KestrinProductEditor
