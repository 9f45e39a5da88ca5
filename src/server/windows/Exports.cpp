// SPDX-License-Identifier: MIT
#include "server/windows/ClassFactory.h"
#include "server/windows/ComError.h"
#include "server/windows/Registration.h"
#include "server/windows/TypeLibrary.h"

#include <windows.h>

#include <objbase.h>

#include <new>

using namespace KestrinProductEditor;

STDAPI DllGetClassObject(REFCLSID rclsid, REFIID riid, void** ppv)
{
    if (ppv == nullptr)
        return E_POINTER;
    *ppv = nullptr;
    for (const CreatableClass& creatable : CreatableClasses()) {
        if (rclsid != *creatable.classID)
            continue;
        auto* const factory = new (std::nothrow) ClassFactory(creatable);
        if (factory == nullptr)
            return E_OUTOFMEMORY;
        const HRESULT status = factory->QueryInterface(riid, ppv);
        factory->Release();
        return status;
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow()
{
    if (g_livingObjects != 0)
        return S_FALSE;
    ForgetTypeLibrary();
    return S_OK;
}

STDAPI DllRegisterServer()
{
    return RegisterServer(ModulePath());
}

STDAPI DllUnregisterServer()
{
    return UnregisterServer(ModulePath());
}
