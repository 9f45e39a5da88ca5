// SPDX-License-Identifier: MIT
#pragma once

#include <KestrinProductEditor/AutomationObject.h>
#include <KestrinProductEditor/Variant.h>

namespace KestrinProductEditor {

/// What a host implements to hear how far an import or an export has come (ProductLkpMgr::SetNotifyCallback).
/// It cannot be created by its class identifier.
class [[gnu::visibility("default")]] IProcessProgress : public AutomationObject
{
public:
    /// Called once for each line read (import) or product written (export), on the caller's thread.
    ///
    /// `vParams` is a one-dimensional array. Element 0 is the fraction done, a Double from 0 to 1. An import
    /// adds element 1, the Long count of products imported so far. The array is filled anew for each call;
    /// take a copy to keep one.
    ///
    /// An import or export that a receiver begins inside the call reports no progress of its own.
    /// The store is valid during the call and may be used. An import ignores an error raised here; an export
    /// ends with it.
    virtual void Progress(const Variant& vParams) = 0;

    ~IProcessProgress() override;
};

} // namespace KestrinProductEditor
