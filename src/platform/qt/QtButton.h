// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControl.h"
#include "platform/qt/QtKeys.h"
#include "platform/qt/QtMnemonics.h"

#include <QPushButton>

#include <cstddef>
#include <string>

namespace KestrinProductEditor {

class QtButton final : public QtControl<IButton>
{
public:
    QtButton(QPushButton& button, QtFocus& focus, QtMnemonics& mnemonics, QtKeys& keys);

    void SetCaption(std::u16string_view caption) override;
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }
    void SetShortcut(Shortcut shortcut) override;

    [[nodiscard]] QPushButton& Widget() const { return m_button; }

private:
    QPushButton& m_button;
    QtMnemonics& m_mnemonics;
    QtKeys& m_keys;
    std::size_t m_bearer;
    std::u16string m_caption;
};

} // namespace KestrinProductEditor
