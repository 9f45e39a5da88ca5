// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>

#include <memory>
#include <span>
#include <string_view>

namespace KestrinProductEditor {

/// One public class, as hosts know it.
struct ClassEntry
{
    std::string_view name;
    /// Null for an interface that only the host implements.
    std::shared_ptr<AutomationObject> (*create)();
};

/// The library's name, the part of a class identifier before the point.
inline constexpr std::string_view kLibraryName = "KestrinProductEditor";

/// The public classes, in the order of the type library.
[[nodiscard]] std::span<const ClassEntry> ClassTable();

} // namespace KestrinProductEditor
