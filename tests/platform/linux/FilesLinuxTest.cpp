// SPDX-License-Identifier: MIT
#include "platform/FileKind.h"
#include "platform/Files.h"

#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <string>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;

[[nodiscard]] IFileSystem& Files()
{
    return PlatformFileSystem();
}

void Replace(std::u16string_view path, std::string_view content)
{
    const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(path);
    stream->Write(content);
    stream->Close();
}

[[nodiscard]] mode_t ModeOf(const std::filesystem::path& path)
{
    struct stat status;
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

[[nodiscard]] std::int32_t OpenError(std::u16string_view path)
{
    return ErrorNumberOf([&] { static_cast<void>(Files().OpenForReading(path)); });
}

[[nodiscard]] std::int32_t CreateError(std::u16string_view path)
{
    return ErrorNumberOf([&] { static_cast<void>(Files().CreateInPlace(path)); });
}

[[nodiscard]] std::int32_t ReplaceError(std::u16string_view path)
{
    return ErrorNumberOf([&] { static_cast<void>(Files().ReplaceFile(path)); });
}

/// The system refuses nothing to root: in this scope the process is an ordinary user.
class OrdinaryUser
{
public:
    OrdinaryUser()
    {
        if (m_isRoot && seteuid(65534) != 0)
            ADD_FAILURE() << "cannot give up the rights of root";
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;
    ~OrdinaryUser()
    {
        if (m_isRoot && seteuid(0) != 0)
            ADD_FAILURE() << "cannot take the rights of root back";
    }

private:
    bool m_isRoot = geteuid() == 0;
};

/// No file of this process may grow beyond `size` in this scope: a disk that fills up.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t size)
    {
        m_previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_previous);
        const struct rlimit limit = {size, m_previous.rlim_max};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0)
            ADD_FAILURE() << "cannot limit the size of files";
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk()
    {
        setrlimit(RLIMIT_FSIZE, &m_previous);
        std::signal(SIGXFSZ, m_previousHandler);
    }

private:
    struct rlimit m_previous;
    void (*m_previousHandler)(int);
};

class ScopedMask
{
public:
    explicit ScopedMask(mode_t mask) : m_previous(umask(mask)) {}
    ScopedMask(const ScopedMask&) = delete;
    ScopedMask& operator=(const ScopedMask&) = delete;
    ~ScopedMask() { umask(m_previous); }

private:
    mode_t m_previous;
};

/// Starts `work` in a process of its own, which never comes back into the test.
template<typename Work>
[[nodiscard]] pid_t Start(Work work)
{
    const pid_t child = fork();
    if (child == 0) {
        try {
            work();
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }
    EXPECT_GT(child, 0) << "cannot start a process";
    return child;
}

/// The signal that ended `child`; 0 when it ended by itself.
[[nodiscard]] int SignalOf(pid_t child)
{
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

} // namespace

TEST(LinuxPath, KeepsEveryByte)
{
    const struct
    {
        std::string_view native;
        std::u16string path;
    } cases[] = {
        {"", u""},
        {"/srv/Pr\xC3\xB6"
         "be.csv",
         u"/srv/Pr\u00F6be.csv"},
        {"/srv/\xF0\x9F\x94\xA9", u"/srv/\U0001F529"},
        {"a\xFF"
         "b",
         {u'a', 0xDCFF, u'b'}},
        {"\xC3", {0xDCC3}},
        {"\xC3\xC3\xA9", {0xDCC3, 0x00E9}},
        {"\xE2\x82/", {0xDCE2, 0xDC82, u'/'}},
        {"\xED\xA0\x80", {0xDCED, 0xDCA0, 0xDC80}},
        {"\xED\xB2\x80", {0xDCED, 0xDCB2, 0xDC80}},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(PathFromNative(entry.native), entry.path);
        EXPECT_EQ(PathToNative(entry.path), entry.native);
    }
    for (int first = 1; first < 256; ++first) {
        for (int second = 1; second < 256; ++second) {
            const std::string native = {'x', static_cast<char>(first), static_cast<char>(second)};
            ASSERT_EQ(PathToNative(PathFromNative(native)), native);
        }
    }
}

TEST(LinuxPath, TakesTheSecondHalfOfACharacterForNoByte)
{
    EXPECT_EQ(PathToNative(u"\U00010080"), "\xF0\x90\x82\x80");
    EXPECT_EQ(PathToNative(std::u16string{0xD83D, u'a'}), "\xED\xA0\xBD"
                                                          "a");
}

TEST(LinuxFiles, OpenANameThatIsNoText)
{
    const TemporaryFolder folder;
    const std::u16string path = folder.Path().u16string() + std::u16string{u'/', u'a', 0xDCFF};
    Replace(path, "content");
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"a\xFF"});
    EXPECT_TRUE(Files().FileExists(path));
    EXPECT_EQ(Files().OpenForReading(path)->Size(), 7u);
}

TEST(LinuxFiles, ExistUnlessTheyAreFolders)
{
    const TemporaryFolder folder;
    folder.Write("a", "");
    std::filesystem::create_symlink("a", folder.Path() / "link");
    std::filesystem::create_symlink(".", folder.Path() / "folder");
    EXPECT_TRUE(Files().FileExists(folder.File("a")));
    EXPECT_TRUE(Files().FileExists(folder.File("link")));
    EXPECT_TRUE(Files().FileExists(u"/dev/null"));
    EXPECT_FALSE(Files().FileExists(folder.File("dangling")));
    EXPECT_FALSE(Files().FileExists(folder.File("folder")));
    EXPECT_FALSE(Files().FileExists(folder.File(".")));
    EXPECT_FALSE(Files().FileExists(folder.File("none")));
    EXPECT_FALSE(Files().FileExists(folder.File("none/a")));
    EXPECT_FALSE(Files().FileExists(folder.File("a/b")));
    EXPECT_FALSE(Files().FileExists(u""));
}

TEST(LinuxFiles, RaiseWhenItCannotBeFoundOutWhetherTheyExist)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink("loop", folder.Path() / "loop");
    const auto look = [](std::u16string_view path) {
        return ErrorNumberOf([&] { static_cast<void>(Files().FileExists(path)); });
    };
    EXPECT_EQ(look(folder.File("loop")), kErrPathFileAccess);
    EXPECT_EQ(look(folder.File(std::string(300, 'x'))), kErrBadFileName);
    EXPECT_EQ(look(std::u16string(u"/tmp/a\0b", 8)), kErrBadFileName);
    std::filesystem::create_directory(folder.Path() / "closed");
    chmod((folder.Path() / "closed").c_str(), 0);
    {
        const OrdinaryUser user;
        EXPECT_EQ(look(folder.File("closed/a")), kErrPermissionDenied);
    }
    chmod((folder.Path() / "closed").c_str(), 0700);
}

TEST(LinuxFiles, RaiseThePlatformsNumbers)
{
    const TemporaryFolder folder;
    folder.Write("file", "");
    std::filesystem::create_directory(folder.Path() / "folder");
    std::filesystem::create_symlink("loop", folder.Path() / "loop");
    const struct
    {
        const char* name;
        std::int32_t open;
        std::int32_t create;
        std::int32_t replace;
    } cases[] = {
        {"none", kErrFileNotFound, 0, 0},
        {"none/a", kErrPathNotFound, kErrPathNotFound, kErrPathNotFound},
        {"file/a", kErrPathNotFound, kErrPathNotFound, kErrPathNotFound},
        {"folder", kErrPathFileAccess, kErrPathFileAccess, kErrPathFileAccess},
        {"folder/", kErrPathFileAccess, kErrPathFileAccess, kErrPathFileAccess},
        {"loop", kErrPathFileAccess, kErrPathFileAccess, kErrPathFileAccess},
    };
    for (const auto& entry : cases) {
        EXPECT_EQ(OpenError(folder.File(entry.name)), entry.open) << entry.name;
        EXPECT_EQ(ReplaceError(folder.File(entry.name)), entry.replace) << entry.name;
        EXPECT_EQ(CreateError(folder.File(entry.name)), entry.create) << entry.name;
    }
    EXPECT_EQ(ReplaceError(folder.File("new/")), kErrPathNotFound);
    for (const std::u16string& path :
         {std::u16string(), folder.File(std::string(300, 'x')), std::u16string(u"a\0b", 3)}) {
        EXPECT_EQ(OpenError(path), kErrBadFileName);
        EXPECT_EQ(CreateError(path), kErrBadFileName);
        EXPECT_EQ(ReplaceError(path), kErrBadFileName);
    }
}

TEST(LinuxFiles, TellWhatFailedThenThePathThenTheReason)
{
    const TemporaryFolder folder;
    const std::u16string path = folder.File("none");
    const auto missing = ErrorOf([&] { static_cast<void>(Files().OpenForReading(path)); });
    ASSERT_TRUE(missing);
    EXPECT_EQ(missing->Description(),
              u"File not found: cannot open '" + path + u"': No such file or directory (error 2)");
    const std::u16string own = folder.Path().u16string();
    const auto open = ErrorOf([&] { static_cast<void>(Files().OpenForReading(own)); });
    ASSERT_TRUE(open);
    EXPECT_EQ(open->Description(),
              u"Path/File access error: cannot open '" + own + u"': Is a directory (error 21)");
    const auto create = ErrorOf([&] { static_cast<void>(Files().CreateInPlace(own)); });
    ASSERT_TRUE(create);
    EXPECT_EQ(create->Description(),
              u"Path/File access error: cannot create '" + own + u"': Is a directory (error 21)");
    const auto replace = ErrorOf([&] { static_cast<void>(Files().ReplaceFile(u"/dev/null")); });
    ASSERT_TRUE(replace);
    EXPECT_EQ(replace->Description(),
              u"Path/File access error: cannot replace '/dev/null': it is no ordinary file");
}

TEST(LinuxFiles, AreRefusedWithoutTheRights)
{
    const TemporaryFolder folder;
    chmod(folder.Path().c_str(), 0777);
    folder.Write("secret", "x");
    chmod((folder.Path() / "secret").c_str(), 0);
    folder.Write("readable", "old");
    chmod((folder.Path() / "readable").c_str(), 0444);
    std::filesystem::create_directory(folder.Path() / "fixed");
    chmod((folder.Path() / "fixed").c_str(), 0555);
    {
        const OrdinaryUser user;
        EXPECT_EQ(OpenError(folder.File("secret")), kErrPermissionDenied);
        EXPECT_EQ(OpenError(folder.File("readable")), 0);
        EXPECT_EQ(CreateError(folder.File("readable")), kErrPermissionDenied);
        EXPECT_EQ(ReplaceError(folder.File("readable")), kErrPermissionDenied);
        EXPECT_EQ(CreateError(folder.File("fixed/new")), kErrPermissionDenied);
        EXPECT_EQ(ReplaceError(folder.File("fixed/new")), kErrPermissionDenied);
    }
    EXPECT_THAT(folder.Names(), ElementsAre("fixed", "readable", "secret"));
    EXPECT_EQ(folder.Read("readable"), "old");
}

TEST(LinuxFiles, AreReplacedInAFolderThatCannotBeListed)
{
    const TemporaryFolder folder;
    const std::filesystem::path blind = folder.Path() / "blind";
    std::filesystem::create_directory(blind);
    chmod(folder.Path().c_str(), 0777);
    chmod(blind.c_str(), 0333);
    {
        const OrdinaryUser user;
        Replace(folder.File("blind/a"), "content");
        Replace(folder.File("blind/a"), "more");
    }
    chmod(blind.c_str(), 0777);
    EXPECT_EQ(folder.Read("blind/a"), "more");
}

TEST(LinuxFiles, OfADeviceHaveNoSize)
{
    const std::unique_ptr<IReadStream> stream = Files().OpenForReading(u"/dev/zero");
    EXPECT_EQ(stream->Size(), 0u);
    std::array<char, 3> buffer{'a', 'b', 'c'};
    EXPECT_EQ(stream->Read(buffer.data(), buffer.size()), 3u);
    EXPECT_EQ(buffer, (std::array<char, 3>{}));
}

TEST(LinuxFiles, WrittenInPlaceReportAFullDisk)
{
    const std::unique_ptr<IWriteStream> stream = Files().CreateInPlace(u"/dev/full");
    const auto error = ErrorOf([&] { stream->Write("x"); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), kErrDiskFull);
    EXPECT_EQ(error->Description(),
              u"Disk full: cannot write '/dev/full': No space left on device (error 28)");
}

TEST(LinuxFiles, WrittenInPlaceKeepWhatFitsOnAFullDisk)
{
    const TemporaryFolder folder;
    std::int32_t number = 0;
    {
        const std::unique_ptr<IWriteStream> stream = Files().CreateInPlace(folder.File("a"));
        const SmallDisk disk(5);
        number = ErrorNumberOf([&] { stream->Write("0123456789"); });
    }
    EXPECT_EQ(number, kErrDiskFull);
    EXPECT_EQ(folder.Read("a"), "01234");
}

TEST(LinuxFiles, RefuseToBeWrittenAfterClose)
{
    const TemporaryFolder folder;
    for (const bool isReplacement : {false, true}) {
        const std::unique_ptr<IWriteStream> stream =
            isReplacement ? Files().ReplaceFile(folder.File("a")) : Files().CreateInPlace(folder.File("a"));
        stream->Write("content");
        stream->Close();
        stream->Close();
        EXPECT_EQ(ErrorNumberOf([&] { stream->Write("more"); }), kErrBadFileName);
        EXPECT_EQ(folder.Read("a"), "content");
    }
}

TEST(LinuxFiles, AreTheSameBehindSymbolicLinksAndOnRelativePaths)
{
    const TemporaryFolder folder;
    folder.Write("a", "content");
    std::filesystem::create_directory_symlink(".", folder.Path() / "here");
    std::filesystem::create_symlink("here/a", folder.Path() / "link");
    std::filesystem::create_symlink("none", folder.Path() / "dangling");
    EXPECT_TRUE(AreSameFile(folder.File("link"), folder.File("a")));
    EXPECT_TRUE(AreSameFile(folder.File("here/a"), folder.File("link")));
    EXPECT_TRUE(AreSameFile(std::filesystem::relative(folder.Path() / "a").u16string(), folder.File("a")));
    EXPECT_TRUE(AreSameFile(folder.File("here/none"), folder.File("none")));
    EXPECT_FALSE(AreSameFile(folder.File("link"), folder.File("none")));
}

TEST(LinuxReplacement, WritesItsTemporaryFileInTheTargetsFolder)
{
    const TemporaryFolder folder;
    folder.Write("corvprd2.cpd", "old");
    const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(folder.File("corvprd2.cpd"));
    stream->Write("new");
    const std::vector<std::string> names = folder.Names();
    ASSERT_EQ(names.size(), 2u);
    EXPECT_THAT(names[0], testing::MatchesRegex("\\.corvprd2\\.cpd\\.kstnedit-[0-9a-f]+"));
    EXPECT_EQ(folder.Read(names[0]), "new");
    stream->Close();
    EXPECT_THAT(folder.Names(), ElementsAre("corvprd2.cpd"));
}

TEST(LinuxReplacement, KeepsTheModeOfTheFile)
{
    const TemporaryFolder folder;
    const ScopedMask mask(022);
    for (const mode_t mode : {0600u, 0604u, 0640u, 0666u, 0777u}) {
        folder.Write("a", "old");
        chmod((folder.Path() / "a").c_str(), mode);
        Replace(folder.File("a"), "new");
        EXPECT_EQ(ModeOf(folder.Path() / "a"), mode);
        EXPECT_EQ(folder.Read("a"), "new");
    }
}

TEST(LinuxReplacement, KeepsTheOwnerWhereThatIsAllowed)
{
    const TemporaryFolder folder;
    folder.Write("a", "old");
    const bool isRoot = geteuid() == 0;
    const uid_t owner = isRoot ? 12345 : geteuid();
    const gid_t group = isRoot ? 23456 : getegid();
    ASSERT_EQ(chown((folder.Path() / "a").c_str(), owner, group), 0);
    chmod((folder.Path() / "a").c_str(), 0640);
    Replace(folder.File("a"), "new");
    struct stat status;
    ASSERT_EQ(stat((folder.Path() / "a").c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, owner);
    EXPECT_EQ(status.st_gid, group);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST(LinuxReplacement, GivesANewFileTheUsualMode)
{
    const TemporaryFolder folder;
    {
        const ScopedMask mask(027);
        Replace(folder.File("a"), "new");
    }
    EXPECT_EQ(ModeOf(folder.Path() / "a"), 0640u);
    {
        const ScopedMask mask(0);
        Replace(folder.File("b"), "new");
    }
    EXPECT_EQ(ModeOf(folder.Path() / "b"), 0666u);
}

TEST(LinuxReplacement, FollowsSymbolicLinksToTheEnd)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "real");
    folder.Write("real/a", "old");
    std::filesystem::create_symlink("real/a", folder.Path() / "relative");
    std::filesystem::create_symlink(folder.Path() / "relative", folder.Path() / "absolute");
    Replace(folder.File("absolute"), "new");
    EXPECT_EQ(folder.Read("real/a"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "absolute"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "relative"));
    EXPECT_THAT(folder.Names(), ElementsAre("absolute", "real", "relative"));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path() / "real"), {}), 1);
}

TEST(LinuxReplacement, CreatesTheTargetOfADanglingLink)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink("target", folder.Path() / "link");
    Replace(folder.File("link"), "new");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path() / "link"));
    EXPECT_FALSE(std::filesystem::is_symlink(folder.Path() / "target"));
    EXPECT_EQ(folder.Read("target"), "new");
    std::filesystem::create_symlink("none/target", folder.Path() / "lost");
    EXPECT_EQ(ReplaceError(folder.File("lost")), kErrPathNotFound);
}

TEST(LinuxReplacement, LeavesFoldersAndDevicesAlone)
{
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.Path() / "folder");
    std::filesystem::create_symlink("folder", folder.Path() / "link");
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0666), 0);
    for (const char* name : {"folder", "link", "pipe"})
        EXPECT_EQ(ReplaceError(folder.File(name)), kErrPathFileAccess) << name;
    EXPECT_THAT(folder.Names(), ElementsAre("folder", "link", "pipe"));
    EXPECT_EQ(std::filesystem::status(folder.Path() / "pipe").type(), std::filesystem::file_type::fifo);
}

TEST(LinuxReplacement, TakesALongName)
{
    const TemporaryFolder folder;
    const std::string ascii(255, 'x');
    std::string wide;
    while (wide.size() + 3 <= 255)
        wide += "\xEA\xB0\x80";
    const std::string bytes(255, '\xFF');
    for (const std::string& name : {ascii, wide, bytes}) {
        const std::u16string path = PathFromNative((folder.Path() / name).string());
        Replace(path, "old");
        const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(path);
        stream->Write("new");
        for (const std::string& entry : folder.Names())
            EXPECT_TRUE(name == bytes || entry == bytes || IsValidUtf8(entry));
        stream->Close();
        EXPECT_EQ(folder.Read(name), "new");
    }
    EXPECT_EQ(folder.Names().size(), 3u);
}

TEST(LinuxReplacement, ReachesItsTargetWhenTheWorkingFolderChanges)
{
    const TemporaryFolder folder;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder.Path());
    const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(u"a");
    stream->Write("new");
    std::filesystem::current_path(before);
    stream->Close();
    EXPECT_THAT(folder.Names(), ElementsAre("a"));
    EXPECT_EQ(folder.Read("a"), "new");
}

TEST(LinuxReplacement, LeavesNothingBehindOnADiskThatFillsUpAtAnyByte)
{
    const TemporaryFolder folder;
    folder.Write("a", "old");
    const std::string content = "the new content";
    for (std::size_t size = 0; size <= content.size(); ++size) {
        std::int32_t writeError = 0;
        std::int32_t closeError = 0;
        {
            const SmallDisk disk(size);
            const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(folder.File("a"));
            writeError = ErrorNumberOf([&] { stream->Write(content); });
            closeError = ErrorNumberOf([&] { stream->Close(); });
        }
        const bool fits = size == content.size();
        EXPECT_EQ(writeError, fits ? 0 : kErrDiskFull) << size;
        EXPECT_EQ(closeError, fits ? 0 : kErrBadFileName) << size;
        EXPECT_THAT(folder.Names(), ElementsAre("a")) << size;
        EXPECT_EQ(folder.Read("a"), fits ? content : "old") << size;
    }
}

TEST(LinuxReplacement, LeavesNothingBehindWhenItsTargetBecomesAFolder)
{
    const TemporaryFolder folder;
    const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(folder.File("a"));
    stream->Write("new");
    std::filesystem::create_directory(folder.Path() / "a");
    EXPECT_EQ(ErrorNumberOf([&] { stream->Close(); }), kErrPathFileAccess);
    EXPECT_THAT(folder.Names(), ElementsAre("a"));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path() / "a"));
}

TEST(LinuxReplacement, RemovesWhatAKilledWriterLeft)
{
    const TemporaryFolder folder;
    folder.Write("a", "old");
    const pid_t child = Start([&folder] {
        const std::unique_ptr<IWriteStream> stream = Files().ReplaceFile(folder.File("a"));
        stream->Write("half of it");
        kill(getpid(), SIGKILL);
    });
    ASSERT_EQ(SignalOf(child), SIGKILL);
    EXPECT_EQ(folder.Names().size(), 2u);
    EXPECT_EQ(folder.Read("a"), "old");
    Replace(folder.File("a"), "new");
    EXPECT_THAT(folder.Names(), ElementsAre("a"));
    EXPECT_EQ(folder.Read("a"), "new");
}

TEST(LinuxReplacement, LeavesTheFilesOfLivingWritersAlone)
{
    const TemporaryFolder folder;
    const std::unique_ptr<IWriteStream> first = Files().ReplaceFile(folder.File("a"));
    const std::unique_ptr<IWriteStream> second = Files().ReplaceFile(folder.File("a"));
    EXPECT_EQ(folder.Names().size(), 2u);
    first->Write("first");
    second->Write("second");
    second->Close();
    EXPECT_EQ(folder.Read("a"), "second");
    first->Close();
    EXPECT_EQ(folder.Read("a"), "first");
    EXPECT_THAT(folder.Names(), ElementsAre("a"));
}

TEST(LinuxReplacement, LeavesFilesOfLikeNamesAlone)
{
    const TemporaryFolder folder;
    const std::vector<std::string> others = {
        ".a.backup",
        ".a.kstnedit-",
        ".a.kstnedit-0123456789",
        ".a.kstnedit-0123456789abc",
        ".a.kstnedit-0123456789xy",
        ".ab.kstnedit-0123456789ab",
        "a.kstnedit-0123456789ab",
    };
    for (const std::string& name : others)
        folder.Write(name, "mine");
    std::filesystem::create_directory(folder.Path() / ".a.kstnedit-0123456789ab");
    std::filesystem::create_symlink(".a.backup", folder.Path() / ".a.kstnedit-0123456789ac");
    Replace(folder.File("a"), "new");
    EXPECT_EQ(folder.Names().size(), others.size() + 3);
    EXPECT_EQ(folder.Read(".a.backup"), "mine");
}

TEST(LinuxReplacement, KilledAtAnyMomentLeavesTheOldContentOrTheNew)
{
    const TemporaryFolder folder;
    const std::string even(20000, 'e');
    const std::string odd(30000, 'o');
    folder.Write("a", even);
    for (int round = 0; round < 40; ++round) {
        const pid_t child = Start([&] {
            for (;;) {
                Replace(folder.File("a"), odd);
                Replace(folder.File("a"), even);
            }
        });
        ASSERT_GT(child, 0);
        usleep(static_cast<useconds_t>(1000 + 337 * round));
        kill(child, SIGKILL);
        ASSERT_EQ(SignalOf(child), SIGKILL);
        const std::string content = folder.Read("a");
        ASSERT_TRUE(content == even || content == odd) << content.size();
    }
    Replace(folder.File("a"), "new");
    EXPECT_THAT(folder.Names(), ElementsAre("a"));
}

} // namespace KestrinProductEditor
