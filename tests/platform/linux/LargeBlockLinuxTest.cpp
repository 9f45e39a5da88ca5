// SPDX-License-Identifier: MIT
#include "platform/LargeBlock.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

} // namespace

TEST(LargeBlockLinux, OfFourMegabytesLiesAtALargePage)
{
    std::vector<LargeBlock> blocks;
    for (std::size_t i = 0; i < 8; ++i) {
        blocks.push_back(AllocateLargeBlock(4 * kMegabyte + i * 4097));
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks.back().get()) % (2 * kMegabyte), 0u);
    }
}

} // namespace KestrinProductEditor
