// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32ClickTarget.h"

#include <cstdint>

namespace KestrinProductEditor {

/// Over a BUTTON that ticks itself (BS_AUTOCHECKBOX).
class Win32CheckBox final : public Win32ClickTarget<ICheckBox>
{
public:
    using Win32ClickTarget::Win32ClickTarget;

    void SetValue(std::int32_t value) override;
    [[nodiscard]] std::int32_t Value() const override { return m_value; }

private:
    void PrvClicked() override;
    void PrvShow();

    std::int32_t m_value = 0;
};

} // namespace KestrinProductEditor
