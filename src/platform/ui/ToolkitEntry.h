// SPDX-License-Identifier: MIT
#pragma once

namespace KestrinProductEditor {

class IToolkit;

/// The one function of a library of windows, under the name kToolkitEntryName. `version` is that of the
/// caller; interfaces differ from version to version, so another one is refused. Answers the toolkit, which
/// lives as long as the process, or null and a reason in UTF-8 that is valid until the next call on the
/// thread. To be called anew on each use: a display or an application may be gone, the thread another.
using ToolkitEntry = IToolkit* (*)(const char* version, const char** reason) noexcept;

inline constexpr char kToolkitEntryName[] = "kstnedit_toolkit";

} // namespace KestrinProductEditor
