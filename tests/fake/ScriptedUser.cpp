// SPDX-License-Identifier: MIT
#include "fake/ScriptedUser.h"

#include "platform/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>

namespace KestrinProductEditor {

namespace {

// The low bits of a message's style tell its buttons.
constexpr std::int32_t kButtonsOfStyle = 0xF;

std::vector<MessageAnswer> AnswersOf(std::int32_t style)
{
    switch (style & kButtonsOfStyle) {
    case kMessageYesNoCancel& kButtonsOfStyle:
        return {MessageAnswer::Yes, MessageAnswer::No, MessageAnswer::Cancel};
    case kMessageYesNo& kButtonsOfStyle:
        return {MessageAnswer::Yes, MessageAnswer::No};
    default:
        return {MessageAnswer::Ok};
    }
}

std::u16string WithSingleAmpersands(std::u16string_view caption)
{
    std::u16string text;
    for (std::size_t place = 0; place < caption.size(); ++place) {
        text += caption[place];
        if (caption.substr(place).starts_with(u"&&"))
            ++place;
    }
    return text;
}

std::u32string CodePointsOf(std::u16string_view text)
{
    std::u32string characters;
    for (std::size_t place = 0; place < text.size(); ++place) {
        const char32_t unit = text[place];
        if (unit >= 0xD800 && unit < 0xDC00 && place + 1 < text.size()) {
            ++place;
            characters += 0x10000 + ((unit - 0xD800) << 10) + (char32_t{text[place]} - 0xDC00);
        } else {
            characters += unit;
        }
    }
    return characters;
}

Key KeyOf(char letter)
{
    switch (letter) {
    case 'A':
        return Key::A;
    case 'E':
        return Key::E;
    case 'I':
        return Key::I;
    case 'N':
        return Key::N;
    case 'S':
        return Key::S;
    default:
        return Key::None;
    }
}

Key KeyOf(IUser::NamedKey key)
{
    switch (key) {
    case IUser::NamedKey::F2:
        return Key::F2;
    case IUser::NamedKey::Enter:
        return Key::Enter;
    case IUser::NamedKey::Delete:
        return Key::Delete;
    default:
        return Key::None;
    }
}

void Fail(std::string_view act, std::u16string_view name, std::string_view reason)
{
    ADD_FAILURE() << act << " " << ToUtf8(name) << ": " << reason;
}

} // namespace

ScriptedUser::ScriptedUser() : m_toolkit(*this), m_inUse(m_toolkit) {}

ScriptedUser::~ScriptedUser()
{
    EXPECT_TRUE(m_acts.empty()) << m_acts.size() << " forms never came";
    EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " messages never came";
    EXPECT_TRUE(m_paths.empty()) << m_paths.size() << " file dialogs never came";
}

void ScriptedUser::AtNextForm(std::function<void()> acts)
{
    m_acts.push_back(std::move(acts));
}

void ScriptedUser::WillAnswer(MessageAnswer answer)
{
    m_answers.emplace_back(answer);
}

void ScriptedUser::WillEscape()
{
    m_answers.emplace_back(std::nullopt);
}

void ScriptedUser::WillChooseFile(std::optional<std::u16string> path)
{
    m_paths.push_back(std::move(path));
}

std::vector<std::u16string> ScriptedUser::OpenForms() const
{
    std::vector<std::u16string> layouts;
    for (const ScriptedForm* const form : m_toolkit.Forms()) {
        if (form->IsOpen())
            layouts.emplace_back(form->Controls().Layout());
    }
    return layouts;
}

void ScriptedUser::FormShown(ScriptedForm& form)
{
    if (m_acts.empty()) {
        Fail("ShowModal", form.Controls().Layout(), "nobody expected this form");
        return;
    }
    const std::function<void()> acts = std::move(m_acts.front());
    m_acts.pop_front();
    try {
        acts();
    } catch (const std::exception& error) {
        Fail("ShowModal", form.Controls().Layout(), error.what());
    }
    if (form.IsOpen())
        Fail("ShowModal", form.Controls().Layout(), "the acts left the form open");
}

MessageAnswer ScriptedUser::MessageShown(const Message& message)
{
    m_messages.push_back(message);
    if (m_answers.empty()) {
        Fail("Message", message.text, "nobody expected this message");
        return CarefulAnswer(message.style);
    }
    const std::optional<MessageAnswer> answer = m_answers.front();
    m_answers.pop_front();
    if (!answer)
        return CarefulAnswer(message.style);
    const std::vector<MessageAnswer> possible = AnswersOf(message.style);
    if (std::ranges::find(possible, *answer) == possible.end()) {
        Fail("Message", message.text, "it has no button for the answer");
        return CarefulAnswer(message.style);
    }
    return *answer;
}

std::optional<std::u16string> ScriptedUser::FileAsked(const FileDialog& dialog)
{
    m_fileDialogs.push_back(dialog);
    if (m_paths.empty()) {
        Fail("ChooseFile", dialog.title, "nobody expected this file dialog");
        return std::nullopt;
    }
    std::optional<std::u16string> path = std::move(m_paths.front());
    m_paths.pop_front();
    return path;
}

ScriptedForm* ScriptedUser::PrvForm() const
{
    return m_toolkit.Forms().empty() ? nullptr : m_toolkit.Forms().back();
}

ScriptedControls* ScriptedUser::PrvControls() const
{
    if (ScriptedForm* const form = PrvForm())
        return &form->Controls();
    return m_toolkit.UserControls().empty() ? nullptr : &m_toolkit.UserControls().back()->Controls();
}

/// Whether acts have an effect now. A form that has ended or is busy ignores them, as a screen does: tests
/// may try.
bool ScriptedUser::PrvIsListening(std::string_view act) const
{
    if (PrvControls() == nullptr) {
        Fail(act, {}, "no form is shown");
        return false;
    }
    const ScriptedForm* const form = PrvForm();
    return form == nullptr || (form->IsOpen() && !form->Controls().IsBusy());
}

ScriptedToolBar* ScriptedUser::PrvToolBar() const
{
    for (const ScriptedControls::Member& member : PrvControls()->Members()) {
        if (auto* const bar = dynamic_cast<ScriptedToolBar*>(member.control.get()))
            return bar;
    }
    return nullptr;
}

/// The control of that kind with that name; a failed test and null when there is none.
template<class Control>
Control* ScriptedUser::PrvLookUp(std::u16string_view name) const
{
    const ScriptedControls* const controls = PrvControls();
    if (controls == nullptr) {
        Fail("Looking at", name, "no form is shown");
        return nullptr;
    }
    const ScriptedControls::Member* const member = controls->Find(name);
    auto* const control = member == nullptr ? nullptr : dynamic_cast<Control*>(member->control.get());
    if (control == nullptr)
        Fail("Looking at", name, "the form in front has no such control");
    return control;
}

bool ScriptedUser::PrvCanReach(const IControl& control) const
{
    const ScriptedForm* const form = PrvForm();
    return (form == nullptr || form->IsOpen()) && control.IsVisible() && control.IsEnabled();
}

/// The control of that kind with that name when the user can act on it; null when the form ignores acts, and
/// a failed test when the control is not there, hidden or disabled.
template<class Control>
Control* ScriptedUser::PrvReach(std::string_view act, std::u16string_view name)
{
    if (!PrvIsListening(act))
        return nullptr;
    PrvPauseTyping();
    Control* const control = PrvLookUp<Control>(name);
    if (control == nullptr)
        return nullptr;
    if (!PrvCanReach(*control)) {
        Fail(act, name, control->IsVisible() ? "it is disabled" : "it is hidden");
        return nullptr;
    }
    return control;
}

void ScriptedUser::PrvPauseTyping()
{
    for (const ScriptedControls::Member& member : PrvControls()->Members()) {
        if (auto* const grid = dynamic_cast<ScriptedGrid*>(member.control.get()))
            grid->UserPausesTyping();
    }
}

void ScriptedUser::PrvMoveMouseTo(const IControl& control)
{
    for (const ScriptedControls::Member& member : PrvControls()->Members()) {
        auto* const grid = dynamic_cast<ScriptedGrid*>(member.control.get());
        if (grid != nullptr && grid != &control)
            grid->UserMovesMouseAway();
    }
}

/// The mouse, or the key that does as much, is pressed on it.
void ScriptedUser::PrvPress(IControl& control)
{
    if (!PrvCanReach(control))
        return;
    control.SetFocus();
    // What the focus brought about may have hidden, disabled or ended it.
    if (!PrvCanReach(control))
        return;
    if (auto* const button = dynamic_cast<ScriptedButton*>(&control))
        button->Click.Raise();
    else if (auto* const box = dynamic_cast<ScriptedCheckBox*>(&control))
        box->SetValue(1 - box->Value());
}

void ScriptedUser::Click(std::u16string_view control)
{
    auto* const target = PrvReach<IControl>("Click", control);
    if (target == nullptr)
        return;
    if (!PrvControls()->CanTakeFocus(*target) || dynamic_cast<IGrid*>(target) != nullptr) {
        Fail("Click", control, "it is no button, check box or text box");
        return;
    }
    PrvMoveMouseTo(*target);
    if (auto* const box = dynamic_cast<ScriptedTextBox*>(target))
        box->UserPutsCaretAtEnd();
    PrvPress(*target);
}

void ScriptedUser::DoubleClick(std::u16string_view control)
{
    auto* const target = PrvReach<IControl>("DoubleClick", control);
    if (target == nullptr)
        return;
    Click(control);
    // What the first half has hidden, disabled or ended does not hear the second.
    if (!PrvCanReach(*target))
        return;
    if (auto* const box = dynamic_cast<ScriptedTextBox*>(target))
        box->DblClick.Raise();
    else
        PrvPress(*target);
}

void ScriptedUser::PrvClickGridRow(ScriptedGrid& grid, std::int32_t row, Modifier modifier)
{
    PrvMoveMouseTo(grid);
    const std::size_t requests = PrvControls()->FocusRequests();
    grid.UserClicksRow(row, modifier);
    // A handler of RowColChange that has set the focus has the last word.
    if (PrvCanReach(grid) && PrvControls()->FocusRequests() == requests)
        grid.SetFocus();
}

void ScriptedUser::ClickRow(std::u16string_view grid, std::int32_t row, Modifier modifier)
{
    auto* const target = PrvReach<ScriptedGrid>("ClickRow", grid);
    if (target == nullptr)
        return;
    if (row < 0 || row >= target->Rows())
        Fail("ClickRow", grid, "it has no row " + std::to_string(row));
    else
        PrvClickGridRow(*target, row, modifier);
}

void ScriptedUser::DoubleClickRow(std::u16string_view grid, std::int32_t row)
{
    auto* const target = PrvReach<ScriptedGrid>("DoubleClickRow", grid);
    if (target == nullptr)
        return;
    if (row < 0 || row >= target->Rows()) {
        Fail("DoubleClickRow", grid, "it has no row " + std::to_string(row));
        return;
    }
    PrvClickGridRow(*target, row, Modifier::None);
    if (PrvCanReach(*target))
        target->DblClick.Raise();
}

void ScriptedUser::PrvTypeCharacter(char32_t character)
{
    IControl* const focused = PrvControls()->Focused();
    if (auto* const box = dynamic_cast<ScriptedTextBox*>(focused))
        box->UserTypes(character);
    else if (auto* const grid = dynamic_cast<ScriptedGrid*>(focused))
        grid->UserTypes(character);
    else if (focused == nullptr)
        Fail("Type", {}, "nothing has the focus");
    else if (character == U' ')
        PrvPress(*focused);
}

void ScriptedUser::Type(std::u16string_view text)
{
    for (const char32_t character : CodePointsOf(text)) {
        if (!PrvIsListening("Type"))
            return;
        if (character == U'\r')
            Press(NamedKey::Enter, Modifier::None);
        else if (character == U'\t')
            Press(NamedKey::Tab, Modifier::None);
        else
            PrvTypeCharacter(character);
    }
}

void ScriptedUser::Compose(std::u16string_view text)
{
    for (const char32_t character : CodePointsOf(text)) {
        if (!PrvIsListening("Compose"))
            return;
        PrvTypeCharacter(character);
    }
}

bool ScriptedUser::PrvTakeShortcut(Shortcut shortcut)
{
    if (shortcut.key == Key::None)
        return false;
    ScriptedControls& controls = *PrvControls();
    if (ScriptedToolBar* const bar = PrvToolBar()) {
        if (const auto id = bar->ToolOf(shortcut, controls.NameOf(controls.Focused()))) {
            bar->ToolClick.Raise(*id);
            return true;
        }
    }
    for (const ScriptedControls::Member& member : controls.Members()) {
        auto* const button = dynamic_cast<ScriptedButton*>(member.control.get());
        if (button != nullptr && button->ShortcutKey() == shortcut && PrvCanReach(*button)) {
            PrvPress(*button);
            return true;
        }
    }
    return false;
}

void ScriptedUser::PrvPressEnter()
{
    IControl* const focused = PrvControls()->Focused();
    auto* const box = dynamic_cast<ScriptedTextBox*>(focused);
    auto* const button = dynamic_cast<ScriptedButton*>(focused);
    const ScriptedForm* const form = PrvForm();
    IButton* const defaultButton = form == nullptr ? nullptr : form->DefaultButton();
    if (button != nullptr)
        PrvPress(*button);
    else if (box != nullptr && box->HasManyLines())
        box->UserTypes(U'\r');
    else if (defaultButton != nullptr && PrvCanReach(*defaultButton))
        PrvPress(*defaultButton);
    else if (box != nullptr)
        box->UserTypes(U'\r');
}

void ScriptedUser::PrvTabInto(IControl& control)
{
    if (auto* const box = dynamic_cast<ScriptedTextBox*>(&control); box != nullptr && !box->HasManyLines())
        box->UserSelectsAll();
    control.SetFocus();
}

void ScriptedUser::Press(NamedKey key, Modifier modifier)
{
    if (!PrvIsListening("Press"))
        return;
    PrvPauseTyping();
    if (PrvTakeShortcut({.key = KeyOf(key), .control = modifier == Modifier::Control}))
        return;
    ScriptedControls& controls = *PrvControls();
    if (key == NamedKey::Escape) {
        if (const ScriptedForm* const form = PrvForm())
            form->Escape.Raise();
    } else if (key == NamedKey::Tab || key == NamedKey::BackTab) {
        if (IControl* const next = controls.Neighbour(key))
            PrvTabInto(*next);
    } else if (key == NamedKey::Enter) {
        PrvPressEnter();
    } else if (auto* const box = dynamic_cast<ScriptedTextBox*>(controls.Focused())) {
        if (key == NamedKey::Backspace)
            box->UserTypes(U'\b');
        else
            box->UserPresses(key, modifier);
    } else if (auto* const grid = dynamic_cast<ScriptedGrid*>(controls.Focused())) {
        grid->UserPresses(key, modifier);
    }
}

void ScriptedUser::PressControl(char letter)
{
    if (!PrvIsListening("PressControl"))
        return;
    PrvPauseTyping();
    if (PrvTakeShortcut(Ctrl(KeyOf(letter))))
        return;
    if (auto* const box = dynamic_cast<ScriptedTextBox*>(PrvControls()->Focused()))
        box->UserPressesControl(letter, m_clipboard);
}

void ScriptedUser::ChooseTool(std::u16string_view id)
{
    if (!PrvIsListening("ChooseTool"))
        return;
    PrvPauseTyping();
    const ScriptedToolBar* const bar = PrvToolBar();
    if (bar == nullptr || !bar->CanChoose(id)) {
        Fail("ChooseTool", id, "it is disabled, or there is no such tool");
        return;
    }
    const Tool* const item = bar->FindItem(id);
    bar->ToolClick.Raise(item == nullptr ? id : item->menu);
    if (item == nullptr)
        return;
    if (bar->CanChoose(id) && PrvIsListening("ChooseTool"))
        bar->ToolClick.Raise(id);
    else
        Fail("ChooseTool", id, "it was disabled while its menu opened");
}

void ScriptedUser::ClickTool(std::u16string_view id)
{
    if (!PrvIsListening("ClickTool"))
        return;
    PrvPauseTyping();
    const ScriptedToolBar* const bar = PrvToolBar();
    if (bar == nullptr || bar->FindItem(id) == nullptr || !bar->CanChoose(id))
        Fail("ClickTool", id, "it is disabled, or there is no such button");
    else
        bar->ToolClick.Raise(id);
}

void ScriptedUser::PickInCell(std::u16string_view grid, std::int32_t row, std::int32_t col,
                              std::int32_t number)
{
    auto* const target = PrvReach<ScriptedGrid>("PickInCell", grid);
    if (target == nullptr)
        return;
    if (row < 1 || row >= target->Rows() || col < 0 || col >= target->Cols() || target->IsColHidden(col)) {
        Fail("PickInCell", grid, "it shows no such cell");
        return;
    }
    const auto& entries = target->ComboList(col);
    if (std::ranges::find(entries, number, &GridBase::ComboEntry::number) == entries.end()) {
        Fail("PickInCell", grid, "its list has no entry " + std::to_string(number));
        return;
    }
    PrvClickGridRow(*target, row, Modifier::None);
    if (PrvCanReach(*target))
        target->UserPicks(row, col, number);
}

void ScriptedUser::DragColumn(std::u16string_view grid, std::int32_t col, std::int32_t twips)
{
    auto* const target = PrvReach<ScriptedGrid>("DragColumn", grid);
    if (target == nullptr)
        return;
    if (col < 0 || col >= target->Cols() || target->IsColHidden(col))
        Fail("DragColumn", grid, "it shows no such column");
    else
        target->UserDragsColumn(col, twips);
}

void ScriptedUser::CloseWindow()
{
    if (!PrvIsListening("CloseWindow"))
        return;
    if (const ScriptedForm* const form = PrvForm())
        form->CloseBox.Raise();
    else
        Fail("CloseWindow", {}, "no form is shown");
}

void ScriptedUser::DropFile(std::u16string_view path)
{
    if (!PrvIsListening("DropFile"))
        return;
    if (const ScriptedForm* const form = PrvForm())
        form->FileDrop.Raise(path);
    else
        Fail("DropFile", path, "no form is shown");
}

void ScriptedUser::TabTo(std::u16string_view control)
{
    auto* const target = PrvReach<IControl>("TabTo", control);
    if (target == nullptr)
        return;
    if (PrvControls()->CanTakeFocus(*target))
        PrvTabInto(*target);
    else
        Fail("TabTo", control, "it never has the focus");
}

std::u16string ScriptedUser::TextOf(std::u16string_view control) const
{
    const auto* const target = PrvLookUp<IControl>(control);
    if (const auto* const box = dynamic_cast<const ITextBox*>(target))
        return box->Text();
    if (const auto* const button = dynamic_cast<const IButton*>(target))
        return WithSingleAmpersands(button->Caption());
    if (const auto* const box = dynamic_cast<const ICheckBox*>(target))
        return WithSingleAmpersands(box->Caption());
    if (const auto* const label = dynamic_cast<const ILabel*>(target))
        return label->Caption();
    if (const auto* const bar = dynamic_cast<const IProgressBar*>(target))
        return bar->Caption();
    if (const auto* const grid = dynamic_cast<const IGrid*>(target))
        return grid->Notice();
    return {};
}

std::int32_t ScriptedUser::ValueOf(std::u16string_view bar) const
{
    const auto* const target = PrvLookUp<IProgressBar>(bar);
    return target == nullptr ? 0 : target->Value();
}

bool ScriptedUser::IsShown(std::u16string_view control) const
{
    const auto* const target = PrvLookUp<IControl>(control);
    const ScriptedForm* const form = PrvForm();
    return target != nullptr && (form == nullptr || form->IsOpen()) && target->IsVisible();
}

bool ScriptedUser::IsEnabled(std::u16string_view control) const
{
    const auto* const target = PrvLookUp<IControl>(control);
    return target != nullptr && target->IsEnabled();
}

bool ScriptedUser::IsLocked(std::u16string_view box) const
{
    const auto* const target = PrvLookUp<ITextBox>(box);
    return target != nullptr && target->IsLocked();
}

bool ScriptedUser::IsTicked(std::u16string_view box) const
{
    const auto* const target = PrvLookUp<ICheckBox>(box);
    return target != nullptr && target->Value() == 1;
}

bool ScriptedUser::CanChooseTool(std::u16string_view id) const
{
    const ScriptedToolBar* const bar = PrvControls() == nullptr ? nullptr : PrvToolBar();
    if (bar == nullptr || !bar->HasTool(id)) {
        Fail("CanChooseTool", id, "there is no such tool");
        return false;
    }
    return bar->CanChoose(id);
}

std::u16string ScriptedUser::Focus() const
{
    const ScriptedControls* const controls = PrvControls();
    return controls == nullptr ? std::u16string() : std::u16string(controls->NameOf(controls->Focused()));
}

std::u16string ScriptedUser::WindowCaption() const
{
    const ScriptedForm* const form = PrvForm();
    return form == nullptr ? std::u16string() : form->Caption();
}

std::u16string ScriptedUser::CellShown(std::u16string_view grid, std::int32_t row, std::int32_t col) const
{
    const auto* const target = PrvLookUp<GridBase>(grid);
    return target == nullptr ? std::u16string() : target->DisplayText(row, col);
}

IGrid& ScriptedUser::Grid(std::u16string_view name)
{
    return PrvForm() == nullptr ? m_toolkit.UserControls().back()->Grid(name) : PrvForm()->Grid(name);
}

std::unique_ptr<IUser> MakeUser()
{
    return std::make_unique<ScriptedUser>();
}

} // namespace KestrinProductEditor
