// SPDX-License-Identifier: MIT
#include "fake/ScriptedConfig.h"

#include <utility>

namespace KestrinProductEditor {

ScriptedConfig::ScriptedConfig(std::shared_ptr<ConfigScript> script) : m_script(std::move(script))
{
    ++m_script->created;
}

Variant ScriptedConfig::Value(std::u16string_view sKey)
{
    m_script->queries.emplace_back(sKey);
    if (m_script->failure)
        throw AutomationError(*m_script->failure);
    const auto found = m_script->values.find(sKey);
    return found != m_script->values.end() ? found->second : Variant();
}

} // namespace KestrinProductEditor
