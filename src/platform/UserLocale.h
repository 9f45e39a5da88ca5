// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

/// The items of the user's locale that the component asks for one by one. The numbers are the platform's.
enum class LocaleItem
{
    DecimalSeparator = 14,
    ThousandSeparator = 15,
    CurrencySymbol = 20,
    MonDecimalSeparator = 22,
    MonThousandSeparator = 23,
};

/// How the user's locale writes an amount of money.
///
/// In the patterns "$" stands for the symbol and "n" for the number; every other character stands for itself:
/// "$n", "n $", "-$n", "($n)". Without a symbol (empty) "$" and the blanks beside it vanish.
struct MoneyLayout
{
    std::u16string symbol;
    std::u16string decimalSeparator;  ///< never empty
    std::u16string thousandSeparator; ///< empty: no grouping
    /// The sizes of the groups from the decimal separator outward; the last one repeats unless
    /// `lastGroupEnds`.
    std::vector<int> grouping;
    bool lastGroupEnds = false;
    std::u16string positive = u"$n";
    std::u16string negative = u"-$n";
    /// The separators of plain numbers, accepted in amounts where they do not clash with the monetary ones.
    std::u16string numberDecimalSeparator;
    std::u16string numberThousandSeparator;
};

/// The user's locale. Nothing is cached: every call asks the system again.
class IUserLocale
{
public:
    virtual ~IUserLocale() = default;
    /// The item, or nothing when the query fails (as for the currency symbol of the plain C locale).
    [[nodiscard]] virtual std::optional<std::u16string> Item(LocaleItem item) const = 0;
    [[nodiscard]] virtual MoneyLayout Money() const = 0;
};

/// The locale in use on this thread: the platform's, or that of a ScopedUserLocale.
[[nodiscard]] const IUserLocale& UserLocale();

/// Puts another locale in the platform's place on this thread, until the end of the scope.
class ScopedUserLocale
{
public:
    explicit ScopedUserLocale(const IUserLocale& locale);
    ScopedUserLocale(const ScopedUserLocale&) = delete;
    ScopedUserLocale& operator=(const ScopedUserLocale&) = delete;
    ~ScopedUserLocale();

private:
    const IUserLocale* m_previous;
};

/// The platform's own locale. On Linux: LC_ALL, LC_MONETARY, LC_NUMERIC and LANG of the process; a locale
/// that the system does not have counts as "C".
[[nodiscard]] const IUserLocale& PlatformUserLocale();

} // namespace KestrinProductEditor
