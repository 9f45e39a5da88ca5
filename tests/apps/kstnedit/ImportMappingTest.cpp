// SPDX-License-Identifier: MIT
#include "kstnedit/ImportMapping.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KestrinProductEditor::CommandLine {
namespace {

struct Guess
{
    std::vector<std::string> titles;
    std::array<std::int32_t, kImportFields> columns;
};

TEST(GuessMapping, TakesTheLikeliestTitles)
{
    const Guess guesses[] = {
        {{}, {-1, -1, -1, -1}},
        {{"Name", "PartNum", "UnitPrice", "Note"}, {0, 1, 2, 3}},
        {{"note", "UNITPRICE", "partnum", "nAME"}, {3, 2, 1, 0}},
        {{" Name ", "\xC2\xA0Note"}, {0, -1, -1, 1}},
        // The exact one wins over one in another letter case, wherever they stand.
        {{"name", "Name"}, {1, -1, -1, -1}},
        {{"Product", "Part No", "Price", "Remarks"}, {0, 1, 2, 3}},
        {{"Procedure ID", "Description", "Amount"}, {1, 0, 2, -1}},
        {{"description", "charge_amount"}, {0, -1, 1, -1}},
        {{"ProductID", "Name", "ProductNumber", "StandardCost", "ListPrice"}, {1, 2, 4, -1}},
        {{"SKU", "Item", "Unit Price (USD)", "Comments"}, {1, 0, 2, 3}},
        {{"Item", "Description", "Cost"}, {1, 0, 2, -1}},
        {{"Item #", "Item Name", "Price"}, {1, 0, 2, -1}},
        {{"Part-Number", "Part.Description", "RATE"}, {1, 0, 2, -1}},
        {{"Name", "Description", "Price"}, {0, -1, 2, 1}},
        {{"Article No.", "Article", "Net price", "Details"}, {1, 0, 2, 3}},
        {{"Code", "Service Description", "Gross Charge"}, {1, 0, 2, -1}},
        {{"Colour", "Size"}, {-1, -1, -1, -1}},
        {{"", "", "name"}, {2, -1, -1, -1}},
    };
    for (const Guess& guess : guesses) {
        const ImportMapping mapping = GuessMapping(guess.titles);
        EXPECT_EQ(mapping.columns, guess.columns) << TitlesText(guess.titles);
        EXPECT_EQ(mapping.origin, ImportMapping::Origin::Guessed);
    }
}

TEST(GuessMapping, TakesTheFirstOfEqualTitles)
{
    EXPECT_EQ(GuessMapping(std::vector<std::string>{"Price", "Name", "Price", "Name"}).columns,
              (std::array<std::int32_t, 4>{1, -1, 0, -1}));
}

TEST(ReadImportChoices, LeavesCommasInATitle)
{
    const ImportChoices choices = ReadImportChoices("name=Item, long,price=3,note=a,b");
    EXPECT_EQ(choices[kImportName], "Item, long");
    EXPECT_EQ(choices[kImportPrice], "3");
    EXPECT_EQ(choices[kImportNote], "a,b");
    EXPECT_EQ(choices[kImportPartNum], std::nullopt);
}

TEST(MappingOf, TakesANumberForANumberEvenWhereItIsATitle)
{
    const std::vector<std::string> titles = {"2", "1"};
    EXPECT_EQ(MappingOf(ReadImportChoices("name=1"), titles).columns[kImportName], 0);
}

TEST(MappingOf, TakesAColumnBeyondTheTitles)
{
    const std::vector<std::string> titles = {"a list of prices"};
    EXPECT_EQ(MappingOf(ReadImportChoices("name=4,price=2147483647"), titles).columns,
              (std::array<std::int32_t, 4>{3, -1, 2147483646, -1}));
}

TEST(TitlesText, EndsLongListsAndCutsLongTitles)
{
    const std::string text = TitlesText(std::vector<std::string>(25, std::string(50, 't')));
    EXPECT_EQ(text.substr(0, 45), "'" + std::string(37, 't') + "...', '");
    EXPECT_EQ(text.substr(text.size() - 11), " and 5 more");
    EXPECT_EQ(TitlesText({}), "no titles");
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
