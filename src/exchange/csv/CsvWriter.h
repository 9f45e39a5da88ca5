// SPDX-License-Identifier: MIT
#pragma once

#include "platform/CodePage.h"
#include "platform/Files.h"

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// Writes CSV lines: every value in double quotes, commas between, CR LF behind each line, in the code page.
///
/// A value is cleaned first: CR LF, then each LF and CR, becomes ";", and a double quote becomes "'". Lines
/// are collected and written many at a time. A failure of the stream passes, and ends the writing: what the
/// file holds is then a beginning of what it should, and nothing is written behind it, whatever is called.
class CsvWriter
{
public:
    /// How many bytes are collected.
    static constexpr std::size_t kDefaultBufferSize = std::size_t{256} * 1024;

    /// Both must outlive the writer.
    CsvWriter(IWriteStream& stream, const CodePage& codePage, std::size_t bufferSize = kDefaultBufferSize);
    CsvWriter(const CsvWriter&) = delete;
    CsvWriter& operator=(const CsvWriter&) = delete;
    /// Writes what was collected, as far as that succeeds: lines before a failure stay. Does not close the
    /// stream.
    ~CsvWriter();

    /// One line; the values are UTF-8. Requires: not closed.
    void WriteLine(std::span<const std::string_view> values);

    /// Writes what was collected and closes the stream. Does nothing after a failure.
    void Close();

private:
    void PrvAppend(std::string_view bytes);
    void PrvFlush();
    void PrvWrite(std::string_view bytes);

    IWriteStream& m_stream;
    const CodePage& m_codePage;
    std::vector<char> m_buffer;
    std::size_t m_used = 0;
    std::string m_cleaned;
    std::string m_encoded;
    bool m_failed = false;
};

} // namespace KestrinProductEditor
