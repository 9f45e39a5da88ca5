// SPDX-License-Identifier: MIT
#pragma once

#include "fake/ScriptedToolkit.h"
#include "support/User.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

/// The user of the scripted toolkit. Where no form is shown, acts go to the user control that was created
/// last.
class ScriptedUser final : public IUser, private IScriptedAudience
{
public:
    ScriptedUser();
    ScriptedUser(const ScriptedUser&) = delete;
    ScriptedUser& operator=(const ScriptedUser&) = delete;
    /// Fails the test for every entry of the script that nothing came for.
    ~ScriptedUser() override;

    [[nodiscard]] IToolkit& Screen() override { return m_toolkit; }

    void AtNextForm(std::function<void()> acts) override;
    void WillAnswer(MessageAnswer answer) override;
    void WillEscape() override;
    void WillChooseFile(std::optional<std::u16string> path) override;
    [[nodiscard]] const std::vector<Message>& Messages() const override { return m_messages; }
    [[nodiscard]] const std::vector<FileDialog>& FileDialogs() const override { return m_fileDialogs; }
    [[nodiscard]] std::vector<std::u16string> OpenForms() const override;

    void Click(std::u16string_view control) override;
    void DoubleClick(std::u16string_view control) override;
    void ClickRow(std::u16string_view grid, std::int32_t row, Modifier modifier) override;
    void DoubleClickRow(std::u16string_view grid, std::int32_t row) override;
    void Type(std::u16string_view text) override;
    void Press(NamedKey key, Modifier modifier) override;
    void PressControl(char letter) override;
    void Compose(std::u16string_view text) override;
    void ChooseTool(std::u16string_view id) override;
    void ClickTool(std::u16string_view id) override;
    void PickInCell(std::u16string_view grid, std::int32_t row, std::int32_t col,
                    std::int32_t number) override;
    void DragColumn(std::u16string_view grid, std::int32_t col, std::int32_t twips) override;
    void CloseWindow() override;
    void DropFile(std::u16string_view path) override;
    void TabTo(std::u16string_view control) override;
    void ResizeUserControl(IUserControl& control, float widthTwips, float heightTwips) override
    {
        dynamic_cast<ScriptedUserControl&>(control).SetInnerSize(widthTwips, heightTwips);
    }
    void SetClipboard(std::u16string_view text) override { m_clipboard = text; }
    [[nodiscard]] std::u16string Clipboard() const override { return m_clipboard; }

    [[nodiscard]] std::u16string TextOf(std::u16string_view control) const override;
    [[nodiscard]] std::int32_t ValueOf(std::u16string_view bar) const override;
    [[nodiscard]] bool IsShown(std::u16string_view control) const override;
    [[nodiscard]] bool IsEnabled(std::u16string_view control) const override;
    [[nodiscard]] bool IsLocked(std::u16string_view box) const override;
    [[nodiscard]] bool IsTicked(std::u16string_view box) const override;
    [[nodiscard]] bool CanChooseTool(std::u16string_view id) const override;
    [[nodiscard]] std::u16string Focus() const override;
    [[nodiscard]] std::u16string WindowCaption() const override;
    [[nodiscard]] std::u16string CellShown(std::u16string_view grid, std::int32_t row,
                                           std::int32_t col) const override;
    [[nodiscard]] IGrid& Grid(std::u16string_view name) override;

private:
    // IScriptedAudience

    void FormShown(ScriptedForm& form) override;
    [[nodiscard]] MessageAnswer MessageShown(const Message& message) override;
    [[nodiscard]] std::optional<std::u16string> FileAsked(const FileDialog& dialog) override;

    [[nodiscard]] ScriptedForm* PrvForm() const;
    [[nodiscard]] ScriptedControls* PrvControls() const;
    [[nodiscard]] bool PrvIsListening(std::string_view act) const;
    [[nodiscard]] ScriptedToolBar* PrvToolBar() const;
    template<class Control>
    [[nodiscard]] Control* PrvLookUp(std::u16string_view name) const;
    template<class Control>
    [[nodiscard]] Control* PrvReach(std::string_view act, std::u16string_view name);
    [[nodiscard]] bool PrvCanReach(const IControl& control) const;
    void PrvPauseTyping();
    void PrvMoveMouseTo(const IControl& control);
    void PrvPress(IControl& control);
    void PrvClickGridRow(ScriptedGrid& grid, std::int32_t row, Modifier modifier);
    void PrvTabInto(IControl& control);
    void PrvTypeCharacter(char32_t character);
    [[nodiscard]] bool PrvTakeShortcut(Shortcut shortcut);
    void PrvPressEnter();

    ScriptedToolkit m_toolkit;
    ScopedToolkit m_inUse;
    std::deque<std::function<void()>> m_acts;
    std::deque<std::optional<MessageAnswer>> m_answers; // nothing stands for Esc
    std::deque<std::optional<std::u16string>> m_paths;
    std::vector<Message> m_messages;
    std::vector<FileDialog> m_fileDialogs;
    std::u16string m_clipboard;
};

} // namespace KestrinProductEditor
