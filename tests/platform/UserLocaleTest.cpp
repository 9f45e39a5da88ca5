// SPDX-License-Identifier: MIT
#include "platform/UserLocale.h"

#include "fake/ScriptedLocale.h"

#include <gtest/gtest.h>

#include <thread>

namespace KestrinProductEditor {
namespace {

TEST(UserLocale, IsThePlatformsUnlessAScopeSaysOtherwise)
{
    EXPECT_EQ(&UserLocale(), &PlatformUserLocale());
}

TEST(ScopedUserLocale, CountsUntilItsEndAndNests)
{
    const ScriptedLocale outer;
    const ScriptedLocale inner;
    {
        const ScopedUserLocale outerScope(outer);
        EXPECT_EQ(&UserLocale(), &outer);
        {
            const ScopedUserLocale innerScope(inner);
            EXPECT_EQ(&UserLocale(), &inner);
        }
        EXPECT_EQ(&UserLocale(), &outer);
    }
    EXPECT_EQ(&UserLocale(), &PlatformUserLocale());
}

TEST(ScopedUserLocale, IsUnknownToOtherThreads)
{
    const ScriptedLocale scripted;
    const ScopedUserLocale scope(scripted);
    const IUserLocale* seen = nullptr;
    std::thread([&seen] { seen = &UserLocale(); }).join();
    EXPECT_EQ(seen, &PlatformUserLocale());
}

} // namespace
} // namespace KestrinProductEditor
