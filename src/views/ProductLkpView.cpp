// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductLkpView.h>

#include "frame/SkipFailure.h"
#include "frame/Traced.h"
#include "frame/modInit.h"
#include "frame/modResourceDefs.h"
#include "frame/modResourceUtils.h"
#include "platform/ui/Toolkit.h"
#include "util/CurrencyFormat.h"
#include "util/modConversion.h"
#include "views/FlexDataSrc.h"

#include <limits>

namespace KestrinProductEditor {

namespace {

constexpr std::int32_t kNameCol = 0;
constexpr std::int32_t kPartNumCol = 1;
constexpr std::int32_t kUnitPriceCol = 2;
constexpr std::int32_t kRowIDCol = 3;
constexpr std::int32_t kNameWidth = 2000;

} // namespace

class ProductLkpView::Impl
{
public:
    Impl() : m_control(Toolkit().CreateUserControl(u"ProductLkpView")), m_grid(m_control->Grid(u"flexGrid"))
    {
        PrvSetUpGrid();
        m_control->Resize.Connect([this] { PrvFillWithGrid(); });
    }

    void Init()
    {
        // What the earlier store saves as it goes is what the new one is to read.
        SkipFailure([this] { m_grid.SetDataSource(nullptr, nullptr); });
        m_objFlexDataSrc.reset();
        m_objProductLkpMgr.reset();

        SkipFailure([this] { m_objProductLkpMgr = ProductLkpMgr::Create(); });
        SkipFailure([this] { m_objFlexDataSrc = std::make_shared<FlexDataSrc>(); });
        SkipFailure([this] {
            if (m_objFlexDataSrc)
                m_objFlexDataSrc->SetDataSource(m_objProductLkpMgr);
        });
        SkipFailure([this] { m_grid.SetDataSource(m_objFlexDataSrc, m_objFlexDataSrc); });
        // The adaptor has a fourth column, which is not for people.
        SkipFailure([this] { m_grid.SetColHidden(kRowIDCol, true); });
        SkipFailure([this] { m_grid.Refresh(); });
    }

    void ResetFlexDataSource() noexcept
    {
        SkipFailure([this] { m_grid.SetDataSource(nullptr, nullptr); });
    }

    void Refresh()
    {
        if (!m_objProductLkpMgr)
            m_objProductLkpMgr = ProductLkpMgr::Create();
        // A host's trace may call Init in the middle of the walk.
        const std::shared_ptr<ProductLkpMgr> kept = m_objProductLkpMgr;
        ProductLkpMgr& store = *kept;
        const bool isBeforeFirst = store.BOF();
        const bool isAfterLast = store.EOF();
        if (!isBeforeFirst || !isAfterLast)
            store.MoveFirst();
        const std::int32_t count = store.Count();
        if (count == std::numeric_limits<std::int32_t>::max())
            throw AutomationError(kErrOverflow);
        m_grid.SetRows(count + 1);
        // The embedding host's contract holds that the row does not move on.
        constexpr std::int32_t kRow = 1;
        for (; !store.EOF(); store.MoveNext()) {
            m_grid.SetCellText(kRow, kNameCol, modConversion::ToText(store.Fields(PF_Name)));
            m_grid.SetCellText(kRow, kPartNumCol, modConversion::ToText(store.Fields(PF_PartNum)));
            m_grid.SetCellText(kRow, kUnitPriceCol, modConversion::ToText(store.Fields(PF_UnitPrice)));
        }
    }

    [[nodiscard]] const std::shared_ptr<ProductLkpMgr>& Store() const noexcept { return m_objProductLkpMgr; }
    [[nodiscard]] void* NativeHandle() const noexcept { return m_control->NativeHandle(); }

private:
    /// The look of the editor's list.
    void PrvSetUpGrid()
    {
        m_grid.SetRows(1);
        m_grid.SetCols(3);
        m_grid.SetFixedRows(1);
        m_grid.SetFixedCols(0);
        m_grid.SetSelectionMode(SelectionMode::ListBox);
        m_grid.SetColWidth(kNameCol, kNameWidth);
        m_grid.SetColType(kUnitPriceCol, CellType::Currency);
        m_grid.SetColFormat(kUnitPriceCol, CurrencyFormat(u"$#,##0.00"));
    }

    void PrvFillWithGrid()
    {
        m_control->Move(
            u"flexGrid",
            {.left = 0, .top = 0, .width = m_control->InnerWidth(), .height = m_control->InnerHeight()});
    }

    /// Nothing calls it: a bound list has its headings from the adaptor. The embedding host's contract holds
    /// that it is there.
    void PrvSetupColumns()
    {
        using namespace modResourceDefs;
        m_grid.SetCellText(0, kNameCol, modResourceUtils::GetResString(kColumnProductName));
        m_grid.SetCellText(0, kPartNumCol, modResourceUtils::GetResString(kColumnPartNum));
        m_grid.SetCellText(0, kUnitPriceCol, modResourceUtils::GetResString(kColumnUnitPrice));
        m_grid.SetColType(kUnitPriceCol, CellType::Currency);
        m_grid.SetColFormat(kUnitPriceCol, CurrencyFormat(u"$###,##0.00"));
    }

    std::shared_ptr<ProductLkpMgr> m_objProductLkpMgr;
    std::shared_ptr<FlexDataSrc> m_objFlexDataSrc;
    std::unique_ptr<IUserControl> m_control;
    IGrid& m_grid;
};

ProductLkpView::ProductLkpView() : m_impl(std::make_unique<Impl>()) {}

ProductLkpView::~ProductLkpView() = default;

std::shared_ptr<ProductLkpView> ProductLkpView::Create()
{
    modInit::EnsureMain();
    try {
        return std::shared_ptr<ProductLkpView>(new ProductLkpView);
    } catch (...) {
        throw ErrorInFlight();
    }
}

void ProductLkpView::Refresh()
{
    const auto self = shared_from_this();
    try {
        m_impl->Refresh();
    } catch (...) {
        throw ErrorInFlight();
    }
}

Variant ProductLkpView::ResetFlexDataSource()
{
    m_impl->ResetFlexDataSource();
    return {};
}

std::shared_ptr<ProductLkpMgr> ProductLkpView::GetDataSource() const noexcept
{
    return m_impl->Store();
}

void ProductLkpView::Init()
{
    const auto self = shared_from_this();
    m_impl->Init();
}

void ProductLkpView::NotifyProductAdd() {}

void ProductLkpView::NotifyProductDelete() {}

void ProductLkpView::NotifyProductUpdate() {}

void* ProductLkpView::NativeHandle() const noexcept
{
    return m_impl->NativeHandle();
}

} // namespace KestrinProductEditor
