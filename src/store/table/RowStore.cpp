// SPDX-License-Identifier: MIT
#include "store/table/RowStore.h"

#include <algorithm>
#include <cassert>
#include <stdexcept>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kFirstTextBlock = std::size_t{64} << 10;
constexpr std::size_t kLargestTextBlock = std::size_t{32} << 20;
constexpr std::size_t kGarbageWorthDropping = std::size_t{1} << 20;

// A length in a text run: seven bits a byte, the lowest first, the top bit set on all but the last.
std::size_t LengthSize(std::size_t length) noexcept
{
    std::size_t size = 1;
    while (length >= 0x80) {
        length >>= 7;
        ++size;
    }
    return size;
}

char* WriteLength(char* to, std::size_t length) noexcept
{
    while (length >= 0x80) {
        *to++ = static_cast<char>(length | 0x80);
        length >>= 7;
    }
    *to++ = static_cast<char>(length);
    return to;
}

std::size_t ReadLength(const char*& from) noexcept
{
    std::size_t length = 0;
    for (unsigned shift = 0;; shift += 7) {
        const auto byte = static_cast<unsigned char>(*from++);
        length |= std::size_t{byte & 0x7FU} << shift;
        if (byte < 0x80)
            return length;
    }
}

std::size_t SizeOf(ColumnType type) noexcept
{
    switch (type) {
    case ColumnType::Long:
        return sizeof(std::int32_t);
    case ColumnType::Currency:
        return sizeof(std::int64_t);
    case ColumnType::Boolean:
        return sizeof(std::uint8_t);
    case ColumnType::NarrowText:
    case ColumnType::WideText:
        break;
    }
    return 0;
}

} // namespace

RowStore::RowStore(std::vector<Column> columns) : m_columns(std::move(columns))
{
    std::size_t offset = kFirstColumnOffset;
    for (const Column& column : m_columns) {
        if (IsText(column.type)) {
            m_offsets.push_back(static_cast<std::uint32_t>(m_textColumns.size()));
            m_textColumns.push_back(static_cast<std::uint32_t>(m_offsets.size() - 1));
        } else {
            m_offsets.push_back(static_cast<std::uint32_t>(offset));
            offset += SizeOf(column.type);
        }
    }
    constexpr std::size_t kAlignment = alignof(std::uint32_t);
    m_stride = (offset + kAlignment - 1) / kAlignment * kAlignment;
    m_longest.assign(m_textColumns.size(), 0);
}

template<class TextAt>
const char* RowStore::PrvWriteTextRun(const TextAt& textAt)
{
    std::size_t size = 0;
    for (std::size_t i = 0; i < m_textColumns.size(); ++i) {
        const std::size_t length = textAt(i).size();
        size += LengthSize(length) + length;
        m_longest[i] = std::max(m_longest[i], length);
    }
    char* const run = PrvTextRoom(size);
    char* to = run;
    for (std::size_t i = 0; i < m_textColumns.size(); ++i) {
        const std::string_view text = textAt(i);
        to = WriteLength(to, text.size());
        std::copy(text.begin(), text.end(), to);
        to += text.size();
    }
    return run;
}

RowNumber RowStore::Append(std::span<const Value> values)
{
    assert(values.size() == m_columns.size());
    if (m_rowCount == kNoRow - 1)
        throw std::length_error("a table holds at most 4294967294 rows");
    if (m_rowCount >> kRowsPerChunkBits == m_chunks.size())
        m_chunks.push_back(AllocateLargeBlock(m_stride * kRowsPerChunk));
    const char* const run = PrvWriteTextRun([&](std::size_t i) { return values[m_textColumns[i]].text; });

    const RowNumber row = m_rowCount++;
    std::memcpy(PrvRecord(row), &run, sizeof run);
    for (std::size_t i = 0; i < values.size(); ++i) {
        switch (m_columns[i].type) {
        case ColumnType::Long:
            PrvStore(row, i, static_cast<std::int32_t>(values[i].number));
            break;
        case ColumnType::Currency:
            PrvStore(row, i, values[i].number);
            break;
        case ColumnType::Boolean:
            PrvStore(row, i, static_cast<std::uint8_t>(values[i].number != 0));
            break;
        case ColumnType::NarrowText:
        case ColumnType::WideText:
            break;
        }
    }
    return row;
}

void RowStore::Clear() noexcept
{
    m_chunks.clear();
    m_rowCount = 0;
    m_textBlocks.clear();
    m_textNext = m_textEnd = nullptr;
    m_textBytes = m_textGarbage = 0;
    std::fill(m_longest.begin(), m_longest.end(), std::size_t{0});
}

std::string_view RowStore::Text(RowNumber row, std::size_t column) const noexcept
{
    const char* at = PrvTextRun(row);
    for (std::uint32_t skipped = 0; skipped < m_offsets[column]; ++skipped) {
        const std::size_t length = ReadLength(at);
        at += length;
    }
    const std::size_t length = ReadLength(at);
    return {at, length};
}

void RowStore::Texts(RowNumber row, std::string_view* texts) const noexcept
{
    const char* at = PrvTextRun(row);
    for (std::size_t i = 0; i < m_textColumns.size(); ++i) {
        const std::size_t length = ReadLength(at);
        texts[i] = {at, length};
        at += length;
    }
}

void RowStore::SetText(RowNumber row, std::size_t column, std::string_view text)
{
    std::vector<std::string_view> texts(m_textColumns.size());
    Texts(row, texts.data());
    texts[m_offsets[column]] = text;
    SetTexts(row, texts);
}

void RowStore::SetTexts(RowNumber row, std::span<const std::string_view> texts)
{
    assert(texts.size() == m_textColumns.size());
    const std::size_t oldSize = PrvTextRunSize(PrvTextRun(row));
    const char* const run = PrvWriteTextRun([&](std::size_t i) { return texts[i]; });
    std::memcpy(PrvRecord(row), &run, sizeof run);
    m_textGarbage += oldSize;
    if (m_textGarbage > kGarbageWorthDropping && m_textGarbage > m_textBytes / 2)
        PrvCompactTexts();
}

void RowStore::Forget(RowNumber row) noexcept
{
    m_textGarbage += PrvTextRunSize(PrvTextRun(row));
    std::memset(PrvRecord(row), 0, sizeof(const char*));
}

std::uint32_t RowStore::Tag(RowNumber row) const noexcept
{
    std::uint32_t tag = 0;
    std::memcpy(&tag, PrvRecord(row) + kTagOffset, sizeof tag);
    return tag;
}

void RowStore::SetTag(RowNumber row, std::uint32_t tag) noexcept
{
    std::memcpy(PrvRecord(row) + kTagOffset, &tag, sizeof tag);
}

char* RowStore::PrvTextRoom(std::size_t size)
{
    if (size > static_cast<std::size_t>(m_textEnd - m_textNext)) {
        // Twice the last block: few blocks for a large table, little for a small one.
        const std::size_t usual = std::clamp(m_textBytes, kFirstTextBlock, kLargestTextBlock);
        const std::size_t room = std::max(usual, size);
        m_textBlocks.push_back(AllocateLargeBlock(room));
        m_textNext = m_textBlocks.back().get();
        m_textEnd = m_textNext + room;
    }
    char* const begin = m_textNext;
    m_textNext += size;
    m_textBytes += size;
    return begin;
}

std::size_t RowStore::PrvTextRunSize(const char* run) const noexcept
{
    const char* at = run;
    for (std::size_t i = 0; i < m_textColumns.size(); ++i) {
        const std::size_t length = ReadLength(at);
        at += length;
    }
    return static_cast<std::size_t>(at - run);
}

void RowStore::PrvCompactTexts()
{
    std::vector<LargeBlock> oldBlocks;
    oldBlocks.swap(m_textBlocks);
    char* const oldNext = std::exchange(m_textNext, nullptr);
    char* const oldEnd = std::exchange(m_textEnd, nullptr);
    const std::size_t living = m_textBytes - m_textGarbage;
    try {
        // One block for all that lives: nothing can fail behind this allocation.
        m_textBlocks.push_back(AllocateLargeBlock(std::max(living, kFirstTextBlock)));
    } catch (const std::bad_alloc&) {
        m_textBlocks.swap(oldBlocks);
        m_textNext = oldNext;
        m_textEnd = oldEnd;
        return;
    }
    m_textNext = m_textBlocks.back().get();
    m_textEnd = m_textNext + std::max(living, kFirstTextBlock);
    for (RowNumber row = 0; row < m_rowCount; ++row) {
        const char* const run = PrvTextRun(row);
        if (run == nullptr)
            continue;
        const std::size_t size = PrvTextRunSize(run);
        char* const moved = m_textNext;
        std::memcpy(moved, run, size);
        m_textNext += size;
        std::memcpy(PrvRecord(row), &moved, sizeof moved);
    }
    m_textBytes = living;
    m_textGarbage = 0;
}

} // namespace KestrinProductEditor
