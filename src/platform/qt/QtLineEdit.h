// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtTypedText.h"

#include <QLineEdit>

namespace KestrinProductEditor {

/// A text box of one line; layouts place it as a promoted QLineEdit.
///
/// Pasted and dropped text stays one line: line breaks at its ends are left out, others become a blank each.
/// A text written by the program keeps its line breaks. Dropped files are left to the window.
class QtLineEdit final : public QLineEdit, public QtTypedText
{
public:
    explicit QtLineEdit(QWidget* parent = nullptr);

    void SelectUnits(qsizetype start, qsizetype length) override;
    [[nodiscard]] QString SelectedUnits() const override { return selectedText(); }
    void SetLocked(bool bLocked) override { setReadOnly(bLocked); }
    [[nodiscard]] bool IsLocked() const override { return isReadOnly(); }

    bool event(QEvent* event) override;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

    [[nodiscard]] QString WholeText() const override { return text(); }
    void PutText(const QString& text) override;
    void PasteClipboard() override;

private:
    void PrvPaste(const QString& text);
};

} // namespace KestrinProductEditor
