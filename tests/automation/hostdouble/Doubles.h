// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

namespace KestrinProductEditor {

/// A component that this library has.
struct Double
{
    CLSID classID;
    const wchar_t* progID;
    /// May raise std::bad_alloc.
    Microsoft::WRL::ComPtr<IDispatch> (*make)();
};

/// "CorvoConf.Config", the host's configuration: answers the key "InstallPath" or "DBSubdirName" with its
/// text.
///
/// "CorvoTWrp.Trace", the host's trace: members TraceErrNumber, TraceError, TraceEnter, TraceExit. While
/// recording is on each call leaves a line, also one that fails: "Enter CONTEXT", "Exit CONTEXT",
/// "Error NUMBER|SOURCE|DESCRIPTION" of the error that is pending on the thread ("Error none"), and
/// "ErrNumber -> NUMBER". A text given to TraceError follows behind one more bar. The pending error stays.
///
/// "KstneditTests.Host", by which tests rule the other two, in the whole process:
///
///     InstallPath, DBSubdirName                read and written; at first from the environment variables
///                                              KSTNEDIT_TEST_INSTALLPATH and KSTNEDIT_TEST_DBSUBDIR, or
///                                              "Data"
///     Recording                                read and written; at first False
///     Trace                                    the lines of this thread, vbLf between them
///     ClearTrace                               forgets the lines of this thread
///     FailTrace member, afterCalls, number     the call of that member after so many more fails, once, with
///                                              description "trace failed"; -1 takes it back
///     AnswerErrNumber                          written: what TraceErrNumber answers; Null: the pending
///     number,
///                                              -2147220503 when there is none
///     FailCreation progID, number              no such component can be created; 0 takes it back
///     FailConfig number                        no setting can be read; 0 takes it back
///     ConfigMembers                            written: "default", or the name of the member by which
///                                              configurations created from now on are asked
///     TraceObjects                             read: how many traces were ever created
///     ConfigObjects                            read: how many configurations live
inline constexpr int kDoubleCount = 3;
extern const Double kDoubles[kDoubleCount];

} // namespace KestrinProductEditor
