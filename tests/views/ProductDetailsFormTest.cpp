// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductDetails.h>

#include "fake/RecordingTrace.h"
#include "support/CapturingToolkit.h"
#include "support/ErrorOf.h"
#include "support/User.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <map>
#include <string>

namespace KestrinProductEditor {

namespace {

/// Half a pixel may be lost in each direction.
constexpr float kPixel = 15;

constexpr std::array kLabels = {u"lblProductName", u"lblPartNum", u"lblUnitPrice", u"lblNote"};
constexpr std::array kFullFields = {u"txtProductName", u"txtPartNum", u"txtNote"};
constexpr std::array kFields = {u"txtProductName", u"txtPartNum", u"txtUnitPrice", u"txtNote"};
constexpr const char16_t* kPriceField = u"txtUnitPrice";

class AnyObject final : public AutomationObject
{
};

class ProductDetailsForm : public testing::Test
{
protected:
    [[nodiscard]] IUserControl& Surface() const { return m_toolkit.Surface(); }
    [[nodiscard]] ControlPlace Place(std::u16string_view control) const { return Surface().Place(control); }
    [[nodiscard]] std::u16string Caption(std::u16string_view label) const
    {
        return Surface().Label(label).Caption();
    }
    void Resize(float width, float height = 4500) const
    {
        m_user->ResizeUserControl(Surface(), width, height);
    }

    /// Everything that shows: captions, texts and places.
    [[nodiscard]] std::map<std::u16string, std::u16string> Look() const
    {
        std::map<std::u16string, std::u16string> look;
        const auto add = [&](std::u16string_view control, std::u16string text) {
            const ControlPlace place = Place(control);
            for (const float length : {place.left, place.top, place.width, place.height}) {
                const std::string digits = std::to_string(length);
                text += u' ' + std::u16string(digits.begin(), digits.end());
            }
            look.emplace(control, std::move(text));
        };
        for (const auto* const label : kLabels)
            add(label, Caption(label));
        for (const auto* const field : kFields)
            add(field, Surface().TextBox(field).Text());
        add(u"cmdNew", Surface().Button(u"cmdNew").Caption());
        add(u"fraBorder", {});
        return look;
    }

    std::shared_ptr<RecordingTrace> m_trace = std::make_shared<RecordingTrace>();
    ScopedTrace m_scopedTrace{m_trace.get()};
    std::unique_ptr<IUser> m_user = MakeUser();
    CapturingToolkit m_toolkit{m_user->Screen()};
};

constexpr const char* kContext = "KestrinProductEditor.ProductDetails::Init";

} // namespace

TEST_F(ProductDetailsForm, HasItsCaptionsAfterTheFirstResize)
{
    const auto details = ProductDetails::Create();
    for (const auto* const label : kLabels)
        EXPECT_EQ(Caption(label), u"###");
    Resize(6000);
    EXPECT_EQ(Caption(u"lblProductName"), u"Name");
    EXPECT_EQ(Caption(u"lblPartNum"), u"Part#");
    EXPECT_EQ(Caption(u"lblUnitPrice"), u"Unit Price");
    EXPECT_EQ(Caption(u"lblNote"), u"Note");
    for (const auto* const field : kFields)
        EXPECT_EQ(Surface().TextBox(field).Text(), u"");
    EXPECT_EQ(Surface().Button(u"cmdNew").Caption(), u"");
}

TEST_F(ProductDetailsForm, LaysItselfOutAtEveryWidth)
{
    const auto details = ProductDetails::Create();
    for (const float width : {6000.F, 1800.F, 12000.F, 3030.F}) {
        Resize(width);
        const ControlPlace frame = Place(u"fraBorder");
        EXPECT_EQ(frame.left, 0);
        EXPECT_EQ(frame.top, 0);
        EXPECT_NEAR(frame.width, width, kPixel);
        EXPECT_NEAR(frame.height, 4500, kPixel);
        for (const auto* const label : kLabels)
            EXPECT_NEAR(Place(label).left, 240, kPixel);
        for (const auto* const field : kFields)
            EXPECT_NEAR(Place(field).left, 1440, kPixel);
        for (const auto* const field : kFullFields)
            EXPECT_NEAR(Place(field).width, frame.width - 1680, kPixel);
        EXPECT_NEAR(Place(kPriceField).width, (frame.width - 1680) * 0.75F, kPixel);
    }
}

TEST_F(ProductDetailsForm, KeepsEverythingVertical)
{
    const auto details = ProductDetails::Create();
    Resize(6000);
    std::map<std::u16string, ControlPlace> before;
    for (const auto* const control : kLabels)
        before[control] = Place(control);
    for (const auto* const control : kFields)
        before[control] = Place(control);
    Resize(9000, 7500);
    for (const auto& [control, place] : before) {
        EXPECT_EQ(Place(control).top, place.top);
        EXPECT_EQ(Place(control).height, place.height);
    }
    for (const auto* const label : kLabels)
        EXPECT_EQ(Place(label).width, before[label].width);
}

TEST_F(ProductDetailsForm, LeavesFieldsWhereTheyAreWhenItIsTooNarrowForThem)
{
    const auto details = ProductDetails::Create();
    Resize(6000);
    std::map<std::u16string, ControlPlace> before;
    for (const auto* const field : kFields)
        before[field] = Place(field);
    Resize(1500);
    for (const auto& [field, place] : before) {
        EXPECT_EQ(Place(field).left, place.left);
        EXPECT_EQ(Place(field).width, place.width);
    }
    for (const auto* const label : kLabels)
        EXPECT_NEAR(Place(label).left, 240, kPixel);
    EXPECT_NEAR(Place(u"fraBorder").width, 1500, kPixel);
    Resize(3000);
    EXPECT_NEAR(Place(u"txtNote").width, 1320, kPixel);
}

TEST_F(ProductDetailsForm, SkipsEachStepOfAResizeThatFailsAndNoOther)
{
    const auto details = ProductDetails::Create();
    FailingUserControl& control = m_toolkit.Last();
    Resize(6000);
    control.FailAtCall(0);
    Resize(6300);
    const std::size_t calls = control.Calls();
    ASSERT_GT(calls, 20U);

    for (std::size_t call = 1; call <= calls; ++call) {
        for (const auto* const label : kLabels) {
            Surface().Label(label).SetCaption(u"?");
            Surface().Move(label, {.left = 600, .top = 0, .width = 600, .height = 300});
        }
        control.FailAtCall(call);
        Resize(call % 2 == 0 ? 6300.F : 7200.F);
        control.FailAtCall(0);
        int faults = 0;
        for (const auto* const label : kLabels) {
            faults += Caption(label) == u"?" ? 1 : 0;
            faults += Place(label).left > 300 ? 1 : 0;
        }
        EXPECT_LE(faults, 1) << "failing at call " << call;
        Resize(6000);
        for (const auto* const field : kFields)
            EXPECT_NEAR(Place(field).left, 1440, kPixel);
    }
}

TEST_F(ProductDetailsForm, ChangesNothingWhenItsButtonIsClicked)
{
    const auto details = ProductDetails::Create();
    Resize(6000);
    const auto before = Look();
    m_trace->Forget();
    m_user->Click(u"cmdNew");
    EXPECT_EQ(Look(), before);
    EXPECT_TRUE(m_trace->Calls().empty());
}

TEST_F(ProductDetailsForm, ChangesNothingAndKeepsNothingInInit)
{
    const auto details = ProductDetails::Create();
    Resize(6000);
    const auto before = Look();
    auto object = std::make_shared<AnyObject>();
    const std::weak_ptr<AnyObject> observed = object;
    details->Init(object);
    details->Init(nullptr);
    details->Init(details);
    object.reset();
    EXPECT_TRUE(observed.expired());
    EXPECT_EQ(Look(), before);
    EXPECT_EQ(details.use_count(), 1);
}

TEST_F(ProductDetailsForm, ReportsEntryAndExitOfInitAndNothingElse)
{
    const auto details = ProductDetails::Create();
    Resize(6000);
    EXPECT_TRUE(m_trace->Calls().empty());
    details->Init(nullptr);
    EXPECT_THAT(m_trace->Calls(),
                testing::ElementsAre(std::string("enter ") + kContext, std::string("exit ") + kContext));
}

TEST_F(ProductDetailsForm, PassesOnAFailureOfInitUnderTheNumberThatTheTraceAnswers)
{
    const auto details = ProductDetails::Create();
    for (const std::string call : {"enter ", "exit "}) {
        m_trace->Forget();
        m_trace->FailOn(call + kContext, 4711);
        EXPECT_EQ(ErrorNumberOf([&] { details->Init(nullptr); }), 4711);
        EXPECT_EQ(m_trace->CallsLike("error "), std::vector<std::string>{"error 4711"});
        m_trace->AnswerInTurn({1234});
        EXPECT_EQ(ErrorNumberOf([&] { details->Init(nullptr); }), 1234);
        m_trace->AnswerInTurn({0});
        EXPECT_EQ(ErrorNumberOf([&] { details->Init(nullptr); }), 4711);
        m_trace->Heal();
    }
}

TEST(ProductDetails, IsNotThereWithoutWindows)
{
    RecordingTrace trace;
    const ScopedTrace scope(&trace);
    const NoWindows toolkit;
    EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(ProductDetails::Create()); }), kErrActionNotSupported);
}

} // namespace KestrinProductEditor
