// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32Control.h"
#include "platform/win32/Win32Mnemonics.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// A label in front of a box (its buddy) bears the box's mnemonic; any other shows its text letter for
/// letter. What has no room is shown by the tool tip, instead of the tip that the form has given it. A label
/// with SS_ENDELLIPSIS is one line, whatever stands in its text.
class Win32Label final : public Win32Control<ILabel>
{
public:
    /// `buddy` is null for a label that names nothing.
    Win32Label(HWND label, HWND buddy, Win32Focus& focus, Win32Mnemonics& mnemonics);
    Win32Label(const Win32Label&) = delete;
    Win32Label& operator=(const Win32Label&) = delete;
    ~Win32Label() override;

    void SetCaption(std::u16string_view caption) override;
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }
    void SetToolTip(std::u16string_view text) override;

private:
    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data);
    [[nodiscard]] bool PrvIsCut() const;
    void PrvShowToolTip();

    Win32Mnemonics& m_mnemonics;
    std::optional<std::size_t> m_bearer;
    std::u16string m_caption;
    std::u16string m_toolTip;
    std::u16string m_shownToolTip;
};

} // namespace KestrinProductEditor
