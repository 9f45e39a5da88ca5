// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/ControlSurface.h"
#include "platform/win32/Win32Focus.h"
#include "platform/win32/Win32Keys.h"
#include "platform/win32/Win32Layout.h"
#include "platform/win32/Win32Mnemonics.h"

#include <KestrinProductEditor/AutomationError.h>

#include <windows.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

class Win32Button;
class Win32ToolBar;

/// The controls of a surface, found by the names that its layout gives them, and what they share.
class Win32ControlSet
{
public:
    /// Makes a control of each window that the layout names. `layout` and `surface` must outlive the set.
    Win32ControlSet(HWND surface, const Win32Layout& layout);
    Win32ControlSet(const Win32ControlSet&) = delete;
    Win32ControlSet& operator=(const Win32ControlSet&) = delete;
    ~Win32ControlSet();

    template<class Interface>
    [[nodiscard]] Interface& Find(std::u16string_view name) const
    {
        auto* const control = dynamic_cast<Interface*>(PrvFind(name));
        if (control == nullptr)
            throw AutomationError(kErrInvalidProcedureCall);
        return *control;
    }

    /// The window of that name; null when the layout has none.
    [[nodiscard]] HWND WindowOf(std::u16string_view name) const;
    /// The name of the control that the window is, or lies in; empty for none.
    [[nodiscard]] std::u16string NameOf(HWND window) const;
    /// Null on a surface without one.
    [[nodiscard]] const Win32ToolBar* FindToolBar() const;
    /// Null for a window that is no button.
    [[nodiscard]] Win32Button* FindButton(HWND window) const;

    [[nodiscard]] Win32Focus& Focus() { return m_focus; }
    [[nodiscard]] const Win32Focus& Focus() const { return m_focus; }
    [[nodiscard]] Win32Keys& Keys() { return m_keys; }

private:
    struct Named
    {
        std::u16string name;
        HWND window;
        std::unique_ptr<IControl> control;
    };

    [[nodiscard]] std::unique_ptr<IControl> PrvMake(HWND window);
    [[nodiscard]] IControl* PrvFind(std::u16string_view name) const;

    const Win32Layout& m_layout;
    Win32Focus m_focus;
    Win32Mnemonics m_mnemonics;
    Win32Keys m_keys;
    std::vector<Named> m_controls;
};

template<class Interface>
using Win32Surface = ControlSurface<Interface, Win32ControlSet>;

} // namespace KestrinProductEditor
