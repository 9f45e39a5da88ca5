// SPDX-License-Identifier: MIT
#include "platform/qt/QtLineEdit.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>

#include <algorithm>
#include <limits>

namespace KestrinProductEditor {

namespace {

bool IsBreak(QChar unit)
{
    return unit == u'\r' || unit == u'\n' || unit == QChar::LineSeparator ||
           unit == QChar::ParagraphSeparator;
}

QString InOneLine(const QString& text)
{
    const auto begin = std::find_if_not(text.begin(), text.end(), IsBreak);
    const auto end = std::find_if_not(text.rbegin(), std::make_reverse_iterator(begin), IsBreak).base();
    QString line(begin, end - begin);
    line.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    std::replace_if(line.begin(), line.end(), IsBreak, u' ');
    return line;
}

} // namespace

QtLineEdit::QtLineEdit(QWidget* parent) : QLineEdit(parent)
{
    // The limit here is for what is typed; Qt's would cut what the program writes.
    setMaxLength(std::numeric_limits<int>::max());
    connect(this, &QLineEdit::textChanged, this, [this] { NoteChange(); });
}

void QtLineEdit::SelectUnits(qsizetype start, qsizetype length)
{
    const qsizetype size = text().size();
    const qsizetype from = std::clamp<qsizetype>(start, 0, size);
    const qsizetype to = std::clamp<qsizetype>(start + std::max<qsizetype>(length, 0), from, size);
    deselect();
    if (from == to)
        setCursorPosition(static_cast<int>(from));
    else
        setSelection(static_cast<int>(from), static_cast<int>(to - from));
}

bool QtLineEdit::event(QEvent* event)
{
    if (LeavesToWindow(*event))
        return true;
    bool isHandled = false;
    {
        const ChangeHold hold(*this);
        isHandled = QLineEdit::event(event);
    }
    TellChange();
    return isHandled;
}

void QtLineEdit::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* const menu = createStandardContextMenu();
    if (!menu)
        return;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // Qt's own pasting knows neither the limit nor what becomes of line breaks; the action has no other name.
    for (QAction* const action : menu->actions()) {
        if (action->text().section(u'\t', 0, 0) == QLineEdit::tr("&Paste")) {
            disconnect(action, &QAction::triggered, nullptr, nullptr);
            connect(action, &QAction::triggered, this, [this] { PasteClipboard(); });
        }
    }
    menu->popup(event->globalPos());
}

void QtLineEdit::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QLineEdit::dragEnterEvent(event);
}

void QtLineEdit::dropEvent(QDropEvent* event)
{
    if (isReadOnly() || !event->mimeData()->hasText()) {
        event->ignore();
        return;
    }
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    PrvPaste(event->mimeData()->text());
    event->acceptProposedAction();
}

void QtLineEdit::inputMethodEvent(QInputMethodEvent* event)
{
    if (isReadOnly()) {
        event->ignore();
        return;
    }
    const QString commit = InOneLine(AskAboutText(event->commitString()));
    QInputMethodEvent passed(event->preeditString(), event->attributes());
    if (!commit.isEmpty() || event->replacementLength() > 0)
        passed.setCommitString(Fitting(commit, selectedText().size() + event->replacementLength()),
                               event->replacementStart(), event->replacementLength());
    QLineEdit::inputMethodEvent(&passed);
    event->setAccepted(passed.isAccepted());
}

void QtLineEdit::keyPressEvent(QKeyEvent* event)
{
    QString typed;
    switch (AskAboutKey(*event, typed)) {
    case KeyWay::Base:
        QLineEdit::keyPressEvent(event);
        break;
    case KeyWay::Type: {
        QKeyEvent passed(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, typed);
        QLineEdit::keyPressEvent(&passed);
        break;
    }
    case KeyWay::Done:
        break;
    }
}

void QtLineEdit::mouseDoubleClickEvent(QMouseEvent* event)
{
    QLineEdit::mouseDoubleClickEvent(event);
    TellDoubleClick(*event);
}

void QtLineEdit::mouseReleaseEvent(QMouseEvent* event)
{
    const QClipboard& clipboard = *QGuiApplication::clipboard();
    if (event->button() == Qt::MiddleButton && clipboard.supportsSelection() && !isReadOnly()) {
        deselect();
        PrvPaste(clipboard.text(QClipboard::Selection));
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
}

void QtLineEdit::PutText(const QString& text)
{
    setText(text);
    setCursorPosition(0);
}

void QtLineEdit::PasteClipboard()
{
    if (!isReadOnly())
        PrvPaste(QGuiApplication::clipboard()->text());
}

void QtLineEdit::PrvPaste(const QString& text)
{
    const QString fitting = Fitting(InOneLine(text), selectedText().size());
    if (!fitting.isEmpty())
        insert(fitting);
}

} // namespace KestrinProductEditor
