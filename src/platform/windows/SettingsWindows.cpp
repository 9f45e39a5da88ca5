// SPDX-License-Identifier: MIT
#include "platform/Settings.h"

#include "platform/windows/WideText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <windows.h>

#include <string>
#include <utility>

namespace KestrinProductEditor {

namespace {

/// Where the platform's GetSetting and SaveSetting keep what is theirs.
[[nodiscard]] std::wstring KeyPath(std::u16string_view application, std::u16string_view section)
{
    std::wstring path = L"Software\\VB and VBA Program Settings\\";
    path.append(application.begin(), application.end());
    path += L'\\';
    path.append(section.begin(), section.end());
    return path;
}

class RegistryKey
{
public:
    RegistryKey() = default;
    RegistryKey(const RegistryKey&) = delete;
    RegistryKey& operator=(const RegistryKey&) = delete;
    ~RegistryKey()
    {
        if (m_key != nullptr)
            RegCloseKey(m_key);
    }

    [[nodiscard]] HKEY Get() const { return m_key; }
    [[nodiscard]] HKEY* Out() { return &m_key; }

private:
    HKEY m_key = nullptr;
};

class SettingsWindows final : public ISettings
{
public:
    [[nodiscard]] std::u16string GetSetting(std::u16string_view application, std::u16string_view section,
                                            std::u16string_view key,
                                            std::u16string_view defaultValue) const override
    {
        const std::wstring path = KeyPath(application, section);
        const std::wstring name(key.begin(), key.end());
        std::wstring value;
        DWORD size = 0;
        // Another program may make the value longer between the two calls.
        for (LONG result = ERROR_MORE_DATA; result == ERROR_MORE_DATA;) {
            if (RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, nullptr,
                             &size) != ERROR_SUCCESS)
                return std::u16string(defaultValue);
            value.resize(size / sizeof(wchar_t) + 1);
            size = static_cast<DWORD>(value.size() * sizeof(wchar_t));
            result = RegGetValueW(HKEY_CURRENT_USER, path.c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr,
                                  value.data(), &size);
            if (result != ERROR_SUCCESS && result != ERROR_MORE_DATA)
                return std::u16string(defaultValue);
        }
        value.resize(size / sizeof(wchar_t));
        if (value.ends_with(L'\0'))
            value.pop_back();
        return FromWide(value);
    }

    void SaveSetting(std::u16string_view application, std::u16string_view section, std::u16string_view key,
                     std::u16string_view value) override
    {
        RegistryKey place;
        const std::wstring name(key.begin(), key.end());
        const std::wstring text(value.begin(), value.end());
        const bool isSaved =
            RegCreateKeyExW(HKEY_CURRENT_USER, KeyPath(application, section).c_str(), 0, nullptr, 0,
                            KEY_SET_VALUE, nullptr, place.Out(), nullptr) == ERROR_SUCCESS &&
            RegSetValueExW(place.Get(), name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                           static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
        if (!isSaved)
            throw AutomationError(kErrPermissionDenied);
    }
};

} // namespace

ISettings& PlatformSettings()
{
    static auto& settings = *new SettingsWindows;
    return settings;
}

} // namespace KestrinProductEditor
