// SPDX-License-Identifier: MIT
#include "exchange/frmProductExport.h"

#include "exchange/CsvFileDialog.h"
#include "exchange/ExchangeGuard.h"
#include "exchange/OrdinaryFile.h"
#include "frame/SkipFailure.h"
#include "frame/Traced.h"
#include "platform/Text.h"

#include <string>
#include <utility>

namespace KestrinProductEditor {

frmProductExport::frmProductExport()
    : m_form(Toolkit().CreateForm(u"frmProductExport")),
      m_txtExportFilePath(m_form->TextBox(u"txtExportFilePath")), m_cmdExport(m_form->Button(u"cmdExport")),
      m_prgExport(m_form->ProgressBar(u"prgExport")), m_lblStatus(m_form->Label(u"lblStatus"))
{
    m_form->SetFirstFocus(m_txtExportFilePath);
    m_form->SetDefaultButton(m_cmdExport);
    m_form->CloseBox.Connect([this] { m_form->EndModal(); });
    m_form->Escape.Connect([this] { m_form->EndModal(); });
    m_form->Button(u"cmdCancel").Click.Connect([this] { m_form->EndModal(); });
    m_form->Button(u"cmdBrowse").Click.Connect([this] { cmdBrowse_Click(); });
    m_cmdExport.Click.Connect([this] { cmdExport_Click(); });
}

void frmProductExport::Load()
{
    m_form->SetCaption(u"Export Products");
    m_form->Label(u"lblExportFilePath").SetCaption(u"Export to file");
    m_form->Button(u"cmdBrowse").SetCaption(u"Browse...");
    m_cmdExport.SetCaption(u"Export");
    m_form->Button(u"cmdCancel").SetCaption(u"Cancel");
    m_prgExport.SetVisible(false);
    m_lblStatus.SetCaption(u"");
}

void frmProductExport::Init(std::shared_ptr<ProductLkpMgr> objProdLkpMgr)
{
    m_objProdLkpMgr = std::move(objProdLkpMgr);
}

void frmProductExport::ShowModal()
{
    m_form->ShowModal();
}

std::optional<std::u16string> frmProductExport::PrvBrowseForExportFilePath()
{
    return Traced(ErrorContext::frmProductExport_PrvBrowseForExportFilePath,
                  [&] { return ChooseCsvFile(FileDialog::Kind::Save, u"Export products", u""); });
}

void frmProductExport::ExportProducts()
{
    Traced(ErrorContext::frmProductExport_ExportProducts, [&] {
        const std::u16string path = m_txtExportFilePath.Text();
        if (path.empty()) {
            MessageBoxes().Show(u"Please enter export file path.", kMessageExclamation, u"Salvo");
            return;
        }
        const std::shared_ptr<ProductLkpMgr> store = m_objProdLkpMgr;
        if (store == nullptr)
            throw AutomationError(kErrObjectNotSet);
        RequireOrdinaryFile(path);
        {
            const ExchangeGuard guard(*store, std::static_pointer_cast<IProcessProgress>(shared_from_this()),
                                      *m_form, m_prgExport);
            store->CSVProductExport(Variant::ArrayWith(path));
        }
        m_form->EndModal();
    });
}

void frmProductExport::Progress(const Variant& vParams)
{
    const std::int32_t percent = ShowProgress(m_prgExport, vParams.At(0).Double());
    m_prgExport.SetCaption(ToUtf16(std::to_string(percent)) + u"%");
    m_form->KeepPainting();
}

void frmProductExport::PrvSayFailure(const std::u16string& description)
{
    std::u16string text = u"The products could not be exported.";
    if (!description.empty())
        text += u' ' + description;
    m_lblStatus.SetCaption(text);
    m_txtExportFilePath.SetFocus();
}

void frmProductExport::cmdBrowse_Click()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductExport_cmdBrowse_Click, [&] {
        if (const std::optional<std::u16string> path = PrvBrowseForExportFilePath())
            m_txtExportFilePath.SetText(*path);
    });
}

void frmProductExport::cmdExport_Click()
{
    std::u16string reason;
    const bool hasEndedWell = Traced<Ending::Swallow>(ErrorContext::frmProductExport_cmdExport_Click, [&] {
        m_lblStatus.SetCaption(u"");
        try {
            ExportProducts();
        } catch (const AutomationError& error) {
            reason = error.Description();
            throw;
        }
        return true;
    });
    if (!hasEndedWell)
        SkipFailure([&] { PrvSayFailure(reason); });
}

} // namespace KestrinProductEditor
