// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/Variant.h>

#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace KestrinProductEditor {

namespace {

using Kind = Variant::Kind;

static_assert(!std::is_constructible_v<Variant, const char*>);
static_assert(!std::is_constructible_v<Variant, int*>);

[[nodiscard]] std::vector<Variant> OneOfEachKind()
{
    return {Variant(),         Variant::Null(),
            Variant(true),     Variant(7),
            Variant(1.5),      Variant(Currency::FromUnits(7)),
            Variant(u"seven"), Variant::ArrayOf({Variant(7)})};
}

} // namespace

TEST(Variant, HasTheKindOfItsValue)
{
    const std::vector<Variant> values = OneOfEachKind();
    const Kind kinds[] = {Kind::Empty,  Kind::Null,     Kind::Boolean, Kind::Long,
                          Kind::Double, Kind::Currency, Kind::String,  Kind::Array};
    ASSERT_EQ(values.size(), std::size(kinds));
    for (std::size_t i = 0; i < values.size(); ++i) {
        EXPECT_EQ(values[i].GetKind(), kinds[i]) << i;
        EXPECT_EQ(values[i].IsEmpty(), kinds[i] == Kind::Empty) << i;
        EXPECT_EQ(values[i].IsNull(), kinds[i] == Kind::Null) << i;
        EXPECT_EQ(values[i].IsArray(), kinds[i] == Kind::Array) << i;
    }
}

TEST(Variant, GivesItsValueBack)
{
    EXPECT_TRUE(Variant(true).Boolean());
    EXPECT_FALSE(Variant(false).Boolean());
    EXPECT_EQ(Variant(-7).Long(), -7);
    EXPECT_EQ(Variant(1.5).Double(), 1.5);
    EXPECT_EQ(Variant(Currency::FromScaled(12345)).Currency().Scaled(), 12345);
    EXPECT_EQ(Variant(u"text").String(), u"text");
    EXPECT_EQ(Variant(std::u16string_view(u"text")).String(), u"text");
    EXPECT_EQ(Variant(std::u16string(u"text")).String(), u"text");
    EXPECT_EQ(Variant::ArrayOf({Variant(7), Variant(8)}).Array().Extent(1), 2);
}

TEST(Variant, RefusesEveryOtherKindWithATypeMismatch)
{
    for (const Variant& value : OneOfEachKind()) {
        const Kind kind = value.GetKind();
        const auto expected = [kind](Kind own) { return kind == own ? 0 : kErrTypeMismatch; };
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(value.Boolean()); }), expected(Kind::Boolean));
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(value.Long()); }), expected(Kind::Long));
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(value.Double()); }), expected(Kind::Double));
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(value.Currency()); }), expected(Kind::Currency));
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(value.String()); }), expected(Kind::String));
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(value.Array()); }), expected(Kind::Array));
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(value.At(0)); }), expected(Kind::Array));
        Variant copy = value;
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(copy.ArrayForWrite()); }), expected(Kind::Array));
    }
}

TEST(Variant, IsEqualForTheSameKindAndValueOnly)
{
    const std::vector<Variant> values = OneOfEachKind();
    const std::vector<Variant> others = OneOfEachKind();
    for (std::size_t i = 0; i < values.size(); ++i) {
        for (std::size_t j = 0; j < others.size(); ++j)
            EXPECT_EQ(values[i] == others[j], i == j) << i << ' ' << j;
    }
    EXPECT_FALSE(Variant(7) == Variant(8));
    EXPECT_FALSE(Variant(u"a") == Variant(u"A"));
}

TEST(Variant, ComparesArraysElementByElement)
{
    const Variant array = Variant::ArrayOf({Variant(1), Variant::ArrayOf({Variant(u"x")})});
    EXPECT_EQ(array, Variant::ArrayOf({Variant(1), Variant::ArrayOf({Variant(u"x")})}));
    EXPECT_FALSE(array == Variant::ArrayOf({Variant(1), Variant::ArrayOf({Variant(u"y")})}));
    EXPECT_FALSE(array == Variant::ArrayOf({Variant(1)}));
    EXPECT_FALSE(Variant(VariantArray(1, 0)) == Variant::ArrayOf({}));
    EXPECT_FALSE(Variant(VariantArray(2, 3)) == Variant(VariantArray(3, 2)));
}

TEST(Variant, CopiesOfAnArrayAreIndependent)
{
    Variant first = Variant::ArrayOf({Variant(1), Variant(2)});
    Variant second = first;
    second.ArrayForWrite().At(0) = Variant(u"new");
    EXPECT_EQ(first.At(0), Variant(1));
    EXPECT_EQ(second.At(0), Variant(u"new"));
    first.ArrayForWrite().At(1) = Variant(3);
    EXPECT_EQ(first.At(1), Variant(3));
    EXPECT_EQ(second.At(1), Variant(2));
}

TEST(Variant, CopiesShareTheirArrayUntilOneIsWritten)
{
    const Variant first = Variant::ArrayOf({Variant(1)});
    Variant second = first;
    EXPECT_EQ(&first.Array(), &second.Array());
    VariantArray& own = second.ArrayForWrite();
    EXPECT_NE(&first.Array(), &own);
    EXPECT_EQ(&second.ArrayForWrite(), &own);
}

TEST(Variant, CopiesOfAnArrayInAnArrayAreIndependent)
{
    Variant first = Variant::ArrayOf({Variant::ArrayOf({Variant(1)})});
    const Variant second = first;
    first.ArrayForWrite().At(0).ArrayForWrite().At(0) = Variant(2);
    EXPECT_EQ(first.At(0).At(0), Variant(2));
    EXPECT_EQ(second.At(0).At(0), Variant(1));
}

TEST(Variant, AtAnswersOneDimensionOnly)
{
    EXPECT_EQ(Variant::ArrayOf({Variant(5)}).At(0).Long(), 5);
    const Variant grid = VariantArray(1, 1);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(grid.At(0)); }), kErrSubscriptOutOfRange);
}

TEST(VariantArray, RefusesAnIndexOutsideIt)
{
    VariantArray array(std::vector<Variant>{Variant(1), Variant(2)});
    EXPECT_EQ(array.Dimensions(), 1);
    EXPECT_EQ(array.At(1).Long(), 2);
    for (const std::int32_t index : {-1, 2, std::numeric_limits<std::int32_t>::min()}) {
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(array.At(index)); }), kErrSubscriptOutOfRange);
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(std::as_const(array).At(index)); }),
                  kErrSubscriptOutOfRange);
    }
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(array.At(0, 0)); }), kErrSubscriptOutOfRange);
}

TEST(VariantArray, OfNoElementsHasNoIndex)
{
    const VariantArray array(std::vector<Variant>{});
    EXPECT_EQ(array.Dimensions(), 1);
    EXPECT_EQ(array.Extent(1), 0);
    EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(array.At(0)); }), kErrSubscriptOutOfRange);
}

TEST(VariantArray, OfTwoDimensionsKeepsEveryElementApart)
{
    VariantArray array(3, 2);
    EXPECT_EQ(array.Dimensions(), 2);
    EXPECT_EQ(array.Extent(1), 3);
    EXPECT_EQ(array.Extent(2), 2);
    EXPECT_TRUE(array.At(2, 1).IsEmpty());
    for (std::int32_t first = 0; first < 3; ++first) {
        for (std::int32_t second = 0; second < 2; ++second)
            array.At(first, second) = Variant(10 * first + second);
    }
    for (std::int32_t first = 0; first < 3; ++first) {
        for (std::int32_t second = 0; second < 2; ++second)
            EXPECT_EQ(std::as_const(array).At(first, second).Long(), 10 * first + second);
    }
}

TEST(VariantArray, OfTwoDimensionsRefusesAnIndexOutsideIt)
{
    VariantArray array(3, 2);
    const std::int32_t outside[][2] = {{-1, 0}, {0, -1}, {3, 0}, {0, 2}, {3, 2}};
    for (const auto& place : outside) {
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(array.At(place[0], place[1])); }),
                  kErrSubscriptOutOfRange);
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(std::as_const(array).At(place[0], place[1])); }),
                  kErrSubscriptOutOfRange);
    }
}

TEST(VariantArray, HasAnExtentForItsDimensionsOnly)
{
    const VariantArray line(std::vector<Variant>{Variant(1)});
    const VariantArray grid(4, 0);
    EXPECT_EQ(line.Extent(1), 1);
    EXPECT_EQ(grid.Extent(1), 4);
    EXPECT_EQ(grid.Extent(2), 0);
    for (const int dimension : {-1, 0, 2, 3})
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(line.Extent(dimension)); }), kErrSubscriptOutOfRange);
    for (const int dimension : {-1, 0, 3})
        EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(grid.Extent(dimension)); }), kErrSubscriptOutOfRange);
}

} // namespace KestrinProductEditor
