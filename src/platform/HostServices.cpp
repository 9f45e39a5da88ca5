// SPDX-License-Identifier: MIT
#include "platform/HostServices.h"

#include "platform/Text.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace KestrinProductEditor {

namespace {

class Registry
{
public:
    void Put(std::string_view classID, HostComponentFactory factory)
    {
        const std::lock_guard lock(m_mutex);
        m_factories[AsciiLower(classID)] = std::move(factory);
    }

    /// A copy, so that a factory may register others while it runs. Empty when there is none.
    [[nodiscard]] HostComponentFactory Find(std::string_view classID)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_factories.find(AsciiLower(classID));
        return found == m_factories.end() ? HostComponentFactory() : found->second;
    }

private:
    std::mutex m_mutex;
    std::map<std::string, HostComponentFactory> m_factories;
};

[[nodiscard]] Registry& Components()
{
    // Never destroyed: a host may release its last store after the end of main.
    static auto& registry = *new Registry;
    return registry;
}

[[nodiscard]] AutomationError CannotCreate(std::string_view classID, std::u16string_view reason)
{
    std::u16string text = AutomationError::TextOf(kErrCannotCreateObject);
    text += u": '";
    text += ToUtf16(classID);
    text += u"' ";
    text += reason;
    return AutomationError(kErrCannotCreateObject, u"", std::move(text));
}

template<typename Component>
[[nodiscard]] std::shared_ptr<Component> Create(std::string_view classID, std::u16string_view wrongKindReason)
{
    const HostComponentFactory factory = Components().Find(classID);
    if (!factory)
        throw CannotCreate(classID, u"is not registered. The host registers it with RegisterHostComponent");
    const std::shared_ptr<AutomationObject> object = factory();
    if (object == nullptr)
        throw CannotCreate(classID, u"is registered, but its factory made nothing");
    std::shared_ptr<Component> component = std::dynamic_pointer_cast<Component>(object);
    if (component == nullptr)
        throw CannotCreate(classID, wrongKindReason);
    return component;
}

} // namespace

std::shared_ptr<ITrace> CreateTrace()
{
    return Create<ITrace>(kTraceClassID, u"is registered, but what its factory made is no ITrace");
}

std::shared_ptr<IConfig> CreateConfig()
{
    return Create<IConfig>(kConfigClassID, u"is registered, but what its factory made is no IConfig");
}

void RegisterHostComponent(std::string_view sClassID, HostComponentFactory factory)
{
    Components().Put(sClassID, std::move(factory));
}

} // namespace KestrinProductEditor
