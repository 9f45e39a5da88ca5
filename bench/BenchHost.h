// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/IProcessProgress.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include <cstddef>
#include <filesystem>
#include <memory>

/// The smallest host that can open a store.
namespace KestrinProductEditor::Bench {

/// The locale of the generated price lists. On Linux the programs run under it whatever the caller's is; on
/// Windows the user's must read numbers as that one does.
inline constexpr const char* kLocale = "en_US.UTF-8";

/// Registers the host components, and lets the process read the price lists. Call it once, before any store.
/// A failure that nobody can catch (that of a save at the release of a store) ends the process with status 1.
void RegisterHost();

/// Where the next store finds its catalogue.
void SetCatalogueFolder(const std::filesystem::path& folder);

[[nodiscard]] std::filesystem::path CatalogueFile(const std::filesystem::path& folder);

/// Imports a price list of `count` products. Throws when a line is rejected or lost.
void ImportPriceList(ProductLkpMgr& store, const std::filesystem::path& file, std::size_t count);
void ExportPriceList(ProductLkpMgr& store, const std::filesystem::path& file);

/// Gives each row the `UniqueID` that UniqueIdOf tells.
void SpreadUniqueIds(ProductLkpMgr& store);

/// The row identifier of the first product of an import into an empty store.
[[nodiscard]] std::int32_t FirstRowId(ProductLkpMgr& store);

/// A receiver that looks at what it is told and does no more.
class CountingReceiver final : public IProcessProgress
{
public:
    void Progress(const Variant& vParams) override
    {
        m_fraction = vParams.At(0).Double();
        ++m_calls;
    }
    [[nodiscard]] std::size_t Calls() const noexcept { return m_calls; }
    [[nodiscard]] double Fraction() const noexcept { return m_fraction; }

private:
    std::size_t m_calls = 0;
    double m_fraction = 0;
};

} // namespace KestrinProductEditor::Bench
