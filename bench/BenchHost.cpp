// SPDX-License-Identifier: MIT
#include "BenchHost.h"

#include "BenchSystem.h"
#include "Products.h"

#include <KestrinProductEditor/AutomationError.h>
#include <KestrinProductEditor/HostComponents.h>

#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace KestrinProductEditor::Bench {

namespace {

std::u16string& CatalogueFolder()
{
    static std::u16string folder;
    return folder;
}

class Config final : public IConfig
{
public:
    Variant Value(std::u16string_view sKey) override
    {
        return sKey == u"InstallPath" ? CatalogueFolder() : std::u16string();
    }
};

class Trace final : public ITrace
{
public:
    std::int32_t TraceErrNumber() override
    {
        const AutomationError* const error = PendingError();
        return error != nullptr ? error->Number() : kErrComponent;
    }
    void TraceError(std::u16string_view) override
    {
        // No work that is measured may fail: its time would mean nothing.
        std::cerr << "the component failed: " << PendingError()->what() << '\n';
        std::_Exit(1);
    }
    void TraceEnter(std::u16string_view) override {}
    void TraceExit(std::u16string_view) override {}
};

} // namespace

void RegisterHost()
{
    UseConventionsOfLists();
    RegisterHostComponent("CorvoConf.Config", [] { return std::make_shared<Config>(); });
    RegisterHostComponent("CorvoTWrp.Trace", [] { return std::make_shared<Trace>(); });
}

void SetCatalogueFolder(const std::filesystem::path& folder)
{
    CatalogueFolder() = folder.u16string();
}

std::filesystem::path CatalogueFile(const std::filesystem::path& folder)
{
    return folder / "corvprd2.cpd";
}

void ImportPriceList(ProductLkpMgr& store, const std::filesystem::path& file, std::size_t count)
{
    constexpr std::int32_t kWithTitles = 1;
    constexpr std::int32_t kReplace = 0;
    const Variant result = store.CSVProductImport(
        Variant::ArrayOf({file.u16string(), Variant::ArrayOf({0, 1, 2, 3}), kWithTitles, kReplace}));
    if (result.At(0).Long() != 0 || result.At(2).Long() != static_cast<std::int32_t>(count) ||
        result.At(3).Long() != 0)
        throw std::runtime_error("the import of " + file.string() + " took " +
                                 std::to_string(result.At(2).Long()) + " of " + std::to_string(count) +
                                 " products; is the locale " + kLocale + " installed?");
}

void ExportPriceList(ProductLkpMgr& store, const std::filesystem::path& file)
{
    store.CSVProductExport(Variant::ArrayOf({file.u16string()}));
}

void SpreadUniqueIds(ProductLkpMgr& store)
{
    for (store.MoveFirst(); !store.EOF(); store.MoveNext())
        store.Fields(PF_UniqueID, UniqueIdOf(store.Fields(PF_RowID).Long()));
}

std::int32_t FirstRowId(ProductLkpMgr& store)
{
    std::int32_t rowID = 1;
    for (store.FindRow(rowID); store.EOF(); store.FindRow(rowID))
        ++rowID;
    return rowID;
}

} // namespace KestrinProductEditor::Bench
