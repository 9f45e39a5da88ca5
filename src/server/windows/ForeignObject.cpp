// SPDX-License-Identifier: MIT
#include "server/windows/ForeignObject.h"

#include "server/windows/ComError.h"
#include "server/windows/ComText.h"

#include <algorithm>
#include <vector>

namespace KestrinProductEditor {

ForeignObject::ForeignObject(IDispatch* object) : m_object(object)
{
    // Where it fails the pointer stays null.
    static_cast<void>(m_object.As(&m_extended));
}

std::optional<DISPID> ForeignObject::Find(std::u16string_view name) const
{
    const Bstr text(name);
    DISPID member = DISPID_UNKNOWN;
    HRESULT status = E_NOTIMPL;
    if (m_extended != nullptr)
        status = m_extended->GetDispID(text.Get(), fdexNameCaseInsensitive, &member);
    if (FAILED(status)) {
        LPOLESTR names[] = {text.Get()};
        status = m_object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &member);
    }
    if (FAILED(status) || member == DISPID_UNKNOWN)
        return std::nullopt;
    return member;
}

HRESULT ForeignObject::TryCall(DISPID member, WORD flags, std::span<VARIANT> arguments,
                               ComVariant& result) const
{
    std::reverse(arguments.begin(), arguments.end());
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    EXCEPINFO exception{};
    UINT badArgument = 0;
    const HRESULT status = m_extended != nullptr
                               ? m_extended->InvokeEx(member, LOCALE_USER_DEFAULT, flags, &parameters,
                                                      &result, &exception, nullptr)
                               : m_object->Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                                                  &result, &exception, &badArgument);
    std::reverse(arguments.begin(), arguments.end());
    if (status == DISP_E_EXCEPTION)
        ThrowException(exception);
    return status;
}

ComVariant ForeignObject::Call(DISPID member, std::span<VARIANT> arguments) const
{
    ComVariant result;
    // What an earlier failure has left is not this one's.
    SetErrorInfo(0, nullptr);
    ThrowIfFailed(TryCall(member, DISPATCH_METHOD, arguments, result));
    return result;
}

ComVariant ForeignObject::Get(DISPID member) const
{
    ComVariant result;
    SetErrorInfo(0, nullptr);
    ThrowIfFailed(TryCall(member, DISPATCH_PROPERTYGET, {}, result));
    return result;
}

} // namespace KestrinProductEditor
