// SPDX-License-Identifier: MIT
#include "platform/qt/QtLabel.h"

namespace KestrinProductEditor {

QtLabel::QtLabel(QLabel& label, QtFocus& focus, QtMnemonics& mnemonics)
    : QtControl(label, focus), m_label(label), m_mnemonics(mnemonics)
{
    m_label.setTextFormat(Qt::PlainText);
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
