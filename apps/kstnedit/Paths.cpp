// SPDX-License-Identifier: MIT
#include "kstnedit/Paths.h"

#include "kstnedit/Failure.h"
#include "platform/Files.h"
#include "platform/Text.h"

#include <filesystem>
#include <system_error>

namespace KestrinProductEditor::CommandLine {

namespace {

std::filesystem::path NativePath(std::u16string_view path)
{
    return std::filesystem::path(PathToNative(path));
}

} // namespace

std::string QuotedPath(std::u16string_view path)
{
    return "'" + ToUtf8(path) + "'";
}

bool IsFolder(std::u16string_view path)
{
    std::error_code error;
    return std::filesystem::is_directory(NativePath(path), error);
}

bool MayExist(std::u16string_view path)
{
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(NativePath(path), error);
    return status.type() != std::filesystem::file_type::not_found;
}

bool IsDanglingLink(std::u16string_view path)
{
    std::error_code error;
    return std::filesystem::is_symlink(std::filesystem::symlink_status(NativePath(path), error)) &&
           !MayExist(path);
}

FileStamp StampOf(std::u16string_view path)
{
    std::error_code error;
    FileStamp stamp;
    stamp.exists = MayExist(path);
    stamp.time = std::filesystem::last_write_time(NativePath(path), error);
    stamp.size = std::filesystem::file_size(NativePath(path), error);
    return stamp;
}

void CreateFolders(std::u16string_view path)
{
    std::error_code error;
    std::filesystem::create_directories(NativePath(path), error);
    if (error)
        throw CommandFailure("cannot create the folder " + QuotedPath(path) + ": " + error.message() +
                             ". Create it yourself, or name another one with --catalogue DIR.");
}

} // namespace KestrinProductEditor::CommandLine
