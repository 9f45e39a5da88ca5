// SPDX-License-Identifier: MIT
#include "automation/client/AutomationFixture.h"

#include "server/windows/ComError.h"

#include <atomic>
#include <string>
#include <thread>

namespace KestrinProductEditor {

namespace {

/// Waits for the message with that title, reads its text and clicks its OK.
[[nodiscard]] std::u16string AnswerMessage(const wchar_t* title)
{
    for (;;) {
        const HWND box = FindWindowW(L"#32770", title);
        const HWND ok = box == nullptr ? nullptr : GetDlgItem(box, IDOK);
        if (ok == nullptr) {
            Sleep(1);
            continue;
        }
        constexpr int kText = 0xFFFF;
        wchar_t text[256] = L"";
        const UINT length = GetDlgItemTextW(box, kText, text, 256);
        PostMessageW(ok, BM_CLICK, 0, 0);
        return std::u16string(text, text + length);
    }
}

} // namespace

class HostComponents : public AutomationFixture
{
protected:
    void FailTrace(std::u16string_view member, std::int32_t afterCalls, std::int32_t number)
    {
        Host().Call(u"FailTrace", {member, afterCalls, number});
    }
    [[nodiscard]] std::u16string Trace() { return Host().Call(u"Trace").String(); }
};

TEST_F(HostComponents, ShowsAMessageAndFailsWithoutATrace)
{
    Host().Call(u"FailCreation", {u"CorvoTWrp.Trace", 77});
    std::atomic<HRESULT> status = S_OK;
    std::thread host([&] {
        const Apartment apartment;
        ComPtr<IUnknown> object;
        status = CreateByName(kStore, IID_PPV_ARGS(object.GetAddressOf()));
        EXPECT_EQ(object, nullptr);
    });
    EXPECT_EQ(AnswerMessage(L"Automation error"),
              u"Could not create trace object. Module:KestrinProductEditor.modInit::Main");
    host.join();
    EXPECT_EQ(status.load(), StatusOf(77));
}

TEST_F(HostComponents, TriesTheTraceAgainAtTheNextCreation)
{
    Host().Call(u"FailCreation", {u"CorvoTWrp.Trace", 429});
    std::atomic<bool> hasFailed = false;
    std::thread host([&] {
        const Apartment apartment;
        ComPtr<_ProductLkpMgr> store;
        EXPECT_EQ(CreateByName(kStore, IID_PPV_ARGS(store.GetAddressOf())), StatusOf(kErrCannotCreateObject));
        hasFailed = true;
        hasFailed.notify_one();
        hasFailed.wait(true);
        EXPECT_EQ(CreateByName(kStore, IID_PPV_ARGS(store.GetAddressOf())), S_OK);
        EXPECT_EQ(store->put_CancelUpdate(VARIANT_TRUE), S_OK);
    });
    static_cast<void>(AnswerMessage(L"Automation error"));
    hasFailed.wait(false);
    Host().Call(u"FailCreation", {u"CorvoTWrp.Trace", 0});
    hasFailed = false;
    hasFailed.notify_one();
    host.join();
}

TEST_F(HostComponents, AsksTheConfigurationThroughWhicheverMemberItHas)
{
    for (const std::u16string_view member : {u"default", u"Value", u"GetValue", u"Item"}) {
        Host().Put(u"ConfigMembers", member);
        EXPECT_NE(OpenStore(), nullptr);
    }
    EXPECT_EQ(Folder().Names(), (std::vector<std::string>{"Data"}));
}

TEST_F(HostComponents, FailsToOpenWithTheErrorOfTheConfiguration)
{
    static_cast<void>(OpenStore());
    ComPtr<IUnknown> object;
    Host().Call(u"FailConfig", {1234});
    EXPECT_EQ(CreateByName(kStore, IID_PPV_ARGS(object.GetAddressOf())), StatusOf(1234));
    Host().Call(u"FailConfig", {0});
    Host().Call(u"FailCreation", {u"CorvoConf.Config", 429});
    EXPECT_EQ(CreateByName(kStore, IID_PPV_ARGS(object.GetAddressOf())), StatusOf(429));
}

TEST_F(HostComponents, ReportsEntryExitAndFailureToTheTrace)
{
    const ComPtr<_ProductLkpMgr> store = OpenStore();
    Host().Put(u"Recording", true);
    Host().Call(u"ClearTrace");
    LONG count = 0;
    ASSERT_EQ(store->get_Count(&count), S_OK);
    EXPECT_EQ(Trace(), u"Enter KestrinProductMgr.ProductLkpMgr::Count\n"
                       u"Exit KestrinProductMgr.ProductLkpMgr::Count");
    Host().Call(u"ClearTrace");
    EXPECT_EQ(store->MoveFirst(), StatusOf(kErrNoCurrentRecord));
    const std::u16string description = AutomationError::TextOf(kErrNoCurrentRecord);
    EXPECT_EQ(Trace(), u"Enter KestrinProductMgr.ProductLkpMgr::MoveFirst\n"
                       u"Error 3021||" +
                           description +
                           u"\n"
                           u"ErrNumber -> 3021");
}

TEST_F(HostComponents, PassesErrorsOnUnderTheNumberOfTheTrace)
{
    const ComPtr<_ProductLkpMgr> store = OpenStore();
    Host().Put(u"AnswerErrNumber", 4711);
    EXPECT_EQ(store->MoveFirst(), StatusOf(4711));
    EXPECT_EQ(TakeLeftError().description, AutomationError::TextOf(kErrNoCurrentRecord));
    Host().Put(u"AnswerErrNumber", 0);
    EXPECT_EQ(store->MoveFirst(), StatusOf(kErrNoCurrentRecord));
}

TEST_F(HostComponents, TakesTheNumberOfTheTraceInAnyKind)
{
    const ComPtr<_ProductLkpMgr> store = OpenStore();
    const Variant kinds[] = {4711.0, u"4711", Currency::FromUnits(4711)};
    for (const Variant& kind : kinds) {
        Host().Put(u"AnswerErrNumber", kind);
        EXPECT_EQ(store->MoveFirst(), StatusOf(4711));
    }
    // A trace that answers nothing leaves the error its own number.
    Host().Put(u"AnswerErrNumber", Variant());
    EXPECT_EQ(store->MoveFirst(), StatusOf(kErrNoCurrentRecord));
}

TEST_F(HostComponents, FailsWithTheErrorOfAFailingTrace)
{
    const ComPtr<_ProductLkpMgr> store = OpenStore();
    LONG count = 0;
    FailTrace(u"TraceEnter", 0, 600);
    EXPECT_EQ(store->get_Count(&count), StatusOf(600));
    EXPECT_EQ(TakeLeftError().description, u"trace failed");
    FailTrace(u"TraceExit", 0, 601);
    EXPECT_EQ(store->get_Count(&count), StatusOf(601));
    FailTrace(u"TraceError", 0, 602);
    EXPECT_EQ(store->MoveFirst(), StatusOf(602));
    FailTrace(u"TraceErrNumber", 0, 603);
    EXPECT_EQ(store->MoveFirst(), StatusOf(603));
    EXPECT_EQ(store->get_Count(&count), S_OK);
}

TEST_F(HostComponents, SavesNothingButSurvivesWhenTheTraceFailsAtTheRelease)
{
    ComPtr<_ProductLkpMgr> store = Create<_ProductLkpMgr>(kStore);
    AddProducts(*store.Get(), {u"Lamp"});
    FailTrace(u"TraceEnter", 0, 600);
    store.Reset();
    const ComPtr<_ProductLkpMgr> next = OpenStore();
    LONG count = -1;
    ASSERT_EQ(next->get_Count(&count), S_OK);
    EXPECT_EQ(count, 0);
}

} // namespace KestrinProductEditor
