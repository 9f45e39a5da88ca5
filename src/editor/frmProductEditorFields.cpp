// SPDX-License-Identifier: MIT
#include "editor/frmProductEditor.h"

#include "editor/ScopedFlag.h"
#include "frame/Traced.h"
#include "platform/Text.h"
#include "util/modConversion.h"

#include <KestrinProductEditor/CorvoProductFields.h>

#include <cstddef>
#include <limits>

namespace KestrinProductEditor {

namespace {

constexpr std::int32_t kPriceDecimals = 2;

// Keys that are characters below the blank.
constexpr std::int32_t kCopyKey = 3;
constexpr std::int32_t kBackspaceKey = 8;
constexpr std::int32_t kPasteKey = 22;
constexpr std::int32_t kCutKey = 24;

void SetTextThatFits(ITextBox& box, std::u16string_view text)
{
    box.SetText(Utf16Head(text, static_cast<std::size_t>(box.MaxLength())));
}

} // namespace

void frmProductEditor::PrvConnectFields()
{
    m_txtProductName.Change.Connect([this] { txtProductName_Change(); });
    m_txtPartNum.Change.Connect([this] { txtPartNum_Change(); });
    m_txtNote.Change.Connect([this] { txtNote_Change(); });
    m_txtUnitPrice.Change.Connect([this] { txtUnitPrice_Change(); });
    m_txtProductName.DblClick.Connect([this] { txtProductName_DblClick(); });
    m_txtPartNum.DblClick.Connect([this] { txtPartNum_DblClick(); });
    m_txtUnitPrice.DblClick.Connect([this] { txtUnitPrice_DblClick(); });
    m_txtNote.DblClick.Connect([this] { txtNote_DblClick(); });
    m_txtUnitPrice.GotFocus.Connect([this] { txtUnitPrice_GotFocus(); });
    m_txtUnitPrice.LostFocus.Connect([this] { txtUnitPrice_LostFocus(); });
    m_txtUnitPrice.KeyPress.Connect([this](std::int32_t& keyAscii) { txtUnitPrice_KeyPress(keyAscii); });
}

void frmProductEditor::PrvLoadProductInfo()
{
    Traced(ErrorContext::frmProductEditor_PrvLoadProductInfo, [&] {
        m_txtProductName.SetMaxLength(PFS_Name);
        m_txtPartNum.SetMaxLength(PFS_PartNum);
        m_txtNote.SetMaxLength(PFS_Note);
        const ScopedFlag loading(m_bLoading);
        // Each write is heard as a change, which writes the text into the product it came from.
        SetTextThatFits(m_txtProductName, std::u16string(m_objProduct.Name()));
        SetTextThatFits(m_txtPartNum, std::u16string(m_objProduct.PartNum()));
        PrvWriteUnitPrice(modConversion::FormatCurrencyText(m_objProduct.UnitPrice(), kPriceDecimals,
                                                            m_sCurrencySymbol, true));
        SetTextThatFits(m_txtNote, std::u16string(m_objProduct.Note()));
    });
}

void frmProductEditor::PrvSaveUnitPriceFld()
{
    Traced(ErrorContext::frmProductEditor_PrvSaveUnitPriceFld, [&] {
        const std::u16string text = m_txtUnitPrice.Text();
        // What the form wrote says less than the price itself: 12.3456 reads "12.35", and -5 would lose its
        // sign.
        if (m_sPriceWritten == text)
            return;
        m_sPriceWritten.reset();
        const Currency amount = modConversion::ParseCurrencyText(text, m_sMonDecimalSep);
        if (amount != m_objProduct.UnitPrice())
            PrvSetDirty(true);
        m_objProduct.UnitPrice(m_objProduct.IsValidUnitPrice(amount) ? amount : Currency());
    });
}

void frmProductEditor::PrvWriteUnitPrice(std::u16string_view text)
{
    m_sPriceWritten = text;
    m_txtUnitPrice.SetText(text);
}

bool frmProductEditor::PrvIsValidPriceKey(std::int32_t keyAscii) const
{
    switch (keyAscii) {
    case kBackspaceKey:
    case kCopyKey:
    case kCutKey:
    case kPasteKey:
        return true;
    default:
        break;
    }
    if (keyAscii > std::numeric_limits<char16_t>::max())
        return false;
    const std::u16string key(1, static_cast<char16_t>(keyAscii));
    return (keyAscii >= u'0' && keyAscii <= u'9') || key == m_sMonDecimalSep || key == m_sMonThousandSep;
}

/// Edits the list's current row when the box is locked; the caret stays in the box.
void frmProductEditor::PrvEditFromBox(ITextBox& box)
{
    if (!box.IsLocked())
        return;
    PrvEditProduct(true);
    box.SetFocus();
}

void frmProductEditor::txtProductName_Change()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtProductName_Change, [&] {
        PrvSetDirty(true);
        m_objProduct.Name(m_txtProductName.Text());
    });
}

void frmProductEditor::txtPartNum_Change()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtPartNum_Change, [&] {
        PrvSetDirty(true);
        m_objProduct.PartNum(m_txtPartNum.Text());
    });
}

void frmProductEditor::txtNote_Change()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtNote_Change, [&] {
        PrvSetDirty(true);
        m_objProduct.Note(m_txtNote.Text());
    });
}

void frmProductEditor::txtUnitPrice_Change()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtUnitPrice_Change, [&] {
        if (!m_bLoading)
            PrvSaveUnitPriceFld();
    });
}

void frmProductEditor::txtProductName_DblClick()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtProductName_DblClick, [&] {
        m_txtProductName.SetFocus();
        if (m_txtProductName.IsLocked())
            PrvEditProduct(true);
    });
}

void frmProductEditor::txtPartNum_DblClick()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtPartNum_DblClick,
                            [&] { PrvEditFromBox(m_txtPartNum); });
}

void frmProductEditor::txtUnitPrice_DblClick()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtUnitPrice_DblClick,
                            [&] { PrvEditFromBox(m_txtUnitPrice); });
}

void frmProductEditor::txtNote_DblClick()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtNote_DblClick,
                            [&] { PrvEditFromBox(m_txtNote); });
}

void frmProductEditor::txtUnitPrice_GotFocus()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtUnitPrice_GotFocus, [&] {
        const ScopedFlag loading(m_bLoading);
        const std::u16string text = modConversion::FormatCurrencyText(
            m_objProduct.UnitPrice(), kPriceDecimals, m_sCurrencySymbol, false);
        PrvWriteUnitPrice(text);
        m_txtUnitPrice.Select(0, static_cast<std::int32_t>(text.size()));
    });
}

void frmProductEditor::txtUnitPrice_LostFocus()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtUnitPrice_LostFocus, [&] {
        PrvSaveUnitPriceFld();
        const ScopedFlag loading(m_bLoading);
        PrvWriteUnitPrice(modConversion::FormatCurrencyText(m_objProduct.UnitPrice(), kPriceDecimals,
                                                            m_sCurrencySymbol, true));
    });
}

void frmProductEditor::txtUnitPrice_KeyPress(std::int32_t& keyAscii)
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_txtUnitPrice_KeyPress, [&] {
        if (!PrvIsValidPriceKey(keyAscii))
            keyAscii = 0;
    });
}

} // namespace KestrinProductEditor
