// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductEditorDlg.h>

#include "editor/frmProductEditor.h"
#include "frame/ShownForm.h"
#include "frame/Traced.h"
#include "frame/modInit.h"

namespace KestrinProductEditor {

std::shared_ptr<ProductEditorDlg> ProductEditorDlg::Create()
{
    modInit::EnsureMain();
    return std::shared_ptr<ProductEditorDlg>(new ProductEditorDlg);
}

ProductEditorDlg::~ProductEditorDlg() = default;

void ProductEditorDlg::Show(const Variant& vParams)
{
    const auto self = shared_from_this();
    Traced(ErrorContext::ProductEditorDlg_Show, [&] {
        const ShownForm shown(m_frmEditor);
        m_frmEditor->Load();
        m_frmEditor->Init(vParams);
        m_frmEditor->ShowModal();
    });
}

} // namespace KestrinProductEditor
