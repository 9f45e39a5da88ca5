// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductExportDlg.h>

#include "exchange/frmProductExport.h"
#include "frame/ShownForm.h"
#include "frame/Traced.h"
#include "frame/modInit.h"

#include <utility>

namespace KestrinProductEditor {

std::shared_ptr<ProductExportDlg> ProductExportDlg::Create()
{
    modInit::EnsureMain();
    return std::shared_ptr<ProductExportDlg>(new ProductExportDlg);
}

ProductExportDlg::~ProductExportDlg() = default;

void ProductExportDlg::Init(const std::shared_ptr<ProductLkpMgr>& objProductLkpMgr)
{
    m_objProductLkpMgr = objProductLkpMgr;
}

void ProductExportDlg::Show()
{
    const auto self = shared_from_this();
    Traced(ErrorContext::ProductExportDlg_Show, [this] {
        const ShownForm shown(m_frmExport);
        m_frmExport->Load();
        m_frmExport->Init(std::exchange(m_objProductLkpMgr, nullptr));
        m_frmExport->ShowModal();
    });
}

} // namespace KestrinProductEditor
