// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

/// What the system says to a failed use of the registry.
struct RegistrationError
{
    HRESULT status;
};

/// Raises RegistrationError unless `result` is a success.
void RequireRegistry(LSTATUS result);

/// An open key, closed at the end of its scope; without one `Get` is null.
class RegistryKey
{
public:
    RegistryKey() = default;
    RegistryKey(RegistryKey&& other) noexcept;
    RegistryKey& operator=(RegistryKey&& other) noexcept;
    ~RegistryKey();

    [[nodiscard]] HKEY Get() const noexcept { return m_key; }
    /// For a call that opens a key.
    [[nodiscard]] HKEY* Out() noexcept { return &m_key; }

private:
    HKEY m_key = nullptr;
};

/// The text of a value, none when there is no value or it is no text. The empty `name` is the default value.
[[nodiscard]] std::optional<std::wstring> RegistryText(HKEY top, const std::wstring& key,
                                                       const std::wstring& name);

/// Texts written below one key, which all go again unless they are kept: keys that were not there are
/// removed, values that were get their former contents.
class RegistryChange
{
public:
    /// `top` stays open as long as this object lives.
    explicit RegistryChange(HKEY top) : m_top(top) {}
    RegistryChange(const RegistryChange&) = delete;
    RegistryChange& operator=(const RegistryChange&) = delete;
    ~RegistryChange();

    /// Writes one value and makes the keys on the way to it. Raises RegistrationError.
    void SetText(const std::wstring& key, const std::wstring& name, const std::wstring& text);
    void Keep() noexcept { m_steps.clear(); }

private:
    struct Contents
    {
        DWORD kind;
        std::vector<BYTE> bytes;
    };
    struct Step
    {
        std::wstring key;
        /// None: the key itself is new.
        std::optional<std::wstring> name;
        /// None: the value is new.
        std::optional<Contents> former;
    };

    [[nodiscard]] RegistryKey PrvMakeKey(const std::wstring& key);
    [[nodiscard]] static std::optional<Contents> PrvContentsOf(HKEY key, const std::wstring& name);
    void PrvTakeBack(const Step& step) const noexcept;

    HKEY m_top;
    std::vector<Step> m_steps;
};

/// Removes a key with everything in it. Nothing happens when it is not there. Raises RegistrationError.
void RemoveRegistryTree(HKEY top, const std::wstring& key);

/// Removes a key that holds neither values nor keys; any other stays. Raises RegistrationError.
void RemoveEmptyRegistryKey(HKEY top, const std::wstring& key);

} // namespace KestrinProductEditor
