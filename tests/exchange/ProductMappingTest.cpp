// SPDX-License-Identifier: MIT
#include "exchange/ProductMapping.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace KestrinProductEditor {

using testing::ElementsAre;

TEST(ProductMapping, HasTheColumnOfEachField)
{
    EXPECT_THAT(MappingOf({2, 0, 1, 4, 3}), ElementsAre(2, 0, 4, 3));
}

TEST(ProductMapping, GivesAFieldToTheLaterOfTwoColumns)
{
    EXPECT_THAT(MappingOf({1, 0, 1}), ElementsAre(2, -1, -1, -1));
}

TEST(ProductMapping, MapsNothingWithoutChoices)
{
    EXPECT_THAT(MappingOf({}), ElementsAre(-1, -1, -1, -1));
    EXPECT_THAT(MappingOf({0, 0, 7, -1}), ElementsAre(-1, -1, -1, -1));
    EXPECT_FALSE(IsAnyFieldMapped(MappingOf({0, 0})));
    EXPECT_TRUE(IsAnyFieldMapped(MappingOf({0, 4})));
}

TEST(ProductMapping, BecomesAnArrayOfFourWholeNumbers)
{
    const Variant map = ReverseMap(MappingOf({3, 1}));
    EXPECT_EQ(map.At(0).Long(), 1);
    EXPECT_EQ(map.At(1).Long(), -1);
    EXPECT_EQ(map.At(2).Long(), 0);
    EXPECT_EQ(map.At(3).Long(), -1);
}

} // namespace KestrinProductEditor
