// SPDX-License-Identifier: MIT
#include "automation/support/ScriptObject.h"

#include "platform/Text.h"
#include "server/windows/ComText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <algorithm>
#include <new>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] BSTR NewText(std::u16string_view text) noexcept
{
    return SysAllocStringLen(reinterpret_cast<const OLECHAR*>(text.data()), static_cast<UINT>(text.size()));
}

HRESULT Raise(const AutomationError& error, EXCEPINFO* exception) noexcept
{
    const HRESULT status = StatusOfNumber(error.Number());
    if (exception == nullptr)
        return status;
    *exception = {};
    exception->scode = status;
    exception->bstrSource = NewText(error.Source());
    exception->bstrDescription = NewText(error.Description());
    return DISP_E_EXCEPTION;
}

/// In the order of the call, which is not that of `parameters`.
[[nodiscard]] std::vector<ComVariant> ArgumentsOf(const DISPPARAMS& parameters)
{
    std::vector<ComVariant> arguments(parameters.cArgs);
    for (UINT at = 0; at < parameters.cArgs; ++at) {
        if (FAILED(VariantCopyInd(&arguments[parameters.cArgs - 1 - at], &parameters.rgvarg[at])))
            throw AutomationError(kErrTypeMismatch);
    }
    return arguments;
}

} // namespace

HRESULT ScriptObject::QueryInterface(REFIID interfaceID, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (interfaceID != IID_IUnknown && interfaceID != IID_IDispatch)
        return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

ULONG ScriptObject::Release()
{
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

HRESULT ScriptObject::GetTypeInfoCount(UINT* count)
{
    if (count == nullptr)
        return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT ScriptObject::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    if (info == nullptr)
        return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT ScriptObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids)
{
    if (names == nullptr || ids == nullptr || count == 0)
        return E_INVALIDARG;
    std::fill_n(ids, count, DISPID_UNKNOWN);
    const std::u16string_view name(reinterpret_cast<const char16_t*>(names[0]));
    for (const ScriptMember& member : m_members) {
        if (EqualsWithoutAsciiCase(member.name, name))
            ids[0] = member.id;
    }
    // Names of arguments follow the member's; there are none.
    return ids[0] == DISPID_UNKNOWN || count > 1 ? DISP_E_UNKNOWNNAME : S_OK;
}

HRESULT ScriptObject::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                             EXCEPINFO* exception, UINT*)
{
    if (parameters == nullptr)
        return E_INVALIDARG;
    if (result != nullptr)
        VariantInit(result);
    try {
        for (const ScriptMember& member : m_members) {
            if (member.id != id || (member.kinds & flags) == 0)
                continue;
            if (parameters->cArgs < member.leastArguments || parameters->cArgs > member.mostArguments)
                return DISP_E_BADPARAMCOUNT;
            ComVariant answer = member.body(ArgumentsOf(*parameters));
            if (result != nullptr)
                *result = answer.Detach();
            return S_OK;
        }
        return DISP_E_MEMBERNOTFOUND;
    } catch (const AutomationError& error) {
        return Raise(error, exception);
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_FAIL;
    }
}

Microsoft::WRL::ComPtr<IDispatch> MakeScriptObject(std::vector<ScriptMember> members)
{
    return Owned<IDispatch>(new ScriptObject(std::move(members)));
}

ComVariant ValueOfText(std::u16string_view text)
{
    ComVariant value;
    value.bstrVal = Bstr(text).Detach();
    value.vt = VT_BSTR;
    return value;
}

ComVariant ValueOfLong(std::int32_t number)
{
    ComVariant value;
    value.lVal = number;
    value.vt = VT_I4;
    return value;
}

ComVariant ValueOfBoolean(bool isTrue)
{
    ComVariant value;
    value.boolVal = isTrue ? VARIANT_TRUE : VARIANT_FALSE;
    value.vt = VT_BOOL;
    return value;
}

ComVariant Converted(const VARIANT& value, VARTYPE type)
{
    VARIANT source = value; // lent: the system's function takes no const
    ComVariant converted;
    if (FAILED(VariantChangeTypeEx(&converted, &source, LOCALE_INVARIANT, VARIANT_ALPHABOOL, type)))
        throw AutomationError(kErrTypeMismatch);
    return converted;
}

std::u16string TextIn(const VARIANT& value)
{
    return std::u16string(TextOf(Converted(value, VT_BSTR).bstrVal));
}

std::int32_t LongIn(const VARIANT& value)
{
    return Converted(value, VT_I4).lVal;
}

bool BooleanIn(const VARIANT& value)
{
    return Converted(value, VT_BOOL).boolVal != VARIANT_FALSE;
}

HRESULT StatusOfNumber(std::int32_t number) noexcept
{
    constexpr std::uint32_t kControlFacility = 0x800A0000;
    return number < 0 ? number : static_cast<HRESULT>(kControlFacility | static_cast<std::uint32_t>(number));
}

} // namespace KestrinProductEditor
