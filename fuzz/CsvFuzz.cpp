// SPDX-License-Identifier: MIT

// Any bytes at all: every window finds the same lines and columns, the columns are those of the plain
// splitter, and what the writer makes of them is read back cleaned.

#include "exchange/csv/CsvLineReader.h"
#include "exchange/csv/CsvWriter.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "util/modUtil.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace KestrinProductEditor;

constexpr std::size_t kLargeWindow = 4096; // for what a fuzzer sends

void Require(bool holds)
{
    if (!holds) {
        std::abort();
    }
}

class ReadStream final : public IReadStream
{
public:
    ReadStream(std::string_view bytes, std::size_t step) : m_bytes(bytes), m_step(step) {}

    [[nodiscard]] std::uint64_t Size() const override { return m_bytes.size(); }
    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
    {
        const std::size_t count = m_bytes.copy(buffer, std::min(size, m_step));
        m_bytes.remove_prefix(count);
        return count;
    }

private:
    std::string_view m_bytes;
    std::size_t m_step;
};

class WriteStream final : public IWriteStream
{
public:
    explicit WriteStream(std::string& out) : m_out(out) {}

    void Write(std::string_view bytes) override { m_out += bytes; }
    void Close() override {}

private:
    std::string& m_out;
};

struct Line
{
    std::string text;
    std::size_t length;
    std::vector<std::string> columns; // as they stand
    std::vector<std::string> decoded;

    friend bool operator==(const Line&, const Line&) = default;
};

std::vector<Line> LinesOf(std::string_view bytes, const CodePage& codePage, std::size_t windowSize,
                          std::size_t step)
{
    ReadStream stream(bytes, step);
    CsvLineReader reader(stream, codePage, windowSize);
    std::vector<Line> lines;
    std::string scratch;
    std::string decoded;
    while (reader.Next()) {
        Line line{std::string(reader.Line()), reader.LineLength(), {}, {}};
        for (std::size_t index = 0; index < reader.Columns().Count(); ++index) {
            const std::string_view column = reader.Columns().Column(index, scratch);
            line.columns.emplace_back(column);
            line.decoded.emplace_back(reader.Decode(column, decoded));
        }
        lines.push_back(std::move(line));
        Require(reader.LineNumber() == lines.size());
    }
    Require(!reader.Next());
    return lines;
}

void CheckAgainstThePlainSplitter(const Line& line)
{
    Require(line.length == Utf16Length(line.text));
    bool isError = true;
    const Variant columns = modUtil::SplitQuoted(ToUtf16(line.text), u",", isError);
    Require(!isError);
    if (columns.IsNull()) {
        Require(line.columns.empty());
        return;
    }
    Require(static_cast<std::size_t>(columns.Array().Extent(1)) == line.columns.size());
    for (std::size_t index = 0; index < line.columns.size(); ++index) {
        Require(ToUtf8(columns.At(static_cast<std::int32_t>(index)).String()) == line.columns[index]);
    }
}

std::string Cleaned(std::string value)
{
    for (std::size_t at = value.find("\r\n"); at != std::string::npos; at = value.find("\r\n", at)) {
        value.replace(at, 2, ";");
    }
    std::replace(value.begin(), value.end(), '\n', ';');
    std::replace(value.begin(), value.end(), '\r', ';');
    std::replace(value.begin(), value.end(), '"', '\'');
    return value;
}

/// Writes each value of `lines`, and the whole file as one value, and reads them again.
void CheckTheWayBack(const std::vector<Line>& lines, std::string_view everything, const CodePage& codePage)
{
    std::vector<std::vector<std::string>> rows;
    for (const Line& line : lines) {
        rows.push_back(line.decoded);
    }
    std::string scratch;
    rows.push_back({std::string(codePage.Decode(everything, scratch))});

    std::string bytes;
    {
        WriteStream stream(bytes);
        CsvWriter writer(stream, codePage, 64);
        for (const std::vector<std::string>& row : rows) {
            writer.WriteLine(std::vector<std::string_view>(row.begin(), row.end()));
        }
        writer.Close();
    }

    const std::vector<Line> again = LinesOf(bytes, codePage, kLargeWindow, bytes.size());
    Require(again.size() == rows.size());
    for (std::size_t row = 0; row < rows.size(); ++row) {
        Require(again[row].decoded.size() == rows[row].size());
        for (std::size_t column = 0; column < rows[row].size(); ++column) {
            const std::string cleaned = Cleaned(rows[row][column]);
            Require(again[row].columns[column] == codePage.Encode(cleaned, scratch));
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const std::shared_ptr<const CodePage> utf8 = CodePage::Named("utf-8");
    static const std::shared_ptr<const CodePage> windows1252 = CodePage::Named("windows-1252");
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);

    for (const CodePage* const codePage : {utf8.get(), windows1252.get()}) {
        const std::vector<Line> lines = LinesOf(bytes, *codePage, kLargeWindow, size + 1);
        for (const std::size_t windowSize : {1U, 2U, 3U, 7U, 64U, 100U}) {
            Require(LinesOf(bytes, *codePage, windowSize, size + 1) == lines);
        }
        Require(LinesOf(bytes, *codePage, kLargeWindow, 1) == lines);
        if (codePage == utf8.get()) {
            for (const Line& line : lines) {
                if (IsValidUtf8(line.text)) {
                    CheckAgainstThePlainSplitter(line);
                }
            }
        }
        CheckTheWayBack(lines, bytes, *codePage);
    }
    return 0;
}
