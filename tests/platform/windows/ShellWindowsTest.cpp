// SPDX-License-Identifier: MIT
#include "platform/Shell.h"

#include "support/TemporaryFolder.h"
#include "support/UserPlaces.h"

#include <gtest/gtest.h>

namespace KestrinProductEditor {

TEST(ShellWindows, FindsTheUsersDocuments)
{
    const TemporaryFolder folder;
    const ScopedDocumentsFolder documents(folder.Path());
    EXPECT_EQ(SpecialFolderPath(kCsidlPersonal), folder.Path().u16string());
}

TEST(ShellWindows, FindsOtherFoldersOfTheSystem)
{
    constexpr std::int32_t kCsidlWindows = 36;
    EXPECT_TRUE(SpecialFolderPath(kCsidlWindows).starts_with(u"C:\\"));
}

} // namespace KestrinProductEditor
