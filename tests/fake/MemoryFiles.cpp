// SPDX-License-Identifier: MIT
#include "fake/MemoryFiles.h"

#include <KestrinProductEditor/AutomationError.h>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

/// A new content that takes its place in `files` when it is closed.
class MemoryReplacement final : public IWriteStream
{
public:
    MemoryReplacement(MemoryFileSystem& owner, std::u16string_view path) : m_owner(owner), m_path(path) {}

    void Write(std::string_view bytes) override { m_content.append(bytes); }

    void Close() override
    {
        if (!std::exchange(m_isClosed, true))
            m_owner.files[m_path] = std::move(m_content);
    }

private:
    MemoryFileSystem& m_owner;
    std::u16string m_path;
    std::string m_content;
    bool m_isClosed = false;
};

} // namespace

MemoryReadStream::MemoryReadStream(std::string content, std::size_t step)
    : m_content(std::move(content)), m_step(step)
{
}

std::size_t MemoryReadStream::Read(char* buffer, std::size_t size)
{
    const std::size_t count = m_content.copy(buffer, std::min(size, m_step), m_at);
    m_at += count;
    return count;
}

MemoryWriteStream::MemoryWriteStream(std::string& out) : m_out(out) {}

void MemoryWriteStream::Write(std::string_view bytes)
{
    m_out.append(bytes);
}

std::u16string MemoryFileSystem::BuildPath(std::u16string_view folder, std::u16string_view name) const
{
    return PlatformFileSystem().BuildPath(folder, name);
}

bool MemoryFileSystem::FileExists(std::u16string_view path) const
{
    return files.find(path) != files.end();
}

std::unique_ptr<IReadStream> MemoryFileSystem::OpenForReading(std::u16string_view path)
{
    const auto found = files.find(path);
    if (found == files.end())
        throw AutomationError(kErrFileNotFound);
    return std::make_unique<MemoryReadStream>(found->second);
}

std::unique_ptr<IWriteStream> MemoryFileSystem::CreateInPlace(std::u16string_view path)
{
    std::string& content = files[std::u16string(path)];
    content.clear();
    return std::make_unique<MemoryWriteStream>(content);
}

std::unique_ptr<IWriteStream> MemoryFileSystem::ReplaceFile(std::u16string_view path)
{
    return std::make_unique<MemoryReplacement>(*this, path);
}

} // namespace KestrinProductEditor
