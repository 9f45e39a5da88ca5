// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControl.h"
#include "platform/qt/QtMnemonics.h"

#include <QCheckBox>

#include <cstddef>
#include <string>

namespace KestrinProductEditor {

class QtCheckBox final : public QtControl<ICheckBox>
{
public:
    QtCheckBox(QCheckBox& box, QtFocus& focus, QtMnemonics& mnemonics);

    void SetCaption(std::u16string_view caption) override;
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }
    void SetValue(std::int32_t value) override { m_box.setChecked(value == 1); }
    [[nodiscard]] std::int32_t Value() const override { return m_box.isChecked() ? 1 : 0; }

private:
    QCheckBox& m_box;
    QtMnemonics& m_mnemonics;
    std::size_t m_bearer;
    std::u16string m_caption;
};

} // namespace KestrinProductEditor
