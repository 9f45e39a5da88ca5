// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductDetails.h>

#include <KestrinProductEditor/ProductLkpMgr.h>

#include "frame/SkipFailure.h"
#include "frame/Traced.h"
#include "frame/modInit.h"
#include "frame/modResourceUtils.h"
#include "platform/ui/Toolkit.h"
#include "views/modRscProductDetails.h"

#include <array>
#include <cmath>

namespace KestrinProductEditor {

namespace {

// Twips.
constexpr float kLabelLeft = 240;
constexpr float kFieldMargins = 1680;
constexpr float kUnitPricePart = 0.75F;

struct LabelOfField
{
    std::u16string_view label;
    std::int32_t caption;
};

constexpr std::array kLabels = {
    LabelOfField{u"lblProductName", modRscProductDetails::kName},
    LabelOfField{u"lblPartNum", modRscProductDetails::kPartNum},
    LabelOfField{u"lblUnitPrice", modRscProductDetails::kUnitPrice},
    LabelOfField{u"lblNote", modRscProductDetails::kNote},
};

} // namespace

class ProductDetails::Impl
{
public:
    Impl() : m_control(Toolkit().CreateUserControl(u"ProductDetails"))
    {
        for (const LabelOfField& each : kLabels)
            m_control->Label(each.label).SetCaption(u"###");
        m_control->Button(u"cmdNew").Click.Connect([this] { cmdNew_Click(); });
        m_control->Resize.Connect([this] { PrvResize(); });
    }

    [[nodiscard]] void* NativeHandle() const noexcept { return m_control->NativeHandle(); }

private:
    void PrvResize()
    {
        SkipFailure([this] {
            m_control->Move(
                u"fraBorder",
                {.left = 0, .top = 0, .width = m_control->InnerWidth(), .height = m_control->InnerHeight()});
        });
        PrvLayout();
    }

    void PrvLayout()
    {
        for (const LabelOfField& each : kLabels)
            SkipFailure([&] {
                m_control->Label(each.label).SetCaption(modResourceUtils::GetResString(each.caption));
            });

        // The embedding host's contract holds that the widest caption is measured, and used for nothing.
        std::int32_t widest = 0;
        for (const LabelOfField& each : kLabels)
            SkipFailure([&] { widest = Max(widest, PrvCaptionWidth(each.label)); });

        float fieldWidth = 0;
        float fieldLeft = 0;
        SkipFailure([&] { fieldWidth = PrvFrameWidth() - kFieldMargins; });
        SkipFailure([&] { fieldLeft = PrvFrameWidth() - fieldWidth - kLabelLeft; });

        for (const LabelOfField& each : kLabels)
            SkipFailure([&] {
                ControlPlace place = m_control->Place(each.label);
                place.left = kLabelLeft;
                m_control->Move(each.label, place);
            });
        for (const std::u16string_view field : {u"txtProductName", u"txtPartNum", u"txtNote"})
            SkipFailure([&] { PrvMoveField(field, fieldLeft, fieldWidth); });
        SkipFailure([&] { PrvMoveField(u"txtUnitPrice", fieldLeft, fieldWidth * kUnitPricePart); });
    }

    [[nodiscard]] float PrvFrameWidth() const { return m_control->Place(u"fraBorder").width; }

    [[nodiscard]] std::int32_t PrvCaptionWidth(std::u16string_view label) const
    {
        return static_cast<std::int32_t>(std::lrint(m_control->TextWidth(m_control->Label(label).Caption())));
    }

    void PrvMoveField(std::u16string_view field, float left, float width)
    {
        ControlPlace place = m_control->Place(field);
        place.left = left;
        place.width = width;
        m_control->Move(field, place);
    }

    [[nodiscard]] static std::int32_t Max(std::int32_t lFirst, std::int32_t lSecond)
    {
        return lFirst > lSecond ? lFirst : lSecond;
    }

    void cmdNew_Click() { PrvNew(); }

    void PrvNew() {}

    // Nothing reads or writes these two: the embedding host's contract holds them.
    std::shared_ptr<ProductLkpMgr> m_objProductLkpMgr;
    [[maybe_unused]] std::int32_t m_lCurrentRow = -1;

    std::unique_ptr<IUserControl> m_control;
};

ProductDetails::ProductDetails() : m_impl(std::make_unique<Impl>()) {}

ProductDetails::~ProductDetails() = default;

std::shared_ptr<ProductDetails> ProductDetails::Create()
{
    modInit::EnsureMain();
    try {
        return std::shared_ptr<ProductDetails>(new ProductDetails);
    } catch (...) {
        throw ErrorInFlight();
    }
}

void ProductDetails::Init(const std::shared_ptr<AutomationObject>& /*m_objProducts*/)
{
    const auto self = shared_from_this();
    Traced(ErrorContext::ProductDetails_Init, [] {
        // The argument is assigned to itself, not to the control's own store: the embedding host's contract
        // holds that nothing is kept.
    });
}

void* ProductDetails::NativeHandle() const noexcept
{
    return m_impl->NativeHandle();
}

} // namespace KestrinProductEditor
