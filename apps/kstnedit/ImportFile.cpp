// SPDX-License-Identifier: MIT
#include "kstnedit/ImportFile.h"

#include "exchange/csv/CsvLineReader.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/UserLocale.h"
#include "store/Product.h"
#include "util/modConversion.h"

#include <KestrinProductEditor/CorvoProductFields.h>

#include <algorithm>
#include <cstddef>
#include <memory>

namespace KestrinProductEditor::CommandLine {

namespace {

/// An open CSV file, as the store reads it.
class OpenFile
{
public:
    explicit OpenFile(std::u16string_view path)
        : m_stream(FileSystem().OpenForReading(path)), m_codePage(CodePage::System()),
          m_reader(*m_stream, *m_codePage)
    {
    }

    [[nodiscard]] CsvLineReader& Lines() noexcept { return m_reader; }

private:
    std::unique_ptr<IReadStream> m_stream;
    std::shared_ptr<const CodePage> m_codePage;
    CsvLineReader m_reader;
};

std::string TextOfColumn(const CsvLineReader& reader, std::size_t column)
{
    std::string columnScratch;
    std::string scratch;
    return std::string(reader.Decode(reader.Columns().Column(column, columnScratch), scratch));
}

} // namespace

std::vector<std::string> ReadTitles(std::u16string_view path)
{
    // A line of commas alone must not become as many texts.
    constexpr std::size_t kMostTitles = 10'000;
    OpenFile file(path);
    CsvLineReader& reader = file.Lines();
    reader.KeepColumns(kMostTitles);
    std::vector<std::string> titles;
    if (reader.Next()) {
        for (std::size_t column = 0; column < std::min(reader.Columns().Count(), kMostTitles); ++column)
            titles.push_back(TextOfColumn(reader, column));
    }
    return titles;
}

void ImportDoubts::Lines::Add(std::uint64_t line)
{
    if (count++ == 0)
        firstLine = line;
}

ImportDoubts FindDoubts(std::u16string_view path, const ImportMapping& mapping, FirstLine firstLine)
{
    OpenFile file(path);
    CsvLineReader& reader = file.Lines();
    const std::int32_t lastColumn = *std::max_element(mapping.columns.begin(), mapping.columns.end());
    reader.KeepColumns(static_cast<std::size_t>(std::int64_t{lastColumn} + 1));
    const bool hasTitles = firstLine == FirstLine::Titles && reader.Next();
    const std::size_t titleCount = hasTitles ? reader.Columns().Count() : 0;
    const MoneyLayout money = UserLocale().Money();
    const std::int32_t priceColumn = mapping.columns[kImportPrice];
    std::string columnScratch;
    std::string scratch;
    ImportDoubts doubts;
    while (reader.Next()) {
        const std::size_t columns = reader.Columns().Count();
        if (lastColumn >= 0 && static_cast<std::size_t>(lastColumn) >= columns)
            continue;
        if (priceColumn >= 0) {
            const std::string_view text = reader.Decode(
                reader.Columns().Column(static_cast<std::size_t>(priceColumn), columnScratch), scratch);
            const modConversion::CurrencyResult price = modConversion::CurrencyFromText(text, money);
            if (price.error != modConversion::ConversionError::None)
                continue;
            if (price.value < Currency() || price.value > kPriceCeiling)
                doubts.zeroedPrices.Add(reader.LineNumber());
        }
        const auto isCut = [&](std::size_t field, std::size_t limit) {
            const std::int32_t column = mapping.columns[field];
            if (column < 0)
                return false;
            const std::string_view text =
                reader.Columns().Column(static_cast<std::size_t>(column), columnScratch);
            return text.size() > limit && Utf16Length(reader.Decode(text, scratch)) > limit;
        };
        if (isCut(kImportName, PFS_Name) || isCut(kImportPartNum, PFS_PartNum) ||
            isCut(kImportNote, PFS_Note))
            doubts.cutTexts.Add(reader.LineNumber());
        if (hasTitles && columns > titleCount)
            doubts.widerThanTitles.Add(reader.LineNumber());
    }
    return doubts;
}

} // namespace KestrinProductEditor::CommandLine
