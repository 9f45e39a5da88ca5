// SPDX-License-Identifier: MIT
#include "platform/ui/RowSelection.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace KestrinProductEditor {

static void PrintTo(const RowSelection::Range& range, std::ostream* out)
{
    *out << range.first << "-" << range.last;
}

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Range = RowSelection::Range;

RowSelection SelectionOf(const std::vector<Range>& ranges)
{
    RowSelection selection;
    for (const Range& range : ranges)
        selection.Add(range);
    return selection;
}

std::vector<std::int32_t> RowsOf(const RowSelection& selection)
{
    std::vector<std::int32_t> rows;
    for (std::int32_t index = 0; index < selection.Count(); ++index)
        rows.push_back(selection.Row(index));
    return rows;
}

} // namespace

TEST(RowSelection, BeginsEmpty)
{
    const RowSelection selection;
    EXPECT_EQ(selection.Count(), 0);
    EXPECT_FALSE(selection.Contains(0));
    EXPECT_THAT(selection.Ranges(), IsEmpty());
}

TEST(RowSelection, HoldsWhatWasAddedWhateverCameFirst)
{
    struct Case
    {
        std::vector<Range> added;
        std::vector<Range> held;
    };
    const std::vector<Case> cases = {
        {{{4, 4}}, {{4, 4}}},
        {{{1, 3}, {7, 9}}, {{1, 3}, {7, 9}}},
        {{{7, 9}, {1, 3}}, {{1, 3}, {7, 9}}},
        {{{1, 3}, {4, 6}}, {{1, 6}}},
        {{{4, 6}, {1, 3}}, {{1, 6}}},
        {{{1, 3}, {5, 6}, {4, 4}}, {{1, 6}}},
        {{{1, 3}, {2, 5}}, {{1, 5}}},
        {{{2, 5}, {1, 3}}, {{1, 5}}},
        {{{1, 9}, {3, 4}}, {{1, 9}}},
        {{{3, 4}, {1, 9}}, {{1, 9}}},
        {{{3, 4}, {3, 4}}, {{3, 4}}},
        {{{1, 1}, {3, 3}, {5, 5}, {7, 7}, {2, 6}}, {{1, 7}}},
        {{{1, 1}, {3, 3}, {5, 5}, {9, 9}, {3, 5}}, {{1, 1}, {3, 5}, {9, 9}}},
        {{{5, 5}, {9, 9}, {7, 7}}, {{5, 5}, {7, 7}, {9, 9}}},
    };
    for (const Case& test : cases)
        EXPECT_EQ(SelectionOf(test.added).Ranges(), test.held) << testing::PrintToString(test.added);
}

TEST(RowSelection, LosesWhatIsRemovedAndNothingElse)
{
    struct Case
    {
        Range removed;
        std::vector<Range> left;
    };
    const std::vector<Case> cases = {
        {{0, 1}, {{2, 5}, {8, 8}, {10, 12}}},
        {{6, 7}, {{2, 5}, {8, 8}, {10, 12}}},
        {{13, 20}, {{2, 5}, {8, 8}, {10, 12}}},
        {{2, 2}, {{3, 5}, {8, 8}, {10, 12}}},
        {{5, 5}, {{2, 4}, {8, 8}, {10, 12}}},
        {{3, 4}, {{2, 2}, {5, 5}, {8, 8}, {10, 12}}},
        {{2, 5}, {{8, 8}, {10, 12}}},
        {{8, 8}, {{2, 5}, {10, 12}}},
        {{4, 11}, {{2, 3}, {12, 12}}},
        {{0, 10}, {{11, 12}}},
        {{0, 99}, {}},
    };
    for (const Case& test : cases) {
        RowSelection selection = SelectionOf({{2, 5}, {8, 8}, {10, 12}});
        selection.Remove(test.removed);
        EXPECT_EQ(selection.Ranges(), test.left) << testing::PrintToString(test.removed);
        for (const std::int32_t row : RowsOf(selection))
            EXPECT_TRUE(selection.Contains(row)) << row;
    }
}

TEST(RowSelection, AnswersTheNthRowAcrossItsRanges)
{
    EXPECT_THAT(RowsOf(SelectionOf({{2, 4}, {8, 8}, {10, 11}})), ElementsAre(2, 3, 4, 8, 10, 11));
}

TEST(RowSelection, AMillionRowsAreOneRange)
{
    RowSelection selection = SelectionOf({{1, 1000000}});
    EXPECT_EQ(selection.Count(), 1000000);
    EXPECT_EQ(selection.Row(999999), 1000000);
    selection.Remove({500000, 500000});
    EXPECT_EQ(selection.Row(499999), 500001);
    EXPECT_THAT(selection.Ranges(), ElementsAre(Range{1, 499999}, Range{500001, 1000000}));
}

TEST(RowSelection, IsEmptyAgainAfterClear)
{
    RowSelection selection = SelectionOf({{1, 3}, {5, 6}});
    selection.Clear();
    EXPECT_EQ(selection.Count(), 0);
    EXPECT_EQ(selection, RowSelection());
    selection.Add({2, 2});
    EXPECT_THAT(RowsOf(selection), ElementsAre(2));
}

TEST(RowSelection, EqualsAnotherOneOfTheSameRows)
{
    EXPECT_EQ(SelectionOf({{1, 2}, {3, 4}}), SelectionOf({{1, 4}}));
    EXPECT_FALSE(SelectionOf({{1, 4}}) == SelectionOf({{1, 2}, {4, 4}}));
}

TEST(RowSelection, RandomWalk_AgreesWithASet)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    constexpr int kRows = 120;
    RowSelection selection;
    std::set<std::int32_t> rows;
    for (int step = 0; step < 5000; ++step) {
        const auto first = static_cast<std::int32_t>(random() % kRows);
        const auto longest = random() % 8 == 0 ? kRows : 4;
        const auto last = std::min(first + static_cast<std::int32_t>(random() % 4096) % longest, kRows - 1);
        if (random() % 2 == 0) {
            selection.Add({first, last});
            for (std::int32_t row = first; row <= last; ++row)
                rows.insert(row);
        } else {
            selection.Remove({first, last});
            rows.erase(rows.lower_bound(first), rows.upper_bound(last));
        }
        ASSERT_EQ(selection.Count(), static_cast<std::int32_t>(rows.size())) << step;
        ASSERT_EQ(RowsOf(selection), std::vector<std::int32_t>(rows.begin(), rows.end())) << step;
        for (std::int32_t row = -1; row <= kRows; ++row)
            ASSERT_EQ(selection.Contains(row), rows.contains(row)) << step << ", row " << row;
        std::int32_t behind = -2;
        for (const Range& range : selection.Ranges()) {
            ASSERT_GT(range.first, behind + 1) << step;
            ASSERT_LE(range.first, range.last) << step;
            behind = range.last;
        }
    }
}

} // namespace KestrinProductEditor
