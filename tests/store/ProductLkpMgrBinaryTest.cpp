// SPDX-License-Identifier: MIT
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class StoreBinary : public StoreFixture
{
protected:
    StoreBinary()
    {
        WriteCatalogue({{.rowID = 3, .uniqueID = 33, .status = 1, .name = "Bolt", .key = "K", .price = 5},
                        {.rowID = 9, .uniqueID = 99, .name = "anchor", .note = "N", .dirtySync = true}});
        m_store = Open();
        m_store->CancelUpdate(true);
    }

    [[nodiscard]] static std::vector<ProductRow> RowsAfterImport()
    {
        return {
            {.rowID = 9, .name = "anchor", .note = "N", .dirtySession = true, .dirtySync = true},
            {.rowID = 3, .name = "Bolt", .key = "K", .price = 5, .dirtySession = true, .dirtySync = true}};
    }

    std::shared_ptr<ProductLkpMgr> m_store;
};

} // namespace

TEST_F(StoreBinary, GivesBackWhatItExportedDueForSynchronisation)
{
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    m_store->BinaryProductImport(m_folder.File("out.bin"));
    EXPECT_TRUE(m_store->EOF());
    EXPECT_EQ(RowsOf(*m_store), RowsAfterImport());
    EXPECT_EQ(m_store->AddNew(Named("Zip")), 10);
}

TEST_F(StoreBinary, ExportsInTheFormOfTheCatalogueFile)
{
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    m_store->CancelUpdate(false);
    m_store.reset();
    EXPECT_EQ(m_folder.Read("out.bin"), CatalogueBytes());
}

TEST_F(StoreBinary, ChangesNothingByAnExport)
{
    m_store->FindRow(9);
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    EXPECT_EQ(CurrentName(*m_store), "anchor");
    EXPECT_FALSE(m_store->SessionIsDirty());
    EXPECT_TRUE(m_store->CancelUpdate());
    EXPECT_FALSE(m_store->Fields(PF_DirtySession).Boolean());
}

TEST_F(StoreBinary, ExportsRowsWithoutANameToo)
{
    m_store->AddNew(Variant::Null());
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    m_store->BinaryProductImport(m_folder.File("out.bin"));
    EXPECT_EQ(m_store->Count(), 3);
}

TEST_F(StoreBinary, ExportsOverAnExistingFile)
{
    m_folder.Write("out.bin", std::string(100000, 'x'));
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    m_store->BinaryProductImport(m_folder.File("out.bin"));
    EXPECT_EQ(m_store->Count(), 2);
}

TEST_F(StoreBinary, ReplacesTheCatalogueWithoutMerging)
{
    std::vector<std::string> names;
    for (int i = 0; i < 8; ++i)
        names.push_back("More " + std::to_string(i));
    AddNames(*m_store, names);
    m_folder.Write(
        "in.bin",
        CatalogueFileOf({{.rowID = 1, .name = "C"}, {.rowID = 4, .name = "a"}, {.rowID = 2, .name = "B"}}));
    m_store->BinaryProductImport(m_folder.File("in.bin"));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("a", "B", "C"));
    EXPECT_EQ(m_store->AddNew(Named("D")), 5);
}

TEST_F(StoreBinary, ImportsAFileOfNoRows)
{
    m_folder.Write("in.bin", CatalogueFileOf({}));
    m_store->BinaryProductImport(m_folder.File("in.bin"));
    EXPECT_EQ(m_store->Count(), 0);
    EXPECT_TRUE(m_store->BOF());
    EXPECT_TRUE(m_store->EOF());
    EXPECT_EQ(m_store->AddNew(Named("D")), 2);
}

TEST_F(StoreBinary, WillBeSavedAfterAnImport)
{
    m_store->BinaryProductExport(m_folder.File("out.bin"));
    EXPECT_TRUE(m_store->CancelUpdate());
    m_store->BinaryProductImport(m_folder.File("out.bin"));
    EXPECT_FALSE(m_store->CancelUpdate());
    EXPECT_TRUE(m_store->SessionIsDirty());
    m_store.reset();
    EXPECT_EQ(SavedRows(), RowsAfterImport());
}

TEST_F(StoreBinary, SaysThatThePathDoesNotExist)
{
    const std::vector<ProductRow> before = RowsOf(*m_store);
    for (const std::u16string& path : {m_folder.File("absent.bin"), m_folder.File("absent/in.bin"),
                                       m_folder.File("db"), std::u16string()}) {
        const auto error = ErrorOf([&] { m_store->BinaryProductImport(path); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Number(), -2147220503);
        EXPECT_EQ(error->Source(), u"KestrinProductMgr.ProductLkpMgr::BinaryProductImport");
        EXPECT_EQ(error->Description(), u"The path specified does not exist.");
        EXPECT_TRUE(m_store->CancelUpdate());
        EXPECT_FALSE(m_store->SessionIsDirty());
        EXPECT_EQ(RowsOf(*m_store), before);
    }
}

TEST_F(StoreBinary, AsksTwiceForTheNumberOfAMissingPath)
{
    m_trace->Forget();
    m_trace->AnswerInTurn({1001, 1002});
    EXPECT_EQ(ErrorNumberOf([&] { m_store->BinaryProductImport(m_folder.File("absent.bin")); }), 1002);
    EXPECT_THAT(m_trace->Calls(), ElementsAre("enter KestrinProductMgr.ProductLkpMgr::BinaryProductImport",
                                              "number none", "error 1001", "number 1001"));
}

TEST_F(StoreBinary, KeepsEveryRowWhenTheFileIsNoCatalogue)
{
    const std::vector<ProductRow> before = RowsOf(*m_store);
    const std::string file = CatalogueFileOf({{.rowID = 1, .name = "C"}, {.rowID = 2, .name = "D"}});
    for (const std::string& bytes : {std::string(), std::string("no catalogue"),
                                     file.substr(0, file.size() / 2), file.substr(0, file.size() - 1)}) {
        m_folder.Write("in.bin", bytes);
        const auto error = ErrorOf([&] { m_store->BinaryProductImport(m_folder.File("in.bin")); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Number(), 321);
        EXPECT_THAT(ToUtf8(error->Description()), HasSubstr("at byte "));
        EXPECT_EQ(RowsOf(*m_store), before);
        EXPECT_EQ(m_folder.Read("in.bin"), bytes);
        EXPECT_EQ(m_store->AddNew(Named("Zip")), 10);
        m_store->CancelUpdate(true);
        m_store = Open();
        m_store->CancelUpdate(true);
    }
}

TEST_F(StoreBinary, ReportsAFailedImportAtBothLevels)
{
    m_folder.Write("in.bin", "no catalogue");
    m_trace->Forget();
    EXPECT_EQ(ErrorNumberOf([&] { m_store->BinaryProductImport(m_folder.File("in.bin")); }), 321);
    const std::string store = "KestrinProductMgr.ProductLkpMgr::";
    EXPECT_THAT(m_trace->Calls(),
                ElementsAre("enter " + store + "BinaryProductImport", "enter " + store + "LoadProductRS",
                            "enter " + store + "InitProductRS", "exit " + store + "InitProductRS",
                            "error 321", "number 321", "error 321", "number 321"));
}

TEST_F(StoreBinary, FailsToExportWhereThereIsNoFolder)
{
    EXPECT_EQ(ErrorNumberOf([&] { m_store->BinaryProductExport(m_folder.File("no/out.bin")); }), 76);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->BinaryProductExport(m_folder.File("db")); }), 75);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->BinaryProductExport(u""); }), 52);
}

TEST_F(StoreBinary, CanExportToItsOwnCatalogue)
{
    AddNames(*m_store, {"Zip"});
    m_store->BinaryProductExport(CataloguePath());
    EXPECT_EQ(SavedRows().size(), 3U);
}

} // namespace KestrinProductEditor
