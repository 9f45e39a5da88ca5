// SPDX-License-Identifier: MIT
#include "platform/Guid.h"

#include <cerrno>
#include <cstddef>
#include <sys/random.h>
#include <sys/types.h>

namespace KestrinProductEditor {

std::optional<Guid> CreateGuid()
{
    std::array<std::uint8_t, 16> bytes;
    for (std::size_t filled = 0; filled < bytes.size();) {
        const ssize_t count = getrandom(bytes.data() + filled, bytes.size() - filled, 0);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return std::nullopt;
        filled += static_cast<std::size_t>(count);
    }
    const auto word = [&bytes](std::size_t at) {
        return static_cast<std::uint16_t>(bytes[at] << 8 | bytes[at + 1]);
    };
    Guid guid;
    guid.data1 = std::uint32_t{word(0)} << 16 | word(2);
    guid.data2 = word(4);
    guid.data3 = static_cast<std::uint16_t>((word(6) & 0x0FFF) | 0x4000);
    for (std::size_t i = 0; i < guid.data4.size(); ++i)
        guid.data4[i] = bytes[8 + i];
    guid.data4[0] = static_cast<std::uint8_t>((guid.data4[0] & 0x3F) | 0x80);
    return guid;
}

} // namespace KestrinProductEditor
