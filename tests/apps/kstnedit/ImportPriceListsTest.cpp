// SPDX-License-Identifier: MIT
#include "apps/kstnedit/ProgramFixture.h"
#include "kstnedit/Failure.h"

#include <filesystem>

namespace KestrinProductEditor::CommandLine {
namespace {

using testing::HasSubstr;

struct PriceList
{
    std::string file;
    std::vector<std::string> options;
    std::string counts;
    std::int64_t sumOfPrices; ///< in ten-thousandths
    std::string message;
};

/// Real price lists lie beside the checkout on some machines; elsewhere this has fewer cases. The expected
/// numbers come from a script of a few lines that splits and counts on its own.
std::vector<PriceList> PriceLists()
{
    const std::vector<PriceList> all = {
        // 247 names hold a single double quote (inches), which joins the rest of the line: no price is left.
        {"01_hospital_metropolitan_102k.csv",
         {},
         "101942 read, 101695 imported, 247 rejected\n",
         6'469'391'793'200,
         "part-num: column 1 'Procedure ID' (guessed)\n"},
        // Its titles stand in line 2, which has no price.
        {"02_hospital_shelby_26k_latin1_titleline.csv",
         {"--map", "name=2,price=3,note=1"},
         "25989 read, 25988 imported, 1 rejected\n",
         587'421'181'900,
         "line 2: the price 'CHARGE' is not an amount of money"},
        // Lines 2 to 5 belong to a preamble with line breaks in quotes, and three prices are ranges.
        {"04_hospital_mdanderson_preamble.csv",
         {"--map", "name=4,part-num=1,price=5,note=2"},
         "2380 read, 2373 imported, 7 rejected\n",
         49'650'370'000,
         "the price '$138-11136' is not an amount of money"},
        // 373 names hold a comma without quotes; so do most prices, which are cut there.
        {"05_hospital_hershey_43k_ragged_unquoted_thousands.csv",
         {},
         "43017 read, 42644 imported, 373 rejected\n",
         60'888'721'000,
         "25810 lines (the first is line 8): more columns than titles"},
        {"13_adventureworks_product.csv",
         {"--map", "name=2,part-num=3,price=10,note=6"},
         "504 read, 504 imported, 0 rejected\n",
         2'210'877'900,
         "price:    column 10 'ListPrice' (chosen)\n"},
        {"13_adventureworks_product.csv",
         {},
         "504 read, 504 imported, 0 rejected\n",
         2'210'877'900,
         "part-num: column 3 'ProductNumber' (guessed)\n"},
    };
    const std::filesystem::path folder =
        std::filesystem::path(KSTNEDIT_SOURCE_DIR).parent_path() / "shared/price-lists";
    std::vector<PriceList> present;
    for (PriceList list : all) {
        list.file = (folder / list.file).string();
        if (std::filesystem::exists(list.file))
            present.push_back(std::move(list));
    }
    // The list of the demonstration is always there.
    present.push_back({(std::filesystem::path(KSTNEDIT_SOURCE_DIR) / "samples/price-list.csv").string(),
                       {},
                       "221 read, 221 imported, 0 rejected\n",
                       101'885'500,
                       "name:     column 1 'Product' (guessed)\n"});
    return present;
}

class ImportPriceListsTest : public ProgramFixture
{
};

TEST_F(ImportPriceListsTest, ImportsRealPriceListsWithTheRightCountsAndPrices)
{
    for (const PriceList& list : PriceLists()) {
        std::vector<std::string> arguments = {"import", list.file, "--replace"};
        arguments.insert(arguments.end(), list.options.begin(), list.options.end());
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.status, kSucceeded) << list.file;
        EXPECT_EQ(outcome.out, list.counts) << list.file;
        EXPECT_THAT(outcome.err, HasSubstr(list.message)) << list.file;
        std::int64_t sum = 0;
        for (const ProductRow& row : SavedRows())
            sum += row.price;
        EXPECT_EQ(sum, list.sumOfPrices) << list.file;
    }
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
