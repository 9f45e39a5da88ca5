// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/MessageBox.h"

#include <windows.h>

#include <functional>

namespace KestrinProductEditor {

/// The system's message boxes, in front of the form in front, which may be busy.
class Win32MessageBox final : public IMessageBox
{
public:
    /// Answers the window of the form in front; null when none is shown: the box then stands in front of
    /// whatever window of this thread the user works in.
    using Front = std::function<HWND()>;

    explicit Win32MessageBox(Front front);

    MessageAnswer Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override;

private:
    Front m_front;
};

} // namespace KestrinProductEditor
