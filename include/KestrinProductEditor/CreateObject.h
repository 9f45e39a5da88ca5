// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>

#include <memory>
#include <string_view>

namespace KestrinProductEditor {

/// Creates one of the component's public classes by its class identifier, for example
/// "KestrinProductEditor.ProductLkpMgr" (letter case does not matter).
///
/// The identifiers are those of ProdLkpEditDlg, ProductLkpMgr, ProductEditorDlg, ProductImportDlg and
/// ProductExportDlg. Error 429 for any other, IPNotifyCallback and IProcessProgress among them: those two are
/// interfaces, for the host to implement. The first creation on a thread also creates the host's trace there;
/// when that fails, the creation fails with its error.
[[nodiscard, gnu::visibility("default")]] std::shared_ptr<AutomationObject>
CreateObject(std::string_view sClassID);

} // namespace KestrinProductEditor
