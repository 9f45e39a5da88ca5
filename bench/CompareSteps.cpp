// SPDX-License-Identifier: MIT
#include "CompareSteps.h"

#include "BenchHost.h"
#include "BenchSystem.h"
#include "Products.h"
#include "SqliteTable.h"
#include "Stopwatch.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <memory>
#include <numeric>
#include <optional>
#include <random>
#include <stdexcept>
#include <unistd.h>
#include <utility>
#include <vector>

namespace KestrinProductEditor::Bench {

namespace {

constexpr std::size_t kFinds = 20000;
constexpr std::size_t kPages = 200;
constexpr std::size_t kSqlitePages = 20; // one of them walks over half a table
constexpr std::size_t kRowsOfPage = 50;
constexpr std::size_t kEdits = 2000;
// Each is asked for once: nobody types the same beginning over and over, and caches know it.
constexpr std::size_t kPrefixes = 200;

std::filesystem::path ListFile(const StepContext& context)
{
    return context.folder / "list.csv";
}
std::filesystem::path DatabaseFile(const StepContext& context)
{
    return context.folder / "catalogue.sqlite";
}
std::filesystem::path PrefixFile(const StepContext& context, std::size_t names)
{
    return context.folder / ("prefixes-" + std::to_string(names));
}

/// The same sequence of places on both sides, for each use its own.
class Places
{
public:
    Places(std::uint32_t count, std::uint32_t seed) : m_count(count), m_random(seed) {}

    std::uint32_t Next() { return static_cast<std::uint32_t>(m_random() % m_count); }

    /// `wanted` different places, or every place when there are fewer.
    std::vector<std::uint32_t> Different(std::size_t wanted)
    {
        std::vector<std::uint32_t> all(m_count);
        std::iota(all.begin(), all.end(), 0U);
        wanted = std::min(wanted, all.size());
        for (std::size_t i = 0; i < wanted; ++i)
            std::swap(all[i], all[i + m_random() % (all.size() - i)]);
        all.resize(wanted);
        return all;
    }

private:
    std::uint32_t m_count;
    std::mt19937 m_random; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same places in every run
};

enum PlaceUse : std::uint32_t
{
    kFindPlaces = 1,
    kPagePlaces,
    kRenamePlaces,
    kDeletePlaces
};

std::vector<Prefix> ReadPrefixes(const StepContext& context, std::size_t names)
{
    std::vector<Prefix> prefixes;
    std::ifstream file(PrefixFile(context, names));
    Prefix prefix;
    while (file >> prefix.names && file.get() == ' ' && std::getline(file, prefix.text))
        prefixes.push_back(prefix);
    if (prefixes.empty())
        throw std::runtime_error("no prefixes in " + context.folder.string());
    return prefixes;
}

std::string AddedName(std::uint32_t number)
{
    return ProductAt(0x40000000U + number).name;
}

std::string Renamed(std::uint32_t number)
{
    return ProductAt(0x50000000U + number).name;
}

std::u16string Utf16(const std::string& text)
{
    return std::filesystem::path(text).u16string();
}

std::shared_ptr<ProductLkpMgr> OpenStore(const StepContext& context)
{
    SetCatalogueFolder(context.folder);
    auto store = ProductLkpMgr::Create();
    store->CancelUpdate(true);
    if (store->Count() != static_cast<std::int32_t>(context.count))
        throw std::runtime_error("the catalogue does not hold " + std::to_string(context.count) +
                                 " products");
    return store;
}

std::shared_ptr<ProductLkpMgr> OpenEmptyStore(const StepContext& context)
{
    const std::filesystem::path folder = context.folder / "empty";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directory(folder);
    SetCatalogueFolder(folder);
    auto store = ProductLkpMgr::Create();
    store->CancelUpdate(true);
    return store;
}

void Prepare(const StepContext& context, Measurements& results)
{
    WritePriceList(ListFile(context), context.count);
    std::int32_t firstRowID = 0;
    {
        std::filesystem::remove(CatalogueFile(context.folder));
        SetCatalogueFolder(context.folder);
        const auto store = ProductLkpMgr::Create();
        ImportPriceList(*store, ListFile(context), context.count);
        firstRowID = FirstRowId(*store);
        SpreadUniqueIds(*store);
    }
    SqliteTable table;
    if (table.Import(ListFile(context), SqliteTable::UniqueIds::Spread, firstRowID) != context.count)
        throw std::runtime_error("the plain splitter lost lines");
    std::filesystem::remove(DatabaseFile(context));
    table.Save(DatabaseFile(context));

    for (const std::size_t names : {std::size_t{50}, std::size_t{1000}}) {
        std::ofstream file(PrefixFile(context, names));
        double sum = 0;
        const std::vector<Prefix> prefixes = SharedPrefixes(context.count, names, kPrefixes);
        for (const Prefix& prefix : prefixes) {
            file << prefix.names << ' ' << prefix.text << '\n';
            sum += static_cast<double>(prefix.names);
        }
        results["prefix-" + std::to_string(names)] = sum / static_cast<double>(prefixes.size());
    }
    results["payload"] = static_cast<double>(PayloadBytes(context.count));
    results["list-bytes"] = static_cast<double>(std::filesystem::file_size(ListFile(context)));
    results["catalogue-bytes"] =
        static_cast<double>(std::filesystem::file_size(CatalogueFile(context.folder)));
}

void ReadBytes(const StepContext& context, Measurements& results)
{
    const std::filesystem::path path = CatalogueFile(context.folder);
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const std::size_t size = std::filesystem::file_size(path);
    const Stopwatch watch;
    struct Free
    {
        void operator()(void* memory) const noexcept { std::free(memory); }
    };
    const std::unique_ptr<void, Free> memory(std::malloc(size));
    for (std::size_t done = 0; done < size;) {
        const ssize_t got = read(file, static_cast<char*>(memory.get()) + done, size - done);
        if (got <= 0)
            throw std::runtime_error("cannot read " + path.string());
        done += static_cast<std::size_t>(got);
    }
    results["read"] = watch.Microseconds();
    close(file);
}

void OurOpen(const StepContext& context, Measurements& results)
{
    SetCatalogueFolder(context.folder);
    const double before = ResidentBytes();
    const Stopwatch watch;
    const auto store = ProductLkpMgr::Create();
    const double opened = watch.Microseconds();
    const double grown = ResidentBytes() - before;
    store->CancelUpdate(true);
    const Stopwatch findWatch;
    store->FindRow(static_cast<std::int32_t>(context.count / 2));
    results["open.ours"] = opened;
    results["open-and-find.ours"] = opened + findWatch.Microseconds();
    results["memory.ours"] = grown;
    results["check.open.ours"] = store->Count();
}

void SqliteOpen(const StepContext& context, Measurements& results)
{
    const double before = ResidentBytes();
    const Stopwatch watch;
    SqliteTable table;
    table.Load(DatabaseFile(context));
    const double opened = watch.Microseconds();
    const double grown = ResidentBytes() - before;
    const Stopwatch findWatch;
    {
        SqliteStatement find(table.Database(), "SELECT Name FROM Products WHERE RowID = ?1");
        find.Bind(1, std::int64_t{context.count / 2});
        find.Run();
    }
    results["open.sqlite"] = opened;
    results["open-and-find.sqlite"] = opened + findWatch.Microseconds();
    results["memory.sqlite"] = grown;
    SqliteStatement count(table.Database(), "SELECT COUNT(*) FROM Products");
    static_cast<void>(count.Step());
    results["check.open.sqlite"] = static_cast<double>(count.Number(0));
}

void OurSave(const StepContext& context, Measurements& results)
{
    auto store = OpenStore(context);
    store->CancelUpdate(false);
    const Stopwatch watch;
    store.reset();
    results["save.ours"] = watch.Microseconds();
}

void OurSaveAsNew(const StepContext& context, Measurements& results)
{
    auto store = OpenStore(context);
    store->CancelUpdate(false);
    std::filesystem::remove(CatalogueFile(context.folder));
    const Stopwatch watch;
    store.reset();
    results["save-new.ours"] = watch.Microseconds();
}

void SqliteSave(const StepContext& context, Measurements& results)
{
    const std::filesystem::path temporary = context.folder / "saved.sqlite";
    std::filesystem::remove(temporary);
    std::optional<SqliteTable> table(std::in_place);
    table->Load(DatabaseFile(context));
    const Stopwatch watch;
    table->Save(temporary);
    std::filesystem::rename(temporary, DatabaseFile(context));
    table.reset();
    results["save.sqlite"] = watch.Microseconds();
}

void SqliteSaveAsNew(const StepContext& context, Measurements& results)
{
    const std::filesystem::path target = context.folder / "saved.sqlite";
    std::filesystem::remove(target);
    std::optional<SqliteTable> table(std::in_place);
    table->Load(DatabaseFile(context));
    const Stopwatch watch;
    table->Save(target);
    table.reset();
    results["save-new.sqlite"] = watch.Microseconds();
}

void OurImport(const StepContext& context, Measurements& results)
{
    const auto store = OpenEmptyStore(context);
    const Stopwatch watch;
    ImportPriceList(*store, ListFile(context), context.count);
    results["import.ours"] = watch.Microseconds();
    results["check.import.ours"] = store->Count();
}

void OurImportWithProgress(const StepContext& context, Measurements& results)
{
    const auto store = OpenEmptyStore(context);
    const auto receiver = std::make_shared<CountingReceiver>();
    store->SetNotifyCallback(receiver);
    const Stopwatch watch;
    ImportPriceList(*store, ListFile(context), context.count);
    results["import-progress.ours"] = watch.Microseconds();
    if (receiver->Calls() != context.count)
        throw std::runtime_error("the receiver was called " + std::to_string(receiver->Calls()) + " times");
}

void SqliteImport(const StepContext& context, Measurements& results)
{
    SqliteTable table;
    const Stopwatch watch;
    const std::size_t rows = table.Import(ListFile(context), SqliteTable::UniqueIds::Zero, 1);
    results["import.sqlite"] = watch.Microseconds();
    results["check.import.sqlite"] = static_cast<double>(rows);
}

double LinesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return static_cast<double>(
        std::count(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>(), '\n'));
}

void OurExport(const StepContext& context, Measurements& results)
{
    const auto store = OpenStore(context);
    const std::filesystem::path target = context.folder / "ours.csv";
    std::filesystem::remove(target);
    const Stopwatch watch;
    ExportPriceList(*store, target);
    results["export.ours"] = watch.Microseconds();
    results["check.export.ours"] = LinesOf(target);
    std::filesystem::remove(target);
}

void SqliteExport(const StepContext& context, Measurements& results)
{
    SqliteTable table;
    table.Load(DatabaseFile(context));
    const std::filesystem::path target = context.folder / "theirs.csv";
    std::filesystem::remove(target);
    const Stopwatch watch;
    table.Export(target);
    results["export.sqlite"] = watch.Microseconds();
    results["check.export.sqlite"] = LinesOf(target);
    std::filesystem::remove(target);
}

void OurFinds(ProductLkpMgr& store, const StepContext& context, std::int32_t firstRowID,
              Measurements& results)
{
    // The indexes are made at the first use of each; "open-and-find" shows what that costs.
    store.FindRow(firstRowID);
    store.FindRowBySyncID(firstRowID);
    const auto rowIdAt = [&](std::uint32_t place) { return firstRowID + static_cast<std::int32_t>(place); };
    std::size_t length = 0;
    Places places(context.count, kFindPlaces);
    const Stopwatch byRowId;
    for (std::size_t i = 0; i < kFinds; ++i) {
        store.FindRow(rowIdAt(places.Next()));
        length += store.Fields(PF_PartNum).String().size();
    }
    results["find-rowid.ours"] = byRowId.Microseconds() / kFinds;
    const Stopwatch byUniqueId;
    for (std::size_t i = 0; i < kFinds; ++i) {
        store.FindRowBySyncID(UniqueIdOf(rowIdAt(places.Next())));
        length += store.Fields(PF_PartNum).String().size();
    }
    results["find-uniqueid.ours"] = byUniqueId.Microseconds() / kFinds;
    results["check.find.ours"] = static_cast<double>(length);
}

void SqliteFinds(SqliteTable& table, const StepContext& context, std::int32_t firstRowID,
                 Measurements& results)
{
    const auto rowIdAt = [&](std::uint32_t place) { return firstRowID + static_cast<std::int32_t>(place); };
    SqliteStatement byRowIdQuery(table.Database(), "SELECT PartNum FROM Products WHERE RowID = ?1");
    SqliteStatement byUniqueIdQuery(table.Database(), "SELECT PartNum FROM Products WHERE UniqueID = ?1");
    std::size_t length = 0;
    const auto find = [&](SqliteStatement& query, std::int32_t value) {
        query.Bind(1, std::int64_t{value});
        while (query.Step())
            length += std::string(query.Text(0)).size();
    };
    Places places(context.count, kFindPlaces);
    const Stopwatch byRowId;
    for (std::size_t i = 0; i < kFinds; ++i)
        find(byRowIdQuery, rowIdAt(places.Next()));
    results["find-rowid.sqlite"] = byRowId.Microseconds() / kFinds;
    const Stopwatch byUniqueId;
    for (std::size_t i = 0; i < kFinds; ++i)
        find(byUniqueIdQuery, UniqueIdOf(rowIdAt(places.Next())));
    results["find-uniqueid.sqlite"] = byUniqueId.Microseconds() / kFinds;
    results["check.find.sqlite"] = static_cast<double>(length);
}

void OurMatchLists(ProductLkpMgr& store, const StepContext& context, std::size_t names, Measurements& results)
{
    std::vector<std::u16string> texts;
    for (const Prefix& prefix : ReadPrefixes(context, names))
        texts.push_back(Utf16(prefix.text));
    std::size_t matches = 0;
    const Stopwatch watch;
    for (const std::u16string& text : texts) {
        const Variant list = store.GetFindMatchesByName(text, false);
        matches += static_cast<std::size_t>(list.IsNull() ? 0 : list.Array().Extent(2));
    }
    const std::string name = "match-" + std::to_string(names);
    results[name + ".ours"] = watch.Microseconds() / static_cast<double>(texts.size());
    results["check." + name + ".ours"] = static_cast<double>(matches);
}

bool SearchesByName(SqliteTable& table, const std::string& sql)
{
    const std::string plan = table.PlanOf(sql);
    return plan.starts_with("SEARCH") && plan.find("INDEX ByName") != std::string::npos;
}

void SqliteMatchLists(SqliteTable& table, const StepContext& context, std::size_t names,
                      Measurements& results)
{
    std::vector<std::unique_ptr<SqliteStatement>> queries;
    for (const Prefix& prefix : ReadPrefixes(context, names)) {
        // With the text in place of a parameter the query is planned once, here.
        const std::string sql =
            "SELECT RowID, Name FROM Products WHERE Name LIKE '" + prefix.text + "%' ORDER BY Name";
        if (!SearchesByName(table, sql))
            throw std::runtime_error("SQLite does not use its index for: " + sql);
        queries.push_back(std::make_unique<SqliteStatement>(table.Database(), sql));
    }
    std::size_t matches = 0;
    const Stopwatch watch;
    for (const auto& query : queries) {
        std::vector<std::pair<std::int64_t, std::string>> list;
        while (query->Step())
            list.emplace_back(query->Number(0), query->Text(1));
        matches += list.size();
    }
    const std::string name = "match-" + std::to_string(names);
    results[name + ".sqlite"] = watch.Microseconds() / static_cast<double>(queries.size());
    results["check." + name + ".sqlite"] = static_cast<double>(matches);
}

std::uint32_t LastPageStart(const StepContext& context)
{
    return context.count > kRowsOfPage ? context.count - static_cast<std::uint32_t>(kRowsOfPage) + 1 : 1;
}

void OurPages(ProductLkpMgr& store, const StepContext& context, Measurements& results)
{
    Places places(LastPageStart(context), kPagePlaces);
    std::size_t length = 0;
    const Stopwatch watch;
    for (std::size_t page = 0; page < kPages; ++page) {
        const auto begin = static_cast<std::int32_t>(places.Next());
        for (std::int32_t row = 0; row < static_cast<std::int32_t>(kRowsOfPage); ++row) {
            store.GotoNthProduct(begin + row);
            length += store.Fields(PF_Name).String().size();
            length += store.Fields(PF_PartNum).String().size();
            length += static_cast<std::size_t>(store.Fields(PF_UnitPrice).Currency().Scaled() != 0);
        }
    }
    results["page.ours"] = watch.Microseconds() / kPages;
    if (length == 0)
        throw std::runtime_error("the pages are empty");
}

void SqlitePages(SqliteTable& table, const StepContext& context, Measurements& results)
{
    SqliteStatement query(table.Database(),
                          "SELECT Name, PartNum, UnitPrice FROM Products ORDER BY Name LIMIT 50 OFFSET ?1");
    Places places(LastPageStart(context), kPagePlaces);
    std::size_t length = 0;
    const Stopwatch watch;
    for (std::size_t page = 0; page < kSqlitePages; ++page) {
        query.Bind(1, std::int64_t{places.Next()});
        while (query.Step()) {
            length += std::string(query.Text(0)).size();
            length += std::string(query.Text(1)).size();
            length += static_cast<std::size_t>(query.Number(2) != 0);
        }
    }
    results["page.sqlite"] = watch.Microseconds() / kSqlitePages;
    if (length == 0)
        throw std::runtime_error("the pages are empty");
}

/// What stands next in name order, read after each change.
std::size_t ReadOrder(ProductLkpMgr& store)
{
    const auto place = static_cast<std::size_t>(store.CurrentRecordIdx() + 3);
    store.MoveNext();
    return place + (store.EOF() ? 0 : store.Fields(PF_Name).String().size());
}

void OurEdits(ProductLkpMgr& store, const StepContext& context, std::int32_t firstRowID,
              Measurements& results)
{
    std::size_t sink = 0;
    std::vector<std::u16string> addedNames;
    std::vector<std::u16string> newNames;
    for (std::uint32_t i = 0; i < kEdits; ++i) {
        addedNames.push_back(Utf16(AddedName(i)));
        newNames.push_back(Utf16(Renamed(i)));
    }
    const Stopwatch addWatch;
    for (const std::u16string& name : addedNames) {
        store.AddNew(Variant::ArrayOf({0, name, u"", u"100-2000000", Currency::FromUnits(7), u"new"}));
        sink += ReadOrder(store);
    }
    results["add.ours"] = addWatch.Microseconds() / kEdits;

    Places renamePlaces(context.count, kRenamePlaces);
    const Stopwatch renameWatch;
    for (const std::u16string& name : newNames) {
        Variant product = store.Pack(firstRowID + static_cast<std::int32_t>(renamePlaces.Next()));
        product.ArrayForWrite().At(1) = name;
        store.Update(product);
        sink += ReadOrder(store);
    }
    results["rename.ours"] = renameWatch.Microseconds() / kEdits;

    const std::vector<std::uint32_t> deleted = Places(context.count, kDeletePlaces).Different(kEdits);
    const Stopwatch deleteWatch;
    for (const std::uint32_t place : deleted) {
        store.Delete(firstRowID + static_cast<std::int32_t>(place));
        sink += ReadOrder(store);
    }
    results["delete.ours"] = deleteWatch.Microseconds() / static_cast<double>(deleted.size());
    results["check.edit.ours"] = store.Count();
    if (sink == 0)
        throw std::runtime_error("the order was not read");
}

void SqliteEdits(SqliteTable& table, const StepContext& context, std::int32_t firstRowID,
                 Measurements& results)
{
    SqliteStatement insert(
        table.Database(),
        "INSERT INTO Products VALUES (?1, 0, 0, ?2, '', '100-2000000', 70000, 'new', 1, 1)");
    SqliteStatement rename(table.Database(),
                           "UPDATE Products SET Name = ?2, DirtySession = 1, DirtySync = 1 WHERE RowID = ?1");
    SqliteStatement erase(table.Database(), "DELETE FROM Products WHERE RowID = ?1");
    SqliteStatement nameOf(table.Database(), "SELECT Name FROM Products WHERE RowID = ?1");
    const std::string nextSql = "SELECT Name FROM Products WHERE Name > ?1 ORDER BY Name LIMIT 1";
    if (!SearchesByName(table, nextSql))
        throw std::runtime_error("SQLite does not use its index for: " + nextSql);
    SqliteStatement next(table.Database(), nextSql);
    std::size_t sink = 0;
    const auto readOrder = [&](std::string_view name) {
        next.Bind(1, name);
        while (next.Step())
            sink += std::string(next.Text(0)).size() + 1;
    };
    std::vector<std::string> addedNames;
    std::vector<std::string> newNames;
    for (std::uint32_t i = 0; i < kEdits; ++i) {
        addedNames.push_back(AddedName(i));
        newNames.push_back(Renamed(i));
    }

    table.Execute("BEGIN");
    std::int64_t rowID = std::int64_t{firstRowID} + context.count;
    const Stopwatch addWatch;
    for (const std::string& name : addedNames) {
        insert.Bind(1, rowID++);
        insert.Bind(2, name);
        insert.Run();
        readOrder(name);
    }
    results["add.sqlite"] = addWatch.Microseconds() / kEdits;

    Places renamePlaces(context.count, kRenamePlaces);
    const Stopwatch renameWatch;
    for (const std::string& name : newNames) {
        rename.Bind(1, std::int64_t{firstRowID} + renamePlaces.Next());
        rename.Bind(2, name);
        rename.Run();
        readOrder(name);
    }
    results["rename.sqlite"] = renameWatch.Microseconds() / kEdits;

    const std::vector<std::uint32_t> deleted = Places(context.count, kDeletePlaces).Different(kEdits);
    const Stopwatch deleteWatch;
    for (const std::uint32_t place : deleted) {
        const std::int64_t deletedID = std::int64_t{firstRowID} + place;
        nameOf.Bind(1, deletedID);
        static_cast<void>(nameOf.Step());
        const std::string name(nameOf.Text(0));
        nameOf.Reset();
        erase.Bind(1, deletedID);
        erase.Run();
        readOrder(name);
    }
    results["delete.sqlite"] = deleteWatch.Microseconds() / static_cast<double>(deleted.size());
    table.Execute("COMMIT");
    SqliteStatement count(table.Database(), "SELECT COUNT(*) FROM Products");
    static_cast<void>(count.Step());
    results["check.edit.sqlite"] = static_cast<double>(count.Number(0));
    if (sink == 0)
        throw std::runtime_error("the order was not read");
}

void OurQueries(const StepContext& context, Measurements& results)
{
    const auto store = OpenStore(context);
    const std::int32_t firstRowID = FirstRowId(*store);
    OurFinds(*store, context, firstRowID, results);
    OurMatchLists(*store, context, 50, results);
    OurMatchLists(*store, context, 1000, results);
    OurPages(*store, context, results);
    OurEdits(*store, context, firstRowID, results);
}

void SqliteQueries(const StepContext& context, Measurements& results)
{
    SqliteTable table;
    table.Load(DatabaseFile(context));
    std::int32_t firstRowID = 0;
    {
        SqliteStatement smallest(table.Database(), "SELECT MIN(RowID) FROM Products");
        static_cast<void>(smallest.Step());
        firstRowID = static_cast<std::int32_t>(smallest.Number(0));
    }
    SqliteFinds(table, context, firstRowID, results);
    SqliteMatchLists(table, context, 50, results);
    SqliteMatchLists(table, context, 1000, results);
    SqlitePages(table, context, results);
    SqliteEdits(table, context, firstRowID, results);
}

constexpr Step kSteps[] = {
    {"read", ReadBytes},
    {"our-open", OurOpen},
    {"sqlite-open", SqliteOpen},
    {"our-save", OurSave},
    {"sqlite-save", SqliteSave},
    {"our-save-new", OurSaveAsNew},
    {"sqlite-save-new", SqliteSaveAsNew},
    {"our-import", OurImport},
    {"our-import-progress", OurImportWithProgress},
    {"sqlite-import", SqliteImport},
    {"our-export", OurExport},
    {"sqlite-export", SqliteExport},
    {"our-queries", OurQueries},
    {"sqlite-queries", SqliteQueries},
};

} // namespace

std::span<const Step> MeasuringSteps()
{
    return kSteps;
}

Measurements RunStep(std::string_view name, const StepContext& context)
{
    Measurements results;
    if (name == kPrepareStep) {
        Prepare(context, results);
        return results;
    }
    const auto* const step = std::find_if(std::begin(kSteps), std::end(kSteps),
                                          [&](const Step& other) { return other.name == name; });
    if (step == std::end(kSteps))
        throw std::runtime_error("there is no step " + std::string(name));
    step->run(context, results);
    return results;
}

} // namespace KestrinProductEditor::Bench
