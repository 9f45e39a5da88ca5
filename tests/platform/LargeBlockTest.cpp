// SPDX-License-Identifier: MIT
#include "platform/LargeBlock.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <new>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kMegabyte = std::size_t{1} << 20;

} // namespace

TEST(LargeBlock, OfSizeZeroIsNull)
{
    EXPECT_EQ(AllocateLargeBlock(0), nullptr);
}

TEST(LargeBlock, IsZeroedAndWritableToItsLastByte)
{
    for (const std::size_t size :
         {std::size_t{1}, std::size_t{4095}, std::size_t{4097}, kMegabyte, 4 * kMegabyte - 1, 4 * kMegabyte,
          4 * kMegabyte + 1, 9 * kMegabyte + 123}) {
        const LargeBlock block = AllocateLargeBlock(size);
        ASSERT_NE(block, nullptr) << size;
        EXPECT_EQ(block.get_deleter().size, size);
        const std::size_t places[] = {0, size / 2, size - 1};
        for (const std::size_t at : places)
            EXPECT_EQ(block[at], 0) << size << ' ' << at;
        for (const std::size_t at : places)
            block[at] = 'x';
    }
}

TEST(LargeBlock, OfAnImpossibleSizeRaisesBadAlloc)
{
    for (const std::size_t less : {std::size_t{0}, kMegabyte, 2 * kMegabyte + 4095, 64 * kMegabyte})
        EXPECT_THROW(static_cast<void>(AllocateLargeBlock(std::numeric_limits<std::size_t>::max() - less)),
                     std::bad_alloc);
    EXPECT_THROW(static_cast<void>(AllocateLargeBlock(std::size_t{1} << 60)), std::bad_alloc);
}

} // namespace KestrinProductEditor
