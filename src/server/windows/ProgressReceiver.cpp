// SPDX-License-Identifier: MIT
#include "server/windows/ProgressReceiver.h"

#include "server/windows/ComError.h"
#include "server/windows/ComVariant.h"

namespace KestrinProductEditor {

ProgressReceiver::~ProgressReceiver() = default;

void ProgressReceiver::Progress(const Variant& vParams)
{
    const ComVariant params(vParams);
    // What an earlier failure has left is not this one's.
    SetErrorInfo(0, nullptr);
    ThrowIfFailed(m_receiver->Progress(params));
}

} // namespace KestrinProductEditor
