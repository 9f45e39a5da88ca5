// SPDX-License-Identifier: MIT
#include "support/Environment.h"
#include "support/Locales.h"

#include <locale.h>

#include <optional>

namespace KestrinProductEditor {

namespace {

constexpr const char* kTestLocaleNames[] = {
    "en_US.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8",      "en_IN.UTF-8",      "ja_JP.UTF-8",
    "de_CH.UTF-8", "de_AT.UTF-8", "en_US.ISO-8859-1", "en_GB.ISO-8859-1",
};

[[nodiscard]] std::optional<std::string> ValueOf(const std::string& value)
{
    return value.empty() ? std::nullopt : std::optional(value);
}

} // namespace

std::span<const char* const> TestLocaleNames()
{
    return kTestLocaleNames;
}

bool LocaleExists(const std::string& name)
{
    const locale_t locale = newlocale(LC_ALL_MASK, name.c_str(), nullptr);
    if (locale == nullptr)
        return false;
    freelocale(locale);
    return true;
}

class ScopedLocaleVariables::Scope
{
public:
    explicit Scope(const LocaleVariables& variables)
        : m_all("LC_ALL", ValueOf(variables.all)), m_ctype("LC_CTYPE", ValueOf(variables.ctype)),
          m_monetary("LC_MONETARY", ValueOf(variables.monetary)),
          m_numeric("LC_NUMERIC", ValueOf(variables.numeric)), m_lang("LANG", ValueOf(variables.lang))
    {
    }

private:
    ScopedVariable m_all;
    ScopedVariable m_ctype;
    ScopedVariable m_monetary;
    ScopedVariable m_numeric;
    ScopedVariable m_lang;
};

ScopedLocaleVariables::ScopedLocaleVariables(const std::string& lcAll)
    : ScopedLocaleVariables(LocaleVariables{.all = lcAll})
{
}

ScopedLocaleVariables::ScopedLocaleVariables(const LocaleVariables& variables)
    : m_scope(std::make_unique<Scope>(variables))
{
}

ScopedLocaleVariables::~ScopedLocaleVariables() = default;

} // namespace KestrinProductEditor
