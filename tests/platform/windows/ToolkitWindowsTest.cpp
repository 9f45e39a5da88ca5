// SPDX-License-Identifier: MIT
#include "platform/ui/PlatformToolkit.h"

#include "support/ErrorOf.h"

#include <gtest/gtest.h>

namespace KestrinProductEditor {

TEST(ToolkitWindows, SaysThatThereAreNoWindows)
{
    const auto error = ErrorOf([] { static_cast<void>(PlatformToolkit()); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), kErrActionNotSupported);
    EXPECT_NE(error->Description().find(u"built without windows"), std::u16string::npos);
    EXPECT_EQ(LoadedPlatformToolkit(), nullptr);
}

} // namespace KestrinProductEditor
