// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Toolkit.h"

#include "platform/ui/PlatformToolkit.h"
#include "platform/win32/Win32FileDialog.h"
#include "platform/win32/Win32Form.h"
#include "platform/win32/Win32UserControl.h"

namespace KestrinProductEditor {

namespace {

// A program that never asked for a window wants its messages on standard error.
thread_local bool t_isInUse = false;

[[nodiscard]] Win32Toolkit& TheToolkit()
{
    // Never destroyed: messages may be open when the process ends.
    static auto& toolkit = *new Win32Toolkit;
    return toolkit;
}

} // namespace

IToolkit& PlatformToolkit()
{
    t_isInUse = true;
    return TheToolkit();
}

IToolkit* LoadedPlatformToolkit() noexcept
{
    return t_isInUse ? &TheToolkit() : nullptr;
}

Win32Toolkit::Win32Toolkit() : m_messages(&Win32Form::FrontWindow) {}

std::unique_ptr<IForm> Win32Toolkit::CreateForm(std::u16string_view name)
{
    return std::make_unique<Win32Form>(name);
}

std::unique_ptr<IUserControl> Win32Toolkit::CreateUserControl(std::u16string_view name)
{
    return std::make_unique<Win32UserControl>(name);
}

std::optional<std::u16string> Win32Toolkit::ChooseFile(const FileDialog& dialog)
{
    return ShowFileDialog(dialog, Win32Form::FrontWindow());
}

} // namespace KestrinProductEditor
