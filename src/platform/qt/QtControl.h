// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtFocus.h"
#include "platform/qt/QtText.h"

#include <QWidget>

#include <string_view>

namespace KestrinProductEditor {

/// What every control does the same way, over a widget of the layout. The widget belongs to its window.
template<class Interface>
class QtControl : public Interface
{
public:
    QtControl(QWidget& widget, QtFocus& focus) : m_widget(widget), m_focus(focus)
    {
        m_focus.Add(*this, widget);
    }

    void SetFocus() override { m_focus.Set(*this); }
    [[nodiscard]] bool HasFocus() const override { return m_focus.Current() == this; }

    void SetVisible(bool bVisible) override
    {
        m_widget.setVisible(bVisible);
        if (!bVisible)
            m_focus.Leave(*this);
    }
    [[nodiscard]] bool IsVisible() const override { return !m_widget.isHidden(); }

    void SetEnabled(bool bEnabled) override
    {
        m_widget.setEnabled(bEnabled);
        if (!bEnabled)
            m_focus.Leave(*this);
    }
    [[nodiscard]] bool IsEnabled() const override { return m_widget.isEnabled(); }

    void SetToolTip(std::u16string_view text) override { m_widget.setToolTip(ToQt(text)); }

protected:
    [[nodiscard]] QtFocus& Focus() const { return m_focus; }

private:
    QWidget& m_widget;
    QtFocus& m_focus;
};

} // namespace KestrinProductEditor
