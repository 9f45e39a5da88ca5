// SPDX-License-Identifier: MIT
#include "platform/ui/PlatformToolkit.h"
#include "platform/ui/Toolkit.h"
#include "platform/ui/ToolkitEntry.h"

#include <KestrinProductEditor/AutomationError.h>

#include "platform/Text.h"

#include <atomic>
#include <string>

#include <dlfcn.h>

namespace KestrinProductEditor {

namespace {

constexpr char kLibrary[] = "libkstnedit-qt.so.1";

// Set for good by the first toolkit that worked.
std::atomic<ToolkitEntry> g_entry = nullptr;

/// The library's entry; null and a reason when it cannot be had. The library stays loaded; loading it again
/// only counts.
[[nodiscard]] ToolkitEntry LoadEntry(std::string& reason)
{
    void* const library = dlopen(kLibrary, RTLD_NOW | RTLD_LOCAL);
    void* const entry = library == nullptr ? nullptr : dlsym(library, kToolkitEntryName);
    if (entry == nullptr) {
        const char* const why = dlerror();
        reason = why != nullptr ? why : kLibrary;
    }
    return reinterpret_cast<ToolkitEntry>(entry);
}

} // namespace

IToolkit& PlatformToolkit()
{
    std::string why;
    ToolkitEntry entry = g_entry;
    if (entry == nullptr)
        entry = LoadEntry(why);
    if (entry != nullptr) {
        const char* reason = "";
        if (IToolkit* const toolkit = entry(KSTNEDIT_VERSION, &reason)) {
            g_entry = entry;
            return *toolkit;
        }
        why = reason;
    }
    throw AutomationError(kErrActionNotSupported, {},
                          AutomationError::TextOf(kErrActionNotSupported) + u": no windows here (" +
                              ToUtf16(why) + u')');
}

IToolkit* LoadedPlatformToolkit() noexcept
{
    const ToolkitEntry entry = g_entry;
    const char* reason = "";
    return entry == nullptr ? nullptr : entry(KSTNEDIT_VERSION, &reason);
}

} // namespace KestrinProductEditor
