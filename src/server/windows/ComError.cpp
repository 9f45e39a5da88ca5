// SPDX-License-Identifier: MIT
#include "server/windows/ComError.h"

#include "server/windows/ComText.h"

#include <wrl/client.h>

#include <string>

namespace KestrinProductEditor {

namespace {

using Microsoft::WRL::ComPtr;

constexpr std::uint32_t kControlFacility = 0x800A0000;
constexpr std::uint32_t kFacilityMask = 0xFFFF0000;
constexpr std::int32_t kLargestNumber = 0xFFFF;

struct UsualNumber
{
    HRESULT status;
    std::int32_t number;
};

constexpr UsualNumber kUsualNumbers[] = {
    {E_INVALIDARG, kErrInvalidProcedureCall},
    {DISP_E_OVERFLOW, kErrOverflow},
    {E_OUTOFMEMORY, kErrOutOfMemory},
    {DISP_E_BADINDEX, kErrSubscriptOutOfRange},
    {DISP_E_ARRAYISLOCKED, 10},
    {DISP_E_DIVBYZERO, 11},
    {DISP_E_TYPEMISMATCH, kErrTypeMismatch},
    {DISP_E_BADVARTYPE, kErrTypeMismatch},
    {STG_E_FILENOTFOUND, kErrFileNotFound},
    {STG_E_ACCESSDENIED, kErrPermissionDenied},
    {E_ACCESSDENIED, kErrPermissionDenied},
    {STG_E_PATHNOTFOUND, kErrPathNotFound},
    {REGDB_E_CLASSNOTREG, kErrCannotCreateObject},
    {CO_E_CLASSSTRING, kErrCannotCreateObject},
    {CO_E_DLLNOTFOUND, kErrCannotCreateObject},
    {CLASS_E_CLASSNOTAVAILABLE, kErrCannotCreateObject},
    {E_NOINTERFACE, 430},
    {DISP_E_MEMBERNOTFOUND, 438},
    {DISP_E_UNKNOWNNAME, 438},
    {E_NOTIMPL, kErrActionNotSupported},
    {DISP_E_PARAMNOTOPTIONAL, 449},
    {DISP_E_BADPARAMCOUNT, 450},
};

[[nodiscard]] AutomationError ErrorOf(HRESULT status, std::u16string_view source,
                                      std::u16string_view description)
{
    const std::int32_t number = NumberOf(status);
    return AutomationError(number, std::u16string(source),
                           description.empty() ? AutomationError::TextOf(number)
                                               : std::u16string(description));
}

} // namespace

HRESULT StatusOf(std::int32_t number) noexcept
{
    if (number < 0)
        return number;
    if (number > 0 && number <= kLargestNumber)
        return static_cast<HRESULT>(kControlFacility | static_cast<std::uint32_t>(number));
    return E_FAIL;
}

std::int32_t NumberOf(HRESULT status) noexcept
{
    const auto bits = static_cast<std::uint32_t>(status);
    if ((bits & kFacilityMask) == kControlFacility)
        return static_cast<std::int32_t>(bits & ~kFacilityMask);
    for (const UsualNumber& usual : kUsualNumbers) {
        if (usual.status == status)
            return usual.number;
    }
    return status;
}

HRESULT Report(const AutomationError& error, REFIID interfaceID) noexcept
{
    try {
        ComPtr<ICreateErrorInfo> made;
        ComPtr<IErrorInfo> info;
        if (SUCCEEDED(CreateErrorInfo(made.GetAddressOf()))) {
            const Bstr source(error.Source());
            const Bstr description(error.Description());
            made->SetGUID(interfaceID);
            made->SetSource(source.Get());
            made->SetDescription(description.Get());
            if (SUCCEEDED(made.As(&info)))
                SetErrorInfo(0, info.Get());
        }
    } catch (...) { // NOLINT(bugprone-empty-catch): without memory for its texts the number still gets out
    }
    return StatusOf(error.Number());
}

void ThrowIfFailed(HRESULT status)
{
    if (SUCCEEDED(status))
        return;
    Bstr source;
    Bstr description;
    ComPtr<IErrorInfo> info;
    if (GetErrorInfo(0, info.GetAddressOf()) == S_OK) {
        info->GetSource(source.Out());
        info->GetDescription(description.Out());
    }
    throw ErrorOf(status, TextOf(source.Get()), TextOf(description.Get()));
}

void ThrowIfSystemFailed(HRESULT status)
{
    if (FAILED(status))
        throw ErrorOf(status, {}, {});
}

void ThrowException(EXCEPINFO& exception)
{
    if (exception.pfnDeferredFillIn != nullptr)
        exception.pfnDeferredFillIn(&exception);
    Bstr source;
    Bstr description;
    Bstr help;
    *source.Out() = exception.bstrSource;
    *description.Out() = exception.bstrDescription;
    *help.Out() = exception.bstrHelpFile;
    const HRESULT status = exception.wCode != 0 ? StatusOf(exception.wCode) : exception.scode;
    throw ErrorOf(FAILED(status) ? status : E_FAIL, TextOf(source.Get()), TextOf(description.Get()));
}

} // namespace KestrinProductEditor
