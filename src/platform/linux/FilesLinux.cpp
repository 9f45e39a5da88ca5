// SPDX-License-Identifier: MIT
#include "platform/FileKind.h"
#include "platform/Files.h"

#include "platform/Text.h"

#include <KestrinProductEditor/AutomationError.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <sys/file.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace KestrinProductEditor {

namespace {

struct SplitPath
{
    std::string folder; // never empty
    std::string name;   // empty for a path that ends in a slash
};

[[nodiscard]] SplitPath Split(const std::string& path)
{
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {".", path};
    return {slash == 0 ? "/" : path.substr(0, slash), path.substr(slash + 1)};
}

[[nodiscard]] bool IsFolder(const std::string& path)
{
    struct stat status;
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

[[nodiscard]] std::int32_t ErrorNumberOf(int error, const std::string& path)
{
    switch (error) {
    case ENOENT:
        return IsFolder(Split(path).folder) ? kErrFileNotFound : kErrPathNotFound;
    case ENOTDIR:
        return kErrPathNotFound;
    case EACCES:
    case EPERM:
    case EROFS:
        return kErrPermissionDenied;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return kErrDiskFull;
    case EIO:
        return kErrDeviceIO;
    case ENAMETOOLONG:
    case EINVAL:
    case EBADF:
        return kErrBadFileName;
    default:
        return kErrPathFileAccess;
    }
}

[[nodiscard]] AutomationError FailureError(std::int32_t number, std::string_view doing,
                                           const std::string& path, std::string_view reason)
{
    return AutomationError(number, u"",
                           AutomationError::TextOf(number) + u": cannot " + ToUtf16(doing) + u" '" +
                               PathFromNative(path) + u"': " + ToUtf16(reason));
}

/// The one place where the system's error numbers become ours. `doing` is a verb: "open".
[[nodiscard]] AutomationError FileError(std::string_view doing, const std::string& path, int error)
{
    const char* const reason = strerrordesc_np(error);
    return FailureError(ErrorNumberOf(error, path), doing, path,
                        std::string(reason != nullptr ? reason : "Unknown error") + " (error " +
                            std::to_string(error) + ")");
}

[[nodiscard]] std::string NativePath(std::string_view doing, std::u16string_view path)
{
    std::string native = PathToNative(path);
    if (native.empty() || native.find('\0') != std::string::npos)
        throw FileError(doing, native, EINVAL);
    return native;
}

/// An open file descriptor, or none.
class Descriptor
{
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        Descriptor(std::move(other)).PrvSwap(*this);
        return *this;
    }
    ~Descriptor()
    {
        if (IsOpen())
            close(m_number);
    }

    [[nodiscard]] int Number() const noexcept { return m_number; }
    [[nodiscard]] bool IsOpen() const noexcept { return m_number >= 0; }
    [[nodiscard]] int Release() noexcept { return std::exchange(m_number, -1); }

private:
    void PrvSwap(Descriptor& other) noexcept { std::swap(m_number, other.m_number); }

    int m_number = -1;
};

/// Opens, and opens again when a signal came between; none and errno on failure.
[[nodiscard]] Descriptor OpenAt(int folder, const std::string& path, int flags, mode_t mode = 0)
{
    int number;
    do
        number = openat(folder, path.c_str(), flags | O_CLOEXEC, mode);
    while (number < 0 && errno == EINTR);
    return Descriptor(number);
}

void WriteAll(int file, std::string_view bytes, const std::string& path)
{
    while (!bytes.empty()) {
        const ssize_t count = write(file, bytes.data(), bytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw FileError("write", path, errno);
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
}

[[nodiscard]] bool Sync(int file)
{
    int result;
    do
        result = fsync(file);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

class ReadStream final : public IReadStream
{
public:
    ReadStream(Descriptor file, std::uint64_t size, std::string path)
        : m_file(std::move(file)), m_size(size), m_path(std::move(path))
    {
    }

    [[nodiscard]] std::uint64_t Size() const override { return m_size; }

    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
    {
        for (;;) {
            const ssize_t count = read(m_file.Number(), buffer, size);
            if (count >= 0)
                return static_cast<std::size_t>(count);
            if (errno != EINTR)
                throw FileError("read", m_path, errno);
        }
    }

private:
    Descriptor m_file;
    std::uint64_t m_size;
    std::string m_path;
};

class InPlaceStream final : public IWriteStream
{
public:
    InPlaceStream(Descriptor file, std::string path) : m_file(std::move(file)), m_path(std::move(path)) {}

    void Write(std::string_view bytes) override { WriteAll(m_file.Number(), bytes, m_path); }

    void Close() override
    {
        // The descriptor is gone whatever close answers: a second attempt could hit another thread's file.
        if (m_file.IsOpen() && close(m_file.Release()) != 0 && errno != EINTR)
            throw FileError("write", m_path, errno);
    }

private:
    Descriptor m_file;
    std::string m_path;
};

/// The folder of a file that is being replaced, and the temporary files in it.
///
/// The name of a temporary file says whose it is: ".corvprd2.cpd.kstnedit-0123456789ab". Its writer holds a
/// lock on it, which the system takes away when the writer's process ends; one that can be locked is left
/// over.
class ReplacementFolder
{
public:
    explicit ReplacementFolder(const std::string& path) : m_path(path), m_target(Split(path))
    {
        m_folder = OpenAt(AT_FDCWD, m_target.folder, O_RDONLY | O_DIRECTORY);
        // A folder that may be searched and written to, but not listed.
        if (!m_folder.IsOpen() && errno == EACCES)
            m_folder = OpenAt(AT_FDCWD, m_target.folder, O_PATH | O_DIRECTORY);
        if (!m_folder.IsOpen())
            throw FileError("replace", path, errno);

        std::string head = m_target.name.substr(0, NAME_MAX - kMark.size() - kRandomDigits - 1);
        while (head.size() < m_target.name.size() && !head.empty() && !IsValidUtf8(head))
            head.pop_back();
        m_prefix = "." + (head.empty() ? std::string("file") : head) + std::string(kMark);
    }

    /// Removes what writers that were killed have left behind. Never fails: what cannot be removed stays.
    void RemoveLeftovers() const
    {
        struct FolderCloser
        {
            void operator()(DIR* folder) const noexcept { closedir(folder); }
        };
        Descriptor list = OpenAt(m_folder.Number(), ".", O_RDONLY | O_DIRECTORY);
        if (!list.IsOpen())
            return;
        const std::unique_ptr<DIR, FolderCloser> entries(fdopendir(list.Number()));
        if (entries == nullptr)
            return;
        static_cast<void>(list.Release());
        while (const dirent* const entry = readdir(entries.get())) {
            const std::string name = entry->d_name;
            if (!PrvIsTemporaryName(name))
                continue;
            const Descriptor file = OpenAt(m_folder.Number(), name, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
            struct stat status;
            if (file.IsOpen() && fstat(file.Number(), &status) == 0 && S_ISREG(status.st_mode) &&
                flock(file.Number(), LOCK_EX | LOCK_NB) == 0)
                Remove(name);
        }
    }

    struct Temporary
    {
        Descriptor file;
        std::string name;
    };

    [[nodiscard]] Temporary Create(mode_t mode) const
    {
        constexpr int kAttempts = 100;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            Temporary temporary{Descriptor(), PrvRandomName()};
            temporary.file =
                OpenAt(m_folder.Number(), temporary.name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
            if (!temporary.file.IsOpen()) {
                if (errno == EEXIST)
                    continue;
                throw FileError("replace", m_path, errno);
            }
            // Between the two calls another writer may have taken the new file for a leftover.
            const bool isLocked = flock(temporary.file.Number(), LOCK_EX | LOCK_NB) == 0;
            if (!isLocked && errno == EWOULDBLOCK) {
                Remove(temporary.name);
                continue;
            }
            struct stat status;
            if (fstat(temporary.file.Number(), &status) == 0 && status.st_nlink == 0)
                continue;
            return temporary;
        }
        throw FileError("replace", m_path, EEXIST);
    }

    void Remove(const std::string& name) const noexcept { unlinkat(m_folder.Number(), name.c_str(), 0); }

    void PutInPlace(const std::string& name) const
    {
        if (renameat(m_folder.Number(), name.c_str(), m_folder.Number(), m_target.name.c_str()) != 0)
            throw FileError("replace", m_path, errno);
    }

    /// Makes the new name last through a loss of power. Not every file system can do that for a folder; only
    /// a failing device is worth an error.
    void SyncFolder() const
    {
        if (!Sync(m_folder.Number()) && (errno == EIO || errno == ENOSPC || errno == EDQUOT))
            throw FileError("flush the folder of", m_path, errno);
    }

private:
    static constexpr std::string_view kMark = ".kstnedit-";
    static constexpr std::size_t kRandomDigits = 12;

    [[nodiscard]] std::string PrvRandomName() const
    {
        std::array<unsigned char, kRandomDigits / 2> bytes;
        if (getrandom(bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
            throw FileError("replace", m_path, errno);
        std::string name = m_prefix;
        for (const unsigned byte : bytes) {
            name.push_back(kDigits[byte >> 4]);
            name.push_back(kDigits[byte & 0xF]);
        }
        return name;
    }

    [[nodiscard]] bool PrvIsTemporaryName(const std::string& name) const
    {
        return name.size() == m_prefix.size() + kRandomDigits && name.starts_with(m_prefix) &&
               name.find_first_not_of(kDigits, m_prefix.size()) == std::string::npos;
    }

    static constexpr std::string_view kDigits = "0123456789abcdef";

    std::string m_path;
    SplitPath m_target;
    std::string m_prefix;
    Descriptor m_folder;
};

class ReplacementStream final : public IWriteStream
{
public:
    /// `existing` is what stands at `path` now, or nothing.
    ReplacementStream(const std::string& path, const std::optional<struct stat>& existing)
        : m_path(path), m_folder(path)
    {
        m_folder.RemoveLeftovers();
        m_temporary = m_folder.Create(existing ? S_IRUSR | S_IWUSR : 0666);
        if (existing)
            PrvTakeOver(*existing);
    }

    ReplacementStream(const ReplacementStream&) = delete;
    ReplacementStream& operator=(const ReplacementStream&) = delete;
    ~ReplacementStream() override { PrvAbandon(); }

    void Write(std::string_view bytes) override
    {
        try {
            WriteAll(m_temporary.file.Number(), bytes, m_path);
        } catch (...) {
            // What is left of the new content must never take the target's name.
            PrvAbandon();
            throw;
        }
    }

    void Close() override
    {
        if (m_isInPlace)
            return;
        try {
            if (!Sync(m_temporary.file.Number()))
                throw FileError("write", m_path, errno);
            m_folder.PutInPlace(m_temporary.name);
        } catch (...) {
            PrvAbandon();
            throw;
        }
        m_isInPlace = true;
        m_temporary.file = Descriptor();
        m_folder.SyncFolder();
    }

private:
    /// Owner first: a change of owner takes mode bits away. A file system without owners or modes refuses,
    /// and the file is as good as one there can be.
    void PrvTakeOver(const struct stat& existing)
    {
        const int file = m_temporary.file.Number();
        mode_t kept = 07777;
        if (fchown(file, existing.st_uid, existing.st_gid) != 0) {
            constexpr uid_t kSameOwner = static_cast<uid_t>(-1);
            static_cast<void>(fchown(file, kSameOwner, existing.st_gid) == 0);
            kept = 0777; // to run as the owner means something else under another owner
        }
        fchmod(file, existing.st_mode & kept);
    }

    void PrvAbandon() noexcept
    {
        if (!m_temporary.file.IsOpen())
            return;
        m_folder.Remove(m_temporary.name);
        m_temporary.file = Descriptor();
    }

    std::string m_path;
    ReplacementFolder m_folder;
    ReplacementFolder::Temporary m_temporary;
    bool m_isInPlace = false;
};

/// Where `path` leads after every symbolic link at its end, whether or not something stands there.
[[nodiscard]] std::string FinalTarget(const std::string& path)
{
    constexpr int kMostLinks = 40;
    std::string target = path;
    for (int followed = 0; followed < kMostLinks; ++followed) {
        std::array<char, PATH_MAX> link;
        const ssize_t length = readlink(target.c_str(), link.data(), link.size());
        if (length < 0) {
            if (errno == EINVAL || errno == ENOENT)
                return target;
            throw FileError("replace", path, errno);
        }
        std::string next(link.data(), static_cast<std::size_t>(length));
        if (next.starts_with('/'))
            target = std::move(next);
        else
            target = Split(target).folder.append("/").append(next);
    }
    throw FileError("replace", path, ELOOP);
}

class LinuxFileSystem final : public IFileSystem
{
public:
    [[nodiscard]] std::u16string BuildPath(std::u16string_view folder,
                                           std::u16string_view name) const override
    {
        std::u16string path(folder);
        if (!folder.empty() && !name.empty() && !folder.ends_with(u'/') && !name.starts_with(u'/'))
            path += u'/';
        path += name;
        return path;
    }

    [[nodiscard]] bool FileExists(std::u16string_view path) const override
    {
        if (path.empty())
            return false;
        const std::string native = NativePath("look for", path);
        struct stat status;
        if (stat(native.c_str(), &status) == 0)
            return !S_ISDIR(status.st_mode);
        if (errno == ENOENT || errno == ENOTDIR)
            return false;
        throw FileError("look for", native, errno);
    }

    [[nodiscard]] std::unique_ptr<IReadStream> OpenForReading(std::u16string_view path) override
    {
        const std::string native = NativePath("open", path);
        Descriptor file = OpenAt(AT_FDCWD, native, O_RDONLY | O_NOCTTY);
        struct stat status;
        if (!file.IsOpen() || fstat(file.Number(), &status) != 0)
            throw FileError("open", native, errno);
        if (S_ISDIR(status.st_mode))
            throw FileError("open", native, EISDIR);
        const std::uint64_t size = S_ISREG(status.st_mode) ? static_cast<std::uint64_t>(status.st_size) : 0;
        return std::make_unique<ReadStream>(std::move(file), size, native);
    }

    [[nodiscard]] std::unique_ptr<IWriteStream> CreateInPlace(std::u16string_view path) override
    {
        const std::string native = NativePath("create", path);
        Descriptor file = OpenAt(AT_FDCWD, native, O_WRONLY | O_CREAT | O_TRUNC | O_NOCTTY, 0666);
        if (!file.IsOpen())
            throw FileError("create", native, errno);
        return std::make_unique<InPlaceStream>(std::move(file), native);
    }

    [[nodiscard]] std::unique_ptr<IWriteStream> ReplaceFile(std::u16string_view path) override
    {
        const std::string native = NativePath("replace", path);
        const std::string target = FinalTarget(native);
        std::optional<struct stat> existing(std::in_place);
        if (stat(target.c_str(), &*existing) != 0) {
            if (errno != ENOENT || Split(target).name.empty())
                throw FileError("replace", target, errno);
            existing.reset();
        } else if (S_ISDIR(existing->st_mode)) {
            throw FileError("replace", native, EISDIR);
        } else if (!S_ISREG(existing->st_mode)) {
            // A device or a pipe: a file in its place would be another thing.
            throw FailureError(kErrPathFileAccess, "replace", native, "it is no ordinary file");
        } else if (faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
            throw FileError("replace", native, errno);
        }
        return std::make_unique<ReplacementStream>(target, existing);
    }
};

constexpr char16_t kEscapeBase = 0xDC00;

} // namespace

IFileSystem& PlatformFileSystem()
{
    // Never destroyed: a host may release its last store after the end of main.
    static auto& fileSystem = *new LinuxFileSystem;
    return fileSystem;
}

bool IsRereadable(std::u16string_view path)
{
    struct stat status;
    if (stat(PathToNative(path).c_str(), &status) != 0)
        return true;
    return !S_ISFIFO(status.st_mode) && !S_ISSOCK(status.st_mode) && !S_ISCHR(status.st_mode);
}

bool AreSameFile(std::u16string_view left, std::u16string_view right)
{
    const std::filesystem::path leftPath = PathToNative(left);
    const std::filesystem::path rightPath = PathToNative(right);
    std::error_code error;
    if (std::filesystem::equivalent(leftPath, rightPath, error))
        return true;
    const std::filesystem::path leftTarget = std::filesystem::weakly_canonical(leftPath, error);
    if (error)
        return false;
    const std::filesystem::path rightTarget = std::filesystem::weakly_canonical(rightPath, error);
    return !error &&
           std::filesystem::absolute(leftTarget, error) == std::filesystem::absolute(rightTarget, error);
}

std::string PathToNative(std::u16string_view path)
{
    std::string native;
    native.reserve(path.size());
    std::size_t done = 0;
    for (std::size_t at = 0; at < path.size(); ++at) {
        const bool isEscape = path[at] >= kEscapeBase + 0x80 && path[at] <= kEscapeBase + 0xFF;
        const bool isSecondHalf = at > done && (path[at - 1] & 0xFC00) == 0xD800;
        if (!isEscape || isSecondHalf)
            continue;
        AppendUtf8(path.substr(done, at - done), native);
        native.push_back(static_cast<char>(path[at] - kEscapeBase));
        done = at + 1;
    }
    AppendUtf8(path.substr(done), native);
    return native;
}

std::u16string PathFromNative(std::string_view path)
{
    if (IsValidUtf8(path))
        return ToUtf16(path);
    std::u16string text;
    std::size_t at = 0;
    while (at < path.size()) {
        std::size_t next = at;
        static_cast<void>(NextCodePoint(path, next));
        const std::string_view character = path.substr(at, next - at);
        if (IsValidUtf8(character)) {
            text += ToUtf16(character);
            at = next;
        } else {
            text.push_back(static_cast<char16_t>(kEscapeBase + static_cast<unsigned char>(path[at])));
            ++at;
        }
    }
    return text;
}

} // namespace KestrinProductEditor
