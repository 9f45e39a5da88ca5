// SPDX-License-Identifier: MIT
#include "server/windows/ComVariant.h"

#include "server/windows/ComError.h"
#include "server/windows/ComText.h"
#include "server/windows/ForeignObject.h"

#include <KestrinProductEditor/AutomationError.h>

#include <wrl/client.h>

#include <cstdint>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using Microsoft::WRL::ComPtr;

/// Arrays hold arrays; a script can make one hold itself.
constexpr int kDeepest = 32;
/// Of all arrays together. No parameter has nearly as many; an object can say that its length is any number.
constexpr std::int32_t kMostElements = 1'000'000;

template<class Type>
[[nodiscard]] Type Read(const void* place)
{
    Type value;
    std::memcpy(&value, place, sizeof(value)); // NOLINT(bugprone-sizeof-expression): of a pointer, itself
    return value;
}

template<class Integer>
[[nodiscard]] Variant WholeNumber(const void* place)
{
    const auto value = Read<Integer>(place);
    if (std::in_range<std::int32_t>(value))
        return static_cast<std::int32_t>(value);
    constexpr std::int64_t kLargestExact = std::int64_t{1} << std::numeric_limits<double>::digits;
    if (std::cmp_greater(value, kLargestExact) || std::cmp_less(value, -kLargestExact))
        throw AutomationError(kErrOverflow);
    return static_cast<double>(value);
}

[[nodiscard]] Variant DecimalNumber(const void* place)
{
    auto value = Read<DECIMAL>(place);
    CY amount;
    DECIMAL back;
    if (VarCyFromDec(&value, &amount) == S_OK && VarDecFromCy(amount, &back) == S_OK &&
        VarDecCmp(&value, &back) == static_cast<HRESULT>(VARCMP_EQ))
        return Currency::FromScaled(amount.int64);
    double number = 0;
    ThrowIfSystemFailed(VarR8FromDec(&value, &number));
    return number;
}

[[nodiscard]] Variant DateText(const void* place)
{
    Bstr text;
    ThrowIfSystemFailed(VarBstrFromDate(Read<DATE>(place), LOCALE_USER_DEFAULT, 0, text.Out()));
    return TextOf(text.Get());
}

/// The data of a system's array, held while it is read or written.
class ArrayData
{
public:
    explicit ArrayData(SAFEARRAY* array) : m_array(array)
    {
        ThrowIfSystemFailed(SafeArrayAccessData(array, &m_data));
    }
    ArrayData(const ArrayData&) = delete;
    ArrayData& operator=(const ArrayData&) = delete;
    ~ArrayData() { SafeArrayUnaccessData(m_array); }

    [[nodiscard]] char* Get() const noexcept { return static_cast<char*>(m_data); }

private:
    SAFEARRAY* m_array;
    void* m_data = nullptr;
};

[[nodiscard]] std::int32_t ExtentOf(SAFEARRAY* array, UINT dimension)
{
    LONG lower = 0;
    LONG upper = 0;
    ThrowIfSystemFailed(SafeArrayGetLBound(array, dimension, &lower));
    ThrowIfSystemFailed(SafeArrayGetUBound(array, dimension, &upper));
    if (lower != 0 || upper == std::numeric_limits<LONG>::max())
        throw AutomationError(kErrSubscriptOutOfRange);
    return upper + 1;
}

[[nodiscard]] std::size_t SizeOf(VARTYPE type)
{
    switch (type) {
    case VT_I1:
    case VT_UI1:
        return 1;
    case VT_I2:
    case VT_UI2:
    case VT_BOOL:
        return 2;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
    case VT_ERROR:
        return 4;
    case VT_DECIMAL:
        return sizeof(DECIMAL);
    case VT_VARIANT:
        return sizeof(VARIANT);
    default:
        return 8;
    }
}

/// An array of a script knows its length; a text that is an object does as well, and characters besides.
[[nodiscard]] bool IsScriptArray(const ForeignObject& object)
{
    return object.Find(u"length") && !object.Find(u"charAt");
}

/// The reading of one value with all that it holds.
class Reading
{
public:
    [[nodiscard]] Variant ValueOf(const VARIANT& value)
    {
        const auto type = static_cast<VARTYPE>(value.vt & ~VT_BYREF);
        if ((value.vt & VT_BYREF) != 0) {
            if (value.byref == nullptr)
                throw AutomationError(kErrTypeMismatch);
            return PrvValueAt(type, value.byref);
        }
        // A Decimal fills the whole, the others one place in it.
        return PrvValueAt(type, type == VT_DECIMAL ? static_cast<const void*>(&value.decVal) : &value.llVal);
    }

private:
    /// One step further inside.
    class Step
    {
    public:
        explicit Step(Reading& reading) : m_depth(reading.m_depth)
        {
            if (m_depth == kDeepest)
                throw AutomationError(kErrTypeMismatch);
            ++m_depth;
        }
        Step(const Step&) = delete;
        Step& operator=(const Step&) = delete;
        ~Step() { --m_depth; }

    private:
        int& m_depth;
    };

    void PrvCount(std::int64_t elements)
    {
        if (elements > m_left)
            throw AutomationError(kErrOutOfMemory);
        m_left -= static_cast<std::int32_t>(elements);
    }

    [[nodiscard]] Variant PrvArrayOf(SAFEARRAY* array, VARTYPE type)
    {
        // One that was declared and never given a size.
        if (array == nullptr)
            return Variant::ArrayOf({});
        const UINT dimensions = SafeArrayGetDim(array);
        if (dimensions != 1 && dimensions != 2)
            throw AutomationError(kErrSubscriptOutOfRange);
        const std::size_t size = SafeArrayGetElemsize(array);
        if (size != SizeOf(type))
            throw AutomationError(kErrTypeMismatch);
        const std::int32_t first = ExtentOf(array, 1);
        const std::int32_t second = dimensions == 2 ? ExtentOf(array, 2) : 1;
        PrvCount(std::int64_t{first} * second);

        const ArrayData data(array);
        const char* place = data.Get();
        if (dimensions == 1) {
            std::vector<Variant> elements;
            elements.reserve(static_cast<std::size_t>(first));
            for (std::int32_t at = 0; at < first; ++at, place += size)
                elements.push_back(PrvValueAt(type, place));
            return Variant::ArrayOf(std::move(elements));
        }
        VariantArray table(first, second);
        for (std::int32_t column = 0; column < second; ++column) {
            for (std::int32_t row = 0; row < first; ++row, place += size)
                table.At(row, column) = PrvValueAt(type, place);
        }
        return table;
    }

    [[nodiscard]] Variant PrvMemberOf(const ForeignObject& object, std::u16string_view name)
    {
        const std::optional<DISPID> member = object.Find(name);
        return member ? ValueOf(object.Get(*member)) : Variant();
    }

    [[nodiscard]] Variant PrvObjectValue(IUnknown* unknown)
    {
        ComPtr<IDispatch> dispatch;
        if (unknown == nullptr || FAILED(unknown->QueryInterface(IID_PPV_ARGS(dispatch.GetAddressOf()))))
            throw AutomationError(kErrTypeMismatch);
        const ForeignObject object(dispatch.Get());
        if (!IsScriptArray(object)) {
            ComVariant value;
            if (FAILED(object.TryCall(DISPID_VALUE, DISPATCH_PROPERTYGET, {}, value)))
                throw AutomationError(kErrTypeMismatch);
            return ValueOf(value);
        }

        const Variant length = PrvMemberOf(object, u"length");
        if (length.GetKind() != Variant::Kind::Long || length.Long() < 0)
            throw AutomationError(kErrTypeMismatch);
        PrvCount(length.Long());
        std::vector<Variant> elements;
        for (std::int32_t at = 0; at < length.Long(); ++at) {
            const std::string name = std::to_string(at);
            elements.push_back(PrvMemberOf(object, std::u16string(name.begin(), name.end())));
        }
        return Variant::ArrayOf(std::move(elements));
    }

    [[nodiscard]] Variant PrvValueAt(VARTYPE type, const void* place)
    {
        const Step step(*this);
        if ((type & VT_ARRAY) != 0)
            return PrvArrayOf(Read<SAFEARRAY*>(place), type & VT_TYPEMASK);
        switch (type) {
        case VT_EMPTY:
            return {};
        case VT_NULL:
            return Variant::Null();
        case VT_BOOL:
            return Read<VARIANT_BOOL>(place) != VARIANT_FALSE;
        case VT_I1:
            return WholeNumber<std::int8_t>(place);
        case VT_UI1:
            return WholeNumber<std::uint8_t>(place);
        case VT_I2:
            return WholeNumber<std::int16_t>(place);
        case VT_UI2:
            return WholeNumber<std::uint16_t>(place);
        case VT_I4:
        case VT_INT:
            return WholeNumber<std::int32_t>(place);
        case VT_UI4:
        case VT_UINT:
            return WholeNumber<std::uint32_t>(place);
        case VT_I8:
            return WholeNumber<std::int64_t>(place);
        case VT_UI8:
            return WholeNumber<std::uint64_t>(place);
        case VT_R4:
            return double{Read<float>(place)};
        case VT_R8:
            return Read<double>(place);
        case VT_CY:
            return Currency::FromScaled(Read<CY>(place).int64);
        case VT_DECIMAL:
            return DecimalNumber(place);
        case VT_DATE:
            return DateText(place);
        case VT_BSTR:
            return TextOf(Read<BSTR>(place));
        case VT_ERROR:
            if (Read<SCODE>(place) == DISP_E_PARAMNOTFOUND)
                return {};
            break;
        case VT_VARIANT:
            return ValueOf(*static_cast<const VARIANT*>(place));
        case VT_DISPATCH:
        case VT_UNKNOWN:
            return PrvObjectValue(Read<IUnknown*>(place));
        default:
            break;
        }
        throw AutomationError(kErrTypeMismatch);
    }

    int m_depth = 0;
    std::int32_t m_left = kMostElements;
};

[[nodiscard]] SAFEARRAY* NewArray(const VariantArray& values)
{
    SAFEARRAYBOUND bounds[2]{};
    const int dimensions = values.Dimensions();
    for (int dimension = 1; dimension <= dimensions; ++dimension)
        bounds[dimension - 1].cElements = static_cast<ULONG>(values.Extent(dimension));
    SAFEARRAY* const array = SafeArrayCreate(VT_VARIANT, static_cast<UINT>(dimensions), bounds);
    if (array == nullptr)
        throw std::bad_alloc();
    try {
        const ArrayData data(array);
        auto* place = reinterpret_cast<VARIANT*>(data.Get());
        for (std::int32_t second = 0; second < (dimensions == 2 ? values.Extent(2) : 1); ++second) {
            for (std::int32_t first = 0; first < values.Extent(1); ++first) {
                const Variant& value = dimensions == 2 ? values.At(first, second) : values.At(first);
                *place++ = ComVariant(value).Detach();
            }
        }
    } catch (...) {
        SafeArrayDestroy(array);
        throw;
    }
    return array;
}

} // namespace

ComVariant::ComVariant(const Variant& value) : ComVariant()
{
    switch (value.GetKind()) {
    case Variant::Kind::Empty:
        break;
    case Variant::Kind::Null:
        vt = VT_NULL;
        break;
    case Variant::Kind::Boolean:
        boolVal = value.Boolean() ? VARIANT_TRUE : VARIANT_FALSE;
        vt = VT_BOOL;
        break;
    case Variant::Kind::Long:
        lVal = value.Long();
        vt = VT_I4;
        break;
    case Variant::Kind::Double:
        dblVal = value.Double();
        vt = VT_R8;
        break;
    case Variant::Kind::Currency:
        cyVal.int64 = value.Currency().Scaled();
        vt = VT_CY;
        break;
    case Variant::Kind::String:
        bstrVal = Bstr(value.String()).Detach();
        vt = VT_BSTR;
        break;
    case Variant::Kind::Array:
        parray = NewArray(value.Array());
        vt = VT_ARRAY | VT_VARIANT;
        break;
    }
}

Variant FromCom(const VARIANT& value)
{
    return Reading().ValueOf(value);
}

} // namespace KestrinProductEditor
