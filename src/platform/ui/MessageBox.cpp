// SPDX-License-Identifier: MIT
#include "platform/ui/MessageBox.h"

#include "platform/Text.h"
#include "platform/ui/PlatformToolkit.h"
#include "platform/ui/Toolkit.h"

#include <iostream>
#include <string>

namespace KestrinProductEditor {

namespace {

thread_local IMessageBox* t_messageBox = nullptr;

class StandardErrorMessages final : public IMessageBox
{
public:
    MessageAnswer Show(std::u16string_view text, std::int32_t style, std::u16string_view title) override
    {
        std::u16string line(title);
        if (!line.empty())
            line += u": ";
        for (const char16_t unit : text) {
            if (unit == u'\r' || unit == u'\n') {
                if (!line.ends_with(u' '))
                    line += u' ';
            } else {
                line += unit;
            }
        }
        line += u'\n';
        // In one piece, so that the lines of two threads stay whole.
        std::cerr << ToUtf8(line) << std::flush;
        return CarefulAnswer(style);
    }
};

} // namespace

MessageAnswer CarefulAnswer(std::int32_t style) noexcept
{
    switch (style & ~kMessageSecondDefault) {
    case kMessageYesNoCancel:
        return MessageAnswer::Cancel;
    case kMessageYesNo:
        return MessageAnswer::No;
    default:
        return MessageAnswer::Ok;
    }
}

IMessageBox& MessageBoxes()
{
    // Never destroyed: it may be needed after the end of main.
    static auto& standardError = *new StandardErrorMessages;
    if (t_messageBox != nullptr)
        return *t_messageBox;
    IToolkit* const toolkit = ToolkitInUse();
    return toolkit != nullptr ? toolkit->Messages() : standardError;
}

ScopedMessageBox::ScopedMessageBox(IMessageBox& messageBox) : m_previous(t_messageBox)
{
    t_messageBox = &messageBox;
}

ScopedMessageBox::~ScopedMessageBox()
{
    t_messageBox = m_previous;
}

} // namespace KestrinProductEditor
