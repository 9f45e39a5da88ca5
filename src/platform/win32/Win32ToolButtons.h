// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"
#include "platform/win32/Win32ToolIcons.h"

#include <windows.h>

#include <commctrl.h>

#include <string>
#include <vector>

namespace KestrinProductEditor {

/// The buttons of a tool bar, a picture with a text beside it each: as large as the font of the bar's window
/// and the resolution ask for, in the colours that the user has chosen for the system (of whose change the
/// form tells its controls). A button that the window is too narrow to show whole is not shown.
class Win32ToolButtons
{
public:
    /// What the layout gives the window (class ToolbarWindow32), besides WS_CHILD and WS_VISIBLE.
    static constexpr DWORD kStyle =
        TBSTYLE_FLAT | TBSTYLE_LIST | TBSTYLE_TOOLTIPS | CCS_NODIVIDER | CCS_NOPARENTALIGN | CCS_NORESIZE;

    struct Button
    {
        UINT command;
        std::u16string label; ///< shown letter for letter
        std::u16string toolTip;
        ToolIcon icon = ToolIcon::None;
        bool beginsGroup = false; ///< a gap stands before it
        bool isEnabled = true;
    };

    /// The window may end before this object, or after it.
    explicit Win32ToolButtons(HWND bar);
    Win32ToolButtons(const Win32ToolButtons&) = delete;
    Win32ToolButtons& operator=(const Win32ToolButtons&) = delete;
    ~Win32ToolButtons();

    /// Commands from 0x8000 to 0xBFFF. Called once.
    void Set(std::vector<Button> buttons);
    void SetEnabled(UINT command, bool bEnabled);
    /// Null for a command that no button has.
    [[nodiscard]] const std::u16string* ToolTipOf(UINT command) const;
    /// What the buttons need, in pixels; 0 before there are any.
    [[nodiscard]] int Height() const { return m_height; }

private:
    /// A button or a gap, in the order of the bar.
    struct Shown
    {
        UINT command;
        LONG right; ///< where it ends, a gap with the button behind it
        bool isShown = true;
    };

    static LRESULT CALLBACK PrvProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data);

    /// What changes with what the window was told.
    void PrvFollow(UINT message);
    void PrvFill();
    void PrvMakeIcons(int side);
    void PrvAddButtons();
    void PrvSetSizes(int side);
    void PrvMeasure();
    void PrvFit();

    HWND m_bar;
    std::vector<Button> m_buttons;
    std::vector<Shown> m_shown;
    ImageList m_icons;
    ImageList m_disabledIcons;
    int m_height = 0;
};

} // namespace KestrinProductEditor
