// SPDX-License-Identifier: MIT
#include "platform/Settings.h"

#include "fake/MemorySettings.h"
#include "support/UserPlaces.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <thread>

namespace KestrinProductEditor {

namespace {

/// What every implementation of the settings promises.
class SettingsContract : public testing::TestWithParam<const char*>
{
protected:
    [[nodiscard]] ISettings& Target()
    {
        return std::string_view(GetParam()) == "Platform" ? PlatformSettings() : m_memory;
    }

    [[nodiscard]] std::u16string Get(std::u16string_view key)
    {
        return Target().GetSetting(u"Salvo", u"Prefs", key, u"(default)");
    }

    void Save(std::u16string_view key, std::u16string_view value)
    {
        Target().SaveSetting(u"Salvo", u"Prefs", key, value);
    }

private:
    ScopedSettingsPlace m_place;
    MemorySettings m_memory;
};

INSTANTIATE_TEST_SUITE_P(Of, SettingsContract, testing::Values("Platform", "Memory"),
                         [](const auto& instance) { return std::string(instance.param); });

} // namespace

TEST_P(SettingsContract, AnswersTheDefaultForWhatWasNeverSaved)
{
    EXPECT_EQ(Get(u"widths"), u"(default)");
    Save(u"other", u"1");
    EXPECT_EQ(Get(u"widths"), u"(default)");
}

TEST_P(SettingsContract, KeepsTheLastValueOfEachKey)
{
    Save(u"a", u"1");
    Save(u"b", u"2");
    Save(u"a", u"2000~1200~1100~0");
    EXPECT_EQ(Get(u"a"), u"2000~1200~1100~0");
    EXPECT_EQ(Get(u"b"), u"2");
}

TEST_P(SettingsContract, TellsAnEmptyValueFromNone)
{
    Save(u"a", u"");
    EXPECT_EQ(Get(u"a"), u"");
}

TEST_P(SettingsContract, KeepsEveryTextAsValue)
{
    const std::u16string texts[] = {
        u"",
        u" ",
        u"  leading and trailing \t",
        u"a=b=c",
        u"=",
        u"#",
        u"# no comment",
        u"; [section]",
        u"back\\slash\\",
        u"\\n\\u0041\\",
        u"line\r\nbreaks\nof\revery kind\u2028\u0085",
        std::u16string(u"a\0b", 3),
        u"\u00E9\u20AC \u00A0\u4E2D",
        u"\U0001F528 hammer",
        std::u16string(u"lone \xD83D high"),
        std::u16string(u"\xDD28"),
        std::u16string(u"\xDD28\xD83D"),
        std::u16string(u"\xDCC3\xDCA9 not a byte"),
        u"\uFEFFmark",
        u"\u007F\u001B[0m",
        std::u16string(5000, u'x'),
    };
    for (const std::u16string& text : texts) {
        Save(u"as value", text);
        EXPECT_EQ(Get(u"as value"), text);
    }
}

TEST_P(SettingsContract, KeepsApplicationsAndSectionsApart)
{
    const std::u16string names[] = {u"a",        u"b", u"...", u"%2E", u"/etc/passwd", u"\u00E9\u4E2D",
                                    u"two words"};
    for (const std::u16string& name : names) {
        Target().SaveSetting(name, u"Prefs", u"key", u"application " + name);
        Target().SaveSetting(u"Salvo", name, u"key", u"section " + name);
    }
    for (const std::u16string& name : names) {
        EXPECT_EQ(Target().GetSetting(name, u"Prefs", u"key", u""), u"application " + name);
        EXPECT_EQ(Target().GetSetting(u"Salvo", name, u"key", u""), u"section " + name);
    }
}

TEST(Settings, AreThePlatformsOutsideOfAScope)
{
    EXPECT_EQ(&Settings(), &PlatformSettings());
    MemorySettings outer;
    MemorySettings inner;
    {
        const ScopedSettings outerScope(outer);
        EXPECT_EQ(&Settings(), &outer);
        {
            const ScopedSettings innerScope(inner);
            EXPECT_EQ(&Settings(), &inner);
        }
        EXPECT_EQ(&Settings(), &outer);
    }
    EXPECT_EQ(&Settings(), &PlatformSettings());
}

TEST(Settings, OfAScopeAreThoseOfOneThreadOnly)
{
    MemorySettings memory;
    const ScopedSettings scope(memory);
    ISettings* other = nullptr;
    std::thread([&other] { other = &Settings(); }).join();
    EXPECT_EQ(other, &PlatformSettings());
}

} // namespace KestrinProductEditor
