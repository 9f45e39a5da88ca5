// SPDX-License-Identifier: MIT
#include "platform/qt/QtTypedText.h"

#include "platform/qt/QtText.h"

#include <algorithm>
#include <optional>

namespace KestrinProductEditor {

namespace {

constexpr std::int32_t kBackspace = 8;
constexpr std::int32_t kEnter = 13;
constexpr std::int32_t kCopy = 3;
constexpr std::int32_t kPaste = 22;
constexpr std::int32_t kCut = 24;
constexpr std::int32_t kLetters = 26;

Qt::KeyboardModifiers ChordOf(const QKeyEvent& event)
{
    return event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

bool IsEnter(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// Backspace, Enter, Ctrl with a letter, and the keys that do the same as one of those.
std::optional<std::int32_t> CommandOf(const QKeyEvent& event)
{
    const Qt::KeyboardModifiers chord = ChordOf(event);
    const int key = event.key();
    if (key == Qt::Key_Backspace && (chord & ~Qt::KeyboardModifiers(Qt::ControlModifier)) == 0)
        return kBackspace;
    if (IsEnter(key))
        return chord == 0 ? std::optional(kEnter) : std::nullopt;
    if (chord == Qt::ControlModifier && key != Qt::Key_Tab && key != Qt::Key_Backtab) {
        if (key >= Qt::Key_A && key <= Qt::Key_Z)
            return key - Qt::Key_A + 1;
        // Keyboards of other scripts name other keys but send the same text.
        if (event.text().size() == 1 && event.text().at(0) > u'\0' && event.text().at(0) <= QChar(kLetters))
            return event.text().at(0).unicode();
    }
    if (event.matches(QKeySequence::Copy))
        return kCopy;
    if (event.matches(QKeySequence::Cut))
        return kCut;
    if (event.matches(QKeySequence::Paste))
        return kPaste;
    return std::nullopt;
}

QString FromCharacter(std::int32_t character)
{
    return QString::fromStdU32String(std::u32string(1, static_cast<char32_t>(character)));
}

} // namespace

void QtTypedText::Write(std::u16string_view text)
{
    {
        const ChangeHold hold(*this);
        PutText(ToQt(text));
    }
    PrvTell();
}

void QtTypedText::NoteChange()
{
    m_mayHaveChanged = true;
    TellChange();
}

void QtTypedText::TellChange()
{
    if (m_mayHaveChanged && m_holds == 0)
        PrvTell();
}

void QtTypedText::PrvTell()
{
    m_mayHaveChanged = false;
    const QString text = WholeText();
    if (text == m_toldText)
        return;
    m_toldText = text;
    // A copy: the handler may end the widget.
    if (const std::function<void()> changed = Changed)
        changed();
}

void QtTypedText::TellDoubleClick(const QMouseEvent& event) const
{
    if (event.button() != Qt::LeftButton)
        return;
    if (const std::function<void()> doubleClicked = DoubleClicked)
        doubleClicked();
}

bool QtTypedText::LeavesToWindow(QEvent& event)
{
    if (event.type() != QEvent::ShortcutOverride)
        return false;
    const auto& key = static_cast<QKeyEvent&>(event);
    static constexpr Qt::Key kOwn[] = {Qt::Key_A, Qt::Key_C, Qt::Key_V, Qt::Key_X, Qt::Key_Y, Qt::Key_Z};
    const bool isLetter = key.key() >= Qt::Key_A && key.key() <= Qt::Key_Z;
    const bool isOwn = std::find(std::begin(kOwn), std::end(kOwn), key.key()) != std::end(kOwn);
    if (key.key() != Qt::Key_Escape && !(ChordOf(key) == Qt::ControlModifier && isLetter && !isOwn))
        return false;
    event.ignore();
    return true;
}

QtTypedText::KeyWay QtTypedText::AskAboutKey(QKeyEvent& event, QString& typed)
{
    if (const std::optional<std::int32_t> command = CommandOf(event)) {
        std::int32_t character = *command;
        PrvAsk(character);
        if (character == 0)
            return KeyWay::Done;
        if (character == kPaste) {
            PasteClipboard();
            return KeyWay::Done;
        }
        if (character == *command)
            return KeyWay::Base;
        typed = FromCharacter(character);
    } else {
        const QString text = event.text();
        const Qt::KeyboardModifiers chord = ChordOf(event);
        const bool isCharacter = !text.isEmpty() && text.at(0).category() != QChar::Other_Control;
        const bool isAltGr = chord == (Qt::ControlModifier | Qt::AltModifier);
        if (event.key() == Qt::Key_Escape || (isCharacter && chord != 0 && !isAltGr)) {
            event.ignore();
            return KeyWay::Done;
        }
        if (!isCharacter)
            return KeyWay::Base;
        typed = AskAboutText(text);
    }
    if (IsLocked())
        return KeyWay::Base;
    typed = Fitting(typed, SelectedUnits().size());
    return typed.isEmpty() ? KeyWay::Done : KeyWay::Type;
}

QString QtTypedText::AskAboutText(const QString& text)
{
    QString passed;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const QChar unit = text.at(at);
        const bool isPair =
            unit.isHighSurrogate() && at + 1 < text.size() && text.at(at + 1).isLowSurrogate();
        const bool isBreak = unit == u'\r' || unit == u'\n';
        const bool isLongBreak = unit == u'\r' && at + 1 < text.size() && text.at(at + 1) == u'\n';
        const std::int32_t asked =
            isPair    ? static_cast<std::int32_t>(QChar::surrogateToUcs4(unit, text.at(at + 1)))
            : isBreak ? kEnter
                      : unit.unicode();
        if (isPair || isLongBreak)
            ++at;
        std::int32_t character = asked;
        PrvAsk(character);
        if (character == 0)
            continue;
        if (character == kEnter)
            passed += QStringLiteral("\r\n");
        else if (character == asked && !isPair)
            passed += unit; // perhaps half a pair, which FromCharacter could not make
        else
            passed += FromCharacter(character);
    }
    return passed;
}

QString QtTypedText::Fitting(const QString& text, qsizetype replaced) const
{
    if (m_limit == 0)
        return text;
    qsizetype room = std::max<qsizetype>(m_limit - (WholeText().size() - replaced), 0);
    if (room >= text.size())
        return text;
    // Nothing is cut in two: no pair, no CR LF.
    const bool isInPair = room > 0 && text.at(room - 1).isHighSurrogate() && text.at(room).isLowSurrogate();
    const bool isInBreak = room > 0 && text.at(room - 1) == u'\r' && text.at(room) == u'\n';
    if (isInPair || isInBreak)
        --room;
    return text.left(room);
}

void QtTypedText::PrvAsk(std::int32_t& character) const
{
    if (const std::function<void(std::int32_t&)> ask = Typed)
        ask(character);
}

} // namespace KestrinProductEditor
