// SPDX-License-Identifier: MIT
#include "platform/qt/QtCheckBox.h"

#include "platform/ui/Mnemonics.h"

namespace KestrinProductEditor {

QtCheckBox::QtCheckBox(QCheckBox& box, QtFocus& focus, QtMnemonics& mnemonics)
    : QtControl(box, focus), m_box(box), m_mnemonics(mnemonics),
      m_bearer(
          mnemonics.Add(QtMnemonics::Rank::Button, [&box](const QString& marked) { box.setText(marked); }))
{
    QObject::connect(&m_box, &QCheckBox::toggled, &focus, [this] { Click.Raise(); });
}

void QtCheckBox::SetCaption(std::u16string_view caption)
{
    m_caption = caption;
    m_mnemonics.SetCaption(m_bearer, ShownCaption(caption));
}

} // namespace KestrinProductEditor
