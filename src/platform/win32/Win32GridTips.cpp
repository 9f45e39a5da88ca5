// SPDX-License-Identifier: MIT
#include "platform/win32/Win32GridTips.h"

#include "platform/Text.h"
#include "platform/win32/Win32ToolTips.h"
#include "platform/windows/WideText.h"

#include <commctrl.h>

#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr UINT_PTR kToolId = 1;
// More of a text than any screen shows.
constexpr std::size_t kLongestText = 2000;

} // namespace

Win32GridTips::~Win32GridTips()
{
    End();
}

void Win32GridTips::Begin(HWND window)
{
    m_window = window;
    m_tip = Win32ToolTips::Make(window);
    if (m_tip == nullptr)
        return;
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_SUBCLASS | TTF_TRANSPARENT;
    tool.hwnd = m_window;
    tool.uId = kToolId;
    wchar_t nothing[] = L"";
    tool.lpszText = nothing;
    SendMessageW(m_tip, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void Win32GridTips::End()
{
    // The window around the grid may have taken it along.
    if (m_tip != nullptr && IsWindow(m_tip))
        DestroyWindow(m_tip);
    m_tip = nullptr;
}

void Win32GridTips::Show(const RECT& place, std::u16string text)
{
    text.resize(Utf16Head(std::u16string_view(text), kLongestText).size());
    const bool isSame = EqualRect(&place, &m_place) && text == m_text;
    if (m_tip == nullptr || isSame)
        return;
    m_place = place;
    m_text = std::move(text);
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.hwnd = m_window;
    tool.uId = kToolId;
    tool.rect = place;
    tool.lpszText = Wide(m_text.data());
    Win32ToolTips::FollowResolution(m_tip, m_window);
    SendMessageW(m_tip, TTM_POP, 0, 0);
    SendMessageW(m_tip, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(m_tip, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

} // namespace KestrinProductEditor
