// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>

namespace KestrinProductEditor {

/// The change notifications of a catalogue, for whoever shows one. The interface is published; no member of
/// the component calls it. It cannot be created by its class identifier.
class [[gnu::visibility("default")]] IPNotifyCallback : public AutomationObject
{
public:
    virtual void NotifyProductAdd() = 0;
    virtual void NotifyProductDelete() = 0;
    virtual void NotifyProductUpdate() = 0;

    ~IPNotifyCallback() override;
};

} // namespace KestrinProductEditor
