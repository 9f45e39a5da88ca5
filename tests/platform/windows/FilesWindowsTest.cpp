// SPDX-License-Identifier: MIT
#include "platform/FileKind.h"
#include "platform/Files.h"

#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#undef ReplaceFile

namespace KestrinProductEditor {

namespace {

class FilesWindows : public testing::Test
{
protected:
    [[nodiscard]] static IFileSystem& Files() { return PlatformFileSystem(); }

    [[nodiscard]] std::u16string File(std::u16string_view name) const
    {
        return Files().BuildPath(m_folder.Path().u16string(), name);
    }

    [[nodiscard]] static std::wstring Wide(std::u16string_view path) { return {path.begin(), path.end()}; }

    [[nodiscard]] static std::string RestOf(IReadStream& stream)
    {
        std::string content;
        std::array<char, 100> buffer;
        while (const std::size_t count = stream.Read(buffer.data(), buffer.size()))
            content.append(buffer.data(), count);
        return content;
    }

    [[nodiscard]] static std::string Content(std::u16string_view path)
    {
        return RestOf(*Files().OpenForReading(path));
    }

    static void Replace(std::u16string_view path, std::string_view content)
    {
        const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(path);
        stream->Write(content);
        stream->Close();
    }

    TemporaryFolder m_folder;
};

} // namespace

TEST_F(FilesWindows, BuildAPathWithABackslash)
{
    const struct
    {
        std::u16string_view folder;
        std::u16string_view name;
        std::u16string_view path;
    } cases[] = {
        {u"C:\\a", u"b", u"C:\\a\\b"},   {u"C:\\a\\", u"b", u"C:\\a\\b"}, {u"C:/a/", u"b", u"C:/a/b"},
        {u"C:\\a", u"\\b", u"C:\\a\\b"}, {u"C:", u"b", u"C:b"},           {u"", u"b", u"b"},
        {u"C:\\a", u"", u"C:\\a"},
    };
    for (const auto& entry : cases)
        EXPECT_EQ(Files().BuildPath(entry.folder, entry.name), entry.path);
}

TEST_F(FilesWindows, AreReadAndReplacedAtPathsBeyondTheOldLimit)
{
    std::u16string folder = m_folder.Path().u16string();
    std::vector<std::wstring> made;
    while (folder.size() < 600) {
        folder = Files().BuildPath(folder, std::u16string(100, u'd'));
        std::wstring native = L"\\\\?\\" + Wide(folder);
        std::replace(native.begin(), native.end(), L'/', L'\\');
        ASSERT_TRUE(CreateDirectoryW(native.c_str(), nullptr)) << GetLastError();
        made.push_back(native);
    }
    const std::u16string path = Files().BuildPath(folder, u"list.csv");
    Files().CreateInPlace(path)->Write("old");
    Replace(path, "new");
    EXPECT_TRUE(Files().FileExists(path));
    EXPECT_EQ(Content(path), "new");

    EXPECT_TRUE(DeleteFileW((made.back() + L"\\list.csv").c_str()));
    while (!made.empty()) {
        EXPECT_TRUE(RemoveDirectoryW(made.back().c_str())) << GetLastError();
        made.pop_back();
    }
}

TEST_F(FilesWindows, HaveNamesOutsideOfTheCodePage)
{
    const std::u16string path = File(u"\u4E2D\u0416 \U0001F528.csv");
    Replace(path, "first");
    Replace(path, "second");
    EXPECT_TRUE(Files().FileExists(path));
    EXPECT_EQ(Content(path), "second");
}

TEST_F(FilesWindows, AreReplacedWhileTheyAreRead)
{
    Replace(File(u"a"), "old content");
    const std::unique_ptr<IReadStream> reader = Files().OpenForReading(File(u"a"));
    std::array<char, 3> buffer;
    ASSERT_EQ(reader->Read(buffer.data(), buffer.size()), 3U);
    Replace(File(u"a"), "new");
    EXPECT_EQ(RestOf(*reader), " content");
    EXPECT_EQ(Content(File(u"a")), "new");
}

TEST_F(FilesWindows, MayBearTheLongestName)
{
    const std::u16string path = File(std::u16string(255, u'n'));
    Replace(path, "old");
    Replace(path, "new");
    EXPECT_EQ(Content(path), "new");
}

TEST_F(FilesWindows, LoseWhatAKilledWriterLeftAndNothingElse)
{
    m_folder.Write("a.kstnedit-0123456789ab", "left over");
    m_folder.Write("a.kstnedit-0123456789ab.bak", "a user's");
    m_folder.Write("a.kstnedit-0123456789", "a user's");
    m_folder.Write("b.kstnedit-0123456789ab", "another file's");
    Replace(File(u"a"), "new");
    EXPECT_THAT(m_folder.Names(),
                testing::ElementsAre("a", "a.kstnedit-0123456789", "a.kstnedit-0123456789ab.bak",
                                     "b.kstnedit-0123456789ab"));
}

TEST_F(FilesWindows, AreReplacedByTwoWritersTheLastOfWhichCounts)
{
    const std::unique_ptr<IWriteStream> first = Files().ReplaceFile(File(u"a"));
    first->Write("first");
    const std::unique_ptr<IWriteStream> second = Files().ReplaceFile(File(u"a"));
    second->Write("second");
    second->Close();
    EXPECT_EQ(Content(File(u"a")), "second");
    first->Close();
    EXPECT_EQ(Content(File(u"a")), "first");
    EXPECT_THAT(m_folder.Names(), testing::ElementsAre("a"));
}

TEST_F(FilesWindows, FailWithTheNumberOfTheCause)
{
    const std::u16string folder = m_folder.Path().u16string();
    const auto open = [](std::u16string_view path) {
        return ErrorNumberOf([&] { static_cast<void>(Files().OpenForReading(path)); });
    };
    const auto replace = [](std::u16string_view path) {
        return ErrorNumberOf([&] { static_cast<void>(Files().ReplaceFile(path)); });
    };
    EXPECT_EQ(open(File(u"none")), kErrFileNotFound);
    EXPECT_EQ(open(File(u"none\\none")), kErrPathNotFound);
    EXPECT_EQ(open(folder), kErrPathFileAccess);
    EXPECT_EQ(open(u""), kErrBadFileName);
    EXPECT_EQ(open(File(u"a?b*c")), kErrBadFileName);
    EXPECT_EQ(open(std::u16string(u"a\0b", 3)), kErrBadFileName);
    EXPECT_EQ(replace(File(u"none\\none")), kErrPathNotFound);
    EXPECT_EQ(replace(folder), kErrPathFileAccess);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(Files().CreateInPlace(folder)); }), kErrPathFileAccess);
}

TEST_F(FilesWindows, ThatAreReadOnlyAreNotReplaced)
{
    Replace(File(u"a"), "old");
    ASSERT_TRUE(SetFileAttributesW(Wide(File(u"a")).c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(Files().ReplaceFile(File(u"a"))); }),
              kErrPermissionDenied);
    EXPECT_EQ(Content(File(u"a")), "old");
    EXPECT_TRUE(SetFileAttributesW(Wide(File(u"a")).c_str(), FILE_ATTRIBUTE_NORMAL));
}

TEST_F(FilesWindows, AreRereadableUnlikeDevicesAndPipes)
{
    Replace(File(u"a"), "content");
    EXPECT_TRUE(IsRereadable(File(u"a")));
    EXPECT_TRUE(IsRereadable(File(u"none")));
    EXPECT_FALSE(IsRereadable(u"NUL"));
}

TEST_F(FilesWindows, AreTheSameInWhateverLetters)
{
    Replace(File(u"a"), "content");
    Replace(File(u"b"), "content");
    EXPECT_TRUE(AreSameFile(File(u"A"), File(u"a")));
    EXPECT_TRUE(AreSameFile(File(u"NONE"), File(u"none")));
    EXPECT_FALSE(AreSameFile(File(u"A"), File(u"b")));
}

TEST_F(FilesWindows, HavePathsThatSurviveTheWayToNativeBytes)
{
    for (const std::u16string path : {u"C:\\a", u"\u4E2D\u0416 \U0001F528", u"\xD83D alone"})
        EXPECT_EQ(PathFromNative(PathToNative(path)), path);
}

} // namespace KestrinProductEditor
