// SPDX-License-Identifier: MIT
#pragma once

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace KestrinProductEditor {

/// A line of the list of identifiers that stands for the library, a class or an interface.
struct ListedIdentifier
{
    std::wstring kind;
    std::wstring name;
    /// Of the library only.
    std::wstring version;
    /// With its braces.
    std::wstring identifier;
    bool isCreatable = false;
};

[[nodiscard]] inline std::vector<ListedIdentifier> ListedIdentifiers()
{
    std::wifstream list(KSTNEDIT_SOURCE_DIR "/src/server/windows/identifiers.txt");
    if (!list.is_open())
        throw std::runtime_error("no list of identifiers");
    std::vector<ListedIdentifier> all;
    for (std::wstring line; std::getline(list, line);) {
        std::wistringstream words(line);
        ListedIdentifier entry;
        words >> entry.kind >> entry.name;
        if (entry.kind == L"library")
            words >> entry.version;
        else if (entry.kind != L"class" && entry.kind != L"interface")
            continue;
        std::wstring use;
        words >> entry.identifier >> use;
        entry.isCreatable = use == L"creatable";
        all.push_back(entry);
    }
    return all;
}

} // namespace KestrinProductEditor
