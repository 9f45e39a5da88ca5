// SPDX-License-Identifier: MIT
#include <KestrinProductEditor/IPNotifyCallback.h>
#include <KestrinProductEditor/IProcessProgress.h>

namespace KestrinProductEditor {

// Defined here, so that each has one type information for the library and its host.
IProcessProgress::~IProcessProgress() = default;
IPNotifyCallback::~IPNotifyCallback() = default;

} // namespace KestrinProductEditor
