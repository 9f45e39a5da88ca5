// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"
#include "platform/ui/Form.h"
#include "platform/ui/GridBase.h"
#include "support/User.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

class ScriptedControls;

/// What every control does the same way.
template<class Interface>
class ScriptedControl : public Interface
{
public:
    explicit ScriptedControl(ScriptedControls& owner) : m_owner(owner) {}

    void SetFocus() override;
    [[nodiscard]] bool HasFocus() const override;
    void SetVisible(bool bVisible) override;
    [[nodiscard]] bool IsVisible() const override { return m_isVisible; }
    void SetEnabled(bool bEnabled) override;
    [[nodiscard]] bool IsEnabled() const override;
    void SetToolTip(std::u16string_view text) override { m_toolTip = text; }

private:
    ScriptedControls& m_owner;
    bool m_isVisible = true;
    bool m_isEnabled = true;
    std::u16string m_toolTip;
};

/// A box with a caret. The members that begin with User are what keys and mouse do.
class ScriptedTextBox final : public ScriptedControl<ITextBox>
{
public:
    enum class Lines
    {
        One,
        Many,
    };

    ScriptedTextBox(ScriptedControls& owner, Lines lines);

    void SetText(std::u16string_view text) override;
    [[nodiscard]] std::u16string Text() const override { return m_text; }
    void SetMaxLength(std::int32_t length) override { m_maxLength = length; }
    [[nodiscard]] std::int32_t MaxLength() const override { return m_maxLength; }
    void SetLocked(bool bLocked) override { m_isLocked = bLocked; }
    [[nodiscard]] bool IsLocked() const override { return m_isLocked; }
    void SetBackColor(std::uint32_t rgb) override { m_backColor = rgb; }
    [[nodiscard]] std::uint32_t BackColor() const override { return m_backColor; }
    void Select(std::int32_t start, std::int32_t length) override;
    [[nodiscard]] std::u16string SelectedText() const override;

    [[nodiscard]] bool HasManyLines() const { return m_lines == Lines::Many; }
    /// A key that stands for a character: raises KeyPress, then types it.
    void UserTypes(char32_t character);
    /// A key that stands for none, but for Backspace and Enter.
    void UserPresses(IUser::NamedKey key, IUser::Modifier modifier);
    void UserPressesControl(char letter, std::u16string& clipboard);
    void UserPutsCaretAtEnd() { PrvPlaceCaret(m_text.size()); }
    void UserSelectsAll();

private:
    [[nodiscard]] std::size_t PrvFirst() const { return std::min(m_anchor, m_caret); }
    [[nodiscard]] std::size_t PrvLast() const { return std::max(m_anchor, m_caret); }
    [[nodiscard]] std::size_t PrvRoom() const;
    [[nodiscard]] std::size_t PrvStepBack(std::size_t place) const;
    [[nodiscard]] std::size_t PrvStepOn(std::size_t place) const;
    void PrvPlaceCaret(std::size_t place);
    void PrvMoveCaret(std::size_t place, IUser::Modifier modifier);
    void PrvReplace(std::size_t first, std::size_t last, std::u16string_view text);
    void PrvPaste(std::u16string_view text);

    Lines m_lines;
    std::u16string m_text;
    std::size_t m_anchor = 0;
    std::size_t m_caret = 0;
    std::int32_t m_maxLength = 0;
    bool m_isLocked = false;
    std::uint32_t m_backColor = kWhite;
    std::vector<std::u16string> m_former; // what Ctrl+Z brings back
};

class ScriptedButton final : public ScriptedControl<IButton>
{
public:
    using ScriptedControl::ScriptedControl;

    void SetCaption(std::u16string_view caption) override { m_caption = caption; }
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }
    void SetShortcut(Shortcut shortcut) override { m_shortcut = shortcut; }

    [[nodiscard]] Shortcut ShortcutKey() const { return m_shortcut; }

private:
    std::u16string m_caption;
    Shortcut m_shortcut;
};

class ScriptedCheckBox final : public ScriptedControl<ICheckBox>
{
public:
    using ScriptedControl::ScriptedControl;

    void SetCaption(std::u16string_view caption) override { m_caption = caption; }
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }
    void SetValue(std::int32_t value) override;
    [[nodiscard]] std::int32_t Value() const override { return m_value; }

private:
    std::u16string m_caption;
    std::int32_t m_value = 0;
};

class ScriptedLabel final : public ScriptedControl<ILabel>
{
public:
    using ScriptedControl::ScriptedControl;

    void SetCaption(std::u16string_view caption) override { m_caption = caption; }
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }

private:
    std::u16string m_caption;
};

class ScriptedProgressBar final : public ScriptedControl<IProgressBar>
{
public:
    using ScriptedControl::ScriptedControl;

    void SetValue(std::int32_t value) override { m_value = value; }
    [[nodiscard]] std::int32_t Value() const override { return m_value; }
    void SetCaption(std::u16string_view caption) override { m_caption = caption; }
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }

private:
    std::int32_t m_value = 0;
    std::u16string m_caption;
};

class ScriptedGrid final : public ScriptedControl<GridBase>
{
public:
    using ScriptedControl::ScriptedControl;

    [[nodiscard]] std::int32_t MouseRow() const override;
    void FitColumns() override;

    /// What a click on a row does before the focus moves. Row 0 is the header.
    void UserClicksRow(std::int32_t row, IUser::Modifier modifier);
    void UserPresses(IUser::NamedKey key, IUser::Modifier modifier);
    void UserTypes(char32_t character);
    void UserPicks(std::int32_t row, std::int32_t col, std::int32_t number) { UserPicked(row, col, number); }
    void UserDragsColumn(std::int32_t col, std::int32_t twips) { UserResized(col, twips); }
    void UserMovesMouseAway() { m_mouseRow = -1; }
    /// The next letter begins a new name.
    void UserPausesTyping() { m_typed.clear(); }

protected:
    // Nothing is painted: what there is to see is read from GridBase.

    void ShowAll() override {}
    void ShowCells() override {}
    void ShowColumn(std::int32_t /*col*/) override {}
    void ShowCurrentRow() override {}
    void ShowSelection() override {}
    void ShowNotice() override {}
    void ShowRedraw() override {}

private:
    void PrvChoose(std::int32_t row, IUser::Modifier modifier);

    std::int32_t m_mouseRow = -1;
    std::int32_t m_anchor = -1; // where Shift extends the selection from
    std::u16string m_typed;
};

class ScriptedToolBar final : public ScriptedControl<IToolBar>
{
public:
    using ScriptedControl::ScriptedControl;

    void SetTools(std::span<const Tool> tools) override;
    void SetToolEnabled(std::u16string_view id, bool bEnabled) override;
    [[nodiscard]] bool IsToolEnabled(std::u16string_view id) const override;

    [[nodiscard]] bool HasTool(std::u16string_view id) const;
    /// Null for a header.
    [[nodiscard]] const Tool* FindItem(std::u16string_view id) const;
    /// Whether the user can choose it: neither it, nor its header, nor the bar is disabled or hidden.
    [[nodiscard]] bool CanChoose(std::u16string_view id) const;
    /// The tool that a key chooses now; nothing for none.
    [[nodiscard]] std::optional<std::u16string_view> ToolOf(Shortcut shortcut,
                                                            std::u16string_view focus) const;

private:
    struct State
    {
        Tool tool;
        bool isEnabled = true;
    };

    [[nodiscard]] const State* PrvFind(std::u16string_view id) const;

    std::vector<State> m_tools;
};

/// A frame around controls, or a picture: something that only has a place.
class ScriptedFrame final : public ScriptedControl<IControl>
{
public:
    using ScriptedControl::ScriptedControl;
};

/// The controls of one surface, as its layout lists them, and the focus among them.
class ScriptedControls
{
public:
    enum class Surface
    {
        Form,
        UserControl,
    };

    /// A control as the layout places it.
    struct Member
    {
        std::u16string_view name;
        std::unique_ptr<IControl> control;
        bool takesFocus;
        ControlPlace place;
    };

    /// Error 5 when no layout of that kind bears the name.
    ScriptedControls(std::u16string_view layout, Surface surface);
    ScriptedControls(const ScriptedControls&) = delete;
    ScriptedControls& operator=(const ScriptedControls&) = delete;
    ~ScriptedControls() = default;

    [[nodiscard]] std::u16string_view Layout() const { return m_layout; }
    /// In tab order.
    [[nodiscard]] const std::vector<Member>& Members() const { return m_members; }
    [[nodiscard]] const Member* Find(std::u16string_view name) const;
    /// "" for null.
    [[nodiscard]] std::u16string_view NameOf(const IControl* control) const;
    template<class Control>
    [[nodiscard]] Control& Get(std::u16string_view name)
    {
        const Member* const member = Find(name);
        Control* const control = member == nullptr ? nullptr : dynamic_cast<Control*>(member->control.get());
        if (control == nullptr)
            PrvRefuse();
        return *control;
    }

    [[nodiscard]] ControlPlace PlaceOf(std::u16string_view name) const;
    /// Error 5 for a negative width or height.
    void Move(std::u16string_view name, const ControlPlace& place);

    [[nodiscard]] bool IsBusy() const { return m_isBusy; }
    void SetBusy(bool bBusy);

    // The focus

    [[nodiscard]] IControl* Focused() const { return m_focused; }
    [[nodiscard]] bool CanTakeFocus(const IControl& control) const;
    void SetFirst(IControl& control) { m_first = &control; }
    void SetFocus(IControl& control);
    /// How often SetFocus was called for a control that could take it.
    [[nodiscard]] std::size_t FocusRequests() const { return m_focusRequests; }
    /// The surface was shown.
    void Begin();
    /// A form in front of it has closed.
    void Return();
    /// `control` was hidden or disabled.
    void Leave(const IControl& control);
    /// The control that Tab leads to, or Shift+Tab; null for none.
    [[nodiscard]] IControl* Neighbour(IUser::NamedKey tabOrBackTab) const;

private:
    [[noreturn]] static void PrvRefuse();
    void PrvMoveFocus(IControl* control);
    [[nodiscard]] IControl* PrvSubstitute() const;

    std::u16string_view m_layout;
    std::vector<Member> m_members;
    IControl* m_first = nullptr;
    IControl* m_focused = nullptr;
    std::size_t m_focusRequests = 0;
    bool m_isBusy = false;
};

template<class Interface>
void ScriptedControl<Interface>::SetFocus()
{
    m_owner.SetFocus(*this);
}

template<class Interface>
bool ScriptedControl<Interface>::HasFocus() const
{
    return m_owner.Focused() == this;
}

template<class Interface>
void ScriptedControl<Interface>::SetVisible(bool bVisible)
{
    m_isVisible = bVisible;
    if (!bVisible)
        m_owner.Leave(*this);
}

template<class Interface>
void ScriptedControl<Interface>::SetEnabled(bool bEnabled)
{
    m_isEnabled = bEnabled;
    if (!bEnabled)
        m_owner.Leave(*this);
}

template<class Interface>
bool ScriptedControl<Interface>::IsEnabled() const
{
    return m_isEnabled && !m_owner.IsBusy();
}

} // namespace KestrinProductEditor
