// SPDX-License-Identifier: MIT
#pragma once

#include "platform/win32/Win32Font.h"

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// A layout of kstnedit-windows.rc, and the window that was made from it: which controls it has, what they
/// are called, where they stand. Controls keep their distance to the edges that the layout ties them to, at
/// every size, font and resolution of the window.
///
/// The layout is two resources of one name: a dialog with the controls in the order of Tab, and a table with
/// their names and edges, whose form is told in the resource script.
class Win32Layout
{
public:
    enum class Kind
    {
        Form,        ///< a window of its own
        UserControl, ///< a window in another one
    };

    /// Error 5 for a name that no layout of that kind bears.
    Win32Layout(std::u16string_view name, Kind kind);

    /// Makes the window, hidden, with its controls, in the system's font; of a user control, in `parent`. It
    /// reads from the right where the program does, or the window that the user works in. Error 7 when the
    /// system has no room for it. The window must end before the layout.
    HWND Create(HWND parent);

    [[nodiscard]] const std::u16string& Name() const { return m_name; }
    /// The control of that name; null when there is none.
    [[nodiscard]] HWND WindowOf(std::u16string_view name) const;
    struct Named
    {
        std::u16string name;
        HWND window;
    };
    /// Every control that has a name, in the order of Tab.
    [[nodiscard]] std::vector<Named> Controls() const;

    /// The size of the inside that the layout was drawn for, and the least one that it can have, in pixels.
    [[nodiscard]] SIZE DrawnSize() const { return PrvPixels(m_drawn.width, m_drawn.height); }
    [[nodiscard]] SIZE LeastSize() const { return PrvPixels(m_least.width, m_least.height); }

    /// Puts each control where it belongs at the window's present size. Those of a user control go where they
    /// were drawn, at any size.
    void Arrange();
    /// Takes the system's font for the window's present resolution, and arranges anew. Sends WM_SETFONT to
    /// the controls.
    void TakeFont();
    /// Moves the line between the two panes, in pixels to where reading ends, as far as there is room.
    void MoveSplitter(int by);
    /// The width of a text in the window's font, in pixels.
    [[nodiscard]] int TextWidth(std::u16string_view text) const { return m_font->TextWidth(text); }

private:
    /// What an edge of a control keeps its distance to.
    enum class Tie : WORD
    {
        Near = 0,     ///< the edge of the window where reading begins, or its top
        Far = 1,      ///< the edge where reading ends, or the bottom
        Splitter = 2, ///< the line between the two panes
    };

    /// In the units of dialog layouts: quarters of a character's width, eighths of its height.
    struct Units
    {
        int left = 0;
        int top = 0;
        int width = 0;
        int height = 0;
    };

    struct Item
    {
        std::u16string name; ///< empty for one that nobody asks for
        HWND window = nullptr;
        WORD id = 0;
        Units drawn;
        Tie left = Tie::Near;
        Tie top = Tie::Near;
        Tie right = Tie::Near;
        Tie bottom = Tie::Near;
        bool isBold = false;
    };

    void PrvReadTable(std::u16string_view name);
    void PrvReadDialog(std::u16string_view name);
    /// How much larger than drawn the inside of a form is; a host sizes its user controls by itself.
    [[nodiscard]] SIZE PrvGrown() const;
    [[nodiscard]] SIZE PrvPixels(int width, int height) const;
    [[nodiscard]] RECT PrvPlace(const Item& item, SIZE grown, int splitter) const;
    [[nodiscard]] int PrvSplitterWithin(int wanted, int grown) const;

    std::u16string m_name;
    Kind m_kind;
    std::vector<BYTE> m_template;
    std::vector<Item> m_items;
    Units m_drawn;
    Units m_least;
    HWND m_window = nullptr;
    std::optional<Win32Font> m_font;
    std::optional<Win32Font> m_boldFont;
    SIZE m_unit = {}; ///< the average width and the height of a character, in pixels
    int m_splitter = 0;
};

} // namespace KestrinProductEditor
