// SPDX-License-Identifier: MIT
#include "util/modShell.h"

#include "platform/Shell.h"

#include <gtest/gtest.h>

namespace KestrinProductEditor {
namespace {

TEST(GetSpecialFolderPath, IsThePlatformsAnswerWhateverTheWindow)
{
    const std::u16string documents = SpecialFolderPath(kCsidlPersonal);
    EXPECT_EQ(modShell::GetSpecialFolderPath(0, kCsidlPersonal), documents);
    EXPECT_EQ(modShell::GetSpecialFolderPath(12345, kCsidlPersonal), documents);
}

TEST(GetSpecialFolderPath, IsEmptyForAnUnknownFolder)
{
    EXPECT_EQ(modShell::GetSpecialFolderPath(0, 9999), u"");
    EXPECT_EQ(modShell::GetSpecialFolderPath(0, -1), u"");
}

TEST(GetSpecialFolderPath, IsEmptyForAFolderWithoutAPath)
{
    constexpr std::int32_t kCsidlControls = 3;
    EXPECT_EQ(modShell::GetSpecialFolderPath(0, kCsidlControls), u"");
}

} // namespace
} // namespace KestrinProductEditor
