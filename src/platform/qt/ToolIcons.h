// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"

#include <QIcon>
#include <QWidget>

namespace KestrinProductEditor {

/// The picture of a tool, drawn at every size in the colours that the widget's palette has at the time.
[[nodiscard]] QIcon MakeToolIcon(ToolIcon icon, const QWidget& widget);

} // namespace KestrinProductEditor
