// SPDX-License-Identifier: MIT
#include "kstnedit/Terminal.h"

#include "kstnedit/Failure.h"
#include "platform/Files.h"

#include <array>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <langinfo.h>
#include <locale.h>
#include <string_view>
#include <sys/ioctl.h>
#include <type_traits>
#include <unistd.h>

namespace KestrinProductEditor::CommandLine {

namespace {

class DescriptorBuffer final : public std::streambuf
{
public:
    explicit DescriptorBuffer(int descriptor) : m_descriptor(descriptor) { PrvEmpty(); }

protected:
    int_type overflow(int_type character) override
    {
        PrvWrite();
        if (!traits_type::eq_int_type(character, traits_type::eof()))
            sputc(traits_type::to_char_type(character));
        return traits_type::not_eof(character);
    }

    int sync() override
    {
        PrvWrite();
        return 0;
    }

private:
    void PrvEmpty() { setp(m_bytes.data(), m_bytes.data() + m_bytes.size()); }

    void PrvWrite()
    {
        std::string_view bytes(pbase(), static_cast<std::size_t>(pptr() - pbase()));
        PrvEmpty();
        while (!bytes.empty()) {
            const ssize_t count = write(m_descriptor, bytes.data(), bytes.size());
            if (count < 0 && errno == EINTR)
                continue;
            if (count < 0)
                throw OutputFailure(errno == EPIPE ? OutputFailure::Cause::ReaderIsGone
                                                   : OutputFailure::Cause::Other,
                                    strerrordesc_np(errno));
            bytes.remove_prefix(static_cast<std::size_t>(count));
        }
    }

    int m_descriptor;
    std::array<char, std::size_t{64} * 1024> m_bytes;
};

struct LocaleDeleter
{
    using pointer = locale_t;
    void operator()(locale_t locale) const noexcept { freelocale(locale); }
};

std::string Variable(const char* name)
{
    const char* const value = std::getenv(name);
    return value != nullptr ? value : "";
}

} // namespace

void PrepareStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    // The lowest free number is given out: at most three of them are missing.
    int descriptor = 0;
    do
        descriptor = open("/dev/null", O_RDWR | O_CLOEXEC);
    while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor >= 0)
        close(descriptor);
}

std::unique_ptr<std::streambuf> StandardOutput()
{
    return std::make_unique<DescriptorBuffer>(STDOUT_FILENO);
}

std::size_t TerminalColumns(StandardStream stream)
{
    constexpr std::size_t kUsualColumns = 80;
    const int descriptor = stream == StandardStream::Output ? STDOUT_FILENO : STDERR_FILENO;
    if (isatty(descriptor) == 0)
        return 0;
    winsize size{};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return kUsualColumns;
    return size.ws_col;
}

std::shared_ptr<const CodePage> TerminalCodePage()
{
    const std::unique_ptr<std::remove_pointer_t<locale_t>, LocaleDeleter> locale(
        newlocale(LC_CTYPE_MASK, "", locale_t{}));
    const std::string_view characterSet = locale ? nl_langinfo_l(CODESET, locale.get()) : "UTF-8";
    // The plain locale's "ASCII" says nothing about the terminal.
    std::shared_ptr<const CodePage> page =
        characterSet == "ANSI_X3.4-1968" ? nullptr : CodePage::Named(characterSet);
    return page ? page : CodePage::Named("utf-8");
}

std::optional<std::string> MissingLocale()
{
    for (const int category : {LC_MONETARY, LC_NUMERIC}) {
        const std::string one = Variable(category == LC_MONETARY ? "LC_MONETARY" : "LC_NUMERIC");
        const std::string all = Variable("LC_ALL");
        const std::string name = !all.empty() ? all : !one.empty() ? one : Variable("LANG");
        const std::unique_ptr<std::remove_pointer_t<locale_t>, LocaleDeleter> locale(newlocale(
            category == LC_MONETARY ? LC_MONETARY_MASK : LC_NUMERIC_MASK, name.c_str(), locale_t{}));
        if (!locale && !name.empty())
            return name;
    }
    return std::nullopt;
}

std::optional<std::u16string> UserDataFolder()
{
    // A relative folder there is to be ignored, says the convention.
    if (const std::string folder = Variable("XDG_DATA_HOME"); folder.starts_with('/'))
        return PathFromNative(folder);
    if (const std::string home = Variable("HOME"); home.starts_with('/'))
        return FileSystem().BuildPath(PathFromNative(home), u".local/share");
    return std::nullopt;
}

} // namespace KestrinProductEditor::CommandLine
