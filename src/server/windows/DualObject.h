// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LivingObjects.h"
#include "server/windows/ComError.h"
#include "server/windows/ComVariant.h"
#include "server/windows/LateBinding.h"
#include "server/windows/TypeLibrary.h"

#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>

#include <atomic>
#include <cstdint>
#include <utility>

namespace KestrinProductEditor {

/// The base of the server's objects: counting, the dual interface's late-bound half, and what clients ask
/// about errors and types. `classID` names the class in the type library.
///
/// A body runs through Do or Give and reports what it raises; a pointer for a result must not be null.
template<class Interface>
class DualObject : public Interface, public ISupportErrorInfo, public IProvideClassInfo
{
public:
    DualObject(const DualObject&) = delete;
    DualObject& operator=(const DualObject&) = delete;
    virtual ~DualObject() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceID, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = FindInterface(interfaceID);
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        if (count == nullptr)
            return E_POINTER;
        *count = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID, ITypeInfo** info) override
    {
        if (info == nullptr)
            return E_POINTER;
        *info = nullptr;
        if (index != 0)
            return DISP_E_BADINDEX;
        return Answer(kInterfaceID, [&] { *info = TypeInfoOf(kInterfaceID).Detach(); });
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        HRESULT status = S_OK;
        const HRESULT answered = Answer(kInterfaceID, [&] {
            status = DispGetIDsOfNames(TypeInfoOf(kInterfaceID).Get(), names, count, ids);
        });
        return FAILED(answered) ? answered : status;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* badArgument) override
    {
        HRESULT status = S_OK;
        const HRESULT answered = Answer(kInterfaceID, [&] {
            status = InvokeLate<Interface>(*this, id, flags, parameters, result, exception, badArgument);
        });
        return FAILED(answered) ? answered : status;
    }

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID interfaceID) override
    {
        return interfaceID == kInterfaceID ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE GetClassInfo(ITypeInfo** info) override
    {
        if (info == nullptr)
            return E_POINTER;
        *info = nullptr;
        return Answer(kInterfaceID, [&] { *info = TypeInfoOf(m_classID).Detach(); });
    }

protected:
    explicit DualObject(REFCLSID classID) noexcept : m_classID(classID) {}

    /// The part of this object that answers `interfaceID`, not counted; null when none does.
    [[nodiscard]] virtual void* FindInterface(REFIID interfaceID) noexcept
    {
        if (interfaceID == IID_IUnknown || interfaceID == IID_IDispatch || interfaceID == kInterfaceID)
            return static_cast<Interface*>(this);
        if (interfaceID == IID_ISupportErrorInfo)
            return static_cast<ISupportErrorInfo*>(this);
        if (interfaceID == IID_IProvideClassInfo)
            return static_cast<IProvideClassInfo*>(this);
        return nullptr;
    }

    template<class Body>
    HRESULT Do(Body&& body) noexcept
    {
        return Answer(kInterfaceID, std::forward<Body>(body));
    }

    template<class Result, class Body>
    HRESULT Give(Result* result, Body&& body) noexcept
    {
        if (result == nullptr)
            return Answer(kInterfaceID, [] { throw AutomationError(E_POINTER); });
        *result = Result();
        return Answer(kInterfaceID, [&] { PrvPut(*result, body()); });
    }

private:
    static constexpr GUID kInterfaceID = __uuidof(Interface);

    static void PrvPut(VARIANT& target, const Variant& value) { target = ComVariant(value).Detach(); }
    static void PrvPut(LONG& target, std::int32_t value) noexcept { target = value; }
    static void PrvPut(VARIANT_BOOL& target, bool value) noexcept
    {
        target = value ? VARIANT_TRUE : VARIANT_FALSE;
    }

    const LivingObject m_living;
    const CLSID m_classID;
    std::atomic<ULONG> m_references = 1;
};

} // namespace KestrinProductEditor
