// SPDX-License-Identifier: MIT
#pragma once

namespace KestrinProductEditor {

/// While it lives, the error that a method is handling on this thread stands where the system keeps a
/// thread's error, for the host's trace to read with GetErrorInfo: source and description, and, as the
/// system's form has no place for the number, an object with the members Number, Source and Description. With
/// no pending error there is none.
class PendingErrorScope
{
public:
    PendingErrorScope();
    PendingErrorScope(const PendingErrorScope&) = delete;
    PendingErrorScope& operator=(const PendingErrorScope&) = delete;
    ~PendingErrorScope();
};

} // namespace KestrinProductEditor
