// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtMessageBox.h"
#include "platform/ui/Toolkit.h"

namespace KestrinProductEditor {

/// The windows of Qt. Requires a QApplication and its thread.
class QtToolkit final : public IToolkit
{
public:
    [[nodiscard]] std::unique_ptr<IForm> CreateForm(std::u16string_view name) override;
    [[nodiscard]] std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override;
    [[nodiscard]] IMessageBox& Messages() override { return m_messages; }
    [[nodiscard]] std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override;

private:
    QtMessageBox m_messages;
};

} // namespace KestrinProductEditor
