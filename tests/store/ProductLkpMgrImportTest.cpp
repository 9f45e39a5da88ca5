// SPDX-License-Identifier: MIT
#include "exchange/csv/IRejectedLines.h"
#include "fake/FailingFileSystem.h"
#include "platform/Text.h"
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Field;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Lt;
using testing::SizeIs;

const std::vector<std::int32_t> kInOrder = {0, 1, 2, 3};

/// A receiver that asks for the lines that are rejected.
class RejectedLines final : public IProcessProgress, public IRejectedLines
{
public:
    void Progress(const Variant& /*vParams*/) override {}
    void LineRejected(std::uint64_t lineNumber, std::string_view reason, std::string_view line) override
    {
        lines.push_back(std::to_string(lineNumber) + ": " + std::string(reason) + ": " + std::string(line));
        if (isFailing)
            throw AutomationError(4711);
    }

    std::vector<std::string> lines;
    bool isFailing = false;
};

class StoreImport : public StoreFixture
{
protected:
    StoreImport()
    {
        WriteCatalogue({{.rowID = 5, .uniqueID = 50, .status = 3, .name = "Old"}});
        m_store = Open();
        m_store->CancelUpdate(true);
    }

    [[nodiscard]] ImportResult Import(std::string_view text, const std::vector<std::int32_t>& map = kInOrder,
                                      std::int32_t titles = 0, std::int32_t append = 0) const
    {
        m_folder.Write("in.csv", text);
        return ImportResultOf(
            m_store->CSVProductImport(ImportParams(m_folder.File("in.csv"), map, titles, append)));
    }
    [[nodiscard]] ImportResult ImportWith(const Variant& vParams) const
    {
        return ImportResultOf(m_store->CSVProductImport(vParams));
    }
    [[nodiscard]] Variant Params(Variant map, Variant titles, Variant append) const
    {
        return Variant::ArrayOf(
            {m_folder.File("in.csv"), std::move(map), std::move(titles), std::move(append)});
    }
    [[nodiscard]] static Variant Map() { return Variant::ArrayOf({0, 1, 2, 3}); }

    /// The one product that a line gives.
    [[nodiscard]] Variant ProductOf(std::string_view line,
                                    const std::vector<std::int32_t>& map = kInOrder) const
    {
        EXPECT_EQ(Import(line, map), (ImportResult{0, "", 1, 0})) << line;
        EXPECT_EQ(m_store->Count(), 1) << line;
        m_store->MoveFirst();
        Variant product = m_store->Pack(m_store->Fields(PF_RowID).Long());
        product.ArrayForWrite().At(0) = std::int32_t{0};
        return product;
    }

    std::shared_ptr<ProductLkpMgr> m_store;
};

} // namespace

TEST_F(StoreImport, TakesALineOfAnExport)
{
    EXPECT_EQ(ProductOf("\"Widget\",\"W-100\",\"$1,234.50\",\"Blue; large\""),
              Packed(0, "Widget", "", "W-100", 12345000, "Blue; large"));
}

TEST_F(StoreImport, TakesTheColumnsThatAreMapped)
{
    EXPECT_EQ(ProductOf("a,b,c", {1, -1, -1, 0}), Packed(0, "b", "", "", 0, "a"));
    EXPECT_EQ(ProductOf("7,b", {1, 1, 0, 1}), Packed(0, "b", "", "b", 70000, "b"));
    EXPECT_EQ(ProductOf("a", {-1, -1, -1, -1}), Packed(0, ""));
    EXPECT_EQ(ProductOf("a,b", {-2147483647, 1, -5, 0}), Packed(0, "", "", "b", 0, "a"));
}

TEST_F(StoreImport, RejectsALineWithTooFewColumns)
{
    EXPECT_EQ(Import("a,b\r\n", {0, 3, -1, -1}), (ImportResult{0, "", 0, 1}));
    EXPECT_EQ(Import("a,b\r\nc,d,e\r\n", {0, 2, -1, -1}), (ImportResult{0, "", 1, 1}));
    EXPECT_EQ(Import("a,b\r\n", {0, -1, -1, 2147483647}), (ImportResult{0, "", 0, 1}));
    EXPECT_EQ(m_store->Count(), 0);
}

TEST_F(StoreImport, RejectsAnEmptyLine)
{
    EXPECT_EQ(Import("a\r\n\r\nb\r\n", {0, -1, -1, -1}), (ImportResult{0, "", 2, 1}));
    EXPECT_EQ(Import("\n\n\n", {0, -1, -1, -1}), (ImportResult{0, "", 0, 3}));
    EXPECT_EQ(Import("a\r\n\r\n", {0, -1, -1, -1}), (ImportResult{0, "", 1, 1}));
}

TEST_F(StoreImport, EmptiesTheStoreUnlessItAppends)
{
    EXPECT_EQ(Import("New\r\n", {0, -1, -1, -1}, 0, 1).imported, 1);
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("New", "Old"));
    EXPECT_EQ(Import("Newer\r\n", {0, -1, -1, -1}, 0, 0).imported, 1);
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("Newer"));
}

TEST_F(StoreImport, EmptiesTheStoreForAFileOfTitlesAlone)
{
    EXPECT_EQ(Import("Name,PartNum,UnitPrice,Note\r\n", kInOrder, 1, 0), (ImportResult{0, "", 0, 0}));
    EXPECT_EQ(m_store->Count(), 0);
    EXPECT_TRUE(m_store->SessionIsDirty());
}

TEST_F(StoreImport, TakesAnEmptyFile)
{
    for (const std::int32_t titles : {0, 1}) {
        EXPECT_EQ(Import("", kInOrder, titles, 1), (ImportResult{0, "", 0, 0}));
        EXPECT_EQ(m_store->Count(), 1);
    }
    EXPECT_TRUE(m_store->SessionIsDirty());
}

TEST_F(StoreImport, SkipsTheLineOfTitlesOnlyWhenToldTo)
{
    EXPECT_EQ(Import("a,,1,\r\nb,,2,\r\n", kInOrder, 1).imported, 1);
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("b"));
    EXPECT_EQ(Import("a,,1,\r\nb,,2,\r\n", kInOrder, 0).imported, 2);
}

TEST_F(StoreImport, TakesNothingButTheNumberOneForATickedFlag)
{
    const struct
    {
        const char* what;
        Variant flag;
        bool isTicked;
    } flags[] = {
        {"1", std::int32_t{1}, true},
        {"1.0", 1.0, true},
        {"1 of money", Currency::FromUnits(1), true},
        {"True", true, false},
        {"-1", std::int32_t{-1}, false},
        {"2", std::int32_t{2}, false},
        {"0", std::int32_t{0}, false},
        {"1.5", 1.5, false},
        {"the text 1", u"1", false},
        {"Empty", Variant(), false},
        {"Null", Variant::Null(), false},
        {"an array", Variant::ArrayOf({1}), false},
    };
    m_folder.Write("in.csv", "first\r\nsecond\r\n");
    for (const auto& flag : flags) {
        SCOPED_TRACE(flag.what);
        const Variant map = Variant::ArrayOf({0, -1, -1, -1});
        EXPECT_EQ(ImportWith(Params(map, flag.flag, 0)), (ImportResult{0, "", flag.isTicked ? 1 : 2, 0}));
        const std::int32_t before = m_store->Count();
        EXPECT_EQ(ImportWith(Params(map, 0, flag.flag)), (ImportResult{0, "", 2, 0}));
        EXPECT_EQ(m_store->Count(), flag.isTicked ? before + 2 : 2);
    }
}

TEST_F(StoreImport, AnswersBadParametersWithAnErrorAndTouchesNothing)
{
    m_folder.Write("in.csv", "a,b,1,d\r\n");
    const std::vector<ProductRow> before = RowsOf(*m_store);
    const struct
    {
        const char* what;
        Variant value;
        std::int32_t number;
    } values[] = {
        {"Empty", Variant(), 13},
        {"Null", Variant::Null(), 13},
        {"a path", m_folder.File("in.csv"), 13},
        {"no elements", Variant::ArrayOf({}), 9},
        {"no map", Variant::ArrayOf({m_folder.File("in.csv")}), 9},
        {"no flags", Variant::ArrayOf({m_folder.File("in.csv"), Map()}), 9},
        {"one flag", Variant::ArrayOf({m_folder.File("in.csv"), Map(), 0}), 9},
        {"two dimensions", VariantArray(4, 4), 9},
        {"a path that is Null", Variant::ArrayOf({Variant::Null(), Map(), 0, 0}), 13},
        {"a map that is Empty", Params(Variant(), 0, 0), 13},
        {"a map that is a number", Params(0, 0, 0), 13},
        {"a map of three", Params(Variant::ArrayOf({0, 1, 2}), 0, 0), 9},
        {"a map of two dimensions", Params(VariantArray(4, 1), 0, 0), 9},
        {"a map with Empty", Params(Variant::ArrayOf({0, Variant(), 2, 3}), 0, 0), 13},
        {"a map with Null", Params(Variant::ArrayOf({0, 1, 2, Variant::Null()}), 0, 0), 13},
        {"a map with a text", Params(Variant::ArrayOf({u"0", 1, 2, 3}), 0, 0), 13},
        {"a map with True", Params(Variant::ArrayOf({0, true, 2, 3}), 0, 0), 13},
        {"a map with a fraction", Params(Variant::ArrayOf({0.5, 1, 2, 3}), 0, 0), 13},
        {"a map with an array", Params(Variant::ArrayOf({Map(), 1, 2, 3}), 0, 0), 13},
    };
    for (const auto& value : values) {
        const ImportResult result = ImportWith(value.value);
        EXPECT_EQ(result, (ImportResult{value.number, ToUtf8(AutomationError::TextOf(value.number)), 0, 0}))
            << value.what;
        EXPECT_EQ(RowsOf(*m_store), before) << value.what;
        EXPECT_FALSE(m_store->SessionIsDirty()) << value.what;
    }
}

TEST_F(StoreImport, TakesAMapOfWholeNumbersOfAnyKind)
{
    m_folder.Write("in.csv", "a,b,1,d\r\n");
    EXPECT_EQ(ImportWith(Params(Variant::ArrayOf({0.0, Currency::FromUnits(1), 2.0, -1.0}), 0, 0)),
              (ImportResult{0, "", 1, 0}));
    EXPECT_THAT(RowsOf(*m_store),
                ElementsAre(AllOf(Field(&ProductRow::name, "a"), Field(&ProductRow::partNum, "b"),
                                  Field(&ProductRow::price, 10000), Field(&ProductRow::note, ""))));
}

TEST_F(StoreImport, TakesPricesInTheLocalesForm)
{
    const struct
    {
        const char* text;
        std::int64_t price;
    } prices[] = {
        {"1234.5", 12345000},
        {"$1.50", 15000},
        {"1.23456", 12346},
        {"(5)", 0},
        {"-5", 0},
        {"-0.0001", 0},
        {"4294967295.99", 42949672959900},
        {"4294967295.9901", 0},
        {"4294967296", 0},
        {"922337203685477.5807", 0},
        {" 7 ", 70000},
        {".5", 5000},
    };
    for (const auto& price : prices)
        EXPECT_EQ(ProductOf(std::string("n,,") + price.text + ",\r\n"), Packed(0, "n", "", "", price.price))
            << price.text;
    EXPECT_EQ(ProductOf("n,,\"$1,234.50\",\r\n"), Packed(0, "n", "", "", 12345000));
}

TEST_F(StoreImport, RejectsAPriceThatIsNone)
{
    for (const std::string& text :
         {std::string("abc"), std::string(), std::string("1e3"), std::string("1.2.3"),
          std::string("\"1,50\""), std::string("\uff11\uff12"), std::string("$"), std::string("5 apples"),
          std::string(400, '9'), std::string("0x10"), std::string("1 2"), std::string("--5"),
          std::string("nan"), std::string("\u20ac5")})
        EXPECT_EQ(Import("n,," + text + ",\r\n"), (ImportResult{0, "", 0, 1})) << text;
}

TEST_F(StoreImport, CutsTextsToTheirColumnsBeforeTheReservedCharacterGoes)
{
    EXPECT_EQ(ProductOf(std::string(300, 'n') + "," + std::string(256, 'p') + ",1," + std::string(5000, 't')),
              Packed(0, std::string(255, 'n'), "", std::string(255, 'p'), 10000, std::string(4095, 't')));
    EXPECT_EQ(ProductOf("A~B,~,1,~~t~"), Packed(0, "AB", "", "", 10000, "t"));
    EXPECT_EQ(ProductOf("~" + std::string(300, 'n') + ",p,1,t"),
              Packed(0, std::string(254, 'n'), "", "p", 10000, "t"));
}

TEST_F(StoreImport, LeavesNoHalfCharacterWhereItCuts)
{
    EXPECT_EQ(ProductOf(std::string(254, 'n') + "\U0001F529,p,1,t"),
              Packed(0, std::string(254, 'n'), "", "p", 10000, "t"));
    EXPECT_EQ(ProductOf(std::string(253, 'n') + "\U0001F529x,p,1,t"),
              Packed(0, std::string(253, 'n') + "\U0001F529", "", "p", 10000, "t"));
    EXPECT_EQ(ProductOf(std::string(254, 'n') + "\u00e9x,p,1,t"),
              Packed(0, std::string(254, 'n') + "\u00e9", "", "p", 10000, "t"));
    EXPECT_EQ(ProductOf("n,p,1," + std::string(4094, 't') + "\U0001F529"),
              Packed(0, "n", "", "p", 10000, std::string(4094, 't')));
}

TEST_F(StoreImport, AddsAProductThatIsThereAlready)
{
    EXPECT_EQ(Import("Old\r\nOld\r\n", {0, -1, -1, -1}, 0, 1).imported, 2);
    EXPECT_THAT(RowIDsOf(*m_store), ElementsAre(5, 6, 7));
}

TEST_F(StoreImport, RemovesQuotesWhereverTheyStand)
{
    EXPECT_EQ(ProductOf("ab\"c,d\"e", {0, -1, -1, -1}), Packed(0, "abc,de"));
    EXPECT_EQ(ProductOf("\"a\"\"b\"", {0, -1, -1, -1}), Packed(0, "ab"));
    EXPECT_EQ(ProductOf(" a ,", {0, 1, -1, -1}), Packed(0, " a "));
    EXPECT_EQ(ProductOf("a\"b,c,d", {0, -1, -1, -1}), Packed(0, "ab,c,d"));
    EXPECT_EQ(ProductOf("\"\"", {0, -1, -1, -1}), Packed(0, ""));
}

TEST_F(StoreImport, EndsALineInsideQuotesToo)
{
    EXPECT_EQ(Import("\"a\r\nb\",1\r\n", {0, 1, -1, -1}), (ImportResult{0, "", 0, 2}));
    EXPECT_EQ(Import("\"a\r\nb\"\r\n", {0, -1, -1, -1}), (ImportResult{0, "", 2, 0}));
}

TEST_F(StoreImport, MakesEveryRowDueForSynchronisation)
{
    EXPECT_EQ(Import("New\r\n", {0, -1, -1, -1}, 0, 1).imported, 1);
    EXPECT_THAT(RowsOf(*m_store),
                ElementsAre(ProductRow{.rowID = 6, .name = "New", .dirtySession = true, .dirtySync = true},
                            ProductRow{.rowID = 5, .name = "Old", .dirtySession = true, .dirtySync = true}));
}

TEST_F(StoreImport, MakesTheRowsBeforeTheLastImportedOneDueToo)
{
    EXPECT_EQ(Import("Zip\r\n", {0, -1, -1, -1}, 0, 1).imported, 1);
    EXPECT_THAT(RowsOf(*m_store),
                ElementsAre(ProductRow{.rowID = 5, .name = "Old", .dirtySession = true, .dirtySync = true},
                            ProductRow{.rowID = 6, .name = "Zip", .dirtySession = true, .dirtySync = true}));
}

TEST_F(StoreImport, TellsAReceiverThatAsksOfEachRejectedLine)
{
    const auto receiver = std::make_shared<RejectedLines>();
    m_store->SetNotifyCallback(receiver);
    EXPECT_EQ(
        Import("titles\r\na,1\r\n\r\nb\r\nc,abc\r\nd,\"9\"9999999999999999999\r\ne,5\r\n", {0, -1, 1, -1}, 1),
        (ImportResult{0, "", 2, 4}));
    EXPECT_THAT(
        receiver->lines,
        ElementsAre(
            "3: the line is empty: ", "4: the line has 1 column, but UnitPrice is to come from column 2: b",
            "5: the price 'abc' is not an amount of money: c,abc",
            "6: the price '99999999999999999999' is too large a number: d,\"9\"9999999999999999999"));
    receiver->isFailing = true;
    EXPECT_EQ(Import("a\r\nb,1\r\n", {0, -1, 1, -1}), (ImportResult{0, "", 1, 1}));
}

TEST_F(StoreImport, LeavesTheCursorBehindTheLastRowAndCountsOn)
{
    static_cast<void>(Import("a\r\nb\r\n", {0, -1, -1, -1}, 0, 1));
    EXPECT_TRUE(m_store->EOF());
    EXPECT_TRUE(m_store->SessionIsDirty());
    EXPECT_EQ(m_store->AddNew(Named("c")), 8);
    m_store->Delete(8);
    static_cast<void>(Import("", {0, -1, -1, -1}, 0, 1));
    EXPECT_EQ(m_store->AddNew(Named("c")), 8);
    static_cast<void>(Import("", {0, -1, -1, -1}, 0, 0));
    EXPECT_EQ(m_store->AddNew(Named("c")), 2);
}

TEST_F(StoreImport, RejectsTheLinesForWhichNoIdentifierIsLeft)
{
    WriteCatalogue({{.rowID = 2147483646, .name = "Old"}});
    m_store = Open();
    m_store->CancelUpdate(true);
    EXPECT_EQ(Import("a\r\nb\r\nc\r\n", {0, -1, -1, -1}, 0, 1), (ImportResult{0, "", 1, 2}));
}

TEST_F(StoreImport, ReportsEachLineBeforeItIsTaken)
{
    const auto receiver = std::make_shared<RecordingReceiver>();
    m_store->SetNotifyCallback(receiver);
    EXPECT_EQ(Import("aaaaaa,1\r\nbbbbbb,x\r\ncccccc,3\r\ndddddd,4\r\n", {0, -1, 1, -1}).imported, 3);
    EXPECT_THAT(receiver->Fractions(), ElementsAre(0.25, 0.5, 0.75, 1.0));
    EXPECT_THAT(receiver->Counts(), ElementsAre(0, 1, 1, 2));
    for (const Variant& call : receiver->calls)
        EXPECT_EQ(call.Array().Extent(1), 2);
}

TEST_F(StoreImport, CountsTwoCharactersForEveryLineEnd)
{
    const auto receiver = std::make_shared<RecordingReceiver>();
    m_store->SetNotifyCallback(receiver);
    static_cast<void>(Import("aaa\nbbb\nccc", {0, -1, -1, -1}));
    EXPECT_THAT(receiver->Fractions(), ElementsAre(5.0 / 11, 10.0 / 11, 1.0));
}

TEST_F(StoreImport, CountsCharactersNotBytes)
{
    const auto receiver = std::make_shared<RecordingReceiver>();
    m_store->SetNotifyCallback(receiver);
    static_cast<void>(Import("\u00e9\u00e9\r\n\U0001F529\r\n", {0, -1, -1, -1}));
    EXPECT_THAT(receiver->Fractions(), ElementsAre(4.0 / 12, 8.0 / 12));
}

TEST_F(StoreImport, LeavesTheTitlesOutOfTheProgress)
{
    const auto receiver = std::make_shared<RecordingReceiver>();
    m_store->SetNotifyCallback(receiver);
    static_cast<void>(Import("titles..\r\naaaaaaaa\r\nbbbbbbbb\r\n", {0, -1, -1, -1}, 1));
    EXPECT_THAT(receiver->Fractions(), ElementsAre(10.0 / 30, 20.0 / 30));
}

TEST_F(StoreImport, PassesNoContextOfItsOwnToTheTrace)
{
    m_trace->Forget();
    static_cast<void>(Import("a\r\n\r\n", {0, -1, -1, -1}));
    const std::string store = "KestrinProductMgr.ProductLkpMgr::";
    EXPECT_THAT(m_trace->Calls(),
                ElementsAre("enter " + store + "DeleteAll", "exit " + store + "DeleteAll",
                            "enter " + store + "AddNew", "exit " + store + "AddNew",
                            "enter " + store + "SortProductRS", "exit " + store + "SortProductRS",
                            "enter " + store + "BinaryImportResetRstState",
                            "exit " + store + "BinaryImportResetRstState", "enter " + store + "GetLastRowID",
                            "exit " + store + "GetLastRowID"));
}

TEST_F(StoreImport, AnswersWithTheErrorOfTheFileServices)
{
    const struct
    {
        const char* file;
        std::int32_t number;
    } files[] = {{"absent.csv", 53}, {"absent/in.csv", 76}, {"db", 75}};
    const std::vector<ProductRow> before = RowsOf(*m_store);
    for (const auto& file : files) {
        const ImportResult result = ImportWith(ImportParams(m_folder.File(file.file), kInOrder, 0, 0));
        EXPECT_EQ(result.status, file.number) << file.file;
        EXPECT_THAT(result.description, HasSubstr(file.file));
        EXPECT_EQ(result.imported, 0);
        EXPECT_EQ(result.rejected, 0);
        EXPECT_EQ(RowsOf(*m_store), before);
        EXPECT_FALSE(m_store->SessionIsDirty());
    }
}

TEST_F(StoreImport, AnswersWithOneForAnErrorWithoutAPositiveNumber)
{
    m_trace->FailOn("enter KestrinProductMgr.ProductLkpMgr::SortProductRS", -7);
    EXPECT_EQ(Import("a\r\n\r\n", {0, -1, -1, -1}),
              (ImportResult{1, "Application-defined or object-defined error", 1, 1}));
    m_trace->Heal();
}

TEST_F(StoreImport, KeepsWhatItImportedBeforeTheDiskFailed)
{
    FailingFileSystem disk(PlatformFileSystem());
    const ScopedFileSystem scoped(disk);
    std::string lines;
    for (int i = 0; i < 100000; ++i)
        lines += "product,1\r\n";
    disk.FailAfterReading(600000);
    const ImportResult result = Import(lines + "last,1\r\n", {0, -1, 1, -1});
    EXPECT_EQ(result.status, 57);
    EXPECT_GT(result.imported, 0);
    EXPECT_THAT(result.imported, Lt(100000));
    EXPECT_EQ(result.rejected, 0);
    EXPECT_EQ(m_store->Count(), result.imported);
    EXPECT_TRUE(m_store->SessionIsDirty());
    EXPECT_EQ(m_store->AddNew(Named("next")), 5 + result.imported + 1);
}

TEST_F(StoreImport, RejectsALineWhoseAddingIsRefusedByTheTrace)
{
    m_trace->FailAtCall(3, 4711);
    EXPECT_EQ(Import("a\r\nb\r\nc\r\n", {0, -1, -1, -1}), (ImportResult{0, "", 2, 1}));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("b", "c"));
}

TEST_F(StoreImport, ReadsUtf16OfBothByteOrders)
{
    const std::u16string text = u"\ufeffN\u00e4gel \U0001F529,p,\"$1,234.50\",t\r\n\u6f22\u5b57,,2,\r\n";
    std::string littleEndian;
    std::string bigEndian;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        littleEndian += {low, high};
        bigEndian += {high, low};
    }
    for (const std::string& bytes : {littleEndian, bigEndian}) {
        EXPECT_EQ(Import(bytes), (ImportResult{0, "", 2, 0}));
        EXPECT_THAT(NamesOf(*m_store), ElementsAre("N\u00e4gel \U0001F529", "\u6f22\u5b57"));
        EXPECT_EQ(RowsOf(*m_store)[0].price, 12345000);
    }
}

TEST_F(StoreImport, SkipsAByteOrderMark)
{
    EXPECT_EQ(ProductOf("\xEF\xBB\xBF\u00e9", {0, -1, -1, -1}), Packed(0, "\u00e9"));
}

TEST_F(StoreImport, ReadsAValueThatIsNoUtf8AsWindows1252AndNoOtherOne)
{
    EXPECT_EQ(ProductOf("caf\xE9,\u00e9,1,\x80 5"), Packed(0, "caf\u00e9", "", "\u00e9", 10000, "\u20ac 5"));
}

TEST_F(StoreImport, TakesEveryKindOfLineEnd)
{
    EXPECT_EQ(Import("a\r\nb\nc\rd", {0, -1, -1, -1}), (ImportResult{0, "", 4, 0}));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("a", "b", "c", "d"));
    EXPECT_EQ(Import("a\rb\r", {0, -1, -1, -1}), (ImportResult{0, "", 2, 0}));
    EXPECT_EQ(Import("a\n\rb", {0, -1, -1, -1}), (ImportResult{0, "", 2, 1}));
}

TEST_F(StoreImport, TakesAnUnclosedQuoteOnTheLastLine)
{
    EXPECT_EQ(Import("a,1\r\n\"b,2", {0, -1, -1, -1}), (ImportResult{0, "", 2, 0}));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("a", "b,2"));
    EXPECT_EQ(Import("a,1\r\n\"", {0, -1, -1, -1}), (ImportResult{0, "", 2, 0}));
}

TEST_F(StoreImport, KeepsNulCharacters)
{
    const std::string nul(1, '\0');
    EXPECT_EQ(ProductOf("a" + nul + "b,,1," + nul), Packed(0, "a" + nul + "b", "", "", 10000, nul));
}

TEST_F(StoreImport, SurvivesABinaryFile)
{
    std::string bytes = "%PDF-1.7\n%\xE2\xE3\xCF\xD3\n1 0 obj\n<< /Length 5 >>\nstream\r\n";
    std::uint32_t state = 1;
    for (int i = 0; i < 200000; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24);
    }
    bytes += "\nendstream\n%%EOF";
    const ImportResult result = Import(bytes, {0, -1, 1, -1});
    EXPECT_EQ(result.status, 0);
    EXPECT_GT(result.rejected, 0);
    EXPECT_EQ(m_store->Count(), result.imported);
}

TEST_F(StoreImport, TakesALineOfFiftyMegabytes)
{
    constexpr std::size_t kLong = 50'000'000;
    EXPECT_EQ(Import("a,1\r\n" + std::string(kLong, 'x') + ",2\r\nc,3\r\n", {0, -1, 1, -1}),
              (ImportResult{0, "", 3, 0}));
    EXPECT_THAT(NamesOf(*m_store), ElementsAre("a", "c", std::string(255, 'x')));
    EXPECT_EQ(Import("a,1\r\n\"" + std::string(kLong, ','), {0, -1, -1, -1}), (ImportResult{0, "", 2, 0}));
}

TEST_F(StoreImport, SetsRowFieldsFromALineThatWasSplit)
{
    m_store->DeleteAll();
    Variant columns = Variant::ArrayOf({u"n~", u"p", u"$5.00", u"t"});
    Variant map = Map();
    bool isError = true;
    m_store->PrvCSVSetRowFields(columns, map, isError);
    EXPECT_FALSE(isError);
    EXPECT_EQ(m_store->Pack(6), Packed(6, "n", "", "p", 50000, "t"));
    EXPECT_EQ(map, Map());
}

TEST_F(StoreImport, ReportsAFailureOfRowFieldsByTheFlagAlone)
{
    const struct
    {
        const char* what;
        Variant columns;
        Variant map;
    } calls[] = {
        {"no columns", Variant::Null(), Map()},
        {"Empty columns", Variant(), Map()},
        {"too few columns", Variant::ArrayOf({u"n"}), Map()},
        {"a price that is none", Variant::ArrayOf({u"n", u"p", u"abc", u"t"}), Map()},
        {"a map that is none", Variant::ArrayOf({u"n", u"p", u"1", u"t"}), Variant()},
        {"a map too short", Variant::ArrayOf({u"n", u"p", u"1", u"t"}), Variant::ArrayOf({0, 1, 2})},
        {"a column that is Null", Variant::ArrayOf({Variant::Null(), u"p", u"1", u"t"}), Map()},
        {"columns of two dimensions", VariantArray(4, 4), Map()},
    };
    for (const auto& call : calls) {
        Variant columns = call.columns;
        Variant map = call.map;
        bool isError = false;
        m_store->PrvCSVSetRowFields(columns, map, isError);
        EXPECT_TRUE(isError) << call.what;
        EXPECT_EQ(m_store->Count(), 1) << call.what;
    }
    m_trace->FailOn("enter ", 4711);
    Variant columns = Variant::ArrayOf({u"n", u"p", u"1", u"t"});
    Variant map = Map();
    bool isError = false;
    m_store->PrvCSVSetRowFields(columns, map, isError);
    EXPECT_TRUE(isError);
    m_trace->Heal();
}

} // namespace KestrinProductEditor
