// SPDX-License-Identifier: MIT
#include "server/ClassTable.h"

#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <KestrinProductEditor/CreateObject.h>
#include <KestrinProductEditor/ProdLkpEditDlg.h>
#include <KestrinProductEditor/ProductEditorDlg.h>
#include <KestrinProductEditor/ProductExportDlg.h>
#include <KestrinProductEditor/ProductImportDlg.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CreateObjectTest : public StoreFixture
{
};

template<class Class>
[[nodiscard]] bool Makes(std::string_view classID)
{
    return std::dynamic_pointer_cast<Class>(CreateObject(classID)) != nullptr;
}

} // namespace

TEST(ClassTable, HasTheOrderOfTheTypeLibrary)
{
    std::vector<std::string> names;
    for (const ClassEntry& entry : ClassTable())
        names.emplace_back(entry.name);
    EXPECT_THAT(names, ElementsAre("ProdLkpEditDlg", "ProductLkpMgr", "ProductEditorDlg", "IPNotifyCallback",
                                   "ProductImportDlg", "IProcessProgress", "ProductExportDlg"));
}

TEST_F(CreateObjectTest, MakesEachClass)
{
    EXPECT_TRUE(Makes<ProdLkpEditDlg>("KestrinProductEditor.ProdLkpEditDlg"));
    EXPECT_TRUE(Makes<ProductLkpMgr>("KestrinProductEditor.ProductLkpMgr"));
    EXPECT_TRUE(Makes<ProductEditorDlg>("KestrinProductEditor.ProductEditorDlg"));
    EXPECT_TRUE(Makes<ProductImportDlg>("KestrinProductEditor.ProductImportDlg"));
    EXPECT_TRUE(Makes<ProductExportDlg>("KestrinProductEditor.ProductExportDlg"));
}

TEST_F(CreateObjectTest, DoesNotMindLetterCase)
{
    EXPECT_TRUE(Makes<ProdLkpEditDlg>("kestrinproducteditor.PRODLKPEDITDLG"));
    EXPECT_TRUE(Makes<ProductLkpMgr>("KESTRINPRODUCTEDITOR.productlkpmgr"));
}

TEST_F(CreateObjectTest, MakesAnotherObjectEachTime)
{
    EXPECT_NE(CreateObject("KestrinProductEditor.ProdLkpEditDlg"),
              CreateObject("KestrinProductEditor.ProdLkpEditDlg"));
}

TEST_F(CreateObjectTest, RefusesInterfacesAndUnknownNames)
{
    for (const std::string& classID :
         {std::string("KestrinProductEditor.IPNotifyCallback"),
          std::string("KestrinProductEditor.IProcessProgress"),
          std::string("kestrinproducteditor.iprocessprogress"), std::string("KestrinProductEditor.Product"),
          std::string("KestrinProductEditor.ProductLkpView"), std::string("KestrinProductEditor."),
          std::string("KestrinProductEditor"), std::string("."), std::string(), std::string("ProductLkpMgr"),
          std::string("KestrinProductMgr.ProductLkpMgr"), std::string("KestrinProductEditor.ProductLkpMgr.1"),
          std::string("KestrinProductEditor.ProductLkpMgr "),
          std::string("KestrinProductEditor..ProductLkpMgr"),
          std::string("KestrinProductEditor.ProductLkpMgr\0", 35), std::string("CorvoTWrp.Trace")}) {
        const auto error = ErrorOf([&] { static_cast<void>(CreateObject(classID)); });
        ASSERT_TRUE(error) << classID;
        EXPECT_EQ(error->Number(), 429) << classID;
        EXPECT_THAT(ToUtf8(error->Description()), HasSubstr("'" + classID + "'"));
    }
}

TEST_F(CreateObjectTest, PassesOnWhatTheClassFailsWith)
{
    WriteCatalogue("no catalogue");
    EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(CreateObject("KestrinProductEditor.ProductLkpMgr")); }),
              321);
}

} // namespace KestrinProductEditor
