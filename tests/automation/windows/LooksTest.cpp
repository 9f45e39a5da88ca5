// SPDX-License-Identifier: MIT
// The system's present looks in a host that does not ask for them itself.
#include "automation/windows/WindowsFixture.h"

namespace KestrinProductEditor {

class Looks : public WindowsFixture
{
};

TEST_F(Looks, AreThoseOfTheLibrarysOwnManifest)
{
    const auto store = Make<_ProductLkpMgr>(kStore);
    const HMODULE library = GetModuleHandleW(L"kstnedit.dll");
    ASSERT_NE(library, nullptr);
    EXPECT_NE(FindResourceW(library, ISOLATIONAWARE_MANIFEST_RESOURCE_ID, RT_MANIFEST), nullptr);
    ACTCTXW context = {};
    context.cbSize = sizeof context;
    context.dwFlags = ACTCTX_FLAG_HMODULE_VALID | ACTCTX_FLAG_RESOURCE_NAME_VALID;
    context.hModule = library;
    context.lpResourceName = ISOLATIONAWARE_MANIFEST_RESOURCE_ID;
    const HANDLE made = CreateActCtxW(&context);
    EXPECT_NE(made, INVALID_HANDLE_VALUE) << GetLastError();
    if (made != INVALID_HANDLE_VALUE)
        ReleaseActCtx(made);
    store->put_CancelUpdate(VARIANT_TRUE);
}

} // namespace KestrinProductEditor
