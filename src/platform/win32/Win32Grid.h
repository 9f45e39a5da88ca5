// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/GridBase.h"
#include "platform/win32/Win32Control.h"
#include "platform/win32/Win32GridView.h"

#include <windows.h>

#include <cstdint>
#include <memory>

namespace KestrinProductEditor {

/// A grid on a window of the class Win32GridView::kClassName. It may end before its window or after it.
class Win32Grid final : public Win32Control<GridBase>, private Win32GridView::Listener
{
public:
    Win32Grid(HWND window, Win32Focus& focus);
    ~Win32Grid() override;

    void FitColumns() override;
    [[nodiscard]] std::int32_t MouseRow() const override;

private:
    void ShowAll() override;
    void ShowCells() override;
    void ShowColumn(std::int32_t col) override;
    void ShowCurrentRow() override;
    void ShowSelection() override;
    void ShowNotice() override;
    void ShowRedraw() override;

    void PressBegins() override;
    void PressEnds() override;
    void Chose(std::int32_t currentRow, const RowSelection& selection) override;
    void Scrolled(std::int32_t topRow) override;
    void Resized(std::int32_t col, std::int32_t twips) override;
    void Picked(std::int32_t row, std::int32_t col, std::int32_t number) override;
    void DoubleClicked() override;

    std::shared_ptr<Win32GridView> m_view;
};

} // namespace KestrinProductEditor
