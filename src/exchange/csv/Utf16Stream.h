// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Files.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// A UTF-16 file, read as UTF-8 (Text.h), block by block.
///
/// A lone surrogate stays one; an odd byte at the end is U+FFFD.
class Utf16Stream final : public IReadStream
{
public:
    enum class ByteOrder
    {
        LittleEndian,
        BigEndian
    };

    /// `head` are the bytes behind the mark that were read from `source` already. `source` must outlive the
    /// stream.
    Utf16Stream(IReadStream& source, ByteOrder byteOrder, std::string_view head);

    /// 0: the size in UTF-8 is not known.
    [[nodiscard]] std::uint64_t Size() const override { return 0; }
    [[nodiscard]] std::size_t Read(char* buffer, std::size_t size) override;

private:
    void PrvConvertBlock();

    IReadStream& m_source;
    ByteOrder m_byteOrder;
    std::vector<char> m_bytes;
    std::size_t m_byteCount; // of m_bytes, not yet converted
    bool m_atEnd = false;
    std::u16string m_units;
    std::string m_text;
    std::size_t m_given = 0; // of m_text
};

} // namespace KestrinProductEditor
