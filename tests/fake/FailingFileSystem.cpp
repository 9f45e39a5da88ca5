// SPDX-License-Identifier: MIT
#include "fake/FailingFileSystem.h"

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

void RaiseIf(std::int32_t number)
{
    if (number != 0)
        throw AutomationError(number);
}

} // namespace

class FailingFileSystem::ReadStream final : public IReadStream
{
public:
    ReadStream(FailingFileSystem& owner, std::unique_ptr<IReadStream> below)
        : m_owner(owner), m_below(std::move(below))
    {
    }

    [[nodiscard]] std::uint64_t Size() const override { return m_below->Size(); }

    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
    {
        if (m_owner.m_readLimit) {
            const std::uint64_t left =
                m_owner.m_readLimit->end - std::min(m_owner.m_read, m_owner.m_readLimit->end);
            if (left == 0)
                throw AutomationError(m_owner.m_readLimit->number);
            size = static_cast<std::size_t>(std::min<std::uint64_t>(size, left));
        }
        const std::size_t count = m_below->Read(buffer, size);
        m_owner.m_read += count;
        return count;
    }

private:
    FailingFileSystem& m_owner;
    std::unique_ptr<IReadStream> m_below;
};

class FailingFileSystem::WriteStream final : public IWriteStream
{
public:
    WriteStream(FailingFileSystem& owner, std::unique_ptr<IWriteStream> below)
        : m_owner(owner), m_below(std::move(below))
    {
    }

    void Write(std::string_view bytes) override
    {
        std::string_view head = bytes;
        if (m_owner.m_writeLimit) {
            const std::uint64_t left =
                m_owner.m_writeLimit->end - std::min(m_owner.m_written, m_owner.m_writeLimit->end);
            head = bytes.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), left)));
        }
        m_below->Write(head);
        m_owner.m_written += head.size();
        if (head.size() < bytes.size())
            throw AutomationError(m_owner.m_writeLimit->number);
    }

    void Close() override
    {
        RaiseIf(m_owner.m_closeError);
        m_below->Close();
    }

private:
    FailingFileSystem& m_owner;
    std::unique_ptr<IWriteStream> m_below;
};

FailingFileSystem::FailingFileSystem(IFileSystem& below) : m_below(below) {}

void FailingFileSystem::FailAfterWriting(std::uint64_t count, std::int32_t number)
{
    m_writeLimit = Limit{m_written + count, number};
}

void FailingFileSystem::FailAfterReading(std::uint64_t count, std::int32_t number)
{
    m_readLimit = Limit{m_read + count, number};
}

void FailingFileSystem::FailAtOpening(std::int32_t number)
{
    m_openError = number;
}

void FailingFileSystem::FailAtClosing(std::int32_t number)
{
    m_closeError = number;
}

void FailingFileSystem::FailAtLooking(std::int32_t number)
{
    m_lookError = number;
}

void FailingFileSystem::Heal()
{
    m_writeLimit.reset();
    m_readLimit.reset();
    m_openError = 0;
    m_closeError = 0;
    m_lookError = 0;
}

std::u16string FailingFileSystem::BuildPath(std::u16string_view folder, std::u16string_view name) const
{
    return m_below.BuildPath(folder, name);
}

bool FailingFileSystem::FileExists(std::u16string_view path) const
{
    RaiseIf(m_lookError);
    return m_below.FileExists(path);
}

std::unique_ptr<IReadStream> FailingFileSystem::OpenForReading(std::u16string_view path)
{
    RaiseIf(m_openError);
    return std::make_unique<ReadStream>(*this, m_below.OpenForReading(path));
}

std::unique_ptr<IWriteStream> FailingFileSystem::CreateInPlace(std::u16string_view path)
{
    RaiseIf(m_openError);
    return std::make_unique<WriteStream>(*this, m_below.CreateInPlace(path));
}

std::unique_ptr<IWriteStream> FailingFileSystem::ReplaceFile(std::u16string_view path)
{
    RaiseIf(m_openError);
    return std::make_unique<WriteStream>(*this, m_below.ReplaceFile(path));
}

} // namespace KestrinProductEditor
