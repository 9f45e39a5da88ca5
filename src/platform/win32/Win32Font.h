// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <string_view>

namespace KestrinProductEditor {

/// The font that the user chose for the texts of message boxes, at one resolution. The windows that show it
/// must end, or get another one, before it ends.
class Win32Font
{
public:
    enum class Weight
    {
        Usual,
        Bold,
    };

    explicit Win32Font(UINT dpi, Weight weight = Weight::Usual);
    Win32Font(const Win32Font&) = delete;
    Win32Font& operator=(const Win32Font&) = delete;
    Win32Font(Win32Font&& other) noexcept;
    Win32Font& operator=(Win32Font&& other) noexcept;
    ~Win32Font();

    [[nodiscard]] HFONT Handle() const { return m_font; }
    /// The height of a line, in pixels.
    [[nodiscard]] int LineHeight() const;
    /// The width of a letter, on average, as dialog layouts count it; in pixels.
    [[nodiscard]] int AverageWidth() const;
    /// The width of a text on one line, "&" as it is, in pixels.
    [[nodiscard]] int TextWidth(std::u16string_view text) const;

private:
    HFONT m_font = nullptr;
};

} // namespace KestrinProductEditor
