// SPDX-License-Identifier: MIT
#include "support/GramTable.h"

#include <ostream>

namespace KestrinProductEditor::Testing {

namespace {

// The part before the columns, with a column count of 0: header, handler options, result description with its
// seven properties, context with its four and five.
constexpr std::string_view kFrontDigits = "01 07 544721 0000 00 00"
                                          "02 1900 B692F23F04B2CF118D2300AA005FFE58 01 0000 0000 0000 0000"
                                          "03 6700 D2AD63F602EBCF11B0E300AA003F000F 00 00 00"
                                          "   0000 0000 0000 0000 0000 00000000"
                                          "   0100 C13C8EB6EB6DD0118DF600AA005FFE58 0700"
                                          "   0B000000 0400 01000000  13000000 0400 01000000"
                                          "   0D000000 0000  0E000000 0000  0F000000 0000"
                                          "   10000000 0000  12000000 0000"
                                          "10 7C00 0200"
                                          "   BE22B5C8F35CCE11ADE500AA0044773D 0400"
                                          "   7F000000 0200 FFFF  86000000 0200 FFFF"
                                          "   22000000 0400 00000000  49000000 0400 00000000"
                                          "   C13C8EB6EB6DD0118DF600AA005FFE58 0500"
                                          "   04000000 0400 0F000000  05000000 0400 02000000"
                                          "   03000000 0400 0F000000  07000000 0400 32000000"
                                          "   08000000 0400 03000000";

} // namespace

void PrintTo(const Cell& cell, std::ostream* out)
{
    if (cell.isText)
        *out << '"' << cell.text << '"';
    else
        *out << cell.number;
}

void GramTable::Add(const Cells& cells)
{
    std::vector<RowStore::Value> values;
    for (const Cell& cell : cells)
        values.push_back({cell.number, cell.text});
    order.Append(rows.Append(values));
}

std::vector<Cells> GramTable::All() const
{
    std::vector<Cells> all;
    order.ForEach([&](RowNumber row) {
        Cells cells;
        for (std::size_t column = 0; column < rows.Columns().size(); ++column) {
            switch (rows.Columns()[column].type) {
            case ColumnType::Long:
                cells.emplace_back(rows.Long(row, column));
                break;
            case ColumnType::Currency:
                cells.emplace_back(rows.Money(row, column).Scaled());
                break;
            case ColumnType::Boolean:
                cells.emplace_back(rows.Boolean(row, column) ? 1 : 0);
                break;
            case ColumnType::NarrowText:
            case ColumnType::WideText:
                cells.emplace_back(rows.Text(row, column));
                break;
            }
        }
        all.push_back(std::move(cells));
    });
    return all;
}

std::vector<Column> CatalogueColumns()
{
    return {{u"RowID", ColumnType::Long, 4, true},     {u"UniqueID", ColumnType::Long, 4},
            {u"Status", ColumnType::Long, 4},          {u"Name", ColumnType::NarrowText, 255},
            {u"Key", ColumnType::NarrowText, 255},     {u"PartNum", ColumnType::NarrowText, 255},
            {u"UnitPrice", ColumnType::Currency, 8},   {u"Note", ColumnType::WideText, 4095},
            {u"DirtySession", ColumnType::Boolean, 2}, {u"DirtySync", ColumnType::Boolean, 2}};
}

const CodePage& Utf8()
{
    static const std::shared_ptr<const CodePage> codePage = CodePage::Named("utf-8");
    return *codePage;
}

std::string BytesOf(const GramTable& table, const CodePage& codePage)
{
    ByteWriteStream stream;
    TableGram::Write(table.rows, table.order, codePage, stream);
    return stream.Bytes();
}

Reading ReadFrom(IReadStream& stream, std::vector<Column> columns, const CodePage& codePage)
{
    Reading reading;
    reading.table = std::make_unique<GramTable>(std::move(columns));
    reading.fault = TableGram::Read(stream, codePage, reading.table->rows, reading.report);
    for (RowNumber row = 0; !reading.fault && row < reading.table->rows.RowCount(); ++row)
        reading.table->order.Append(row);
    return reading;
}

Reading ReadBytes(std::string_view bytes, std::vector<Column> columns, const CodePage& codePage)
{
    ByteReadStream stream{std::string(bytes)};
    return ReadFrom(stream, std::move(columns), codePage);
}

GramBytes::GramBytes(unsigned columns) : m_bytes(FromHex(kFrontDigits))
{
    const std::string count{static_cast<char>(columns & 0xFF), static_cast<char>(columns >> 8)};
    m_bytes.replace(0x3B, 4, count + count);
}

GramBytes& GramBytes::Raw(std::string_view bytes)
{
    m_bytes += bytes;
    return *this;
}

GramBytes& GramBytes::Wide(std::u16string_view text)
{
    for (const char16_t unit : text)
        U16(unit);
    return *this;
}

GramBytes& GramBytes::Column(std::u16string_view name, unsigned type, std::uint32_t maxLength,
                             std::uint32_t flags)
{
    U8(0x06).U16(29 + 2 * name.size()).Raw(FromHex("80 01 00")).U16(++m_columns);
    U16(name.size()).Wide(name).U16(type).U32(maxLength).U32(0).U32(0).U32(flags);
    return U16(0).U16(0xFFFF);
}

GramBytes& GramBytes::PrvNumber(std::uint64_t value, int size)
{
    for (int i = 0; i < size; ++i)
        m_bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
    return *this;
}

std::string FromHex(std::string_view digits)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string bytes;
    unsigned high = 0;
    bool hasHigh = false;
    for (const char digit : digits) {
        const std::size_t value = kDigits.find(digit);
        if (value == std::string_view::npos)
            continue;
        if (hasHigh)
            bytes += static_cast<char>(high * 16 + value);
        high = static_cast<unsigned>(value);
        hasHigh = !hasHigh;
    }
    return bytes;
}

} // namespace KestrinProductEditor::Testing
