// SPDX-License-Identifier: MIT
#include "platform/Guid.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

namespace KestrinProductEditor {

TEST(Guid, IsRandomOfVersion4)
{
    for (int i = 0; i < 1000; ++i) {
        const std::optional<Guid> guid = CreateGuid();
        ASSERT_TRUE(guid);
        EXPECT_EQ(guid->data3 >> 12, 4);
        EXPECT_EQ(guid->data4[0] >> 6, 2);
    }
}

TEST(Guid, IsAnotherEachTime)
{
    std::set<std::tuple<std::uint32_t, std::uint16_t, std::uint16_t, std::array<std::uint8_t, 8>>> seen;
    for (int i = 0; i < 1000; ++i) {
        const Guid guid = CreateGuid().value();
        seen.insert({guid.data1, guid.data2, guid.data3, guid.data4});
    }
    EXPECT_EQ(seen.size(), 1000u);
}

TEST(Guid, LeavesNoOtherBitFixed)
{
    Guid ones{};
    Guid zeros{~std::uint32_t{0}, 0xFFFF, 0xFFFF, {255, 255, 255, 255, 255, 255, 255, 255}};
    for (int i = 0; i < 1000; ++i) {
        const Guid guid = CreateGuid().value();
        ones.data1 |= guid.data1;
        zeros.data1 &= guid.data1;
        ones.data2 = static_cast<std::uint16_t>(ones.data2 | guid.data2);
        zeros.data2 = static_cast<std::uint16_t>(zeros.data2 & guid.data2);
        ones.data3 = static_cast<std::uint16_t>(ones.data3 | guid.data3);
        zeros.data3 = static_cast<std::uint16_t>(zeros.data3 & guid.data3);
        for (std::size_t at = 0; at < guid.data4.size(); ++at) {
            ones.data4[at] = static_cast<std::uint8_t>(ones.data4[at] | guid.data4[at]);
            zeros.data4[at] = static_cast<std::uint8_t>(zeros.data4[at] & guid.data4[at]);
        }
    }
    EXPECT_EQ(ones.data1, 0xFFFFFFFFu);
    EXPECT_EQ(zeros.data1, 0u);
    EXPECT_EQ(ones.data2, 0xFFFF);
    EXPECT_EQ(zeros.data2, 0);
    EXPECT_EQ(ones.data3, 0x4FFF);
    EXPECT_EQ(zeros.data3, 0x4000);
    EXPECT_EQ(ones.data4, (std::array<std::uint8_t, 8>{0xBF, 255, 255, 255, 255, 255, 255, 255}));
    EXPECT_EQ(zeros.data4, (std::array<std::uint8_t, 8>{0x80, 0, 0, 0, 0, 0, 0, 0}));
}

} // namespace KestrinProductEditor
