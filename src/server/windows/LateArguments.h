// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/ComVariant.h"

#include <kstnedit.h>

#include <wrl/client.h>

#include <cstddef>
#include <type_traits>

namespace KestrinProductEditor {

/// One argument of a late-bound call, made into what the parameter of the slot takes. Scripts send more kinds
/// than a slot knows: whatever has the meaning of the parameter's type is taken, by value or by reference.
///
/// Take: DISP_E_TYPEMISMATCH, DISP_E_OVERFLOW or DISP_E_PARAMNOTOPTIONAL for one that does not fit.
/// WriteBack, after the call: hands what the slot has written to a caller that gave a reference.
template<class Parameter>
class LateArgument;

/// The value that an argument refers to, or is.
[[nodiscard]] const VARIANT& Referred(const VARIANT& argument) noexcept;

/// The system's own conversion to `type`. Other kinds of references than those to a Variant are followed,
/// too.
[[nodiscard]] HRESULT ConvertTo(VARTYPE type, const VARIANT& argument, ComVariant& converted);

/// Puts `value` where `argument` refers to, in the kind that is wanted there.
[[nodiscard]] HRESULT StoreAt(const VARIANT& argument, VARIANT& value);

/// The object that an argument is; null for Nothing, Null and Empty. DISP_E_TYPEMISMATCH when it is none.
[[nodiscard]] HRESULT ObjectOf(const VARIANT& argument, IUnknown** object) noexcept;

/// Long, Boolean or String by value.
template<class Type, VARTYPE type>
class LateScalar
{
public:
    [[nodiscard]] HRESULT Take(VARIANT& argument) { return ConvertTo(type, argument, m_value); }
    [[nodiscard]] Type Get() const
    {
        if constexpr (type == VT_BSTR)
            return m_value.bstrVal;
        else if constexpr (type == VT_BOOL)
            return m_value.boolVal;
        else
            return static_cast<Type>(m_value.lVal);
    }
    [[nodiscard]] HRESULT WriteBack() const { return S_OK; }

private:
    ComVariant m_value;
};

template<>
class LateArgument<long> : public LateScalar<long, VT_I4>
{
};
template<>
class LateArgument<CorvoProductFields> : public LateScalar<CorvoProductFields, VT_I4>
{
};
template<>
class LateArgument<VARIANT_BOOL> : public LateScalar<VARIANT_BOOL, VT_BOOL>
{
};
template<>
class LateArgument<BSTR> : public LateScalar<BSTR, VT_BSTR>
{
};

template<>
class LateArgument<VARIANT>
{
public:
    [[nodiscard]] HRESULT Take(VARIANT& argument)
    {
        m_argument = &argument;
        return S_OK;
    }
    /// Lent: the slot takes no hold of it.
    [[nodiscard]] VARIANT Get() const { return Referred(*m_argument); }
    [[nodiscard]] HRESULT WriteBack() const { return S_OK; }

private:
    const VARIANT* m_argument = nullptr;
};

template<>
class LateArgument<VARIANT*>
{
public:
    [[nodiscard]] HRESULT Take(VARIANT& argument);
    [[nodiscard]] VARIANT* Get() { return m_target; }
    [[nodiscard]] HRESULT WriteBack();

private:
    ComVariant m_copy;
    VARIANT* m_argument = nullptr;
    VARIANT* m_target = nullptr;
};

template<>
class LateArgument<VARIANT_BOOL*>
{
public:
    [[nodiscard]] HRESULT Take(VARIANT& argument)
    {
        m_argument = &argument;
        return ConvertTo(VT_BOOL, argument, m_value);
    }
    [[nodiscard]] VARIANT_BOOL* Get() { return &m_value.boolVal; }
    [[nodiscard]] HRESULT WriteBack() { return StoreAt(*m_argument, m_value); }

private:
    ComVariant m_value;
    const VARIANT* m_argument = nullptr;
};

template<>
class LateArgument<_IProcessProgress*>
{
public:
    [[nodiscard]] HRESULT Take(VARIANT& argument);
    [[nodiscard]] _IProcessProgress* Get() const { return m_receiver.Get(); }
    [[nodiscard]] HRESULT WriteBack() const { return S_OK; }

private:
    Microsoft::WRL::ComPtr<_IProcessProgress> m_receiver;
};

template<>
class LateArgument<_ProductLkpMgr**>
{
public:
    [[nodiscard]] HRESULT Take(VARIANT& argument);
    [[nodiscard]] _ProductLkpMgr** Get() { return m_store.GetAddressOf(); }
    [[nodiscard]] HRESULT WriteBack() const { return S_OK; }

private:
    Microsoft::WRL::ComPtr<_ProductLkpMgr> m_store;
};

/// The arguments of one late-bound call, by their place in the member's list.
class LateCall
{
public:
    LateCall(const DISPPARAMS& parameters, VARIANT* result) noexcept;
    LateCall(const LateCall&) = delete;
    LateCall& operator=(const LateCall&) = delete;
    ~LateCall() = default;

    [[nodiscard]] bool HasCount(std::size_t least, std::size_t most) const noexcept
    {
        return m_parameters.cArgs >= least && m_parameters.cArgs <= most;
    }

    /// Gives the argument of the place `index` to `argument`; one that is not there is a missing one.
    template<class Argument>
    [[nodiscard]] HRESULT Take(std::size_t index, Argument& argument)
    {
        const int place = PrvPlaceOf(index);
        const HRESULT status = argument.Take(place < 0 ? m_missing : m_parameters.rgvarg[place]);
        if (FAILED(status))
            m_badArgument = place;
        return status;
    }

    /// Moves a result to the caller, who may not want it.
    void GiveResult(VARIANT& value) noexcept;
    void GiveResult(long value) noexcept;
    void GiveResult(VARIANT_BOOL value) noexcept;

    /// The status for the caller of a call that failed with `status`: of an argument that did not fit, or of
    /// the member, whose report goes into `exception` then.
    [[nodiscard]] HRESULT Fail(HRESULT status, EXCEPINFO* exception, UINT* badArgument) noexcept;

private:
    /// Where the argument of that place stands in the list, or -1.
    [[nodiscard]] int PrvPlaceOf(std::size_t index) const noexcept;

    const DISPPARAMS& m_parameters;
    VARIANT* m_result;
    VARIANT m_missing;
    int m_badArgument = -1; // its place in the list; -1 for none, or a missing one
};

} // namespace KestrinProductEditor
