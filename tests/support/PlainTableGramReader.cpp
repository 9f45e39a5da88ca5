// SPDX-License-Identifier: MIT
#include "support/PlainTableGramReader.h"

#include <stdexcept>

namespace KestrinProductEditor::Testing {

namespace {

class Cursor
{
public:
    explicit Cursor(std::string_view bytes) : m_bytes(bytes) {}

    std::size_t at = 0;

    std::string Bytes(std::size_t count)
    {
        if (count > m_bytes.size() - at)
            throw std::runtime_error("ends too early, at " + std::to_string(at));
        at += count;
        return std::string(m_bytes.substr(at - count, count));
    }
    std::uint64_t Unsigned(std::size_t count)
    {
        const std::string bytes = Bytes(count);
        std::uint64_t number = 0;
        for (std::size_t i = count; i > 0; --i)
            number = number * 256 + static_cast<unsigned char>(bytes[i - 1]);
        return number;
    }
    unsigned Byte() { return static_cast<unsigned>(Unsigned(1)); }
    std::u16string Name()
    {
        const std::size_t units = Unsigned(2);
        return PlainWideText(Bytes(2 * units));
    }
    std::vector<bool> Map(std::size_t bits)
    {
        const std::string bytes = Bytes((bits + 7) / 8);
        std::vector<bool> map;
        for (std::size_t i = 0; i < bits; ++i)
            map.push_back(((static_cast<unsigned char>(bytes[i / 8]) >> (7 - i % 8)) & 1) == 1);
        return map;
    }

private:
    std::string_view m_bytes;
};

PlainColumn ReadColumn(Cursor& cursor)
{
    const std::size_t size = cursor.Unsigned(2);
    const std::size_t end = cursor.at + size;
    const unsigned first = cursor.Byte();
    cursor.Bytes(2);
    cursor.Bytes(2);
    PlainColumn column;
    if ((first & 0x80) != 0)
        column.name = cursor.Name();
    if ((first & 0x40) != 0)
        cursor.Bytes(2);
    if ((first & 0x20) != 0)
        cursor.Bytes(2);
    if ((first & 0x10) != 0)
        cursor.Name();
    column.type = static_cast<unsigned>(cursor.Unsigned(2));
    column.maxLength = static_cast<std::uint32_t>(cursor.Unsigned(4));
    cursor.Bytes(8);
    column.flags = static_cast<std::uint32_t>(cursor.Unsigned(4));
    if (cursor.at > end)
        throw std::runtime_error("column description too short");
    cursor.Bytes(end - cursor.at);
    return column;
}

std::string ReadValue(Cursor& cursor, const PlainColumn& column)
{
    if (column.type != 0x80 && column.type != 0x81 && column.type != 0x82)
        return cursor.Bytes(column.maxLength);
    const std::uint64_t room = column.type == 0x82 ? 2 * std::uint64_t{column.maxLength} : column.maxLength;
    if (room > 255)
        return cursor.Bytes(cursor.Unsigned(4));
    if ((column.flags & 0x10) != 0)
        return cursor.Bytes(room);
    return cursor.Bytes(cursor.Unsigned(1));
}

void ReadMapped(Cursor& cursor, const std::vector<PlainColumn>& columns, PlainRow& row)
{
    const std::vector<bool> values = cursor.Map(columns.size());
    const std::vector<bool> nulls = cursor.Map(columns.size());
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (nulls[i])
            row.values[i].reset();
        else if (values[i])
            row.values[i] = ReadValue(cursor, columns[i]);
    }
}

} // namespace

PlainTable ReadPlainTableGram(std::string_view bytes)
{
    using namespace std::string_view_literals;
    Cursor cursor(bytes);
    if (cursor.Bytes(9) != "\x01\x07TG!\0\0\0\0"sv)
        throw std::runtime_error("no table");
    PlainTable table;
    std::vector<bool> isNullable;
    std::size_t nullableCount = 0;
    for (;;) {
        const unsigned token = cursor.Byte();
        if (token == 0x02 || token == 0x03 || token == 0x10 || token == 0x05) {
            const std::string body = cursor.Bytes(cursor.Unsigned(2));
            if (token == 0x03)
                table.announcedRows = static_cast<std::uint32_t>(PlainNumber(body.substr(29, 4)));
        } else if (token == 0x06) {
            table.columns.push_back(ReadColumn(cursor));
            isNullable.push_back((table.columns.back().flags & 0x60) != 0);
            nullableCount += isNullable.back() ? 1U : 0U;
        } else if (token == 0x07) {
            const std::vector<bool> isThere = cursor.Map(nullableCount);
            PlainRow row;
            std::size_t bit = 0;
            for (std::size_t i = 0; i < table.columns.size(); ++i) {
                row.values.emplace_back();
                if (!isNullable[i] || isThere[bit++])
                    row.values[i] = ReadValue(cursor, table.columns[i]);
            }
            table.rows.push_back(row);
        } else if (token == 0x0A) {
            table.rows.back().state = PlainState::Changed;
            ReadMapped(cursor, table.columns, table.rows.back());
        } else if (token == 0x0C) {
            table.rows.back().state = PlainState::Deleted;
        } else if (token == 0x0D) {
            PlainRow row;
            row.state = PlainState::Inserted;
            row.values.resize(table.columns.size());
            ReadMapped(cursor, table.columns, row);
            table.rows.push_back(row);
        } else if (token == 0x0F) {
            table.end = cursor.at;
            return table;
        } else {
            throw std::runtime_error("unknown token at " + std::to_string(cursor.at - 1));
        }
    }
}

std::int64_t PlainNumber(const std::string& value)
{
    // Sign extension from the value's own width.
    std::uint64_t number =
        !value.empty() && (static_cast<unsigned char>(value.back()) & 0x80) != 0 ? ~0ULL : 0;
    for (std::size_t i = value.size(); i > 0; --i)
        number = (number << 8) | static_cast<unsigned char>(value[i - 1]);
    return static_cast<std::int64_t>(number);
}

std::u16string PlainWideText(const std::string& value)
{
    std::u16string text;
    for (std::size_t i = 0; i + 1 < value.size(); i += 2)
        text += static_cast<char16_t>(static_cast<unsigned char>(value[i]) |
                                      (static_cast<unsigned char>(value[i + 1]) << 8));
    return text;
}

} // namespace KestrinProductEditor::Testing
