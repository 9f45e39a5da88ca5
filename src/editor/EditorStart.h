// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string_view>

namespace KestrinProductEditor {

class ProductLkpMgr;

/// Shows the product editor as ProductEditorDlg does, and returns when it is closed and its store released.
/// With an `importFile` the import dialog opens over it at once, with that file chosen. `beforeRelease` sees
/// the store of the closed editor, if there is one, and may still decide whether its release writes.
void ShowProductEditor(std::u16string_view importFile,
                       const std::function<void(ProductLkpMgr&)>& beforeRelease = {});

} // namespace KestrinProductEditor
