// SPDX-License-Identifier: MIT
#include "fake/ScriptedControls.h"

#include <KestrinProductEditor/AutomationError.h>

#include <array>
#include <cstddef>
#include <limits>

namespace KestrinProductEditor {

namespace {

enum class Kind
{
    TextBox,
    NoteBox,
    Button,
    CheckBox,
    Label,
    ProgressBar,
    Grid,
    ToolBar,
    Frame,
};

struct Part
{
    std::u16string_view name;
    Kind kind;
};

struct LayoutOfSurface
{
    std::u16string_view name;
    ScriptedControls::Surface surface;
    std::vector<Part> parts; // in tab order
};

constexpr std::int32_t kTwipsOfCharacter = 120;
constexpr std::int32_t kRowsOfPage = 10;

const std::vector<LayoutOfSurface>& Layouts()
{
    using enum ScriptedControls::Surface;
    static const std::vector<LayoutOfSurface> layouts = {
        {u"frmProductEditor",
         Form,
         {{u"SSActiveToolBars1", Kind::ToolBar},
          {u"lblProductView", Kind::Label},
          {u"flexGrid", Kind::Grid},
          {u"lblTip", Kind::Label},
          {u"lblProductDetails", Kind::Label},
          {u"lblProductName", Kind::Label},
          {u"txtProductName", Kind::TextBox},
          {u"lblPartNum", Kind::Label},
          {u"txtPartNum", Kind::TextBox},
          {u"lblUnitPrice", Kind::Label},
          {u"txtUnitPrice", Kind::TextBox},
          {u"lblNote", Kind::Label},
          {u"txtNote", Kind::NoteBox},
          {u"cmdNew", Kind::Button},
          {u"cmdDelete", Kind::Button},
          {u"cmdSaveEdit", Kind::Button},
          {u"cmdCancelEdit", Kind::Button},
          {u"cmdSaveClose", Kind::Button},
          {u"cmdCancel", Kind::Button}}},
        {u"frmProductImport",
         Form,
         {{u"lblImportFilePath", Kind::Label},
          {u"txtImportFilePath", Kind::TextBox},
          {u"cmdBrowse", Kind::Button},
          {u"chkFirstRowIsHeader", Kind::CheckBox},
          {u"chkAppend", Kind::CheckBox},
          {u"lblMapping", Kind::Label},
          {u"flexGrid", Kind::Grid},
          {u"cmdPreview", Kind::Button},
          {u"cmdImport", Kind::Button},
          {u"cmdCancel", Kind::Button},
          {u"prgImport", Kind::ProgressBar}}},
        {u"frmProdImportPreview",
         Form,
         {{u"lblPreview", Kind::Label}, {u"flexGrid", Kind::Grid}, {u"cmdClose", Kind::Button}}},
        {u"frmProductExport",
         Form,
         {{u"lblExportFilePath", Kind::Label},
          {u"txtExportFilePath", Kind::TextBox},
          {u"cmdBrowse", Kind::Button},
          {u"cmdExport", Kind::Button},
          {u"cmdCancel", Kind::Button},
          {u"prgExport", Kind::ProgressBar},
          {u"lblStatus", Kind::Label}}},
        {u"ProductLkpView", UserControl, {{u"flexGrid", Kind::Grid}}},
        {u"ProductDetails",
         UserControl,
         {{u"fraBorder", Kind::Frame},
          {u"lblProductName", Kind::Label},
          {u"txtProductName", Kind::TextBox},
          {u"lblPartNum", Kind::Label},
          {u"txtPartNum", Kind::TextBox},
          {u"lblUnitPrice", Kind::Label},
          {u"txtUnitPrice", Kind::TextBox},
          {u"lblNote", Kind::Label},
          {u"txtNote", Kind::NoteBox},
          {u"cmdNew", Kind::Button}}},
    };
    return layouts;
}

std::unique_ptr<IControl> MakeControl(ScriptedControls& owner, Kind kind)
{
    switch (kind) {
    case Kind::TextBox:
        return std::make_unique<ScriptedTextBox>(owner, ScriptedTextBox::Lines::One);
    case Kind::NoteBox:
        return std::make_unique<ScriptedTextBox>(owner, ScriptedTextBox::Lines::Many);
    case Kind::Button:
        return std::make_unique<ScriptedButton>(owner);
    case Kind::CheckBox:
        return std::make_unique<ScriptedCheckBox>(owner);
    case Kind::Label:
        return std::make_unique<ScriptedLabel>(owner);
    case Kind::ProgressBar:
        return std::make_unique<ScriptedProgressBar>(owner);
    case Kind::Grid:
        return std::make_unique<ScriptedGrid>(owner);
    case Kind::ToolBar:
        return std::make_unique<ScriptedToolBar>(owner);
    case Kind::Frame:
        break;
    }
    return std::make_unique<ScriptedFrame>(owner);
}

bool TakesFocus(Kind kind)
{
    constexpr std::array kTakers = {Kind::TextBox, Kind::NoteBox, Kind::Button, Kind::CheckBox, Kind::Grid};
    return std::ranges::find(kTakers, kind) != kTakers.end();
}

bool IsHighSurrogate(char16_t unit)
{
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(char16_t unit)
{
    return unit >= 0xDC00 && unit < 0xE000;
}

std::u16string Utf16(char32_t character)
{
    if (character < 0x10000)
        return std::u16string(1, static_cast<char16_t>(character));
    const char32_t rest = character - 0x10000;
    return {static_cast<char16_t>(0xD800 + (rest >> 10)), static_cast<char16_t>(0xDC00 + (rest & 0x3FF))};
}

/// Two units that only go together: an astral character, or a line break.
bool IsPair(std::u16string_view text, std::size_t place)
{
    return (IsHighSurrogate(text[place]) && IsLowSurrogate(text[place + 1])) ||
           (text[place] == u'\r' && text[place + 1] == u'\n');
}

} // namespace

ScriptedTextBox::ScriptedTextBox(ScriptedControls& owner, Lines lines)
    : ScriptedControl(owner), m_lines(lines)
{
}

void ScriptedTextBox::SetText(std::u16string_view text)
{
    if (text == m_text)
        return;
    m_text = text;
    m_former.clear();
    PrvPlaceCaret(0);
    Change.Raise();
}

void ScriptedTextBox::Select(std::int32_t start, std::int32_t length)
{
    const auto end = static_cast<std::int64_t>(m_text.size());
    const std::int64_t first = std::clamp<std::int64_t>(start, 0, end);
    const std::int64_t last = std::clamp(std::int64_t{start} + std::max<std::int64_t>(length, 0), first, end);
    m_anchor = static_cast<std::size_t>(first);
    m_caret = static_cast<std::size_t>(last);
}

std::u16string ScriptedTextBox::SelectedText() const
{
    return m_text.substr(PrvFirst(), PrvLast() - PrvFirst());
}

void ScriptedTextBox::UserTypes(char32_t character)
{
    auto key = static_cast<std::int32_t>(character);
    KeyPress.Raise(key);
    if (key == 0 || m_isLocked)
        return;
    if (character == U'\b') {
        PrvReplace(m_anchor == m_caret ? PrvStepBack(m_caret) : PrvFirst(), PrvLast(), {});
        return;
    }
    std::u16string typed;
    if (character == U'\r' && m_lines == Lines::Many)
        typed = u"\r\n";
    else if (character >= U' ')
        typed = Utf16(character);
    if (!typed.empty() && typed.size() <= PrvRoom())
        PrvReplace(PrvFirst(), PrvLast(), typed);
}

void ScriptedTextBox::UserPresses(IUser::NamedKey key, IUser::Modifier modifier)
{
    switch (key) {
    case IUser::NamedKey::Left:
        PrvMoveCaret(PrvStepBack(m_caret), modifier);
        break;
    case IUser::NamedKey::Right:
        PrvMoveCaret(PrvStepOn(m_caret), modifier);
        break;
    case IUser::NamedKey::Home:
        PrvMoveCaret(0, modifier);
        break;
    case IUser::NamedKey::End:
        PrvMoveCaret(m_text.size(), modifier);
        break;
    case IUser::NamedKey::Delete:
        if (!m_isLocked)
            PrvReplace(PrvFirst(), m_anchor == m_caret ? PrvStepOn(m_caret) : PrvLast(), {});
        break;
    default:
        break;
    }
}

void ScriptedTextBox::UserPressesControl(char letter, std::u16string& clipboard)
{
    std::int32_t key = letter - 'A' + 1;
    KeyPress.Raise(key);
    if (key == 0)
        return;
    if (letter == 'A')
        UserSelectsAll();
    if ((letter == 'C' || (letter == 'X' && !m_isLocked)) && m_anchor != m_caret)
        clipboard = SelectedText();
    if (m_isLocked)
        return;
    if (letter == 'X') {
        PrvReplace(PrvFirst(), PrvLast(), {});
    } else if (letter == 'V') {
        PrvPaste(clipboard);
    } else if (letter == 'Z' && !m_former.empty()) {
        m_text = std::move(m_former.back());
        m_former.pop_back();
        PrvPlaceCaret(m_text.size());
        Change.Raise();
    }
}

void ScriptedTextBox::UserSelectsAll()
{
    m_anchor = 0;
    m_caret = m_text.size();
}

std::size_t ScriptedTextBox::PrvRoom() const
{
    if (m_maxLength <= 0)
        return std::numeric_limits<std::size_t>::max();
    const std::size_t rest = m_text.size() - (PrvLast() - PrvFirst());
    const auto maxLength = static_cast<std::size_t>(m_maxLength);
    return rest < maxLength ? maxLength - rest : 0;
}

std::size_t ScriptedTextBox::PrvStepBack(std::size_t place) const
{
    if (place == 0)
        return 0;
    return place >= 2 && IsPair(m_text, place - 2) ? place - 2 : place - 1;
}

std::size_t ScriptedTextBox::PrvStepOn(std::size_t place) const
{
    if (place == m_text.size())
        return place;
    return place + 2 <= m_text.size() && IsPair(m_text, place) ? place + 2 : place + 1;
}

void ScriptedTextBox::PrvPlaceCaret(std::size_t place)
{
    m_anchor = place;
    m_caret = place;
}

void ScriptedTextBox::PrvMoveCaret(std::size_t place, IUser::Modifier modifier)
{
    m_caret = place;
    if (modifier != IUser::Modifier::Shift)
        m_anchor = place;
}

void ScriptedTextBox::PrvReplace(std::size_t first, std::size_t last, std::u16string_view text)
{
    std::u16string changed = m_text;
    changed.replace(first, last - first, text);
    PrvPlaceCaret(first + text.size());
    if (changed == m_text)
        return;
    m_former.push_back(std::exchange(m_text, std::move(changed)));
    Change.Raise();
}

void ScriptedTextBox::PrvPaste(std::u16string_view text)
{
    std::size_t length = std::min(text.size(), PrvRoom());
    if (length > 0 && length < text.size() && IsPair(text, length - 1))
        --length;
    PrvReplace(PrvFirst(), PrvLast(), text.substr(0, length));
}

void ScriptedCheckBox::SetValue(std::int32_t value)
{
    if (value == m_value)
        return;
    m_value = value;
    Click.Raise();
}

std::int32_t ScriptedGrid::MouseRow() const
{
    return m_mouseRow < Rows() ? m_mouseRow : -1;
}

void ScriptedGrid::FitColumns()
{
    constexpr std::int32_t kRowsLookedAt = 50;
    for (std::int32_t col = 0; col < Cols(); ++col) {
        if (IsColHidden(col))
            continue;
        std::size_t longest = 1;
        for (std::int32_t row = 0; row < std::min(Rows(), kRowsLookedAt); ++row)
            longest = std::max(longest, DisplayText(row, col).size());
        SetColWidth(col, static_cast<std::int32_t>(longest) * kTwipsOfCharacter);
    }
}

void ScriptedGrid::UserClicksRow(std::int32_t row, IUser::Modifier modifier)
{
    m_mouseRow = row;
    if (row >= FixedRows())
        PrvChoose(row, modifier);
}

void ScriptedGrid::UserPresses(IUser::NamedKey key, IUser::Modifier modifier)
{
    const std::int32_t first = FixedRows();
    const std::int32_t last = Rows() - 1;
    const std::int32_t current = CurrentRow();
    std::int32_t row = current;
    switch (key) {
    case IUser::NamedKey::Up:
        row = current - 1;
        break;
    case IUser::NamedKey::Down:
        row = current + 1;
        break;
    case IUser::NamedKey::PageUp:
        row = current - kRowsOfPage;
        break;
    case IUser::NamedKey::PageDown:
        row = std::max(current, first - 1) + kRowsOfPage;
        break;
    case IUser::NamedKey::Home:
        row = first;
        break;
    case IUser::NamedKey::End:
        row = last;
        break;
    default:
        return;
    }
    if (last >= first)
        PrvChoose(std::clamp(row, first, last), modifier);
}

void ScriptedGrid::UserTypes(char32_t character)
{
    if (character < U' ' || (character == U' ' && m_typed.empty()))
        return;
    m_typed += Utf16(character);
    if (const std::int32_t row = RowNamed(m_typed); row >= 0)
        PrvChoose(row, IUser::Modifier::None);
}

void ScriptedGrid::PrvChoose(std::int32_t row, IUser::Modifier modifier)
{
    RowSelection selection;
    if (Mode() == SelectionMode::ListBox && modifier == IUser::Modifier::Shift) {
        if (m_anchor < FixedRows() || m_anchor >= Rows())
            m_anchor = std::max(CurrentRow(), FixedRows());
        selection.Add({.first = std::min(m_anchor, row), .last = std::max(m_anchor, row)});
    } else {
        m_anchor = row;
        if (Mode() == SelectionMode::ListBox && modifier == IUser::Modifier::Control)
            selection = Selection();
        if (selection.Contains(row))
            selection.Remove({.first = row, .last = row});
        else
            selection.Add({.first = row, .last = row});
    }
    UserChose(row, selection);
}

void ScriptedToolBar::SetTools(std::span<const Tool> tools)
{
    for (const Tool& tool : tools)
        m_tools.push_back({.tool = tool});
}

void ScriptedToolBar::SetToolEnabled(std::u16string_view id, bool bEnabled)
{
    for (State& state : m_tools) {
        if (state.tool.id == id) {
            state.isEnabled = bEnabled;
            return;
        }
    }
    throw AutomationError(kErrInvalidProcedureCall);
}

bool ScriptedToolBar::IsToolEnabled(std::u16string_view id) const
{
    const State* const state = PrvFind(id);
    if (state == nullptr)
        throw AutomationError(kErrInvalidProcedureCall);
    return state->isEnabled;
}

bool ScriptedToolBar::HasTool(std::u16string_view id) const
{
    return PrvFind(id) != nullptr;
}

const Tool* ScriptedToolBar::FindItem(std::u16string_view id) const
{
    const State* const state = PrvFind(id);
    return state == nullptr || state->tool.menu.empty() ? nullptr : &state->tool;
}

bool ScriptedToolBar::CanChoose(std::u16string_view id) const
{
    const State* const state = PrvFind(id);
    if (state == nullptr || !state->isEnabled || !IsVisible() || !IsEnabled())
        return false;
    return state->tool.menu.empty() || CanChoose(state->tool.menu);
}

std::optional<std::u16string_view> ScriptedToolBar::ToolOf(Shortcut shortcut, std::u16string_view focus) const
{
    for (const State& state : m_tools) {
        const Tool& tool = state.tool;
        if (std::ranges::find(tool.shortcuts, shortcut) != tool.shortcuts.end() &&
            (tool.onlyIn.empty() || tool.onlyIn == focus) && CanChoose(tool.id))
            return tool.id;
    }
    return std::nullopt;
}

const ScriptedToolBar::State* ScriptedToolBar::PrvFind(std::u16string_view id) const
{
    const auto place = std::ranges::find(m_tools, id, [](const State& state) { return state.tool.id; });
    return place == m_tools.end() ? nullptr : &*place;
}

ScriptedControls::ScriptedControls(std::u16string_view layout, Surface surface)
{
    for (const LayoutOfSurface& candidate : Layouts()) {
        if (candidate.name != layout || candidate.surface != surface)
            continue;
        m_layout = candidate.name;
        float top = 240;
        for (const Part& part : candidate.parts) {
            const float left = part.kind == Kind::Label ? 240 : 1440;
            m_members.push_back({.name = part.name,
                                 .control = MakeControl(*this, part.kind),
                                 .takesFocus = TakesFocus(part.kind),
                                 .place = {.left = left, .top = top, .width = 1080, .height = 300}});
            top += 360;
        }
        return;
    }
    PrvRefuse();
}

const ScriptedControls::Member* ScriptedControls::Find(std::u16string_view name) const
{
    const auto place = std::ranges::find(m_members, name, &Member::name);
    return place == m_members.end() ? nullptr : &*place;
}

std::u16string_view ScriptedControls::NameOf(const IControl* control) const
{
    for (const Member& member : m_members) {
        if (member.control.get() == control)
            return member.name;
    }
    return {};
}

ControlPlace ScriptedControls::PlaceOf(std::u16string_view name) const
{
    const Member* const member = Find(name);
    if (member == nullptr)
        PrvRefuse();
    return member->place;
}

void ScriptedControls::Move(std::u16string_view name, const ControlPlace& place)
{
    const auto member = std::ranges::find(m_members, name, &Member::name);
    // Not a number is no size either.
    if (member == m_members.end() || !(place.width >= 0) || !(place.height >= 0))
        PrvRefuse();
    member->place = place;
}

void ScriptedControls::SetBusy(bool bBusy)
{
    m_isBusy = bBusy;
    if (m_focused != nullptr)
        Leave(*m_focused);
}

bool ScriptedControls::CanTakeFocus(const IControl& control) const
{
    const auto place =
        std::ranges::find(m_members, &control, [](const Member& member) { return member.control.get(); });
    return place != m_members.end() && place->takesFocus && control.IsVisible() && control.IsEnabled();
}

void ScriptedControls::SetFocus(IControl& control)
{
    if (!CanTakeFocus(control))
        return;
    ++m_focusRequests;
    PrvMoveFocus(&control);
}

void ScriptedControls::Begin()
{
    if (m_focused == nullptr)
        PrvMoveFocus(PrvSubstitute());
}

void ScriptedControls::Return()
{
    if (m_focused != nullptr)
        m_focused->GotFocus.Raise();
}

void ScriptedControls::Leave(const IControl& control)
{
    // While the form is busy nothing can take the focus: it goes when the form is itself again.
    if (m_focused == &control && !m_isBusy && !CanTakeFocus(control))
        PrvMoveFocus(PrvSubstitute());
}

IControl* ScriptedControls::Neighbour(IUser::NamedKey tabOrBackTab) const
{
    const std::size_t count = m_members.size();
    const std::size_t step = tabOrBackTab == IUser::NamedKey::BackTab ? count - 1 : 1;
    const auto here =
        std::ranges::find(m_members, m_focused, [](const Member& member) { return member.control.get(); });
    auto place = static_cast<std::size_t>(here - m_members.begin());
    if (here == m_members.end())
        place = step == 1 ? count - 1 : 0;
    for (std::size_t steps = 0; steps < count; ++steps) {
        place = (place + step) % count;
        if (CanTakeFocus(*m_members[place].control))
            return m_members[place].control.get();
    }
    return nullptr;
}

void ScriptedControls::PrvRefuse()
{
    throw AutomationError(kErrInvalidProcedureCall);
}

void ScriptedControls::PrvMoveFocus(IControl* control)
{
    IControl* const former = std::exchange(m_focused, control);
    if (former == control)
        return;
    if (former != nullptr)
        former->LostFocus.Raise();
    // The handler may have moved it on.
    if (control != nullptr && m_focused == control)
        control->GotFocus.Raise();
}

IControl* ScriptedControls::PrvSubstitute() const
{
    if (m_first != nullptr && CanTakeFocus(*m_first))
        return m_first;
    for (const Member& member : m_members) {
        if (CanTakeFocus(*member.control))
            return member.control.get();
    }
    return nullptr;
}

} // namespace KestrinProductEditor
