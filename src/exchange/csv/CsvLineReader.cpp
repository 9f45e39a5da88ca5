// SPDX-License-Identifier: MIT
#include "exchange/csv/CsvLineReader.h"

#include "exchange/csv/Utf16Stream.h"
#include "platform/Text.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cstring>

namespace KestrinProductEditor {

namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";

} // namespace

CsvLineReader::CsvLineReader(IReadStream& stream, const CodePage& codePage, std::size_t windowSize)
    : m_source(&stream), m_codePage(&codePage), m_readSize(windowSize), m_window(windowSize + kCsvBlockSize),
      m_capacity(windowSize)
{
    assert(windowSize > 0);
}

bool CsvLineReader::Next()
{
    m_line = {};
    m_lineIsAscii = true;
    m_columns.PrvBegin();
    if (!m_markSkipped) {
        PrvSkipMark();
    }
    if (m_afterCarriageReturn && (m_begin != m_end || PrvFill())) {
        if (m_window[m_begin] == '\n') {
            ++m_begin;
        }
        m_afterCarriageReturn = false;
    }

    for (std::size_t offset = 0;;) {
        const std::size_t left = m_end - m_begin - offset;
        const CsvBlock block = FindInBlock(m_window.data() + m_begin + offset);
        m_lineIsAscii &= block.isAscii;
        const bool isWhole = left >= kCsvBlockSize;
        const std::uint64_t read = isWhole ? ~std::uint64_t{0} : (std::uint64_t{1} << left) - 1;

        if (const std::uint64_t lineEnds = block.lineEnds & read; lineEnds != 0) {
            const auto length = static_cast<std::size_t>(std::countr_zero(lineEnds));
            m_columns.PrvTake(block, (std::uint64_t{1} << length) - 1, offset);
            PrvGiveLine(offset + length);
            if (m_window[m_begin] == '\n') {
                ++m_begin;
            } else if (++m_begin == m_end) {
                m_afterCarriageReturn = true;
            } else if (m_window[m_begin] == '\n') {
                ++m_begin;
            }
            return true;
        }
        if (isWhole) {
            m_columns.PrvTake(block, read, offset);
            offset += kCsvBlockSize;
        } else if (!PrvFill()) {
            if (offset + left == 0) {
                return false;
            }
            m_columns.PrvTake(block, read, offset);
            PrvGiveLine(offset + left);
            return true;
        }
    }
}

void CsvLineReader::PrvGiveLine(std::size_t length) noexcept
{
    m_line = std::string_view(m_window.data() + m_begin, length);
    m_columns.PrvEnd(m_line);
    m_begin += length;
    ++m_lineNumber;
}

void CsvLineReader::PrvSkipMark()
{
    while (m_end < kUtf8Mark.size() && PrvFill()) {
    }
    const std::string_view head(m_window.data(), m_end);
    if (head.starts_with(kUtf8Mark)) {
        m_begin = kUtf8Mark.size();
        m_codePageOfMark = CodePage::Named("utf-8");
        assert(m_codePageOfMark);
        m_codePage = m_codePageOfMark.get();
    } else if (head.starts_with(kUtf16LittleEndianMark) || head.starts_with(kUtf16BigEndianMark)) {
        const auto byteOrder = head.starts_with(kUtf16LittleEndianMark) ? Utf16Stream::ByteOrder::LittleEndian
                                                                        : Utf16Stream::ByteOrder::BigEndian;
        m_utf16 =
            std::make_unique<Utf16Stream>(*m_source, byteOrder, head.substr(kUtf16BigEndianMark.size()));
        m_source = m_utf16.get();
        m_end = 0;
    }
    m_markSkipped = true;
}

bool CsvLineReader::PrvFill()
{
    if (m_atEnd) {
        return false;
    }
    if (const std::size_t left = m_end - m_begin; left < m_begin || m_end == m_capacity) {
        std::memmove(m_window.data(), m_window.data() + m_begin, left);
        m_begin = 0;
        m_end = left;
    }
    if (m_end == m_capacity) {
        m_window.resize(2 * m_capacity + kCsvBlockSize);
        m_capacity *= 2;
    }
    // No more at once than at the beginning, however long a line was: the bytes shall stay in the cache.
    const std::size_t read =
        m_source->Read(m_window.data() + m_end, std::min(m_readSize, m_capacity - m_end));
    m_end += read;
    m_atEnd = read == 0;
    return !m_atEnd;
}

std::string_view CsvLineReader::Decode(std::string_view value, std::string& scratch) const
{
    // Every code page keeps ASCII.
    return m_lineIsAscii || LineIsUtf8() ? value : m_codePage->Decode(value, scratch);
}

std::size_t CsvLineReader::LineLength() const
{
    if (m_lineIsAscii || IsAscii(m_line)) {
        return m_line.size();
    }
    std::string scratch;
    return Utf16Length(Decode(m_line, scratch));
}

} // namespace KestrinProductEditor
