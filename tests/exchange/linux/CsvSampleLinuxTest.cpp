// SPDX-License-Identifier: MIT
#include "exchange/CsvSample.h"

#include "support/ErrorOf.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace KestrinProductEditor {

TEST(CsvSampleLinux, RefusesAPipeInsteadOfWaitingForItsWriter)
{
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo((folder.Path() / "pipe").c_str(), 0600), 0);
    const auto read = [&] { static_cast<void>(ReadCsvSample(folder.File("pipe"), FirstLine::Titles)); };
    EXPECT_EQ(ErrorNumberOf(read), 75);
}

TEST(CsvSampleLinux, RefusesADeviceWithoutAnEnd)
{
    const auto read = [] { static_cast<void>(ReadCsvSample(u"/dev/zero", FirstLine::Titles)); };
    EXPECT_EQ(ErrorNumberOf(read), 75);
}

} // namespace KestrinProductEditor
