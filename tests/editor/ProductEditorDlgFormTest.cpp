// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductEditorDlg.h>

#include "platform/Text.h"
#include "support/EditorFixture.h"
#include "support/ErrorOf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ProductEditorLauncher : public EditorFixture
{
protected:
    ProductEditorLauncher() { WriteCatalogue(ThreeProducts()); }
};

/// A toolkit that makes no windows, or windows that cannot be shown.
class BrokenToolkit final : public IToolkit
{
public:
    explicit BrokenToolkit(IToolkit& below) : m_below(below) {}

    std::unique_ptr<IForm> CreateForm(std::u16string_view /*name*/) override
    {
        throw AutomationError(445, {}, u"no display");
    }
    std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override
    {
        return m_below.CreateUserControl(name);
    }
    IMessageBox& Messages() override { return m_below.Messages(); }
    std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override
    {
        return m_below.ChooseFile(dialog);
    }

private:
    IToolkit& m_below;
};

const std::string kContext = "KestrinProductEditor.ProductEditorDlg::Show";

} // namespace

TEST_F(ProductEditorLauncher, ReturnsWhenTheEditorIsClosedAndItsStoreReleased)
{
    const auto launcher = ProductEditorDlg::Create();
    m_trace->Forget();
    m_user->AtNextForm([&] { m_user->Click(u"cmdSaveClose"); });
    launcher->Show(Variant());
    EXPECT_THAT(m_user->OpenForms(), IsEmpty());
    const auto& calls = m_trace->Calls();
    ASSERT_GE(calls.size(), 4U);
    EXPECT_EQ(calls.front(), "enter " + kContext);
    EXPECT_EQ(calls[calls.size() - 2], "exit KestrinProductMgr.ProductLkpMgr::Class_Terminate");
    EXPECT_EQ(calls.back(), "exit " + kContext);
}

TEST_F(ProductEditorLauncher, TakesAnyArgumentAndShowsAgainAndAgain)
{
    const auto launcher = ProductEditorDlg::Create();
    for (const Variant& argument : {Variant(), Variant::Null(), Variant(u"text"), Variant::ArrayOf({1})}) {
        m_user->AtNextForm([&] {
            EXPECT_EQ(Shown(u"lblProductView"), "Product List (Count:3)");
            m_user->Click(u"cmdCancel");
        });
        launcher->Show(argument);
    }
}

TEST_F(ProductEditorLauncher, PassesOnThatThereIsNoWindow)
{
    BrokenToolkit broken(m_user->Screen());
    const ScopedToolkit scope(broken);
    m_trace->Forget();
    const std::string bytes = CatalogueBytes();
    const auto error = ErrorOf([] { ProductEditorDlg::Create()->Show(Variant()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 445);
    EXPECT_EQ(ToUtf8(error->Description()), "no display");
    EXPECT_THAT(m_trace->Calls(), ElementsAre("enter " + kContext, "error 445", "number 445"));
    EXPECT_EQ(CatalogueBytes(), bytes);
}

TEST_F(ProductEditorLauncher, ReleasesTheStoreWhenItsExitFails)
{
    const auto launcher = ProductEditorDlg::Create();
    m_trace->FailOn("exit " + kContext, 7);
    m_user->AtNextForm([&] {
        m_user->Click(u"cmdNew");
        m_user->Type(u"Drill");
        m_user->Click(u"cmdSaveClose");
    });
    EXPECT_EQ(ErrorNumberOf([&] { launcher->Show(Variant()); }), 7);
    EXPECT_THAT(SavedNames(), ElementsAre("Anchor", "Bolt", "Clamp", "Drill"));
}

TEST_F(ProductEditorLauncher, LivesUntilShowReturns)
{
    auto launcher = ProductEditorDlg::Create();
    const std::weak_ptr<ProductEditorDlg> watched = launcher;
    ProductEditorDlg& dialog = *launcher;
    m_user->AtNextForm([&] {
        launcher.reset();
        EXPECT_FALSE(watched.expired());
        m_user->Click(u"cmdCancel");
    });
    dialog.Show(Variant());
    EXPECT_TRUE(watched.expired());
}

TEST_F(ProductEditorLauncher, OpensASecondEditorWithAStoreOfItsOwn)
{
    const auto launcher = ProductEditorDlg::Create();
    m_user->AtNextForm([&] {
        m_user->DoubleClickRow(u"flexGrid", 1);
        Fill(u"txtProductName", u"Outer");
        m_user->Click(u"cmdSaveEdit");
        m_user->AtNextForm([&] {
            EXPECT_EQ(m_user->OpenForms().size(), 2U);
            // It reads the file, which knows nothing of the other editor's changes.
            EXPECT_THAT(NamesShown(), ElementsAre("Anchor", "Bolt", "Clamp"));
            m_user->Click(u"cmdNew");
            m_user->Type(u"Inner");
            m_user->Click(u"cmdSaveClose");
        });
        launcher->Show(Variant());
        EXPECT_THAT(SavedNames(), ElementsAre("Anchor", "Bolt", "Clamp", "Inner"));
        EXPECT_EQ(m_user->OpenForms().size(), 1U);
        EXPECT_THAT(NamesShown(), ElementsAre("Bolt", "Clamp", "Outer"));
        m_user->Click(u"cmdSaveClose");
    });
    launcher->Show(Variant());
    // The last store released wins the file.
    EXPECT_THAT(SavedNames(), ElementsAre("Bolt", "Clamp", "Outer"));
}

} // namespace KestrinProductEditor
