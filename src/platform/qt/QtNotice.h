// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

namespace KestrinProductEditor {

/// Plain text of any length in the room that the layout gives it: wrapped between words, within them where it
/// must (paths), and shown whole by the tool tip.
class QtNotice final : public QLabel
{
public:
    explicit QtNotice(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

} // namespace KestrinProductEditor
