// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Files.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>

namespace KestrinProductEditor {

/// The part of the stream that is in memory: [Begin, End). Extend makes more of it, Drop lets go of its head.
class ReadWindow
{
public:
    explicit ReadWindow(IReadStream& stream)
        : m_stream(stream), m_streamSize(stream.Size()),
          m_buffer(std::make_unique_for_overwrite<char[]>(kFirstCapacity)), m_capacity(kFirstCapacity),
          m_begin(m_buffer.get()), m_end(m_begin)
    {
    }

    [[nodiscard]] const char* Begin() const noexcept { return m_begin; }
    [[nodiscard]] const char* End() const noexcept { return m_end; }
    [[nodiscard]] std::uint64_t OffsetOf(const char* at) const noexcept
    {
        return m_offset + static_cast<std::uint64_t>(at - m_begin);
    }

    /// Requires: Begin() <= to <= End().
    void Drop(const char* to) noexcept
    {
        m_offset = OffsetOf(to);
        m_begin += to - m_begin;
    }

    /// Makes at least `size` bytes from Begin on, or all that are left: then the answer is false. Moves the
    /// bytes.
    [[nodiscard]] bool Extend(std::uint64_t size)
    {
        // A size that the file cannot have is refused before anything is read for its sake.
        if (m_streamSize != 0 && m_offset + size > m_streamSize)
            return false;
        while (PrvAvailable() < size && !m_isAtEnd)
            PrvFill();
        return PrvAvailable() >= size;
    }

private:
    static constexpr std::size_t kFirstCapacity = std::size_t{256} << 10;

    [[nodiscard]] std::size_t PrvAvailable() const noexcept
    {
        return static_cast<std::size_t>(m_end - m_begin);
    }

    void PrvFill()
    {
        const std::size_t kept = PrvAvailable();
        if (kept == m_capacity) { // one row fills it all: as much again, for bytes that have arrived
            auto larger = std::make_unique_for_overwrite<char[]>(m_capacity * 2);
            std::memcpy(larger.get(), m_begin, kept);
            m_buffer = std::move(larger);
            m_capacity *= 2;
        } else {
            std::memmove(m_buffer.get(), m_begin, kept);
        }
        m_begin = m_buffer.get();
        m_end = m_begin + kept;
        char* const limit = m_begin + m_capacity;
        while (m_end != limit) {
            const std::size_t count = m_stream.Read(m_end, static_cast<std::size_t>(limit - m_end));
            if (count == 0) {
                m_isAtEnd = true;
                return;
            }
            m_end += count;
        }
    }

    IReadStream& m_stream;
    std::uint64_t m_streamSize; // 0: not known
    std::unique_ptr<char[]> m_buffer;
    std::size_t m_capacity;
    char* m_begin;
    char* m_end;
    std::uint64_t m_offset = 0; // of m_begin in the stream
    bool m_isAtEnd = false;
};

} // namespace KestrinProductEditor
