// SPDX-License-Identifier: MIT
#include "BenchHost.h"
#include "Products.h"
#include "exchange/csv/CsvLineReader.h"
#include "platform/CodePage.h"
#include "platform/Files.h"
#include "store/table/RowOrder.h"
#include "store/table/RowSort.h"
#include "store/table/RowStore.h"
#include "store/table/TableGram.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <numeric>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

using namespace KestrinProductEditor;
using namespace KestrinProductEditor::Bench;

namespace {

constexpr std::string_view kSizesOption = "--sizes=";

class MemoryReadStream final : public IReadStream
{
public:
    explicit MemoryReadStream(std::string_view bytes) : m_bytes(bytes) {}
    [[nodiscard]] std::uint64_t Size() const override { return m_bytes.size(); }
    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override
    {
        const std::size_t taken = std::min(size, m_bytes.size() - m_done);
        std::memcpy(buffer, m_bytes.data() + m_done, taken);
        m_done += taken;
        return taken;
    }

private:
    std::string_view m_bytes;
    std::size_t m_done = 0;
};

class NowhereStream final : public IWriteStream
{
public:
    void Write(std::string_view bytes) override { benchmark::DoNotOptimize(bytes.data()); }
    void Close() override {}
};

std::string ReadWhole(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (bytes.empty())
        throw std::runtime_error("cannot read " + path.string());
    return bytes;
}

/// The files and the store of one length of list, made when the first benchmark asks for them. The benchmarks
/// run by length, so that only one is there at a time.
class Workshop
{
public:
    Workshop()
        : m_folder(std::filesystem::temp_directory_path() / ("kstnedit-bench-" + std::to_string(getpid())))
    {
    }
    Workshop(const Workshop&) = delete;
    Workshop& operator=(const Workshop&) = delete;
    ~Workshop()
    {
        m_store.reset();
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }

    void Prepare(std::uint32_t count)
    {
        if (m_count == count)
            return;
        m_store.reset();
        m_prefixes.clear();
        std::filesystem::remove_all(m_folder);
        std::filesystem::create_directories(m_folder);
        WritePriceList(ListFile(), count);
        SetCatalogueFolder(m_folder);
        const auto store = ProductLkpMgr::Create();
        ImportPriceList(*store, ListFile(), count);
        SpreadUniqueIds(*store);
        m_firstRowID = FirstRowId(*store);
        m_count = count;
    }

    /// A store over the catalogue as it was prepared.
    ProductLkpMgr& Store(std::uint32_t count)
    {
        Prepare(count);
        if (!m_store) {
            m_store = ProductLkpMgr::Create();
            m_store->CancelUpdate(true);
            m_store->FindRow(m_firstRowID);
            m_store->FindRowBySyncID(UniqueIdOf(m_firstRowID));
        }
        return *m_store;
    }
    /// The next benchmark gets a new store: this one was changed.
    void DropStore() { m_store.reset(); }

    const std::vector<Prefix>& Prefixes(std::size_t names)
    {
        constexpr std::size_t kWanted = 200;
        std::vector<Prefix>& prefixes = m_prefixes[names];
        if (prefixes.empty())
            prefixes = SharedPrefixes(m_count, names, kWanted);
        return prefixes;
    }

    [[nodiscard]] std::int32_t RowIdAt(std::size_t place) const
    {
        return m_firstRowID + static_cast<std::int32_t>(place);
    }
    [[nodiscard]] std::filesystem::path ListFile() const { return m_folder / "list.csv"; }
    [[nodiscard]] std::filesystem::path Catalogue() const { return CatalogueFile(m_folder); }

private:
    std::filesystem::path m_folder;
    std::uint32_t m_count = 0;
    std::int32_t m_firstRowID = 0;
    std::shared_ptr<ProductLkpMgr> m_store;
    std::map<std::size_t, std::vector<Prefix>> m_prefixes;
};

/// Places that come again in every run of a benchmark.
class Places
{
public:
    explicit Places(std::uint32_t count) : m_count(count) {}
    std::uint32_t Next() { return static_cast<std::uint32_t>(m_random() % m_count); }

private:
    std::uint32_t m_count;
    std::mt19937 m_random; // NOLINT(cert-msc32-c,cert-msc51-cpp)
};

std::vector<Column> NameColumn()
{
    return {{u"Name", ColumnType::NarrowText, PFS_Name}};
}

std::vector<Column> CatalogueColumns()
{
    return {
        {u"RowID", ColumnType::Long, 4, true},     {u"UniqueID", ColumnType::Long, 4},
        {u"Status", ColumnType::Long, 4},          {u"Name", ColumnType::NarrowText, PFS_Name},
        {u"Key", ColumnType::NarrowText, PFS_Key}, {u"PartNum", ColumnType::NarrowText, PFS_PartNum},
        {u"UnitPrice", ColumnType::Currency, 8},   {u"Note", ColumnType::WideText, PFS_Note},
        {u"DirtySession", ColumnType::Boolean, 2}, {u"DirtySync", ColumnType::Boolean, 2},
    };
}

void FindByRowId(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    ProductLkpMgr& store = workshop.Store(count);
    Places places(count);
    for ([[maybe_unused]] auto _ : state) {
        store.FindRow(workshop.RowIdAt(places.Next()));
        benchmark::DoNotOptimize(store.CurrentRecordIdx());
    }
}

void FindByUniqueId(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    ProductLkpMgr& store = workshop.Store(count);
    Places places(count);
    for ([[maybe_unused]] auto _ : state) {
        store.FindRowBySyncID(UniqueIdOf(workshop.RowIdAt(places.Next())));
        benchmark::DoNotOptimize(store.CurrentRecordIdx());
    }
}

void MatchList(benchmark::State& state, Workshop& workshop, std::uint32_t count, std::size_t names)
{
    ProductLkpMgr& store = workshop.Store(count);
    std::vector<std::u16string> texts;
    for (const Prefix& prefix : workshop.Prefixes(names))
        texts.push_back(std::filesystem::path(prefix.text).u16string());
    std::size_t next = 0;
    std::int64_t matches = 0;
    for ([[maybe_unused]] auto _ : state) {
        const Variant list = store.GetFindMatchesByName(texts[next++ % texts.size()], false);
        matches += list.Array().Extent(2);
    }
    state.SetItemsProcessed(matches);
}

void MatchListOf50(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    MatchList(state, workshop, count, 50);
}

void MatchListOf1000(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    MatchList(state, workshop, count, 1000);
}

void FiftyRowsAnywhere(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    constexpr std::uint32_t kRows = 50;
    ProductLkpMgr& store = workshop.Store(count);
    Places places(count > kRows ? count - kRows + 1 : 1);
    for ([[maybe_unused]] auto _ : state) {
        const std::uint32_t begin = places.Next();
        for (std::uint32_t row = 0; row < std::min(kRows, count); ++row) {
            store.GotoNthProduct(static_cast<std::int32_t>(begin + row));
            benchmark::DoNotOptimize(store.Fields(PF_Name));
            benchmark::DoNotOptimize(store.Fields(PF_PartNum));
            benchmark::DoNotOptimize(store.Fields(PF_UnitPrice));
        }
    }
}

void ReadOrder(ProductLkpMgr& store)
{
    benchmark::DoNotOptimize(store.CurrentRecordIdx());
    store.MoveNext();
    if (!store.EOF())
        benchmark::DoNotOptimize(store.Fields(PF_Name));
}

void AddRow(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    ProductLkpMgr& store = workshop.Store(count);
    std::uint32_t next = count;
    for ([[maybe_unused]] auto _ : state) {
        const std::u16string name = std::filesystem::path(ProductAt(next++).name).u16string();
        store.AddNew(Variant::ArrayOf({0, name, u"", u"100-2000000", Currency::FromUnits(7), u"new"}));
        ReadOrder(store);
    }
    workshop.DropStore();
}

void RenameRow(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    ProductLkpMgr& store = workshop.Store(count);
    Places places(count);
    std::uint32_t next = count;
    for ([[maybe_unused]] auto _ : state) {
        Variant product = store.Pack(workshop.RowIdAt(places.Next()));
        product.ArrayForWrite().At(1) = std::filesystem::path(ProductAt(next++).name).u16string();
        store.Update(product);
        ReadOrder(store);
    }
    workshop.DropStore();
}

void DeleteRow(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    ProductLkpMgr& store = workshop.Store(count);
    std::vector<std::uint32_t> places(count);
    std::iota(places.begin(), places.end(), 0U);
    std::shuffle(places.begin(), places.end(), std::mt19937()); // NOLINT(cert-msc32-c,cert-msc51-cpp)
    std::size_t next = 0;
    for ([[maybe_unused]] auto _ : state) {
        store.Delete(workshop.RowIdAt(places[next++]));
        ReadOrder(store);
    }
    workshop.DropStore();
}

void SplitCsv(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    workshop.Prepare(count);
    const std::string list = ReadWhole(workshop.ListFile());
    const auto codePage = CodePage::System();
    std::string scratch;
    for ([[maybe_unused]] auto _ : state) {
        MemoryReadStream stream(list);
        CsvLineReader reader(stream, *codePage);
        while (reader.Next()) {
            for (std::size_t column = 0; column < reader.Columns().Count(); ++column)
                benchmark::DoNotOptimize(reader.Decode(reader.Columns().Column(column, scratch), scratch));
        }
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(list.size()));
}

void SortNames(benchmark::State& state, Workshop&, std::uint32_t count)
{
    RowStore rows(NameColumn());
    for (std::uint32_t index = 0; index < count; ++index) {
        const std::string name = ProductAt(index).name;
        const RowStore::Value value{0, name};
        rows.Append({&value, 1});
    }
    std::vector<RowNumber> order(count);
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        std::iota(order.begin(), order.end(), RowNumber{0});
        state.ResumeTiming();
        SortRows(rows, 0, order);
        benchmark::DoNotOptimize(order.data());
    }
    state.SetItemsProcessed(state.iterations() * count);
}

void Decode(std::string_view file, const CodePage& codePage, RowStore& rows)
{
    MemoryReadStream stream(file);
    TableGram::Report report;
    if (const auto fault = TableGram::Read(stream, codePage, rows, report))
        throw std::runtime_error("the catalogue is broken: " + fault->reason);
}

void LoadCatalogue(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    workshop.Prepare(count);
    const std::string file = ReadWhole(workshop.Catalogue());
    const auto codePage = CodePage::System();
    for ([[maybe_unused]] auto _ : state) {
        RowStore rows(CatalogueColumns());
        Decode(file, *codePage, rows);
        benchmark::DoNotOptimize(rows.RowCount());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}

void SaveCatalogue(benchmark::State& state, Workshop& workshop, std::uint32_t count)
{
    workshop.Prepare(count);
    const std::string file = ReadWhole(workshop.Catalogue());
    const auto codePage = CodePage::System();
    RowStore rows(CatalogueColumns());
    Decode(file, *codePage, rows);
    std::vector<RowNumber> all(rows.RowCount());
    std::iota(all.begin(), all.end(), RowNumber{0});
    RowOrder order(rows);
    order.Assign(all);
    for ([[maybe_unused]] auto _ : state) {
        NowhereStream stream;
        TableGram::Write(rows, order, *codePage, stream);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.size()));
}

struct Micro
{
    const char* name;
    void (*run)(benchmark::State&, Workshop&, std::uint32_t);
    bool changesStore;
};

constexpr Micro kMicros[] = {
    {"FindByRowId", FindByRowId, false},
    {"FindByUniqueId", FindByUniqueId, false},
    {"MatchListOf50", MatchListOf50, false},
    {"MatchListOf1000", MatchListOf1000, false},
    {"FiftyRowsAnywhere", FiftyRowsAnywhere, false},
    {"AddRow", AddRow, true},
    {"RenameRow", RenameRow, true},
    {"DeleteRow", DeleteRow, true},
    {"SplitCsv", SplitCsv, false},
    {"SortNames", SortNames, false},
    {"LoadCatalogue", LoadCatalogue, false},
    {"SaveCatalogue", SaveCatalogue, false},
};

/// Takes the option out of the arguments, which Google Benchmark reads next.
std::vector<std::uint32_t> TakeSizes(int& argc, char* argv[])
{
    std::vector<std::uint32_t> sizes;
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (!word.starts_with(kSizesOption)) {
            argv[kept++] = argv[i];
            continue;
        }
        std::istringstream list{std::string(word.substr(kSizesOption.size()))};
        for (std::string text; std::getline(list, text, ',');) {
            std::uint32_t size = 0;
            const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), size);
            if (error != std::errc() || end != text.data() + text.size() || size == 0)
                throw std::invalid_argument("'" + text + "' is no number of products");
            sizes.push_back(size);
        }
    }
    argc = kept;
    if (sizes.empty())
        sizes = {10'000, 100'000, 1'000'000};
    return sizes;
}

} // namespace

int main(int argc, char* argv[])
try {
    RegisterHost();
    const std::vector<std::uint32_t> sizes = TakeSizes(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    Workshop workshop;
    for (const std::uint32_t size : sizes) {
        for (const Micro& micro : kMicros) {
            const std::string name = std::string(micro.name) + "/" + std::to_string(size);
            auto* const registered = benchmark::RegisterBenchmark(
                name.c_str(),
                [&micro, &workshop, size](benchmark::State& state) { micro.run(state, workshop, size); });
            // Few enough that the store is much the same behind them.
            constexpr std::uint32_t kMostChanges = 1000;
            if (micro.changesStore)
                registered->Iterations(std::min(kMostChanges, std::max(size / 4, 1U)));
        }
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
} catch (const std::exception& error) {
    std::cerr << "kstnedit-bench: " << error.what() << '\n';
    return 1;
}
