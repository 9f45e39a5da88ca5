// SPDX-License-Identifier: MIT
#include "platform/Settings.h"

#include "fake/FailingFileSystem.h"
#include "platform/Files.h"
#include "support/Environment.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

namespace fs = std::filesystem;

class SettingsFile : public testing::Test
{
protected:
    [[nodiscard]] static std::u16string Get(std::u16string_view key)
    {
        return PlatformSettings().GetSetting(u"Salvo", u"Prefs", key, u"(default)");
    }

    static void Save(std::u16string_view key, std::u16string_view value)
    {
        PlatformSettings().SaveSetting(u"Salvo", u"Prefs", key, value);
    }

    [[nodiscard]] static std::int32_t SaveError()
    {
        return ErrorNumberOf([] { Save(u"key", u"value"); });
    }

    void WriteFile(std::string_view content) const
    {
        fs::create_directories(m_folder.Path() / "Salvo");
        m_folder.Write("Salvo/Prefs.conf", content);
    }

    [[nodiscard]] std::string File() const { return m_folder.Read("Salvo/Prefs.conf"); }

    [[nodiscard]] static mode_t ModeOf(const fs::path& path)
    {
        struct stat status = {};
        EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
        return status.st_mode & 07777;
    }

    TemporaryFolder m_folder;
    ScopedVariable m_configuration{"XDG_CONFIG_HOME", m_folder.Path().string()};
};

/// The permissions of files say nothing to root.
class SettingsFileWithoutRights : public SettingsFile
{
protected:
    /// Runs `act` as another user than root in a process of its own; its answer.
    template<typename Act>
    [[nodiscard]] int AsOrdinaryUser(Act&& act) const
    {
        constexpr uid_t kNobody = 65534;
        const pid_t child = fork();
        if (child == 0) {
            if (geteuid() == 0 && setresuid(kNobody, kNobody, kNobody) != 0)
                _exit(99);
            _exit(act());
        }
        int status = 0;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status));
        return WEXITSTATUS(status);
    }
};

} // namespace

TEST_F(SettingsFile, HoldsALineForEachKey)
{
    Save(u"ViewSettings_ProductEditorDlg", u"2000~1200~1100~0");
    Save(u"a=b #", u" c=d\\\r\n");
    EXPECT_EQ(File(), "ViewSettings_ProductEditorDlg=2000~1200~1100~0\n"
                      "a\\=b \\#=\\u0020c=d\\\\\\u000D\\u000A\n");
}

TEST_F(SettingsFile, BearsTheNamesOfApplicationAndSection)
{
    PlatformSettings().SaveSetting(u"Salvo", u"KestrinProductEditor_Prefs", u"key", u"value");
    PlatformSettings().SaveSetting(u"../up", u"a/b", u"key", u"value");
    EXPECT_TRUE(fs::is_regular_file(m_folder.Path() / "Salvo/KestrinProductEditor_Prefs.conf"));
    EXPECT_TRUE(fs::is_regular_file(m_folder.Path() / "%2E.%2Fup/a%2Fb.conf"));
    EXPECT_THAT(m_folder.Names(), testing::UnorderedElementsAre("Salvo", "%2E.%2Fup"));
}

TEST_F(SettingsFile, LiesInTheHomeFolderWhereNoAbsoluteFolderIsNamed)
{
    for (const auto& configuration :
         {std::optional<std::string>(), std::optional<std::string>(""), std::optional<std::string>("rel")}) {
        const TemporaryFolder home;
        const ScopedVariable noConfiguration("XDG_CONFIG_HOME", configuration);
        const ScopedVariable homeVariable("HOME", home.Path().string());
        Save(u"key", u"value");
        EXPECT_TRUE(fs::is_regular_file(home.Path() / ".config/Salvo/Prefs.conf"));
        EXPECT_EQ(Get(u"key"), u"value");
    }
}

TEST_F(SettingsFile, IsNowhereWithoutAHomeFolder)
{
    const ScopedVariable noConfiguration("XDG_CONFIG_HOME", std::nullopt);
    for (const auto& home : {std::optional<std::string>(), std::optional<std::string>("rel")}) {
        const ScopedVariable noHome("HOME", home);
        EXPECT_EQ(Get(u"key"), u"(default)");
        EXPECT_EQ(SaveError(), kErrPathNotFound);
    }
}

TEST_F(SettingsFile, LiesInFoldersForTheUserAlone)
{
    const fs::path configuration = m_folder.Path() / "new" / "config";
    const ScopedVariable variable("XDG_CONFIG_HOME", configuration.string() + "/");
    Save(u"key", u"value");
    EXPECT_EQ(ModeOf(configuration.parent_path()), 0700U);
    EXPECT_EQ(ModeOf(configuration), 0700U);
    EXPECT_EQ(ModeOf(configuration / "Salvo"), 0700U);
}

TEST_F(SettingsFile, MakesNothingWhereItIsOnlyRead)
{
    EXPECT_EQ(Get(u"key"), u"(default)");
    EXPECT_TRUE(m_folder.Names().empty());
}

TEST_F(SettingsFile, KeepsEveryLineThatItDoesNotUnderstand)
{
    const std::string before = "# a comment\n\n[section]\nkey=old\n\xFF\xFE=bytes\nbad=\\u12\nbad=end\\\n"
                               "  # key=commented\nanother=1";
    WriteFile(before);
    Save(u"key", u"new");
    Save(u"third", u"3");
    std::string expected = before;
    expected.replace(expected.find("old"), 3, "new");
    EXPECT_EQ(File(), expected + "\nthird=3\n");
    EXPECT_EQ(Get(u"bad"), u"(default)");
    EXPECT_EQ(Get(u"another"), u"1");
}

TEST_F(SettingsFile, MayHaveBeenWrittenByHand)
{
    WriteFile("\xEF\xBB\xBF"
              "first = 1 \r\n\tsecond=\t2\r\nsecond = 3\nno value =\nescaped=\\a\\=\\u00e9");
    EXPECT_EQ(Get(u"first"), u"1");
    EXPECT_EQ(Get(u"second"), u"3");
    EXPECT_EQ(Get(u"no value"), u"");
    EXPECT_EQ(Get(u"escaped"), u"a=\u00E9");
    Save(u"second", u"4");
    Save(u"first", u"5");
    EXPECT_EQ(Get(u"first"), u"5");
    EXPECT_EQ(Get(u"second"), u"4");
}

TEST_F(SettingsFile, YieldsDefaultsHoweverItIsDamaged)
{
    Save(u"key", u"a=\\ value\r\n");
    const std::string whole = File();
    for (std::size_t at = 0; at < whole.size(); ++at) {
        for (int change = 1; change < 256; change += 37) {
            std::string damaged = whole;
            damaged[at] = static_cast<char>(damaged[at] ^ change);
            WriteFile(damaged);
            EXPECT_NO_THROW(static_cast<void>(Get(u"key")));
        }
        WriteFile(whole.substr(0, at));
        EXPECT_NO_THROW(static_cast<void>(Get(u"key")));
        Save(u"key", u"again");
        EXPECT_EQ(Get(u"key"), u"again");
    }
}

TEST_F(SettingsFile, ThatIsNoneYieldsDefaultsAndRefusesToBeSaved)
{
    fs::create_directories(m_folder.Path() / "Salvo/Prefs.conf");
    EXPECT_EQ(Get(u"key"), u"(default)");
    EXPECT_EQ(SaveError(), kErrPathFileAccess);
}

TEST_F(SettingsFile, ThatIsFarTooLargeYieldsDefaultsAndStays)
{
    const std::string large = "key=1\n" + std::string(2 << 20, '#');
    WriteFile(large);
    EXPECT_EQ(Get(u"key"), u"(default)");
    EXPECT_EQ(SaveError(), kErrInvalidFileFormat);
    EXPECT_EQ(File(), large);
}

TEST_F(SettingsFile, YieldsDefaultsAndRaisesWhereAFileStandsInTheWay)
{
    m_folder.Write("Salvo", "a file");
    EXPECT_EQ(Get(u"key"), u"(default)");
    EXPECT_NE(SaveError(), 0);
    EXPECT_EQ(m_folder.Read("Salvo"), "a file");
}

TEST_F(SettingsFile, StaysAsItIsWhenItCannotBeWritten)
{
    Save(u"key", u"old");
    FailingFileSystem failing(PlatformFileSystem());
    const ScopedFileSystem scope(failing);
    failing.FailAfterWriting(3);
    EXPECT_EQ(SaveError(), kErrDiskFull);
    failing.Heal();
    failing.FailAtClosing();
    EXPECT_EQ(SaveError(), kErrDeviceIO);
    failing.Heal();
    failing.FailAfterReading(3, kErrDeviceIO);
    EXPECT_EQ(SaveError(), kErrDeviceIO);
    EXPECT_EQ(Get(u"key"), u"(default)");
    failing.Heal();
    EXPECT_EQ(File(), "key=old\n");
}

TEST_F(SettingsFile, IsNotWrittenForAValueThatIsThere)
{
    WriteFile("key = value");
    FailingFileSystem failing(PlatformFileSystem());
    const ScopedFileSystem scope(failing);
    failing.FailAfterWriting(0);
    EXPECT_EQ(SaveError(), 0);
    EXPECT_EQ(File(), "key = value");
}

TEST_F(SettingsFile, IsWrittenThroughALink)
{
    m_folder.Write("elsewhere", "# mine\n");
    fs::create_directories(m_folder.Path() / "Salvo");
    fs::create_symlink(m_folder.Path() / "elsewhere", m_folder.Path() / "Salvo/Prefs.conf");
    Save(u"key", u"value");
    EXPECT_TRUE(fs::is_symlink(m_folder.Path() / "Salvo/Prefs.conf"));
    EXPECT_EQ(m_folder.Read("elsewhere"), "# mine\nkey=value\n");
}

TEST_F(SettingsFile, LosesNothingWhenManyProcessesSaveAtOnce)
{
    constexpr int kProcesses = 4;
    constexpr int kKeys = 5;
    const auto key = [](int process, int number) {
        const std::string text = std::to_string(process) + "/" + std::to_string(number);
        return std::u16string(text.begin(), text.end());
    };
    std::vector<pid_t> children;
    for (int process = 0; process < kProcesses; ++process) {
        const pid_t child = fork();
        if (child == 0) {
            for (int number = 0; number < kKeys; ++number)
                Save(key(process, number), u"saved");
            _exit(0);
        }
        children.push_back(child);
    }
    for (const pid_t child : children) {
        int status = -1;
        EXPECT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    }
    for (int process = 0; process < kProcesses; ++process) {
        for (int number = 0; number < kKeys; ++number)
            EXPECT_EQ(Get(key(process, number)), u"saved");
    }
}

TEST_F(SettingsFileWithoutRights, RaisesInAPlaceThatIsReadOnly)
{
    Save(u"key", u"old");
    fs::permissions(m_folder.Path(), fs::perms(0755));
    fs::permissions(m_folder.Path() / "Salvo", fs::perms(0555));
    EXPECT_EQ(AsOrdinaryUser([] { return SaveError() == kErrPermissionDenied ? 0 : 1; }), 0);
    EXPECT_EQ(AsOrdinaryUser([] { return Get(u"key") == u"old" ? 0 : 1; }), 0);
    EXPECT_EQ(File(), "key=old\n");
    fs::permissions(m_folder.Path() / "Salvo", fs::perms(0755));
}

TEST_F(SettingsFileWithoutRights, RaisesWhereItsFolderCannotBeMade)
{
    fs::permissions(m_folder.Path(), fs::perms(0555));
    EXPECT_EQ(AsOrdinaryUser([] { return SaveError() == kErrPermissionDenied ? 0 : 1; }), 0);
    EXPECT_TRUE(m_folder.Names().empty());
    fs::permissions(m_folder.Path(), fs::perms(0755));
}

TEST_F(SettingsFileWithoutRights, YieldsDefaultsWhereItMayNotBeRead)
{
    Save(u"key", u"old");
    fs::permissions(m_folder.Path(), fs::perms(0755));
    fs::permissions(m_folder.Path() / "Salvo", fs::perms(0755));
    fs::permissions(m_folder.Path() / "Salvo/Prefs.conf", fs::perms::none);
    EXPECT_EQ(AsOrdinaryUser([] { return Get(u"key") == u"(default)" ? 0 : 1; }), 0);
    EXPECT_EQ(AsOrdinaryUser([] { return SaveError() == kErrPermissionDenied ? 0 : 1; }), 0);
}

TEST_F(SettingsFile, KeepsEveryTextAsKey)
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
        Save(text, u"as key");
        EXPECT_EQ(Get(text), u"as key");
    }
    for (const std::u16string& text : texts)
        EXPECT_EQ(Get(text), u"as key");
}

TEST_F(SettingsFile, KeepsApplicationsAndSectionsApartWhateverTheirNames)
{
    const std::u16string names[] = {
        u"",
        u".",
        u"..",
        u"...",
        u"%",
        u"%2E",
        u"%u00E9",
        u"a/b",
        u"a%2Fb",
        u"/etc/passwd",
        u"../../up",
        u".hidden",
        u"\u00E9\u4E2D",
        u"new\nline",
        std::u16string(u"\xDCE9"),
        std::u16string(u"\xDCC3\xDCA9"),
        u"a",
        u"A",
        std::u16string(300, u'n'),
        std::u16string(300, u'n') + u"2",
        std::u16string(200, u'\u4E2D'),
    };
    for (const std::u16string& name : names) {
        PlatformSettings().SaveSetting(name, u"Prefs", u"key", u"application " + name);
        PlatformSettings().SaveSetting(u"Salvo", name, u"key", u"section " + name);
    }
    for (const std::u16string& name : names) {
        EXPECT_EQ(PlatformSettings().GetSetting(name, u"Prefs", u"key", u""), u"application " + name);
        EXPECT_EQ(PlatformSettings().GetSetting(u"Salvo", name, u"key", u""), u"section " + name);
    }
}

TEST_F(SettingsFile, TellsKeysApartLetterByLetter)
{
    Save(u"key", u"small");
    Save(u"Key", u"large");
    Save(u" key", u"blank");
    EXPECT_EQ(Get(u"key"), u"small");
    EXPECT_EQ(Get(u"Key"), u"large");
    EXPECT_EQ(Get(u" key"), u"blank");
}

} // namespace KestrinProductEditor
