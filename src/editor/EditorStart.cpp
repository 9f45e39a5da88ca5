// SPDX-License-Identifier: MIT
#include "editor/EditorStart.h"

#include "editor/frmProductEditor.h"
#include "frame/Traced.h"
#include "frame/modInit.h"

namespace KestrinProductEditor {

void ShowProductEditor(std::u16string_view importFile,
                       const std::function<void(ProductLkpMgr&)>& beforeRelease)
{
    modInit::EnsureMain();
    Traced(ErrorContext::ProductEditorDlg_Show, [&] {
        frmProductEditor editor;
        editor.Load();
        editor.Init(Variant());
        editor.ImportWhenShown(importFile);
        editor.ShowModal();
        if (beforeRelease && editor.Store() != nullptr)
            beforeRelease(*editor.Store());
    });
}

} // namespace KestrinProductEditor
