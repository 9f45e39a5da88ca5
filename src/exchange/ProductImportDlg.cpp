// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductImportDlg.h>

#include "exchange/frmProductImport.h"
#include "frame/ShownForm.h"
#include "frame/Traced.h"
#include "frame/modInit.h"

#include <utility>

namespace KestrinProductEditor {

std::shared_ptr<ProductImportDlg> ProductImportDlg::Create()
{
    modInit::EnsureMain();
    return std::shared_ptr<ProductImportDlg>(new ProductImportDlg);
}

ProductImportDlg::~ProductImportDlg() = default;

void ProductImportDlg::Init(const std::shared_ptr<ProductLkpMgr>& objProductLkpMgr)
{
    m_objProductLkpMgr = objProductLkpMgr;
}

void ProductImportDlg::Show()
{
    const auto self = shared_from_this();
    Traced(ErrorContext::ProductImportDlg_Show, [this] {
        const ShownForm shown(m_frmImport);
        m_frmImport->Load();
        m_frmImport->Init(std::exchange(m_objProductLkpMgr, nullptr));
        m_frmImport->ShowModal();
    });
}

} // namespace KestrinProductEditor
