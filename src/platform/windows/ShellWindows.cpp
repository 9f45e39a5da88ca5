// SPDX-License-Identifier: MIT
#include "platform/Shell.h"

#include "platform/windows/WideText.h"

#include <windows.h>

#include <shlobj.h>

#include <array>
#include <cstddef>
#include <memory>

namespace KestrinProductEditor {

namespace {

struct ItemListDeleter
{
    void operator()(ITEMIDLIST* list) const noexcept { CoTaskMemFree(list); }
};

} // namespace

std::u16string SpecialFolderPath(std::int32_t folder)
{
    ITEMIDLIST* found = nullptr;
    if (FAILED(SHGetSpecialFolderLocation(nullptr, folder, &found)) || found == nullptr)
        return {};
    const std::unique_ptr<ITEMIDLIST, ItemListDeleter> list(found);
    std::array<wchar_t, 512> path{};
    if (!SHGetPathFromIDListW(list.get(), path.data()))
        return {};
    std::u16string text = FromWide(path.data());
    // A drive's root keeps its separator.
    constexpr std::size_t kRoot = 3;
    while (text.size() > kRoot && text.ends_with(u'\\'))
        text.pop_back();
    return text;
}

} // namespace KestrinProductEditor
