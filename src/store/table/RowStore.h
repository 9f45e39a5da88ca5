// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/Currency.h>

#include "platform/LargeBlock.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// A row's number: rows are numbered from 0 in order of arrival, and a number is not given twice until Clear.
using RowNumber = std::uint32_t;
inline constexpr RowNumber kNoRow = 0xFFFFFFFF;

enum class ColumnType
{
    Long,
    NarrowText,
    WideText,
    Currency,
    Boolean
};

struct Column
{
    std::u16string name;
    ColumnType type = ColumnType::Long;
    /// Bytes for numbers, characters for texts.
    std::int32_t definedSize = 0;
    /// The column that identifies the row (a mark in the file; nothing depends on it).
    bool identifiesRow = false;
};

[[nodiscard]] constexpr bool IsText(ColumnType type) noexcept
{
    return type == ColumnType::NarrowText || type == ColumnType::WideText;
}

/// The rows of a table: columns given from above, values by row number and column.
///
/// A row is one small fixed record (its numbers, and where its texts lie) and one run of bytes in a text
/// arena that holds its texts one behind the other. Texts are UTF-8 (platform/Text.h). Neither ever moves
/// while rows are added; overwritten texts are dropped when they outweigh the living ones.
///
/// A text view is valid until the next call that writes.
///
/// Requires, everywhere: `row` was given by Append and not dropped by Clear, `column` is inside the columns
/// and of the type that the method reads or writes.
class RowStore
{
public:
    /// One value of a row to append: `number` for Long, Currency (scaled) and Boolean columns (0 or 1),
    /// `text` for text columns.
    struct Value
    {
        std::int64_t number = 0;
        std::string_view text;
    };

    explicit RowStore(std::vector<Column> columns);

    [[nodiscard]] const std::vector<Column>& Columns() const noexcept { return m_columns; }

    /// Rows appended since the last Clear, removed ones among them.
    [[nodiscard]] RowNumber RowCount() const noexcept { return m_rowCount; }

    /// Appends a row. Requires: one value for each column. Throws std::bad_alloc, and std::length_error
    /// beyond 2^32 - 2 rows; nothing is added then.
    RowNumber Append(std::span<const Value> values);

    /// Drops all rows and gives their memory back.
    void Clear() noexcept;

    [[nodiscard]] std::int32_t Long(RowNumber row, std::size_t column) const noexcept
    {
        return PrvLoad<std::int32_t>(row, column);
    }
    [[nodiscard]] Currency Money(RowNumber row, std::size_t column) const noexcept
    {
        return Currency::FromScaled(PrvLoad<std::int64_t>(row, column));
    }
    [[nodiscard]] bool Boolean(RowNumber row, std::size_t column) const noexcept
    {
        return PrvLoad<std::uint8_t>(row, column) != 0;
    }
    [[nodiscard]] std::string_view Text(RowNumber row, std::size_t column) const noexcept;
    /// All texts of the row, in the order of the text columns, into `texts`. Requires: room for
    /// TextColumnCount().
    void Texts(RowNumber row, std::string_view* texts) const noexcept;
    [[nodiscard]] std::size_t TextColumnCount() const noexcept { return m_textColumns.size(); }
    /// The place of a text column among the text columns.
    [[nodiscard]] std::size_t TextOrdinal(std::size_t column) const noexcept { return m_offsets[column]; }

    void SetLong(RowNumber row, std::size_t column, std::int32_t value) noexcept
    {
        PrvStore(row, column, value);
    }
    void SetMoney(RowNumber row, std::size_t column, Currency value) noexcept
    {
        PrvStore(row, column, value.Scaled());
    }
    void SetBoolean(RowNumber row, std::size_t column, bool value) noexcept
    {
        PrvStore(row, column, static_cast<std::uint8_t>(value));
    }
    /// Throws std::bad_alloc; the row is unchanged then.
    void SetText(RowNumber row, std::size_t column, std::string_view text);
    /// Writes all texts of the row, in the order of the text columns. As SetText.
    void SetTexts(RowNumber row, std::span<const std::string_view> texts);

    /// A bound: no text that ever stood in the column since Clear is longer, in bytes.
    [[nodiscard]] std::size_t LongestText(std::size_t column) const noexcept
    {
        return m_longest[m_offsets[column]];
    }

    /// The row is no longer used: its texts may be dropped. Its values must not be read again.
    void Forget(RowNumber row) noexcept;

    /// A word of the row that belongs to whoever orders the rows (RowOrder); 0 in a new row.
    [[nodiscard]] std::uint32_t Tag(RowNumber row) const noexcept;
    void SetTag(RowNumber row, std::uint32_t tag) noexcept;

    /// Ask for the row's memory ahead of its use: the fixed record, then (a few rows later) the texts.
    void PrefetchRecord(RowNumber row) const noexcept { __builtin_prefetch(PrvRecord(row)); }
    void PrefetchTexts(RowNumber row) const noexcept { __builtin_prefetch(PrvTextRun(row)); }

private:
    // A record: the address of the text run, the tag, then the fixed columns, each at its offset.
    static constexpr std::size_t kTagOffset = sizeof(const char*);
    static constexpr std::size_t kFirstColumnOffset = kTagOffset + sizeof(std::uint32_t);
    static constexpr std::uint32_t kRowsPerChunkBits = 17;
    static constexpr std::uint32_t kRowsPerChunk = 1U << kRowsPerChunkBits;

    [[nodiscard]] char* PrvRecord(RowNumber row) const noexcept
    {
        return m_chunks[row >> kRowsPerChunkBits].get() + std::size_t{row & (kRowsPerChunk - 1)} * m_stride;
    }
    [[nodiscard]] const char* PrvTextRun(RowNumber row) const noexcept
    {
        const char* run = nullptr;
        std::memcpy(&run, PrvRecord(row), sizeof run);
        return run;
    }
    template<class Number>
    [[nodiscard]] Number PrvLoad(RowNumber row, std::size_t column) const noexcept
    {
        Number value;
        std::memcpy(&value, PrvRecord(row) + m_offsets[column], sizeof value);
        return value;
    }
    template<class Number>
    void PrvStore(RowNumber row, std::size_t column, Number value) noexcept
    {
        std::memcpy(PrvRecord(row) + m_offsets[column], &value, sizeof value);
    }

    template<class TextAt>
    [[nodiscard]] const char* PrvWriteTextRun(const TextAt& textAt);
    [[nodiscard]] char* PrvTextRoom(std::size_t size);
    [[nodiscard]] std::size_t PrvTextRunSize(const char* run) const noexcept;
    void PrvCompactTexts();

    std::vector<Column> m_columns;
    std::vector<std::uint32_t> m_offsets;     // fixed columns: in the record; text columns: their ordinal
    std::vector<std::uint32_t> m_textColumns; // the text columns, by their ordinal
    std::size_t m_stride = 0;

    std::vector<LargeBlock> m_chunks;
    RowNumber m_rowCount = 0;

    std::vector<LargeBlock> m_textBlocks;
    char* m_textNext = nullptr;
    char* m_textEnd = nullptr;
    std::size_t m_textBytes = 0;        // written into the arena
    std::size_t m_textGarbage = 0;      // of them, no longer referred to
    std::vector<std::size_t> m_longest; // by text ordinal
};

} // namespace KestrinProductEditor
