// SPDX-License-Identifier: MIT
#include "platform/qt/QtFocus.h"

#include <QApplication>
#include <QEvent>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace KestrinProductEditor {

QtFocus::QtFocus(QWidget& window) : m_window(window)
{
    m_window.installEventFilter(this);
    // Comes when Qt has moved the focus within an active window, after its own events.
    connect(qApp, &QApplication::focusChanged, this, &QtFocus::PrvSync);
}

QtFocus::~QtFocus() = default;

void QtFocus::Add(IControl& control, QWidget& widget)
{
    m_members.push_back({.control = &control, .widget = &widget});
}

void QtFocus::SetFirst(IControl& control)
{
    m_first = &control;
}

void QtFocus::Set(IControl& control)
{
    Member* const member = PrvFind(control);
    if (member == nullptr || !PrvCanHave(*member))
        return;
    // What code asks for goes before a click that is held back.
    m_heldBack = nullptr;
    const int holds = std::exchange(m_holds, 0);
    const QPointer<QtFocus> self(this);
    PrvMove(*member);
    if (self)
        m_holds += holds;
}

void QtFocus::Begin()
{
    m_hasEnded = false;
    if (m_current != nullptr)
        return;
    Member* const first = PrvFirst();
    if (first != nullptr)
        PrvMove(*first);
}

void QtFocus::Return()
{
    if (m_current != nullptr)
        m_current->GotFocus.Raise();
}

void QtFocus::Regain()
{
    Member* const current = m_current == nullptr ? nullptr : PrvFind(*m_current);
    Member* const target = current != nullptr && PrvCanHave(*current) ? current : PrvFirst();
    if (target != nullptr)
        PrvMove(*target);
}

void QtFocus::Leave(const IControl& control)
{
    if (m_current != &control)
        return;
    const Member* const member = PrvFind(control);
    Member* const first = PrvFirst();
    if (member != nullptr && !PrvCanHave(*member) && first != nullptr)
        PrvMove(*first);
}

void QtFocus::Hold()
{
    ++m_holds;
}

void QtFocus::Release()
{
    if (--m_holds == 0) {
        if (IControl* const control = std::exchange(m_heldBack, nullptr))
            PrvArrive(control);
    }
}

bool QtFocus::eventFilter(QObject* watched, QEvent* event)
{
    // A window that is not active tells of its focus by this signal only. The surface may come to stand in
    // another window.
    if (event->type() == QEvent::Show) {
        if (QWindow* const handle = m_window.window()->windowHandle())
            connect(handle, &QWindow::focusObjectChanged, this, &QtFocus::PrvSync, Qt::UniqueConnection);
    }
    return QObject::eventFilter(watched, event);
}

QtFocus::Member* QtFocus::PrvFind(const IControl& control)
{
    const auto found = std::find_if(m_members.begin(), m_members.end(),
                                    [&control](const Member& member) { return member.control == &control; });
    return found == m_members.end() ? nullptr : &*found;
}

bool QtFocus::PrvCanHave(const Member& member) const
{
    return member.widget && member.widget->focusPolicy() != Qt::NoFocus &&
           member.widget->isVisibleTo(&m_window) && member.widget->isEnabled() && m_window.isEnabled();
}

QtFocus::Member* QtFocus::PrvFirst()
{
    Member* const first = m_first == nullptr ? nullptr : PrvFind(*m_first);
    if (first != nullptr && PrvCanHave(*first))
        return first;
    // As Tab would find it.
    for (QWidget* widget = m_window.nextInFocusChain(); widget != nullptr && widget != &m_window;
         widget = widget->nextInFocusChain()) {
        const auto found = std::find_if(m_members.begin(), m_members.end(),
                                        [widget](const Member& member) { return member.widget == widget; });
        if (found != m_members.end() && PrvCanHave(*found))
            return &*found;
    }
    return nullptr;
}

void QtFocus::PrvMove(Member& member)
{
    member.widget->setFocus(Qt::OtherFocusReason);
    PrvSync();
}

void QtFocus::PrvSync()
{
    if (m_hasEnded)
        return;
    QWidget* const now = m_window.window()->focusWidget();
    // Qt tells of an active window twice, the first time before its own events: the second one counts.
    if (m_window.isActiveWindow() && QApplication::focusWidget() != now)
        return;
    if (m_current != nullptr) {
        const Member* const current = PrvFind(*m_current);
        if (current != nullptr && !PrvCanHave(*current)) {
            Member* const first = PrvFirst();
            // Nowhere to go: everything is disabled, and the focus comes back with it.
            if (first == nullptr)
                return;
            if (first->widget != now) {
                PrvMove(*first);
                return;
            }
        }
    }
    // The focus may stand on a part of the control: an editor in a cell.
    const auto holder = std::find_if(m_members.begin(), m_members.end(), [now](const Member& member) {
        return member.widget && now != nullptr && member.widget->focusPolicy() != Qt::NoFocus &&
               (member.widget == now || member.widget->isAncestorOf(now));
    });
    if (holder == m_members.end()) {
        // A menu bar in use takes nothing from the controls; a host's own widget does.
        if (now != nullptr && !m_window.isAncestorOf(now))
            PrvArrive(nullptr);
    } else if (m_holds > 0) {
        m_heldBack = holder->control;
    } else {
        PrvArrive(holder->control);
    }
}

void QtFocus::PrvArrive(IControl* control)
{
    if (control == m_current)
        return;
    IControl* const left = std::exchange(m_current, control);
    const QPointer<QtFocus> self(this);
    if (left != nullptr)
        left->LostFocus.Raise();
    // The handler may have moved the focus on.
    if (self && control != nullptr && m_current == control)
        control->GotFocus.Raise();
}

} // namespace KestrinProductEditor
