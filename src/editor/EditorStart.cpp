// SPDX-License-Identifier: MIT
#include "editor/EditorStart.h"

#include "editor/frmProductEditor.h"
#include "frame/Traced.h"
#include "frame/modInit.h"

namespace KestrinProductEditor {

void ShowProductEditor(std::u16string_view importFile)
{
    modInit::EnsureMain();
    Traced(ErrorContext::ProductEditorDlg_Show, [&] {
        frmProductEditor editor;
        editor.Load();
        editor.Init(Variant());
        editor.ImportWhenShown(importFile);
        editor.ShowModal();
    });
}

} // namespace KestrinProductEditor
