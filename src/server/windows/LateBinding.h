// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/LateArguments.h"

#include <windows.h>

#include <oleauto.h>

#include <span>
#include <tuple>
#include <type_traits>
#include <utility>

namespace KestrinProductEditor {

/// How a late-bound call reaches one member of `Interface`: through the same slot as an early-bound one.
template<class Interface>
struct LateMember
{
    DISPID id;
    /// The DISPATCH_* flags that it answers.
    WORD kinds;
    HRESULT (*call)(Interface& object, LateCall& call);
};

namespace detail {

template<class Method>
struct Slot;

template<class InterfaceType, class... Parameters>
struct Slot<HRESULT (STDMETHODCALLTYPE InterfaceType::*)(Parameters...)>
{
    using Interface = InterfaceType;

    /// Calls the slot with the given arguments, of which the last `optional` ones may be missing. With a
    /// result the last parameter is where that goes.
    template<auto method, bool hasResult, std::size_t optional = 0>
    static HRESULT Call(Interface& object, LateCall& call)
    {
        constexpr std::size_t kArguments = sizeof...(Parameters) - (hasResult ? 1 : 0);
        if (!call.HasCount(kArguments - optional, kArguments))
            return DISP_E_BADPARAMCOUNT;
        return PrvCall<method, hasResult>(object, call, std::make_index_sequence<kArguments>());
    }

private:
    template<std::size_t index>
    using Parameter = std::tuple_element_t<index, std::tuple<Parameters...>>;

    template<auto method, bool hasResult, std::size_t... indices>
    static HRESULT PrvCall(Interface& object, LateCall& call, std::index_sequence<indices...>)
    {
        std::tuple<LateArgument<Parameter<indices>>...> arguments;
        HRESULT status = S_OK;
        // The first that does not fit ends it.
        static_cast<void>(
            ((status = call.Take(indices, std::get<indices>(arguments)), SUCCEEDED(status)) && ...));
        if (FAILED(status))
            return status;
        if constexpr (hasResult) {
            std::remove_pointer_t<Parameter<sizeof...(Parameters) - 1>> result{};
            status = (object.*method)(std::get<indices>(arguments).Get()..., &result);
            if (SUCCEEDED(status))
                call.GiveResult(result);
        } else {
            status = (object.*method)(std::get<indices>(arguments).Get()...);
        }
        if (SUCCEEDED(status))
            static_cast<void>(
                ((status = std::get<indices>(arguments).WriteBack(), SUCCEEDED(status)) && ...));
        return status;
    }
};

template<auto method>
using SlotOf = Slot<decltype(method)>;

template<auto method>
using InterfaceOf = typename SlotOf<method>::Interface;

} // namespace detail

/// The kinds of members. A property is read by scripts with either flag.
template<auto method>
[[nodiscard]] constexpr LateMember<detail::InterfaceOf<method>> Sub(DISPID id)
{
    return {id, DISPATCH_METHOD, &detail::SlotOf<method>::template Call<method, false>};
}

template<auto method>
[[nodiscard]] constexpr LateMember<detail::InterfaceOf<method>> SubWithOptionalArgument(DISPID id)
{
    return {id, DISPATCH_METHOD, &detail::SlotOf<method>::template Call<method, false, 1>};
}

template<auto method>
[[nodiscard]] constexpr LateMember<detail::InterfaceOf<method>> Function(DISPID id)
{
    return {id, DISPATCH_METHOD, &detail::SlotOf<method>::template Call<method, true>};
}

template<auto method>
[[nodiscard]] constexpr LateMember<detail::InterfaceOf<method>> PropertyGet(DISPID id)
{
    return {id, DISPATCH_PROPERTYGET | DISPATCH_METHOD, &detail::SlotOf<method>::template Call<method, true>};
}

template<auto method>
[[nodiscard]] constexpr LateMember<detail::InterfaceOf<method>> PropertyLet(DISPID id)
{
    return {id, DISPATCH_PROPERTYPUT, &detail::SlotOf<method>::template Call<method, false>};
}

/// The members of an interface; each interface of the server has one.
template<class Interface>
struct LateMembers;

/// Does a late-bound call: finds the member, makes its arguments what the slot takes, and turns what the slot
/// reports into `exception`.
template<class Interface>
[[nodiscard]] HRESULT InvokeLate(Interface& object, DISPID id, WORD flags, const DISPPARAMS* parameters,
                                 VARIANT* result, EXCEPINFO* exception, UINT* badArgument)
{
    if (parameters == nullptr || parameters->cNamedArgs > parameters->cArgs ||
        (parameters->cArgs != 0 && parameters->rgvarg == nullptr) ||
        (parameters->cNamedArgs != 0 && parameters->rgdispidNamedArgs == nullptr))
        return E_INVALIDARG;
    if (result != nullptr)
        VariantInit(result);
    for (const LateMember<Interface>& member : LateMembers<Interface>::kAll) {
        if (member.id != id || (member.kinds & flags) == 0)
            continue;
        LateCall call(*parameters, result);
        const HRESULT status = member.call(object, call);
        return SUCCEEDED(status) ? status : call.Fail(status, exception, badArgument);
    }
    return DISP_E_MEMBERNOTFOUND;
}

} // namespace KestrinProductEditor
