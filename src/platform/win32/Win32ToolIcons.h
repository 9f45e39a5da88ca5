// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"

#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <span>
#include <type_traits>

namespace KestrinProductEditor {

/// The colours of the pictures on a bar.
struct ToolIconColours
{
    COLORREF lines;
    COLORREF accent;
};

/// The lines in the colour of texts, the rest in that of selections, which is mixed with the first as far as
/// it takes to be seen on the ground.
[[nodiscard]] ToolIconColours ToolIconColoursOf(COLORREF text, COLORREF selection, COLORREF ground);
/// In what the user has chosen for the system now.
[[nodiscard]] ToolIconColours PresentToolIconColours();
/// For tools that cannot be chosen.
[[nodiscard]] ToolIconColours DisabledToolIconColours();

struct ImageListEnd
{
    void operator()(HIMAGELIST list) const noexcept { ImageList_Destroy(list); }
};
/// No window may show it any more when it ends.
using ImageList = std::unique_ptr<std::remove_pointer_t<HIMAGELIST>, ImageListEnd>;

/// The pictures of tools, `side` by `side` pixels each, in the order of `icons`, none of which is
/// ToolIcon::None: a list takes a picture of nothing for a black one. Null when the system has no room for
/// them.
[[nodiscard]] ImageList MakeToolIcons(std::span<const ToolIcon> icons, int side, ToolIconColours colours);

} // namespace KestrinProductEditor
