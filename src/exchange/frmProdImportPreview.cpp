// SPDX-License-Identifier: MIT
#include "exchange/frmProdImportPreview.h"

#include "platform/Text.h"
#include "platform/UserLocale.h"
#include "store/Product.h"
#include "util/CurrencyFormat.h"
#include "util/modConversion.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

namespace {

constexpr std::array<std::u16string_view, kImportFields> kTitles = {u"Name", u"Part#", u"Unit Price",
                                                                    u"Note"};

/// Why a price does not arrive as it stands in the file; empty when it does.
[[nodiscard]] std::u16string_view DoubtAbout(std::u16string_view price)
{
    const modConversion::CurrencyResult amount =
        modConversion::CurrencyFromText(ToUtf8(price), UserLocale().Money());
    if (amount.error != modConversion::ConversionError::None)
        return u"This is no amount of money: the line will be rejected.";
    if (amount.value < Currency())
        return u"A price below zero is imported as zero.";
    if (amount.value > kPriceCeiling)
        return u"A price above the highest one is imported as zero.";
    return {};
}

} // namespace

frmProdImportPreview::frmProdImportPreview()
    : m_form(Toolkit().CreateForm(u"frmProdImportPreview")), m_flexGrid(m_form->Grid(u"flexGrid"))
{
    IButton& close = m_form->Button(u"cmdClose");
    m_form->SetCaption(u"Import Preview");
    m_form->Label(u"lblPreview").SetCaption(u"The first lines of the file as products");
    close.SetCaption(u"Close");
    m_form->SetFirstFocus(m_flexGrid);
    m_form->SetDefaultButton(close);
    close.Click.Connect([this] { m_form->EndModal(); });
    m_form->Escape.Connect([this] { m_form->EndModal(); });
    m_form->CloseBox.Connect([this] { m_form->EndModal(); });
}

void frmProdImportPreview::DialogInit(const CsvSample& sample, const ProductMapping& mapping)
{
    const RedrawPause pause(m_flexGrid);
    m_flexGrid.SetRows(static_cast<std::int32_t>(sample.lines.size()) + 1);
    m_flexGrid.SetCols(kImportFields);
    m_flexGrid.SetFixedRows(1);
    m_flexGrid.SetSelectionMode(SelectionMode::WholeRow);
    m_flexGrid.SetColType(kImportUnitPrice, CellType::Currency);
    m_flexGrid.SetColFormat(kImportUnitPrice, CurrencyFormat(u"$###,##0.00", AmountCells::Typed));
    for (std::int32_t field = 0; field < static_cast<std::int32_t>(kImportFields); ++field)
        m_flexGrid.SetCellText(0, field, kTitles[static_cast<std::size_t>(field)]);
    for (std::size_t line = 0; line < sample.lines.size(); ++line) {
        const auto row = static_cast<std::int32_t>(line) + 1;
        for (std::size_t field = 0; field < mapping.size(); ++field) {
            if (mapping[field] < 0)
                continue;
            const std::u16string& text = sample.lines[line].at(static_cast<std::size_t>(mapping[field]));
            m_flexGrid.SetCellText(row, static_cast<std::int32_t>(field), text);
            if (field == kImportUnitPrice)
                m_flexGrid.SetCellMark(row, kImportUnitPrice, DoubtAbout(text));
        }
    }
    m_flexGrid.FitColumns();
}

void frmProdImportPreview::ShowModal()
{
    m_form->ShowModal();
}

} // namespace KestrinProductEditor
