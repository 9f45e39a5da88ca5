// SPDX-License-Identifier: MIT
#include "kstnedit/CheckCommand.h"

#include "kstnedit/DisplayText.h"
#include "kstnedit/Failure.h"
#include "kstnedit/Paths.h"
#include "kstnedit/ProductRecord.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "store/table/TableGram.h"
#include "store/table/TableGramTypes.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

namespace KestrinProductEditor::CommandLine {

namespace {

struct TextLimit
{
    std::size_t column; // by CorvoProductFields
    CorvoProductFldSize most;
};

constexpr TextLimit kTextLimits[] = {
    {PF_Name, PFS_Name}, {PF_Key, PFS_Key}, {PF_PartNum, PFS_PartNum}, {PF_Note, PFS_Note}};

std::vector<Column> ColumnsToRead()
{
    std::vector<Column> columns;
    for (const std::string_view name : kColumnNames)
        columns.push_back({ToUtf16(name), ColumnType::Long, 4});
    for (const TextLimit& limit : kTextLimits) {
        columns[limit.column].type = ColumnType::NarrowText;
        columns[limit.column].definedSize = limit.most;
    }
    columns[PF_Note].type = ColumnType::WideText;
    columns[PF_UnitPrice].type = ColumnType::Currency;
    columns[PF_UnitPrice].definedSize = 8;
    for (Column* const flag : {&columns[PF_DirtySession], &columns[PF_DirtySync]}) {
        flag->type = ColumnType::Boolean;
        flag->definedSize = 2;
    }
    return columns;
}

/// Collects what is wrong with the products, and prints the first few of each kind.
class Findings
{
public:
    Findings(Console& console, std::string_view kind) : m_console(console), m_kind(kind) {}

    void Add(const std::string& finding)
    {
        constexpr std::size_t kShown = 10;
        if (++m_count <= kShown)
            m_shown.push_back(finding);
    }

    void Print() const
    {
        std::string line = std::string(m_kind) + ": ";
        if (m_count == 0) {
            m_console.WriteLine(line + "none");
            return;
        }
        m_console.WriteLine(line + std::to_string(m_count));
        for (const std::string& finding : m_shown)
            m_console.WriteLine("  " + finding);
        if (m_count > m_shown.size())
            m_console.WriteLine("  and " + std::to_string(m_count - m_shown.size()) + " more");
    }

private:
    Console& m_console;
    std::string_view m_kind;
    std::size_t m_count = 0;
    std::vector<std::string> m_shown;
};

std::string RowText(const RowStore& rows, RowNumber row)
{
    return "RowID " + std::to_string(rows.Long(row, PF_RowID)) + " (row " + std::to_string(row + 1) + ")";
}

void PrintColumns(Console& console, const TableGram::Report& report)
{
    console.WriteLine("columns: " + std::to_string(report.columns.size()));
    for (const TableGram::FileColumn& column : report.columns) {
        const TableGram::TypeFacts* const facts = TableGram::FactsOf(column.type);
        std::string line = "  " + Visible(ToUtf8(column.name));
        constexpr std::size_t kNameWidth = 16;
        line.append(line.size() < kNameWidth ? kNameWidth - line.size() : 1, ' ');
        line += facts != nullptr ? facts->name : "type " + std::to_string(column.type);
        line += ", " + Counted(column.maxLength, TableGram::IsWide(column.type) ? "character" : "byte");
        console.WriteLine(line);
    }
}

void PrintRows(Console& console, const TableGram::Report& report)
{
    const std::uint64_t products = report.originalRows + report.changedRows + report.insertedRows;
    console.WriteLine("rows: " + std::to_string(products) + " (" + std::to_string(report.originalRows) +
                      " original, " + std::to_string(report.changedRows) + " changed, " +
                      std::to_string(report.insertedRows) + " new), and " +
                      std::to_string(report.deletedRows) + " deleted");
}

void PrintDoubleIdentifiers(Console& console, const RowStore& rows)
{
    std::vector<std::int32_t> identifiers(rows.RowCount());
    for (RowNumber row = 0; row < rows.RowCount(); ++row)
        identifiers[row] = rows.Long(row, PF_RowID);
    std::sort(identifiers.begin(), identifiers.end());
    Findings findings(console, "row identifiers used more than once");
    for (auto first = identifiers.begin(); first != identifiers.end();) {
        const auto behind = std::upper_bound(first, identifiers.end(), *first);
        if (behind - first > 1)
            findings.Add("RowID " + std::to_string(*first) + ": " + std::to_string(behind - first) + " rows");
        first = behind;
    }
    findings.Print();
}

void PrintTexts(Console& console, const RowStore& rows)
{
    Findings blank(console, "rows without a name");
    Findings tooLong(console, "texts longer than a product takes");
    for (RowNumber row = 0; row < rows.RowCount(); ++row) {
        if (IsBlankName(rows.Text(row, PF_Name)))
            blank.Add(RowText(rows, row));
        for (const TextLimit& limit : kTextLimits) {
            const std::size_t length = Utf16Length(rows.Text(row, limit.column));
            if (length > static_cast<std::size_t>(limit.most))
                tooLong.Add(RowText(rows, row) + ": " + std::string(kColumnNames[limit.column]) + " has " +
                            std::to_string(length) + " characters, at most " + std::to_string(limit.most) +
                            " fit");
        }
    }
    blank.Print();
    tooLong.Print();
}

} // namespace

CheckCommand::CheckCommand()
    : Command("check", "Read a catalogue file and say what it holds, or where and why it is broken",
              "  kstnedit check\n  kstnedit check products-monday.cpd")
{
}

void CheckCommand::Declare(CLI::App& app)
{
    app.add_option("FILE", m_file, "The file to read (the catalogue)")->type_name("");
}

void CheckCommand::Execute(Console& console, EmbeddedHost& host)
{
    const std::u16string path = m_file.empty() ? host.CataloguePath() : PathFromNative(m_file);
    if (m_file.empty() && MayExist(host.CatalogueFolder()) && !MayExist(path))
        throw CommandFailure("there is no catalogue in " + QuotedPath(host.CatalogueFolder()) +
                             " yet. 'add', 'import' and 'restore' begin one.");
    RowStore rows(ColumnsToRead());
    TableGram::Report report;
    const std::unique_ptr<IReadStream> stream = FileSystem().OpenForReading(path);
    if (const auto fault = TableGram::Read(*stream, *CodePage::System(), rows, report))
        throw CommandFailure(QuotedPath(path) + " is no catalogue, or is broken, at byte " +
                             std::to_string(fault->offset) + ": " + fault->reason +
                             ". Nothing was changed. If it is your catalogue: move it away, then bring a "
                             "backup back with 'kstnedit restore FILE'.");
    console.WriteLine(Visible(ToUtf8(path)) + ": a product catalogue of " + Counted(report.size, "byte"));
    PrintRows(console, report);
    PrintColumns(console, report);
    PrintDoubleIdentifiers(console, rows);
    PrintTexts(console, rows);
}

} // namespace KestrinProductEditor::CommandLine
