// SPDX-License-Identifier: MIT
#include "platform/win32/Win32Font.h"

#include "platform/win32/Win32TextMeasure.h"

#include <utility>

namespace KestrinProductEditor {

Win32Font::Win32Font(UINT dpi, Weight weight)
{
    NONCLIENTMETRICSW metrics = {};
    metrics.cbSize = sizeof metrics;
    if (SystemParametersInfoForDpi(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0, dpi) != 0) {
        if (weight == Weight::Bold)
            metrics.lfMessageFont.lfWeight = FW_BOLD;
        m_font = CreateFontIndirectW(&metrics.lfMessageFont);
    }
    if (m_font == nullptr)
        m_font = static_cast<HFONT>(GetStockObject(DEFAULT_GUI_FONT));
}

Win32Font::Win32Font(Win32Font&& other) noexcept : m_font(std::exchange(other.m_font, nullptr)) {}

Win32Font& Win32Font::operator=(Win32Font&& other) noexcept
{
    std::swap(m_font, other.m_font);
    return *this;
}

Win32Font::~Win32Font()
{
    // Stock objects ignore it.
    if (m_font != nullptr)
        DeleteObject(m_font);
}

int Win32Font::LineHeight() const
{
    return Win32TextMeasure(m_font).LineHeight();
}

int Win32Font::AverageWidth() const
{
    constexpr std::u16string_view kLetters = u"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
    constexpr int kHalf = static_cast<int>(kLetters.size()) / 2;
    return (TextWidth(kLetters) + kHalf) / static_cast<int>(kLetters.size());
}

int Win32Font::TextWidth(std::u16string_view text) const
{
    return Win32TextMeasure(m_font).Width(text);
}

} // namespace KestrinProductEditor
