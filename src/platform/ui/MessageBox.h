// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string_view>

namespace KestrinProductEditor {

// The platform's style values that the component uses: an icon and a row of buttons. The first button is the
// default, unless kMessageSecondDefault is added.

/// A question with Yes, No and Cancel.
inline constexpr std::int32_t kMessageYesNoCancel = 35;
/// A question with Yes and No.
inline constexpr std::int32_t kMessageYesNo = 36;
/// An exclamation icon and an OK button only.
inline constexpr std::int32_t kMessageExclamation = 48;
/// An information icon and an OK button only.
inline constexpr std::int32_t kMessageInformation = 64;

/// Added to a style: the second button is the default, where the first one takes something away.
inline constexpr std::int32_t kMessageSecondDefault = 256;

/// The platform's answer values.
enum class MessageAnswer
{
    Ok = 1,
    Cancel = 2,
    Yes = 6,
    No = 7,
};

/// What Esc and the close button answer to a box of that style: Cancel where there is one, else No, else Ok.
[[nodiscard]] MessageAnswer CarefulAnswer(std::int32_t style) noexcept;

/// Shows a message and waits until it is answered.
class IMessageBox
{
public:
    virtual ~IMessageBox() = default;
    /// `style` is one of the platform's style values. Esc and the box's close button give CarefulAnswer.
    virtual MessageAnswer Show(std::u16string_view text, std::int32_t style, std::u16string_view title) = 0;
};

/// Where messages go on this thread: to a ScopedMessageBox, else to the toolkit when one is in use, else to
/// standard error, where every answer is the careful one.
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
