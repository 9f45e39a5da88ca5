// SPDX-License-Identifier: MIT
#include "platform/qt/QtButton.h"

#include "platform/ui/Mnemonics.h"

namespace KestrinProductEditor {

QtButton::QtButton(QPushButton& button, QtFocus& focus, QtMnemonics& mnemonics, QtKeys& keys)
    : QtControl(button, focus), m_button(button), m_mnemonics(mnemonics), m_keys(keys),
      m_bearer(mnemonics.Add(QtMnemonics::Rank::Button,
                             [&button](const QString& marked) { button.setText(marked); }))
{
    // What Enter does is the form's own rule.
    m_button.setAutoDefault(false);
    QObject::connect(&m_button, &QPushButton::clicked, &focus, [this] { Click.Raise(); });
}

void QtButton::SetCaption(std::u16string_view caption)
{
    m_caption = caption;
    m_mnemonics.SetCaption(m_bearer, ShownCaption(caption));
}

void QtButton::SetShortcut(Shortcut shortcut)
{
    m_keys.Bind(
        shortcut, [this](const QWidget&) { return m_button.isVisible() && m_button.isEnabled(); },
        [this] { ClickButton(m_button); });
}

} // namespace KestrinProductEditor
