// SPDX-License-Identifier: MIT
#include "store/table/RowStore.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using namespace KestrinProductEditor;

namespace {

enum : std::size_t
{
    kLong,
    kFirstText,
    kMoney,
    kSecondText,
    kBoolean,
    kThirdText
};

RowStore EmptyStore()
{
    return RowStore({{u"L", ColumnType::Long, 4},
                     {u"A", ColumnType::NarrowText, 255},
                     {u"M", ColumnType::Currency, 8},
                     {u"B", ColumnType::WideText, 255},
                     {u"F", ColumnType::Boolean, 2},
                     {u"C", ColumnType::NarrowText, 255}});
}

RowNumber Add(RowStore& store, std::int32_t number, std::string_view a, std::string_view b,
              std::string_view c)
{
    const std::array<RowStore::Value, 6> values = {
        {{number, {}}, {0, a}, {std::int64_t{number} << 32, {}}, {0, b}, {number % 2, {}}, {0, c}}};
    return store.Append(values);
}

} // namespace

TEST(RowStore, Append_KeepsEveryValue)
{
    RowStore store = EmptyStore();
    const std::string longText(70000, 'x');
    const RowNumber first = Add(store, -5, "", longText, "c");
    const RowNumber second =
        Add(store, 7, std::string(127, 'a'), std::string(128, 'b'), std::string(16384, 'c'));
    EXPECT_EQ(store.RowCount(), 2U);
    EXPECT_EQ(store.Long(first, kLong), -5);
    EXPECT_EQ(store.Money(first, kMoney).Scaled(), std::int64_t{-5} << 32);
    EXPECT_TRUE(store.Boolean(first, kBoolean));
    EXPECT_EQ(store.Text(first, kFirstText), "");
    EXPECT_EQ(store.Text(first, kSecondText), longText);
    EXPECT_EQ(store.Text(first, kThirdText), "c");
    std::array<std::string_view, 3> texts;
    store.Texts(second, texts.data());
    EXPECT_EQ(texts[0], std::string(127, 'a'));
    EXPECT_EQ(texts[1], std::string(128, 'b'));
    EXPECT_EQ(texts[2], std::string(16384, 'c'));
    EXPECT_EQ(store.Tag(second), 0U);
}

TEST(RowStore, Writes_TouchTheirValueOnly)
{
    RowStore store = EmptyStore();
    const RowNumber row = Add(store, 1, "a", "b", "c");
    store.SetTag(row, 77);
    store.SetLong(row, kLong, -2147483647 - 1);
    store.SetMoney(row, kMoney, Currency::FromScaled(INT64_MIN));
    store.SetBoolean(row, kBoolean, false);
    store.SetText(row, kSecondText, "bb");
    EXPECT_EQ(store.Tag(row), 77U);
    EXPECT_EQ(store.Long(row, kLong), -2147483647 - 1);
    EXPECT_EQ(store.Money(row, kMoney).Scaled(), INT64_MIN);
    EXPECT_FALSE(store.Boolean(row, kBoolean));
    EXPECT_EQ(store.Text(row, kFirstText), "a");
    EXPECT_EQ(store.Text(row, kSecondText), "bb");
    EXPECT_EQ(store.Text(row, kThirdText), "c");
}

TEST(RowStore, SetText_TakesAViewOfItsOwnTexts)
{
    RowStore store = EmptyStore();
    const RowNumber row = Add(store, 1, "left", "right", "");
    store.SetText(row, kThirdText, store.Text(row, kSecondText));
    EXPECT_EQ(store.Text(row, kThirdText), "right");
}

TEST(RowStore, LongestText_IsABoundForEachColumn)
{
    RowStore store = EmptyStore();
    Add(store, 1, "aaa", "b", "");
    EXPECT_EQ(store.LongestText(kFirstText), 3U);
    EXPECT_EQ(store.LongestText(kSecondText), 1U);
    store.SetText(0, kSecondText, "bbbbb");
    EXPECT_EQ(store.LongestText(kSecondText), 5U);
    store.Clear();
    EXPECT_EQ(store.LongestText(kFirstText), 0U);
    EXPECT_EQ(store.RowCount(), 0U);
}

TEST(RowStore, RandomWritesAndForgottenRows_LeaveTheOthersAsTheyWere)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    RowStore store = EmptyStore();
    std::vector<std::array<std::string, 3>> model;
    std::vector<bool> forgotten;
    const auto text = [&] { return std::string(random() % 400, static_cast<char>('a' + random() % 26)); };
    for (int step = 0; step < 60000; ++step) {
        if (model.size() < 2000) {
            model.push_back({text(), text(), text()});
            forgotten.push_back(false);
            Add(store, static_cast<std::int32_t>(model.size()), model.back()[0], model.back()[1],
                model.back()[2]);
            continue;
        }
        const auto row = static_cast<RowNumber>(random() % model.size());
        if (forgotten[row])
            continue;
        if (random() % 100 == 0) {
            store.Forget(row);
            forgotten[row] = true;
            continue;
        }
        const std::size_t which = random() % 3;
        model[row][which] = text();
        store.SetText(row, std::array{kFirstText, kSecondText, kThirdText}[which], model[row][which]);
    }
    for (RowNumber row = 0; row < model.size(); ++row) {
        if (forgotten[row])
            continue;
        ASSERT_EQ(store.Long(row, kLong), static_cast<std::int32_t>(row + 1));
        ASSERT_EQ(store.Text(row, kFirstText), model[row][0]);
        ASSERT_EQ(store.Text(row, kSecondText), model[row][1]);
        ASSERT_EQ(store.Text(row, kThirdText), model[row][2]);
    }
}

TEST(RowStore, ManyRows_LieInManyChunks)
{
    RowStore store({{u"L", ColumnType::Long, 4}});
    constexpr RowNumber kRows = 200000;
    for (RowNumber row = 0; row < kRows; ++row) {
        const RowStore::Value value{row, {}};
        ASSERT_EQ(store.Append(std::span(&value, 1)), row);
    }
    for (RowNumber row = 0; row < kRows; row += 997)
        ASSERT_EQ(store.Long(row, 0), static_cast<std::int32_t>(row));
}
