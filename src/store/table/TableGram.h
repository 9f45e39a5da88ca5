// SPDX-License-Identifier: MIT
#pragma once

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "store/table/RowOrder.h"
#include "store/table/RowStore.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// The file form of a table: the platform recordset's binary form (docs/FILE-FORMAT.md).
namespace KestrinProductEditor::TableGram {

/// Where and why a file is no table.
struct Fault
{
    std::uint64_t offset = 0; ///< of the byte at which reading failed
    std::string reason;       ///< one clause in plain words, UTF-8
};

/// One column as the file describes it.
struct FileColumn
{
    std::u16string name;
    std::uint16_t type = 0;      ///< the file's type code
    std::uint32_t maxLength = 0; ///< bytes, UTF-16 units for wide text
    std::uint32_t flags = 0;
};

/// What a file held, beside the rows.
struct Report
{
    std::vector<FileColumn> columns;
    std::uint64_t originalRows = 0;
    std::uint64_t changedRows = 0;
    std::uint64_t deletedRows = 0;
    std::uint64_t insertedRows = 0;
    std::uint64_t size = 0; ///< bytes of the table
};

/// Reads a whole table into `rows`, which is empty before, in the order of the file. The columns of `rows`
/// are found by name; others are skipped. Deleted rows are left out; changed rows have their new values. An
/// absent value reads as "", 0 or false. Narrow text is decoded from `codePage`.
///
/// Returns what is wrong with the file, or nothing; `rows` is not to be used after a fault. A failure of
/// `stream` itself passes through. Memory grows with the bytes read, never with a length that the file
/// claims.
[[nodiscard]] std::optional<Fault> Read(IReadStream& stream, const CodePage& codePage, RowStore& rows,
                                        Report& report);

/// Writes the table: the columns and, in `order`, all rows. A text column is as large as defined, or as its
/// longest value needs when that is larger. Does not close the stream.
void Write(const RowStore& rows, const RowOrder& order, const CodePage& codePage, IWriteStream& stream);

} // namespace KestrinProductEditor::TableGram
