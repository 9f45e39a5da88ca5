// SPDX-License-Identifier: MIT
#include "platform/LargeBlock.h"

#include <cstdint>
#include <limits>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

namespace KestrinProductEditor {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
/// Smaller blocks would waste too much of a large page.
constexpr std::size_t kHugeBlock = std::size_t{4} << 20;

[[nodiscard]] char* Map(std::size_t size)
{
    void* const block = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (block == MAP_FAILED)
        throw std::bad_alloc();
    return static_cast<char*>(block);
}

/// A block at a multiple of the large page: mapped with room to spare, then cut to size at both ends.
[[nodiscard]] char* MapAligned(std::size_t size)
{
    const std::size_t page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    if (size > std::numeric_limits<std::size_t>::max() - kHugePage - page)
        throw std::bad_alloc();
    const std::size_t whole = (size + page - 1) / page * page;
    char* const mapped = Map(whole + kHugePage);
    const std::size_t head = (kHugePage - reinterpret_cast<std::uintptr_t>(mapped) % kHugePage) % kHugePage;
    char* const block = mapped + head;
    if (head > 0)
        munmap(mapped, head);
    munmap(block + whole, kHugePage - head);
    // Advice only: a system without large pages refuses it, and the block works all the same.
    madvise(block, whole, MADV_HUGEPAGE);
    return block;
}

} // namespace

void LargeBlockDeleter::operator()(char* block) const noexcept
{
    munmap(block, size);
}

LargeBlock AllocateLargeBlock(std::size_t size)
{
    if (size == 0)
        return LargeBlock();
    return LargeBlock(size < kHugeBlock ? Map(size) : MapAligned(size), LargeBlockDeleter{size});
}

} // namespace KestrinProductEditor
