// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>

namespace KestrinProductEditor {

struct LargeBlockDeleter
{
    std::size_t size = 0;
    void operator()(char* block) const noexcept;
};

/// Zeroed memory straight from the system, on large pages where the system has them; a page costs memory only
/// once it is touched.
using LargeBlock = std::unique_ptr<char[], LargeBlockDeleter>;

/// Throws std::bad_alloc.
[[nodiscard]] LargeBlock AllocateLargeBlock(std::size_t size);

} // namespace KestrinProductEditor
