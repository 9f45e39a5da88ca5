// SPDX-License-Identifier: MIT
#include "exchange/CsvSample.h"

#include "exchange/OrdinaryFile.h"
#include "exchange/csv/CsvLineReader.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Text.h"

#include <KestrinProductEditor/AutomationError.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kMostLines = 5;
/// A line of commas alone must not become as many rows of a list.
constexpr std::size_t kMostColumns = 10'000;

/// The lines of a sample are much shorter than this; a disk image or a file without line ends is not.
constexpr std::size_t kMostBytes = std::size_t{4} << 20;

/// A file that is no list of lines must not be taken into memory whole in search of the end of its first one.
class HeadOfFile final : public IReadStream
{
public:
    explicit HeadOfFile(std::u16string_view path) : m_file(FileSystem().OpenForReading(path)) {}

    [[nodiscard]] std::uint64_t Size() const override { return m_file->Size(); }

    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
    {
        if (m_count > kMostBytes)
            throw AutomationError(kErrInvalidFileFormat, {},
                                  AutomationError::TextOf(kErrInvalidFileFormat) +
                                      u": the first lines are too long");
        const std::size_t count = m_file->Read(buffer, size);
        m_count += count;
        return count;
    }

private:
    std::unique_ptr<IReadStream> m_file;
    std::size_t m_count = 0;
};

[[nodiscard]] std::u16string WithoutOuterBlanks(std::u16string_view text)
{
    const std::size_t first = text.find_first_not_of(u' ');
    if (first == std::u16string_view::npos)
        return {};
    return std::u16string(text.substr(first, text.find_last_not_of(u' ') - first + 1));
}

[[nodiscard]] std::vector<std::u16string> Cells(const CsvLineReader& reader)
{
    std::vector<std::u16string> cells;
    std::string columnScratch;
    std::string scratch;
    const std::size_t count = std::min(reader.Columns().Count(), kMostColumns);
    for (std::size_t column = 0; column < count; ++column) {
        std::u16string cell = ToUtf16(reader.Decode(reader.Columns().Column(column, columnScratch), scratch));
        cells.push_back(reader.Columns().BeginsWithQuote(column) ? std::move(cell)
                                                                 : WithoutOuterBlanks(cell));
    }
    return cells;
}

[[noreturn]] void RefuseLine(const CsvLineReader& reader, std::string_view reason)
{
    throw AutomationError(kErrInvalidFileFormat, {},
                          AutomationError::TextOf(kErrInvalidFileFormat) + u": line " +
                              ToUtf16(std::to_string(reader.LineNumber())) + u" " + ToUtf16(reason));
}

} // namespace

CsvSample ReadCsvSample(std::u16string_view path, FirstLine firstLine)
{
    RequireOrdinaryFile(path);
    HeadOfFile stream(path);
    const std::shared_ptr<const CodePage> codePage = CodePage::System();
    CsvLineReader reader(stream, *codePage);
    reader.KeepColumns(kMostColumns);

    CsvSample sample;
    if (!reader.Next())
        return sample;
    const std::size_t columns = reader.Columns().Count();
    if (columns == 0)
        RefuseLine(reader, "is empty");
    sample.columnNames = Cells(reader);
    if (firstLine == FirstLine::Product) {
        for (std::size_t column = 0; column < sample.columnNames.size(); ++column)
            sample.columnNames[column] = u"Column " + ToUtf16(std::to_string(column + 1));
    }
    while (sample.lines.size() < kMostLines && reader.Next()) {
        if (reader.Columns().Count() != columns)
            RefuseLine(reader, "has another number of columns than the first");
        sample.lines.push_back(Cells(reader));
    }
    return sample;
}

} // namespace KestrinProductEditor
