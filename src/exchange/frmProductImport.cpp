// SPDX-License-Identifier: MIT
#include "exchange/frmProductImport.h"

#include "exchange/CsvFileDialog.h"
#include "exchange/ExchangeGuard.h"
#include "exchange/frmProdImportPreview.h"
#include "frame/SkipFailure.h"
#include "frame/Traced.h"
#include "platform/Text.h"
#include "util/modConversion.h"

#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

constexpr std::u16string_view kTitle = u"Salvo";
constexpr std::u16string_view kCannotSample =
    u"The import file format is either invalid or there has been an error while trying to read the file.";

enum Column : std::int32_t
{
    kSource,
    kDestination,
    kColumns
};

void Exclaim(std::u16string_view text)
{
    MessageBoxes().Show(text, kMessageExclamation, kTitle);
}

[[nodiscard]] std::u16string Decimal(std::int32_t number)
{
    return ToUtf16(std::to_string(number));
}

} // namespace

frmProductImport::frmProductImport()
    : m_form(Toolkit().CreateForm(u"frmProductImport")),
      m_txtImportFilePath(m_form->TextBox(u"txtImportFilePath")),
      m_chkFirstRowIsHeader(m_form->CheckBox(u"chkFirstRowIsHeader")),
      m_chkAppend(m_form->CheckBox(u"chkAppend")), m_flexGrid(m_form->Grid(u"flexGrid")),
      m_cmdImport(m_form->Button(u"cmdImport")), m_prgImport(m_form->ProgressBar(u"prgImport"))
{
    m_form->SetFirstFocus(m_txtImportFilePath);
    m_form->SetDefaultButton(m_cmdImport);
    PrvConnect();
}

void frmProductImport::PrvConnect()
{
    m_form->CloseBox.Connect([this] { PrvUnload(); });
    m_form->Escape.Connect([this] { PrvUnload(); });
    m_form->FileDrop.Connect([this](std::u16string_view path) { PrvTakeFile(path); });
    m_form->Button(u"cmdBrowse").Click.Connect([this] { cmdBrowse_Click(); });
    m_form->Button(u"cmdPreview").Click.Connect([this] { cmdPreview_Click(); });
    m_form->Button(u"cmdCancel").Click.Connect([this] { PrvUnload(); });
    m_cmdImport.Click.Connect([this] { cmdImport_Click(); });
    m_chkFirstRowIsHeader.Click.Connect([this] { m_bFirstRowIsHeader = m_chkFirstRowIsHeader.Value() == 1; });
    m_chkAppend.Click.Connect([this] { m_bAppend = m_chkAppend.Value() == 1; });
    m_txtImportFilePath.GotFocus.Connect([this] { txtImportFilePath_GotFocus(); });
    m_txtImportFilePath.LostFocus.Connect([this] { static_cast<void>(PrvTakeTypedPath()); });
}

void frmProductImport::Load()
{
    constexpr std::int32_t kColumnWidth = 4200;
    PrvSetCaptions();
    m_flexGrid.SetRows(1);
    m_flexGrid.SetCols(kColumns);
    m_flexGrid.SetFixedRows(1);
    m_flexGrid.SetSelectionMode(SelectionMode::WholeRow);
    m_flexGrid.SetCellText(0, kSource, u"Source");
    m_flexGrid.SetCellText(0, kDestination, u"Destination");
    m_flexGrid.SetColWidth(kSource, kColumnWidth);
    m_flexGrid.SetColWidth(kDestination, kColumnWidth);
    m_flexGrid.SetColComboList(
        kDestination, u"#0; |#1;Product Name|#2;Product Part#|#3;Product Unit Price|#4;Product Note");
    m_prgImport.SetVisible(false);
    m_chkFirstRowIsHeader.SetValue(1);
    m_chkAppend.SetValue(1);
}

void frmProductImport::PrvSetCaptions()
{
    m_form->SetCaption(u"Import Products");
    m_form->Label(u"lblImportFilePath").SetCaption(u"File to import");
    m_form->Button(u"cmdBrowse").SetCaption(u"Browse...");
    m_chkFirstRowIsHeader.SetCaption(u"First line holds column titles");
    m_chkAppend.SetCaption(u"Add to the products already in the list");
    m_chkAppend.SetToolTip(u"Without the tick the products in the list are removed first");
    m_form->Label(u"lblMapping").SetCaption(u"Which column of the file is what");
    m_form->Button(u"cmdPreview").SetCaption(u"Preview");
    m_cmdImport.SetCaption(u"Import");
    m_form->Button(u"cmdCancel").SetCaption(u"Cancel");
}

void frmProductImport::Init(std::shared_ptr<ProductLkpMgr> objProdLkpMgr)
{
    m_objProdLkpMgr = std::move(objProdLkpMgr);
}

void frmProductImport::ShowModal()
{
    m_form->ShowModal();
}

void frmProductImport::PrvUnload()
{
    m_form->EndModal();
}

void frmProductImport::PrvTakeFile(std::u16string_view path)
{
    m_txtImportFilePath.SetText(path);
    m_sSampledPath = path;
    if (path.empty())
        return;
    try {
        PrvFillMapping(PrvReadSample());
    } catch (...) {
        SkipFailure([&] { PrvFillMapping({}); });
        Exclaim(kCannotSample);
    }
}

/// A path that was typed gets its mapping when the box is left, or at the latest when the mapping is used:
/// only there is it said what is wrong, as a message on the way would stand between the user and the button
/// Cancel. False when the path cannot be sampled.
bool frmProductImport::PrvTakeTypedPath()
{
    const std::u16string path = m_txtImportFilePath.Text();
    if (path == m_sSampledPath)
        return true;
    m_sSampledPath.clear();
    try {
        PrvFillMapping(path.empty() ? CsvSample() : PrvReadSample());
        m_sSampledPath = path;
        return true;
    } catch (...) {
        SkipFailure([&] { PrvFillMapping({}); });
        return false;
    }
}

CsvSample frmProductImport::PrvReadSample() const
{
    return ReadCsvSample(m_txtImportFilePath.Text(),
                         m_bFirstRowIsHeader ? FirstLine::Titles : FirstLine::Product);
}

void frmProductImport::PrvFillMapping(const CsvSample& sample)
{
    const RedrawPause pause(m_flexGrid);
    m_flexGrid.SetRows(1);
    m_flexGrid.SetRows(static_cast<std::int32_t>(sample.columnNames.size()) + 1);
    for (std::size_t column = 0; column < sample.columnNames.size(); ++column) {
        const auto row = static_cast<std::int32_t>(column) + 1;
        m_flexGrid.SetCellText(row, kSource, sample.columnNames[column]);
        m_flexGrid.SetCellText(row, kDestination, u"0");
    }
    if (!sample.columnNames.empty())
        m_flexGrid.SetCurrentRow(1);
}

ProductMapping frmProductImport::PrvMapping() const
{
    std::vector<std::int32_t> choices;
    for (std::int32_t row = 1; row < m_flexGrid.Rows(); ++row) {
        const std::u16string choice = m_flexGrid.CellText(row, kDestination);
        choices.push_back(choice.empty() ? 0 : modConversion::ToLong(choice));
    }
    return MappingOf(choices);
}

void frmProductImport::PrvShowPreviewDlg()
{
    Traced(ErrorContext::frmProductImport_PrvShowPreviewDlg, [&] {
        static_cast<void>(PrvTakeTypedPath());
        const ProductMapping mapping = PrvMapping();
        frmProdImportPreview preview;
        preview.DialogInit(PrvReadSample(), mapping);
        preview.ShowModal();
    });
}

std::optional<Variant> frmProductImport::PrvImportProducts()
{
    return Traced(ErrorContext::frmProductImport_PrvImportProducts, [&]() -> std::optional<Variant> {
        const std::u16string path = m_txtImportFilePath.Text();
        if (path.empty()) {
            Exclaim(u"Please specify import file name");
            return std::nullopt;
        }
        if (!PrvTakeTypedPath()) {
            Exclaim(kCannotSample);
            return std::nullopt;
        }
        const ProductMapping mapping = PrvMapping();
        if (!IsAnyFieldMapped(mapping)) {
            Exclaim(u"You must map at least one field");
            return std::nullopt;
        }
        const Variant params =
            Variant::ArrayWith(path, ReverseMap(mapping), m_bFirstRowIsHeader ? 1 : 0, m_bAppend ? 1 : 0);
        const std::shared_ptr<ProductLkpMgr> store = m_objProdLkpMgr;
        if (store == nullptr)
            throw AutomationError(kErrObjectNotSet);
        const ExchangeGuard guard(*store, std::static_pointer_cast<IProcessProgress>(shared_from_this()),
                                  *m_form, m_prgImport);
        return store->CSVProductImport(params);
    });
}

void frmProductImport::Progress(const Variant& vParams)
{
    ShowProgress(m_prgImport, vParams.At(0).Double());
    m_prgImport.SetCaption(Decimal(vParams.At(1).Long()) + u" products imported...");
    m_form->KeepPainting();
}

void frmProductImport::cmdBrowse_Click()
{
    SkipFailure([&] {
        const std::optional<std::u16string> path =
            ChooseCsvFile(FileDialog::Kind::Open, u"Import products", m_txtImportFilePath.Text());
        if (path)
            PrvTakeFile(*path);
    });
}

void frmProductImport::cmdPreview_Click()
{
    const bool isShown = Traced<Ending::Swallow>(ErrorContext::frmProductImport_cmdPreview_Click, [&] {
        PrvShowPreviewDlg();
        return true;
    });
    if (!isShown)
        Exclaim(u"Could not display preview dialog");
}

void frmProductImport::cmdImport_Click()
{
    const bool hasEndedWell = Traced<Ending::Swallow>(ErrorContext::frmProductImport_cmdImport_Click, [&] {
        const std::optional<Variant> result = PrvImportProducts();
        if (!result)
            return true;
        if (modConversion::ToLong(result->At(0)) == 0)
            MessageBoxes().Show(Decimal(result->At(2).Long()) + u" products have been imported.\r\n" +
                                    Decimal(result->At(3).Long()) +
                                    u" products have been rejected (due to an error/invalid format).",
                                kMessageInformation, kTitle);
        PrvUnload();
        return true;
    });
    if (!hasEndedWell)
        Exclaim(u"Could not import the data due to an error");
}

void frmProductImport::txtImportFilePath_GotFocus()
{
    if (const std::u16string path = std::exchange(m_sFileWhenShown, {}); !path.empty())
        SkipFailure([&] { PrvTakeFile(path); });
}

} // namespace KestrinProductEditor
