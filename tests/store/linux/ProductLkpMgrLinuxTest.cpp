// SPDX-License-Identifier: MIT
#include "support/ErrorOf.h"
#include "support/StoreFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdint>
#include <functional>
#include <random>
#include <set>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace KestrinProductEditor {

namespace {

using testing::ElementsAre;

/// Runs `work` in a process of its own, as an ordinary user; its answer.
[[nodiscard]] int AsAnOrdinaryUser(const std::function<int()>& work)
{
    constexpr uid_t kNobody = 65534;
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && (setegid(kNobody) != 0 || seteuid(kNobody) != 0))
            _exit(254);
        int answer = 255;
        try {
            answer = work();
        } catch (...) {
        }
        _exit(answer);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class StoreOnLinux : public StoreFixture
{
protected:
    void SetMode(const std::filesystem::path& path, mode_t mode) const
    {
        EXPECT_EQ(chmod(path.c_str(), mode), 0) << path;
    }
    [[nodiscard]] static int OpenError()
    {
        return ErrorNumberOf([] { static_cast<void>(Open()); });
    }
};

constexpr std::size_t kRows = 1500;

/// Gives every row the name and the note of a generation.
void WriteGeneration(ProductLkpMgr& store, std::uint32_t generation)
{
    const std::string note = "generation " + std::to_string(generation) + std::string(generation % 300, '.');
    for (std::size_t i = 0; i < kRows; ++i) {
        const auto rowID = static_cast<std::int32_t>(i + 1);
        store.Update(
            Packed(rowID, "Product " + std::to_string(generation % 7) + std::to_string(i), "", "", 0, note));
    }
}

} // namespace

TEST_F(StoreOnLinux, RefusesACatalogueThatMayNotBeRead)
{
    WriteCatalogue({{.rowID = 1, .name = "Anchor"}});
    const std::string before = CatalogueBytes();
    SetMode(m_database / "corvprd2.cpd", 0);
    EXPECT_EQ(AsAnOrdinaryUser([] { return OpenError(); }), 70);
    SetMode(m_database / "corvprd2.cpd", 0600);
    EXPECT_EQ(CatalogueBytes(), before);
}

TEST_F(StoreOnLinux, RefusesAFolderThatMayNotBeSearched)
{
    WriteCatalogue({{.rowID = 1, .name = "Anchor"}});
    SetMode(m_database, 0);
    EXPECT_EQ(AsAnOrdinaryUser([] { return OpenError(); }), 70);
    SetMode(m_database, 0700);
}

TEST_F(StoreOnLinux, RefusesToCreateACatalogueInAFolderThatMayNotBeWritten)
{
    SetMode(m_database, 0555);
    EXPECT_EQ(AsAnOrdinaryUser([] { return OpenError(); }), 70);
    SetMode(m_database, 0700);
    EXPECT_FALSE(CatalogueExists());
}

TEST_F(StoreOnLinux, ReadsACatalogueThatMayNotBeWrittenAndTellsTheTraceAtRelease)
{
    WriteCatalogue({{.rowID = 1, .name = "Anchor"}});
    const std::string before = CatalogueBytes();
    SetMode(m_folder.Path(), 0755);
    SetMode(m_database / "corvprd2.cpd", 0444);
    SetMode(m_database, 0555);
    EXPECT_EQ(
        AsAnOrdinaryUser([this] {
            auto store = Open();
            if (store->Count() != 1)
                return 1;
            m_trace->Forget();
            store.reset();
            return m_trace->CallsLike("error ") == std::vector<std::string>{"error 70", "error 70"} ? 0 : 2;
        }),
        0);
    SetMode(m_database, 0700);
    EXPECT_EQ(CatalogueBytes(), before);
    EXPECT_THAT(DatabaseNames(), ElementsAre("corvprd2.cpd"));
}

TEST_F(StoreOnLinux, KeepsTheModeOfTheCatalogue)
{
    WriteCatalogue({{.rowID = 1, .name = "Anchor"}});
    SetMode(m_database / "corvprd2.cpd", 0640);
    Open().reset();
    struct stat status;
    ASSERT_EQ(stat((m_database / "corvprd2.cpd").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640U);
}

TEST_F(StoreOnLinux, HasTheOldCatalogueOrTheNewOneWheneverASaveIsKilled)
{
    std::vector<ProductRow> rows;
    for (std::size_t i = 0; i < kRows; ++i)
        rows.push_back({.rowID = static_cast<std::int32_t>(i + 1), .name = "Product"});
    WriteCatalogue(rows);
    {
        const auto store = Open();
        WriteGeneration(*store, 0);
    }
    const std::uint32_t seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::set<std::string> generations;
    constexpr int kKills = 100;
    for (int kill = 0; kill < kKills; ++kill) {
        int ready[2];
        ASSERT_EQ(pipe(ready), 0);
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            try {
                auto store = Open();
                for (std::uint32_t generation = 1000U * static_cast<std::uint32_t>(kill) + 1;; ++generation) {
                    WriteGeneration(*store, generation);
                    // From here on the save may be hit.
                    if (write(ready[1], "x", 1) != 1)
                        _exit(1);
                    store.reset();
                    store = Open();
                }
            } catch (...) {
                _exit(1);
            }
        }
        char byte = 0;
        ASSERT_EQ(read(ready[0], &byte, 1), 1);
        usleep(static_cast<useconds_t>(random() % 8000));
        ASSERT_EQ(::kill(child, SIGKILL), 0);
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFSIGNALED(status)) << "the process ended by itself";
        close(ready[0]);
        close(ready[1]);

        const std::vector<ProductRow> saved = SavedRows();
        ASSERT_EQ(saved.size(), kRows);
        for (const ProductRow& row : saved)
            ASSERT_EQ(row.note, saved[0].note);
        generations.insert(saved[0].note);
        const auto store = Open();
        store->CancelUpdate(true);
        ASSERT_EQ(store->Count(), static_cast<std::int32_t>(kRows));
    }
    EXPECT_GT(generations.size(), 1U);
    Open().reset();
    EXPECT_THAT(DatabaseNames(), ElementsAre("corvprd2.cpd"));
}

TEST_F(StoreOnLinux, FollowsALinkWhenItSaves)
{
    m_folder.Write("real.cpd", CatalogueFileOf({{.rowID = 1, .name = "Anchor"}}));
    std::filesystem::create_symlink("../real.cpd", m_database / "corvprd2.cpd");
    auto store = Open();
    AddNames(*store, {"Zip"});
    store.reset();
    EXPECT_TRUE(std::filesystem::is_symlink(m_database / "corvprd2.cpd"));
    EXPECT_EQ(SavedRows().size(), 2U);
}

} // namespace KestrinProductEditor
