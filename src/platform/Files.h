// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

// The file services. Every failure is an AutomationError whose description names the path and the reason: 52
// (bad file name), 53 (file not found), 57 (device error), 61 (disk full), 70 (permission denied, read-only),
// 75 (a directory or another thing that is no file), 76 (path not found).

/// An open file, read from its beginning to its end.
class IReadStream
{
public:
    virtual ~IReadStream() = default;
    /// The size in bytes when the file was opened; 0 where it has none (a pipe).
    [[nodiscard]] virtual std::uint64_t Size() const = 0;
    /// Reads up to `size` bytes into `buffer`. Returns how many, 0 only at the end.
    [[nodiscard]] virtual std::size_t Read(char* buffer, std::size_t size) = 0;
};

/// A file that is written from its beginning to its end. Not buffered.
class IWriteStream
{
public:
    virtual ~IWriteStream() = default;
    virtual void Write(std::string_view bytes) = 0;
    /// Ends the writing and reports a failure that came late. A file written in place is closed. A
    /// replacement (IFileSystem::ReplaceFile) is flushed to the disk and takes the target's name now. Without
    /// Close a file written in place keeps what was written, and a replacement leaves nothing behind.
    virtual void Close() = 0;
};

class IFileSystem
{
public:
    virtual ~IFileSystem() = default;

    /// `name` joined to `folder` with one separator where one is needed; `folder` itself for an empty name.
    [[nodiscard]] virtual std::u16string BuildPath(std::u16string_view folder,
                                                   std::u16string_view name) const = 0;
    /// Whether `path` names an existing file (a folder is none). An error when that cannot be found out.
    [[nodiscard]] virtual bool FileExists(std::u16string_view path) const = 0;
    [[nodiscard]] virtual std::unique_ptr<IReadStream> OpenForReading(std::u16string_view path) = 0;
    /// Creates the file, or empties it when it exists.
    [[nodiscard]] virtual std::unique_ptr<IWriteStream> CreateInPlace(std::u16string_view path) = 0;
    /// Begins a new content for `path` in a temporary file beside it. Close puts it in place at once: at
    /// every moment `path` holds the old content or the new one. The file keeps its mode; a symbolic link is
    /// followed.
    [[nodiscard]] virtual std::unique_ptr<IWriteStream> ReplaceFile(std::u16string_view path) = 0;
};

/// The file services in use on this thread: the platform's, or those of a ScopedFileSystem.
[[nodiscard]] IFileSystem& FileSystem();

/// Puts other file services in the platform's place on this thread, until the end of the scope.
class ScopedFileSystem
{
public:
    explicit ScopedFileSystem(IFileSystem& fileSystem);
    ScopedFileSystem(const ScopedFileSystem&) = delete;
    ScopedFileSystem& operator=(const ScopedFileSystem&) = delete;
    ~ScopedFileSystem();

private:
    IFileSystem* m_previous;
};

/// The platform's own file services.
[[nodiscard]] IFileSystem& PlatformFileSystem();

/// A path in the platform's own bytes, and back. Bytes that are no valid text survive both ways.
[[nodiscard]] std::string PathToNative(std::u16string_view path);
[[nodiscard]] std::u16string PathFromNative(std::string_view path);

} // namespace KestrinProductEditor
