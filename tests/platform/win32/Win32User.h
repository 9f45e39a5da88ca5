// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32Dialogs.h"
#include "platform/win32/Win32Hands.h"
#include "platform/win32/Win32Toolkit.h"
#include "platform/win32/Win32Watchdog.h"
#include "support/User.h"

#include <windows.h>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace KestrinProductEditor {

class Win32ControlSet;
class Win32Form;
class Win32GridView;
class Win32ToolBar;

/// The user in front of the windows of Windows: mouse and keys are the system's messages, message boxes and
/// file dialogs real dialogs that are answered when they are shown. No screen is needed.
///
/// An overwrite question of a file dialog is answered with Yes and is no message of the component's.
class Win32User final : public IUser, private IToolkit, private Win32Hands::Front
{
public:
    Win32User();
    Win32User(const Win32User&) = delete;
    Win32User& operator=(const Win32User&) = delete;
    /// Fails the test for every entry of the script that nothing came for.
    ~Win32User() override;

    [[nodiscard]] IToolkit& Screen() override { return *this; }
    /// Called with every message box that is shown, before it is answered; null for nobody.
    void OnMessage(std::function<void(HWND)> look) { m_onMessage = std::move(look); }

    void AtNextForm(std::function<void()> acts) override { m_acts.push_back(std::move(acts)); }
    void WillAnswer(MessageAnswer answer) override { m_answers.emplace_back(answer); }
    void WillEscape() override { m_answers.emplace_back(std::nullopt); }
    void WillChooseFile(std::optional<std::u16string> path) override { m_paths.push_back(std::move(path)); }
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
    void ResizeUserControl(IUserControl& control, float widthTwips, float heightTwips) override;
    void SetClipboard(std::u16string_view text) override;
    [[nodiscard]] std::u16string Clipboard() const override;

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
    // IToolkit, between the component and its windows

    [[nodiscard]] std::unique_ptr<IForm> CreateForm(std::u16string_view name) override;
    [[nodiscard]] std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override;
    [[nodiscard]] IMessageBox& Messages() override { return m_backend.Messages(); }
    [[nodiscard]] std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override;

    // Win32Hands::Front

    [[nodiscard]] bool IsListening() const override;
    void PassOn(MSG& message) override;
    [[nodiscard]] HWND KeyWindow() const override;

    void PrvShown(HWND window);
    void PrvGone(HWND window);
    void PrvFormShown(HWND window);
    void PrvMessageShown(HWND box);
    void PrvFileDialogShown(HWND dialog);

    /// The window of the form in front, else that of the last user control; null when nothing is there.
    [[nodiscard]] HWND PrvSurface() const;
    [[nodiscard]] Win32ControlSet* PrvControls() const;
    [[nodiscard]] HWND PrvFind(std::u16string_view name) const;
    /// A window that a person could act on; null, after a failure of the test where that was wrong.
    [[nodiscard]] HWND PrvReach(std::string_view act, std::u16string_view name) const;
    /// Null, too, for a window that is no grid's.
    [[nodiscard]] std::shared_ptr<Win32GridView> PrvReachGrid(std::string_view act,
                                                              std::u16string_view name) const;
    /// The place of a row to hit, after it was scrolled into sight; nothing, after a failure of the test,
    /// when there is no such row.
    [[nodiscard]] static std::optional<POINT> PrvTargetOfRow(std::string_view act, Win32GridView& view,
                                                             std::int32_t row);
    /// The form's bar; null without one.
    [[nodiscard]] const Win32ToolBar* PrvToolBar() const;

    Win32Watchdog m_watchdog;
    Win32Toolkit m_backend;
    std::deque<std::function<void()>> m_acts;
    std::deque<std::optional<MessageAnswer>> m_answers; // nothing stands for Esc
    std::deque<std::optional<std::u16string>> m_paths;
    std::function<void(HWND)> m_onMessage;
    std::vector<Message> m_messages;
    std::vector<FileDialog> m_fileDialogs;
    std::vector<HWND> m_acting; // forms whose acts are going on
    IUserControl* m_userControl = nullptr;
    HWND m_userControlWindow = nullptr;
    HWND m_host = nullptr; // what user controls lie in
    Win32Hands m_hands{*this};
    Win32Watch m_watch;
    ScopedToolkit m_inUse{*this};
};

} // namespace KestrinProductEditor
