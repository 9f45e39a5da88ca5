// SPDX-License-Identifier: MIT
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kHeader = "\"Name\",\"PartNum\",\"UnitPrice\",\"Note\"\r\n";
constexpr const char* kContext = "KestrinProductEditor.ProductLkpMgr::CSVProductExport";

class StoreExport : public StoreFixture
{
protected:
    /// What an export of the store holds.
    [[nodiscard]] std::string Exported() const
    {
        m_store->CSVProductExport(ExportParams(m_folder.File("out.csv")));
        return m_folder.Read("out.csv");
    }

    std::shared_ptr<ProductLkpMgr> m_store = Open();
};

} // namespace

TEST_F(StoreExport, WritesTheHeaderAloneForAnEmptyStore)
{
    const auto receiver = std::make_shared<RecordingReceiver>();
    m_store->SetNotifyCallback(receiver);
    EXPECT_EQ(Exported(), kHeader);
    EXPECT_THAT(receiver->calls, IsEmpty());
}

TEST_F(StoreExport, WritesALineForEachProductInNameOrder)
{
    m_store->AddNew(Packed(0, "Widget", "K", "W-100", 12345000, "Blue; large"));
    m_store->AddNew(Packed(0, "anchor"));
    EXPECT_EQ(Exported(), std::string(kHeader) + "\"anchor\",\"\",\"$0.00\",\"\"\r\n"
                                                 "\"Widget\",\"W-100\",\"$1,234.50\",\"Blue; large\"\r\n");
}

TEST_F(StoreExport, CleansEveryText)
{
    m_store->AddNew(Packed(0, "He said \"hi\"", "", "a\nb\rc\r\nd\n\re", 0, "a\r\nb"));
    EXPECT_EQ(Exported(), std::string(kHeader) + "\"He said 'hi'\",\"a;b;c;d;;e\",\"$0.00\",\"a;b\"\r\n");
    EXPECT_EQ(m_store->Pack(2), Packed(2, "He said \"hi\"", "", "a\nb\rc\r\nd\n\re", 0, "a\r\nb"));
}

TEST_F(StoreExport, KeepsCommasAndBlanks)
{
    m_store->AddNew(Packed(0, " Bolt, M6 ", "", "~", 0, "\t"));
    EXPECT_EQ(Exported(), std::string(kHeader) + "\" Bolt, M6 \",\"~\",\"$0.00\",\"\t\"\r\n");
}

TEST_F(StoreExport, WritesPricesInTheLocalesForm)
{
    const struct
    {
        const char* locale;
        std::int64_t price;
        const char* text;
    } prices[] = {
        {"en_US.UTF-8", 0, "$0.00"},
        {"en_US.UTF-8", 12345000, "$1,234.50"},
        {"en_US.UTF-8", 42949672959900, "$4,294,967,295.99"},
        {"en_US.UTF-8", -12345000, "-$1,234.50"},
        {"en_US.UTF-8", 12345, "$1.23"},
        {"en_US.UTF-8", 10050, "$1.01"},
        {"en_US.UTF-8", -10050, "-$1.01"},
        {"en_US.UTF-8", 49, "$0.00"},
        {"en_US.UTF-8", 50, "$0.01"},
        {"en_IN.UTF-8", 123456700000, "\u20b91,23,45,670.00"},
        {"de_DE.UTF-8", 12345000, "1.234,50 \u20ac"},
        {"C", 12345000, "1,234.50"},
    };
    m_store->AddNew(Named("Anchor"));
    for (const auto& price : prices) {
        const ScopedLocaleVariables locale(price.locale);
        m_store->FindRow(2);
        m_store->Fields(PF_UnitPrice, Currency::FromScaled(price.price));
        EXPECT_EQ(Exported(), std::string(kHeader) + "\"Anchor\",\"\",\"" + price.text + "\",\"\"\r\n")
            << price.locale;
    }
}

TEST_F(StoreExport, ReplacesAnExistingFileEntirely)
{
    m_folder.Write("out.csv", std::string(100000, 'x'));
    EXPECT_EQ(Exported(), kHeader);
}

TEST_F(StoreExport, ReportsTheFractionDone)
{
    AddNames(*m_store, {"Anchor", "Bolt", "Clamp", "Drill"});
    const auto receiver = std::make_shared<RecordingReceiver>();
    m_store->SetNotifyCallback(receiver);
    static_cast<void>(Exported());
    EXPECT_THAT(receiver->Fractions(), ElementsAre(0.25, 0.5, 0.75, 1.0));
    for (const Variant& call : receiver->calls)
        EXPECT_EQ(call.Array().Extent(1), 1);
}

TEST_F(StoreExport, ReportsNothingOnceTheReceiverIsTakenAway)
{
    AddNames(*m_store, {"Anchor", "Bolt", "Clamp"});
    const auto receiver = std::make_shared<RecordingReceiver>();
    receiver->onProgress = [&] { m_store->ClearNotifyCallback(); };
    m_store->SetNotifyCallback(receiver);
    static_cast<void>(Exported());
    EXPECT_EQ(receiver->calls.size(), 1U);
    EXPECT_THAT(receiver->Fractions(), ElementsAre(1.0 / 3));
}

TEST_F(StoreExport, LeavesTheCursorBehindTheLastRowAndTheSessionAsItWas)
{
    WriteCatalogue({{.rowID = 2, .name = "Anchor"}, {.rowID = 3, .name = "Bolt"}});
    m_store = Open();
    m_store->MoveFirst();
    static_cast<void>(Exported());
    EXPECT_TRUE(m_store->EOF());
    EXPECT_FALSE(m_store->SessionIsDirty());
    EXPECT_FALSE(m_store->CancelUpdate());
}

TEST_F(StoreExport, ReportsNothingToTheTraceButItself)
{
    AddNames(*m_store, {"Anchor", "Bolt"});
    m_trace->Forget();
    static_cast<void>(Exported());
    EXPECT_THAT(m_trace->Calls(),
                ElementsAre(std::string("enter ") + kContext, std::string("exit ") + kContext));
}

TEST_F(StoreExport, RefusesWhatIsNoParameters)
{
    AddNames(*m_store, {"Anchor"});
    m_store->MoveFirst();
    const struct
    {
        const char* what;
        Variant value;
        std::int32_t number;
    } values[] = {
        {"Empty", Variant(), 13},
        {"Null", Variant::Null(), 13},
        {"a path outside an array", m_folder.File("out.csv"), 13},
        {"no element", Variant::ArrayOf({}), 9},
        {"two dimensions", VariantArray(1, 1), 9},
        {"a path that is Null", Variant::ArrayOf({Variant::Null()}), 13},
        {"a path that is an array", Variant::ArrayOf({Variant::ArrayOf({u"x"})}), 13},
        {"an empty path", Variant::ArrayOf({u""}), 52},
        {"a path with NUL in it", Variant::ArrayOf({std::u16string(u"a\0b", 3)}), 52},
    };
    for (const auto& value : values) {
        m_trace->Forget();
        EXPECT_EQ(ErrorNumberOf([&] { m_store->CSVProductExport(value.value); }), value.number) << value.what;
        const std::string number = std::to_string(value.number);
        EXPECT_THAT(m_trace->Calls(),
                    ElementsAre(std::string("enter ") + kContext, "error " + number, "number " + number));
        EXPECT_EQ(CurrentName(*m_store), "Anchor");
    }
    EXPECT_THAT(m_folder.Names(), ElementsAre("db"));
}

TEST_F(StoreExport, FailsWhereThereIsNoFolder)
{
    EXPECT_EQ(ErrorNumberOf([&] { m_store->CSVProductExport(ExportParams(m_folder.File("no/out.csv"))); }),
              76);
    EXPECT_EQ(ErrorNumberOf([&] { m_store->CSVProductExport(ExportParams(m_folder.File("db"))); }), 75);
}

TEST_F(StoreExport, DoesNotTakeThePlaceOfTheCatalogue)
{
    AddNames(*m_store, {"Anchor"});
    m_store.reset();
    m_store = Open();
    const std::string before = CatalogueBytes();
    std::filesystem::create_hard_link(m_database / "corvprd2.cpd", m_folder.Path() / "second");
    for (const std::u16string& path :
         {CataloguePath(), m_folder.File("db/../db/corvprd2.cpd"), m_folder.File("second")}) {
        m_trace->Forget();
        const auto error = ErrorOf([&] { m_store->CSVProductExport(ExportParams(path)); });
        ASSERT_TRUE(error) << ToUtf8(path);
        EXPECT_EQ(error->Number(), kErrPathFileAccess);
        EXPECT_EQ(error->Source(), ToUtf16(kContext));
        EXPECT_EQ(error->Description(), u"The export would take the place of the catalogue itself.");
        EXPECT_THAT(m_trace->Calls(), ElementsAre(std::string("enter ") + kContext, "error 75", "number 75"));
        EXPECT_EQ(CatalogueBytes(), before);
    }
}

TEST_F(StoreExport, DoesNotTakeThePlaceOfACatalogueThatIsStillToBeWritten)
{
    std::filesystem::remove(m_database / "corvprd2.cpd");
    EXPECT_EQ(ErrorNumberOf([&] { m_store->CSVProductExport(ExportParams(CataloguePath())); }),
              kErrPathFileAccess);
    EXPECT_FALSE(CatalogueExists());
}

TEST_F(StoreExport, EndsWithTheErrorOfAReceiverAndKeepsTheLinesBefore)
{
    AddNames(*m_store, {"Anchor", "Bolt", "Clamp"});
    const auto receiver = std::make_shared<RecordingReceiver>();
    receiver->onProgress = [&] {
        if (receiver->calls.size() == 2)
            throw AutomationError(4711, u"host", u"enough");
    };
    m_store->SetNotifyCallback(receiver);
    m_trace->Forget();
    const auto error = ErrorOf([&] { static_cast<void>(Exported()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), 4711);
    EXPECT_EQ(error->Description(), u"enough");
    EXPECT_THAT(m_trace->Calls(), ElementsAre(std::string("enter ") + kContext, "error 4711", "number 4711"));
    EXPECT_EQ(m_folder.Read("out.csv"), std::string(kHeader) + "\"Anchor\",\"\",\"$0.00\",\"\"\r\n"
                                                               "\"Bolt\",\"\",\"$0.00\",\"\"\r\n");
    receiver->onProgress = nullptr;
    static_cast<void>(Exported());
    EXPECT_THAT(receiver->Fractions(), ElementsAre(1.0 / 3, 2.0 / 3, 1.0 / 3, 2.0 / 3, 1.0));
}

TEST_F(StoreExport, WritesARenamedRowInItsNewPlace)
{
    AddNames(*m_store, {"Anchor", "Bolt"});
    m_store->MoveFirst();
    m_store->Fields(PF_Name, u"Zip");
    EXPECT_EQ(Exported(),
              std::string(kHeader) + "\"Bolt\",\"\",\"$0.00\",\"\"\r\n\"Zip\",\"\",\"$0.00\",\"\"\r\n");
}

} // namespace KestrinProductEditor
