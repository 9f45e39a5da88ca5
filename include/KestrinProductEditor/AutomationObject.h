// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

namespace KestrinProductEditor {

/// The base of everything that is created by a class identifier: the component's public classes, and the
/// host's components that the component creates.
///
/// Objects are shared and belong to the thread that created them. A member keeps its object alive while it
/// runs, so a receiver may let go of the last reference from inside a call.
class [[gnu::visibility("default")]] AutomationObject : public std::enable_shared_from_this<AutomationObject>
{
public:
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;
    AutomationObject(AutomationObject &&) = delete;
    AutomationObject& operator=(AutomationObject&&) = delete;
    virtual ~AutomationObject();

protected:
    AutomationObject() = default;
};

} // namespace KestrinProductEditor
