// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32Control.h"
#include "platform/win32/Win32Keys.h"
#include "platform/win32/Win32Mnemonics.h"
#include "platform/win32/Win32ToolButtons.h"

#include <windows.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace KestrinProductEditor {

/// The menus of a form's window, which get their line of it with the first tool, and a row of buttons. The
/// window may end before this object, or after it.
class Win32ToolBar final : public Win32Control<IToolBar>
{
public:
    /// Where a tool is found.
    struct Place
    {
        UINT header;  ///< the position of its header among the menus
        UINT command; ///< what its item and its button send; 0 for a header
    };

    /// `bar` lies in the form's window and has the style Win32ToolButtons::kStyle. `hasFocus` tells whether
    /// the control with that name has the focus.
    Win32ToolBar(HWND bar, Win32Focus& focus, Win32Mnemonics& mnemonics, Win32Keys& keys,
                 std::function<bool(std::u16string_view)> hasFocus);
    ~Win32ToolBar() override;

    void SetVisible(bool bVisible) override;
    void SetEnabled(bool bEnabled) override;
    void SetTools(std::span<const Tool> tools) override;
    void SetToolEnabled(std::u16string_view id, bool bEnabled) override;
    [[nodiscard]] bool IsToolEnabled(std::u16string_view id) const override;

    /// Nothing for an id that no tool has.
    [[nodiscard]] std::optional<Place> PlaceOf(std::u16string_view id) const;
    [[nodiscard]] HWND Buttons() const { return Window(); }
    /// What the row of buttons needs at the present font and resolution, in pixels.
    [[nodiscard]] int Height() const { return m_buttons.Height(); }

private:
    struct Entry
    {
        std::u16string_view id;
        std::u16string shown;
        std::u16string key; ///< as the menu shows it
        Place place;
        HMENU opens; ///< of a header
        std::size_t header;
        bool isEnabled = true; ///< what was set for it
        bool isOffered = true; ///< what its menu and its button show
    };
    struct MenuEnd
    {
        void operator()(HMENU menu) const noexcept { DestroyMenu(menu); }
    };

    static LRESULT CALLBACK PrvProcedure(HWND root, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data);

    void PrvAddHeader(const Tool& tool);
    [[nodiscard]] Win32ToolButtons::Button PrvAddItem(const Tool& tool);
    void PrvBindKeys(const Tool& tool, std::size_t entry);
    void PrvMarkItems(std::size_t header);
    void PrvShowMenus();
    void PrvShowEnabled();
    [[nodiscard]] bool PrvIsOffered(const Entry& entry) const;
    [[nodiscard]] bool PrvCanBeChosen(const Entry& entry) const;
    /// Whether the command was one of a tool. May end the bar.
    [[nodiscard]] bool PrvCommand(WPARAM wParam, LPARAM lParam) const;
    /// May end the bar.
    void PrvOpened(HMENU menu) const;
    void PrvAnswerToolTip(NMTBGETINFOTIPW& question) const;
    [[nodiscard]] std::size_t PrvFind(std::u16string_view id) const;

    HWND m_root;
    Win32Mnemonics& m_mnemonics;
    Win32Keys& m_keys;
    std::function<bool(std::u16string_view)> m_hasFocus;
    std::unique_ptr<std::remove_pointer_t<HMENU>, MenuEnd> m_menus;
    std::vector<Entry> m_entries;
    Win32ToolButtons m_buttons;
};

} // namespace KestrinProductEditor
