// SPDX-License-Identifier: MIT
#include "platform/HostServices.h"

#include "platform/Text.h"

#include "support/ErrorOf.h"

#include <gtest/gtest.h>

#include <thread>

namespace KestrinProductEditor {

namespace {

class QuietTrace final : public ITrace
{
public:
    std::int32_t TraceErrNumber() override { return 0; }
    void TraceError(std::u16string_view) override {}
    void TraceEnter(std::u16string_view) override {}
    void TraceExit(std::u16string_view) override {}
};

class EmptyConfig final : public IConfig
{
public:
    Variant Value(std::u16string_view) override { return Variant(); }
};

/// Nothing of an earlier test is registered, and nothing stays for a later one.
class HostServices : public testing::Test
{
protected:
    HostServices() { PrvClear(); }
    ~HostServices() override { PrvClear(); }

private:
    static void PrvClear()
    {
        RegisterHostComponent(kTraceClassID, HostComponentFactory());
        RegisterHostComponent(kConfigClassID, HostComponentFactory());
    }
};

void ExpectCannotCreate(const std::optional<AutomationError>& error, std::string_view classID)
{
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), kErrCannotCreateObject);
    EXPECT_TRUE(error->Description().starts_with(u"ActiveX component can't create object: '" +
                                                 ToUtf16(classID) + u"' "))
        << error->what();
}

} // namespace

TEST_F(HostServices, CreateWhatTheFactoriesMake)
{
    const auto trace = std::make_shared<QuietTrace>();
    const auto config = std::make_shared<EmptyConfig>();
    RegisterHostComponent("CorvoTWrp.Trace", [&] { return trace; });
    RegisterHostComponent("CorvoConf.Config", [&] { return config; });
    EXPECT_EQ(CreateTrace(), trace);
    EXPECT_EQ(CreateConfig(), config);
}

TEST_F(HostServices, CompareClassIdentifiersWithoutCase)
{
    RegisterHostComponent("CORVOTWRP.trace", [] { return std::make_shared<QuietTrace>(); });
    EXPECT_NE(CreateTrace(), nullptr);
}

TEST_F(HostServices, RefuseWhatIsNotRegistered)
{
    ExpectCannotCreate(ErrorOf([] { static_cast<void>(CreateTrace()); }), kTraceClassID);
    ExpectCannotCreate(ErrorOf([] { static_cast<void>(CreateConfig()); }), kConfigClassID);
}

TEST_F(HostServices, RefuseAFactoryThatMakesNothing)
{
    RegisterHostComponent(kTraceClassID, [] { return nullptr; });
    RegisterHostComponent(kConfigClassID, [] { return nullptr; });
    ExpectCannotCreate(ErrorOf([] { static_cast<void>(CreateTrace()); }), kTraceClassID);
    ExpectCannotCreate(ErrorOf([] { static_cast<void>(CreateConfig()); }), kConfigClassID);
}

TEST_F(HostServices, RefuseAComponentOfTheWrongKind)
{
    RegisterHostComponent(kTraceClassID, [] { return std::make_shared<EmptyConfig>(); });
    RegisterHostComponent(kConfigClassID, [] { return std::make_shared<QuietTrace>(); });
    ExpectCannotCreate(ErrorOf([] { static_cast<void>(CreateTrace()); }), kTraceClassID);
    ExpectCannotCreate(ErrorOf([] { static_cast<void>(CreateConfig()); }), kConfigClassID);
}

TEST_F(HostServices, PassTheErrorOfAFactoryOn)
{
    RegisterHostComponent(kConfigClassID, []() -> std::shared_ptr<AutomationObject> {
        throw AutomationError(kErrPermissionDenied, u"Host", u"no licence");
    });
    const auto error = ErrorOf([] { static_cast<void>(CreateConfig()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), kErrPermissionDenied);
    EXPECT_EQ(error->Source(), u"Host");
    EXPECT_EQ(error->Description(), u"no licence");
}

TEST_F(HostServices, TakeTheLastRegistration)
{
    const auto first = std::make_shared<QuietTrace>();
    const auto second = std::make_shared<QuietTrace>();
    RegisterHostComponent(kTraceClassID, [&] { return first; });
    RegisterHostComponent(kTraceClassID, [&] { return second; });
    EXPECT_EQ(CreateTrace(), second);
}

TEST_F(HostServices, AnEmptyFactoryTakesARegistrationAway)
{
    RegisterHostComponent(kTraceClassID, [] { return std::make_shared<QuietTrace>(); });
    RegisterHostComponent("corvotwrp.trace", HostComponentFactory());
    ExpectCannotCreate(ErrorOf([] { static_cast<void>(CreateTrace()); }), kTraceClassID);
}

TEST_F(HostServices, AFactoryMayRegisterWhileItRuns)
{
    RegisterHostComponent(kTraceClassID, [] {
        RegisterHostComponent(kTraceClassID, HostComponentFactory());
        RegisterHostComponent(kConfigClassID, [] { return std::make_shared<EmptyConfig>(); });
        return std::make_shared<QuietTrace>();
    });
    EXPECT_NE(CreateTrace(), nullptr);
    EXPECT_NE(CreateConfig(), nullptr);
}

TEST_F(HostServices, ARegistrationCountsOnEveryThread)
{
    RegisterHostComponent(kTraceClassID, [] { return std::make_shared<QuietTrace>(); });
    std::shared_ptr<ITrace> trace;
    std::thread([&trace] { trace = CreateTrace(); }).join();
    EXPECT_NE(trace, nullptr);
}

} // namespace KestrinProductEditor
