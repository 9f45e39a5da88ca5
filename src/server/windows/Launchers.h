// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/DualObject.h"
#include "server/windows/ProductLkpMgrServer.h"

#include <KestrinProductEditor/ProdLkpEditDlg.h>
#include <KestrinProductEditor/ProductEditorDlg.h>
#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>

#include <kstnedit.h>

#include <memory>

namespace KestrinProductEditor {

template<>
struct LateMembers<_ProdLkpEditDlg>
{
    static constexpr LateMember<_ProdLkpEditDlg> kAll[] = {
        SubWithOptionalArgument<&_ProdLkpEditDlg::Show>(1)};
};

template<>
struct LateMembers<_ProductEditorDlg>
{
    static constexpr LateMember<_ProductEditorDlg> kAll[] = {Sub<&_ProductEditorDlg::Show>(1)};
};

template<>
struct LateMembers<_ProductImportDlg>
{
    static constexpr LateMember<_ProductImportDlg> kAll[] = {Sub<&_ProductImportDlg::Init>(1),
                                                             Sub<&_ProductImportDlg::Show>(2)};
};

template<>
struct LateMembers<_ProductExportDlg>
{
    static constexpr LateMember<_ProductExportDlg> kAll[] = {Sub<&_ProductExportDlg::Init>(1),
                                                             Sub<&_ProductExportDlg::Show>(2)};
};

class ProdLkpEditDlgServer final : public DualObject<_ProdLkpEditDlg>
{
public:
    ProdLkpEditDlgServer() : DualObject(CLSID_ProdLkpEditDlg), m_launcher(ProdLkpEditDlg::Create()) {}

    /// Nobody reads the argument, so none is refused.
    HRESULT STDMETHODCALLTYPE Show(VARIANT) override
    {
        return Do([&] { m_launcher->Show(); });
    }

private:
    const std::shared_ptr<ProdLkpEditDlg> m_launcher;
};

class ProductEditorDlgServer final : public DualObject<_ProductEditorDlg>
{
public:
    ProductEditorDlgServer() : DualObject(CLSID_ProductEditorDlg), m_launcher(ProductEditorDlg::Create()) {}

    /// Nobody reads the argument, so none is refused.
    HRESULT STDMETHODCALLTYPE Show(VARIANT) override
    {
        return Do([&] { m_launcher->Show({}); });
    }

private:
    const std::shared_ptr<ProductEditorDlg> m_launcher;
};

/// The two launchers that work on a store of the client's.
template<class Interface, class Launcher>
class StoreLauncherServer final : public DualObject<Interface>
{
public:
    explicit StoreLauncherServer(REFCLSID classID)
        : DualObject<Interface>(classID), m_launcher(Launcher::Create())
    {
    }

    HRESULT STDMETHODCALLTYPE Init(_ProductLkpMgr** objProductLkpMgr) override
    {
        return this->Do([&] {
            m_launcher->Init(
                ProductLkpMgrServer::StoreOf(objProductLkpMgr == nullptr ? nullptr : *objProductLkpMgr));
        });
    }
    HRESULT STDMETHODCALLTYPE Show() override
    {
        return this->Do([&] { m_launcher->Show(); });
    }

private:
    const std::shared_ptr<Launcher> m_launcher;
};

} // namespace KestrinProductEditor
