// SPDX-License-Identifier: MIT
#include "kstnedit/JsonText.h"

#include "platform/Text.h"

namespace KestrinProductEditor::CommandLine {

namespace {

void AppendEscape(char32_t unit, std::string& out)
{
    constexpr std::string_view kDigits = "0123456789abcdef";
    out += "\\u";
    for (int shift = 12; shift >= 0; shift -= 4)
        out += kDigits[(unit >> shift) & 0xF];
}

bool AppendShortEscape(char32_t codePoint, std::string& out)
{
    switch (codePoint) {
    case U'"':
        out += "\\\"";
        return true;
    case U'\\':
        out += "\\\\";
        return true;
    case U'\n':
        out += "\\n";
        return true;
    case U'\r':
        out += "\\r";
        return true;
    case U'\t':
        out += "\\t";
        return true;
    default:
        return false;
    }
}

bool MustBeEscaped(char32_t codePoint, JsonEscapes escapes)
{
    const bool isControl = codePoint < U' ' || (codePoint >= 0x7F && codePoint <= 0x9F);
    const bool isSurrogate = codePoint >= 0xD800 && codePoint <= 0xDFFF;
    return isControl || isSurrogate || (escapes == JsonEscapes::AllButAscii && codePoint > 0x7F);
}

} // namespace

std::string JsonString(std::string_view text, JsonEscapes escapes)
{
    constexpr char32_t kFirstOfPairs = 0x10000;
    std::string out = "\"";
    for (std::size_t at = 0; at < text.size();) {
        const char32_t codePoint = NextCodePoint(text, at);
        if (AppendShortEscape(codePoint, out))
            continue;
        if (!MustBeEscaped(codePoint, escapes)) {
            AppendCodePoint(codePoint, out);
        } else if (codePoint < kFirstOfPairs) {
            AppendEscape(codePoint, out);
        } else {
            AppendEscape(0xD800 + ((codePoint - kFirstOfPairs) >> 10), out);
            AppendEscape(0xDC00 + ((codePoint - kFirstOfPairs) & 0x3FF), out);
        }
    }
    out += '"';
    return out;
}

} // namespace KestrinProductEditor::CommandLine
