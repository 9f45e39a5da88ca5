// SPDX-License-Identifier: MIT
#include "platform/LargeBlock.h"

#include <windows.h>

#include <new>

namespace KestrinProductEditor {

void LargeBlockDeleter::operator()(char* block) const noexcept
{
    VirtualFree(block, 0, MEM_RELEASE);
}

LargeBlock AllocateLargeBlock(std::size_t size)
{
    // Large pages need a right that users do not have here.
    if (size == 0)
        return LargeBlock();
    void* const block = VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
    if (block == nullptr)
        throw std::bad_alloc();
    return LargeBlock(static_cast<char*>(block), LargeBlockDeleter{size});
}

} // namespace KestrinProductEditor
