// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControl.h"
#include "platform/qt/QtMnemonics.h"

#include <QLabel>

#include <cstddef>
#include <optional>
#include <string>

namespace KestrinProductEditor {

/// A label whose layout gives it a buddy bears the buddy's mnemonic.
class QtLabel final : public QtControl<ILabel>
{
public:
    QtLabel(QLabel& label, QtFocus& focus, QtMnemonics& mnemonics);

    void SetCaption(std::u16string_view caption) override;
    [[nodiscard]] std::u16string Caption() const override { return m_caption; }

private:
    QLabel& m_label;
    QtMnemonics& m_mnemonics;
    std::optional<std::size_t> m_bearer;
    std::u16string m_caption;
};

} // namespace KestrinProductEditor
