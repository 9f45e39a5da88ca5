// SPDX-License-Identifier: MIT
#include "frame/modInit.h"

#include "frame/Traced.h"
#include "platform/HostServices.h"
#include "platform/ui/MessageBox.h"

#include <memory>
#include <mutex>
#include <vector>

namespace KestrinProductEditor {

thread_local ITrace* gobjTrace = nullptr;

namespace modInit {

namespace {

// A trace outlives its thread: hosts keep theirs, and the last objects of a thread may still report to it.
void KeepForGood(std::shared_ptr<ITrace> trace)
{
    static auto& mutex = *new std::mutex;
    static auto* const traces = new std::vector<std::shared_ptr<ITrace>>;
    const std::scoped_lock lock(mutex);
    traces->push_back(std::move(trace));
}

} // namespace

void Main()
{
    try {
        std::shared_ptr<ITrace> trace = CreateTrace();
        ITrace* const address = trace.get();
        KeepForGood(std::move(trace));
        gobjTrace = address;
    } catch (...) {
        const AutomationError error = ErrorInFlight();
        MessageBoxes().Show(u"Could not create trace object. Module:KestrinProductEditor.modInit::Main",
                            kMessageExclamation, u"Automation error");
        throw error;
    }
}

void EnsureMain()
{
    if (gobjTrace != nullptr)
        return;
    PrepareErrors();
    Main();
}

} // namespace modInit

} // namespace KestrinProductEditor
