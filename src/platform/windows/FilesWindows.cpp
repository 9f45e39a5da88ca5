// SPDX-License-Identifier: MIT
#include "platform/FileKind.h"
#include "platform/Files.h"

#include "platform/Text.h"
#include "platform/windows/WideText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <windows.h>

#include <objbase.h>

#include <algorithm>
#include <array>
#include <utility>

// IFileSystem::ReplaceFile bears the name of a macro of this system.
#undef ReplaceFile

namespace KestrinProductEditor {

namespace {

/// Whether `path` ends in a separator: it names a folder then.
[[nodiscard]] bool NamesNoFile(std::u16string_view path)
{
    return path.find_last_of(u"\\/:") == path.size() - 1;
}

/// The form of a path that the system takes at any length: absolute, and behind the prefix that switches the
/// limit of 260 characters off.
[[nodiscard]] std::wstring SystemPath(std::u16string_view path)
{
    std::wstring given(path.begin(), path.end());
    std::wstring whole(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetFullPathNameW(given.c_str(), static_cast<DWORD>(whole.size()), whole.data(), nullptr);
        if (length == 0)
            return given;
        const bool fits = length < whole.size();
        whole.resize(length);
        if (fits)
            break;
    }
    constexpr std::wstring_view kPrefix = L"\\\\?\\";
    if (whole.starts_with(kPrefix) || whole.starts_with(L"\\\\.\\"))
        return whole;
    if (whole.starts_with(L"\\\\"))
        return L"\\\\?\\UNC" + whole.substr(1);
    return std::wstring(kPrefix) + whole;
}

[[nodiscard]] bool IsFolder(const std::wstring& path)
{
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

[[nodiscard]] std::int32_t ErrorNumberOf(DWORD error, std::u16string_view path)
{
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
        return kErrFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME:
    case ERROR_DIRECTORY:
        return kErrPathNotFound;
    case ERROR_ACCESS_DENIED:
        // The same answer is given for a folder where a file was asked for.
        return IsFolder(SystemPath(path)) ? kErrPathFileAccess : kErrPermissionDenied;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
    case ERROR_WRITE_PROTECT:
    case ERROR_NETWORK_ACCESS_DENIED:
        return kErrPermissionDenied;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return kErrDiskFull;
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
    case ERROR_INVALID_PARAMETER:
    case ERROR_INVALID_HANDLE:
        return kErrBadFileName;
    case ERROR_CRC:
    case ERROR_SEEK:
    case ERROR_GEN_FAILURE:
    case ERROR_IO_DEVICE:
    case ERROR_READ_FAULT:
    case ERROR_WRITE_FAULT:
    case ERROR_NOT_READY:
        return kErrDeviceIO;
    default:
        return kErrPathFileAccess;
    }
}

[[nodiscard]] std::u16string ReasonOf(DWORD error)
{
    std::array<wchar_t, 512> buffer;
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        error, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::u16string reason = FromWide({buffer.data(), length});
    while (!reason.empty() && std::u16string_view(u"\r\n .").find(reason.back()) != std::u16string_view::npos)
        reason.pop_back();
    if (reason.empty())
        reason = u"Unknown error";
    return reason + u" (error " + ToUtf16(std::to_string(error)) + u")";
}

[[nodiscard]] AutomationError FailureError(std::int32_t number, std::u16string_view doing,
                                           std::u16string_view path, std::u16string_view reason)
{
    std::u16string text = AutomationError::TextOf(number) + u": cannot ";
    text.append(doing).append(u" '").append(path).append(u"': ").append(reason);
    return AutomationError(number, u"", std::move(text));
}

/// The one place where the system's error numbers become ours. `doing` is a verb: "open".
[[nodiscard]] AutomationError FileError(std::u16string_view doing, std::u16string_view path, DWORD error)
{
    return FailureError(ErrorNumberOf(error, path), doing, path, ReasonOf(error));
}

[[nodiscard]] std::wstring NativePath(std::u16string_view doing, std::u16string_view path)
{
    if (path.empty() || path.find(u'\0') != std::u16string_view::npos)
        throw FileError(doing, path, ERROR_INVALID_NAME);
    return SystemPath(path);
}

/// An open file, or none.
class FileHandle
{
public:
    FileHandle() = default;
    explicit FileHandle(HANDLE handle) : m_handle(handle) {}
    FileHandle(FileHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}
    FileHandle& operator=(FileHandle&& other) noexcept
    {
        FileHandle moved(std::move(other));
        std::swap(m_handle, moved.m_handle);
        return *this;
    }
    ~FileHandle()
    {
        if (IsOpen())
            CloseHandle(m_handle);
    }

    [[nodiscard]] HANDLE Get() const noexcept { return m_handle; }
    [[nodiscard]] bool IsOpen() const noexcept { return m_handle != INVALID_HANDLE_VALUE; }

private:
    HANDLE m_handle = INVALID_HANDLE_VALUE;
};

/// What the system takes at once.
constexpr std::size_t kLargestPiece = std::size_t{1} << 30;

void WriteAll(const FileHandle& file, std::string_view bytes, std::u16string_view path)
{
    while (!bytes.empty()) {
        const auto piece = static_cast<DWORD>(std::min(bytes.size(), kLargestPiece));
        DWORD count = 0;
        if (!WriteFile(file.Get(), bytes.data(), piece, &count, nullptr))
            throw FileError(u"write", path, GetLastError());
        bytes.remove_prefix(count);
    }
}

class ReadStream final : public IReadStream
{
public:
    ReadStream(FileHandle file, std::uint64_t size, std::u16string_view path)
        : m_file(std::move(file)), m_size(size), m_path(path)
    {
    }

    [[nodiscard]] std::uint64_t Size() const override { return m_size; }

    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
    {
        DWORD count = 0;
        const auto piece = static_cast<DWORD>(std::min(size, kLargestPiece));
        if (ReadFile(m_file.Get(), buffer, piece, &count, nullptr))
            return count;
        const DWORD error = GetLastError();
        if (error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF)
            return 0;
        throw FileError(u"read", m_path, error);
    }

private:
    FileHandle m_file;
    std::uint64_t m_size;
    std::u16string m_path;
};

class InPlaceStream final : public IWriteStream
{
public:
    InPlaceStream(FileHandle file, std::u16string_view path) : m_file(std::move(file)), m_path(path) {}

    void Write(std::string_view bytes) override { WriteAll(m_file, bytes, m_path); }

    void Close() override { m_file = FileHandle(); }

private:
    FileHandle m_file;
    std::u16string m_path;
};

/// The temporary files beside a file that is being replaced.
///
/// The name of one says whose it is: "corvprd2.cpd.kstnedit-0123456789ab". Its writer lets nobody else open
/// it; one that can be opened is left over from a writer that was killed.
class ReplacementFolder
{
public:
    /// `target` is where the file lies once links are followed, as the system takes it.
    explicit ReplacementFolder(std::wstring target)
        : m_target(std::move(target)), m_folder(m_target.substr(0, m_target.find_last_of(L'\\') + 1)),
          m_prefix(m_target.substr(m_folder.size(), kLongestName - kMark.size() - kRandomDigits))
    {
        // No half of a character at the cut.
        if (!m_prefix.empty() && (m_prefix.back() & 0xFC00) == 0xD800)
            m_prefix.pop_back();
        m_prefix += kMark;
    }

    [[nodiscard]] const std::wstring& Target() const { return m_target; }

    /// Never fails: what cannot be removed stays.
    void RemoveLeftovers() const
    {
        WIN32_FIND_DATAW entry;
        const HANDLE search = FindFirstFileW((m_folder + m_prefix + L"*").c_str(), &entry);
        if (search == INVALID_HANDLE_VALUE)
            return;
        do {
            const std::wstring name = entry.cFileName;
            if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0 && PrvIsTemporaryName(name))
                DeleteFileW((m_folder + name).c_str());
        } while (FindNextFileW(search, &entry));
        FindClose(search);
    }

    struct Temporary
    {
        FileHandle file;
        std::wstring path;
    };

    [[nodiscard]] Temporary Create(std::u16string_view path) const
    {
        constexpr int kAttempts = 100;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            Temporary temporary{FileHandle(), m_folder + PrvRandomName()};
            temporary.file =
                FileHandle(CreateFileW(temporary.path.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0,
                                       nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
            if (temporary.file.IsOpen())
                return temporary;
            const DWORD error = GetLastError();
            if (error != ERROR_FILE_EXISTS && error != ERROR_ALREADY_EXISTS)
                throw FileError(u"replace", path, error);
        }
        throw FileError(u"replace", path, ERROR_FILE_EXISTS);
    }

private:
    static constexpr std::wstring_view kMark = L".kstnedit-";
    static constexpr std::wstring_view kDigits = L"0123456789abcdef";
    static constexpr std::size_t kRandomDigits = 12;
    static constexpr std::size_t kLongestName = 255;

    [[nodiscard]] std::wstring PrvRandomName() const
    {
        std::wstring name = m_prefix;
        GUID random;
        if (CoCreateGuid(&random) != S_OK)
            random = {};
        std::uint64_t bits = std::uint64_t{random.Data1} << 16 | random.Data2;
        for (std::size_t digit = 0; digit < kRandomDigits; ++digit, bits >>= 4)
            name += kDigits[bits & 0xF];
        return name;
    }

    [[nodiscard]] bool PrvIsTemporaryName(const std::wstring& name) const
    {
        return name.size() == m_prefix.size() + kRandomDigits && name.starts_with(m_prefix) &&
               name.find_first_not_of(kDigits, m_prefix.size()) == std::wstring::npos;
    }

    std::wstring m_target;
    std::wstring m_folder;
    std::wstring m_prefix;
};

class ReplacementStream final : public IWriteStream
{
public:
    ReplacementStream(std::wstring target, std::u16string_view path)
        : m_folder(std::move(target)), m_path(path)
    {
        m_folder.RemoveLeftovers();
        m_temporary = m_folder.Create(path);
    }

    ReplacementStream(const ReplacementStream&) = delete;
    ReplacementStream& operator=(const ReplacementStream&) = delete;
    ~ReplacementStream() override { PrvAbandon(); }

    void Write(std::string_view bytes) override
    {
        try {
            WriteAll(m_temporary.file, bytes, m_path);
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
            if (!FlushFileBuffers(m_temporary.file.Get()))
                throw FileError(u"write", m_path, GetLastError());
            m_temporary.file = FileHandle();
            PrvPutInPlace();
        } catch (...) {
            PrvAbandon();
            throw;
        }
        m_isInPlace = true;
    }

private:
    void PrvPutInPlace()
    {
        const wchar_t* const target = m_folder.Target().c_str();
        // Keeps the old file's attributes and rights; where there is no old file, or the place cannot do
        // that, a plain rename does.
        if (ReplaceFileW(target, m_temporary.path.c_str(), nullptr, REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr,
                         nullptr))
            return;
        if (!MoveFileExW(m_temporary.path.c_str(), target,
                         MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
            throw FileError(u"replace", m_path, GetLastError());
    }

    void PrvAbandon() noexcept
    {
        if (m_isInPlace || m_temporary.path.empty())
            return;
        m_temporary.file = FileHandle();
        DeleteFileW(m_temporary.path.c_str());
        m_temporary.path.clear();
    }

    ReplacementFolder m_folder;
    std::u16string m_path;
    ReplacementFolder::Temporary m_temporary;
    bool m_isInPlace = false;
};

/// Where an existing file lies once its links are followed.
[[nodiscard]] std::wstring FinalPath(const FileHandle& file, const std::wstring& otherwise)
{
    const DWORD length = GetFinalPathNameByHandleW(file.Get(), nullptr, 0, FILE_NAME_NORMALIZED);
    if (length == 0)
        return otherwise;
    std::wstring path(length, L'\0');
    const DWORD written = GetFinalPathNameByHandleW(file.Get(), path.data(), length, FILE_NAME_NORMALIZED);
    if (written == 0 || written >= length)
        return otherwise;
    path.resize(written);
    return path;
}

/// To ask for no right at all is enough for questions, and starts nothing at the other end of a pipe.
[[nodiscard]] FileHandle OpenToAskAbout(std::u16string_view path)
{
    return FileHandle(CreateFileW(SystemPath(path).c_str(), 0,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
}

class WindowsFileSystem final : public IFileSystem
{
public:
    [[nodiscard]] std::u16string BuildPath(std::u16string_view folder,
                                           std::u16string_view name) const override
    {
        constexpr std::u16string_view kSeparators = u"\\/";
        const auto isSeparator = [&](char16_t unit) {
            return kSeparators.find(unit) != std::u16string_view::npos;
        };
        std::u16string path(folder);
        if (!folder.empty() && !name.empty() && !isSeparator(folder.back()) && folder.back() != u':' &&
            !isSeparator(name.front()))
            path += u'\\';
        path += name;
        return path;
    }

    [[nodiscard]] bool FileExists(std::u16string_view path) const override
    {
        if (path.empty())
            return false;
        const DWORD attributes = GetFileAttributesW(NativePath(u"look for", path).c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES)
            return (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
        const DWORD error = GetLastError();
        const std::int32_t number = ErrorNumberOf(error, path);
        if (number == kErrFileNotFound || number == kErrPathNotFound)
            return false;
        throw FileError(u"look for", path, error);
    }

    [[nodiscard]] std::unique_ptr<IReadStream> OpenForReading(std::u16string_view path) override
    {
        FileHandle file(CreateFileW(NativePath(u"open", path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
        if (!file.IsOpen())
            throw FileError(u"open", path, GetLastError());
        LARGE_INTEGER size{};
        if (GetFileType(file.Get()) != FILE_TYPE_DISK || !GetFileSizeEx(file.Get(), &size))
            size.QuadPart = 0;
        return std::make_unique<ReadStream>(std::move(file), static_cast<std::uint64_t>(size.QuadPart), path);
    }

    [[nodiscard]] std::unique_ptr<IWriteStream> CreateInPlace(std::u16string_view path) override
    {
        FileHandle file(CreateFileW(NativePath(u"create", path).c_str(), GENERIC_WRITE, FILE_SHARE_READ,
                                    nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file.IsOpen())
            throw FileError(u"create", path, GetLastError());
        return std::make_unique<InPlaceStream>(std::move(file), path);
    }

    [[nodiscard]] std::unique_ptr<IWriteStream> ReplaceFile(std::u16string_view path) override
    {
        const std::wstring native = NativePath(u"replace", path);
        const DWORD attributes = GetFileAttributesW(native.c_str());
        if (attributes != INVALID_FILE_ATTRIBUTES &&
            (attributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_READONLY)) != 0)
            throw FileError(u"replace", path, ERROR_ACCESS_DENIED);
        // Whoever may not write the old file may not replace it.
        const FileHandle existing(CreateFileW(native.c_str(), GENERIC_WRITE,
                                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        if (existing.IsOpen()) {
            if (GetFileType(existing.Get()) != FILE_TYPE_DISK)
                throw FailureError(kErrPathFileAccess, u"replace", path, u"it is no ordinary file");
            return std::make_unique<ReplacementStream>(FinalPath(existing, native), path);
        }
        const DWORD error = GetLastError();
        if (error != ERROR_FILE_NOT_FOUND || NamesNoFile(path))
            throw FileError(u"replace", path, error);
        return std::make_unique<ReplacementStream>(native, path);
    }
};

} // namespace

IFileSystem& PlatformFileSystem()
{
    // Never destroyed: a host may release its last store after the end of the process's own objects.
    static auto& fileSystem = *new WindowsFileSystem;
    return fileSystem;
}

bool IsRereadable(std::u16string_view path)
{
    const FileHandle file = OpenToAskAbout(path);
    return !file.IsOpen() || GetFileType(file.Get()) == FILE_TYPE_DISK;
}

bool AreSameFile(std::u16string_view left, std::u16string_view right)
{
    const FileHandle leftFile = OpenToAskAbout(left);
    const FileHandle rightFile = OpenToAskAbout(right);
    BY_HANDLE_FILE_INFORMATION leftInfo;
    BY_HANDLE_FILE_INFORMATION rightInfo;
    if (leftFile.IsOpen() && rightFile.IsOpen() && GetFileInformationByHandle(leftFile.Get(), &leftInfo) &&
        GetFileInformationByHandle(rightFile.Get(), &rightInfo))
        return leftInfo.dwVolumeSerialNumber == rightInfo.dwVolumeSerialNumber &&
               leftInfo.nFileIndexHigh == rightInfo.nFileIndexHigh &&
               leftInfo.nFileIndexLow == rightInfo.nFileIndexLow;
    return CompareStringOrdinal(SystemPath(left).c_str(), -1, SystemPath(right).c_str(), -1, TRUE) ==
           CSTR_EQUAL;
}

std::string PathToNative(std::u16string_view path)
{
    return ToUtf8(path);
}

std::u16string PathFromNative(std::string_view path)
{
    return ToUtf16(path);
}

} // namespace KestrinProductEditor
