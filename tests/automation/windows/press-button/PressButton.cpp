// SPDX-License-Identifier: MIT
// Presses a button in a window of another process, once both are there.
//     press-button CLASS TITLE CAPTION
// The caption is as it is read: "Save & Close". Ends with 0 when it was pressed, 1 when it never came, 2 for
// other arguments.
#include "automation/windows/Patience.h"
#include "automation/windows/SeenWindow.h"

#include "platform/windows/WideText.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <optional>
#include <string>
#include <vector>

using namespace KestrinProductEditor;

namespace {

[[nodiscard]] std::optional<SeenWindow> Find(const std::u16string& className, const std::u16string& title)
{
    const std::vector<SeenWindow> windows = WindowsOnTop(0);
    const auto found = std::find_if(windows.begin(), windows.end(), [&](const SeenWindow& window) {
        return window.Class() == className && window.IsOpen() && window.Text() == title;
    });
    return found == windows.end() ? std::nullopt : std::optional(*found);
}

} // namespace

int wmain(int count, wchar_t** arguments)
{
    if (count != 4) {
        std::fputs("press-button CLASS TITLE CAPTION\n", stderr);
        return 2;
    }
    try {
        const std::u16string className = FromWide(arguments[1]);
        const std::u16string title = FromWide(arguments[2]);
        Await("the window", [&] { return Find(className, title); })->Press(FromWide(arguments[3]));
        return 0;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "press-button: %s\n", error.what());
        return 1;
    }
}
