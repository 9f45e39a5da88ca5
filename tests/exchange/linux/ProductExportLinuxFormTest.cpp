// SPDX-License-Identifier: MIT
#include "support/ExchangeFixture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace KestrinProductEditor {

using ProductExportLinux = ExchangeFixture;

TEST_F(ProductExportLinux, SaysAPipeInPlaceInsteadOfWaitingForItsReader)
{
    ASSERT_EQ(mkfifo((m_folder.Path() / "pipe").c_str(), 0600), 0);
    Export([&] {
        m_user->Type(m_folder.File("pipe"));
        m_user->Click(u"cmdExport");
        EXPECT_THAT(ToUtf8(m_user->TextOf(u"lblStatus")), testing::HasSubstr("no ordinary file"));
        BrowseTo(m_folder.File("list.csv"));
        m_user->Click(u"cmdExport");
    });
    EXPECT_THAT(m_folder.Read("list.csv"), testing::HasSubstr("\"Anchor\""));
}

} // namespace KestrinProductEditor
