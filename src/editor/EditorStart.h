// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace KestrinProductEditor {

/// Shows the product editor as ProductEditorDlg does, and returns when it is closed. With an `importFile` the
/// import dialog opens over it at once, with that file chosen.
void ShowProductEditor(std::u16string_view importFile);

} // namespace KestrinProductEditor
