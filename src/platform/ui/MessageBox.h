// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace KestrinProductEditor {

/// An exclamation icon and an OK button only.
inline constexpr std::int32_t kMessageExclamation = 48;

/// Shows a message and waits until it is answered. `style` is the platform's style value.
class IMessageBox
{
public:
    virtual ~IMessageBox() = default;
    virtual void Show(std::u16string_view text, std::int32_t style, std::u16string_view title) = 0;
};

/// The toolkit's message box or, where no toolkit is present, one that writes to standard error.
[[nodiscard]] IMessageBox& MessageBoxes();

/// Puts another message box in its place on this thread, until the end of the scope.
class ScopedMessageBox
{
public:
    explicit ScopedMessageBox(IMessageBox& messageBox);
    ScopedMessageBox(const ScopedMessageBox&) = delete;
    ScopedMessageBox& operator=(const ScopedMessageBox&) = delete;
    ~ScopedMessageBox();

private:
    IMessageBox* m_previous;
};

} // namespace KestrinProductEditor
