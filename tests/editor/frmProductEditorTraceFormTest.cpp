// SPDX-License-Identifier: MIT
#include "support/EditorFixture.h"
#include "support/ErrorOf.h"
#include "support/WindowContexts.h"

#include <KestrinProductEditor/AutomationError.h>
#include <KestrinProductEditor/ProductEditorDlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

void PrintTo(const WindowContext& member, std::ostream* out)
{
    *out << member.text;
}

namespace {

using testing::Contains;
using testing::IsEmpty;
using NamedKey = IUser::NamedKey;
using C = ErrorContext;

constexpr std::int32_t kTraceFailure = 4711;

enum class Failure
{
    None,
    AtEntry,
    AtExit,
};

/// Makes each traced method of the editor run, over a list whose changes nobody would be asked about.
class ProductEditorTrace : public EditorFixture, public testing::WithParamInterface<WindowContext>
{
protected:
    ProductEditorTrace() { WriteCatalogue(ThreeProducts()); }

    /// What has to happen in an open editor; nothing where opening and closing it is enough.
    [[nodiscard]] std::function<void()> ActOf(ErrorContext context)
    {
        const std::map<C, std::function<void()>> acts = {
            {C::frmProductEditor_PrvNewProduct, [&] { m_user->Click(u"cmdNew"); }},
            {C::frmProductEditor_PrvAddNewProduct, [&] { m_user->Click(u"cmdNew"); }},
            {C::frmProductEditor_cmdNew_Click, [&] { m_user->Click(u"cmdNew"); }},
            {C::frmProductEditor_PrvEditProduct, [&] { m_user->Press(NamedKey::F2); }},
            {C::frmProductEditor_SSActiveToolBars1_ToolClick, [&] { m_user->Press(NamedKey::F2); }},
            {C::frmProductEditor_cmdSaveEdit_Click,
             [&] {
                 m_user->Press(NamedKey::F2);
                 m_user->Click(u"cmdSaveEdit");
             }},
            {C::frmProductEditor_cmdCancelEdit_Click,
             [&] {
                 m_user->Press(NamedKey::F2);
                 m_user->Click(u"cmdCancelEdit");
             }},
            {C::frmProductEditor_flexGrid_DblClick, [&] { m_user->DoubleClickRow(u"flexGrid", 2); }},
            {C::frmProductEditor_txtProductName_DblClick, [&] { m_user->DoubleClick(u"txtProductName"); }},
            {C::frmProductEditor_txtPartNum_DblClick, [&] { m_user->DoubleClick(u"txtPartNum"); }},
            {C::frmProductEditor_txtUnitPrice_DblClick, [&] { m_user->DoubleClick(u"txtUnitPrice"); }},
            {C::frmProductEditor_txtNote_DblClick, [&] { m_user->DoubleClick(u"txtNote"); }},
            {C::frmProductEditor_txtUnitPrice_GotFocus, [&] { m_user->TabTo(u"txtUnitPrice"); }},
            {C::frmProductEditor_txtUnitPrice_LostFocus, [&] { WalkThroughPrice(); }},
            {C::frmProductEditor_PrvSaveUnitPriceFld, [&] { WalkThroughPrice(); }},
            {C::frmProductEditor_txtUnitPrice_KeyPress,
             [&] {
                 m_user->TabTo(u"txtUnitPrice");
                 m_user->Type(u"a");
             }},
            {C::frmProductEditor_cmdDelete_Click,
             [&] {
                 if (m_failure != Failure::AtEntry)
                     m_user->WillAnswer(MessageAnswer::No);
                 m_user->Click(u"cmdDelete");
             }},
            {C::frmProductEditor_PrvDeleteSelected, [&] { m_user->ChooseTool(u"ID_Delete"); }},
            {C::frmProductEditor_PrvImportProducts, [&] { VisitDialog(u"ID_Import"); }},
            {C::frmProductEditor_ExportProducts,
             [&] {
                 if (m_failure != Failure::None)
                     m_user->WillAnswer(MessageAnswer::Ok);
                 VisitDialog(u"ID_Export");
             }},
        };
        const auto found = acts.find(context);
        return found != acts.end() ? found->second : [] {};
    }

    /// A whole visit. After a failure the trace recovers, and the editor has to work then.
    void Visit(const WindowContext& member)
    {
        m_trace->Forget();
        m_user->AtNextForm([&] {
            m_hasOpened = true;
            ActOf(member.context)();
            if (member.context == C::frmProductEditor_cmdSaveClose_Click)
                m_user->Click(u"cmdSaveClose");
            if (m_user->OpenForms().empty())
                return;
            if (m_failure != Failure::None && !IsOfClosing(member.context)) {
                m_trace->Heal();
                ExpectUsable();
            }
            m_user->CloseWindow();
        });
        m_number = ErrorNumberOf([] { ProductEditorDlg::Create()->Show(Variant()); });
    }

    void ExpectUsable()
    {
        m_user->ClickRow(u"flexGrid", 2);
        m_user->ClickRow(u"flexGrid", 3);
        EXPECT_EQ(Shown(u"txtProductName"), "Clamp");
        ExpectViewState();
        m_user->DoubleClickRow(u"flexGrid", 2);
        EXPECT_EQ(Shown(u"lblProductDetails"), "Editing Bolt");
        ExpectEditState();
        m_user->Click(u"cmdCancelEdit");
        ExpectViewState();
    }

    [[nodiscard]] static bool IsOfClosing(ErrorContext context)
    {
        return context == C::frmProductEditor_CancelSaveProduct ||
               context == C::frmProductEditor_cmdCancel_Click ||
               context == C::frmProductEditor_cmdSaveClose_Click ||
               context == C::frmProductEditor_PrvSaveViewPrefs || context == C::ProductEditorDlg_Show;
    }

    Failure m_failure = Failure::None;
    bool m_hasOpened = false;
    std::int32_t m_number = 0;

private:
    void WalkThroughPrice()
    {
        m_user->TabTo(u"txtUnitPrice");
        m_user->TabTo(u"txtNote");
    }
    void VisitDialog(std::u16string_view id)
    {
        if (m_failure != Failure::AtEntry)
            m_user->AtNextForm([&] { m_user->CloseWindow(); });
        m_user->ChooseTool(id);
    }
};

/// Says Yes to everything.
class YesBox final : public IMessageBox
{
public:
    MessageAnswer Show(std::u16string_view /*text*/, std::int32_t /*style*/,
                       std::u16string_view /*title*/) override
    {
        return MessageAnswer::Yes;
    }
};

/// One call of the trace fails in the middle of an act; then the trace has recovered.
class ProductEditorFault : public EditorFixture
{
protected:
    /// Does `act` again and again over a product named Zip that is typed and not saved yet, each time with a
    /// later failing call, until all have failed. Nothing that was typed may be lost.
    void FailAtEachCall(const std::function<void()>& type, const std::function<void()>& act)
    {
        YesBox yes;
        const ScopedMessageBox scope(yes);
        bool hasFailed = true;
        for (int failing = 1; hasFailed; ++failing) {
            hasFailed = false;
            std::string failed;
            int calls = 0;
            WriteCatalogue(ThreeProducts());
            Edit([&] {
                type();
                m_trace->onCall = [&](const std::string& call) {
                    if (++calls != failing)
                        return;
                    hasFailed = true;
                    failed = call;
                    throw AutomationError(kTraceFailure);
                };
                act();
                m_trace->onCall = nullptr;
                SCOPED_TRACE(failed);
                if (IsInEditState()) {
                    // What stands in open boxes can be edited and saved.
                    m_user->TabTo(u"txtNote");
                    m_user->Type(u"x");
                    const std::string name = Shown(u"txtProductName");
                    m_user->Click(u"cmdSaveEdit");
                    EXPECT_FALSE(IsInEditState());
                    EXPECT_THAT(NamesShown(), Contains(name));
                }
                m_user->Click(u"cmdSaveClose");
            });
            EXPECT_THAT(SavedNames(), Contains("Zip")) << failed;
            EXPECT_THAT(SavedNames(), testing::IsSupersetOf({"Anchor", "Clamp"})) << failed;
        }
    }
};

[[nodiscard]] std::string NameOf(const testing::TestParamInfo<WindowContext>& info)
{
    std::string name(info.param.text.substr(info.param.text.rfind('.') + 1));
    std::replace(name.begin(), name.end(), ':', '_');
    return std::to_string(info.index) + "_" + name;
}

} // namespace

TEST_P(ProductEditorTrace, HearsOfEntryAndExit)
{
    Visit(GetParam());
    const std::string text(GetParam().text);
    const auto& calls = m_trace->Calls();
    const auto entries = std::count(calls.begin(), calls.end(), "enter " + text);
    EXPECT_GE(entries, 1);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "exit " + text), entries);
    EXPECT_THAT(m_trace->CallsLike("error "), IsEmpty());
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_P(ProductEditorTrace, HearsOfAFailureOnceAndTheEditorStaysUsable)
{
    const std::string entry = "enter " + std::string(GetParam().text);
    m_failure = Failure::AtEntry;
    m_trace->FailOn(entry, kTraceFailure);
    Visit(GetParam());
    const bool isLauncher = GetParam().context == C::ProductEditorDlg_Show;
    EXPECT_EQ(m_hasOpened, !isLauncher);
    if (isLauncher) {
        // The script still waits for the form.
        m_trace->Heal();
        ProductEditorDlg::Create()->Show(Variant());
    }
    const auto& calls = m_trace->Calls();
    ASSERT_THAT(calls, Contains(entry));
    // After the first failure; the trace may have recovered later.
    const auto at = std::find(calls.begin(), calls.end(), entry);
    ASSERT_GE(calls.end() - at, 3);
    EXPECT_EQ(at[1], "error 4711");
    EXPECT_EQ(at[2] == "number 4711", GetParam().ending == Ending::PassOn) << at[2];
    EXPECT_EQ(m_number, isLauncher ? kTraceFailure : 0);
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_P(ProductEditorTrace, MayFailAtTheExitToo)
{
    m_failure = Failure::AtExit;
    m_trace->FailOn("exit " + std::string(GetParam().text), kTraceFailure);
    Visit(GetParam());
    EXPECT_THAT(m_trace->CallsLike("error "), Contains("error 4711"));
    EXPECT_EQ(SavedRows(), ThreeProducts());
}

TEST_F(ProductEditorFault, LosesNoNewProductThatIsSaved)
{
    FailAtEachCall(
        [&] {
            m_user->Click(u"cmdNew");
            m_user->Type(u"Zip");
        },
        [&] { m_user->Click(u"cmdSaveEdit"); });
}

TEST_F(ProductEditorFault, LosesNoEditThatIsLeftForAnotherRow)
{
    FailAtEachCall(
        [&] {
            m_user->DoubleClickRow(u"flexGrid", 2);
            Fill(u"txtProductName", u"Zip");
        },
        [&] { m_user->ClickRow(u"flexGrid", 3); });
}

INSTANTIATE_TEST_SUITE_P(EveryMethod, ProductEditorTrace, testing::ValuesIn(kEditorContexts), NameOf);

} // namespace KestrinProductEditor
