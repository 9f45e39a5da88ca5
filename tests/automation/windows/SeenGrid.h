// SPDX-License-Identifier: MIT
#pragma once

#include "automation/windows/HostProgram.h"
#include "automation/windows/SeenWindow.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// A list of a form, read as a screen reader reads it, and acted on by mouse and keys. Rows count from 0,
/// without the header; a row reads "Title: text, Title: text".
class SeenGrid
{
public:
    SeenGrid(const HostProgram& host, const SeenWindow& form)
        : m_host(host), m_grid(form.Child(u"KstneditGrid"))
    {
    }

    [[nodiscard]] std::int32_t Rows() const;
    [[nodiscard]] std::u16string Row(std::int32_t row) const;
    [[nodiscard]] std::vector<std::u16string> AllRows() const;
    /// The first row that reads on so after the title of its first column; raises std::runtime_error for
    /// none.
    [[nodiscard]] std::int32_t RowOf(std::u16string_view beginning) const;
    [[nodiscard]] bool Holds(std::u16string_view beginning) const;

    void Click(std::int32_t row) const;
    void DoubleClick(std::int32_t row) const;
    void PressKey(UINT key) const;
    /// Opens the drop-down of that row with its key, chooses the entry with that text with others, and waits
    /// until the row says so.
    void Choose(std::int32_t row, std::u16string_view entry) const;

private:
    /// The rectangle of the row on the list's inside, scrolled into sight.
    [[nodiscard]] RECT PrvPlaceOf(std::int32_t row) const;

    const HostProgram& m_host;
    SeenWindow m_grid;
};

} // namespace KestrinProductEditor
