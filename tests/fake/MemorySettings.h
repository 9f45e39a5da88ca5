// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Settings.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>

namespace KestrinProductEditor {

/// Settings in memory, readable or not as a test tells them.
class MemorySettings final : public ISettings
{
public:
    using Address = std::tuple<std::u16string, std::u16string, std::u16string>;

    /// The values by application, section and key, for the test to fill and to look at.
    std::map<Address, std::u16string> values;
    /// Counts every SaveSetting, the failing ones too.
    std::size_t saves = 0;

    /// From now on every value is the default one.
    void FailAtReading() { m_isReadable = false; }
    /// From now on SaveSetting raises `number`.
    void FailAtSaving(std::int32_t number) { m_saveError = number; }
    void Heal();

    [[nodiscard]] std::u16string GetSetting(std::u16string_view application, std::u16string_view section,
                                            std::u16string_view key,
                                            std::u16string_view defaultValue) const override;
    void SaveSetting(std::u16string_view application, std::u16string_view section, std::u16string_view key,
                     std::u16string_view value) override;

private:
    bool m_isReadable = true;
    std::int32_t m_saveError = 0;
};

} // namespace KestrinProductEditor
