// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/ProductEditorDlg.h>
#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>

#include "support/CapturingToolkit.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace KestrinProductEditor {

namespace {

class LaunchersTest : public StoreFixture
{
protected:
    NoWindows m_noWindows;
};

template<class Action>
void ExpectNoWindows(Action&& show)
{
    const auto error = ErrorOf(std::forward<Action>(show));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 445);
}

template<class Launcher>
void ExpectToKeepTheStoreUntilItIsShown()
{
    const auto launcher = Launcher::Create();
    std::shared_ptr<ProductLkpMgr> store = ProductLkpMgr::Create();
    const std::weak_ptr<ProductLkpMgr> watched = store;
    launcher->Init(store);
    store.reset();
    for (int time = 0; time < 2; ++time) {
        EXPECT_FALSE(watched.expired());
        ExpectNoWindows([&] { launcher->Show(); });
    }
    EXPECT_FALSE(watched.expired());
}

} // namespace

TEST_F(LaunchersTest, PassOnThatThereAreNoWindows)
{
    ExpectNoWindows([] { ProductEditorDlg::Create()->Show(Variant()); });
    ExpectNoWindows([] { ProductEditorDlg::Create()->Show(Variant::ArrayOf({1})); });
    ExpectNoWindows([] { ProductImportDlg::Create()->Show(); });
    ExpectNoWindows([] { ProductExportDlg::Create()->Show(); });
}

TEST_F(LaunchersTest, KeepTheStoreUntilAShowThatHasAWindow)
{
    ExpectToKeepTheStoreUntilItIsShown<ProductImportDlg>();
    ExpectToKeepTheStoreUntilItIsShown<ProductExportDlg>();
}

TEST_F(LaunchersTest, TakeAnotherStoreInPlaceOfTheFirst)
{
    const auto launcher = ProductImportDlg::Create();
    auto first = Open();
    const std::weak_ptr<ProductLkpMgr> watched = first;
    launcher->Init(first);
    first.reset();
    launcher->Init(nullptr);
    EXPECT_TRUE(watched.expired());
}

TEST_F(LaunchersTest, TouchNoCatalogueWithoutWindows)
{
    ExpectNoWindows([] { ProductEditorDlg::Create()->Show(Variant()); });
    EXPECT_FALSE(CatalogueExists());
}

} // namespace KestrinProductEditor
