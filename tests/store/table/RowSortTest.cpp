// SPDX-License-Identifier: MIT
#include "store/table/RowSort.h"

#include "util/TextOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

using namespace KestrinProductEditor;

namespace {

RowStore StoreOf(const std::vector<std::string>& names)
{
    RowStore store({{u"Name", ColumnType::WideText, 255, false}});
    for (const std::string& name : names) {
        RowStore::Value value;
        value.text = name;
        store.Append(std::span(&value, 1));
    }
    return store;
}

void ExpectSorted(const std::vector<std::string>& names)
{
    const RowStore store = StoreOf(names);
    std::vector<RowNumber> rows(names.size());
    std::iota(rows.begin(), rows.end(), RowNumber{0});
    std::vector<RowNumber> expected = rows;
    std::stable_sort(expected.begin(), expected.end(), [&](RowNumber left, RowNumber right) {
        return TextOrder::Compare(names[left], names[right]) < 0;
    });
    SortRows(store, 0, rows);
    EXPECT_EQ(rows, expected);
    EXPECT_TRUE(AreSorted(store, 0, rows));
}

std::vector<std::string> RandomNames(std::mt19937& random, std::size_t count, unsigned alphabet,
                                     unsigned length)
{
    static const std::vector<std::string> letters = {
        "a", "A", "b", "\u00C4", "\u00E4", " ", "m", std::string(1, '\0'), "\U0001F600", "Z"};
    std::vector<std::string> names(count);
    for (std::string& name : names) {
        const unsigned letterCount = static_cast<unsigned>(random()) % (length + 1);
        for (unsigned i = 0; i < letterCount; ++i)
            name += letters[random() % alphabet];
    }
    return names;
}

} // namespace

TEST(SortRows, TakesNothingAndOne)
{
    ExpectSorted({});
    ExpectSorted({"a"});
}

TEST(SortRows, KeepsArrivalAmongEqualNames)
{
    ExpectSorted({"b", "A", "a", "B", "a", "A"});
}

TEST(SortRows, TellsNamesApartBehindALongCommonBeginning)
{
    std::vector<std::string> names;
    const std::string beginning(100, 'x');
    for (int i = 999; i >= 0; --i)
        names.push_back(beginning + std::to_string(i));
    ExpectSorted(names);
}

TEST(SortRows, TellsNamesApartThatDifferInZeroCharactersOnly)
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < 200; ++i)
        names.push_back("name" + std::string((i * 37) % 64, '\0'));
    ExpectSorted(names);
}

TEST(SortRows, AgreesWithAStableSortOnRandomNames)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    for (const unsigned alphabet : {2U, 3U, 5U, 10U}) {
        for (const unsigned length : {1U, 8U, 20U, 60U})
            ExpectSorted(RandomNames(random, 3000, alphabet, length));
    }
}

TEST(SortRows, NeedsNoStackForNamesThatAreEqualFarIn)
{
    std::vector<std::string> names;
    std::string beginning;
    for (int i = 0; i < 700; ++i) {
        names.push_back(beginning + "a");
        beginning += "\u4E00";
    }
    ExpectSorted(names);
}

TEST(SortRows, SortsNamesThatAreAllEqual)
{
    ExpectSorted(std::vector<std::string>(5000, "the same name for every product"));
}

TEST(AreSorted, WantsArrivalOrderAmongEqualNames)
{
    const RowStore store = StoreOf({"a", "A"});
    EXPECT_TRUE(AreSorted(store, 0, std::vector<RowNumber>{0, 1}));
    EXPECT_FALSE(AreSorted(store, 0, std::vector<RowNumber>{1, 0}));
}
