// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace KestrinProductEditor {

/// One line of plain text that asks for no width: what does not fit is elided, and shown by the tool tip.
class QtHeading final : public QLabel
{
public:
    explicit QtHeading(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] QString PrvLine() const;
};

} // namespace KestrinProductEditor
