// SPDX-License-Identifier: MIT
#include "platform/UserLocale.h"
#include "platform/windows/WideText.h"

#include <windows.h>

#include <array>
#include <charconv>
#include <cstddef>
#include <string_view>

namespace KestrinProductEditor {

namespace {

/// The user's own settings stand above those of the locale.
constexpr LCID kUserDefault = LOCALE_USER_DEFAULT;

[[nodiscard]] std::optional<std::u16string> WideItem(LCTYPE item)
{
    std::array<wchar_t, 256> buffer;
    const int count = GetLocaleInfoW(kUserDefault, item, buffer.data(), static_cast<int>(buffer.size()));
    if (count <= 0)
        return std::nullopt;
    return FromWide({buffer.data(), static_cast<std::size_t>(count) - 1});
}

[[nodiscard]] int Number(LCTYPE item, int otherwise)
{
    DWORD number = 0;
    const int count = GetLocaleInfoW(kUserDefault, item | LOCALE_RETURN_NUMBER,
                                     reinterpret_cast<wchar_t*>(&number), sizeof(number) / sizeof(wchar_t));
    return count > 0 ? static_cast<int>(number) : otherwise;
}

/// "3;0": groups of three for ever. "3": one group of three. "3;2;0": three, then twos.
void ReadGrouping(std::u16string_view text, MoneyLayout& layout)
{
    layout.grouping.clear();
    layout.lastGroupEnds = true;
    for (const char16_t unit : text) {
        if (unit == u'0')
            layout.lastGroupEnds = false;
        else if (unit >= u'1' && unit <= u'9')
            layout.grouping.push_back(unit - u'0');
    }
    if (layout.grouping.empty())
        layout.lastGroupEnds = false;
}

/// The places of symbol and number, by the platform's number for them.
constexpr std::array<std::u16string_view, 4> kPositive{u"$n", u"n$", u"$ n", u"n $"};
constexpr std::array<std::u16string_view, 16> kNegative{
    u"($n)", u"-$n",  u"$-n",  u"$n-",  u"(n$)", u"-n$",  u"n-$",   u"n$-",
    u"-n $", u"-$ n", u"n $-", u"$ n-", u"$ -n", u"n- $", u"($ n)", u"(n $)",
};

template<std::size_t count>
[[nodiscard]] std::u16string Pattern(const std::array<std::u16string_view, count>& patterns, int number,
                                     std::size_t otherwise)
{
    const auto index = static_cast<std::size_t>(number);
    return std::u16string(patterns[number >= 0 && index < count ? index : otherwise]);
}

class UserLocaleWindows final : public IUserLocale
{
public:
    [[nodiscard]] std::optional<std::u16string> Item(LocaleItem item) const override
    {
        // The length is a part of what the component promises: of a longer text the query fails. Its answer
        // lacks what the code page lacks, and the wide one does not.
        std::array<char, 255> buffer;
        constexpr int kLength = 127;
        if (GetLocaleInfoA(kUserDefault, static_cast<LCTYPE>(item), buffer.data(), kLength) <= 0)
            return std::nullopt;
        return WideItem(static_cast<LCTYPE>(item));
    }

    [[nodiscard]] MoneyLayout Money() const override
    {
        MoneyLayout layout;
        layout.numberDecimalSeparator = Item(LocaleItem::DecimalSeparator).value_or(u".");
        layout.numberThousandSeparator = Item(LocaleItem::ThousandSeparator).value_or(u",");
        layout.symbol = WideItem(LOCALE_SCURRENCY).value_or(u"");
        layout.decimalSeparator = Item(LocaleItem::MonDecimalSeparator).value_or(u".");
        if (layout.decimalSeparator.empty())
            layout.decimalSeparator = u".";
        layout.thousandSeparator = Item(LocaleItem::MonThousandSeparator).value_or(u",");
        ReadGrouping(WideItem(LOCALE_SMONGROUPING).value_or(u"3;0"), layout);
        layout.positive = Pattern(kPositive, Number(LOCALE_ICURRENCY, 0), 0);
        layout.negative = Pattern(kNegative, Number(LOCALE_INEGCURR, 1), 1);
        return layout;
    }
};

} // namespace

const IUserLocale& PlatformUserLocale()
{
    // Never destroyed: a host may release its last store after the end of the process's own objects.
    static const auto& kLocale = *new UserLocaleWindows;
    return kLocale;
}

} // namespace KestrinProductEditor
