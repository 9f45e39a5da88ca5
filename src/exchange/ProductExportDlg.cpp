// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductExportDlg.h>

#include "frame/Traced.h"
#include "frame/modInit.h"
#include "platform/ui/Windows.h"

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
        m_objProductLkpMgr.reset();
        RequireWindows();
    });
}

} // namespace KestrinProductEditor
