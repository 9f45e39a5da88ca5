// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <windows.h>

#include <objbase.h>

#include <cstdio>

int main(int argc, char** argv)
{
    // What a crash has said so far is not lost in a pipe.
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    testing::InitGoogleTest(&argc, argv);
    // The common dialogs and the drag and drop of files are of this kind of thread.
    const HRESULT opened = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const int result = RUN_ALL_TESTS();
    if (SUCCEEDED(opened))
        CoUninitialize();
    return result;
}
