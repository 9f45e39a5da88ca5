// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace KestrinProductEditor {

struct Guid
{
    std::uint32_t data1;
    std::uint16_t data2;
    std::uint16_t data3;
    std::array<std::uint8_t, 8> data4;
};

/// A new random identifier (version 4), or nothing when the system gives no random bytes.
[[nodiscard]] std::optional<Guid> CreateGuid();

} // namespace KestrinProductEditor
