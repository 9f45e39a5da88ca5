// SPDX-License-Identifier: MIT
#include "platform/qt/QtTextBox.h"
#include "platform/qt/QtNoteBox.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QShortcut>
#include <QTest>
#include <QUrl>
#include <QVBoxLayout>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

namespace KestrinProductEditor {

namespace {

using ::testing::ElementsAre;

/// A window with a box of one line and a note. `boxes` lets a test do the same to both.
class QtTextBoxes : public ::testing::Test
{
protected:
    struct Box
    {
        ITextBox& box;
        QWidget& widget;
    };

    QtTextBoxes()
    {
        m_layout.addWidget(&m_line);
        m_layout.addWidget(&m_edit);
        m_window.resize(300, 200);
        m_window.show();
        m_window.activateWindow();
        QApplication::processEvents();
    }

    static void TypeInto(QWidget& widget, const QString& text)
    {
        for (const QChar letter : text)
            QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(letter), Qt::NoModifier, -1);
    }

    static void Compose(QWidget& widget, const QString& text)
    {
        QInputMethodEvent preedit(text, {});
        QApplication::sendEvent(&widget, &preedit);
        QInputMethodEvent commit;
        commit.setCommitString(text);
        QApplication::sendEvent(&widget, &commit);
    }

    static void Paste(QWidget& widget, const QString& text)
    {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(&widget, Qt::Key_V, Qt::ControlModifier);
    }

    static bool DropOn(QWidget& widget, const QMimeData& data)
    {
        QDragEnterEvent enter(QPoint(3, 3), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QApplication::sendEvent(&widget, &enter);
        if (!enter.isAccepted())
            return false;
        QDropEvent drop(QPointF(3, 3), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&widget, &drop);
        return drop.isAccepted();
    }

    QWidget m_window;
    QVBoxLayout m_layout{&m_window};
    QtLineEdit m_line;
    QtNoteEdit m_edit;
    QtFocus m_focus{m_window};
    QtTextBox m_text{m_line, m_focus};
    QtNoteBox m_note{m_edit, m_focus};
    const std::vector<Box> boxes{{m_text, m_line}, {m_note, m_edit}};
};

std::vector<std::int32_t> HeardFrom(ITextBox& box, const std::function<void()>& act)
{
    std::vector<std::int32_t> heard;
    box.KeyPress.Connect([&heard](std::int32_t& character) { heard.push_back(character); });
    act();
    box.KeyPress.Connect(nullptr);
    return heard;
}

double Luminance(const QColor& color)
{
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor& one, const QColor& other)
{
    const double first = Luminance(one) + 0.05;
    const double second = Luminance(other) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

} // namespace

TEST_F(QtTextBoxes, ShowTheFocusByTheSameFrame)
{
    const auto frameOf = [](QWidget& widget) {
        QApplication::processEvents();
        return widget.grab().toImage().pixelColor(0, widget.height() / 2);
    };
    m_edit.setFocus();
    const QColor line = frameOf(m_line);
    const QColor noteFocused = frameOf(m_edit);
    m_line.setFocus();
    EXPECT_EQ(frameOf(m_edit), line);
    EXPECT_EQ(frameOf(m_line), noteFocused);
    EXPECT_NE(line, noteFocused);
}

TEST_F(QtTextBoxes, GiveBackEveryTextAsItWasWritten)
{
    const std::u16string texts[] = {
        u"",
        u"one\r\ntwo",
        u"one\ntwo",
        u"one\rtwo",
        u"\r\n",
        u"\n\r",
        u"\r\n\n\r\r\n",
        u"mixed\r\nkinds\nof\rbreaks\r\n",
        u"a\tb\u00A0c",
        u"  blanks  ",
        u"\u2028line\u2029paragraph",
        u"\u00ADsoft\u200Bjoined\u200D",
        u"\U0001F600",
        std::u16string{u'a', char16_t{0xD83D}, u'b'},
        std::u16string{char16_t{0xDE00}, u'b', char16_t{0xD83D}},
        std::u16string{u'a', u'\0', u'b', char16_t{0xFFFC}, char16_t{0xFDD0}, u'c', char16_t{0xFDD1}, u'd',
                       char16_t{0xFFFF}},
        std::u16string(40000, u'x'),
    };
    for (const Box& each : boxes) {
        for (const std::u16string& text : texts) {
            each.box.SetText(text);
            EXPECT_EQ(each.box.Text(), text);
            each.box.Select(0, static_cast<std::int32_t>(text.size()));
            EXPECT_EQ(each.box.SelectedText(), text);
        }
    }
}

TEST_F(QtTextBoxes, KeepEveryOtherLineBreakWhenALineIsTypedInto)
{
    m_note.SetText(u"one\rtwo\nthree\r\nfour");
    m_note.Select(7, 0);
    TypeInto(m_edit, QStringLiteral("!"));
    EXPECT_EQ(m_note.Text(), u"one\rtwo!\nthree\r\nfour");
    QTest::keyClick(&m_edit, Qt::Key_Return);
    EXPECT_EQ(m_note.Text(), u"one\rtwo!\r\n\nthree\r\nfour");
    QTest::keyClick(&m_edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_note.Text(), u"one\rtwo!\nthree\r\nfour");
}

TEST_F(QtTextBoxes, BringLineBreaksBackWhenTheirRemovalIsUndone)
{
    m_note.SetText(u"one\rtwo\nthree");
    m_note.Select(1, 8);
    QTest::keyClick(&m_edit, Qt::Key_Delete);
    EXPECT_EQ(m_note.Text(), u"ohree");
    QTest::keyClick(&m_edit, Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(m_note.Text(), u"one\rtwo\nthree");
}

TEST_F(QtTextBoxes, MakeATypedLineBreakCrLf)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        m_note.SetText(u"a\nb");
        m_note.Select(3, 0);
        QTest::keyClick(&m_edit, key);
        EXPECT_EQ(m_note.Text(), u"a\nb\r\n");
        QTest::keyClick(&m_edit, key, Qt::ShiftModifier);
        EXPECT_EQ(m_note.Text(), u"a\nb\r\n\r\n");
    }
    m_text.SetText(u"a");
    QTest::keyClick(&m_line, Qt::Key_Return);
    EXPECT_EQ(m_text.Text(), u"a");
}

TEST_F(QtTextBoxes, PasteAText)
{
    const struct
    {
        const char16_t* pasted;
        const char16_t* inLine;
        const char16_t* inNote;
    } cases[] = {
        {u"plain", u"plain", u"plain"},
        {u"one\r\ntwo\nthree\rfour", u"one two three four", u"one\r\ntwo\nthree\rfour"},
        {u"Hammer\r\n", u"Hammer", u"Hammer\r\n"},
        {u"\n\nHammer\n", u"Hammer", u"\n\nHammer\n"},
        {u" a\t\u00A0b ", u" a\t\u00A0b ", u" a\t\u00A0b "},
        {u"\r\n", u"", u"\r\n"},
    };
    for (const auto& each : cases) {
        for (const Box& box : boxes) {
            box.box.SetText(u"");
            Paste(box.widget, QString::fromUtf16(each.pasted));
        }
        EXPECT_EQ(m_text.Text(), each.inLine);
        EXPECT_EQ(m_note.Text(), each.inNote);
    }
}

TEST_F(QtTextBoxes, PasteByEveryKeyAndByTheContextMenu)
{
    QApplication::clipboard()->setText(QStringLiteral("a\nb"));
    m_text.SetText(u"");
    QTest::keyClick(&m_line, Qt::Key_Insert, Qt::ShiftModifier);
    EXPECT_EQ(m_text.Text(), u"a b");

    m_text.SetText(u"");
    QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(3, 3), m_line.mapToGlobal(QPoint(3, 3)));
    QApplication::sendEvent(&m_line, &event);
    auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_NE(menu, nullptr);
    for (QAction* const action : menu->actions())
        if (action->text().startsWith(QStringLiteral("&Paste")))
            action->trigger();
    menu->close();
    EXPECT_EQ(m_text.Text(), u"a b");
}

TEST_F(QtTextBoxes, TakeADroppedTextButLeaveAFileToTheWindow)
{
    QMimeData text;
    text.setText(QStringLiteral("12\n34"));
    m_text.KeyPress.Connect([](std::int32_t& character) { character = 0; });
    EXPECT_TRUE(DropOn(m_line, text));
    EXPECT_EQ(m_text.Text(), u"12 34");
    EXPECT_TRUE(DropOn(*m_edit.viewport(), text));
    EXPECT_EQ(m_note.Text(), u"12\n34");

    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(QStringLiteral("/list.csv"))});
    file.setText(QStringLiteral("file:///list.csv"));
    EXPECT_FALSE(DropOn(m_line, file));
    EXPECT_FALSE(DropOn(*m_edit.viewport(), file));

    m_text.SetLocked(true);
    m_note.SetLocked(true);
    EXPECT_FALSE(DropOn(m_line, text));
    EXPECT_FALSE(DropOn(*m_edit.viewport(), text));
    EXPECT_EQ(m_text.Text(), u"12 34");
    EXPECT_EQ(m_note.Text(), u"12\n34");
}

TEST_F(QtTextBoxes, TakeNoMoreThanTheirMaxLength)
{
    for (const Box& each : boxes) {
        each.box.SetMaxLength(4);
        EXPECT_EQ(each.box.MaxLength(), 4);
        each.box.SetText(u"");
        TypeInto(each.widget, QStringLiteral("abcdef"));
        EXPECT_EQ(each.box.Text(), u"abcd");

        each.box.Select(1, 2);
        TypeInto(each.widget, QStringLiteral("xyz"));
        EXPECT_EQ(each.box.Text(), u"axyd");

        each.box.SetText(u"ab");
        each.box.Select(2, 0);
        Paste(each.widget, QStringLiteral("cdef"));
        EXPECT_EQ(each.box.Text(), u"abcd");

        each.box.SetText(u"abc");
        each.box.Select(3, 0);
        Paste(each.widget, QStringLiteral("\U0001F600"));
        EXPECT_EQ(each.box.Text(), u"abc") << "a pair is not cut in two";

        each.box.SetText(u"ab");
        each.box.Select(2, 0);
        Compose(each.widget, QStringLiteral("\u00E9\u00E8\u00EA"));
        EXPECT_EQ(each.box.Text(), u"ab\u00E9\u00E8");
    }
}

TEST_F(QtTextBoxes, CountALineBreakAsItsCharacters)
{
    m_note.SetMaxLength(4);
    m_note.SetText(u"ab");
    m_note.Select(2, 0);
    QTest::keyClick(&m_edit, Qt::Key_Return);
    QTest::keyClick(&m_edit, Qt::Key_Return);
    EXPECT_EQ(m_note.Text(), u"ab\r\n");
    m_note.SetText(u"abc");
    m_note.Select(3, 0);
    QTest::keyClick(&m_edit, Qt::Key_Return);
    EXPECT_EQ(m_note.Text(), u"abc") << "a line break is not cut in two";
    Paste(m_edit, QStringLiteral("\r\n"));
    EXPECT_EQ(m_note.Text(), u"abc");
    Paste(m_edit, QStringLiteral("\nx"));
    EXPECT_EQ(m_note.Text(), u"abc\n");
}

TEST_F(QtTextBoxes, DoNotCutWhatTheProgramWrites)
{
    for (const Box& each : boxes) {
        each.box.SetMaxLength(3);
        each.box.SetText(u"abcdef");
        EXPECT_EQ(each.box.Text(), u"abcdef");
        each.box.Select(6, 0);
        TypeInto(each.widget, QStringLiteral("x"));
        EXPECT_EQ(each.box.Text(), u"abcdef");
        QTest::keyClick(&each.widget, Qt::Key_Backspace);
        TypeInto(each.widget, QStringLiteral("x"));
        EXPECT_EQ(each.box.Text(), u"abcde") << "a text that is too long only gets shorter";
        each.box.SetMaxLength(0);
        TypeInto(each.widget, QStringLiteral("xyz"));
        EXPECT_EQ(each.box.Text(), u"abcdexyz");
    }
}

TEST_F(QtTextBoxes, RaiseChangeOnceForEachChange)
{
    for (const Box& each : boxes) {
        int changes = 0;
        each.box.Change.Connect([&changes] { ++changes; });
        const auto changesOf = [&changes](const std::function<void()>& act) {
            changes = 0;
            act();
            return changes;
        };
        EXPECT_EQ(changesOf([&] { each.box.SetText(u"abc"); }), 1);
        EXPECT_EQ(changesOf([&] { each.box.SetText(u"abc"); }), 0);
        each.box.Select(0, 3);
        EXPECT_EQ(changesOf([&] { Paste(each.widget, QStringLiteral("xyz")); }), 1);
        each.box.Select(0, 3);
        EXPECT_EQ(changesOf([&] { Paste(each.widget, QStringLiteral("xyz")); }), 0);
        EXPECT_EQ(changesOf([&] { TypeInto(each.widget, QStringLiteral("q")); }), 1);
        EXPECT_EQ(changesOf([&] { Compose(each.widget, QStringLiteral("pq")); }), 1);
        EXPECT_EQ(changesOf([&] { QTest::keyClick(&each.widget, Qt::Key_Backspace); }), 1);
        EXPECT_EQ(changesOf([&] { QTest::keyClick(&each.widget, Qt::Key_Z, Qt::ControlModifier); }), 1);
        EXPECT_EQ(changesOf([&] { QTest::keyClick(&each.widget, Qt::Key_Left); }), 0);
        each.box.Select(0, 2);
        EXPECT_EQ(changesOf([&] { QTest::keyClick(&each.widget, Qt::Key_X, Qt::ControlModifier); }), 1);
        each.box.Change.Connect(nullptr);
    }
}

TEST_F(QtTextBoxes, RaiseChangeOfAWriteBeforeTheWriteReturns)
{
    for (const Box& each : boxes) {
        std::u16string heard;
        each.box.Change.Connect([&] { heard = each.box.Text(); });
        each.box.KeyPress.Connect([&](std::int32_t& character) {
            character = 0;
            each.box.SetText(u"from the handler");
            EXPECT_EQ(heard, u"from the handler");
        });
        TypeInto(each.widget, QStringLiteral("a"));
        EXPECT_EQ(each.box.Text(), u"from the handler");
    }
}

TEST_F(QtTextBoxes, RaiseKeyPressForCharactersOnly)
{
    const struct
    {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        std::int32_t character; // 0: no KeyPress
    } cases[] = {
        {Qt::Key_A, Qt::NoModifier, u'a'},
        {Qt::Key_5, Qt::NoModifier, u'5'},
        {Qt::Key_5, Qt::KeypadModifier, u'5'},
        {Qt::Key_Space, Qt::NoModifier, u' '},
        {Qt::Key_Backspace, Qt::NoModifier, 8},
        {Qt::Key_Backspace, Qt::ControlModifier, 8},
        {Qt::Key_Return, Qt::NoModifier, 13},
        {Qt::Key_Enter, Qt::KeypadModifier, 13},
        {Qt::Key_C, Qt::ControlModifier, 3},
        {Qt::Key_V, Qt::ControlModifier, 22},
        {Qt::Key_X, Qt::ControlModifier, 24},
        {Qt::Key_Z, Qt::ControlModifier, 26},
        {Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier, 26},
        {Qt::Key_A, Qt::ControlModifier, 1},
        {Qt::Key_K, Qt::ControlModifier, 11},
        {Qt::Key_Insert, Qt::ControlModifier, 3},
        {Qt::Key_Insert, Qt::ShiftModifier, 22},
        {Qt::Key_Delete, Qt::ShiftModifier, 24},
        {Qt::Key_Delete, Qt::NoModifier, 0},
        {Qt::Key_Left, Qt::NoModifier, 0},
        {Qt::Key_Right, Qt::ShiftModifier, 0},
        {Qt::Key_Up, Qt::NoModifier, 0},
        {Qt::Key_Home, Qt::NoModifier, 0},
        {Qt::Key_End, Qt::ControlModifier, 0},
        {Qt::Key_PageDown, Qt::NoModifier, 0},
        {Qt::Key_Insert, Qt::NoModifier, 0},
        {Qt::Key_F2, Qt::NoModifier, 0},
        {Qt::Key_F10, Qt::NoModifier, 0},
        {Qt::Key_Escape, Qt::NoModifier, 0},
        {Qt::Key_A, Qt::AltModifier, 0},
        {Qt::Key_Shift, Qt::ShiftModifier, 0},
        {Qt::Key_Tab, Qt::NoModifier, 0},
    };
    for (const Box& each : boxes) {
        for (const auto& one : cases) {
            each.box.SetText(u"text");
            each.widget.setFocus();
            const std::vector<std::int32_t> heard =
                HeardFrom(each.box, [&] { QTest::keyClick(&each.widget, one.key, one.modifiers); });
            if (one.character == 0)
                EXPECT_TRUE(heard.empty()) << one.key;
            else
                EXPECT_THAT(heard, ElementsAre(one.character)) << one.key;
        }
    }
}

TEST_F(QtTextBoxes, TypeWhatAltGrMakesButNotAMnemonic)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"");
        QTest::sendKeyEvent(QTest::Click, &each.widget, Qt::Key_E, QStringLiteral("\u20AC"),
                            Qt::ControlModifier | Qt::AltModifier, -1);
        EXPECT_EQ(each.box.Text(), u"\u20AC");
        QTest::sendKeyEvent(QTest::Click, &each.widget, Qt::Key_E, QStringLiteral("e"), Qt::AltModifier, -1);
        EXPECT_EQ(each.box.Text(), u"\u20AC");
    }
}

TEST_F(QtTextBoxes, DoNothingForASwallowedCharacter)
{
    for (const Box& each : boxes) {
        each.box.KeyPress.Connect([](std::int32_t& character) { character = 0; });
        each.box.SetText(u"text");
        each.box.Select(1, 2);
        QApplication::clipboard()->setText(QStringLiteral("pasted"));
        TypeInto(each.widget, QStringLiteral("x "));
        QTest::keyClick(&each.widget, Qt::Key_Backspace);
        QTest::keyClick(&each.widget, Qt::Key_Return);
        for (const Qt::Key key : {Qt::Key_C, Qt::Key_X, Qt::Key_V, Qt::Key_A, Qt::Key_Z})
            QTest::keyClick(&each.widget, key, Qt::ControlModifier);
        QTest::keyClick(&each.widget, Qt::Key_Insert, Qt::ShiftModifier);
        QTest::keyClick(&each.widget, Qt::Key_Insert, Qt::ControlModifier);
        QTest::keyClick(&each.widget, Qt::Key_Delete, Qt::ShiftModifier);
        EXPECT_EQ(each.box.Text(), u"text");
        EXPECT_EQ(each.box.SelectedText(), u"ex");
        EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("pasted"));
        QTest::keyClick(&each.widget, Qt::Key_Delete);
        EXPECT_EQ(each.box.Text(), u"tt") << "Delete is no character";
    }
}

TEST_F(QtTextBoxes, TypeTheCharacterThatAHandlerPutsInItsPlace)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"");
        each.box.KeyPress.Connect([](std::int32_t& character) {
            if (character == u'a')
                character = u'B';
        });
        TypeInto(each.widget, QStringLiteral("abc"));
        Compose(each.widget, QStringLiteral("xa"));
        EXPECT_EQ(each.box.Text(), u"BbcxB");
    }
}

TEST_F(QtTextBoxes, AskAboutComposedTextCharacterByCharacter)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"");
        std::vector<std::int32_t> heard;
        each.box.KeyPress.Connect([&heard](std::int32_t& character) {
            heard.push_back(character);
            if (character > u'9')
                character = 0;
        });
        Compose(each.widget, QStringLiteral("1\u3042\U0001F6002"));
        EXPECT_THAT(heard, ElementsAre(u'1', 0x3042, 0x1F600, u'2'));
        EXPECT_EQ(each.box.Text(), u"12");
        Compose(each.widget, QStringLiteral("\u3042"));
        EXPECT_EQ(each.box.Text(), u"12");
    }
}

TEST_F(QtTextBoxes, CanBeReadAndCopiedFromWhileLocked)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"text");
        each.box.SetLocked(true);
        EXPECT_TRUE(each.box.IsLocked());
        each.box.SetFocus();
        EXPECT_TRUE(each.box.HasFocus());
        each.box.Select(0, 4);
        EXPECT_THAT(HeardFrom(each.box, [&] { TypeInto(each.widget, QStringLiteral("x")); }),
                    ElementsAre(u'x'));
        QApplication::clipboard()->clear();
        QTest::keyClick(&each.widget, Qt::Key_C, Qt::ControlModifier);
        EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("text"));
        QApplication::clipboard()->setText(QStringLiteral("pasted"));
        for (const Qt::Key key : {Qt::Key_X, Qt::Key_V})
            QTest::keyClick(&each.widget, key, Qt::ControlModifier);
        QTest::keyClick(&each.widget, Qt::Key_Delete);
        QTest::keyClick(&each.widget, Qt::Key_Backspace);
        QTest::keyClick(&each.widget, Qt::Key_Return);
        Compose(each.widget, QStringLiteral("composed"));
        EXPECT_EQ(each.box.Text(), u"text");
        each.box.SetLocked(false);
        EXPECT_FALSE(each.box.IsLocked());
        TypeInto(each.widget, QStringLiteral("x"));
        EXPECT_NE(each.box.Text(), u"text");
    }
}

TEST_F(QtTextBoxes, RaiseDblClickAfterTheWordIsSelected)
{
    for (const bool isLocked : {false, true}) {
        for (const Box& each : boxes) {
            each.box.SetText(u"word");
            each.box.SetLocked(isLocked);
            std::vector<std::u16string> heard;
            each.box.DblClick.Connect([&] { heard.push_back(each.box.SelectedText()); });
            QWidget* const target = &each.widget == &m_edit ? m_edit.viewport() : &each.widget;
            QTest::mouseDClick(target, Qt::LeftButton, {}, QPoint(12, 10));
            EXPECT_THAT(heard, ElementsAre(std::u16string(u"word")));
        }
    }
}

TEST_F(QtTextBoxes, ShowDarkTextOnTheGivenColourInEveryTheme)
{
    QPalette dark(QColor(0x30, 0x30, 0x30));
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    dark.setColor(QPalette::Highlight, QColor(0x20, 0x20, 0x50));
    for (const QPalette& theme : {QApplication::palette(), dark}) {
        m_window.setPalette(theme);
        for (const Box& each : boxes) {
            for (const std::uint32_t color : {kWhite, kLightGrey}) {
                each.box.SetBackColor(color);
                EXPECT_EQ(each.box.BackColor(), color);
                for (const QPalette::ColorGroup group :
                     {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
                    const QPalette shown = each.widget.palette();
                    EXPECT_EQ(shown.color(group, QPalette::Base), QColor::fromRgb(color));
                    EXPECT_GT(Contrast(shown.color(group, QPalette::Text), QColor::fromRgb(color)), 4.5);
                    EXPECT_GT(Contrast(shown.color(group, QPalette::Highlight), QColor::fromRgb(color)), 3);
                    EXPECT_GT(Contrast(shown.color(group, QPalette::HighlightedText),
                                       shown.color(group, QPalette::Highlight)),
                              4.5);
                }
            }
        }
    }
}

TEST_F(QtTextBoxes, SelectWhatLiesInTheText)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"ab\r\ncd");
        const struct
        {
            std::int32_t start;
            std::int32_t length;
            const char16_t* selected;
        } cases[] = {
            {0, 6, u"ab\r\ncd"}, {0, 2, u"ab"}, {4, 2, u"cd"}, {4, 99, u"cd"},    {99, 1, u""},
            {-2, 3, u"a"},       {1, 0, u""},   {1, -1, u""},  {1, 4, u"b\r\nc"},
        };
        for (const auto& one : cases) {
            each.box.Select(one.start, one.length);
            EXPECT_EQ(each.box.SelectedText(), one.selected) << one.start;
        }
    }
}

TEST_F(QtTextBoxes, LeaveTheKeysOfTheWindowToIt)
{
    int activated = 0;
    for (const char* const key : {"Ctrl+S", "Ctrl+N", "Ctrl+I", "Ctrl+E", "Esc"}) {
        auto* const shortcut = new QShortcut(QKeySequence(QString::fromLatin1(key)), &m_window);
        QObject::connect(shortcut, &QShortcut::activated, &m_window, [&activated] { ++activated; });
    }
    for (const Box& each : boxes) {
        each.box.SetText(u"text");
        each.widget.setFocus();
        activated = 0;
        const std::vector<std::int32_t> heard = HeardFrom(each.box, [&] {
            for (const Qt::Key key : {Qt::Key_S, Qt::Key_N, Qt::Key_I, Qt::Key_E})
                QTest::keyClick(&each.widget, key, Qt::ControlModifier);
            QTest::keyClick(&each.widget, Qt::Key_Escape);
        });
        EXPECT_EQ(activated, 5);
        EXPECT_TRUE(heard.empty());
        EXPECT_EQ(each.box.Text(), u"text");
    }
}

TEST_F(QtTextBoxes, KeepTheirEditingKeysFromTheWindow)
{
    int activated = 0;
    for (const char* const key : {"Ctrl+A", "Ctrl+C", "Ctrl+Z", "Del", "A"}) {
        auto* const shortcut = new QShortcut(QKeySequence(QString::fromLatin1(key)), &m_window);
        QObject::connect(shortcut, &QShortcut::activated, &m_window, [&activated] { ++activated; });
    }
    for (const Box& each : boxes) {
        each.box.SetText(u"text");
        each.widget.setFocus();
        QTest::keyClick(&each.widget, Qt::Key_A, Qt::ControlModifier);
        EXPECT_EQ(each.box.SelectedText(), u"text");
        QTest::keyClick(&each.widget, Qt::Key_Delete);
        EXPECT_EQ(each.box.Text(), u"");
        QTest::keyClick(&each.widget, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(each.box.Text(), u"text");
        QTest::keyClick(&each.widget, Qt::Key_A);
    }
    EXPECT_EQ(activated, 0);
}

TEST_F(QtTextBoxes, ForgetWhatCouldBeUndoneWhenTheProgramWrites)
{
    for (const Box& each : boxes) {
        each.box.SetText(u"");
        TypeInto(each.widget, QStringLiteral("typed"));
        each.box.SetText(u"written");
        QTest::keyClick(&each.widget, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(each.box.Text(), u"written");
    }
}

TEST_F(QtTextBoxes, LeaveTheNoteByTab)
{
    m_note.SetText(u"text");
    m_note.SetFocus();
    QTest::keyClick(&m_edit, Qt::Key_Tab);
    EXPECT_TRUE(m_text.HasFocus());
    EXPECT_EQ(m_note.Text(), u"text");
}

TEST_F(QtTextBoxes, CopyANoteAsItIs)
{
    m_note.SetText(u"a\u00A0\nb\r\nc");
    m_edit.setFocus();
    QTest::keyClick(&m_edit, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&m_edit, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("a\u00A0\nb\r\nc"));
    QTest::keyClick(&m_edit, Qt::Key_X, Qt::ControlModifier);
    QTest::keyClick(&m_edit, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(m_note.Text(), u"a\u00A0\nb\r\nc");
}

} // namespace KestrinProductEditor
