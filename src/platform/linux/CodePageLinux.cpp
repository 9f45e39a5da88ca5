// SPDX-License-Identifier: MIT
#include "platform/CodePageBackend.h"
#include "platform/Text.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <iconv.h>
#include <langinfo.h>
#include <locale.h>
#include <optional>

namespace KestrinProductEditor {

namespace {

class Converter
{
public:
    [[nodiscard]] static std::optional<Converter> Create(const std::string& to, const std::string& from)
    {
        const iconv_t handle = iconv_open(to.c_str(), from.c_str());
        // iconv answers the number -1 for "none", which no constant stands for.
        if (handle == reinterpret_cast<iconv_t>(-1))
            return std::nullopt;
        return Converter(handle);
    }

    /// Appends what the head of `rest` converts to and leaves in `rest` what does not: nothing, when all did.
    void Append(std::string_view& rest, std::string& out) const
    {
        iconv(m_handle.get(), nullptr, nullptr, nullptr, nullptr);
        char* from = const_cast<char*>(rest.data());
        std::size_t left = rest.size();
        PrvRun(&from, &left, out);
        rest.remove_prefix(rest.size() - left);
        // Some character sets hold a character back in case an accent follows.
        PrvRun(nullptr, nullptr, out);
    }

private:
    struct Closer
    {
        using pointer = iconv_t;
        void operator()(iconv_t handle) const noexcept { iconv_close(handle); }
    };

    explicit Converter(iconv_t handle) : m_handle(handle) {}

    void PrvRun(char** from, std::size_t* left, std::string& out) const
    {
        for (;;) {
            const std::size_t used = out.size();
            out.resize(used + (left == nullptr ? 0 : *left * 2) + 16);
            char* end = out.data() + used;
            std::size_t room = out.size() - used;
            const std::size_t result = iconv(m_handle.get(), from, left, &end, &room);
            const int error = errno;
            out.resize(out.size() - room);
            if (result != static_cast<std::size_t>(-1) || error != E2BIG)
                return;
        }
    }

    std::unique_ptr<void, Closer> m_handle;
};

/// A code page of the C library. It is stateless from value to value, but not for two threads at once.
class IconvPage final : public CodePage
{
public:
    IconvPage(Converter decoder, Converter encoder)
        : m_decoder(std::move(decoder)), m_encoder(std::move(encoder))
    {
    }

    [[nodiscard]] bool IsUtf8() const noexcept override { return false; }

    [[nodiscard]] std::string_view Decode(std::string_view bytes, std::string& scratch) const override
    {
        if (IsAscii(bytes))
            return bytes;
        scratch.clear();
        std::string_view rest = bytes;
        m_decoder.Append(rest, scratch);
        if (!rest.empty()) {
            scratch.clear();
            AppendWindows1252AsUtf8(bytes, scratch);
        }
        return scratch;
    }

    [[nodiscard]] std::string_view Encode(std::string_view text, std::string& scratch) const override
    {
        if (IsAscii(text))
            return text;
        scratch.clear();
        for (std::string_view rest = text; !rest.empty();) {
            m_encoder.Append(rest, scratch);
            if (rest.empty())
                break;
            std::size_t length = 0;
            static_cast<void>(NextCodePoint(rest, length));
            rest.remove_prefix(length);
            scratch.push_back('?');
        }
        return scratch;
    }

private:
    Converter m_decoder;
    Converter m_encoder;
};

/// The bytes below 0x80, and the sequences with which the stateful character sets switch.
[[nodiscard]] std::string AsciiProbe()
{
    std::string probe;
    for (int byte = 0; byte < 0x80; ++byte)
        probe.push_back(static_cast<char>(byte));
    probe += "\x1B$B!!\x1B(J~\x1B(B\x1B$)C\x0E!!\x0F\x1B$)A\x0E!!\x0F~{!!~}+AGE-+AKM-";
    return probe;
}

[[nodiscard]] bool KeepsAscii(const Converter& converter)
{
    const std::string probe = AsciiProbe();
    std::string_view rest = probe;
    std::string out;
    converter.Append(rest, out);
    return rest.empty() && out == probe;
}

[[nodiscard]] bool IsPlainName(std::string_view name)
{
    // A slash would hand options to the C library, and an empty name means the locale's character set there.
    return !name.empty() && std::all_of(name.begin(), name.end(), [](char character) {
        return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
               (character >= '0' && character <= '9') ||
               std::string_view("-_.:+").find(character) != std::string_view::npos;
    });
}

struct NumberedPage
{
    std::string_view number;
    const char* name;
};

/// Code pages that the C library knows by another name than their number.
constexpr NumberedPage kNumberedPages[] = {
    {"20866", "KOI8-R"},      {"21866", "KOI8-U"},     {"28591", "ISO-8859-1"}, {"28592", "ISO-8859-2"},
    {"28593", "ISO-8859-3"},  {"28594", "ISO-8859-4"}, {"28595", "ISO-8859-5"}, {"28596", "ISO-8859-6"},
    {"28597", "ISO-8859-7"},  {"28598", "ISO-8859-8"}, {"28599", "ISO-8859-9"}, {"28603", "ISO-8859-13"},
    {"28605", "ISO-8859-15"}, {"51932", "EUC-JP"},     {"51936", "GB2312"},     {"51949", "EUC-KR"},
    {"54936", "GB18030"},
};

[[nodiscard]] std::string IconvName(std::string_view name)
{
    std::string_view number = name;
    for (const std::string_view prefix : {"windows-", "cp"}) {
        if (name.starts_with(prefix))
            number.remove_prefix(prefix.size());
    }
    if (number.empty() || number.find_first_not_of("0123456789") != std::string_view::npos)
        return std::string(name);
    for (const NumberedPage& page : kNumberedPages) {
        if (page.number == number)
            return page.name;
    }
    return "CP" + std::string(number);
}

struct LocaleDeleter
{
    using pointer = locale_t;
    void operator()(locale_t locale) const noexcept { freelocale(locale); }
};

[[nodiscard]] std::string LocaleCharacterSet()
{
    const std::unique_ptr<void, LocaleDeleter> locale(newlocale(LC_CTYPE_MASK, "", locale_t{}));
    if (locale == nullptr)
        return "UTF-8";
    return nl_langinfo_l(CODESET, locale.get());
}

} // namespace

std::shared_ptr<const CodePage> PlatformCodePage(std::string_view name)
{
    if (!IsPlainName(name))
        return nullptr;
    const std::string iconvName = IconvName(name);
    std::optional<Converter> decoder = Converter::Create("UTF-8", iconvName);
    std::optional<Converter> encoder = Converter::Create(iconvName, "UTF-8");
    if (!decoder || !encoder || !KeepsAscii(*decoder) || !KeepsAscii(*encoder))
        return nullptr;
    return std::make_shared<IconvPage>(std::move(*decoder), std::move(*encoder));
}

std::shared_ptr<const CodePage> CodePage::System()
{
    const char* const setting = std::getenv("KSTNEDIT_CODEPAGE");
    if (setting != nullptr && *setting != '\0')
        return CodePageOfSetting(setting);
    const std::string characterSet = LocaleCharacterSet();
    if (characterSet == "ANSI_X3.4-1968" || characterSet == "US-ASCII" || characterSet == "ASCII")
        return Utf8CodePage();
    std::shared_ptr<const CodePage> page = Named(characterSet);
    return page != nullptr ? page : Utf8CodePage();
}

} // namespace KestrinProductEditor
