// SPDX-License-Identifier: MIT
#include "store/Product.h"

#include "fake/RecordingTrace.h"
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/Locales.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;

constexpr std::int64_t kCeiling = 42'949'672'959'900;

class ProductTest : public testing::Test
{
protected:
    ScopedLocaleVariables m_locale{"en_US.UTF-8"};
    std::shared_ptr<RecordingTrace> m_trace = std::make_shared<RecordingTrace>();
    ScopedTrace m_scopedTrace{m_trace.get()};
    Product m_product;
};

struct TextField
{
    const char* name;
    void (Product::*set)(std::u16string_view);
    const std::u16string& (Product::*get)() const noexcept;
    std::size_t limit;
    const char* message;
};

constexpr TextField kTextFields[] = {
    {"Name", &Product::Name, &Product::Name, 255, "Product name field is too long."},
    {"Key", &Product::Key, &Product::Key, 255, "Product key is too big"},
    {"PartNum", &Product::PartNum, &Product::PartNum, 255, "Product partnum is too big"},
    {"Note", &Product::Note, &Product::Note, 4095, "Product note is too big"},
};

[[nodiscard]] Currency Scaled(std::int64_t scaled)
{
    return Currency::FromScaled(scaled);
}

} // namespace

TEST_F(ProductTest, IsEmptyAndNeitherDirtyNorNewAtFirst)
{
    for (const TextField& field : kTextFields)
        EXPECT_EQ((m_product.*field.get)(), u"") << field.name;
    EXPECT_EQ(m_product.UnitPrice(), Currency());
    EXPECT_FALSE(m_product.Dirty());
    EXPECT_FALSE(m_product.IsNew());
    EXPECT_EQ(m_product.Pack(), Packed(0, ""));
}

TEST_F(ProductTest, TakesATextOfTheLimitAndRefusesOneMore)
{
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        Product product;
        const std::u16string longest(field.limit, u'x');
        EXPECT_NO_THROW((product.*field.set)(longest));
        EXPECT_EQ((product.*field.get)(), longest);
        const auto error = ErrorOf([&] { (product.*field.set)(longest + u'y'); });
        ASSERT_TRUE(error);
        EXPECT_EQ(ToUtf8(error->Description()), field.message);
        EXPECT_EQ(ToUtf8(error->Source()), std::string("KestrinProductEditor.Product::") + field.name);
        EXPECT_EQ(error->Number(), kErrComponent);
        EXPECT_EQ((product.*field.get)(), longest);
    }
}

TEST_F(ProductTest, CountsTheReservedCharacterBeforeItTakesItOut)
{
    for (const TextField& field : kTextFields) {
        SCOPED_TRACE(field.name);
        Product product;
        EXPECT_NO_THROW((product.*field.set)(std::u16string(field.limit, u'~')));
        EXPECT_EQ((product.*field.get)(), u"");
        EXPECT_TRUE(ErrorOf([&] { (product.*field.set)(std::u16string(field.limit, u'x') + u'~'); }));
    }
}

TEST_F(ProductTest, CountsUtf16Units)
{
    std::u16string pairs;
    for (int i = 0; i < 127; ++i)
        pairs += u"\U0001F529";
    EXPECT_NO_THROW(m_product.Name(pairs + u'x'));
    EXPECT_TRUE(ErrorOf([&] { m_product.Name(pairs + u"\U0001F529"); }));
    EXPECT_EQ(m_product.Name(), pairs + u'x');
}

TEST_F(ProductTest, TakesTheReservedCharacterOut)
{
    for (const TextField& field : kTextFields) {
        Product product;
        (product.*field.set)(u"A~B~~C");
        EXPECT_EQ((product.*field.get)(), u"ABC") << field.name;
    }
}

TEST_F(ProductTest, KeepsEveryOtherCharacter)
{
    const std::u16string text(u" \t\r\n'\"\0\u00e9\U0001F529 ", 12);
    for (const TextField& field : kTextFields) {
        Product product;
        (product.*field.set)(text);
        EXPECT_EQ((product.*field.get)(), text) << field.name;
    }
}

TEST_F(ProductTest, TakesAPriceUpToTheCeiling)
{
    for (const std::int64_t price : {kCeiling, std::int64_t{0}, std::int64_t{-50000}, std::int64_t{1},
                                     std::numeric_limits<std::int64_t>::min()}) {
        m_product.UnitPrice(Scaled(price));
        EXPECT_EQ(m_product.UnitPrice(), Scaled(price));
    }
}

TEST_F(ProductTest, RefusesAPriceAboveTheCeiling)
{
    m_product.UnitPrice(Scaled(5));
    for (const std::int64_t price :
         {kCeiling + 1, std::int64_t{42'949'672'960'000}, std::numeric_limits<std::int64_t>::max()}) {
        const auto error = ErrorOf([&] { m_product.UnitPrice(Scaled(price)); });
        ASSERT_TRUE(error);
        EXPECT_EQ(ToUtf8(error->Description()), "Product unit price is too big.");
        EXPECT_EQ(ToUtf8(error->Source()), "KestrinProductEditor.Product::UnitPrice");
        EXPECT_EQ(m_product.UnitPrice(), Scaled(5));
    }
}

TEST_F(ProductTest, AsksTheTraceForTheNumberOfARefusal)
{
    m_trace->AnswerInTurn({1001, 1002});
    const auto error = ErrorOf([&] { m_product.Name(std::u16string(256, u'x')); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 1002);
    EXPECT_THAT(m_trace->Calls(), ElementsAre("enter KestrinProductEditor.Product::Name", "number none",
                                              "error 1001", "number 1001"));
}

TEST_F(ProductTest, ValidatesWithoutALowerBound)
{
    constexpr std::int64_t kLowest = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t kHighest = std::numeric_limits<std::int64_t>::max();
    const struct
    {
        const char* name;
        bool (Product::*isValid)(Currency) const noexcept;
        std::int64_t bound;
    } validators[] = {
        {"IsValidUnitPrice", &Product::IsValidUnitPrice, kCeiling},
        {"IsValidExtPrice", &Product::IsValidExtPrice, kCeiling},
        {"IsValidQty", &Product::IsValidQty, 42'949'672'959'999},
        {"IsValidDiscount", &Product::IsValidDiscount, 1'000'000},
    };
    for (const auto& validator : validators) {
        SCOPED_TRACE(validator.name);
        for (const std::int64_t value : {validator.bound, std::int64_t{0}, std::int64_t{-500000}, kLowest})
            EXPECT_TRUE((m_product.*validator.isValid)(Scaled(value))) << value;
        for (const std::int64_t value : {validator.bound + 1, kHighest})
            EXPECT_FALSE((m_product.*validator.isValid)(Scaled(value))) << value;
    }
}

TEST_F(ProductTest, TracesNeitherGettersNorValidatorsNorDirtyNorKeys)
{
    m_product.Dirty(true);
    static_cast<void>(m_product.Dirty());
    static_cast<void>(m_product.IsNew());
    for (const TextField& field : kTextFields)
        static_cast<void>((m_product.*field.get)());
    static_cast<void>(m_product.UnitPrice());
    static_cast<void>(m_product.GenerateUniqueKey());
    static_cast<void>(m_product.IsValidUnitPrice(Currency()));
    static_cast<void>(m_product.IsValidExtPrice(Currency()));
    static_cast<void>(m_product.IsValidQty(Currency()));
    static_cast<void>(m_product.IsValidDiscount(Currency()));
    EXPECT_THAT(m_trace->Calls(), testing::IsEmpty());
}

TEST_F(ProductTest, BecomesDirtyByItsClientAlone)
{
    m_product.Name(u"Anchor");
    m_product.UnitPrice(Scaled(1));
    EXPECT_FALSE(m_product.Dirty());
    m_product.Dirty(true);
    m_product.Name(u"Bolt");
    EXPECT_TRUE(m_product.Dirty());
    m_product.Unpack(Packed(3, "Clamp"));
    EXPECT_FALSE(m_product.Dirty());
}

TEST_F(ProductTest, UnpacksNullAsANewProduct)
{
    m_product.Unpack(Packed(7, "Anchor", "K", "P", 5, "N"));
    m_product.Dirty(true);
    EXPECT_TRUE(m_product.Unpack(Variant::Null()).IsEmpty());
    EXPECT_TRUE(m_product.IsNew());
    EXPECT_FALSE(m_product.Dirty());
    EXPECT_EQ(m_product.Pack(), Packed(0, ""));
}

TEST_F(ProductTest, UnpacksWhatItPacked)
{
    const std::vector<Variant> products = {
        Packed(7, "Anchor", "K", "P", 12345, "N"),
        Packed(-1, "", "", "", -1, ""),
        Packed(2147483647, std::string(255, 'n'), std::string(255, 'k'), std::string(255, 'p'), kCeiling,
               std::string(4095, 't')),
    };
    for (const Variant& packed : products) {
        Product product;
        EXPECT_TRUE(product.Unpack(packed).IsEmpty());
        EXPECT_FALSE(product.IsNew());
        EXPECT_EQ(product.Pack(), packed);
        Product again;
        again.Unpack(product.Pack());
        EXPECT_EQ(again.Pack(), packed);
        EXPECT_FALSE(again.IsNew());
    }
}

TEST_F(ProductTest, PacksSixSlotsOfTheirKinds)
{
    m_product.Unpack(Packed(7, "Anchor", "K", "P", 12345, "N"));
    const Variant packed = m_product.Pack();
    ASSERT_EQ(packed.Array().Extent(1), 6);
    EXPECT_EQ(packed.At(0), Variant(std::int32_t{7}));
    EXPECT_EQ(packed.At(1), Variant(u"Anchor"));
    EXPECT_EQ(packed.At(2), Variant(u"K"));
    EXPECT_EQ(packed.At(3), Variant(u"P"));
    EXPECT_EQ(packed.At(4), Variant(Scaled(12345)));
    EXPECT_EQ(packed.At(5), Variant(u"N"));
}

TEST_F(ProductTest, IsNoLongerNewAfterUnpackingARow)
{
    m_product.Unpack(Variant::Null());
    m_product.Unpack(Packed(7, "Anchor"));
    EXPECT_FALSE(m_product.IsNew());
}

TEST_F(ProductTest, ConvertsWhatItUnpacks)
{
    m_product.Unpack(Variant::ArrayOf({u"7", 12, Variant(), true, u"$1,234.50", 1.5}));
    EXPECT_EQ(m_product.Pack(), Packed(7, "12", "", "True", 12345000, "1.5"));
}

TEST_F(ProductTest, CleansWhatItUnpacks)
{
    m_product.Unpack(Packed(7, "A~B", "~", "P~", 0, "~N"));
    EXPECT_EQ(m_product.Pack(), Packed(7, "AB", "", "P", 0, "N"));
}

TEST_F(ProductTest, StopsUnpackingAtTheFirstFieldThatIsRefused)
{
    m_product.Unpack(Packed(7, "Anchor", "K", "P", 5, "N"));
    m_product.Dirty(true);
    const auto error =
        ErrorOf([&] { m_product.Unpack(Packed(8, "Bolt", "L", std::string(256, 'x'), 6, "M")); });
    ASSERT_TRUE(error);
    EXPECT_EQ(ToUtf8(error->Description()), "Product partnum is too big");
    EXPECT_EQ(m_product.Pack(), Packed(8, "Bolt", "L", "P", 5, "N"));
    EXPECT_FALSE(m_product.Dirty());
}

TEST_F(ProductTest, ReportsARefusalWhileUnpackingAtBothLevels)
{
    m_trace->AnswerInTurn({1001, 1002, 1003});
    EXPECT_EQ(ErrorNumberOf([&] { m_product.Unpack(Packed(8, std::string(256, 'x'))); }), 1003);
    EXPECT_THAT(m_trace->Calls(), ElementsAre("enter KestrinProductEditor.Product::Unpack",
                                              "enter KestrinProductEditor.Product::Name", "number none",
                                              "error 1001", "number 1001", "error 1002", "number 1002"));
}

TEST_F(ProductTest, RefusesWhatIsNoPackedProduct)
{
    const struct
    {
        const char* what;
        Variant value;
        std::int32_t number;
    } values[] = {
        {"Empty", Variant(), 13},
        {"a number", Variant(std::int32_t{5}), 13},
        {"a text", Variant(u"Anchor"), 13},
        {"an array without elements", Variant::ArrayOf({}), 9},
        {"two dimensions", Variant(VariantArray(6, 1)), 9},
        {"a name that is Null", Variant::ArrayOf({1, Variant::Null(), u"", u"", Currency(), u""}), 13},
        {"an identifier that is none", Variant::ArrayOf({u"x", u"", u"", u"", Currency(), u""}), 13},
        {"a price that is none", Variant::ArrayOf({1, u"", u"", u"", u"abc", u""}), 13},
        {"an identifier too large", Variant::ArrayOf({3e9, u"", u"", u"", Currency(), u""}), 6},
        {"five elements", Variant::ArrayOf({1, u"", u"", u"", Currency()}), 9},
    };
    for (const auto& value : values)
        EXPECT_EQ(ErrorNumberOf([&] { Product().Unpack(value.value); }), value.number) << value.what;
}

TEST_F(ProductTest, GeneratesKeysOf32HexadecimalDigits)
{
    const std::u16string key = m_product.GenerateUniqueKey();
    EXPECT_EQ(key.size(), 32U);
    EXPECT_EQ(key.find_first_not_of(u"0123456789ABCDEF"), std::u16string::npos) << ToUtf8(key);
    EXPECT_NE(m_product.GenerateUniqueKey(), key);
    EXPECT_EQ(m_product.Key(), u"");
}

} // namespace KestrinProductEditor
