// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/MessageBox.h"

namespace KestrinProductEditor {

/// Message boxes in front of the form in front. Texts are plain, whatever they look like.
class QtMessageBox final : public IMessageBox
{
public:
    MessageAnswer Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override;
};

} // namespace KestrinProductEditor
