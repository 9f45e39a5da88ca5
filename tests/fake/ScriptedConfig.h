// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationError.h>
#include <KestrinProductEditor/HostComponents.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace KestrinProductEditor {

/// What every ScriptedConfig of a test answers.
struct ConfigScript
{
    /// A key that is not in the map reads as Empty.
    std::map<std::u16string, Variant, std::less<>> values;
    std::optional<AutomationError> failure;
    /// The keys that were asked for, in that order.
    std::vector<std::u16string> queries;
    int created = 0;
};

/// A host's configuration that answers from a script.
class ScriptedConfig final : public IConfig
{
public:
    explicit ScriptedConfig(std::shared_ptr<ConfigScript> script);

    Variant Value(std::u16string_view sKey) override;

private:
    std::shared_ptr<ConfigScript> m_script;
};

} // namespace KestrinProductEditor
