// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtFocus.h"
#include "platform/qt/QtKeys.h"
#include "platform/qt/QtMnemonics.h"
#include "platform/ui/Form.h"

#include <KestrinProductEditor/AutomationError.h>

#include <QWidget>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace KestrinProductEditor {

/// The controls of a surface, found by their objectName, and what they share.
class QtControlSet
{
public:
    /// Makes a control of each named widget on the surface, whose layout is complete.
    explicit QtControlSet(QWidget& surface);
    QtControlSet(const QtControlSet&) = delete;
    QtControlSet& operator=(const QtControlSet&) = delete;
    ~QtControlSet();

    template<class Interface>
    [[nodiscard]] Interface& Find(std::u16string_view name) const
    {
        auto* const control = dynamic_cast<Interface*>(PrvFind(name));
        if (control == nullptr)
            throw AutomationError(kErrInvalidProcedureCall);
        return *control;
    }

    [[nodiscard]] QtFocus& Focus() { return m_focus; }
    [[nodiscard]] QtKeys& Keys() { return m_keys; }

private:
    struct Named
    {
        std::u16string name;
        std::unique_ptr<IControl> control;
    };

    [[nodiscard]] std::unique_ptr<IControl> PrvMake(QWidget& widget);
    [[nodiscard]] IControl* PrvFind(std::u16string_view name) const;

    QtFocus m_focus;
    QtMnemonics m_mnemonics;
    QtKeys m_keys;
    std::vector<Named> m_controls;
};

/// The part that forms and user controls have in common. `Controls` answers the set, or raises error 5.
template<class Interface>
class QtSurface : public Interface
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
    [[nodiscard]] virtual QtControlSet& Controls() = 0;
};

} // namespace KestrinProductEditor
