// SPDX-License-Identifier: MIT
#include "server/windows/ComVariant.h"

#include "server/windows/ComError.h"
#include "server/windows/ComText.h"

#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

/// A system's value of a kind, whose bytes are those of `value`.
template<class Type>
[[nodiscard]] VARIANT Raw(VARTYPE kind, Type value)
{
    VARIANT raw{};
    std::memcpy(&raw.llVal, &value, sizeof(value));
    raw.vt = kind;
    return raw;
}

template<class Type>
[[nodiscard]] VARIANT Reference(VARTYPE kind, Type& value)
{
    VARIANT raw{};
    raw.byref = &value;
    raw.vt = static_cast<VARTYPE>(kind | VT_BYREF);
    return raw;
}

/// A system's array, destroyed at the end of its scope.
class ComArray
{
public:
    ComArray(VARTYPE kind, std::vector<SAFEARRAYBOUND> bounds)
        : m_kind(kind), m_array(SafeArrayCreate(kind, static_cast<UINT>(bounds.size()), bounds.data()))
    {
    }
    ComArray(const ComArray&) = delete;
    ComArray& operator=(const ComArray&) = delete;
    ~ComArray()
    {
        if (m_array != nullptr)
            SafeArrayDestroy(m_array);
    }

    template<class Type>
    ComArray& Put(std::vector<LONG> indices, Type value)
    {
        EXPECT_EQ(SafeArrayPutElement(m_array, indices.data(), &value), S_OK);
        return *this;
    }
    ComArray& PutText(LONG index, std::u16string_view text)
    {
        const Bstr bstr(text);
        EXPECT_EQ(SafeArrayPutElement(m_array, &index, bstr.Get()), S_OK);
        return *this;
    }
    /// As it is: the system would follow a reference.
    void PutInPlace(LONG index, const VARIANT& value)
    {
        void* place = nullptr;
        EXPECT_EQ(SafeArrayPtrOfIndex(m_array, &index, &place), S_OK);
        *static_cast<VARIANT*>(place) = value;
    }
    /// Leaves it to the caller.
    [[nodiscard]] ComVariant Take()
    {
        ComVariant taken;
        taken.parray = std::exchange(m_array, nullptr);
        taken.vt = static_cast<VARTYPE>(VT_ARRAY | m_kind);
        return taken;
    }
    [[nodiscard]] VARIANT Value() const
    {
        VARIANT value{};
        value.parray = m_array;
        value.vt = static_cast<VARTYPE>(VT_ARRAY | m_kind);
        return value;
    }

private:
    VARTYPE m_kind;
    SAFEARRAY* m_array;
};

[[nodiscard]] std::int32_t NumberOfFailure(const VARIANT& value)
{
    const auto error = ErrorOf([&] { static_cast<void>(FromCom(value)); });
    return error ? error->Number() : 0;
}

} // namespace

TEST(ComVariant, TakesEveryIntegerKindAsALong)
{
    EXPECT_EQ(FromCom(Raw(VT_I1, std::int8_t{-7})), Variant(-7));
    EXPECT_EQ(FromCom(Raw(VT_UI1, std::uint8_t{200})), Variant(200));
    EXPECT_EQ(FromCom(Raw(VT_I2, std::int16_t{-30000})), Variant(-30000));
    EXPECT_EQ(FromCom(Raw(VT_UI2, std::uint16_t{60000})), Variant(60000));
    EXPECT_EQ(FromCom(Raw(VT_I4, std::int32_t{-2147483647 - 1})), Variant(-2147483647 - 1));
    EXPECT_EQ(FromCom(Raw(VT_UI4, std::uint32_t{7})), Variant(7));
    EXPECT_EQ(FromCom(Raw(VT_INT, -1)), Variant(-1));
    EXPECT_EQ(FromCom(Raw(VT_UINT, 1u)), Variant(1));
    EXPECT_EQ(FromCom(Raw(VT_I8, std::int64_t{-5})), Variant(-5));
    EXPECT_EQ(FromCom(Raw(VT_UI8, std::uint64_t{5})), Variant(5));
}

TEST(ComVariant, TakesAWholeNumberBeyondALongAsADoubleOrRefusesIt)
{
    EXPECT_EQ(FromCom(Raw(VT_UI4, 4294967295u)), Variant(4294967295.0));
    EXPECT_EQ(FromCom(Raw(VT_I8, std::int64_t{-9007199254740992})), Variant(-9007199254740992.0));
    EXPECT_EQ(NumberOfFailure(Raw(VT_I8, std::int64_t{9007199254740993})), kErrOverflow);
    EXPECT_EQ(NumberOfFailure(Raw(VT_UI8, ~std::uint64_t{0})), kErrOverflow);
}

TEST(ComVariant, TakesOtherKindsAsWhatTheyMean)
{
    EXPECT_EQ(FromCom(Raw(VT_EMPTY, 0)), Variant());
    EXPECT_EQ(FromCom(Raw(VT_NULL, 0)), Variant::Null());
    EXPECT_EQ(FromCom(Raw(VT_ERROR, SCODE{DISP_E_PARAMNOTFOUND})), Variant());
    EXPECT_EQ(FromCom(Raw(VT_BOOL, VARIANT_TRUE)), Variant(true));
    EXPECT_EQ(FromCom(Raw(VT_BOOL, VARIANT_FALSE)), Variant(false));
    EXPECT_EQ(FromCom(Raw(VT_R4, 0.5F)), Variant(0.5));
    EXPECT_EQ(FromCom(Raw(VT_R8, -2.25)), Variant(-2.25));
    EXPECT_EQ(FromCom(Raw(VT_CY, std::int64_t{12345})), Variant(Currency::FromScaled(12345)));
    const Bstr text(u"T\u00FCr");
    EXPECT_EQ(FromCom(Raw(VT_BSTR, text.Get())), Variant(u"T\u00FCr"));
    EXPECT_EQ(FromCom(Raw(VT_BSTR, BSTR{nullptr})), Variant(u""));
}

TEST(ComVariant, TakesADecimalAsMoneyWhereItIsMoney)
{
    VARIANT value{};
    ASSERT_EQ(VarDecFromI4(123, &value.decVal), S_OK);
    value.decVal.scale = 2;
    value.vt = VT_DECIMAL;
    EXPECT_EQ(FromCom(value), Variant(Currency::FromScaled(12300)));
    value.decVal.scale = 6;
    EXPECT_EQ(FromCom(value), Variant(0.000123));
}

TEST(ComVariant, TakesADateAsItsText)
{
    const Variant date = FromCom(Raw(VT_DATE, DATE{2.0}));
    ASSERT_EQ(date.GetKind(), Variant::Kind::String);
    EXPECT_NE(date.String().find(u"1900"), std::u16string::npos);
}

TEST(ComVariant, FollowsReferencesOfEveryKind)
{
    VARIANT inner = Raw(VT_I4, 42);
    EXPECT_EQ(FromCom(Reference(VT_VARIANT, inner)), Variant(42));
    std::int16_t number = -3;
    EXPECT_EQ(FromCom(Reference(VT_I2, number)), Variant(-3));
    VARIANT_BOOL flag = VARIANT_TRUE;
    EXPECT_EQ(FromCom(Reference(VT_BOOL, flag)), Variant(true));
    ComArray array(VT_I4, {{2, 0}});
    array.Put({0}, LONG{1}).Put({1}, LONG{2});
    SAFEARRAY* pointer = array.Value().parray;
    VARIANT reference{};
    reference.pparray = &pointer;
    reference.vt = VT_BYREF | VT_ARRAY | VT_I4;
    EXPECT_EQ(FromCom(reference), Variant::ArrayWith(1, 2));
    VARIANT nowhere{};
    nowhere.vt = VT_BYREF | VT_I4;
    EXPECT_EQ(NumberOfFailure(nowhere), kErrTypeMismatch);
}

TEST(ComVariant, TakesArraysOfEveryElementKind)
{
    EXPECT_EQ(FromCom(ComArray(VT_UI1, {{2, 0}}).Put({0}, BYTE{1}).Put({1}, BYTE{255}).Value()),
              Variant::ArrayWith(1, 255));
    EXPECT_EQ(FromCom(ComArray(VT_I2, {{1, 0}}).Put({0}, SHORT{-1}).Value()), Variant::ArrayWith(-1));
    EXPECT_EQ(FromCom(ComArray(VT_I8, {{1, 0}}).Put({0}, LONGLONG{9}).Value()), Variant::ArrayWith(9));
    EXPECT_EQ(FromCom(ComArray(VT_R8, {{1, 0}}).Put({0}, 1.5).Value()), Variant::ArrayWith(1.5));
    EXPECT_EQ(FromCom(ComArray(VT_BOOL, {{1, 0}}).Put({0}, VARIANT_TRUE).Value()), Variant::ArrayWith(true));
    EXPECT_EQ(FromCom(ComArray(VT_BSTR, {{2, 0}}).PutText(1, u"b").Value()), Variant::ArrayWith(u"", u"b"));
    EXPECT_EQ(FromCom(ComArray(VT_CY, {{1, 0}}).Put({0}, LONGLONG{5}).Value()),
              Variant::ArrayWith(Currency::FromScaled(5)));
}

TEST(ComVariant, TakesArraysInArrays)
{
    ComArray inner(VT_I4, {{1, 0}});
    inner.Put({0}, LONG{3});
    ComArray outer(VT_VARIANT, {{2, 0}});
    outer.Put({0}, inner.Value()).Put({1}, Raw(VT_NULL, 0));
    EXPECT_EQ(FromCom(outer.Value()), Variant::ArrayWith(Variant::ArrayWith(3), Variant::Null()));
}

TEST(ComVariant, TakesAndGivesTwoDimensionsInTheirOrder)
{
    VariantArray table(2, 3);
    for (std::int32_t first = 0; first < 2; ++first) {
        for (std::int32_t second = 0; second < 3; ++second)
            table.At(first, second) = first * 10 + second;
    }
    const ComVariant given{Variant(table)};
    ASSERT_EQ(given.vt, VT_ARRAY | VT_VARIANT);
    ASSERT_EQ(SafeArrayGetDim(given.parray), 2u);
    LONG indices[] = {1, 2};
    VARIANT element{};
    ASSERT_EQ(SafeArrayGetElement(given.parray, indices, &element), S_OK);
    EXPECT_EQ(element.lVal, 12);
    EXPECT_EQ(FromCom(given), Variant(table));
}

TEST(ComVariant, GivesWhatItTakes)
{
    const Variant values[] = {
        Variant(),
        Variant::Null(),
        Variant(true),
        Variant(-5),
        Variant(0.125),
        Variant(Currency::FromScaled(-99)),
        Variant(u"T\u00FCr"),
        Variant(u""),
        Variant::ArrayOf({}),
        Variant::ArrayWith(0, u"Name", u"Key", u"P-1", Currency::FromScaled(12345), u"Note"),
    };
    for (const Variant& value : values)
        EXPECT_EQ(FromCom(ComVariant(value)), value);
}

TEST(ComVariant, TakesAnArrayThatWasNeverGivenASizeAsAnEmptyOne)
{
    VARIANT array{};
    array.vt = VT_ARRAY | VT_VARIANT;
    EXPECT_EQ(FromCom(array), Variant::ArrayOf({}));
}

TEST(ComVariant, RefusesArraysOfAnotherShape)
{
    EXPECT_EQ(NumberOfFailure(ComArray(VT_I4, {{2, 1}}).Value()), kErrSubscriptOutOfRange);
    EXPECT_EQ(NumberOfFailure(ComArray(VT_I4, {{2, 0}, {2, 1}}).Value()), kErrSubscriptOutOfRange);
    EXPECT_EQ(NumberOfFailure(ComArray(VT_I4, {{1, 0}, {1, 0}, {1, 0}}).Value()), kErrSubscriptOutOfRange);
}

TEST(ComVariant, TakesAnArrayThatDoesNotSayItsElementKind)
{
    SAFEARRAY* array = nullptr;
    ASSERT_EQ(SafeArrayAllocDescriptor(1, &array), S_OK);
    array->cbElements = sizeof(LONG);
    array->rgsabound[0] = {2, 0};
    ASSERT_EQ(SafeArrayAllocData(array), S_OK);
    static_cast<LONG*>(array->pvData)[0] = 3;
    static_cast<LONG*>(array->pvData)[1] = 4;
    VARIANT value{};
    value.parray = array;
    value.vt = VT_ARRAY | VT_I4;
    EXPECT_EQ(FromCom(value), Variant::ArrayWith(3, 4));
    value.vt = VT_ARRAY | VT_I8; // which it has no room for
    EXPECT_EQ(NumberOfFailure(value), kErrTypeMismatch);
    SafeArrayDestroy(array);
}

TEST(ComVariant, RefusesMoreElementsThanAnythingHas)
{
    EXPECT_EQ(NumberOfFailure(ComArray(VT_UI1, {{1'000'001, 0}}).Value()), kErrOutOfMemory);
    // Eight times the one before, in each round: hundreds of millions in the end, of which each array holds
    // eight.
    constexpr int kRounds = 9;
    std::vector<ComVariant> rounds;
    rounds.reserve(kRounds + 1);
    rounds.emplace_back(Variant::ArrayWith(1));
    for (int round = 0; round < kRounds; ++round) {
        ComArray eight(VT_VARIANT, {{8, 0}});
        SAFEARRAY*& before = rounds.back().parray;
        for (LONG at = 0; at < 8; ++at) {
            VARIANT reference{};
            reference.pparray = &before;
            reference.vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
            eight.PutInPlace(at, reference);
        }
        rounds.push_back(eight.Take());
    }
    EXPECT_EQ(NumberOfFailure(rounds.back()), kErrOutOfMemory);
}

TEST(ComVariant, RefusesWhatHasNoValue)
{
    EXPECT_EQ(NumberOfFailure(Raw(VT_DISPATCH, static_cast<IDispatch*>(nullptr))), kErrTypeMismatch);
    EXPECT_EQ(NumberOfFailure(Raw(VT_UNKNOWN, static_cast<IUnknown*>(nullptr))), kErrTypeMismatch);
    EXPECT_EQ(NumberOfFailure(Raw(VT_ERROR, SCODE{E_FAIL})), kErrTypeMismatch);
}

TEST(ComVariant, EndsWhereArraysAreNestedWithoutEnd)
{
    ComVariant nested{Variant::ArrayWith(1)};
    for (int depth = 0; depth < 100; ++depth) {
        SAFEARRAYBOUND bound{1, 0};
        ComVariant outer;
        outer.parray = SafeArrayCreate(VT_VARIANT, 1, &bound);
        outer.vt = VT_ARRAY | VT_VARIANT;
        void* data = nullptr;
        ASSERT_EQ(SafeArrayAccessData(outer.parray, &data), S_OK);
        *static_cast<VARIANT*>(data) = nested.Detach();
        SafeArrayUnaccessData(outer.parray);
        nested = std::move(outer);
    }
    EXPECT_EQ(NumberOfFailure(nested), kErrTypeMismatch);
}

TEST(ComError, CrossesUnderTheControlFacilityAndComesBack)
{
    EXPECT_EQ(static_cast<std::uint32_t>(StatusOf(13)), 0x800A000Du);
    EXPECT_EQ(static_cast<std::uint32_t>(StatusOf(3021)), 0x800A0BCDu);
    EXPECT_EQ(StatusOf(kErrComponent), kErrComponent);
    EXPECT_EQ(StatusOf(0), E_FAIL);
    EXPECT_EQ(StatusOf(100000), E_FAIL);
    for (const std::int32_t number : {1, 13, 429, 3265, 65535, -2147220503, -2147217887})
        EXPECT_EQ(NumberOf(StatusOf(number)), number);
}

TEST(ComError, KnowsTheUsualNumbersOfTheSystem)
{
    EXPECT_EQ(NumberOf(DISP_E_TYPEMISMATCH), 13);
    EXPECT_EQ(NumberOf(DISP_E_BADPARAMCOUNT), 450);
    EXPECT_EQ(NumberOf(DISP_E_UNKNOWNNAME), 438);
    EXPECT_EQ(NumberOf(REGDB_E_CLASSNOTREG), 429);
    EXPECT_EQ(NumberOf(E_OUTOFMEMORY), 7);
    EXPECT_EQ(NumberOf(E_UNEXPECTED), E_UNEXPECTED);
}

TEST(ComError, LeavesSourceAndDescriptionToTheCaller)
{
    const HRESULT status = Report(AutomationError(3021, u"Catalogue", u"No row."), IID_IUnknown);
    const auto error = ErrorOf([&] { ThrowIfFailed(status); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 3021);
    EXPECT_EQ(error->Source(), u"Catalogue");
    EXPECT_EQ(error->Description(), u"No row.");
    // Taken: the next failure tells its own.
    const auto next = ErrorOf([] { ThrowIfFailed(DISP_E_TYPEMISMATCH); });
    ASSERT_TRUE(next);
    EXPECT_EQ(next->Description(), AutomationError::TextOf(13));
}

} // namespace KestrinProductEditor
