// SPDX-License-Identifier: MIT
#include "platform/qt/QtControlSet.h"

#include "platform/qt/QtButton.h"
#include "platform/qt/QtCheckBox.h"
#include "platform/qt/QtGrid.h"
#include "platform/qt/QtLabel.h"
#include "platform/qt/QtNoteBox.h"
#include "platform/qt/QtProgressBar.h"
#include "platform/qt/QtTextBox.h"
#include "platform/qt/QtToolBar.h"

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

QtControlSet::QtControlSet(QWidget& surface) : m_focus(surface)
{
    m_keys.Watch(surface);
    for (QWidget* const widget : surface.findChildren<QWidget*>()) {
        // A nameless widget is a part of a control, or of the layout.
        if (widget->objectName().isEmpty())
            continue;
        if (std::unique_ptr<IControl> control = PrvMake(*widget)) {
            m_keys.Watch(*widget);
            m_controls.push_back({.name = FromQt(widget->objectName()), .control = std::move(control)});
        }
    }
}

QtControlSet::~QtControlSet() = default;

std::unique_ptr<IControl> QtControlSet::PrvMake(QWidget& widget)
{
    if (auto* const view = dynamic_cast<QtGridView*>(&widget))
        return std::make_unique<QtGrid>(*view, m_focus);
    if (auto* const edit = dynamic_cast<QtLineEdit*>(&widget))
        return std::make_unique<QtTextBox>(*edit, m_focus);
    if (auto* const edit = dynamic_cast<QtNoteEdit*>(&widget))
        return std::make_unique<QtNoteBox>(*edit, m_focus);
    if (auto* const button = dynamic_cast<QPushButton*>(&widget))
        return std::make_unique<QtButton>(*button, m_focus, m_mnemonics, m_keys);
    if (auto* const box = dynamic_cast<QCheckBox*>(&widget))
        return std::make_unique<QtCheckBox>(*box, m_focus, m_mnemonics);
    if (auto* const bar = dynamic_cast<QtProgressBarView*>(&widget))
        return std::make_unique<QtProgressBar>(*bar, m_focus);
    if (auto* const label = dynamic_cast<QLabel*>(&widget))
        return std::make_unique<QtLabel>(*label, m_focus, m_mnemonics);
    if (auto* const view = dynamic_cast<QtToolBarView*>(&widget)) {
        return std::make_unique<QtToolBar>(*view, m_focus, m_mnemonics, m_keys,
                                           [this](std::u16string_view name) {
                                               const IControl* const control = PrvFind(name);
                                               return control != nullptr && m_focus.Current() == control;
                                           });
    }
    return nullptr;
}

IControl* QtControlSet::PrvFind(std::u16string_view name) const
{
    const auto found = std::find_if(m_controls.begin(), m_controls.end(),
                                    [name](const Named& named) { return named.name == name; });
    return found == m_controls.end() ? nullptr : found->control.get();
}

} // namespace KestrinProductEditor
