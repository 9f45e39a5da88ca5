// SPDX-License-Identifier: MIT
#pragma once

#include "server/windows/DualObject.h"
#include "server/windows/ForeignObject.h"

#include <kstnedit.h>

namespace KestrinProductEditor {

template<>
struct LateMembers<_IProcessProgress>
{
    static constexpr LateMember<_IProcessProgress> kAll[] = {Sub<&_IProcessProgress::Progress>(1)};
};

/// A receiver of progress over an object of a script, which has a member Progress and nothing else to show.
class ScriptReceiver final : public DualObject<_IProcessProgress>
{
public:
    /// `object` itself when it is a receiver, else one over its member Progress. DISP_E_TYPEMISMATCH when it
    /// has no such member.
    [[nodiscard]] static HRESULT ReceiverOf(IUnknown* object, _IProcessProgress** receiver) noexcept;

    HRESULT STDMETHODCALLTYPE Progress(VARIANT vParams) override;

private:
    ScriptReceiver(ForeignObject object, DISPID progress);

    ForeignObject m_object;
    DISPID m_progress;
};

} // namespace KestrinProductEditor
