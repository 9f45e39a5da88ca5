// SPDX-License-Identifier: MIT
#pragma once

#include "platform/windows/WideText.h"

#include <windows.h>

#include <string_view>

namespace KestrinProductEditor {

/// The sizes of texts in a font, in pixels. The font must outlive it.
class Win32TextMeasure
{
public:
    explicit Win32TextMeasure(HFONT font) : m_canvas(GetDC(nullptr)), m_before(SelectObject(m_canvas, font))
    {
    }
    /// In the font that a window shows its texts in.
    explicit Win32TextMeasure(HWND window)
        : Win32TextMeasure(reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0)))
    {
    }
    Win32TextMeasure(const Win32TextMeasure&) = delete;
    Win32TextMeasure& operator=(const Win32TextMeasure&) = delete;
    ~Win32TextMeasure()
    {
        if (m_before != nullptr)
            SelectObject(m_canvas, m_before);
        ReleaseDC(nullptr, m_canvas);
    }

    [[nodiscard]] TEXTMETRICW Metrics() const
    {
        TEXTMETRICW metrics = {};
        GetTextMetricsW(m_canvas, &metrics);
        return metrics;
    }
    [[nodiscard]] int LineHeight() const { return static_cast<int>(Metrics().tmHeight); }
    /// On one line, "&" as it is.
    [[nodiscard]] int Width(std::u16string_view text) const
    {
        SIZE size = {};
        GetTextExtentPoint32W(m_canvas, Wide(text.data()), static_cast<int>(text.size()), &size);
        return static_cast<int>(size.cx);
    }
    /// What DrawText takes with that format, where the text breaks into lines of `width`.
    [[nodiscard]] RECT Place(std::u16string_view text, LONG width, UINT format) const
    {
        RECT place = {0, 0, width, 0};
        DrawTextW(m_canvas, Wide(text.data()), static_cast<int>(text.size()), &place, format | DT_CALCRECT);
        return place;
    }

private:
    HDC m_canvas;
    HGDIOBJ m_before;
};

} // namespace KestrinProductEditor
