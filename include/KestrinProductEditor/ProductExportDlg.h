// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include <memory>

namespace KestrinProductEditor {

class frmProductExport;

/// Shows the export dialog over a store of the host's.
class [[gnu::visibility("default")]] ProductExportDlg final : public AutomationObject
{
public:
    [[nodiscard]] static std::shared_ptr<ProductExportDlg> Create();

    ~ProductExportDlg() override;

    /// Keeps the store for the next Show.
    void Init(const std::shared_ptr<ProductLkpMgr>& objProductLkpMgr);

    /// Shows the dialog over the kept store, in front of the component's other windows, and returns when it
    /// is closed. It hands the store over to the dialog, so each Show needs an Init of its own; without one
    /// the dialog opens and refuses to export. A failed export is said in the window, never raised here.
    ///
    /// While the dialog exports it is the store's one progress receiver (ProductLkpMgr::SetNotifyCallback);
    /// the store has none afterwards.
    ///
    /// Error 445, with the reason in its description, where no window can be shown: the library of windows
    /// (Qt's, on Linux) is not installed, there is no display, or the thread is not the one that windows
    /// belong to. The store is kept for the next Show then.
    void Show();

private:
    ProductExportDlg() = default;

    std::shared_ptr<ProductLkpMgr> m_objProductLkpMgr;
    std::shared_ptr<frmProductExport> m_frmExport;
};

} // namespace KestrinProductEditor
