// SPDX-License-Identifier: MIT
#include "frame/ErrorContext.h"

#include "platform/Text.h"
#include "store/Product.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"
#include "support/WindowContexts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAreArray;

constexpr std::int32_t kTraceFailure = 4711;

[[nodiscard]] std::string InStore(const std::string& method)
{
    return "KestrinProductMgr.ProductLkpMgr::" + method;
}

[[nodiscard]] std::string InEditor(const std::string& method)
{
    return "KestrinProductEditor." + method;
}

/// What a member reports when all goes well, around what the members report that it calls.
[[nodiscard]] std::vector<std::string> Around(const std::string& context,
                                              const std::vector<std::string>& inner = {})
{
    std::vector<std::string> calls = {"enter " + context};
    calls.insert(calls.end(), inner.begin(), inner.end());
    calls.push_back("exit " + context);
    return calls;
}

[[nodiscard]] std::vector<std::string> InTurn(const std::vector<std::vector<std::string>>& parts)
{
    std::vector<std::string> calls;
    for (const std::vector<std::string>& part : parts)
        calls.insert(calls.end(), part.begin(), part.end());
    return calls;
}

/// What a member may work on.
struct Scene
{
    std::shared_ptr<ProductLkpMgr> store; // the rows Anchor 2, Bolt 3, Clamp 4; Bolt is current
    std::shared_ptr<ProductLkpMgr> another;
    Product product;
    std::u16string binaryPath;
    std::u16string csvPath;
};

struct MemberCase
{
    ErrorContext context;
    std::string text;
    std::function<void(Scene&)> act;
    std::vector<std::string> calls;
};

[[nodiscard]] std::vector<std::string> OpeningCalls()
{
    return Around(InStore("Class_Initialize"),
                  InTurn({Around(InStore("GetProductFilePath")),
                          Around(InStore("LoadProductRS"), Around(InStore("InitProductRS"))),
                          Around(InStore("SetDirtySessionFlags")), Around(InStore("SortProductRS")),
                          Around(InStore("GetLastRowID"))}));
}

[[nodiscard]] std::vector<std::string> ReleaseCalls()
{
    return Around(InStore("Class_Terminate"),
                  InTurn({Around(InStore("ProductRemoveEmptyRows")), Around(InStore("SaveProductRS"))}));
}

[[nodiscard]] std::vector<std::string> BinaryImportCalls()
{
    return Around(InStore("BinaryProductImport"),
                  InTurn({Around(InStore("LoadProductRS"), Around(InStore("InitProductRS"))),
                          Around(InStore("SortProductRS")), Around(InStore("BinaryImportResetRstState")),
                          Around(InStore("GetLastRowID"))}));
}

void OpenAgain(Scene& scene)
{
    scene.another = ProductLkpMgr::Create();
}

/// Every member that needs no window.
[[nodiscard]] std::vector<MemberCase> Members()
{
    using C = ErrorContext;
    std::vector<MemberCase> members;
    const auto product = [&](C context, const std::string& method, std::function<void(Scene&)> act,
                             const std::vector<std::string>& inner = {}) {
        const std::string text = InEditor("Product::" + method);
        members.push_back({context, text, std::move(act), Around(text, inner)});
    };
    product(C::Product_Name, "Name", [](Scene& scene) { scene.product.Name(u"n"); });
    product(C::Product_Key, "Key", [](Scene& scene) { scene.product.Key(u"k"); });
    product(C::Product_PartNum, "PartNum", [](Scene& scene) { scene.product.PartNum(u"p"); });
    product(C::Product_UnitPrice, "UnitPrice", [](Scene& scene) { scene.product.UnitPrice(Currency()); });
    product(C::Product_Note, "Note", [](Scene& scene) { scene.product.Note(u"t"); });
    const std::vector<std::string> setters =
        InTurn({Around(InEditor("Product::Name")), Around(InEditor("Product::Key")),
                Around(InEditor("Product::PartNum")), Around(InEditor("Product::UnitPrice")),
                Around(InEditor("Product::Note"))});
    product(
        C::Product_Unpack, "Unpack", [](Scene& scene) { scene.product.Unpack(Packed(7, "Saw")); }, setters);
    product(
        C::Product_Unpack, "Unpack", [](Scene& scene) { scene.product.Unpack(Variant::Null()); }, setters);
    product(C::Product_Pack, "Pack", [](Scene& scene) { static_cast<void>(scene.product.Pack()); });

    const auto store = [&](C context, const std::string& method, std::function<void(Scene&)> act,
                           const std::vector<std::string>& inner = {}) {
        members.push_back({context, InStore(method), std::move(act), Around(InStore(method), inner)});
    };
    const auto within = [&](C context, const std::string& method, std::function<void(Scene&)> act,
                            std::vector<std::string> calls) {
        members.push_back({context, InStore(method), std::move(act), std::move(calls)});
    };
    within(C::ProductLkpMgr_Class_Initialize, "Class_Initialize", OpenAgain, OpeningCalls());
    within(C::ProductLkpMgr_GetProductFilePath, "GetProductFilePath", OpenAgain, OpeningCalls());
    within(C::ProductLkpMgr_InitProductRS, "InitProductRS", OpenAgain, OpeningCalls());
    within(C::ProductLkpMgr_LoadProductRS, "LoadProductRS", OpenAgain, OpeningCalls());
    within(C::ProductLkpMgr_GetLastRowID, "GetLastRowID", OpenAgain, OpeningCalls());
    within(C::ProductLkpMgr_SortProductRS, "SortProductRS", OpenAgain, OpeningCalls());
    const auto release = [](Scene& scene) { scene.store.reset(); };
    within(C::ProductLkpMgr_Class_Terminate, "Class_Terminate", release, ReleaseCalls());
    within(C::ProductLkpMgr_ProductRemoveEmptyRows, "ProductRemoveEmptyRows", release, ReleaseCalls());
    within(C::ProductLkpMgr_SaveProductRS, "SaveProductRS", release, ReleaseCalls());

    members.push_back({C::ProductLkpMgr_Pack, InEditor("ProductLkpMgr::Pack"),
                       [](Scene& scene) { static_cast<void>(scene.store->Pack(3)); },
                       Around(InEditor("ProductLkpMgr::Pack"))});
    members.push_back({C::ProductLkpMgr_Update, InEditor("ProductLkpMgr::Update"),
                       [](Scene& scene) { scene.store->Update(Packed(3, "Zip")); },
                       Around(InEditor("ProductLkpMgr::Update"))});
    store(C::ProductLkpMgr_Count, "Count", [](Scene& scene) { static_cast<void>(scene.store->Count()); });
    store(C::ProductLkpMgr_Fields, "Fields",
          [](Scene& scene) { static_cast<void>(scene.store->Fields(PF_Name)); });
    store(C::ProductLkpMgr_Fields, "Fields", [](Scene& scene) { scene.store->Fields(PF_Name, u"Bar"); });
    store(C::ProductLkpMgr_AddNew, "AddNew", [](Scene& scene) { scene.store->AddNew(Named("Drill")); });
    store(C::ProductLkpMgr_AddNew, "AddNew", [](Scene& scene) { scene.store->AddNew(Variant::Null()); });
    store(C::ProductLkpMgr_Delete, "Delete", [](Scene& scene) { scene.store->Delete(3); });
    store(C::ProductLkpMgr_DeleteAll, "DeleteAll", [](Scene& scene) { scene.store->DeleteAll(); });
    store(C::ProductLkpMgr_BOF, "BOF", [](Scene& scene) { static_cast<void>(scene.store->BOF()); });
    store(C::ProductLkpMgr_EOF, "EOF", [](Scene& scene) { static_cast<void>(scene.store->EOF()); });
    store(C::ProductLkpMgr_MoveLast, "MoveLast", [](Scene& scene) { scene.store->MoveLast(); });
    store(C::ProductLkpMgr_MoveFirst, "MoveFirst", [](Scene& scene) { scene.store->MoveFirst(); });
    store(C::ProductLkpMgr_MoveNext, "MoveNext", [](Scene& scene) { scene.store->MoveNext(); });
    store(C::ProductLkpMgr_MovePrevious, "MovePrevious", [](Scene& scene) { scene.store->MovePrevious(); });
    store(C::ProductLkpMgr_FindRow, "FindRow", [](Scene& scene) { scene.store->FindRow(4); });
    store(C::ProductLkpMgr_FindRowBySyncID, "FindRowBySyncID",
          [](Scene& scene) { scene.store->FindRowBySyncID(0); });
    store(C::ProductLkpMgr_SetDirtySyncFlags, "SetDirtySyncFlags",
          [](Scene& scene) { scene.store->SetDirtySyncFlags(false); });
    store(C::ProductLkpMgr_SetDirtySessionFlags, "SetDirtySessionFlags",
          [](Scene& scene) { scene.store->SetDirtySessionFlags(false); });
    members.push_back({C::ProductLkpMgr_CSVProductExport, InEditor("ProductLkpMgr::CSVProductExport"),
                       [](Scene& scene) { scene.store->CSVProductExport(ExportParams(scene.csvPath)); },
                       Around(InEditor("ProductLkpMgr::CSVProductExport"))});
    store(
        C::ProductLkpMgr_BinaryProductExport, "BinaryProductExport",
        [](Scene& scene) { scene.store->BinaryProductExport(scene.binaryPath); },
        Around(InStore("SaveProductRS")));
    const auto import = [](Scene& scene) { scene.store->BinaryProductImport(scene.binaryPath); };
    within(C::ProductLkpMgr_BinaryProductImport, "BinaryProductImport", import, BinaryImportCalls());
    within(C::ProductLkpMgr_BinaryImportResetRstState, "BinaryImportResetRstState", import,
           BinaryImportCalls());
    return members;
}

/// Every member that runs in a window; the tests of the forms make them run.
[[nodiscard]] std::vector<WindowContext> WindowMembers()
{
    std::vector<WindowContext> members(kEditorContexts.begin(), kEditorContexts.end());
    members.insert(members.end(), kExchangeContexts.begin(), kExchangeContexts.end());
    members.insert(members.end(), kViewContexts.begin(), kViewContexts.end());
    return members;
}

/// What is reported when the `at`-th of `calls` fails: one error for each member that is under way, the
/// innermost first, and a question for the number where the error goes on.
[[nodiscard]] std::vector<std::string> CallsWhenFailingAt(const std::vector<std::string>& calls,
                                                          std::size_t at)
{
    std::vector<std::string> expected(calls.begin(), calls.begin() + static_cast<std::ptrdiff_t>(at) + 1);
    std::vector<std::string> underWay;
    for (std::size_t i = 0; i <= at; ++i) {
        if (calls[i].starts_with("enter "))
            underWay.push_back(calls[i].substr(std::string("enter ").size()));
        else if (calls[i].starts_with("exit ") && i < at)
            underWay.pop_back();
    }
    for (; !underWay.empty(); underWay.pop_back()) {
        expected.push_back("error " + std::to_string(kTraceFailure));
        if (underWay.back() == InStore("Class_Terminate"))
            break;
        expected.push_back("number " + std::to_string(kTraceFailure));
    }
    return expected;
}

class ErrorContextMembers : public StoreFixture
{
protected:
    [[nodiscard]] Scene SetUpScene()
    {
        m_trace->Heal();
        WriteCatalogue(
            {{.rowID = 2, .name = "Anchor"}, {.rowID = 3, .name = "Bolt"}, {.rowID = 4, .name = "Clamp"}});
        m_folder.Write("products.bin", CatalogueFileOf({{.rowID = 9, .name = "Drill"}}));
        Scene scene{Open(), {}, {}, m_folder.File("products.bin"), m_folder.File("products.csv")};
        scene.store->FindRow(3);
        m_trace->Forget();
        return scene;
    }
};

} // namespace

TEST(ErrorContext, EveryOneHasAMemberInTheTableOfTests)
{
    std::set<ErrorContext> tested;
    for (const MemberCase& member : Members())
        tested.insert(member.context);
    for (const WindowContext& member : WindowMembers())
        EXPECT_TRUE(tested.insert(member.context).second) << member.text;
    for (std::size_t i = 0; i < static_cast<std::size_t>(ErrorContext::Count); ++i)
        EXPECT_TRUE(tested.contains(static_cast<ErrorContext>(i))) << ToUtf8(kErrorContextTexts[i]);
}

TEST(ErrorContext, EveryOneHasTheTextThatHostsKnow)
{
    for (const MemberCase& member : Members())
        EXPECT_EQ(ToUtf8(TextOf(member.context)), member.text);
    for (const WindowContext& member : WindowMembers())
        EXPECT_EQ(ToUtf8(TextOf(member.context)), member.text);
}

TEST_F(ErrorContextMembers, ReportEntryAndExit)
{
    for (const MemberCase& member : Members()) {
        SCOPED_TRACE(member.text);
        Scene scene = SetUpScene();
        static_cast<void>(ErrorNumberOf([&] { member.act(scene); }));
        EXPECT_THAT(m_trace->Calls(), ElementsAreArray(member.calls));
    }
}

TEST_F(ErrorContextMembers, ReportAFailureOncePerLevelWhereverItHappens)
{
    for (const MemberCase& member : Members()) {
        for (std::size_t at = 0; at < member.calls.size(); ++at) {
            if (!member.calls[at].starts_with("enter ") && !member.calls[at].starts_with("exit "))
                continue;
            SCOPED_TRACE(member.text + ", failing at " + member.calls[at]);
            Scene scene = SetUpScene();
            m_trace->FailAtCall(at + 1, kTraceFailure);
            const std::int32_t number = ErrorNumberOf([&] { member.act(scene); });
            EXPECT_THAT(m_trace->Calls(), ElementsAreArray(CallsWhenFailingAt(member.calls, at)));
            const bool isRelease = member.calls[0] == "enter " + InStore("Class_Terminate");
            EXPECT_EQ(number, isRelease ? 0 : kTraceFailure);
        }
    }
}

TEST_F(ErrorContextMembers, GoOnUnderTheNumberThatTheTraceAnsweredLast)
{
    for (const MemberCase& member : Members()) {
        if (member.calls[0] == "enter " + InStore("Class_Terminate"))
            continue;
        SCOPED_TRACE(member.text);
        Scene scene = SetUpScene();
        m_trace->FailAtCall(1, kTraceFailure);
        m_trace->AnswerInTurn({1234});
        EXPECT_EQ(ErrorNumberOf([&] { member.act(scene); }), 1234);
    }
}

TEST_F(ErrorContextMembers, KeepTheNumberOfAnErrorWhenTheTraceAnswersZero)
{
    for (const MemberCase& member : Members()) {
        if (member.calls[0] == "enter " + InStore("Class_Terminate"))
            continue;
        SCOPED_TRACE(member.text);
        Scene scene = SetUpScene();
        m_trace->FailAtCall(1, kTraceFailure);
        m_trace->AnswerInTurn({0, 0});
        EXPECT_EQ(ErrorNumberOf([&] { member.act(scene); }), kTraceFailure);
        m_trace->AnswerInTurn({});
    }
}

TEST_F(ErrorContextMembers, EndWithTheErrorOfATraceThatFailsInItsHandler)
{
    for (const MemberCase& member : Members()) {
        SCOPED_TRACE(member.text);
        Scene scene = SetUpScene();
        m_trace->FailAtCall(1, 1111);
        m_trace->FailOn("error ", 2222);
        const bool isRelease = member.calls[0] == "enter " + InStore("Class_Terminate");
        EXPECT_EQ(ErrorNumberOf([&] { member.act(scene); }), isRelease ? 0 : 2222);
    }
}

} // namespace KestrinProductEditor
