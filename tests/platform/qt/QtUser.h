// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtGridView.h"
#include "platform/qt/QtToolkit.h"
#include "platform/ui/GridBase.h"
#include "support/User.h"

#include <QAction>
#include <QFileDialog>
#include <QMessageBox>
#include <QObject>
#include <QTimer>
#include <QWidget>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The user in front of the windows of Qt: mouse and keys are real events, message boxes and file dialogs
/// real dialogs that are answered when they are shown.
///
/// An overwrite question of a file dialog is answered with Yes and is no message of the component's.
class QtUser final : public QObject, public IUser, private IToolkit
{
public:
    QtUser();
    QtUser(const QtUser&) = delete;
    QtUser& operator=(const QtUser&) = delete;
    /// Fails the test for every entry of the script that nothing came for.
    ~QtUser() override;

    [[nodiscard]] IToolkit& Screen() override { return *this; }

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

protected:
    /// Waits for what is shown.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // IToolkit, between the component and its windows

    [[nodiscard]] std::unique_ptr<IForm> CreateForm(std::u16string_view name) override;
    [[nodiscard]] std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override;
    [[nodiscard]] IMessageBox& Messages() override { return m_backend.Messages(); }
    [[nodiscard]] std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override;

    void PrvFormShown(QWidget& window);
    void PrvMessageShown(QMessageBox& box);
    void PrvFileDialogShown(QFileDialog& dialog);

    /// The window of the form in front, else the widget of the last user control; null when nothing is there.
    [[nodiscard]] QWidget* PrvSurface() const;
    [[nodiscard]] IControlSet* PrvControls() const;
    [[nodiscard]] QWidget* PrvFind(std::u16string_view name) const;
    /// A widget that a person could act on; null, after a failure of the test where that was wrong.
    [[nodiscard]] QWidget* PrvReach(std::string_view act, std::u16string_view name) const;
    [[nodiscard]] QtGridView* PrvReachGrid(std::string_view act, std::u16string_view name) const;
    [[nodiscard]] QAction* PrvTool(std::u16string_view id) const;
    void PrvSendKey(int key, Qt::KeyboardModifiers modifiers, const QString& text);

    QtToolkit m_backend;
    std::deque<std::function<void()>> m_acts;
    std::deque<std::optional<MessageAnswer>> m_answers; // nothing stands for Esc
    std::deque<std::optional<std::u16string>> m_paths;
    std::vector<Message> m_messages;
    std::vector<FileDialog> m_fileDialogs;
    IUserControl* m_userControl = nullptr;
    QTimer m_watchdog;
    ScopedToolkit m_inUse{*this};
};

} // namespace KestrinProductEditor
