// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Files.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// Reads `content`, at most `step` bytes at a time.
class MemoryReadStream final : public IReadStream
{
public:
    explicit MemoryReadStream(std::string content, std::size_t step = std::string::npos);

    [[nodiscard]] std::uint64_t Size() const override { return m_content.size(); }
    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override;

private:
    std::string m_content;
    std::size_t m_step;
    std::size_t m_at = 0;
};

/// Appends to a text that the caller keeps.
class MemoryWriteStream final : public IWriteStream
{
public:
    explicit MemoryWriteStream(std::string& out);

    void Write(std::string_view bytes) override;
    void Close() override { m_isClosed = true; }
    [[nodiscard]] bool IsClosed() const noexcept { return m_isClosed; }

private:
    std::string& m_out;
    bool m_isClosed = false;
};

/// Files in memory, without folders: every path names a file. It outlives its streams.
class MemoryFileSystem final : public IFileSystem
{
public:
    /// The files by path, for the test to fill and to look at.
    std::map<std::u16string, std::string, std::less<>> files;

    [[nodiscard]] std::u16string BuildPath(std::u16string_view folder,
                                           std::u16string_view name) const override;
    [[nodiscard]] bool FileExists(std::u16string_view path) const override;
    [[nodiscard]] std::unique_ptr<IReadStream> OpenForReading(std::u16string_view path) override;
    [[nodiscard]] std::unique_ptr<IWriteStream> CreateInPlace(std::u16string_view path) override;
    [[nodiscard]] std::unique_ptr<IWriteStream> ReplaceFile(std::u16string_view path) override;
};

} // namespace KestrinProductEditor
