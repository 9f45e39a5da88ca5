// SPDX-License-Identifier: MIT
// The host's components as cheap as they can be, so that what is measured is the component: a trace that does
// nothing, and a configuration that knows one folder.
#include <windows.h>

#include <objbase.h>
#include <oleauto.h>

#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <new>
#include <string_view>

namespace {

/// An object that has the interface and IUnknown, and ends with its last reference.
template<class Interface>
class Counted : public Interface
{
public:
    Counted() = default;
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceID, void** object) final
    {
        const bool isOurs = interfaceID == IID_IUnknown || interfaceID == __uuidof(Interface);
        *object = isOurs ? static_cast<Interface*>(this) : nullptr;
        if (!isOurs)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() final { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() final
    {
        const ULONG left = --m_references;
        if (left == 0)
            delete this;
        return left;
    }

protected:
    virtual ~Counted() = default;

private:
    ULONG m_references = 1; // one apartment
};

/// What late-bound calls need not have.
class Late : public Counted<IDispatch>
{
public:
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) final
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) final { return E_NOTIMPL; }
};

class Trace final : public Late
{
public:
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* members) override
    {
        for (DISPID member = 0; member < static_cast<DISPID>(std::size(kMembers)); ++member) {
            if (kMembers[member] == names[0]) {
                *members = member + 1;
                return S_OK;
            }
        }
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*,
                                     EXCEPINFO*, UINT*) override
    {
        if (member <= kEnterAndExit)
            return S_OK;
        // No work that is measured may fail: its time would mean nothing.
        if (parameters->cArgs == 1 && parameters->rgvarg[0].vt == VT_BSTR)
            std::fprintf(stderr, "the component failed: %ls\n", parameters->rgvarg[0].bstrVal);
        std::_Exit(1);
    }

private:
    static constexpr std::wstring_view kMembers[] = {L"TraceEnter", L"TraceExit", L"TraceError",
                                                     L"TraceErrNumber"};
    static constexpr DISPID kEnterAndExit = 2;
};

class Config final : public Late
{
public:
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override
    {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID member, REFIID, LCID, WORD, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO*, UINT*) override
    {
        if (member != DISPID_VALUE || parameters->cArgs != 1 || parameters->rgvarg[0].vt != VT_BSTR)
            return DISP_E_MEMBERNOTFOUND;
        wchar_t folder[MAX_PATH] = L"";
        if (std::wstring_view(parameters->rgvarg[0].bstrVal) == L"InstallPath")
            GetEnvironmentVariableW(L"KSTNEDIT_BENCH_FOLDER", folder, MAX_PATH);
        result->vt = VT_BSTR;
        result->bstrVal = SysAllocString(folder);
        return S_OK;
    }
};

template<class Made>
class Factory final : public Counted<IClassFactory>
{
public:
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID interfaceID, void** object) override
    {
        auto* const made = new (std::nothrow) Made;
        if (made == nullptr)
            return E_OUTOFMEMORY;
        const HRESULT status = made->QueryInterface(interfaceID, object);
        made->Release();
        return status;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

// As in kstnedit-automation-bench.exe.manifest.
constexpr CLSID kTrace{0x52DFD3F9, 0xAFCC, 0x4583, {0x9B, 0xA7, 0x93, 0x34, 0xE6, 0xF0, 0x64, 0x16}};
constexpr CLSID kConfig{0xF44819F7, 0x53D5, 0x445A, {0xB0, 0xE7, 0x11, 0xF8, 0xCD, 0x92, 0x84, 0x51}};

} // namespace

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    *ppv = nullptr;
    IClassFactory* factory = nullptr;
    if (rclsid == kTrace)
        factory = new (std::nothrow) Factory<Trace>;
    else if (rclsid == kConfig)
        factory = new (std::nothrow) Factory<Config>;
    if (factory == nullptr)
        return CLASS_E_CLASSNOTAVAILABLE;
    const HRESULT status = factory->QueryInterface(riid, ppv);
    factory->Release();
    return status;
}

STDAPI DllCanUnloadNow()
{
    return S_FALSE;
}
