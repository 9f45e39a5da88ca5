// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtFocus.h"
#include "platform/qt/QtKeys.h"
#include "platform/qt/QtMnemonics.h"
#include "platform/ui/ControlSurface.h"

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

template<class Interface>
using QtSurface = ControlSurface<Interface, QtControlSet>;

} // namespace KestrinProductEditor
