// SPDX-License-Identifier: MIT
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The same catalogue in an SQLite database in memory, used the way a careful user of that library would.
namespace KestrinProductEditor::Bench {

/// A prepared statement. Parameters and columns count as in SQLite: from 1, and from 0.
class SqliteStatement
{
public:
    SqliteStatement(sqlite3* database, const std::string& sql);
    SqliteStatement(const SqliteStatement&) = delete;
    SqliteStatement& operator=(const SqliteStatement&) = delete;
    ~SqliteStatement();

    void Bind(int parameter, std::int64_t value);
    /// The text must stay in place until the statement was run.
    void Bind(int parameter, std::string_view value);
    /// Whether there is a row. After the last one the statement is ready to run again.
    [[nodiscard]] bool Step();
    /// Steps through all rows, which nobody looks at.
    void Run();
    /// Makes the statement ready again before its last row.
    void Reset();

    [[nodiscard]] std::int64_t Number(int column) const;
    [[nodiscard]] std::string_view Text(int column) const;

private:
    sqlite3_stmt* m_statement = nullptr;
};

class SqliteTable
{
public:
    enum class UniqueIds
    {
        Zero,  ///< as an import leaves them
        Spread ///< as UniqueIdOf tells
    };

    /// An empty database in memory.
    SqliteTable();
    SqliteTable(const SqliteTable&) = delete;
    SqliteTable& operator=(const SqliteTable&) = delete;
    ~SqliteTable();

    /// Reads a price list with a plain splitter, in one transaction, and makes the indexes behind it. Row
    /// identifiers run from `firstRowID`. Returns the number of rows.
    std::size_t Import(const std::filesystem::path& file, UniqueIds uniqueIds, std::int32_t firstRowID);
    void Export(const std::filesystem::path& file);

    /// Copies a database file into this one, and this one into a file, synced to the disk.
    void Load(const std::filesystem::path& file);
    void Save(const std::filesystem::path& file);

    void Execute(const std::string& sql);
    /// How SQLite would run the query, in its own words.
    [[nodiscard]] std::string PlanOf(const std::string& sql);
    [[nodiscard]] sqlite3* Database() const noexcept { return m_database; }

private:
    sqlite3* m_database = nullptr;
};

} // namespace KestrinProductEditor::Bench
