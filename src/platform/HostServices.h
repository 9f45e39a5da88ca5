// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/HostComponents.h>

#include <memory>
#include <string_view>

namespace KestrinProductEditor {

/// The class identifiers of what the component creates from the host.
inline constexpr std::string_view kTraceClassID = "CorvoTWrp.Trace";
inline constexpr std::string_view kConfigClassID = "CorvoConf.Config";

/// Creates the host's trace and the host's configuration. Error 429 when it is not registered, its factory
/// gives nothing, or what it gives is no trace (configuration); the factory's own error otherwise.
[[nodiscard]] std::shared_ptr<ITrace> CreateTrace();
[[nodiscard]] std::shared_ptr<IConfig> CreateConfig();

} // namespace KestrinProductEditor
