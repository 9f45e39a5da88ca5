// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/IProcessProgress.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include "platform/ui/Toolkit.h"

#include <memory>
#include <optional>
#include <string>

namespace KestrinProductEditor {

/// The export dialog: a target path, and the export of the given store with its progress. A failure is said
/// in the window, which stays open.
///
/// Made, loaded and given its store in this order, then shown once.
class frmProductExport final : public IProcessProgress
{
public:
    /// The window, not shown yet. Raises what the toolkit raises.
    frmProductExport();

    void Load();
    /// Null leaves a form that refuses to export.
    void Init(std::shared_ptr<ProductLkpMgr> objProdLkpMgr);
    /// Returns when the form is closed.
    void ShowModal();

    /// IProcessProgress_Progress: fraction done.
    void Progress(const Variant& vParams) override;

private:
    [[nodiscard]] std::optional<std::u16string> PrvBrowseForExportFilePath();
    void ExportProducts();
    void PrvSayFailure(const std::u16string& description);

    void cmdBrowse_Click();
    void cmdExport_Click();

    std::shared_ptr<ProductLkpMgr> m_objProdLkpMgr;

    std::unique_ptr<IForm> m_form;
    ITextBox& m_txtExportFilePath;
    IButton& m_cmdExport;
    IProgressBar& m_prgExport;
    ILabel& m_lblStatus;
};

} // namespace KestrinProductEditor
