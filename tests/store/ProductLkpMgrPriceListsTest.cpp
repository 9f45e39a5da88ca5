// SPDX-License-Identifier: MIT
#include "platform/Text.h"
#include "support/StoreFixture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

struct PriceList
{
    const char* file;
    std::vector<std::int32_t> map;
    ImportResult result;
    std::int64_t sumOfPrices;
    std::size_t characters; // in names, part numbers and notes
};

[[nodiscard]] std::filesystem::path PriceListFolder()
{
    return std::filesystem::path(KSTNEDIT_SOURCE_DIR).parent_path() / "shared" / "price-lists";
}

/// The lists that lie beside the checkout; none where it stands alone. The counts come from another program.
/// Rows are rejected for inches (a quote that is not closed) in the first, the second line of titles in the
/// next, a preamble and ranges of prices, and prices cut in two by their own comma.
[[nodiscard]] std::vector<PriceList> PresentPriceLists()
{
    std::vector<PriceList> lists = {
        {"01_hospital_metropolitan_102k.csv", {1, 0, 2, -1}, {0, "", 101695, 247}, 6469391793200, 3044813},
        {"02_hospital_shelby_26k_latin1_titleline.csv",
         {1, -1, 2, 0},
         {0, "", 25988, 1},
         587421181900,
         1184884},
        {"04_hospital_mdanderson_preamble.csv", {3, 0, 4, 1}, {0, "", 2373, 7}, 49650370000, 231872},
        {"05_hospital_hershey_43k_ragged_unquoted_thousands.csv",
         {0, -1, 1, -1},
         {0, "", 42644, 373},
         60888721000,
         1888964},
        {"13_adventureworks_product.csv", {1, 2, 9, 5}, {0, "", 504, 0}, 2210877900, 14714},
    };
    std::erase_if(
        lists, [](const PriceList& list) { return !std::filesystem::exists(PriceListFolder() / list.file); });
    return lists;
}

class StorePriceLists : public StoreFixture
{
};

} // namespace

TEST_F(StorePriceLists, AreImportedWithTheCountsThatTheyHold)
{
    const auto store = Open();
    store->CancelUpdate(true);
    for (const PriceList& list : PresentPriceLists()) {
        SCOPED_TRACE(list.file);
        const std::u16string path = (PriceListFolder() / list.file).u16string();
        EXPECT_EQ(ImportResultOf(store->CSVProductImport(ImportParams(path, list.map, 1, 0))), list.result);
        std::int64_t sumOfPrices = 0;
        std::size_t characters = 0;
        for (const ProductRow& row : RowsOf(*store)) {
            sumOfPrices += row.price;
            for (const std::string& text : {row.name, row.partNum, row.note})
                characters += Utf16Length(text);
        }
        EXPECT_EQ(sumOfPrices, list.sumOfPrices);
        EXPECT_EQ(characters, list.characters);
        EXPECT_EQ(store->Count(), list.result.imported);
    }
}

TEST_F(StorePriceLists, SurviveSaveAndReload)
{
    for (const PriceList& list : PresentPriceLists()) {
        SCOPED_TRACE(list.file);
        auto store = Open();
        const std::u16string path = (PriceListFolder() / list.file).u16string();
        static_cast<void>(store->CSVProductImport(ImportParams(path, list.map, 1, 0)));
        std::vector<ProductRow> before = RowsOf(*store);
        std::erase_if(before, [](const ProductRow& row) {
            return row.name.find_first_not_of(' ') == std::string::npos;
        });
        store.reset();
        EXPECT_TRUE(SavedRows() == before);
    }
}

} // namespace KestrinProductEditor
