// SPDX-License-Identifier: MIT
#include "platform/ui/PlatformToolkit.h"
#include "platform/ui/Toolkit.h"
#include "platform/windows/WideText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <windows.h>

namespace KestrinProductEditor {

namespace {

class WindowsMessages final : public IMessageBox
{
public:
    MessageAnswer Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override
    {
        const std::u16string shown(text);
        const std::u16string heading(title);
        // In front of whatever window of this thread the user works in.
        const int answer = MessageBoxW(GetActiveWindow(), Wide(shown.c_str()), Wide(heading.c_str()),
                                       static_cast<UINT>(style) | MB_SETFOREGROUND);
        // Esc is a Cancel also where there is no such button.
        return answer == 0 || answer == IDCANCEL ? CarefulAnswer(style) : static_cast<MessageAnswer>(answer);
    }
};

/// The system's own messages; it has no layouts of forms.
class WindowsToolkit final : public IToolkit
{
public:
    std::unique_ptr<IForm> CreateForm(std::u16string_view) override { PrvRefuse(); }
    std::unique_ptr<IUserControl> CreateUserControl(std::u16string_view) override { PrvRefuse(); }
    IMessageBox& Messages() override { return m_messages; }
    std::optional<std::u16string> ChooseFile(const FileDialog&) override { PrvRefuse(); }

private:
    [[noreturn]] static void PrvRefuse()
    {
        throw AutomationError(kErrActionNotSupported, {},
                              AutomationError::TextOf(kErrActionNotSupported) +
                                  u": this component was built without windows");
    }

    WindowsMessages m_messages;
};

// A program that never asked for a window wants its messages on standard error.
thread_local bool t_isInUse = false;

[[nodiscard]] WindowsToolkit& TheToolkit()
{
    // Never destroyed: messages may be open when the process ends.
    static auto& toolkit = *new WindowsToolkit;
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

} // namespace KestrinProductEditor
