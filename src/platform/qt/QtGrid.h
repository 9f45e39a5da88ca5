// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControl.h"
#include "platform/qt/QtGridModel.h"
#include "platform/qt/QtGridView.h"
#include "platform/ui/GridBase.h"

#include <QPointer>

#include <cstdint>

namespace KestrinProductEditor {

/// A grid on a QtGridView. It may end before its widget or after it.
class QtGrid final : public QtControl<GridBase>, private QtGridView::Listener
{
public:
    QtGrid(QtGridView& view, QtFocus& focus);
    ~QtGrid() override;

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

    QtGridModel m_model;
    QPointer<QtGridView> m_view;
};

} // namespace KestrinProductEditor
