// SPDX-License-Identifier: MIT
#pragma once

namespace KestrinProductEditor {

class IToolkit;

/// The platform's own toolkit, which is loaded by the first call. Error 445 where it cannot work (see
/// Toolkit).
[[nodiscard]] IToolkit& PlatformToolkit();

/// The platform's own toolkit when it has been loaded already and works on this thread, else null.
[[nodiscard]] IToolkit* LoadedPlatformToolkit() noexcept;

/// What Toolkit would answer, but loads nothing: null where no toolkit is in use on this thread.
[[nodiscard]] IToolkit* ToolkitInUse() noexcept;

} // namespace KestrinProductEditor
