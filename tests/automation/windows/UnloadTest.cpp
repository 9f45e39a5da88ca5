// SPDX-License-Identifier: MIT
// What the system keeps of the component when its library has left the memory.
#include "automation/windows/WindowsFixture.h"

#include <objbase.h>

namespace KestrinProductEditor {

class Unloading : public WindowsFixture
{
};

TEST_F(Unloading, TakesTheWindowClassesAlong)
{
    const HMODULE library = [] {
        HostProgram host;
        ShowEditor(host, [&] { SeenEditor(host).Window().Press(u"Cancel"); });
        return GetModuleHandleW(L"kstnedit.dll");
    }();
    ASSERT_NE(library, nullptr);
    const auto isKnown = [library](const wchar_t* name) {
        WNDCLASSEXW known = {};
        known.cbSize = sizeof known;
        return GetClassInfoExW(library, name, &known) != 0;
    };
    EXPECT_TRUE(isKnown(L"KstneditForm"));
    CoFreeUnusedLibrariesEx(0, 0);
    CoFreeUnusedLibrariesEx(0, 0);
    ASSERT_EQ(GetModuleHandleW(L"kstnedit.dll"), nullptr);
    for (const wchar_t* const name :
         {L"KstneditForm", L"KstneditGrid", L"KstneditProgress", L"KstneditSplitter"})
        EXPECT_FALSE(isKnown(name)) << testing::PrintToString(name);
}

} // namespace KestrinProductEditor
