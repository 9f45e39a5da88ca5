// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/IProcessProgress.h>
#include <KestrinProductEditor/ProductLkpMgr.h>

#include "exchange/CsvSample.h"
#include "exchange/ProductMapping.h"
#include "platform/ui/Toolkit.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// The import dialog: a CSV file, what each of its columns is, a preview, and the import into the given store
/// with its progress.
///
/// Made, loaded and given its store in this order, then shown once. The mapping list has one row for each
/// column of the file that was sampled last (m_sSampledPath); a file that cannot be sampled empties it. A
/// typed path that could not be sampled is tried again whenever the mapping is needed.
class frmProductImport final : public IProcessProgress
{
public:
    /// The window, not shown yet. Raises what the toolkit raises.
    frmProductImport();

    void Load();
    /// Null leaves a form that refuses to import.
    void Init(std::shared_ptr<ProductLkpMgr> objProdLkpMgr);
    /// Once the form is shown, takes the file as if it had been browsed to.
    void ChooseWhenShown(std::u16string_view path) { m_sFileWhenShown = path; }
    /// Returns when the form is closed.
    void ShowModal();

    /// IProcessProgress_Progress: fraction done, and products imported so far.
    void Progress(const Variant& vParams) override;

private:
    void PrvConnect();
    void PrvSetCaptions();
    void PrvUnload();

    void PrvTakeFile(std::u16string_view path);
    [[nodiscard]] bool PrvTakeTypedPath();
    void PrvFillMapping(const CsvSample& sample);
    [[nodiscard]] CsvSample PrvReadSample() const;
    [[nodiscard]] ProductMapping PrvMapping() const;
    void PrvShowPreviewDlg();
    [[nodiscard]] std::optional<Variant> PrvImportProducts();

    void cmdBrowse_Click();
    void cmdPreview_Click();
    void cmdImport_Click();
    void txtImportFilePath_GotFocus();

    std::shared_ptr<ProductLkpMgr> m_objProdLkpMgr;
    bool m_bFirstRowIsHeader = false;
    bool m_bAppend = false;
    std::u16string m_sSampledPath;
    std::u16string m_sFileWhenShown;

    std::unique_ptr<IForm> m_form;
    ITextBox& m_txtImportFilePath;
    ICheckBox& m_chkFirstRowIsHeader;
    ICheckBox& m_chkAppend;
    IGrid& m_flexGrid;
    IButton& m_cmdImport;
    IProgressBar& m_prgImport;
};

} // namespace KestrinProductEditor
