// SPDX-License-Identifier: MIT
#include "platform/Settings.h"

#include "support/UserPlaces.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <string>

namespace KestrinProductEditor {

namespace {

constexpr wchar_t kPrefs[] = L"Software\\VB and VBA Program Settings\\Salvo\\Prefs";

class SettingsRegistry : public testing::Test
{
protected:
    [[nodiscard]] static std::u16string Get()
    {
        return PlatformSettings().GetSetting(u"Salvo", u"Prefs", u"key", u"(default)");
    }

private:
    ScopedSettingsPlace m_place;
};

} // namespace

TEST_F(SettingsRegistry, HoldsAValueWhereTheBasicRuntimeKeepsIts)
{
    PlatformSettings().SaveSetting(u"Salvo", u"Prefs", u"key", u"2000~1200");
    std::array<wchar_t, 100> value{};
    DWORD size = sizeof(value);
    ASSERT_EQ(RegGetValueW(HKEY_CURRENT_USER, kPrefs, L"key", RRF_RT_REG_SZ, nullptr, value.data(), &size),
              ERROR_SUCCESS);
    EXPECT_EQ(std::wstring(value.data()), L"2000~1200");
}

TEST_F(SettingsRegistry, IsReadWhoeverWroteIt)
{
    constexpr wchar_t kValue[] = L"written elsewhere";
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kPrefs, L"key", REG_SZ, kValue, sizeof(kValue)),
              ERROR_SUCCESS);
    EXPECT_EQ(Get(), u"written elsewhere");
}

TEST_F(SettingsRegistry, AnswersTheDefaultForAValueThatIsNoText)
{
    const DWORD number = 7;
    ASSERT_EQ(RegSetKeyValueW(HKEY_CURRENT_USER, kPrefs, L"key", REG_DWORD, &number, sizeof(number)),
              ERROR_SUCCESS);
    EXPECT_EQ(Get(), u"(default)");
}

TEST_F(SettingsRegistry, TakesAKeyInAnyCase)
{
    PlatformSettings().SaveSetting(u"SALVO", u"PREFS", u"KEY", u"1");
    EXPECT_EQ(Get(), u"1");
}

} // namespace KestrinProductEditor
