// SPDX-License-Identifier: MIT
#include "automation/hostdouble/HostState.h"

#include "platform/windows/WideText.h"

#include <cstdlib>

namespace KestrinProductEditor {

HostState::HostState()
{
    if (const wchar_t* const path = _wgetenv(L"KSTNEDIT_TEST_INSTALLPATH"))
        settings[u"InstallPath"] = FromWide(path);
    const wchar_t* const name = _wgetenv(L"KSTNEDIT_TEST_DBSUBDIR");
    settings[u"DBSubdirName"] = name != nullptr ? FromWide(name) : u"Data";
}

namespace detail {

std::mutex g_stateMutex;

HostState& State()
{
    static HostState state;
    return state;
}

} // namespace detail

} // namespace KestrinProductEditor
