// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/ProductLkpMgr.h>

#include "fake/RecordingTrace.h"
#include "fake/ScriptedConfig.h"
#include "support/Environment.h"
#include "support/Locales.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// One row of a catalogue; texts in UTF-8, the price scaled by 10,000.
struct ProductRow
{
    std::int32_t rowID = 0;
    std::int32_t uniqueID = 0;
    std::int32_t status = 0;
    std::string name = {};
    std::string key = {};
    std::string partNum = {};
    std::int64_t price = 0;
    std::string note = {};
    bool dirtySession = false;
    bool dirtySync = false;

    bool operator==(const ProductRow&) const = default;
};
void PrintTo(const ProductRow& row, std::ostream* out);

/// A packed product; the price scaled by 10,000.
[[nodiscard]] Variant Packed(std::int32_t rowID, std::string_view name, std::string_view key = {},
                             std::string_view partNum = {}, std::int64_t price = 0,
                             std::string_view note = {});
/// A packed product with a name and nothing else.
[[nodiscard]] Variant Named(std::string_view name);

/// Adds a product for each name; the identifiers that they got.
std::vector<std::int32_t> AddNames(ProductLkpMgr& store, const std::vector<std::string>& names);

/// All rows in row order. Leaves the cursor after the last.
[[nodiscard]] std::vector<ProductRow> RowsOf(ProductLkpMgr& store);
[[nodiscard]] std::vector<std::string> NamesOf(ProductLkpMgr& store);
[[nodiscard]] std::vector<std::int32_t> RowIDsOf(ProductLkpMgr& store);
/// The name in the current row.
[[nodiscard]] std::string CurrentName(ProductLkpMgr& store);

/// The bytes of a catalogue file with these rows, in this order.
[[nodiscard]] std::string CatalogueFileOf(const std::vector<ProductRow>& rows);

/// A match list as pairs "ROWID TEXT"; empty for Null.
[[nodiscard]] std::vector<std::string> MatchesOf(const Variant& vMatches);

/// vParams of a CSV import and export.
[[nodiscard]] Variant ImportParams(std::u16string_view path, const std::vector<std::int32_t>& map,
                                   std::int32_t titles, std::int32_t append);
[[nodiscard]] Variant ExportParams(std::u16string_view path);

/// The result of a CSV import.
struct ImportResult
{
    std::int32_t status = 0;
    std::string description;
    std::int32_t imported = 0;
    std::int32_t rejected = 0;

    bool operator==(const ImportResult&) const = default;
};
void PrintTo(const ImportResult& result, std::ostream* out);
[[nodiscard]] ImportResult ImportResultOf(const Variant& vResult);

/// A progress receiver that keeps what it hears and does what it is told.
class RecordingReceiver final : public IProcessProgress
{
public:
    void Progress(const Variant& vParams) override;

    std::vector<Variant> calls;
    /// Called at each call, after it was kept.
    std::function<void()> onProgress;

    /// Element 0 of each call.
    [[nodiscard]] std::vector<double> Fractions() const;
    /// Element 1 of each call.
    [[nodiscard]] std::vector<std::int32_t> Counts() const;
};

/// An installation of its own for each test: a temporary folder with an empty database folder, both host
/// components registered, the locale en_US and no code page set.
class StoreFixture : public testing::Test
{
protected:
    explicit StoreFixture(const std::string& locale = "en_US.UTF-8");
    ~StoreFixture() override;

    /// A store over the installation's catalogue.
    [[nodiscard]] static std::shared_ptr<ProductLkpMgr> Open();

    [[nodiscard]] std::u16string CataloguePath() const;
    [[nodiscard]] std::string CatalogueBytes() const;
    [[nodiscard]] bool CatalogueExists() const;
    /// What lies in the database folder, sorted.
    [[nodiscard]] std::vector<std::string> DatabaseNames() const;
    void WriteCatalogue(std::string_view bytes) const;
    void WriteCatalogue(const std::vector<ProductRow>& rows) const;
    /// The rows that a reload of the catalogue shows; the file is not written.
    [[nodiscard]] std::vector<ProductRow> SavedRows() const;

    TemporaryFolder m_folder;
    std::filesystem::path m_database;
    std::shared_ptr<ConfigScript> m_config = std::make_shared<ConfigScript>();
    std::shared_ptr<RecordingTrace> m_trace = std::make_shared<RecordingTrace>();

private:
    ScopedVariable m_codePage{"KSTNEDIT_CODEPAGE", std::nullopt};
    ScopedLocaleVariables m_locale;
    ScopedTrace m_scopedTrace;
};

} // namespace KestrinProductEditor
