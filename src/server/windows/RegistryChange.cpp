// SPDX-License-Identifier: MIT
#include "server/windows/RegistryChange.h"

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

void RequireRegistry(LSTATUS result)
{
    if (result != ERROR_SUCCESS)
        throw RegistrationError{HRESULT_FROM_WIN32(static_cast<DWORD>(result))};
}

RegistryKey::RegistryKey(RegistryKey&& other) noexcept : m_key(std::exchange(other.m_key, nullptr)) {}

RegistryKey& RegistryKey::operator=(RegistryKey&& other) noexcept
{
    std::swap(m_key, other.m_key);
    return *this;
}

RegistryKey::~RegistryKey()
{
    if (m_key != nullptr)
        RegCloseKey(m_key);
}

std::optional<std::wstring> RegistryText(HKEY top, const std::wstring& key, const std::wstring& name)
{
    constexpr DWORD kKinds = RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ | RRF_NOEXPAND;
    DWORD size = 0;
    if (RegGetValueW(top, key.c_str(), name.c_str(), kKinds, nullptr, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
    size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegGetValueW(top, key.c_str(), name.c_str(), kKinds, nullptr, text.data(), &size) != ERROR_SUCCESS)
        return std::nullopt;
    text.resize(text.find(L'\0'));
    return text;
}

RegistryChange::~RegistryChange()
{
    for (; !m_steps.empty(); m_steps.pop_back())
        PrvTakeBack(m_steps.back());
}

void RegistryChange::SetText(const std::wstring& key, const std::wstring& name, const std::wstring& text)
{
    const RegistryKey place = PrvMakeKey(key);
    m_steps.push_back({key, name, PrvContentsOf(place.Get(), name)});
    RequireRegistry(RegSetValueExW(place.Get(), name.c_str(), 0, REG_SZ,
                                   reinterpret_cast<const BYTE*>(text.c_str()),
                                   static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
}

RegistryKey RegistryChange::PrvMakeKey(const std::wstring& key)
{
    // Step by step: the system tells only of the last key of a path whether it is new.
    for (std::size_t end = 0;;) {
        end = std::min(key.find(L'\\', end), key.size());
        const std::wstring path = key.substr(0, end);
        // Noted before it is made: a note that finds no memory would leave the key.
        m_steps.push_back({path, std::nullopt, std::nullopt});
        RegistryKey made;
        DWORD disposition = REG_OPENED_EXISTING_KEY;
        const REGSAM access = end == key.size() ? KEY_READ | KEY_WRITE : KEY_READ;
        const LSTATUS result =
            RegCreateKeyExW(m_top, path.c_str(), 0, nullptr, 0, access, nullptr, made.Out(), &disposition);
        if (result != ERROR_SUCCESS || disposition != REG_CREATED_NEW_KEY)
            m_steps.pop_back();
        RequireRegistry(result);
        if (end == key.size())
            return made;
        ++end;
    }
}

std::optional<RegistryChange::Contents> RegistryChange::PrvContentsOf(HKEY key, const std::wstring& name)
{
    DWORD size = 0;
    const LSTATUS result = RegQueryValueExW(key, name.c_str(), nullptr, nullptr, nullptr, &size);
    if (result == ERROR_FILE_NOT_FOUND)
        return std::nullopt;
    RequireRegistry(result);
    Contents contents{REG_NONE, std::vector<BYTE>(size)};
    RequireRegistry(
        RegQueryValueExW(key, name.c_str(), nullptr, &contents.kind, contents.bytes.data(), &size));
    contents.bytes.resize(size);
    return contents;
}

void RegistryChange::PrvTakeBack(const Step& step) const noexcept
{
    if (!step.name.has_value()) {
        RegDeleteKeyExW(m_top, step.key.c_str(), 0, 0);
        return;
    }
    RegistryKey place;
    if (RegOpenKeyExW(m_top, step.key.c_str(), 0, KEY_SET_VALUE, place.Out()) != ERROR_SUCCESS)
        return;
    if (step.former.has_value())
        RegSetValueExW(place.Get(), step.name->c_str(), 0, step.former->kind, step.former->bytes.data(),
                       static_cast<DWORD>(step.former->bytes.size()));
    else
        RegDeleteValueW(place.Get(), step.name->c_str());
}

void RemoveRegistryTree(HKEY top, const std::wstring& key)
{
    const LSTATUS result = RegDeleteTreeW(top, key.c_str());
    if (result != ERROR_FILE_NOT_FOUND)
        RequireRegistry(result);
}

void RemoveEmptyRegistryKey(HKEY top, const std::wstring& key)
{
    RegistryKey place;
    const LSTATUS result = RegOpenKeyExW(top, key.c_str(), 0, KEY_READ, place.Out());
    if (result == ERROR_FILE_NOT_FOUND)
        return;
    RequireRegistry(result);
    DWORD keys = 0;
    DWORD values = 0;
    RequireRegistry(RegQueryInfoKeyW(place.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                     nullptr, nullptr, nullptr, nullptr));
    if (keys == 0 && values == 0)
        RequireRegistry(RegDeleteKeyExW(top, key.c_str(), 0, 0));
}

} // namespace KestrinProductEditor
