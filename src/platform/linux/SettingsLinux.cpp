// SPDX-License-Identifier: MIT
#include "platform/Settings.h"

#include "platform/Files.h"
#include "platform/Text.h"

#include <KestrinProductEditor/AutomationError.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace KestrinProductEditor {

namespace {

// On disk: never renumber.
//
// A line is KEY=VALUE in UTF-8. In both, a backslash makes the character behind it an ordinary one, and
// "\uXXXX" is the UTF-16 unit with that number. Written so are backslashes, "=" and "#" in keys, blanks at
// the ends, control characters and lone surrogates. Of two lines with one key the last counts. Any other line
// says nothing and stays.

constexpr std::u16string_view kBlanks = u" \t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Far above what settings are: what is larger is something else.
constexpr std::size_t kLargestFile = 1 << 20;

[[nodiscard]] bool IsLoneSurrogate(std::u16string_view text, std::size_t at)
{
    const auto is = [&](std::size_t place, unsigned head) {
        return place < text.size() && (text[place] & 0xFC00U) == head;
    };
    if (is(at, 0xD800))
        return !is(at + 1, 0xDC00);
    return is(at, 0xDC00) && (at == 0 || !is(at - 1, 0xD800));
}

void AppendNumber(std::u16string& out, std::uint64_t number, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        out += u"0123456789ABCDEF"[(number >> shift) & 0xF];
}

enum class Side
{
    Key,
    Value
};

void AppendEscaped(std::u16string& out, std::u16string_view text, Side side)
{
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char16_t unit = text[at];
        const bool isAtEnd = at == 0 || at + 1 == text.size();
        if (unit == u'\\' || (side == Side::Key && (unit == u'=' || unit == u'#'))) {
            out += u'\\';
            out += unit;
        } else if (unit < u' ' || unit == 0x7F || (unit == u' ' && isAtEnd) || IsLoneSurrogate(text, at)) {
            out += u"\\u";
            AppendNumber(out, unit, 4);
        } else {
            out += unit;
        }
    }
}

[[nodiscard]] std::optional<char16_t> UnitOfDigits(std::u16string_view digits)
{
    unsigned unit = 0;
    for (const char16_t digit : digits) {
        const char16_t low = digit | 0x20;
        if (digit >= u'0' && digit <= u'9')
            unit = unit * 16 + (digit - u'0');
        else if (low >= u'a' && low <= u'f')
            unit = unit * 16 + (low - u'a' + 10U);
        else
            return std::nullopt;
    }
    return static_cast<char16_t>(unit);
}

/// Nothing for an escape that is none.
[[nodiscard]] std::optional<std::u16string> Unescaped(std::u16string_view text)
{
    constexpr std::size_t kDigits = 4;
    std::u16string out;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != u'\\') {
            out += text[at];
            continue;
        }
        if (++at == text.size())
            return std::nullopt;
        if (text[at] != u'u') {
            out += text[at];
            continue;
        }
        if (text.size() - at <= kDigits)
            return std::nullopt;
        const std::optional<char16_t> unit = UnitOfDigits(text.substr(at + 1, kDigits));
        if (!unit)
            return std::nullopt;
        out += *unit;
        at += kDigits;
    }
    return out;
}

[[nodiscard]] std::u16string_view WithoutOuterBlanks(std::u16string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::u16string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

struct Entry
{
    std::u16string key;
    std::u16string value;
};

[[nodiscard]] std::optional<Entry> EntryOf(std::string_view line)
{
    while (line.ends_with('\n') || line.ends_with('\r'))
        line.remove_suffix(1);
    if (!IsValidUtf8(line))
        return std::nullopt;
    const std::u16string text = ToUtf16(line);
    if (WithoutOuterBlanks(text).starts_with(u'#'))
        return std::nullopt;
    std::size_t sign = 0;
    while (sign < text.size() && text[sign] != u'=')
        sign += text[sign] == u'\\' ? 2U : 1U;
    if (sign >= text.size())
        return std::nullopt;
    const std::u16string_view whole = text;
    std::optional<std::u16string> key = Unescaped(WithoutOuterBlanks(whole.substr(0, sign)));
    std::optional<std::u16string> value = Unescaped(WithoutOuterBlanks(whole.substr(sign + 1)));
    if (!key || !value)
        return std::nullopt;
    return Entry{std::move(*key), std::move(*value)};
}

[[nodiscard]] std::string LineOf(std::u16string_view key, std::u16string_view value)
{
    std::u16string line;
    AppendEscaped(line, key, Side::Key);
    line += u'=';
    AppendEscaped(line, value, Side::Value);
    line += u'\n';
    return ToUtf8(line);
}

/// The line of a key in a file's content, and its value.
struct Found
{
    std::size_t begin;
    std::size_t end;
    std::u16string value;
};

[[nodiscard]] std::optional<Found> Find(std::string_view content, std::u16string_view key)
{
    std::optional<Found> found;
    std::size_t begin = content.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
    while (begin < content.size()) {
        const std::size_t lineEnd = content.find('\n', begin);
        const std::size_t end = lineEnd == std::string_view::npos ? content.size() : lineEnd + 1;
        std::optional<Entry> entry = EntryOf(content.substr(begin, end - begin));
        if (entry && entry->key == key)
            found = Found{begin, end, std::move(entry->value)};
        begin = end;
    }
    return found;
}

/// The content of a file; empty for one that is not there.
[[nodiscard]] std::string ContentOf(std::u16string_view path)
{
    std::string content;
    if (!FileSystem().FileExists(path))
        return content;
    const std::unique_ptr<IReadStream> stream = FileSystem().OpenForReading(path);
    std::array<char, 4096> buffer;
    while (const std::size_t count = stream->Read(buffer.data(), buffer.size())) {
        content.append(buffer.data(), count);
        if (content.size() > kLargestFile)
            throw AutomationError(kErrInvalidFileFormat, {},
                                  AutomationError::TextOf(kErrInvalidFileFormat) + u": '" +
                                      std::u16string(path) + u"' is too large to hold settings");
    }
    return content;
}

/// A name as the name of a file or folder, each another one: "%XX" and "%uXXXX" stand for what must not
/// appear, and a long one is its head and a number made of all of it.
[[nodiscard]] std::u16string FileNameOf(std::u16string_view name)
{
    constexpr std::size_t kLongest = 200; // bytes; file systems take 255, with an extension and more
    constexpr std::size_t kHead = 60;     // characters
    std::u16string out;
    for (std::size_t at = 0; at < name.size(); ++at) {
        const char16_t unit = name[at];
        if (IsLoneSurrogate(name, at)) {
            out += u"%u";
            AppendNumber(out, unit, 4);
        } else if (unit < u' ' || unit == 0x7F || unit == u'/' || unit == u'%' || (unit == u'.' && at == 0)) {
            out += u'%';
            AppendNumber(out, unit, 2);
        } else {
            out += unit;
        }
    }
    if (out.empty())
        return u"%";
    const std::string bytes = ToUtf8(out);
    if (bytes.size() <= kLongest)
        return out;
    std::uint64_t hash = 0xCBF29CE484222325; // FNV-1a
    for (const char byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    std::u16string shortened(Utf16Head(std::u16string_view(out), kHead));
    shortened += u"%~";
    AppendNumber(shortened, hash, 16);
    return shortened;
}

/// The user's configuration folder; nothing when none is known.
[[nodiscard]] std::optional<std::u16string> ConfigurationFolder()
{
    const auto folder = [](const char* variable) -> std::optional<std::u16string> {
        const char* const path = std::getenv(variable);
        if (path == nullptr || *path != '/')
            return std::nullopt;
        return PathFromNative(path);
    };
    if (auto own = folder("XDG_CONFIG_HOME"))
        return own;
    const auto home = folder("HOME");
    return home ? std::optional(FileSystem().BuildPath(*home, u".config")) : std::nullopt;
}

/// Makes the folder and those above it, for the user alone, as is the habit with configuration folders.
void MakeFolder(const std::u16string& path)
{
    const std::string native = PathToNative(path);
    for (std::size_t end = native.find('/', 1);; end = native.find('/', end + 1)) {
        const std::string folder = native.substr(0, end);
        struct stat status;
        const bool isMissing =
            mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST && stat(folder.c_str(), &status) != 0;
        if (isMissing) {
            // What keeps a folder from being made keeps a file from it too: the file services say what it is.
            static_cast<void>(FileSystem().ReplaceFile(PathFromNative(folder)));
        }
        if (end == std::string::npos)
            return;
    }
}

/// Keeps the savers of one folder apart while it lives: each reads what the one before it has written.
///
/// A file system without locks, or a saver that stands still, holds nobody up: the older of two values for
/// one key may be lost then, or a key that was saved in the same moment.
class FolderLock
{
public:
    explicit FolderLock(const std::u16string& folder)
        : m_folder(open(PathToNative(folder).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
    {
        constexpr int kAttempts = 500;
        constexpr std::chrono::milliseconds kPause(10);
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            if (flock(m_folder, LOCK_EX | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR))
                return;
            std::this_thread::sleep_for(kPause);
        }
    }
    FolderLock(const FolderLock&) = delete;
    FolderLock& operator=(const FolderLock&) = delete;
    ~FolderLock()
    {
        if (m_folder >= 0)
            close(m_folder);
    }

private:
    int m_folder;
};

class LinuxSettings final : public ISettings
{
public:
    [[nodiscard]] std::u16string GetSetting(std::u16string_view application, std::u16string_view section,
                                            std::u16string_view key,
                                            std::u16string_view defaultValue) const override
    {
        try {
            if (const auto configuration = ConfigurationFolder()) {
                const std::u16string folder = FileSystem().BuildPath(*configuration, FileNameOf(application));
                if (auto found = Find(ContentOf(PrvPath(folder, section)), key))
                    return std::move(found->value);
            }
        } catch (const AutomationError&) { // NOLINT(bugprone-empty-catch): unreadable counts as not there
        }
        return std::u16string(defaultValue);
    }

    void SaveSetting(std::u16string_view application, std::u16string_view section, std::u16string_view key,
                     std::u16string_view value) override
    {
        const auto configuration = ConfigurationFolder();
        if (!configuration)
            throw AutomationError(kErrPathNotFound, {},
                                  AutomationError::TextOf(kErrPathNotFound) +
                                      u": neither XDG_CONFIG_HOME nor HOME names a folder for settings");
        const std::u16string folder = FileSystem().BuildPath(*configuration, FileNameOf(application));
        MakeFolder(folder);
        const FolderLock lock(folder);
        const std::u16string path = PrvPath(folder, section);
        std::string content = ContentOf(path);
        const std::optional<Found> found = Find(content, key);
        if (found && found->value == value)
            return;
        const std::string line = LineOf(key, value);
        if (found) {
            content.replace(found->begin, found->end - found->begin, line);
        } else {
            if (!content.empty() && !content.ends_with('\n'))
                content += '\n';
            content += line;
        }
        const std::unique_ptr<IWriteStream> stream = FileSystem().ReplaceFile(path);
        stream->Write(content);
        stream->Close();
    }

private:
    [[nodiscard]] static std::u16string PrvPath(std::u16string_view folder, std::u16string_view section)
    {
        return FileSystem().BuildPath(folder, FileNameOf(section) + u".conf");
    }
};

} // namespace

ISettings& PlatformSettings()
{
    // Never destroyed: a window may close after the end of main.
    static auto& settings = *new LinuxSettings;
    return settings;
}

} // namespace KestrinProductEditor
