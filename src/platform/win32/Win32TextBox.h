// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32Control.h"
#include "platform/win32/Win32EditHistory.h"
#include "platform/win32/Win32EditText.h"
#include "platform/win32/Win32TypedText.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// A text box over an EDIT of one line or of many (ES_MULTILINE), which must scroll by itself
/// (ES_AUTOHSCROLL, ES_AUTOVSCROLL).
///
/// The text is kept here, letter for letter, and the EDIT shows it (Win32EditText.h). Whatever would change
/// the EDIT's text (keys, input methods, the clipboard, its menu, other programs) is caught, done to the text
/// here, and then shown. Undo and Redo (Ctrl+Z, Ctrl+Y, Ctrl+Shift+Z) go back to what the form wrote last.
class Win32TextBox final : public Win32Control<ITextBox>
{
public:
    Win32TextBox(HWND edit, Win32Focus& focus);
    Win32TextBox(const Win32TextBox&) = delete;
    Win32TextBox& operator=(const Win32TextBox&) = delete;
    ~Win32TextBox() override;

    void SetText(std::u16string_view text) override;
    [[nodiscard]] std::u16string Text() const override { return m_text; }
    void SetMaxLength(std::int32_t length) override;
    [[nodiscard]] std::int32_t MaxLength() const override { return static_cast<std::int32_t>(m_limit); }
    void SetLocked(bool bLocked) override;
    [[nodiscard]] bool IsLocked() const override { return m_isLocked; }
    void SetBackColor(std::uint32_t rgb) override;
    [[nodiscard]] std::uint32_t BackColor() const override { return m_backColor; }
    void Select(std::int32_t start, std::int32_t length) override;
    [[nodiscard]] std::u16string SelectedText() const override;

private:
    /// A part of the text.
    struct Range
    {
        std::size_t start;
        std::size_t end;
    };
    class Showing;

    static LRESULT CALLBACK PrvProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                         DWORD_PTR data);
    /// What the box answers itself; nothing leaves the message to the EDIT. May end the box.
    [[nodiscard]] std::optional<LRESULT> PrvHandle(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] std::optional<LRESULT> PrvHandleTyping(UINT message, WPARAM wParam, LPARAM lParam);
    [[nodiscard]] std::optional<LRESULT> PrvHandleEditing(UINT message, LPARAM lParam);
    [[nodiscard]] LRESULT PrvDialogCode(const MSG* message) const;
    [[nodiscard]] LRESULT PrvColors(HDC canvas) const;

    /// A key that is no character.
    [[nodiscard]] std::optional<LRESULT> PrvKeyDown(WPARAM key);
    /// Asks about a character, and does what it does. May end the box.
    void PrvType(TypedKey typed);
    void PrvAct(TypedAct act, std::int32_t character);
    /// False when nothing is selected, or nobody gives the clipboard away.
    [[nodiscard]] bool PrvCopy() const;
    void PrvEraseBefore(TypedAct act);
    void PrvEraseAfter();
    void PrvInsert(std::u16string_view text, Win32EditHistory::Kind kind);
    void PrvPaste(std::u16string_view text);
    /// Another program's; empty erases.
    void PrvTakeInPlaceOfSelection(std::u16string_view text);
    void PrvTravel(const std::optional<Win32EditHistory::Step>& step);
    /// The EDIT's text has become another one in a way that nothing here knows of.
    void PrvTakeOver();

    [[nodiscard]] Range PrvSelection() const;
    void PrvReplace(Range range, std::u16string_view with, Win32EditHistory::Kind kind);
    /// Raises Change when that makes the text another one.
    void PrvApply(const Win32EditHistory::Step& step);
    /// Shows the text as it is now.
    void PrvShow();
    /// Puts something in place of the EDIT's selection.
    void PrvPut(std::u16string_view shown);
    void PrvSelect(Range range);
    void PrvDoubleClicked();

    BoxLines m_lines;
    std::u16string m_text;
    std::u16string m_shown; // the EDIT's text
    Win32EditHistory m_history;
    Win32TypedText m_typed;
    std::size_t m_limit = 0;
    std::uint32_t m_backColor = kWhite;
    bool m_isLocked = false;
    int m_showings = 0; // what the EDIT is told now comes from here
    std::shared_ptr<const bool> m_isAlive = std::make_shared<const bool>(true);
};

} // namespace KestrinProductEditor
