// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Files.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <utility>

namespace KestrinProductEditor::Testing {

/// A file of given bytes that can be delivered in small pieces, and whose size can be hidden or a lie.
class ByteReadStream final : public IReadStream
{
public:
    explicit ByteReadStream(std::string bytes) : m_bytes(std::move(bytes)), m_size(m_bytes.size()) {}
    ByteReadStream(std::string bytes, std::uint64_t claimedSize, std::size_t mostAtOnce)
        : m_bytes(std::move(bytes)), m_size(claimedSize), m_mostAtOnce(mostAtOnce)
    {
    }

    [[nodiscard]] std::uint64_t Size() const override { return m_size; }
    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
    {
        m_largestRequest = std::max(m_largestRequest, size);
        const std::size_t count = std::min({size, m_mostAtOnce, m_bytes.size() - m_at});
        std::memcpy(buffer, m_bytes.data() + m_at, count);
        m_at += count;
        return count;
    }

    /// The most bytes that were ever asked for at once.
    [[nodiscard]] std::size_t LargestRequest() const noexcept { return m_largestRequest; }

private:
    std::string m_bytes;
    std::uint64_t m_size;
    std::size_t m_mostAtOnce = std::string::npos;
    std::size_t m_at = 0;
    std::size_t m_largestRequest = 0;
};

/// Collects what is written.
class ByteWriteStream final : public IWriteStream
{
public:
    void Write(std::string_view bytes) override
    {
        m_bytes += bytes;
        m_largestWrite = std::max(m_largestWrite, bytes.size());
        ++m_writes;
    }
    void Close() override { m_isClosed = true; }

    [[nodiscard]] const std::string& Bytes() const noexcept { return m_bytes; }
    [[nodiscard]] bool IsClosed() const noexcept { return m_isClosed; }
    [[nodiscard]] std::size_t Writes() const noexcept { return m_writes; }
    [[nodiscard]] std::size_t LargestWrite() const noexcept { return m_largestWrite; }

private:
    std::string m_bytes;
    bool m_isClosed = false;
    std::size_t m_writes = 0;
    std::size_t m_largestWrite = 0;
};

} // namespace KestrinProductEditor::Testing
