// SPDX-License-Identifier: MIT
#pragma once

namespace KestrinProductEditor {

/// From now on the component creates the host's trace and configuration by their class identifiers, as the
/// system's registry knows them. Does nothing when it was called before.
void BindHostComponents();

} // namespace KestrinProductEditor
