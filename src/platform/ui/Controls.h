// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Event.h"
#include "platform/ui/Shortcut.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// The controls of a window, as a form sees them: text, locked, value, never a pixel.
///
/// The event contract, the same for every toolkit:
///
/// 1. Change, Click and RowColChange hear the form's own writes as they hear the user. A write that changes
///    nothing raises nothing.
/// 2. SetFocus delivers LostFocus of the old control and then GotFocus of the new one before it returns, also
///    where the window is not active or not even shown yet. Focus that stays where it is delivers nothing.
/// 3. Activating a window, menus, message boxes and file dialogs deliver neither. When one of the component's
/// own
///    modal forms has closed, the focused control of the form below hears GotFocus.
/// 4. When a form is shown, its first control (IForm::SetFirstFocus; without one, the first that Tab would
///    find) hears GotFocus once, even where no window is ever activated. Focus that SetFocus gave to a
///    control before stays there, and nothing more is told.
/// 5. A control that is hidden or disabled while it has the focus hands it to the form's first control (with
///    the events of 2), or, when that one is hidden or disabled, to the first that Tab would find; a control
///    that cannot take the focus ignores SetFocus.
/// 6. A click, with a key too, gives its control the focus before Click. A click into a list delivers
///    RowColChange first, LostFocus and GotFocus after it; where the handler of RowColChange sets the focus
///    itself, it stays there. Gaining the focus chooses no row.
/// 7. The keys of tools and buttons (Shortcut), Esc and the default button are taken before KeyPress. While a
///    control is disabled or hidden, or a form is busy, its keys do nothing.
/// 8. Text in is text out: CR LF, LF, CR, tabs, no-break blanks, blanks at the ends and every other character
///    survive a box. A line break that is typed is CR LF.
namespace KestrinProductEditor {

class IControl
{
public:
    IControl() = default;
    IControl(const IControl&) = delete;
    IControl& operator=(const IControl&) = delete;
    virtual ~IControl() = default;

    virtual void SetFocus() = 0;
    [[nodiscard]] virtual bool HasFocus() const = 0;
    virtual void SetVisible(bool bVisible) = 0;
    /// Whether it is shown when its form is.
    [[nodiscard]] virtual bool IsVisible() const = 0;
    virtual void SetEnabled(bool bEnabled) = 0;
    [[nodiscard]] virtual bool IsEnabled() const = 0;
    /// Says more than the control can show at once; empty for none.
    virtual void SetToolTip(std::u16string_view text) = 0;

    Event<> GotFocus;
    Event<> LostFocus;
};

/// The backgrounds of a text box, as 0xRRGGBB. The text on them is dark whatever the theme.
inline constexpr std::uint32_t kWhite = 0xFFFFFF;
inline constexpr std::uint32_t kLightGrey = 0xC0C0C0;

class ITextBox : public IControl
{
public:
    virtual void SetText(std::u16string_view text) = 0;
    [[nodiscard]] virtual std::u16string Text() const = 0;
    /// The most characters (UTF-16 units) that can be typed or pasted; 0 for no limit. What takes two units,
    /// an astral character or a line break, is let in whole or not at all. SetText is not cut.
    virtual void SetMaxLength(std::int32_t length) = 0;
    [[nodiscard]] virtual std::int32_t MaxLength() const = 0;
    /// A locked box can have the focus and be copied from, but not typed into.
    virtual void SetLocked(bool bLocked) = 0;
    [[nodiscard]] virtual bool IsLocked() const = 0;
    virtual void SetBackColor(std::uint32_t rgb) = 0;
    [[nodiscard]] virtual std::uint32_t BackColor() const = 0;
    /// Selects `length` characters from `start` (0 is the first); what lies outside the text is left out.
    virtual void Select(std::int32_t start, std::int32_t length) = 0;
    [[nodiscard]] virtual std::u16string SelectedText() const = 0;

    Event<> Change;
    Event<> DblClick;
    /// A character is about to be typed: also Backspace (8), Enter (13), and Ctrl with a letter as 1 to 26.
    /// Ctrl+C, Ctrl+X and Ctrl+V come as 3, 24 and 22, Ctrl+Z and Ctrl+A as 26 and 1. Setting it to 0
    /// swallows it. Arrows, Home, End, Delete, Tab and function keys are no characters. What an input method
    /// composes comes character by character, an astral one once, as its code point. Pasted text does not
    /// come. A locked box raises it, too.
    Event<std::int32_t&> KeyPress;
};

class IButton : public IControl
{
public:
    /// "&&" stands for "&". The toolkit underlines a letter of its choice, no two alike in a window.
    virtual void SetCaption(std::u16string_view caption) = 0;
    [[nodiscard]] virtual std::u16string Caption() const = 0;
    /// The key that clicks the button from anywhere in its window.
    virtual void SetShortcut(Shortcut shortcut) = 0;

    Event<> Click;
};

class ICheckBox : public IControl
{
public:
    /// As of IButton.
    virtual void SetCaption(std::u16string_view caption) = 0;
    [[nodiscard]] virtual std::u16string Caption() const = 0;
    /// 1 ticked, 0 not; 0 in the beginning. Raises Click when the value is another than before.
    virtual void SetValue(std::int32_t value) = 0;
    [[nodiscard]] virtual std::int32_t Value() const = 0;

    Event<> Click;
};

class ILabel : public IControl
{
public:
    /// Shown letter for letter, "&" too. A label in front of a box gives the box its name and its mnemonic.
    virtual void SetCaption(std::u16string_view caption) = 0;
    [[nodiscard]] virtual std::u16string Caption() const = 0;
};

/// A bar from 0 to 100 with a caption on it.
class IProgressBar : public IControl
{
public:
    virtual void SetValue(std::int32_t value) = 0;
    [[nodiscard]] virtual std::int32_t Value() const = 0;
    virtual void SetCaption(std::u16string_view caption) = 0;
    [[nodiscard]] virtual std::u16string Caption() const = 0;
};

enum class ToolIcon
{
    None,
    Import,
    Export,
    NewProduct,
    EditProduct,
    Delete,
    SelectAll,
};

/// A tool of a toolbar: the header of a menu, or an item under one, which has a button on the bar, too.
struct Tool
{
    std::u16string_view id;
    std::u16string_view caption;          ///< as of IButton
    std::u16string_view menu = {};        ///< the id of the header it lies under; empty for a header
    std::vector<Shortcut> shortcuts = {}; ///< the first is the one that the menu shows
    ToolIcon icon = ToolIcon::None;
    /// The shortcuts act only while this control has the focus (its name); empty: anywhere in the window.
    std::u16string_view onlyIn = {};
    /// A line stands above it in the menu, and a gap before its button.
    bool beginsGroup = false;
};

/// A menu bar with a row of tool buttons. A disabled header takes its items along, with their buttons and
/// keys.
class IToolBar : public IControl
{
public:
    /// The tools, each header before its items. Called once. The texts must outlive the bar.
    virtual void SetTools(std::span<const Tool> tools) = 0;
    /// Error 5 for an id that no tool has; ids are compared letter by letter.
    virtual void SetToolEnabled(std::u16string_view id, bool bEnabled) = 0;
    /// What was set for it: an item under a disabled header may say true.
    [[nodiscard]] virtual bool IsToolEnabled(std::u16string_view id) const = 0;

    /// A tool was chosen: its id. Headers raise it as well, when their menu opens.
    Event<std::u16string_view> ToolClick;
};

} // namespace KestrinProductEditor
