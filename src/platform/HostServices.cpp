// SPDX-License-Identifier: MIT
#include "platform/HostServices.h"

#include <map>
#include <mutex>
#include <string>
#include <utility>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] std::u16string FoldedID(std::u16string_view classID)
{
    std::u16string folded(classID);
    for (char16_t& unit : folded) {
        if (unit >= u'A' && unit <= u'Z')
            unit = static_cast<char16_t>(unit - u'A' + u'a');
    }
    return folded;
}

class Registry
{
public:
    void Put(std::u16string_view classID, HostComponentFactory factory)
    {
        const std::lock_guard lock(m_mutex);
        m_factories[FoldedID(classID)] = std::move(factory);
    }

    /// A copy, so that a factory may register others while it runs. Empty when there is none.
    [[nodiscard]] HostComponentFactory Find(std::u16string_view classID)
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_factories.find(FoldedID(classID));
        return found == m_factories.end() ? HostComponentFactory() : found->second;
    }

private:
    std::mutex m_mutex;
    std::map<std::u16string, HostComponentFactory> m_factories;
};

[[nodiscard]] Registry& Components()
{
    static Registry registry;
    return registry;
}

[[nodiscard]] AutomationError CannotCreate(std::u16string_view classID, std::u16string_view reason)
{
    std::u16string text = AutomationError::TextOf(kErrCannotCreateObject);
    text += u": '";
    text += classID;
    text += u"' ";
    text += reason;
    return AutomationError(kErrCannotCreateObject, u"", std::move(text));
}

template<typename Component>
[[nodiscard]] std::shared_ptr<Component> Create(std::u16string_view classID,
                                                std::u16string_view wrongKindReason)
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

void RegisterHostComponent(std::u16string_view sClassID, HostComponentFactory factory)
{
    Components().Put(sClassID, std::move(factory));
}

} // namespace KestrinProductEditor
