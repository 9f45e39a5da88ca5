// SPDX-License-Identifier: MIT
#include "platform/UserLocale.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

/// One of the user's own settings above those of the locale, until the end of the scope.
class ScopedOverride
{
public:
    ScopedOverride(LCTYPE item, const wchar_t* value) : m_item(item)
    {
        EXPECT_GT(GetLocaleInfoW(LOCALE_USER_DEFAULT, item, m_previous.data(), 80), 0);
        EXPECT_TRUE(SetLocaleInfoW(LOCALE_USER_DEFAULT, item, value)) << GetLastError();
    }
    ScopedOverride(const ScopedOverride&) = delete;
    ScopedOverride& operator=(const ScopedOverride&) = delete;
    ~ScopedOverride() { SetLocaleInfoW(LOCALE_USER_DEFAULT, m_item, m_previous.data()); }

private:
    LCTYPE m_item;
    std::array<wchar_t, 80> m_previous{};
};

} // namespace

TEST(UserLocaleWindows, HonoursTheUsersOverridesAtOnce)
{
    const IUserLocale& locale = PlatformUserLocale();
    const ScopedOverride symbol(LOCALE_SCURRENCY, L"Kr");
    const ScopedOverride monDecimal(LOCALE_SMONDECIMALSEP, L";");
    const ScopedOverride monThousand(LOCALE_SMONTHOUSANDSEP, L"'");
    const ScopedOverride decimal(LOCALE_SDECIMAL, L",");
    const ScopedOverride thousand(LOCALE_STHOUSAND, L".");
    EXPECT_EQ(locale.Item(LocaleItem::CurrencySymbol), u"Kr");
    EXPECT_EQ(locale.Item(LocaleItem::MonDecimalSeparator), u";");
    EXPECT_EQ(locale.Item(LocaleItem::MonThousandSeparator), u"'");
    EXPECT_EQ(locale.Item(LocaleItem::DecimalSeparator), u",");
    EXPECT_EQ(locale.Item(LocaleItem::ThousandSeparator), u".");

    const MoneyLayout money = locale.Money();
    EXPECT_EQ(money.symbol, u"Kr");
    EXPECT_EQ(money.decimalSeparator, u";");
    EXPECT_EQ(money.thousandSeparator, u"'");
    EXPECT_EQ(money.numberDecimalSeparator, u",");
    EXPECT_EQ(money.numberThousandSeparator, u".");
}

TEST(UserLocaleWindows, ReadsTheGroupSizes)
{
    const struct
    {
        const wchar_t* setting;
        std::vector<int> grouping;
        bool lastGroupEnds;
    } cases[] = {{L"3;0", {3}, false}, {L"3;2;0", {3, 2}, false}, {L"3", {3}, true}, {L"0", {}, false}};
    for (const auto& entry : cases) {
        const ScopedOverride grouping(LOCALE_SMONGROUPING, entry.setting);
        const MoneyLayout money = PlatformUserLocale().Money();
        EXPECT_EQ(money.grouping, entry.grouping);
        EXPECT_EQ(money.lastGroupEnds, entry.lastGroupEnds);
    }
}

TEST(UserLocaleWindows, ReadsThePlacesOfTheSymbol)
{
    const ScopedOverride positive(LOCALE_ICURRENCY, L"3");
    const ScopedOverride negative(LOCALE_INEGCURR, L"15");
    EXPECT_EQ(PlatformUserLocale().Money().positive, u"n $");
    EXPECT_EQ(PlatformUserLocale().Money().negative, u"(n $)");
}

TEST(UserLocaleWindows, KnowsNoOtherItems)
{
    EXPECT_EQ(PlatformUserLocale().Item(static_cast<LocaleItem>(0x9999)), std::nullopt);
}

} // namespace KestrinProductEditor
