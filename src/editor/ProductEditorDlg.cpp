// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductEditorDlg.h>

#include "frame/Traced.h"
#include "frame/modInit.h"
#include "platform/ui/Windows.h"

namespace KestrinProductEditor {

std::shared_ptr<ProductEditorDlg> ProductEditorDlg::Create()
{
    modInit::EnsureMain();
    return std::shared_ptr<ProductEditorDlg>(new ProductEditorDlg);
}

ProductEditorDlg::~ProductEditorDlg() = default;

void ProductEditorDlg::Show(const Variant& /*vParams*/)
{
    const auto self = shared_from_this();
    Traced(ErrorContext::ProductEditorDlg_Show, [] { RequireWindows(); });
}

} // namespace KestrinProductEditor
