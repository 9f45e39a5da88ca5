// SPDX-License-Identifier: MIT
#include "platform/win32/Win32GridTips.h"

#include "platform/windows/WideText.h"

#include <commctrl.h>

#include <utility>

namespace KestrinProductEditor {

namespace {

constexpr UINT_PTR kToolId = 1;
constexpr int kWidestTip = 600; // pixels; longer texts are broken into lines

} // namespace

Win32GridTips::~Win32GridTips()
{
    End();
}

void Win32GridTips::Begin(HWND window)
{
    m_window = window;
    // The system ends it with its owner.
    m_tip =
        CreateWindowExW(0, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT,
                        CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr, nullptr, nullptr);
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
    SendMessageW(m_tip, TTM_SETMAXTIPWIDTH, 0, kWidestTip);
}

void Win32GridTips::End()
{
    if (m_tip != nullptr && IsWindow(m_tip))
        DestroyWindow(m_tip);
    m_tip = nullptr;
}

void Win32GridTips::Show(const RECT& place, std::u16string text)
{
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
    SendMessageW(m_tip, TTM_POP, 0, 0);
    SendMessageW(m_tip, TTM_NEWTOOLRECTW, 0, reinterpret_cast<LPARAM>(&tool));
    SendMessageW(m_tip, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
}

} // namespace KestrinProductEditor
