// SPDX-License-Identifier: MIT
#include "platform/Files.h"
#include "platform/FileKind.h"

#include "fake/FailingFileSystem.h"
#include "fake/MemoryFiles.h"
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <thread>

namespace KestrinProductEditor {

namespace {

/// What every implementation of the file services promises.
class FileServices : public testing::TestWithParam<const char*>
{
protected:
    [[nodiscard]] IFileSystem& Files()
    {
        const std::string_view name = GetParam();
        if (name == "Platform")
            return PlatformFileSystem();
        return name == "Memory" ? static_cast<IFileSystem&>(m_memory) : m_failing;
    }

    [[nodiscard]] std::u16string File(std::string_view name) const { return m_folder.File(name); }

    [[nodiscard]] std::string Content(std::string_view name)
    {
        const std::unique_ptr<IReadStream> stream = Files().OpenForReading(File(name));
        std::string content;
        std::array<char, 7> buffer;
        while (const std::size_t count = stream->Read(buffer.data(), buffer.size()))
            content.append(buffer.data(), count);
        return content;
    }

    void Put(std::string_view name, std::string_view content)
    {
        const std::unique_ptr<IWriteStream> stream = Files().CreateInPlace(File(name));
        stream->Write(content);
        stream->Close();
    }

private:
    TemporaryFolder m_folder;
    MemoryFileSystem m_memory;
    FailingFileSystem m_failing{m_memory};
};

INSTANTIATE_TEST_SUITE_P(Of, FileServices, testing::Values("Platform", "Memory", "Failing"),
                         [](const auto& instance) { return std::string(instance.param); });

void WriteAndClose(IFileSystem& files, std::u16string_view path, std::string_view content)
{
    const std::unique_ptr<IWriteStream> stream = files.ReplaceFile(path);
    stream->Write(content);
    stream->Close();
}

} // namespace

TEST_P(FileServices, BuildAPathWithOneSeparatorWhereItIsNeeded)
{
    constexpr char16_t kSeparator = std::filesystem::path::preferred_separator;
    const std::u16string added{u'/', u'a', kSeparator, u'b'};
    const struct
    {
        std::u16string_view folder;
        std::u16string_view name;
        std::u16string_view path;
    } cases[] = {
        {u"/a", u"b", added},  {u"/a/", u"b", u"/a/b"}, {u"/a", u"/b", u"/a/b"}, {u"/a", u"", u"/a"},
        {u"/a/", u"", u"/a/"}, {u"/", u"b", u"/b"},     {u"", u"b", u"b"},       {u"", u"", u""},
    };
    for (const auto& entry : cases)
        EXPECT_EQ(Files().BuildPath(entry.folder, entry.name), entry.path);
}

TEST_P(FileServices, ReadBackWhatWasWritten)
{
    const std::string content("line\r\n\0\xFF and more", 17);
    EXPECT_FALSE(Files().FileExists(File("a")));
    Put("a", content);
    EXPECT_TRUE(Files().FileExists(File("a")));
    EXPECT_EQ(Content("a"), content);
    EXPECT_EQ(Files().OpenForReading(File("a"))->Size(), content.size());
}

TEST_P(FileServices, ReadNothingFromAnEmptyFile)
{
    Put("a", "");
    EXPECT_EQ(Content("a"), "");
    EXPECT_EQ(Files().OpenForReading(File("a"))->Size(), 0u);
}

TEST_P(FileServices, EmptyAnExistingFileThatIsWrittenInPlace)
{
    Put("a", "a long old content");
    Put("a", "new");
    EXPECT_EQ(Content("a"), "new");
}

TEST_P(FileServices, KeepWhatWasWrittenInPlaceWithoutClose)
{
    Files().CreateInPlace(File("a"))->Write("half");
    EXPECT_EQ(Content("a"), "half");
}

TEST_P(FileServices, ShowAReplacementOnlyAfterClose)
{
    Put("a", "old");
    const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(File("a"));
    stream->Write("new ");
    stream->Write("content");
    EXPECT_EQ(Content("a"), "old");
    stream->Close();
    EXPECT_EQ(Content("a"), "new content");
    stream->Close();
    EXPECT_EQ(Content("a"), "new content");
}

TEST_P(FileServices, DropAReplacementWithoutClose)
{
    Put("a", "old");
    Files().ReplaceFile(File("a"))->Write("new");
    EXPECT_EQ(Content("a"), "old");
    Files().ReplaceFile(File("b"))->Write("new");
    EXPECT_FALSE(Files().FileExists(File("b")));
}

TEST_P(FileServices, CreateAFileByReplacement)
{
    WriteAndClose(Files(), File("b"), "new");
    EXPECT_EQ(Content("b"), "new");
    WriteAndClose(Files(), File("c"), "");
    EXPECT_EQ(Content("c"), "");
}

TEST_P(FileServices, RefuseToReadAFileThatIsNotThere)
{
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(Files().OpenForReading(File("none"))); }),
              kErrFileNotFound);
}

TEST(FileKind, TellsOneFileUnderAnyOfItsNames)
{
    const TemporaryFolder folder;
    folder.Write("a", "content");
    folder.Write("b", "content");
    std::filesystem::create_directory(folder.Path() / "sub");
    std::filesystem::create_hard_link(folder.Path() / "a", folder.Path() / "second");
    for (const std::u16string& name :
         {folder.File("a"), folder.File("./a"), folder.File("sub/../a"), folder.File("second")}) {
        EXPECT_TRUE(AreSameFile(name, folder.File("a"))) << ToUtf8(name);
        EXPECT_TRUE(AreSameFile(folder.File("a"), name)) << ToUtf8(name);
        EXPECT_FALSE(AreSameFile(name, folder.File("b"))) << ToUtf8(name);
    }
}

TEST(FileKind, TellsAFileThatIsNotThereByItsPath)
{
    const TemporaryFolder folder;
    folder.Write("a", "content");
    EXPECT_TRUE(AreSameFile(folder.File("none"), folder.File("./none")));
    EXPECT_FALSE(AreSameFile(folder.File("none"), folder.File("other")));
    EXPECT_FALSE(AreSameFile(folder.File("none"), folder.File("a")));
    EXPECT_FALSE(AreSameFile(u"", folder.File("a")));
}

TEST(FileSystem, IsThePlatformsOutsideOfAScope)
{
    EXPECT_EQ(&FileSystem(), &PlatformFileSystem());
    MemoryFileSystem outer;
    MemoryFileSystem inner;
    {
        const ScopedFileSystem outerScope(outer);
        EXPECT_EQ(&FileSystem(), &outer);
        {
            const ScopedFileSystem innerScope(inner);
            EXPECT_EQ(&FileSystem(), &inner);
        }
        EXPECT_EQ(&FileSystem(), &outer);
    }
    EXPECT_EQ(&FileSystem(), &PlatformFileSystem());
}

TEST(FileSystem, OfAScopeIsThatOfOneThreadOnly)
{
    MemoryFileSystem memory;
    const ScopedFileSystem scope(memory);
    IFileSystem* other = nullptr;
    std::thread([&other] { other = &FileSystem(); }).join();
    EXPECT_EQ(other, &PlatformFileSystem());
}

TEST(FailingFileSystem, WritesUpToTheLimitAndFailsBeyond)
{
    MemoryFileSystem memory;
    FailingFileSystem failing(memory);
    failing.FailAfterWriting(5);
    const std::unique_ptr<IWriteStream> stream = failing.CreateInPlace(u"a");
    stream->Write("abc");
    EXPECT_EQ(ErrorNumberOf([&] { stream->Write("defg"); }), kErrDiskFull);
    EXPECT_EQ(memory.files[u"a"], "abcde");
    EXPECT_EQ(ErrorNumberOf([&] { stream->Write("x"); }), kErrDiskFull);
    EXPECT_EQ(failing.BytesWritten(), 5u);
    failing.Heal();
    stream->Write("fg");
    EXPECT_EQ(memory.files[u"a"], "abcdefg");
}

TEST(FailingFileSystem, ReadsUpToTheLimitAndFailsBeyond)
{
    MemoryFileSystem memory;
    memory.files[u"a"] = "abcdefg";
    FailingFileSystem failing(memory);
    failing.FailAfterReading(5, kErrInternal);
    const std::unique_ptr<IReadStream> stream = failing.OpenForReading(u"a");
    std::array<char, 10> buffer;
    EXPECT_EQ(stream->Read(buffer.data(), buffer.size()), 5u);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(stream->Read(buffer.data(), 1)); }), kErrInternal);
    EXPECT_EQ(failing.BytesRead(), 5u);
}

TEST(FailingFileSystem, FailsWhereItIsTold)
{
    MemoryFileSystem memory;
    memory.files[u"a"] = "old";
    FailingFileSystem failing(memory);
    failing.FailAtOpening(kErrPathNotFound);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(failing.OpenForReading(u"a")); }), kErrPathNotFound);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(failing.CreateInPlace(u"a")); }), kErrPathNotFound);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(failing.ReplaceFile(u"a")); }), kErrPathNotFound);
    failing.Heal();
    failing.FailAtLooking();
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(failing.FileExists(u"a")); }), kErrPermissionDenied);
    failing.Heal();
    failing.FailAtClosing();
    EXPECT_EQ(ErrorNumberOf([&] { WriteAndClose(failing, u"a", "new"); }), kErrDeviceIO);
    EXPECT_EQ(memory.files[u"a"], "old");
    failing.Heal();
    WriteAndClose(failing, u"a", "new");
    EXPECT_EQ(memory.files[u"a"], "new");
}

TEST(MemoryStreams, ReadInStepsAndKeepWhatIsWritten)
{
    MemoryReadStream in("abcde", 2);
    std::array<char, 10> buffer;
    EXPECT_EQ(in.Size(), 5u);
    EXPECT_EQ(in.Read(buffer.data(), buffer.size()), 2u);
    EXPECT_EQ(in.Read(buffer.data(), buffer.size()), 2u);
    EXPECT_EQ(in.Read(buffer.data(), buffer.size()), 1u);
    EXPECT_EQ(buffer[0], 'e');
    EXPECT_EQ(in.Read(buffer.data(), buffer.size()), 0u);

    std::string text;
    MemoryWriteStream out(text);
    out.Write("ab");
    out.Write("c");
    EXPECT_FALSE(out.IsClosed());
    out.Close();
    EXPECT_TRUE(out.IsClosed());
    EXPECT_EQ(text, "abc");
}

} // namespace KestrinProductEditor
