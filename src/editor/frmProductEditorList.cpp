// SPDX-License-Identifier: MIT
#include "editor/frmProductEditor.h"

#include "editor/ScopedFlag.h"
#include "frame/SkipFailure.h"
#include "frame/Traced.h"
#include "frame/modResourceDefs.h"
#include "frame/modResourceUtils.h"
#include "platform/Settings.h"
#include "platform/Text.h"
#include "util/CurrencyFormat.h"
#include "util/modConversion.h"

#include <string>
#include <utility>

namespace KestrinProductEditor {

namespace {

enum Column : std::int32_t
{
    kUnitPriceColumn = 2,
    kRowIDColumn = 3,
    kColumns = 4
};

constexpr std::u16string_view kApplication = u"Salvo";
constexpr std::u16string_view kSection = u"KestrinProductEditor_Prefs";
constexpr std::int32_t kFirstNameWidth = 2000;
constexpr char16_t kBetweenWidths = u'~';

[[nodiscard]] std::u16string SettingsKey(std::u16string_view sViewName)
{
    return u"ViewSettings_" + std::u16string(sViewName);
}

} // namespace

void frmProductEditor::PrvInitView()
{
    Traced(ErrorContext::frmProductEditor_PrvInitView, [&] {
        const RedrawPause pause(m_flexGrid);
        PrvShapeList();
        PrvReadPrefs(u"ProductEditorDlg");
    });
}

void frmProductEditor::PrvShapeList()
{
    m_flexGrid.SetRows(1);
    m_flexGrid.SetCols(kColumns);
    m_flexGrid.SetFixedRows(1);
    m_flexGrid.SetFixedCols(0);
    m_flexGrid.SetSelectionMode(SelectionMode::ListBox);
    m_flexGrid.SetColType(kUnitPriceColumn, CellType::Currency);
    m_flexGrid.SetColFormat(kUnitPriceColumn, CurrencyFormat(u"$#,##0.00"));
    m_flexGrid.SetColHidden(kRowIDColumn, true);
}

void frmProductEditor::PrvReadPrefs(std::u16string_view sViewName)
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_PrvReadPrefs, [&] {
        const std::u16string stored =
            Settings().GetSetting(kApplication, kSection, SettingsKey(sViewName), u"");
        if (stored.empty()) {
            m_flexGrid.SetColWidth(0, kFirstNameWidth);
            return;
        }
        std::u16string_view rest = stored;
        for (std::int32_t col = 0; col < kColumns; ++col) {
            if (rest.data() == nullptr)
                throw AutomationError(kErrSubscriptOutOfRange);
            const std::size_t end = rest.find(kBetweenWidths);
            m_flexGrid.SetColWidth(col, modConversion::ToLong(rest.substr(0, end)));
            rest = end == std::u16string_view::npos ? std::u16string_view() : rest.substr(end + 1);
        }
    });
}

void frmProductEditor::PrvSaveViewPrefs(std::u16string_view sViewName)
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_PrvSaveViewPrefs, [&] {
        std::u16string widths;
        for (std::int32_t col = 0; col < kColumns; ++col) {
            if (col > 0)
                widths += kBetweenWidths;
            widths += ToUtf16(std::to_string(m_flexGrid.ColWidth(col)));
        }
        Settings().SaveSetting(kApplication, kSection, SettingsKey(sViewName), widths);
    });
}

void frmProductEditor::PrvRefreshView(bool /*bRefresh*/)
{
    Traced(ErrorContext::frmProductEditor_PrvRefreshView, [&] {
        m_flexGrid.SetDataSource(nullptr, nullptr);
        m_flexGrid.SetDataSource(m_objFlexDataSrc, m_objFlexDataSrc);
        m_flexGrid.Refresh();
        if (m_objProdLkpMgr == nullptr)
            return;
        m_lblProductView.SetCaption(modResourceUtils::GetResString(modResourceDefs::kProductListTitle) +
                                    u" (Count:" + ToUtf16(std::to_string(m_objProdLkpMgr->Count())) + u")");
    });
}

/// Does a step, and binds the list again also when it fails: a list that shows rows which are no more lets
/// the next act hit another product.
void frmProductEditor::PrvRefreshViewAfter(const std::function<void()>& step)
{
    try {
        step();
    } catch (...) {
        SkipFailure([&] { PrvRefreshView(true); });
        throw;
    }
    PrvRefreshView(true);
}

std::int32_t frmProductEditor::PrvGetRowID(std::int32_t row) const
{
    const std::u16string text = m_flexGrid.CellText(row, kRowIDColumn);
    return text.empty() ? -1 : modConversion::ToLong(text);
}

std::int32_t frmProductEditor::PrvGetSelectedRowID() const
{
    const std::int32_t row = m_flexGrid.CurrentRow();
    return m_flexGrid.Rows() >= 2 && row >= 1 ? PrvGetRowID(row) : -1;
}

void frmProductEditor::flexGrid_GotFocus()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_flexGrid_GotFocus, [&] {
        const ScopedFlag inGridGotFocus(m_bInGridGotFocus);
        const std::int32_t rowID = PrvGetSelectedRowID();
        PrvRefreshViewAfter([&] { PrvShowCurrentRow(); });
        // Another dialog may have moved or deleted rows since the list was bound last: what stood in the
        // current row's place was not the current row.
        if (PrvGetSelectedRowID() != rowID)
            PrvShowCurrentRow();
    });
    if (!m_sImportFile.empty() && !m_bNoList)
        SSActiveToolBars1_ToolClick(u"ID_Import");
}

void frmProductEditor::flexGrid_RowColChange()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_flexGrid_RowColChange, [&] {
        if (m_bInGridGotFocus)
            return;
        PrvShowCurrentRow();
        PrvRefreshView(false);
    });
}

void frmProductEditor::flexGrid_DblClick()
{
    Traced<Ending::Swallow>(ErrorContext::frmProductEditor_flexGrid_DblClick, [&] { PrvEditProduct(false); });
}

} // namespace KestrinProductEditor
