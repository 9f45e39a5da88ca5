// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <utility>

namespace KestrinProductEditor {

/// An event of a control: whoever owns the control's form listens, one handler at most.
///
/// Raise never throws. A handler reports its own failures; one that escapes it is dropped, because it comes
/// out of a window procedure or a slot. The handler may connect another one, and may end its form, while it
/// runs.
template<class... Arguments>
class Event
{
public:
    using Handler = std::function<void(Arguments...)>;

    void Connect(Handler handler) { m_handler = std::move(handler); }

    void Raise(Arguments... arguments) const noexcept
    {
        try {
            // A copy: the handler may end the control that it belongs to.
            if (const Handler handler = m_handler)
                handler(arguments...);
        } catch (...) { // NOLINT(bugprone-empty-catch): see above
        }
    }

private:
    Handler m_handler;
};

} // namespace KestrinProductEditor
