// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Form.h"

#include <string_view>

namespace KestrinProductEditor {

/// The part that forms and user controls of every toolkit have in common. `Controls` answers the set, whose
/// Find gives the control of an interface by its name, or raises error 5.
template<class Interface, class ControlSet>
class ControlSurface : public Interface
{
public:
    [[nodiscard]] ITextBox& TextBox(std::u16string_view name) final
    {
        return Controls().template Find<ITextBox>(name);
    }
    [[nodiscard]] IButton& Button(std::u16string_view name) final
    {
        return Controls().template Find<IButton>(name);
    }
    [[nodiscard]] ICheckBox& CheckBox(std::u16string_view name) final
    {
        return Controls().template Find<ICheckBox>(name);
    }
    [[nodiscard]] ILabel& Label(std::u16string_view name) final
    {
        return Controls().template Find<ILabel>(name);
    }
    [[nodiscard]] IProgressBar& ProgressBar(std::u16string_view name) final
    {
        return Controls().template Find<IProgressBar>(name);
    }
    [[nodiscard]] IGrid& Grid(std::u16string_view name) final
    {
        return Controls().template Find<IGrid>(name);
    }
    [[nodiscard]] IToolBar& ToolBar(std::u16string_view name) final
    {
        return Controls().template Find<IToolBar>(name);
    }

protected:
    [[nodiscard]] virtual ControlSet& Controls() = 0;
};

} // namespace KestrinProductEditor
