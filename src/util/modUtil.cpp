// SPDX-License-Identifier: MIT
#include "util/modUtil.h"

#include "platform/Guid.h"

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace KestrinProductEditor::modUtil {

namespace {

void AppendHex(std::uint32_t value, int digits, std::u16string& out)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) {
        out += u"0123456789ABCDEF"[(value >> shift) & 0xFU];
    }
}

} // namespace

std::u16string GuidText()
{
    const std::optional<Guid> guid = CreateGuid();
    std::u16string text;
    if (!guid) {
        return text;
    }
    text.reserve(32);
    AppendHex(guid->data1, 8, text);
    AppendHex(guid->data2, 4, text);
    AppendHex(guid->data3, 4, text);
    for (const std::uint8_t byte : guid->data4) {
        AppendHex(byte, 2, text);
    }
    return text;
}

Variant SplitQuoted(std::u16string_view text, std::u16string_view separator, bool& bError)
{
    bError = false;
    if (text.empty()) {
        return Variant::Null();
    }
    std::vector<Variant> columns;
    std::u16string column;
    bool isInsideQuotes = false;
    for (const char16_t character : text) {
        if (!isInsideQuotes && separator == std::u16string_view(&character, 1)) {
            columns.emplace_back(std::u16string_view(column));
            column.clear();
        } else if (character == u'"') {
            isInsideQuotes = !isInsideQuotes;
        } else {
            column += character;
        }
    }
    columns.emplace_back(std::u16string_view(column));
    return Variant::ArrayOf(std::move(columns));
}

} // namespace KestrinProductEditor::modUtil
