// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ui/Controls.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <vector>

namespace KestrinProductEditor {

/// Which control of a window has the focus, whether the window is active or not, and the events that go with
/// it. Qt tells widgets of an active window only, and tells them of window activation too.
///
/// One for each form or user control; it outlives the controls' events but not their widgets.
class QtFocus final : public QObject
{
public:
    /// `window` is the surface that the controls stand on.
    explicit QtFocus(QWidget& window);
    ~QtFocus() override;

    /// A control takes part; `widget` is where its keys go.
    void Add(IControl& control, QWidget& widget);

    /// The control that a hidden one hands its focus to, and that has it first.
    void SetFirst(IControl& control);
    /// Moves the focus and raises LostFocus and GotFocus before it returns. A control that cannot take the
    /// focus (hidden, disabled) leaves everything as it is.
    void Set(IControl& control);
    [[nodiscard]] const IControl* Current() const { return m_current; }

    /// The window is shown, or about to be: the first control (without one, the first that Tab would find)
    /// hears GotFocus, unless another one has the focus already.
    void Begin();
    /// The window is about to close: what Qt does to the focus then is no event.
    void End() { m_hasEnded = true; }
    /// A form in front of this one has closed: the current control hears GotFocus.
    void Return();
    /// The window takes the user's acts again: Qt's focus goes back to where it was, without events.
    void Regain();
    /// `control` was hidden or disabled: hands the focus on when it had it.
    void Leave(const IControl& control);

    /// A list holds back what a click would do to the focus until it has told of its new current row.
    void Hold();
    /// Delivers what came while it was held back. Focus that code sets meanwhile is not held back.
    void Release();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Member
    {
        IControl* control;
        QPointer<QWidget> widget;
    };

    [[nodiscard]] Member* PrvFind(const IControl& control);
    [[nodiscard]] bool PrvCanHave(const Member& member) const;
    [[nodiscard]] Member* PrvFirst();
    void PrvMove(Member& member);
    void PrvSync();
    void PrvArrive(IControl* control);

    QWidget& m_window;
    std::vector<Member> m_members;
    IControl* m_first = nullptr;
    IControl* m_current = nullptr;
    IControl* m_heldBack = nullptr;
    int m_holds = 0;
    bool m_hasEnded = false;
};

} // namespace KestrinProductEditor
