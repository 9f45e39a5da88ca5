// SPDX-License-Identifier: MIT
#include "platform/qt/QtToolBar.h"

#include "platform/qt/ToolIcons.h"
#include "platform/ui/Mnemonics.h"

#include <KestrinProductEditor/AutomationError.h>

#include <QKeySequence>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

QtToolBar::QtToolBar(QtToolBarView& view, QtFocus& focus, QtMnemonics& mnemonics, QtKeys& keys,
                     std::function<bool(std::u16string_view)> hasFocus)
    : QtControl(view, focus), m_view(view), m_focus(focus), m_mnemonics(mnemonics), m_keys(keys),
      m_hasFocus(std::move(hasFocus))
{
}

void QtToolBar::SetTools(std::span<const Tool> tools)
{
    for (const Tool& tool : tools) {
        if (tool.menu.empty())
            PrvAddHeader(tool);
        else
            PrvAddItem(tool);
    }
    PrvMarkItems();
}

void QtToolBar::SetToolEnabled(std::u16string_view id, bool bEnabled)
{
    m_entries[PrvFind(id)].isEnabled = bEnabled;
    PrvShowEnabled();
}

bool QtToolBar::IsToolEnabled(std::u16string_view id) const
{
    return m_entries[PrvFind(id)].isEnabled;
}

void QtToolBar::PrvAddHeader(const Tool& tool)
{
    auto* const menu = new QMenu(&m_view);
    QAction* const action = m_view.Menus().addMenu(menu);
    action->setObjectName(ToQt(tool.id));
    menu->setObjectName(ToQt(tool.id));
    QObject::connect(menu, &QMenu::aboutToShow, &m_focus, [this, id = tool.id] { ToolClick.Raise(id); });
    const std::u16string shown = ShownCaption(tool.caption);
    menu->setAccessibleName(ToQt(shown));
    m_entries.push_back(
        {.id = tool.id, .menu = {}, .shown = shown, .isEnabled = true, .action = action, .opens = menu});
    const std::size_t bearer = m_mnemonics.Add(QtMnemonics::Rank::Menu,
                                               [action](const QString& marked) { action->setText(marked); });
    m_mnemonics.SetCaption(bearer, shown);
}

void QtToolBar::PrvAddItem(const Tool& tool)
{
    QMenu& menu = *m_entries[PrvFind(tool.menu)].opens;
    auto* const action = new QAction(&m_view);
    const std::u16string shown = ShownCaption(tool.caption);
    const QString key = tool.shortcuts.empty() ? QString() : TextOf(tool.shortcuts.front());
    action->setObjectName(ToQt(tool.id));
    action->setIcon(MakeToolIcon(tool.icon, m_view));
    // On the bar only: a menu paints its chosen item in the icons' own colour.
    action->setIconVisibleInMenu(false);
    QString label = ToQt(shown);
    while (label.endsWith(u'.'))
        label.chop(1);
    // A button reads "&" as a menu does.
    action->setIconText(QString(label).replace(QStringLiteral("&"), QStringLiteral("&&")));
    action->setToolTip(key.isEmpty() ? label : QStringLiteral("%1 (%2)").arg(label, key));
    // For the menu to show it; the keys themselves are bound below, with their conditions.
    action->setShortcut(QKeySequence::fromString(key, QKeySequence::NativeText));
    action->setShortcutContext(Qt::WidgetShortcut);
    m_keys.OnlyShow(*action);
    QObject::connect(action, &QAction::triggered, &m_focus, [this, id = tool.id] { ToolClick.Raise(id); });

    if (tool.beginsGroup)
        menu.addSeparator();
    menu.addAction(action);
    const bool beginsMenu = menu.actions().size() == 1;
    if (!m_view.Buttons().actions().isEmpty() && (tool.beginsGroup || beginsMenu))
        m_view.Buttons().addSeparator();
    m_view.Buttons().addAction(action);
    m_entries.push_back({.id = tool.id,
                         .menu = tool.menu,
                         .shown = shown,
                         .isEnabled = true,
                         .action = action,
                         .opens = nullptr});
    PrvBindKeys(tool, *action);
}

void QtToolBar::PrvBindKeys(const Tool& tool, QAction& action)
{
    for (const Shortcut shortcut : tool.shortcuts) {
        m_keys.Bind(
            shortcut,
            [this, &action, onlyIn = tool.onlyIn](const QWidget&) {
                return action.isEnabled() && m_view.isEnabled() && m_view.isVisible() &&
                       (onlyIn.empty() || m_hasFocus(onlyIn));
            },
            [&action] { action.trigger(); });
    }
}

void QtToolBar::PrvMarkItems()
{
    // An open menu has its letters for itself.
    for (const Entry& header : m_entries) {
        if (header.opens == nullptr)
            continue;
        std::vector<const Entry*> items;
        std::vector<std::u16string> captions;
        for (const Entry& entry : m_entries) {
            if (entry.opens == nullptr && entry.menu == header.id) {
                items.push_back(&entry);
                captions.push_back(entry.shown);
            }
        }
        const std::vector<std::size_t> places = ChooseMnemonics(captions);
        for (std::size_t at = 0; at < items.size(); ++at)
            items[at]->action->setText(ToQt(MarkMnemonic(captions[at], places[at])));
    }
}

void QtToolBar::PrvShowEnabled()
{
    for (const Entry& entry : m_entries) {
        const bool isHeaderEnabled = entry.menu.empty() || m_entries[PrvFind(entry.menu)].isEnabled;
        entry.action->setEnabled(entry.isEnabled && isHeaderEnabled);
    }
}

std::size_t QtToolBar::PrvFind(std::u16string_view id) const
{
    const auto found =
        std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry& entry) { return entry.id == id; });
    if (found == m_entries.end())
        throw AutomationError(kErrInvalidProcedureCall);
    return static_cast<std::size_t>(found - m_entries.begin());
}

} // namespace KestrinProductEditor
