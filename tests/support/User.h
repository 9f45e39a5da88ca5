// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Toolkit.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The person in front of the screen: acts on the form in front with mouse and keys, and reads what it shows.
/// Tests of forms are written for it and run on every toolkit.
///
/// Acts happen while a form is shown modally:
///
///     user->AtNextForm([&] { user->Click(u"cmdNew"); user->Type(u"Hammer"); user->Click(u"cmdSaveClose");
///     }); editor->Show({});
///
/// Where no form is shown, acts go to the user control that was created last.
///
/// An act on something that is hidden, disabled or not there fails the test. While a form is busy, and after
/// EndModal, acts do nothing and fail nothing: tests may try. A form that its acts leave open fails the test
/// and is closed by force; an entry of the script that nothing came for fails it, too.
class IUser
{
public:
    enum class NamedKey
    {
        Tab,
        BackTab,
        Enter,
        Escape,
        Backspace,
        Delete,
        Left,
        Right,
        Up,
        Down,
        Home,
        End,
        PageUp,
        PageDown,
        F2,
    };
    enum class Modifier
    {
        None,
        Control,
        Shift,
    };
    struct Message
    {
        std::u16string text;
        std::int32_t style;
        std::u16string title;

        friend bool operator==(const Message&, const Message&) = default;
    };

    virtual ~IUser() = default;

    /// The toolkit that this user sits at. It is in use on this thread while the user lives.
    [[nodiscard]] virtual IToolkit& Screen() = 0;

    // The script. Each entry serves one form, message or file dialog, first come first served.

    virtual void AtNextForm(std::function<void()> acts) = 0;
    /// The answer to the next message. A message without one fails the test and gets the careful answer.
    virtual void WillAnswer(MessageAnswer answer) = 0;
    /// Presses Esc at the next message instead.
    virtual void WillEscape() = 0;
    /// What the next file dialog ends with; nothing cancels it. One without an entry fails the test.
    virtual void WillChooseFile(std::optional<std::u16string> path) = 0;
    [[nodiscard]] virtual const std::vector<Message>& Messages() const = 0;
    [[nodiscard]] virtual const std::vector<FileDialog>& FileDialogs() const = 0;
    /// The layouts of the forms that are open, the one in front last.
    [[nodiscard]] virtual std::vector<std::u16string> OpenForms() const = 0;

    // Acts, on the form in front

    /// Presses and releases the left button on a button, check box or text box.
    virtual void Click(std::u16string_view control) = 0;
    virtual void DoubleClick(std::u16string_view control) = 0;
    /// A row of a grid, on its first visible column; row 0 is the header.
    virtual void ClickRow(std::u16string_view grid, std::int32_t row, Modifier modifier = Modifier::None) = 0;
    virtual void DoubleClickRow(std::u16string_view grid, std::int32_t row) = 0;
    /// Types characters, one key each, into whatever has the focus.
    virtual void Type(std::u16string_view text) = 0;
    virtual void Press(NamedKey key, Modifier modifier = Modifier::None) = 0;
    /// Ctrl with a letter (A to Z).
    virtual void PressControl(char letter) = 0;
    /// Commits a text that an input method has composed.
    virtual void Compose(std::u16string_view text) = 0;
    /// Opens the tool's menu and chooses it there.
    virtual void ChooseTool(std::u16string_view id) = 0;
    /// Presses the tool's button on the bar.
    virtual void ClickTool(std::u16string_view id) = 0;
    /// Opens a cell's drop-down with a click and chooses the entry with that number.
    virtual void PickInCell(std::u16string_view grid, std::int32_t row, std::int32_t col,
                            std::int32_t number) = 0;
    /// Drags a column's border until the column is so wide, to the nearest that the screen can show.
    virtual void DragColumn(std::u16string_view grid, std::int32_t col, std::int32_t twips) = 0;
    /// The title bar's close button.
    virtual void CloseWindow() = 0;
    virtual void DropFile(std::u16string_view path) = 0;
    /// Takes the focus to a control as the Tab key would, without a click.
    virtual void TabTo(std::u16string_view control) = 0;

    /// Gives a user control of this toolkit another size, as the window around it would. It is shown then.
    virtual void ResizeUserControl(IUserControl& control, float widthTwips, float heightTwips) = 0;

    virtual void SetClipboard(std::u16string_view text) = 0;
    [[nodiscard]] virtual std::u16string Clipboard() const = 0;

    // What the form in front shows

    /// The text of a box, the caption of anything else. Captions as they are read: "Save & Close".
    [[nodiscard]] virtual std::u16string TextOf(std::u16string_view control) const = 0;
    /// How far a progress bar is filled, in percent.
    [[nodiscard]] virtual std::int32_t ValueOf(std::u16string_view bar) const = 0;
    [[nodiscard]] virtual bool IsShown(std::u16string_view control) const = 0;
    [[nodiscard]] virtual bool IsEnabled(std::u16string_view control) const = 0;
    [[nodiscard]] virtual bool IsLocked(std::u16string_view box) const = 0;
    [[nodiscard]] virtual bool IsTicked(std::u16string_view box) const = 0;
    [[nodiscard]] virtual bool CanChooseTool(std::u16string_view id) const = 0;
    [[nodiscard]] virtual std::u16string Focus() const = 0;
    [[nodiscard]] virtual std::u16string WindowCaption() const = 0;
    /// What a grid's cell shows, formatted; row 0 is the header.
    [[nodiscard]] virtual std::u16string CellShown(std::u16string_view grid, std::int32_t row,
                                                   std::int32_t col) const = 0;
    /// The grid itself, for what has no look of its own (current row, selection, rows).
    [[nodiscard]] virtual IGrid& Grid(std::u16string_view name) = 0;
};

/// The user of the toolkit that this test program is built with.
[[nodiscard]] std::unique_ptr<IUser> MakeUser();

} // namespace KestrinProductEditor
