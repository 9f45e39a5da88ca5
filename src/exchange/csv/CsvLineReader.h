// SPDX-License-Identifier: MIT
#pragma once

#include "exchange/csv/CsvColumns.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The lines of a CSV file and their columns, one after the other, from a window that slides over the file
/// and grows to the longest line.
///
/// CR LF, LF or a lone CR ends a line, inside quotes too; the last line needs no end, and a file that ends
/// with a line end has no empty line behind it. A NUL is a character like others. A file with a UTF-16 mark
/// at its head (either byte order) is read as UTF-16, one with a UTF-8 mark as UTF-8; the mark is skipped.
/// Without a mark the lines are the file's own bytes, in the code page.
class CsvLineReader
{
public:
    /// What is read at once; it stays in the cache until its lines were used.
    static constexpr std::size_t kDefaultWindowSize = std::size_t{256} * 1024;

    /// Reads nothing yet. Both must outlive the reader. Requires: windowSize > 0.
    CsvLineReader(IReadStream& stream, const CodePage& codePage, std::size_t windowSize = kDefaultWindowSize);

    /// Moves to the next line. False at the end of the file, then and ever after. A failure of the stream
    /// passes.
    [[nodiscard]] bool Next();

    /// The line as it stands, without its end; valid until Next. Empty before the first line and behind the
    /// last.
    [[nodiscard]] std::string_view Line() const noexcept { return m_line; }
    /// Whether the file is UTF-16: its lines and columns are then UTF-8 already.
    [[nodiscard]] bool LineIsUtf8() const noexcept { return m_utf16 != nullptr; }

    /// As CsvColumns::Keep.
    void KeepColumns(std::size_t most) noexcept { m_columns.Keep(most); }
    /// The columns of the line, found together with its end; their texts are to be decoded. Valid until Next.
    [[nodiscard]] const CsvColumns& Columns() const noexcept { return m_columns; }

    /// The UTF-8 text of one value of the line (a view of it, or text in `scratch`). A value that is not
    /// valid does not affect the others.
    [[nodiscard]] std::string_view Decode(std::string_view value, std::string& scratch) const;

    /// The number of characters (UTF-16 units) of the line, decoded as one value. Cheap where it is ASCII.
    [[nodiscard]] std::size_t LineLength() const;

    /// The number of the line in the file, from 1; 0 before the first line.
    [[nodiscard]] std::uint64_t LineNumber() const noexcept { return m_lineNumber; }

private:
    void PrvSkipMark();
    /// Reads more bytes behind those not yet given out, whose place may change. False at the end of the file.
    [[nodiscard]] bool PrvFill();
    /// Makes the line of the next `length` bytes. Requires: its columns have all their blocks.
    void PrvGiveLine(std::size_t length) noexcept;

    IReadStream* m_source; // the file, or m_utf16
    const CodePage* m_codePage;
    std::unique_ptr<IReadStream> m_utf16;
    std::shared_ptr<const CodePage> m_codePageOfMark;

    std::size_t m_readSize;
    std::vector<char>
        m_window;            // with a block's room behind, so that the last bytes can be looked at as a block
    std::size_t m_capacity;  // of the window without that room
    std::size_t m_begin = 0; // of the bytes not yet given out
    std::size_t m_end = 0;
    bool m_markSkipped = false;
    bool m_atEnd = false;
    bool m_afterCarriageReturn = false; // at the end of the bytes read: an LF that follows belongs to it

    std::string_view m_line;
    bool m_lineIsAscii = true; // known while its end was looked for; false may be too cautious
    CsvColumns m_columns;
    std::uint64_t m_lineNumber = 0;
};

} // namespace KestrinProductEditor
