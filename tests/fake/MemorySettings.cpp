// SPDX-License-Identifier: MIT
#include "fake/MemorySettings.h"

#include <KestrinProductEditor/AutomationError.h>

namespace KestrinProductEditor {

void MemorySettings::Heal()
{
    m_isReadable = true;
    m_saveError = 0;
}

std::u16string MemorySettings::GetSetting(std::u16string_view application, std::u16string_view section,
                                          std::u16string_view key, std::u16string_view defaultValue) const
{
    const auto place = values.find(Address(application, section, key));
    return std::u16string(m_isReadable && place != values.end() ? place->second : defaultValue);
}

void MemorySettings::SaveSetting(std::u16string_view application, std::u16string_view section,
                                 std::u16string_view key, std::u16string_view value)
{
    ++saves;
    if (m_saveError != 0)
        throw AutomationError(m_saveError);
    values[Address(application, section, key)] = value;
}

} // namespace KestrinProductEditor
