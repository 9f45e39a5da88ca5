// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtControl.h"
#include "platform/qt/QtTypedText.h"

#include <QPointer>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace KestrinProductEditor {

/// Makes the widget's text dark on that background, with a selection that is legible on it, whatever the
/// theme.
void PaintOnBackColor(QWidget& widget, std::uint32_t rgb);

/// A text box over a widget that is a QtTypedText. It may end before its widget or after it.
template<class Edit>
class QtEditBox : public QtControl<ITextBox>
{
public:
    QtEditBox(Edit& edit, QtFocus& focus) : QtControl<ITextBox>(edit, focus), m_edit(&edit)
    {
        edit.Typed = [this](std::int32_t& character) { this->KeyPress.Raise(character); };
        edit.Changed = [this] { this->Change.Raise(); };
        edit.DoubleClicked = [this] { this->DblClick.Raise(); };
    }

    ~QtEditBox() override
    {
        if (!m_edit)
            return;
        m_edit->Typed = nullptr;
        m_edit->Changed = nullptr;
        m_edit->DoubleClicked = nullptr;
    }

    void SetText(std::u16string_view text) final { m_edit->Write(text); }
    [[nodiscard]] std::u16string Text() const final { return m_edit->Read(); }
    void SetMaxLength(std::int32_t length) final { m_edit->SetLimit(std::max(length, 0)); }
    [[nodiscard]] std::int32_t MaxLength() const final { return m_edit->Limit(); }
    void SetLocked(bool bLocked) final { m_edit->SetLocked(bLocked); }
    [[nodiscard]] bool IsLocked() const final { return m_edit->IsLocked(); }
    void SetBackColor(std::uint32_t rgb) final { PaintOnBackColor(*m_edit, rgb); }
    [[nodiscard]] std::uint32_t BackColor() const final
    {
        return m_edit->palette().color(QPalette::Active, QPalette::Base).rgb() & 0xFFFFFFU;
    }
    void Select(std::int32_t start, std::int32_t length) final { m_edit->SelectUnits(start, length); }
    [[nodiscard]] std::u16string SelectedText() const final
    {
        return m_edit->SelectedUnits().toStdU16String();
    }

private:
    QPointer<Edit> m_edit;
};

} // namespace KestrinProductEditor
