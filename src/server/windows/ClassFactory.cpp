// SPDX-License-Identifier: MIT
#include "server/windows/ClassFactory.h"

#include "platform/ui/PlatformToolkit.h"
#include "server/windows/ComError.h"
#include "server/windows/HostComponents.h"
#include "server/windows/Launchers.h"
#include "server/windows/OwnedObject.h"

namespace KestrinProductEditor {

namespace {

using ProductImportDlgServer = StoreLauncherServer<_ProductImportDlg, ProductImportDlg>;
using ProductExportDlgServer = StoreLauncherServer<_ProductExportDlg, ProductExportDlg>;

/// An object with two dispatch bases has no one IUnknown but that of its interface.
template<class Interface>
[[nodiscard]] IUnknown* Unknown(Interface* object)
{
    return object;
}

const CreatableClass kClasses[] = {
    {&CLSID_ProdLkpEditDlg, [] { return Unknown<_ProdLkpEditDlg>(new ProdLkpEditDlgServer); }},
    {&CLSID_ProductLkpMgr, [] { return Unknown<_ProductLkpMgr>(new ProductLkpMgrServer); }},
    {&CLSID_ProductEditorDlg, [] { return Unknown<_ProductEditorDlg>(new ProductEditorDlgServer); }},
    {&CLSID_ProductImportDlg,
     [] { return Unknown<_ProductImportDlg>(new ProductImportDlgServer(CLSID_ProductImportDlg)); }},
    {&CLSID_ProductExportDlg,
     [] { return Unknown<_ProductExportDlg>(new ProductExportDlgServer(CLSID_ProductExportDlg)); }},
};

} // namespace

std::span<const CreatableClass> CreatableClasses()
{
    return kClasses;
}

HRESULT ClassFactory::QueryInterface(REFIID interfaceID, void** object)
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

ULONG ClassFactory::Release()
{
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

HRESULT ClassFactory::CreateInstance(IUnknown* outer, REFIID interfaceID, void** object)
{
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (outer != nullptr)
        return CLASS_E_NOAGGREGATION;
    SetErrorInfo(0, nullptr);
    HRESULT status = E_NOINTERFACE;
    const HRESULT made = Answer(IID_IClassFactory, [&] {
        BindHostComponents();
        // A host has a screen: what there is to say is said there.
        static_cast<void>(PlatformToolkit());
        status = Owned(m_class.make())->QueryInterface(interfaceID, object);
    });
    return FAILED(made) ? made : status;
}

HRESULT ClassFactory::LockServer(BOOL lock)
{
    g_livingObjects += lock ? 1 : -1;
    return S_OK;
}

} // namespace KestrinProductEditor
