// SPDX-License-Identifier: MIT
#include "exchange/csv/CsvWriter.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr std::uint64_t kLowestBits = 0x0101010101010101U;
constexpr std::uint64_t kHighestBits = 0x8080808080808080U;

struct Findings
{
    bool mayNeedCleaning;
    bool isAscii;
};

/// The highest bit of some byte is set when one of the eight may be a CR, an LF or a double quote: when it is
/// one, and for the other characters below CR, which are rare.
std::uint64_t MayNeedCleaning(std::uint64_t bytes) noexcept
{
    const std::uint64_t upToCarriageReturn = (bytes - kLowestBits * ('\r' + 1)) & ~bytes;
    const std::uint64_t quotesAreZero = bytes ^ (kLowestBits * '"');
    const std::uint64_t quotes = (quotesAreZero - kLowestBits) & ~quotesAreZero;
    return (upToCarriageReturn | quotes) & kHighestBits;
}

Findings Look(std::string_view value) noexcept
{
    std::uint64_t bytes = kLowestBits * ' ';
    std::uint64_t special = 0;
    std::uint64_t all = 0;
    if (value.size() < sizeof(bytes)) {
        std::copy(value.begin(), value.end(), reinterpret_cast<char*>(&bytes));
        special = MayNeedCleaning(bytes);
        all = bytes;
    } else {
        const std::size_t last = value.size() - sizeof(bytes);
        for (std::size_t at = 0; at < value.size(); at += sizeof(bytes)) {
            // The last step goes back to stay within the value.
            std::memcpy(&bytes, value.data() + std::min(at, last), sizeof(bytes));
            special |= MayNeedCleaning(bytes);
            all |= bytes;
        }
    }
    return {special != 0, (all & kHighestBits) == 0};
}

void Clean(std::string_view value, std::string& cleaned)
{
    cleaned.clear();
    for (std::size_t at = 0; at < value.size(); ++at) {
        switch (value[at]) {
        case '\r':
            if (value.substr(at + 1).starts_with('\n')) {
                ++at;
            }
            cleaned.push_back(';');
            break;
        case '\n':
            cleaned.push_back(';');
            break;
        case '"':
            cleaned.push_back('\'');
            break;
        default:
            cleaned.push_back(value[at]);
        }
    }
}

} // namespace

CsvWriter::CsvWriter(IWriteStream& stream, const CodePage& codePage, std::size_t bufferSize)
    : m_stream(stream), m_codePage(codePage), m_buffer(bufferSize)
{
}

CsvWriter::~CsvWriter()
{
    try {
        PrvFlush();
    } catch (...) {
        // The owner that wants to hear of it calls Close.
    }
}

void CsvWriter::WriteLine(std::span<const std::string_view> values)
{
    bool isFirst = true;
    for (std::string_view value : values) {
        const Findings findings = Look(value);
        if (findings.mayNeedCleaning) {
            Clean(value, m_cleaned);
            value = m_cleaned;
        }
        // Every code page keeps ASCII.
        if (!findings.isAscii) {
            value = m_codePage.Encode(value, m_encoded);
        }
        PrvAppend(isFirst ? "\"" : "\",\"");
        PrvAppend(value);
        isFirst = false;
    }
    PrvAppend(isFirst ? "\r\n" : "\"\r\n");
}

void CsvWriter::Close()
{
    PrvFlush();
    if (!m_failed) {
        m_stream.Close();
    }
}

void CsvWriter::PrvAppend(std::string_view bytes)
{
    if (bytes.size() > m_buffer.size() - m_used) {
        PrvFlush();
        if (bytes.size() > m_buffer.size()) {
            PrvWrite(bytes);
            return;
        }
    }
    std::copy_n(bytes.data(), bytes.size(), m_buffer.data() + m_used);
    m_used += bytes.size();
}

void CsvWriter::PrvFlush()
{
    // What could not be written is forgotten: the writer ends with it.
    const std::size_t used = std::exchange(m_used, 0);
    if (used > 0) {
        PrvWrite(std::string_view(m_buffer.data(), used));
    }
}

void CsvWriter::PrvWrite(std::string_view bytes)
{
    if (m_failed) {
        return;
    }
    m_failed = true;
    m_stream.Write(bytes);
    m_failed = false;
}

} // namespace KestrinProductEditor
