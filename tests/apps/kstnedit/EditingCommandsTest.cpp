// SPDX-License-Identifier: MIT
#include "apps/kstnedit/ProgramFixture.h"
#include "fake/FailingFileSystem.h"
#include "kstnedit/Failure.h"

namespace KestrinProductEditor::CommandLine {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

struct Refusal
{
    std::vector<std::string> options;
    std::string message;
};

const std::vector<Refusal>& Refusals()
{
    static const std::vector<Refusal> refusals = {
        {{"--name", ""}, "--name: a product without a name is not kept"},
        {{"--name="}, "--name: a product without a name is not kept"},
        {{"--name", "   "}, "--name: a product without a name is not kept"},
        {{"--name", " ~ "}, "--name: a product without a name is not kept"},
        {{"--name", std::string(256, 'x')}, "--name: Product name field is too long: it has 256 characters"},
        {{"--name", "x", "--key", std::string(256, 'x')}, "--key: Product key is too big: it has 256"},
        {{"--name", "x", "--part-num", std::string(256, 'x')}, "at most 255 fit"},
        {{"--name", "x", "--note", std::string(4096, 'x')}, "--note: Product note is too big: it has 4096"},
        {{"--name", "x", "--price", ""}, "'' is not an amount of money here. Write it like $1,234.50"},
        {{"--name", "x", "--price", "abc"}, "not an amount of money"},
        {{"--name", "x", "--price", "1e3"}, "not an amount of money"},
        {{"--name", "x", "--price", "1,50"}, "not an amount of money"},
        {{"--name", "x", "--price", "1.2.3"}, "not an amount of money"},
        {{"--name", "x", "--price", "-0.01"}, "below zero"},
        {{"--name", "x", "--price", "($5)"}, "below zero"},
        {{"--name", "x", "--price", "4294967296"}, "The highest price is $4,294,967,295.99"},
        {{"--name", "x", "--price", std::string(400, '9')}, "is too much"},
    };
    return refusals;
}

class AddCommandTest : public ProgramFixture
{
};

TEST_F(AddCommandTest, PrintsTheNewRowIdentifierAndSaves)
{
    WriteSmallCatalogue();
    const Outcome outcome = Run({"add", "--name", "Claw hammer", "--key", "K", "--part-num", "HT-16",
                                 "--price", "$1,018.95", "--note", "a, \"b\""});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "8\n");
    EXPECT_THAT(outcome.err, IsEmpty());
    const std::vector<ProductRow> rows = SavedRows();
    ASSERT_EQ(rows.size(), 4U);
    EXPECT_EQ(rows[3], (ProductRow{.rowID = 8,
                                   .name = "Claw hammer",
                                   .key = "K",
                                   .partNum = "HT-16",
                                   .price = 10'189'500,
                                   .note = "a, \"b\"",
                                   .dirtySession = true,
                                   .dirtySync = true}));
}

TEST_F(AddCommandTest, MakesUpAKeyWhereNoneIsGiven)
{
    ASSERT_EQ(Run({"add", "--name", "a"}).status, kSucceeded);
    ASSERT_EQ(Run({"add", "--name", "b", "--key", ""}).status, kSucceeded);
    const std::vector<ProductRow> rows = SavedRows();
    for (const ProductRow& row : rows) {
        EXPECT_EQ(row.key.size(), 32U);
        EXPECT_EQ(row.key.find_first_not_of("0123456789ABCDEF"), std::string::npos);
    }
    EXPECT_NE(rows[0].key, rows[1].key);
}

TEST_F(AddCommandTest, TakesTextsUpToTheirLimits)
{
    ASSERT_EQ(Run({"add", "--name", std::string(255, 'n'), "--key", std::string(255, 'k'), "--part-num",
                   std::string(255, 'p'), "--note", std::string(4095, 'o'), "--price", "4294967295.99"})
                  .status,
              kSucceeded);
    EXPECT_EQ(SavedRows().at(0).note.size(), 4095U);
    EXPECT_EQ(SavedRows().at(0).price, 42'949'672'959'900);
}

TEST_F(AddCommandTest, RefusesWhatDoesNotFitAndAddsNothing)
{
    for (const Refusal& refusal : Refusals()) {
        std::vector<std::string> arguments = refusal.options;
        arguments.insert(arguments.begin(), "add");
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.status, kFailed) << testing::PrintToString(arguments);
        EXPECT_THAT(outcome.err, HasSubstr(refusal.message));
        EXPECT_THAT(outcome.out, IsEmpty());
    }
    EXPECT_THAT(DatabaseNames(), IsEmpty());
}

TEST_F(AddCommandTest, SaysThatTheReservedCharacterWasTakenOut)
{
    const Outcome outcome = Run({"add", "--name", "a~b", "--note", "~"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_THAT(outcome.err, HasSubstr("--name: '~' cannot be kept and was taken out"));
    EXPECT_THAT(outcome.err, HasSubstr("--note: "));
    EXPECT_EQ(SavedRows().at(0).name, "ab");
    EXPECT_EQ(SavedRows().at(0).note, "");
}

TEST_F(AddCommandTest, TakesOddTextsAsTheyAre)
{
    for (const char* const name : {"{}", "[a,b]", "--help", "-5", "\"q\"", "%%", "a=b"}) {
        ASSERT_EQ(Run({"add", "--name", name}).status, kSucceeded) << name;
        EXPECT_EQ(SavedRows().back().name, name);
        ASSERT_EQ(Run({"delete", "2"}).status, kSucceeded);
    }
}

TEST_F(AddCommandTest, RefusesARowIdentifierBeyondTheLast)
{
    WriteCatalogue({{.rowID = 2147483647, .name = "a"}});
    const std::string before = CatalogueBytes();
    const Outcome outcome = Run({"add", "--name", "b"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_EQ(CatalogueBytes(), before);
}

class SetCommandTest : public ProgramFixture
{
};

TEST_F(SetCommandTest, ChangesTheGivenFieldsOnly)
{
    WriteSmallCatalogue();
    const Outcome outcome = Run({"set", "7", "--price", "2", "--note="});
    EXPECT_EQ(outcome.status, kSucceeded) << testing::PrintToString(outcome);
    EXPECT_THAT(outcome.out, IsEmpty());
    EXPECT_EQ(SavedRows().at(0), (ProductRow{.rowID = 7,
                                             .uniqueID = 70,
                                             .status = 1,
                                             .name = "Anvil",
                                             .key = "K7",
                                             .partNum = "AN-1",
                                             .price = 20'000,
                                             .note = "",
                                             .dirtySession = true,
                                             .dirtySync = true}));
    EXPECT_EQ(SavedRows().at(1), (ProductRow{.rowID = 3, .name = "Bolt", .partNum = "BO-1", .price = 5'000}));
}

TEST_F(SetCommandTest, RenamesAndMoves)
{
    WriteSmallCatalogue();
    ASSERT_EQ(Run({"set", "7", "--name", "Zinc", "--key", "", "--part-num", "Z"}).status, kSucceeded);
    EXPECT_EQ(SavedRows().at(2).rowID, 7);
    EXPECT_EQ(SavedRows().at(2).key, "");
}

TEST_F(SetCommandTest, KeepsAPriceBelowZeroThatItIsNotAskedToChange)
{
    WriteCatalogue({{.rowID = 1, .name = "a", .price = -50'000}});
    ASSERT_EQ(Run({"set", "1", "--note", "n"}).status, kSucceeded);
    EXPECT_EQ(SavedRows().at(0).price, -50'000);
}

TEST_F(SetCommandTest, RefusesWhatDoesNotFitAndChangesNothing)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    for (const Refusal& refusal : Refusals()) {
        std::vector<std::string> arguments = refusal.options;
        arguments.insert(arguments.begin(), {"set", "7"});
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.status, kFailed) << testing::PrintToString(arguments);
        EXPECT_THAT(outcome.err, HasSubstr(refusal.message));
        EXPECT_EQ(CatalogueBytes(), before);
    }
}

TEST_F(SetCommandTest, CannotKeepAnotherProgramsLongerTextUnlessItIsReplaced)
{
    WriteCatalogue({{.rowID = 1, .name = std::string(300, 'n'), .note = "old"}});
    const std::string before = CatalogueBytes();
    const Outcome outcome = Run({"set", "1", "--note", "new"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("Product name field is too long"));
    EXPECT_EQ(CatalogueBytes(), before);
    EXPECT_EQ(Run({"set", "1", "--name", "short"}).status, kSucceeded);
    EXPECT_EQ(SavedRows().at(0).note, "old");
}

TEST_F(SetCommandTest, MissesTheProduct)
{
    WriteSmallCatalogue();
    const Outcome outcome = Run({"set", "8", "--name", "x"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("no product has the row identifier 8"));
}

class DeleteCommandTest : public ProgramFixture
{
};

TEST_F(DeleteCommandTest, DeletesAllThatAreNamed)
{
    WriteSmallCatalogue();
    const Outcome outcome = Run({"delete", "5", "7", "5"});
    EXPECT_EQ(outcome.status, kSucceeded);
    EXPECT_EQ(outcome.out, "2 products deleted\n");
    ASSERT_EQ(SavedRows().size(), 1U);
    EXPECT_EQ(SavedRows()[0].rowID, 3);
}

TEST_F(DeleteCommandTest, DeletesNothingWhenOneIsAbsent)
{
    WriteSmallCatalogue();
    const std::string before = CatalogueBytes();
    const Outcome outcome = Run({"delete", "5", "99", "7", "98"});
    EXPECT_EQ(outcome.status, kFailed);
    EXPECT_THAT(outcome.err, HasSubstr("no product has the row identifiers 98, 99; nothing was deleted"));
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(DeleteCommandTest, LeavesAnEmptyCatalogueBehind)
{
    WriteSmallCatalogue();
    ASSERT_EQ(Run({"delete", "3", "5", "7"}).status, kSucceeded);
    EXPECT_THAT(SavedRows(), IsEmpty());
    EXPECT_EQ(Run({"delete", "3"}).status, kFailed);
}

class FailingSaveTest : public ProgramFixture
{
protected:
    void ExpectFailedSave(const std::vector<std::string>& arguments, const FailingFileSystem& disk,
                          const std::string& advice) const
    {
        const std::string before = CatalogueBytes();
        const Outcome outcome = Run(arguments);
        EXPECT_EQ(outcome.status, kFailed) << testing::PrintToString(arguments);
        EXPECT_THAT(outcome.err, HasSubstr("the catalogue was not saved; it is as it was before: "));
        EXPECT_THAT(outcome.err, HasSubstr(advice));
        EXPECT_EQ(outcome.out.find("imported"), std::string::npos);
        EXPECT_EQ(CatalogueBytes(), before);
        EXPECT_THAT(DatabaseNames(), testing::ElementsAre("corvprd2.cpd"));
        EXPECT_GT(disk.BytesRead(), 0U);
    }

    [[nodiscard]] std::vector<std::vector<std::string>> ChangingCommands() const
    {
        return {{"add", "--name", "x"},
                {"set", "7", "--price", "3"},
                {"delete", "7"},
                {"import", PathOf("list.csv")},
                {"restore", PathOf("backup.cpd")}};
    }

    void SetUp() override
    {
        WriteSmallCatalogue();
        m_folder.Write("backup.cpd", CatalogueBytes());
        m_folder.Write("list.csv", "Name\nAnvil\n");
    }
};

TEST_F(FailingSaveTest, IsToldWhenTheDiskIsFull)
{
    FailingFileSystem disk(PlatformFileSystem());
    const ScopedFileSystem scope(disk);
    for (const std::uint64_t room : {0U, 1U, 100U}) {
        for (const std::vector<std::string>& arguments : ChangingCommands()) {
            disk.Heal();
            disk.FailAfterWriting(room);
            ExpectFailedSave(arguments, disk, "Free some space on that disk");
        }
    }
}

TEST_F(FailingSaveTest, IsToldWhenTheLastStepFails)
{
    FailingFileSystem disk(PlatformFileSystem());
    const ScopedFileSystem scope(disk);
    disk.FailAtClosing();
    for (const std::vector<std::string>& arguments : ChangingCommands())
        ExpectFailedSave(arguments, disk, "Check the disk");
}

} // namespace
} // namespace KestrinProductEditor::CommandLine
