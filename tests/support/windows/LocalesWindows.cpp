// SPDX-License-Identifier: MIT
#include "support/Locales.h"

#include "fake/ScriptedLocale.h"
#include "support/Environment.h"

#include <windows.h>

#include <array>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

struct Conventions
{
    std::string_view language;
    std::u16string_view symbol;
    std::u16string_view decimal;
    std::u16string_view thousand;
    std::u16string_view monThousand;
    std::vector<int> grouping;
    std::u16string_view positive;
    std::u16string_view negative;
};

/// The first one stands for every language that is not here.
[[nodiscard]] const std::vector<Conventions>& AllConventions()
{
    static const std::vector<Conventions> all = {
        {"C", u"", u".", u",", u",", {3}, u"n", u"-n"},
        {"en_US", u"$", u".", u",", u",", {3}, u"$n", u"-$n"},
        {"de_DE", u"\u20AC", u",", u".", u".", {3}, u"n $", u"-n $"},
        {"fr_FR", u"\u20AC", u",", u"\u202F", u"\u202F", {3}, u"n $", u"-n $"},
        {"en_IN", u"\u20B9", u".", u",", u",", {3, 2}, u"$n", u"-$n"},
        {"ja_JP", u"\uFFE5", u".", u",", u",", {3}, u"$n", u"$-n"},
        {"de_CH", u"CHF", u".", u"\u2019", u"\u2019", {3}, u"$ n", u"$- n"},
        {"de_AT", u"\u20AC", u",", u".", u"\u202F", {3}, u"$ n", u"-$ n"},
        {"en_GB", u"\u00A3", u".", u",", u",", {3}, u"$n", u"-$n"},
    };
    return all;
}

constexpr std::array kTestLocaleNames = {
    "en_US.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8",      "en_IN.UTF-8",      "ja_JP.UTF-8",
    "de_CH.UTF-8", "de_AT.UTF-8", "en_US.ISO-8859-1", "en_GB.ISO-8859-1",
};

[[nodiscard]] const Conventions& ConventionsOf(std::string_view locale)
{
    for (const Conventions& conventions : AllConventions()) {
        if (conventions.language == locale.substr(0, locale.find('.')))
            return conventions;
    }
    return AllConventions().front();
}

[[nodiscard]] ScriptedLocale LocaleOf(const Conventions& money, const Conventions& numbers)
{
    ScriptedLocale locale;
    locale.items[LocaleItem::DecimalSeparator] = numbers.decimal;
    if (numbers.language != "C")
        locale.items[LocaleItem::ThousandSeparator] = numbers.thousand;
    if (money.language != "C") {
        locale.items[LocaleItem::CurrencySymbol] = money.symbol;
        locale.items[LocaleItem::MonDecimalSeparator] = money.decimal;
        locale.items[LocaleItem::MonThousandSeparator] = money.monThousand;
    }
    locale.money.symbol = money.symbol;
    locale.money.decimalSeparator = money.decimal;
    locale.money.thousandSeparator = money.monThousand;
    locale.money.grouping = money.grouping;
    locale.money.positive = money.positive;
    locale.money.negative = money.negative;
    locale.money.numberDecimalSeparator = numbers.decimal;
    locale.money.numberThousandSeparator = numbers.thousand;
    return locale;
}

/// The first of the variables that is set, in the order in which they count.
[[nodiscard]] const std::string& Chosen(const LocaleVariables& variables, const std::string& category)
{
    if (!variables.all.empty())
        return variables.all;
    return category.empty() ? variables.lang : category;
}

constexpr const char* kCodePage = "KSTNEDIT_CODEPAGE";

/// What a locale has set the code page to; what a test has set goes before it.
std::string g_codePageOfLocale;

[[nodiscard]] std::string CodePageNow()
{
    std::array<char, 100> value{};
    GetEnvironmentVariableA(kCodePage, value.data(), static_cast<DWORD>(value.size()));
    return value.data();
}

} // namespace

std::span<const char* const> TestLocaleNames()
{
    return kTestLocaleNames;
}

bool LocaleExists(const std::string& name)
{
    return name.starts_with("C") || &ConventionsOf(name) != &AllConventions().front();
}

class ScopedLocaleVariables::Scope
{
public:
    explicit Scope(const LocaleVariables& variables)
        : m_locale(LocaleOf(ConventionsOf(Chosen(variables, variables.monetary)),
                            ConventionsOf(Chosen(variables, variables.numeric)))),
          m_previousCodePage(g_codePageOfLocale)
    {
        const std::string now = CodePageNow();
        if (!now.empty() && now != g_codePageOfLocale)
            return;
        const std::string& locale = Chosen(variables, variables.ctype);
        const std::size_t dot = locale.find('.');
        g_codePageOfLocale = dot == std::string::npos ? "utf-8" : locale.substr(dot + 1);
        m_codePage.emplace(kCodePage, g_codePageOfLocale);
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { g_codePageOfLocale = std::move(m_previousCodePage); }

private:
    ScriptedLocale m_locale;
    ScopedUserLocale m_scope{m_locale};
    std::optional<ScopedVariable> m_codePage;
    std::string m_previousCodePage;
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
