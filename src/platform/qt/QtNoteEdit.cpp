// SPDX-License-Identifier: MIT
#include "platform/qt/QtNoteEdit.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>
#include <QTextBlock>

#include <algorithm>
#include <memory>

namespace KestrinProductEditor {

namespace {

// The characters of the line break before a block, as a property of its format: undoing brings them back.
constexpr int kBreakBefore = QTextFormat::UserProperty + 1;

const QString& TypedBreak()
{
    static const QString kCrLf = QStringLiteral("\r\n");
    return kCrLf;
}

QString BreakBefore(const QTextBlock& block)
{
    const QString kept = block.blockFormat().stringProperty(kBreakBefore);
    return kept.isEmpty() ? TypedBreak() : kept;
}

QTextBlockFormat FormatAfter(const QString& lineBreak)
{
    QTextBlockFormat format;
    format.setProperty(kBreakBefore, lineBreak);
    return format;
}

/// How many units at a place make a new block; 0 for none. The last two are what Qt frames tables with.
int BreakLength(const QString& text, qsizetype at)
{
    switch (text.at(at).unicode()) {
    case u'\r':
        return at + 1 < text.size() && text.at(at + 1) == u'\n' ? 2 : 1;
    case u'\n':
    case QChar::ParagraphSeparator:
    case 0xFDD0:
    case 0xFDD1:
        return 1;
    default:
        return 0;
    }
}

int EndOf(const QTextBlock& block)
{
    return block.position() + block.length() - 1;
}

} // namespace

QtNoteEdit::QtNoteEdit(QWidget* parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { NoteChange(); });
}

void QtNoteEdit::SelectUnits(qsizetype start, qsizetype length)
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(PrvPositionOf(std::max<qsizetype>(start, 0)));
    cursor.setPosition(PrvPositionOf(std::max<qsizetype>(start + std::max<qsizetype>(length, 0), 0)),
                       QTextCursor::KeepAnchor);
    setTextCursor(cursor);
}

QString QtNoteEdit::SelectedUnits() const
{
    const QTextCursor cursor = textCursor();
    return PrvTextBetween(cursor.selectionStart(), cursor.selectionEnd());
}

void QtNoteEdit::SetLocked(bool bLocked)
{
    setReadOnly(bLocked);
    if (bLocked)
        setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
}

bool QtNoteEdit::event(QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        PrvPaintFrame();
        return true;
    }
    if (LeavesToWindow(*event))
        return true;
    bool isHandled = false;
    {
        const ChangeHold hold(*this);
        isHandled = QPlainTextEdit::event(event);
    }
    TellChange();
    return isHandled;
}

bool QtNoteEdit::viewportEvent(QEvent* event)
{
    bool isHandled = false;
    {
        const ChangeHold hold(*this);
        isHandled = QPlainTextEdit::viewportEvent(event);
    }
    TellChange();
    return isHandled;
}

bool QtNoteEdit::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasText();
}

QMimeData* QtNoteEdit::createMimeDataFromSelection() const
{
    auto selected = std::make_unique<QMimeData>();
    selected->setText(SelectedUnits());
    return selected.release();
}

void QtNoteEdit::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasUrls())
        event->ignore();
    else
        QPlainTextEdit::dragEnterEvent(event);
}

void QtNoteEdit::inputMethodEvent(QInputMethodEvent* event)
{
    if (isReadOnly()) {
        event->ignore();
        return;
    }
    const QString asked = AskAboutText(event->commitString());
    const QString commit = Fitting(asked, SelectedUnits().size() + event->replacementLength());
    const bool hasBreaks = commit.contains(u'\n');
    QInputMethodEvent passed(event->preeditString(), event->attributes());
    if (!commit.isEmpty() || event->replacementLength() > 0)
        passed.setCommitString(hasBreaks ? QString() : commit, event->replacementStart(),
                               event->replacementLength());
    QPlainTextEdit::inputMethodEvent(&passed);
    event->setAccepted(passed.isAccepted());
    if (hasBreaks)
        PrvInsert(commit);
}

void QtNoteEdit::insertFromMimeData(const QMimeData* source)
{
    if (!isReadOnly())
        PrvInsert(Fitting(source->text(), SelectedUnits().size()));
}

void QtNoteEdit::keyPressEvent(QKeyEvent* event)
{
    QString typed;
    KeyWay way = AskAboutKey(*event, typed);
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (way == KeyWay::Base && isEnter) {
        typed = Fitting(TypedBreak(), SelectedUnits().size());
        way = typed.isEmpty() ? KeyWay::Done : KeyWay::Type;
        if (isReadOnly() || (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0) {
            event->ignore();
            return;
        }
    }
    switch (way) {
    case KeyWay::Base:
        QPlainTextEdit::keyPressEvent(event);
        break;
    case KeyWay::Type:
        if (typed == TypedBreak()) {
            PrvInsert(typed);
        } else {
            QKeyEvent passed(QEvent::KeyPress, Qt::Key_unknown, Qt::NoModifier, typed);
            QPlainTextEdit::keyPressEvent(&passed);
        }
        break;
    case KeyWay::Done:
        break;
    }
}

void QtNoteEdit::mouseDoubleClickEvent(QMouseEvent* event)
{
    QPlainTextEdit::mouseDoubleClickEvent(event);
    TellDoubleClick(*event);
}

QString QtNoteEdit::WholeText() const
{
    return PrvTextBetween(0, EndOf(document()->lastBlock()));
}

void QtNoteEdit::PutText(const QString& text)
{
    document()->setUndoRedoEnabled(false);
    QTextCursor cursor(document());
    cursor.select(QTextCursor::Document);
    PrvInsert(cursor, text);
    document()->setUndoRedoEnabled(true);
    moveCursor(QTextCursor::Start);
}

/// As that of a box of one line, which shows who has the focus; what is inside is the viewport's to paint.
void QtNoteEdit::PrvPaintFrame()
{
    QStyleOptionFrame option;
    initStyleOption(&option);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_FrameLineEdit, &option, &painter, this);
}

void QtNoteEdit::PrvInsert(const QString& text)
{
    if (text.isEmpty())
        return;
    QTextCursor cursor = textCursor();
    PrvInsert(cursor, text);
    setTextCursor(cursor);
    ensureCursorVisible();
}

void QtNoteEdit::PrvInsert(QTextCursor& cursor, const QString& text)
{
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    qsizetype start = 0;
    for (qsizetype at = 0; at < text.size();) {
        const int length = BreakLength(text, at);
        if (length == 0) {
            ++at;
            continue;
        }
        cursor.insertText(text.mid(start, at - start));
        cursor.insertBlock(FormatAfter(text.mid(at, length)));
        at += length;
        start = at;
    }
    cursor.insertText(text.mid(start));
    cursor.endEditBlock();
}

QString QtNoteEdit::PrvTextBetween(int start, int end) const
{
    QString text;
    for (QTextBlock block = document()->findBlock(start); block.isValid() && block.position() <= end;
         block = block.next()) {
        if (block.position() > start)
            text += BreakBefore(block);
        const int from = std::max(start, block.position());
        const int to = std::min(end, EndOf(block));
        text += block.text().mid(from - block.position(), to - from);
    }
    return text;
}

int QtNoteEdit::PrvPositionOf(qsizetype unit) const
{
    qsizetype passed = 0;
    for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next()) {
        if (block.position() > 0) {
            passed += BreakBefore(block).size();
            if (unit < passed) // within a CR LF
                return block.position() - 1;
        }
        if (unit <= passed + block.length() - 1)
            return block.position() + static_cast<int>(unit - passed);
        passed += block.length() - 1;
    }
    return EndOf(document()->lastBlock());
}

} // namespace KestrinProductEditor
