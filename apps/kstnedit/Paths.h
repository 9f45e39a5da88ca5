// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

/// What the program asks about paths beyond the file services of the component.
namespace KestrinProductEditor::CommandLine {

/// The path between quotes, for a message (UTF-8).
[[nodiscard]] std::string QuotedPath(std::u16string_view path);

[[nodiscard]] bool IsFolder(std::u16string_view path);
/// Whether there is something at `path`, or it cannot be told.
[[nodiscard]] bool MayExist(std::u16string_view path);

[[nodiscard]] bool IsDanglingLink(std::u16string_view path);

/// Which file stands at a path, as far as its time and size tell; two that are equal are the same content.
struct FileStamp
{
    bool exists = false;
    std::filesystem::file_time_type time;
    std::uintmax_t size = 0;

    friend bool operator==(const FileStamp&, const FileStamp&) = default;
};
[[nodiscard]] FileStamp StampOf(std::u16string_view path);

/// Makes the folder and those above it. Throws CommandFailure.
void CreateFolders(std::u16string_view path);

} // namespace KestrinProductEditor::CommandLine
