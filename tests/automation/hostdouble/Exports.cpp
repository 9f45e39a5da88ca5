// SPDX-License-Identifier: MIT
#include "automation/hostdouble/Doubles.h"
#include "automation/hostdouble/HostState.h"
#include "automation/support/ScriptObject.h"
#include "platform/windows/WideText.h"

#include <windows.h>

#include <objbase.h>
#include <olectl.h>

#include <atomic>
#include <cstdint>
#include <iterator>
#include <new>
#include <string>

using namespace KestrinProductEditor;

namespace {

class DoubleFactory final : public IClassFactory
{
public:
    explicit DoubleFactory(const Double& made) noexcept : m_double(made) {}
    DoubleFactory(const DoubleFactory&) = delete;
    DoubleFactory& operator=(const DoubleFactory&) = delete;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID interfaceID, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (interfaceID != IID_IUnknown && interfaceID != IID_IClassFactory)
            return E_NOINTERFACE;
        *object = static_cast<IClassFactory*>(this);
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

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID interfaceID, void** object) override
    {
        if (object == nullptr)
            return E_POINTER;
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        try {
            const std::int32_t failure = WithState(
                [&](HostState& state) { return state.creationFailures[FromWide(m_double.progID)]; });
            return failure != 0 ? StatusOfNumber(failure) : m_double.make().CopyTo(interfaceID, object);
        } catch (...) {
            return E_OUTOFMEMORY;
        }
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

private:
    virtual ~DoubleFactory() = default;

    const Double& m_double;
    std::atomic<ULONG> m_references = 1;
};

[[nodiscard]] std::wstring ModulePath()
{
    constexpr std::size_t kLongest = 32767;
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const wchar_t*>(&kDoubles), &module);
    std::wstring path(kLongest, L'\0');
    path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

[[nodiscard]] std::wstring IdentifierText(const CLSID& classID)
{
    wchar_t text[39]; // braces and the closing 0 included
    StringFromGUID2(classID, text, static_cast<int>(std::size(text)));
    return text;
}

/// `name` is null for the key's own value.
[[nodiscard]] bool SetClassValue(const std::wstring& key, const wchar_t* name, const std::wstring& text)
{
    const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
    return RegSetKeyValueW(HKEY_CLASSES_ROOT, key.c_str(), name, REG_SZ, text.c_str(), bytes) ==
           ERROR_SUCCESS;
}

[[nodiscard]] bool DeleteClassKey(const std::wstring& key)
{
    const LSTATUS status = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
    return status == ERROR_SUCCESS || status == ERROR_FILE_NOT_FOUND;
}

[[nodiscard]] bool Register(const Double& made, const std::wstring& path)
{
    const std::wstring identifier = IdentifierText(made.classID);
    const std::wstring name = made.progID;
    const std::wstring key = L"CLSID\\" + identifier;
    return SetClassValue(key, nullptr, name) && SetClassValue(key + L"\\InprocServer32", nullptr, path) &&
           SetClassValue(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment") &&
           SetClassValue(key + L"\\ProgID", nullptr, name) &&
           SetClassValue(name + L"\\CLSID", nullptr, identifier);
}

[[nodiscard]] bool Unregister(const Double& made)
{
    const bool isClassGone = DeleteClassKey(L"CLSID\\" + IdentifierText(made.classID));
    return DeleteClassKey(made.progID) && isClassGone;
}

template<class Body>
[[nodiscard]] HRESULT WithEachDouble(Body body)
{
    try {
        bool isWell = true;
        for (const Double& made : kDoubles)
            isWell = body(made) && isWell;
        return isWell ? S_OK : SELFREG_E_CLASS;
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

} // namespace

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    if (ppv == nullptr)
        return E_POINTER;
    *ppv = nullptr;
    for (const Double& made : kDoubles) {
        if (rclsid != made.classID)
            continue;
        const auto factory = Owned<IClassFactory>(new (std::nothrow) DoubleFactory(made));
        return factory != nullptr ? factory.CopyTo(riid, ppv) : E_OUTOFMEMORY;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow()
{
    // What is recorded outlives the objects.
    return S_FALSE;
}

STDAPI DllRegisterServer()
{
    return WithEachDouble([](const Double& made) { return Register(made, ModulePath()); });
}

STDAPI DllUnregisterServer()
{
    return WithEachDouble(&Unregister);
}
