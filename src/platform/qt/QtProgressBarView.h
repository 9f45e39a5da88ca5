// SPDX-License-Identifier: MIT
#pragma once

#include <QProgressBar>

namespace KestrinProductEditor {

/// A bar with any text on it. It keeps its place while it is hidden, and its colours while it is disabled: a
/// busy form disables everything, and the bar is what there is to see.
class QtProgressBarView final : public QProgressBar
{
public:
    explicit QtProgressBarView(QWidget* parent = nullptr);

    void SetCaption(const QString& caption);
    [[nodiscard]] QString text() const override { return m_caption; }

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void PrvKeepColours();

    QString m_caption;
};

} // namespace KestrinProductEditor
