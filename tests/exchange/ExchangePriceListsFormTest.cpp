// SPDX-License-Identifier: MIT
#include "support/ExchangeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::StartsWith;

struct PriceList
{
    std::filesystem::path file;
    std::vector<std::string> titles; ///< the first ones
    /// The column (from 1) of name, part number, price and note; 0 for none. Empty when the dialog refuses.
    std::vector<std::int32_t> columns;
    std::string firstName = {}; ///< in the preview
    std::string firstPrice = {};
    int imported = 0;
    int rejected = 0;
    std::int64_t sumOfPrices = 0; ///< in ten-thousandths
};

/// Real price lists lie beside the checkout on some machines; elsewhere this has fewer cases. The expected
/// numbers come from a script of a few lines that splits and counts on its own.
std::vector<PriceList> PriceLists()
{
    const std::vector<PriceList> all = {
        // The one line of titles stands below another title: the second line is the first of the preview.
        {"02_hospital_shelby_26k_latin1_titleline.csv",
         {"OHIOHEALTH SHELBY HOSPITAL CHARGE LIST", ""},
         {2, 0, 3, 1},
         "DESCRIPTION",
         "CHARGE",
         25988,
         1,
         587'421'181'900},
        // A preamble with line breaks in quotes: its lines have one column, and then five.
        {"04_hospital_mdanderson_preamble.csv", {}, {}},
        {"13_adventureworks_product.csv",
         {"ProductID", "Name", "ProductNumber"},
         {2, 3, 10, 6},
         "Adjustable Race",
         "$0.00",
         504,
         0,
         2'210'877'900},
    };
    const std::filesystem::path source(KSTNEDIT_SOURCE_DIR);
    std::vector<PriceList> present;
    for (PriceList list : all) {
        list.file = source.parent_path() / "shared/price-lists" / list.file;
        if (std::filesystem::exists(list.file))
            present.push_back(std::move(list));
    }
    // The list of the demonstration is always there.
    present.push_back({source / "samples/price-list.csv",
                       {"Product", "Part No", "Price", "Remarks"},
                       {1, 2, 3, 4},
                       "Claw hammer, 16 oz",
                       "$18.95",
                       221,
                       0,
                       101'885'500});
    return present;
}

class ExchangePriceLists : public ExchangeFixture
{
protected:
    void Map(const PriceList& list)
    {
        for (std::size_t field = 0; field < list.columns.size(); ++field) {
            if (list.columns[field] > 0)
                m_user->PickInCell(u"flexGrid", list.columns[field], 1, static_cast<std::int32_t>(field) + 1);
        }
    }
};

} // namespace

TEST_F(ExchangePriceLists, AreSampledPreviewedAndImported)
{
    for (const PriceList& list : PriceLists()) {
        SCOPED_TRACE(list.file.filename().string());
        Import([&] {
            const bool isRefused = list.columns.empty();
            if (isRefused)
                m_user->WillAnswer(MessageAnswer::Ok);
            BrowseTo(ToUtf16(list.file.string()));
            if (isRefused) {
                EXPECT_EQ(m_user->Messages().back(), kNoSample);
                EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), 1);
                m_user->Click(u"cmdCancel");
                return;
            }
            for (std::size_t column = 0; column < list.titles.size(); ++column)
                EXPECT_EQ(Cell(static_cast<std::int32_t>(column) + 1, 0), list.titles[column]);
            Map(list);
            m_user->AtNextForm([&] {
                EXPECT_EQ(m_user->Grid(u"flexGrid").Rows(), 6);
                EXPECT_EQ(Cell(1, 0), list.firstName);
                EXPECT_EQ(Cell(1, 2), list.firstPrice);
                m_user->Click(u"cmdClose");
            });
            m_user->Click(u"cmdPreview");
            m_user->Click(u"chkAppend");
            m_user->WillAnswer(MessageAnswer::Ok);
            m_user->Click(u"cmdImport");
        });
        if (list.columns.empty())
            continue;
        EXPECT_EQ(m_user->Messages().back(), Summary(list.imported, list.rejected));
        std::int64_t sum = 0;
        for (const ProductRow& row : RowsOf(*m_store))
            sum += row.price;
        EXPECT_EQ(sum, list.sumOfPrices);
    }
}

} // namespace KestrinProductEditor
