// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// The user's settings: texts under an application, a section and a key.
class ISettings
{
public:
    virtual ~ISettings() = default;
    /// The value; `defaultValue` when there is none or the settings cannot be read. Never raises for what
    /// stands in the settings.
    [[nodiscard]] virtual std::u16string GetSetting(std::u16string_view application,
                                                    std::u16string_view section, std::u16string_view key,
                                                    std::u16string_view defaultValue) const = 0;
    /// Keeps a value; every other setting stays. Raises the error of the file services when it cannot.
    virtual void SaveSetting(std::u16string_view application, std::u16string_view section,
                             std::u16string_view key, std::u16string_view value) = 0;
};

/// The settings in use on this thread: the platform's, or those of a ScopedSettings.
[[nodiscard]] ISettings& Settings();

/// Puts other settings in the platform's place on this thread, until the end of the scope.
class ScopedSettings
{
public:
    explicit ScopedSettings(ISettings& settings);
    ScopedSettings(const ScopedSettings&) = delete;
    ScopedSettings& operator=(const ScopedSettings&) = delete;
    ~ScopedSettings();

private:
    ISettings* m_previous;
};

/// The platform's own settings. On Linux: `key=value` lines in the file APPLICATION/SECTION.conf of the
/// user's configuration folder (XDG_CONFIG_HOME, else ~/.config).
[[nodiscard]] ISettings& PlatformSettings();

} // namespace KestrinProductEditor
