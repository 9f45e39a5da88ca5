// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtEditBox.h"
#include "platform/qt/QtNoteEdit.h"

namespace KestrinProductEditor {

/// A text box of many lines.
class QtNoteBox final : public QtEditBox<QtNoteEdit>
{
public:
    using QtEditBox::QtEditBox;
};

} // namespace KestrinProductEditor
