// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Toolkit.h"
#include "platform/win32/Win32MessageBox.h"

namespace KestrinProductEditor {

/// The system's own windows. Each belongs to the thread that asks for it.
class Win32Toolkit final : public IToolkit
{
public:
    Win32Toolkit();

    [[nodiscard]] std::unique_ptr<IForm> CreateForm(std::u16string_view name) override;
    [[nodiscard]] std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view name) override;
    [[nodiscard]] IMessageBox& Messages() override { return m_messages; }
    [[nodiscard]] std::optional<std::u16string> ChooseFile(const FileDialog& dialog) override;

private:
    Win32MessageBox m_messages;
};

} // namespace KestrinProductEditor
