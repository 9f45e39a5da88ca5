// SPDX-License-Identifier: MIT
#include "exchange/csv/Utf16Stream.h"

#include "platform/Text.h"

#include <algorithm>
#include <cstring>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kBlockSize = std::size_t{64} * 1024;
constexpr char32_t kReplacement = 0xFFFD;

bool IsHighSurrogate(char16_t unit) noexcept
{
    return unit >= 0xD800 && unit <= 0xDBFF;
}

} // namespace

Utf16Stream::Utf16Stream(IReadStream& source, ByteOrder byteOrder, std::string_view head)
    : m_source(source), m_byteOrder(byteOrder), m_bytes(head.size() + kBlockSize), m_byteCount(head.size())
{
    std::copy(head.begin(), head.end(), m_bytes.begin());
}

std::size_t Utf16Stream::Read(char* buffer, std::size_t size)
{
    while (m_given == m_text.size() && !m_atEnd) {
        PrvConvertBlock();
    }
    const std::size_t count = std::min(size, m_text.size() - m_given);
    std::copy_n(m_text.data() + m_given, count, buffer);
    m_given += count;
    return count;
}

void Utf16Stream::PrvConvertBlock()
{
    const std::size_t read = m_source.Read(m_bytes.data() + m_byteCount, m_bytes.size() - m_byteCount);
    m_byteCount += read;
    m_atEnd = read == 0;

    const std::size_t low = m_byteOrder == ByteOrder::LittleEndian ? 0 : 1;
    m_units.resize(m_byteCount / 2);
    for (std::size_t index = 0; index < m_units.size(); ++index) {
        const auto lowByte = static_cast<unsigned char>(m_bytes[2 * index + low]);
        const auto highByte = static_cast<unsigned char>(m_bytes[2 * index + 1 - low]);
        m_units[index] = static_cast<char16_t>(lowByte | (highByte << 8));
    }
    // The first half of a pair waits for the second one.
    if (!m_atEnd && !m_units.empty() && IsHighSurrogate(m_units.back())) {
        m_units.pop_back();
    }

    m_text.clear();
    m_given = 0;
    AppendUtf8(m_units, m_text);

    const std::size_t converted = 2 * m_units.size();
    m_byteCount -= converted;
    std::memmove(m_bytes.data(), m_bytes.data() + converted, m_byteCount);
    if (m_atEnd && m_byteCount != 0) {
        AppendCodePoint(kReplacement, m_text);
        m_byteCount = 0;
    }
}

} // namespace KestrinProductEditor
