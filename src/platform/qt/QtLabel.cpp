// SPDX-License-Identifier: MIT
#include "platform/qt/QtLabel.h"

#include <QStyle>

namespace KestrinProductEditor {

QtLabel::QtLabel(QLabel& label, QtFocus& focus, QtMnemonics& mnemonics)
    : QtControl(label, focus), m_label(label), m_mnemonics(mnemonics)
{
    m_label.setTextFormat(Qt::PlainText);
    // Qt would align by the direction of the text, away from what the label stands for in a mirrored window.
    m_label.setAlignment(QStyle::visualAlignment(m_label.layoutDirection(), m_label.alignment()));
    if (m_label.buddy() != nullptr) {
        m_bearer = mnemonics.Add(QtMnemonics::Rank::Label,
                                 [&label](const QString& marked) { label.setText(marked); });
    }
}

void QtLabel::SetCaption(std::u16string_view caption)
{
    m_caption = caption;
    if (m_bearer)
        m_mnemonics.SetCaption(*m_bearer, caption);
    else
        m_label.setText(ToQt(caption));
}

} // namespace KestrinProductEditor
