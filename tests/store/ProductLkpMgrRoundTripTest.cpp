// SPDX-License-Identifier: MIT
#include "platform/Text.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;

constexpr const char* kLocales[] = {"en_US.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8",
                                    "en_IN.UTF-8", "ja_JP.UTF-8", "C"};

/// A product as the columns of an export hold it.
struct Product4
{
    std::string name;
    std::string partNum;
    std::int64_t price = 0;
    std::string note;

    bool operator==(const Product4&) const = default;
    auto operator<=>(const Product4&) const = default;
};
void PrintTo(const Product4& product, std::ostream* out)
{
    *out << "{'" << product.name << "' '" << product.partNum << "' " << product.price << " '" << product.note
         << "'}";
}

class StoreRoundTrip : public StoreFixture
{
protected:
    /// What the products are after an export and an import of it, sorted.
    [[nodiscard]] std::vector<Product4> ThereAndBack(const std::vector<Product4>& products) const
    {
        const auto store = Open();
        store->CancelUpdate(true);
        for (const Product4& product : products)
            store->AddNew(Packed(0, product.name, "KEY", product.partNum, product.price, product.note));
        store->CSVProductExport(ExportParams(m_folder.File("out.csv")));
        EXPECT_EQ(ImportResultOf(
                      store->CSVProductImport(ImportParams(m_folder.File("out.csv"), {0, 1, 2, 3}, 1, 0))),
                  (ImportResult{0, "", static_cast<std::int32_t>(products.size()), 0}));
        std::vector<Product4> back;
        for (const ProductRow& row : RowsOf(*store)) {
            EXPECT_EQ(row.key, "");
            back.push_back({row.name, row.partNum, row.price, row.note});
        }
        std::sort(back.begin(), back.end());
        return back;
    }
};

} // namespace

TEST_F(StoreRoundTrip, KeepsEveryPriceOfTwoDecimalsUnderEachLocale)
{
    std::vector<std::int64_t> prices = {0,          100,         9900,        10000,
                                        123400,     9999900,     10000000,    12345000,
                                        1234567800, 12345678900, 10000000000, 42949672959900};
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i)
        prices.push_back(static_cast<std::int64_t>(random() % (1U << (i % 32))) * 100);
    std::vector<Product4> products;
    for (std::size_t i = 0; i < prices.size(); ++i)
        products.push_back({"Product " + std::to_string(1000 + i), "", prices[i], ""});
    for (const char* const locale : kLocales) {
        SCOPED_TRACE(locale);
        const ScopedLocaleVariables scoped(locale);
        EXPECT_EQ(ThereAndBack(products), products);
    }
}

TEST_F(StoreRoundTrip, KeepsEveryPriceWhereTheCodePageLacksTheLocalesSigns)
{
    const ScopedVariable codePage("KSTNEDIT_CODEPAGE", "windows-1252");
    const std::vector<Product4> products = {
        {"a", "", 0, ""}, {"b", "", 123456700, ""}, {"c", "", 42949672959900, ""}};
    for (const char* const locale : kLocales) {
        SCOPED_TRACE(locale);
        const ScopedLocaleVariables scoped(locale);
        EXPECT_EQ(ThereAndBack(products), products);
    }
}

TEST_F(StoreRoundTrip, KeepsEveryTextUnderEachLocale)
{
    std::vector<Product4> products = {
        {"", "", 100, ""},
        {" ", " ", 100, "  "},
        {"Bolt, M6", ",", 100, ",,,"},
        {"O'Brien", "'", 100, "''"},
        {"N\u00e4gel", "\u20ac\u00a5$", 100, "\u6f22\u5b57 \U0001F529"},
        {"a\tb", ";", 100, "a;b"},
        {"1,234.50", "$5", 100, "-7"},
        {"\u00a0x\u00a0", "\u202f", 100, "\ufeff"},
        {std::string(255, 'n'), std::string(255, 'p'), 100, std::string(4095, 't')},
        {std::string(1, '\0') + "n", "%", 100, "\x01\x1f\x7f"},
    };
    std::sort(products.begin(), products.end());
    for (const char* const locale : kLocales) {
        SCOPED_TRACE(locale);
        const ScopedLocaleVariables scoped(locale);
        EXPECT_EQ(ThereAndBack(products), products);
    }
}

TEST_F(StoreRoundTrip, TurnsDoubleQuotesIntoSingleOnes)
{
    EXPECT_THAT(ThereAndBack({{"3\" pipe", "\"\"", 100, "say \"hi\""}}),
                ElementsAre(Product4{"3' pipe", "''", 100, "say 'hi'"}));
}

TEST_F(StoreRoundTrip, TurnsLineBreaksIntoSemicolons)
{
    EXPECT_THAT(ThereAndBack({{"a\r\nb", "a\nb", 100, "a\rb\n\rc"}}),
                ElementsAre(Product4{"a;b", "a;b", 100, "a;b;;c"}));
}

TEST_F(StoreRoundTrip, TakesTheReservedCharacterOut)
{
    EXPECT_THAT(ThereAndBack({{"A~B", "~", 100, "~x~"}}), ElementsAre(Product4{"AB", "", 100, "x"}));
}

TEST_F(StoreRoundTrip, TurnsNegativePricesAndPricesAboveTheCeilingIntoZero)
{
    for (const char* const locale : kLocales) {
        SCOPED_TRACE(locale);
        const ScopedLocaleVariables scoped(locale);
        EXPECT_THAT(ThereAndBack({{"a", "", -12345000, ""},
                                  {"b", "", 42949672960000, ""},
                                  {"c", "", -1, ""},
                                  {"d", "", 9000000000000000000, ""}}),
                    ElementsAre(Product4{"a", "", 0, ""}, Product4{"b", "", 0, ""}, Product4{"c", "", 0, ""},
                                Product4{"d", "", 0, ""}));
    }
}

TEST_F(StoreRoundTrip, RoundsPricesToTwoDecimals)
{
    for (const char* const locale : kLocales) {
        SCOPED_TRACE(locale);
        const ScopedLocaleVariables scoped(locale);
        EXPECT_THAT(
            ThereAndBack({{"a", "", 12345, ""}, {"b", "", 12350, ""}, {"c", "", 49, ""}, {"d", "", 50, ""}}),
            ElementsAre(Product4{"a", "", 12300, ""}, Product4{"b", "", 12400, ""}, Product4{"c", "", 0, ""},
                        Product4{"d", "", 100, ""}));
    }
}

} // namespace KestrinProductEditor
