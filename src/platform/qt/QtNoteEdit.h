// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtTypedText.h"

#include <QPlainTextEdit>
#include <QTextCursor>

namespace KestrinProductEditor {

/// A text box of many lines; layouts place it as a promoted QPlainTextEdit.
///
/// Qt's documents know one kind of line break only, so the characters of each are kept with the line that
/// they begin: CR LF, LF and CR (and the rarer separators) come back as they were written or pasted. A typed
/// one is CR LF. Tab leaves the box. Dropped files are left to the window.
class QtNoteEdit final : public QPlainTextEdit, public QtTypedText
{
public:
    explicit QtNoteEdit(QWidget* parent = nullptr);

    void SelectUnits(qsizetype start, qsizetype length) override;
    [[nodiscard]] QString SelectedUnits() const override;
    void SetLocked(bool bLocked) override;
    [[nodiscard]] bool IsLocked() const override { return isReadOnly(); }

    bool event(QEvent* event) override;

protected:
    [[nodiscard]] bool canInsertFromMimeData(const QMimeData* source) const override;
    [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

    [[nodiscard]] QString WholeText() const override;
    void PutText(const QString& text) override;
    void PasteClipboard() override { paste(); }

private:
    void PrvPaintFrame();
    /// Puts a text in place of the selection, its line breaks as they are.
    void PrvInsert(const QString& text);
    static void PrvInsert(QTextCursor& cursor, const QString& text);
    [[nodiscard]] QString PrvTextBetween(int start, int end) const;
    [[nodiscard]] int PrvPositionOf(qsizetype unit) const;
};

} // namespace KestrinProductEditor
