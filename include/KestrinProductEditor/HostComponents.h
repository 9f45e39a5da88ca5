// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationError.h>
#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/Variant.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

namespace KestrinProductEditor {

/// The host's trace, class identifier "CorvoTWrp.Trace". One is created on each thread that uses the
/// component, before the first object there, and never released. Each working method of the component reports
/// to it.
class [[gnu::visibility("default")]] ITrace : public AutomationObject
{
public:
    /// The number under which the pending error is to reach the caller; asked after TraceError, and without a
    /// pending error when the component is about to raise a text of its own. The answer 0 leaves the number
    /// as it is (or, with nothing pending, means -2147220503).
    virtual std::int32_t TraceErrNumber() = 0;
    /// An error has reached the handler of a method. `sText` is always empty; PendingError() tells the rest.
    virtual void TraceError(std::u16string_view sText) = 0;
    /// A method begins; `sContext` names it. The text lives as long as the process.
    virtual void TraceEnter(std::u16string_view sContext) = 0;
    /// The method that entered with the same text has ended well.
    virtual void TraceExit(std::u16string_view sContext) = 0;

    ~ITrace() override;
};

/// The host's configuration, class identifier "CorvoConf.Config". A store creates one to learn where its file
/// lies.
class [[gnu::visibility("default")]] IConfig : public AutomationObject
{
public:
    /// The value of "InstallPath" (a folder) or "DBSubdirName" (the name of the database folder in it).
    virtual Variant Value(std::u16string_view sKey) = 0;

    ~IConfig() override;
};

/// The error that a method of the component is handling on this thread, or null. It lives while
/// ITrace::TraceError and the ITrace::TraceErrNumber after it run.
[[gnu::visibility("default")]] const AutomationError* PendingError() noexcept;

/// Makes one host component. It may raise; a null answer counts as "cannot create object" (error 429).
using HostComponentFactory = std::function<std::shared_ptr<AutomationObject>()>;

/// Registers what the component gets when it creates `sClassID` ("CorvoTWrp.Trace" or "CorvoConf.Config") on
/// any thread. A later registration takes the place of an earlier one; an empty factory takes it away.
[[gnu::visibility("default")]] void RegisterHostComponent(std::string_view sClassID,
                                                          HostComponentFactory factory);

} // namespace KestrinProductEditor
