// SPDX-License-Identifier: MIT
#include "platform/qt/QtToolkit.h"

#include "platform/qt/QtFileDialog.h"
#include "platform/qt/QtForm.h"
#include "platform/qt/QtUserControl.h"

namespace KestrinProductEditor {

std::unique_ptr<IForm> QtToolkit::CreateForm(std::u16string_view name)
{
    return std::make_unique<QtForm>(name);
}

std::unique_ptr<IUserControl> QtToolkit::CreateUserControl(std::u16string_view name)
{
    return std::make_unique<QtUserControl>(name);
}

std::optional<std::u16string> QtToolkit::ChooseFile(const FileDialog& dialog)
{
    return ShowFileDialog(dialog);
}

} // namespace KestrinProductEditor
