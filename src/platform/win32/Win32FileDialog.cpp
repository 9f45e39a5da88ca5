// SPDX-License-Identifier: MIT
#include "platform/win32/Win32FileDialog.h"

#include "platform/win32/Win32Looks.h"
#include "platform/windows/WideText.h"

#include <cderr.h>
#include <commdlg.h>

#include <algorithm>

namespace KestrinProductEditor {

namespace {

// The longest path of the system.
constexpr std::size_t kLongestPath = 32767;

/// Where the dialog begins.
struct Start
{
    std::u16string folder;
    std::u16string file;
};

[[nodiscard]] bool IsFolder(const std::u16string& path)
{
    const DWORD attributes = GetFileAttributesW(Wide(path.c_str()));
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

[[nodiscard]] Start StartOf(std::u16string path)
{
    std::replace(path.begin(), path.end(), u'/', u'\\');
    if (path.empty())
        return {};
    if (IsFolder(path))
        return {.folder = path, .file = {}};
    const std::size_t end = path.find_last_of(u"\\:");
    if (end == std::u16string::npos)
        return {.folder = {}, .file = path};
    Start start{.folder = path.substr(0, end + 1), .file = path.substr(end + 1)};
    // The name alone: a folder that is not there would end the dialog before it begins.
    if (!IsFolder(start.folder))
        start.folder.clear();
    return start;
}

/// "Name|*.csv|..." as the system has it: each part ends with a zero, and the last one with two.
[[nodiscard]] std::u16string FilterOf(std::u16string filter)
{
    std::replace(filter.begin(), filter.end(), u'|', u'\0');
    if (!filter.empty())
        filter.append(2, u'\0');
    return filter;
}

} // namespace

std::optional<std::u16string> ShowFileDialog(const FileDialog& dialog, HWND owner)
{
    const bool isSave = dialog.kind == FileDialog::Kind::Save;
    const Start start = StartOf(dialog.start);
    const std::u16string filter = FilterOf(dialog.filter);
    const bool hasPoint = dialog.defaultExtension.starts_with(u'.');
    const std::u16string extension = dialog.defaultExtension.substr(hasPoint ? 1 : 0);
    std::u16string path = start.file;
    path.resize(kLongestPath + 1);

    OPENFILENAMEW box = {};
    box.lStructSize = sizeof box;
    box.hwndOwner = owner != nullptr ? owner : GetActiveWindow();
    box.lpstrFilter = filter.empty() ? nullptr : Wide(filter.c_str());
    box.nFilterIndex = 1;
    box.lpstrFile = Wide(path.data());
    box.nMaxFile = static_cast<DWORD>(path.size());
    box.lpstrInitialDir = start.folder.empty() ? nullptr : Wide(start.folder.c_str());
    box.lpstrTitle = dialog.title.empty() ? nullptr : Wide(dialog.title.c_str());
    box.lpstrDefExt = extension.empty() ? nullptr : Wide(extension.c_str());
    // The host keeps its current folder.
    box.Flags = OFN_EXPLORER | OFN_ENABLESIZING | OFN_HIDEREADONLY | OFN_NOCHANGEDIR | OFN_PATHMUSTEXIST;
    box.Flags |= isSave ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST;

    const Win32Looks looks;
    const auto show = [&] { return (isSave ? GetSaveFileNameW(&box) : GetOpenFileNameW(&box)) != 0; };
    bool isChosen = show();
    // A name that no file can have.
    if (!isChosen && CommDlgExtendedError() == FNERR_INVALIDFILENAME) {
        path.front() = u'\0';
        isChosen = show();
    }
    if (!isChosen)
        return std::nullopt;
    path.resize(path.find(u'\0'));
    return path;
}

} // namespace KestrinProductEditor
