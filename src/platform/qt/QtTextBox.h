// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtEditBox.h"
#include "platform/qt/QtLineEdit.h"

namespace KestrinProductEditor {

/// A text box of one line.
class QtTextBox final : public QtEditBox<QtLineEdit>
{
public:
    using QtEditBox::QtEditBox;
};

} // namespace KestrinProductEditor
