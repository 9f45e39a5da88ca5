// SPDX-License-Identifier: MIT
#include "platform/win32/pictures/Win32Pictures.h"

#include "platform/Text.h"
#include "platform/win32/Win32Form.h"
#include "platform/win32/Win32LayoutAudit.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>

namespace KestrinProductEditor {

namespace {

std::unique_ptr<const Win32Camera> g_camera;

[[nodiscard]] int Scaled(int length)
{
    return MulDiv(length, static_cast<int>(GetDpiForSystem()), USER_DEFAULT_SCREEN_DPI);
}

[[nodiscard]] std::string NameOf(HWND control)
{
    for (Win32Form* const form : Win32Form::Shown()) {
        const std::u16string name = form->Controls().NameOf(control);
        if (!name.empty())
            return ToUtf8(name);
    }
    return {};
}

} // namespace

const Win32Camera& PictureCamera()
{
    return *g_camera;
}

void TakeAndAudit(HWND window, std::string_view name, std::string_view size)
{
    g_camera->Take(window, name, size);
    for (const LayoutFault& fault : AuditLayout(window, &NameOf))
        ADD_FAILURE() << name << " " << size << ": " << fault;
}

void TakeAndAuditAtEverySize(HWND window, std::string_view name)
{
    constexpr struct
    {
        int width;
        int height;
        const char* name;
    } kSizes[] = {{640, 480, "640x480"}, {1920, 1080, "1920x1080"}};
    TakeAndAudit(window, name);
    RECT before = {};
    GetWindowRect(window, &before);
    const auto place = [window](LONG left, LONG top, LONG width, LONG height) {
        SetWindowPos(window, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    };
    for (const auto& size : kSizes) {
        // Nobody paints what is beyond the edge of the screen.
        place(0, 0, Scaled(size.width), Scaled(size.height));
        RECT now = {};
        GetWindowRect(window, &now);
        EXPECT_EQ(now.right - now.left, Scaled(size.width)) << name << " cannot be " << size.name;
        EXPECT_EQ(now.bottom - now.top, Scaled(size.height)) << name << " cannot be " << size.name;
        TakeAndAudit(window, name, size.name);
    }
    place(before.left, before.top, before.right - before.left, before.bottom - before.top);
}

} // namespace KestrinProductEditor

namespace {

using namespace KestrinProductEditor;

constexpr int kUsage = 2;

/// LOOK FOLDER; look is light, dark or mirrored. The dark colours are the desktop's.
int Run(int count, char** values)
{
    if (count != 3) {
        std::fputs("usage: kstnedit-win32-pictures light|dark|mirrored FOLDER\n", stderr);
        return kUsage;
    }
    const std::string look = values[1];
    if (look == "mirrored")
        SetProcessDefaultLayout(LAYOUT_RTL);
    const std::string scale =
        std::to_string(MulDiv(100, static_cast<int>(GetDpiForSystem()), USER_DEFAULT_SCREEN_DPI));
    // As the pictures of the other toolkit are called.
    g_camera = std::make_unique<const Win32Camera>(std::filesystem::absolute(values[2]),
                                                   (look == "mirrored" ? "rtl-light" : look) + "-" + scale);
    const HRESULT opened = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int result = RUN_ALL_TESTS();
    if (SUCCEEDED(opened))
        CoUninitialize();
    return result;
}

} // namespace

int main(int argc, char** argv)
{
    // What a crash has said so far is not lost in a pipe.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    SetProcessDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE_V2);
    testing::InitGoogleTest(&argc, argv);
    return Run(argc, argv);
}
