// SPDX-License-Identifier: MIT
#include "platform/Shell.h"

#include "platform/Files.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string_view>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::string Environment(const char* name)
{
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

[[nodiscard]] bool IsAbsolute(std::string_view path)
{
    return path.starts_with('/');
}

void SkipBlanks(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
}

[[nodiscard]] bool Skip(std::string_view& text, std::string_view head)
{
    if (!text.starts_with(head))
        return false;
    text.remove_prefix(head.size());
    return true;
}

/// The folder of a line XDG_DOCUMENTS_DIR="$HOME/Documents"; nothing for any other line. The file knows
/// absolute folders and those below $HOME only.
[[nodiscard]] std::optional<std::string> DocumentsOfLine(std::string_view line, const std::string& home)
{
    SkipBlanks(line);
    if (!Skip(line, "XDG_DOCUMENTS_DIR"))
        return std::nullopt;
    SkipBlanks(line);
    if (!Skip(line, "="))
        return std::nullopt;
    SkipBlanks(line);
    if (!Skip(line, "\""))
        return std::nullopt;
    std::string folder;
    if (Skip(line, "$HOME")) {
        if (!line.starts_with('/') && !line.starts_with('"'))
            return std::nullopt;
        folder = home;
    } else if (!IsAbsolute(line)) {
        return std::nullopt;
    }
    for (std::size_t at = 0; at < line.size() && line[at] != '"'; ++at) {
        if (line[at] == '\\' && at + 1 < line.size())
            ++at;
        folder.push_back(line[at]);
    }
    return folder;
}

/// The last line counts, as it does for the shells that read the same file.
[[nodiscard]] std::optional<std::string> DocumentsOfUserDirs(const std::string& home)
{
    std::string configuration = Environment("XDG_CONFIG_HOME");
    if (!IsAbsolute(configuration))
        configuration = home + "/.config";
    std::ifstream file(configuration + "/user-dirs.dirs");
    std::optional<std::string> documents;
    for (std::string line; std::getline(file, line);) {
        if (std::optional<std::string> folder = DocumentsOfLine(line, home))
            documents = std::move(folder);
    }
    return documents;
}

[[nodiscard]] std::string DocumentsFolder()
{
    std::string folder = Environment("XDG_DOCUMENTS_DIR");
    if (!folder.empty())
        return folder;
    const std::string home = Environment("HOME");
    return DocumentsOfUserDirs(home).value_or(home);
}

} // namespace

std::u16string SpecialFolderPath(std::int32_t folder)
{
    if (folder != kCsidlPersonal)
        return u"";
    std::string path = DocumentsFolder();
    while (path.size() > 1 && path.ends_with('/'))
        path.pop_back();
    return IsAbsolute(path) ? PathFromNative(path) : std::u16string();
}

} // namespace KestrinProductEditor
