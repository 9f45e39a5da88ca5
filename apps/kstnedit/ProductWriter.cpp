// SPDX-License-Identifier: MIT
#include "kstnedit/ProductWriter.h"

#include "kstnedit/CsvText.h"
#include "kstnedit/DisplayText.h"
#include "kstnedit/JsonText.h"
#include "util/modConversion.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace KestrinProductEditor::CommandLine {

namespace {

enum TableColumn : std::size_t
{
    kTableRowID,
    kTableName,
    kTablePartNum,
    kTablePrice,
    kTableNote,
    kTableColumns
};

using TableLine = std::array<std::string, kTableColumns>;

constexpr std::string_view kGap = "  ";

/// Brings the columns that hold texts down until `total` is no more than `available`, always the widest
/// first, but none below a width in which it says anything.
void Shrink(std::array<std::size_t, kTableColumns>& widths, std::size_t total, std::size_t available)
{
    constexpr std::size_t kLeastWidth = 8;
    while (total > available) {
        std::size_t* widest = &widths[kTableName];
        for (const TableColumn column : {kTablePartNum, kTableNote}) {
            if (widths[column] > *widest)
                widest = &widths[column];
        }
        if (*widest <= kLeastWidth)
            return;
        --*widest;
        --total;
    }
}

/// Keeps the lines until the widths of all are known.
class TableProductWriter final : public IProductWriter
{
public:
    explicit TableProductWriter(Console& console) : m_console(console)
    {
        PrvAdd({"RowID", "Name", "PartNum", "UnitPrice", "Note"});
    }

    void Add(const ProductRecord& product) override
    {
        PrvAdd({std::to_string(product.rowID), Visible(product.name), Visible(product.partNum),
                PriceText(product.unitPrice), Visible(product.note)});
    }

    void End() override
    {
        std::size_t total = (kTableColumns - 1) * kGap.size();
        for (const std::size_t width : m_widths)
            total += width;
        const std::size_t available = m_console.OutputColumns();
        if (available != 0)
            Shrink(m_widths, total, available);
        // Only the locale's own character sets hold the real ellipsis for sure.
        const std::string_view ellipsis = m_console.TextCodePage().IsUtf8() ? "\xE2\x80\xA6" : "...";
        for (const TableLine& line : m_lines) {
            const std::string text = PrvText(line, available != 0, ellipsis);
            m_console.WriteLine(available != 0 ? CutToWidth(text, available, ellipsis) : text);
        }
    }

private:
    void PrvAdd(TableLine line)
    {
        for (std::size_t column = 0; column < kTableColumns; ++column)
            m_widths[column] = std::max(m_widths[column], DisplayWidth(line[column]));
        m_lines.push_back(std::move(line));
    }

    [[nodiscard]] std::string PrvText(const TableLine& line, bool cuts, std::string_view ellipsis) const
    {
        std::string text;
        for (std::size_t column = 0; column < kTableColumns; ++column) {
            const std::string cell =
                cuts ? CutToWidth(line[column], m_widths[column], ellipsis) : line[column];
            const std::string padding(m_widths[column] - DisplayWidth(cell), ' ');
            const bool isNumber = column == kTableRowID || column == kTablePrice;
            if (column != 0)
                text += kGap;
            text += isNumber ? padding + cell : cell + padding;
        }
        text.erase(text.find_last_not_of(' ') + 1);
        return text;
    }

    Console& m_console;
    std::vector<TableLine> m_lines;
    std::array<std::size_t, kTableColumns> m_widths{};
};

/// One line for each column of the record; nothing is cut.
class SheetProductWriter final : public IProductWriter
{
public:
    explicit SheetProductWriter(Console& console) : m_console(console) {}

    void Add(const ProductRecord& product) override
    {
        const auto yesOrNo = [](bool value) { return value ? "yes" : "no"; };
        PrvLine(PF_RowID, std::to_string(product.rowID));
        PrvLine(PF_UniqueID, std::to_string(product.uniqueID));
        PrvLine(PF_Status, std::to_string(product.status));
        PrvLine(PF_Name, Visible(product.name));
        PrvLine(PF_Key, Visible(product.key));
        PrvLine(PF_PartNum, Visible(product.partNum));
        PrvLine(PF_UnitPrice, PriceText(product.unitPrice));
        PrvLine(PF_Note, Visible(product.note));
        PrvLine(PF_DirtySession, yesOrNo(product.dirtySession));
        PrvLine(PF_DirtySync, yesOrNo(product.dirtySync));
    }

    void End() override {}

private:
    void PrvLine(CorvoProductFields field, std::string_view value)
    {
        constexpr std::size_t kNameWidth = 14;
        std::string line(ColumnName(field));
        if (!value.empty()) {
            line.resize(kNameWidth, ' ');
            line += value;
        }
        m_console.WriteLine(line);
    }

    Console& m_console;
};

class CsvProductWriter final : public IProductWriter
{
public:
    explicit CsvProductWriter(Console& console) : m_console(console)
    {
        std::string line;
        for (const std::string_view name : kColumnNames)
            AppendCsvValue(name, line);
        m_console.WriteLine(line);
    }

    void Add(const ProductRecord& product) override
    {
        m_line.clear();
        AppendCsvValue(std::to_string(product.rowID), m_line);
        AppendCsvValue(std::to_string(product.uniqueID), m_line);
        AppendCsvValue(std::to_string(product.status), m_line);
        AppendCsvValue(product.name, m_line);
        AppendCsvValue(product.key, m_line);
        AppendCsvValue(product.partNum, m_line);
        AppendCsvValue(PriceText(product.unitPrice), m_line);
        AppendCsvValue(product.note, m_line);
        AppendCsvValue(product.dirtySession ? "true" : "false", m_line);
        AppendCsvValue(product.dirtySync ? "true" : "false", m_line);
        m_console.WriteLine(m_line);
    }

    void End() override {}

private:
    Console& m_console;
    std::string m_line;
};

class JsonProductWriter final : public IProductWriter
{
public:
    enum class Shape
    {
        Array,
        Object
    };

    JsonProductWriter(Console& console, Shape shape)
        : m_console(console), m_shape(shape),
          m_escapes(console.TextCodePage().IsUtf8() ? JsonEscapes::Least : JsonEscapes::AllButAscii)
    {
        if (m_shape == Shape::Array)
            m_console.Write("[");
    }

    void Add(const ProductRecord& product) override
    {
        m_text.clear();
        if (m_shape == Shape::Array)
            m_text += m_isFirst ? "\n  " : ",\n  ";
        m_isFirst = false;
        m_text += '{';
        PrvMember(PF_RowID, std::to_string(product.rowID));
        PrvMember(PF_UniqueID, std::to_string(product.uniqueID));
        PrvMember(PF_Status, std::to_string(product.status));
        PrvMember(PF_Name, JsonString(product.name, m_escapes));
        PrvMember(PF_Key, JsonString(product.key, m_escapes));
        PrvMember(PF_PartNum, JsonString(product.partNum, m_escapes));
        PrvMember(PF_UnitPrice, JsonString(modConversion::PlainText(product.unitPrice), m_escapes));
        PrvMember(PF_Note, JsonString(product.note, m_escapes));
        PrvMember(PF_DirtySession, product.dirtySession ? "true" : "false");
        PrvMember(PF_DirtySync, product.dirtySync ? "true" : "false");
        m_text += '}';
        m_console.Write(m_text);
    }

    void End() override
    {
        if (m_shape == Shape::Array)
            m_console.Write(m_isFirst ? "]" : "\n]");
        m_console.Write("\n");
    }

private:
    void PrvMember(CorvoProductFields field, std::string_view value)
    {
        if (field != PF_RowID)
            m_text += ", ";
        m_text += '"';
        m_text += ColumnName(field);
        m_text += "\": ";
        m_text += value;
    }

    Console& m_console;
    Shape m_shape;
    JsonEscapes m_escapes;
    bool m_isFirst = true;
    std::string m_text;
};

} // namespace

void FormatOption::Declare(CLI::App& app)
{
    app.add_option("--format", m_format, "How to print: table, csv or json (table)")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"table", "csv", "json"}));
}

std::unique_ptr<IProductWriter> FormatOption::MakeListWriter(Console& console) const
{
    if (m_format == "json")
        return std::make_unique<JsonProductWriter>(console, JsonProductWriter::Shape::Array);
    if (m_format == "csv")
        return std::make_unique<CsvProductWriter>(console);
    return std::make_unique<TableProductWriter>(console);
}

std::unique_ptr<IProductWriter> FormatOption::MakeSingleWriter(Console& console) const
{
    if (m_format == "json")
        return std::make_unique<JsonProductWriter>(console, JsonProductWriter::Shape::Object);
    if (m_format == "csv")
        return std::make_unique<CsvProductWriter>(console);
    return std::make_unique<SheetProductWriter>(console);
}

} // namespace KestrinProductEditor::CommandLine
