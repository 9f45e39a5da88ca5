// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Form.h"
#include "platform/win32/Win32ControlSet.h"
#include "platform/win32/Win32Layout.h"

#include <windows.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// A surface within a child window, which the host puts into a window of its own by SetParent. The host may
/// destroy that window: the surface leaves it before, so that controls that are still held stay valid. After
/// that no control is found (error 5), sizes are 0 and the handle is null. It belongs to the thread that made
/// it.
class Win32UserControl final : public Win32Surface<IUserControl>
{
public:
    /// Error 5 for a name that no layout bears, 7 when the system has no room for the window.
    explicit Win32UserControl(std::u16string_view name);
    ~Win32UserControl() override;

    [[nodiscard]] float InnerWidth() const override;
    [[nodiscard]] float InnerHeight() const override;
    [[nodiscard]] ControlPlace Place(std::u16string_view control) const override;
    void Move(std::u16string_view control, const ControlPlace& place) override;
    [[nodiscard]] float TextWidth(std::u16string_view text) const override;
    [[nodiscard]] void* NativeHandle() const override { return m_shell; }

    [[nodiscard]] Win32ControlSet& Controls() override;

private:
    /// What a control was moved to, for as long as it stands there.
    struct Moved
    {
        RECT pixels;
        ControlPlace place;
    };

    static LRESULT CALLBACK PrvShellProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT CALLBACK PrvSurfaceProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static void PrvRegister();

    [[nodiscard]] LRESULT PrvHandle(UINT message, WPARAM wParam, LPARAM lParam);
    void PrvLeaveShell();
    void PrvFollowShell();
    [[nodiscard]] HWND PrvFind(std::u16string_view control) const;
    [[nodiscard]] RECT PrvPixels(HWND control) const;
    [[nodiscard]] SIZE PrvInside() const;

    Win32Layout m_layout;
    HWND m_shell = nullptr;
    HWND m_surface = nullptr;
    UINT m_dpi = 0;
    std::unique_ptr<Win32ControlSet> m_controls;
    std::map<HWND, Moved> m_moved;
};

} // namespace KestrinProductEditor
