// SPDX-License-Identifier: MIT
#include "SqliteTable.h"

#include "Products.h"

#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>

namespace KestrinProductEditor::Bench {

namespace {

[[noreturn]] void Fail(sqlite3* database)
{
    throw std::runtime_error(std::string("SQLite: ") + sqlite3_errmsg(database));
}

sqlite3* Open(const char* name)
{
    sqlite3* database = nullptr;
    if (sqlite3_open(name, &database) != SQLITE_OK)
        Fail(database);
    return database;
}

struct CloseDatabase
{
    void operator()(sqlite3* database) const noexcept { sqlite3_close(database); }
};
using FileDatabase = std::unique_ptr<sqlite3, CloseDatabase>;

void Copy(sqlite3* from, sqlite3* to)
{
    constexpr int kAllPages = -1;
    sqlite3_backup* const backup = sqlite3_backup_init(to, "main", from, "main");
    if (backup == nullptr)
        Fail(to);
    sqlite3_backup_step(backup, kAllPages);
    if (sqlite3_backup_finish(backup) != SQLITE_OK)
        Fail(to);
}

struct CloseFile
{
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File OpenFile(const std::filesystem::path& path, const char* mode)
{
    File file(std::fopen(path.c_str(), mode));
    if (!file)
        throw std::runtime_error("cannot open " + path.string());
    return file;
}

std::string ReadWhole(const std::filesystem::path& path)
{
    const File file = OpenFile(path, "rb");
    std::string bytes(std::filesystem::file_size(path), '\0');
    if (std::fread(bytes.data(), 1, bytes.size(), file.get()) != bytes.size())
        throw std::runtime_error("cannot read " + path.string());
    return bytes;
}

/// Reads one value and moves behind the comma or the line end that ends it. `scratch` holds the value when
/// quotes inside had to go.
std::string_view TakeValue(std::string_view text, std::size_t& at, std::string& scratch)
{
    if (at < text.size() && text[at] == '"') {
        scratch.clear();
        for (++at; at < text.size(); ++at) {
            if (text[at] == '"') {
                if (at + 1 == text.size() || text[at + 1] != '"')
                    break;
                ++at;
            }
            scratch += text[at];
        }
        ++at;
        if (at < text.size() && text[at] == ',')
            ++at;
        return scratch;
    }
    const std::size_t begin = at;
    while (at < text.size() && text[at] != ',' && text[at] != '\r' && text[at] != '\n')
        ++at;
    const std::string_view value = text.substr(begin, at - begin);
    if (at < text.size() && text[at] == ',')
        ++at;
    return value;
}

void SkipLineEnd(std::string_view text, std::size_t& at)
{
    while (at < text.size() && text[at] != '\n')
        ++at;
    ++at;
}

/// "$1,234.50" in ten-thousandths.
std::int64_t PriceFromText(std::string_view text)
{
    std::int64_t price = 0;
    std::int64_t unit = 0;
    for (const char letter : text) {
        if (letter == '.') {
            unit = 10000;
        } else if (letter >= '0' && letter <= '9') {
            price = price * 10 + (letter - '0');
            unit /= 10;
        }
    }
    return unit == 0 ? price * 10000 : price * unit;
}

void WriteQuoted(std::string_view value, std::FILE* file)
{
    std::fputc('"', file);
    while (const void* const quote = std::memchr(value.data(), '"', value.size())) {
        const auto length = static_cast<std::size_t>(static_cast<const char*>(quote) - value.data()) + 1;
        std::fwrite(value.data(), 1, length, file);
        std::fputc('"', file);
        value.remove_prefix(length);
    }
    std::fwrite(value.data(), 1, value.size(), file);
    std::fputc('"', file);
}

} // namespace

SqliteStatement::SqliteStatement(sqlite3* database, const std::string& sql)
{
    if (sqlite3_prepare_v2(database, sql.c_str(), static_cast<int>(sql.size()), &m_statement, nullptr) !=
        SQLITE_OK)
        Fail(database);
}

SqliteStatement::~SqliteStatement()
{
    sqlite3_finalize(m_statement);
}

void SqliteStatement::Bind(int parameter, std::int64_t value)
{
    sqlite3_bind_int64(m_statement, parameter, value);
}

void SqliteStatement::Bind(int parameter, std::string_view value)
{
    sqlite3_bind_text(m_statement, parameter, value.data(), static_cast<int>(value.size()), SQLITE_STATIC);
}

bool SqliteStatement::Step()
{
    const int result = sqlite3_step(m_statement);
    if (result == SQLITE_ROW)
        return true;
    if (result != SQLITE_DONE)
        Fail(sqlite3_db_handle(m_statement));
    sqlite3_reset(m_statement);
    return false;
}

void SqliteStatement::Run()
{
    while (Step()) {
    }
}

void SqliteStatement::Reset()
{
    sqlite3_reset(m_statement);
}

std::int64_t SqliteStatement::Number(int column) const
{
    return sqlite3_column_int64(m_statement, column);
}

std::string_view SqliteStatement::Text(int column) const
{
    const void* const text = sqlite3_column_text(m_statement, column);
    return {static_cast<const char*>(text),
            static_cast<std::size_t>(sqlite3_column_bytes(m_statement, column))};
}

SqliteTable::SqliteTable() : m_database(Open(":memory:"))
{
    // Nothing here needs to be undone, and nobody else has the database.
    Execute("PRAGMA journal_mode = OFF");
    Execute("PRAGMA locking_mode = EXCLUSIVE");
    Execute("PRAGMA temp_store = MEMORY");
}

SqliteTable::~SqliteTable()
{
    sqlite3_close(m_database);
}

void SqliteTable::Execute(const std::string& sql)
{
    if (sqlite3_exec(m_database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
        Fail(m_database);
}

std::string SqliteTable::PlanOf(const std::string& sql)
{
    constexpr int kDetail = 3;
    SqliteStatement plan(m_database, "EXPLAIN QUERY PLAN " + sql);
    std::string text;
    while (plan.Step())
        text.append(plan.Text(kDetail)).append("\n");
    return text;
}

std::size_t SqliteTable::Import(const std::filesystem::path& file, UniqueIds uniqueIds,
                                std::int32_t firstRowID)
{
    Execute("BEGIN");
    Execute("CREATE TABLE Products (RowID INTEGER PRIMARY KEY, UniqueID INTEGER, Status INTEGER,"
            " Name TEXT COLLATE NOCASE, Key TEXT, PartNum TEXT, UnitPrice INTEGER, Note TEXT,"
            " DirtySession INTEGER, DirtySync INTEGER)");
    SqliteStatement insert(m_database, "INSERT INTO Products VALUES (?1, ?2, 0, ?3, '', ?4, ?5, ?6, 1, 1)");
    const std::string text = ReadWhole(file);
    std::size_t at = 0;
    SkipLineEnd(text, at);
    std::array<std::string, 4> scratch;
    std::size_t rows = 0;
    while (at < text.size()) {
        const std::int32_t rowID = firstRowID + static_cast<std::int32_t>(rows);
        insert.Bind(1, std::int64_t{rowID});
        insert.Bind(2, std::int64_t{uniqueIds == UniqueIds::Zero ? 0 : UniqueIdOf(rowID)});
        insert.Bind(3, TakeValue(text, at, scratch[0]));
        insert.Bind(4, TakeValue(text, at, scratch[1]));
        insert.Bind(5, PriceFromText(TakeValue(text, at, scratch[2])));
        insert.Bind(6, TakeValue(text, at, scratch[3]));
        SkipLineEnd(text, at);
        insert.Run();
        ++rows;
    }
    Execute("CREATE INDEX ByUniqueID ON Products (UniqueID)");
    Execute("CREATE INDEX ByName ON Products (Name COLLATE NOCASE)");
    Execute("COMMIT");
    return rows;
}

void SqliteTable::Export(const std::filesystem::path& file)
{
    constexpr std::size_t kBuffer = std::size_t{1} << 20;
    const File output = OpenFile(file, "wb");
    std::setvbuf(output.get(), nullptr, _IOFBF, kBuffer);
    std::fputs("\"Name\",\"PartNum\",\"UnitPrice\",\"Note\"\r\n", output.get());
    SqliteStatement select(
        m_database, "SELECT Name, PartNum, UnitPrice, Note FROM Products ORDER BY Name COLLATE NOCASE");
    while (select.Step()) {
        WriteQuoted(select.Text(0), output.get());
        std::fputc(',', output.get());
        WriteQuoted(select.Text(1), output.get());
        const long long price = select.Number(2);
        std::fprintf(output.get(), ",\"$%lld.%02lld\",", price / 10000, price % 10000 / 100);
        WriteQuoted(select.Text(3), output.get());
        std::fputs("\r\n", output.get());
    }
    if (std::fflush(output.get()) != 0)
        throw std::runtime_error("cannot write " + file.string());
}

void SqliteTable::Load(const std::filesystem::path& file)
{
    const FileDatabase source(Open(file.c_str()));
    Copy(source.get(), m_database);
}

void SqliteTable::Save(const std::filesystem::path& file)
{
    const FileDatabase target(Open(file.c_str()));
    if (sqlite3_exec(target.get(), "PRAGMA synchronous = FULL", nullptr, nullptr, nullptr) != SQLITE_OK)
        Fail(target.get());
    Copy(m_database, target.get());
}

} // namespace KestrinProductEditor::Bench
