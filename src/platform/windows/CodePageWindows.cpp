// SPDX-License-Identifier: MIT
#include "platform/CodePageBackend.h"
#include "platform/Text.h"
#include "platform/windows/WideText.h"

#include <windows.h>

#include <charconv>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

namespace KestrinProductEditor {

namespace {

struct NamedPage
{
    std::string_view name;
    UINT number;
};

/// Character sets that go by a name elsewhere.
constexpr NamedPage kNamedPages[] = {
    {"us-ascii", 20127},    {"koi8-r", 20866},      {"koi8-u", 21866},     {"iso-8859-1", 28591},
    {"iso-8859-2", 28592},  {"iso-8859-3", 28593},  {"iso-8859-4", 28594}, {"iso-8859-5", 28595},
    {"iso-8859-6", 28596},  {"iso-8859-7", 28597},  {"iso-8859-8", 28598}, {"iso-8859-9", 28599},
    {"iso-8859-13", 28603}, {"iso-8859-15", 28605}, {"euc-jp", 20932},     {"gb2312", 936},
    {"gbk", 936},           {"euc-kr", 949},        {"gb18030", 54936},    {"shift_jis", 932},
    {"big5", 950},
};

[[nodiscard]] std::optional<UINT> PageNumber(std::string_view name)
{
    const std::string lower = AsciiLower(name);
    for (const NamedPage& page : kNamedPages) {
        if (page.name == lower)
            return page.number;
    }
    std::string_view digits = lower;
    for (const std::string_view prefix : {"windows-", "cp"}) {
        if (digits.starts_with(prefix)) {
            digits.remove_prefix(prefix.size());
            break;
        }
    }
    UINT number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size())
        return std::nullopt;
    return number;
}

/// Turns `text` from one form into the other through a system call that tells the length first.
template<class Unit, class Convert>
[[nodiscard]] bool Converted(std::basic_string<Unit>& out, const Convert& convert)
{
    const int length = convert(nullptr, 0);
    if (length <= 0)
        return false;
    out.resize(static_cast<std::size_t>(length));
    return convert(out.data(), length) == length;
}

/// A code page of the system.
class SystemPage final : public CodePage
{
public:
    explicit SystemPage(UINT number) : m_number(number) {}

    [[nodiscard]] bool IsUtf8() const noexcept override { return false; }

    [[nodiscard]] std::string_view Decode(std::string_view bytes, std::string& scratch) const override
    {
        if (IsAscii(bytes))
            return bytes;
        scratch.clear();
        std::u16string text;
        if (Widen(bytes, text))
            AppendUtf8(text, scratch);
        else
            AppendWindows1252AsUtf8(bytes, scratch);
        return scratch;
    }

    [[nodiscard]] std::string_view Encode(std::string_view text, std::string& scratch) const override
    {
        if (IsAscii(text))
            return text;
        const std::u16string wide = ToUtf16(text);
        // The system would write something that looks alike, and two units' worth of "?" for one character.
        scratch.clear();
        for (std::size_t at = 0; at < wide.size();) {
            const bool isPair =
                (wide[at] & 0xFC00) == 0xD800 && at + 1 < wide.size() && (wide[at + 1] & 0xFC00) == 0xDC00;
            const std::u16string_view character = std::u16string_view(wide).substr(at, isPair ? 2 : 1);
            PrvAppendCharacter(character, scratch);
            at += character.size();
        }
        return scratch;
    }

    /// False for what is not valid in the code page.
    [[nodiscard]] bool Widen(std::string_view bytes, std::u16string& text) const
    {
        return Converted(text, [&](char16_t* out, int size) {
            return MultiByteToWideChar(m_number, MB_ERR_INVALID_CHARS, bytes.data(),
                                       static_cast<int>(bytes.size()), Wide(out), size);
        });
    }

private:
    void PrvAppendCharacter(std::u16string_view character, std::string& out) const
    {
        char bytes[8];
        const int count =
            WideCharToMultiByte(m_number, 0, Wide(character.data()), static_cast<int>(character.size()),
                                bytes, sizeof(bytes), nullptr, nullptr);
        std::u16string back;
        const std::string_view written(bytes, count > 0 ? static_cast<std::size_t>(count) : 0);
        if (!written.empty() && Widen(written, back) && back == character)
            out += written;
        else
            out += '?';
    }

    UINT m_number;
};

[[nodiscard]] bool KeepsAscii(const SystemPage& page)
{
    std::string probe;
    for (int byte = 1; byte < 0x80; ++byte)
        probe.push_back(static_cast<char>(byte));
    std::u16string wide;
    return page.Widen(probe, wide) && ToUtf8(wide) == probe;
}

/// Code pages with shift states read a character differently from place to place.
[[nodiscard]] bool HasShiftStates(UINT number)
{
    return (number >= 50220 && number <= 50229) || number == 52936 || number == 65000;
}

} // namespace

std::shared_ptr<const CodePage> PlatformCodePage(std::string_view name)
{
    const std::optional<UINT> number = PageNumber(name);
    if (!number || *number <= CP_THREAD_ACP || HasShiftStates(*number) || !IsValidCodePage(*number))
        return nullptr;
    auto page = std::make_shared<const SystemPage>(*number);
    return KeepsAscii(*page) ? std::move(page) : nullptr;
}

std::shared_ptr<const CodePage> CodePage::System()
{
    // The process's own environment block: the C library keeps a copy that later changes do not reach.
    wchar_t setting[64];
    const DWORD length = GetEnvironmentVariableW(L"KSTNEDIT_CODEPAGE", setting, std::size(setting));
    if (length >= std::size(setting))
        return CodePageOfSetting("a name that is too long");
    if (length > 0)
        return CodePageOfSetting(ToUtf8(FromWide({setting, length})));
    std::shared_ptr<const CodePage> page = Named(std::to_string(GetACP()));
    return page != nullptr ? page : Utf8CodePage();
}

} // namespace KestrinProductEditor
