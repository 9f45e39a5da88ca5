// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/HostComponents.h>

namespace KestrinProductEditor {

// Defined here, so that each class has one type information for the library and its host: a dynamic_cast
// across the border depends on it.
AutomationObject::~AutomationObject() = default;
ITrace::~ITrace() = default;
IConfig::~IConfig() = default;

} // namespace KestrinProductEditor
