// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControl.h"
#include "platform/qt/QtProgressBarView.h"

#include <algorithm>
#include <string>

namespace KestrinProductEditor {

class QtProgressBar final : public QtControl<IProgressBar>
{
public:
    QtProgressBar(QtProgressBarView& bar, QtFocus& focus) : QtControl(bar, focus), m_bar(bar) {}

    void SetValue(std::int32_t value) override { m_bar.setValue(std::clamp(value, 0, 100)); }
    [[nodiscard]] std::int32_t Value() const override { return m_bar.value(); }
    void SetCaption(std::u16string_view caption) override { m_bar.SetCaption(ToQt(caption)); }
    [[nodiscard]] std::u16string Caption() const override { return FromQt(m_bar.text()); }

private:
    QtProgressBarView& m_bar;
};

} // namespace KestrinProductEditor
