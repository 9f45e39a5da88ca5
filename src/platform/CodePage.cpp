// SPDX-License-Identifier: MIT
#include "platform/CodePage.h"

#include "platform/CodePageBackend.h"
#include "platform/Text.h"

#include <KestrinProductEditor/AutomationError.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace KestrinProductEditor {

namespace {

constexpr unsigned kUpperFirst = 0x80;

/// The characters of the windows-1252 bytes 0x80 to 0x9F; every other byte is the character of its own
/// number.
constexpr std::array<char16_t, 32> kUpper{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

[[nodiscard]] char Windows1252Byte(char32_t codePoint) noexcept
{
    if (codePoint < kUpperFirst || (codePoint >= 0xA0 && codePoint <= 0xFF))
        return static_cast<char>(codePoint);
    const auto found = std::find(kUpper.begin(), kUpper.end(), codePoint);
    return found == kUpper.end() ? '?' : static_cast<char>(kUpperFirst + (found - kUpper.begin()));
}

class Utf8Page final : public CodePage
{
public:
    [[nodiscard]] bool IsUtf8() const noexcept override { return true; }

    [[nodiscard]] std::string_view Decode(std::string_view bytes, std::string& scratch) const override
    {
        if (IsValidUtf8(bytes))
            return bytes;
        scratch.clear();
        AppendWindows1252AsUtf8(bytes, scratch);
        return scratch;
    }

    [[nodiscard]] std::string_view Encode(std::string_view text, std::string& scratch) const override
    {
        if (IsValidUtf8(text))
            return text;
        // UTF-16 joins the surrogates that stand side by side; those left are alone.
        std::u16string units = ToUtf16(text);
        for (std::size_t at = 0; at < units.size(); ++at) {
            const bool isHigh = (units[at] & 0xFC00) == 0xD800;
            if (isHigh && at + 1 < units.size() && (units[at + 1] & 0xFC00) == 0xDC00)
                ++at;
            else if ((units[at] & 0xF800) == 0xD800)
                units[at] = u'\uFFFD';
        }
        scratch.clear();
        AppendUtf8(units, scratch);
        return scratch;
    }
};

class Windows1252Page final : public CodePage
{
public:
    [[nodiscard]] bool IsUtf8() const noexcept override { return false; }

    [[nodiscard]] std::string_view Decode(std::string_view bytes, std::string& scratch) const override
    {
        if (IsAscii(bytes))
            return bytes;
        scratch.clear();
        AppendWindows1252AsUtf8(bytes, scratch);
        return scratch;
    }

    [[nodiscard]] std::string_view Encode(std::string_view text, std::string& scratch) const override
    {
        if (IsAscii(text))
            return text;
        scratch.clear();
        scratch.reserve(text.size());
        for (std::size_t at = 0; at < text.size();)
            scratch.push_back(Windows1252Byte(NextCodePoint(text, at)));
        return scratch;
    }
};

} // namespace

std::shared_ptr<const CodePage> CodePage::Named(std::string_view name)
{
    const std::string folded = AsciiLower(name);
    if (folded == "utf-8" || folded == "utf8" || folded == "65001" || folded == "cp65001")
        return Utf8CodePage();
    if (folded == "windows-1252" || folded == "cp1252" || folded == "1252")
        return std::make_shared<Windows1252Page>();
    return PlatformCodePage(folded);
}

std::string_view CodePage::RoundTrip(std::string_view text, std::string& scratch) const
{
    if (IsAscii(text))
        return text;
    std::string encoded;
    const std::string_view bytes = Encode(text, encoded);
    const std::string_view back = Decode(bytes, scratch);
    if (bytes.data() == encoded.data() && back.data() == bytes.data()) {
        scratch = std::move(encoded);
        return scratch;
    }
    return back;
}

std::shared_ptr<const CodePage> CodePageOfSetting(std::string_view value)
{
    if (std::shared_ptr<const CodePage> page = CodePage::Named(value))
        return page;
    throw AutomationError(kErrInvalidProcedureCall, u"",
                          u"cannot use the code page '" + ToUtf16(value) +
                              u"' of KSTNEDIT_CODEPAGE: it is not known. Set it to a name such as "
                              u"windows-1252 or utf-8, or leave it unset");
}

std::shared_ptr<const CodePage> Utf8CodePage()
{
    return std::make_shared<Utf8Page>();
}

void AppendWindows1252AsUtf8(std::string_view bytes, std::string& out)
{
    out.reserve(out.size() + bytes.size());
    std::size_t done = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const unsigned byte = static_cast<unsigned char>(bytes[at]);
        if (byte < kUpperFirst)
            continue;
        out.append(bytes, done, at - done);
        done = at + 1;
        AppendCodePoint(byte < kUpperFirst + kUpper.size() ? kUpper[byte - kUpperFirst] : byte, out);
    }
    out.append(bytes, done, bytes.size() - done);
}

} // namespace KestrinProductEditor
