// SPDX-License-Identifier: MIT
#include "store/table/Recordset.h"

#include "platform/Text.h"
#include "util/TextOrder.h"

#include <KestrinProductEditor/AutomationError.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <functional>
#include <random>
#include <string>
#include <vector>

using namespace KestrinProductEditor;

namespace {

enum TestColumn : std::size_t
{
    kId,
    kName,
    kUid,
    kPrice,
    kNote,
    kFlag,
    kColumns
};

std::vector<Column> TestColumns()
{
    return {{u"Id", ColumnType::Long, 4, true},   {u"Name", ColumnType::NarrowText, 40},
            {u"Uid", ColumnType::Long, 4},        {u"Price", ColumnType::Currency, 8},
            {u"Note", ColumnType::WideText, 100}, {u"Flag", ColumnType::Boolean, 2}};
}

class RecordsetTest : public testing::Test
{
protected:
    RowNumber Add(std::int32_t id, std::string_view name, std::int32_t uid = 0)
    {
        std::array<RowStore::Value, kColumns> values = {
            {{id, {}}, {0, name}, {uid, {}}, {std::int64_t{id} * 10000, {}}, {0, "note"}, {1, {}}}};
        return table.AddNew(values);
    }

    void AddSorted(const std::vector<std::string>& names)
    {
        table.SortBy(kName);
        std::int32_t id = 0;
        for (const std::string& name : names)
            Add(++id, name);
        table.MoveFirst();
    }

    std::string CurrentName() { return std::string(table.Text(table.CurrentRow(), kName)); }

    std::vector<std::string> Names()
    {
        std::vector<std::string> names;
        for (Recordset::Walk walk(table); !walk.IsAtEnd(); walk.Next())
            names.emplace_back(table.Text(walk.Row(), kName));
        return names;
    }

    void Rename(std::u16string_view name) { table.Put(kName, name); }

    Recordset table{TestColumns(), CodePage::Named("utf-8")};
};

std::int32_t ErrorNumberOf(const std::function<void()>& act)
{
    try {
        act();
    } catch (const AutomationError& error) {
        return error.Number();
    }
    return 0;
}

using Texts = std::vector<std::string>;

} // namespace

TEST_F(RecordsetTest, EmptyTable_IsAtBothEndsAndHasNoRow)
{
    EXPECT_TRUE(table.BOF());
    EXPECT_TRUE(table.IsAtEnd());
    EXPECT_EQ(table.Count(), 0U);
    EXPECT_EQ(table.AbsolutePosition(), -1);
    EXPECT_EQ(ErrorNumberOf([&] { (void)table.CurrentRow(); }), kErrNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { table.MoveFirst(); }), kErrNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { table.MoveLast(); }), kErrNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { table.MoveNext(); }), kErrNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { table.MovePrevious(); }), kErrNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { table.MoveFromFirst(0); }), kErrNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { table.Delete(); }), kErrNoCurrentRecord);
}

TEST_F(RecordsetTest, Moves_StopBehindBothEnds)
{
    AddSorted({"b", "a"});
    EXPECT_EQ(CurrentName(), "a");
    EXPECT_EQ(table.AbsolutePosition(), 1);
    table.MovePrevious();
    EXPECT_TRUE(table.BOF());
    EXPECT_EQ(table.AbsolutePosition(), -2);
    EXPECT_EQ(ErrorNumberOf([&] { table.MovePrevious(); }), kErrNoCurrentRecord);
    table.MoveNext();
    EXPECT_EQ(CurrentName(), "a");
    table.MoveLast();
    EXPECT_EQ(CurrentName(), "b");
    table.MoveNext();
    EXPECT_TRUE(table.IsAtEnd());
    EXPECT_EQ(table.AbsolutePosition(), -3);
    EXPECT_EQ(ErrorNumberOf([&] { table.MoveNext(); }), kErrNoCurrentRecord);
    table.MovePrevious();
    EXPECT_EQ(CurrentName(), "b");
}

TEST_F(RecordsetTest, MoveFromFirst_GoesToTheEndsBeyondThem)
{
    AddSorted({"a", "b", "c"});
    table.MoveFromFirst(2);
    EXPECT_EQ(CurrentName(), "c");
    table.MoveFromFirst(3);
    EXPECT_TRUE(table.IsAtEnd());
    table.MoveFromFirst(-1);
    EXPECT_TRUE(table.BOF());
    table.MoveFromFirst(0);
    EXPECT_EQ(CurrentName(), "a");
}

TEST_F(RecordsetTest, WithoutASort_RowsKeepTheirArrival)
{
    Add(1, "c");
    Add(2, "a");
    Add(3, "b");
    EXPECT_EQ(Names(), (Texts{"c", "a", "b"}));
}

TEST_F(RecordsetTest, SortBy_MakesTheFirstRowCurrentAndTiesKeepArrival)
{
    Add(1, "b");
    Add(2, "A");
    Add(3, "a");
    table.SortBy(kName);
    EXPECT_EQ(table.Long(table.CurrentRow(), kId), 2);
    table.MoveNext();
    EXPECT_EQ(table.Long(table.CurrentRow(), kId), 3);
}

TEST_F(RecordsetTest, AddNew_TakesItsPlaceAndStaysCurrent)
{
    AddSorted({"a", "c"});
    Add(9, "b");
    EXPECT_EQ(CurrentName(), "b");
    EXPECT_EQ(table.AbsolutePosition(), 2);
    table.MoveNext();
    EXPECT_EQ(CurrentName(), "c");
}

TEST_F(RecordsetTest, Rename_KeepsThePlaceUntilTheCursorLeaves)
{
    AddSorted({"a", "b", "c"});
    Rename(u"x");
    EXPECT_EQ(table.AbsolutePosition(), 1);
    EXPECT_EQ(CurrentName(), "x");
    table.MoveNext();
    EXPECT_EQ(CurrentName(), "b");
    EXPECT_EQ(Names(), (Texts{"b", "c", "x"}));
}

TEST_F(RecordsetTest, Commit_MovesTheRowAndTheCursorGoesOnFromTheOldPlace)
{
    AddSorted({"a", "b", "c"});
    Rename(u"x");
    table.Commit();
    EXPECT_EQ(CurrentName(), "x");
    EXPECT_EQ(table.AbsolutePosition(), 3);
    table.MoveNext();
    EXPECT_EQ(CurrentName(), "b");
}

TEST_F(RecordsetTest, Commit_ThenMovePrevious_GoesToTheRowBeforeTheOldPlace)
{
    AddSorted({"a", "b", "c"});
    table.MoveNext();
    Rename(u"x");
    table.Commit();
    table.MovePrevious();
    EXPECT_EQ(CurrentName(), "a");
}

TEST_F(RecordsetTest, RenameOfANewRow_GoesOnFromThePlaceOfItsFirstName)
{
    AddSorted({"a", "c", "e"});
    Add(9, "b");
    Rename(u"z");
    table.MoveNext();
    EXPECT_EQ(CurrentName(), "c");
    EXPECT_EQ(Names(), (Texts{"a", "c", "e", "z"}));
}

TEST_F(RecordsetTest, WalkThatRenamesEveryRow_VisitsEachOnce)
{
    AddSorted({"a", "b", "c", "d", "e"});
    std::vector<std::string> visited;
    for (; !table.IsAtEnd(); table.MoveNext()) {
        visited.push_back(CurrentName());
        Rename(u"0" + ToUtf16(CurrentName()));
    }
    EXPECT_EQ(visited, (Texts{"a", "b", "c", "d", "e"}));
    EXPECT_EQ(Names(), (Texts{"0a", "0b", "0c", "0d", "0e"}));
}

TEST_F(RecordsetTest, DeletedRow_StaysCurrentUntilTheCursorMoves)
{
    AddSorted({"a", "b", "c"});
    table.MoveNext();
    table.Delete();
    EXPECT_FALSE(table.BOF());
    EXPECT_FALSE(table.IsAtEnd());
    EXPECT_EQ(table.AbsolutePosition(), -1);
    EXPECT_EQ(ErrorNumberOf([&] { (void)table.Get(0); }), kErrNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { table.Delete(); }), kErrNoCurrentRecord);
    table.MoveNext();
    EXPECT_EQ(CurrentName(), "c");
    table.Delete();
    table.MovePrevious();
    EXPECT_EQ(CurrentName(), "a");
    table.Delete();
    EXPECT_TRUE(table.IsEmpty());
    EXPECT_FALSE(table.IsAtEnd());
    table.MoveNext();
    EXPECT_TRUE(table.IsAtEnd());
    EXPECT_TRUE(table.BOF());
}

TEST_F(RecordsetTest, Put_ChecksCursorColumnKindAndLength)
{
    EXPECT_EQ(ErrorNumberOf([&] { table.Put(0, 1); }), kErrNoCurrentRecord);
    AddSorted({"a"});
    EXPECT_EQ(ErrorNumberOf([&] { table.Put(-1, 1); }), kErrItemNotFound);
    EXPECT_EQ(ErrorNumberOf([&] { table.Put(kColumns, 1); }), kErrItemNotFound);
    EXPECT_EQ(ErrorNumberOf([&] { table.Put(kId, u"abc"); }), kErrTypeMismatch);
    EXPECT_EQ(ErrorNumberOf([&] { table.Put(kId, 1e12); }), kErrOverflow);
    EXPECT_EQ(ErrorNumberOf([&] { table.Put(kName, std::u16string(41, u'x')); }), kErrMultipleStep);
    EXPECT_EQ(CurrentName(), "a");
    table.Put(kName, std::u16string(40, u'\u00E4'));
    EXPECT_EQ(table.Get(kName).String(), std::u16string(40, u'\u00E4'));
    table.Put(kFlag, 0);
    EXPECT_FALSE(table.Get(kFlag).Boolean());
    table.Put(kPrice, 12);
    EXPECT_EQ(table.Get(kPrice).Currency(), Currency::FromUnits(12));
}

TEST_F(RecordsetTest, NarrowText_IsWhatTheCodePageCanHold)
{
    Recordset narrow(TestColumns(), CodePage::Named("windows-1252"));
    std::array<RowStore::Value, kColumns> values = {
        {{1, {}}, {0, "\u20AC\u0416"}, {0, {}}, {0, {}}, {0, "\u0416"}, {0, {}}}};
    const RowNumber row = narrow.AddNew(values);
    EXPECT_EQ(narrow.Text(row, kName), "\u20AC?");
    EXPECT_EQ(narrow.Text(row, kNote), "\u0416");
    narrow.Put(kName, u"\u0416\u20AC");
    EXPECT_EQ(narrow.Text(row, kName), "?\u20AC");
}

TEST_F(RecordsetTest, Find_GivesTheFirstInRowOrder)
{
    AddSorted({"c", "b", "a"});
    for (RowNumber row = 0; row < 3; ++row)
        table.SetLong(row, kUid, 7);
    EXPECT_EQ(table.Find(kUid, 7), 2U);
    EXPECT_EQ(table.Find(kUid, 8), kNoRow);
    table.SetLong(2, kUid, 8);
    EXPECT_EQ(table.Find(kUid, 7), 1U);
    EXPECT_EQ(table.Find(kUid, 8), 2U);
    table.DeleteRow(1);
    EXPECT_EQ(table.Find(kUid, 7), 0U);
    table.SetLong(0, kUid, 9);
    EXPECT_EQ(table.Find(kUid, 7), kNoRow);
}

TEST_F(RecordsetTest, MoveToFound_StandsAfterTheLastRowOnAMiss)
{
    AddSorted({"a", "b"});
    EXPECT_TRUE(table.MoveToFound(kId, 2));
    EXPECT_EQ(CurrentName(), "b");
    EXPECT_FALSE(table.MoveToFound(kId, 99));
    EXPECT_TRUE(table.IsAtEnd());
}

TEST_F(RecordsetTest, FindPrefix_CountsARenamedRowByItsNewName)
{
    AddSorted({"bolt", "nut", "washer"});
    Rename(u"nutcracker");
    const std::vector<RowNumber> nuts = table.FindPrefix(kName, "NUT");
    EXPECT_EQ(nuts, (std::vector<RowNumber>{0, 1})) << "in the present order: it has not moved yet";
    EXPECT_TRUE(table.FindPrefix(kName, "bolt").empty());
    table.MoveLast();
    EXPECT_EQ(table.FindPrefix(kName, "nut"), (std::vector<RowNumber>{1, 0}));
}

TEST_F(RecordsetTest, FindPrefix_InAnotherColumnFollowsTheRowOrder)
{
    AddSorted({"c", "a", "b"});
    EXPECT_EQ(table.FindPrefix(kNote, "no"), (std::vector<RowNumber>{1, 2, 0}));
    EXPECT_TRUE(table.FindPrefix(kNote, "x").empty());
}

TEST_F(RecordsetTest, MovesFromTheEnds_CountARenamedRowWhereItsNewNameStands)
{
    AddSorted({"a", "b", "c"});
    Rename(u"x");
    table.MoveFirst();
    EXPECT_EQ(CurrentName(), "b");
    EXPECT_EQ(table.AbsolutePosition(), 1);
    Rename(u"z");
    table.MoveLast();
    EXPECT_EQ(CurrentName(), "z");
    Rename(u"a");
    table.MoveFromFirst(1);
    EXPECT_EQ(CurrentName(), "c");
    Rename(u"zz");
    EXPECT_EQ(Names(), (Texts{"a", "x", "zz"})) << "a walk begins with every row in its place";
}

TEST_F(RecordsetTest, FindOfASharedValue_FollowsEveryChangeOfIt)
{
    AddSorted({"a", "b", "c", "d"});
    EXPECT_EQ(table.Find(kUid, 0), 0U);
    table.SetLong(0, kUid, 1);
    EXPECT_EQ(table.Find(kUid, 0), 1U);
    table.SetLong(0, kUid, 0); // a row before the last answer got the value
    EXPECT_EQ(table.Find(kUid, 0), 0U);
    table.DeleteRow(0);
    EXPECT_EQ(table.Find(kUid, 0), 1U);
    Add(9, "A");
    EXPECT_EQ(table.Find(kUid, 0), 4U);
    Rename(u"zz");
    table.MoveFirst();
    EXPECT_EQ(table.Find(kUid, 0), 1U);
    for (RowNumber row = 1; row <= 4; ++row)
        table.SetLong(row, kUid, 5);
    EXPECT_EQ(table.Find(kUid, 0), kNoRow);
    table.SetLong(3, kUid, 0);
    EXPECT_EQ(table.Find(kUid, 0), 3U);
}

TEST_F(RecordsetTest, Walk_EndsWhateverARenamingVisitorDoes)
{
    AddSorted({"a", "b", "c"});
    std::vector<std::string> visited;
    for (Recordset::Walk walk(table); !walk.IsAtEnd(); walk.Next()) {
        visited.emplace_back(table.Text(walk.Row(), kName));
        table.MoveTo(walk.Row());
        Rename(u"z" + ToUtf16(visited.back())); // always behind the walk
        table.Commit();
        Add(9, "zzz");
    }
    EXPECT_EQ(visited, (Texts{"a", "b", "c"}));
}

TEST_F(RecordsetTest, Walk_OutlivesWhateverHappensToItsRow)
{
    AddSorted({"a", "b", "c", "d"});
    Recordset::Walk walk(table);
    table.DeleteRow(walk.Row());
    walk.Next();
    EXPECT_EQ(table.Text(walk.Row(), kName), "b");
    table.MoveTo(walk.Row());
    Rename(u"z");
    table.Commit();
    walk.Next();
    EXPECT_EQ(table.Text(walk.Row(), kName), "c");
    Add(9, "cc"); // came later: not visited
    table.DeleteRow(walk.Row());
    table.DeleteRow(4); // "cc", where the walk would have gone on
    walk.Next();
    EXPECT_EQ(table.Text(walk.Row(), kName), "d");
    walk.Next();
    EXPECT_TRUE(walk.IsAtEnd()) << "the row that was renamed was visited before";
    Recordset::Walk another(table);
    EXPECT_FALSE(another.IsAtEnd());
    table.Clear();
    EXPECT_TRUE(another.IsAtEnd());
}

TEST_F(RecordsetTest, VisitFromCursor_ReachesTheRowsBehindOnly)
{
    AddSorted({"a", "b", "c"});
    table.MoveNext();
    table.VisitFromCursor([&](RowNumber row) { table.SetBoolean(row, kFlag, false); });
    EXPECT_TRUE(table.IsAtEnd());
    EXPECT_TRUE(table.Rows().Boolean(0, kFlag));
    EXPECT_FALSE(table.Rows().Boolean(1, kFlag));
    EXPECT_FALSE(table.Rows().Boolean(2, kFlag));
    table.MoveFirst();
    table.MovePrevious();
    EXPECT_EQ(ErrorNumberOf([&] { table.VisitFromCursor([](RowNumber) {}); }), kErrNoCurrentRecord);
}

TEST_F(RecordsetTest, ChangeStamp_ChangesWithEveryChangeAndWithNothingElse)
{
    AddSorted({"a", "b"});
    std::uint64_t stamp = table.ChangeStamp();
    table.MoveNext();
    (void)table.Find(kId, 1);
    (void)table.AbsolutePosition();
    EXPECT_EQ(table.ChangeStamp(), stamp);
    const auto changes = [&] {
        const bool changed = table.ChangeStamp() != stamp;
        stamp = table.ChangeStamp();
        return changed;
    };
    Rename(u"x");
    EXPECT_TRUE(changes());
    table.SetLong(0, kUid, 5);
    EXPECT_TRUE(changes());
    Add(3, "c");
    EXPECT_TRUE(changes());
    table.Delete();
    EXPECT_TRUE(changes());
}

TEST_F(RecordsetTest, BeforeNextChange_TellsOnceAndBeforeAnythingHasChanged)
{
    struct Case
    {
        const char* act;
        std::function<void()> change;
    };
    const std::vector<Case> cases = {
        {"add", [&] { Add(9, "aa"); }},
        {"delete", [&] { table.Delete(); }},
        {"delete another row", [&] { table.DeleteRow(2); }},
        {"rename", [&] { Rename(u"x"); }},
        {"write another text", [&] { table.Put(kNote, u"x"); }},
        {"write a number", [&] { table.SetLong(1, kUid, 77); }},
        {"sort by another column", [&] { table.SortBy(kNote); }},
        {"sort again", [&] { table.SortBy(kName); }},
        {"clear", [&] { table.Clear(); }},
        {"adopt", [&] { table.Adopt(RowStore(TestColumns())); }},
    };
    for (const Case& test : cases) {
        SCOPED_TRACE(test.act);
        table.Clear();
        AddSorted({"c", "a", "b"});
        const Texts names = Names();
        std::vector<Texts> told;
        table.BeforeNextChange([&] {
            Texts& seen = told.emplace_back();
            table.Order().ForEach([&](RowNumber row) { seen.emplace_back(table.Text(row, kName)); });
        });
        EXPECT_TRUE(told.empty());
        test.change();
        EXPECT_EQ(told, (std::vector<Texts>{names}));
        Add(10, "z");
        EXPECT_EQ(told.size(), 1U);
    }
}

TEST_F(RecordsetTest, BeforeNextChange_HearsNothingOfReadingMovingAmountsAndFlags)
{
    AddSorted({"c", "a", "b"});
    int told = 0;
    table.BeforeNextChange([&] { ++told; });
    (void)Names();
    (void)table.Order();
    table.MoveLast();
    table.Commit();
    (void)table.Find(kId, 2);
    (void)table.MoveToFound(kUid, 99);
    (void)table.FindPrefix(kName, "a");
    table.SetMoney(0, kPrice, Currency::FromUnits(7));
    table.SetBoolean(0, kFlag, true);
    table.SetLong(0, kUid, table.Long(0, kUid));
    EXPECT_EQ(told, 0);
    table.MoveFirst();
    table.Delete();
    EXPECT_EQ(told, 1);
}

TEST_F(RecordsetTest, BeforeNextChange_GivesRowsThatWaitForTheirPlaceTheirPlaceFirst)
{
    AddSorted({"c", "e"});
    Rename(u"x");
    Add(3, "d");
    Rename(u"a");
    std::vector<Texts> told;
    table.BeforeNextChange([&] {
        Texts& seen = told.emplace_back();
        table.Order().ForEach([&](RowNumber row) { seen.emplace_back(table.Text(row, kName)); });
    });
    table.MoveFirst();
    EXPECT_EQ(CurrentName(), "a");
    EXPECT_TRUE(told.empty()) << "nothing moves by a look";
    table.Delete();
    EXPECT_EQ(told, (std::vector<Texts>{{"a", "e", "x"}}));
}

TEST_F(RecordsetTest, BeforeNextChange_CountsARenamedRowInItsNewPlaceFromNowOn)
{
    AddSorted({"a", "b", "c"});
    Rename(u"x");
    std::vector<Texts> told;
    table.BeforeNextChange([&] {
        Texts& seen = told.emplace_back();
        table.Order().ForEach([&](RowNumber row) { seen.emplace_back(table.Text(row, kName)); });
    });
    EXPECT_EQ(CurrentName(), "x");
    Add(4, "d"); // nobody has looked at the order since
    EXPECT_EQ(told, (std::vector<Texts>{{"b", "c", "x"}}));
}

TEST_F(RecordsetTest, BeforeNextChange_ServesSeveralAndMayBeAskedAnewByANotice)
{
    AddSorted({"a", "b"});
    std::string told;
    std::function<void()> again = [&] {
        told += 'r';
        table.BeforeNextChange(again);
    };
    table.BeforeNextChange([&] { told += '1'; });
    table.BeforeNextChange(again);
    table.BeforeNextChange([&] { told += '2'; });
    Add(3, "c");
    EXPECT_EQ(told, "1r2");
    Add(4, "d");
    table.Delete();
    EXPECT_EQ(told, "1r2rr");
}

TEST_F(RecordsetTest, FindFirstWithPrefix_GivesTheFirstInRowOrder)
{
    EXPECT_EQ(table.FindFirstWithPrefix(kName, ""), kNoRow);
    AddSorted({"Nut", "bolt cutter", "Bolt", "washer"});
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "BOLT"), 2U);
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "bolt "), 1U);
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "n"), 0U);
    EXPECT_EQ(table.FindFirstWithPrefix(kName, ""), 2U);
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "a"), kNoRow);
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "bolts"), kNoRow);
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "z"), kNoRow);
    table.MoveFirst();
    EXPECT_EQ(CurrentName(), "Bolt");
    (void)table.FindFirstWithPrefix(kName, "w");
    EXPECT_EQ(CurrentName(), "Bolt") << "the cursor stays";
    Rename(u"wash");
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "w"), 2U) << "a renamed row counts in its new place";
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "bolt"), 1U);
}

TEST_F(RecordsetTest, FindFirstWithPrefix_FollowsTheOrderOfArrivalWhereNothingIsSorted)
{
    Add(1, "nut");
    Add(2, "bolt");
    Add(3, "Bolt");
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "b"), 1U);
    EXPECT_EQ(table.FindFirstWithPrefix(kName, "x"), kNoRow);
}

TEST_F(RecordsetTest, Texts_SurviveTheDroppingOfOldOnes)
{
    AddSorted({"a", "b"});
    table.MoveFirst();
    const std::u16string longNote(100, u'n');
    for (int i = 0; i < 50000; ++i) // each overwrites some hundred bytes
        table.Put(kNote, longNote.substr(0, static_cast<std::size_t>(i % 100)));
    EXPECT_EQ(CurrentName(), "a");
    EXPECT_EQ(table.Get(kNote).String(), longNote.substr(0, 99));
    table.MoveNext();
    EXPECT_EQ(CurrentName(), "b");
    EXPECT_EQ(table.Get(kNote).String(), u"note");
}

namespace {

/// The table as one would write it without a thought for speed: a vector in visiting order.
class NaiveTable
{
public:
    struct Row
    {
        std::uint32_t arrival;
        std::int32_t id;
        std::int32_t uid;
        std::string name;
        std::string placeName; // the name that its place follows
    };
    enum class Stand
    {
        Before,
        On,
        Gone,
        After
    }; // Gone: on a deleted row or off its old place
    static constexpr std::uint32_t kNone = 0xFFFFFFFF;

    std::vector<Row> rows;
    Stand stand = Stand::After;
    std::uint32_t current = kNone; // arrival
    std::uint32_t next = kNone;    // with Gone: the arrival of the row to go on at
    std::uint32_t arrivals = 0;

    std::size_t PlaceOf(std::uint32_t arrival) const
    {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if (rows[i].arrival == arrival)
                return i;
        }
        return rows.size();
    }
    Row* Current() { return current == kNone ? nullptr : &rows[PlaceOf(current)]; }

    static bool Before(const Row& left, const Row& right)
    {
        const int order = TextOrder::Compare(left.placeName, right.placeName);
        return order < 0 || (order == 0 && left.arrival < right.arrival);
    }
    void Insert(const Row& row) { rows.insert(std::upper_bound(rows.begin(), rows.end(), row, Before), row); }

    void Leave()
    {
        if (Row* row = Current(); row != nullptr && row->name != row->placeName)
            Settle();
    }
    void Settle()
    {
        const std::size_t place = PlaceOf(current);
        Row row = rows[place];
        if (row.name == row.placeName)
            return;
        const std::uint32_t behind = place + 1 < rows.size() ? rows[place + 1].arrival : kNone;
        if (stand == Stand::On) {
            stand = Stand::Gone;
            next = behind;
        } else if (next == row.arrival) {
            next = behind;
        }
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(place));
        row.placeName = row.name;
        Insert(row);
        const std::size_t newPlace = PlaceOf(row.arrival);
        if (next == (newPlace + 1 < rows.size() ? rows[newPlace + 1].arrival : kNone)) {
            stand = Stand::On;
            next = kNone;
        }
    }
    void GoTo(std::size_t place)
    {
        const std::uint32_t target = place < rows.size() ? rows[place].arrival : kNone;
        Leave();
        stand = target == kNone ? Stand::After : Stand::On;
        current = target;
        next = kNone;
    }
    void GoBefore()
    {
        Leave();
        stand = Stand::Before;
        current = next = kNone;
    }
    bool BOF() const { return stand == Stand::Before || (rows.empty() && stand != Stand::Gone); }
    bool AtEnd() const { return stand == Stand::After || (rows.empty() && stand != Stand::Gone); }
    void MoveNext()
    {
        if (stand == Stand::Before)
            GoTo(0);
        else if (stand == Stand::On)
            GoTo(PlaceOf(current) + 1);
        else
            GoTo(next == kNone ? rows.size() : PlaceOf(next));
    }
    void MovePrevious()
    {
        std::size_t place = rows.size();
        if (stand == Stand::On)
            place = PlaceOf(current);
        else if (stand == Stand::Gone && next != kNone)
            place = PlaceOf(next);
        if (place == 0)
            GoBefore();
        else
            GoTo(place - 1);
    }
    int Position() const
    {
        if (rows.empty() || (stand == Stand::Gone && current == kNone))
            return -1;
        if (stand == Stand::Before)
            return -2;
        if (stand == Stand::After)
            return -3;
        return static_cast<int>(PlaceOf(current)) + 1;
    }
    void Delete()
    {
        const std::size_t place = PlaceOf(current);
        const std::uint32_t behind = place + 1 < rows.size() ? rows[place + 1].arrival : kNone;
        if (stand == Stand::On || next == current)
            next = behind;
        stand = Stand::Gone;
        current = kNone;
        rows.erase(rows.begin() + static_cast<std::ptrdiff_t>(place));
    }
    void Add(std::int32_t id, const std::string& name, std::int32_t uid)
    {
        Leave();
        Insert({arrivals, id, uid, name, name});
        stand = Stand::On;
        current = arrivals++;
        next = kNone;
    }
    std::size_t Find(std::int32_t value, bool byId) const
    {
        for (std::size_t i = 0; i < rows.size(); ++i) {
            if ((byId ? rows[i].id : rows[i].uid) == value)
                return i;
        }
        return rows.size();
    }
};

std::string RandomName(std::mt19937& random)
{
    static const std::vector<std::string> words = {"Bolt",       "bolt", "Nut",   "washer", "\u00C4pfel",
                                                   "\u00E4pfel", "",     "Cable", "screw"};
    return words[random() % words.size()] + (random() % 2 == 0 ? "" : std::to_string(random() % 50));
}

} // namespace

TEST_F(RecordsetTest, RandomWalk_AgreesWithANaiveTable)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    NaiveTable naive;
    table.SortBy(kName);
    std::int32_t lastId = 0;
    const auto compare = [&](const char* after) {
        ASSERT_EQ(table.Count(), naive.rows.size()) << after;
        ASSERT_EQ(table.BOF(), naive.BOF()) << after;
        ASSERT_EQ(table.IsAtEnd(), naive.AtEnd()) << after;
        ASSERT_EQ(table.AbsolutePosition(), naive.Position()) << after;
        if (NaiveTable::Row* row = naive.Current()) {
            ASSERT_EQ(table.CurrentRow(), row->arrival) << after;
            ASSERT_EQ(CurrentName(), row->name) << after;
            ASSERT_EQ(table.Long(table.CurrentRow(), kUid), row->uid) << after;
        }
    };
    for (int step = 0; step < 12000; ++step) {
        const char* act = "";
        switch (random() % 16) {
        case 0:
        case 1:
        case 2: {
            act = "add";
            const unsigned many = random() % 200 == 0 ? 700 : 1;
            for (unsigned i = 0; i < many; ++i) {
                const std::string name = RandomName(random);
                const auto uid = static_cast<std::int32_t>(random() % 20);
                Add(++lastId, name, uid);
                naive.Add(lastId, name, uid);
            }
            break;
        }
        case 3:
        case 4:
        case 5:
            act = "rename";
            if (naive.Current() != nullptr) {
                const std::string name = RandomName(random);
                Rename(ToUtf16(name));
                naive.Current()->name = name;
            }
            break;
        case 6:
            act = "commit";
            table.Commit();
            if (naive.Current() != nullptr)
                naive.Settle();
            break;
        case 7:
        case 8:
            act = "next";
            if (naive.AtEnd()) {
                ASSERT_EQ(ErrorNumberOf([&] { table.MoveNext(); }), kErrNoCurrentRecord);
            } else {
                table.MoveNext();
                naive.MoveNext();
            }
            break;
        case 9:
        case 10:
            act = "previous";
            if (naive.BOF()) {
                ASSERT_EQ(ErrorNumberOf([&] { table.MovePrevious(); }), kErrNoCurrentRecord);
            } else {
                table.MovePrevious();
                naive.MovePrevious();
            }
            break;
        case 11:
            act = "delete";
            if (naive.Current() != nullptr) {
                table.Delete();
                naive.Delete();
            } else {
                ASSERT_EQ(ErrorNumberOf([&] { table.Delete(); }), kErrNoCurrentRecord);
            }
            break;
        case 12: {
            act = "find";
            const bool byId = random() % 2 == 0;
            const auto value = static_cast<std::int32_t>(random()) % (byId ? lastId + 2 : 22);
            naive.Leave();
            const std::size_t place = naive.Find(value, byId);
            ASSERT_EQ(table.MoveToFound(byId ? kId : kUid, value), place < naive.rows.size());
            naive.GoTo(place);
            break;
        }
        case 13:
            act = "write the identifier";
            if (NaiveTable::Row* row = naive.Current()) {
                row->uid = static_cast<std::int32_t>(random() % 20);
                table.Put(kUid, row->uid);
            }
            break;
        case 14:
            act = "go to the n-th";
            if (!naive.rows.empty()) {
                const std::size_t place = random() % (naive.rows.size() + 1);
                table.MoveFromFirst(static_cast<std::int64_t>(place));
                naive.Leave();
                naive.GoTo(place);
            }
            break;
        default: {
            act = "match list";
            const std::string prefix = RandomName(random).substr(0, random() % 3);
            std::vector<RowNumber> expected;
            for (const NaiveTable::Row& row : naive.rows) {
                if (TextOrder::StartsWith(row.name, prefix))
                    expected.push_back(row.arrival);
            }
            ASSERT_EQ(table.FindPrefix(kName, prefix), expected) << prefix;
            break;
        }
        }
        ASSERT_NO_FATAL_FAILURE(compare(act)) << "step " << step;
    }
    std::vector<RowNumber> order;
    table.Order().ForEach([&](RowNumber row) { order.push_back(row); });
    std::vector<RowNumber> expected;
    for (const NaiveTable::Row& row : naive.rows)
        expected.push_back(row.arrival);
    EXPECT_EQ(order, expected);
}
