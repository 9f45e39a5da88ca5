// SPDX-License-Identifier: MIT
#include "fake/FailingFileSystem.h"
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class StoreFiles : public StoreFixture
{
protected:
    [[nodiscard]] static std::vector<ProductRow> SomeRows(std::size_t count, const std::string& note)
    {
        std::vector<ProductRow> rows;
        for (std::size_t i = 0; i < count; ++i)
            rows.push_back({.rowID = static_cast<std::int32_t>(i + 1),
                            .name = "Product " + std::to_string(1000 + i),
                            .partNum = "P-" + std::to_string(i),
                            .price = 12345,
                            .note = note});
        return rows;
    }

    /// Opening fails with `number` and a text that holds `text`, and leaves the database folder as it is.
    void ExpectCannotOpen(std::int32_t number, const std::string& text) const
    {
        const std::vector<std::string> before = DatabaseNames();
        const auto error = ErrorOf([] { static_cast<void>(Open()); });
        ASSERT_TRUE(error);
        EXPECT_EQ(error->Number(), number) << ToUtf8(error->Description());
        EXPECT_THAT(ToUtf8(error->Description()), HasSubstr(text));
        EXPECT_EQ(DatabaseNames(), before);
    }

    /// Does `work` on a disk that takes `count` bytes more.
    void OnAFullDisk(std::uint64_t count, const std::function<void()>& work)
    {
        FailingFileSystem disk(PlatformFileSystem());
        const ScopedFileSystem scoped(disk);
        disk.FailAfterWriting(count);
        work();
    }
};

} // namespace

TEST_F(StoreFiles, RefuseACatalogueThatIsAFolder)
{
    std::filesystem::create_directory(m_database / "corvprd2.cpd");
    ExpectCannotOpen(75, "corvprd2.cpd");
    EXPECT_TRUE(std::filesystem::is_directory(m_database / "corvprd2.cpd"));
}

TEST_F(StoreFiles, RefuseAMissingFolder)
{
    m_config->values[u"DBSubdirName"] = u"absent";
    ExpectCannotOpen(76, ToUtf8(FileSystem().BuildPath(u"absent", u"corvprd2.cpd")));
    EXPECT_FALSE(std::filesystem::exists(m_folder.Path() / "absent"));
}

TEST_F(StoreFiles, RefuseAFolderThatIsAFile)
{
    m_folder.Write("file", "x");
    m_config->values[u"DBSubdirName"] = u"file";
    ExpectCannotOpen(76, ToUtf8(FileSystem().BuildPath(u"file", u"corvprd2.cpd")));
    EXPECT_EQ(m_folder.Read("file"), "x");
}

TEST_F(StoreFiles, RefuseAnEmptyCatalogue)
{
    WriteCatalogue("");
    ExpectCannotOpen(321, "at byte 0: ");
    EXPECT_EQ(CatalogueBytes(), "");
}

TEST_F(StoreFiles, RefuseWhatIsNoCatalogueAndLeaveIt)
{
    for (const std::string& bytes :
         {std::string("%PDF-1.7\n"), std::string(10000, '\0'), std::string(10000, '\xFF'),
          std::string("\"Name\",\"PartNum\",\"UnitPrice\",\"Note\"\r\n"), std::string("x")}) {
        WriteCatalogue(bytes);
        ExpectCannotOpen(321, "at byte ");
        EXPECT_EQ(CatalogueBytes(), bytes);
    }
}

TEST_F(StoreFiles, NameTheFileAndTheReasonWhenTheyRefuseIt)
{
    WriteCatalogue("no catalogue");
    const auto error = ErrorOf([] { static_cast<void>(Open()); });
    ASSERT_TRUE(error);
    EXPECT_THAT(ToUtf8(error->Description()),
                testing::StartsWith("cannot read '" + ToUtf8(CataloguePath()) +
                                    "' as a product catalogue: at byte 0: this is no catalogue file"));
}

TEST_F(StoreFiles, RefuseACatalogueCutOffAnywhere)
{
    const std::string whole = CatalogueFileOf(SomeRows(3, "note"));
    for (std::size_t length = 0; length < whole.size(); ++length) {
        const std::string bytes = whole.substr(0, length);
        WriteCatalogue(bytes);
        EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 321) << length;
        ASSERT_EQ(CatalogueBytes(), bytes) << length;
    }
    EXPECT_THAT(m_trace->CallsLike("enter KestrinProductMgr.ProductLkpMgr::Class_Terminate"), IsEmpty());
    EXPECT_THAT(DatabaseNames(), ElementsAre("corvprd2.cpd"));
}

TEST_F(StoreFiles, PassOnAFailingDiskWhileReading)
{
    WriteCatalogue(SomeRows(100, "note"));
    const std::string before = CatalogueBytes();
    for (std::uint64_t count = 0; count < before.size(); count += before.size() / 20) {
        FailingFileSystem disk(PlatformFileSystem());
        const ScopedFileSystem scoped(disk);
        disk.FailAfterReading(count);
        EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 57);
        disk.Heal();
        disk.FailAtOpening();
        EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 70);
        disk.Heal();
        disk.FailAtLooking();
        EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 70);
    }
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(StoreFiles, LeaveNoHalfCatalogueWhenAMissingOneCannotBeCreated)
{
    OnAFullDisk(10, [] { EXPECT_EQ(ErrorNumberOf([] { static_cast<void>(Open()); }), 61); });
    EXPECT_THAT(DatabaseNames(), IsEmpty());
}

TEST_F(StoreFiles, KeepTheOldCatalogueWhenTheDiskFillsUpDuringASave)
{
    WriteCatalogue(SomeRows(40, "note"));
    Open().reset();
    const std::string before = CatalogueBytes();
    for (std::uint64_t count = 0; count < before.size(); ++count) {
        OnAFullDisk(count, [&] {
            auto store = Open();
            m_trace->Forget();
            store.reset();
            EXPECT_THAT(m_trace->CallsLike("error "), ElementsAre("error 61", "error 61"));
        });
        ASSERT_EQ(CatalogueBytes(), before) << count;
    }
    EXPECT_THAT(DatabaseNames(), ElementsAre("corvprd2.cpd"));
    OnAFullDisk(before.size(), [&] {
        auto store = Open();
        m_trace->Forget();
        store.reset();
        EXPECT_THAT(m_trace->CallsLike("error "), IsEmpty());
    });
}

TEST_F(StoreFiles, KeepTheOldCatalogueWhenASaveCannotBeginOrEnd)
{
    WriteCatalogue(SomeRows(40, "note"));
    const std::string before = CatalogueBytes();
    for (const bool atOpening : {true, false}) {
        FailingFileSystem disk(PlatformFileSystem());
        const ScopedFileSystem scoped(disk);
        auto store = Open();
        AddNames(*store, {"Zip"});
        if (atOpening)
            disk.FailAtOpening();
        else
            disk.FailAtClosing();
        m_trace->Forget();
        store.reset();
        const std::string number = atOpening ? "error 70" : "error 57";
        EXPECT_THAT(m_trace->CallsLike("error "), ElementsAre(number, number));
        EXPECT_EQ(CatalogueBytes(), before);
        EXPECT_THAT(DatabaseNames(), ElementsAre("corvprd2.cpd"));
    }
}

TEST_F(StoreFiles, KeepTheOldFileWhenTheDiskFillsUpDuringABinaryExport)
{
    WriteCatalogue(SomeRows(40, "note"));
    const auto store = Open();
    store->BinaryProductExport(m_folder.File("out.bin"));
    const std::size_t size = m_folder.Read("out.bin").size();
    m_folder.Write("out.bin", "old");
    const std::string catalogue = CatalogueBytes();
    for (std::uint64_t count = 0; count < size; count += 7) {
        OnAFullDisk(count, [&] {
            EXPECT_EQ(ErrorNumberOf([&] { store->BinaryProductExport(m_folder.File("out.bin")); }), 61);
        });
        ASSERT_EQ(m_folder.Read("out.bin"), "old") << count;
    }
    EXPECT_THAT(m_folder.Names(), ElementsAre("db", "out.bin"));
    EXPECT_EQ(CatalogueBytes(), catalogue);
    EXPECT_EQ(store->Count(), 40);
}

TEST_F(StoreFiles, KeepWhatWasWrittenWhenTheDiskFillsUpDuringACsvExport)
{
    WriteCatalogue(SomeRows(40, "note"));
    const auto store = Open();
    store->CSVProductExport(ExportParams(m_folder.File("out.csv")));
    const std::string whole = m_folder.Read("out.csv");
    const std::string catalogue = CatalogueBytes();
    for (std::uint64_t count = 0; count < whole.size(); count += 11) {
        OnAFullDisk(count, [&] {
            EXPECT_EQ(ErrorNumberOf([&] { store->CSVProductExport(ExportParams(m_folder.File("out.csv"))); }),
                      61);
        });
        ASSERT_EQ(m_folder.Read("out.csv"), whole.substr(0, count));
    }
    EXPECT_THAT(m_folder.Names(), ElementsAre("db", "out.csv"));
    EXPECT_EQ(CatalogueBytes(), catalogue);
    EXPECT_EQ(store->Count(), 40);
}

TEST_F(StoreFiles, KeepTextsOfTwoByteCharactersOfFullLength)
{
    std::string text;
    for (int i = 0; i < 255; ++i)
        text += "\u00e9";
    std::string pairs;
    for (int i = 0; i < 127; ++i)
        pairs += "\U0001F529";
    auto store = Open();
    store->AddNew(Packed(0, text, text, text, 0, text));
    store->AddNew(Packed(0, pairs + "x", "", "", 0, ""));
    store.reset();
    store = Open();
    EXPECT_EQ(store->Pack(2), Packed(2, text, text, text, 0, text));
    EXPECT_EQ(store->Pack(3), Packed(3, pairs + "x"));
}

TEST_F(StoreFiles, KeepEveryCharacterOfTexts)
{
    std::u16string note(u"\U0001F529\r\n\n\r\t \"~' \ufeff\uffff", 15);
    note += u'\0';
    note += u"end ";
    note += static_cast<char16_t>(0xD800);
    note += u'x';
    note += static_cast<char16_t>(0xDC00);
    const std::u16string name(u"a\0\r\n~b", 6);
    const Variant product = Variant::ArrayOf({2, name, u"", u"\U0001F529", Currency(), note});
    auto store = Open();
    store->AddNew(product);
    EXPECT_EQ(store->Pack(2), product);
    store.reset();
    EXPECT_EQ(Open()->Pack(2), product);
}

} // namespace KestrinProductEditor
