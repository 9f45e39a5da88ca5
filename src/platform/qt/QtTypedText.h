// SPDX-License-Identifier: MIT
#pragma once

#include <QEvent>
#include <QKeyEvent>
#include <QString>

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// What the two widgets for text do alike: characters are asked about one by one before they are typed,
/// nothing makes the text longer than it may be, and a change of the text is told once.
///
/// What counts as a character: what the key's text says, AltGr's characters too; Backspace (8); Enter (13);
/// Ctrl with a letter (1 to 26). The other keys of the clipboard (Shift+Insert, Ctrl+Insert, Shift+Delete)
/// come as the letters that do the same. Alt with a letter is a mnemonic, never typed. A character beyond
/// U+FFFF comes once.
///
/// Pasted and dropped text is not asked about.
class QtTypedText
{
public:
    QtTypedText() = default;
    QtTypedText(const QtTypedText&) = delete;
    QtTypedText& operator=(const QtTypedText&) = delete;
    virtual ~QtTypedText() = default;

    /// A character is about to be typed; 0 swallows it.
    std::function<void(std::int32_t&)> Typed;
    /// The text is another than when this was last called.
    std::function<void()> Changed;
    std::function<void()> DoubleClicked;

    /// Exactly that text, the caret at its beginning, without anything to undo. Not cut.
    void Write(std::u16string_view text);
    [[nodiscard]] std::u16string Read() const { return WholeText().toStdU16String(); }
    /// In UTF-16 units; 0 for no limit.
    void SetLimit(std::int32_t limit) { m_limit = limit; }
    [[nodiscard]] std::int32_t Limit() const { return m_limit; }

    // In UTF-16 units of the text

    virtual void SelectUnits(qsizetype start, qsizetype length) = 0;
    [[nodiscard]] virtual QString SelectedUnits() const = 0;
    virtual void SetLocked(bool bLocked) = 0;
    [[nodiscard]] virtual bool IsLocked() const = 0;

protected:
    /// Holds back Changed until the event that changes the text is over. Scopes nest.
    class ChangeHold;

    /// The text as it was given, line breaks too.
    [[nodiscard]] virtual QString WholeText() const = 0;
    virtual void PutText(const QString& text) = 0;
    virtual void PasteClipboard() = 0;

    /// Keeps a box from claiming a key that the window may use: Esc, and Ctrl with a letter that is not of
    /// editing. True when the event was dealt with.
    static bool LeavesToWindow(QEvent& event);
    enum class KeyWay
    {
        Base, ///< the widget's own way with that key
        Type, ///< to type the text that was answered
        Done, ///< nothing more
    };
    /// Asks about the character of a key, if it is one, and says what is to be done.
    KeyWay AskAboutKey(QKeyEvent& event, QString& typed);
    /// What is left of a text after each of its characters was asked about. A line break is Enter.
    [[nodiscard]] QString AskAboutText(const QString& text);
    /// As much of a text as there is room for when `replaced` units make way for it.
    [[nodiscard]] QString Fitting(const QString& text, qsizetype replaced) const;
    /// The widget says that its text may be another now.
    void NoteChange();
    /// Tells of a change that was held back, if there was one. May end the widget.
    void TellChange();
    void TellDoubleClick(const QMouseEvent& event) const;

private:
    void PrvTell();
    void PrvAsk(std::int32_t& character) const;

    std::int32_t m_limit = 0;
    QString m_toldText;
    bool m_mayHaveChanged = false;
    int m_holds = 0;
};

class QtTypedText::ChangeHold
{
public:
    explicit ChangeHold(QtTypedText& text) : m_text(text) { ++m_text.m_holds; }
    ChangeHold(const ChangeHold&) = delete;
    ChangeHold& operator=(const ChangeHold&) = delete;
    ~ChangeHold() { --m_text.m_holds; }

private:
    QtTypedText& m_text;
};

} // namespace KestrinProductEditor
