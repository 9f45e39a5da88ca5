// SPDX-License-Identifier: MIT
#include "frame/Traced.h"

#include "fake/RecordingTrace.h"
#include "platform/Text.h"
#include "support/ErrorOf.h"

#include <KestrinProductEditor/HostComponents.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;

constexpr ErrorContext kOuter = ErrorContext::ProductLkpMgr_BinaryProductImport;
constexpr ErrorContext kInner = ErrorContext::ProductLkpMgr_LoadProductRS;
constexpr const char* kEnterOuter = "enter KestrinProductMgr.ProductLkpMgr::BinaryProductImport";
constexpr const char* kExitOuter = "exit KestrinProductMgr.ProductLkpMgr::BinaryProductImport";
constexpr const char* kEnterInner = "enter KestrinProductMgr.ProductLkpMgr::LoadProductRS";

class TracedTest : public testing::Test
{
protected:
    std::shared_ptr<RecordingTrace> m_trace = std::make_shared<RecordingTrace>();
    ScopedTrace m_scopedTrace{m_trace.get()};
};

[[noreturn]] void Raise(std::int32_t number)
{
    throw AutomationError(number, u"the source", u"the description");
}

} // namespace

TEST_F(TracedTest, ReturnsTheResultOfItsBody)
{
    EXPECT_EQ(Traced(kOuter, [] { return 5; }), 5);
    EXPECT_THAT(m_trace->Calls(), ElementsAre(kEnterOuter, kExitOuter));
}

TEST_F(TracedTest, ReportsAFailureWithoutAnExit)
{
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] { Raise(53); }); }), 53);
    EXPECT_THAT(m_trace->Calls(), ElementsAre(kEnterOuter, "error 53", "number 53"));
}

TEST_F(TracedTest, ReportsANestedFailureAtEachLevelInnermostFirst)
{
    m_trace->AnswerInTurn({1001, 1002});
    const auto error = ErrorOf([] { Traced(kOuter, [] { Traced(kInner, [] { Raise(53); }); }); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 1002);
    EXPECT_THAT(m_trace->Calls(),
                ElementsAre(kEnterOuter, kEnterInner, "error 53", "number 53", "error 1001", "number 1001"));
}

TEST_F(TracedTest, KeepsSourceAndDescriptionThroughAllLevels)
{
    m_trace->AnswerInTurn({1001, 1002});
    const auto error = ErrorOf([] { Traced(kOuter, [] { Traced(kInner, [] { Raise(53); }); }); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Source(), u"the source");
    EXPECT_EQ(error->Description(), u"the description");
    ASSERT_EQ(m_trace->Failures().size(), 2U);
    for (const RecordingTrace::Failure& failure : m_trace->Failures()) {
        EXPECT_EQ(failure.source, "the source");
        EXPECT_EQ(failure.description, "the description");
    }
}

TEST_F(TracedTest, LosesNoErrorToATraceThatAnswersZero)
{
    m_trace->AnswerWith(0);
    const auto error = ErrorOf([] { Traced(kOuter, [] { Raise(53); }); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 53);
    EXPECT_EQ(error->Description(), u"the description");
}

TEST_F(TracedTest, AsksTwiceForTheNumberOfATextOfItsOwn)
{
    m_trace->AnswerInTurn({1001, 1002});
    const auto error = ErrorOf([] { Traced(kOuter, [] { RaiseOwn(kOuter, u"Nothing there"); }); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 1002);
    EXPECT_EQ(error->Source(), u"KestrinProductMgr.ProductLkpMgr::BinaryProductImport");
    EXPECT_EQ(error->Description(), u"Nothing there");
    EXPECT_THAT(m_trace->Calls(), ElementsAre(kEnterOuter, "number none", "error 1001", "number 1001"));
}

TEST_F(TracedTest, GivesATextOfItsOwnTheComponentsNumberWhenTheTraceAnswersZero)
{
    m_trace->AnswerWith(0);
    const auto error = ErrorOf([] { Traced(kOuter, [] { RaiseOwn(kOuter, u"Nothing there"); }); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), -2147220503);
    EXPECT_EQ(error->Description(), u"Nothing there");
}

TEST_F(TracedTest, DoesNotRunItsBodyWhenTheEntryFails)
{
    m_trace->FailOn(kEnterOuter, 4711);
    bool hasRun = false;
    EXPECT_EQ(ErrorNumberOf([&] { Traced(kOuter, [&] { hasRun = true; }); }), 4711);
    EXPECT_FALSE(hasRun);
    EXPECT_THAT(m_trace->Calls(), ElementsAre(kEnterOuter, "error 4711", "number 4711"));
}

TEST_F(TracedTest, FailsWhenTheExitFails)
{
    m_trace->FailOn(kExitOuter, 4711);
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] {}); }), 4711);
    EXPECT_THAT(m_trace->Calls(), ElementsAre(kEnterOuter, kExitOuter, "error 4711", "number 4711"));
}

TEST_F(TracedTest, EndsWithTheErrorOfAFailingTraceErrorAndAsksForNoNumber)
{
    m_trace->FailOn("error ", 4711);
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] { Raise(53); }); }), 4711);
    EXPECT_THAT(m_trace->Calls(), ElementsAre(kEnterOuter, "error 53"));
}

TEST_F(TracedTest, EndsWithTheErrorOfAFailingTraceErrNumber)
{
    m_trace->FailOn("number ", 4711);
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] { Raise(53); }); }), 4711);
}

TEST_F(TracedTest, ReportsAFailingNumberForATextOfItsOwnAsItsFailure)
{
    m_trace->FailAtCall(2, 4711);
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] { RaiseOwn(kOuter, u"Nothing there"); }); }), 4711);
    EXPECT_THAT(m_trace->Calls(), ElementsAre(kEnterOuter, "number none", "error 4711", "number 4711"));
}

TEST_F(TracedTest, EndsWellWithADefaultResultWhereItSwallows)
{
    EXPECT_EQ(Traced<Ending::Swallow>(kOuter, []() -> int { Raise(53); }), 0);
    EXPECT_THAT(m_trace->Calls(), ElementsAre(kEnterOuter, "error 53"));
}

TEST_F(TracedTest, SwallowsAFailingTraceToo)
{
    m_trace->FailOn("error ", 4711);
    EXPECT_NO_THROW(Traced<Ending::Swallow>(kOuter, [] { Raise(53); }));
    m_trace->FailOn("enter ", 4711);
    EXPECT_NO_THROW(Traced<Ending::Swallow>(kOuter, [] {}));
    m_trace->FailOn("exit ", 4711);
    EXPECT_NO_THROW(Traced<Ending::Swallow>(kOuter, [] {}));
}

TEST_F(TracedTest, TurnsEveryExceptionIntoAnAutomationError)
{
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] { throw std::bad_alloc(); }); }), 7);
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] { throw std::length_error("long"); }); }), 7);
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] { throw 5; }); }), 51);
    const auto error = ErrorOf([] { Traced(kOuter, [] { throw std::runtime_error("why"); }); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 51);
    EXPECT_EQ(ToUtf8(error->Description()), "Internal error: why");
}

TEST_F(TracedTest, FailsPlainlyOnAThreadWithoutATrace)
{
    const ScopedTrace none(nullptr);
    bool hasRun = false;
    EXPECT_EQ(ErrorNumberOf([&] { Traced(kOuter, [&] { hasRun = true; }); }), kErrObjectNotSet);
    EXPECT_NO_THROW(Traced<Ending::Swallow>(kOuter, [&] { hasRun = true; }));
    EXPECT_FALSE(hasRun);
}

TEST_F(TracedTest, HasAPendingErrorInItsHandlerOnly)
{
    EXPECT_EQ(PendingError(), nullptr);
    const AutomationError* pending = nullptr;
    m_trace->onCall = [&](const std::string& call) {
        if (call.starts_with("error ") || call.starts_with("number ")) {
            ASSERT_NE(PendingError(), nullptr) << call;
            EXPECT_EQ(PendingError()->Number(), 53);
            pending = PendingError();
        } else {
            EXPECT_EQ(PendingError(), nullptr) << call;
        }
    };
    static_cast<void>(ErrorNumberOf([] { Traced(kOuter, [] { Raise(53); }); }));
    EXPECT_NE(pending, nullptr);
    EXPECT_EQ(PendingError(), nullptr);
    m_trace->onCall = nullptr;
    Traced<Ending::Swallow>(kOuter, [] { Raise(53); });
    EXPECT_EQ(PendingError(), nullptr);
}

TEST_F(TracedTest, GivesBackTheOuterPendingErrorWhenATraceUsesTheComponent)
{
    std::vector<std::int32_t> seen;
    m_trace->onCall = [&](const std::string& call) {
        if (call != "error 53")
            return;
        static_cast<void>(ErrorNumberOf([] { Traced(kInner, [] { Raise(76); }); }));
        ASSERT_NE(PendingError(), nullptr);
        seen.push_back(PendingError()->Number());
    };
    EXPECT_EQ(ErrorNumberOf([] { Traced(kOuter, [] { Raise(53); }); }), 53);
    EXPECT_THAT(seen, ElementsAre(53));
}

} // namespace KestrinProductEditor
