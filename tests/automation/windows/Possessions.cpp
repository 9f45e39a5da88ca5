// SPDX-License-Identifier: MIT
#include "automation/windows/Possessions.h"

#include <ostream>

namespace KestrinProductEditor {

namespace {

// Systems that do not count let us try every handle there can be: of objects of windows and graphics by their
// index, as they are not checked further.
constexpr UINT_PTR kIndices = 0x10000;

template<class Handle>
[[nodiscard]] Handle AtIndex(UINT_PTR index)
{
    return reinterpret_cast<Handle>(index); // NOLINT(performance-no-int-to-ptr): handles are no pointers
}

[[nodiscard]] DWORD CountUserObjects()
{
    DWORD count = 0;
    for (UINT_PTR index = 1; index < kIndices; ++index) {
        DWORD process = 0;
        GetWindowThreadProcessId(AtIndex<HWND>(index), &process);
        ICONINFO icon = {};
        if (process == GetCurrentProcessId() || IsMenu(AtIndex<HMENU>(index))) {
            ++count;
        } else if (GetIconInfo(AtIndex<HICON>(index), &icon)) {
            ++count;
            DeleteObject(icon.hbmColor);
            DeleteObject(icon.hbmMask);
        }
    }
    return count;
}

[[nodiscard]] DWORD CountGraphicsObjects()
{
    DWORD count = 0;
    for (UINT_PTR index = 1; index < kIndices; ++index) {
        if (GetObjectType(AtIndex<HGDIOBJ>(index)) != 0)
            ++count;
    }
    return count;
}

[[nodiscard]] DWORD CountHandles()
{
    constexpr UINT_PTR kBetween = 4;
    DWORD count = 0;
    for (UINT_PTR index = kBetween; index < kIndices; index += kBetween) {
        DWORD flags = 0;
        if (GetHandleInformation(AtIndex<HANDLE>(index), &flags))
            ++count;
    }
    return count;
}

} // namespace

Possessions Possessions::Now()
{
    Possessions now;
    now.userObjects = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    if (now.userObjects == 0)
        now.userObjects = CountUserObjects();
    now.graphicsObjects = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS);
    if (now.graphicsObjects == 0)
        now.graphicsObjects = CountGraphicsObjects();
    if (!GetProcessHandleCount(GetCurrentProcess(), &now.handles) || now.handles == 0)
        now.handles = CountHandles();
    return now;
}

std::ostream& operator<<(std::ostream& stream, const Possessions& possessions)
{
    return stream << possessions.userObjects << " user objects, " << possessions.graphicsObjects
                  << " graphics objects, " << possessions.handles << " handles";
}

} // namespace KestrinProductEditor
