// SPDX-License-Identifier: MIT
#include "support/UserPlaces.h"

#include <windows.h>

#include <array>
#include <stdexcept>
#include <string>

namespace KestrinProductEditor {

namespace {

void Require(LONG result, const char* what)
{
    if (result != ERROR_SUCCESS)
        throw std::runtime_error(std::string(what) + ": error " + std::to_string(result));
}

constexpr wchar_t kFolders[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders";
constexpr wchar_t kDocuments[] = L"Personal";

void SetDocuments(const std::wstring& folder)
{
    Require(RegSetKeyValueW(HKEY_CURRENT_USER, kFolders, kDocuments, REG_EXPAND_SZ, folder.c_str(),
                            static_cast<DWORD>((folder.size() + 1) * sizeof(wchar_t))),
            "the documents folder");
}

} // namespace

class ScopedDocumentsFolder::Scope
{
public:
    explicit Scope(const std::wstring& folder)
    {
        std::array<wchar_t, MAX_PATH> previous{};
        DWORD size = sizeof(previous);
        Require(RegGetValueW(HKEY_CURRENT_USER, kFolders, kDocuments,
                             RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND, nullptr, previous.data(),
                             &size),
                "the documents folder");
        m_previous = previous.data();
        SetDocuments(folder);
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope() { SetDocuments(m_previous); }

private:
    std::wstring m_previous;
};

ScopedDocumentsFolder::ScopedDocumentsFolder(const std::filesystem::path& folder)
    : m_scope(std::make_unique<Scope>(folder.wstring()))
{
}

ScopedDocumentsFolder::~ScopedDocumentsFolder() = default;

/// The user's part of the registry is another key meanwhile.
class ScopedSettingsPlace::Scope
{
public:
    Scope()
    {
        RegDeleteTreeW(HKEY_CURRENT_USER, kPlace);
        Require(RegCreateKeyExW(HKEY_CURRENT_USER, kPlace, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key,
                                nullptr),
                "a place for settings");
        Require(RegOverridePredefKey(HKEY_CURRENT_USER, m_key), "the user's part of the registry");
    }
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope()
    {
        RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
        RegCloseKey(m_key);
        RegDeleteTreeW(HKEY_CURRENT_USER, kPlace);
    }

private:
    static constexpr wchar_t kPlace[] = L"Software\\KestrinProductEditor tests";

    HKEY m_key = nullptr;
};

ScopedSettingsPlace::ScopedSettingsPlace() : m_scope(std::make_unique<Scope>()) {}

ScopedSettingsPlace::~ScopedSettingsPlace() = default;

} // namespace KestrinProductEditor
