// SPDX-License-Identifier: MIT
#include "server/windows/LateArguments.h"

#include "server/windows/ComText.h"
#include "server/windows/ScriptReceiver.h"

#include <utility>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] bool IsMissing(const VARIANT& argument) noexcept
{
    return argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
}

[[nodiscard]] bool IsReferenceToVariant(const VARIANT& argument) noexcept
{
    return argument.vt == (VT_BYREF | VT_VARIANT) && argument.pvarVal != nullptr;
}

/// A reference without a place behind it, or one that only leads to references.
[[nodiscard]] bool LeadsNowhere(const VARIANT& referred) noexcept
{
    return (referred.vt & VT_BYREF) != 0 && (referred.byref == nullptr || IsReferenceToVariant(referred));
}

/// The kinds that a typed reference is written in, by their size.
void CopyScalar(void* target, VARTYPE type, const VARIANT& value) noexcept
{
    switch (type) {
    case VT_I1:
    case VT_UI1:
        *static_cast<BYTE*>(target) = value.bVal;
        break;
    case VT_BOOL:
    case VT_I2:
    case VT_UI2:
        *static_cast<SHORT*>(target) = value.iVal;
        break;
    case VT_I4:
    case VT_UI4:
    case VT_INT:
    case VT_UINT:
    case VT_R4:
        *static_cast<LONG*>(target) = value.lVal;
        break;
    case VT_DECIMAL:
        *static_cast<DECIMAL*>(target) = value.decVal;
        break;
    default:
        *static_cast<LONGLONG*>(target) = value.llVal;
        break;
    }
}

} // namespace

const VARIANT& Referred(const VARIANT& argument) noexcept
{
    // Bounded: a reference may lead to itself.
    constexpr int kMostLinks = 16;
    const VARIANT* value = &argument;
    for (int links = 0; links < kMostLinks && IsReferenceToVariant(*value); ++links)
        value = value->pvarVal;
    return *value;
}

HRESULT ConvertTo(VARTYPE type, const VARIANT& argument, ComVariant& converted)
{
    const VARIANT& referred = Referred(argument);
    if (IsMissing(referred))
        return DISP_E_PARAMNOTOPTIONAL;
    if (LeadsNowhere(referred))
        return DISP_E_TYPEMISMATCH;
    // A flag's text is the language's own: "True", whatever the user's language.
    return VariantChangeTypeEx(&converted, const_cast<VARIANT*>(&referred), LOCALE_USER_DEFAULT,
                               VARIANT_ALPHABOOL, type);
}

HRESULT StoreAt(const VARIANT& argument, VARIANT& value)
{
    const VARIANT& target = Referred(argument);
    if ((target.vt & VT_BYREF) == 0)
        return &target == &argument ? S_OK : VariantCopy(const_cast<VARIANT*>(&target), &value);
    if (LeadsNowhere(target))
        return DISP_E_TYPEMISMATCH;
    const auto type = static_cast<VARTYPE>(target.vt & ~VT_BYREF);
    ComVariant converted;
    const HRESULT status = VariantChangeType(&converted, &value, VARIANT_ALPHABOOL, type);
    if (FAILED(status))
        return status;
    if (type == VT_BSTR) {
        SysFreeString(std::exchange(*target.pbstrVal, std::exchange(converted.bstrVal, nullptr)));
        return S_OK;
    }
    CopyScalar(target.byref, type, converted);
    return S_OK;
}

HRESULT ObjectOf(const VARIANT& argument, IUnknown** object) noexcept
{
    const VARIANT& referred = Referred(argument);
    switch (referred.vt) {
    case VT_EMPTY:
    case VT_NULL:
        *object = nullptr;
        return S_OK;
    case VT_DISPATCH:
    case VT_UNKNOWN:
        *object = referred.punkVal;
        return S_OK;
    case VT_BYREF | VT_DISPATCH:
    case VT_BYREF | VT_UNKNOWN:
        *object = referred.ppunkVal == nullptr ? nullptr : *referred.ppunkVal;
        return S_OK;
    default:
        return IsMissing(referred) ? DISP_E_PARAMNOTOPTIONAL : DISP_E_TYPEMISMATCH;
    }
}

HRESULT LateArgument<VARIANT*>::Take(VARIANT& argument)
{
    m_argument = &argument;
    const VARIANT& referred = Referred(argument);
    if (LeadsNowhere(referred))
        return DISP_E_TYPEMISMATCH;
    if (&referred != &argument && (referred.vt & VT_BYREF) == 0) {
        m_target = const_cast<VARIANT*>(&referred);
        return S_OK;
    }
    m_target = &m_copy;
    return VariantCopyInd(&m_copy, const_cast<VARIANT*>(&referred));
}

HRESULT LateArgument<VARIANT*>::WriteBack()
{
    // An array that came by a reference of its own stays its owner's; the slots only read arrays.
    if (m_target != &m_copy || (m_copy.vt & VT_ARRAY) != 0)
        return S_OK;
    return StoreAt(*m_argument, m_copy);
}

HRESULT LateArgument<_IProcessProgress*>::Take(VARIANT& argument)
{
    IUnknown* object = nullptr;
    const HRESULT status = ObjectOf(argument, &object);
    if (FAILED(status) || object == nullptr)
        return status;
    return ScriptReceiver::ReceiverOf(object, m_receiver.GetAddressOf());
}

HRESULT LateArgument<_ProductLkpMgr**>::Take(VARIANT& argument)
{
    IUnknown* object = nullptr;
    const HRESULT status = ObjectOf(argument, &object);
    if (FAILED(status) || object == nullptr)
        return status;
    return FAILED(object->QueryInterface(IID_PPV_ARGS(m_store.GetAddressOf()))) ? DISP_E_TYPEMISMATCH : S_OK;
}

LateCall::LateCall(const DISPPARAMS& parameters, VARIANT* result) noexcept
    : m_parameters(parameters), m_result(result)
{
    m_missing.vt = VT_ERROR;
    m_missing.scode = DISP_E_PARAMNOTFOUND;
}

int LateCall::PrvPlaceOf(std::size_t index) const noexcept
{
    const UINT count = m_parameters.cArgs;
    UINT named = m_parameters.cNamedArgs;
    // The value of a property stands where it would without a name.
    if (named != 0 && m_parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT)
        named = 0;
    // The type library numbers the parameters of a member from 0.
    for (UINT place = 0; place < named; ++place) {
        if (std::cmp_equal(m_parameters.rgdispidNamedArgs[place], index))
            return static_cast<int>(place);
    }
    return index < count - named ? static_cast<int>(count - 1 - index) : -1;
}

void LateCall::GiveResult(VARIANT& value) noexcept
{
    if (m_result != nullptr)
        *m_result = value;
    else
        VariantClear(&value);
}

void LateCall::GiveResult(long value) noexcept
{
    if (m_result != nullptr) {
        m_result->vt = VT_I4;
        m_result->lVal = value;
    }
}

void LateCall::GiveResult(VARIANT_BOOL value) noexcept
{
    if (m_result != nullptr) {
        m_result->vt = VT_BOOL;
        m_result->boolVal = value;
    }
}

HRESULT LateCall::Fail(HRESULT status, EXCEPINFO* exception, UINT* badArgument) noexcept
{
    Microsoft::WRL::ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.GetAddressOf()) == S_OK) {
        if (exception == nullptr)
            return DISP_E_EXCEPTION;
        *exception = EXCEPINFO{};
        exception->scode = status;
        info->GetSource(&exception->bstrSource);
        info->GetDescription(&exception->bstrDescription);
        return DISP_E_EXCEPTION;
    }
    if (m_badArgument >= 0 && badArgument != nullptr)
        *badArgument = static_cast<UINT>(m_badArgument);
    return status;
}

} // namespace KestrinProductEditor
