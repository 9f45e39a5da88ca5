// SPDX-License-Identifier: MIT
#include "store/table/RowOrder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

using namespace KestrinProductEditor;

namespace {

class RowOrderTest : public testing::Test
{
protected:
    RowNumber NewRow()
    {
        const RowStore::Value value{static_cast<std::int64_t>(store.RowCount()), {}};
        return store.Append(std::span(&value, 1));
    }

    std::vector<RowNumber> Rows() const
    {
        std::vector<RowNumber> rows;
        order.ForEach([&](RowNumber row) { rows.push_back(row); });
        return rows;
    }

    void ExpectIs(const std::vector<RowNumber>& expected) const
    {
        ASSERT_EQ(Rows(), expected);
        ASSERT_EQ(order.Size(), expected.size());
        ASSERT_EQ(order.IsEmpty(), expected.empty());
        ASSERT_EQ(order.First(), expected.empty() ? kNoRow : expected.front());
        ASSERT_EQ(order.Last(), expected.empty() ? kNoRow : expected.back());
    }

    RowStore store{{{u"Number", ColumnType::Long, 4, false}}};
    RowOrder order{store};
};

} // namespace

TEST_F(RowOrderTest, Empty_HasNoEnds)
{
    ExpectIs({});
}

TEST_F(RowOrderTest, Assign_HoldsEveryRowInItsPlace)
{
    std::vector<RowNumber> rows;
    for (std::size_t i = 0; i < 3 * RowOrder::kBlockRows + 5; ++i)
        rows.push_back(NewRow());
    std::reverse(rows.begin(), rows.end());
    order.Assign(rows);
    ExpectIs(rows);
    for (std::size_t place = 0; place < rows.size(); ++place) {
        ASSERT_EQ(order.At(place), rows[place]);
        ASSERT_EQ(order.PlaceOf(rows[place]), place);
        ASSERT_EQ(order.Next(rows[place]), place + 1 < rows.size() ? rows[place + 1] : kNoRow);
        ASSERT_EQ(order.Previous(rows[place]), place > 0 ? rows[place - 1] : kNoRow);
    }
}

TEST_F(RowOrderTest, FirstBehind_FindsThePlaceInEveryBlock)
{
    std::vector<RowNumber> rows;
    for (std::size_t i = 0; i < 2 * RowOrder::kBlockRows; ++i)
        rows.push_back(NewRow());
    order.Assign(rows);
    for (RowNumber limit = 0; limit < rows.size(); ++limit)
        ASSERT_EQ(order.FirstBehind([&](RowNumber row) { return row >= limit; }), limit);
    EXPECT_EQ(order.FirstBehind([](RowNumber) { return false; }), kNoRow);
}

TEST_F(RowOrderTest, Remove_EmptiesBlockAfterBlock)
{
    std::vector<RowNumber> rows;
    for (std::size_t i = 0; i < 2 * RowOrder::kBlockRows; ++i)
        rows.push_back(NewRow());
    order.Assign(rows);
    while (!rows.empty()) {
        const RowNumber row = rows.size() % 2 == 0 ? rows.front() : rows.back();
        order.Remove(row);
        rows.erase(std::find(rows.begin(), rows.end(), row));
        ASSERT_FALSE(order.Contains(row));
        if (rows.size() % 97 == 0) {
            ASSERT_NO_FATAL_FAILURE(ExpectIs(rows));
        }
    }
    const RowNumber again = NewRow();
    order.Append(again);
    ExpectIs({again});
}

TEST_F(RowOrderTest, RandomInsertsAndRemovals_AgreeWithAVector)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::vector<RowNumber> rows;
    for (int step = 0; step < 20000; ++step) {
        if (rows.empty() || random() % 4 != 0) {
            const std::size_t place = random() % 8 == 0 ? rows.size() : random() % (rows.size() + 1);
            const RowNumber row = NewRow();
            order.InsertBefore(row, place < rows.size() ? rows[place] : kNoRow);
            rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(place), row);
        } else {
            const std::size_t place = random() % rows.size();
            order.Remove(rows[place]);
            rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(place));
        }
        if (rows.empty())
            continue;
        const std::size_t place = random() % rows.size();
        ASSERT_EQ(order.At(place), rows[place]) << step;
        const std::size_t other = random() % rows.size();
        ASSERT_EQ(order.PlaceOf(rows[other]), other) << step;
        ASSERT_EQ(order.Next(rows[other]), other + 1 < rows.size() ? rows[other + 1] : kNoRow) << step;
        ASSERT_EQ(order.Previous(rows[other]), other > 0 ? rows[other - 1] : kNoRow) << step;
    }
    ExpectIs(rows);
}
