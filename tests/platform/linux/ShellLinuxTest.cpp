// SPDX-License-Identifier: MIT
#include "platform/Shell.h"

#include "support/Environment.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace KestrinProductEditor {

namespace {

/// A home folder of its own, and no setting of the user who runs the test.
class DocumentsFolder : public testing::Test
{
protected:
    [[nodiscard]] std::u16string Home() const { return m_home.Path().u16string(); }

    void WriteUserDirs(std::string_view content, std::string_view configuration = ".config") const
    {
        std::filesystem::create_directories(m_home.Path() / configuration);
        m_home.Write(std::string(configuration) + "/user-dirs.dirs", content);
    }

    TemporaryFolder m_home;
    ScopedVariable m_homeVariable{"HOME", m_home.Path().string()};
    ScopedVariable m_configuration{"XDG_CONFIG_HOME", std::nullopt};
    ScopedVariable m_documents{"XDG_DOCUMENTS_DIR", std::nullopt};
};

[[nodiscard]] std::u16string Documents()
{
    return SpecialFolderPath(kCsidlPersonal);
}

} // namespace

TEST_F(DocumentsFolder, IsTheHomeFolderWhereNothingElseIsSaid)
{
    EXPECT_EQ(Documents(), Home());
}

TEST_F(DocumentsFolder, ComesFromTheEnvironmentFirst)
{
    WriteUserDirs("XDG_DOCUMENTS_DIR=\"$HOME/Documents\"\n");
    const ScopedVariable documents("XDG_DOCUMENTS_DIR", "/srv/documents");
    EXPECT_EQ(Documents(), u"/srv/documents");
}

TEST_F(DocumentsFolder, ComesFromTheUserDirectories)
{
    const struct
    {
        const char* name;
        const char* content;
        std::u16string expected;
    } cases[] = {
        {"below home",
         "# comment\nXDG_DESKTOP_DIR=\"$HOME/Desktop\"\nXDG_DOCUMENTS_DIR=\"$HOME/My Papers\"\n",
         Home() + u"/My Papers"},
        {"absolute", "XDG_DOCUMENTS_DIR=\"/srv/docs\"\n", u"/srv/docs"},
        {"no line end", "XDG_DOCUMENTS_DIR=\"/srv/docs\"", u"/srv/docs"},
        {"blanks", " \tXDG_DOCUMENTS_DIR = \"/srv/docs\"\n", u"/srv/docs"},
        {"home itself", "XDG_DOCUMENTS_DIR=\"$HOME/\"\n", Home()},
        {"home without slash", "XDG_DOCUMENTS_DIR=\"$HOME\"\n", Home()},
        {"escapes", "XDG_DOCUMENTS_DIR=\"$HOME/a\\\"b\\\\c\\$d\"\n", Home() + u"/a\"b\\c$d"},
        {"not ASCII",
         "XDG_DOCUMENTS_DIR=\"$HOME/B\xC3\xBC"
         "cher\"\n",
         Home() + u"/B\u00FCcher"},
        {"last line counts", "XDG_DOCUMENTS_DIR=\"/srv/a\"\nXDG_DOCUMENTS_DIR=\"/srv/b\"\n", u"/srv/b"},
        {"commented out", "#XDG_DOCUMENTS_DIR=\"/srv/docs\"\n", Home()},
        {"relative", "XDG_DOCUMENTS_DIR=\"docs\"\n", Home()},
        {"another variable", "XDG_DOCUMENTS_DIR=\"$HOMESTEAD/docs\"\n", Home()},
        {"unquoted", "XDG_DOCUMENTS_DIR=/srv/docs\n", Home()},
        {"longer name", "XDG_DOCUMENTS_DIRECTORY=\"/srv/docs\"\n", Home()},
        {"empty", "", Home()},
    };
    for (const auto& entry : cases) {
        WriteUserDirs(entry.content);
        EXPECT_EQ(Documents(), entry.expected) << entry.name;
    }
}

TEST_F(DocumentsFolder, LooksWhereTheConfigurationLies)
{
    WriteUserDirs("XDG_DOCUMENTS_DIR=\"/srv/wrong\"\n");
    WriteUserDirs("XDG_DOCUMENTS_DIR=\"$HOME/right\"\n", "elsewhere");
    const ScopedVariable configuration("XDG_CONFIG_HOME", (m_home.Path() / "elsewhere").string());
    EXPECT_EQ(Documents(), Home() + u"/right");
}

TEST_F(DocumentsFolder, EndsInNoSlash)
{
    const ScopedVariable documents("XDG_DOCUMENTS_DIR", "/srv/documents//");
    EXPECT_EQ(Documents(), u"/srv/documents");
    const ScopedVariable root("XDG_DOCUMENTS_DIR", "/");
    EXPECT_EQ(Documents(), u"/");
}

TEST_F(DocumentsFolder, KeepsBytesThatAreNoText)
{
    const ScopedVariable documents("XDG_DOCUMENTS_DIR", "/srv/\xFF");
    EXPECT_EQ(Documents(), (std::u16string{u'/', u's', u'r', u'v', u'/', 0xDCFF}));
}

TEST_F(DocumentsFolder, IsEmptyWhenRelative)
{
    {
        const ScopedVariable documents("XDG_DOCUMENTS_DIR", "documents");
        EXPECT_EQ(Documents(), u"");
    }
    const ScopedVariable home("HOME", "home");
    EXPECT_EQ(Documents(), u"");
}

TEST_F(DocumentsFolder, IsEmptyWithoutAHome)
{
    const ScopedVariable home("HOME", std::nullopt);
    EXPECT_EQ(Documents(), u"");
}

TEST_F(DocumentsFolder, IsTheOnlyOneThatIsKnown)
{
    for (const std::int32_t folder : {-1, 0, 1, 4, 6, 26, 1000})
        EXPECT_EQ(SpecialFolderPath(folder), u"") << folder;
}

} // namespace KestrinProductEditor
