// SPDX-License-Identifier: MIT
#include "automation/windows/SeenGrid.h"

#include "automation/windows/Patience.h"

#include "platform/Text.h"
#include "platform/windows/WideText.h"
#include "server/windows/ComText.h"

#include <oleacc.h>
#include <wrl/client.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <stdexcept>

namespace KestrinProductEditor {

namespace {

/// What a screen reader asks the list. On the host's own thread: what it answers is the same, and no test
/// hangs on how the system carries it from one thread to another.
void Ask(const HostProgram& host, const SeenWindow& grid, const std::function<void(IAccessible&)>& ask)
{
    bool hasAnswered = false;
    host.Call([&] {
        Microsoft::WRL::ComPtr<IAccessible> list;
        void** const place = reinterpret_cast<void**>(list.GetAddressOf());
        if (FAILED(AccessibleObjectFromWindow(grid.Handle(), static_cast<DWORD>(OBJID_CLIENT),
                                              __uuidof(IAccessible), place)))
            return;
        ask(*list.Get());
        hasAnswered = true;
    });
    if (!hasAnswered)
        throw std::runtime_error("the list tells a screen reader nothing");
}

[[nodiscard]] VARIANT Item(std::int32_t row)
{
    VARIANT item = {};
    item.vt = VT_I4;
    item.lVal = row + 1;
    return item;
}

[[nodiscard]] std::u16string NameOf(IAccessible& list, std::int32_t row)
{
    Bstr name;
    list.get_accName(Item(row), name.Out());
    return std::u16string(TextOf(name.Get()));
}

[[nodiscard]] bool BeginsWith(std::u16string_view row, std::u16string_view beginning)
{
    const std::size_t colon = row.find(u": ");
    return colon != std::u16string_view::npos && row.substr(colon + 2).starts_with(beginning);
}

} // namespace

std::int32_t SeenGrid::Rows() const
{
    LONG count = 0;
    Ask(m_host, m_grid, [&](IAccessible& list) { list.get_accChildCount(&count); });
    return static_cast<std::int32_t>(count);
}

std::u16string SeenGrid::Row(std::int32_t row) const
{
    std::u16string text;
    Ask(m_host, m_grid, [&](IAccessible& list) { text = NameOf(list, row); });
    return text;
}

std::vector<std::u16string> SeenGrid::AllRows() const
{
    std::vector<std::u16string> rows;
    Ask(m_host, m_grid, [&](IAccessible& list) {
        LONG count = 0;
        list.get_accChildCount(&count);
        for (std::int32_t row = 0; row < count; ++row)
            rows.push_back(NameOf(list, row));
    });
    return rows;
}

std::int32_t SeenGrid::RowOf(std::u16string_view beginning) const
{
    const std::vector<std::u16string> rows = AllRows();
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [&](const std::u16string& row) { return BeginsWith(row, beginning); });
    if (found == rows.end())
        throw std::runtime_error("the list has no row " + ToUtf8(beginning));
    return static_cast<std::int32_t>(found - rows.begin());
}

bool SeenGrid::Holds(std::u16string_view beginning) const
{
    const std::vector<std::u16string> rows = AllRows();
    return std::any_of(rows.begin(), rows.end(),
                       [&](const std::u16string& row) { return BeginsWith(row, beginning); });
}

RECT SeenGrid::PrvPlaceOf(std::int32_t row) const
{
    RECT inside = {};
    GetClientRect(m_grid.Handle(), &inside);
    RECT place = {};
    Await("the row to come into sight", [&] {
        LONG left = 0;
        LONG top = 0;
        LONG width = 0;
        LONG height = 0;
        Ask(m_host, m_grid,
            [&](IAccessible& list) { list.accLocation(&left, &top, &width, &height, Item(row)); });
        place = {left, top, left + width, top + height};
        MapWindowPoints(nullptr, m_grid.Handle(), reinterpret_cast<POINT*>(&place), 2);
        const LONG header = place.bottom - place.top;
        if (height > 0 && place.top >= header / 2 && place.bottom <= inside.bottom)
            return true;
        PostMessageW(m_grid.Handle(), WM_VSCROLL, place.top < header / 2 ? SB_LINEUP : SB_LINEDOWN, 0);
        m_host.Settle();
        return false;
    });
    return place;
}

void SeenGrid::Click(std::int32_t row) const
{
    const RECT place = PrvPlaceOf(row);
    m_grid.Click({place.left + 4, (place.top + place.bottom) / 2});
    m_host.Settle();
}

void SeenGrid::DoubleClick(std::int32_t row) const
{
    Click(row);
    const RECT place = PrvPlaceOf(row);
    const LPARAM at =
        MAKELPARAM(static_cast<WORD>(place.left + 4), static_cast<WORD>((place.top + place.bottom) / 2));
    PostMessageW(m_grid.Handle(), WM_LBUTTONDBLCLK, MK_LBUTTON, at);
    PostMessageW(m_grid.Handle(), WM_LBUTTONUP, 0, at);
    m_host.Settle();
}

void SeenGrid::PressKey(UINT key) const
{
    m_grid.PressKey(key);
    m_host.Settle();
}

void SeenGrid::Choose(std::int32_t row, std::u16string_view entry) const
{
    Click(row);
    PressKey(VK_F4);
    const HWND list = m_host.DropDown().Handle();
    const std::u16string text(entry);
    const LRESULT wanted = SendMessageW(list, LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                        reinterpret_cast<LPARAM>(Wide(text.c_str())));
    if (wanted == LB_ERR)
        throw std::runtime_error("the list that drops down has no entry " + ToUtf8(entry));
    PressKey(VK_HOME);
    for (LRESULT at = 0; at < wanted; ++at)
        PressKey(VK_DOWN);
    PressKey(VK_RETURN);
    Await("the row to say " + ToUtf8(entry), [&] { return Row(row).ends_with(entry); });
}

} // namespace KestrinProductEditor
