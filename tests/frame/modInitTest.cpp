// SPDX-License-Identifier: MIT
#include "frame/modInit.h"

#include "fake/RecordingTrace.h"
#include "fake/ScriptedConfig.h"
#include "platform/ui/MessageBox.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <KestrinProductEditor/CreateObject.h>
#include <KestrinProductEditor/ProdLkpEditDlg.h>
#include <KestrinProductEditor/ProductEditorDlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

struct Message
{
    std::u16string text;
    std::int32_t style = 0;
    std::u16string title;
};

class ScriptedMessageBox final : public IMessageBox
{
public:
    MessageAnswer Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override
    {
        messages.push_back({std::u16string(text), style, std::u16string(title)});
        return MessageAnswer::Ok;
    }
    std::vector<Message> messages;
};

/// Runs on a thread that the component has never seen.
void OnAFreshThread(const std::function<void()>& work)
{
    std::thread(work).join();
}

class modInitTest : public StoreFixture
{
protected:
    modInitTest()
    {
        RegisterHostComponent("CorvoTWrp.Trace", [this]() -> std::shared_ptr<AutomationObject> {
            const std::scoped_lock lock(m_mutex);
            ++m_created;
            if (m_failure)
                throw AutomationError(*m_failure);
            m_traces.push_back(std::make_shared<RecordingTrace>());
            return m_traces.back();
        });
    }

    std::mutex m_mutex;
    int m_created = 0;
    std::optional<AutomationError> m_failure;
    std::vector<std::shared_ptr<RecordingTrace>> m_traces;
};

} // namespace

TEST_F(modInitTest, CreatesTheTraceOnceOnEachThreadBeforeItsFirstObject)
{
    OnAFreshThread([&] {
        EXPECT_EQ(gobjTrace, nullptr);
        const auto dialog = ProdLkpEditDlg::Create();
        EXPECT_EQ(m_created, 1);
        EXPECT_NE(gobjTrace, nullptr);
        const auto store = CreateObject("KestrinProductEditor.ProductLkpMgr");
        const auto editor = ProductEditorDlg::Create();
        EXPECT_EQ(m_created, 1);
    });
}

TEST_F(modInitTest, ReportsAStoresCallsToTheTraceOfItsThread)
{
    WriteCatalogue({{.rowID = 2, .name = "Anchor"}});
    OnAFreshThread([&] {
        const auto first = Open();
        first->CancelUpdate(true);
        OnAFreshThread([&] {
            const auto second = Open();
            second->CancelUpdate(true);
            second->MoveFirst();
        });
        first->MoveLast();
        ASSERT_THAT(m_traces, SizeIs(2));
        EXPECT_THAT(m_traces[0]->CallsLike("exit KestrinProductMgr.ProductLkpMgr::Move"),
                    ElementsAre("exit KestrinProductMgr.ProductLkpMgr::MoveLast"));
        EXPECT_THAT(m_traces[1]->CallsLike("exit KestrinProductMgr.ProductLkpMgr::Move"),
                    ElementsAre("exit KestrinProductMgr.ProductLkpMgr::MoveFirst"));
    });
}

TEST_F(modInitTest, NeverReleasesTheTrace)
{
    std::weak_ptr<RecordingTrace> trace;
    OnAFreshThread([&] {
        const auto dialog = ProdLkpEditDlg::Create();
        trace = m_traces.back();
        m_traces.clear();
    });
    EXPECT_FALSE(trace.expired());
}

TEST_F(modInitTest, ShowsItsOneMessageWhenTheTraceCannotBeCreated)
{
    m_failure = AutomationError(70, u"host", u"no trace today");
    OnAFreshThread([&] {
        ScriptedMessageBox box;
        const ScopedMessageBox scoped(box);
        const auto error = ErrorOf([] { static_cast<void>(ProdLkpEditDlg::Create()); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Number(), 70);
        EXPECT_EQ(error->Source(), u"host");
        EXPECT_EQ(error->Description(), u"no trace today");
        ASSERT_THAT(box.messages, SizeIs(1));
        EXPECT_EQ(box.messages[0].text,
                  u"Could not create trace object. Module:KestrinProductEditor.modInit::Main");
        EXPECT_EQ(box.messages[0].style, 48);
        EXPECT_EQ(box.messages[0].title, u"Automation error");
        EXPECT_EQ(gobjTrace, nullptr);
    });
}

TEST_F(modInitTest, FailsWithErrorCannotCreateWithoutAHost)
{
    for (const HostComponentFactory& factory :
         {HostComponentFactory(), HostComponentFactory([] { return nullptr; }), HostComponentFactory([] {
              return std::make_shared<ScriptedConfig>(std::make_shared<ConfigScript>());
          })}) {
        RegisterHostComponent("CorvoTWrp.Trace", factory);
        OnAFreshThread([] {
            ScriptedMessageBox box;
            const ScopedMessageBox scoped(box);
            EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(ProductLkpMgr::Create()); }), 429);
            EXPECT_THAT(box.messages, SizeIs(1));
        });
    }
}

TEST_F(modInitTest, RunsAgainAtTheNextCreationAfterAFailure)
{
    m_failure = AutomationError(70);
    OnAFreshThread([&] {
        ScriptedMessageBox box;
        const ScopedMessageBox scoped(box);
        EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(ProdLkpEditDlg::Create()); }), 70);
        EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(ProductLkpMgr::Create()); }), 70);
        EXPECT_THAT(box.messages, SizeIs(2));
        m_failure.reset();
        EXPECT_NO_THROW(static_cast<void>(ProdLkpEditDlg::Create()));
        EXPECT_THAT(box.messages, SizeIs(2));
        EXPECT_EQ(m_created, 3);
        EXPECT_FALSE(CatalogueExists());
    });
}

TEST_F(modInitTest, LeavesOtherThreadsAloneWhenItFails)
{
    OnAFreshThread([&] {
        const auto store = Open();
        m_failure = AutomationError(70);
        OnAFreshThread([&] {
            ScriptedMessageBox box;
            const ScopedMessageBox scoped(box);
            EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(ProdLkpEditDlg::Create()); }), 70);
        });
        EXPECT_EQ(store->Count(), 0);
        EXPECT_NO_THROW(static_cast<void>(ProdLkpEditDlg::Create()));
    });
}

TEST_F(modInitTest, RunsBeforeTheReleaseOfAStoreThatAnotherThreadMade)
{
    std::shared_ptr<ProductLkpMgr> store;
    OnAFreshThread([&] {
        store = Open();
        AddNames(*store, {"Anchor"});
    });
    OnAFreshThread([&] { store.reset(); });
    ASSERT_THAT(m_traces, SizeIs(2));
    EXPECT_THAT(m_traces[1]->Calls(), Contains("exit KestrinProductMgr.ProductLkpMgr::Class_Terminate"));
    ASSERT_THAT(SavedRows(), SizeIs(1));
    EXPECT_EQ(SavedRows()[0].name, "Anchor");
}

TEST_F(modInitTest, EndsQuietlyWhenAStoreIsReleasedOnAThreadThatCanHaveNoTrace)
{
    std::shared_ptr<ProductLkpMgr> store;
    OnAFreshThread([&] { store = Open(); });
    const std::string before = CatalogueBytes();
    m_failure = AutomationError(70);
    OnAFreshThread([&] {
        ScriptedMessageBox box;
        const ScopedMessageBox scoped(box);
        store.reset();
        EXPECT_THAT(box.messages, SizeIs(1));
    });
    EXPECT_EQ(CatalogueBytes(), before);
}

} // namespace KestrinProductEditor
