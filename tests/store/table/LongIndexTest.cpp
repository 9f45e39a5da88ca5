// SPDX-License-Identifier: MIT
#include "store/table/LongIndex.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <random>
#include <string>

using namespace KestrinProductEditor;

TEST(LongIndex, FindsNothingWhenEmpty)
{
    const LongIndex index;
    EXPECT_EQ(index.Find(0).answer, LongIndex::Answer::None);
}

TEST(LongIndex, TellsOneFromSeveral)
{
    LongIndex index;
    index.Insert(-1, 5);
    index.Insert(INT32_MIN, 6);
    index.Insert(INT32_MAX, 7);
    EXPECT_EQ(index.Find(-1).row, 5U);
    EXPECT_EQ(index.Find(INT32_MIN).row, 6U);
    EXPECT_EQ(index.Find(INT32_MAX).row, 7U);
    EXPECT_EQ(index.Find(0).answer, LongIndex::Answer::None);
    index.Insert(-1, 8);
    EXPECT_EQ(index.Find(-1).answer, LongIndex::Answer::Several);
    index.Remove(-1, 5);
    EXPECT_EQ(index.Find(-1).answer, LongIndex::Answer::Several) << "which one is left is not known";
}

TEST(LongIndex, RandomInsertsAndRemovals_AgreeWithAMap)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    LongIndex index;
    std::map<std::int32_t, RowNumber> model;
    RowNumber nextRow = 0;
    for (int step = 0; step < 100000; ++step) {
        // Steps of a power of two are what identifiers of a careless maker look like.
        const std::int32_t value = static_cast<std::int32_t>(random() % 3000) * (step % 2 == 0 ? 1 : 65536);
        const auto known = model.find(value);
        if (known == model.end()) {
            index.Insert(value, nextRow);
            model.emplace(value, nextRow++);
        } else if (random() % 2 == 0) {
            index.Remove(value, known->second);
            model.erase(known);
        }
        const std::int32_t asked =
            static_cast<std::int32_t>(random() % 3000) * (random() % 2 == 0 ? 1 : 65536);
        const auto expected = model.find(asked);
        const LongIndex::Found found = index.Find(asked);
        ASSERT_EQ(found.answer, expected == model.end() ? LongIndex::Answer::None : LongIndex::Answer::One);
        if (expected != model.end()) {
            ASSERT_EQ(found.row, expected->second);
        }
    }
}
