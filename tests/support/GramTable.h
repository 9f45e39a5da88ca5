// SPDX-License-Identifier: MIT
#pragma once

#include "store/table/TableGram.h"
#include "support/ByteStreams.h"

#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace KestrinProductEditor::Testing {

/// One value of a row: a number (scaled for money, 0 or 1 for yes or no) or a text.
struct Cell
{
    Cell(int value) : number(value) {}
    Cell(std::int64_t value) : number(value) {}
    Cell(std::string_view value) : text(value), isText(true) {}
    Cell(const std::string& value) : text(value), isText(true) {}
    Cell(const char* value) : text(value), isText(true) {}

    bool operator==(const Cell&) const = default;

    std::int64_t number = 0;
    std::string text;
    bool isText = false;
};
void PrintTo(const Cell& cell, std::ostream* out);

using Cells = std::vector<Cell>;

/// Rows in the order in which they were added.
struct GramTable
{
    explicit GramTable(std::vector<Column> columns) : rows(std::move(columns)), order(rows) {}

    void Add(const Cells& cells);
    [[nodiscard]] std::vector<Cells> All() const;

    RowStore rows;
    RowOrder order;
};

/// The ten columns of a catalogue.
[[nodiscard]] std::vector<Column> CatalogueColumns();
[[nodiscard]] const CodePage& Utf8();

[[nodiscard]] std::string BytesOf(const GramTable& table, const CodePage& codePage = Utf8());

struct Reading
{
    std::optional<TableGram::Fault> fault;
    TableGram::Report report;
    std::unique_ptr<GramTable> table;
};
[[nodiscard]] Reading ReadFrom(IReadStream& stream, std::vector<Column> columns,
                               const CodePage& codePage = Utf8());
[[nodiscard]] Reading ReadBytes(std::string_view bytes, std::vector<Column> columns,
                                const CodePage& codePage = Utf8());

/// A file made by hand, part by part.
class GramBytes
{
public:
    /// Begins with the constant part of a file that announces so many columns.
    explicit GramBytes(unsigned columns);
    /// Begins with nothing.
    GramBytes() = default;

    GramBytes& U8(std::uint64_t value) { return PrvNumber(value, 1); }
    GramBytes& U16(std::uint64_t value) { return PrvNumber(value, 2); }
    GramBytes& U32(std::uint64_t value) { return PrvNumber(value, 4); }
    GramBytes& U64(std::uint64_t value) { return PrvNumber(value, 8); }
    GramBytes& Raw(std::string_view bytes);
    GramBytes& Wide(std::u16string_view text);
    GramBytes& Column(std::u16string_view name, unsigned type, std::uint32_t maxLength, std::uint32_t flags);

    [[nodiscard]] std::size_t Size() const noexcept { return m_bytes.size(); }
    [[nodiscard]] const std::string& Bytes() const noexcept { return m_bytes; }

private:
    GramBytes& PrvNumber(std::uint64_t value, int size);

    std::string m_bytes;
    unsigned m_columns = 0;
};

/// Bytes from pairs of hexadecimal digits; blanks and line ends are skipped.
[[nodiscard]] std::string FromHex(std::string_view digits);

} // namespace KestrinProductEditor::Testing
