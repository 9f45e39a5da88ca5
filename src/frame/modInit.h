// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/HostComponents.h>

namespace KestrinProductEditor {

/// The trace of this thread: null until Main has run, then set for good. The component never releases it.
extern thread_local ITrace* gobjTrace;

namespace modInit {

/// Creates the trace of this thread. When that fails it shows its one message and raises the error.
void Main();

/// Runs Main on this thread unless it has succeeded there already. Called before the first object of a
/// thread.
void EnsureMain();

} // namespace modInit

} // namespace KestrinProductEditor
