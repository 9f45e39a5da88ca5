// SPDX-License-Identifier: MIT
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

/// A receiver that uses the store while it works.
class StoreReceiver : public StoreFixture
{
protected:
    StoreReceiver()
    {
        WriteCatalogue({{.rowID = 2, .name = "B"}, {.rowID = 3, .name = "D"}, {.rowID = 4, .name = "F"}});
        m_folder.Write("in.csv", "x1,1\r\nx2,2\r\nx3,3\r\n");
        m_store = Open();
        m_store->CancelUpdate(true);
        m_store->SetNotifyCallback(m_receiver);
    }

    /// At the `call`-th call, does `work`.
    void At(std::size_t call, std::function<void()> work) const
    {
        m_receiver->onProgress = [this, call, work = std::move(work)] {
            if (m_receiver->calls.size() == call)
                work();
        };
    }
    void Always(std::function<void()> work) const { m_receiver->onProgress = std::move(work); }

    /// The names that an export writes.
    [[nodiscard]] std::vector<std::string> Exported() const
    {
        m_store->CSVProductExport(ExportParams(m_folder.File("out.csv")));
        return NamesIn("out.csv");
    }
    [[nodiscard]] std::vector<std::string> NamesIn(const char* file) const
    {
        std::vector<std::string> names;
        const std::string text = m_folder.Read(file);
        for (std::size_t line = text.find("\r\n"); line + 2 < text.size(); line = text.find("\r\n", line + 2))
            names.push_back(text.substr(line + 3, text.find('"', line + 3) - line - 3));
        return names;
    }
    [[nodiscard]] ImportResult Imported(std::int32_t append = 1) const
    {
        return ImportResultOf(
            m_store->CSVProductImport(ImportParams(m_folder.File("in.csv"), {0, -1, 1, -1}, 0, append)));
    }

    std::shared_ptr<RecordingReceiver> m_receiver = std::make_shared<RecordingReceiver>();
    std::shared_ptr<ProductLkpMgr> m_store;
};

} // namespace

TEST_F(StoreReceiver, CanMoveTheCursorDuringAnExport)
{
    Always([&] {
        m_store->MoveFirst();
        m_store->MovePrevious();
    });
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F"));
    EXPECT_TRUE(m_store->EOF());
}

TEST_F(StoreReceiver, CanReadEveryRowDuringAnExport)
{
    Always([&] { EXPECT_THAT(NamesOf(*m_store), ElementsAre("B", "D", "F")); });
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F"));
    EXPECT_THAT(m_receiver->Fractions(), ElementsAre(1.0 / 3, 2.0 / 3, 1.0));
}

TEST_F(StoreReceiver, CanAddRowsDuringAnExport)
{
    At(2, [&] { AddNames(*m_store, {"A", "E", "G"}); });
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F")) << "the rows that were there when it began";
    EXPECT_THAT(m_receiver->Fractions(), ElementsAre(1.0 / 3, 2.0 / 3, 1.0));
    EXPECT_EQ(m_store->Count(), 6);
}

TEST_F(StoreReceiver, CannotKeepAnExportFromEnding)
{
    Always([&] { AddNames(*m_store, {"Z"}); });
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F"));
}

TEST_F(StoreReceiver, CanDeleteTheRowThatWasWrittenLast)
{
    At(2, [&] { m_store->Delete(3); });
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F"));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("B", "F"));
}

TEST_F(StoreReceiver, CanDeleteTheRowThatWouldBeWrittenNext)
{
    At(1, [&] { m_store->Delete(3); });
    EXPECT_THAT(Exported(), ElementsAre("B", "F"));
}

TEST_F(StoreReceiver, CanDeleteEveryRowDuringAnExport)
{
    At(2, [&] { m_store->DeleteAll(); });
    EXPECT_THAT(Exported(), ElementsAre("B", "D"));
    EXPECT_EQ(m_store->Count(), 0);
    EXPECT_EQ(m_store->AddNew(Named("A")), 5);
}

TEST_F(StoreReceiver, CanDeleteEveryRowAndAddOthersDuringAnExport)
{
    At(1, [&] {
        m_store->DeleteAll();
        AddNames(*m_store, {"X", "Y"});
    });
    EXPECT_THAT(Exported(), ElementsAre("B"));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("X", "Y"));
}

TEST_F(StoreReceiver, CanRenameRowsDuringAnExport)
{
    At(1, [&] { m_store->Update(Packed(2, "Zip")); });
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F")) << "no row is written twice";
}

TEST_F(StoreReceiver, CanReplaceTheCatalogueDuringAnExport)
{
    m_folder.Write("other.bin", CatalogueFileOf({{.rowID = 9, .name = "Other"}}));
    At(1, [&] { m_store->BinaryProductImport(m_folder.File("other.bin")); });
    EXPECT_THAT(Exported(), ElementsAre("B"));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("Other"));
}

TEST_F(StoreReceiver, IsNotCalledForAnExportThatItStartsItself)
{
    At(2, [&] {
        m_store->CSVProductExport(ExportParams(m_folder.File("inner.csv")));
        EXPECT_THAT(NamesIn("inner.csv"), ElementsAre("B", "D", "F"));
    });
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F"));
    EXPECT_THAT(m_receiver->Fractions(), ElementsAre(1.0 / 3, 2.0 / 3, 1.0));
}

TEST_F(StoreReceiver, IsNotCalledForAnImportThatItStartsItself)
{
    At(1, [&] { EXPECT_EQ(Imported().imported, 3); });
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F"));
    EXPECT_THAT(m_receiver->calls, SizeIs(3));
    EXPECT_EQ(m_store->Count(), 6);
}

TEST_F(StoreReceiver, CanAddRowsDuringAnImport)
{
    Always([&] { AddNames(*m_store, {"A"}); });
    EXPECT_EQ(Imported(), (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("A", "A", "A", "B", "D", "F", "x1", "x2", "x3"));
    EXPECT_THAT(m_receiver->Counts(), ElementsAre(0, 1, 2));
}

TEST_F(StoreReceiver, CanDeleteTheRowThatWasImportedLast)
{
    At(2, [&] { m_store->Delete(m_store->Fields(PF_RowID).Long()); });
    EXPECT_EQ(Imported(), (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("B", "D", "F", "x2", "x3"));
}

TEST_F(StoreReceiver, CanDeleteEveryRowDuringAnImport)
{
    At(3, [&] { m_store->DeleteAll(); });
    EXPECT_EQ(Imported(), (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("x3"));
}

TEST_F(StoreReceiver, SeesEachProductInItsPlaceDuringAnImport)
{
    std::vector<std::vector<std::string>> seen;
    Always([&] { seen.push_back(NamesOf(*m_store)); });
    static_cast<void>(Imported());
    EXPECT_THAT(seen, ElementsAre(ElementsAre("B", "D", "F"), ElementsAre("B", "D", "F", "x1"),
                                  ElementsAre("B", "D", "F", "x1", "x2")));
}

TEST_F(StoreReceiver, CanImportAndExportDuringAnImport)
{
    At(2, [&] {
        EXPECT_THAT(Exported(), ElementsAre("B", "D", "F", "x1"));
        EXPECT_EQ(Imported(0), (ImportResult{0, "", 3, 0}));
    });
    EXPECT_EQ(Imported(), (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("x1", "x2", "x2", "x3", "x3"));
    EXPECT_THAT(m_receiver->calls, SizeIs(3));
}

TEST_F(StoreReceiver, CanReplaceTheCatalogueDuringAnImport)
{
    m_folder.Write("other.bin", CatalogueFileOf({{.rowID = 90, .name = "Other"}}));
    At(2, [&] { m_store->BinaryProductImport(m_folder.File("other.bin")); });
    EXPECT_EQ(Imported(), (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(RowIDsOf(*m_store), ElementsAre(90, 91, 92));
}

TEST_F(StoreReceiver, IsIgnoredWhenItFailsDuringAnImport)
{
    Always([] { throw AutomationError(4711); });
    m_trace->Forget();
    EXPECT_EQ(Imported(), (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(m_trace->CallsLike("error "), IsEmpty());
    EXPECT_THAT(m_receiver->Counts(), ElementsAre(0, 1, 2));
    Always([] { throw 5; });
    EXPECT_EQ(Imported(), (ImportResult{0, "", 3, 0}));
}

TEST_F(StoreReceiver, CanLetGoOfTheLastReferenceDuringAnExport)
{
    AddNames(*m_store, {"A"});
    m_store->CancelUpdate(false);
    At(1, [&] { m_store.reset(); });
    ProductLkpMgr* const store = m_store.get();
    store->CSVProductExport(ExportParams(m_folder.File("out.csv")));
    EXPECT_EQ(m_store, nullptr);
    EXPECT_THAT(NamesIn("out.csv"), ElementsAre("A", "B", "D", "F"));
    EXPECT_THAT(SavedRows(), SizeIs(4));
}

TEST_F(StoreReceiver, CanLetGoOfTheLastReferenceDuringAnImport)
{
    m_store->CancelUpdate(false);
    At(1, [&] { m_store.reset(); });
    ProductLkpMgr* const store = m_store.get();
    const Variant result =
        store->CSVProductImport(ImportParams(m_folder.File("in.csv"), {0, -1, 1, -1}, 0, 1));
    EXPECT_EQ(ImportResultOf(result), (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(SavedRows(), SizeIs(6));
}

TEST_F(StoreReceiver, CanLetGoOfTheLastReferenceAndFailDuringAnExport)
{
    m_store->CancelUpdate(false);
    At(1, [&] {
        m_store.reset();
        throw AutomationError(4711);
    });
    ProductLkpMgr* const store = m_store.get();
    EXPECT_EQ(ErrorNumberOf([&] { store->CSVProductExport(ExportParams(m_folder.File("out.csv"))); }), 4711);
    EXPECT_THAT(SavedRows(), SizeIs(3));
}

TEST_F(StoreReceiver, IsReplacedByAnotherAndReleased)
{
    const auto second = std::make_shared<RecordingReceiver>();
    const std::weak_ptr<RecordingReceiver> first = m_receiver;
    m_store->SetNotifyCallback(second);
    m_receiver.reset();
    EXPECT_TRUE(first.expired());
    static_cast<void>(Imported());
    EXPECT_THAT(second->calls, SizeIs(3));
    m_store->ClearNotifyCallback();
    EXPECT_EQ(second.use_count(), 1);
}

TEST_F(StoreReceiver, LivesThroughACallThatReplacesIt)
{
    const auto second = std::make_shared<RecordingReceiver>();
    RecordingReceiver* const first = m_receiver.get();
    bool wasFilled = false;
    Always([&, first] {
        m_store->SetNotifyCallback(second);
        m_receiver.reset();
        wasFilled = !first->calls.empty();
    });
    static_cast<void>(Imported());
    EXPECT_TRUE(wasFilled);
    EXPECT_THAT(second->Counts(), ElementsAre(1, 2));
}

TEST_F(StoreReceiver, MayBeATraceThatLetsGoOfTheStoreInsideAnyMember)
{
    const std::vector<std::function<void(ProductLkpMgr&)>> members = {
        [](ProductLkpMgr& store) { EXPECT_EQ(store.Count(), 3); },
        [](ProductLkpMgr& store) { EXPECT_EQ(store.Pack(2), Packed(2, "B")); },
        [](ProductLkpMgr& store) { store.Update(Packed(2, "C")); },
        [](ProductLkpMgr& store) { store.AddNew(Named("E")); },
        [](ProductLkpMgr& store) { store.Delete(2); },
        [](ProductLkpMgr& store) { store.DeleteAll(); },
        [](ProductLkpMgr& store) { store.MoveFirst(); },
        [](ProductLkpMgr& store) { store.MoveLast(); },
        [](ProductLkpMgr& store) { store.MovePrevious(); },
        [](ProductLkpMgr& store) { EXPECT_EQ(ErrorNumberOf([&] { store.MoveNext(); }), 3021); },
        [](ProductLkpMgr& store) { EXPECT_EQ(ErrorNumberOf([&] { store.Fields(PF_Name, u"x"); }), 3021); },
        [](ProductLkpMgr& store) {
            EXPECT_EQ(ErrorNumberOf([&] { static_cast<void>(store.Fields(PF_Name)); }), 3021);
        },
        [](ProductLkpMgr& store) { EXPECT_FALSE(store.BOF()); },
        [](ProductLkpMgr& store) { EXPECT_TRUE(store.EOF()); },
        [](ProductLkpMgr& store) { store.FindRow(2); },
        [](ProductLkpMgr& store) { store.FindRowBySyncID(2); },
        [](ProductLkpMgr& store) { store.SetDirtySyncFlags(true); },
        [](ProductLkpMgr& store) { store.SetDirtySessionFlags(true); },
        [this](ProductLkpMgr& store) { store.BinaryProductExport(m_folder.File("out.bin")); },
        [this](ProductLkpMgr& store) { store.BinaryProductImport(m_folder.File("out.bin")); },
        [](ProductLkpMgr& store) {
            Variant columns = Variant::ArrayOf({u"n"});
            Variant map = Variant::ArrayOf({0, -1, -1, -1});
            bool isError = true;
            store.PrvCSVSetRowFields(columns, map, isError);
            EXPECT_FALSE(isError);
        },
    };
    for (std::size_t i = 0; i < members.size(); ++i) {
        SCOPED_TRACE(i);
        m_store = Open();
        m_store->CancelUpdate(true);
        const std::weak_ptr<ProductLkpMgr> watched = m_store;
        m_trace->onCall = [&](const std::string&) { m_store.reset(); };
        members[i](*m_store);
        m_trace->onCall = nullptr;
        EXPECT_TRUE(watched.expired());
        WriteCatalogue({{.rowID = 2, .name = "B"}, {.rowID = 3, .name = "D"}, {.rowID = 4, .name = "F"}});
    }
}

TEST_F(StoreReceiver, CanUseTheStoreFromTheTraceToo)
{
    m_store->ClearNotifyCallback();
    int depth = 0;
    m_trace->onCall = [&](const std::string& call) {
        if (depth > 0 || !call.starts_with("enter "))
            return;
        ++depth;
        static_cast<void>(m_store->Count());
        m_store->MoveFirst();
        --depth;
    };
    EXPECT_EQ(Imported(), (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(Exported(), ElementsAre("B", "D", "F", "x1", "x2", "x3"));
    m_trace->onCall = nullptr;
}

} // namespace KestrinProductEditor
