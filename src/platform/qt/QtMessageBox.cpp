// SPDX-License-Identifier: MIT
#include "platform/qt/QtMessageBox.h"

#include "platform/qt/QtForm.h"
#include "platform/qt/QtText.h"

#include <QMessageBox>

namespace KestrinProductEditor {

namespace {

[[nodiscard]] QMessageBox::Icon IconOf(std::int32_t style)
{
    switch (style & 0xF0) {
    case 0x20:
        return QMessageBox::Question;
    case 0x30:
        return QMessageBox::Warning;
    default:
        return QMessageBox::Information;
    }
}

[[nodiscard]] QMessageBox::StandardButton ButtonOf(MessageAnswer answer)
{
    switch (answer) {
    case MessageAnswer::Yes:
        return QMessageBox::Yes;
    case MessageAnswer::No:
        return QMessageBox::No;
    case MessageAnswer::Cancel:
        return QMessageBox::Cancel;
    case MessageAnswer::Ok:
        break;
    }
    return QMessageBox::Ok;
}

} // namespace

MessageAnswer QtMessageBox::Show(std::u16string_view text, std::int32_t style, std::u16string_view title)
{
    QMessageBox box(QtForm::FrontWindow());
    // Also in front of a form that is busy, and therefore disabled.
    box.setEnabled(true);
    box.setAttribute(Qt::WA_QuitOnClose, false);
    box.setTextFormat(Qt::PlainText);
    box.setText(ToQt(text));
    box.setWindowTitle(ToQt(title));
    box.setIcon(IconOf(style));
    const MessageAnswer careful = CarefulAnswer(style);
    if (careful == MessageAnswer::Ok) {
        box.setStandardButtons(QMessageBox::Ok);
    } else {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        if (careful == MessageAnswer::Cancel)
            box.addButton(QMessageBox::Cancel);
        box.setDefaultButton((style & kMessageSecondDefault) != 0 ? QMessageBox::No : QMessageBox::Yes);
    }
    box.setEscapeButton(ButtonOf(careful));
    box.exec();
    // Without an answer, because the program ends, it is the careful one, too.
    const QAbstractButton* const clicked = box.clickedButton();
    for (const MessageAnswer answer : {MessageAnswer::Yes, MessageAnswer::No}) {
        if (clicked != nullptr && clicked == box.button(ButtonOf(answer)))
            return answer;
    }
    return careful;
}

} // namespace KestrinProductEditor
