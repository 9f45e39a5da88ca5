// SPDX-License-Identifier: MIT
#include "fake/ScriptedToolkit.h"

#include <KestrinProductEditor/AutomationError.h>

namespace KestrinProductEditor {

ScriptedForm::ScriptedForm(ScriptedToolkit& toolkit, std::u16string_view layout)
    : ScriptedSurface(layout, ScriptedControls::Surface::Form), m_toolkit(toolkit)
{
}

void ScriptedForm::ShowModal()
{
    if (!m_hasEnded) {
        m_isShown = true;
        m_toolkit.m_forms.push_back(this);
        Controls().Begin();
        if (IsOpen())
            m_toolkit.m_audience.FormShown(*this);
        std::erase(m_toolkit.m_forms, this);
        m_isShown = false;
        if (!m_toolkit.m_forms.empty() && m_toolkit.m_forms.back()->IsOpen())
            m_toolkit.m_forms.back()->Controls().Return();
    }
    m_hasEnded = false;
}

ScriptedUserControl::ScriptedUserControl(ScriptedToolkit& toolkit, std::u16string_view layout)
    : ScriptedSurface(layout, ScriptedControls::Surface::UserControl), m_toolkit(toolkit)
{
    m_toolkit.m_userControls.push_back(this);
}

ScriptedUserControl::~ScriptedUserControl()
{
    std::erase(m_toolkit.m_userControls, this);
}

ControlPlace ScriptedUserControl::Place(std::u16string_view control) const
{
    return Controls().PlaceOf(control);
}

void ScriptedUserControl::Move(std::u16string_view control, const ControlPlace& place)
{
    Controls().Move(control, place);
}

float ScriptedUserControl::TextWidth(std::u16string_view text) const
{
    return 120 * static_cast<float>(text.size());
}

void* ScriptedUserControl::NativeHandle() const
{
    return const_cast<ScriptedUserControl*>(this);
}

void ScriptedUserControl::SetInnerSize(float width, float height)
{
    if (width == m_width && height == m_height)
        return;
    m_width = width;
    m_height = height;
    Resize.Raise();
}

std::unique_ptr<IForm> ScriptedToolkit::CreateForm(std::u16string_view name)
{
    return std::make_unique<ScriptedForm>(*this, name);
}

std::unique_ptr<IUserControl> ScriptedToolkit::CreateUserControl(std::u16string_view name)
{
    return std::make_unique<ScriptedUserControl>(*this, name);
}

std::optional<std::u16string> ScriptedToolkit::ChooseFile(const FileDialog& dialog)
{
    return m_audience.FileAsked(dialog);
}

MessageAnswer ScriptedToolkit::Show(std::u16string_view text, std::int32_t style, std::u16string_view title)
{
    return m_audience.MessageShown(
        {.text = std::u16string(text), .style = style, .title = std::u16string(title)});
}

} // namespace KestrinProductEditor
