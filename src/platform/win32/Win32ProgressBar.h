// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32Control.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// Over a window of the class "KstneditProgress": a bar with any text on it, in the one colour on the filled
/// part and in the other beyond. It keeps its colours while it is disabled: a busy form disables everything,
/// and the bar is what there is to see. For screen readers it is a progress bar that bears its caption as its
/// name.
class Win32ProgressBar final : public Win32Control<IProgressBar>
{
public:
    static constexpr const wchar_t* kClassName = L"KstneditProgress";
    /// Makes the class known to the system, once; to be called before a layout is made that has one.
    static void Register();

    Win32ProgressBar(HWND bar, Win32Focus& focus) : Win32Control(bar, nullptr, focus) {}

    void SetValue(std::int32_t value) override;
    [[nodiscard]] std::int32_t Value() const override { return m_value; }
    void SetCaption(std::u16string_view caption) override;
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }

private:
    std::int32_t m_value = 0;
    std::u16string m_caption;
};

} // namespace KestrinProductEditor
