// SPDX-License-Identifier: MIT
#include "platform/win32/Win32ToolBar.h"

#include "platform/ui/Mnemonics.h"
#include "platform/windows/WideText.h"

#include <KestrinProductEditor/AutomationError.h>

#include <commctrl.h>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

namespace {

// Above the numbers of controls, below the system's own commands.
constexpr UINT kFirstCommand = 0x8000;

void SetMenuText(HMENU menu, UINT position, std::u16string text)
{
    MENUITEMINFOW item = {};
    item.cbSize = sizeof item;
    item.fMask = MIIM_STRING;
    item.dwTypeData = Wide(text.data());
    SetMenuItemInfoW(menu, position, TRUE, &item);
}

[[nodiscard]] UINT PositionOf(HMENU menu, UINT command)
{
    const auto count = static_cast<UINT>(GetMenuItemCount(menu));
    UINT position = 0;
    while (position < count && GetMenuItemID(menu, static_cast<int>(position)) != command)
        ++position;
    return position;
}

[[nodiscard]] std::u16string WithoutPoints(std::u16string label)
{
    while (label.ends_with(u'.'))
        label.pop_back();
    return label;
}

} // namespace

Win32ToolBar::Win32ToolBar(HWND bar, Win32Focus& focus, Win32Mnemonics& mnemonics, Win32Keys& keys,
                           std::function<bool(std::u16string_view)> hasFocus)
    : Win32Control(bar, nullptr, focus), m_root(GetAncestor(bar, GA_ROOT)), m_mnemonics(mnemonics),
      m_keys(keys), m_hasFocus(std::move(hasFocus)), m_menus(CreateMenu()), m_buttons(bar)
{
    SetWindowSubclass(m_root, &PrvProcedure, reinterpret_cast<UINT_PTR>(this),
                      reinterpret_cast<DWORD_PTR>(this));
}

Win32ToolBar::~Win32ToolBar()
{
    if (m_root == nullptr)
        return;
    RemoveWindowSubclass(m_root, &PrvProcedure, reinterpret_cast<UINT_PTR>(this));
    if (GetMenu(m_root) == m_menus.get())
        SetMenu(m_root, nullptr);
}

void Win32ToolBar::SetVisible(bool bVisible)
{
    Win32Control::SetVisible(bVisible);
    PrvShowMenus();
}

void Win32ToolBar::SetEnabled(bool bEnabled)
{
    Win32Control::SetEnabled(bEnabled);
    PrvShowEnabled();
}

void Win32ToolBar::SetTools(std::span<const Tool> tools)
{
    std::vector<Win32ToolButtons::Button> buttons;
    for (const Tool& tool : tools) {
        if (tool.menu.empty())
            PrvAddHeader(tool);
        else
            buttons.push_back(PrvAddItem(tool));
    }
    for (std::size_t at = 0; at < m_entries.size(); ++at) {
        if (m_entries[at].opens != nullptr)
            PrvMarkItems(at);
    }
    if (!buttons.empty())
        buttons.front().beginsGroup = false;
    m_buttons.Set(std::move(buttons));
    PrvShowEnabled();
    PrvShowMenus();
}

void Win32ToolBar::SetToolEnabled(std::u16string_view id, bool bEnabled)
{
    m_entries[PrvFind(id)].isEnabled = bEnabled;
    PrvShowEnabled();
}

bool Win32ToolBar::IsToolEnabled(std::u16string_view id) const
{
    return m_entries[PrvFind(id)].isEnabled;
}

std::optional<Win32ToolBar::Place> Win32ToolBar::PlaceOf(std::u16string_view id) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry& entry) { return entry.id == id; });
    return found == m_entries.end() ? std::nullopt : std::optional(found->place);
}

void Win32ToolBar::PrvAddHeader(const Tool& tool)
{
    const HMENU menus = m_menus.get();
    const HMENU opens = CreatePopupMenu();
    const auto position = static_cast<UINT>(GetMenuItemCount(menus));
    AppendMenuW(menus, MF_POPUP | MF_STRING, reinterpret_cast<UINT_PTR>(opens), L"");
    const std::u16string shown = ShownCaption(tool.caption);
    m_entries.push_back({.id = tool.id,
                         .shown = shown,
                         .key = {},
                         .place = {.header = position, .command = 0},
                         .opens = opens,
                         .header = m_entries.size()});
    const std::size_t bearer = m_mnemonics.Add(
        Win32Mnemonics::Rank::Menu, [menus, position, root = m_root](const std::u16string& marked) {
            SetMenuText(menus, position, marked);
            DrawMenuBar(root);
        });
    m_mnemonics.SetCaption(bearer, shown);
}

Win32ToolButtons::Button Win32ToolBar::PrvAddItem(const Tool& tool)
{
    const std::size_t header = PrvFind(tool.menu);
    const HMENU menu = m_entries[header].opens;
    const std::size_t entry = m_entries.size();
    const UINT command = kFirstCommand + static_cast<UINT>(entry);
    const bool beginsMenu = GetMenuItemCount(menu) == 0;
    if (tool.beginsGroup)
        AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    AppendMenuW(menu, MF_STRING, command, L"");
    const std::u16string shown = ShownCaption(tool.caption);
    std::u16string key = tool.shortcuts.empty() ? std::u16string() : TextOf(tool.shortcuts.front());
    const std::u16string label = WithoutPoints(shown);
    const std::u16string toolTip = key.empty() ? label : label + u" (" + key + u")";
    m_entries.push_back({.id = tool.id,
                         .shown = shown,
                         .key = std::move(key),
                         .place = {.header = m_entries[header].place.header, .command = command},
                         .opens = nullptr,
                         .header = header});
    PrvBindKeys(tool, entry);
    return {.command = command,
            .label = label,
            .toolTip = toolTip,
            .icon = tool.icon,
            .beginsGroup = tool.beginsGroup || beginsMenu};
}

void Win32ToolBar::PrvBindKeys(const Tool& tool, std::size_t entry)
{
    for (const Shortcut shortcut : tool.shortcuts) {
        m_keys.Bind(
            shortcut,
            [this, entry, onlyIn = tool.onlyIn] {
                return PrvCanBeChosen(m_entries[entry]) && (onlyIn.empty() || m_hasFocus(onlyIn));
            },
            [this, id = tool.id] { ToolClick.Raise(id); });
    }
}

void Win32ToolBar::PrvMarkItems(std::size_t header)
{
    // An open menu has its letters for itself.
    std::vector<const Entry*> items;
    std::vector<std::u16string> captions;
    for (const Entry& entry : m_entries) {
        if (entry.opens == nullptr && entry.header == header) {
            items.push_back(&entry);
            captions.push_back(entry.shown);
        }
    }
    const HMENU menu = m_entries[header].opens;
    const std::vector<std::size_t> places = ChooseMnemonics(captions);
    for (std::size_t at = 0; at < items.size(); ++at) {
        std::u16string text = MarkMnemonic(captions[at], places[at]);
        if (!items[at]->key.empty())
            text += u'\t' + items[at]->key;
        SetMenuText(menu, PositionOf(menu, items[at]->place.command), std::move(text));
    }
}

void Win32ToolBar::PrvShowMenus()
{
    // Without a header there is no line for them.
    const HMENU shown = IsVisible() && !m_entries.empty() ? m_menus.get() : nullptr;
    if (m_root != nullptr && GetMenu(m_root) != shown)
        SetMenu(m_root, shown);
}

void Win32ToolBar::PrvShowEnabled()
{
    bool isLineChanged = false;
    for (Entry& entry : m_entries) {
        const bool isOffered = PrvIsOffered(entry);
        if (isOffered == std::exchange(entry.isOffered, isOffered))
            continue;
        const UINT state = isOffered ? MF_ENABLED : MF_GRAYED;
        if (entry.opens != nullptr) {
            EnableMenuItem(m_menus.get(), entry.place.header, MF_BYPOSITION | state);
            isLineChanged = true;
        } else {
            EnableMenuItem(m_menus.get(), entry.place.command, MF_BYCOMMAND | state);
            m_buttons.SetEnabled(entry.place.command, isOffered);
        }
    }
    if (isLineChanged && m_root != nullptr)
        DrawMenuBar(m_root);
}

bool Win32ToolBar::PrvIsOffered(const Entry& entry) const
{
    return IsEnabled() && entry.isEnabled && m_entries[entry.header].isEnabled;
}

bool Win32ToolBar::PrvCanBeChosen(const Entry& entry) const
{
    return IsVisible() && PrvIsOffered(entry) && IsWindowEnabled(m_root) != 0;
}

LRESULT CALLBACK Win32ToolBar::PrvProcedure(HWND root, UINT message, WPARAM wParam, LPARAM lParam,
                                            UINT_PTR id, DWORD_PTR data)
{
    auto& bar = *reinterpret_cast<Win32ToolBar*>(data);
    switch (message) {
    case WM_COMMAND:
        if (bar.PrvCommand(wParam, lParam))
            return 0;
        break;
    case WM_INITMENUPOPUP: {
        const LRESULT result = DefSubclassProc(root, message, wParam, lParam);
        bar.PrvOpened(reinterpret_cast<HMENU>(wParam));
        return result;
    }
    case WM_NOTIFY: {
        auto* const head = reinterpret_cast<NMHDR*>(lParam);
        if (head->hwndFrom == bar.Buttons() && head->code == TBN_GETINFOTIPW) {
            bar.PrvAnswerToolTip(*reinterpret_cast<NMTBGETINFOTIPW*>(lParam));
            return 0;
        }
        break;
    }
    case WM_NCDESTROY:
        RemoveWindowSubclass(root, &PrvProcedure, id);
        // The system ends the menus with their window.
        if (GetMenu(root) == bar.m_menus.get())
            (void)bar.m_menus.release();
        bar.m_root = nullptr;
        break;
    default:
        break;
    }
    return DefSubclassProc(root, message, wParam, lParam);
}

bool Win32ToolBar::PrvCommand(WPARAM wParam, LPARAM lParam) const
{
    const bool isOwn = lParam == 0 || reinterpret_cast<HWND>(lParam) == Buttons();
    const auto entry = std::find_if(m_entries.begin(), m_entries.end(), [wParam](const Entry& one) {
        return one.place.command != 0 && one.place.command == wParam;
    });
    if (!isOwn || entry == m_entries.end())
        return false;
    if (PrvCanBeChosen(*entry))
        ToolClick.Raise(entry->id);
    return true;
}

void Win32ToolBar::PrvOpened(HMENU menu) const
{
    const auto header = std::find_if(m_entries.begin(), m_entries.end(), [menu](const Entry& entry) {
        return entry.opens != nullptr && entry.opens == menu;
    });
    if (header != m_entries.end())
        ToolClick.Raise(header->id);
}

void Win32ToolBar::PrvAnswerToolTip(NMTBGETINFOTIPW& question) const
{
    if (const std::u16string* const text = m_buttons.ToolTipOf(static_cast<UINT>(question.iItem)))
        lstrcpynW(question.pszText, Wide(text->c_str()), question.cchTextMax);
}

std::size_t Win32ToolBar::PrvFind(std::u16string_view id) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry& entry) { return entry.id == id; });
    if (found == m_entries.end())
        throw AutomationError(kErrInvalidProcedureCall);
    return static_cast<std::size_t>(found - m_entries.begin());
}

} // namespace KestrinProductEditor
